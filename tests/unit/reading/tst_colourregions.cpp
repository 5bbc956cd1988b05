// Covers Backgrounds.
#include "reading/Backgrounds.h"
#include "reading/ColourRegions.h"
#include "support/TestCase.h"

#include <QPainter>

#include <algorithm>

namespace brindlecam {

namespace {

QImage plainSheet(QSize size, QRgb colour)
{
    QImage sheet(size, QImage::Format_RGB32);
    sheet.fill(colour);
    return sheet;
}

void fillIn(QImage& picture, const QRect& place, QRgb colour)
{
    QPainter(&picture).fillRect(place, QColor::fromRgb(colour));
}

constexpr QRgb kSheet = 0xffffffff;
constexpr QRgb kInkColour = 0xff202020;

} // namespace

class TestColourRegions final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aGradientIsOneRegion()
    {
        QImage picture(64, 8, QImage::Format_RGB32);
        for (int x = 0; x < picture.width(); ++x) {
            for (int y = 0; y < picture.height(); ++y)
                picture.setPixel(x, y, qRgb(x * 4, 255 - x * 4, 100));
        }
        const ColourRegions regions(picture);
        QCOMPARE(regions.regions().size(), std::size_t(1));
        QCOMPARE(regions.regions()[0].area, 64 * 8);
        QCOMPARE(regions.regions()[0].box, picture.rect());
        QCOMPARE(regions.regions()[0].square, 8);
        QCOMPARE(regions.regions()[0].contact, 2 * 64 + 2 * 6);
    }

    void aStepOfFiveInOneChannelDivides()
    {
        QImage picture = plainSheet({20, 10}, qRgb(100, 100, 100));
        fillIn(picture, {10, 0, 10, 10}, qRgb(100, 105, 100));
        QCOMPARE(ColourRegions(picture).regions().size(), std::size_t(2));
        fillIn(picture, {10, 0, 10, 10}, qRgb(104, 104, 96));
        QCOMPARE(ColourRegions(picture).regions().size(), std::size_t(1));
    }

    void branchesThatMeetLaterAreOneRegion()
    {
        QImage picture = plainSheet({30, 30}, kSheet);
        fillIn(picture, {9, 0, 3, 29}, kInkColour);
        fillIn(picture, {19, 0, 3, 29}, kInkColour);
        const ColourRegions regions(picture);
        // The three parts of the sheet hang together by the last row; both bars are regions too.
        QCOMPARE(regions.regions().size(), std::size_t(3));
        QCOMPARE(regions.labels().front(), regions.labels().back());
        QCOMPARE(regions.regions()[regions.labels().front()].area, 900 - 2 * 87);
    }

    void whatIsTooSmallBelongsToNoRegion()
    {
        QImage picture = plainSheet({30, 30}, kSheet);
        fillIn(picture, {5, 5, 6, 8}, kInkColour);
        const ColourRegions regions(picture);
        QCOMPARE(regions.regions().size(), std::size_t(1));
        QCOMPARE(regions.labels()[6 * 30 + 6], ColourRegions::kNone);
    }

    void theLargestOfOnlySmallRegionsIsKept()
    {
        QImage picture = plainSheet({5, 5}, kSheet);
        fillIn(picture, {0, 0, 2, 2}, kInkColour);
        const ColourRegions regions(picture);
        QCOMPARE(regions.regions().size(), std::size_t(1));
        QCOMPARE(regions.regions()[0].area, 21);
        QCOMPARE(Backgrounds::among(regions, picture.size()), std::vector<bool>{true});
    }

    void holesAreWhatTheOutlineEncloses()
    {
        QImage picture = plainSheet({40, 40}, kSheet);
        fillIn(picture, {5, 5, 30, 20}, kInkColour);
        fillIn(picture, {10, 10, 4, 3}, kSheet);
        fillIn(picture, {20, 12, 5, 2}, qRgb(255, 0, 0));
        fillIn(picture, {5, 5, 3, 3}, kSheet); // a notch is no hole
        const ColourRegions regions(picture);
        QCOMPARE(regions.holes(regions.labels()[6 * 40 + 20]), 4 * 3 + 5 * 2);
        QCOMPARE(regions.holes(regions.labels()[0]), 30 * 20 - 9);
    }

    void backgroundsAreToldFromLetters_data()
    {
        QTest::addColumn<QRect>("place");
        QTest::addColumn<QRect>("hole");
        QTest::addColumn<bool>("background");

        const QRect noHole;
        QTest::newRow("a button with text on it")
            << QRect(50, 50, 60, 20) << QRect(60, 55, 20, 6) << true;
        QTest::newRow("a bar with nothing on it") << QRect(50, 50, 60, 20) << noHole << false;
        QTest::newRow("a button too low for text")
            << QRect(50, 50, 60, 12) << QRect(60, 54, 20, 3) << false;
        QTest::newRow("a band along the edge") << QRect(0, 0, 200, 12) << noHole << true;
        QTest::newRow("a cut-off letter at the edge") << QRect(50, 0, 12, 30) << noHole << false;
        // A ring as thick as the stroke of a heading.
        QTest::newRow("the letter O of a heading")
            << QRect(50, 50, 80, 90) << QRect(62, 62, 56, 66) << false;
    }
    void backgroundsAreToldFromLetters()
    {
        QFETCH(QRect, place);
        QFETCH(QRect, hole);
        QFETCH(bool, background);
        QImage picture = plainSheet({200, 200}, kSheet);
        fillIn(picture, place, kInkColour);
        if (!hole.isEmpty())
            fillIn(picture, hole, qRgb(240, 240, 200));
        const ColourRegions regions(picture);
        const int region = regions.labels()[place.top() * 200 + place.left()];
        QVERIFY(region != ColourRegions::kNone);
        const std::vector<bool> chosen = Backgrounds::among(regions, picture.size());
        QVERIFY(chosen[regions.labels()[199 * 200 + 199]]);
        QCOMPARE(bool(chosen[region]), background);
    }
};

BRINDLECAM_TEST(TestColourRegions);

} // namespace brindlecam

#include "tst_colourregions.moc"
