#include "canvas/Hint.h"
#include "canvas/HintPicture.h"
#include "support/TestCase.h"

#include <QPainter>

#include <algorithm>
#include <cstdlib>

namespace brindlecam {

class TestHintPicture final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void showsTheHintPixelForPixel_data()
    {
        QTest::addColumn<QSize>("pixels");
        QTest::addColumn<qreal>("scale");
        QTest::newRow("plain") << QSize(1920, 1080) << 1.0;
        QTest::newRow("odd width") << QSize(1367, 400) << 1.0;
        QTest::newRow("dense") << QSize(2880, 800) << 1.5;
        QTest::newRow("twice as dense") << QSize(3840, 800) << 2.0;
    }
    void showsTheHintPixelForPixel()
    {
        QFETCH(QSize, pixels);
        QFETCH(qreal, scale);
        const QSizeF canvas = QSizeF(pixels) / scale;
        QImage painted(pixels, QImage::Format_RGB32);
        painted.fill(Qt::darkCyan);
        QImage copied = painted;
        {
            QPainter painter(&painted);
            painter.scale(scale, scale);
            Hint::paint(painter, canvas);
        }
        {
            QPainter painter(&copied);
            painter.scale(scale, scale);
            HintPicture(canvas, scale).paint(painter);
        }
        // Blending twice instead of once rounds differently, no more.
        int farthest = 0;
        int changed = 0;
        for (int y = 0; y < pixels.height(); ++y) {
            for (int x = 0; x < pixels.width(); ++x) {
                const QColor one = painted.pixelColor(x, y);
                const QColor other = copied.pixelColor(x, y);
                changed += one != QColor(Qt::darkCyan) ? 1 : 0;
                farthest = std::max({farthest, std::abs(one.red() - other.red()),
                                     std::abs(one.green() - other.green()),
                                     std::abs(one.blue() - other.blue())});
            }
        }
        QVERIFY(changed > 1000);
        QVERIFY2(farthest <= 3, qPrintable(QString::number(farthest)));
    }
};

BRINDLECAM_TEST(TestHintPicture);

} // namespace brindlecam

#include "tst_hintpicture.moc"
