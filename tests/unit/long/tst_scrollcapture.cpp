#include "ScrollFixture.h"
#include "support/TestCase.h"

#include <QDialog>
#include <QElapsedTimer>

namespace brindlecam {

using test::ScrollFixture;

namespace {

const QString kCalmly =
    QStringLiteral("Desplázate hacia abajo con calma  ·  Enter = listo  ·  Esc = cancelar");
const QString kTooFast = QStringLiteral("Muy rápido: regresa un poco y baja más despacio");
const QString kNotBegun = QStringLiteral("No se pudo iniciar la captura con desplazamiento");

QString growing(int rows)
{
    return QStringLiteral("Capturando… %1 px de alto  ·  Enter = listo  ·  Esc = cancelar")
        .arg(rows);
}

} // namespace

class TestScrollCapture final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void whatIsScrolledIsDeliveredAsOnePage()
    {
        ScrollFixture f;
        f.start();
        QVERIFY(f.scroll.isRunning());
        QVERIFY(f.activity.scrollCapture);
        QCOMPARE(f.grabber.regions, std::vector{f.rect});
        QCOMPARE(f.grabber.options.panels, RegionOptions::Panels::leftOut);
        QCOMPARE(f.status(), kCalmly);
        f.scrollTo(0);
        QCOMPARE(f.status(), kCalmly);
        f.scrollTo(120);
        QTRY_COMPARE(f.status(), growing(320));
        f.scrollTo(260);
        QTRY_COMPARE(f.status(), growing(460));
        f.hotKeys.press(KeyCodes::kReturn, 0);
        QVERIFY(!f.scroll.isRunning());
        QVERIFY(!f.activity.scrollCapture);
        QVERIFY(f.shown->stopped);
        f.output.finishAll();
        QCOMPARE(f.copied(), test::scrolledTo(f.page, 0, 460));
        QCOMPARE(f.savedFiles().size(), 1);
        QCOMPARE(f.history.items().size(), 1);
        QCOMPARE(f.told(), QStringLiteral("Captura larga copiada y guardada (460 px de alto)"));
    }

    void enterBeforeScrollingDeliversTheFirstFrame()
    {
        ScrollFixture f;
        f.start();
        f.scrollTo(0);
        f.hotKeys.press(KeyCodes::kReturn, 0);
        f.output.finishAll();
        QCOMPARE(f.copied(), test::scrolledTo(f.page, 0, ScrollFixture::kHeight));
    }

    void withoutAutomaticSavingNothingIsWritten()
    {
        ScrollFixture f;
        f.defaults.setBoolean(QStringLiteral("autoSaveArea"), false);
        f.start();
        f.scrollTo(0);
        f.scroll.finish();
        f.output.finishAll();
        QCOMPARE(f.told(), QStringLiteral("Captura larga copiada (200 px de alto)"));
        QVERIFY(f.savedFiles().isEmpty());
    }

    void onADenseScreenThePageKeepsItsSizeInPoints()
    {
        ScrollFixture f;
        ScreenInfo dense = test::kLeft;
        dense.scale = 2;
        f.displays.all = {dense};
        f.start(dense);
        f.scrollTo(0);
        f.scroll.finish();
        f.output.finishAll();
        QCOMPARE(f.copied().size(), QSize(160, 200));
        QCOMPARE(f.copied().dotsPerMeterX(), 5669); // 160 pixels are 80 points
    }

    void escapeDiscardsEverythingSilently()
    {
        ScrollFixture f;
        f.start();
        f.scrollTo(0);
        f.scrollTo(100);
        f.hotKeys.press(KeyCodes::kEscape, 0);
        QVERIFY(!f.scroll.isRunning());
        QVERIFY(!f.activity.scrollCapture);
        f.output.finishAll();
        QVERIFY(!f.toast.visible());
        QVERIFY(!f.pasteboard.png);
        QVERIFY(f.history.items().isEmpty());
    }

    void scrollingTooFastIsToldUntilAFrameMatchesAgain()
    {
        ScrollFixture f;
        f.start();
        f.scrollTo(0);
        f.see(test::scrolledTo(f.page, 1500, ScrollFixture::kHeight));
        QTRY_COMPARE(f.status(), kTooFast); // it stays there for three frames
        f.scrollTo(100);
        QTRY_COMPARE(f.status(), growing(300));
    }

    void twentyThousandRowsEndItByThemselves()
    {
        ScrollFixture f;
        f.page = test::paintedPage({40, 24000});
        f.shown->now = test::scrolledTo(f.page, 0, 4000);
        f.start();
        for (int top = 0; top <= 19000 && f.scroll.isRunning(); top += 3000)
            f.see(test::scrolledTo(f.page, top, 4000));
        QTRY_VERIFY(!f.scroll.isRunning());
        f.output.finishAll();
        QCOMPARE(f.told(), QStringLiteral("Captura larga copiada y guardada (20000 px de alto)"));
        QCOMPARE(f.copied(), test::scrolledTo(f.page, 0, 20000));
    }

    void onlyOneLongCaptureRunsAtATime()
    {
        ScrollFixture f;
        f.activity.recording = true;
        f.start();
        QVERIFY(!f.scroll.isRunning());
        f.activity.recording = false;
        f.start();
        f.scrollTo(0);
        f.scroll.start(QRect(0, 0, 100, 150), test::kRight);
        QCOMPARE(f.grabber.regions, std::vector{f.rect});
    }

    void aRegionThatCantBeGrabbedIsTold()
    {
        ScrollFixture f;
        f.scroll.start(f.rect, test::kLeft); // nothing to open
        QVERIFY(!f.scroll.isRunning());
        QVERIFY(!f.activity.scrollCapture);
        QCOMPARE(f.told(), kNotBegun);
    }

    void aFirstFrameThatFailsIsTold()
    {
        ScrollFixture f;
        f.grabber.region = std::make_unique<test::ScriptedFrames>(f.shown); // shows nothing
        f.scroll.start(f.rect, test::kLeft);
        QTRY_VERIFY(!f.scroll.isRunning());
        QCOMPARE(f.told(), kNotBegun);
        QVERIFY(!f.pasteboard.png);
    }

    void aLaterFrameThatFailsLosesNothing()
    {
        ScrollFixture f;
        f.start();
        f.scrollTo(0);
        f.scrollTo(100);
        QTRY_COMPARE(f.status(), growing(300));
        f.shown->show({});
        QTRY_VERIFY(!f.scroll.isRunning());
        f.output.finishAll();
        QCOMPARE(f.copied(), test::scrolledTo(f.page, 0, 300));
    }

    void aScreenThatGoesOrChangesEndsItWithWhatThereIs_data()
    {
        QTest::addColumn<bool>("gone");
        QTest::newRow("gone") << true;
        QTest::newRow("resized") << false;
    }
    void aScreenThatGoesOrChangesEndsItWithWhatThereIs()
    {
        QFETCH(bool, gone);
        ScrollFixture f;
        f.start();
        f.scrollTo(0);
        ScreenInfo smaller = test::kLeft;
        smaller.native.setWidth(320);
        f.displays.all = gone ? std::vector{test::kRight} : std::vector{smaller, test::kRight};
        f.displays.change();
        QVERIFY(!f.scroll.isRunning());
        f.output.finishAll();
        QVERIFY(!f.told().isEmpty());
        QVERIFY(f.displays.all.front().native.contains(f.panels.shown.back().native.center()));
        QCOMPARE(f.copied(), test::scrolledTo(f.page, 0, ScrollFixture::kHeight));
    }

    void anotherScreenMayGo()
    {
        ScrollFixture f;
        f.start();
        f.scrollTo(0);
        f.displays.all = {test::kLeft};
        f.displays.change();
        QVERIFY(f.scroll.isRunning());
    }

    void aScreenThatChangedBeforeItBeginsIsTold()
    {
        ScrollFixture f;
        f.displays.all = {test::kRight};
        f.start();
        QVERIFY(!f.scroll.isRunning());
        QVERIFY(f.grabber.regions.empty());
        QCOMPARE(f.told(), kNotBegun);
        QVERIFY(test::kRight.native.contains(f.panels.shown.back().native.center()));
    }

    void whatItIsToldAfterItsEndIsDropped()
    {
        ScrollFixture f;
        f.grabber.waits = true;
        f.start();
        QVERIFY(f.scroll.isRunning());
        QVERIFY(!f.scroll.chrome().isShown()); // there is nothing to end yet
        f.scroll.cancel();
        QVERIFY(!f.grabber.isAwaited());
        f.grabber.answer();
        QVERIFY(!f.scroll.chrome().isShown());
        QVERIFY(!f.toast.visible());
    }

    void aPanelThatFramesCantLeaveOutGoes_data()
    {
        QTest::addColumn<bool>("known");
        QTest::newRow("as is known when it begins") << true;
        QTest::newRow("as a frame says") << false;
    }
    void aPanelThatFramesCantLeaveOutGoes()
    {
        QFETCH(bool, known);
        ScrollFixture f;
        f.rect = QRect(0, 0, 400, 300);
        f.page = test::paintedPage({400, 600});
        f.shown->now = test::scrolledTo(f.page, 0, 300);
        f.shown->seesBeneathPanels = !known;
        f.shown->showsPanels = !known;
        f.start();
        QTRY_COMPARE(f.status(), QString());
        QVERIFY(f.scroll.isRunning());
        QTRY_VERIFY(f.shown->looksTaken() >= 3);
        f.hotKeys.press(KeyCodes::kReturn, 0);
        f.output.finishAll();
        QCOMPARE(f.copied(), test::scrolledTo(f.page, 0, 300));
    }

    void looksAgainSeventyMillisecondsAfterAFrame()
    {
        ScrollFixture f;
        QElapsedTimer time;
        time.start();
        f.start();
        QTRY_VERIFY(f.shown->looksTaken() >= 4);
        QVERIFY(time.elapsed() >= 3 * 70);
    }

    void dialogsAreNotInThePage()
    {
        ScrollFixture f;
        auto* const dialog = new QDialog;
        f.alerts.show(dialog);
        QVERIFY(dialog->isVisible());
        f.start();
        QVERIFY(!dialog->isVisible());
        f.scroll.cancel();
        QVERIFY(dialog->isVisible());
        delete dialog;
    }

    void messagesOfOthersWaitForItsEnd()
    {
        ScrollFixture f;
        f.start();
        f.scrollTo(0);
        f.toast.show(QStringLiteral("Copiado"));
        QVERIFY(!f.toast.visible());
        f.scroll.cancel();
        QVERIFY(f.toast.visible());
    }

    void itsOwnersEndEndsIt()
    {
        ScrollFixture f;
        {
            ScrollCapture scroll({f.platform, f.results, f.toast, f.alerts, f.activity});
            f.shown->now = f.page;
            f.grabber.region = std::make_unique<test::ScriptedFrames>(f.shown);
            scroll.start(f.rect, test::kLeft);
            QVERIFY(f.activity.scrollCapture);
        }
        QVERIFY(f.shown->stopped);
        QVERIFY(!f.activity.scrollCapture);
    }
};

BRINDLECAM_TEST(TestScrollCapture);

} // namespace brindlecam

#include "tst_scrollcapture.moc"
