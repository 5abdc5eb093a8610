#include "pages/VNXFrontPage.h"

#include "alerts/VNXQuestion.h"
#include "objc/implementation.h"
#include "pages/VNXApplicationsPage.h"
#include "pages/VNXPresetsPage.h"
#include "pages/footer.h"
#include "pictures/share.h"
#include "rows/colors.h"
#include "rows/undo.h"
#include "settings/exchange.h"
#include "settings/settings.h"
#include "text.h"
#include "varnix/pane.h"

namespace varnix::pane {

namespace {

NSString* account() { return "quillmarsh"_ns; }

struct FrontPage : objc::Implementation<VNXFrontPage, PSListController> {
  NSArray* rows() {
    Rows rows(self());
    rows.group(nullptr, text("enabled.note"_ns));
    rows.toggle("enabled"_ns, true, text("enabled"_ns));

    rows.group(text("dye.title"_ns), text("album.note"_ns));
    addDye(rows, {});
    rows.toggle("use_album_art"_ns, false, text("album"_ns));

    rows.group(text("elements.title"_ns), text("elements.note"_ns));
    addElements(rows, {});

    rows.group();
    rows.link("applications"_ns, text("applications"_ns), objc::classOf<VNXApplicationsPage>());
    rows.link("presets"_ns, text("presets"_ns), objc::classOf<VNXPresetsPage>());

    rows.group(nullptr, text("exchange.note"_ns));
    rows.button("copy"_ns, text("copy"_ns), VNXFrontPage::copySettings);
    rows.button("paste"_ns, text("paste"_ns), VNXFrontPage::pasteSettings);
    addUndo(rows);

    rows.group();
    rows.button("restart"_ns, text("restart"_ns), VNXFrontPage::restart);

    rows.group();
    rows.button("mail"_ns, text("mail"_ns), VNXFrontPage::mail);
    rows.button("profile"_ns, text("profile"_ns), VNXFrontPage::profile);

    rows.group(versionFooter());
    return rows.all();
  }

  void viewDidLoad() {
    objc::sendSuper<VNXFrontPage>(self(), PSListController::viewDidLoad);
    QKAddTwitterShareButton(self(), shareGlyph(), text("share.text"_ns));
  }

  /// The invitation comes once, ever.
  void viewDidAppear(bool animated) {
    objc::sendSuper<VNXFrontPage>(self(), PSListController::viewDidAppear, animated);
    NSString* key = "invited"_ns;
    if (send(memory(), KTPrefsManager::boolForKey, key)) return;
    send(memory(), KTPrefsManager::setObject, NSNumber::numberWithBool(true), key);
    send(memory(), KTPrefsManager::save);
    QKShowTwitterFollowAlert("Varnix"_ns, text("invitation"_ns), account());
  }

  void copySettings(PSSpecifier*) {
    send(UIPasteboard::generalPasteboard(), UIPasteboard::setString, exportedSettings());
    tell(text("copied"_ns), text("copied.note"_ns));
  }

  void pasteSettings(PSSpecifier*) {
    NSDictionary* settings =
        importedSettings(send(UIPasteboard::generalPasteboard(), UIPasteboard::string));
    if (settings == nullptr) return tell(text("paste.nothing"_ns), text("paste.nothing.note"_ns));
    ask(text("paste.ask"_ns), text("replace.note"_ns), text("replace"_ns), self(),
        VNXFrontPage::importConfirmed, settings);
  }

  void importConfirmed(NSDictionary* settings) { replaceSettings(settings, text("paste.name"_ns)); }

  void restart(PSSpecifier*) {
    ask(text("restart.ask"_ns), text("restart.note"_ns), text("restart.confirm"_ns), self(),
        VNXFrontPage::restartConfirmed, nullptr);
  }

  void restartConfirmed(NSObject*) { QKKillProcess(nullptr, "SpringBoard"_ns); }

  void mail(PSSpecifier*) { QKOpenMailAddress("varnix@quillmarsh.example"_ns); }

  void profile(PSSpecifier*) { QKOpenTwitterUsername(account()); }
};

}  // namespace
}  // namespace varnix::pane

OBJC_CLASS_NAMED(
    VNXFrontPage, VNXPage, varnix::pane::FrontPage, PSListController,
    objc::Implements<VNXPage::rows, &varnix::pane::FrontPage::rows>,
    objc::Implements<PSListController::viewDidLoad, &varnix::pane::FrontPage::viewDidLoad>,
    objc::Implements<PSListController::viewDidAppear, &varnix::pane::FrontPage::viewDidAppear>,
    objc::Implements<VNXFrontPage::copySettings, &varnix::pane::FrontPage::copySettings>,
    objc::Implements<VNXFrontPage::pasteSettings, &varnix::pane::FrontPage::pasteSettings>,
    objc::Implements<VNXFrontPage::importConfirmed, &varnix::pane::FrontPage::importConfirmed>,
    objc::Implements<VNXFrontPage::restart, &varnix::pane::FrontPage::restart>,
    objc::Implements<VNXFrontPage::restartConfirmed, &varnix::pane::FrontPage::restartConfirmed>,
    objc::Implements<VNXFrontPage::mail, &varnix::pane::FrontPage::mail>,
    objc::Implements<VNXFrontPage::profile, &varnix::pane::FrontPage::profile>)
