// The group at a pane's end whose footer shows the package's version and who made it.
#include "objc/strong.h"
#include "platform/Foundation.h"
#include "platform/Preferences.h"
#include "varnix/pane.h"

namespace {

NSString* printedBy(NSString* command) {
  NSString* shell = "/bin/sh"_ns;
  // Launching what cannot be run would raise.
  if (!NSFileManager::defaultManager()->isExecutableFileAtPath(shell)) return ""_ns;
  auto task = Strong<NSTask>::adopt(send<NSTask*>(objc::alloc<NSTask>(), "init"_sel));
  if (task == nullptr) return ""_ns;
  NSObject* arguments[] = {"-c"_ns, command};
  NSPipe* pipe = NSPipe::pipe();
  task->setLaunchPath(shell);
  task->setArguments(NSArray::arrayWithObjects(arguments, 2));
  task->setStandardOutput(pipe);
  task->launch();
  NSData* bytes = pipe->fileHandleForReading()->readDataToEndOfFile();
  auto text = Strong<NSString>::adopt(send<NSString*>(
      objc::alloc<NSString>(), "initWithData:encoding:"_sel, bytes, NSASCIIStringEncoding));
  return text == nullptr ? ""_ns : text.autorelease();
}

/// In the calendar that package holders count in, whatever the user's.
NSString* currentYear() {
  auto formatter = Strong<NSDateFormatter>::adopt(
      send<NSDateFormatter*>(objc::alloc<NSDateFormatter>(), "init"_sel));
  formatter->setLocale(NSLocale::localeWithLocaleIdentifier("en_US_POSIX"_ns));
  formatter->setDateFormat("yyyy"_ns);
  formatter->setTimeZone(NSTimeZone::timeZoneForSecondsFromGMT(0));
  return formatter->stringFromDate(NSDate::date());
}

}  // namespace

PSSpecifier* QKVersionCopyrightSpecifier(NSString* package, NSString* holder, NSString* firstYear) {
  NSString* version =
      printedBy(NSString::stringWithFormat("dpkg -s %@ | grep 'Version'"_ns, package));
  PSSpecifier* specifier = PSSpecifier::preferenceSpecifierNamed(""_ns, nullptr, nullptr, nullptr,
                                                                 nullptr, PSGroupCell, nullptr);
  NSString* year = currentYear();
  NSString* years = send<bool>(firstYear, "isEqual:"_sel, year)
                        ? year
                        : NSString::stringWithFormat("%@ - %@"_ns, firstYear, year);
  NSString* form = NSString::stringWithUTF8String("\u00a9 %@ %@\n %@");
  NSString* footer = NSString::stringWithFormat(form, holder, years, version);
  send<void>(specifier, "setProperty:forKey:"_sel, footer, "footerText"_ns);
  send<void>(specifier, "setProperty:forKey:"_sel, "1"_ns, "footerAlignment"_ns);
  return specifier;
}
