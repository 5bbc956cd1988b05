#include "preferences/Defaults.h"
#include "preferences/Prefs.h"
#include "shell/StatusItem.h"
#include "shell/StatusMenu.h"
#include "support/FakeTrayHosts.h"
#include "support/TestCase.h"

#include <QTemporaryDir>

namespace brindlecam {

namespace {

struct MenuDesk {
    QTemporaryDir folder;
    Defaults defaults{folder.filePath(QStringLiteral("settings.json"))};
    Prefs prefs{defaults};
    StatusMenu menu{prefs, KeyNaming::words};
    QStringList chosen;

    MenuDesk()
    {
        menu.onCapture = [this](const QString& object) { chosen << object; };
        menu.onCaptureDelayed = menu.onCapture;
        menu.onOpenFolder = [this] { chosen << QStringLiteral("folder"); };
        menu.onSettings = [this] { chosen << QStringLiteral("settings"); };
        menu.onUpdate = [this] { chosen << QStringLiteral("update"); };
        menu.onAbout = [this] { chosen << QStringLiteral("about"); };
        menu.onQuit = [this] { chosen << QStringLiteral("quit"); };
        menu.refresh();
    }

    [[nodiscard]] QAction& item(int index) { return *menu.menu().actions().at(index); }
    /// What stands on the item's right.
    [[nodiscard]] QString shortcut(int index)
    {
        return item(index).text().section(QLatin1Char('\t'), 1);
    }
};

QStringList titles(const QMenu& menu)
{
    QStringList all;
    for (const QAction* item : menu.actions())
        all << (item->isSeparator() ? QStringLiteral("-")
                                    : item->text().section(QLatin1Char('\t'), 0, 0));
    return all;
}

} // namespace

class TestStatusMenu final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void hasExactlyItsItemsInOrder()
    {
        MenuDesk desk;
        QCOMPARE(titles(desk.menu.menu()),
                 QStringList(
                     {QStringLiteral("Capturar área"), QStringLiteral("Capturar pantalla completa"),
                      QStringLiteral("Capturas recientes"), QStringLiteral("-"),
                      QStringLiteral("Capturar con retraso"),
                      QStringLiteral("Abrir carpeta de capturas"), QStringLiteral("Configuración…"),
                      QStringLiteral("-"), QStringLiteral("Buscar actualizaciones…"),
                      QStringLiteral("Acerca de Brindlecam"), QStringLiteral("-"),
                      QStringLiteral("Salir")}));
        QCOMPARE(
            titles(*desk.item(4).menu()),
            QStringList({QStringLiteral("Área en 3 segundos"), QStringLiteral("Área en 5 segundos"),
                         QStringLiteral("Pantalla completa en 3 segundos"),
                         QStringLiteral("Pantalla completa en 5 segundos")}));
    }

    void everyItemReportsItself()
    {
        MenuDesk desk;
        for (QAction* item : desk.menu.menu().actions())
            item->trigger();
        for (QAction* item : desk.item(4).menu()->actions())
            item->trigger();
        QCOMPARE(desk.chosen,
                 QStringList({QStringLiteral("area"), QStringLiteral("fullScreen"),
                              QStringLiteral("recents"), QStringLiteral("folder"),
                              QStringLiteral("settings"), QStringLiteral("update"),
                              QStringLiteral("about"), QStringLiteral("quit"),
                              QStringLiteral("area|3"), QStringLiteral("area|5"),
                              QStringLiteral("fullScreen|3"), QStringLiteral("fullScreen|5")}));
    }

    void itemsWhoseRoomIsMissingAreDisabled()
    {
        MenuDesk desk;
        desk.menu.onSettings = {};
        desk.menu.onUpdate = {};
        desk.menu.isAvailable = [](CaptureAction action) {
            return action == CaptureAction::fullScreen;
        };
        desk.menu.refresh();
        QStringList enabled;
        for (const QAction* item : desk.menu.menu().actions()) {
            if (!item->isSeparator() && !item->menu() && item->isEnabled())
                enabled << item->text().section(QLatin1Char('\t'), 0, 0);
        }
        QCOMPARE(enabled,
                 QStringList({QStringLiteral("Capturar pantalla completa"),
                              QStringLiteral("Abrir carpeta de capturas"),
                              QStringLiteral("Acerca de Brindlecam"), QStringLiteral("Salir")}));
        QVERIFY(!desk.item(4).menu()->actions().at(0)->isEnabled());
        QVERIFY(desk.item(4).menu()->actions().at(2)->isEnabled());
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
