#include "Preferences/stored_preferences.h"

#include <map>

#include "Foundation/darwin_notify.h"
#include "Foundation/property_list.h"
#include "Foundation/run_loop.h"
#include "Foundation/text.h"
#include "objc/strong.h"
#include "process/container.h"

namespace host {
namespace {

/// What waits to be written, by domain.
std::map<std::string, Strong<NSMutableDictionary>>& unwritten() {
  static auto* domains = new std::map<std::string, Strong<NSMutableDictionary>>;
  return *domains;
}

NSString* textOf(PSSpecifier* row, NSString* key) {
  return objc::as<NSString>(send(row, PSSpecifier::propertyForKey, key));
}

/// Empty for a name that would be another folder's.
std::string domainFile(const std::string& domain) {
  if (domain.empty() || domain.find('/') != domain.npos) return {};
  return hostPath("/var/mobile/Library/Preferences/" + domain + ".plist");
}

NSDictionary* readDomain(const std::string& domain) {
  if (const auto found = unwritten().find(domain); found != unwritten().end()) return found->second;
  return objc::as<NSDictionary>(propertyListFromFile(domainFile(domain)));
}

void writeDomain(const std::string& domain) {
  const auto found = unwritten().find(domain);
  if (found == unwritten().end()) return;
  if (const auto xml = xmlFromPropertyList(found->second))
    writeFile(domainFile(domain), *xml, true);
  unwritten().erase(found);
}

}  // namespace

NSObject* storedPreference(PSSpecifier* row) {
  const std::string domain(text(textOf(row, "defaults"_ns)));
  NSObject* value = nullptr;
  if (!domain.empty())
    value = send(readDomain(domain), NSDictionary::objectForKey, textOf(row, PSKeyNameKey));
  return value != nullptr ? value : send(row, PSSpecifier::propertyForKey, PSDefaultValueKey);
}

void storePreference(NSObject* value, PSSpecifier* row) {
  const std::string domain(text(textOf(row, "defaults"_ns)));
  NSString* key = textOf(row, PSKeyNameKey);
  if (!domainFile(domain).empty() && key != nullptr) {
    auto* old = static_cast<NSMutableDictionary*>(send(readDomain(domain), NSObject::mutableCopy));
    auto changed = old != nullptr
                       ? Strong<NSMutableDictionary>::adopt(old)
                       : Strong<NSMutableDictionary>::retain(NSMutableDictionary::dictionary());
    if (value == nullptr) send(changed, NSMutableDictionary::removeObjectForKey, key);
    else send(changed, NSMutableDictionary::setObjectForKey, value, key);
    unwritten()[domain] = std::move(changed);
    MainRunLoop::instance().perform([domain] { writeDomain(domain); });
  }
  const auto name = text(textOf(row, "PostNotification"_ns));
  if (!name.empty()) postDarwinNotification(name);
}

}  // namespace host
