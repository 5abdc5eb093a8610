// Invites the user to follow an account.
#include "panesupport/QKWelcomeTwitterHandler.h"
#include "panesupport/alert.h"
#include "varnix/pane.h"

void QKShowTwitterFollowAlert(NSString* title, NSString* message, NSString* username) {
  auto handler = objc::make<QKWelcomeTwitterHandler>();
  send(handler, QKWelcomeTwitterHandler::setUsername, username);
  if (message == nullptr) {
    message =
        "Hey there! Thanks for installing my tweak! If you'd like to follow me on Twitter for more updates, tweak giveaways and other cool stuff, hit the button below!"_ns;
  }
  auto alert = varnix::makeAlert(title, message, handler.get(), "No thanks!"_ns, "I'd love to!"_ns);
  if (alert == nullptr) return;
  send(alert, UIAlertView::setTag, QKWelcomeTwitterHandler::kInvitation);
  varnix::keepFor(alert, handler);
  send(alert, UIAlertView::show);
}
