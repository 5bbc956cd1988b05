#include "DrawnMark.h"
#include "base/Geometry.h"
#include "support/TestCase.h"

#include <QRegion>

#include <cmath>
#include <memory>

namespace brindlecam {

namespace {

Annotation paintedCurve()
{
    Annotation stroke(Tool::pen, Qt::red, {110, 60});
    stroke.setLineWidth(5);
    for (int i = 1; i < 60; ++i)
        stroke.append({60 + 50 * std::cos(i / 7.0), 60 + 50 * std::sin(i / 11.0)});
    return stroke;
}

} // namespace

/// What a mark says it touches is what it touches.
class TestPaintedBounds final : public test::TestCase {
    Q_OBJECT

private:
    static void addPaintedRows()
    {
        QTest::addColumn<std::shared_ptr<Annotation>>("mark");
        const auto row = [](const char* name, const Annotation& mark) {
            QTest::newRow(name) << std::make_shared<Annotation>(mark);
        };
        row("pen", test::markBetween(Tool::pen, {40.3, 40.7}, {70.2, 52.1}, Qt::red, 7));
        row("dot", Annotation(Tool::pen, Qt::red, {40.5, 40.5}));
        row("line", test::markBetween(Tool::line, {40.3, 40.7}, {70.2, 52.1}, Qt::red, 1));
        row("rect", test::markBetween(Tool::rect, {40.3, 40.7}, {70.2, 52.1}, Qt::red, 9));
        row("marker", test::markBetween(Tool::marker, {60.3, 60.7}, {70.2, 62.1}, Qt::red, 40));
        row("arrow", test::markBetween(Tool::arrow, {40.3, 40.7}, {90.2, 52.1}, Qt::red, 3));
        row("thick arrow", test::markBetween(Tool::arrow, {40, 60}, {100, 60}, Qt::red, 9));
        row("long line", test::markBetween(Tool::line, {5, 120}, {125, 10}, Qt::red, 5));
        row("long arrow", test::markBetween(Tool::arrow, {5, 10}, {125, 120}, Qt::red, 5));
        row("large rect", test::markBetween(Tool::rect, {10.4, 9.6}, {120.2, 118.1}, Qt::red, 6));
        row("curve", paintedCurve());
        row("thin long arrow", test::markBetween(Tool::arrow, {40, 60}, {100, 60}, Qt::red, 1));
        row("short arrow", test::markBetween(Tool::arrow, {60, 60}, {62, 60}, Qt::red, 20));
        row("badge", test::badgeMark({60.3, 60.7}, 26, 12, Qt::red));
        row("badge of four digits", test::badgeMark({60.3, 60.7}, 26, 8888, Qt::red));
        row("text", test::textMark({40.3, 40.7}, QStringLiteral("Ájfj")));
        row("text of tall letters", test::textMark({40.3, 40.7}, QStringLiteral("Ẫ̂̂ꙮ😀")));
    }

private Q_SLOTS:
    void paintingStaysInsideThePaintedBounds_data() { addPaintedRows(); }
    void paintingStaysInsideThePaintedBounds()
    {
        QFETCH(std::shared_ptr<Annotation>, mark);
        for (const qreal scale : {1.0, 1.25, 1.5, 2.0}) {
            const QRectF ink = test::inkedRect(test::drawnMark(*mark, {130, 130}, scale));
            QVERIFY(!ink.isEmpty());
            const QRectF painted = mark->paintedBounds();
            const QRectF allowed(painted.topLeft() * scale, painted.size() * scale);
            QVERIFY(QRectF(roundedOutward(allowed)).contains(ink));
            QVERIFY(painted.contains(mark->bounds()));
        }
    }

    void paintingStaysInsideThePaintedParts_data() { addPaintedRows(); }
    void paintingStaysInsideThePaintedParts()
    {
        QFETCH(std::shared_ptr<Annotation>, mark);
        for (const qreal scale : {1.0, 1.25, 1.5, 2.0}) {
            QRegion allowed;
            for (const QRectF& part : mark->paintedParts())
                allowed += roundedOutward(QRectF(part.topLeft() * scale, part.size() * scale));
            const QImage picture = test::drawnMark(*mark, {130, 130}, scale);
            for (int y = 0; y < picture.height(); ++y) {
                for (int x = 0; x < picture.width(); ++x)
                    QVERIFY(picture.pixel(x, y) == test::kPaper || allowed.contains(QPoint(x, y)));
            }
        }
    }

    void paintedPartsLeaveOutWhatALongLinePassesBy_data()
    {
        QTest::addColumn<Tool>("tool");
        QTest::newRow("line") << Tool::line;
        QTest::newRow("arrow") << Tool::arrow;
        QTest::newRow("rect") << Tool::rect;
        QTest::newRow("pen") << Tool::pen;
    }
    void paintedPartsLeaveOutWhatALongLinePassesBy()
    {
        QFETCH(const Tool, tool);
        const Annotation mark = test::markBetween(tool, {50, 900}, {1000, 100}, Qt::red, 3);
        qreal area = 0;
        for (const QRectF& part : mark.paintedParts()) {
            QVERIFY(mark.paintedBounds().contains(part));
            area += part.width() * part.height();
        }
        QVERIFY(area < mark.paintedBounds().width() * mark.paintedBounds().height() / 8);
    }
};

BRINDLECAM_TEST(TestPaintedBounds);

} // namespace brindlecam

#include "tst_paintedbounds.moc"
