// Covers StatusItem.
#include "NotedActions.h"
#include "shell/StatusItem.h"
#include "shell/StatusMenu.h"
#include "support/FakeTrayHosts.h"
#include "support/TestCase.h"

namespace brindlecam {

namespace {

struct MenuDesk : test::NotedActions {
    StatusMenu menu{list, KeyNaming::words};

    [[nodiscard]] QAction& item(int index) { return *menu.menu().actions().at(index); }
    /// What stands on the item's right.
    [[nodiscard]] QString shortcut(int index)
    {
        return item(index).text().section(QLatin1Char('\t'), 1);
    }
};

QString titleOf(const QAction& item)
{
    return item.isSeparator() ? QStringLiteral("-") : item.text().section(QLatin1Char('\t'), 0, 0);
}

QStringList titles(const QMenu& menu)
{
    QStringList all;
    for (const QAction* item : menu.actions())
        all << titleOf(*item);
    return all;
}

QStringList disabled(const QMenu& menu)
{
    QStringList all;
    for (const QAction* item : menu.actions()) {
        if (!item->isSeparator() && !item->isEnabled())
            all << titleOf(*item);
    }
    return all;
}

} // namespace

class TestStatusMenu final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void hasExactlyItsItemsInOrder()
    {
        MenuDesk desk;
        QCOMPARE(titles(desk.menu.menu()).join(QLatin1String(", ")),
                 QStringLiteral("Capturar área, Capturar pantalla completa, Capturas recientes, -, "
                                "Capturar con retraso, Folder, Settings, -, Update, About, -, "
                                "Quit"));
        QCOMPARE(titles(*desk.item(4).menu()),
                 QStringList({QStringLiteral("area in 3"), QStringLiteral("full screen in 5")}));
    }

    void everyItemReportsItself()
    {
        MenuDesk desk;
        for (QAction* item : desk.menu.menu().actions())
            item->trigger();
        for (QAction* item : desk.item(4).menu()->actions())
            item->trigger();
        QCOMPARE(desk.runFromMenu.join(QLatin1String(", ")),
                 QStringLiteral("area, fullScreen, recents, folder, settings, update, about, quit, "
                                "area in 3, full screen in 5"));
        QVERIFY(desk.run.isEmpty());
    }

    void whatCannotRunIsDisabledOnceTheMenuOpens()
    {
        MenuDesk desk;
        QCOMPARE(disabled(desk.menu.menu()), QStringList());
        desk.cannotRun = {QStringLiteral("area"), QStringLiteral("recents"),
                          QStringLiteral("settings"), QStringLiteral("area in 3")};
        QCOMPARE(disabled(desk.menu.menu()), QStringList());
        Q_EMIT desk.menu.menu().aboutToShow();
        QCOMPARE(disabled(desk.menu.menu()),
                 QStringList({QStringLiteral("Capturar área"), QStringLiteral("Capturas recientes"),
                              QStringLiteral("Settings")}));
        QCOMPARE(disabled(*desk.item(4).menu()), QStringList(QStringLiteral("area in 3")));
        desk.cannotRun.clear();
        desk.menu.refresh();
        QCOMPARE(disabled(desk.menu.menu()), QStringList());
    }

    void whatCannotRunIsDisabledFromTheBeginning()
    {
        test::NotedActions actions;
        actions.cannotRun << QStringLiteral("update");
        StatusMenu menu(actions.list, KeyNaming::words);
        QCOMPARE(disabled(menu.menu()), QStringList(QStringLiteral("Update")));
    }

    void aNewTitleStays()
    {
        MenuDesk desk;
        desk.menu.setUpdateTitle(QStringLiteral("Newer"));
        desk.menu.refresh();
        QCOMPARE(desk.item(8).text(), QStringLiteral("Newer"));
    }

    void shortcutsAreShownInWordsAndNeverLive()
    {
        MenuDesk desk;
        QCOMPARE(desk.shortcut(0), QStringLiteral("Mayús+Super+9"));
        QCOMPARE(desk.shortcut(1), QStringLiteral("Mayús+Super+8"));
        QCOMPARE(desk.shortcut(2), QStringLiteral("Mayús+Super+0"));
        for (const QAction* item : desk.menu.menu().actions()) {
            QVERIFY(item->shortcut().isEmpty());
            QVERIFY(item->isSeparator() || item->menu() ||
                    item->shortcutContext() != Qt::ApplicationShortcut);
        }
    }

    void shortcutsFollowTheSettingsWhenTheMenuOpens()
    {
        MenuDesk desk;
        desk.prefs.setCombo(KeyCombo{0, controlModifier | optionModifier, QStringLiteral("⌃⌥A")},
                            CaptureAction::area);
        QCOMPARE(desk.shortcut(0), QStringLiteral("Mayús+Super+9"));
        Q_EMIT desk.menu.menu().aboutToShow();
        QCOMPARE(desk.shortcut(0), QStringLiteral("Ctrl+Alt+A"));

        desk.prefs.setCombo(std::nullopt, CaptureAction::area);
        desk.menu.refreshShortcuts();
        QCOMPARE(desk.shortcut(0), QString());
        QCOMPARE(desk.shortcut(1), QStringLiteral("Mayús+Super+8"));
    }

    void someShortcutsHaveNoSignInAMenu_data()
    {
        QTest::addColumn<KeyCombo>("combo");
        QTest::newRow("removed") << KeyCombo{25, 0x300, QString()};
        QTest::newRow("F13") << KeyCombo{105, 0, QStringLiteral("F13")};
        QTest::newRow("space") << KeyCombo{49, 0x1800, QStringLiteral("⌃⌥Espacio")};
    }
    void someShortcutsHaveNoSignInAMenu()
    {
        QFETCH(KeyCombo, combo);
        MenuDesk desk;
        desk.prefs.setCombo(combo, CaptureAction::area);
        desk.menu.refreshShortcuts();
        QCOMPARE(desk.item(0).text(), QStringLiteral("Capturar área"));
    }

    void anAmpersandIsShownAsSuch()
    {
        MenuDesk desk;
        desk.prefs.setCombo(KeyCombo{18, controlModifier, QStringLiteral("⌃&")},
                            CaptureAction::area);
        desk.menu.refreshShortcuts();
        // Alone, a menu takes it for the mark of a mnemonic and leaves it out.
        QCOMPARE(desk.shortcut(0), QStringLiteral("Ctrl+&&"));
    }

    void aRecordThatCannotBeReadLeavesTheOthersAlone()
    {
        MenuDesk desk;
        desk.defaults.setData(QStringLiteral("hotkey.area"), QByteArray("]["));
        desk.menu.refreshShortcuts();
        QCOMPARE(desk.shortcut(0), QString());
        QCOMPARE(desk.shortcut(2), QStringLiteral("Mayús+Super+0"));
    }

    void theItemComesAndGoesWithTheTray()
    {
        // Qt's tray code looks for an X server's own signal, once per icon.
        for (int icon = 0; icon < 2; ++icon) {
            QTest::ignoreMessage(QtWarningMsg, "QObject::connect: No such signal "
                                               "QPlatformNativeInterface::"
                                               "systemTrayWindowChanged(QScreen*)");
        }
        MenuDesk desk;
        test::FakeTrayHosts hosts;
        {
            const StatusItem item(hosts, desk.menu, desk.menu);
            QVERIFY(!item.present());
            hosts.become(true);
            QVERIFY(item.present());
            hosts.become(true);
            QVERIFY(item.present());
            hosts.become(false);
            QVERIFY(!item.present());
        }
        QVERIFY(!hosts.anybodyListens());
    }
};

BRINDLECAM_TEST(TestStatusMenu);

} // namespace brindlecam

#include "tst_statusmenu.moc"
