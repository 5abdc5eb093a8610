// The store of the device's accounts. A request for access is answered on another thread.
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "Accounts/accounts.h"
#include "Foundation/text.h"
#include "objc/define.h"
#include "platform/Dispatch.h"

namespace {
struct Device {
  std::mutex mutex;
  bool grants = true;
  NSUInteger requests = 0;
  std::map<std::string, std::vector<std::string>, std::less<>> usernames;
};

Device& device() {
  static auto* one = new Device;
  return *one;
}

struct AccountType : ACAccountType {
  Strong<NSString> identifier;
};

struct Account : ACAccount {
  Strong<NSString> name;
  Strong<ACAccountType> type;
};

struct AccountStore : ACAccountStore {
  AccountType* typeWithIdentifier(NSString* identifier);
  void requestAccess(ACAccountType* type, objc::Block<void(bool, NSError*)> handler);
  NSArray* accountsOf(ACAccountType* type);

  static void setUsernames(NSArray* names, NSString* type);
  static void setGranted(bool granted) {
    const std::lock_guard lock(device().mutex);
    device().grants = granted;
  }
  static NSUInteger requests() {
    const std::lock_guard lock(device().mutex);
    return device().requests;
  }

  bool hasAccess;  ///< written with the device's lock held
};

}  // namespace

OBJC_CLASS_NAMED(ACAccountType, NSObject, AccountType, NSObject,
                 objc::Readable<"identifier", &AccountType::identifier>)

OBJC_CLASS_NAMED(ACAccount, NSObject, Account, NSObject,
                 objc::Property<"username", &Account::name, objc::Storage::copy>,
                 objc::Readable<"accountType", &Account::type>)

OBJC_CLASS_NAMED(
    ACAccountStore, NSObject, AccountStore, NSObject,
    objc::Ivar<"_hasAccess", &AccountStore::hasAccess>,
    objc::Method<"accountTypeWithAccountTypeIdentifier:", &AccountStore::typeWithIdentifier>,
    objc::Method<"requestAccessToAccountsWithType:withCompletionHandler:",
                 &AccountStore::requestAccess>,
    objc::Method<"accountsWithAccountType:", &AccountStore::accountsOf>,
    objc::ClassMethod<"standIn_setUsernames:ofType:", &AccountStore::setUsernames>,
    objc::ClassMethod<"standIn_setAccessGranted:", &AccountStore::setGranted>,
    objc::ClassMethod<"standIn_accessRequests", &AccountStore::requests>)

AccountType* AccountStore::typeWithIdentifier(NSString* identifier) {
  if (identifier == nullptr) return nullptr;
  auto* type = static_cast<AccountType*>(class_createInstance(&objc_class_ACAccountType, 0));
  type->identifier = Strong<NSString>::adopt(send<NSString*>(identifier, "copy"_sel));
  return static_cast<AccountType*>(objc_autorelease(type));
}

void AccountStore::requestAccess(ACAccountType* type, objc::Block<void(bool, NSError*)> handler) {
  bool granted = false;
  {
    const std::lock_guard lock(device().mutex);
    ++device().requests;
    granted = type != nullptr && device().grants;
    hasAccess = granted;
  }
  if (handler == nullptr) return;
  auto answer = objc::makeBlock<void()>(
      [granted, kept = objc::keepBlock(handler)] { kept(granted, nullptr); });
  dispatch_async(dispatch_get_global_queue(0, 0), answer);
}

NSArray* AccountStore::accountsOf(ACAccountType* type) {
  std::vector<std::string> names;
  {
    const std::lock_guard lock(device().mutex);
    if (type == nullptr || !hasAccess) return nullptr;
    auto found = device().usernames.find(host::text(send<NSString*>(type, "identifier"_sel)));
    if (found != device().usernames.end()) names = found->second;
  }
  NSMutableArray* accounts = NSMutableArray::array();
  for (const std::string& name : names) {
    auto account = Strong<Account>::adopt(
        static_cast<Account*>(class_createInstance(&objc_class_ACAccount, 0)));
    account->name = host::makeOwnedString(name);
    account->type = Strong<ACAccountType>::retain(type);
    send(accounts, NSMutableArray::addObject, account);
  }
  return accounts;
}

void AccountStore::setUsernames(NSArray* names, NSString* type) {
  const auto count = send<NSUInteger>(names, "count"_sel);
  std::vector<std::string> list;
  list.reserve(count);
  for (NSUInteger i = 0; i < count; ++i)
    list.emplace_back(host::text(static_cast<NSString*>(send(names, NSArray::objectAtIndex, i))));
  const std::lock_guard lock(device().mutex);
  device().usernames[std::string(host::text(type))] = std::move(list);
}
