#include "shell/AppDelegate.h"

#include "base/Text.h"
#include "notices/Alerts.h"
#include "notices/Toast.h"
#include "platform/FileOpener.h"
#include "preferences/Config.h"
#include "preferences/Defaults.h"
#include "preferences/Prefs.h"
#include "shell/AboutPanel.h"
#include "shell/Commands.h"
#include "shell/StatusMenu.h"

#include <QDir>
#include <QRegularExpression>
#include <QTimer>

namespace brindlecam {

AppDelegate::AppDelegate(const Prefs& prefs, Alerts& alerts, Toast& toast, FileOpener& opener)
    : m_prefs(prefs)
    , m_alerts(alerts)
    , m_toast(toast)
    , m_opener(opener)
{
}

bool AppDelegate::isAvailable(CaptureAction action) const
{
    switch (action) {
    case CaptureAction::area:
        return bool(onArea);
    case CaptureAction::fullScreen:
        return bool(onFullScreen);
    case CaptureAction::recents:
        return bool(onRecents);
    }
    return false;
}

void AppDelegate::capture(CaptureAction action)
{
    QTimer::singleShot(Config::menuToCapture, Qt::PreciseTimer, this,
                       [this, action] { perform(action); });
}

void AppDelegate::perform(CaptureAction action)
{
    if (!isAvailable(action))
        return;
    if (action != CaptureAction::recents && onHideRecents)
        onHideRecents();
    switch (action) {
    case CaptureAction::area:
        onArea();
        break;
    case CaptureAction::fullScreen:
        onFullScreen();
        break;
    case CaptureAction::recents:
        onRecents();
        break;
    }
}

void AppDelegate::captureFromMenu(const QString& representedObject)
{
    if (const std::optional<CaptureAction> action = captureAction(representedObject))
        capture(*action);
}

void AppDelegate::captureDelayed(const QString& representedObject)
{
    static const QRegularExpression whole(QStringLiteral("^[+-]?[0-9]+$"));
    const QStringList pieces = representedObject.split(QLatin1Char('|'), Qt::SkipEmptyParts);
    if (pieces.size() != 2 || !whole.match(pieces.at(1)).hasMatch())
        return;
    const std::optional<CaptureAction> action = captureAction(pieces.at(0));
    bool fits = false;
    const int seconds = pieces.at(1).toInt(&fits);
    if (action && fits && onCountdown)
        onCountdown(*action, seconds);
}

void AppDelegate::reopen()
{
    capture(CaptureAction::area);
}

InstanceAnswer AppDelegate::answer(const InstanceRequest& request)
{
    const Command command = Commands::parseWords(request.words);
    if (const auto spoken = Commands::spokenReply(command))
        return {*spoken};
    const CaptureAction action = command.action.value_or(CaptureAction::area);
    if (!isAvailable(action))
        return {Commands::notAvailableReply()};
    // Refused by the room itself: only that one knows what to show instead.
    if (action != CaptureAction::recents && isBusy && isBusy())
        return {Commands::busyReply(), [this, action] { perform(action); }};
    if (!command.action)
        return {{}, [this] { reopen(); }};
    return {{}, [this, action] { perform(action); }};
}

void AppDelegate::openCapturesFolder()
{
    const QString folder = m_prefs.saveFolder();
    QDir().mkpath(folder);
    m_opener.openFolder(folder, this, [this](bool opened) {
        if (!opened)
            m_toast.show(text("No se pudo abrir la carpeta"));
    });
}

void AppDelegate::showAbout()
{
    if (m_about) {
        m_alerts.bringForward(*m_about);
        return;
    }
    m_about = new AboutPanel;
    m_alerts.show(m_about);
}

void AppDelegate::showWelcomeIfFirstRun()
{
    const QString key = QStringLiteral("didShowWelcome");
    if (m_prefs.defaults().boolean(key).value_or(false))
        return;
    m_prefs.defaults().setBoolean(key, true);
    m_alerts.show(
        {.message = text("Brindlecam vive en la barra de menú 🍃"),
         .informative = text("Presiona ⇧⌘9 para capturar un área o ⇧⌘8 para la pantalla completa; "
                             "la captura queda lista para pegar. Puedes cambiar los atajos en "
                             "Configuración….\n\nLa primera vez, macOS te pedirá el permiso de "
                             "“Grabación de pantalla”. Actívalo y vuelve a abrir Brindlecam.")});
}

QString AppDelegate::updateTitle(const std::optional<QString>& newerVersion)
{
    return newerVersion ? text("Descargar Brindlecam %1…").arg(*newerVersion)
                        : text("Buscar actualizaciones…");
}

void AppDelegate::wire(StatusMenu& menu)
{
    menu.onCapture = [this](const QString& object) { captureFromMenu(object); };
    if (onCountdown)
        menu.onCaptureDelayed = [this](const QString& object) { captureDelayed(object); };
    menu.onOpenFolder = [this] { openCapturesFolder(); };
    menu.onSettings = onShowSettings;
    menu.onUpdate = onUpdate;
    menu.onAbout = [this] { showAbout(); };
    menu.onQuit = onQuit;
    menu.isAvailable = [this](CaptureAction action) { return isAvailable(action); };
    menu.setUpdateTitle(updateTitle(std::nullopt));
    menu.refresh();
}

} // namespace brindlecam
