#include "look/Catalogues.h"
#include "notices/Alerts.h"
#include "notices/Toast.h"
#include "preferences/Defaults.h"
#include "preferences/Prefs.h"
#include "shell/AboutPanel.h"
#include "shell/AppDelegate.h"
#include "shell/StatusMenu.h"
#include "support/FakeDisplays.h"
#include "support/FakeFileOpener.h"
#include "support/FakePanels.h"
#include "support/TestCase.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QMessageBox>
#include <QTemporaryDir>

namespace brindlecam {

namespace {

/// A program all of whose rooms are there.
struct DelegateDesk {
    QTemporaryDir folder;
    Defaults defaults{folder.filePath(QStringLiteral("settings.json"))};
    Prefs prefs{defaults};
    test::FakeDisplays displays;
    test::FakePanels panels;
    Alerts alerts{panels};
    Toast toast{displays, panels};
    test::FakeFileOpener opener;
    AppDelegate delegate{prefs, alerts, toast, opener};
    QStringList done;

    DelegateDesk()
    {
        delegate.onArea = [this] { done << QStringLiteral("area"); };
        delegate.onFullScreen = [this] { done << QStringLiteral("full screen"); };
        delegate.onRecents = [this] { done << QStringLiteral("recents"); };
        delegate.onHideRecents = [this] { done << QStringLiteral("hide"); };
        delegate.onCountdown = [this](CaptureAction action, int seconds) {
            done << QStringLiteral("%1 in %2").arg(rawValue(action)).arg(seconds);
        };
    }
    [[nodiscard]] QMessageBox* alert() const
    {
        return panels.shown.empty() ? nullptr
                                    : qobject_cast<QMessageBox*>(panels.shown.back().widget.data());
    }
};

} // namespace

class TestAppDelegate final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void capturesHideTheDrawerFirstAndRecentsToggleIt()
    {
        DelegateDesk desk;
        desk.delegate.perform(CaptureAction::area);
        desk.delegate.perform(CaptureAction::fullScreen);
        desk.delegate.perform(CaptureAction::recents);
        desk.delegate.perform(CaptureAction::recents);
        QCOMPARE(desk.done, QStringList({QStringLiteral("hide"), QStringLiteral("area"),
                                         QStringLiteral("hide"), QStringLiteral("full screen"),
                                         QStringLiteral("recents"), QStringLiteral("recents")}));
    }

    void whatComesFromTheMenuWaitsUntilItHasClosed()
    {
        DelegateDesk desk;
        QElapsedTimer clock;
        clock.start();
        desk.delegate.captureFromMenu(QStringLiteral("fullScreen"));
        QVERIFY(desk.done.isEmpty());
        QTRY_VERIFY(!desk.done.isEmpty());
        QVERIFY(clock.elapsed() >= 299);
        QCOMPARE(desk.done, QStringList({QStringLiteral("hide"), QStringLiteral("full screen")}));
    }

    void severalQuickTriggersAllArrive()
    {
        DelegateDesk desk;
        desk.delegate.capture(CaptureAction::recents);
        desk.delegate.capture(CaptureAction::recents);
        QTRY_COMPARE(desk.done.size(), 2);
    }

    void reopeningStartsAnAreaCaptureAfterAMoment()
    {
        DelegateDesk desk;
        desk.delegate.reopen();
        QVERIFY(desk.done.isEmpty());
        QTRY_COMPARE(desk.done, QStringList({QStringLiteral("hide"), QStringLiteral("area")}));
    }

    void otherRepresentedObjectsAreIgnored()
    {
        DelegateDesk desk;
        for (const char* object : {"", "Area", "area|3", "all"})
            desk.delegate.captureFromMenu(QString::fromLatin1(object));
        desk.delegate.capture(CaptureAction::recents);
        QTRY_VERIFY(!desk.done.isEmpty());
        QCOMPARE(desk.done, QStringList(QStringLiteral("recents")));
    }

    void delayedCapturesAreReadFromTheirObject_data()
    {
        QTest::addColumn<QString>("object");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char* object, const char* expected) {
            QTest::newRow(object) << QString::fromUtf8(object) << QString::fromUtf8(expected);
        };
        row("area|3", "area in 3");
        row("fullScreen|5", "fullScreen in 5");
        row("recents|12", "recents in 12");
        row("|area||3|", "area in 3");
        row("area|03", "area in 3");
        row("area", "");
        row("area|", "");
        row("area|3|5", "");
        row("selfie|3", "");
        row("area|three", "");
        row("area|3.5", "");
        row("area| 3", "");
        row("area|0x3", "");
        row("area|99999999999999999999", "");
        row("3|area", "");
        row("", "");
    }
    void delayedCapturesAreReadFromTheirObject()
    {
        QFETCH(QString, object);
        DelegateDesk desk;
        desk.delegate.captureDelayed(object);
        QTEST(desk.done.join(QLatin1Char(' ')), "expected");
    }

    void missingRoomsAreNotAvailableAndNothingHappens()
    {
        DelegateDesk desk;
        desk.delegate.onArea = {};
        QVERIFY(!desk.delegate.isAvailable(CaptureAction::area));
        QVERIFY(desk.delegate.isAvailable(CaptureAction::fullScreen));
        desk.delegate.perform(CaptureAction::area);
        QVERIFY(desk.done.isEmpty());
        for (const InstanceRequest& request : {InstanceRequest{}, InstanceRequest{{"area"}, {}}}) {
            const InstanceAnswer answer = desk.delegate.answer(request);
            QCOMPARE(answer.reply.exitCode, 3);
            QCOMPARE(answer.reply.text, QByteArray("Esa acción no está disponible.\n"));
            QVERIFY(!answer.carryOut);
        }
    }

    void anotherCopyIsAnsweredBeforeTheActionIsDone()
    {
        DelegateDesk desk;
        const InstanceAnswer action = desk.delegate.answer({{"fullScreen"}, "/home"});
        QCOMPARE(action.reply, InstanceReply());
        QVERIFY(desk.done.isEmpty());
        action.carryOut();
        QCOMPARE(desk.done, QStringList({QStringLiteral("hide"), QStringLiteral("full screen")}));

        desk.done.clear();
        const InstanceAnswer reopening = desk.delegate.answer({});
        QCOMPARE(reopening.reply, InstanceReply());
        reopening.carryOut();
        // A menu, if there was one, gets the time to close.
        QVERIFY(desk.done.isEmpty());
        QTRY_COMPARE(desk.done, QStringList({QStringLiteral("hide"), QStringLiteral("area")}));
    }

    void whileACaptureRunsAnotherCopyIsToldSo_data()
    {
        QTest::addColumn<QByteArrayList>("words");
        QTest::addColumn<int>("exitCode");
        QTest::addColumn<QStringList>("done");
        const QStringList area{QStringLiteral("hide"), QStringLiteral("area")};
        QTest::newRow("an area") << QByteArrayList({"area"}) << 4 << area;
        QTest::newRow("the whole screen")
            << QByteArrayList({"fullScreen"}) << 4
            << QStringList({QStringLiteral("hide"), QStringLiteral("full screen")});
        QTest::newRow("opened again") << QByteArrayList() << 4 << area;
        QTest::newRow("the drawer needs no capture")
            << QByteArrayList({"recents"}) << 0 << QStringList(QStringLiteral("recents"));
    }
    void whileACaptureRunsAnotherCopyIsToldSo()
    {
        QFETCH(QByteArrayList, words);
        QFETCH(int, exitCode);
        DelegateDesk desk;
        desk.delegate.isBusy = [] { return true; };
        const InstanceAnswer answer = desk.delegate.answer({words, {}});
        QCOMPARE(answer.reply.exitCode, exitCode);
        QCOMPARE(answer.reply.text.isEmpty(), exitCode == 0);
        QVERIFY(answer.reply.text.isEmpty() || answer.reply.text.endsWith(".\n"));
        // The start itself still comes to those who refuse it, at once.
        answer.carryOut();
        QTEST(desk.done, "done");
    }

    void anotherCopysOtherWordsAreAnsweredInWords()
    {
        DelegateDesk desk;
        const InstanceAnswer wrong = desk.delegate.answer({{"selfi\xc3\xa9"}, {}});
        QCOMPARE(wrong.reply.exitCode, 64);
        QVERIFY(wrong.reply.text.startsWith("Brindlecam no entiende “selfié”.\nUso: "));
        QVERIFY(!wrong.carryOut);
        const InstanceAnswer help = desk.delegate.answer({{"--help"}, {}});
        QCOMPARE(help.reply.exitCode, 0);
        QVERIFY(help.reply.text.startsWith("Uso: "));
        const InstanceAnswer version = desk.delegate.answer({{"--version"}, {}});
        QVERIFY(version.reply.text.startsWith("Brindlecam "));
        const InstanceAnswer ports = desk.delegate.answer({{"--ports"}, {}});
        QCOMPARE(ports.reply.exitCode, 64);
        QVERIFY(ports.reply.text.startsWith("Brindlecam no entiende “--ports”.\n"));
        QVERIFY(!ports.carryOut);
    }

    void theCapturesFolderIsMadeAndOpened()
    {
        DelegateDesk desk;
        const QString captures = desk.folder.filePath(QStringLiteral("mis/capturas"));
        desk.defaults.setString(QStringLiteral("saveFolder"), captures);
        desk.delegate.openCapturesFolder();
        QVERIFY(QFileInfo(captures).isDir());
        QCOMPARE(desk.opener.opened, QStringList(captures));
    }

    void aFolderThatCannotBeMadeIsOpenedAnyway()
    {
        DelegateDesk desk;
        QFile file(desk.folder.filePath(QStringLiteral("file")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        const QString captures = file.fileName() + QStringLiteral("/capturas");
        desk.defaults.setString(QStringLiteral("saveFolder"), captures);
        desk.delegate.openCapturesFolder();
        QCOMPARE(desk.opener.opened, QStringList(captures));
    }

    void aFolderThatNothingOpensIsTold()
    {
        DelegateDesk desk;
        const QRect screen(0, 0, 800, 600);
        desk.displays.all = {{QStringLiteral("ONLY"), screen, 1, screen}};
        desk.delegate.openCapturesFolder();
        QCoreApplication::processEvents();
        QVERIFY(!desk.toast.visible());
        desk.opener.succeeds = false;
        desk.delegate.openCapturesFolder();
        QTRY_VERIFY(desk.toast.visible());
        QCOMPARE(desk.panels.shown.back().widget->windowTitle(),
                 QStringLiteral("No se pudo abrir la carpeta"));
    }

    void theWelcomeIsShownOnceAndNeverAgain()
    {
        DelegateDesk desk;
        desk.delegate.showWelcomeIfFirstRun();
        QVERIFY(desk.alert());
        QCOMPARE(desk.alert()->text(), QStringLiteral("Brindlecam vive en la barra de menú 🍃"));
        QVERIFY(desk.alert()->informativeText().startsWith(
            QStringLiteral("Presiona ⇧⌘9 para capturar un área o ⇧⌘8")));
        QCOMPARE(desk.defaults.boolean(QStringLiteral("didShowWelcome")), std::optional(true));
        desk.delegate.showWelcomeIfFirstRun();
        QCOMPARE(desk.panels.shown.size(), std::size_t(1));
    }

    void onLinuxTheWelcomeNamesPlacesAndKeysAsTheyAreCalledThere()
    {
        Catalogues catalogues;
        catalogues.install(QStringLiteral(":/i18n/brindlecam_linux.qm"));
        DelegateDesk desk;
        desk.delegate.showWelcomeIfFirstRun();
        QCOMPARE(desk.alert()->text(),
                 QStringLiteral("Brindlecam vive en la bandeja del sistema 🍃"));
        QCOMPARE(desk.alert()->informativeText(),
                 QStringLiteral("Presiona Mayús+Super+9 para capturar un área o Mayús+Super+8 para "
                                "la pantalla completa; la captura queda lista para pegar. Puedes "
                                "cambiar los atajos en Configuración….\n\nSi tu escritorio pide "
                                "permiso para capturar la pantalla, acéptalo."));
    }

    void theAboutPanelOpensOnceAndNamesTheCredits()
    {
        DelegateDesk desk;
        desk.delegate.showAbout();
        desk.delegate.showAbout();
        QCOMPARE(desk.panels.shown.size(), std::size_t(1));
        auto* about = qobject_cast<AboutPanel*>(desk.panels.shown.front().widget.data());
        QVERIFY(about);
        QVERIFY(!about->isModal());
        QString credits;
        for (const QLabel* label : about->findChildren<QLabel*>()) {
            if (label->text().contains(QStringLiteral("Halvick"))) {
                credits = label->text();
                QCOMPARE(label->font().pixelSize(), 11);
            }
        }
        QCOMPARE(credits, QStringLiteral("Capturas de pantalla rápidas con anotaciones.\n"
                                         "Hecho con 💚 por Halvick."));
        QTest::keyClick(about, Qt::Key_Escape);
        QTRY_VERIFY(!desk.panels.shown.front().widget);
        desk.delegate.showAbout();
        QCOMPARE(desk.panels.shown.size(), std::size_t(2));
    }

    void theUpdateItemNamesTheNewerVersion()
    {
        QCOMPARE(AppDelegate::updateTitle(std::nullopt), QStringLiteral("Buscar actualizaciones…"));
        QCOMPARE(AppDelegate::updateTitle(QStringLiteral("1.2")),
                 QStringLiteral("Descargar Brindlecam 1.2…"));
    }

    void theMenuIsWiredToWhatIsThere()
    {
        DelegateDesk desk;
        desk.delegate.onArea = {};
        StatusMenu menu(desk.prefs, KeyNaming::words);
        desk.delegate.wire(menu);
        const QList<QAction*> items = menu.menu().actions();
        QVERIFY(!items.at(0)->isEnabled());
        QVERIFY(items.at(1)->isEnabled());
        QVERIFY2(!items.at(6)->isEnabled(), "there are no settings yet");
        QVERIFY2(!items.at(8)->isEnabled(), "and no updates");
        items.at(4)->menu()->actions().at(3)->trigger();
        QCOMPARE(desk.done, QStringList(QStringLiteral("fullScreen in 5")));
        items.at(2)->trigger();
        QTRY_COMPARE(desk.done.size(), 2);
        QCOMPARE(desk.done.back(), QStringLiteral("recents"));
    }
};

BRINDLECAM_TEST(TestAppDelegate);

} // namespace brindlecam

#include "tst_appdelegate.moc"
