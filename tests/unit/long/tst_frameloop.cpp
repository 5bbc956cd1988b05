#include "long/FrameLoop.h"
#include "support/ScriptedFrames.h"
#include "support/TestCase.h"

#include <QElapsedTimer>

#include <atomic>

namespace brindlecam {

namespace {

std::shared_ptr<test::Shown> somethingShown()
{
    auto shown = std::make_shared<test::Shown>();
    shown->now = QImage(4, 4, QImage::Format_RGB32);
    return shown;
}

} // namespace

class TestFrameLoop final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void framesComeOneAfterTheOtherOnAThreadOfTheirOwn()
    {
        std::atomic<int> frames = 0;
        std::atomic<bool> elsewhere = false;
        const auto here = std::this_thread::get_id();
        const FrameLoop loop(std::make_unique<test::ScriptedFrames>(somethingShown()),
                             [&](const Result<RegionFrame>& frame) -> FrameLoop::Pause {
                                 elsewhere = std::this_thread::get_id() != here;
                                 frames += frame ? 1 : 0;
                                 return std::chrono::milliseconds(1);
                             });
        QTRY_VERIFY(frames >= 3);
        QVERIFY(elsewhere);
    }

    void itWaitsAsLongAsItIsTold()
    {
        std::atomic<int> frames = 0;
        QElapsedTimer time;
        time.start();
        const FrameLoop loop(std::make_unique<test::ScriptedFrames>(somethingShown()),
                             [&frames](const Result<RegionFrame>&) -> FrameLoop::Pause {
                                 ++frames;
                                 return std::chrono::milliseconds(30);
                             });
        QTRY_VERIFY(frames >= 4);
        QVERIFY(time.elapsed() >= 90);
    }

    void itsEndWaitsForNoPause()
    {
        std::atomic<int> frames = 0;
        QElapsedTimer time;
        {
            const FrameLoop loop(std::make_unique<test::ScriptedFrames>(somethingShown()),
                                 [&frames](const Result<RegionFrame>&) -> FrameLoop::Pause {
                                     ++frames;
                                     return std::chrono::hours(1);
                                 });
            QTRY_COMPARE(frames.load(), 1);
            time.start();
        }
        QVERIFY(time.elapsed() < 10000);
        QCOMPARE(frames.load(), 1);
    }

    void anErrorIsTheLastThatComes()
    {
        auto shown = std::make_shared<test::Shown>(); // nothing
        std::atomic<int> errors = 0;
        {
            const FrameLoop loop(std::make_unique<test::ScriptedFrames>(shown),
                                 [&errors](const Result<RegionFrame>& frame) -> FrameLoop::Pause {
                                     errors += frame ? 0 : 1;
                                     return std::chrono::milliseconds(0);
                                 });
            QTRY_COMPARE(errors.load(), 1);
            QVERIFY(!QTest::qWaitFor([&errors] { return errors > 1; }, 30));
        }
        QCOMPARE(errors.load(), 1);
    }

    void whoeverWantsNoMoreGetsNoMore()
    {
        auto shown = somethingShown();
        std::atomic<int> frames = 0;
        const FrameLoop loop(std::make_unique<test::ScriptedFrames>(shown),
                             [&frames](const Result<RegionFrame>&) -> FrameLoop::Pause {
                                 ++frames;
                                 return std::nullopt;
                             });
        QTRY_COMPARE(frames.load(), 1);
        QVERIFY(!QTest::qWaitFor([&shown] { return shown->looksTaken() > 1; }, 30));
    }
};

BRINDLECAM_TEST(TestFrameLoop);

} // namespace brindlecam

#include "tst_frameloop.moc"
