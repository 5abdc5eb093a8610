#include "gallery/page/page_files.h"

// Defined in page_files.S.
extern "C" {
extern const char varnixPageHtml[], varnixPageHtmlEnd[];
extern const char varnixPageStyle[], varnixPageStyleEnd[];
extern const char varnixPageScript[], varnixPageScriptEnd[];
}

namespace varnix::cli::gallery {

std::string_view pageHtml() { return {varnixPageHtml, varnixPageHtmlEnd}; }
std::string_view pageStyle() { return {varnixPageStyle, varnixPageStyleEnd}; }
std::string_view pageScript() { return {varnixPageScript, varnixPageScriptEnd}; }

}  // namespace varnix::cli::gallery
