// URLs: their text, split into parts. Text that is not a valid URL makes none.
#include <cctype>
#include <cstring>
#include <optional>

#include "Foundation/text.h"
#include "objc/define.h"
#include "runtime/runtime.h"

namespace {

bool isLetterOrDigit(char c) { return std::isalnum(static_cast<unsigned char>(c)) != 0; }
bool isHexDigit(char c) { return std::isxdigit(static_cast<unsigned char>(c)) != 0; }

/// Letters, digits and the marks of a URL, one "#" at most, "%" before two hexadecimal digits.
bool isUrl(std::string_view text) {
  bool inFragment = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '%') {
      if (i + 2 >= text.size() || !isHexDigit(text[i + 1]) || !isHexDigit(text[i + 2]))
        return false;
    } else if (c == '#') {
      if (inFragment) return false;
      inFragment = true;
    } else if (!isLetterOrDigit(c) &&
               (c == '\0' || std::strchr("-._~:/?[]@!$&'()*+,;=", c) == nullptr)) {
      return false;
    }
  }
  return true;
}

using Part = std::optional<std::string_view>;

struct Parts {
  explicit Parts(std::string_view text) {
    const std::size_t colon = text.find_first_of(":/?#");
    if (colon != std::string_view::npos && colon > 0 && text[colon] == ':') {
      scheme = text.substr(0, colon);
      text.remove_prefix(colon + 1);
    }
    text = text.substr(0, text.find('#'));
    const std::size_t question = text.find('?');
    if (question != std::string_view::npos) query = text.substr(question + 1);
    text = text.substr(0, question);
    if (text.starts_with("//")) {
      text.remove_prefix(2);
      host = text.substr(0, text.find('/'));
      text.remove_prefix(host->size());
    }
    path = text;
  }

  Part scheme, host, path, query;
};

NSString* stringOf(Part part) { return part ? host::makeString(*part) : nullptr; }

struct Url : NSURL {
  static Url* withString(Class cls, SEL, NSString* text) {
    return static_cast<Url*>(
        objc_autorelease(send<Url*>(send<Url*>(cls, "alloc"_sel), "initWithString:"_sel, text)));
  }
  Url* initWithString(NSString* value) {
    if (value == nullptr) {
      objc_release(this);
      throw host::runtime::Exception("NSInvalidArgumentException", "nil string parameter");
    }
    if (!isUrl(host::text(value))) {
      objc_release(this);
      return nullptr;
    }
    text = Strong<NSString>::adopt(send<NSString*>(value, "copy"_sel));
    return this;
  }

  NSString* absolute() { return text; }
  Parts parts() { return Parts(host::text(text)); }
  NSString* scheme() { return stringOf(parts().scheme); }
  /// Nil if it is empty, as on the platform.
  NSString* hostName() {
    const Part name = parts().host;
    return !name || name->empty() ? nullptr : stringOf(name);
  }
  NSString* path() { return stringOf(parts().path); }
  NSString* query() { return stringOf(parts().query); }
  bool equals(NSObject* other) {
    auto* url = objc::as<NSURL>(other);
    return url != nullptr &&
           send(text, NSString::isEqualToString, send(url, NSURL::absoluteString));
  }
  NSUInteger hashValue() { return send<NSUInteger>(text, "hash"_sel); }
  Url* copy() { return static_cast<Url*>(objc_retain(this)); }

  Strong<NSString> text;
};

}  // namespace

OBJC_CLASS_NAMED(NSURL, NSObject, Url, NSObject, objc::Ivar<"_urlString", &Url::text>,
                 objc::ClassMethod<"URLWithString:", &Url::withString>,
                 objc::Method<"initWithString:", &Url::initWithString>,
                 objc::Method<"absoluteString", &Url::absolute>,
                 objc::Method<"scheme", &Url::scheme>, objc::Method<"host", &Url::hostName>,
                 objc::Method<"path", &Url::path>, objc::Method<"query", &Url::query>,
                 objc::Method<"isEqual:", &Url::equals>, objc::Method<"hash", &Url::hashValue>,
                 objc::Method<"description", &Url::absolute>, objc::Method<"copy", &Url::copy>)
