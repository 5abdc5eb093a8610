// Errors, and the response of an HTTP server: a domain or a URL, and a number.
#include "objc/define.h"
#include "objc/strong.h"
#include "platform/Social.h"
#include "runtime/send.h"

namespace {

struct Error : NSError {
  static Error* withDomain(Class cls, SEL, NSString* domain, NSInteger code, NSDictionary*) {
    auto* error = static_cast<Error*>(objc_autorelease(class_createInstance(cls, 0)));
    error->domain = Strong<NSString>::adopt(send<NSString*>(domain, "copy"_sel));
    error->number = code;
    return error;
  }

  Strong<NSString> domain;
  NSInteger number;
};

struct HttpResponse : NSHTTPURLResponse {
  HttpResponse* init(NSURL* address, NSInteger code, NSString*, NSDictionary*) {
    url = Strong<NSURL>::retain(address);
    status = code;
    return this;
  }

  Strong<NSURL> url;
  NSInteger status;
};

}  // namespace

OBJC_CLASS_NAMED(NSError, NSObject, Error, NSObject, objc::Readable<"domain", &Error::domain>,
                 objc::Readable<"code", &Error::number>,
                 objc::ClassMethod<"errorWithDomain:code:userInfo:", &Error::withDomain>)

OBJC_CLASS_NAMED(
    NSHTTPURLResponse, NSObject, HttpResponse, NSObject,
    objc::Readable<"URL", &HttpResponse::url, "_url">,
    objc::Readable<"statusCode", &HttpResponse::status>,
    objc::Method<"initWithURL:statusCode:HTTPVersion:headerFields:", &HttpResponse::init>)
