#include "look/DevicePixels.h"
#include "support/TestCase.h"

#include <QPainter>
#include <QWidget>

namespace brindlecam {

namespace {

void fillNearest(QPainter& painter, const QRectF& points)
{
    const DevicePixels pixels(painter);
    painter.fillRect(pixels.nearest(points), Qt::white);
}

/// The columns that are white in the middle row; -1 for one that is neither black nor white.
std::pair<int, int> whiteColumns(const QImage& image)
{
    std::pair<int, int> columns(image.width(), -1);
    for (int x = 0; x < image.width(); ++x) {
        const QRgb pixel = image.pixel(x, image.height() / 2);
        if (pixel == qRgb(255, 255, 255))
            columns = {std::min(columns.first, x), x};
        else if (pixel != qRgb(0, 0, 0))
            return {-1, -1};
    }
    return columns;
}

} // namespace

class TestDevicePixels final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void edgesAreWholeWhereverThePainterBegins_data()
    {
        QTest::addColumn<qreal>("origin");
        QTest::addColumn<int>("first");
        QTest::addColumn<int>("last");
        QTest::newRow("on a pixel") << 4.0 << 12 << 17;
        QTest::newRow("in the middle of one") << 5.0 << 14 << 19; // 13.5 … 19.5
        QTest::newRow("a third of one further") << 5.0 + 2.0 / 9 << 14 << 19;
    }
    void edgesAreWholeWhereverThePainterBegins()
    {
        QFETCH(qreal, origin);
        QFETCH(int, first);
        QFETCH(int, last);
        QImage image(30, 30, QImage::Format_RGB32);
        image.setDevicePixelRatio(1.5);
        image.fill(Qt::black);
        QPainter painter(&image);
        painter.translate(origin, 0);
        fillNearest(painter, {4, 0, 4, 20});
        painter.end();
        QCOMPARE(whiteColumns(image), std::pair(first, last));
    }

    void aCornerIsWhereItsPixelBegins()
    {
        QImage image(30, 30, QImage::Format_RGB32);
        image.setDevicePixelRatio(1.5);
        QPainter painter(&image);
        painter.translate(5, 4);
        const DevicePixels pixels(painter);
        // The painter begins at pixel 7.5, we at 8.
        QCOMPARE(pixels.corner({0, 3}), QPointF(0.5 / 1.5, 2));
        QCOMPARE(pixels.nearest(QRectF(pixels.corner({2, 3}), QSizeF(2, 2))), QRect(2, 3, 3, 3));
    }

    void thePainterIsAsBeforeAfterwards()
    {
        QImage image(30, 30, QImage::Format_RGB32);
        image.setDevicePixelRatio(1.5);
        QPainter painter(&image);
        painter.translate(5, 4);
        const QTransform before = painter.transform();
        fillNearest(painter, {0, 0, 1, 1});
        QCOMPARE(painter.transform(), before);
    }
};

BRINDLECAM_TEST(TestDevicePixels);

} // namespace brindlecam

#include "tst_devicepixels.moc"
