#include "panesupport/QKWelcomeTwitterHandler.h"

#include "objc/association.h"
#include "objc/autorelease_pool.h"
#include "objc/define.h"
#include "panesupport/alert.h"
#include "panesupport/frameworks.h"
#include "platform/Dispatch.h"
#include "platform/Social.h"
#include "varnix/pane.h"

using Handler = QKWelcomeTwitterHandler;

namespace {

/// Runs the function later, on the main thread.
template <class F>
void onMainQueue(F function) {
  auto block = objc::makeBlock<void()>(std::move(function));
  dispatch_async(dispatch_get_main_queue(), block);
}

void thank(NSString* message, NSString* button) {
  auto alert = varnix::makeAlert("Done <3"_ns, message, nullptr, button);
  send<void>(alert, "show"_sel);
}

NSArray* heldAccounts(UIAlertView* alert) {
  return objc::associated<NSArray>(alert, "varnixAccounts"_sel);
}

void showChooser(Handler* handler, NSArray* accounts) {
  auto chooser = varnix::makeAlert(
      nullptr,
      "Looks like you have multiple Twitter accounts on this device. Which one would you like to use?"_ns,
      handler, "All!"_ns);
  if (chooser == nullptr) return;
  for (NSUInteger i = 0; i < accounts->count(); ++i)
    chooser->addButtonWithTitle(static_cast<ACAccount*>(accounts->objectAtIndex(i))->username());
  chooser->setTag(Handler::kChooser);
  handler->heldBy(chooser);
  objc::associate(chooser, "varnixAccounts"_sel, accounts, AssociationPolicy::retainNonatomic);
  chooser->show();
}

/// What the answer to the question for access leads to, on whatever thread it comes.
void accessAnswered(Handler* handler, ACAccountStore* store, ACAccountType* type, bool granted) {
  if (!granted) return;
  auto accounts = Strong<NSArray>::retain(store->accountsWithAccountType(type));
  const auto count = send<NSUInteger>(accounts, "count"_sel);
  if (count == 0) {
    QKOpenTwitterUsername(send<NSString*>(handler, "username"_sel));
  } else if (count == 1) {
    send<void>(handler, "followWithAccount:"_sel,
               static_cast<ACAccount*>(accounts->objectAtIndex(0)));
    onMainQueue([] { thank("Awesome. Thanks for following me ^-^"_ns, "You're welcome <3"_ns); });
  } else {
    onMainQueue(
        [kept = Strong<Handler>::retain(handler), accounts] { showChooser(kept, accounts); });
  }
}

void ignoreOutcome(NSData*, NSHTTPURLResponse*, NSError*) {}

}  // namespace

void Handler::dealloc() {
  setUsername(nullptr);
  sendSuper<void>(this, "dealloc"_sel);
}

void Handler::heldBy(UIAlertView* alert) {
  objc::associate(alert, "varnixFollowHandler"_sel, this, AssociationPolicy::retainNonatomic);
}

void Handler::clickedButton(UIAlertView* alert, NSInteger index) {
  const auto tag = send<NSInteger>(alert, "tag"_sel);
  if (tag == kInvitation) {
    if (index == 1) send<void>(this, "dropMeAFollow"_sel);
    return;
  }
  if (tag != kChooser) return;
  NSArray* accounts = heldAccounts(alert);
  const auto count = static_cast<NSInteger>(send<NSUInteger>(accounts, "count"_sel));
  if (index < 0 || index > count) return;
  // The first button is for all of them.
  const NSInteger first = index == 0 ? 0 : index - 1;
  const NSInteger end = index == 0 ? count : index;
  for (NSInteger i = first; i < end; ++i) {
    send<void>(this, "followWithAccount:"_sel,
               static_cast<ACAccount*>(accounts->objectAtIndex(static_cast<NSUInteger>(i))));
  }
  thank(
      "Just moving around a few things aaaaaand..... hah! Just kidding. Thanks for following me. Enjoy the tweak! :)"_ns,
      "Will do!"_ns);
}

void Handler::dropMeAFollow() {
  varnix::loadAccounts();
  auto store = Strong<ACAccountStore>::adopt(
      send<ACAccountStore*>(objc::alloc<ACAccountStore>(), "init"_sel));
  if (store == nullptr) return;
  auto type = Strong<ACAccountType>::retain(
      store->accountTypeWithAccountTypeIdentifier(ACAccountTypeIdentifierTwitter()));
  auto answered = objc::makeBlock<void(bool, NSError*)>(
      [handler = Strong<Handler>::retain(this), store, type](bool granted, NSError*) {
        const objc::AutoreleasePool pool;  // the thread may have none
        accessAnswered(handler, store, type, granted);
      });
  store->requestAccessToAccountsWithType(type, answered);
}

void Handler::followWithAccount(ACAccount* account) {
  varnix::loadSocial();
  NSURL* url = NSURL::URLWithString("https://api.twitter.com/1.1/friendships/create.json"_ns);
  // A nil ends the list: without a name nothing else is lost.
  auto* parameters = NSDictionary::dictionaryWithObjectsAndKeys(
      "FALSE"_ns, "follow"_ns, send<NSString*>(this, "username"_sel), "screen_name"_ns,
      static_cast<NSObject*>(nullptr));
  SLRequest* request = SLRequest::requestForServiceType(SLServiceTypeTwitter(), SLRequestMethodPOST,
                                                        url, parameters);
  if (request == nullptr) return;
  request->setAccount(account);
  request->performRequestWithHandler(objc::globalBlock<&ignoreOutcome>());
}

OBJC_EXPORTED_CLASS(QKWelcomeTwitterHandler, NSObject,
                    objc::Property<"username", &Handler::_username>,
                    objc::Method<"dealloc", &Handler::dealloc>,
                    objc::Method<"alertView:clickedButtonAtIndex:", &Handler::clickedButton>,
                    objc::Method<"dropMeAFollow", &Handler::dropMeAFollow>,
                    objc::Method<"followWithAccount:", &Handler::followWithAccount>)
