#include "platform/x11/windows/PinShape.h"
#include "support/TestCase.h"

#include <algorithm>
#include <cmath>

namespace brindlecam {

namespace {

/// A window whose size nobody may ask for.
QSize unasked()
{
    qFatal("the window was asked for its size");
}

} // namespace

class TestPinShape final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void widgetPaintsWhatWasAskedForOnceItHasAboutThat_data()
    {
        QTest::addColumn<QSize>("asked");
        QTest::addColumn<QSizeF>("widget");
        QTest::addColumn<double>("ratio");
        QTest::addColumn<QSize>("shown");
        QTest::newRow("the same") << QSize(200, 100) << QSizeF(200, 100) << 1.0 << QSize(200, 100);
        QTest::newRow("rounded to points")
            << QSize(301, 151) << QSizeF(200, 100) << 1.5 << QSize(301, 151);
        QTest::newRow("behind") << QSize(240, 120) << QSizeF(200, 100) << 1.0 << QSize(200, 100);
        QTest::newRow("kept smaller")
            << QSize(480, 240) << QSizeF(150, 80) << 2.0 << QSize(300, 160);
        QTest::newRow("one side only")
            << QSize(200, 120) << QSizeF(200, 100) << 1.0 << QSize(200, 100);
    }
    void widgetPaintsWhatWasAskedForOnceItHasAboutThat()
    {
        QFETCH(QSize, asked);
        QFETCH(QSizeF, widget);
        QFETCH(double, ratio);
        x11::PinShape shape;
        shape.open(asked);
        QTEST(shape.shown(widget, ratio), "shown");
    }

    void windowIsCutToBothSizesBeforeItTakesTheNextOne()
    {
        x11::PinShape shape;
        shape.open({200, 100});
        QCOMPARE(shape.ask({240, 120}, {200, 100}), QSize(240, 120));
        QCOMPARE(shape.ask({160, 80}, {200, 100}), QSize(200, 100));
        QCOMPARE(shape.ask({160, 130}, {200, 100}), QSize(200, 130));
    }

    void wordOfAnOlderSizeCutsNothingOffAPinThatHasGrown()
    {
        x11::PinShape shape;
        shape.open({200, 100});
        (void)shape.ask({240, 120}, {200, 100});
        const auto grown = [] { return QSize(240, 120); };
        QCOMPARE(shape.cut({200, 100}, grown), QSize(240, 120));
        QCOMPARE(shape.cut({240, 120}, unasked), QSize(240, 120));
    }

    void pinThatAWindowManagerKeepsSmallerIsCutToWhatItHas()
    {
        x11::PinShape shape;
        shape.open({200, 100});
        QCOMPARE(shape.cut({150, 80}, unasked), QSize(150, 80));
    }

    void cornersAreCutEvenly_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<double>("radius");
        QTest::newRow("usual") << QSize(60, 40) << 6.0;
        QTest::newRow("dense") << QSize(61, 41) << 12.0;
        QTest::newRow("between") << QSize(61, 41) << 7.5;
        QTest::newRow("flat") << QSize(60, 9) << 6.0;
        QTest::newRow("one row") << QSize(60, 1) << 6.0;
        QTest::newRow("one pixel") << QSize(1, 1) << 6.0;
    }
    void cornersAreCutEvenly()
    {
        QFETCH(QSize, size);
        QFETCH(double, radius);
        const QRegion region = x11::PinShape::rounded(size, radius);
        QCOMPARE(region.boundingRect(), QRect(QPoint(), size));
        int pixels = 0;
        for (int y = 0; y < size.height(); ++y) {
            for (int x = 0; x < size.width(); ++x) {
                const bool in = region.contains(QPoint(x, y));
                pixels += in ? 1 : 0;
                QCOMPARE(region.contains(QPoint(size.width() - 1 - x, y)), in);
                QCOMPARE(region.contains(QPoint(x, size.height() - 1 - y)), in);
            }
        }
        const double r = std::min({radius, size.width() / 2.0, size.height() / 2.0});
        const double missing = (4 - 3.14159) * r * r;
        QVERIFY(std::abs(size.width() * size.height() - missing - pixels) <= 2 * r + 1);
    }

    void nothingIsCutOffNothing() { QVERIFY(x11::PinShape::rounded({}, 6).isEmpty()); }
};

BRINDLECAM_TEST(TestPinShape);

} // namespace brindlecam

#include "tst_pinshape.moc"
