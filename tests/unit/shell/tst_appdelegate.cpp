// Covers AboutPanel.
#include "DelegateDesk.h"
#include "look/Catalogues.h"
#include "shell/AboutPanel.h"
#include "support/GatedExecutor.h"
#include "support/TestCase.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QMessageBox>

namespace brindlecam {

using test::DelegateDesk;
using test::sendAllPostedEvents;

class TestAppDelegate final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void whatComesFromTheMenuWaitsUntilItHasClosed()
    {
        DelegateDesk desk;
        QElapsedTimer clock;
        clock.start();
        desk.delegate.capture(CaptureAction::fullScreen);
        QCOMPARE(desk.grabber.calls, 0);
        QTRY_COMPARE(desk.grabber.calls, 1);
        QVERIFY(clock.elapsed() >= 299);
    }

    void severalQuickTriggersAllArrive()
    {
        DelegateDesk desk;
        desk.delegate.capture(CaptureAction::fullScreen);
        desk.delegate.capture(CaptureAction::fullScreen);
        QTRY_COMPARE(desk.grabber.calls, 2);
    }

    void reopeningStartsAnAreaCaptureAfterAMoment()
    {
        DelegateDesk desk;
        desk.delegate.reopen();
        QVERIFY(desk.overlays().empty());
        QTRY_COMPARE(desk.overlays().size(), std::size_t(2));
    }

    void aDelayedCaptureIsCountedDownTo()
    {
        DelegateDesk desk;
        desk.delegate.captureDelayed(CaptureAction::fullScreen, 3);
        QCOMPARE(desk.countdown.remaining(), 3);
        QCOMPARE(desk.grabber.calls, 0);
        QTRY_COMPARE(desk.grabber.calls, 1);
    }

    void recentCapturesOpenAndClose()
    {
        DelegateDesk desk;
        desk.delegate.perform(CaptureAction::recents);
        QVERIFY(desk.drawer.isOpen());
        desk.delegate.perform(CaptureAction::recents);
        QVERIFY(!desk.drawer.isOpen());
    }

    void recentCapturesOpenAndCloseFromTheMenu()
    {
        DelegateDesk desk;
        QMenu& menu = desk.delegate.menu().menu();
        Q_EMIT menu.aboutToShow();
        desk.delegate.capture(CaptureAction::recents);
        QVERIFY(!desk.drawer.isOpen());
        QTRY_VERIFY(desk.drawer.isOpen());
        QTRY_VERIFY(desk.drawer.panel());
        Q_EMIT menu.aboutToShow();
        desk.presses.press(); // the one that has opened the menu, which another program draws
        QVERIFY(!desk.drawer.isOpen());
        desk.delegate.capture(CaptureAction::recents);
        QTest::qWait(400);
        QVERIFY(!desk.drawer.isOpen());
        // The press may also come before the menu, and mean nothing any more after a while.
        desk.delegate.perform(CaptureAction::recents);
        QTRY_VERIFY(desk.drawer.panel());
        desk.presses.press();
        Q_EMIT menu.aboutToShow();
        desk.delegate.capture(CaptureAction::recents);
        QTest::qWait(700);
        QVERIFY(!desk.drawer.isOpen());
        Q_EMIT menu.aboutToShow();
        desk.delegate.capture(CaptureAction::recents);
        QTRY_VERIFY(desk.drawer.isOpen());
    }

    void theDrawerDoesNotOpenOverACapture()
    {
        DelegateDesk desk;
        desk.delegate.perform(CaptureAction::area);
        desk.delegate.perform(CaptureAction::recents);
        QVERIFY(!desk.drawer.isOpen());
        const InstanceAnswer answer = desk.delegate.answer({{"recents"}, {}});
        QCOMPARE(answer.reply.exitCode, 4);
        answer.carryOut();
        QVERIFY(!desk.drawer.isOpen());
    }

    void everythingIsRefusedWhileTheProgramEnds()
    {
        DelegateDesk desk;
        desk.activity.stage = Activity::Stage::quitting;
        for (const CaptureAction action : kAllCaptureActions) {
            QVERIFY(!desk.delegate.mayBegin());
            desk.delegate.perform(action);
            desk.delegate.captureDelayed(action, 3);
            QCOMPARE(desk.countdown.remaining(), 0);
            verifyRefused(desk, {rawValue(action).toLatin1()});
        }
        verifyRefused(desk, {});
        QCOMPARE(desk.grabber.calls, 0);
    }

    void anotherCopyIsAnsweredBeforeTheActionIsDone()
    {
        DelegateDesk desk;
        const InstanceAnswer action = desk.delegate.answer({{"fullScreen"}, "/home"});
        QCOMPARE(action.reply, InstanceReply());
        QCOMPARE(desk.grabber.calls, 0);
        action.carryOut();
        QCOMPARE(desk.grabber.calls, 1);

        const InstanceAnswer reopening = desk.delegate.answer({});
        QCOMPARE(reopening.reply, InstanceReply());
        reopening.carryOut();
        // A menu, if there was one, gets the time to close.
        QCOMPARE(desk.grabber.calls, 1);
        QTRY_COMPARE(desk.overlays().size(), std::size_t(2));
    }

    void whileACaptureRunsAnotherCopyIsToldSo_data()
    {
        QTest::addColumn<QByteArrayList>("words");
        QTest::newRow("an area") << QByteArrayList({"area"});
        QTest::newRow("the whole screen") << QByteArrayList({"fullScreen"});
        QTest::newRow("opened again") << QByteArrayList();
    }
    void whileACaptureRunsAnotherCopyIsToldSo()
    {
        QFETCH(QByteArrayList, words);
        DelegateDesk desk;
        desk.controller.begin();
        desk.drag(desk.canvas(0), {10, 10}, {110, 60});
        QTest::keyClick(&desk.canvas(0), Qt::Key_S, Qt::ControlModifier);
        auto* panel = desk.lastShown<QFileDialog>();
        QVERIFY(panel);
        const InstanceAnswer answer = desk.delegate.answer({words, {}});
        QCOMPARE(answer.reply.exitCode, 4);
        QVERIFY(answer.reply.text.endsWith(".\n"));
        // The start itself still comes to who refuses it, at once.
        desk.panels.focused.clear();
        answer.carryOut();
        QCOMPARE(desk.panels.focused, (std::vector<QPointer<QWidget>>{panel}));
        panel->reject();
    }

    void aRecordingIsAReasonToo()
    {
        DelegateDesk desk;
        desk.activity.recording = true;
        QCOMPARE(desk.delegate.answer({{"area"}, {}}).reply.exitCode, 4);
        desk.activity.recording = false;
        QCOMPARE(desk.delegate.answer({{"area"}, {}}).reply.exitCode, 0);
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
        sendAllPostedEvents();
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
        sendAllPostedEvents();
        QCOMPARE(desk.opener.opened, QStringList(captures));
    }

    void aFolderThatNothingOpensIsTold()
    {
        DelegateDesk desk;
        desk.delegate.openCapturesFolder();
        QCoreApplication::processEvents();
        QVERIFY(!desk.toast.visible());
        desk.opener.succeeds = false;
        desk.delegate.openCapturesFolder();
        QTRY_VERIFY(desk.toast.visible());
        QCOMPARE(desk.panels.shown.back().widget->windowTitle(),
                 QStringLiteral("No se pudo abrir la carpeta"));
    }

    void theMenusFolderIsMadeWhereADiskMayTakeItsTime()
    {
        DelegateDesk desk;
        test::GatedExecutor disk;
        AppDelegate patient{{desk.platform, desk.prefs, desk.alerts, desk.toast, desk.activity,
                             desk.history, desk.output, desk.countdown, desk.longCaptures,
                             desk.controller, desk.drawer, desk.updater, desk.instance,
                             disk.executor()}};
        patient.openCapturesFolder();
        sendAllPostedEvents();
        QVERIFY(desk.opener.opened.isEmpty());
        disk.run(0);
        sendAllPostedEvents();
        QCOMPARE(desk.opener.opened.size(), 1);
    }

    void anotherCopyReachesWhatTheMenuOffers()
    {
        DelegateDesk desk;
        const InstanceAnswer settings = desk.delegate.answer({{"settings"}, {}});
        QCOMPARE(settings.reply, InstanceReply());
        QVERIFY(!desk.delegate.settings().window());
        settings.carryOut();
        QVERIFY(desk.delegate.settings().window());
        desk.delegate.answer({{"about"}, {}}).carryOut();
        QVERIFY(desk.lastShown<AboutPanel>());
        desk.delegate.answer({{"folder"}, {}}).carryOut();
        sendAllPostedEvents();
        QCOMPARE(desk.opener.opened.size(), 1);
        desk.delegate.answer({{"fullScreen", "--delay", "5"}, {}}).carryOut();
        QCOMPARE(desk.countdown.remaining(), 5);
        QCOMPARE(desk.grabber.calls, 0);
        desk.delegate.answer({{"quit"}, {}}).carryOut();
        QTRY_COMPARE(desk.activity.stage, Activity::Stage::left);
    }

    void whileACaptureRunsOnlyTheEndCanBeAskedFor()
    {
        DelegateDesk desk;
        desk.controller.begin();
        for (const char* word : {"settings", "about", "folder"}) {
            const InstanceAnswer refused = desk.delegate.answer({{word}, {}});
            QCOMPARE(refused.reply.exitCode, 4);
            QVERIFY(!refused.carryOut);
        }
        const InstanceAnswer end = desk.delegate.answer({{"quit"}, {}});
        QCOMPARE(end.reply.exitCode, 0);
        end.carryOut();
        QTRY_COMPARE(desk.activity.stage, Activity::Stage::left);
    }

    void theWelcomeIsShownOnceAndNeverAgain()
    {
        DelegateDesk desk;
        desk.delegate.showWelcomeIfFirstRun();
        QVERIFY(desk.lastShown<QMessageBox>());
        QCOMPARE(desk.lastShown<QMessageBox>()->text(),
                 QStringLiteral("Brindlecam vive en la barra de menú 🍃"));
        QVERIFY(desk.lastShown<QMessageBox>()->informativeText().startsWith(
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
        QCOMPARE(desk.lastShown<QMessageBox>()->text(),
                 QStringLiteral("Brindlecam vive en la bandeja del sistema 🍃"));
        QCOMPARE(desk.lastShown<QMessageBox>()->informativeText(),
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

    void keysAndMenuFollowTheSettingsOnceToldTo()
    {
        DelegateDesk desk;
        desk.delegate.reloadHotKeys();
        desk.prefs.setCombo(KeyCombo{105, 0, QStringLiteral("F13")}, CaptureAction::area);
        desk.prefs.setCombo(KeyCombo{0, controlModifier | optionModifier, QStringLiteral("⌃⌥A")},
                            CaptureAction::fullScreen);
        desk.delegate.reloadHotKeys();
        desk.hotKeys.press(0, controlModifier | optionModifier);
        QCOMPARE(desk.grabber.calls, 1);
        desk.hotKeys.press(105, 0);
        QTRY_COMPARE(desk.overlays().size(), std::size_t(2));
        const QList<QAction*> items = desk.delegate.menu().menu().actions();
        QCOMPARE(items.at(0)->text(), QStringLiteral("Capturar área"));
        QVERIFY(items.at(1)->text().startsWith(QStringLiteral("Capturar pantalla completa\t")));
    }

private:
    static void verifyRefused(DelegateDesk& desk, const QByteArrayList& words)
    {
        const InstanceAnswer answer = desk.delegate.answer({words, {}});
        QCOMPARE(answer.reply.exitCode, 3);
        QCOMPARE(answer.reply.text, QByteArray("Esa acción no está disponible.\n"));
        QVERIFY(!answer.carryOut);
    }
};

BRINDLECAM_TEST(TestAppDelegate);

} // namespace brindlecam

#include "tst_appdelegate.moc"
