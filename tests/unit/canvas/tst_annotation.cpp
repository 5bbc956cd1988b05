#include "canvas/Annotation.h"
#include "support/TestCase.h"

#include <QFontMetricsF>

#include <cmath>

namespace brindlecam {

namespace {

Annotation markBetween(Tool tool, QPointF start, QPointF end, qreal width = 3)
{
    Annotation mark(tool, Qt::red, start);
    mark.setLineWidth(width);
    mark.setEnd(end);
    return mark;
}

Annotation strokeThrough(Tool tool, const QPolygonF& points, qreal width = 3)
{
    Annotation mark(tool, Qt::red, points.first());
    mark.setLineWidth(width);
    for (qsizetype i = 1; i < points.size(); ++i)
        mark.append(points.at(i));
    return mark;
}

Annotation textAt(QPointF topLeft, const QString& text, qreal height = 24)
{
    Annotation mark(Tool::text, Qt::red, topLeft);
    mark.setText(text, height);
    return mark;
}

Annotation badgeAt(QPointF centre, qreal diameter)
{
    Annotation mark(Tool::number, Qt::red, centre);
    mark.setLineWidth(diameter);
    return mark;
}

} // namespace

class TestAnnotation final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aMarkBeginsWithAsManyPointsAsItsToolNeeds_data()
    {
        QTest::addColumn<Tool>("tool");
        QTest::addColumn<int>("points");
        QTest::newRow("pen") << Tool::pen << 1;
        QTest::newRow("line") << Tool::line << 2;
        QTest::newRow("arrow") << Tool::arrow << 2;
        QTest::newRow("rect") << Tool::rect << 2;
        QTest::newRow("marker") << Tool::marker << 1;
        QTest::newRow("text") << Tool::text << 1;
        QTest::newRow("number") << Tool::number << 1;
        QTest::newRow("pixelate") << Tool::pixelate << 2;
    }
    void aMarkBeginsWithAsManyPointsAsItsToolNeeds()
    {
        QFETCH(Tool, tool);
        QFETCH(int, points);
        const Annotation mark(tool, Qt::blue, {3, 4});
        QCOMPARE(mark.points(), QPolygonF(QList<QPointF>(points, {3, 4})));
        QCOMPARE(mark.tool(), tool);
        QCOMPARE(mark.color(), QColor(Qt::blue));
        QCOMPARE(mark.opacity(), 0.4);
        QCOMPARE(mark.lineWidth(), 3.0);
        QCOMPARE(mark.number(), 0);
        QVERIFY(mark.text().isEmpty());
        QCOMPARE(mark.textHeight(), 0.0);
        QVERIFY(!mark.pixelated());
    }

    void aMovedCopyLeavesItsOriginalWhereItWas()
    {
        const Annotation original = strokeThrough(Tool::pen, {{1, 2}, {30, 40}});
        Annotation copy = original;
        copy.translate({5, -6});
        QCOMPARE(original.points(), QPolygonF() << QPointF(1, 2) << QPointF(30, 40));
        QCOMPARE(copy.points(), QPolygonF() << QPointF(6, -4) << QPointF(35, 34));
        QVERIFY(original.hitTest({1, 2}));
        QVERIFY(!original.hitTest({35, 34 - 7}));
        QVERIFY(copy.hitTest({35, 34}));
    }

    void aBadgeFollowsTheMouse()
    {
        Annotation badge = badgeAt({10, 10}, 26);
        badge.moveTo({50, 60});
        QCOMPARE(badge.points(), QPolygonF({{50, 60}}));
        QCOMPARE(badge.bounds(), QRectF(37, 47, 26, 26));
    }

    void rectIsSpannedByFirstAndLastPoint()
    {
        QCOMPARE(markBetween(Tool::rect, {50, 10}, {20, 40}).rect(), QRectF(20, 10, 30, 30));
        QCOMPARE(strokeThrough(Tool::pen, {{5, 5}, {90, 90}, {7, 8}}).rect(), QRectF(5, 5, 2, 3));
    }

    void boundsCoverTheMark_data()
    {
        QTest::addColumn<QRectF>("bounds");
        QTest::addColumn<QRectF>("expected");
        QTest::newRow("pen") << strokeThrough(Tool::pen, {{20, 30}, {10, 50}, {40, 35}}, 4).bounds()
                             << QRectF(7, 27, 36, 26);
        QTest::newRow("marker") << strokeThrough(Tool::marker, {{20, 30}}, 16).bounds()
                                << QRectF(11, 21, 18, 18);
        QTest::newRow("line") << markBetween(Tool::line, {20, 30}, {10, 50}).bounds()
                              << QRectF(7.5, 27.5, 15, 25);
        QTest::newRow("rect") << markBetween(Tool::rect, {20, 30}, {10, 50}).bounds()
                              << QRectF(7.5, 27.5, 15, 25);
        QTest::newRow("thin arrow")
            << markBetween(Tool::arrow, {20, 30}, {60, 50}).bounds() << QRectF(9, 19, 62, 42);
        QTest::newRow("thick arrow")
            << markBetween(Tool::arrow, {20, 30}, {60, 50}, 5).bounds() << QRectF(4, 14, 72, 52);
        QTest::newRow("number") << badgeAt({20, 30}, 26).bounds() << QRectF(7, 17, 26, 26);
        QTest::newRow("pixelate") << markBetween(Tool::pixelate, {20, 30}, {10, 50}).bounds()
                                  << QRectF(10, 30, 10, 20);
    }
    void boundsCoverTheMark()
    {
        QFETCH(QRectF, bounds);
        QFETCH(QRectF, expected);
        QCOMPARE(bounds, expected);
    }

    void boundsOfATextHoldItsLine()
    {
        const QString words = QStringLiteral("Hola");
        const Annotation mark = textAt({20, 30}, words, 80);
        const QFontMetricsF metrics(Annotation::textFont());
        QCOMPARE(mark.bounds().topLeft(), QPointF(20, 30));
        QCOMPARE(mark.bounds().height(), 80.0);
        QVERIFY(std::abs(mark.bounds().width() - 4 - metrics.horizontalAdvance(words)) < 1);
        const Annotation low = textAt({20, 30}, words, 2);
        QVERIFY(low.bounds().height() >= Annotation::textLineHeight() - 1);
        Annotation moved = mark;
        moved.translate({3, 4});
        QCOMPARE(moved.bounds(), mark.bounds().translated(3, 4));
    }

    void textIsSemiboldAt18Points()
    {
        QCOMPARE(Annotation::textFont().pixelSize(), 18);
        QCOMPARE(Annotation::textFont().weight(), int(QFont::DemiBold));
        QCOMPARE(&Annotation::textFont(), &Annotation::textFont());
        QCOMPARE(Annotation::textLineHeight(), std::ceil(Annotation::textLineHeight()));
    }

    void shortMarksAreNegligible()
    {
        for (const Tool tool : {Tool::line, Tool::arrow, Tool::rect, Tool::pixelate}) {
            QVERIFY(Annotation(tool, Qt::red, {10, 10}).isNegligible());
            QVERIFY(markBetween(tool, {10, 10}, {12, 12}).isNegligible());
            QVERIFY(!markBetween(tool, {10, 10}, {13, 10}).isNegligible());
            QVERIFY(!markBetween(tool, {10, 10}, {10, 7}).isNegligible());
        }
    }

    void dotsAndBadgesAreNeverNegligible()
    {
        for (const Tool tool : {Tool::pen, Tool::marker, Tool::number})
            QVERIFY(!Annotation(tool, Qt::red, {10, 10}).isNegligible());
    }

    void emptyTextIsNegligible()
    {
        QVERIFY(textAt({10, 10}, {}).isNegligible());
        QVERIFY(!textAt({10, 10}, QStringLiteral("a")).isNegligible());
    }

    void aStripOfOnePointIsPixelatedOnlyWhereItHasTwoPixels()
    {
        const QSizeF canvas(100, 80);
        const Annotation strip = markBetween(Tool::pixelate, {40, 10}, {41, 60});
        for (const int scale : {1, 2}) {
            QImage frozen((canvas * scale).toSize(), QImage::Format_RGB32);
            frozen.fill(Qt::gray);
            const auto patch =
                Pixelation::of(frozen, pixelRect(strip.rect(), canvas, frozen.size()),
                               Pixelation::cellPixels(pixelsPerPoint(canvas, frozen.size())));
            QCOMPARE(patch.has_value(), scale == 2);
        }
    }

    void aMovedPixelationKeepsItsPatchUntilMadeAnew()
    {
        QImage frozen(100, 100, QImage::Format_RGB32);
        frozen.fill(Qt::gray);
        Annotation mark = markBetween(Tool::pixelate, {10, 10}, {40, 40});
        mark.setPixelated(Pixelation::of(frozen, {10, 10, 30, 30}, 9));
        const Annotation copy = mark;
        mark.translate({5, 5});
        QVERIFY(mark.pixelated());
        QCOMPARE(mark.pixelated()->cells().cacheKey(), copy.pixelated()->cells().cacheKey());
        mark.setPixelated(std::nullopt);
        QVERIFY(!mark.pixelated());
        QVERIFY(copy.pixelated());
    }

    void aNarrowRectangleIsHitInItsMiddleToo()
    {
        const Annotation mark = markBetween(Tool::rect, {100, 100}, {105, 200});
        QVERIFY(mark.hitTest({102.5, 150}));
        QVERIFY(mark.hitTest({94, 150}));
        QVERIFY(mark.hitTest({111, 206}));
        QVERIFY(!mark.hitTest({92.9, 150}));
        QVERIFY(!mark.hitTest({102, 208}));
    }

    void aWideRectangleIsHitAlongItsOutlineOnly()
    {
        const Annotation mark = markBetween(Tool::rect, {200, 200}, {100, 100});
        QVERIFY(mark.hitTest({106, 150}));
        QVERIFY(mark.hitTest({94, 150}));
        QVERIFY(mark.hitTest({150, 205}));
        QVERIFY(!mark.hitTest({150, 150}));
        QVERIFY(!mark.hitTest({108, 150}));
        QVERIFY(!mark.hitTest({92, 150}));
    }

    void thickOutlinesAreHitAcrossTheirWidth()
    {
        const Annotation mark = markBetween(Tool::rect, {100, 100}, {200, 200}, 20);
        QVERIFY(mark.hitTest({109, 150}));
        QVERIFY(!mark.hitTest({111, 150}));
    }

    void strokesAreHitWithinSevenPoints_data()
    {
        QTest::addColumn<Tool>("tool");
        for (const Tool tool : {Tool::pen, Tool::line, Tool::arrow, Tool::marker})
            QTest::addRow("%s", qPrintable(name(tool))) << tool;
    }
    void strokesAreHitWithinSevenPoints()
    {
        QFETCH(Tool, tool);
        const bool freehand = tool == Tool::pen || tool == Tool::marker;
        const Annotation mark = freehand ? strokeThrough(tool, {{100, 100}, {200, 100}})
                                         : markBetween(tool, {100, 100}, {200, 100});
        QVERIFY(mark.hitTest({150, 106.9}));
        QVERIFY(!mark.hitTest({150, 107.1}));
        QVERIFY(mark.hitTest({206.9, 100}));
        QVERIFY(!mark.hitTest({207.1, 100}));
        // Beyond the end the distance counts, not the corner of a box.
        QVERIFY(!mark.hitTest({206, 106}));
    }

    void aBentStrokeIsNotHitInsideItsBend()
    {
        const Annotation mark = strokeThrough(Tool::pen, {{100, 100}, {200, 100}, {200, 200}});
        QVERIFY(mark.hitTest({200, 150}));
        QVERIFY(!mark.hitTest({150, 150}));
    }

    void aThickMarkerIsHitByItsWidth()
    {
        const Annotation mark = strokeThrough(Tool::marker, {{100, 100}, {200, 100}}, 40);
        QVERIFY(mark.hitTest({150, 119}));
        QVERIFY(!mark.hitTest({150, 121}));
    }

    void aDotIsHitAroundIt()
    {
        const Annotation dot = strokeThrough(Tool::pen, {{50, 50}});
        QVERIFY(dot.hitTest({56, 50}));
        QVERIFY(!dot.hitTest({56, 56}));
        QVERIFY(strokeThrough(Tool::pen, {{50, 50}, {50, 50}}).hitTest({50, 44}));
    }

    void aBadgeIsHitThreePointsAroundItsCircle()
    {
        const Annotation badge = badgeAt({50, 50}, 26);
        QVERIFY(badge.hitTest({65.9, 50}));
        QVERIFY(!badge.hitTest({66.1, 50}));
        QVERIFY(!badge.hitTest({63, 63}));
    }

    void textAndPixelationAreHitThreePointsAroundTheirBounds()
    {
        for (const Annotation& mark : {textAt({100, 100}, QStringLiteral("abc")),
                                       markBetween(Tool::pixelate, {100, 100}, {150, 130})}) {
            const QRectF bounds = mark.bounds();
            QVERIFY(mark.hitTest(bounds.center()));
            QVERIFY(mark.hitTest(bounds.topLeft() - QPointF(2.9, 2.9)));
            QVERIFY(mark.hitTest(bounds.bottomRight() + QPointF(2.9, 2.9)));
            QVERIFY(!mark.hitTest(bounds.topLeft() - QPointF(3.1, 0)));
            QVERIFY(!mark.hitTest(bounds.bottomRight() + QPointF(0, 3.1)));
        }
    }
};

BRINDLECAM_TEST(TestAnnotation);

} // namespace brindlecam

#include "tst_annotation.moc"
