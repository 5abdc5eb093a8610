// Opening a mail address.
#include "UIKit/UIApplication_urls.h"
#include "support/pane.h"
#include "varnix/pane.h"

namespace {

using namespace test;

class Mail : public Pane {
 protected:
  void SetUp() override {
    settingsApplication();
    openMail = exported<decltype(QKOpenMailAddress)>("QKOpenMailAddress");
    ASSERT_NE(openMail, nullptr);
  }
  /// The opened URLs, one in each line.
  static std::string opened() {
    std::string lines;
    auto* urls = host::openedURLs();
    for (NSUInteger i = 0; i < send<NSUInteger>(urls, "count"_sel); ++i) {
      auto* text = send<NSString*>(send(urls, NSArray::objectAtIndex, i), "absoluteString"_sel);
      lines += std::string(host::text(text)) + "\n";
    }
    return lines;
  }

  decltype(&QKOpenMailAddress) openMail = nullptr;
};

TEST_F(Mail, OpensTheAddressAsItIs) {
  openMail(string("someone@example.com"));
  EXPECT_EQ(opened(), "mailto:someone@example.com\n");
}

TEST_F(Mail, EscapesNothing) {
  openMail(string("a+b@example.com?subject=c%20d&body=e"));
  EXPECT_EQ(opened(), "mailto:a+b@example.com?subject=c%20d&body=e\n");
}

TEST_F(Mail, OpensOnceACall) {
  openMail(string("a@example.com"));
  openMail(string("a@example.com"));
  EXPECT_EQ(opened(), "mailto:a@example.com\nmailto:a@example.com\n");
}

TEST_F(Mail, OpensNothingForWhatFormsNoUrl) {
  openMail(string("some one@example.com"));
  openMail(string("\"quoted\"@example.com"));
  openMail(string("\xc3\xa9@example.com"));
  openMail(nullptr);
  EXPECT_EQ(opened(), "");
}

using MailElsewhere = Pane;

TEST_F(MailElsewhere, OpensNothingInAProcessWithoutApplication) {
  settings("");
  start("com.example.daemon", host::ProcessKind::daemon);
  load();
  auto* open = exported<decltype(QKOpenMailAddress)>("QKOpenMailAddress");
  ASSERT_EQ(objc_getClass("UIApplication"), nullptr);
  open(string("someone@example.com"));
}

}  // namespace
