#include "platform/linux/x11/BandRing.h"
#include "support/TestCase.h"

#include <algorithm>
#include <vector>

namespace brindlecam {

namespace {

/// Writes the picture's rows into the ring as early or as late as it may.
class FakeSource final : public BandPeer {
public:
    enum class Writes { whenAsked, whenAwaited };

    explicit FakeSource(qsizetype bytesPerLine, Writes writes = Writes::whenAwaited)
        : ring(BandRing::kBytes, 0xee)
        , m_bytesPerLine(bytesPerLine)
        , m_writes(writes)
    {
    }

    std::vector<uchar> ring;
    std::vector<Band> asked;
    int sent = 0; ///< how many of those are on their way
    int awaited = 0;
    int failsAt = -1; ///< index of the band that never comes
    std::size_t mostUnderWay = 0;

    /// What byte of the picture this is to be.
    [[nodiscard]] static uchar byteAt(qsizetype index)
    {
        return static_cast<uchar>((index * 31 + index / 251) % 251);
    }

    void ask(const Band& band) override
    {
        asked.push_back(band);
        mostUnderWay = std::max(mostUnderWay, asked.size() - static_cast<std::size_t>(awaited));
        if (m_writes == Writes::whenAsked)
            write(band);
    }
    void send() override { sent = static_cast<int>(asked.size()); }
    bool await() override
    {
        if (awaited >= sent || awaited == failsAt)
            return false;
        const Band& band = asked[static_cast<std::size_t>(awaited++)];
        if (m_writes == Writes::whenAwaited)
            write(band);
        return true;
    }

private:
    void write(const Band& band)
    {
        const qsizetype first = band.firstRow * m_bytesPerLine;
        for (qsizetype i = 0; i < band.rows * m_bytesPerLine; ++i)
            ring[band.slot + static_cast<std::size_t>(i)] = byteAt(first + i);
    }

    const qsizetype m_bytesPerLine;
    const Writes m_writes;
};

/// Takes the rows out of the ring as early or as late as it may.
class FakeSink final : public BandPeer {
public:
    enum class Reads { whenAsked, whenAwaited };

    FakeSink(qsizetype bytesPerLine, int height, Reads reads)
        : ring(BandRing::kBytes, 0xee)
        , picture(static_cast<std::size_t>(bytesPerLine * height), 0xee)
        , m_bytesPerLine(bytesPerLine)
        , m_reads(reads)
    {
    }

    std::vector<uchar> ring;
    std::vector<uchar> picture;
    std::vector<Band> asked;
    int sent = 0;
    int awaited = 0;
    int failsAt = -1; ///< index of the band that it never takes

    void ask(const Band& band) override
    {
        asked.push_back(band);
        if (m_reads == Reads::whenAsked)
            read(band);
    }
    void send() override { sent = static_cast<int>(asked.size()); }
    bool await() override
    {
        if (awaited >= sent || awaited == failsAt)
            return false;
        const Band& band = asked[static_cast<std::size_t>(awaited++)];
        if (m_reads == Reads::whenAwaited)
            read(band);
        return true;
    }

    /// Fills a band as the picture is to be there.
    [[nodiscard]] BandRing::Fill fill() const
    {
        return [bytesPerLine = m_bytesPerLine](const Band& band, uchar* target) {
            const qsizetype first = band.firstRow * bytesPerLine;
            for (qsizetype i = 0; i < band.rows * bytesPerLine; ++i)
                target[i] = FakeSource::byteAt(first + i);
        };
    }

private:
    void read(const Band& band)
    {
        std::copy_n(ring.begin() + static_cast<std::ptrdiff_t>(band.slot),
                    band.rows * m_bytesPerLine, picture.begin() + band.firstRow * m_bytesPerLine);
    }

    const qsizetype m_bytesPerLine;
    const Reads m_reads;
};

bool isWhole(const std::vector<uchar>& picture)
{
    for (std::size_t i = 0; i < picture.size(); ++i) {
        if (picture[i] != FakeSource::byteAt(static_cast<qsizetype>(i)))
            return false;
    }
    return true;
}

} // namespace

class TestBandRing final : public test::TestCase {
    Q_OBJECT

private:
    static void addPictures()
    {
        QTest::addColumn<int>("width");
        QTest::addColumn<int>("height");
        QTest::addColumn<int>("bands");
        QTest::newRow("one pixel") << 1 << 1 << 1;
        QTest::newRow("one row") << 1600 << 1 << 1;
        QTest::newRow("all slots just full") << 1024 << 512 << 4;
        QTest::newRow("one row more") << 1024 << 513 << 5;
        QTest::newRow("a short last band") << 1920 << 1080 << 16;
        QTest::newRow("three slots and a bit") << 1024 << 400 << 4;
        QTest::newRow("as wide as a request can say") << 65535 << 9 << 5;
    }

private Q_SLOTS:
    void everyPictureArrivesWhole_data() { addPictures(); }
    void everyPictureArrivesWhole()
    {
        QFETCH(int, width);
        QFETCH(int, height);
        QFETCH(int, bands);
        const qsizetype bytesPerLine = 4 * qsizetype(width);
        using Writes = FakeSource::Writes;
        for (const Writes writes : {Writes::whenAsked, Writes::whenAwaited}) {
            FakeSource source(bytesPerLine, writes);
            std::vector<uchar> picture(static_cast<std::size_t>(bytesPerLine * height));
            QVERIFY(
                BandRing::read(source, source.ring.data(), height, bytesPerLine, picture.data()));
            QVERIFY(isWhole(picture));
            QCOMPARE(source.asked.size(), std::size_t(bands));
            QVERIFY(source.mostUnderWay <= BandRing::kSlots);
        }
    }

    void bandsFollowEachOtherAndFitTheirSlots()
    {
        constexpr int kHeight = 1080;
        constexpr qsizetype kBytesPerLine = 1920 * 4;
        FakeSource source(kBytesPerLine);
        std::vector<uchar> picture(kBytesPerLine * kHeight);
        QVERIFY(BandRing::read(source, source.ring.data(), kHeight, kBytesPerLine, picture.data()));
        int row = 0;
        for (const Band& band : source.asked) {
            QCOMPARE(band.firstRow, row);
            QVERIFY(band.rows > 0);
            QCOMPARE(band.slot % BandRing::kSlotBytes, std::size_t(0));
            QVERIFY(band.rows * kBytesPerLine <= qsizetype(BandRing::kSlotBytes));
            row += band.rows;
        }
        QCOMPARE(row, kHeight);
    }

    void theOthersAreWrittenWhileOneIsCopied()
    {
        FakeSource source(1024 * 4);
        std::vector<uchar> picture(1024 * 4 * 2000);
        QVERIFY(BandRing::read(source, source.ring.data(), 2000, 1024 * 4, picture.data()));
        QCOMPARE(source.mostUnderWay, BandRing::kSlots);
    }

    void afterARefusedBandNothingMoreIsAskedFor_data()
    {
        QTest::addColumn<int>("failsAt");
        QTest::addColumn<int>("asked");
        QTest::newRow("the first") << 0 << 4;
        QTest::newRow("in the middle") << 6 << 10;
        QTest::newRow("the last") << 15 << 16;
    }
    void afterARefusedBandNothingMoreIsAskedFor()
    {
        QFETCH(int, failsAt);
        QFETCH(int, asked);
        constexpr qsizetype kBytesPerLine = 1920 * 4;
        FakeSource source(kBytesPerLine);
        source.failsAt = failsAt;
        std::vector<uchar> picture(kBytesPerLine * 1080);
        QVERIFY(!BandRing::read(source, source.ring.data(), 1080, kBytesPerLine, picture.data()));
        QCOMPARE(source.asked.size(), std::size_t(asked));
        QCOMPARE(source.awaited, failsAt);
    }

    void everyPictureIsHandedOverWhole_data() { addPictures(); }
    void everyPictureIsHandedOverWhole()
    {
        QFETCH(int, width);
        QFETCH(int, height);
        QFETCH(int, bands);
        const qsizetype bytesPerLine = 4 * qsizetype(width);
        using Reads = FakeSink::Reads;
        for (const Reads reads : {Reads::whenAsked, Reads::whenAwaited}) {
            FakeSink sink(bytesPerLine, height, reads);
            QVERIFY(BandRing::write(sink, sink.ring.data(), height, bytesPerLine, sink.fill()));
            QVERIFY(isWhole(sink.picture));
            QCOMPARE(sink.asked.size(), std::size_t(bands));
            QCOMPARE(sink.awaited, bands); // the ring is free again
        }
    }

    void afterARefusedBandNothingMoreIsHandedOver_data()
    {
        QTest::addColumn<int>("failsAt");
        QTest::addColumn<int>("asked");
        QTest::newRow("the first") << 0 << 4;
        QTest::newRow("in the middle") << 6 << 10;
        QTest::newRow("the last") << 15 << 16;
    }
    void afterARefusedBandNothingMoreIsHandedOver()
    {
        QFETCH(int, failsAt);
        QFETCH(int, asked);
        constexpr qsizetype kBytesPerLine = 1920 * 4;
        FakeSink sink(kBytesPerLine, 1080, FakeSink::Reads::whenAwaited);
        sink.failsAt = failsAt;
        QVERIFY(!BandRing::write(sink, sink.ring.data(), 1080, kBytesPerLine, sink.fill()));
        QCOMPARE(sink.asked.size(), std::size_t(asked));
        QCOMPARE(sink.awaited, failsAt);
    }
};

BRINDLECAM_TEST(TestBandRing);

} // namespace brindlecam

#include "tst_bandring.moc"
