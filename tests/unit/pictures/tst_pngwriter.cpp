// Covers PngChunks.
#include "ForeignReaders.h"
#include "PagePainter.h"
#include "pictures/PngWriter.h"
#include "support/TestCase.h"

#include <QRandomGenerator>

#include <array>
#include <thread>
#include <vector>

namespace brindlecam {

namespace {

using PngWriter::Effort;

QImage randomPicture(QSize size, QImage::Format format = QImage::Format_RGB32)
{
    QImage image(size, format);
    QRandomGenerator random(7);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const QRgb color = random.generate();
            image.setPixelColor(x, y, QColor::fromRgba(color));
        }
    }
    return image;
}

/// Each of `count` colours, in an order that no filter foresees.
QImage pictureOfColours(int count, QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    for (int i = 0; i < size.width() * size.height(); ++i) {
        const int color = i < count ? i : (i * 7919) % count;
        image.setPixel(i % size.width(), i / size.width(),
                       qRgb(color % 256, 255 - color / 2 % 256, color / 256 * 40 + 3));
    }
    return image;
}

QImage greyPicture(int step)
{
    QImage image(256, 40, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const int grey = (x + 3 * y) % (255 / step + 1) * step;
            image.setPixel(x, y, qRgb(grey, grey, grey));
        }
    }
    return image;
}

QImage tallPicture()
{
    QImage image(40, 20000, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, qRgb(x * 6, y % 256, (x * y) % 251));
    }
    return image;
}

/// A part of a larger picture, seen through its memory: rows are further apart than they are long.
QImage seenThrough(const QImage& whole, const QRect& part)
{
    const uchar* first = whole.constScanLine(part.y()) + part.x() * whole.depth() / 8;
    return {first, part.width(), part.height(), whole.bytesPerLine(), whole.format()};
}

} // namespace

class TestPngWriter final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void libpngReadsEveryPixelBack_data()
    {
        QTest::addColumn<QImage>("image");
        QTest::addColumn<int>("effort");
        const QImage page = test::PagePainter::interfacePage({640, 400});
        const QImage photo = test::PagePainter::photoPage({320, 200});
        QImage flat(300, 200, QImage::Format_RGB32);
        flat.fill(qRgb(12, 200, 90));
        QImage clear(64, 64, QImage::Format_ARGB32);
        clear.fill(Qt::transparent);
        QImage fewTranslucent(50, 30, QImage::Format_ARGB32);
        fewTranslucent.fill(qRgba(1, 2, 3, 128));
        fewTranslucent.setPixel(3, 3, qRgba(255, 0, 0, 255));
        QImage junkAlpha = photo;
        for (int y = 0; y < junkAlpha.height(); ++y)
            reinterpret_cast<QRgb*>(junkAlpha.scanLine(y))[y % 320] &= 0x00ffffff;
        const QSize small(90, 70);

        const std::vector<std::pair<const char*, QImage>> pictures{
            {"random", randomPicture({200, 150})},
            {"random with alpha", randomPicture({200, 150}, QImage::Format_ARGB32)},
            {"random, premultiplied", randomPicture({64, 64}, QImage::Format_ARGB32_Premultiplied)},
            {"flat", flat},
            {"interface", page},
            {"interface at scale 2", test::PagePainter::interfacePage({500, 300}, 2)},
            {"photograph", photo},
            {"photograph as ARGB32", photo.convertToFormat(QImage::Format_ARGB32)},
            {"photograph, premultiplied",
             photo.convertToFormat(QImage::Format_ARGB32_Premultiplied)},
            {"photograph as RGB888", photo.convertToFormat(QImage::Format_RGB888)},
            {"photograph in grey", photo.convertToFormat(QImage::Format_Grayscale8)},
            {"photograph in 16 bits", photo.convertToFormat(QImage::Format_RGB16)},
            {"photograph in 64 bits", photo.convertToFormat(QImage::Format_RGBA64)},
            {"photograph with junk in the unused byte", junkAlpha},
            {"one pixel wide", randomPicture({1, 300})},
            {"one pixel high", randomPicture({300, 1})},
            {"a single pixel", randomPicture({1, 1})},
            {"a single clear pixel", clear.copy(0, 0, 1, 1)},
            {"two colours", pictureOfColours(2, {91, 30})},
            {"three colours", pictureOfColours(3, {91, 30})},
            {"four colours", pictureOfColours(4, {91, 30})},
            {"16 colours", pictureOfColours(16, {91, 30})},
            {"17 colours", pictureOfColours(17, {91, 30})},
            {"256 colours", pictureOfColours(256, small)},
            {"257 colours", pictureOfColours(257, small)},
            {"all clear", clear},
            {"two colours, one translucent", fewTranslucent},
            {"black and white", greyPicture(255)},
            {"4 greys", greyPicture(85)},
            {"16 greys", greyPicture(17)},
            {"256 greys", greyPicture(1)},
            {"20,000 rows", tallPicture()},
        };
        for (const auto& [name, image] : pictures) {
            QTest::addRow("%s, quick", name) << image << static_cast<int>(Effort::quick);
            QTest::addRow("%s, small", name) << image << static_cast<int>(Effort::small);
        }
    }
    void libpngReadsEveryPixelBack()
    {
        QFETCH(QImage, image);
        QFETCH(int, effort);
        const QByteArray png =
            PngWriter::encode(image, {.effort = static_cast<Effort>(effort), .cancelled = {}});
        QVERIFY(!png.isEmpty());
        const QImage read = test::ForeignReaders::decodedByLibpng(png);
        QCOMPARE(read, image.convertToFormat(QImage::Format_ARGB32));

        const QString verdict = test::ForeignReaders::report(QStringLiteral("pngcheck"), png);
        QVERIFY2(verdict.startsWith(QLatin1String("OK: ")), qPrintable(verdict));
    }

    void foreignMemoryIsReadRowByRowWhateverItsStride_data()
    {
        QTest::addColumn<QImage::Format>("format");
        QTest::newRow("RGB32") << QImage::Format_RGB32;
        QTest::newRow("ARGB32") << QImage::Format_ARGB32;
        QTest::newRow("premultiplied") << QImage::Format_ARGB32_Premultiplied;
        QTest::newRow("24 bits") << QImage::Format_RGB888;
    }
    void foreignMemoryIsReadRowByRowWhateverItsStride()
    {
        QFETCH(QImage::Format, format);
        const QImage whole = test::PagePainter::interfacePage({500, 300}).convertToFormat(format);
        const QImage part = seenThrough(whole, {101, 57, 250, 180});
        QVERIFY(part.bytesPerLine() > part.width() * 4);
        const QByteArray png = PngWriter::encode(part, {});
        QCOMPARE(test::ForeignReaders::decodedByLibpng(png),
                 whole.copy(101, 57, 250, 180).convertToFormat(QImage::Format_ARGB32));
    }

    void theFewerColoursTheFewerBitsPerPixel_data()
    {
        QTest::addColumn<QImage>("image");
        QTest::addColumn<int>("depth");
        QTest::addColumn<int>("colourType");
        constexpr int kGrey = 0;
        constexpr int kRgb = 2;
        constexpr int kPalette = 3;
        constexpr int kRgba = 6;
        const QSize size(91, 30);
        QTest::newRow("2 colours") << pictureOfColours(2, size) << 1 << kPalette;
        QTest::newRow("4 colours") << pictureOfColours(4, size) << 2 << kPalette;
        QTest::newRow("5 colours") << pictureOfColours(5, size) << 4 << kPalette;
        QTest::newRow("16 colours") << pictureOfColours(16, size) << 4 << kPalette;
        QTest::newRow("17 colours") << pictureOfColours(17, size) << 8 << kPalette;
        QTest::newRow("256 colours") << pictureOfColours(256, size) << 8 << kPalette;
        QTest::newRow("257 colours") << pictureOfColours(257, size) << 8 << kRgb;
        QTest::newRow("black and white") << greyPicture(255) << 1 << kGrey;
        QTest::newRow("4 greys") << greyPicture(85) << 2 << kGrey;
        QTest::newRow("16 greys") << greyPicture(17) << 4 << kGrey;
        QTest::newRow("256 greys") << greyPicture(1) << 8 << kGrey;
        QTest::newRow("many translucent colours")
            << randomPicture({64, 64}, QImage::Format_ARGB32) << 8 << kRgba;
        QTest::newRow("many colours, alpha never used")
            << randomPicture({64, 64}).convertToFormat(QImage::Format_ARGB32) << 8 << kRgb;
    }
    void theFewerColoursTheFewerBitsPerPixel()
    {
        QFETCH(QImage, image);
        const QByteArray png = PngWriter::encode(image, {});
        // IHDR follows the signature: length, type, width, height, depth, colour type.
        QTEST(static_cast<int>(png.at(24)), "depth");
        QTEST(static_cast<int>(png.at(25)), "colourType");
    }

    void densityIsStoredPerMetre()
    {
        const QImage image = randomPicture({8, 8});
        const QByteArray png = PngWriter::encode(image, {.dotsPerMetre = 5669, .cancelled = {}});
        QCOMPARE(QImage::fromData(png).dotsPerMeterX(), 5669);
        QCOMPARE(QImage::fromData(png).dotsPerMeterY(), 5669);
        QCOMPARE(QImage::fromData(PngWriter::encode(image, {})).dotsPerMeterX(), 2835);
    }

    void nullPictureGivesNothing() { QVERIFY(PngWriter::encode(QImage(), {}).isEmpty()); }

    void cancelledEncodingGivesNothingWhereverItIsNoticed()
    {
        const QImage image = test::PagePainter::interfacePage({400, 300});
        int questions = 0;
        const auto count = [&questions] {
            ++questions;
            return false;
        };
        QVERIFY(!PngWriter::encode(image, {.cancelled = count}).isEmpty());
        QVERIFY(questions > 4);

        for (int last = 1; last <= questions; ++last) {
            int asked = 0;
            const auto cancelAtLast = [&asked, last] { return ++asked == last; };
            QVERIFY(PngWriter::encode(image, {.cancelled = cancelAtLast}).isEmpty());
            QCOMPARE(asked, last);
        }
    }

    void severalThreadsEncodeAtOnceWithTheSameResult()
    {
        const QImage image = test::PagePainter::interfacePage({600, 300});
        const QByteArray expected = PngWriter::encode(image, {});
        std::array<QByteArray, 4> results;
        std::vector<std::thread> threads;
        for (QByteArray& result : results)
            threads.emplace_back([&] { result = PngWriter::encode(image, {}); });
        for (std::thread& thread : threads)
            thread.join();
        for (const QByteArray& result : results)
            QCOMPARE(result, expected);
    }

    void smallFilesStaySmallBesideLibpngs_data()
    {
        QTest::addColumn<QImage>("image");
        QTest::addColumn<double>("mostOfLibpng");
        QTest::newRow("interface") << test::PagePainter::interfacePage({1920, 1080}) << 0.85;
        QTest::newRow("photograph") << test::PagePainter::photoPage({1920, 1080}) << 1.06;
    }
    void smallFilesStaySmallBesideLibpngs()
    {
        QFETCH(QImage, image);
        QFETCH(double, mostOfLibpng);
        const QByteArray png = PngWriter::encode(image, {.effort = Effort::small, .cancelled = {}});
        const auto yardstick = static_cast<double>(test::ForeignReaders::libpngSize(image));
        QVERIFY2(static_cast<double>(png.size()) <= mostOfLibpng * yardstick,
                 qPrintable(QStringLiteral("%1 of %2 bytes").arg(png.size()).arg(yardstick)));
    }
};

BRINDLECAM_TEST(TestPngWriter);

} // namespace brindlecam

#include "tst_pngwriter.moc"
