#include "platform/x11/grab/PointerPicture.h"
#include "support/TestCase.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <vector>

namespace brindlecam {

namespace {

constexpr QRgb kGround = 0xff204060;
constexpr QRgb kRed = 0xffff0000;
constexpr QRgb kGreen = 0xff00ff00;
constexpr QRgb kBlue = 0xff0000ff;
constexpr QRgb kWhite = 0xffffffff;

/// Two by two, a colour for each corner.
PointerPicture fourCorners(QPoint topLeft)
{
    QImage image(2, 2, QImage::Format_ARGB32_Premultiplied);
    image.setPixel(0, 0, kRed);
    image.setPixel(1, 0, kGreen);
    image.setPixel(0, 1, kBlue);
    image.setPixel(1, 1, kWhite);
    return {image, topLeft};
}

QImage ground(QSize size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(kGround);
    return image;
}

} // namespace

/// The pointer in a picture.
class TestPointerPicture final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void hotSpotIsWhereThePointerIs()
    {
        // As it comes over the connection: the pixels right after the numbers.
        constexpr std::array<std::uint32_t, 6> kPixels{0, kRed, kGreen, kBlue, kWhite, 0x80800000};
        std::vector<std::uint32_t> bytes(sizeof(xcb_xfixes_get_cursor_image_reply_t) / 4 +
                                         kPixels.size());
        auto& reply = *reinterpret_cast<xcb_xfixes_get_cursor_image_reply_t*>(bytes.data());
        reply.x = -3;
        reply.y = 40;
        reply.width = 3;
        reply.height = 2;
        reply.xhot = 2;
        reply.yhot = 1;
        std::memcpy(xcb_xfixes_get_cursor_image_cursor_image(&reply), kPixels.data(),
                    sizeof kPixels);
        const auto pointer = PointerPicture::of(reply);
        bytes.assign(bytes.size(), 0); // it is a copy
        QCOMPARE(pointer.topLeft, QPoint(-5, 39));
        QCOMPARE(pointer.image.size(), QSize(3, 2));
        QCOMPARE(pointer.image.format(), QImage::Format_ARGB32_Premultiplied);
        for (std::size_t index = 0; index < kPixels.size(); ++index) {
            const auto* const line = reinterpret_cast<const QRgb*>(
                pointer.image.constScanLine(static_cast<int>(index / 3)));
            QCOMPARE(line[index % 3], kPixels[index]);
        }
    }

    void itLiesWhereThePictureHasThatPlace()
    {
        QImage picture = ground({4, 4});
        fourCorners({101, 51}).paintInto(picture, {100, 50});
        QImage expected = ground({4, 4});
        expected.setPixel(1, 1, kRed);
        expected.setPixel(2, 1, kGreen);
        expected.setPixel(1, 2, kBlue);
        expected.setPixel(2, 2, kWhite);
        QCOMPARE(picture, expected);
    }

    void itIsCutAtEveryEdge_data()
    {
        QTest::addColumn<QPoint>("topLeft");
        QTest::addColumn<QPoint>("painted"); // the only pixel that changes
        QTest::addColumn<QRgb>("colour");
        QTest::newRow("upper left") << QPoint(-1, -1) << QPoint(0, 0) << kWhite;
        QTest::newRow("upper right") << QPoint(2, -1) << QPoint(2, 0) << kBlue;
        QTest::newRow("lower left") << QPoint(-1, 2) << QPoint(0, 2) << kGreen;
        QTest::newRow("lower right") << QPoint(2, 2) << QPoint(2, 2) << kRed;
    }
    void itIsCutAtEveryEdge()
    {
        QFETCH(QPoint, topLeft);
        QFETCH(QPoint, painted);
        QFETCH(QRgb, colour);
        QImage picture = ground({3, 3});
        fourCorners(topLeft).paintInto(picture, {});
        QImage expected = ground({3, 3});
        expected.setPixel(painted, colour);
        QCOMPARE(picture, expected);
    }

    void outsideOfThePictureNothingChanges_data()
    {
        QTest::addColumn<QPoint>("topLeft");
        QTest::newRow("left") << QPoint(-2, 0);
        QTest::newRow("right") << QPoint(3, 0);
        QTest::newRow("above") << QPoint(0, -2);
        QTest::newRow("below") << QPoint(0, 3);
    }
    void outsideOfThePictureNothingChanges()
    {
        QFETCH(QPoint, topLeft);
        QImage picture = ground({3, 3});
        fourCorners(topLeft).paintInto(picture, {});
        QCOMPARE(picture, ground({3, 3}));
    }

    void itsEdgesBlendWithWhatLiesBelow()
    {
        PointerPicture pointer{QImage(2, 1, QImage::Format_ARGB32_Premultiplied), {0, 0}};
        auto* const pixels = reinterpret_cast<QRgb*>(pointer.image.bits());
        pixels[0] = 0x80800000; // half of red
        pixels[1] = 0;
        QImage picture = ground({2, 1});
        pointer.paintInto(picture, {});
        const QColor blended = picture.pixelColor(0, 0);
        QVERIFY(qAbs(blended.red() - (0x80 + 0x20 / 2)) <= 1);
        QVERIFY(qAbs(blended.green() - 0x40 / 2) <= 1);
        QVERIFY(qAbs(blended.blue() - 0x60 / 2) <= 1);
        QCOMPARE(picture.pixel(1, 0), kGround);
    }
};

BRINDLECAM_TEST(TestPointerPicture);

} // namespace brindlecam

#include "tst_pointerpicture.moc"
