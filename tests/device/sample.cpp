// A small library with everything that the real one has: calls out and in, tables with pointers,
// strings, zeros, a switch, an initialiser.
extern "C" {
int called(const char* text, const void* more);
extern const char* const imported;
extern int other __attribute__((weak_import));
}

namespace {

struct Row {
  const char* name;
  int (*function)(int);
  const void* next;
};

int counted[64];

int twice(int value) { return value * 2; }
int choose(int value) {
  switch (value) {
    case 0:
      return called("zero", &counted);
    case 1:
      return called("one", &imported);
    case 2:
      return called("two", &counted[2]);
    case 3:
      return called("three", nullptr);
    case 4:
      return called(imported, &counted[4]);
    default:
      return &other != nullptr ? other : counted[5];
  }
}

Row rows[] = {
    {"twice", &twice, &rows[1]}, {"choose", &choose, &imported}, {"none", nullptr, &other}};

__attribute__((constructor)) void start() { counted[0] = called("start", rows); }

}  // namespace

extern "C" __attribute__((visibility("default"))) int entry(int value) {
  for (const Row& row : rows)
    if (row.function != nullptr) value = row.function(value);
  return value;
}
