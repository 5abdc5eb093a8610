#include "rows/undo.h"

#include "pages/VNXPage.h"
#include "settings/settings.h"
#include "text.h"

namespace varnix::pane {

void addUndo(Rows& rows) {
  NSString* name = undoName();
  if (name == nullptr) return;
  rows.button("undo"_ns, NSString::stringWithFormat(text("undo"_ns), name), VNXPage::undo);
}

}  // namespace varnix::pane
