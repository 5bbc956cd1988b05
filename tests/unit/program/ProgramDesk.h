#pragma once

#include "Program.h"
#include "canvas/OverlayWindow.h"
#include "platform/null/NullPlatform.h"
#include "shell/Commands.h"
#include "shell/SingleInstance.h"
#include "support/FakeCompositing.h"
#include "support/FakeDisplays.h"
#include "support/FakeFileOpener.h"
#include "support/FakeGrabber.h"
#include "support/FakeHotKeys.h"
#include "support/FakePanels.h"
#include "support/FakePasteboard.h"
#include "support/FakePins.h"
#include "support/FakeQuitSignals.h"
#include "support/FakeTrayHosts.h"
#include "support/Install.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMenu>
#include <QTemporaryDir>
#include <QTest>

#include <optional>

namespace brindlecam::test {

/// The whole program on one screen of a world of fakes, in folders of its own, reachable by other
/// copies. What it asks of that world is noted in order.
struct ProgramDesk {
    static constexpr int kHotKey = shiftModifier | commandModifier;
    enum class Run { first, later };

    QTemporaryDir folder;
    QString socket = folder.filePath(QStringLiteral("socket"));
    QStringList journal;

    Platform platform = makeNullPlatform();
    FakeDisplays& displays = install<FakeDisplays>(platform.displays);
    FakeFileOpener& opener = install<FakeFileOpener>(platform.fileOpener);
    FakeGrabber& grabber = install<FakeGrabber>(platform.grabber);
    FakeHotKeys& keyboard = install<FakeHotKeys>(platform.hotKeys);
    FakePanels& panels = install<FakePanels>(platform.panels);
    FakePins& pinWindows = install<FakePins>(platform.pins);
    FakeCompositing& compositing = install<FakeCompositing>(platform.compositing);
    FakePasteboard& pasteboard = install<FakePasteboard>(platform.pasteboard);
    FakeQuitSignals& quitSignals = install<FakeQuitSignals>(platform.quitSignals);
    FakeTrayHosts& trays = install<FakeTrayHosts>(platform.trayHosts);
    SingleInstance instance{{socket, folder.filePath(QStringLiteral("lock"))}};
    std::optional<QUrl> feed = QUrl(QStringLiteral("https://example.org/version.json"));
    std::optional<Program> program;

    explicit ProgramDesk(Run run = Run::later)
    {
        for (const char* variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "HOME"})
            qputenv(variable, folder.path().toLocal8Bit());
        const QRect pixels(0, 0, 400, 300);
        displays.all = {{QStringLiteral("ONLY"), pixels, 1, pixels}};
        displays.pointerAt = QPoint(5, 5);
        if (run == Run::later)
            writeSettings({{QStringLiteral("didShowWelcome"), true}});
        keepJournal();
    }

    /// Makes the program, which reads its settings now.
    void make()
    {
        const bool first =
            std::holds_alternative<SingleInstance::First>(instance.handOver({{}, {}}));
        QVERIFY(first);
        program.emplace(platform, CaptureFailure::Voice::silent, instance, feed);
    }
    /// Lets it begin, as for a first copy.
    void start(std::optional<CaptureAction> action = std::nullopt)
    {
        if (!program)
            make();
        QVERIFY(program->delegate().listen());
        program->delegate().start({.action = action});
    }
    void quit() { program->delegate().quit(); }

    [[nodiscard]] InstanceAnswer ask(const InstanceRequest& request)
    {
        return program->delegate().answer(request);
    }
    [[nodiscard]] bool canRun(CaptureAction action)
    {
        return item(title(action)).isEnabled() && program->delegate().mayBegin();
    }
    [[nodiscard]] QMenu& menu() { return program->delegate().menu().menu(); }
    [[nodiscard]] HotKeyCenter& hotKeys() { return program->delegate().hotKeyCenter(); }
    [[nodiscard]] RecentDrawer& drawer() { return program->recentDrawer(); }
    [[nodiscard]] PinnedCaptures& pins() { return program->pinnedCaptures(); }
    [[nodiscard]] CaptureController& captures() { return program->captureController(); }

    /// The item of the menu with this title, its key left aside; of the submenu likewise.
    [[nodiscard]] QAction& item(const QString& title)
    {
        for (QMenu* menu : menusOf(this->menu())) {
            for (QAction* action : menu->actions()) {
                if (titleOf(*action) == title)
                    return *action;
            }
        }
        qFatal("no item is called %s", qPrintable(title));
    }
    [[nodiscard]] static QString titleOf(const QAction& item)
    {
        return item.text().section(QLatin1Char('\t'), 0, 0);
    }
    [[nodiscard]] static QString keyOf(const QAction& item)
    {
        return item.text().section(QLatin1Char('\t'), 1);
    }

    /// Settings as a user has left them; before make().
    static void writeSettings(const QJsonObject& settings)
    {
        const QByteArray json = QJsonDocument(settings).toJson();
        const QString path = Defaults::standardFile();
        QVERIFY(QDir().mkpath(QFileInfo(path).path()));
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(json), json.size());
    }
    [[nodiscard]] static qsizetype kept()
    {
        return QDir(History::standardFolder()).entryList(QDir::Files).size();
    }
    [[nodiscard]] static qsizetype overlays()
    {
        const auto all = QApplication::topLevelWidgets();
        return std::ranges::count_if(all, [](QWidget* widget) {
            return qobject_cast<OverlayWindow*>(widget) && widget->isVisible();
        });
    }
    /// How many panels of this kind were made so far.
    [[nodiscard]] qsizetype made(PanelRole role) const
    {
        return std::ranges::count(panels.roles, role);
    }

private:
    /// Other copies are heard or not, and trays; noted before whatever comes next.
    void note(const QString& what)
    {
        const bool reachable = QFileInfo::exists(socket);
        if (reachable != m_reachable)
            journal << (reachable ? QStringLiteral("listens") : QStringLiteral("hangs up"));
        m_reachable = reachable;
        if (m_inTray && !trays.anybodyListens())
            journal << QStringLiteral("no status item");
        m_inTray = trays.anybodyListens();
        journal << what;
    }

    void keepJournal()
    {
        quitSignals.onListen = [this] { note(QStringLiteral("heeds signals")); };
        trays.onListen = [this] { note(QStringLiteral("status item")); };
        keyboard.onTaken = [this](int code) { note(QStringLiteral("key %1").arg(code)); };
        keyboard.onGivenBack = [this](int) { note(QStringLiteral("gives a key back")); };
        grabber.onGrab = [this] { note(QStringLiteral("grabs")); };
        pasteboard.onHandOver = [this] { note(QStringLiteral("hands over")); };
        panels.onAssume = [this](PanelRole role) {
            switch (role) {
            case PanelRole::overlay:
                return note(QStringLiteral("overlay"));
            case PanelRole::dialog:
                return note(QStringLiteral("dialog"));
            case PanelRole::countdown:
                return note(QStringLiteral("countdown"));
            case PanelRole::toast:
            case PanelRole::frame:
            case PanelRole::sessionPanel:
            case PanelRole::drawer:
            case PanelRole::window:
                return;
            }
        };
    }

    [[nodiscard]] static QList<QMenu*> menusOf(QMenu& menu)
    {
        QList<QMenu*> menus{&menu};
        for (const QAction* action : menu.actions()) {
            if (action->menu())
                menus << action->menu();
        }
        return menus;
    }

    bool m_reachable = false;
    bool m_inTray = false;
};

} // namespace brindlecam::test
