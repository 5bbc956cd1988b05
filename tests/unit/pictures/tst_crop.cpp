#include "pictures/Crop.h"
#include "support/TestCase.h"

namespace brindlecam {

class TestCrop final : public test::TestCase {
    Q_OBJECT

    /// Each pixel of its own colour.
    [[nodiscard]] static QImage numbered(QImage::Format format = QImage::Format_RGB32)
    {
        QImage picture(8, 6, format);
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x)
                picture.setPixelColor(x, y, QColor(10 * x, 10 * y, 5));
        }
        return picture;
    }

private Q_SLOTS:
    void aPartSharesThePicturesPixels()
    {
        const QImage picture = numbered();
        const QRect part(2, 1, 3, 4);
        const QImage cropped = croppedView(picture, part);
        QCOMPARE(cropped, picture.copy(part));
        QCOMPARE(cropped.constScanLine(0), picture.constScanLine(1) + sizeof(QRgb) * 2);
    }

    void aPartOutlivesItsPicture()
    {
        QImage picture = numbered();
        const QImage expected = picture.copy(4, 3, 2, 2);
        const QImage cropped = croppedView(picture, {4, 3, 2, 2});
        picture = {};
        QCOMPARE(cropped, expected);
    }

    void whatIsBeyondThePictureIsCutOff()
    {
        const QImage picture = numbered();
        QCOMPARE(croppedView(picture, {-3, 4, 6, 9}), picture.copy(0, 4, 3, 2));
        QCOMPARE(croppedView(picture, {-1, -1, 99, 99}), picture);
    }

    void nothingIsLeftOfAPartBesideThePicture()
    {
        QVERIFY(croppedView(numbered(), {8, 0, 2, 2}).isNull());
        QVERIFY(croppedView(numbered(), {}).isNull());
        QVERIFY(croppedView({}, {0, 0, 2, 2}).isNull());
    }

    void otherDepthsAreCopied()
    {
        const QImage picture = numbered(QImage::Format_RGB888);
        QCOMPARE(croppedView(picture, {1, 2, 3, 2}), picture.copy(1, 2, 3, 2));
    }
};

BRINDLECAM_TEST(TestCrop);

} // namespace brindlecam

#include "tst_crop.moc"
