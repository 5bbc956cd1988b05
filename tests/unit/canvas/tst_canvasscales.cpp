// Covers ExactPosition.
#include "EditingFixture.h"
#include "base/Geometry.h"
#include "support/TestCase.h"

#include <QMouseEvent>

#include <array>

namespace brindlecam {

namespace {

/// A canvas of so many pixels per point with a hand that names exact pixels, as a mouse does.
struct ScaledCanvas : test::CanvasFixture {
    qreal scale;

    explicit ScaledCanvas(qreal pixelsPerPoint)
        : test::CanvasFixture(QSizeF(kPixels) / pixelsPerPoint)
        , scale(pixelsPerPoint)
    {
    }

    void hand(QEvent::Type type, QPoint pixel, Qt::KeyboardModifiers modifiers = {}) const
    {
        const QPointF exact = QPointF(pixel) / scale;
        const bool down = type != QEvent::MouseButtonRelease;
        QMouseEvent event(type, exact.toPoint(), exact, exact,
                          type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                          down ? Qt::LeftButton : Qt::NoButton, modifiers);
        QCoreApplication::sendEvent(canvas.get(), &event);
    }
    void dragPixels(QPoint from, QPoint to) const
    {
        hand(QEvent::MouseButtonPress, from);
        hand(QEvent::MouseMove, to);
        hand(QEvent::MouseButtonRelease, to);
    }
    void clickPixel(QPoint at) const
    {
        hand(QEvent::MouseButtonPress, at);
        hand(QEvent::MouseButtonRelease, at);
    }
    /// What a picture of the selection is made of.
    [[nodiscard]] QRect taken() const
    {
        return pixelRect(canvas->selection().rect(), QSizeF(kPixels) / scale, kPixels);
    }
    void offerWindow(const QRect& pixels) const
    {
        canvas->setWindowRects(
            {{QPointF(pixels.topLeft()) / scale, QSizeF(pixels.size()) / scale}});
    }
};

} // namespace

/// The pixels a selection has at scales at which points and pixels do not meet.
class TestCanvasScales final : public test::TestCase {
    Q_OBJECT

private:
    static void addScales()
    {
        QTest::addColumn<qreal>("scale");
        for (const qreal scale : {1.0, 1.25, 1.5, 1.75, 2.0})
            QTest::addRow("%g", scale) << scale;
    }

private Q_SLOTS:
    void selectionMovedByTheMouseKeepsItsSize_data() { addScales(); }
    void selectionMovedByTheMouseKeepsItsSize()
    {
        QFETCH(qreal, scale);
        const ScaledCanvas c(scale);
        c.dragPixels({101, 83}, {234, 176});
        const QRect first = c.taken();
        const QSizeF points = c.canvas->selection().rect().size();
        QPoint way;
        for (int i = 0; i < 20; ++i) {
            const QPoint step = i % 2 ? QPoint(3, 1) : QPoint(-1, 2);
            const QPoint at = c.taken().center();
            c.dragPixels(at, at + step);
            way += step;
            QCOMPARE(c.taken(), first.translated(way));
        }
        QCOMPARE(c.canvas->selection().rect().size(), points);
        QCOMPARE(c.canvas->actions().render()->image(), c.image.copy(first.translated(way)));
    }

    void selectionMovedToTheEdgesKeepsItsSize_data() { addScales(); }
    void selectionMovedToTheEdgesKeepsItsSize()
    {
        QFETCH(qreal, scale);
        const ScaledCanvas c(scale);
        c.dragPixels({101, 83}, {234, 176});
        const QSize size = c.taken().size();
        const QRect screen(QPoint(), test::CanvasFixture::kPixels);
        for (const QPoint corner :
             {screen.topLeft(), screen.topRight(), screen.bottomLeft(), screen.bottomRight()}) {
            const QPoint at = c.taken().center();
            c.dragPixels(at, at + (corner - screen.center()) * 2);
            QCOMPARE(c.taken().size(), size);
            QVERIFY(screen.contains(c.taken()));
            QCOMPARE(corner.x() == 0 ? c.taken().left() : c.taken().right(), corner.x());
            QCOMPARE(corner.y() == 0 ? c.taken().top() : c.taken().bottom(), corner.y());
        }
    }

    void clickTakesExactlyTheWindowsPixels_data() { addScales(); }
    void clickTakesExactlyTheWindowsPixels()
    {
        QFETCH(qreal, scale);
        const ScaledCanvas c(scale);
        const QRect window(37, 23, 201, 151);
        c.offerWindow(window);
        c.clickPixel({100, 100});
        QCOMPARE(c.taken(), window);
        const auto picture = c.canvas->actions().render();
        QCOMPARE(picture->image(), c.image.copy(window));
        QCOMPARE(picture->pointSize(), QSizeF(window.size()) / scale);
        c.canvas->actions().pin();
        QCOMPARE(std::get<outcome::Pin>(c.outcomes.at(0)).frame,
                 window.translated(test::CanvasFixture::kNativeOrigin));
    }

    void windowPartlyOffTheScreenIsTakenToItsEdge_data() { addScales(); }
    void windowPartlyOffTheScreenIsTakenToItsEdge()
    {
        QFETCH(qreal, scale);
        const ScaledCanvas c(scale);
        c.offerWindow(QRect(137, 123, 900, 900));
        c.clickPixel({200, 200});
        QCOMPARE(c.taken(), QRect(QPoint(137, 123), QPoint(399, 299)));
    }

    void resizingATakenWindowMovesNoOtherEdge_data() { addScales(); }
    void resizingATakenWindowMovesNoOtherEdge()
    {
        QFETCH(qreal, scale);
        const ScaledCanvas c(scale);
        const QRect window(37, 23, 201, 151);
        c.offerWindow(window);
        c.clickPixel({100, 100});
        c.dragPixels({window.right() + 1, 98}, {303, 98});
        QCOMPARE(c.taken().topLeft(), window.topLeft());
        QCOMPARE(c.taken().bottom(), window.bottom());
        const int grown = c.taken().right() + 1;
        QVERIFY(grown >= 303 && grown < 303 + 2 * scale); // whole points, outward
    }

    void keysBringATakenWindowBackToItsPixels_data() { addScales(); }
    void keysBringATakenWindowBackToItsPixels()
    {
        QFETCH(qreal, scale);
        ScaledCanvas c(scale);
        const QRect window(37, 23, 201, 151);
        c.offerWindow(window);
        c.clickPixel({100, 100});
        const QRectF before = c.canvas->selection().rect();
        c.key(Qt::Key_Right);
        c.key(Qt::Key_Down, Qt::ShiftModifier);
        QCOMPARE(c.canvas->selection().rect(), before.translated(1, 10));
        c.key(Qt::Key_Left);
        c.key(Qt::Key_Up, Qt::ShiftModifier);
        QCOMPARE(c.taken(), window);
    }

    void farEdgeMovedByAKeyLeavesTheOthers_data() { addScales(); }
    void farEdgeMovedByAKeyLeavesTheOthers()
    {
        QFETCH(qreal, scale);
        ScaledCanvas c(scale);
        const QRect window(37, 23, 201, 151);
        c.offerWindow(window);
        c.clickPixel({100, 100});
        c.key(Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(c.taken().topLeft(), window.topLeft());
        QCOMPARE(c.taken().bottom(), window.bottom());
        QVERIFY(c.taken().right() > window.right());
    }

    void clickOnAHandleChangesNothing_data() { addScales(); }
    void clickOnAHandleChangesNothing()
    {
        QFETCH(qreal, scale);
        const ScaledCanvas c(scale);
        c.dragPixels({101, 83}, {234, 176});
        const QRectF before = c.canvas->selection().rect();
        const int reach = static_cast<int>(7 * scale);
        for (const Handle handle : kHandles) {
            const QPoint centre = (Selection::centre(handle, before) * scale).toPoint();
            for (const QPoint off : {QPoint(-reach, -reach), QPoint(reach, reach), QPoint(3, -2)}) {
                if (!c.canvas->selection().handleAt(QPointF(centre + off) / scale))
                    continue;
                c.clickPixel(centre + off);
                QCOMPARE(c.canvas->selection().rect(), before);
            }
        }
    }
};

BRINDLECAM_TEST(TestCanvasScales);

} // namespace brindlecam

#include "tst_canvasscales.moc"
