#include "capture/CaptureFixture.h"
#include "support/TestCase.h"

namespace brindlecam {

/// Covers the part of CaptureController in which the system keeps the pictures back, as one does
/// that asks its user first.
class TestWaitingForPictures final : public test::TestCase {
    Q_OBJECT

    using Fixture = test::CaptureFixture;

    static void addStarts()
    {
        QTest::addColumn<bool>("area");
        QTest::newRow("area") << true;
        QTest::newRow("full screen") << false;
    }
    static void start(Fixture& f, bool area)
    {
        if (area)
            f.controller.begin();
        else
            f.controller.captureFullScreen();
    }

private Q_SLOTS:
    void escapeCallsTheCaptureOff_data() { addStarts(); }
    void escapeCallsTheCaptureOff()
    {
        QFETCH(bool, area);
        Fixture f;
        f.grabber.waits = true;
        start(f, area);
        QVERIFY(f.controller.busy());
        QVERIFY(f.grabber.isAwaited());
        f.pressEscape();
        QVERIFY(!f.controller.busy());
        QVERIFY(!f.activity.capture);
        QVERIFY(!f.grabber.isAwaited());
        QVERIFY(f.hotKeys.registered.empty());
        QCOMPARE(f.front.remembered, area ? 1 : 0);
        QCOMPARE(f.front.givenBack, area ? 1 : 0);
        f.grabber.answer();
        QVERIFY(f.overlays().empty());
        QCOMPARE(f.kept(), 0);
    }

    void theNextCaptureIsNotDisturbedByTheOneCalledOff()
    {
        Fixture f;
        f.grabber.waits = true;
        f.controller.begin();
        f.pressEscape();
        f.grabber.waits = false;
        f.controller.begin();
        QCOMPARE(f.overlays().size(), 2U);
        f.pressEscape();
        QVERIFY(!f.controller.busy());
        QCOMPARE(f.hotKeys.duplicates, 0);
    }

    void escapeIsTheSessionsOnceThePicturesAreThere()
    {
        Fixture f;
        f.grabber.waits = true;
        f.controller.begin();
        f.grabber.answer();
        QCOMPARE(f.overlays().size(), 2U);
        QCOMPARE(f.hotKeys.duplicates, 0);
        f.drag(f.canvas(0), {10, 10}, {110, 60});
        f.pressEscape(); // drops the selection or the session, whichever the canvas says
        f.pressEscape();
        QVERIFY(!f.controller.busy());
    }

    void escapeIsNotTakenWhereThePicturesComeAtOnce()
    {
        Fixture f;
        f.inputGrabs.held = true;
        f.controller.begin();
        QVERIFY(f.controller.busy());
        // Another program's menu is closed by it just now.
        QVERIFY(f.hotKeys.registered.empty());
    }

    void quittingCallsAnAreaCaptureOff()
    {
        Fixture f;
        f.grabber.waits = true;
        f.controller.begin();
        bool done = false;
        f.controller.wrapUp([&] { done = true; });
        QVERIFY(done);
        QVERIFY(!f.controller.busy());
        QVERIFY(!f.grabber.isAwaited());
    }

    void quittingWaitsForAScreenThatIsBeingGrabbed()
    {
        Fixture f;
        f.grabber.waits = true;
        f.controller.captureFullScreen();
        bool done = false;
        f.controller.wrapUp([&] { done = true; });
        QVERIFY(!done);
        f.grabber.answer();
        QVERIFY(done);
        QTRY_COMPARE(f.kept(), 1);
    }

    void theControllersEndCallsTheCaptureOff()
    {
        Platform platform = makeNullPlatform();
        test::FakeGrabber* grabber = nullptr;
        {
            Fixture f;
            f.grabber.waits = true;
            f.controller.begin();
            QVERIFY(f.grabber.isAwaited());
            platform.grabber = std::move(f.platform.grabber);
            grabber = static_cast<test::FakeGrabber*>(platform.grabber.get());
        }
        QVERIFY(!grabber->isAwaited());
        grabber->answer();
    }

    void picturesThatNeverComeAreNotWaitedForAtTheEnd()
    {
        Fixture f;
        f.grabber.waits = true;
        f.controller.captureFullScreen();
        bool done = false;
        f.controller.wrapUp([&] { done = true; });
        QVERIFY(!done);
        QTRY_VERIFY(done);
        QVERIFY(!f.controller.busy());
        QVERIFY(!f.grabber.isAwaited());
    }
};

BRINDLECAM_TEST(TestWaitingForPictures);

} // namespace brindlecam

#include "tst_waitingforpictures.moc"
