#include "pages/footer.h"

#include "objc/strong.h"
#include "varnix/pane.h"

namespace varnix::pane {

namespace {
constinit PSSpecifier* remembered = nullptr;
}

PSSpecifier* versionFooter() {
  if (remembered == nullptr) {
    PSSpecifier* made =
        QKVersionCopyrightSpecifier("com.quillmarsh.varnix2"_ns, "Quillmarsh"_ns, "2015"_ns);
    remembered = Strong<PSSpecifier>::retain(made).leak();
  }
  return remembered;
}

}  // namespace varnix::pane
