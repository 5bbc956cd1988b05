#include "pictures/Dimming.h"
#include "platform/linux/x11/X11Displays.h"
#include "platform/linux/x11/X11Grabber.h"
#include "support/TestCase.h"
#include "x11/ports/Client.h"
#include "x11/ports/Monitors.h"

#include <QFile>

#include <array>
#include <optional>
#include <thread>

namespace brindlecam {

namespace {

constexpr QSize kDesktop(1600, 900);

/// No two neighbours alike, no row like the one above; only colours that depth 16 has, too.
QImage pattern()
{
    constexpr std::array<QRgb, 8> kColours{0xff000000, 0xffff0000, 0xff00ff00, 0xff0000ff,
                                           0xffffff00, 0xffff00ff, 0xff00ffff, 0xffffffff};
    QImage image(kDesktop, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x)
            line[x] = kColours[static_cast<std::size_t>((x + 3 * y + x / 97 + y / 61) % 8)];
    }
    return image;
}

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

std::vector<GrabbedScreen> grab(X11Grabber& grabber, const std::vector<ScreenInfo>& screens,
                                GrabOptions options)
{
    std::vector<GrabbedScreen> grabbed;
    int calls = 0;
    grabber.grabScreens(screens, options, [&](auto result) {
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

private Q_SLOTS:
    void initTestCase()
    {
        m_client.emplace();
        m_client->setArrowPointer();
        m_client->paintDesktop(m_pattern);
    }
    void cleanupTestCase() { m_client.reset(); }

    void everyMonitorShowsWhatWasPaintedThere()
    {
        const test::Monitors monitors;
        m_client->movePointer(test::Monitors::kRight.center());
        X11Grabber grabber;
        const auto grabbed = grab(grabber, X11Displays().screens(), {});
        QCOMPARE(grabbed.size(), std::size_t(2));
        QCOMPARE(grabbed[0].screen.id, QStringLiteral("LEFT"));
        QCOMPARE(grabbed[0].image.format(), QImage::Format_RGB32);
        QCOMPARE(grabbed[0].image, m_pattern.copy(test::Monitors::kLeft));
        QVERIFY(grabbed[0].dimmed.isNull());
        QCOMPARE(grabbed[1].screen.id, QStringLiteral("RIGHT"));
        QCOMPARE(grabbed[1].image, m_pattern.copy(test::Monitors::kRight));
    }

    void pointerIsNeverInThePicture()
    {
        const QPoint place(400, 300);
        m_client->movePointer(place);
        X11Grabber grabber;
        const QRect around(place - QPoint(32, 32), QSize(64, 64));
        const auto image = grabber.grabRegion(around);
        QVERIFY(image.ok());
        QCOMPARE(image.value(), m_pattern.copy(around));
        QCOMPARE(X11Displays().pointer(), std::optional(place));
    }

    void dimmedCopyIsTheDimmedPicture()
    {
        X11Grabber grabber;
        const auto all = screen(QStringLiteral("all"), QRect({}, kDesktop));
        const auto grabbed = grab(grabber, {all}, {.dimmedCopy = true});
        QCOMPARE(grabbed.size(), std::size_t(1));
        QCOMPARE(grabbed[0].image, m_pattern);
        QCOMPARE(grabbed[0].dimmed.format(), QImage::Format_RGB32);
        QCOMPARE(grabbed[0].dimmed, Dimming::dimmedCopy(m_pattern));
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
        X11Grabber grabber;
        const auto image = grabber.grabRegion(region);
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
        X11Grabber grabber;
        const auto image = grabber.grabRegion(region);
        QVERIFY(!image.ok());
        QVERIFY(!image.error().message.isEmpty());
    }

    void screensThatAreGoneAreLeftOut()
    {
        X11Grabber grabber;
        const auto gone = screen(QStringLiteral("gone"), QRect(1600, 0, 800, 600));
        const auto there = screen(QStringLiteral("there"), QRect(800, 300, 800, 600));
        const auto grabbed = grab(grabber, {gone, there}, {});
        QCOMPARE(grabbed.size(), std::size_t(1));
        QCOMPARE(grabbed[0].screen, there);
        QVERIFY(grab(grabber, {gone}, {}).empty());
        QVERIFY(grab(grabber, {}, {}).empty());
    }

    void picturesKeepTheirPixelsUntilTheLastCopyGoes()
    {
        const QRect region(0, 0, 300, 200);
        X11Grabber grabber;
        auto first = grabber.grabRegion(region);
        QVERIFY(first.ok());
        QImage copy = first.value();
        first = Error{};
        m_client->paintDesktop(m_pattern.mirrored());
        const auto second = grabber.grabRegion(region);
        QCOMPARE(copy, m_pattern.copy(region));
        QCOMPARE(second.value(), m_pattern.mirrored().copy(region));
        m_client->paintDesktop(m_pattern);
    }

    void memoryIsReusedByThePictureAfter()
    {
        X11Grabber grabber;
        const auto all = screen(QStringLiteral("all"), QRect({}, kDesktop));
        const auto* const dimmed =
            grab(grabber, {all}, {.dimmedCopy = true}).front().dimmed.constBits();
        const std::size_t kept = grabber.keptBytes();
        QVERIFY(kept > 0);
        const auto again = grab(grabber, {all}, {.dimmedCopy = true});
        QCOMPARE(again.front().dimmed.constBits(), dimmed);
        QCOMPARE(grabber.keptBytes() < kept, true);
    }

    void memoryIsReallyFreedSoonAfter()
    {
        X11Grabber grabber;
        grabber.warmUp({screen(QStringLiteral("all"), QRect({}, kDesktop))});
        QVERIFY(grabber.keptBytes() > 0);
        QTRY_COMPARE_WITH_TIMEOUT(grabber.keptBytes(), std::size_t(0), 5000);
        QVERIFY(!holdsSharedMemory());
    }

    void picturesMayOutliveTheGrabberAndGoOnAnyThread()
    {
        std::optional<X11Grabber> grabber(std::in_place);
        auto image = grabber->grabRegion(QRect(0, 0, 300, 200));
        auto other = grabber->grabRegion(QRect(0, 0, 300, 200));
        QVERIFY(image.ok() && other.ok());
        std::thread([gone = std::exchange(other, Error{})] { QVERIFY(gone.ok()); }).join();
        grabber.reset();
        QCOMPARE(image.value(), m_pattern.copy(0, 0, 300, 200));
        std::thread([gone = std::exchange(image, Error{})] { QVERIFY(gone.ok()); }).join();
        QVERIFY(!holdsSharedMemory());
    }

private:
    const QImage m_pattern = pattern();
    std::optional<test::Client> m_client;
};

BRINDLECAM_TEST(TestGrabber);

} // namespace brindlecam

#include "tst_grabber.moc"
