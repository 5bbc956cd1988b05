#include "ScrollFixture.h"
#include "long/LongSessions.h"
#include "support/TestCase.h"

namespace brindlecam {

class TestLongSessions final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void takesPagesAndNoRecordings()
    {
        test::ScrollFixture f;
        LongSessions sessions({f.platform, f.results, f.toast, f.alerts, f.activity});
        QVERIFY(sessions.available(LongCapture::scroll));
        QVERIFY(!sessions.available(LongCapture::gif));
        f.shown->now = f.page;
        f.grabber.region = std::make_unique<test::ScriptedFrames>(f.shown);
        sessions.start(LongCapture::gif, f.rect, test::kLeft);
        QVERIFY(!f.activity.any());
        sessions.start(LongCapture::scroll, f.rect, test::kLeft);
        QVERIFY(f.activity.scrollCapture);
        QVERIFY(sessions.scrollCapture().isRunning());
    }

    void whatRunsCanBeCancelled()
    {
        test::ScrollFixture f;
        LongSessions sessions({f.platform, f.results, f.toast, f.alerts, f.activity});
        sessions.cancel(); // nothing runs
        f.shown->now = f.page;
        f.grabber.region = std::make_unique<test::ScriptedFrames>(f.shown);
        sessions.start(LongCapture::scroll, f.rect, test::kLeft);
        sessions.cancel();
        QVERIFY(!f.activity.any());
        f.output.finishAll();
        QVERIFY(!f.pasteboard.png);
    }
};

BRINDLECAM_TEST(TestLongSessions);

} // namespace brindlecam

#include "tst_longsessions.moc"
