// Covers MarkOutline.
#include "PaintedScale.h"
#include "canvas/MarkOutline.h"
#include "canvas/Selection.h"
#include "canvas/SelectionFrame.h"
#include "preferences/Config.h"
#include "support/TestCase.h"

#include <QPainter>

#include <cmath>
#include <functional>
#include <set>
#include <utility>
#include <vector>

namespace brindlecam {

namespace {

constexpr QSize kFrameCanvas(200, 160); // points

QImage painted(qreal scale, const std::function<void(QPainter&)>& paint)
{
    return test::paintedCanvas(kFrameCanvas, scale, paint);
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

/// How many pixels each stretch of one colour lasts along a row, from one pixel to another.
std::vector<std::pair<QRgb, int>> stretches(const QImage& image, int row, int from, int to)
{
    std::vector<std::pair<QRgb, int>> found;
    for (int x = from; x <= to; ++x) {
        const QRgb pixel = image.pixel(x, row);
        if (found.empty() || found.back().first != pixel)
            found.emplace_back(pixel, 0);
        ++found.back().second;
    }
    return found;
}

Selection selected(QPointF from, QPointF to)
{
    Selection selection(kFrameCanvas);
    (void)selection.press(from, Selection::Drawn::nothing);
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

    void theBorderIsDashedFiveOnAndFourOffFromTheCorner_data()
    {
        QTest::addColumn<qreal>("scale");
        QTest::addColumn<int>("green");
        QTest::addColumn<int>("white");
        QTest::newRow("1.00") << 1.0 << 5 << 4;
        QTest::newRow("1.25") << 1.25 << 6 << 5;
        QTest::newRow("1.50") << 1.5 << 8 << 6;
        QTest::newRow("2.00") << 2.0 << 10 << 8;
    }
    void theBorderIsDashedFiveOnAndFourOffFromTheCorner()
    {
        QFETCH(const qreal, scale);
        QFETCH(const int, green);
        QFETCH(const int, white);
        const QRect pixels(30, 25, 150, 90);
        const QRectF rect(QPointF(pixels.topLeft()) / scale, QSizeF(pixels.size()) / scale);
        QVERIFY(QRectF({}, QSizeF(kFrameCanvas)).contains(rect));
        const QImage image =
            painted(scale, [&](QPainter& painter) { SelectionFrame::paintBorder(painter, rect); });
        const int width = qRound(scale);
        const int row = pixels.top() - width;
        // The line runs through the middle of the border, so it begins half of that further in.
        const int from = pixels.left() - width + width / 2;
        const auto along = stretches(image, row, from, pixels.right() + width);
        QVERIFY(along.size() > 8);
        for (std::size_t i = 0; i + 1 < along.size(); ++i) {
            const bool on = i % 2 == 0;
            QCOMPARE(along[i].first, on ? Config::leafGreen.rgb() : qRgb(255, 255, 255));
            QCOMPARE(along[i].second, on ? green : white);
        }
        // As wide everywhere.
        QCOMPARE(image.pixel(pixels.center().x(), row - 1), qRgb(0, 0, 0));
        QCOMPARE(image.pixel(pixels.center().x(), pixels.top()), qRgb(0, 0, 0));
    }

    void handlesAreSquaresOfSevenPointsAndTheirLine_data()
    {
        QTest::addColumn<qreal>("scale");
        QTest::addColumn<int>("side");
        QTest::addColumn<int>("line");
        QTest::newRow("1.00") << 1.0 << 8 << 1;
        QTest::newRow("1.25") << 1.25 << 10 << 1;
        QTest::newRow("1.50") << 1.5 << 12 << 2;
        QTest::newRow("2.00") << 2.0 << 16 << 2;
    }
    void handlesAreSquaresOfSevenPointsAndTheirLine()
    {
        QFETCH(const qreal, scale);
        QFETCH(const int, side);
        QFETCH(const int, line);
        const QRectF rect(32, 24, 80, 64); // its handles lie on whole pixels at every scale
        const QImage image =
            painted(scale, [&](QPainter& painter) { SelectionFrame::paintHandles(painter, rect); });
        QImage expected = image.copy();
        expected.fill(Qt::black);
        {
            QPainter painter(&expected);
            painter.scale(1 / scale, 1 / scale);
            for (const qreal x : {32, 72, 112}) {
                for (const qreal y : {24, 56, 88}) {
                    if (x == 72 && y == 56)
                        continue; // no handle in the middle
                    const QPoint centre = (QPointF(x, y) * scale).toPoint();
                    const QRect outer(centre - QPoint(side / 2, side / 2), QSize(side, side));
                    painter.fillRect(outer, Config::leafGreen);
                    painter.fillRect(outer.adjusted(line, line, -line, -line), Qt::white);
                }
            }
        }
        QCOMPARE(image, expected);
    }

    void aSelectedMarkIsOutlinedFourPointsAround_data() { test::addCanvasScales(); }
    void aSelectedMarkIsOutlinedFourPointsAround()
    {
        QFETCH(const qreal, scale);
        const QRectF bounds(20.5, 24, 120, 70.25);
        const QRectF everything({}, kFrameCanvas);
        const QImage image = painted(
            scale, [&](QPainter& painter) { MarkOutline(bounds).paint(painter, everything); });
        const QImage expected = painted(scale, [](QPainter& painter) {
            QPen dashes(Config::leafGreen, 1.5, Qt::CustomDashLine, Qt::FlatCap);
            dashes.setDashPattern({4 / 1.5, 3 / 1.5});
            for (const QPen& pen : {QPen(Qt::white, 1.5), dashes}) {
                painter.setPen(pen);
                painter.drawRoundedRect(QRectF(16.5, 20, 128, 78.25), 4, 4);
            }
        });
        QCOMPARE(image, expected);
    }

    void theLineAroundAMarkIsTheSamePartByPart_data() { test::addCanvasScales(); }
    void theLineAroundAMarkIsTheSamePartByPart()
    {
        QFETCH(const qreal, scale);
        constexpr int kPart = 40; // points, a whole number of pixels at every scale
        const MarkOutline outline({20.5, 24, 120, 70.25});
        const QRectF everything({}, kFrameCanvas);
        const QImage whole =
            painted(scale, [&](QPainter& painter) { outline.paint(painter, everything); });
        const QImage inParts = painted(scale, [&](QPainter& painter) {
            for (int y = 0; y < kFrameCanvas.height(); y += kPart) {
                for (int x = 0; x < kFrameCanvas.width(); x += kPart) {
                    const QRectF part(x, y, kPart, kPart);
                    painter.setClipRect(part);
                    outline.paint(painter, part);
                }
            }
        });
        QCOMPARE(inParts, whole);
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
