// Covers ConnectionPixels, PatientConnection, RegionReader, RootAccess.
#include "desktop/support/x11/Connection.h"
#include "desktop/support/x11/X11Input.h"
#include "platform/x11/grab/RootReader.h"
#include "platform/x11/grab/ServerPixels.h"
#include "platform/x11/grab/X11Grabber.h"
#include "support/TestCase.h"
#include "x11/ports/Client.h"
#include "x11/ports/Frames.h"
#include "x11/ports/Monitors.h"
#include "x11/ports/Pattern.h"

#include <QDir>
#include <QFile>
#include <QPainter>

#include <xcb/xfixes.h>

#include <optional>

namespace brindlecam {

using test::kDesktop;
using test::nextImage;
using test::openFrames;

namespace {

constexpr QRect kRegion(200, 150, 320, 240);
constexpr RegionOptions kWithPointer{.pointer = RegionOptions::Pointer::shown};

/// A picture of one region with the pointer in it, as another client finds both.
QImage withPointer(const QImage& desktop, const QRect& region)
{
    const desktop::Connection connection(test::display());
    auto* const raw = connection.raw();
    const desktop::Owned<xcb_xfixes_query_version_reply_t> version(
        xcb_xfixes_query_version_reply(raw, xcb_xfixes_query_version(raw, 1, 0), nullptr));
    const desktop::Owned<xcb_xfixes_get_cursor_image_reply_t> cursor(
        xcb_xfixes_get_cursor_image_reply(raw, xcb_xfixes_get_cursor_image(raw), nullptr));
    if (!version || !cursor)
        qFatal("no pointer");
    const auto* const pixels = xcb_xfixes_get_cursor_image_cursor_image(cursor.get());
    const QImage image(reinterpret_cast<const uchar*>(pixels), cursor->width, cursor->height,
                       QImage::Format_ARGB32_Premultiplied);
    QImage expected = desktop;
    QPainter(&expected).drawImage(cursor->x - cursor->xhot, cursor->y - cursor->yhot, image);
    return expected.copy(region);
}

/// What a stream may leave behind: descriptors, and memory shared with the server.
struct Holdings {
    qsizetype files = 0;
    qsizetype sharedMappings = 0;

    [[nodiscard]] static Holdings now()
    {
        QFile maps(QStringLiteral("/proc/self/maps"));
        if (!maps.open(QIODevice::ReadOnly))
            qFatal("no list of mappings");
        return {QDir(QStringLiteral("/proc/self/fd"))
                    .entryList(QDir::NoDotAndDotDot | QDir::System)
                    .size(),
                maps.readAll().count("brindlecam-pixels")};
    }
    bool operator==(const Holdings&) const = default;
};

} // namespace

/// One region, looked at again and again. Every frame is read on another thread, while the main one
/// does nothing but wait for it.
class TestRegionFrames final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_client.emplace();
        m_client->setArrowPointer();
        m_client->paintDesktop(m_pattern);
        // A window manager may still show what an earlier test gave it to say.
        const RootReader reader(std::make_shared<ServerPixels>());
        QTRY_VERIFY(reader.read(QRect({}, kDesktop)).value() == m_pattern);
    }
    void cleanupTestCase() { m_client.reset(); }

    void framesAreWhatWasPainted_data()
    {
        QTest::addColumn<QRect>("region");
        QTest::newRow("a part") << kRegion;
        QTest::newRow("one pixel") << QRect(17, 23, 1, 1);
        QTest::newRow("odd sizes") << QRect(3, 5, 101, 77);
        QTest::newRow("last pixel of the desktop") << QRect(1599, 899, 1, 1);
        QTest::newRow("more than the ring holds") << QRect({}, kDesktop);
    }
    void framesAreWhatWasPainted()
    {
        QFETCH(QRect, region);
        const auto frames = openFrames(region);
        QVERIFY(frames);
        for (int time = 0; time < 3; ++time) {
            const QImage image = nextImage(*frames);
            QCOMPARE(image.format(), QImage::Format_RGB32);
            QCOMPARE(image, m_pattern.copy(region));
        }
    }

    void theNextFrameFollowsAChange()
    {
        const auto frames = openFrames(kRegion);
        QVERIFY(frames);
        const auto before = test::awaitNext(*frames);
        QVERIFY(before && before.value());
        const auto changed = std::chrono::steady_clock::now();
        m_client->paintDesktop(m_pattern.mirrored());
        const auto after = test::awaitNext(*frames);
        m_client->paintDesktop(m_pattern);
        QVERIFY(after && after.value());
        QCOMPARE(after.value()->image, m_pattern.mirrored().copy(kRegion));
        QVERIFY(before.value()->taken <= changed && changed <= after.value()->taken);
        // Who keeps a frame keeps its pixels.
        QCOMPARE(before.value()->image, m_pattern.copy(kRegion));
    }

    void framesGoAcrossMonitors()
    {
        const test::Monitors monitors;
        const QRect across(700, 20, 400, 300); // and over what no monitor shows
        const auto frames = openFrames(across);
        QVERIFY(frames);
        QCOMPARE(nextImage(*frames), m_pattern.copy(across));
    }

    void regionsThatAreNotOnTheDesktopAreRefused_data()
    {
        QTest::addColumn<QRect>("region");
        QTest::newRow("partly past the right edge") << QRect(1500, 10, 101, 10);
        QTest::newRow("partly past the lower edge") << QRect(10, 899, 10, 2);
        QTest::newRow("partly before the left edge") << QRect(-1, 10, 10, 10);
        QTest::newRow("far away") << QRect(50000, 50000, 10, 10);
        QTest::newRow("empty") << QRect();
        QTest::newRow("longer than sixteen bits") << QRect(0, 0, 70000, 1);
    }
    void regionsThatAreNotOnTheDesktopAreRefused()
    {
        QFETCH(QRect, region);
        QVERIFY(!opensThroughThePort(region));
    }

    void portAnswersWithinTheCall() { QVERIFY(opensThroughThePort(kRegion)); }

    void whatNoMonitorShowsIsRefused()
    {
        const test::Monitors monitors;
        QVERIFY(!opensThroughThePort(QRect(900, 0, 100, 100)));
    }

    void pointerIsShownOnlyToWhoWantsIt()
    {
        m_hands.moveTo(kRegion.center());
        const auto with = openFrames(kRegion, kWithPointer);
        const auto without = openFrames(kRegion);
        QVERIFY(with && without);
        const QImage expected = withPointer(m_pattern, kRegion);
        QVERIFY(expected != m_pattern.copy(kRegion));
        QCOMPARE(nextImage(*with), expected);
        QCOMPARE(nextImage(*without), m_pattern.copy(kRegion));
    }

    void pointerIsCutAtTheEdges_data()
    {
        QTest::addColumn<QPoint>("place");
        QTest::newRow("upper left") << kRegion.topLeft() - QPoint(3, 3);
        QTest::newRow("upper right") << kRegion.topRight() - QPoint(2, 5);
        QTest::newRow("lower left") << kRegion.bottomLeft() - QPoint(2, 5);
        QTest::newRow("lower right") << kRegion.bottomRight();
    }
    void pointerIsCutAtTheEdges()
    {
        QFETCH(QPoint, place);
        m_hands.moveTo(place);
        const auto frames = openFrames(kRegion, kWithPointer);
        QVERIFY(frames);
        const QImage expected = withPointer(m_pattern, kRegion);
        QVERIFY(expected != m_pattern.copy(kRegion));
        QCOMPARE(nextImage(*frames), expected);
    }

    void pointerComesAndGoes()
    {
        const auto frames = openFrames(kRegion, kWithPointer);
        QVERIFY(frames);
        for (int time = 0; time < 2; ++time) {
            m_hands.moveTo({10, 10});
            QCOMPARE(nextImage(*frames), m_pattern.copy(kRegion));
            m_hands.moveTo(kRegion.center() + QPoint(time, 0));
            QCOMPARE(nextImage(*frames), withPointer(m_pattern, kRegion));
        }
    }

    void framesAreScaledDownSmoothly()
    {
        // Stripes of one black and one white pixel are grey at half the width.
        QImage stripes(2, 1, QImage::Format_RGB32);
        stripes.setPixel(0, 0, qRgb(0, 0, 0));
        stripes.setPixel(1, 0, qRgb(255, 255, 255));
        m_client->paintDesktop(stripes);
        const auto frames = openFrames(kRegion, {.size = kRegion.size() / 2});
        QVERIFY(frames);
        const QImage image = nextImage(*frames);
        m_client->paintDesktop(m_pattern);
        QCOMPARE(image.size(), kRegion.size() / 2);
        QCOMPARE(image.format(), QImage::Format_RGB32);
        for (const QPoint place : {QPoint(0, 0), image.rect().center(), image.rect().bottomRight()})
            QVERIFY(qAbs(qGray(image.pixel(place)) - 127) <= 2);
    }

    void framesHaveTheSizeThatIsAsked_data()
    {
        QTest::addColumn<QRect>("region");
        QTest::addColumn<QSize>("asked");
        QTest::addColumn<QSize>("size");
        QTest::newRow("smaller") << kRegion << QSize(107, 80) << QSize(107, 80);
        QTest::newRow("one pixel") << kRegion << QSize(1, 1) << QSize(1, 1);
        QTest::newRow("one pixel of one") << QRect(5, 5, 1, 1) << QSize(1, 1) << QSize(1, 1);
        QTest::newRow("larger") << kRegion << kDesktop << kRegion.size();
    }
    void framesHaveTheSizeThatIsAsked()
    {
        QFETCH(QRect, region);
        QFETCH(QSize, asked);
        QFETCH(QSize, size);
        const auto frames = openFrames(region, {.size = asked});
        QVERIFY(frames);
        const QImage image = nextImage(*frames);
        QCOMPARE(image.size(), size);
        QCOMPARE(image, m_pattern.copy(region).scaled(size, Qt::IgnoreAspectRatio,
                                                      Qt::SmoothTransformation));
    }

    void pointerIsScaledWithItsFrame()
    {
        m_hands.moveTo(kRegion.center());
        const QSize size = kRegion.size() / 2;
        const auto frames =
            openFrames(kRegion, {.pointer = RegionOptions::Pointer::shown, .size = size});
        QVERIFY(frames);
        const auto scaled = [size](const QImage& image) {
            return image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        };
        const QImage image = nextImage(*frames);
        QCOMPARE(image, scaled(withPointer(m_pattern, kRegion)));
        QVERIFY(image != scaled(m_pattern.copy(kRegion)));
    }

    void nothingGrowsOverManyFrames()
    {
        constexpr int kMany = 500;
        const Holdings before = Holdings::now();
        auto frames = openFrames(
            kRegion, {.pointer = RegionOptions::Pointer::shown, .size = kRegion.size() / 2});
        QVERIFY(frames);
        QVERIFY(!nextImage(*frames).isNull());
        const Holdings first = Holdings::now();
        QVERIFY(first.files > before.files);
        const int got = std::async(std::launch::async, [&frames] {
                            int count = 0;
                            for (int time = 0; time < kMany; ++time) {
                                const test::NextFrame next = frames->next();
                                if (next && next.value())
                                    ++count;
                            }
                            return count;
                        }).get();
        QCOMPARE(got, kMany);
        QVERIFY(Holdings::now() == first);
        frames.reset();
        QVERIFY(Holdings::now() == before);
    }

private:
    /// Whether the port gives frames; fails the test unless it says so once, within the call.
    [[nodiscard]] static bool opensThroughThePort(const QRect& region)
    {
        X11Grabber grabber(std::make_shared<ServerPixels>());
        QObject context;
        int calls = 0;
        bool isOpen = false;
        grabber.openRegion(region, {}, &context, [&](const auto& opened) {
            ++calls;
            isOpen = opened && opened.value();
            if (!opened && opened.error().message.isEmpty())
                qWarning("an error says nothing");
        });
        if (calls != 1)
            qWarning("opened was called %d times", calls);
        return isOpen;
    }

    const QImage m_pattern = test::pattern();
    std::optional<test::Client> m_client;
    desktop::X11Input m_hands{test::display()};
};

BRINDLECAM_TEST(TestRegionFrames);

} // namespace brindlecam

#include "tst_region_frames.moc"
