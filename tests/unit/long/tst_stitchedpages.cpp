#include "PixelRows.h"
#include "long/Stitcher.h"
#include "support/TestCase.h"

namespace brindlecam {

namespace {

using test::begun;
using test::FramedPage;
using test::pictureOf;
using test::PixelRows;
using Step = Stitcher::Step;
using Kind = Stitcher::Step::Kind;

constexpr int kWidth = 160;
constexpr int kHeight = 400;

constexpr Step kStill{Kind::still};
constexpr Step kLost{Kind::lost};
constexpr Step kFull{Kind::full};

Step added(int rows)
{
    return {Kind::added, rows};
}

PixelRows plain(int width, int rows, std::uint32_t colour)
{
    PixelRows made(width);
    for (int row = 0; row < rows; ++row)
        made.appendRow(colour);
    return made;
}

FramedPage textPage(int rows, std::mt19937& random)
{
    return {PixelRows(kWidth), PixelRows::text(kWidth, rows, random), PixelRows(kWidth), kHeight};
}

} // namespace

/// What people scroll through, from frames to the picture.
class TestStitchedPages final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void anyPageIsStitchedAsItIs()
    {
        for (unsigned seed = 0; seed < 60; ++seed) {
            std::mt19937 random(seed);
            const auto upTo = [&random](int most) {
                return static_cast<int>(random() % static_cast<unsigned>(most + 1));
            };
            const int width = 40 + upTo(200);
            const int height = 160 + upTo(300);
            const bool hasText = seed % 2 == 0;
            const int rows = height + 1500;
            const FramedPage page{PixelRows::patches(width, upTo(50), random),
                                  hasText ? PixelRows::text(width, rows, random)
                                          : PixelRows::patches(width, rows, random),
                                  PixelRows::patches(width, upTo(40), random), height};
            const auto stitcher = begun(page.frame(0));
            int offset = 0;
            while (offset < 1200) {
                const int step = upTo(page.viewRows() / 2);
                offset += step;
                QCOMPARE(stitcher->add(page.frame(offset).bytes()),
                         step == 0 ? kStill : added(step));
            }
            QVERIFY2(pictureOf(*stitcher) == page.stitched(offset).opaque(),
                     qPrintable(QString::number(seed)));
        }
    }

    void twentyThousandRowsAreStitched()
    {
        std::mt19937 random(20);
        FramedPage page = textPage(20500, random);
        page.footer = PixelRows::patches(kWidth, 17, random);
        const auto stitcher = begun(page.frame(0));
        int offset = 0;
        Step step;
        do {
            offset += 91;
            step = stitcher->add(page.frame(offset).bytes());
        } while (step == added(91));
        QCOMPARE(step, kFull);
        QCOMPARE(stitcher->rows(), 20000);
        const int footer = stitcher->footerRows().value();
        QVERIFY(footer >= 17);
        // Blank rows above the footer count to it in the first displacement: all the same the body
        // is the page, and the rest is the last frame's.
        const PixelRows picture = pictureOf(*stitcher);
        QCOMPARE(picture.rows(), 20000 + footer);
        QVERIFY(picture.cut(0, 20000) == page.page.cut(0, 20000).opaque());
        QVERIFY(picture.cut(20000, footer) ==
                page.frame(offset).cut(kHeight - footer, footer).opaque());
    }

    void scrollingUpIsLostAndScrollingOnIsNot()
    {
        std::mt19937 random(21);
        const FramedPage page = textPage(1500, random);
        const auto stitcher = begun(page.frame(300));
        QCOMPARE(stitcher->add(page.frame(380).bytes()), added(80));
        for (const int offset : {340, 290, 0, 375})
            QCOMPARE(stitcher->add(page.frame(offset).bytes()), kLost);
        QCOMPARE(stitcher->add(page.frame(380).bytes()), kStill);
        QCOMPARE(stitcher->add(page.frame(500).bytes()), added(120));
        const PixelRows seen = page.stitched(500);
        QVERIFY(pictureOf(*stitcher) == seen.cut(300, seen.rows() - 300).opaque());
    }

    void caretThatBlinksMeanwhileDoesNotMatter()
    {
        std::mt19937 random(22);
        const FramedPage page = textPage(1500, random);
        const PixelRows caret = plain(2, 14, 0);
        int offset = 0;
        const auto stitcher = begun(page.frame(offset));
        for (int step = 0; step < 8; ++step) {
            offset += 55;
            PixelRows frame = page.frame(offset);
            if (step % 2 == 0)
                frame.put(150, 30, caret);
            QCOMPARE(stitcher->add(frame.bytes()), added(55));
        }
        // It stands where no new rows come from.
        QVERIFY(pictureOf(*stitcher) == page.stitched(offset).opaque());
    }

    void faintHeaderAndFooterThatAppearLaterAreStitchedOver()
    {
        std::mt19937 random(23);
        const FramedPage page = textPage(1500, random);
        const auto shaded = [&page](int offset) {
            test::Bytes bytes = page.frame(offset).bytes();
            const auto rowBytes = static_cast<std::size_t>(kWidth) * 4;
            const auto shade = [&](std::size_t first, std::size_t count) {
                for (std::size_t i = first * rowBytes; i < (first + count) * rowBytes; ++i)
                    bytes[i] = static_cast<std::uint8_t>(bytes[i] * 31 / 32);
            };
            shade(0, 30);
            shade(kHeight - 20, 20);
            return PixelRows(kWidth, bytes);
        };
        const auto stitcher = begun(page.frame(0));
        QCOMPARE(stitcher->add(shaded(60).bytes()), added(60));
        const int footer = stitcher->footerRows().value();
        QCOMPARE(stitcher->add(shaded(120).bytes()), added(60));
        QCOMPARE(stitcher->footerRows(), std::optional(footer)); // decided once
        QCOMPARE(stitcher->pictureRows(), kHeight + 120);
        const PixelRows picture = pictureOf(*stitcher);
        QVERIFY(picture.cut(0, 300) == page.page.cut(0, 300).opaque());
        for (const int first : {kHeight, kHeight + 60}) // what came into view above the footer
            QVERIFY(picture.cut(first, 40) == page.page.cut(first, 40).opaque());
    }

    void strongHeaderThatAppearsLaterIsLost()
    {
        std::mt19937 random(24);
        FramedPage page = textPage(1500, random);
        const auto stitcher = begun(page.frame(0));
        const PixelRows header = PixelRows::patches(kWidth, 40, random);
        PixelRows frame = page.frame(60);
        frame.put(0, 0, header);
        QCOMPARE(stitcher->add(frame.bytes()), kLost);
        QCOMPARE(stitcher->rows(), kHeight);
        QVERIFY(!stitcher->footerRows());
        QCOMPARE(stitcher->add(page.frame(60).bytes()), added(60));
    }

    void ofTwoColumnsOneMayStandStill()
    {
        std::mt19937 random(25);
        const FramedPage left{PixelRows(80), PixelRows::text(80, 1500, random), PixelRows(80),
                              kHeight};
        const PixelRows right = plain(80, kHeight, 0x00d0e0f0);
        const auto frame = [&](int offset) {
            PixelRows made = plain(kWidth, kHeight, 0);
            made.put(0, 0, left.frame(offset));
            made.put(0, 80, right);
            return made;
        };
        const auto stitcher = begun(frame(0));
        QCOMPARE(stitcher->add(frame(70).bytes()), added(70));
        QCOMPARE(stitcher->add(frame(170).bytes()), added(100));
        PixelRows expected = plain(kWidth, kHeight + 170, 0);
        expected.put(0, 0, left.stitched(170));
        expected.put(0, 80, plain(80, kHeight + 170, 0x00d0e0f0));
        QVERIFY(pictureOf(*stitcher) == expected.opaque());
    }

    void columnsThatPartAreLost()
    {
        std::mt19937 random(26);
        const PixelRows page = PixelRows::patches(kWidth, 1500, random);
        PixelRows frame = page.cut(50, kHeight);
        PixelRows other(80);
        for (int row = 0; row < kHeight; ++row) {
            const PixelRows whole = page.cut(row + 120, 1);
            other.append(PixelRows(80, {whole.bytes().begin(), whole.bytes().begin() + 320}));
        }
        frame.put(0, 0, other);
        const auto stitcher = begun(page.cut(0, kHeight));
        QCOMPARE(stitcher->add(frame.bytes()), kLost);
        QCOMPARE(stitcher->add(page.cut(50, kHeight).bytes()), added(50));
    }

    void pageOfOneColourIsStill()
    {
        const PixelRows grey = plain(kWidth, kHeight, 0x00808080);
        const auto stitcher = begun(grey);
        QCOMPARE(stitcher->add(grey.bytes()), kStill);
        QCOMPARE(stitcher->add(plain(kWidth, kHeight, 0x00828282).bytes()), kStill);
        // Another colour is not the same page scrolled.
        QCOMPARE(stitcher->add(plain(kWidth, kHeight, 0x00c0c0c0).bytes()), kLost);
        QVERIFY(pictureOf(*stitcher) == grey.opaque());
    }

    void movementToTheSideIsLost()
    {
        std::mt19937 random(27);
        const PixelRows page = PixelRows::patches(3 * kWidth, kHeight, random);
        const auto frame = [&page](int column) {
            PixelRows made(kWidth);
            for (int row = 0; row < kHeight; ++row) {
                const auto first = page.bytes().begin() + (row * 3 * kWidth + column) * 4;
                made.append(PixelRows(kWidth, {first, first + kWidth * 4}));
            }
            return made;
        };
        const auto stitcher = begun(frame(0));
        for (const int column : {20, 100, 300})
            QCOMPARE(stitcher->add(frame(column).bytes()), kLost);
        QVERIFY(pictureOf(*stitcher) == frame(0).opaque());
    }
};

BRINDLECAM_TEST(TestStitchedPages);

} // namespace brindlecam

#include "tst_stitchedpages.moc"
