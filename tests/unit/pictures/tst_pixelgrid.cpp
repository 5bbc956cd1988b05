#include "pictures/PixelGrid.h"
#include "support/TestCase.h"

#include <QPainter>

#include <cmath>

namespace brindlecam {

namespace {

QImage oneRedPixel()
{
    QImage picture(1, 1, QImage::Format_RGB32);
    picture.fill(Qt::red);
    return picture;
}

QPoint redPixelOf(const QImage& picture)
{
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixelColor(x, y) == QColor(Qt::red))
                return {x, y};
        }
    }
    return {-1, -1};
}

void addScalesOfParts()
{
    QTest::addColumn<qreal>("scale");
    for (const qreal scale : {1.0, 1.1, 1.25, 4.0 / 3, 1.5, 1.75, 2.0})
        QTest::addRow("%.2f", scale) << scale;
}

} // namespace

class TestPixelGrid final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aPlaceHasTheSamePixelsInEveryPart_data() { addScalesOfParts(); }
    void aPlaceHasTheSamePixelsInEveryPart()
    {
        QFETCH(const qreal, scale);
        const QRectF place(123.4, 56.7, 8.9, 1.2);
        QImage whole(64, 64, QImage::Format_RGB32);
        QPainter unmoved(&whole);
        unmoved.scale(scale, scale);
        const QRectF expected = PixelGrid(unmoved).toPixels().mapRect(place);
        for (const QPoint corner : {QPoint(64, 128), QPoint(1856, 1024), QPoint(333, 7)}) {
            QImage part(64, 64, QImage::Format_RGB32);
            part.fill(Qt::blue);
            QPainter painter(&part);
            painter.setClipRect(part.rect());
            painter.translate(-corner);
            painter.scale(scale, scale);
            {
                const PixelGrid grid(painter);
                QVERIFY(grid.toPixels().mapRect(place) == expected); // not only nearly
                QCOMPARE(grid.shown({0, 0, 4000, 4000}), part.rect().translated(corner));
                // The last row counts as much as any other.
                grid.draw(oneRedPixel(), corner + QPoint(63, 63));
            }
            painter.end();
            QCOMPARE(redPixelOf(part), QPoint(63, 63));
        }
    }

    void aScreensPixelsAreThoseOfItsPicture_data() { addScalesOfParts(); }
    void aScreensPixelsAreThoseOfItsPicture()
    {
        QFETCH(const qreal, scale);
        QImage screen(100, 100, QImage::Format_RGB32);
        screen.fill(Qt::blue);
        screen.setDevicePixelRatio(scale);
        QPainter painter(&screen);
        painter.setClipRect(QRectF(0, 0, 40 / scale, 40 / scale));
        painter.scale(1 / scale, 1 / scale);
        painter.scale(scale, scale);
        {
            const PixelGrid grid(painter);
            // A device knows its scale in 65536ths only.
            QVERIFY(std::abs(grid.toPixels().m11() - scale) < 1e-4);
            QCOMPARE(grid.shown({30, 30, 50, 50}), QRect(30, 30, 10, 10));
            grid.draw(oneRedPixel(), {39, 39});
        }
        painter.end();
        QCOMPARE(redPixelOf(screen), QPoint(39, 39));
    }

    void thePainterCountsAsBeforeAfterwards()
    {
        QImage picture(10, 10, QImage::Format_RGB32);
        QPainter painter(&picture);
        painter.translate(3, 4);
        painter.scale(1.5, 1.5);
        const QTransform before = painter.transform();
        {
            const PixelGrid grid(painter);
            QVERIFY(painter.transform() != before);
            QCOMPARE(grid.shown({2, 2, 5, 5}), QRect(2, 2, 5, 5)); // nothing clips
        }
        QCOMPARE(painter.transform(), before);
    }
};

BRINDLECAM_TEST(TestPixelGrid);

} // namespace brindlecam

#include "tst_pixelgrid.moc"
