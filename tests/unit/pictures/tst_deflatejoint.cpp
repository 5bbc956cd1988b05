#include "pictures/DeflateJoint.h"
#include "support/TestCase.h"

#include <QByteArray>

#include <libdeflate.h>

#include <memory>
#include <vector>

namespace brindlecam {

namespace {

using Bytes = std::vector<std::uint8_t>;

/// A stream of its own, with room for a joint behind it.
Bytes deflated(const QByteArray& data, int level, std::size_t& size)
{
    const std::unique_ptr<libdeflate_compressor, void (*)(libdeflate_compressor*)> compressor(
        libdeflate_alloc_compressor(level), libdeflate_free_compressor);
    const auto length = static_cast<std::size_t>(data.size());
    Bytes bytes(libdeflate_deflate_compress_bound(compressor.get(), length) + DeflateJoint::kBytes,
                0xee);
    size = libdeflate_deflate_compress(compressor.get(), data.constData(), length, bytes.data(),
                                       bytes.size());
    return bytes;
}

QByteArray inflated(const Bytes& stream, qsizetype most)
{
    const std::unique_ptr<libdeflate_decompressor, void (*)(libdeflate_decompressor*)> reader(
        libdeflate_alloc_decompressor(), libdeflate_free_decompressor);
    QByteArray data(most + 1, Qt::Uninitialized);
    std::size_t length = 0;
    if (libdeflate_deflate_decompress(reader.get(), stream.data(), stream.size(), data.data(),
                                      static_cast<std::size_t>(data.size()),
                                      &length) != LIBDEFLATE_SUCCESS)
        return {};
    return data.first(static_cast<qsizetype>(length));
}

/// Words that hardly repeat: they end in any bit of a byte, after one block or several.
QByteArray words(int count)
{
    auto state = static_cast<std::uint32_t>(count);
    QByteArray text;
    for (int i = 0; i < count; ++i) {
        state = state * 1664525U + 1013904223U;
        text += QByteArray::number(state >> 20, 36) + ' ';
    }
    return text;
}

} // namespace

class TestDeflateJoint final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void streamsBecomeOne_data()
    {
        QTest::addColumn<int>("level");
        for (const int level : {0, 1, 2, 6, 12})
            QTest::addRow("level %d", level) << level;
    }
    void streamsBecomeOne()
    {
        QFETCH(int, level);
        Bytes joined;
        QByteArray expected;
        std::size_t size = 0;
        // Each ends elsewhere in its last byte; from some on there are several blocks.
        for (int count = 1; count < 60000; count = count < 40 ? count + 1 : count * 3) {
            const QByteArray data = words(count);
            Bytes stream = deflated(data, level, size);
            const auto open = DeflateJoint::letGoOn(stream, size);
            QVERIFY(open && *open > size && *open <= size + DeflateJoint::kBytes);
            joined.insert(joined.end(), stream.begin(),
                          stream.begin() + static_cast<std::ptrdiff_t>(*open));
            expected += data;
        }
        QCOMPARE(inflated(joined, expected.size()), QByteArray()); // it goes on
        const Bytes last = deflated("fin", level, size);
        joined.insert(joined.end(), last.begin(), last.begin() + static_cast<std::ptrdiff_t>(size));
        QCOMPARE(inflated(joined, expected.size() + 3), expected + "fin");
    }

    void whatIsNoStreamIsRefused()
    {
        std::size_t size = 0;
        Bytes stream = deflated(words(3000), 6, size);
        QVERIFY(!DeflateJoint::letGoOn(stream, 0));
        QVERIFY(!DeflateJoint::letGoOn(std::span(stream).first(size + 4), size)); // no room
        QVERIFY(!DeflateJoint::letGoOn(stream, size / 2));                        // cut off
        Bytes rubbish(200, 0xff);
        QVERIFY(!DeflateJoint::letGoOn(rubbish, 100));
    }
};

BRINDLECAM_TEST(TestDeflateJoint);

} // namespace brindlecam

#include "tst_deflatejoint.moc"
