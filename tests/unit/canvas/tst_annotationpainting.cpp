#include "canvas/AnnotationPainting.h"

#include "app/Config.h"
#include "canvas/Annotation.h"
#include "support/TestCase.h"

#include <QPainter>
#include <QThread>

#include <cmath>
#include <memory>

namespace brindlecam {

namespace {

constexpr QRgb kTestPaper = 0xff808080;

Annotation paintedBetween(Tool tool, QPointF start, QPointF end, const QColor& color = Qt::red,
                          qreal width = 4)
{
    Annotation mark(tool, color, start);
    mark.setLineWidth(width);
    if (tool == Tool::pen || tool == Tool::marker)
        mark.append(end);
    else
        mark.setEnd(end);
    return mark;
}

Annotation paintedBadge(QPointF centre, qreal diameter, int number, const QColor& color)
{
    Annotation badge(Tool::number, color, centre);
    badge.setLineWidth(diameter);
    badge.setNumber(number);
    return badge;
}

Annotation paintedText(QPointF topLeft, const QString& words, const QColor& color = Qt::red)
{
    Annotation mark(Tool::text, color, topLeft);
    mark.setText(words, Annotation::textLineHeight() + 2);
    return mark;
}

/// A mark drawn over grey, at so many pixels per point.
QImage paintedOn(const Annotation& mark, QSize points, qreal scale = 1)
{
    QImage picture((QSizeF(points) * scale).toSize(), QImage::Format_RGB32);
    picture.fill(kTestPaper);
    QPainter painter(&picture);
    painter.scale(scale, scale);
    mark.draw(painter);
    return picture;
}

/// The smallest rectangle around every pixel that is not paper.
QRect inkedRect(const QImage& picture)
{
    QRect ink;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixel(x, y) != kTestPaper)
                ink |= QRect(x, y, 1, 1);
        }
    }
    return ink;
}

bool hasPixel(const QImage& picture, QRgb color)
{
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixel(x, y) == color)
                return true;
        }
    }
    return false;
}

bool isNear(QRgb a, QRgb b)
{
    return std::abs(qRed(a) - qRed(b)) <= 1 && std::abs(qGreen(a) - qGreen(b)) <= 1 &&
           std::abs(qBlue(a) - qBlue(b)) <= 1;
}

Annotation paintedCurve()
{
    Annotation stroke(Tool::pen, Qt::red, {110, 60});
    stroke.setLineWidth(5);
    for (int i = 1; i < 60; ++i)
        stroke.append({60 + 50 * std::cos(i / 7.0), 60 + 50 * std::sin(i / 11.0)});
    return stroke;
}

} // namespace

class TestAnnotationPainting final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aPenStrokeIsAsWideAsItsSize()
    {
        const QImage picture =
            paintedOn(paintedBetween(Tool::pen, {10, 20}, {30, 20}, Qt::red, 6), {40, 40});
        for (int y = 0; y < 40; ++y)
            QCOMPARE(picture.pixel(20, y), y >= 17 && y < 23 ? qRgb(255, 0, 0) : kTestPaper);
        // The round cap reaches half a width beyond the end.
        QCOMPARE(inkedRect(picture), QRect(7, 17, 26, 6));
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
        const QImage picture = paintedOn(mark, {40, 40});
        QCOMPARE(inkedRect(picture), QRect(15, 15, 10, 10));
        QCOMPARE(picture.pixel(20, 20), qRgb(255, 0, 0));
        QCOMPARE(picture.pixel(15, 15), kTestPaper);
    }

    void aPenStrokeRunsThroughEveryPointUnsmoothed()
    {
        Annotation mark(Tool::pen, Qt::red, {5, 5});
        mark.setLineWidth(2);
        mark.append({5, 35});
        mark.append({35, 35});
        mark.append({35, 5});
        const QImage picture = paintedOn(mark, {40, 40});
        for (int i = 6; i < 34; ++i) {
            QCOMPARE(picture.pixel(5, i), qRgb(255, 0, 0));
            QCOMPARE(picture.pixel(i, 35), qRgb(255, 0, 0));
            QCOMPARE(picture.pixel(34, i), qRgb(255, 0, 0));
        }
        // A corner is round but not cut.
        QCOMPARE(picture.pixel(5, 34), qRgb(255, 0, 0));
        QCOMPARE(picture.pixel(20, 20), kTestPaper);
    }

    void aMarkerLetsTheScreenThroughByItsOpacity()
    {
        Annotation mark = paintedBetween(Tool::marker, {10, 20}, {30, 20}, QColor(255, 0, 0), 10);
        QVERIFY(isNear(paintedOn(mark, {40, 40}).pixel(20, 20), qRgb(179, 77, 77)));
        mark.setOpacity(0.1);
        QVERIFY(isNear(paintedOn(mark, {40, 40}).pixel(20, 20), qRgb(141, 115, 115)));
        mark.setOpacity(1);
        QCOMPARE(paintedOn(mark, {40, 40}).pixel(20, 20), qRgb(255, 0, 0));
    }

    void aMarkerThatCrossesItselfIsNoDarkerThere()
    {
        Annotation mark = paintedBetween(Tool::marker, {5, 20}, {35, 20}, Qt::blue, 6);
        mark.append({35, 35});
        mark.append({20, 35});
        mark.append({20, 5});
        const QImage picture = paintedOn(mark, {40, 40});
        QCOMPARE(picture.pixel(20, 20), picture.pixel(10, 20));
    }

    void opacityIsTheMarkersAlone()
    {
        Annotation mark = paintedBetween(Tool::line, {10, 20}, {30, 20});
        mark.setOpacity(0.1);
        QCOMPARE(paintedOn(mark, {40, 40}).pixel(20, 20), qRgb(255, 0, 0));
    }

    void aLineJoinsItsEnds()
    {
        const QImage picture = paintedOn(paintedBetween(Tool::line, {5, 5}, {35, 35}), {40, 40});
        for (int i = 5; i < 35; ++i)
            QCOMPARE(picture.pixel(i, i), qRgb(255, 0, 0));
        QCOMPARE(picture.pixel(30, 10), kTestPaper);
    }

    void aRectangleIsAnOutlineOnly()
    {
        const QImage picture = paintedOn(paintedBetween(Tool::rect, {30, 10}, {10, 34}), {40, 40});
        QCOMPARE(inkedRect(picture), QRect(8, 8, 24, 28));
        for (int y = 12; y < 32; ++y) {
            QCOMPARE(picture.pixel(8, y), qRgb(255, 0, 0));
            QCOMPARE(picture.pixel(11, y), qRgb(255, 0, 0));
            QCOMPARE(picture.pixel(12, y), kTestPaper);
            QCOMPARE(picture.pixel(31, y), qRgb(255, 0, 0));
        }
        // Round corners.
        QVERIFY(picture.pixel(8, 8) != qRgb(255, 0, 0));
    }

    void anArrowOfOnePointDrawsNothing()
    {
        QVERIFY(!AnnotationPainting::arrowHead({10, 10}, {11, 10}, 3));
        QVERIFY(AnnotationPainting::arrowHead({10, 10}, {11.01, 10}, 3));
        QVERIFY(inkedRect(paintedOn(paintedBetween(Tool::arrow, {10, 10}, {11, 10}), {40, 40}))
                    .isEmpty());
        QVERIFY(
            inkedRect(paintedOn(Annotation(Tool::arrow, Qt::red, {10, 10}), {40, 40})).isEmpty());
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
        const QImage picture = paintedOn(paintedBetween(Tool::arrow, {10, 20}, {50, 20}), {60, 40});
        for (int x = 10; x < 30; ++x) {
            for (int y = 0; y < 40; ++y) {
                if (x < 28)
                    QCOMPARE(picture.pixel(x, y), y >= 18 && y < 22 ? qRgb(255, 0, 0) : kTestPaper);
            }
        }
        QCOMPARE(picture.pixel(31, 13), qRgb(255, 0, 0));
        QCOMPARE(picture.pixel(31, 26), qRgb(255, 0, 0));
        QCOMPARE(picture.pixel(45, 13), kTestPaper);
        QCOMPARE(picture.pixel(46, 20), qRgb(255, 0, 0));
        // Nothing shows past the tip or beside the head.
        QCOMPARE(inkedRect(picture).right(), 49);
        QCOMPARE(inkedRect(picture).top(), 11);
        QCOMPARE(inkedRect(picture).bottom(), 28);
    }

    void aBadgeIsAFilledCircleWithALightOutline()
    {
        const QImage picture = paintedOn(paintedBadge({20, 20}, 26, 1, Qt::blue), {40, 40});
        QCOMPARE(picture.pixel(10, 20), qRgb(0, 0, 255));
        QCOMPARE(picture.pixel(20, 10), qRgb(0, 0, 255));
        QCOMPARE(picture.pixel(8, 8), kTestPaper);
        QCOMPARE(inkedRect(picture), QRect(6, 6, 28, 28));
        // The outline lies half inside the circle: white at 0.9 over blue.
        const QImage large = paintedOn(paintedBadge({20, 20}, 26, 1, Qt::blue), {40, 40}, 8);
        QVERIFY(isNear(large.pixel(7 * 8 + 2, 20 * 8), qRgb(230, 230, 255)));
        QVERIFY(isNear(large.pixel(7 * 8 - 4, 20 * 8), qRgb(242, 242, 242)));
        QCOMPARE(large.pixel(7 * 8 - 8, 20 * 8), kTestPaper);
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
        const QImage label = paintedOn(paintedBadge({20, 20}, 26, 8, color), {40, 40}, 4)
                                 .copy(12 * 4, 12 * 4, 16 * 4, 16 * 4);
        QCOMPARE(hasPixel(label, qRgb(0, 0, 0)), black);
        QCOMPARE(hasPixel(label, qRgb(255, 255, 255)), !black || color == QColor(Qt::white));
    }

    void theLabelStandsInTheMiddleOfTheBadge()
    {
        // 0 is symmetric; its height is that of every digit.
        const QImage picture = paintedOn(paintedBadge({40, 40}, 48, 0, Qt::yellow), {80, 80}, 4);
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

    void textLandsInItsBox_data()
    {
        QTest::addColumn<QString>("words");
        QTest::newRow("plain") << QStringLiteral("Hola gjpq ÁÑ");
        QTest::newRow("right to left") << QStringLiteral("مرحبا");
        QTest::newRow("combining marks") << QStringLiteral("a\u0301e\u0308");
        QTest::newRow("emoji") << QStringLiteral("a😀👍🏽");
    }
    void textLandsInItsBox()
    {
        QFETCH(QString, words);
        const Annotation mark = paintedText({20, 30}, words);
        const QRect ink = inkedRect(paintedOn(mark, {300, 80}));
        QVERIFY(!ink.isEmpty());
        const QRectF box = mark.bounds();
        QVERIFY(QRectF(ink).intersected(box.adjusted(-1, 0, 1, 0)) == QRectF(ink));
        // Left-aligned, whatever its direction, two points from the edge.
        QVERIFY(ink.left() >= 21 && ink.left() <= 26);
        QVERIFY(ink.width() > box.width() / 2);
    }

    void textHasItsColourAndNoBackground()
    {
        const Annotation mark = paintedText({20, 30}, QStringLiteral("▉"), Qt::green);
        const QImage picture = paintedOn(mark, {80, 80}, 4);
        QVERIFY(hasPixel(picture, qRgb(0, 255, 0)));
        QCOMPARE(picture.pixel(20 * 4 + 2, 31 * 4), kTestPaper);
    }

    void emojiKeepTheirOwnColours()
    {
        const QImage picture =
            paintedOn(paintedText({5, 5}, QStringLiteral("😀"), Qt::black), {40, 40}, 2);
        int bright = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                const QRgb pixel = picture.pixel(x, y);
                bright += qRed(pixel) > 200 && qBlue(pixel) < 120 ? 1 : 0;
            }
        }
        QVERIFY(bright > 100);
    }

    void textIsCutAt4000Points()
    {
        const QString words(3000, QLatin1Char('W'));
        const Annotation mark = paintedText({0, 0}, words);
        QVERIFY(mark.bounds().width() > 5000);
        const QRectF painted = mark.paintedBounds();
        QVERIFY(painted.right() < 4020);
        const QRect ink = inkedRect(paintedOn(mark, {4400, 30}));
        QVERIFY(ink.right() > 3980);
        QVERIFY(ink.right() < painted.right());
    }

    void aPixelatedMarkShowsItsCells()
    {
        QImage frozen(60, 60, QImage::Format_RGB32);
        for (int y = 0; y < 60; ++y) {
            for (int x = 0; x < 60; ++x)
                frozen.setPixel(x, y, qRgb(x * 4, y * 4, 90));
        }
        Annotation mark = paintedBetween(Tool::pixelate, {30, 10}, {10, 40});
        QVERIFY(inkedRect(paintedOn(mark, {60, 60})).isEmpty());
        mark.setPixelated(Pixelation::of(frozen, {10, 10, 20, 30}, 9));
        const QImage picture = paintedOn(mark, {60, 60});
        QCOMPARE(inkedRect(picture), QRect(10, 10, 20, 30));
        const QImage& cells = mark.pixelated()->cells();
        QCOMPARE(cells.size(), QSize(3, 4));
        QCOMPARE(picture.pixel(10, 39), cells.pixel(0, 3));
        QCOMPARE(picture.pixel(18, 31), cells.pixel(0, 3));
        QCOMPARE(picture.pixel(19, 30), cells.pixel(1, 2));
        QCOMPARE(picture.pixel(29, 10), cells.pixel(2, 0));
    }

    void paintingStaysInsideThePaintedBounds_data() { addPaintedRows(); }
    void paintingStaysInsideThePaintedBounds()
    {
        QFETCH(std::shared_ptr<Annotation>, mark);
        for (const qreal scale : {1.0, 1.25, 1.5, 2.0}) {
            const QRectF ink = inkedRect(paintedOn(*mark, {130, 130}, scale));
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
            const QImage picture = paintedOn(*mark, {130, 130}, scale);
            for (int y = 0; y < picture.height(); ++y) {
                for (int x = 0; x < picture.width(); ++x)
                    QVERIFY(picture.pixel(x, y) == kTestPaper || allowed.contains(QPoint(x, y)));
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
        const Annotation mark = paintedBetween(tool, {50, 900}, {1000, 100}, Qt::red, 3);
        qreal area = 0;
        for (const QRectF& part : mark.paintedParts()) {
            QVERIFY(mark.paintedBounds().contains(part));
            area += part.width() * part.height();
        }
        QVERIFY(area < mark.paintedBounds().width() * mark.paintedBounds().height() / 8);
    }

private:
    static void addPaintedRows()
    {
        QTest::addColumn<std::shared_ptr<Annotation>>("mark");
        const auto row = [](const char* name, const Annotation& mark) {
            QTest::newRow(name) << std::make_shared<Annotation>(mark);
        };
        row("pen", paintedBetween(Tool::pen, {40.3, 40.7}, {70.2, 52.1}, Qt::red, 7));
        row("dot", Annotation(Tool::pen, Qt::red, {40.5, 40.5}));
        row("line", paintedBetween(Tool::line, {40.3, 40.7}, {70.2, 52.1}, Qt::red, 1));
        row("rect", paintedBetween(Tool::rect, {40.3, 40.7}, {70.2, 52.1}, Qt::red, 9));
        row("marker", paintedBetween(Tool::marker, {60.3, 60.7}, {70.2, 62.1}, Qt::red, 40));
        row("arrow", paintedBetween(Tool::arrow, {40.3, 40.7}, {90.2, 52.1}, Qt::red, 3));
        row("thick arrow", paintedBetween(Tool::arrow, {40, 60}, {100, 60}, Qt::red, 9));
        row("long line", paintedBetween(Tool::line, {5, 120}, {125, 10}, Qt::red, 5));
        row("long arrow", paintedBetween(Tool::arrow, {5, 10}, {125, 120}, Qt::red, 5));
        row("large rect", paintedBetween(Tool::rect, {10.4, 9.6}, {120.2, 118.1}, Qt::red, 6));
        row("curve", paintedCurve());
        row("thin long arrow", paintedBetween(Tool::arrow, {40, 60}, {100, 60}, Qt::red, 1));
        row("short arrow", paintedBetween(Tool::arrow, {60, 60}, {62, 60}, Qt::red, 20));
        row("badge", paintedBadge({60.3, 60.7}, 26, 12, Qt::red));
        row("badge of four digits", paintedBadge({60.3, 60.7}, 26, 8888, Qt::red));
        row("text", paintedText({40.3, 40.7}, QStringLiteral("Ájfj")));
        row("text of tall letters", paintedText({40.3, 40.7}, QStringLiteral("Ẫ̂̂ꙮ😀")));
    }

private Q_SLOTS:
    void aLongStrokeLooksTheSamePieceByPiece()
    {
        Annotation stroke(Tool::marker, Qt::blue, {100, 60});
        stroke.setLineWidth(9);
        for (int i = 0; i < 400; ++i)
            stroke.append({60 + 40 * std::cos(i / 7.0), 60 + 50 * std::sin(i / 11.0)});
        QImage pieces(120, 120, QImage::Format_RGB32);
        pieces.fill(kTestPaper);
        for (int y = 0; y < 120; y += 24) {
            for (int x = 0; x < 120; x += 24) {
                QPainter painter(&pieces);
                painter.setClipRect(x, y, 24, 24);
                stroke.draw(painter);
            }
        }
        QCOMPARE(pieces, paintedOn(stroke, {120, 120}));
    }

    void drawingKeepsThePaintersState()
    {
        QImage picture(40, 40, QImage::Format_RGB32);
        picture.fill(kTestPaper);
        QPainter painter(&picture);
        painter.scale(2, 2);
        const QTransform before = painter.transform();
        for (const Tool tool : kAllTools) {
            Annotation(tool, Qt::red, {5, 5}).draw(painter);
            QCOMPARE(painter.transform(), before);
            QVERIFY(!painter.hasClipping());
            QVERIFY(!painter.testRenderHint(QPainter::Antialiasing));
        }
    }

    void anotherThreadDrawsTheSame()
    {
        const auto text =
            std::make_shared<const Annotation>(paintedText({10, 10}, QStringLiteral("Hola 12")));
        const auto badge =
            std::make_shared<const Annotation>(paintedBadge({40, 60}, 26, 7, Qt::blue));
        QImage there;
        QImage thereBadge;
        const std::unique_ptr<QThread> thread(QThread::create([&] {
            there = paintedOn(*text, {120, 40});
            thereBadge = paintedOn(*badge, {80, 80});
        }));
        thread->start();
        QVERIFY(thread->wait());
        QCOMPARE(there, paintedOn(*text, {120, 40}));
        QCOMPARE(thereBadge, paintedOn(*badge, {80, 80}));
    }
};

BRINDLECAM_TEST(TestAnnotationPainting);

} // namespace brindlecam

#include "tst_annotationpainting.moc"
