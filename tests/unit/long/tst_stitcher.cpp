#include "PixelRows.h"
#include "long/Stitcher.h"
#include "support/TestCase.h"

#include <QRegularExpression>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <limits>
#include <string>

namespace brindlecam {

namespace {

using test::begun;
using test::Bytes;
using test::FramedPage;
using test::pictureOf;
using test::PixelRows;
using Step = Stitcher::Step;
using Kind = Stitcher::Step::Kind;

constexpr int kWidth = 96;
constexpr int kHeight = 300;

constexpr Step kStill{Kind::still};
constexpr Step kLost{Kind::lost};
constexpr Step kFull{Kind::full};

Step added(int rows)
{
    return {Kind::added, rows};
}

/// Without header and footer unless told.
FramedPage somePage(int rows, int header = 0, int footer = 0, int height = kHeight)
{
    std::mt19937 random(42);
    return {PixelRows::patches(kWidth, header, random), PixelRows::patches(kWidth, rows, random),
            PixelRows::patches(kWidth, footer, random), height};
}

/// The signal that ends whoever does this, 0 when nothing does.
template <typename Deed>
int endedBy(Deed deed)
{
    const pid_t child = ::fork();
    if (child == 0) {
        std::signal(SIGABRT, SIG_DFL);
        const rlimit none{};
        ::setrlimit(RLIMIT_CORE, &none);
        ::close(STDERR_FILENO); // what it complains of is no failure here
        deed();
        ::_exit(0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
}

} // namespace

class TestStitcher final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void nothingIsStitchedBeforeTheFirstFrame()
    {
        const auto stitcher = Stitcher::create(kWidth, kHeight, 20000);
        QVERIFY(stitcher);
        QVERIFY(!stitcher->makeImage());
        QCOMPARE(stitcher->rows(), 0);
        QCOMPARE(stitcher->pictureRows(), 0);
        QVERIFY(!stitcher->footerRows());
        QCOMPARE(stitcher->width(), kWidth);
        QCOMPARE(stitcher->height(), kHeight);
        QCOMPARE(stitcher->maxRows(), 20000);
    }

    void firstFrameIsStillAndThePictureOfItself()
    {
        const PixelRows frame = somePage(kHeight).frame(0);
        const auto stitcher = Stitcher::create(kWidth, kHeight, 20000);
        int lines = 0;
        stitcher->trace = [&lines](const std::string&) { ++lines; };
        QCOMPARE(stitcher->add(frame.bytes()), kStill);
        QCOMPARE(lines, 0);
        QCOMPARE(stitcher->rows(), kHeight);
        QCOMPARE(stitcher->pictureRows(), kHeight);
        QVERIFY(!stitcher->footerRows());
        QCOMPARE(pictureOf(*stitcher), frame.opaque());
    }

    void sameFrameAgainIsStill()
    {
        PixelRows frame = somePage(kHeight).frame(0);
        const auto stitcher = begun(frame);
        std::vector<std::string> lines;
        stitcher->trace = [&lines](const std::string& line) { lines.push_back(line); };
        QCOMPARE(stitcher->add(frame.bytes()), kStill);
        QCOMPARE(lines, std::vector<std::string>{"still"});
        QVERIFY(!stitcher->footerRows());

        // What moves in the rightmost sixteenth, as a scroll bar does, is no change.
        std::mt19937 random(1);
        frame.put(0, kWidth - kWidth / 16, PixelRows::patches(kWidth / 16, kHeight, random));
        QCOMPARE(stitcher->add(frame.bytes()), kStill);
        QCOMPARE(lines.back(), std::string("still"));
        QVERIFY(pictureOf(*stitcher) != frame.opaque());
    }

    void headerAndFooterAreThereOnce()
    {
        FramedPage page = somePage(1000, 40, 30);
        const auto stitcher = begun(page.frame(0));
        std::string line;
        stitcher->trace = [&line](const std::string& text) { line = text; };
        int offset = 0;
        std::mt19937 random(3);
        for (const int rows : {50, 1, 120, 7}) {
            offset += rows;
            // The footer tells the time, in the part that is not compared.
            page.footer.put(0, kWidth - 6, PixelRows::patches(6, 30, random));
            QCOMPARE(stitcher->add(page.frame(offset).bytes()), added(rows));
            QCOMPARE(line, "d=" + std::to_string(rows) + " costo=0.00 top=40 bottom=30");
            QCOMPARE(stitcher->footerRows(), std::optional(30));
            QCOMPARE(stitcher->rows(), kHeight - 30 + offset);
            QCOMPARE(stitcher->pictureRows(), kHeight + offset);
        }
        QCOMPARE(pictureOf(*stitcher), page.stitched(offset).opaque());
    }

    void orderOfRedAndBlueIsKept()
    {
        const FramedPage page = somePage(600);
        const auto swapped = [](PixelRows rows) {
            Bytes bytes = rows.bytes();
            for (std::size_t i = 0; i < bytes.size(); i += 4)
                std::swap(bytes[i], bytes[i + 2]);
            return PixelRows(kWidth, bytes);
        };
        const auto stitcher = begun(swapped(page.frame(0)));
        QCOMPARE(stitcher->add(swapped(page.frame(77)).bytes()), added(77));
        QCOMPARE(pictureOf(*stitcher), swapped(page.stitched(77)).opaque());
    }

    void regionOf25RowsIsLost()
    {
        const FramedPage page = somePage(500, 100, 175);
        const auto stitcher = begun(page.frame(0));
        std::string line;
        stitcher->trace = [&line](const std::string& text) { line = text; };
        QCOMPARE(stitcher->add(page.frame(1).bytes()), kLost);
        QCOMPARE(line, std::string("lost: región 25 (top 100, bottom 175)"));
        QVERIFY(!stitcher->footerRows());
        QCOMPARE(pictureOf(*stitcher), page.stitched(0).opaque());
    }

    void jumpTooFarIsLostUntilAFrameOverlapsAgain()
    {
        const FramedPage page = somePage(2000, 10, 20);
        const auto stitcher = begun(page.frame(0));
        std::string line;
        stitcher->trace = [&line](const std::string& text) { line = text; };
        QCOMPARE(stitcher->add(page.frame(60).bytes()), added(60));
        // The region has 270 rows, of which 33 must overlap.
        QCOMPARE(stitcher->add(page.frame(60 + 238).bytes()), kLost);
        QCOMPARE(line, std::string("lost: mejor costo -1.0 top 10 bottom 20"));
        QCOMPARE(stitcher->rows(), kHeight - 20 + 60);
        QCOMPARE(pictureOf(*stitcher), page.stitched(60).opaque());
        QCOMPARE(stitcher->add(page.frame(60 + 237).bytes()), added(237));
        QCOMPARE(pictureOf(*stitcher), page.stitched(60 + 237).opaque());
    }

    void costHasTwoDecimals()
    {
        const FramedPage page = somePage(600);
        const auto stitcher = begun(page.frame(0));
        std::string line;
        stitcher->trace = [&line](const std::string& text) { line = text; };
        const PixelRows frame = page.frame(50);
        Bytes bytes = frame.bytes();
        for (std::size_t i = 0; i < bytes.size(); ++i) // about one darker, and half of all rows
            bytes[i] = static_cast<std::uint8_t>(bytes[i] > 0 ? bytes[i] - 1 : 0);
        QCOMPARE(stitcher->add(bytes), added(50));
        const QRegularExpression shape(
            QStringLiteral("^d=50 costo=(0\\.9\\d|1\\.00) top=0 bottom=0$"));
        QVERIFY2(shape.match(QString::fromStdString(line)).hasMatch(), line.c_str());
    }

    void bodyHoldsNoMoreThanMaxRows()
    {
        const FramedPage page = somePage(21000, 0, 12);
        const auto stitcher = begun(page.frame(0));
        int offset = 0;
        while (stitcher->rows() < 19990 || offset == 0) {
            const int body = offset == 0 ? kHeight - 12 : stitcher->rows();
            const int rows = std::min(200, 19990 - body);
            offset += rows;
            QCOMPARE(stitcher->add(page.frame(offset).bytes()), added(rows));
        }
        QCOMPARE(stitcher->rows(), 19990);
        QCOMPARE(stitcher->add(page.frame(offset + 30).bytes()), kFull);
        QCOMPARE(stitcher->rows(), 20000);
        QCOMPARE(stitcher->pictureRows(), 20012);
        const PixelRows expected = page.stitched(offset + 10).opaque();
        QCOMPARE(pictureOf(*stitcher), expected);

        // Then nothing is appended, and the other answers stay what they are.
        QCOMPARE(stitcher->add(page.frame(offset + 30).bytes()), kStill);
        QCOMPARE(stitcher->add(page.frame(offset + 80).bytes()), kFull);
        QCOMPARE(stitcher->add(page.frame(offset + 30).bytes()), kStill);
        QCOMPARE(stitcher->add(page.frame(offset - 80).bytes()), kLost);
        QCOMPARE(stitcher->rows(), 20000);
        QCOMPARE(pictureOf(*stitcher), expected);
    }

    void fullBodyLosesItsFooterToTheFirstDisplacement()
    {
        // The footer's rows leave the body, which has room for as many.
        const FramedPage page = somePage(1000, 0, 30);
        const auto stitcher = begun(page.frame(0), kHeight);
        QCOMPARE(stitcher->add(page.frame(50).bytes()), kFull);
        QCOMPARE(stitcher->rows(), kHeight);
        QCOMPARE(stitcher->footerRows(), std::optional(30));
        QCOMPARE(pictureOf(*stitcher), page.stitched(30).opaque());
        QCOMPARE(stitcher->add(page.frame(60).bytes()), kFull);
        QCOMPARE(pictureOf(*stitcher), page.stitched(30).opaque());
    }

    void firstFrameIsTakenWholeWhateverMaxRows()
    {
        for (const int maxRows : {0, 100, kHeight - 30, kHeight}) {
            const FramedPage page = somePage(1000, 0, maxRows == kHeight ? 0 : 30);
            const auto stitcher = begun(page.frame(0), maxRows);
            QCOMPARE(stitcher->rows(), kHeight);
            QCOMPARE(stitcher->add(page.frame(50).bytes()), kFull);
            QCOMPARE(stitcher->pictureRows(), kHeight);
            QCOMPARE(pictureOf(*stitcher), page.stitched(0).opaque());
        }
    }

    void footerThatMovesAfterAllLosesNoRow()
    {
        // First a list in the upper part is scrolled alone, then the whole page with it.
        const FramedPage list = somePage(400, 0, 200);
        const auto stitcher = begun(list.frame(0));
        QCOMPARE(stitcher->add(list.frame(20).bytes()), added(20));
        QCOMPARE(stitcher->footerRows(), std::optional(200));
        std::mt19937 random(8);
        FramedPage page = somePage(0);
        page.page = list.frame(20);
        page.page.append(PixelRows::patches(kWidth, 700, random));
        PixelRows expected = list.page.cut(0, 20);
        expected.append(page.stitched(220 + 100));
        QCOMPARE(stitcher->add(page.frame(220).bytes()),
                 added(220)); // farther than the list is high
        QCOMPARE(stitcher->add(page.frame(320).bytes()), added(100));
        QCOMPARE(pictureOf(*stitcher), expected.opaque());
    }

    void pictureOutlivesItsStitcher()
    {
        const FramedPage page = somePage(600);
        auto stitcher = begun(page.frame(0));
        QCOMPARE(stitcher->add(page.frame(40).bytes()), added(40));
        const auto picture = stitcher->makeImage();
        const auto again = stitcher->makeImage();
        QCOMPARE(again->bytes.get(), picture->bytes.get()); // no copy is made
        stitcher.reset();
        const PixelRows expected = page.stitched(40).opaque();
        QCOMPARE(picture->width, kWidth);
        QCOMPARE(picture->height, kHeight + 40);
        QVERIFY(std::equal(expected.bytes().begin(), expected.bytes().end(), picture->bytes.get()));
    }

    void faultsOfTheCallerEndTheProcess()
    {
        const FramedPage page = somePage(600);
        const auto stitcher = begun(page.frame(0));
        Bytes longer = page.frame(10).bytes();
        longer.push_back(0);
        Bytes shorter = page.frame(10).bytes();
        shorter.pop_back();
        QCOMPARE(endedBy([&] { stitcher->add(longer); }), SIGABRT);
        QCOMPARE(endedBy([&] { stitcher->add(shorter); }), SIGABRT);
        QCOMPARE(endedBy([&] { stitcher->add({}); }), SIGABRT);
        QCOMPARE(endedBy([&] { stitcher->add(page.frame(10).bytes()); }), 0);
        QCOMPARE(endedBy([] { (void)Stitcher::create(0, 10, 10); }), SIGABRT);
        auto picture = stitcher->makeImage();
        QCOMPARE(endedBy([&] { stitcher->add(page.frame(10).bytes()); }), SIGABRT);
        picture.reset();
        QCOMPARE(stitcher->add(page.frame(10).bytes()), added(10));
    }

    void tooMuchMemoryIsRefused()
    {
        QVERIFY(!Stitcher::create(1 << 30, 1 << 30, 20000));
        QVERIFY(!Stitcher::create(kWidth, kHeight, std::numeric_limits<int>::max()));
    }

    void whereMemoryRunsOutItIsFull()
    {
#ifndef __linux__
        QSKIP("only Linux holds memory against this limit");
#else
        constexpr int kWide = 4000;
        std::mt19937 random(4);
        const FramedPage page{PixelRows(kWide), PixelRows::patches(kWide, 600, random),
                              PixelRows::patches(kWide, 20, random), kHeight};
        const auto stitcher = begun(page.frame(0));
        const PixelRows next = page.frame(240);
        rlimit before{};
        QCOMPARE(::getrlimit(RLIMIT_DATA, &before), 0);
        rlimit none = before;
        none.rlim_cur = 1; // byte; none at all would count as no limit
        QCOMPARE(::setrlimit(RLIMIT_DATA, &none), 0);
        const Step step = stitcher->add(next.bytes());
        ::setrlimit(RLIMIT_DATA, &before);
        QCOMPARE(step, kFull);
        QVERIFY(pictureOf(*stitcher) == page.stitched(0).opaque());
        QCOMPARE(stitcher->add(next.bytes()), added(240));
        QVERIFY(pictureOf(*stitcher) == page.stitched(240).opaque());
#endif
    }
};

BRINDLECAM_TEST(TestStitcher);

} // namespace brindlecam

#include "tst_stitcher.moc"
