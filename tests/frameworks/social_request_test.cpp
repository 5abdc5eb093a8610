// Requests to social networks: what is returned, and where they never go.
#include <semaphore>

#include "support/follow.h"
#include "support/loopback.h"

namespace {

struct Outcome {
  NSInteger status = 0;
  NSInteger error = 0;
  std::string body;
};

class SocialRequest : public test::Follow {
 protected:
  void SetUp() override { start("com.apple.Preferences"); }

  static Outcome perform(NSDictionary* parameters, const std::string& server) {
    setenv("VARNIX_SOCIAL_HOST", server.c_str(), 1);
    SLRequest* request = SLRequest::requestForServiceType(
        SLServiceTypeTwitter(), SLRequestMethodPOST,
        NSURL::URLWithString("https://api.example.com/a%20b?c=d"_ns), parameters);
    Outcome outcome;
    std::binary_semaphore done(0);
    auto handler = objc::makeBlock<void(NSData*, NSHTTPURLResponse*, NSError*)>(
        [&outcome, &done](NSData* data, NSHTTPURLResponse* response, NSError* error) {
          outcome.status = send<NSInteger>(response, "statusCode"_sel);
          outcome.error = send<NSInteger>(error, "code"_sel);
          if (data != nullptr)
            outcome.body.assign(static_cast<const char*>(send(data, NSData::bytes)),
                                send(data, NSData::length));
          done.release();
        });
    send(request, SLRequest::performRequestWithHandler, handler);
    done.acquire();
    return outcome;
  }
};

constexpr NSInteger kCannotConnect = -1004;

TEST_F(SocialRequest, HandsOverTheAnswer) {
  test::LoopbackServer server("HTTP/1.1 403 No\r\nA: b\r\n\r\nwords");
  const Outcome outcome = perform(nullptr, server.address());
  EXPECT_EQ(outcome.status, 403);
  EXPECT_EQ(outcome.body, "words");
  EXPECT_EQ(outcome.error, 0);
  const std::string received = server.received();
  EXPECT_NE(received.find("\r\nContent-Length: 0\r\n"), std::string::npos);
  EXPECT_TRUE(received.ends_with("\r\n\r\n"));
}

TEST_F(SocialRequest, EscapesItsForm) {
  test::LoopbackServer server("HTTP/1.0 200 OK\r\n\r\n");
  perform(NSDictionary::dictionaryWithObjectsAndKeys("a&b=c d\r\n~"_ns, "k+y"_ns,
                                                     static_cast<NSObject*>(nullptr)),
          server.address());
  EXPECT_TRUE(server.received().ends_with("\r\n\r\nk%2By=a%26b%3Dc%20d%0D%0A~"));
}

TEST_F(SocialRequest, GoesNowhereElse) {
  for (const char* server : {"", "192.0.2.1:80", "example.com:80", "127.0.0.1", "127.0.0.1:",
                             "127.0.0.1:0", "127.0.0.1:65536", "127.0.0.1:8 0", "localhost:-1"}) {
    const Outcome outcome = perform(nullptr, server);
    EXPECT_EQ(outcome.error, kCannotConnect) << server;
    EXPECT_EQ(outcome.status, 0) << server;
  }
}

TEST_F(SocialRequest, TakesNoAnswerThatIsNoHttp) {
  for (const char* answer : {"", "nonsense", "HTTP/1.1", "HTTP/1.1 ", "HTTP/1.1 abc\r\n\r\n"}) {
    test::LoopbackServer server(answer);
    EXPECT_EQ(perform(nullptr, server.address()).error, kCannotConnect) << answer;
  }
}

TEST_F(SocialRequest, NeedsAHandler) {
  SLRequest* request = SLRequest::requestForServiceType(nullptr, 0, nullptr, nullptr);
  EXPECT_THROW(send(request, SLRequest::performRequestWithHandler, nullptr),
               host::runtime::Exception);
}

}  // namespace
