#include "platform/x11/grab/BandRing.h"
#include "support/TestCase.h"

#include <algorithm>
#include <vector>

namespace brindlecam {

namespace {

/// What byte of the picture this is to be.
uchar byteAt(qsizetype index)
{
    return static_cast<uchar>((index * 31 + index / 251) % 251);
}

/// Is through with each band as early or as late as it may be.
class FakePeer : public BandPeer {
public:
    enum class Works { whenAsked, whenAwaited };

    std::vector<uchar> ring = std::vector<uchar>(BandRing::kBytes, 0xee);
    std::vector<Band> asked;
    int sent = 0; ///< how many of those are on their way
    int awaited = 0;
    int failsAt = -1; ///< index of the band that it is never through with
    std::size_t mostUnderWay = 0;

    void ask(const Band& band) final
    {
        asked.push_back(band);
        mostUnderWay = std::max(mostUnderWay, asked.size() - static_cast<std::size_t>(awaited));
        if (m_works == Works::whenAsked)
            work(band);
    }
    void send() final { sent = static_cast<int>(asked.size()); }
    bool await() final
    {
        if (awaited >= sent || awaited == failsAt)
            return false;
        const Band& band = asked[static_cast<std::size_t>(awaited++)];
        if (m_works == Works::whenAwaited)
            work(band);
        return true;
    }

protected:
    FakePeer(qsizetype bytesPerLine, Works works)
        : m_bytesPerLine(bytesPerLine)
        , m_works(works)
    {
    }

    const qsizetype m_bytesPerLine;

private:
    virtual void work(const Band& band) = 0;

    const Works m_works;
};

/// Writes the picture's rows into the ring.
class FakeSource final : public FakePeer {
public:
    explicit FakeSource(qsizetype bytesPerLine, Works works = Works::whenAwaited)
        : FakePeer(bytesPerLine, works)
    {
    }

private:
    void work(const Band& band) override
    {
        const qsizetype first = band.firstRow * m_bytesPerLine;
        for (qsizetype i = 0; i < band.rows * m_bytesPerLine; ++i)
            ring[band.slot + static_cast<std::size_t>(i)] = byteAt(first + i);
    }
};

/// Takes the rows out of the ring.
class FakeSink final : public FakePeer {
public:
    FakeSink(qsizetype bytesPerLine, int height, Works works)
        : FakePeer(bytesPerLine, works)
        , picture(static_cast<std::size_t>(bytesPerLine * height), 0xee)
    {
    }

    std::vector<uchar> picture;

    /// Fills a band as the picture is to be there.
    [[nodiscard]] BandRing::Fill fill() const
    {
        return [bytesPerLine = m_bytesPerLine](const Band& band, uchar* target) {
            const qsizetype first = band.firstRow * bytesPerLine;
            for (qsizetype i = 0; i < band.rows * bytesPerLine; ++i)
                target[i] = byteAt(first + i);
        };
    }

private:
    void work(const Band& band) override
    {
        std::copy_n(ring.begin() + static_cast<std::ptrdiff_t>(band.slot),
                    band.rows * m_bytesPerLine, picture.begin() + band.firstRow * m_bytesPerLine);
    }
};

bool isWhole(const std::vector<uchar>& picture)
{
    for (std::size_t i = 0; i < picture.size(); ++i) {
        if (picture[i] != byteAt(static_cast<qsizetype>(i)))
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
        using Works = FakePeer::Works;
        for (const Works works : {Works::whenAsked, Works::whenAwaited}) {
            FakeSource source(bytesPerLine, works);
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
        using Works = FakePeer::Works;
        for (const Works works : {Works::whenAsked, Works::whenAwaited}) {
            FakeSink sink(bytesPerLine, height, works);
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
        FakeSink sink(kBytesPerLine, 1080, FakePeer::Works::whenAwaited);
        sink.failsAt = failsAt;
        QVERIFY(!BandRing::write(sink, sink.ring.data(), 1080, kBytesPerLine, sink.fill()));
        QCOMPARE(sink.asked.size(), std::size_t(asked));
        QCOMPARE(sink.awaited, failsAt);
    }
};

BRINDLECAM_TEST(TestBandRing);

} // namespace brindlecam

#include "tst_bandring.moc"
