// Covers PixelBuffer.
#include "platform/x11/connection/X11.h"
#include "platform/x11/grab/PixelStore.h"
#include "support/TestCase.h"

#include <thread>

namespace brindlecam {

using namespace std::chrono_literals;

namespace {

constexpr QSize kSize(64, 32);
constexpr std::size_t kBytes = 64 * 32 * 4;

QImage picture(PixelStore& store)
{
    return store.wrap(store.take(PixelBuffer::Kind::plain, kBytes), kSize, 64 * 4,
                      QImage::Format_RGB32);
}

} // namespace

class TestPixelStore final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void onlyTheSameSizeIsReused()
    {
        PixelStore store(x11::connection());
        picture(store) = {};
        QCOMPARE(store.keptBytes(), kBytes);
        const auto other = store.take(PixelBuffer::Kind::plain, kBytes / 2);
        QVERIFY(other);
        QCOMPARE(store.keptBytes(), kBytes);
        const auto same = store.take(PixelBuffer::Kind::plain, kBytes);
        QVERIFY(same);
        QCOMPARE(store.keptBytes(), std::size_t(0));
    }

    void memoryThatWaitedIsFreed()
    {
        PixelStore store(x11::connection(), 20ms);
        picture(store) = {};
        QCOMPARE(store.keptBytes(), kBytes);
        QTRY_COMPARE(store.keptBytes(), std::size_t(0));
        picture(store) = {};
        QCOMPARE(store.keptBytes(), kBytes);
        QTRY_COMPARE(store.keptBytes(), std::size_t(0));
    }

    void memoryGivenBackOnAnotherThreadIsFreedToo()
    {
        PixelStore store(x11::connection(), 20ms);
        std::thread([image = picture(store)]() mutable { image = {}; }).join();
        QCOMPARE(store.keptBytes(), kBytes);
        QTRY_COMPARE(store.keptBytes(), std::size_t(0));
    }

    void eachPieceWaitsItsOwnTime()
    {
        PixelStore::Clock::time_point now{};
        PixelStore store(x11::connection(), 20ms, [&now] { return now; });
        QImage first = picture(store);
        QImage second = picture(store);
        first = {};
        now += 10ms;
        second = {};
        QCOMPARE(store.keptBytes(), 2 * kBytes);
        now += 10ms;
        QTRY_COMPARE(store.keptBytes(), kBytes);
        QTest::qWait(60); // several rounds of its timer
        QCOMPARE(store.keptBytes(), kBytes);
        now += 10ms;
        QTRY_COMPARE(store.keptBytes(), std::size_t(0));
    }
};

BRINDLECAM_TEST(TestPixelStore);

} // namespace brindlecam

#include "tst_pixel_store.moc"
