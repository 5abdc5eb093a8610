// What the command says of names that are wrong, hostile or nearly right.
#include "cli/terminal.h"

using test::varnix;
using test::Words;

namespace {

class Messages : public test::CommandTest {
 protected:
  static void expect(const Words& words, int status, const std::string& message) {
    const auto outcome = varnix(words);
    EXPECT_EQ(outcome.status, status) << message;
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.error, "varnix: " + message + "\n");
  }
};

TEST_F(Messages, RefusesWhatNoProcessCanDoWithout) {
  for (const char* name :
       {"NSObject", "NSString", "NSNumber", "CGImage", "-[NSObject dealloc]", "NSObject.isa"}) {
    expect({"run", "--bundle", "a", "--without", name}, 1,
           std::string("no process can do without it: ") + name);
    expect({"inspect", "--bundle", "com.apple.springboard", "--without", name}, 1,
           std::string("a hosted process failed: no process can do without it: ") + name);
  }
}

}  // namespace
