#include "DialogPictures.h"

#include "Photographer.h"
#include "capture/CaptureFailure.h"
#include "capture/SavePanel.h"
#include "notices/Alerts.h"
#include "platform/Platform.h"
#include "preferences/Defaults.h"
#include "preferences/Prefs.h"
#include "shell/AppDelegate.h"

#include <QApplication>
#include <QDialog>

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

QDialog* openDialog()
{
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        auto* dialog = qobject_cast<QDialog*>(widget);
        if (dialog && dialog->isVisible())
            return dialog;
    }
    return nullptr;
}

} // namespace

void takeDialogPictures(Photographer& photographer, AppDelegate& delegate, Prefs& prefs)
{
    Platform& platform = photographer.platform();
    Alerts alerts(*platform.panels);
    const auto take = [&](const char* name, const std::function<void()>& open) {
        open();
        photographer.await(QStringLiteral("the dialog"), [] { return openDialog() != nullptr; });
        photographer.take(QLatin1String(name));
        delete openDialog();
        photographer.rest();
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
