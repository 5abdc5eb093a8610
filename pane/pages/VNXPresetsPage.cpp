#include "pages/VNXPresetsPage.h"

#include "alerts/VNXQuestion.h"
#include "objc/implementation.h"
#include "pictures/disc.h"
#include "rows/undo.h"
#include "settings/exchange.h"
#include "settings/settings.h"
#include "text.h"

namespace varnix::pane {

namespace {

constexpr std::size_t kPresetCount = sizeof settings::kPresets / sizeof *settings::kPresets;

/// Null if the row is none of a preset.
const settings::Preset* presetOf(PSSpecifier* row) {
  const NSInteger index = indexOf(row);
  const bool isThere = index >= 0 && index < static_cast<NSInteger>(kPresetCount);
  return isThere ? &settings::kPresets[index] : nullptr;
}

NSString* titled(const settings::Preset& preset) { return text("preset"_ns, preset.name); }

struct PresetsPage : objc::Implementation<VNXPresetsPage, PSListController> {
  NSArray* rows() {
    Rows rows(self());
    rows.group(nullptr, text("presets.note"_ns));
    for (std::size_t i = 0; i < kPresetCount; ++i) {
      const settings::Preset& preset = settings::kPresets[i];
      PSSpecifier* row = rows.button(NSString::stringWithUTF8String(preset.name), titled(preset),
                                     VNXPresetsPage::choose);
      send(row, PSSpecifier::setProperty, NSNumber::numberWithLongLong(static_cast<long long>(i)),
           kIndex());
      setIcon(row, disc(preset));
    }
    if (undoName() != nullptr) rows.group();
    addUndo(rows);
    return rows.all();
  }

  void choose(PSSpecifier* row) {
    const settings::Preset* preset = presetOf(row);
    if (preset == nullptr) return;
    ask(NSString::stringWithFormat(text("preset.ask"_ns), titled(*preset)), text("replace.note"_ns),
        text("replace"_ns), self(), VNXPresetsPage::chosen, row);
  }

  void chosen(PSSpecifier* row) {
    if (const settings::Preset* preset = presetOf(row))
      replaceSettings(settingsWith(*preset), titled(*preset));
  }
};

}  // namespace
}  // namespace varnix::pane

OBJC_CLASS_NAMED(VNXPresetsPage, VNXPage, varnix::pane::PresetsPage, PSListController,
                 objc::Implements<VNXPage::rows, &varnix::pane::PresetsPage::rows>,
                 objc::Implements<VNXPresetsPage::choose, &varnix::pane::PresetsPage::choose>,
                 objc::Implements<VNXPresetsPage::chosen, &varnix::pane::PresetsPage::chosen>)
