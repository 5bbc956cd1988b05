#include "pictures/ZlibStream.h"
#include "support/TestCase.h"

#include <QtEndian>

#include <algorithm>
#include <cstring>
#include <limits>
#include <random>

namespace brindlecam {

namespace {

constexpr std::size_t kAny = std::numeric_limits<std::int32_t>::max();

/// What another library reads in the stream.
QByteArray inflated(const QByteArray& stream, qsizetype size)
{
    QByteArray length(4, Qt::Uninitialized);
    qToBigEndian(static_cast<quint32>(size), length.data());
    return qUncompress(length + stream);
}

struct Way {
    ZlibStream::Effort effort;
    ZlibStream::Content content;
};
constexpr Way kAll[] = {{ZlibStream::Effort::quick, ZlibStream::Content::drawn},
                        {ZlibStream::Effort::small, ZlibStream::Content::drawn},
                        {ZlibStream::Effort::small, ZlibStream::Content::photographed}};

/// Puts the data onto the stream in pieces of many sizes.
bool compressed(QByteArray& bytes, const QByteArray& data, ZlibStream::Effort effort,
                ZlibStream::Content content)
{
    const auto stream =
        ZlibStream::onto(bytes, static_cast<std::size_t>(data.size()), effort, kAny);
    qsizetype piece = 1;
    for (qsizetype done = 0; done < data.size(); done += piece, piece = 2 * piece + 1) {
        piece = std::min(piece, data.size() - done);
        std::memcpy(stream->room(static_cast<std::size_t>(piece)), data.constData() + done,
                    static_cast<std::size_t>(piece));
    }
    return stream->finish(content);
}

QByteArray noise(qsizetype size)
{
    std::mt19937 random(1);
    QByteArray bytes(size, Qt::Uninitialized);
    for (char& byte : bytes)
        byte = static_cast<char>(random());
    return bytes;
}

} // namespace

class TestZlibStream final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void everyEffortIsReadByOthers_data()
    {
        QTest::addColumn<QByteArray>("data");
        QTest::newRow("one byte") << QByteArray("x");
        QTest::newRow("all the same") << QByteArray(5'000'000, '\0');
        QTest::newRow("words") << QByteArray("una captura y otra más. ").repeated(40'000);
        QTest::newRow("noise") << noise(3'000'000);
        QTest::newRow("noise, then the same")
            << noise(200'000) + QByteArray(200'000, 'a') + noise(200'000);
        // Too long for being taken at once; parts of it are noise alone.
        const QByteArray text = QByteArray("una captura y otra más. ").repeated(600'000);
        QTest::newRow("a long page") << text + noise(20'000'000) + text;
    }
    void everyEffortIsReadByOthers()
    {
        QFETCH(QByteArray, data);
        for (const auto& [effort, content] : kAll) {
            QByteArray bytes("before");
            QVERIFY(compressed(bytes, data, effort, content));
            QVERIFY(bytes.startsWith("before"));
            QCOMPARE(inflated(bytes.mid(6), data.size()), data);
        }
    }

    void whatMayBeTooLongIsLeftOut()
    {
        for (const auto effort : {ZlibStream::Effort::quick, ZlibStream::Effort::small}) {
            QByteArray bytes("before");
            QVERIFY(!ZlibStream::onto(bytes, 100'000, effort, 99'000));
            QCOMPARE(bytes, QByteArray("before"));
        }
    }
};

BRINDLECAM_TEST(TestZlibStream);

} // namespace brindlecam

#include "tst_zlibstream.moc"
