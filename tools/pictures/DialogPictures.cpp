#include "DialogPictures.h"

#include "Photographer.h"
#include "capture/CaptureFailure.h"
#include "capture/SavePanel.h"
#include "notices/Alerts.h"
#include "notices/Toast.h"
#include "platform/Platform.h"
#include "preferences/Defaults.h"
#include "preferences/Prefs.h"
#include "shell/AppDelegate.h"

#include <QDir>

#include <functional>

namespace brindlecam::pictures {

namespace {

/// A system that asks for a permission and never gives it.
class RefusedAccess final : public CaptureAccess {
public:
    [[nodiscard]] bool needsPermission() const override { return true; }
    bool request() override { return false; }
    void openSettings() override {}
};

} // namespace

void takeDialogPictures(Photographer& photographer, Prefs& prefs)
{
    Platform& platform = photographer.platform();
    Toast toast(*platform.displays, *platform.panels);
    const auto take = [&](const char* name, const std::function<void(Alerts&)>& open) {
        {
            Alerts alerts(*platform.panels);
            open(alerts);
            photographer.await(QStringLiteral("the dialog"), [&] { return alerts.visible(); });
            photographer.take(QLatin1String(name));
        }
        photographer.rest();
    };

    take("alert-welcome", [&](Alerts& alerts) {
        AppDelegate(prefs, alerts, toast, *platform.fileOpener).showWelcomeIfFirstRun();
    });
    take("alert-permission", [&](Alerts& alerts) {
        RefusedAccess access;
        prefs.defaults().setBoolean(QStringLiteral("didRequestScreenCapture"), true);
        CaptureFailure(access, alerts, prefs.defaults(), CaptureFailure::Voice::alerts)
            .handle({QStringLiteral("El portal no dio permiso.")});
    });
    take("alert-grab", [&](Alerts& alerts) {
        CaptureFailure(*platform.captureAccess, alerts, prefs.defaults(),
                       CaptureFailure::Voice::alerts)
            .handle({QStringLiteral("El servidor X no entrega la imagen de la pantalla.")});
    });
    take("about", [&](Alerts& alerts) {
        AppDelegate(prefs, alerts, toast, *platform.fileOpener).showAbout();
    });
    take("save-panel", [&](Alerts& alerts) {
        SavePanel::open(alerts, prefs.saveFolder(), Prefs::newFileName(),
                        [](const std::optional<QString>&) {});
    });
}

} // namespace brindlecam::pictures
