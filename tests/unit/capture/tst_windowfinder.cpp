#include "capture/WindowFinder.h"
#include "support/TestCase.h"

namespace brindlecam {

namespace {

constexpr std::int64_t kOwnPid = 42;

const std::vector<ScreenInfo> kScreens{
    {QStringLiteral("LEFT"), QRect(0, 0, 1920, 1080), 1.5, QRect(0, 0, 1920, 1080)},
    {QStringLiteral("RIGHT"), QRect(1920, 0, 1280, 720), 1, QRect(1920, 0, 1280, 720)},
};

} // namespace

class TestWindowFinder final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void offersOnlyOrdinaryWindowsOfOthers_data()
    {
        QTest::addColumn<QRect>("frame");
        QTest::addColumn<int>("layer");
        QTest::addColumn<qint64>("pid");
        QTest::addColumn<double>("opacity");
        QTest::addColumn<bool>("offered");
        const QRect fits(2000, 100, 300, 200);
        QTest::newRow("ordinary") << fits << 0 << qint64(7) << 1.0 << true;
        QTest::newRow("our own") << fits << 0 << qint64(kOwnPid) << 1.0 << false;
        QTest::newRow("dock") << fits << 1 << qint64(7) << 1.0 << false;
        QTest::newRow("barely visible") << fits << 0 << qint64(7) << 0.06 << true;
        QTest::newRow("nearly transparent") << fits << 0 << qint64(7) << 0.05 << false;
        QTest::newRow("60 × 40 points at scale 1")
            << QRect(2000, 100, 60, 40) << 0 << qint64(7) << 1.0 << true;
        QTest::newRow("too narrow") << QRect(2000, 100, 59, 40) << 0 << qint64(7) << 1.0 << false;
        QTest::newRow("too low") << QRect(2000, 100, 60, 39) << 0 << qint64(7) << 1.0 << false;
        QTest::newRow("60 × 40 pixels are too few at scale 1.5")
            << QRect(100, 100, 60, 40) << 0 << qint64(7) << 1.0 << false;
        QTest::newRow("90 × 60 pixels are enough there")
            << QRect(100, 100, 90, 60) << 0 << qint64(7) << 1.0 << true;
        QTest::newRow("off every screen")
            << QRect(2000, 800, 300, 200) << 0 << qint64(7) << 1.0 << false;
    }
    void offersOnlyOrdinaryWindowsOfOthers()
    {
        QFETCH(QRect, frame);
        QFETCH(int, layer);
        QFETCH(qint64, pid);
        QFETCH(double, opacity);
        QFETCH(bool, offered);
        const WindowEntry window{frame, layer, pid, opacity};
        const auto rects = WindowFinder::frontToBackRects({window}, kScreens, kOwnPid);
        QCOMPARE(rects.size(), offered ? 1U : 0U);
    }

    void windowsThatTellNothingButTheirLayerAreOffered()
    {
        const WindowEntry window{QRect(0, 0, 500, 500), 0, std::nullopt, std::nullopt};
        QCOMPARE(WindowFinder::frontToBackRects({window}, kScreens, kOwnPid).size(), 1U);
        const WindowEntry unknown{QRect(0, 0, 500, 500), std::nullopt, 7, 1.0};
        QVERIFY(WindowFinder::frontToBackRects({unknown}, kScreens, kOwnPid).empty());
    }

    void withoutScreensNothingIsOffered()
    {
        const WindowEntry window{QRect(0, 0, 500, 500), 0, 7, 1.0};
        QVERIFY(WindowFinder::frontToBackRects({window}, {}, kOwnPid).empty());
    }

    void framesAreClippedToEachScreenInTheirOrder()
    {
        const std::vector<QRect> frames{QRect(1770, 0, 300, 150), QRect(0, 0, 150, 150),
                                        QRect(2000, 100, 100, 100)};
        QCOMPARE(WindowFinder::onScreen(frames, kScreens[0]),
                 (std::vector{QRectF(1180, 0, 100, 100), QRectF(0, 0, 100, 100)}));
        QCOMPARE(WindowFinder::onScreen(frames, kScreens[1]),
                 (std::vector{QRectF(0, 0, 150, 150), QRectF(80, 100, 100, 100)}));
    }
};

BRINDLECAM_TEST(TestWindowFinder);

} // namespace brindlecam

#include "tst_windowfinder.moc"
