#include "MarkedScreen.h"
#include "base/Geometry.h"
#include "canvas/MarkedPicture.h"
#include "support/TestCase.h"

#include <QPainter>

#include <cmath>

namespace brindlecam {

namespace {

Annotation straightMark(Tool tool, QPointF start, QPointF end, const QColor& color = Qt::red)
{
    Annotation mark(tool, color, start);
    mark.setEnd(end);
    return mark;
}

/// One of each tool, some over the edge of the screen and over each other.
AnnotationList allTools(const QImage& frozen)
{
    AnnotationList list;
    for (const Tool tool : {Tool::pen, Tool::marker}) {
        Annotation stroke(tool, Qt::blue, {20, 30});
        stroke.setLineWidth(tool == Tool::pen ? 3 : 16);
        for (int i = 1; i < 80; ++i)
            stroke.append({20 + i * 3.3, 60 + 31 * std::sin(i / 6.0)});
        list.append(stroke);
    }
    list.append(straightMark(Tool::line, {-20.3, 100}, {200.2, 133.7}, Qt::green));
    list.append(straightMark(Tool::arrow, {30, 200}, {290.1, 20.6}));
    list.append(straightMark(Tool::rect, {100.5, 90.25}, {300.1, 239.9}, Qt::yellow));
    Annotation words(Tool::text, Qt::black, {150.2, 150.6});
    words.setText(QStringLiteral("Texto ñ"), 24);
    list.append(words);
    Annotation badge(Tool::number, Qt::darkGreen, {60.4, 150});
    badge.setLineWidth(26);
    badge.setNumber(3);
    list.append(badge);
    Annotation hidden = straightMark(Tool::pixelate, {40.4, 20.2}, {170.7, 120.3});
    hidden.setPixelated(
        Pixelation::of(frozen, pixelRect(hidden.rect(), test::kMarkedPoints, frozen.size()),
                       Pixelation::cellPixels(pixelsPerPoint(test::kMarkedPoints, frozen.size()))));
    list.append(hidden);
    list.append(straightMark(Tool::line, {60, 10}, {60, 230}));
    return list;
}

int pixelsOf(const QRegion& region)
{
    int count = 0;
    for (const QRect& rect : region)
        count += rect.width() * rect.height();
    return count;
}

void addScaleRows()
{
    QTest::addColumn<qreal>("scale");
    for (const qreal scale : {1.0, 1.25, 1.5, 2.0})
        QTest::addRow("%.2f", scale) << scale;
}

} // namespace

class TestMarkedPicture final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void theScreenShowsThePixelsOfTheFinishedPicture_data() { addScaleRows(); }
    void theScreenShowsThePixelsOfTheFinishedPicture()
    {
        QFETCH(qreal, scale);
        const QImage frozen = test::frozenScreen(scale);
        const AnnotationList list = allTools(frozen);
        MarkedPicture picture(frozen, test::kMarkedPoints);
        test::MarkedScreen screen(frozen);
        screen.repaint(picture, picture.setMarks(list.marks()));
        QCOMPARE(screen.shown(),
                 flattened(frozen, test::kMarkedPoints, frozen.rect(), list.marks()));
        QVERIFY(screen.shown() != frozen);
    }

    void aPartIsTheSamePartOfTheWhole_data() { addScaleRows(); }
    void aPartIsTheSamePartOfTheWhole()
    {
        QFETCH(qreal, scale);
        const QImage frozen = test::frozenScreen(scale);
        const AnnotationList list = allTools(frozen);
        const QImage whole = flattened(frozen, test::kMarkedPoints, frozen.rect(), list.marks());
        for (const QRect& part : {QRect(0, 0, 100, 100), QRect(37, 51, 211, 153),
                                  QRect(63, 64, 65, 66), QRect(150, 100, 1, 1)})
            QCOMPARE(flattened(frozen, test::kMarkedPoints, part, list.marks()), whole.copy(part));
    }

    void everyChangeRepaintsWhatItTouches_data() { addScaleRows(); }
    void everyChangeRepaintsWhatItTouches()
    {
        QFETCH(qreal, scale);
        const QImage frozen = test::frozenScreen(scale);
        AnnotationList list;
        MarkedPicture picture(frozen, test::kMarkedPoints);
        test::MarkedScreen screen(frozen);
        const AnnotationList all = allTools(frozen);
        for (const AnnotationList::Mark& mark : all.marks()) {
            list.append(*mark);
            QVERIFY(screen.follows(picture, list));
        }
        for (std::size_t i = 0; i < list.marks().size(); ++i) {
            AnnotationList::Mark mark = list.marks()[i];
            for (int step = 0; step < 3; ++step) {
                Annotation moved = *mark;
                moved.translate({17.3, -9.1});
                mark = list.replace(mark, moved);
                QVERIFY(screen.follows(picture, list));
            }
        }
        while (!list.isEmpty()) {
            QVERIFY(list.remove(list.marks()[list.marks().size() / 2]));
            QVERIFY(screen.follows(picture, list));
        }
        QCOMPARE(screen.shown(), frozen);
        while (list.undo())
            QVERIFY(screen.follows(picture, list));
    }

    void onlySquaresNearWhatChangedAreRepainted()
    {
        const QImage frozen = test::frozenScreen(1);
        AnnotationList list = allTools(frozen);
        MarkedPicture picture(frozen, test::kMarkedPoints);
        picture.setMarks(list.marks());
        QVERIFY(picture.setMarks(list.marks()).isEmpty());
        const AnnotationList::Mark badge = list.marks()[6];
        Annotation moved = *badge;
        moved.translate({10, 0});
        list.replace(badge, moved);
        const QRegion damage = picture.setMarks(list.marks());
        QVERIFY(damage.contains(QPoint(60, 150)));
        QVERIFY(damage.contains(QPoint(80, 150)));
        QVERIFY(pixelsOf(damage) <= 4 * 64 * 64);
    }

    void damageStaysOnThePicture()
    {
        const QImage frozen = test::frozenScreen(1);
        MarkedPicture picture(frozen, test::kMarkedPoints);
        AnnotationList list;
        list.append(straightMark(Tool::line, {300, 230}, {900, 900}));
        list.append(straightMark(Tool::line, {-900, -30}, {-800, 900}));
        const QRegion damage = picture.setMarks(list.marks());
        QVERIFY(!damage.isEmpty());
        QVERIFY(QRegion(frozen.rect()).subtracted(damage) != QRegion());
        QVERIFY((damage - frozen.rect()).isEmpty());
    }

    void nothingIsPaintedAwayFromMarksOrOutsideWhatIsExposed()
    {
        const QImage frozen = test::frozenScreen(1);
        MarkedPicture picture(frozen, test::kMarkedPoints);
        AnnotationList list;
        list.append(straightMark(Tool::line, {10, 10}, {50, 50}));
        picture.setMarks(list.marks());
        QImage screen(test::kMarkedPoints, QImage::Format_RGB32);
        screen.fill(Qt::magenta);
        QPainter painter(&screen);
        picture.paint(painter, QRect(20, 20, 200, 200));
        painter.end();
        QRect touched;
        for (int y = 0; y < screen.height(); ++y) {
            for (int x = 0; x < screen.width(); ++x) {
                if (screen.pixel(x, y) != qRgb(255, 0, 255))
                    touched |= QRect(x, y, 1, 1);
            }
        }
        QCOMPARE(touched, QRect(20, 20, 44, 44));
    }

    void exposingNothingPaintsNothing()
    {
        MarkedPicture none(QImage(), test::kMarkedPoints);
        QImage screen(10, 10, QImage::Format_RGB32);
        screen.fill(Qt::magenta);
        const QImage before = screen.copy();
        QPainter painter(&screen);
        none.paint(painter, QRect(0, 0, 10, 10));
        MarkedPicture picture(test::frozenScreen(1), test::kMarkedPoints);
        const AnnotationList list = allTools(test::frozenScreen(1));
        picture.setMarks(list.marks());
        picture.paint(painter, {});
        painter.end();
        QCOMPARE(screen, before);
    }

    void whatWasNotShownIsPaintedWhenItIs()
    {
        const QImage frozen = test::frozenScreen(1);
        const AnnotationList list = allTools(frozen);
        MarkedPicture picture(frozen, test::kMarkedPoints);
        test::MarkedScreen screen(frozen);
        picture.setMarks(list.marks());
        for (int y = 0; y < 240; y += 50)
            for (int x = 0; x < 320; x += 70)
                screen.repaint(picture, QRect(x, y, 70, 50).intersected(frozen.rect()));
        QCOMPARE(screen.shown(),
                 flattened(frozen, test::kMarkedPoints, frozen.rect(), list.marks()));
    }

    void aPictureUntouchedByMarksIsNotCopied()
    {
        const QImage frozen = test::frozenScreen(1);
        AnnotationList list;
        list.append(straightMark(Tool::line, {10, 10}, {50, 50}));
        const QImage part =
            flattened(frozen, test::kMarkedPoints, {100, 100, 50, 50}, list.marks());
        QCOMPARE(part, frozen.copy(100, 100, 50, 50));
        QCOMPARE(static_cast<const void*>(part.constBits()),
                 static_cast<const void*>(frozen.constScanLine(100) + 400));
        const QImage before = frozen.copy();
        const QImage marked = flattened(frozen, test::kMarkedPoints, {0, 0, 50, 50}, list.marks());
        QVERIFY(marked != frozen.copy(0, 0, 50, 50));
        QCOMPARE(frozen, before);
    }

    void aPartBesideThePictureIsNull()
    {
        const QImage frozen = test::frozenScreen(1);
        QVERIFY(flattened(frozen, test::kMarkedPoints, {400, 0, 10, 10}, {}).isNull());
        QCOMPARE(flattened(frozen, test::kMarkedPoints, {310, 230, 50, 50}, {}).size(),
                 QSize(10, 10));
    }
};

BRINDLECAM_TEST(TestMarkedPicture);

} // namespace brindlecam

#include "tst_markedpicture.moc"
