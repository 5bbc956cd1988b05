#include "look/Symbols.h"
#include "preferences/Config.h"
#include "support/TestCase.h"

#include <QPainter>

namespace brindlecam {

namespace {

const QString kLeaf = QStringLiteral("leaf.fill");

/// How many pixels are half covered, neither inside nor outside.
int softPixels(const QImage& image)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const int alpha = image.pixelColor(x, y).alpha();
            count += alpha > 8 && alpha < 247 ? 1 : 0;
        }
    }
    return count;
}

} // namespace

class TestSymbols final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aSymbolTakesTheColourAskedFor()
    {
        const QImage image = Symbols::icon(kLeaf, Config::leafGreen).pixmap(48).toImage();
        QCOMPARE(image.size(), QSize(48, 48));
        QCOMPARE(image.pixelColor(30, 30), QColor::fromRgb(Config::leafGreen.rgb()));
        QCOMPARE(image.pixelColor(1, 1).alpha(), 0);
    }

    void everySizeAndScaleIsDrawnAnew()
    {
        const QIcon icon = Symbols::icon(kLeaf, Qt::white);
        const QPixmap plain = icon.pixmap(QSize(24, 24), 1);
        const QPixmap dense = icon.pixmap(QSize(24, 24), 2);
        QCOMPARE(dense.size(), QSize(48, 48));
        QCOMPARE(dense.devicePixelRatio(), 2.0);
        // A magnified picture has four times the soft pixels, a sharp one twice as many edge
        // pixels.
        QVERIFY(softPixels(dense.toImage()) < softPixels(plain.toImage()) * 3);
    }

    void drawingUnderAScaleIsSharpToo()
    {
        QImage scaled(96, 96, QImage::Format_ARGB32_Premultiplied);
        scaled.fill(Qt::transparent);
        QPainter painter(&scaled);
        painter.scale(4, 4);
        Symbols::draw(painter, kLeaf, QRectF(0, 0, 24, 24), Qt::white);
        painter.end();
        const QImage large = Symbols::icon(kLeaf, Qt::white).pixmap(96).toImage();
        QCOMPARE(scaled.convertToFormat(large.format()), large);
    }

    void itKeepsItsShapeInTheMiddleOfALongRectangle()
    {
        QImage image(96, 24, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        QPainter painter(&image);
        Symbols::draw(painter, kLeaf, QRectF(0, 0, 96, 24), Qt::white);
        painter.end();
        QCOMPARE(image.pixelColor(20, 12).alpha(), 0);
        QCOMPARE(image.pixelColor(51, 14).alpha(), 255);
        QCOMPARE(image.pixelColor(76, 12).alpha(), 0);
    }

    void disabledIconsArePaler()
    {
        const QIcon icon = Symbols::icon(kLeaf, Qt::white);
        const QImage image = icon.pixmap(QSize(48, 48), QIcon::Disabled).toImage();
        const int alpha = image.pixelColor(30, 30).alpha();
        QVERIFY(alpha > 80 && alpha < 130);
    }

    void aSymbolThatIsNotThereIsNull()
    {
        QVERIFY(!Symbols::exists(QStringLiteral("no.such.symbol")));
        QVERIFY(Symbols::icon(QStringLiteral("no.such.symbol"), Qt::white).isNull());
    }
};

BRINDLECAM_TEST(TestSymbols);

} // namespace brindlecam

#include "tst_symbols.moc"
