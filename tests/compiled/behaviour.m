// What the behaviours of one binary share.
#import "behaviour.h"

const struct Checks *behaviourChecks;

static char words[1024];
static size_t used;

void note(const char *word) {
  if (used != 0 && used + 1 < sizeof words) words[used++] = ' ';
  while (*word != 0 && used + 1 < sizeof words) words[used++] = *word++;
  words[used] = 0;
}

const char *noted(void) { return words; }

void forgetNotes(void) {
  used = 0;
  words[0] = 0;
}
