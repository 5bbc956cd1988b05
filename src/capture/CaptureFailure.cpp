#include "capture/CaptureFailure.h"

#include "base/Text.h"
#include "platform/CaptureAccess.h"
#include "preferences/Defaults.h"

#include <utility>

namespace brindlecam {

namespace {

QString withDetail(const QString& informative, const QString& detail)
{
    if (detail.isEmpty())
        return informative;
    const QString inParentheses = QStringLiteral("(%1)").arg(detail);
    return informative.isEmpty() ? inParentheses
                                 : informative + QStringLiteral("\n\n") + inParentheses;
}

} // namespace

CaptureFailure::CaptureFailure(CaptureAccess& access, Alerts& alerts, Defaults& defaults,
                               Voice voice)
    : m_access(access)
    , m_alerts(alerts)
    , m_defaults(defaults)
    , m_voice(voice)
{
}

void CaptureFailure::handle(const Error& error)
{
    if (!speaks())
        return;
    if (!m_access.needsPermission()) {
        showGrabAlert(error.message);
        return;
    }
    const QString key = QStringLiteral("didRequestScreenCapture");
    const bool askedBefore = m_defaults.boolean(key).value_or(false);
    m_defaults.setBoolean(key, true);
    if (!m_access.request() && askedBefore)
        showPermissionAlert(error.message);
}

void CaptureFailure::show(AlertContent content, std::function<void(std::optional<int>)> done)
{
    if (std::exchange(m_alertOpen, true))
        return;
    m_alerts.show(content, [this, done = std::move(done)](std::optional<int> chosen) {
        m_alertOpen = false;
        if (done)
            done(chosen);
    });
}

void CaptureFailure::showPermissionAlert(const QString& detail)
{
    const QString informative =
        text("Actívalo en Ajustes del Sistema → Privacidad y seguridad → Grabación de pantalla y "
             "audio del sistema, y después vuelve a abrir Brindlecam.");
    show({.message = text("Brindlecam necesita permiso para capturar la pantalla"),
          .informative = withDetail(informative, detail),
          .buttons = {text("Abrir Ajustes"), text("Cancelar")}},
         [this](std::optional<int> chosen) {
             if (chosen == 0)
                 m_access.openSettings();
         });
}

void CaptureFailure::showGrabAlert(const QString& detail)
{
    show(
        {.message = text("No se pudo capturar la pantalla"), .informative = detail, .buttons = {}});
}

} // namespace brindlecam
