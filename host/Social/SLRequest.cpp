// Requests to social networks. They are recorded, and sent to this machine at most.
#include <algorithm>
#include <cstdlib>
#include <mutex>
#include <string>
#include <vector>

#include "Foundation/text.h"
#include "Social/http_post.h"
#include "objc/define.h"
#include "platform/Dispatch.h"
#include "platform/Social.h"
#include "runtime/runtime.h"

namespace {
using Handler = objc::Block<void(NSData*, NSHTTPURLResponse*, NSError*)>;

struct Request : SLRequest {
  static Request* make(NSString* service, NSInteger method, NSURL* url, NSDictionary* parameters);
  void perform(Handler handler);
  static NSArray* performed();

  Strong<NSString> service;
  NSInteger method;
  Strong<NSURL> url;
  Strong<NSDictionary> parameters;
  Strong<ACAccount> account;
};

struct Performed {
  std::mutex mutex;
  std::vector<Strong<Request>> requests;
};

Performed& noted() {
  static auto* all = new Performed;
  return *all;
}

std::string textOf(NSObject* object) {
  return std::string(host::text(send<NSString*>(object, "description"_sel)));
}

host::HttpPost postOf(Request* request) {
  host::HttpPost post;
  post.host = textOf(send<NSString*>(request->url, "host"_sel));
  post.path = textOf(send<NSString*>(request->url, "path"_sel));
  if (request->account != nullptr)
    post.authorization =
        "OAuth oauth_token=\"" + textOf(send(request->account, ACAccount::username)) + "\"";
  auto* keys = send<NSArray*>(request->parameters, "allKeys"_sel);
  for (NSUInteger i = 0; i < send<NSUInteger>(keys, "count"_sel); ++i) {
    NSObject* key = send(keys, NSArray::objectAtIndex, i);
    post.form.emplace_back(textOf(key),
                           textOf(send(request->parameters, NSDictionary::objectForKey, key)));
  }
  std::ranges::sort(post.form);
  return post;
}

constexpr NSInteger kCannotConnect = -1004;

/// Sends it if it may be sent, waits, and passes on the answer.
void exchange(Request* request,
              const objc::KeptBlock<void(NSData*, NSHTTPURLResponse*, NSError*)>& handler) {
  const char* server = std::getenv("VARNIX_SOCIAL_HOST");
  const auto answer =
      server == nullptr ? std::nullopt : host::sendToLoopback(server, postOf(request));
  if (!answer) {
    auto* error =
        send<NSError*>(objc_getClass("NSError"), "errorWithDomain:code:userInfo:"_sel,
                       "NSURLErrorDomain"_ns, kCannotConnect, static_cast<NSDictionary*>(nullptr));
    handler(nullptr, nullptr, error);
    return;
  }
  auto response = Strong<NSHTTPURLResponse>::adopt(send<NSHTTPURLResponse*>(
      objc::alloc<NSHTTPURLResponse>(), "initWithURL:statusCode:HTTPVersion:headerFields:"_sel,
      request->url.get(), NSInteger{answer->status}, "HTTP/1.0"_ns,
      static_cast<NSDictionary*>(nullptr)));
  handler(NSData::dataWithBytes(answer->body.data(), answer->body.size()), response, nullptr);
}

}  // namespace

OBJC_CLASS_NAMED(
    SLRequest, NSObject, Request, NSObject, objc::Readable<"serviceType", &Request::service>,
    objc::Readable<"requestMethod", &Request::method>, objc::Readable<"URL", &Request::url>,
    objc::Readable<"parameters", &Request::parameters>,
    objc::Property<"account", &Request::account>,
    objc::ClassMethod<"requestForServiceType:requestMethod:URL:parameters:", &Request::make>,
    objc::Method<"performRequestWithHandler:", &Request::perform>,
    objc::ClassMethod<"standIn_performedRequests", &Request::performed>)

Request* Request::make(NSString* service, NSInteger method, NSURL* url, NSDictionary* parameters) {
  auto* request = static_cast<Request*>(class_createInstance(&objc_class_SLRequest, 0));
  request->service = Strong<NSString>::retain(service);
  request->method = method;
  request->url = Strong<NSURL>::retain(url);
  request->parameters = Strong<NSDictionary>::retain(parameters);
  return static_cast<Request*>(objc_autorelease(request));
}

void Request::perform(Handler handler) {
  if (handler == nullptr)
    throw host::runtime::Exception("NSInvalidArgumentException", "a request without a handler");
  auto self = Strong<Request>::retain(this);
  {
    const std::lock_guard lock(noted().mutex);
    noted().requests.push_back(self);
  }
  auto work =
      objc::makeBlock<void()>([self, kept = objc::keepBlock(handler)] { exchange(self, kept); });
  dispatch_async(dispatch_get_global_queue(0, 0), work);
}

NSArray* Request::performed() {
  NSMutableArray* list = NSMutableArray::array();
  const std::lock_guard lock(noted().mutex);
  for (const auto& request : noted().requests) send(list, NSMutableArray::addObject, request);
  return list;
}
