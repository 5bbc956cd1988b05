#include "platform/linux/x11/ClipboardContent.h"

#include <utility>

namespace brindlecam::x11 {

ClipboardContent ClipboardContent::picture(const QByteArray& png,
                                           std::function<QByteArray()> makeTiff)
{
    const QByteArray pngName = QByteArrayLiteral("image/png");
    const QByteArray tiffName = QByteArrayLiteral("image/tiff");
    ClipboardContent content;
    if (!png.isEmpty())
        content.formats.push_back({pngName, pngName, png, nullptr});
    if (makeTiff)
        content.formats.push_back({tiffName, tiffName, {}, std::move(makeTiff)});
    content.kept.push_back(png.isEmpty() ? tiffName : pngName);
    return content;
}

ClipboardContent ClipboardContent::text(const QString& text)
{
    const QByteArray utf8 = text.toUtf8();
    const QByteArray utf8Name = QByteArrayLiteral("UTF8_STRING");
    const QByteArray latinName = QByteArrayLiteral("STRING");
    ClipboardContent content;
    content.formats.push_back({utf8Name, utf8Name, utf8, nullptr});
    for (const char* plain : {"text/plain;charset=utf-8", "text/plain"})
        content.formats.push_back({plain, plain, utf8, nullptr});
    content.formats.push_back({latinName, latinName, text.toLatin1(), nullptr});
    content.formats.push_back({QByteArrayLiteral("TEXT"), utf8Name, utf8, nullptr});
    for (const auto& format : content.formats)
        content.kept.push_back(format.target);
    return content;
}

} // namespace brindlecam::x11
