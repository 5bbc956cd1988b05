#include "long/DisplacementSearch.h"
#include "long/RowSignature.h"
#include "support/TestCase.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace brindlecam {

namespace {

using Outcome = Displacement::Outcome;
using DisplacementSearch::Kernel;

constexpr int kBins = RowSignature::kBytes;

/// The signatures of a frame, or of a whole page to cut frames from.
class Signatures final {
public:
    explicit Signatures(int rows)
        : m_bytes(static_cast<std::size_t>(rows) * kBins)
    {
    }

    static Signatures noise(int rows, std::mt19937& random)
    {
        Signatures made(rows);
        for (std::uint8_t& byte : made.m_bytes)
            byte = static_cast<std::uint8_t>(random() % 200);
        return made;
    }

    [[nodiscard]] int rows() const { return static_cast<int>(m_bytes.size()) / kBins; }
    [[nodiscard]] std::uint8_t& at(int row, int bin)
    {
        return m_bytes[static_cast<std::size_t>(row * kBins + bin)];
    }
    [[nodiscard]] const std::uint8_t* data() const { return m_bytes.data(); }
    [[nodiscard]] int at(int row, int bin) const
    {
        return m_bytes[static_cast<std::size_t>(row * kBins + bin)];
    }

    [[nodiscard]] Signatures cut(int from, int count) const
    {
        Signatures part(count);
        std::copy_n(m_bytes.begin() + from * kBins, count * kBins, part.m_bytes.begin());
        return part;
    }

    void put(int row, const Signatures& other)
    {
        std::ranges::copy(other.m_bytes, m_bytes.begin() + row * kBins);
    }

private:
    std::vector<std::uint8_t> m_bytes;
};

int difference(const Signatures& a, int rowA, const Signatures& b, int rowB)
{
    int sum = 0;
    for (int bin = 0; bin < 15; ++bin)
        sum += std::abs(a.at(rowA, bin) - b.at(rowB, bin));
    return sum;
}

/// The search as it is defined: a sum of reals, held against the budget after each row.
Displacement reference(const Signatures& before, const Signatures& now)
{
    const int height = before.rows();
    Displacement result;
    while (result.top < height && difference(before, result.top, now, result.top) <= 59)
        ++result.top;
    if (result.top == height)
        return {};
    while (difference(before, height - 1 - result.bottom, now, height - 1 - result.bottom) <= 59)
        ++result.bottom;
    result.region = height - result.bottom - result.top;
    const int margin = result.region >= 192 ? result.region / 8 : 24;
    if (margin + 1 >= result.region) {
        result.outcome = Outcome::tooSmall;
        return result;
    }
    double best = std::numeric_limits<double>::max();
    for (int d = 1; d <= result.region - margin; ++d) {
        const int count = (height - result.bottom - d - result.top + 1) / 2;
        const double budget = std::min(best, 1.6) * (15 * count);
        double total = 0;
        for (int y = result.top; y < height - result.bottom - d && total <= budget; y += 2)
            total += difference(before, y + d, now, y);
        if (total <= budget && total / (15 * count) < best) {
            best = total / (15 * count);
            result.rows = d;
        }
    }
    result.outcome = result.rows < 1 ? Outcome::unknown : Outcome::found;
    result.cost = result.rows < 1 ? 0 : best;
    return result;
}

Displacement find(const Signatures& before, const Signatures& now, Kernel kernel = Kernel::vector)
{
    return DisplacementSearch::find(before.data(), now.data(), before.rows(), kernel);
}

} // namespace

class TestDisplacementSearch final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void bothKernelsFindWhatTheDefinitionDoes()
    {
        std::mt19937 random(11);
        int found = 0;
        int unknown = 0;
        for (int round = 0; round < 400; ++round) {
            const int height = 30 + static_cast<int>(random() % 400);
            // Pages that repeat themselves, that are nearly flat, and that are neither.
            Signatures page = Signatures::noise(2 * height, random);
            const int period = 5 + static_cast<int>(random() % 80);
            const unsigned depth = round % 3 == 1 ? 10 : 200;
            for (int row = 0; row < page.rows(); ++row) {
                for (int bin = 0; bin < kBins; ++bin)
                    page.at(row, bin) = static_cast<std::uint8_t>(round % 3 == 0 && row >= period
                                                                      ? page.at(row - period, bin)
                                                                      : page.at(row, bin) % depth);
            }
            Signatures before = page.cut(0, height);
            Signatures now =
                page.cut(static_cast<int>(random() % static_cast<unsigned>(height)), height);
            const unsigned noise = random() % 4;
            for (int row = 0; row < height && noise > 0; ++row) {
                for (int bin = 0; bin < kBins; ++bin)
                    now.at(row, bin) =
                        static_cast<std::uint8_t>(now.at(row, bin) + random() % noise);
            }
            const int fixed = static_cast<int>(random() % 20);
            now.put(0, before.cut(0, fixed));
            now.put(height - fixed / 2, before.cut(height - fixed / 2, fixed / 2));

            const Displacement expected = reference(before, now);
            QCOMPARE(find(before, now, Kernel::plain), expected);
            QCOMPARE(find(before, now, Kernel::vector), expected);
            found += expected.outcome == Outcome::found;
            unknown += expected.outcome == Outcome::unknown;
        }
        QVERIFY(found > 50);
        QVERIFY(unknown > 50);
    }

    void rowsThatDifferBy59AreStill()
    {
        Signatures before(100);
        Signatures now(100);
        for (int row = 0; row < 100; ++row)
            now.at(row, row % 15) = 59;
        QCOMPARE(find(before, now), Displacement{});
        now.at(40, 40 % 15) = 60;
        const Displacement moved = find(before, now);
        QCOMPARE(moved.outcome, Outcome::tooSmall);
        QCOMPARE(moved.top, 40);
        QCOMPARE(moved.bottom, 59);
        QCOMPARE(moved.region, 1);
    }

    void lastStretchIsNeverCompared()
    {
        std::mt19937 random(5);
        const Signatures page = Signatures::noise(500, random);
        Signatures before = page.cut(0, 300);
        Signatures now = before;
        for (int row = 0; row < 300; ++row)
            now.at(row, 15) = static_cast<std::uint8_t>(255 - now.at(row, 15));
        QCOMPARE(find(before, now), Displacement{});

        now = page.cut(37, 300);
        for (int row = 0; row < 300; ++row)
            now.at(row, 15) = static_cast<std::uint8_t>(random());
        for (const Kernel kernel : {Kernel::plain, Kernel::vector}) {
            const Displacement moved = find(before, now, kernel);
            QCOMPARE(moved.outcome, Outcome::found);
            QCOMPARE(moved.rows, 37);
            QCOMPARE(moved.cost, 0.0);
        }
    }

    void regionOf25RowsIsTooSmall_data()
    {
        QTest::addColumn<int>("region");
        QTest::addColumn<Outcome>("outcome");
        QTest::newRow("1") << 1 << Outcome::tooSmall;
        QTest::newRow("25") << 25 << Outcome::tooSmall;
        QTest::newRow("26") << 26 << Outcome::found;
    }
    void regionOf25RowsIsTooSmall()
    {
        QFETCH(const int, region);
        std::mt19937 random(6);
        const Signatures page = Signatures::noise(region + 2, random);
        Signatures before = Signatures::noise(200, random);
        Signatures now = before;
        before.put(70, page.cut(0, region));
        now.put(70, page.cut(2, region));
        const Displacement moved = find(before, now);
        QTEST(moved.outcome, "outcome");
        QCOMPARE(moved.top, 70);
        QCOMPARE(moved.bottom, 130 - region);
        QCOMPARE(moved.region, region);
        QCOMPARE(moved.rows, moved.outcome == Outcome::found ? 2 : 0);
    }

    void farthestDisplacementLeavesTheMargin_data()
    {
        QTest::addColumn<int>("height");
        QTest::addColumn<int>("farthest");
        QTest::newRow("26") << 26 << 2;
        QTest::newRow("191") << 191 << 167;
        QTest::newRow("192") << 192 << 168;
        QTest::newRow("200") << 200 << 175;
        QTest::newRow("1000") << 1000 << 875;
    }
    void farthestDisplacementLeavesTheMargin()
    {
        QFETCH(const int, height);
        QFETCH(const int, farthest);
        std::mt19937 random(7);
        const Signatures page = Signatures::noise(2 * height, random);
        const Signatures before = page.cut(0, height);
        for (const int rows : {1, farthest})
            QCOMPARE(find(before, page.cut(rows, height)).rows, rows);
        QCOMPARE(find(before, page.cut(farthest + 1, height)).outcome, Outcome::unknown);
    }

    void meanCostOf16TenthsIsCredible()
    {
        // 15 stretches with 24 of difference between them.
        std::mt19937 random(8);
        const Signatures page = Signatures::noise(400, random);
        const Signatures before = page.cut(0, 300);
        Signatures now = page.cut(50, 300);
        for (int row = 0; row < 300; ++row) {
            for (int bin = 0; bin < 12; ++bin)
                now.at(row, bin) = static_cast<std::uint8_t>(now.at(row, bin) + 2);
        }
        for (const Kernel kernel : {Kernel::plain, Kernel::vector}) {
            const Displacement moved = find(before, now, kernel);
            QCOMPARE(moved.rows, 50);
            QCOMPARE(moved.cost, 1.6);
        }
        now.at(100, 13) = static_cast<std::uint8_t>(now.at(100, 13) + 1);
        for (const Kernel kernel : {Kernel::plain, Kernel::vector})
            QCOMPARE(find(before, now, kernel).outcome, Outcome::unknown);
    }

    void ofEqualCostsTheSmallerDisplacementIsTaken_data()
    {
        QTest::addColumn<int>("lift"); // of every row, so that no displacement is free
        QTest::newRow("free") << 0;
        QTest::newRow("not free") << 1;
    }
    void ofEqualCostsTheSmallerDisplacementIsTaken()
    {
        QFETCH(const int, lift);
        constexpr int kPeriod = 31;
        std::mt19937 random(9);
        const Signatures pattern = Signatures::noise(kPeriod, random);
        Signatures page(kPeriod * 20);
        for (int row = 0; row < page.rows(); row += kPeriod)
            page.put(row, pattern);
        const Signatures before = page.cut(0, 400);
        Signatures now = page.cut(12, 400);
        for (int row = 0; row < 400; ++row)
            now.at(row, 3) = static_cast<std::uint8_t>(now.at(row, 3) + lift);
        for (const Kernel kernel : {Kernel::plain, Kernel::vector}) {
            const Displacement moved = find(before, now, kernel);
            QCOMPARE(moved.rows, 12); // as are 43, 74, 105 …
            QCOMPARE(moved.cost, lift / 15.0);
        }
    }

    void everySecondRowIsCompared()
    {
        std::mt19937 random(10);
        const Signatures page = Signatures::noise(400, random);
        const Signatures before = page.cut(0, 300);
        Signatures now = page.cut(60, 300);
        for (int row = 1; row < 240; row += 2)
            now.at(row, 4) = static_cast<std::uint8_t>(now.at(row, 4) + 50);
        QCOMPARE(find(before, now).rows, 60);
        QCOMPARE(find(before, now).cost, 0.0);
        now.at(100, 4) = static_cast<std::uint8_t>(now.at(100, 4) + 50);
        QCOMPARE(find(before, now).cost, 50.0 / (15 * 120));
    }
};

BRINDLECAM_TEST(TestDisplacementSearch);

} // namespace brindlecam

#include "tst_displacementsearch.moc"
