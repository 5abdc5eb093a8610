#include "panesupport/QKWelcomeTwitterHandler.h"

#include "objc/autorelease_pool.h"
#include "objc/implementation.h"
#include "panesupport/alert.h"
#include "panesupport/frameworks.h"
#include "platform/Dispatch.h"
#include "platform/Social.h"
#include "varnix/pane.h"

namespace varnix {

namespace {

using Handler = QKWelcomeTwitterHandler;

/// Runs the function later, on the main thread.
template <class F>
void onMainQueue(F function) {
  auto block = objc::makeBlock<void()>(std::move(function));
  dispatch_async(dispatch_get_main_queue(), block);
}

void thank(NSString* message, NSString* button) {
  auto alert = makeAlert("Done <3"_ns, message, nullptr, button);
  send(alert, UIAlertView::show);
}

/// The key under which a chooser holds its accounts.
constexpr auto kAccountsKey = "varnixAccounts"_sel;

NSArray* heldAccounts(UIAlertView* alert) { return objc::associated<NSArray>(alert, kAccountsKey); }

ACAccount* accountAt(NSArray* accounts, NSUInteger index) {
  return static_cast<ACAccount*>(send(accounts, NSArray::objectAtIndex, index));
}

void showChooser(Handler* handler, NSArray* accounts) {
  auto chooser = makeAlert(
      nullptr,
      "Looks like you have multiple Twitter accounts on this device. Which one would you like to use?"_ns,
      handler, "All!"_ns);
  if (chooser == nullptr) return;
  for (NSUInteger i = 0; i < send(accounts, NSArray::count); ++i)
    send(chooser, UIAlertView::addButtonWithTitle,
         send(accountAt(accounts, i), ACAccount::username));
  send(chooser, UIAlertView::setTag, Handler::kChooser);
  keepFor(chooser, handler);
  objc::associate(chooser, kAccountsKey, accounts, AssociationPolicy::retainNonatomic);
  send(chooser, UIAlertView::show);
}

/// Handles the answer to the request for access, on the thread on which it arrives.
void accessAnswered(Handler* handler, ACAccountStore* store, ACAccountType* type, bool granted) {
  if (!granted) return;
  auto accounts =
      Strong<NSArray>::retain(send(store, ACAccountStore::accountsWithAccountType, type));
  const NSUInteger count = send(accounts, NSArray::count);
  if (count == 0) {
    QKOpenTwitterUsername(send(handler, Handler::username));
  } else if (count == 1) {
    send(handler, Handler::followWithAccount, accountAt(accounts, 0));
    onMainQueue([] { thank("Awesome. Thanks for following me ^-^"_ns, "You're welcome <3"_ns); });
  } else {
    onMainQueue(
        [kept = Strong<Handler>::retain(handler), accounts] { showChooser(kept, accounts); });
  }
}

void ignoreOutcome(NSData*, NSHTTPURLResponse*, NSError*) {}

struct WelcomeHandler : objc::Implementation<QKWelcomeTwitterHandler> {
  void dealloc() {
    send(self(), Handler::setUsername, nullptr);
    objc::sendSuper<Handler>(self(), NSObject::dealloc);
  }
  void clickedButton(UIAlertView* alert, NSInteger index);
  void dropMeAFollow();
  void followWithAccount(ACAccount* account);

  Strong<NSString> _username;
};

void WelcomeHandler::clickedButton(UIAlertView* alert, NSInteger index) {
  const NSInteger tag = send(alert, UIAlertView::tag);
  if (tag == Handler::kInvitation) {
    if (index == 1) send(self(), Handler::dropMeAFollow);
    return;
  }
  if (tag != Handler::kChooser) return;
  NSArray* accounts = heldAccounts(alert);
  const auto count = static_cast<NSInteger>(send(accounts, NSArray::count));
  if (index < 0 || index > count) return;
  // The first button stands for all accounts.
  const NSInteger first = index == 0 ? 0 : index - 1;
  const NSInteger end = index == 0 ? count : index;
  for (NSInteger i = first; i < end; ++i)
    send(self(), Handler::followWithAccount, accountAt(accounts, static_cast<NSUInteger>(i)));
  thank(
      "Just moving around a few things aaaaaand..... hah! Just kidding. Thanks for following me. Enjoy the tweak! :)"_ns,
      "Will do!"_ns);
}

void WelcomeHandler::dropMeAFollow() {
  loadAccounts();
  auto store = objc::make<ACAccountStore>();
  if (store == nullptr) return;
  auto type = Strong<ACAccountType>::retain(
      send(store, ACAccountStore::accountTypeWithAccountTypeIdentifier,
           ACAccountTypeIdentifierTwitter()));
  auto answered = objc::makeBlock<void(bool, NSError*)>(
      [handler = Strong<Handler>::retain(self()), store, type](bool granted, NSError*) {
        const objc::AutoreleasePool pool;  // the thread may have none
        accessAnswered(handler, store, type, granted);
      });
  send(store, ACAccountStore::requestAccessToAccountsWithType, type, answered);
}

void WelcomeHandler::followWithAccount(ACAccount* account) {
  loadSocial();
  NSURL* url = NSURL::URLWithString("https://api.twitter.com/1.1/friendships/create.json"_ns);
  // A nil ends the list. The name comes last, so without one nothing else is lost.
  NSDictionary* parameters = NSDictionary::dictionaryWithObjectsAndKeys(
      "FALSE"_ns, "follow"_ns, send(self(), Handler::username), "screen_name"_ns,
      static_cast<NSObject*>(nullptr));
  SLRequest* request = SLRequest::requestForServiceType(SLServiceTypeTwitter(), SLRequestMethodPOST,
                                                        url, parameters);
  if (request == nullptr) return;
  send(request, SLRequest::setAccount, account);
  send(request, SLRequest::performRequestWithHandler, objc::globalBlock<&ignoreOutcome>());
}

}  // namespace
}  // namespace varnix

using varnix::WelcomeHandler;

OBJC_CLASS_NAMED(
    QKWelcomeTwitterHandler, NSObject, WelcomeHandler, NSObject,
    objc::Accessors<QKWelcomeTwitterHandler::username, QKWelcomeTwitterHandler::setUsername,
                    &WelcomeHandler::_username>,
    objc::Implements<NSObject::dealloc, &WelcomeHandler::dealloc>,
    objc::Implements<QKWelcomeTwitterHandler::clickedButtonAtIndex, &WelcomeHandler::clickedButton>,
    objc::Implements<QKWelcomeTwitterHandler::dropMeAFollow, &WelcomeHandler::dropMeAFollow>,
    objc::Implements<QKWelcomeTwitterHandler::followWithAccount,
                     &WelcomeHandler::followWithAccount>)
