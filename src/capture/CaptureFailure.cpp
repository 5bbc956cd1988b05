#include "capture/CaptureFailure.h"

#include "app/Alerts.h"
#include "app/Defaults.h"
#include "base/Text.h"
#include "platform/CaptureAccess.h"

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
    if (m_voice == Voice::silent)
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

void CaptureFailure::showPermissionAlert(const QString& detail)
{
    const QString informative =
        text("Actívalo en Ajustes del Sistema → Privacidad y seguridad → Grabación de pantalla y "
             "audio del sistema, y después vuelve a abrir Brindlecam.");
    m_alerts.show({.message = text("Brindlecam necesita permiso para capturar la pantalla"),
                   .informative = withDetail(informative, detail),
                   .buttons = {text("Abrir Ajustes"), text("Cancelar")}},
                  [this](std::optional<int> chosen) {
                      if (chosen == 0)
                          m_access.openSettings();
                  });
}

void CaptureFailure::showGrabAlert(const QString& detail)
{
    m_alerts.show(
        {.message = text("No se pudo capturar la pantalla"), .informative = detail, .buttons = {}});
}

} // namespace brindlecam
