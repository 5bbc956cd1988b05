#include "capture/CaptureFixture.h"
#include "support/TestCase.h"

namespace brindlecam {

using Fixture = test::CaptureFixture;

/// What becomes of a capture when the program ends.
class TestCaptureEnd final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aScreenThatIsBeingGrabbedIsStillDeliveredAtTheEnd()
    {
        Fixture f;
        f.grabber.waits = true;
        f.controller.captureFullScreen();
        int ended = 0;
        qsizetype keptThen = -1;
        f.controller.wrapUp([&] {
            ++ended;
            f.output.finishAll();
            keptThen = f.kept();
        });
        QCOMPARE(ended, 0);
        f.grabber.answer();
        QCOMPARE(ended, 1);
        QCOMPARE(keptThen, 1);
        QVERIFY(!f.controller.busy());
    }

    void aScreenThatCannotBeGrabbedAtTheEndIsNobodysMatter()
    {
        Fixture f;
        f.grabber.waits = true;
        f.grabber.fails = Error{QStringLiteral("no")};
        f.controller.captureFullScreen();
        int ended = 0;
        f.controller.wrapUp([&] { ++ended; });
        f.grabber.answer();
        QCOMPARE(ended, 1);
        QVERIFY(!f.alerts.visible());
    }

    void anAreaThatIsBeingGrabbedOpensNothingAtTheEnd()
    {
        Fixture f;
        f.grabber.waits = true;
        f.controller.begin();
        int ended = 0;
        f.controller.wrapUp([&] { ++ended; });
        f.grabber.answer();
        QCOMPARE(ended, 1);
        QVERIFY(f.overlays().empty());
        QVERIFY(!f.controller.busy());
    }

    void anOpenSessionIsCancelledAtTheEnd()
    {
        Fixture f;
        f.controller.begin();
        f.drag(f.canvas(0), {10, 10}, {110, 60});
        int ended = 0;
        f.controller.wrapUp([&] { ++ended; });
        QCOMPARE(ended, 1);
        QVERIFY(f.overlays().empty());
        f.output.finishAll();
        QCOMPARE(f.kept(), 1);
        f.controller.wrapUp([&] { ++ended; });
        QCOMPARE(ended, 2);
    }
};

BRINDLECAM_TEST(TestCaptureEnd);

} // namespace brindlecam

#include "tst_captureend.moc"
