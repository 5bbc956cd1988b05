#include "pictures/TiffWriter.h"

#include "pictures/PlainPicture.h"

#include <QBuffer>
#include <QImageWriter>

namespace brindlecam::TiffWriter {

namespace {

constexpr int kLzw = 1; // QImageWriter's number for it

} // namespace

QByteArray encode(const QImage& image, int dotsPerMetre)
{
    const QImage picture = plainPicture(image);
    if (picture.isNull())
        return {};

    // A picture of our own around the same pixels: setting the density of a shared or read-only
    // one would copy all of them. The writer only reads.
    QImage withDensity(const_cast<uchar*>(picture.constBits()), picture.width(), picture.height(),
                       picture.bytesPerLine(), picture.format());
    withDensity.setDotsPerMeterX(dotsPerMetre);
    withDensity.setDotsPerMeterY(dotsPerMetre);

    QBuffer buffer;
    QImageWriter writer(&buffer, "tiff");
    writer.setCompression(kLzw);
    if (!writer.write(withDensity))
        return {};
    return buffer.data();
}

} // namespace brindlecam::TiffWriter
