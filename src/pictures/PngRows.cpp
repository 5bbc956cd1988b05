#include "pictures/PngRows.h"

#include <QFile>

#include <png.h>

#include <csetjmp>
#include <cstdint>
#include <utility>
#include <vector>

namespace brindlecam {

namespace {

/// Ten screens of 8K: nobody captures more, and what claims to hold it would keep a thread busy.
constexpr std::int64_t kMostPixels = 400'000'000;

constexpr std::size_t kPackedBytes = 3; ///< of a pixel: red, green, blue

// libpng leaves its functions by these two: nothing that needs a destructor may live where they
// jump over it.
[[noreturn]] void fail(png_structp png, png_const_charp)
{
    longjmp(*static_cast<jmp_buf*>(png_get_error_ptr(png)), 1);
}

void ignore(png_structp, png_const_charp) {}

void readMore(png_structp png, png_bytep target, png_size_t count)
{
    auto* const file = static_cast<QFile*>(png_get_io_ptr(png));
    if (file->read(reinterpret_cast<char*>(target), static_cast<qint64>(count)) !=
        static_cast<qint64>(count))
        png_error(png, "ends early");
}

} // namespace

struct PngRows::Reader {
    QFile file;
    png_structp png = nullptr;
    png_infop info = nullptr;
    jmp_buf escape{};
    QSize size;
    bool translucent = false;
    std::vector<uchar> packed; ///< a row of three bytes for each pixel; empty: rows have four
    int rowsLeft = 0;

    explicit Reader(const QString& path)
        : file(path)
    {
    }
    ~Reader() { png_destroy_read_struct(&png, &info, nullptr); }
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    bool readHeader();
    bool readRow(QRgb* row);
    bool readBytes(png_bytep target);
};

bool PngRows::Reader::readHeader()
{
    png = png_create_read_struct(PNG_LIBPNG_VER_STRING, &escape, fail, ignore);
    info = png ? png_create_info_struct(png) : nullptr;
    if (!info || setjmp(escape) != 0)
        return false;
    png_set_read_fn(png, &file, readMore);
    png_read_info(png, info);
    const std::int64_t width = png_get_image_width(png, info);
    const std::int64_t height = png_get_image_height(png, info);
    if (width * height > kMostPixels || png_get_interlace_type(png, info) != PNG_INTERLACE_NONE)
        return false;
    translucent = (png_get_color_type(png, info) & PNG_COLOR_MASK_ALPHA) != 0 ||
                  png_get_valid(png, info, PNG_INFO_tRNS) != 0;
    size = QSize(static_cast<int>(width), static_cast<int>(height));
    rowsLeft = size.height();
    // As our own captures are. libpng would turn each pixel round by itself, byte by byte.
    if (!translucent && png_get_color_type(png, info) == PNG_COLOR_TYPE_RGB &&
        png_get_bit_depth(png, info) == 8) {
        packed.resize(static_cast<std::size_t>(width) * kPackedBytes);
        return png_get_rowbytes(png, info) == packed.size();
    }
    // Four bytes for each pixel, in the order of a QRgb in memory.
    png_set_expand(png);
    png_set_strip_16(png);
    png_set_gray_to_rgb(png);
    constexpr png_uint_32 kOpaque = 0xff;
    if (QSysInfo::ByteOrder == QSysInfo::LittleEndian) {
        png_set_bgr(png);
        png_set_add_alpha(png, kOpaque, PNG_FILLER_AFTER);
    } else {
        png_set_swap_alpha(png);
        png_set_add_alpha(png, kOpaque, PNG_FILLER_BEFORE);
    }
    png_read_update_info(png, info);
    return png_get_rowbytes(png, info) == static_cast<std::size_t>(width) * sizeof(QRgb);
}

bool PngRows::Reader::readBytes(png_bytep target)
{
    if (setjmp(escape) != 0)
        return false;
    png_read_row(png, target, nullptr);
    return true;
}

bool PngRows::Reader::readRow(QRgb* row)
{
    if (packed.empty())
        return readBytes(reinterpret_cast<png_bytep>(row));
    if (!readBytes(packed.data()))
        return false;
    for (std::size_t i = 0; i < packed.size(); i += kPackedBytes)
        *row++ = qRgb(packed[i], packed[i + 1], packed[i + 2]);
    return true;
}

PngRows::PngRows(std::unique_ptr<Reader> reader)
    : m_reader(std::move(reader))
{
}

PngRows::~PngRows() = default;

std::unique_ptr<PngRows> PngRows::open(const QString& path)
{
    auto reader = std::make_unique<Reader>(path);
    if (!reader->file.open(QIODevice::ReadOnly) || !reader->readHeader())
        return nullptr;
    return std::unique_ptr<PngRows>(new PngRows(std::move(reader)));
}

QSize PngRows::size() const
{
    return m_reader->size;
}

bool PngRows::next(QRgb* row)
{
    if (m_reader->rowsLeft == 0)
        return false;
    if (!m_reader->readRow(row)) {
        m_reader->rowsLeft = 0;
        return false;
    }
    --m_reader->rowsLeft;
    if (m_reader->translucent) {
        for (int i = 0; i < m_reader->size.width(); ++i)
            row[i] = qPremultiply(row[i]);
    }
    return true;
}

} // namespace brindlecam
