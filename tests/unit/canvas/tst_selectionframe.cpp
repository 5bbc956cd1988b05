#include "app/Config.h"
#include "canvas/Selection.h"
#include "canvas/SelectionFrame.h"
#include "support/TestCase.h"

#include <QPainter>

#include <cmath>
#include <functional>
#include <set>

namespace brindlecam {

namespace {

constexpr QSize kFrameCanvas(200, 160); // points

QImage painted(qreal scale, const std::function<void(QPainter&)>& paint)
{
    QImage canvas((QSizeF(kFrameCanvas) * scale).toSize(), QImage::Format_RGB32);
    canvas.setDevicePixelRatio(scale);
    canvas.fill(Qt::black);
    QPainter painter(&canvas);
    painter.setRenderHint(QPainter::Antialiasing);
    paint(painter);
    return canvas;
}

std::set<QRgb> colors(const QImage& image)
{
    std::set<QRgb> found;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            found.insert(image.pixel(x, y));
    }
    return found;
}

Selection selected(QPointF from, QPointF to)
{
    Selection selection(kFrameCanvas);
    (void)selection.press(from, Selection::Marks::none);
    selection.dragTo(to);
    selection.release();
    return selection;
}

void addScales()
{
    QTest::addColumn<qreal>("scale");
    for (const qreal scale : {1.0, 1.25, 1.5, 1.75, 2.0, 3.0})
        QTest::addRow("%g", scale) << scale;
}

} // namespace

class TestSelectionFrame final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void everyLineLiesOnWholePixels_data() { addScales(); }
    void everyLineLiesOnWholePixels()
    {
        QFETCH(qreal, scale);
        const Selection selection = selected({31, 23}, {148, 118});
        const QImage image = painted(scale, [&](QPainter& painter) {
            SelectionFrame::paintBorder(painter, selection.rect());
            SelectionFrame::paintHandles(painter, selection.rect());
            SelectionFrame::paintHoveredWindow(painter, {5, 5, 187, 149});
        });
        const std::set<QRgb> pure{qRgb(0, 0, 0), qRgb(255, 255, 255), Config::leafGreen.rgb()};
        QCOMPARE(colors(image), pure);
    }

    void borderLeavesTheSelectionsOwnPixelsAlone_data() { addScales(); }
    void borderLeavesTheSelectionsOwnPixelsAlone()
    {
        QFETCH(qreal, scale);
        const QRectF rect(31, 23, 117, 95);
        const QImage image =
            painted(scale, [&](QPainter& painter) { SelectionFrame::paintBorder(painter, rect); });
        const int left = static_cast<int>(std::floor(31 * scale));
        const int right = static_cast<int>(std::ceil(148 * scale)) - 1;
        const int middle = static_cast<int>(70 * scale);
        QCOMPARE(image.pixel(left, middle), qRgb(0, 0, 0));
        QVERIFY(image.pixel(left - 1, middle) != qRgb(0, 0, 0));
        QCOMPARE(image.pixel(right, middle), qRgb(0, 0, 0));
        QVERIFY(image.pixel(right + 1, middle) != qRgb(0, 0, 0));
    }

    void hoveredWindowIsOutlinedInsideItsEdges()
    {
        const QImage image = painted(1.5, [](QPainter& painter) {
            SelectionFrame::paintHoveredWindow(painter, {10, 10, 100, 80});
        });
        constexpr int kRow = 60;
        QCOMPARE(image.pixel(14, kRow), qRgb(0, 0, 0));
        for (int x = 15; x < 18; ++x) // two points are three pixels
            QCOMPARE(image.pixel(x, kRow), Config::leafGreen.rgb());
        QCOMPARE(image.pixel(18, kRow), qRgb(0, 0, 0));
    }
};
BRINDLECAM_TEST(TestSelectionFrame);

} // namespace brindlecam

#include "tst_selectionframe.moc"
