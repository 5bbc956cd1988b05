// Covers BackgroundMap, NearestBackground, SlidingMaximum.
#include "reading/Flatten.h"
#include "reading/NearestBackground.h"
#include "reading/SlidingMaximum.h"
#include "support/TestCase.h"

#include <QPainter>

#include <algorithm>

namespace brindlecam {

namespace {

constexpr int kBlackInk = 0;
constexpr int kCleanPaper = 255;

/// A picture of one colour with bars in it.
struct BarPicture {
    QImage picture;

    BarPicture(QSize size, QRgb colour)
        : picture(size, QImage::Format_RGB32)
    {
        picture.fill(colour);
    }
    BarPicture& bar(const QRect& place, QRgb colour)
    {
        QPainter(&picture).fillRect(place, QColor::fromRgb(colour));
        return *this;
    }
};

int greyAt(const Flattened& flat, int x, int y)
{
    return qGray(flat.grey.pixel(x, y));
}

} // namespace

class TestFlatten final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void textBecomesBlackOnWhiteWhateverItsColours_data()
    {
        QTest::addColumn<QRgb>("paper");
        QTest::addColumn<QRgb>("ink");
        QTest::newRow("black on white") << qRgb(255, 255, 255) << qRgb(0, 0, 0);
        QTest::newRow("light on dark") << qRgb(20, 20, 30) << qRgb(220, 220, 220);
        QTest::newRow("pale on white") << qRgb(255, 255, 255) << qRgb(176, 176, 176);
        QTest::newRow("only the blue differs") << qRgb(120, 120, 20) << qRgb(120, 120, 200);
    }
    void textBecomesBlackOnWhiteWhateverItsColours()
    {
        QFETCH(QRgb, paper);
        QFETCH(QRgb, ink);
        const Flattened flat =
            flatten(BarPicture({60, 30}, paper).bar({20, 10, 3, 9}, ink).picture);
        QCOMPARE(flat.grey.size(), QSize(60, 30));
        QCOMPARE(greyAt(flat, 21, 14), kBlackInk);
        QCOMPARE(greyAt(flat, 5, 5), kCleanPaper);
        QCOMPARE(greyAt(flat, 24, 14), kCleanPaper);
    }

    void aButtonAndThePageAroundItAreBothPaper()
    {
        const Flattened flat = flatten(BarPicture({120, 60}, qRgb(255, 255, 255))
                                           .bar({20, 20, 60, 24}, qRgb(30, 90, 220))
                                           .bar({40, 27, 3, 9}, qRgb(255, 255, 255))
                                           .bar({95, 27, 3, 9}, qRgb(0, 0, 0))
                                           .picture);
        QCOMPARE(greyAt(flat, 41, 30), kBlackInk);   // its letter
        QCOMPARE(greyAt(flat, 96, 30), kBlackInk);   // the page's letter
        QCOMPARE(greyAt(flat, 25, 25), kCleanPaper); // the button
        QCOMPARE(greyAt(flat, 5, 5), kCleanPaper);   // the page
        QVERIFY(flat.backgrounds.at({41, 30}) != flat.backgrounds.at({96, 30}));
        QCOMPARE(flat.backgrounds.at({96, 30}), flat.backgrounds.at({5, 5}));
    }

    void theRimBetweenTwoBackgroundsIsNoInk()
    {
        const Flattened flat = flatten(BarPicture({120, 60}, qRgb(255, 255, 255))
                                           .bar({20, 20, 60, 24}, qRgb(0, 0, 0))
                                           .bar({21, 21, 58, 22}, qRgb(30, 90, 220))
                                           .bar({40, 27, 3, 9}, qRgb(255, 255, 255))
                                           .picture);
        QCOMPARE(greyAt(flat, 20, 30), kCleanPaper);
        QCOMPARE(greyAt(flat, 50, 43), kCleanPaper);
        QCOMPARE(greyAt(flat, 41, 30), kBlackInk);
    }

    void theInsideOfALetterIsPaper()
    {
        const Flattened flat = flatten(BarPicture({60, 40}, qRgb(40, 40, 40))
                                           .bar({20, 10, 12, 16}, qRgb(230, 230, 230))
                                           .bar({23, 13, 6, 10}, qRgb(40, 40, 40))
                                           .picture);
        QCOMPARE(greyAt(flat, 26, 18), kCleanPaper);
        QCOMPARE(greyAt(flat, 21, 18), kBlackInk);
    }

    void noiseStaysWhite()
    {
        const Flattened flat = flatten(BarPicture({60, 30}, qRgb(200, 200, 200))
                                           .bar({20, 10, 2, 2}, qRgb(206, 206, 206))
                                           .picture);
        QVERIFY(greyAt(flat, 20, 10) > 200);
    }

    void faintTextNextToStrongTextIsStrengthened()
    {
        const Flattened flat = flatten(BarPicture({200, 30}, qRgb(255, 255, 255))
                                           .bar({20, 10, 3, 9}, qRgb(0, 0, 0))
                                           .bar({150, 10, 3, 9}, qRgb(155, 155, 155))
                                           .picture);
        QCOMPARE(greyAt(flat, 21, 14), kBlackInk);
        QCOMPARE(greyAt(flat, 151, 14), kBlackInk);
    }

    void noPictureGivesNone() { QVERIFY(flatten(QImage()).grey.isNull()); }

    void aPictureOfOnePixelIsPaper()
    {
        QCOMPARE(greyAt(flatten(BarPicture({1, 1}, qRgb(7, 7, 7)).picture), 0, 0), kCleanPaper);
    }

    void everyPixelTakesTheNearestBackground()
    {
        QImage colours(7, 1, QImage::Format_RGB32);
        colours.fill(qRgb(1, 1, 1));
        colours.setPixel(0, 0, qRgb(10, 0, 0));
        colours.setPixel(6, 0, qRgb(0, 20, 0));
        std::vector<int> labels{0, -1, -1, -1, -1, -1, 1};
        NearestBackground::spread(labels, colours);
        QCOMPARE(labels[2], 0);
        QCOMPARE(labels[4], 1);
        QCOMPARE(colours.pixel(2, 0), qRgb(10, 0, 0));
        QCOMPARE(colours.pixel(5, 0), qRgb(0, 20, 0));
    }

    void theSlidingMaximumIsThatOfEachWindow_data()
    {
        QTest::addColumn<QSize>("size");
        for (const QSize size :
             {QSize(1, 1), QSize(3, 2), QSize(9, 31), QSize(40, 17), QSize(33, 5), QSize(34, 18)})
            QTest::addRow("%d x %d", size.width(), size.height()) << size;
    }
    void theSlidingMaximumIsThatOfEachWindow()
    {
        QFETCH(QSize, size);
        constexpr int kAcross = 5;
        constexpr int kDown = 3;
        QImage values(size, QImage::Format_Grayscale8);
        for (int y = 0; y < size.height(); ++y) {
            for (int x = 0; x < size.width(); ++x)
                values.scanLine(y)[x] = static_cast<uchar>((x * 37 + y * 101 + x * y * 13) % 251);
        }
        const QImage found = slidingMaximum(values, kAcross, kDown);
        for (int y = 0; y < size.height(); ++y) {
            for (int x = 0; x < size.width(); ++x) {
                int most = 0;
                for (int v = std::max(0, y - kDown); v <= std::min(size.height() - 1, y + kDown);
                     ++v)
                    for (int u = std::max(0, x - kAcross);
                         u <= std::min(size.width() - 1, x + kAcross); ++u)
                        most = std::max<int>(most, values.constScanLine(v)[u]);
                QCOMPARE(int(found.constScanLine(y)[x]), most);
            }
        }
    }
};

BRINDLECAM_TEST(TestFlatten);

} // namespace brindlecam

#include "tst_flatten.moc"
