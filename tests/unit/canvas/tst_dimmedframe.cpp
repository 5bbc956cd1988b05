#include "PaintedScale.h"
#include "canvas/CanvasPainter.h"
#include "canvas/DimmedFrame.h"
#include "canvas/HintPicture.h"
#include "support/TestCase.h"

#include <QPainter>

#include <algorithm>

namespace brindlecam {

namespace {

constexpr QSize kFramePoints(700, 160);

QImage frozenScreen(QSize size)
{
    QImage picture(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            picture.setPixel(x, y, qRgb(x % 256, y % 256, (3 * x + 5 * y) % 256));
    }
    return picture;
}

QImage paintedBy(CanvasPainter& canvas, qreal scale)
{
    return test::paintedCanvas(kFramePoints, scale, [&](QPainter& painter) {
        canvas.paint(painter, QRect({}, kFramePoints), nullptr);
    });
}

} // namespace

/// What a session begins with, before the canvas has painted anything.
class TestDimmedFrame final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void isWhatTheCanvasWouldHavePainted_data()
    {
        QTest::addColumn<qreal>("scale");
        QTest::addColumn<int>("rowsEach");
        for (const qreal scale : {1.0, 1.25, 1.5, 2.0}) {
            for (const int rowsEach : {1, 37, 1000}) // also through the middle of the hint
                QTest::addRow("%.2f in bands of %d", scale, rowsEach) << scale << rowsEach;
        }
    }
    void isWhatTheCanvasWouldHavePainted()
    {
        QFETCH(const qreal, scale);
        QFETCH(const int, rowsEach);
        const QImage screen = frozenScreen((QSizeF(kFramePoints) * scale).toSize());
        const HintPicture hint(kFramePoints, scale);
        CanvasPainter canvas(screen, kFramePoints);
        canvas.setHintPicture(hint);
        const DimmedFrame frame(screen, hint);
        QCOMPARE(frame.size(), screen.size());

        QImage written(screen.size(), QImage::Format_RGB32);
        written.fill(Qt::magenta);
        for (int row = 0; row < written.height(); row += rowsEach)
            frame.write(row, std::min(rowsEach, written.height() - row), written.scanLine(row),
                        written.bytesPerLine());

        CanvasScene dark;
        (void)canvas.show(dark);
        QImage withoutHint = paintedBy(canvas, scale);
        withoutHint.setDevicePixelRatio(1);
        QVERIFY(written != withoutHint);
        CanvasScene hinted;
        hinted.hint = true;
        (void)canvas.show(hinted);
        QImage expected = paintedBy(canvas, scale);
        expected.setDevicePixelRatio(1);
        QCOMPARE(written, expected);
        QVERIFY(canvas.differenceToFirstFrame().isEmpty());
    }

    void whatASceneHasBesideIsToldApart()
    {
        const QImage screen = frozenScreen(kFramePoints);
        const HintPicture hint(kFramePoints, 1);
        CanvasPainter canvas(screen, kFramePoints);
        canvas.setHintPicture(hint);
        CanvasScene scene;
        scene.hole = QRectF(20, 20, 100, 60);
        scene.selection = scene.hole;
        (void)canvas.show(scene);
        const QRegion difference = canvas.differenceToFirstFrame();
        QVERIFY((QRegion(scene.hole.toRect()) - difference).isEmpty());
        QVERIFY((QRegion(hint.pixels()) - difference).isEmpty()); // it is gone
        QVERIFY(!difference.contains(QPoint(300, 140)));
    }
};

BRINDLECAM_TEST(TestDimmedFrame);

} // namespace brindlecam

#include "tst_dimmedframe.moc"
