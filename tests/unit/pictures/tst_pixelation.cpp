#include "pictures/Pixelation.h"
#include "support/TestCase.h"

#include <QPainter>

#include <array>
#include <cmath>
#include <map>
#include <utility>

namespace brindlecam {

namespace {

constexpr int kTestChannels = 3;
using ChannelSums = std::array<int, kTestChannels>;

QImage colourfulPicture(QSize size)
{
    QImage picture(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            picture.setPixel(x, y, qRgb(x * 7 % 256, y * 11 % 256, (x * y + 31 * x) % 256));
    }
    return picture;
}

/// The average of a cell by its definition, pixel by pixel, the edge going on for ever.
QRgb expectedCell(const QImage& crop, int column, int fromBottom, qreal cell)
{
    ChannelSums sums{};
    int count = 0;
    for (int y = 0; (y + 0.5) / cell < fromBottom + 1; ++y) {
        for (int x = 0; (x + 0.5) / cell < column + 1; ++x) {
            if ((x + 0.5) / cell < column || (y + 0.5) / cell < fromBottom)
                continue;
            const QRgb pixel =
                crop.pixel(std::min(x, crop.width() - 1), std::max(0, crop.height() - 1 - y));
            sums[0] += qRed(pixel);
            sums[1] += qGreen(pixel);
            sums[2] += qBlue(pixel);
            ++count;
        }
    }
    const auto mean = [count](int sum) { return (sum + count / 2) / count; };
    return qRgb(mean(sums[0]), mean(sums[1]), mean(sums[2]));
}

/// A patch drawn over magenta.
QImage drawnPatch(const Pixelation& patch, QSize size, const QRectF& target)
{
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(Qt::magenta);
    QPainter painter(&picture);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    patch.draw(painter, target);
    return picture;
}

} // namespace

class TestPixelation final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void everyPixelShowsTheAverageOfItsCellCountedFromTheLowerLeft_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<qreal>("cell");
        QTest::newRow("whole cells") << QSize(18, 27) << 9.0;
        QTest::newRow("cut cells") << QSize(20, 31) << 9.0;
        QTest::newRow("fractional cells") << QSize(47, 40) << 11.25;
        QTest::newRow("centres on the line between cells") << QSize(50, 50) << 13.5;
        QTest::newRow("smaller than a cell") << QSize(4, 3) << 18.0;
        QTest::newRow("two pixels") << QSize(2, 2) << 9.0;
        QTest::newRow("cells of one pixel") << QSize(12, 10) << 1.0;
        QTest::newRow("largest cells") << QSize(300, 260) << 256.0;
    }
    void everyPixelShowsTheAverageOfItsCellCountedFromTheLowerLeft()
    {
        QFETCH(QSize, size);
        QFETCH(qreal, cell);
        const QImage frozen = colourfulPicture({400, 300});
        const QRect pixels(QPoint(13, 5), size);
        const auto patch = Pixelation::of(frozen, pixels, cell);
        QVERIFY(patch);
        QCOMPARE(patch->size(), size);
        const QImage crop = frozen.copy(pixels);
        const QImage drawn = drawnPatch(*patch, size, QRectF(QPointF(), size));
        std::map<std::pair<int, int>, QRgb> cells;
        for (int y = 0; y < size.height(); ++y) {
            for (int x = 0; x < size.width(); ++x) {
                const int column = static_cast<int>(std::floor((x + 0.5) / cell));
                const int fromBottom =
                    static_cast<int>(std::floor((size.height() - 1 - y + 0.5) / cell));
                QRgb& expected = cells[{column, fromBottom}];
                if (expected == 0)
                    expected = expectedCell(crop, column, fromBottom, cell);
                QCOMPARE(drawn.pixel(x, y), expected);
            }
        }
    }

    void cutCellsAreAveragedAsIfTheEdgeWentOn()
    {
        QImage frozen(10, 2, QImage::Format_RGB32);
        frozen.fill(Qt::black);
        frozen.setPixel(9, 0, qRgb(180, 180, 180));
        frozen.setPixel(9, 1, qRgb(180, 180, 180));
        // The second cell holds column 8 once and column 9 five times.
        const auto patch = Pixelation::of(frozen, {0, 0, 10, 2}, 8);
        QVERIFY(patch);
        QCOMPARE(patch->cells().size(), QSize(2, 1));
        QCOMPARE(qRed(patch->cells().pixel(0, 0)), 0);
        QCOMPARE(qRed(patch->cells().pixel(1, 0)), (180 * 7 + 4) / 8);
    }

    /// The last row of a part painted by itself once stayed readable.
    void everyPartOfAPatchIsHidden()
    {
        constexpr QSizeF kPoints(240, 192);
        const QImage frozen = colourfulPicture({300, 240});
        const QRectF target(22.4, 31.3, 180.2, 120.7); // points, 1.25 pixels each
        const QRect pixels = pixelRect(target, kPoints, frozen.size());
        const auto patch = Pixelation::of(frozen, pixels, 11.25);
        QVERIFY(patch);
        for (int top = pixels.top() + 1; top < pixels.bottom() - 20; ++top) {
            QImage part(40, 20, QImage::Format_RGB32);
            part.fill(Qt::magenta);
            QPainter painter(&part);
            painter.setClipRect(part.rect());
            painter.translate(-QPoint(100, top));
            painter.scale(1.25, 1.25);
            patch->draw(painter, target);
            painter.end();
            for (int y = 0; y < part.height(); ++y)
                QVERIFY(part.pixelColor(20, y) != QColor(Qt::magenta));
        }
    }

    void partNarrowerOrLowerThanTwoPixelsGivesNone()
    {
        const QImage frozen = colourfulPicture({30, 30});
        QVERIFY(!Pixelation::of(frozen, {5, 5, 1, 1}, 9));
        QVERIFY(!Pixelation::of(frozen, {5, 5, 1, 20}, 9));
        QVERIFY(!Pixelation::of(frozen, {5, 5, 20, 1}, 9));
        QVERIFY(!Pixelation::of(frozen, {}, 9));
        QVERIFY(Pixelation::of(frozen, {5, 5, 2, 2}, 9));
    }

    void partOverTheEdgeIsClippedToThePicture()
    {
        const QImage frozen = colourfulPicture({30, 30});
        const auto over = Pixelation::of(frozen, {20, -10, 30, 25}, 6);
        const auto inside = Pixelation::of(frozen, {20, 0, 10, 15}, 6);
        QVERIFY(over && inside);
        QCOMPARE(over->size(), QSize(10, 15));
        QCOMPARE(over->cells(), inside->cells());
    }

    void oneColumnLeftAfterClippingIsStillPixelated()
    {
        const auto patch = Pixelation::of(colourfulPicture({30, 30}), {29, 0, 10, 12}, 6);
        QVERIFY(patch);
        QCOMPARE(patch->size(), QSize(1, 12));
        QCOMPARE(patch->cells().size(), QSize(1, 2));
    }

    void partOutsideThePictureGivesNone()
    {
        const QImage frozen = colourfulPicture({30, 30});
        QVERIFY(!Pixelation::of(frozen, {30, 0, 10, 10}, 9));
        QVERIFY(!Pixelation::of(frozen, {-20, -20, 20, 20}, 9));
        QVERIFY(!Pixelation::of(QImage(), {0, 0, 10, 10}, 9));
    }

    void cellsAreNinePointsButAtLeastSixPixels()
    {
        QCOMPARE(Pixelation::cellPixels({1, 1}), 9.0);
        QCOMPARE(Pixelation::cellPixels({1.25, 1.25}), 11.25);
        QCOMPARE(Pixelation::cellPixels({2, 1}), 18.0);
        QCOMPARE(Pixelation::cellPixels({0.5, 0.5}), 6.0);
    }

    void everyFormatGivesTheSameCells_data()
    {
        QTest::addColumn<int>("format");
        QTest::newRow("ARGB32") << int(QImage::Format_ARGB32);
        QTest::newRow("premultiplied") << int(QImage::Format_ARGB32_Premultiplied);
        QTest::newRow("RGBX8888") << int(QImage::Format_RGBX8888);
        QTest::newRow("RGB888") << int(QImage::Format_RGB888);
        QTest::newRow("BGR30") << int(QImage::Format_BGR30);
    }
    void everyFormatGivesTheSameCells()
    {
        QFETCH(int, format);
        const QImage frozen = colourfulPicture({40, 40});
        const auto plain = Pixelation::of(frozen, {3, 4, 30, 30}, 9);
        const auto other = Pixelation::of(
            frozen.convertToFormat(static_cast<QImage::Format>(format)), {3, 4, 30, 30}, 9);
        QVERIFY(plain && other);
        QCOMPARE(other->cells().convertToFormat(QImage::Format_RGB32), plain->cells());
    }

    void onlyPixelsWhoseCentreLiesInTheTargetAreDrawn()
    {
        const auto patch = Pixelation::of(colourfulPicture({30, 30}), {0, 0, 20, 20}, 9);
        QVERIFY(patch);
        const QImage drawn = drawnPatch(*patch, {40, 40}, {5.4, 6.6, 20, 20});
        const QRect covered(5, 7, 20, 20);
        for (int y = 0; y < 40; ++y) {
            for (int x = 0; x < 40; ++x)
                QCOMPARE(drawn.pixel(x, y) != qRgb(255, 0, 255), covered.contains(x, y));
        }
    }

    void stretchedPatchShowsNothingButItsCells()
    {
        const auto patch = Pixelation::of(colourfulPicture({30, 30}), {0, 0, 18, 18}, 9);
        QVERIFY(patch);
        const QImage drawn = drawnPatch(*patch, {50, 50}, {0, 0, 50, 30});
        for (int y = 0; y < 30; ++y) {
            for (int x = 0; x < 50; ++x)
                QCOMPARE(drawn.pixel(x, y), patch->cells().pixel(x / 25, y / 15));
        }
        QCOMPARE(drawn.pixel(10, 30), qRgb(255, 0, 255));
    }

    /// Three cells of 11.25 pixels hold the centres of 34, but are a quarter of a pixel shorter.
    void theLastCellsGoOnToTheEndOfTheTarget()
    {
        const auto patch = Pixelation::of(colourfulPicture({34, 34}), {0, 0, 34, 34}, 11.25);
        QVERIFY(patch);
        QCOMPARE(patch->cells().size(), QSize(3, 3));
        const QImage drawn = drawnPatch(*patch, {40, 40}, {0.4, 0.4, 33.2, 33.2});
        const QRect covered(0, 0, 34, 34);
        for (int y = 0; y < 40; ++y) {
            for (int x = 0; x < 40; ++x)
                QCOMPARE(drawn.pixel(x, y) != qRgb(255, 0, 255), covered.contains(x, y));
        }
    }

    void drawingStaysInsideThePaintersClip()
    {
        const auto patch = Pixelation::of(colourfulPicture({30, 30}), {0, 0, 30, 30}, 9);
        QVERIFY(patch);
        QImage picture(30, 30, QImage::Format_RGB32);
        picture.fill(Qt::magenta);
        QPainter painter(&picture);
        painter.setClipRect(10, 11, 7, 8);
        patch->draw(painter, {0, 0, 30, 30});
        painter.end();
        for (int y = 0; y < 30; ++y) {
            for (int x = 0; x < 30; ++x)
                QCOMPARE(picture.pixel(x, y) != qRgb(255, 0, 255),
                         QRect(10, 11, 7, 8).contains(x, y));
        }
    }
};

BRINDLECAM_TEST(TestPixelation);

} // namespace brindlecam

#include "tst_pixelation.moc"
