#include "long/TallBody.h"
#include "support/TestCase.h"

#include <sys/mman.h>
#include <sys/resource.h>

#include <limits>
#include <vector>

namespace brindlecam {

namespace {

constexpr std::size_t kMiB = std::size_t{1} << 20;

/// Whether there is memory of this process; `at` is a page's beginning.
bool isMapped(const std::uint8_t* at)
{
    return ::msync(const_cast<std::uint8_t*>(at), 1, MS_ASYNC) == 0;
}

} // namespace

class TestTallBody final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void whatIsMoreThanAnySystemHasIsRefused()
    {
        QVERIFY(!TallBody::reserve(0));
        QVERIFY(!TallBody::reserve(std::numeric_limits<std::size_t>::max()));
        QVERIFY(!TallBody::reserve(std::numeric_limits<std::size_t>::max() / 4));
    }

    void growsWithoutMoving()
    {
        const auto body = TallBody::reserve(40 * kMiB);
        QVERIFY(body);
        const std::uint8_t* const data = body->data();
        QCOMPARE(body->usable(), std::size_t{0});
        std::size_t written = 0;
        const std::vector<std::uint8_t> pixels(kMiB, 7);
        while (written < 40 * kMiB) {
            QVERIFY(body->growTo(written + kMiB));
            QVERIFY(body->usable() >= written + kMiB);
            body->write(written, pixels);
            written += kMiB;
        }
        QCOMPARE(body->data(), data);
        for (std::size_t i = 0; i < written; i += 4) {
            QCOMPARE(data[i], std::uint8_t{7});
            QCOMPARE(data[i + 3], std::uint8_t{255});
        }
    }

    void growsAsFarAsWasReservedAndNoFarther()
    {
        const auto body = TallBody::reserve(5 * kMiB);
        QVERIFY(body->growTo(1));
        QVERIFY(!body->growTo(6 * kMiB));
        QVERIFY(body->growTo(5 * kMiB));
        QVERIFY(body->growTo(kMiB)); // it has that
        QCOMPARE(body->usable(), 5 * kMiB);
    }

    void writesOnlyItsPixelsAndMakesThemOpaque()
    {
        const auto body = TallBody::reserve(kMiB);
        QVERIFY(body->growTo(kMiB));
        const std::vector<std::uint8_t> pixels{1, 2, 3, 0, 4, 5, 6, 100};
        body->write(4, pixels);
        const std::vector<std::uint8_t> expected{0, 0, 0, 0, 1, 2, 3, 255, 4, 5, 6, 255, 0};
        QCOMPARE(std::vector<std::uint8_t>(body->data(), body->data() + 13), expected);
    }

    void memoryGoesWithTheLastOwner()
    {
        auto body = TallBody::reserve(64 * kMiB);
        QVERIFY(body->growTo(64 * kMiB));
        const std::uint8_t* const last = body->data() + 63 * kMiB;
        auto other = body;
        body.reset();
        QVERIFY(isMapped(last));
        other.reset();
        QVERIFY(!isMapped(last));
    }

    void reservingTakesNoMemory()
    {
#ifndef __linux__
        QSKIP("only Linux holds memory against this limit");
#else
        // As where no memory is left: addresses are to be had, memory is not.
        const auto small = TallBody::reserve(64 * kMiB);
        QVERIFY(small->growTo(4 * kMiB));
        std::shared_ptr<TallBody> large;
        rlimit before{};
        QCOMPARE(::getrlimit(RLIMIT_DATA, &before), 0);
        rlimit none = before;
        none.rlim_cur = 1; // byte; none at all would count as no limit
        QCOMPARE(::setrlimit(RLIMIT_DATA, &none), 0);
        large = TallBody::reserve(1024 * kMiB);
        const bool grew = small->growTo(5 * kMiB);
        const std::size_t usable = small->usable();
        ::setrlimit(RLIMIT_DATA, &before);

        QVERIFY(large);
        QVERIFY(!grew);
        QCOMPARE(usable, 4 * kMiB);
        QVERIFY(small->growTo(5 * kMiB)); // there is memory again
#endif
    }
};

BRINDLECAM_TEST(TestTallBody);

} // namespace brindlecam

#include "tst_tallbody.moc"
