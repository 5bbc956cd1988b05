#include "DialogPictures.h"

#include "OpenDialog.h"
#include "Photographer.h"
#include "capture/CaptureFailure.h"
#include "capture/SavePanel.h"
#include "notices/Alerts.h"
#include "platform/Platform.h"
#include "preferences/Defaults.h"
#include "preferences/Prefs.h"
#include "shell/AppDelegate.h"

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

void takeDialogPictures(Photographer& photographer, AppDelegate& delegate, Prefs& prefs)
{
    Platform& platform = photographer.platform();
    Alerts alerts(*platform.panels);
    const auto take = [&](const char* name, const std::function<void()>& open) {
        open();
        takeOpenDialog(photographer, name);
    };

    take("alert-welcome", [&] { delegate.showWelcomeIfFirstRun(); });
    take("alert-permission", [&] {
        RefusedAccess access;
        prefs.defaults().setBoolean(QStringLiteral("didRequestScreenCapture"), true);
        CaptureFailure(access, alerts, prefs.defaults(), CaptureFailure::Voice::alerts)
            .handle({QStringLiteral("El portal no dio permiso.")});
    });
    take("alert-grab", [&] {
        CaptureFailure(*platform.captureAccess, alerts, prefs.defaults(),
                       CaptureFailure::Voice::alerts)
            .handle({QStringLiteral("El servidor X no entrega la imagen de la pantalla.")});
    });
    take("about", [&] { delegate.showAbout(); });
    take("save-panel", [&] {
        SavePanel::open(alerts, prefs.saveFolder(), Prefs::newFileName(),
                        [](const std::optional<QString>&) {});
    });
}

} // namespace brindlecam::pictures
