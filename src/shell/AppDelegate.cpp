#include "shell/AppDelegate.h"

#include "base/Text.h"
#include "base/UnfinishedFiles.h"
#include "capture/CaptureController.h"
#include "capture/Countdown.h"
#include "capture/LongCaptures.h"
#include "capture/Output.h"
#include "drawer/RecentDrawer.h"
#include "history/History.h"
#include "notices/Activity.h"
#include "notices/Alerts.h"
#include "notices/Toast.h"
#include "platform/Platform.h"
#include "preferences/Config.h"
#include "preferences/Defaults.h"
#include "preferences/Prefs.h"
#include "settings/Updater.h"
#include "shell/AboutPanel.h"
#include "shell/Commands.h"
#include "shell/SingleInstance.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QTimer>

namespace brindlecam {

AppDelegate::AppDelegate(const Rooms& rooms)
    : m_rooms(rooms)
    , m_background(rooms.executor)
    , m_actions(makeActions(*this, rooms.prefs))
    , m_hotKeyCenter(*rooms.platform.hotKeys, m_actions)
    , m_hostedMenu(m_actions, rooms.platform.keyNaming)
    , m_ownMenu(m_actions, rooms.platform.keyNaming)
    , m_settings({rooms.platform, rooms.prefs, rooms.history, rooms.alerts, *this, rooms.executor})
{
    for (StatusMenu* menu : {&m_hostedMenu, &m_ownMenu})
        connect(&menu->menu(), &QMenu::aboutToShow, this, [this] { noteDrawer(); });
    m_hotKeyCenter.onAnswered = [this] { m_settings.hotKeysAnswered(); };
}

bool AppDelegate::listen()
{
    return m_rooms.instance.listen(
        [this](const InstanceRequest& request) { return answer(request); });
}

void AppDelegate::start(const Command& command)
{
    m_rooms.platform.quitSignals->whenAsked(this, [this] { quit(); });
    m_statusItem.emplace(*m_rooms.platform.trayHosts, m_hostedMenu, m_ownMenu);
    reloadHotKeys();
    if (const auto asked = errand(command))
        asked();
    if (!command.action || command.delay)
        m_rooms.captures.warmUp();
    showWelcomeIfFirstRun();
    m_rooms.updater.onChange = [this] { refreshUpdateItem(); };
    m_rooms.updater.start();
    tidyFolders();
}

// Empty for a program that is just started.
std::function<void()> AppDelegate::errand(const Command& command)
{
    if (command.other) {
        const Action* const action = m_actions.find(*command.other);
        return action ? action->run : std::function<void()>();
    }
    if (command.action && command.delay)
        return [this, command] { captureDelayed(*command.action, *command.delay); };
    return command.action ? m_actions.captures.at(*command.action).run : std::function<void()>();
}

void AppDelegate::tidyFolders() const
{
    // A disk may take longer than this object lives: only values go along.
    m_rooms.executor([history = m_rooms.history.folders(), captures = m_rooms.prefs.saveFolder(),
                      settings = m_rooms.prefs.defaults().folder()] {
        History(history).tidy();
        const QDateTime now = QDateTime::currentDateTime();
        UnfinishedFiles::removeAbandoned(captures, now);
        UnfinishedFiles::removeAbandoned(settings, now);
    });
}

void AppDelegate::quit()
{
    if (m_rooms.activity.quitting())
        return;
    // From here on nothing new begins, whoever asks.
    m_rooms.activity.stage = Activity::Stage::quitting;
    m_rooms.instance.hangUp();
    m_settings.close();
    m_hotKeyCenter.releaseAll();
    m_rooms.countdown.cancel();
    m_rooms.longCaptures.cancel();
    m_statusItem.reset();
    m_rooms.drawer.leave(ScreenCover::Focus::goesBack);
    m_rooms.captures.wrapUp([this] { leave(); });
}

void AppDelegate::leave()
{
    m_rooms.output.finishAll([this] {
        m_rooms.platform.pasteboard->handOver(this, [this] {
            m_rooms.activity.stage = Activity::Stage::left;
            QCoreApplication::quit();
        });
    });
}

bool AppDelegate::mayBegin() const
{
    return !m_rooms.activity.quitting();
}

void AppDelegate::capture(CaptureAction action)
{
    QTimer::singleShot(Config::menuToCapture, Qt::PreciseTimer, this,
                       [this, action, wasOpen = m_drawerWasOpen] {
                           if (action == CaptureAction::recents && wasOpen)
                               m_rooms.drawer.hide();
                           else
                               perform(action);
                       });
}

// The press that opens a menu which another program draws closes the drawer.
void AppDelegate::noteDrawer()
{
    m_drawerWasOpen = m_rooms.drawer.isOpen() || m_rooms.drawer.wasJustPressedAway();
}

// Nothing of ours is to lie over a frozen screen, or in a recording.
void AppDelegate::toggleDrawer()
{
    if (m_rooms.drawer.isOpen())
        m_rooms.drawer.hide();
    else if (!m_rooms.activity.any())
        m_rooms.drawer.show();
}

void AppDelegate::perform(CaptureAction action)
{
    if (!mayBegin())
        return;
    switch (action) {
    case CaptureAction::area:
        m_rooms.captures.begin();
        return;
    case CaptureAction::fullScreen:
        m_rooms.captures.captureFullScreen();
        return;
    case CaptureAction::recents:
        toggleDrawer();
        return;
    }
}

void AppDelegate::captureDelayed(CaptureAction action, int seconds)
{
    if (mayBegin())
        m_rooms.countdown.run(seconds, [this, action] { perform(action); });
}

void AppDelegate::reopen()
{
    capture(CaptureAction::area);
}

InstanceAnswer AppDelegate::answer(const InstanceRequest& request)
{
    const Command command = Commands::parseWords(request.words);
    using enum Commands::Updates;
    if (const auto spoken = Commands::spokenReply(command, offersUpdates() ? offered : absent))
        return {*spoken};
    if (command.other)
        return answerOther(*command.other);
    const CaptureAction id = command.action.value_or(CaptureAction::area);
    const Action& action = m_actions.captures.at(id);
    if (!action.canRun())
        return {Commands::notAvailableReply()};
    // Refused by the room itself: only that one knows what to show instead.
    if (m_rooms.activity.any())
        return {Commands::busyReply(), action.run};
    if (!command.action)
        return {{}, [this] { reopen(); }};
    return {{}, errand(command)};
}

InstanceAnswer AppDelegate::answerOther(ProgramAction id)
{
    const Action* const action = m_actions.find(id);
    if (!action || !action->canRun())
        return {Commands::notAvailableReply()};
    // Nothing of ours is to lie over a frozen screen, or in a recording.
    if (id != ProgramAction::quit && m_rooms.activity.any())
        return {Commands::busyReply()};
    return {{}, action->run};
}

void AppDelegate::openCapturesFolder()
{
    const QString folder = m_rooms.prefs.saveFolder();
    // It may lie on a disk that does not answer.
    m_background.run([folder] { QDir().mkpath(folder); },
                     [this, folder] {
                         m_rooms.platform.fileOpener->openFolder(folder, this, [this](bool opened) {
                             if (!opened)
                                 m_rooms.toast.show(text("No se pudo abrir la carpeta"));
                         });
                     });
}

void AppDelegate::showSettings()
{
    if (mayBegin())
        m_settings.show();
}

bool AppDelegate::offersUpdates() const
{
    return m_rooms.updater.canAsk();
}

void AppDelegate::updateFromMenu()
{
    if (m_rooms.updater.available())
        m_rooms.updater.openDownload();
    else
        m_rooms.updater.check(Updater::Asker::user);
}

void AppDelegate::refreshUpdateItem()
{
    const auto& newer = m_rooms.updater.available();
    const QString title = updateTitle(newer ? std::optional(newer->version) : std::nullopt);
    m_hostedMenu.setUpdateTitle(title);
    m_ownMenu.setUpdateTitle(title);
}

void AppDelegate::showAbout()
{
    if (m_about) {
        m_rooms.alerts.bringForward(*m_about);
        return;
    }
    m_about = new AboutPanel;
    m_rooms.alerts.show(m_about);
}

void AppDelegate::showWelcomeIfFirstRun()
{
    const QString key = QStringLiteral("didShowWelcome");
    if (m_rooms.prefs.defaults().boolean(key).value_or(false))
        return;
    m_rooms.prefs.defaults().setBoolean(key, true);
    m_rooms.alerts.show(
        {.message = text("Brindlecam vive en la barra de menú 🍃"),
         .informative = text("Presiona ⇧⌘9 para capturar un área o ⇧⌘8 para la pantalla completa; "
                             "la captura queda lista para pegar. Puedes cambiar los atajos en "
                             "Configuración….\n\nLa primera vez, macOS te pedirá el permiso de "
                             "“Grabación de pantalla”. Actívalo y vuelve a abrir Brindlecam.")});
}

void AppDelegate::reloadHotKeys()
{
    m_hotKeyCenter.reload();
    m_hostedMenu.refreshShortcuts();
    m_ownMenu.refreshShortcuts();
}

void AppDelegate::releaseHotKeys()
{
    m_hotKeyCenter.releaseAll();
}

const std::set<CaptureAction>& AppDelegate::failedHotKeys() const
{
    return m_hotKeyCenter.failed();
}

QString AppDelegate::updateTitle(const std::optional<QString>& newerVersion)
{
    return newerVersion ? text("Descargar Brindlecam %1…").arg(*newerVersion)
                        : text("Buscar actualizaciones…");
}

} // namespace brindlecam
