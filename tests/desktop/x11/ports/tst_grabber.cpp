// Covers RootReader.
#include "desktop/support/x11/X11Input.h"
#include "platform/x11/connection/X11.h"
#include "platform/x11/desktop/X11Displays.h"
#include "platform/x11/grab/RootReader.h"
#include "platform/x11/grab/ServerPixels.h"
#include "platform/x11/grab/X11Grabber.h"
#include "support/TestCase.h"
#include "x11/NoMoreFiles.h"
#include "x11/ports/Client.h"
#include "x11/ports/Monitors.h"
#include "x11/ports/Pattern.h"

#include <QFile>

#include <xcb/shm.h>

#include <optional>
#include <thread>

namespace brindlecam {

using test::kDesktop;

namespace {

/// Whether memory shared with the server is mapped into this process.
bool holdsSharedMemory()
{
    QFile maps(QStringLiteral("/proc/self/maps"));
    return maps.open(QIODevice::ReadOnly) && maps.readAll().contains("brindlecam-pixels");
}

ScreenInfo screen(const QString& id, const QRect& native)
{
    return {id, native, 1, native};
}

std::vector<GrabbedScreen> grab(X11Grabber& grabber, const std::vector<ScreenInfo>& screens)
{
    std::vector<GrabbedScreen> grabbed;
    int calls = 0;
    QObject context;
    grabber.grabScreens(screens, &context, [&](auto result) {
        ++calls;
        if (result)
            grabbed = std::move(result).value();
        else
            qWarning("%s", qPrintable(result.error().message));
    });
    if (calls != 1)
        qWarning("done was called %d times", calls);
    return grabbed;
}

} // namespace

class TestGrabber final : public test::TestCase {
    Q_OBJECT

private:
    [[nodiscard]] static bool sharesMemory()
    {
        const auto* const extension = xcb_get_extension_data(x11::connection(), &xcb_shm_id);
        return extension && extension->present;
    }

private Q_SLOTS:
    void initTestCase()
    {
        m_client.emplace();
        m_client->setArrowPointer();
        m_client->paintDesktop(m_pattern);
    }
    void cleanup() { m_pixels = std::make_shared<ServerPixels>(); }
    void cleanupTestCase()
    {
        m_client.reset();
        m_pixels.reset();
    }

    void everyMonitorShowsWhatWasPaintedThere()
    {
        const test::Monitors monitors;
        m_hands.moveTo(test::Monitors::kRight.center());
        X11Grabber grabber(m_pixels);
        const auto grabbed = grab(grabber, X11Displays().screens());
        QCOMPARE(grabbed.size(), std::size_t(2));
        QCOMPARE(grabbed[0].screen.id, QStringLiteral("LEFT"));
        QCOMPARE(grabbed[0].image.format(), QImage::Format_RGB32);
        QCOMPARE(grabbed[0].image, m_pattern.copy(test::Monitors::kLeft));
        QCOMPARE(grabbed[1].screen.id, QStringLiteral("RIGHT"));
        QCOMPARE(grabbed[1].image, m_pattern.copy(test::Monitors::kRight));
    }

    void pointerIsNeverInThePicture()
    {
        const QPoint place(400, 300);
        m_hands.moveTo(place);
        const RootReader reader(m_pixels);
        const QRect around(place - QPoint(32, 32), QSize(64, 64));
        const auto image = reader.read(around);
        QVERIFY(image.ok());
        QCOMPARE(image.value(), m_pattern.copy(around));
        QCOMPARE(X11Displays().pointer(), std::optional(place));
    }

    void wholeDesktopIsReadThroughTheRing()
    {
        X11Grabber grabber(m_pixels);
        const auto all = screen(QStringLiteral("all"), QRect({}, kDesktop));
        const auto grabbed = grab(grabber, {all});
        QCOMPARE(grabbed.size(), std::size_t(1));
        QCOMPARE(grabbed[0].image, m_pattern);
    }

    void regionsAreCutExactly_data()
    {
        QTest::addColumn<QRect>("region");
        QTest::newRow("one pixel") << QRect(17, 23, 1, 1);
        QTest::newRow("odd sizes") << QRect(3, 5, 101, 77);
        QTest::newRow("last pixel of the desktop") << QRect(1599, 899, 1, 1);
        QTest::newRow("one row") << QRect(0, 450, 1600, 1);
        QTest::newRow("everything") << QRect({}, kDesktop);
    }
    void regionsAreCutExactly()
    {
        QFETCH(QRect, region);
        const RootReader reader(m_pixels);
        const auto image = reader.read(region);
        QVERIFY(image.ok());
        QCOMPARE(image.value(), m_pattern.copy(region));
    }

    void regionsBeyondTheDesktopAreRefused_data()
    {
        QTest::addColumn<QRect>("region");
        QTest::newRow("past the right edge") << QRect(1500, 10, 101, 10);
        QTest::newRow("past the lower edge") << QRect(10, 899, 10, 2);
        QTest::newRow("before the left edge") << QRect(-1, 10, 10, 10);
        QTest::newRow("far away") << QRect(50000, 50000, 10, 10);
        QTest::newRow("empty") << QRect();
        QTest::newRow("longer than sixteen bits") << QRect(0, 0, 70000, 1);
    }
    void regionsBeyondTheDesktopAreRefused()
    {
        QFETCH(QRect, region);
        const RootReader reader(m_pixels);
        const auto image = reader.read(region);
        QVERIFY(!image.ok());
        QVERIFY(!image.error().message.isEmpty());
    }

    void screensThatAreGoneAreLeftOut()
    {
        X11Grabber grabber(m_pixels);
        const auto gone = screen(QStringLiteral("gone"), QRect(1600, 0, 800, 600));
        const auto there = screen(QStringLiteral("there"), QRect(800, 300, 800, 600));
        const auto grabbed = grab(grabber, {gone, there});
        QCOMPARE(grabbed.size(), std::size_t(1));
        QCOMPARE(grabbed[0].screen, there);
        QVERIFY(grab(grabber, {gone}).empty());
        QVERIFY(grab(grabber, {}).empty());
    }

    void picturesKeepTheirPixelsUntilTheLastCopyGoes()
    {
        const QRect region(0, 0, 300, 200);
        const RootReader reader(m_pixels);
        auto first = reader.read(region);
        QVERIFY(first.ok());
        QImage copy = first.value();
        first = Error{};
        m_client->paintDesktop(m_pattern.mirrored());
        const auto second = reader.read(region);
        QCOMPARE(copy, m_pattern.copy(region));
        QCOMPARE(second.value(), m_pattern.mirrored().copy(region));
        m_client->paintDesktop(m_pattern);
    }

    void memoryIsReusedByThePictureAfter()
    {
        X11Grabber grabber(m_pixels);
        const auto all = screen(QStringLiteral("all"), QRect({}, kDesktop));
        const auto* const pixels = grab(grabber, {all}).front().image.constBits();
        const std::size_t kept = m_pixels->keptBytes();
        QCOMPARE(kept > 0, sharesMemory());
        const auto again = grab(grabber, {all});
        if (sharesMemory() && m_pixels->format().isDirect()) {
            QCOMPARE(again.front().image.constBits(), pixels);
            QVERIFY(m_pixels->keptBytes() < kept);
        } else { // what is converted or comes through the connection is not the store's
            QCOMPARE(m_pixels->keptBytes(), kept);
        }
    }

    void memoryIsReallyFreedSoonAfter()
    {
        X11Grabber grabber(m_pixels);
        grab(grabber, {screen(QStringLiteral("all"), QRect({}, kDesktop))});
        QCOMPARE(m_pixels->keptBytes() > 0, sharesMemory());
        QTRY_COMPARE_WITH_TIMEOUT(m_pixels->keptBytes(), std::size_t(0), 15000);
        QVERIFY(!holdsSharedMemory());
    }

    void refusedBandLeavesTheServerToTheOthers()
    {
        // The bands below the desktop's last row are refused.
        const QRect tooHigh(0, 0, kDesktop.width(), kDesktop.height() + 600);
        for (int time = 0; time < 3; ++time) {
            QVERIFY(!m_pixels->read(tooHigh)); // nor without shared memory
            m_hands.moveTo({10 + time, 10});   // waits for the server
        }
        const RootReader reader(m_pixels);
        const auto after = reader.read(QRect({}, kDesktop));
        QVERIFY(after.ok());
        QCOMPARE(after.value(), m_pattern);
    }

    void pictureComesThroughTheConnectionWhereMemoryIsRefused()
    {
        const RootReader reader(m_pixels);
        const QRect region(100, 50, 700, 500);
        std::optional<Result<QImage>> image;
        {
            const test::NoMoreFiles refused;
            image = reader.read(region);
        }
        QVERIFY(image->ok());
        QCOMPARE(image->value(), m_pattern.copy(region));
        QCOMPARE(m_pixels->keptBytes(), std::size_t(0));
    }

    void picturesMayOutliveTheReaderAndGoOnAnyThread()
    {
        std::optional<RootReader> reader(m_pixels);
        auto image = reader->read(QRect(0, 0, 300, 200));
        auto other = reader->read(QRect(0, 0, 300, 200));
        QVERIFY(image.ok() && other.ok());
        std::thread([gone = std::exchange(other, Error{})] { QVERIFY(gone.ok()); }).join();
        reader.reset();
        m_pixels = std::make_shared<ServerPixels>();
        QCOMPARE(image.value(), m_pattern.copy(0, 0, 300, 200));
        std::thread([gone = std::exchange(image, Error{})] { QVERIFY(gone.ok()); }).join();
        QVERIFY(!holdsSharedMemory());
    }

private:
    const QImage m_pattern = test::pattern();
    std::optional<test::Client> m_client;
    desktop::X11Input m_hands{test::display()};
    std::shared_ptr<ServerPixels> m_pixels = std::make_shared<ServerPixels>();
};

BRINDLECAM_TEST(TestGrabber);

} // namespace brindlecam

#include "tst_grabber.moc"
