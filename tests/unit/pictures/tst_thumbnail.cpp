// Covers Thumbnail, PngRows.
#include "pictures/PngRows.h"
#include "pictures/PngWriter.h"
#include "pictures/Thumbnail.h"
#include "support/Files.h"
#include "support/TestCase.h"

#include <QBuffer>
#include <QImageWriter>
#include <QTemporaryDir>

#include <png.h>

#include <vector>

namespace brindlecam {

namespace {

QImage stripedPicture(QSize size, QImage::Format format = QImage::Format_RGB32)
{
    QImage image(size, format);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y, qRgb(x * 255 / size.width(), y * 255 / size.height(), 90));
    }
    return image;
}

QByteArray ourPng(const QImage& image)
{
    return PngWriter::encode(image, {.cancelled = {}});
}

/// What Qt writes, which knows kinds of PNG that we never write.
QByteArray foreignPng(const QImage& image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

void append(png_structp png, png_bytep bytes, png_size_t count)
{
    static_cast<QByteArray*>(png_get_io_ptr(png))
        ->append(reinterpret_cast<const char*>(bytes), static_cast<qsizetype>(count));
}

/// One whose pixels come in seven passes, each finer than the one before. Qt writes none.
QByteArray interlacedPng(const QImage& image)
{
    QImage pixels = image.convertToFormat(QImage::Format_RGBA8888);
    std::vector<png_bytep> rows;
    for (int y = 0; y < pixels.height(); ++y)
        rows.push_back(pixels.scanLine(y));
    QByteArray bytes;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_set_write_fn(png, &bytes, append, nullptr);
    png_set_IHDR(png, info, static_cast<png_uint_32>(pixels.width()),
                 static_cast<png_uint_32>(pixels.height()), 8, PNG_COLOR_TYPE_RGB_ALPHA,
                 PNG_INTERLACE_ADAM7, PNG_COMPRESSION_TYPE_BASE, PNG_FILTER_TYPE_BASE);
    png_set_rows(png, info, rows.data());
    png_write_png(png, info, PNG_TRANSFORM_IDENTITY, nullptr);
    png_destroy_write_struct(&png, &info);
    return bytes;
}

/// A GIF of one black pixel.
const QByteArray kBlackGif =
    QByteArray::fromHex("47494638396101000100800000000000ffffff2c000000000100"
                        "0100000202440100"
                        "3b");

/// It claims to be of 20000 by 20000 pixels.
const QByteArray kVastInterlacedPng =
    QByteArray::fromHex("89504e470d0a1a0a0000000d4948445200004e2000004e2008020000011b15e1"
                        "f80000000c49444154789c63606060000000040001f61738550000000049454e"
                        "44ae426082");

} // namespace

class TestThumbnail final : public test::TestCase {
    Q_OBJECT

private:
    QTemporaryDir m_folder;

    [[nodiscard]] QString file(const char* name, const QByteArray& bytes) const
    {
        const QString path = m_folder.filePath(QString::fromLatin1(name));
        test::put(path, bytes);
        return path;
    }

private Q_SLOTS:
    void fitsIntoItsRoomAndKeepsItsShape_data()
    {
        QTest::addColumn<QSize>("picture");
        QTest::addColumn<QSize>("most");
        QTest::addColumn<QSize>("fitted");
        QTest::newRow("wide") << QSize(1920, 1080) << QSize(640, 640) << QSize(640, 360);
        QTest::newRow("tall") << QSize(1080, 1920) << QSize(640, 640) << QSize(360, 640);
        QTest::newRow("small: never larger") << QSize(30, 20) << QSize(640, 640) << QSize(30, 20);
        QTest::newRow("very tall") << QSize(1000, 30000) << QSize(194, 114) << QSize(4, 114);
        QTest::newRow("a line: at least a pixel")
            << QSize(30000, 1) << QSize(194, 114) << QSize(194, 1);
        QTest::newRow("no picture") << QSize() << QSize(640, 640) << QSize();
        QTest::newRow("no room") << QSize(10, 10) << QSize(0, 640) << QSize();
    }
    void fitsIntoItsRoomAndKeepsItsShape()
    {
        QFETCH(QSize, picture);
        QFETCH(QSize, most);
        QFETCH(QSize, fitted);
        QCOMPARE(Thumbnail::fitted(picture, most), fitted);
    }

    void ofAPictureAndOfItsFileAreTheSame_data()
    {
        QTest::addColumn<QImage>("picture");
        QTest::addColumn<QByteArray>("bytes");
        const QImage plain = stripedPicture({123, 77});
        QTest::newRow("ours") << plain << ourPng(plain);
        QTest::newRow("foreign") << plain << foreignPng(plain);
        QImage few = plain.convertToFormat(QImage::Format_Indexed8);
        QTest::newRow("palette") << few.convertToFormat(QImage::Format_RGB32) << foreignPng(few);
        const QImage grey = plain.convertToFormat(QImage::Format_Grayscale8);
        QTest::newRow("grey") << grey.convertToFormat(QImage::Format_RGB32) << foreignPng(grey);
        const QImage deep = plain.convertToFormat(QImage::Format_RGBX64);
        QTest::newRow("16 bits") << plain << foreignPng(deep);
        QImage translucent = stripedPicture({40, 40}, QImage::Format_ARGB32);
        for (int x = 0; x < 40; ++x)
            translucent.setPixel(x, 20, qRgba(200, 100, 0, x * 6));
        QTest::newRow("alpha") << translucent << foreignPng(translucent);
        const QImage bits = plain.convertToFormat(QImage::Format_Mono);
        QTest::newRow("1 bit") << bits.convertToFormat(QImage::Format_RGB32) << foreignPng(bits);
        QTest::newRow("interlaced") << translucent << interlacedPng(translucent);
    }
    void ofAPictureAndOfItsFileAreTheSame()
    {
        QFETCH(QImage, picture);
        QFETCH(QByteArray, bytes);
        const QString path = file("p.png", bytes);
        for (const QSize most : {QSize(640, 640), QSize(50, 50), QSize(9, 200)}) {
            const auto direct = Thumbnail::of(picture, most);
            const auto read = Thumbnail::ofFile(path, most);
            QVERIFY(direct && read);
            QCOMPARE(read->pixels, picture.size());
            QCOMPARE(direct->pixels, picture.size());
            QCOMPARE(read->image.convertToFormat(QImage::Format_ARGB32_Premultiplied),
                     direct->image.convertToFormat(QImage::Format_ARGB32_Premultiplied));
        }
    }

    void aScreensFourthByteIsNotAlpha()
    {
        QImage screen = stripedPicture({20, 20});
        for (int y = 0; y < 20; ++y) {
            auto* row = reinterpret_cast<QRgb*>(screen.scanLine(y));
            for (int x = 0; x < 20; ++x)
                row[x] &= 0x00ffffffU;
        }
        const auto small = Thumbnail::of(screen, {5, 5});
        QVERIFY(small);
        QCOMPARE(small->image.pixelColor(2, 2).alpha(), 255);
    }

    void aPictureTallerThanMemoryLikesIsReadAllTheSame()
    {
        QImage tall(64, 30000, QImage::Format_RGB32);
        tall.fill(qRgb(10, 200, 30));
        const auto small = Thumbnail::ofFile(file("tall.png", ourPng(tall)), {640, 640});
        QVERIFY(small);
        QCOMPARE(small->pixels, QSize(64, 30000));
        QCOMPARE(small->image.size(), QSize(1, 640));
        QCOMPARE(small->image.pixelColor(0, 320), QColor(10, 200, 30));
    }

    void ofAnAnimationItIsTheFirstFrame()
    {
        const auto small = Thumbnail::ofFile(file("a.gif", kBlackGif), {640, 640});
        QVERIFY(small);
        QCOMPARE(small->pixels, QSize(1, 1));
        QCOMPARE(small->image.pixelColor(0, 0), QColor(Qt::black));
    }

    void whatIsNoPictureHasNone_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        const QByteArray whole = ourPng(stripedPicture({200, 200}));
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("text") << QByteArray("esto no es una imagen");
        QTest::newRow("header only") << whole.left(40);
        QTest::newRow("half") << whole.left(whole.size() / 2);
        QByteArray flipped = whole;
        flipped[flipped.size() / 2] = static_cast<char>(flipped[flipped.size() / 2] ^ 0x55);
        QTest::newRow("damaged") << flipped;
        QByteArray vast = whole;
        vast.replace(16, 8, QByteArray::fromHex("000f4240000f4240")); // a million each way
        QTest::newRow("claims to be vast") << vast;
        QTest::newRow("half a GIF") << kBlackGif.left(12);
    }
    void whatIsNoPictureHasNone()
    {
        QFETCH(QByteArray, bytes);
        QVERIFY(!Thumbnail::ofFile(file("p.png", bytes), {640, 640}));
    }

    void anInterlacedPictureThatIsNotWholeHasNone()
    {
        const QByteArray whole = interlacedPng(stripedPicture({200, 200}));
        QVERIFY(!Thumbnail::ofFile(file("p.png", whole.left(whole.size() / 2)), {640, 640}));
    }

    void anInterlacedPictureThatIsTooLargeToBeHeldHasNone()
    {
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression(QStringLiteral("exceeds the current allocation")));
        QVERIFY(!Thumbnail::ofFile(file("p.png", kVastInterlacedPng), {640, 640}));
    }

    void noFileHasNone()
    {
        QVERIFY(!Thumbnail::ofFile(m_folder.filePath(QStringLiteral("none.png")), {640, 640}));
        QVERIFY(!Thumbnail::ofFile(m_folder.path(), {640, 640}));
        QVERIFY(!Thumbnail::of(QImage(), {640, 640}));
        QVERIFY(!PngRows::open(m_folder.filePath(QStringLiteral("none.png"))));
    }

    void rowsComeOneByOneAndEnd()
    {
        const QImage picture = stripedPicture({10, 3});
        const auto rows = PngRows::open(file("rows.png", ourPng(picture)));
        QVERIFY(rows);
        QCOMPARE(rows->size(), QSize(10, 3));
        std::vector<QRgb> row(10);
        for (int y = 0; y < 3; ++y) {
            QVERIFY(rows->next(row.data()));
            for (int x = 0; x < 10; ++x)
                QCOMPARE(row[static_cast<std::size_t>(x)], picture.pixel(x, y));
        }
        QVERIFY(!rows->next(row.data()));
    }
};

BRINDLECAM_TEST(TestThumbnail);

} // namespace brindlecam

#include "tst_thumbnail.moc"
