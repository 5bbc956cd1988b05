#include "ProgramDesk.h"
#include "shell/Commands.h"
#include "support/TestCase.h"

#include <QFile>

#include <array>

namespace brindlecam {

using test::ProgramDesk;

namespace {

/// What an action is called everywhere. The ids are promises: settings files, scripts and key
/// bindings of desktops hold them.
struct PromisedAction {
    const char* id;
    const char* title;
    const char* shownKey;
    int keyCode;
};

constexpr std::array kPromised{
    PromisedAction{"area", "Capturar área", "Mayús+Super+9", 25},
    PromisedAction{"fullScreen", "Capturar pantalla completa", "Mayús+Super+8", 28},
    PromisedAction{"recents", "Capturas recientes", "Mayús+Super+0", 29},
};

/// The only one of these that was begun; empty for none, or for several.
QString begun(ProgramDesk& desk)
{
    QStringList all;
    if (desk.drawer().isOpen())
        all << QStringLiteral("recents");
    if (desk.overlays() > 0)
        all << QStringLiteral("area");
    else if (desk.grabber.calls > 0)
        all << QStringLiteral("fullScreen");
    return all.join(QLatin1Char(' '));
}

QString expectedOf(const PromisedAction& action)
{
    return QString::fromLatin1(action.id);
}

} // namespace

/// The table of actions: what each is called, where it can be asked for, and what then happens.
class TestActionTable final : public test::TestCase {
    Q_OBJECT

    static void addPromised()
    {
        QTest::addColumn<std::size_t>("index");
        for (std::size_t i = 0; i < kPromised.size(); ++i)
            QTest::newRow(kPromised.at(i).id) << i;
    }
    static const PromisedAction& promised()
    {
        QFETCH(std::size_t, index);
        return kPromised.at(index);
    }

private Q_SLOTS:
    void thereAreNoOthers() { QCOMPARE(kAllCaptureActions.size(), kPromised.size()); }

    void theDefaultKeyBeginsItAtOnce_data() { addPromised(); }
    void theDefaultKeyBeginsItAtOnce()
    {
        const PromisedAction& action = promised();
        ProgramDesk desk;
        desk.start();
        QVERIFY(desk.keyboard.registered.contains({action.keyCode, ProgramDesk::kHotKey}));
        desk.keyboard.press(action.keyCode, ProgramDesk::kHotKey);
        QCOMPARE(begun(desk), expectedOf(action));
    }

    void itsSettingsKeyHoldsAnotherKeyOfTheUsers_data() { addPromised(); }
    void itsSettingsKeyHoldsAnotherKeyOfTheUsers()
    {
        const PromisedAction& action = promised();
        constexpr int kKeyA = 0;
        ProgramDesk desk;
        const KeyCombo combo{kKeyA, controlModifier | optionModifier, QStringLiteral("⌃⌥A")};
        ProgramDesk::writeSettings(
            {{QStringLiteral("didShowWelcome"), true},
             {QStringLiteral("hotkey.") + QLatin1String(action.id),
              QJsonObject{
                  {QStringLiteral("base64"), QString::fromLatin1(combo.toJson().toBase64())}}}});
        desk.start();
        QVERIFY(!desk.keyboard.registered.contains({action.keyCode, ProgramDesk::kHotKey}));
        QCOMPARE(ProgramDesk::keyOf(desk.item(QString::fromUtf8(action.title))),
                 QStringLiteral("Ctrl+Alt+A"));
        desk.keyboard.press(kKeyA, controlModifier | optionModifier);
        QCOMPARE(begun(desk), expectedOf(action));
    }

    void itsCommandBeginsItOnceTheAskerIsAnswered_data() { addPromised(); }
    void itsCommandBeginsItOnceTheAskerIsAnswered()
    {
        const PromisedAction& action = promised();
        ProgramDesk desk;
        desk.start();
        const InstanceAnswer answer = desk.ask({{action.id}, "/"});
        QCOMPARE(answer.reply.exitCode, 0);
        QVERIFY(answer.carryOut);
        QCOMPARE(begun(desk), QString());
        answer.carryOut();
        QCOMPARE(begun(desk), expectedOf(action));
    }

    void aFirstCopyIsStartedForIt_data() { addPromised(); }
    void aFirstCopyIsStartedForIt()
    {
        const PromisedAction& action = promised();
        const Command command = Commands::parseWords({action.id});
        QCOMPARE(command.kind, Command::Kind::run);
        QVERIFY(command.action);
        ProgramDesk desk;
        desk.make();
        QVERIFY(desk.canRun(*command.action));
        desk.start(command.action);
        QCOMPARE(begun(desk), expectedOf(action));
    }

    void itsItemBeginsItWhenTheMenuHasClosed_data() { addPromised(); }
    void itsItemBeginsItWhenTheMenuHasClosed()
    {
        const PromisedAction& action = promised();
        ProgramDesk desk;
        desk.start();
        QAction& item = desk.item(QString::fromUtf8(action.title));
        QVERIFY(item.isEnabled());
        QCOMPARE(ProgramDesk::keyOf(item), QString::fromUtf8(action.shownKey));
        item.trigger();
        QCOMPARE(begun(desk), QString());
        QTRY_COMPARE(begun(desk), expectedOf(action));
    }

    void theDesktopFileOffersItByName_data() { addPromised(); }
    void theDesktopFileOffersItByName()
    {
        const PromisedAction& action = promised();
        QStringList ids;
        for (const PromisedAction& each : kPromised)
            ids << QString::fromLatin1(each.id);
        const QString entry = QStringLiteral("Desktop Entry");
        QCOMPARE(desktopFileValue(entry, QStringLiteral("Actions")),
                 ids.join(QLatin1Char(';')) + QStringLiteral(";settings;"));
        QCOMPARE(desktopFileValue(entry, QStringLiteral("Exec")), QStringLiteral("brindlecam"));

        const QString group = QStringLiteral("Desktop Action ") + QLatin1String(action.id);
        QCOMPARE(desktopFileValue(group, QStringLiteral("Exec")),
                 QStringLiteral("brindlecam ") + QLatin1String(action.id));
        QCOMPARE(desktopFileValue(group, QStringLiteral("Name")), QString::fromUtf8(action.title));
    }

    void theDesktopFileOffersTheSettings()
    {
        const QString group = QStringLiteral("Desktop Action settings");
        QCOMPARE(desktopFileValue(group, QStringLiteral("Exec")),
                 QStringLiteral("brindlecam settings"));
        QCOMPARE(desktopFileValue(group, QStringLiteral("Name")), QStringLiteral("Configuración…"));
    }

    void theMenuIsThisTable()
    {
        ProgramDesk desk;
        desk.start();
        QStringList lines;
        for (const QAction* item : desk.menu().actions())
            lines << lineOf(*item);
        const QAction* delayed = desk.menu().actions().at(4);
        QVERIFY(delayed->menu());
        for (const QAction* item : delayed->menu()->actions())
            lines << QStringLiteral("  ") + lineOf(*item);
        QCOMPARE(lines.join(QLatin1Char('\n')),
                 QString::fromUtf8("Capturar área [Mayús+Super+9]\n"
                                   "Capturar pantalla completa [Mayús+Super+8]\n"
                                   "Capturas recientes [Mayús+Super+0]\n"
                                   "-\n"
                                   "Capturar con retraso []\n"
                                   "Abrir carpeta de capturas []\n"
                                   "Configuración… [Super+,]\n"
                                   "-\n"
                                   "Buscar actualizaciones… []\n"
                                   "Acerca de Brindlecam []\n"
                                   "-\n"
                                   "Salir []\n"
                                   "  Área en 3 segundos []\n"
                                   "  Área en 5 segundos []\n"
                                   "  Pantalla completa en 3 segundos []\n"
                                   "  Pantalla completa en 5 segundos []"));
    }

    void withoutAPlaceToAskForThemTheMenuKnowsNoUpdates()
    {
        ProgramDesk desk;
        desk.feed.reset();
        desk.start();
        QStringList titles;
        for (const QAction* item : desk.menu().actions())
            titles << (item->isSeparator() ? QStringLiteral("-") : ProgramDesk::titleOf(*item));
        QCOMPARE(titles.mid(6), QStringList({QStringLiteral("Configuración…"), QStringLiteral("-"),
                                             QStringLiteral("Acerca de Brindlecam"),
                                             QStringLiteral("-"), QStringLiteral("Salir")}));
    }

    void delayedItemsCountDownFirst_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("digit");
        const auto row = [](const char* title, const char* digit) {
            QTest::newRow(title) << QString::fromUtf8(title) << QString::fromLatin1(digit);
        };
        row("Área en 3 segundos", "3");
        row("Área en 5 segundos", "5");
        row("Pantalla completa en 3 segundos", "3");
        row("Pantalla completa en 5 segundos", "5");
    }
    void delayedItemsCountDownFirst()
    {
        QFETCH(QString, title);
        QFETCH(QString, digit);
        ProgramDesk desk;
        desk.start();
        desk.item(title).trigger();
        QCOMPARE(desk.made(PanelRole::countdown), 1);
        QCOMPARE(desk.panels.shown.back().widget->accessibleName(), digit);
        QCOMPARE(begun(desk), QString());
    }

    void whatIsCountedDownToFollows_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("follows");
        QTest::newRow("area") << QStringLiteral("Área en 3 segundos") << QStringLiteral("area");
        QTest::newRow("full screen")
            << QStringLiteral("Pantalla completa en 3 segundos") << QStringLiteral("fullScreen");
    }
    void whatIsCountedDownToFollows()
    {
        QFETCH(QString, title);
        QFETCH(QString, follows);
        ProgramDesk desk;
        desk.start();
        desk.displays.absent = 1; // nowhere to count
        desk.item(title).trigger();
        QCOMPARE(begun(desk), follows);
    }

    void theOtherItemsActAtOnce()
    {
        ProgramDesk desk;
        desk.start();
        desk.item(QStringLiteral("Abrir carpeta de capturas")).trigger();
        QTRY_COMPARE(desk.opener.opened.size(), 1);
        desk.item(QStringLiteral("Acerca de Brindlecam")).trigger();
        QCOMPARE(desk.made(PanelRole::dialog), 1);
        desk.item(QStringLiteral("Configuración…")).trigger();
        QCOMPARE(desk.made(PanelRole::window), 1);
        desk.item(QStringLiteral("Salir")).trigger();
        QTRY_COMPARE(desk.pasteboard.handOvers, 1);
    }

private:
    static QString lineOf(const QAction& item)
    {
        if (item.isSeparator())
            return QStringLiteral("-");
        return QStringLiteral("%1 [%2]%3")
            .arg(ProgramDesk::titleOf(item), ProgramDesk::keyOf(item),
                 item.isEnabled() ? QString() : QStringLiteral(" off"));
    }

    /// A value of the desktop entry that is installed.
    static QString desktopFileValue(const QString& group, const QString& key)
    {
        QFile file(QStringLiteral(BRINDLECAM_DESKTOP_FILE));
        if (!file.open(QIODevice::ReadOnly))
            return QStringLiteral("unreadable");
        QString present;
        for (const QByteArray& bytes : file.readAll().split('\n')) {
            const QString line = QString::fromUtf8(bytes);
            if (line.startsWith(QLatin1Char('[')))
                present = line.mid(1, line.size() - 2);
            else if (present == group && line.section(QLatin1Char('='), 0, 0) == key)
                return line.section(QLatin1Char('='), 1);
        }
        return {};
    }
};

BRINDLECAM_TEST(TestActionTable);

} // namespace brindlecam

#include "tst_actiontable.moc"
