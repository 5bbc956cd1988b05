#include "platform/RegionFrames.h"
#include "support/TestCase.h"

namespace brindlecam {

/// What is asked of frames, without a system.
class TestRegionOptions final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void framesAreAsSmallAsAskedAndNeverLarger_data()
    {
        QTest::addColumn<QSize>("asked");
        QTest::addColumn<QSize>("frame");
        const QSize region(300, 200);
        QTest::newRow("nothing asked") << QSize() << region;
        QTest::newRow("nothing wide") << QSize(0, 20) << region;
        QTest::newRow("the same") << region << region;
        QTest::newRow("smaller") << QSize(150, 100) << QSize(150, 100);
        QTest::newRow("one pixel") << QSize(1, 1) << QSize(1, 1);
        QTest::newRow("larger") << QSize(600, 400) << region;
        QTest::newRow("wider, lower") << QSize(600, 50) << QSize(300, 50);
    }
    void framesAreAsSmallAsAskedAndNeverLarger()
    {
        QFETCH(QSize, asked);
        QTEST(RegionOptions{.size = asked}.frameSize({300, 200}), "frame");
    }
};

BRINDLECAM_TEST(TestRegionOptions);

} // namespace brindlecam

#include "tst_regionoptions.moc"
