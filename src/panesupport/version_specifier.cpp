// The group at a pane's end. Its footer shows the package's version and the copyright holder.
#include "objc/answers.h"
#include "objc/strong.h"
#include "platform/Foundation.h"
#include "platform/Preferences.h"
#include "varnix/pane.h"

namespace {

NSString* printedBy(NSString* command) {
  NSString* shell = "/bin/sh"_ns;
  // Launching a file that cannot be run would raise.
  if (!send(NSFileManager::defaultManager(), NSFileManager::isExecutableFileAtPath, shell))
    return ""_ns;
  auto task = objc::make<NSTask>();
  if (!objc::answers(task, NSTask::setLaunchPath, NSTask::setArguments, NSTask::setStandardOutput,
                     NSTask::launch)) {
    return ""_ns;
  }
  NSObject* arguments[] = {"-c"_ns, command};
  NSPipe* pipe = NSPipe::pipe();
  send(task, NSTask::setLaunchPath, shell);
  send(task, NSTask::setArguments, NSArray::arrayWithObjects(arguments, 2));
  send(task, NSTask::setStandardOutput, pipe);
  send(task, NSTask::launch);
  NSData* bytes = send(send(pipe, NSPipe::fileHandleForReading), NSFileHandle::readDataToEndOfFile);
  auto text = Strong<NSString>::adopt(
      send(objc::alloc<NSString>(), NSString::initWithData, bytes, NSASCIIStringEncoding));
  return text == nullptr ? ""_ns : text.autorelease();
}

/// In the calendar that copyright years use, whatever the user's.
NSString* currentYear() {
  auto formatter = objc::make<NSDateFormatter>();
  send(formatter, NSDateFormatter::setLocale,
       NSLocale::localeWithLocaleIdentifier("en_US_POSIX"_ns));
  send(formatter, NSDateFormatter::setDateFormat, "yyyy"_ns);
  send(formatter, NSDateFormatter::setTimeZone, NSTimeZone::timeZoneForSecondsFromGMT(0));
  return send(formatter, NSDateFormatter::stringFromDate, NSDate::date());
}

}  // namespace

PSSpecifier* QKVersionCopyrightSpecifier(NSString* package, NSString* holder, NSString* firstYear) {
  NSString* version =
      printedBy(NSString::stringWithFormat("dpkg -s %@ | grep 'Version'"_ns, package));
  PSSpecifier* specifier = PSSpecifier::preferenceSpecifierNamed(""_ns, nullptr, nullptr, nullptr,
                                                                 nullptr, PSGroupCell, nullptr);
  NSString* year = currentYear();
  NSString* years = send(firstYear, NSObject::isEqual, year)
                        ? year
                        : NSString::stringWithFormat("%@ - %@"_ns, firstYear, year);
  NSString* form = NSString::stringWithUTF8String("\u00a9 %@ %@\n %@");
  NSString* footer = NSString::stringWithFormat(form, holder, years, version);
  send(specifier, PSSpecifier::setProperty, footer, "footerText"_ns);
  send(specifier, PSSpecifier::setProperty, "1"_ns, "footerAlignment"_ns);
  return specifier;
}
