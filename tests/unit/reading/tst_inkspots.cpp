// Covers Icons, Lanczos, SpotScale.
#include "reading/Icons.h"
#include "reading/InkSpots.h"
#include "reading/Lanczos.h"
#include "reading/SpotScale.h"
#include "support/TestCase.h"

#include <algorithm>
#include <cmath>

namespace brindlecam {

namespace {

QImage whiteGrey(QSize size)
{
    QImage grey(size, QImage::Format_Grayscale8);
    grey.fill(255);
    return grey;
}

void blacken(QImage& grey, const QRect& place)
{
    for (int y = place.top(); y <= place.bottom(); ++y)
        std::fill_n(grey.scanLine(y) + place.left(), place.width(), uchar(0));
}

std::vector<QRect> spotsOfHeight(int height, int count)
{
    return std::vector<QRect>(count, QRect(0, 0, 5, height));
}

/// Small letters, sixteen high, as they follow an icon in a row.
std::vector<QRect> lettersFrom(int left)
{
    constexpr int kLetters = 8;
    std::vector<QRect> letters;
    letters.reserve(kLetters + 2);
    for (int i = 0; i < kLetters; ++i)
        letters.emplace_back(left + i * 14, 20, 11, 16);
    return letters;
}

} // namespace

class TestInkSpots final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void spotsAreConnectedInkCornersIncluded()
    {
        QImage grey = whiteGrey({40, 20});
        blacken(grey, {2, 2, 3, 3});
        blacken(grey, {5, 5, 3, 3}); // touches the first by a corner
        blacken(grey, {20, 2, 2, 10});
        blacken(grey, {26, 2, 2, 10});
        blacken(grey, {20, 12, 8, 2}); // makes one of two that began apart
        grey.scanLine(1)[35] = InkSpots::kInk;
        grey.scanLine(1)[37] = InkSpots::kInk + 1;
        const std::vector<QRect> boxes = InkSpots::boxes(grey);
        const std::vector<QRect> expected{QRect(35, 1, 1, 1), QRect(2, 2, 6, 6),
                                          QRect(20, 2, 8, 12)};
        QCOMPARE(boxes, expected);
    }

    void theFactorMakesTheMedianSpotSixteenHigh_data()
    {
        QTest::addColumn<int>("height");
        QTest::addColumn<double>("factor");
        QTest::newRow("tiny letters get the most") << 5 << 2.5;
        QTest::newRow("eight pixels are doubled") << 8 << 2.0;
        QTest::newRow("ten pixels") << 10 << 1.6;
        QTest::newRow("a little is not worth it") << 13 << 1.0;
        QTest::newRow("large letters stay") << 60 << 1.0;
    }
    void theFactorMakesTheMedianSpotSixteenHigh()
    {
        QFETCH(int, height);
        QFETCH(double, factor);
        QCOMPARE(SpotScale::factor(spotsOfHeight(height, 9), {300, 100}), factor);
    }

    void tooFewSpotsGetTheMost()
    {
        QCOMPARE(SpotScale::factor(spotsOfHeight(30, 2), {90, 90}), 2.5);
    }

    void anEnormousPictureIsEnlargedLess()
    {
        const double factor = SpotScale::factor(spotsOfHeight(6, 50), {5760, 3600});
        QVERIFY(factor > 1.3 && factor * factor * 5760 * 3600 < 64.1e6);
        QCOMPARE(SpotScale::factor(spotsOfHeight(6, 50), {30000, 100}), 1.0);
    }

    void enlargingKeepsFlatAreasAndThePlacesOfEdges()
    {
        QImage grey = whiteGrey({20, 10});
        blacken(grey, {10, 0, 10, 10});
        const QImage large = enlarged(grey, 2.5);
        QCOMPARE(large.size(), QSize(50, 25));
        for (const int y : {0, 12, 24}) {
            QCOMPARE(int(large.constScanLine(y)[2]), 255);
            QCOMPARE(int(large.constScanLine(y)[47]), 0);
            QVERIFY(large.constScanLine(y)[23] > 128 && large.constScanLine(y)[26] < 128);
        }
    }

    void enlargingFollowsTheLanczosKernel()
    {
        // A lone dark pixel spreads as the kernel does.
        QImage grey = whiteGrey({21, 1});
        grey.scanLine(0)[10] = 55;
        const QImage large = enlarged(grey, 3);
        const auto kernel = [](double x) {
            const double angle = std::acos(-1.0) * x;
            return x == 0 ? 1 : 3 * std::sin(angle) * std::sin(angle / 3) / (angle * angle);
        };
        for (const int offset : {-4, -1, 0, 1, 4}) {
            const double wanted = std::min(255.0, 255 - 200 * kernel(offset / 3.0));
            QVERIFY(std::abs(large.constScanLine(1)[31 + offset] - wanted) < 3);
        }
    }

    void aFactorOfOneChangesNothing()
    {
        QImage grey = whiteGrey({7, 5});
        blacken(grey, {2, 1, 3, 3});
        QCOMPARE(enlarged(grey, 1), grey);
    }

    void iconsAreToldFromLetters_data()
    {
        QTest::addColumn<QRect>("spot");
        QTest::addColumn<int>("textFrom");
        QTest::addColumn<int>("certain");
        QTest::addColumn<int>("possible");

        QTest::newRow("large and apart") << QRect(10, 14, 30, 30) << 60 << 1 << 0;
        QTest::newRow("a little larger than a capital") << QRect(10, 16, 25, 24) << 60 << 0 << 1;
        QTest::newRow("a capital letter") << QRect(10, 14, 18, 22) << 34 << 0 << 0;
        QTest::newRow("right before the text") << QRect(10, 14, 30, 30) << 44 << 0 << 0;
        QTest::newRow("far from the text") << QRect(10, 14, 30, 30) << 300 << 0 << 0;
        QTest::newRow("too narrow") << QRect(10, 10, 14, 40) << 60 << 0 << 0;
        QTest::newRow("a picture, not an icon") << QRect(10, 0, 110, 110) << 140 << 0 << 0;
    }
    void iconsAreToldFromLetters()
    {
        QFETCH(QRect, spot);
        QFETCH(int, textFrom);
        QFETCH(int, certain);
        QFETCH(int, possible);
        std::vector<QRect> spots = lettersFrom(textFrom);
        spots.push_back(spot);
        const Icons::Found found = Icons::among(spots, 2);
        QCOMPARE(int(found.certain.size()), certain);
        QCOMPARE(int(found.possible.size()), possible);
    }

    void aSpotAloneIsNoIcon() { QVERIFY(Icons::among({QRect(10, 10, 30, 30)}, 2).certain.empty()); }

    void thePartsOfAnIconAreErasedTogether()
    {
        std::vector<QRect> spots = lettersFrom(60);
        spots.emplace_back(18, 10, 14, 14); // a head
        spots.emplace_back(10, 26, 30, 14); // and its shoulders
        const Icons::Found found = Icons::among(spots, 2);
        QCOMPARE(found.certain, std::vector<QRect>{QRect(10, 10, 30, 30)});

        QImage grey = whiteGrey({200, 60});
        for (const QRect& spot : spots)
            blacken(grey, spot);
        Icons::erase(grey, found.certain);
        QCOMPARE(InkSpots::boxes(grey).size(), std::size_t(8));
    }
};

BRINDLECAM_TEST(TestInkSpots);

} // namespace brindlecam

#include "tst_inkspots.moc"
