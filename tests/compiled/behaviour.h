// A behaviour of the run-time as compiled code meets it: a name, and checks. The code uses nothing
// of the system, so that it compiles for Linux and for devices alike: whoever runs it hands over
// the functions that compare.
//
//   BEHAVIOUR(aCategoryAddsMethods) {
//     equal([[Plain new] added], 3);
//   }
#pragma once

#import <Foundation/Foundation.h>

/// Where a check stands.
struct Place {
  const char* file;
  int line;
  const char* expression;
};

/// What compares. All arguments are pointers, which every calling convention passes alike.
struct Checks {
  void (*integers)(const struct Place* place, const long long* actual, const long long* expected);
  void (*doubles)(const struct Place* place, const double* actual, const double* expected);
  void (*texts)(const struct Place* place, const char* actual, const char* expected);
};

__attribute__((visibility("hidden"))) extern const struct Checks* behaviourChecks;

#define BEHAVIOUR(name)                                                          \
  static void name##_body(void);                                                 \
  __attribute__((visibility("default"))) void name(const struct Checks* checks); \
  void name(const struct Checks* checks) {                                       \
    behaviourChecks = checks;                                                    \
    name##_body();                                                               \
  }                                                                              \
  static void name##_body(void)

#define BEHAVIOUR_CHECK_(function, type, actual, expected)                    \
  do {                                                                        \
    static const struct Place behaviourPlace = {__FILE__, __LINE__, #actual}; \
    type isValue = (actual);                                                  \
    type wantedValue = (expected);                                            \
    behaviourChecks->function(&behaviourPlace, &isValue, &wantedValue);       \
  } while (0)

/// Integers, characters, BOOLs.
#define equal(actual, expected) BEHAVIOUR_CHECK_(integers, long long, actual, expected)
#define equalDoubles(actual, expected) BEHAVIOUR_CHECK_(doubles, double, actual, expected)
/// Pointers of any kind, objects and classes.
#define same(actual, expected)                          \
  equal((long long)(uintptr_t)(__bridge void*)(actual), \
        (long long)(uintptr_t)(__bridge void*)(expected))
#define samePointers(actual, expected) \
  equal((long long)(uintptr_t)(actual), (long long)(uintptr_t)(expected))
/// C strings; nil prints as "(nil)".
#define equalTexts(actual, expected)                                                     \
  do {                                                                                   \
    static const struct Place behaviourPlace = {__FILE__, __LINE__, #actual};            \
    const char* isText = (actual);                                                       \
    behaviourChecks->texts(&behaviourPlace, isText == 0 ? "(nil)" : isText, (expected)); \
  } while (0)
/// An NSString and a C string.
#define equalStrings(actual, expected) equalTexts([(actual) UTF8String], (expected))

/// What happened, in order: words with blanks between.
void note(const char* word);
const char* noted(void);
void forgetNotes(void);
