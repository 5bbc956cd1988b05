// Covers CanvasScene, DimView.
#include "PaintedScale.h"
#include "canvas/CanvasPainter.h"
#include "pictures/Dimming.h"
#include "support/TestCase.h"

#include <QRandomGenerator>

namespace brindlecam {

namespace {

constexpr QSize kPaintedPoints(240, 160);

QImage patterned(qreal scale)
{
    QImage picture((QSizeF(kPaintedPoints) * scale).toSize(), QImage::Format_RGB32);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            picture.setPixel(x, y, qRgb(128 + x % 128, 128 + y % 128, 128 + (x + 2 * y) % 128));
    }
    return picture;
}

/// A screen that is painted where the canvas says so, as a window is.
class Screen final {
public:
    explicit Screen(qreal scale)
        : scale(scale)
        , frozen(patterned(scale))
        , canvas(frozen, kPaintedPoints)
        , pixels(frozen.size(), QImage::Format_RGB32)
    {
        pixels.setDevicePixelRatio(scale);
        paint(QRect({}, kPaintedPoints));
    }

    void show(const CanvasScene& scene) { paint(canvas.show(scene)); }

    /// How it looks when all of it is painted at once.
    [[nodiscard]] static QImage whole(qreal scale, const CanvasScene& scene)
    {
        Screen fresh(scale);
        (void)fresh.canvas.show(scene);
        fresh.paint(QRect({}, kPaintedPoints));
        return fresh.pixels;
    }

    void paint(const QRegion& exposed)
    {
        QPainter painter(&pixels);
        painter.setClipRegion(exposed);
        canvas.paint(painter, exposed, nullptr);
    }

    qreal scale;
    QImage frozen;
    CanvasPainter canvas;
    QImage pixels;
};

CanvasScene selected(const QRectF& area)
{
    CanvasScene scene;
    scene.hole = area;
    scene.selection = area;
    return scene;
}

/// An area whose edges lie on the screen's pixels, where the mouse has put them.
QRectF area(const QRect& pixels, qreal scale)
{
    return {QPointF(pixels.topLeft()) / scale, QSizeF(pixels.size()) / scale};
}

} // namespace

/// What a canvas looks like while its selection is dragged about.
class TestCanvasPainter final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void exactlyThePixelsOfThePictureAreBright_data() { test::addCanvasScales(); }
    void exactlyThePixelsOfThePictureAreBright()
    {
        QFETCH(const qreal, scale);
        Screen screen(scale);
        const QImage dimmed = Dimming::dimmedCopy(screen.frozen);
        for (const QRect& pixels : {QRect(41, 83, 127, 64), QRect(44, 80, 127, 64), // moved
                                    QRect(44, 80, 101, 77)}) {                      // resized
            CanvasScene scene = selected(area(pixels, scale));
            scene.handles = CanvasScene::Handles::hidden;
            screen.show(scene);
            QCOMPARE(screen.canvas.pixels(scene.selection), pixels);
            QImage bright = screen.pixels.copy(pixels);
            bright.setDevicePixelRatio(1);
            QCOMPARE(bright, screen.frozen.copy(pixels));
            // The border is one point wide, on whole pixels outside.
            const int border = qRound(scale);
            const QRect around = pixels.adjusted(-border, -border, border, border);
            for (const int row : {pixels.top() + 20, pixels.bottom() - 20}) {
                QCOMPARE(screen.pixels.pixel(around.left() - 1, row),
                         dimmed.pixel(around.left() - 1, row));
                QCOMPARE(screen.pixels.pixel(around.right() + 1, row),
                         dimmed.pixel(around.right() + 1, row));
                QVERIFY(screen.pixels.pixel(around.left(), row) !=
                        dimmed.pixel(around.left(), row));
                QVERIFY(screen.pixels.pixel(around.right(), row) !=
                        dimmed.pixel(around.right(), row));
            }
        }
    }

    void movesAndResizesLeaveNothingBehind_data() { test::addCanvasScales(); }
    void movesAndResizesLeaveNothingBehind()
    {
        QFETCH(const qreal, scale);
        Screen screen(scale);
        QRandomGenerator random(1);
        QRect pixels(60, 50, 100, 60);
        const QRect all = screen.frozen.rect();
        for (int step = 0; step < 60; ++step) {
            const QPoint by(random.bounded(-9, 10), random.bounded(-9, 10));
            if (step % 3 == 0)
                pixels.setBottomRight(pixels.bottomRight() + by);
            else
                pixels.translate(by);
            pixels &= all;
            CanvasScene scene = selected(area(pixels, scale));
            if (step % 5 == 0)
                scene.handles = CanvasScene::Handles::hidden;
            if (step % 2 == 0)
                scene.loupePointer = scene.selection.bottomRight();
            if (step % 7 == 0)
                scene.outlinedMark = scene.selection.adjusted(20.5, 20.25, -21, -19);
            screen.show(scene);
            QVERIFY2(screen.pixels == Screen::whole(scale, scene),
                     qPrintable(QStringLiteral("step %1").arg(step)));
        }
    }

    void choosingLeavesNothingBehind_data() { test::addCanvasScales(); }
    void choosingLeavesNothingBehind()
    {
        QFETCH(const qreal, scale);
        Screen screen(scale);
        QRandomGenerator random(2);
        for (int step = 0; step < 30; ++step) {
            CanvasScene scene;
            scene.hint = step % 4 != 0;
            scene.loupePointer = QPointF(random.bounded(240), random.bounded(160));
            if (step % 3 != 0) {
                scene.outlinedWindow = area(QRect(random.bounded(100), random.bounded(80),
                                                  30 + random.bounded(60), 30 + random.bounded(40)),
                                            scale);
                scene.hole = *scene.outlinedWindow;
            }
            screen.show(scene);
            QVERIFY2(screen.pixels == Screen::whole(scale, scene),
                     qPrintable(QStringLiteral("step %1").arg(step)));
        }
    }
};

BRINDLECAM_TEST(TestCanvasPainter);

} // namespace brindlecam

#include "tst_canvaspainter.moc"
