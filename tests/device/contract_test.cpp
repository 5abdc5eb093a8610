// What the library uses of the platform, compared with what is known of it: an invented platform
// and library, in which one thing at a time is wrong.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "device/toolbox.h"

namespace {

using namespace device_test;

const std::string kMethods = "facts/methods.tsv", kVariables = "facts/variables.tsv",
                  kExports = "facts/exports.tsv", kList = "unchecked.tsv", kArmv7 = "armv7",
                  kArm64 = "arm64";

using Files = std::map<std::string, std::string>;

/// What is known about the platform.
Files known() {
  return {
      {kMethods,
       "# a comment\n"
       "NSObject\t-\tinit\t@\tNSObject\tlibobjc\n"
       "NSObject\t-\tdealloc\tv\tNSObject\tlibobjc\n"
       "Button\t+\tbuttonWithSize:\t@{CGSize}\tButton\tUIKit\n"
       "Button\t-\tsetTitle:forState:\tv@I\tButton\tUIKit\n"
       "Button\t-\tintValue\ti\tButton\tUIKit\n"
       "Button\t-\twidth\tf\tButton\tUIKit\n"
       "Button\t-\tisOn\tc\tButton\tUIKit\n"
       "Button\t-\treset\tv\tButton\tUIKit\n"
       "Button\t-\tlongValue\tq\tButton\tUIKit\n"
       "Button\t-\tread:done:\tv^@?\tButton\tUIKit\n"
       "Switch\t-\tisOn\tc\tButton\tUIKit\n"},
      {kVariables, "Button\t_switch\tSwitch\n"},
      {kExports,
       "_draw\tUIKit\tyes\tyes\tyes\n"
       "_copy\tlibSystem\t?\tlibsystem_c\tlibsystem_c\n"
       "_hook\tFramework\t?\t?\t?\n"},
      {kList,
       "# a comment\n"
       "narrow -[Button intValue]\tdocumented: an int\n"
       "class Guest\tof an application\n"
       "method -[Guest color]\tof an application\n"
       "symbol _copy\ta function of C\n"
       "symbol _hook\tfrom its description\n"
       "superclass Small Button\tdocumented\n"
       "class Small\tdocumented\n"},
  };
}

/// What the library uses; <f>, <U> and <B> stand for CGFloat, NSUInteger and BOOL.
constexpr const char* kUses =
    "class Button\n"
    "class Guest\n"
    "message + Button buttonWithSize: @@:{CGSize=<f><f>}\n"
    "message - Button setTitle:forState: v@:@<U>\n"
    "message - Button intValue i@:\n"
    "message - Button width <f>@:\n"
    "message - Button longValue q@:\n"
    "message - Button read:done: v@:r^{Data=ii}@?\n"
    "message - Button shade v@:\n"
    "message - Switch isOn <B>@:\n"
    "message - Switch init @@:\n"
    "message - Small width <f>@:\n"
    "message - Ours help: v@:@\n"
    "message - Ours reset v@:\n"
    "hook - Guest color @@:\n"
    "hook - Button reset @@:\n"
    "add - Button shade v@:\n"
    "super Ours dealloc v@:\n"
    "variable Button _switch Button\n"
    "symbol UIKit _draw (weak_import)\n"
    "symbol libSystem _copy\n"
    "symbol Framework _hook\n"
    "own class Ours\n"
    "own superclass Ours Button\n"
    "own class Ours -help: v@:@\n";

/// One letter for each of the three types.
std::string usesWith(const std::string& letters) {
  std::string text = kUses;
  const std::string kinds = "fUB";
  for (std::size_t i = 0; i < kinds.size(); ++i) {
    const std::string kind = std::string("<") + kinds[i] + ">";
    for (std::size_t at; (at = text.find(kind)) != text.npos;)
      text.replace(at, kind.size(), 1, letters[i]);
  }
  return text;
}

/// Changes a text in one of the files, where it must occur exactly once.
struct Change {
  std::string file, old, text;
};

/// What varnix-contract prints after the changes; the files are named relative to their folder.
Ran contract(const std::vector<Change>& changes, const std::string& options = "") {
  Files files = known();
  files[kArmv7] = usesWith("fIc");
  files[kArm64] = usesWith("dQB");
  for (const auto& [file, old, text] : changes) {
    std::string& whole = files.at(file);
    const std::size_t at = whole.find(old);
    if (at == whole.npos || whole.find(old, at + 1) != whole.npos)
      throw std::runtime_error("not there once: " + old);
    whole.replace(at, old.size(), text);
  }
  const Folder folder;
  std::filesystem::create_directory(folder / "facts");
  for (const auto& [file, text] : files) writeText(folder / file, text);
  return run(
      "cd " + (folder / "") +
      " && " VARNIX_DEVICE_TOOLS
      "/varnix-contract --facts facts --unchecked unchecked.tsv --armv7 armv7 --arm64 arm64" +
      options);
}

/// The complaints without the program's name in front; empty if there are none.
std::string complaints(const std::vector<Change>& changes) {
  const Ran ran = contract(changes);
  std::string text;
  for (const auto& line : findAll(ran.output, "varnix-contract: ([^\n]*)\n"))
    text += (text.empty() ? "" : "\n") + line.at(1);
  EXPECT_EQ(ran.status == 0, text.empty()) << ran.output;
  return text;
}

/// The same change for both architectures.
std::string complaintsOfBoth(const std::string& old, const std::string& text) {
  return complaints({{kArmv7, old, text}, {kArm64, old, text}});
}

TEST(DeviceContract, WhatIsUsedAsItIs) {
  const Ran ran = contract({});
  EXPECT_EQ(ran.output,
            "22 uses: 15 of the platform as facts/ has it, 4 listed by hand, 3 of our own\n");
  EXPECT_EQ(ran.status, 0);
}

TEST(DeviceContract, WrongSelectors) {
  EXPECT_EQ(complaintsOfBoth("Button setTitle:forState:", "Button setTitle:for:"),
            "message -[Button setTitle:for:]: the platform has no such method");
  EXPECT_EQ(complaintsOfBoth("hook - Button reset", "hook - Button resets"),
            "hook -[Button resets]: the platform has no such method");
  EXPECT_EQ(complaintsOfBoth("super Ours dealloc", "super Ours deallok"),
            "super -[Ours deallok]: the platform has no such method");
}

TEST(DeviceContract, AMethodOfTheClassForOneOfItsInstances) {
  EXPECT_EQ(complaints({{kArm64, "message + Button", "message - Button"}}),
            "arm64: message -[Button buttonWithSize:]: the platform has no such method");
}

TEST(DeviceContract, WrongResults) {
  EXPECT_EQ(complaintsOfBoth("read:done: v@:", "read:done: @@:"),
            "message -[Button read:done:]: result is object, not void as the platform has it");
  EXPECT_EQ(complaints({{kArmv7, "Button width f", "Button width d"}}),
            "armv7: message -[Button width]: result is double, not float as the platform has it");
  EXPECT_EQ(complaintsOfBoth("super Ours dealloc v", "super Ours dealloc @"),
            "super -[Ours dealloc]: result is object, not void as the platform has it");
  // A replacement may return a value where none is expected, but not the reverse, nor another type.
  EXPECT_EQ(complaints({{kMethods, "reset\tv", "reset\t@"},
                        {kArmv7, "Button reset @", "Button reset v"},
                        {kArm64, "Button reset @", "Button reset i"},
                        {kArmv7, "Ours reset v", "Ours reset @"},
                        {kArm64, "Ours reset v", "Ours reset @"}}),
            "arm64: hook -[Button reset]: result is int, not object as the platform has it\n"
            "armv7: hook -[Button reset]: result is void, not object as the platform has it");
}

TEST(DeviceContract, WrongArguments) {
  EXPECT_EQ(complaintsOfBoth("setTitle:forState: v@:@", "setTitle:forState: v@:d"),
            "message -[Button setTitle:forState:]: argument 1 is double, not object as the "
            "platform has it");
  EXPECT_EQ(complaints({{kArm64, "{CGSize=dd}", "{CGRect={CGPoint=dd}{CGSize=dd}}"}}),
            "arm64: message +[Button buttonWithSize:]: argument 1 is CGRect, not CGSize as the "
            "platform has it");
  EXPECT_EQ(complaints({{kArmv7, "setTitle:forState: v@:@I", "setTitle:forState: v@:@"}}),
            "armv7: message -[Button setTitle:forState:]: 1 arguments, not 2 as the platform has "
            "it");
}

TEST(DeviceContract, AHandleOfAnotherKind) {
  EXPECT_EQ(complaintsOfBoth("setTitle:forState: v@:@", "setTitle:forState: v@::"),
            "message -[Button setTitle:forState:]: argument 1 is selector, not object as the "
            "platform has it");
  EXPECT_EQ(
      complaintsOfBoth("{Data=ii}@?", "{Data=ii}^v"),
      "message -[Button read:done:]: argument 2 is pointer, not block as the platform has it");
  EXPECT_EQ(complaintsOfBoth("{Data=ii}@?", "{Data=ii}#"), "");
}

TEST(DeviceContract, NumbersThatAreTooShortOn64Bits) {
  EXPECT_EQ(complaints({{kArm64, "Button width d", "Button width f"}}),
            "arm64: message -[Button width]: result is float, not double as the platform has it");
  EXPECT_EQ(complaints({{kArm64, "v@:@Q", "v@:@I"}}),
            "arm64: message -[Button setTitle:forState:]: argument 2 is unsigned int, not unsigned "
            "long long as the platform has it");
  // Except if it is listed as an int; then it must be one.
  EXPECT_EQ(
      complaints({{kList, "narrow -[Button intValue]\tdocumented: an int\n", ""}}),
      "arm64: message -[Button intValue]: result is int, not long long as the platform has it");
  EXPECT_EQ(complaints({{kArm64, "intValue i", "intValue q"}}),
            "unchecked.tsv:2: narrow -[Button intValue]: nothing uses it");
}

TEST(DeviceContract, NumbersThatAreTooLongOn32Bits) {
  // On that architecture a pointer is as long as a long long is on the machine that compares them.
  EXPECT_EQ(complaints({{kArmv7, "setTitle:forState: v@:@", "setTitle:forState: v@:q"}}),
            "armv7: message -[Button setTitle:forState:]: argument 1 is long long, not object as "
            "the platform has it");
}

TEST(DeviceContract, MissingClasses) {
  EXPECT_EQ(complaintsOfBoth("class Button\n", "class Knob\n"),
            "class Knob: no such class is known");
  EXPECT_EQ(complaintsOfBoth("message - Switch init", "message - Twitch init"),
            "message -[Twitch init]: no class Twitch is known");
  EXPECT_EQ(complaints({{kArmv7, "add - Button shade", "add - Knob shade"},
                        {kArmv7, "message - Button shade", "message - Knob shade"}}),
            "armv7: add -[Knob shade]: no class Knob is known\n"
            "armv7: message -[Knob shade]: no class Knob is known");
  EXPECT_EQ(complaints({{kArmv7, "own superclass Ours Button\n", ""}}),
            "armv7: message -[Ours reset]: our own class has no such method\n"
            "armv7: super -[Ours dealloc]: its superclass is not known");
}

TEST(DeviceContract, MissingVariables) {
  EXPECT_EQ(complaintsOfBoth("_switch Button", "_knob Button"),
            "variable Button._knob: the class has no such variable");
  EXPECT_EQ(complaintsOfBoth("_switch Button", "_switch Small"),
            "variable Button._switch: holds Switch, which is not known to be a Small");
}

TEST(DeviceContract, MissingFunctions) {
  EXPECT_EQ(complaintsOfBoth("UIKit _draw", "UIKit _paint"),
            "symbol _paint: no library is known to have it");
  EXPECT_EQ(complaintsOfBoth("UIKit _draw", "libSystem _draw"),
            "symbol _draw: bound to libSystem, but UIKit has it");
  EXPECT_EQ(complaints({{kExports, "_draw\tUIKit\tyes", "_draw\tUIKit\t?"}}),
            "symbol _draw: SDK 9.3 does not tell whether it is there");
}

TEST(DeviceContract, OurOwnMethods) {
  EXPECT_EQ(complaintsOfBoth("message - Ours help:", "message - Ours helps:"),
            "message -[Ours helps:]: the platform has no such method");
  EXPECT_EQ(complaints({{kArm64, "message - Ours help: v@:@", "message - Ours help: v@:d"}}),
            "arm64: message -[Ours help:]: argument 1 is double, not object as our own class has "
            "it");
  EXPECT_EQ(complaintsOfBoth("message - Button shade v", "message - Button shade @"),
            "message -[Button shade]: result is object, not void as our own addition has it");
  EXPECT_EQ(complaintsOfBoth("add - Button shade", "add - Button isOn"),
            "add -[Button isOn]: the platform has one, and ours would not be added\n"
            "message -[Button shade]: the platform has no such method");
}

TEST(DeviceContract, MethodsThatThePlatformCallsOnOurs) {
  const std::string own = "own class Ours -help: v@:@\n";
  // One that only ours has is compared with nothing.
  EXPECT_EQ(complaintsOfBoth(own, own + "own class Ours -reset v@:\n"), "");
  EXPECT_EQ(complaintsOfBoth(own, own + "own class Ours -longValue @@:\n"),
            "override -[Ours longValue]: result is object, not long long as the platform has it");
  // Also through another class of ours, and of the root class.
  const std::string more = own + "own class More\nown superclass More Ours\n";
  EXPECT_EQ(complaintsOfBoth(own, more + "own class More -reset v@:@\n"),
            "override -[More reset]: 1 arguments, not 0 as the platform has it");
  EXPECT_EQ(complaintsOfBoth(own, more + "own class More -dealloc @@:\n"),
            "override -[More dealloc]: result is object, not void as the platform has it");
  EXPECT_EQ(complaints({{kArm64, own, own + "own class Ours -width f@:\n"},
                        {kArmv7, own, own + "own class Ours -width f@:\n"}}),
            "arm64: override -[Ours width]: result is float, not double as the platform has it");
  // Of a class without a superclass nothing is known.
  EXPECT_EQ(complaintsOfBoth(own, own + "own class Lone -reset @@:\n"), "");
  // That a method overrides is no line of a list.
  const Ran ran = contract({{kArm64, own, own + "override Ours -reset v@:\n"}});
  EXPECT_THAT(ran.output, testing::HasSubstr("a line that cannot be read: override Ours -reset"));
}

TEST(DeviceContract, WhatIsListedByHandInVain) {
  EXPECT_EQ(complaints({{kList, "# a comment\n", "method -[Guest colour]\ta reason\n"}}),
            "unchecked.tsv:1: method -[Guest colour]: nothing uses it");
  EXPECT_EQ(complaints({{kList, "# a comment\n", "symbol _draw\ta reason\n"}}),
            "unchecked.tsv:1: symbol _draw: the facts tell it");
  EXPECT_EQ(complaints({{kList, "# a comment\n", "class Button\ta reason\n"}}),
            "unchecked.tsv:1: class Button: the facts tell it");
  EXPECT_EQ(complaints({{kList, "# a comment\n", "method -[Button width]\ta reason\n"}}),
            "unchecked.tsv:1: method -[Button width]: the facts tell it");
  EXPECT_EQ(complaints({{kList, "# a comment\n", "variable Button._switch\ta reason\n"}}),
            "unchecked.tsv:1: variable Button._switch: the facts tell it");
  EXPECT_EQ(complaints({{kList, "# a comment\n", "superclass Switch Button\ta reason\n"}}),
            "unchecked.tsv:1: superclass Switch Button: the facts tell it");
  EXPECT_EQ(complaints({{kList, "superclass Small Button\tdocumented\n", ""}}),
            "message -[Small width]: the platform has no such method");
}

TEST(DeviceContract, WhatIsListedByHandIsNoExcuse) {
  // A line for a method in the facts does not hide that ours differs.
  EXPECT_EQ(complaints({{kList, "# a comment\n", "method -[Button isOn]\ta reason\n"},
                        {kArm64, "message - Switch isOn B", "message - Button isOn @"},
                        {kArmv7, "message - Switch isOn c", "message - Button isOn c"}}),
            "arm64: message -[Button isOn]: result is object, not BOOL as the platform has it\n"
            "unchecked.tsv:1: method -[Button isOn]: the facts tell it");
}

TEST(DeviceContract, FilesThatCannotBeRead) {
  EXPECT_EQ(complaints({{kMethods, "@\tNSObject\tlibobjc\n", "@\tNSObject\n"}}),
            "facts/methods.tsv:2: not 6 fields, separated by tabs");
  EXPECT_EQ(complaints({{kMethods, "\t@{CGSize}\t", "\t@{CGFloat}\t"}}),
            "facts/methods.tsv:4: types that cannot be read: @{CGFloat}");
  EXPECT_EQ(complaints({{kMethods, "\t@{CGSize}\t", "\t@{CGSize\t"}}),
            "facts/methods.tsv:4: types that cannot be read: @{CGSize");
  EXPECT_EQ(complaints({{kVariables, "Switch", ""}}),
            "facts/variables.tsv:1: not 3 fields, separated by tabs");
  EXPECT_EQ(complaints({{kExports, "_draw\tUIKit", "_draw"}}),
            "facts/exports.tsv:1: not 5 fields, separated by tabs");
  EXPECT_EQ(complaints({{kExports, "_draw\tUIKit", "_draw\t"}}),
            "facts/exports.tsv:1: not 5 fields, separated by tabs");
  EXPECT_EQ(complaints({{kList, "\tof an application\nmethod", "\nmethod"}}),
            "unchecked.tsv:3: not 2 fields, separated by tabs");
  EXPECT_EQ(complaints({{kList, "# a comment", "symbol _copy\ttwice"}}),
            "unchecked.tsv:5: a second line for symbol _copy");
  EXPECT_EQ(complaints({{kList, "superclass Small Button", "superclass Small"}}),
            "unchecked.tsv:7: not \"superclass CLASS SUPERCLASS\"");
  EXPECT_EQ(complaints({{kArmv7, "class Guest", "class Guest Guest"}}),
            "armv7: a line that cannot be read: class Guest Guest");
  EXPECT_EQ(complaints({{kArmv7, "_draw (weak_import)", "_draw (strong)"}}),
            "armv7: a line that cannot be read: symbol UIKit _draw (strong)");
  EXPECT_EQ(complaints({{kArm64, "own class Ours\n", "own pet Ours\n"}}),
            "arm64: a line that cannot be read: own pet Ours");
  EXPECT_EQ(complaints({{kArm64, "intValue i@:", "intValue i@"}}),
            "arm64: not a method's types: i@");
  EXPECT_EQ(complaints({{kArm64, "intValue i@:", "intValue i:@"}}),
            "arm64: not a method's types: i:@");
  EXPECT_EQ(complaints({{kArm64, "intValue i@:", "intValue ?@:"}}),
            "arm64: types that cannot be read: ?@:");
  EXPECT_EQ(complaints({{kArm64, "intValue i@:", "intValue i@:^"}}),
            "arm64: types that cannot be read: i@:^");
}

TEST(DeviceContract, TableOfAllThatIsUsed) {
  // A symbol that one architecture does not import, and a method of ours that the platform has.
  const std::string own = "own class Ours -help: v@:@\n";
  const std::string overriding = own + "own class Ours -longValue q@:\n";
  const Ran ran = contract({{kArm64, "symbol libSystem _copy\n", ""},
                            {kArm64, own, overriding},
                            {kArmv7, own, overriding}},
                           " --table");
  EXPECT_EQ(ran.status, 0);
  EXPECT_EQ(ran.output, R"(
## Systems

| SDK | has | does not tell of |
| --- | --- | --- |
| 9.3 | 1 of 3 symbols | `_copy`, `_hook` |
| 10.3 | 2 of 3 symbols | `_hook` |
| 11.4 | 2 of 3 symbols | `_hook` |

## Classes

### Button

| member | 32 bits | 64 bits | how it is used | known from |
| --- | --- | --- | --- | --- |
| the class | | | looked up | iOS 9.0.2: UIKit |
| `+buttonWithSize:` | object (CGSize) | the same | sent | iOS 9.0.2: UIKit |
| `-dealloc` | void () | the same | sent to super | iOS 9.0.2: libobjc, of NSObject |
| `-intValue` | int () | the same | sent | iOS 9.0.2: UIKit |
| `-longValue` | long long () | the same | overridden, sent | iOS 9.0.2: UIKit |
| `-read:done:` | void (pointer, block) | the same | sent | iOS 9.0.2: UIKit |
| `-reset` | object (), void () | the same | replaced, sent | iOS 9.0.2: UIKit |
| `-setTitle:forState:` | void (object, unsigned int) | void (object, unsigned long long) | sent | iOS 9.0.2: UIKit |
| `-shade` | void () | the same | added, sent | ours |
| `-width` | float () | double () | sent | iOS 9.0.2: UIKit |
| `_switch`, a variable | Button | the same | read | iOS 9.0.2: holds Switch |

### Guest

| member | 32 bits | 64 bits | how it is used | known from |
| --- | --- | --- | --- | --- |
| the class | | | looked up | by hand: of an application |
| `-color` | object () | the same | replaced | by hand: of an application |

### Small

| member | 32 bits | 64 bits | how it is used | known from |
| --- | --- | --- | --- | --- |
| `-width` | float () | double () | sent | iOS 9.0.2: UIKit, of Button |

### Switch

| member | 32 bits | 64 bits | how it is used | known from |
| --- | --- | --- | --- | --- |
| `-init` | object () | the same | sent | iOS 9.0.2: libobjc, of NSObject |
| `-isOn` | BOOL () | the same | sent | iOS 9.0.2: UIKit, of Button |

## Functions, constants and classes that are linked

### Of Framework

| symbol | SDK 9.3 | SDK 10.3 | SDK 11.4 | known from |
| --- | --- | --- | --- | --- |
| `_hook` | ? | ? | ? | by hand: from its description |

### Of UIKit

| symbol | SDK 9.3 | SDK 10.3 | SDK 11.4 | known from |
| --- | --- | --- | --- | --- |
| `_draw`, weakly | yes | yes | yes | SDKs |

### Of libSystem

| symbol | SDK 9.3 | SDK 10.3 | SDK 11.4 | known from |
| --- | --- | --- | --- | --- |
| `_copy`, armv7 alone | ? | libsystem_c | libsystem_c | by hand: a function of C |
)");
}

}  // namespace
