#include "platform/ClipboardContent.h"

#include <utility>

namespace brindlecam {

ClipboardContent ClipboardContent::picture(const QByteArray& png,
                                           std::function<QByteArray()> makeTiff)
{
    ClipboardContent content;
    if (!png.isEmpty())
        content.formats.push_back({QByteArrayLiteral("image/png"), png, nullptr});
    if (makeTiff)
        content.formats.push_back({QByteArrayLiteral("image/tiff"), {}, std::move(makeTiff)});
    return content;
}

ClipboardContent ClipboardContent::text(const QString& text)
{
    ClipboardContent content;
    content.formats.push_back(
        {QByteArrayLiteral("text/plain;charset=utf-8"), text.toUtf8(), nullptr});
    return content;
}

} // namespace brindlecam
