#include "canvas/AnnotationPainting.h"

#include "DrawnMark.h"
#include "canvas/Annotation.h"
#include "preferences/Config.h"
#include "support/TestCase.h"

#include <QPainter>

#include <cmath>
#include <memory>

namespace brindlecam {

namespace {

bool isNear(QRgb a, QRgb b)
{
    return std::abs(qRed(a) - qRed(b)) <= 1 && std::abs(qGreen(a) - qGreen(b)) <= 1 &&
           std::abs(qBlue(a) - qBlue(b)) <= 1;
}

} // namespace

class TestAnnotationPainting final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aPenStrokeIsAsWideAsItsSize()
    {
        const QImage picture =
            test::drawnMark(test::markBetween(Tool::pen, {10, 20}, {30, 20}, Qt::red, 6), {40, 40});
        for (int y = 0; y < 40; ++y)
            QCOMPARE(picture.pixel(20, y), y >= 17 && y < 23 ? qRgb(255, 0, 0) : test::kPaper);
        // The round cap reaches half a width beyond the end.
        QCOMPARE(test::inkedRect(picture), QRect(7, 17, 26, 6));
        QVERIFY(qRed(picture.pixel(7, 17)) < 160);
    }

    void aStrokeWithoutMovementIsARoundDot_data()
    {
        QTest::addColumn<Tool>("tool");
        QTest::addColumn<bool>("repeated");
        QTest::newRow("pen") << Tool::pen << false;
        QTest::newRow("marker") << Tool::marker << false;
        QTest::newRow("pen held still") << Tool::pen << true;
        QTest::newRow("line") << Tool::line << false;
        QTest::newRow("rect") << Tool::rect << false;
    }
    void aStrokeWithoutMovementIsARoundDot()
    {
        QFETCH(Tool, tool);
        QFETCH(bool, repeated);
        Annotation mark(tool, Qt::red, {20, 20});
        mark.setLineWidth(10);
        mark.setOpacity(1);
        if (repeated)
            mark.append({20, 20});
        const QImage picture = test::drawnMark(mark, {40, 40});
        QCOMPARE(test::inkedRect(picture), QRect(15, 15, 10, 10));
        QCOMPARE(picture.pixel(20, 20), qRgb(255, 0, 0));
        QCOMPARE(picture.pixel(15, 15), test::kPaper);
    }

    void aPenStrokeRunsThroughEveryPointUnsmoothed()
    {
        Annotation mark(Tool::pen, Qt::red, {5, 5});
        mark.setLineWidth(2);
        mark.append({5, 35});
        mark.append({35, 35});
        mark.append({35, 5});
        const QImage picture = test::drawnMark(mark, {40, 40});
        for (int i = 6; i < 34; ++i) {
            QCOMPARE(picture.pixel(5, i), qRgb(255, 0, 0));
            QCOMPARE(picture.pixel(i, 35), qRgb(255, 0, 0));
            QCOMPARE(picture.pixel(34, i), qRgb(255, 0, 0));
        }
        // A corner is round but not cut.
        QCOMPARE(picture.pixel(5, 34), qRgb(255, 0, 0));
        QCOMPARE(picture.pixel(20, 20), test::kPaper);
    }

    void aMarkerLetsTheScreenThroughByItsOpacity()
    {
        Annotation mark =
            test::markBetween(Tool::marker, {10, 20}, {30, 20}, QColor(255, 0, 0), 10);
        QVERIFY(isNear(test::drawnMark(mark, {40, 40}).pixel(20, 20), qRgb(179, 77, 77)));
        mark.setOpacity(0.1);
        QVERIFY(isNear(test::drawnMark(mark, {40, 40}).pixel(20, 20), qRgb(141, 115, 115)));
        mark.setOpacity(1);
        QCOMPARE(test::drawnMark(mark, {40, 40}).pixel(20, 20), qRgb(255, 0, 0));
    }

    void aMarkerThatCrossesItselfIsNoDarkerThere()
    {
        Annotation mark = test::markBetween(Tool::marker, {5, 20}, {35, 20}, Qt::blue, 6);
        mark.append({35, 35});
        mark.append({20, 35});
        mark.append({20, 5});
        const QImage picture = test::drawnMark(mark, {40, 40});
        QCOMPARE(picture.pixel(20, 20), picture.pixel(10, 20));
    }

    void opacityIsTheMarkersAlone()
    {
        Annotation mark = test::markBetween(Tool::line, {10, 20}, {30, 20});
        mark.setOpacity(0.1);
        QCOMPARE(test::drawnMark(mark, {40, 40}).pixel(20, 20), qRgb(255, 0, 0));
    }

    void aLineJoinsItsEnds()
    {
        const QImage picture =
            test::drawnMark(test::markBetween(Tool::line, {5, 5}, {35, 35}), {40, 40});
        for (int i = 5; i < 35; ++i)
            QCOMPARE(picture.pixel(i, i), qRgb(255, 0, 0));
        QCOMPARE(picture.pixel(30, 10), test::kPaper);
    }

    void aRectangleIsAnOutlineOnly()
    {
        const QImage picture =
            test::drawnMark(test::markBetween(Tool::rect, {30, 10}, {10, 34}), {40, 40});
        QCOMPARE(test::inkedRect(picture), QRect(8, 8, 24, 28));
        for (int y = 12; y < 32; ++y) {
            QCOMPARE(picture.pixel(8, y), qRgb(255, 0, 0));
            QCOMPARE(picture.pixel(11, y), qRgb(255, 0, 0));
            QCOMPARE(picture.pixel(12, y), test::kPaper);
            QCOMPARE(picture.pixel(31, y), qRgb(255, 0, 0));
        }
        // Round corners.
        QVERIFY(picture.pixel(8, 8) != qRgb(255, 0, 0));
    }

    void anArrowOfOnePointDrawsNothing()
    {
        QVERIFY(!AnnotationPainting::arrowHead({10, 10}, {11, 10}, 3));
        QVERIFY(AnnotationPainting::arrowHead({10, 10}, {11.01, 10}, 3));
        QVERIFY(test::inkedRect(
                    test::drawnMark(test::markBetween(Tool::arrow, {10, 10}, {11, 10}), {40, 40}))
                    .isEmpty());
        QVERIFY(
            test::inkedRect(test::drawnMark(Annotation(Tool::arrow, Qt::red, {10, 10}), {40, 40}))
                .isEmpty());
    }

    void theHeadGrowsWithTheArrowBetweenItsLimits_data()
    {
        QTest::addColumn<qreal>("length");
        QTest::addColumn<qreal>("width");
        QTest::addColumn<qreal>("head");
        QTest::newRow("shorter than its head") << 2.0 << 3.0 << 8.0;
        QTest::newRow("smallest head") << 10.0 << 3.0 << 8.0;
        QTest::newRow("half of the arrow") << 30.0 << 3.0 << 15.0;
        QTest::newRow("just the largest") << 42.0 << 3.0 << 21.0;
        QTest::newRow("no larger") << 100.0 << 3.0 << 21.0;
        QTest::newRow("thick") << 500.0 << 20.0 << 89.0;
    }
    void theHeadGrowsWithTheArrowBetweenItsLimits()
    {
        QFETCH(qreal, length);
        QFETCH(qreal, width);
        QFETCH(qreal, head);
        // Towards the lower right, 3 across and 4 down.
        const QPointF start(50, 60);
        const QPointF along(0.6, 0.8);
        const QPointF across(-0.8, 0.6);
        const QPointF end = start + along * length;
        const auto arrow = AnnotationPainting::arrowHead(start, end, width);
        QVERIFY(arrow);
        const auto isAt = [](QPointF a, QPointF b) { return (a - b).manhattanLength() < 1e-9; };
        QVERIFY(isAt(arrow->tip, end));
        QVERIFY(isAt(arrow->base, end - along * head));
        QVERIFY(isAt(arrow->left, arrow->base + across * (0.42 * head)));
        QVERIFY(isAt(arrow->right, arrow->base - across * (0.42 * head)));
    }

    void anArrowIsAShaftAndAFilledHead()
    {
        // The head is 20 points long and 16.8 wide; the shaft 4.
        const QImage picture =
            test::drawnMark(test::markBetween(Tool::arrow, {10, 20}, {50, 20}), {60, 40});
        for (int x = 10; x < 30; ++x) {
            for (int y = 0; y < 40; ++y) {
                if (x < 28)
                    QCOMPARE(picture.pixel(x, y),
                             y >= 18 && y < 22 ? qRgb(255, 0, 0) : test::kPaper);
            }
        }
        QCOMPARE(picture.pixel(31, 13), qRgb(255, 0, 0));
        QCOMPARE(picture.pixel(31, 26), qRgb(255, 0, 0));
        QCOMPARE(picture.pixel(45, 13), test::kPaper);
        QCOMPARE(picture.pixel(46, 20), qRgb(255, 0, 0));
        // Nothing shows past the tip or beside the head.
        QCOMPARE(test::inkedRect(picture).right(), 49);
        QCOMPARE(test::inkedRect(picture).top(), 11);
        QCOMPARE(test::inkedRect(picture).bottom(), 28);
    }

    void aBadgeIsAFilledCircleWithALightOutline()
    {
        const QImage picture =
            test::drawnMark(test::badgeMark({20, 20}, 26, 1, Qt::blue), {40, 40});
        QCOMPARE(picture.pixel(10, 20), qRgb(0, 0, 255));
        QCOMPARE(picture.pixel(20, 10), qRgb(0, 0, 255));
        QCOMPARE(picture.pixel(8, 8), test::kPaper);
        QCOMPARE(test::inkedRect(picture), QRect(6, 6, 28, 28));
        // The outline lies half inside the circle: white at 0.9 over blue.
        const QImage large =
            test::drawnMark(test::badgeMark({20, 20}, 26, 1, Qt::blue), {40, 40}, 8);
        QVERIFY(isNear(large.pixel(7 * 8 + 2, 20 * 8), qRgb(230, 230, 255)));
        QVERIFY(isNear(large.pixel(7 * 8 - 4, 20 * 8), qRgb(242, 242, 242)));
        QCOMPARE(large.pixel(7 * 8 - 8, 20 * 8), test::kPaper);
        QCOMPARE(large.pixel(8 * 8, 20 * 8), qRgb(0, 0, 255));
    }

    void theLabelIsBlackOnBrightBadgesOnly_data()
    {
        QTest::addColumn<QColor>("color");
        QTest::addColumn<bool>("black");
        QTest::newRow("red") << Config::palette[0] << false;
        QTest::newRow("green") << Config::palette[1] << false;
        QTest::newRow("yellow") << Config::palette[2] << true;
        QTest::newRow("blue") << Config::palette[3] << false;
        QTest::newRow("black") << Config::palette[4] << false;
        QTest::newRow("white") << Config::palette[5] << true;
        QTest::newRow("just dark") << QColor(165, 165, 165) << false;
        QTest::newRow("just bright") << QColor(166, 166, 166) << true;
        QTest::newRow("bright, not in RGB") << QColor::fromHsvF(1.0F / 6, 1, 1) << true;
    }
    void theLabelIsBlackOnBrightBadgesOnly()
    {
        QFETCH(QColor, color);
        QFETCH(bool, black);
        const QImage label = test::drawnMark(test::badgeMark({20, 20}, 26, 8, color), {40, 40}, 4)
                                 .copy(12 * 4, 12 * 4, 16 * 4, 16 * 4);
        QCOMPARE(test::hasPixel(label, qRgb(0, 0, 0)), black);
        QCOMPARE(test::hasPixel(label, qRgb(255, 255, 255)), !black || color == QColor(Qt::white));
    }

    void theLabelStandsInTheMiddleOfTheBadge()
    {
        // 0 is symmetric; its height is that of every digit.
        const QImage picture =
            test::drawnMark(test::badgeMark({40, 40}, 48, 0, Qt::yellow), {80, 80}, 4);
        QRect ink;
        for (int y = 100; y < 220; ++y) {
            for (int x = 100; x < 220; ++x) {
                if (picture.pixel(x, y) == qRgb(0, 0, 0))
                    ink |= QRect(x, y, 1, 1);
            }
        }
        QVERIFY(!ink.isEmpty());
        QVERIFY(std::abs(ink.center().x() - 160) <= 4);
        QVERIFY(std::abs(ink.center().y() - 160) <= 12);
        QVERIFY(ink.height() > 48 * 0.58 * 4 * 0.6);
        QVERIFY(ink.height() < 48 * 0.58 * 4);
    }

    void aPixelatedMarkShowsItsCells()
    {
        QImage frozen(60, 60, QImage::Format_RGB32);
        for (int y = 0; y < 60; ++y) {
            for (int x = 0; x < 60; ++x)
                frozen.setPixel(x, y, qRgb(x * 4, y * 4, 90));
        }
        Annotation mark = test::markBetween(Tool::pixelate, {30, 10}, {10, 40});
        QVERIFY(test::inkedRect(test::drawnMark(mark, {60, 60})).isEmpty());
        mark.setPixelated(Pixelation::of(frozen, {10, 10, 20, 30}, 9));
        const QImage picture = test::drawnMark(mark, {60, 60});
        QCOMPARE(test::inkedRect(picture), QRect(10, 10, 20, 30));
        const QImage& cells = mark.pixelated()->cells();
        QCOMPARE(cells.size(), QSize(3, 4));
        QCOMPARE(picture.pixel(10, 39), cells.pixel(0, 3));
        QCOMPARE(picture.pixel(18, 31), cells.pixel(0, 3));
        QCOMPARE(picture.pixel(19, 30), cells.pixel(1, 2));
        QCOMPARE(picture.pixel(29, 10), cells.pixel(2, 0));
    }

    void aLongStrokeLooksTheSamePieceByPiece()
    {
        Annotation stroke(Tool::marker, Qt::blue, {100, 60});
        stroke.setLineWidth(9);
        for (int i = 0; i < 400; ++i)
            stroke.append({60 + 40 * std::cos(i / 7.0), 60 + 50 * std::sin(i / 11.0)});
        QImage pieces(120, 120, QImage::Format_RGB32);
        pieces.fill(test::kPaper);
        for (int y = 0; y < 120; y += 24) {
            for (int x = 0; x < 120; x += 24) {
                QPainter painter(&pieces);
                painter.setClipRect(x, y, 24, 24);
                stroke.draw(painter);
            }
        }
        QCOMPARE(pieces, test::drawnMark(stroke, {120, 120}));
    }

    void drawingKeepsThePaintersState()
    {
        QImage picture(40, 40, QImage::Format_RGB32);
        picture.fill(test::kPaper);
        const QImage frozen = picture;
        QPainter painter(&picture);
        painter.scale(2, 2);
        const QTransform before = painter.transform();
        Annotation hidden = test::markBetween(Tool::pixelate, {5, 5}, {15, 12});
        hidden.setPixelated(Pixelation::of(frozen, QRect(5, 5, 10, 7), 9));
        std::vector<Annotation> marks{hidden, test::textMark({2, 2}, QStringLiteral("a")),
                                      test::badgeMark({10, 10}, 16, 1, Qt::red)};
        for (const Tool tool : {Tool::pen, Tool::marker, Tool::line, Tool::arrow, Tool::rect})
            marks.push_back(test::markBetween(tool, {5, 5}, {15, 12}));
        for (const Annotation& mark : marks) {
            mark.draw(painter);
            QCOMPARE(painter.transform(), before);
            QVERIFY(!painter.hasClipping());
            QVERIFY(!painter.testRenderHint(QPainter::Antialiasing));
        }
    }
};

BRINDLECAM_TEST(TestAnnotationPainting);

} // namespace brindlecam

#include "tst_annotationpainting.moc"
