#include "LibPng.h"

#include "Eyes.h"

#include <QTemporaryFile>

#include <png.h>

namespace brindlecam::bench {

namespace {

constexpr int kLevel = 6;

void append(png_structp png, png_bytep data, png_size_t length)
{
    static_cast<QByteArray*>(png_get_io_ptr(png))
        ->append(reinterpret_cast<const char*>(data), static_cast<qsizetype>(length));
}

} // namespace

QByteArray encodedByLibPng(const QImage& image)
{
    QByteArray bytes;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_set_write_fn(png, &bytes, append, nullptr);
    png_set_compression_level(png, kLevel);
    png_set_filter(png, 0, PNG_ALL_FILTERS);
    png_set_IHDR(png, info, static_cast<png_uint_32>(image.width()),
                 static_cast<png_uint_32>(image.height()), 8, PNG_COLOR_TYPE_RGB,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    // As the pixels lie in memory: blue first, the fourth byte unused.
    png_set_bgr(png);
    png_set_filler(png, 0, PNG_FILLER_AFTER);
    for (int y = 0; y < image.height(); ++y)
        png_write_row(png, image.constScanLine(y));
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
    return bytes;
}

LibPngRun encodeAndWriteByLibPng(const QImage& image)
{
    QTemporaryFile file;
    if (!file.open())
        qFatal("no place for a temporary file");
    const auto from = Clock::now();
    const QByteArray bytes = encodedByLibPng(image);
    if (file.write(bytes) != bytes.size() || !file.flush())
        qFatal("the temporary file can't be written");
    return {millisecondsBetween(from, Clock::now()), bytes.size()};
}

} // namespace brindlecam::bench
