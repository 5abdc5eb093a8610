// Opens an account's profile in a client application, or else on the web.
#include "platform/UIKit.h"
#include "varnix/pane.h"

namespace {

struct Client {
  NSString* scheme;   ///< its bare URL, which opens only if the client is installed
  NSString* profile;  ///< the format of a profile's URL
};

}  // namespace

void QKOpenTwitterUsername(NSString* username) {
  auto* application = UIApplication::sharedApplication();
  if (application == nullptr || username == nullptr) return;
  const Client clients[] = {
      {"tweetbot:"_ns, "tweetbot:///user_profile/%@"_ns},
      {"twitterrific:"_ns, "twitterrific:///profile?screen_name=%@"_ns},
      {"tweetings:"_ns, "tweetings:///user?screen_name=%@"_ns},
      {"twitter:"_ns, "twitter://user?screen_name=%@"_ns},
  };
  NSString* profile = "https://twitter.com/%@"_ns;
  for (const Client& client : clients) {
    if (!send(application, UIApplication::canOpenURL, NSURL::URLWithString(client.scheme)))
      continue;
    profile = client.profile;
    break;
  }
  // Nil if a URL cannot contain the name.
  NSURL* url = NSURL::URLWithString(NSString::stringWithFormat(profile, username));
  if (url != nullptr) send(application, UIApplication::openURL, url);
}
