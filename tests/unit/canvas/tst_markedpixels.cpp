// Covers MarkedPart.
#include "MarkedScreen.h"
#include "base/Geometry.h"
#include "canvas/CanvasPainter.h"
#include "canvas/MarkedPicture.h"
#include "support/TestCase.h"

#include <QPainter>
#include <QRandomGenerator>

#include <algorithm>
#include <array>
#include <cmath>

namespace brindlecam {

namespace {

constexpr int kMarksOfATool = 24;
// Pixels: the squares that memory is taken for, and strips such as the screen is painted in.
constexpr int kTile = 64;
constexpr std::array kTiles{QSize(kTile, kTile), QSize(48, 128), QSize(400, 16)};

void addToolsAtScales(std::initializer_list<qreal> scales = {1.0, 1.25, 1.5, 2.0})
{
    QTest::addColumn<Tool>("tool");
    QTest::addColumn<qreal>("scale");
    for (const qreal scale : scales) {
        for (const Tool tool : kAllTools)
            QTest::addRow("%s at %.2f", qPrintable(name(tool)), scale) << tool << scale;
    }
}

/// Marks of one tool, in all its widths, anywhere on the screen and over its edges.
class RandomMarks final {
public:
    RandomMarks(Tool tool, qreal scale)
        : m_tool(tool)
        , m_scale(scale)
        , m_frozen(test::frozenScreen(scale))
        , m_random(static_cast<quint32>(tool) + 1)
    {
    }

    [[nodiscard]] const QImage& frozen() const { return m_frozen; }

    Annotation next()
    {
        Annotation mark(m_tool, QColor::fromRgb(m_random.generate()), place());
        mark.setOpacity(0.1 + m_random.bounded(0.9));
        mark.setNumber(1 + m_random.bounded(120));
        if (const auto range = sizes(m_tool)) {
            const int steps = static_cast<int>((range->maximum - range->minimum) / range->step);
            // The narrowest ones are drawn on another road than the others.
            const int thick = m_random.bounded(2) == 0 ? 0 : m_random.bounded(steps + 1);
            mark.setLineWidth(range->minimum + thick * range->step);
        }
        if (m_tool == Tool::pen || m_tool == Tool::marker)
            scribble(mark);
        else if (m_tool == Tool::text)
            mark.setText(QStringLiteral("Texto ñ %1 ágil").arg(m_random.bounded(1000)), 24);
        else if (m_tool != Tool::number)
            mark.setEnd(place());
        return pixelated(mark);
    }

    Annotation moved(const Annotation& mark)
    {
        Annotation copy = mark;
        copy.translate((place() - place()) / 4);
        return pixelated(copy);
    }

    QRect part()
    {
        const QRect whole = m_frozen.rect();
        const QPoint corner(m_random.bounded(whole.width()), m_random.bounded(whole.height()));
        return QRect(corner, QSize(1 + m_random.bounded(150), 1 + m_random.bounded(150))) & whole;
    }

private:
    /// The mouse is where a pixel of the screen is; what is constrained to an angle is anywhere.
    QPointF place()
    {
        QPointF at(m_random.bounded(test::kMarkedPoints.width() + 40.0) - 20,
                   m_random.bounded(test::kMarkedPoints.height() + 40.0) - 20);
        if (m_random.bounded(2) == 0)
            at = QPointF(std::round(at.x() * m_scale), std::round(at.y() * m_scale)) / m_scale;
        return at;
    }

    void scribble(Annotation& mark)
    {
        qreal angle = 0;
        for (int i = 0; i < 40; ++i) {
            angle += m_random.bounded(2.0) - 1;
            const qreal reach = m_random.bounded(25.0);
            mark.append(mark.points().last() + reach * QPointF(std::cos(angle), std::sin(angle)));
        }
    }

    Annotation pixelated(Annotation mark) const
    {
        if (m_tool == Tool::pixelate) {
            const PixelsPerPoint ratio = pixelsPerPoint(test::kMarkedPoints, m_frozen.size());
            const QRect pixels = pixelRect(mark.rect(), test::kMarkedPoints, m_frozen.size());
            mark.setPixelated(Pixelation::of(m_frozen, pixels, Pixelation::cellPixels(ratio)));
        }
        return mark;
    }

    Tool m_tool;
    qreal m_scale;
    QImage m_frozen;
    QRandomGenerator m_random;
};

QString described(int index, const Annotation& mark)
{
    const QPointF from = mark.points().first();
    const QPointF to = mark.points().last();
    return QStringLiteral("mark %1, %2 points wide, from %3, %4 to %5, %6")
        .arg(index)
        .arg(mark.lineWidth())
        .arg(from.x())
        .arg(from.y())
        .arg(to.x())
        .arg(to.y());
}

/// What a canvas shows while this mark is drawn over a wholly selected screen, repainted bit by
/// bit.
QImage shownWhileDrawn(const QImage& frozen, qreal scale, const Annotation& current)
{
    CanvasPainter canvas(frozen, test::kMarkedPoints);
    CanvasScene scene;
    scene.hole = QRectF({}, test::kMarkedPoints);
    scene.selection = scene.hole;
    scene.handles = CanvasScene::Handles::hidden;
    (void)canvas.show(scene);
    QImage screen(frozen.size(), QImage::Format_RGB32);
    screen.setDevicePixelRatio(scale);
    for (int y = 0; y < test::kMarkedPoints.height(); y += 60) {
        for (int x = 0; x < test::kMarkedPoints.width(); x += 80) {
            const QRect exposed(x, y, 80, 60);
            QPainter painter(&screen);
            painter.setClipRect(exposed);
            canvas.paint(painter, exposed, &current);
        }
    }
    screen.setDevicePixelRatio(1);
    return screen;
}

} // namespace

/// However a mark comes to be painted, it has the pixels of the finished picture.
class TestMarkedPixels final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aPartOfThePictureHasThePixelsOfTheWhole_data() { addToolsAtScales(); }
    void aPartOfThePictureHasThePixelsOfTheWhole()
    {
        QFETCH(const Tool, tool);
        QFETCH(const qreal, scale);
        RandomMarks marks(tool, scale);
        const QImage& frozen = marks.frozen();
        for (int i = 0; i < kMarksOfATool; ++i) {
            AnnotationList list;
            list.append(marks.next());
            const auto part = [&](const QRect& rect) {
                return flattened(frozen, test::kMarkedPoints, rect, list.marks());
            };
            const QImage whole = part(frozen.rect());
            const QString what = described(i, *list.marks().front());
            const QSize size = kTiles.at(static_cast<std::size_t>(i) % kTiles.size());
            for (int y = 0; y < frozen.height(); y += size.height()) {
                for (int x = 0; x < frozen.width(); x += size.width()) {
                    const QRect tile = QRect({x, y}, size) & frozen.rect();
                    QVERIFY2(part(tile) == whole.copy(tile), qPrintable(what));
                }
            }
            for (int j = 0; j < 5; ++j) {
                const QRect rect = marks.part();
                QVERIFY2(part(rect) == whole.copy(rect), qPrintable(what));
            }
        }
    }

    /// Qt joins both ends where all of the stroke is in view.
    void aStrokeThatEndsWhereItBeganHasThePixelsOfTheWholeInEveryPart_data()
    {
        QTest::addColumn<Tool>("tool");
        QTest::addColumn<bool>("lingers");
        QTest::newRow("pen") << Tool::pen << false;
        QTest::newRow("pen that lingers there") << Tool::pen << true;
        QTest::newRow("marker") << Tool::marker << false;
    }
    void aStrokeThatEndsWhereItBeganHasThePixelsOfTheWholeInEveryPart()
    {
        QFETCH(const Tool, tool);
        QFETCH(const bool, lingers);
        const QPointF end(100, 100);
        Annotation stroke(tool, Qt::blue, end);
        stroke.setLineWidth(9);
        stroke.append({30, 50});
        stroke.append({40, 100});
        stroke.append(end);
        if (lingers)
            stroke.append(end);
        AnnotationList list;
        list.append(stroke);
        const QImage frozen = test::frozenScreen(1);
        const QImage whole = flattened(frozen, test::kMarkedPoints, frozen.rect(), list.marks());
        for (int x = 0; x < 120; ++x) {
            const QRect tile(x, 60, kTile, kTile);
            QCOMPARE(flattened(frozen, test::kMarkedPoints, tile, list.marks()), whole.copy(tile));
        }
    }

    void theScreenHasThePixelsOfThePictureWhateverIsMoved_data() { addToolsAtScales(); }
    void theScreenHasThePixelsOfThePictureWhateverIsMoved()
    {
        QFETCH(const Tool, tool);
        QFETCH(const qreal, scale);
        RandomMarks marks(tool, scale);
        MarkedPicture picture(marks.frozen(), test::kMarkedPoints);
        test::MarkedScreen screen(marks.frozen());
        AnnotationList list;
        for (int i = 0; i < kMarksOfATool / 2; ++i) {
            list.append(marks.next());
            QVERIFY2(screen.follows(picture, list), qPrintable(described(i, *list.marks().back())));
        }
        for (int i = 0; i < kMarksOfATool / 2; ++i) {
            const AnnotationList::Mark mark = list.marks()[static_cast<std::size_t>(i)];
            list.replace(mark, marks.moved(*mark));
            QVERIFY2(screen.follows(picture, list), qPrintable(described(i, *mark)));
        }
    }

    void aMarkBeingDrawnHasThePixelsItWillHave_data()
    {
        addToolsAtScales({1.0, 1.1, 1.25, 1.5, 2.0});
    }
    void aMarkBeingDrawnHasThePixelsItWillHave()
    {
        QFETCH(const Tool, tool);
        QFETCH(const qreal, scale);
        RandomMarks marks(tool, scale);
        // Around a selection there is a border, and the size of it within.
        const QRect clear = marks.frozen().rect().adjusted(0, qRound(40 * scale), 0, 0);
        for (int i = 0; i < kMarksOfATool / 4; ++i) {
            AnnotationList list;
            list.append(marks.next());
            const Annotation& mark = *list.marks().front();
            const QImage finished =
                flattened(marks.frozen(), test::kMarkedPoints, clear, list.marks());
            const QImage shown = shownWhileDrawn(marks.frozen(), scale, mark).copy(clear);
            QVERIFY2(shown == finished, qPrintable(described(i, mark)));
        }
    }
};

BRINDLECAM_TEST(TestMarkedPixels);

} // namespace brindlecam

#include "tst_markedpixels.moc"
