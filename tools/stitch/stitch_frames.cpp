// stitch_frames --out FILE FRAME...: stitches frames of one size, in this order, and writes the
// picture as a PNG. What becomes of each frame but the first is told on stderr. Exits with 1 when a
// frame can't be read or the picture not be written, with 64 when called otherwise.
#include "base/WholeFile.h"
#include "long/Stitcher.h"
#include "pictures/PngWriter.h"

#include <QCoreApplication>
#include <QImage>
#include <QImageReader>
#include <QStringList>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>

using namespace brindlecam;

namespace {

constexpr int kMaxRows = 20000;
constexpr int kFailed = 1;
constexpr int kWrongArguments = 64;

struct Order {
    QString out;
    QStringList frames;
};

std::optional<Order> read(const QStringList& arguments)
{
    Order order;
    for (qsizetype i = 1; i < arguments.size(); ++i) {
        if (arguments.at(i) == QStringLiteral("--out") && order.out.isEmpty() &&
            i + 1 < arguments.size())
            order.out = arguments.at(++i);
        else if (arguments.at(i).startsWith(QLatin1Char('-')))
            return {};
        else
            order.frames << arguments.at(i);
    }
    if (order.out.isEmpty() || order.frames.isEmpty())
        return {};
    return order;
}

int complain(int code, const QString& words)
{
    std::fprintf(stderr, "stitch_frames: %s\n", qUtf8Printable(words));
    return code;
}

int stitch(const Order& order)
{
    std::unique_ptr<Stitcher> stitcher;
    for (const QString& file : order.frames) {
        const QImage frame = QImage(file).convertToFormat(QImage::Format_RGB32);
        if (frame.isNull())
            return complain(kFailed, QStringLiteral("no se puede leer %1").arg(file));
        if (!stitcher) {
            stitcher =
                Stitcher::create(frame.width(), frame.height(), std::max(frame.height(), kMaxRows));
            if (!stitcher)
                return complain(kFailed, QStringLiteral("no hay memoria"));
            stitcher->trace = [](const std::string& line) {
                std::fprintf(stderr, "%s\n", line.c_str());
            };
        }
        if (frame.width() != stitcher->width() || frame.height() != stitcher->height())
            return complain(kFailed,
                            QStringLiteral("%1 no mide lo mismo que el primero").arg(file));
        (void)stitcher->add({frame.constBits(), static_cast<std::size_t>(frame.sizeInBytes())});
    }
    const auto picture = stitcher->makeImage();
    const QImage image(picture->bytes.get(), picture->width, picture->height, picture->width * 4,
                       QImage::Format_RGB32);
    const QByteArray bytes =
        PngWriter::encode(image, {.effort = PngWriter::Effort::small, .cancelled = {}});
    if (bytes.isEmpty() || !writeWhole(order.out, bytes))
        return complain(kFailed, QStringLiteral("no se puede escribir %1").arg(order.out));
    return 0;
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    QImageReader::setAllocationLimit(0);
    const auto order = read(QCoreApplication::arguments());
    if (!order)
        return complain(kWrongArguments,
                        QStringLiteral("uso: stitch_frames --out ARCHIVO FOTOGRAMA..."));
    return stitch(*order);
}
