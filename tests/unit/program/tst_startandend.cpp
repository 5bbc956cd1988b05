#include "ProgramDesk.h"
#include "base/KeyCodes.h"
#include "pins/PinnedCapture.h"
#include "preferences/Config.h"
#include "support/TestCase.h"

#include <QTimer>

namespace brindlecam {

using test::ProgramDesk;

namespace {

Rendered smallPicture()
{
    QImage image(40, 30, QImage::Format_RGB32);
    image.fill(Qt::red);
    return {image, QSizeF(40, 30)};
}

const QString kFullScreen = QStringLiteral("Capturar pantalla completa");

} // namespace

/// In which order the program begins, what it begins no more once it ends, and how it leaves.
class TestStartAndEnd final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void everythingBeginsInItsOrder_data()
    {
        using Action = std::optional<CaptureAction>;
        QTest::addColumn<Action>("action");
        QTest::addColumn<QString>("work");
        QTest::newRow("without an action windows are made ready")
            << Action() << QStringLiteral("overlay");
        QTest::newRow("the area is first of all")
            << Action(CaptureAction::area) << QStringLiteral("grabs, key 53, overlay");
        QTest::newRow("the screen is first of all")
            << Action(CaptureAction::fullScreen) << QStringLiteral("grabs");
    }
    void everythingBeginsInItsOrder()
    {
        QFETCH(std::optional<CaptureAction>, action);
        QFETCH(QString, work);
        ProgramDesk desk(ProgramDesk::Run::first);
        desk.start(action);
        QCOMPARE(desk.journal.join(QLatin1String(", ")),
                 QStringLiteral(
                     "listens, heeds signals, status item, key 25, key 28, key 29, %1, dialog")
                     .arg(work));
    }

    void theWelcomeWaitsForTheEndOfTheFirstSession()
    {
        ProgramDesk desk(ProgramDesk::Run::first);
        desk.start(CaptureAction::area);
        QCOMPARE(desk.overlays(), 1);
        const auto dialogIsShown = [&desk] {
            return std::ranges::any_of(desk.panels.shown, [](const auto& shown) {
                return shown.native.isEmpty() && shown.widget && shown.widget->isVisible();
            });
        };
        QVERIFY(!dialogIsShown());
        desk.keyboard.press(KeyCodes::kEscape, 0);
        QVERIFY(dialogIsShown());
    }

    void theWelcomeIsForTheFirstRunAlone()
    {
        ProgramDesk desk;
        desk.start();
        QCOMPARE(desk.made(PanelRole::dialog), 0);
    }

    void whoeverAsksTheProgramEndsInTheSameOrder_data()
    {
        QTest::addColumn<int>("asker");
        QTest::newRow("the system") << 0;
        QTest::newRow("the menu") << 1;
        QTest::newRow("the main loop is gone") << 2;
    }
    void whoeverAsksTheProgramEndsInTheSameOrder()
    {
        QFETCH(int, asker);
        ProgramDesk desk;
        desk.start();
        desk.journal.clear();
        if (asker == 0)
            desk.quitSignals.ask();
        else if (asker == 1)
            desk.item(QStringLiteral("Salir")).trigger();
        else
            desk.program.reset();
        QTRY_COMPARE(
            desk.journal.join(QLatin1String(", ")),
            QStringLiteral("hangs up, gives a key back, gives a key back, gives a key back, "
                           "no status item, hands over"));
    }

    void aSecondWishToEndChangesNothing()
    {
        ProgramDesk desk;
        desk.start();
        desk.quit();
        desk.quit();
        desk.quitSignals.ask();
        QTRY_COMPARE(desk.pasteboard.handOvers, 1);
        desk.program.reset();
        QCOMPARE(desk.journal.count(QStringLiteral("hands over")), 1);
    }

    void noKeyIsTakenAnyMore()
    {
        ProgramDesk desk;
        desk.start();
        desk.quit();
        QVERIFY(desk.keyboard.registered.empty());
        desk.hotKeys().reload();
        QVERIFY(desk.keyboard.registered.empty());
    }

    void nothingWaitsForASystemThatAnswersLateAboutItsKeys()
    {
        ProgramDesk desk(ProgramDesk::Run::first);
        desk.keyboard.waits = true;
        desk.start();
        QCOMPARE(desk.keyboard.awaited(), 1);
        QCOMPARE(ProgramDesk::keyOf(desk.item(kFullScreen)), QStringLiteral("Mayús+Super+8"));
        QCOMPARE(desk.made(PanelRole::dialog), 1);
        desk.keyboard.press(28, ProgramDesk::kHotKey);
        QTRY_COMPARE(desk.grabber.calls, 1);
        desk.quit();
        QVERIFY(desk.keyboard.registered.empty());
        QTRY_COMPARE(desk.pasteboard.handOvers, 1);
        desk.keyboard.answer();
        QVERIFY(desk.hotKeys().bound().empty());
    }

    void otherCopiesAreRefusedEverything_data()
    {
        QTest::addColumn<QByteArrayList>("words");
        QTest::newRow("area") << QByteArrayList{"area"};
        QTest::newRow("fullScreen") << QByteArrayList{"fullScreen"};
        QTest::newRow("recents") << QByteArrayList{"recents"};
        QTest::newRow("opened again") << QByteArrayList();
    }
    void otherCopiesAreRefusedEverything()
    {
        QFETCH(QByteArrayList, words);
        ProgramDesk desk;
        desk.start();
        desk.quit();
        const InstanceAnswer answer = desk.ask({words, {}});
        QCOMPARE(answer.reply.exitCode, 3);
        QVERIFY(!answer.carryOut);
    }

    void whatWasPromisedToACopyIsNotBegunAnyMore()
    {
        ProgramDesk desk;
        desk.start();
        const InstanceAnswer answer = desk.ask({{"fullScreen"}, {}});
        QCOMPARE(answer.reply.exitCode, 0);
        desk.quit();
        answer.carryOut();
        QCOMPARE(desk.grabber.calls, 0);
    }

    void aCountdownEndsWithoutItsCapture()
    {
        ProgramDesk desk;
        desk.start();
        desk.item(QStringLiteral("Pantalla completa en 3 segundos")).trigger();
        QCOMPARE(desk.made(PanelRole::countdown), 1);
        QCOMPARE(desk.panels.visibleNow(), 1);
        desk.quit();
        QCOMPARE(desk.panels.visibleNow(), 0);
        QTRY_COMPARE(desk.pasteboard.handOvers, 1);
        QCOMPARE(desk.grabber.calls, 0);
    }

    void aChoiceThatWaitsForItsMenuToCloseIsDropped()
    {
        ProgramDesk desk;
        desk.start();
        desk.item(kFullScreen).trigger();
        desk.quit();
        // Begun after the choice, so it ends after that.
        bool over = false;
        QTimer::singleShot(Config::menuToCapture * 2, Qt::PreciseTimer, &desk.captures(),
                           [&over] { over = true; });
        QTRY_VERIFY(over);
        QCOMPARE(desk.grabber.calls, 0);
    }

    void theMenuOffersNothingNew()
    {
        ProgramDesk desk;
        desk.start();
        desk.quit();
        Q_EMIT desk.menu().aboutToShow();
        QStringList offered;
        for (const char* title :
             {"Capturar área", "Capturar pantalla completa", "Capturas recientes",
              "Área en 3 segundos", "Pantalla completa en 5 segundos", "Abrir carpeta de capturas",
              "Configuración…", "Buscar actualizaciones…", "Acerca de Brindlecam", "Salir"}) {
            if (desk.item(QString::fromUtf8(title)).isEnabled())
                offered << QString::fromUtf8(title);
        }
        QCOMPARE(offered,
                 QStringList({QStringLiteral("Abrir carpeta de capturas"),
                              QStringLiteral("Acerca de Brindlecam"), QStringLiteral("Salir")}));
    }

    void aMenuThatHasNotHeardOfItCountsNothingDown()
    {
        ProgramDesk desk;
        desk.start();
        QAction& item = desk.item(QStringLiteral("Área en 3 segundos"));
        desk.quit();
        QVERIFY(item.isEnabled());
        item.trigger();
        QCOMPARE(desk.made(PanelRole::countdown), 0);
    }

    void pinsGiveNothingAwayAnyMore()
    {
        ProgramDesk desk;
        desk.start();
        desk.pins().pin(smallPicture(), QRect(10, 10, 40, 30));
        PinnedCapture& pin = *desk.pins().open().front();
        pin.copyImage();
        QTRY_COMPARE(desk.pasteboard.changes, 1);
        pin.saveImage();
        QCOMPARE(desk.made(PanelRole::dialog), 1);
        desk.quit();
        pin.copyImage();
        pin.saveImage();
        QTRY_COMPARE(desk.pasteboard.handOvers, 1);
        QCOMPARE(desk.pasteboard.changes, 1);
        QCOMPARE(desk.made(PanelRole::dialog), 1);
        QVERIFY(pin.isVisible());
    }

    void anOpenSessionEndsAsByEscape()
    {
        ProgramDesk desk;
        desk.start(CaptureAction::area);
        QCOMPARE(desk.overlays(), 1);
        desk.quit();
        QCOMPARE(desk.overlays(), 0);
        QTRY_COMPARE(desk.pasteboard.handOvers, 1);
        QCOMPARE(desk.kept(), 0);
    }

    void aScreenThatIsBeingGrabbedIsWaitedFor()
    {
        ProgramDesk desk;
        desk.grabber.waits = true;
        desk.start(CaptureAction::fullScreen);
        desk.quit();
        QVERIFY(desk.captures().busy());
        QCoreApplication::processEvents();
        QCOMPARE(desk.pasteboard.handOvers, 0);
        desk.grabber.answer();
        QTRY_COMPARE(desk.pasteboard.handOvers, 1);
        QCOMPARE(desk.pasteboard.changes, 1);
        QCOMPARE(desk.kept(), 1);
    }
};

BRINDLECAM_TEST(TestStartAndEnd);

} // namespace brindlecam

#include "tst_startandend.moc"
