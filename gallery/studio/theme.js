// The theme as the server has it, and what this page changes. Several changes on the way at once
// become one, so nothing queues up.

const page = crypto.randomUUID();
// Between two changes of a drag, in milliseconds.
const pause = 80;

export async function ask(path, options = {}) {
  const response = await fetch(path, {cache: 'no-store', ...options});
  const type = response.headers.get('Content-Type') ?? '';
  const answer = type.startsWith('application/json') ? await response.json() : await response.blob();
  if (!response.ok && response.status !== 409) throw new Error(answer.failure ?? `${response.status}`);
  return {answer, status: response.status, tag: (response.headers.get('ETag') ?? '').slice(1, -1)};
}

export const post = (path, body) => ask(path, {
  method: 'POST', body: JSON.stringify(body), headers: {'Content-Type': 'application/json'}});

class Theme extends EventTarget {
  state = {version: 0, revision: 0, values: {}, history: [''], position: 0};
  // What the server does not have yet.
  #waiting = null;
  #sent = null;
  #failure = '';
  #timer = null;
  isLost = false;

  get failure() { return this.#failure; }
  // Whether the server has everything.
  get isSettled() { return !this.#waiting && !this.#sent; }
  // Whether nothing is going on, not even a step through the history.
  get isAtRest() { return this.isSettled && this.#walks === 0; }

  // Undefined for what is not set.
  value(key) {
    for (const part of [this.#waiting, this.#sent]) {
      if (part && key in part.changes) return part.changes[key] ?? undefined;
    }
    return this.state.values[key];
  }

  get keys() {
    const keys = new Set(Object.keys(this.state.values));
    for (const part of [this.#sent, this.#waiting]) {
      for (const [key, value] of Object.entries(part?.changes ?? {})) {
        if (value === null) keys.delete(key);
        else keys.add(key);
      }
    }
    return keys;
  }

  // Null removes a setting. Changes of one group are one step of the history.
  change(changes, {label = Object.keys(changes).join(', '), group = ''} = {}) {
    if (this.#waiting && this.#waiting.group === group && group !== '') {
      Object.assign(this.#waiting.changes, changes);
    } else if (this.#waiting) {
      Object.assign(this.#waiting.changes, changes);
      Object.assign(this.#waiting, {label, group});
    } else {
      this.#waiting = {changes: {...changes}, label, group};
    }
    this.#tell();
    this.#send();
  }

  goTo(position) { return this.#walk(() => position - this.state.position); }
  undo() { return this.#step(-1); }
  redo() { return this.#step(1); }

  // Steps that come while others are on their way add up.
  #steps = 0;
  async #step(by) {
    this.#steps += by;
    await this.#walk(() => this.#steps);
  }
  #walks = 0;
  #walking = Promise.resolve();
  #walk(steps) {
    ++this.#walks;
    this.#walking = this.#walking.then(async () => {
      while (!this.isSettled) await new Promise((done) => this.addEventListener('change', done, {once: true}));
      const {position, history} = this.state;
      const next = Math.min(Math.max(position + steps(), 0), history.length - 1);
      this.#steps = 0;
      if (next !== position) await this.#settled(() => post('history', {position: next}));
      --this.#walks;
    });
    return this.#walking;
  }

  async putMaterial(place, file) {
    this.#take((await ask(`material/${place}`, {method: 'PUT', body: file})).answer);
  }
  async removeMaterial(place) {
    this.#take((await ask(`material/${place}`, {method: 'DELETE'})).answer);
  }
  settle(keep) { return this.#settled(() => post('conflict', {keep})); }

  // The page's own changes that somebody else's stand against.
  overruled = null;
  keepOverruled(isKept) {
    const {changes, label, group} = this.overruled;
    this.overruled = null;
    if (isKept) this.change(changes, {label, group});
    else this.#tell();
  }

  async begin() {
    this.#take((await ask('theme')).answer);
    this.#listen();
  }

  #tell() { this.dispatchEvent(new Event('change')); }

  #take(state) {
    // An answer may be overtaken by the news.
    if (state.version >= this.state.version) this.state = state;
    this.#tell();
  }

  async #settled(request) {
    try {
      this.#take((await request()).answer);
      this.#failure = '';
    } catch (error) {
      this.#failure = error.message;
      this.#tell();
    }
  }

  // A drag is sent a few times a second, or its requests would take the time of its pictures.
  #lastSent = 0;
  async #send() {
    if (this.#sent || !this.#waiting) return;
    const early = this.#waiting.group ? this.#lastSent + pause - performance.now() : 0;
    if (early > 0) {
      this.#timer ??= setTimeout(() => {
        this.#timer = null;
        this.#send();
      }, early);
      return;
    }
    this.#lastSent = performance.now();
    this.#sent = this.#waiting;
    this.#waiting = null;
    try {
      const {answer, status} = await post('changes', {page, revision: this.state.revision, ...this.#sent});
      if (status === 409) this.overruled = this.#sent;
      this.#failure = '';
      this.#sent = null;
      this.#take(answer);
    } catch (error) {
      this.#sent = null;
      this.#failure = error.message;
      this.#tell();
    }
    this.#send();
  }

  async #listen() {
    for (;;) {
      try {
        const {answer} = await ask(`news?version=${this.state.version}`);
        this.isLost = false;
        this.#take(answer);
      } catch {
        this.isLost = true;
        this.#tell();
        await new Promise((done) => setTimeout(done, 1000));
      }
    }
  }
}

export const theme = new Theme();
