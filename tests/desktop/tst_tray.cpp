#include "desktop/TrayHost.h"
#include "desktop/support/CaptureTest.h"

#include <algorithm>

namespace brindlecam::desktop {

/// The status item with every kind of tray, and without any.
class TestTray final : public CaptureTest {
    Q_OBJECT

private:
    /// The status item's window inside an XEmbed tray; an empty rectangle while there is none.
    QRect itemInTray()
    {
        for (const SeenWindow& window : windows().shown(program().pid())) {
            if (window.role != Role::dialog)
                return window.pixels;
        }
        return {};
    }

    bool itemComes()
    {
        return waitUntil([this] { return !itemInTray().isEmpty(); });
    }

    bool itemGoes()
    {
        return waitUntil([this] { return itemInTray().isEmpty(); });
    }

    /// Whether this program was built with a web host to ask: it says which commands it has.
    bool looksForUpdates()
    {
        return program()
            .command({QStringLiteral("--help")})
            .output.contains(QLatin1String("\n  update "));
    }

    static QStringList titles(const MenuEntry& menu)
    {
        QStringList all;
        for (const MenuEntry& entry : menu.entries)
            all << (entry.separator ? QStringLiteral("-") : entry.title);
        return all;
    }

private Q_SLOTS:
    void itemIsInTheTray_data()
    {
        QTest::addColumn<bool>("tint2");
        QTest::newRow("tint2") << true;
        QTest::newRow("trayer") << false;
    }
    void itemIsInTheTray()
    {
        QFETCH(bool, tint2);
        const Tray tray = tint2 ? Tray::tint2 : Tray::trayer;
        usePatternedDesktop({.tray = tray});
        startProgram();
        QVERIFY(itemComes());
        // Neither a tray that goes nor one that comes takes anything with it.
        desktop().endTray();
        QVERIFY(itemGoes());
        QVERIFY(openArea());
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());
        desktop().startTray(tray);
        QVERIFY(itemComes());
        QVERIFY(program().isRunning());
    }

    void trayThatComesLaterGetsTheItem_data() { itemIsInTheTray_data(); }
    void trayThatComesLaterGetsTheItem()
    {
        QFETCH(bool, tint2);
        usePatternedDesktop();
        startProgram();
        QVERIFY(itemInTray().isEmpty());
        desktop().startTray(tint2 ? Tray::tint2 : Tray::trayer);
        QVERIFY(itemComes());
    }

    void clickOnTheItemOpensItsMenu_data()
    {
        QTest::addColumn<int>("button");
        QTest::newRow("left") << int(Button::left);
        QTest::newRow("right") << int(Button::right);
    }
    void clickOnTheItemOpensItsMenu()
    {
        QFETCH(int, button);
        usePatternedDesktop({.tray = Tray::trayer});
        startProgram();
        QVERIFY(itemComes());
        const std::size_t before = windows().shown(program().pid()).size();
        input().click(itemInTray().center(), static_cast<Button>(button));
        QVERIFY(waitUntil([&] { return windows().shown(program().pid()).size() == before + 1; }));
        QVERIFY(!screen().grabAtRest().isNull());
        // The first entry is the area capture; it waits until the menu is gone.
        input().tap(Qt::Key_Down);
        input().tap(Qt::Key_Return);
        QVERIFY(sessionIsReady());
        QCOMPARE(overlays().front().pixels, screen().pixels());
        const QRect area(300, 200, 200, 200);
        select(area);
        QVERIFY(isPasted(pattern({1280, 800}).copy(area)));
    }

    void menuIsReadByAHostOnTheBus()
    {
        usePatternedDesktop({.bus = MessageBus::session});
        const TrayHost host(desktop());
        startProgram();
        QVERIFY(host.itemComes());
        const QString item = host.items().front();
        QCOMPARE(host.itemProperty(item, QStringLiteral("Category")).toString(),
                 QStringLiteral("ApplicationStatus"));
        const MenuEntry menu = host.menu(item);
        QStringList expected{QStringLiteral("Capturar área"),
                             QStringLiteral("Capturar pantalla completa"),
                             QStringLiteral("Capturas recientes"),
                             QStringLiteral("-"),
                             QStringLiteral("Capturar con retraso"),
                             QStringLiteral("Abrir carpeta de capturas"),
                             QStringLiteral("Configuración…"),
                             QStringLiteral("-"),
                             QStringLiteral("Buscar actualizaciones…"),
                             QStringLiteral("Acerca de Brindlecam"),
                             QStringLiteral("-"),
                             QStringLiteral("Salir")};
        if (!looksForUpdates())
            expected.removeOne(QStringLiteral("Buscar actualizaciones…"));
        QCOMPARE(titles(menu), expected);
        QCOMPARE(
            titles(menu.entries[4]),
            QStringList({QStringLiteral("Área en 3 segundos"), QStringLiteral("Área en 5 segundos"),
                         QStringLiteral("Pantalla completa en 3 segundos"),
                         QStringLiteral("Pantalla completa en 5 segundos")}));
        QVERIFY(menu.entries[0].enabled);
        QVERIFY(menu.entries[1].enabled);
    }

    void hostThatComesLaterAndAgainGetsTheItem()
    {
        usePatternedDesktop({.bus = MessageBus::session});
        startProgram();
        {
            const TrayHost late(desktop());
            QVERIFY(waitUntil([&] { return !late.items().isEmpty(); }));
        }
        const TrayHost again(desktop());
        QVERIFY(waitUntil([&] { return !again.items().isEmpty(); }));
        QCOMPARE(titles(again.menu(again.items().back())).size(), looksForUpdates() ? 12 : 11);
    }

    void entriesOfTheMenuAct()
    {
        usePatternedDesktop({.bus = MessageBus::session});
        TrayHost host(desktop());
        program().environment().insert(QStringLiteral("PATH"), QStringLiteral("/nowhere"));
        startProgram();
        QVERIFY(host.itemComes());
        const QString item = host.items().front();
        const auto choose = [&](const char* title) {
            return host.choose(item, {QString::fromUtf8(title)});
        };
        const QImage before = screen().grabAtRest();
        QVERIFY(choose("Capturar pantalla completa"));
        QVERIFY(isPasted(before));
        QVERIFY(toastIsGone());

        QVERIFY(choose("Abrir carpeta de capturas"));
        QVERIFY(toastComes()); // nothing here opens folders
        QVERIFY(toastIsGone());

        QVERIFY(choose("Acerca de Brindlecam"));
        QVERIFY(dialogOpens());
        QVERIFY(dialogHasKeyboard());
        input().tap(Qt::Key_Escape);
        QVERIFY(dialogsAreGone());

        QVERIFY(choose("Capturar área"));
        QVERIFY(sessionIsReady());
        input().tap(Qt::Key_Escape);
        QVERIFY(sessionIsOver());

        QVERIFY(choose("Salir"));
        QVERIFY(program().waitForEnd());
        QCOMPARE(program().exitCode(), 0);
    }

    void closingAnAlertWithoutATrayEndsNothing()
    {
        usePatternedDesktop();
        program().writeSettings({{QStringLiteral("didShowWelcome"), false}});
        startProgram();
        QVERIFY(dialogOpens());
        QVERIFY(dialogHasKeyboard());
        input().tap(Qt::Key_Escape);
        QVERIFY(dialogsAreGone());
        QVERIFY(openArea());
    }
};

} // namespace brindlecam::desktop

QTEST_GUILESS_MAIN(brindlecam::desktop::TestTray)

#include "tst_tray.moc"
