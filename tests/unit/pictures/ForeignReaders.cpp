#include "ForeignReaders.h"

#include <QBuffer>
#include <QProcess>
#include <QTemporaryFile>

#include <png.h>

namespace brindlecam::test::ForeignReaders {

QImage decodedByLibpng(const QByteArray& png)
{
    png_image header{};
    header.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_memory(&header, png.constData(),
                                          static_cast<std::size_t>(png.size())))
        return {};
    header.format = Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? PNG_FORMAT_BGRA : PNG_FORMAT_ARGB;
    QImage image(static_cast<int>(header.width), static_cast<int>(header.height),
                 QImage::Format_ARGB32);
    if (!png_image_finish_read(&header, nullptr, image.bits(),
                               static_cast<png_int_32>(image.bytesPerLine()), nullptr))
        return {};
    return image;
}

qsizetype libpngSize(const QImage& image)
{
    QBuffer buffer;
    image.save(&buffer, "PNG");
    return buffer.size();
}

QString report(const QString& program, const QByteArray& bytes)
{
    QTemporaryFile file;
    if (!file.open() || file.write(bytes) != bytes.size() || !file.flush())
        return QStringLiteral("exit 1: no temporary file");
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, {file.fileName()});
    if (!process.waitForFinished())
        return QStringLiteral("exit 1: ") + process.errorString();
    const QString output = QString::fromLocal8Bit(process.readAll());
    if (process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0)
        return output;
    return QStringLiteral("exit %1: %2").arg(process.exitCode()).arg(output);
}

} // namespace brindlecam::test::ForeignReaders
