#include "platform/ClipboardContent.h"

#include <QUrl>

#include <utility>

namespace brindlecam {

namespace {

QByteArrayList urisOf(const QStringList& paths)
{
    QByteArrayList uris;
    for (const QString& path : paths)
        uris.push_back(QUrl::fromLocalFile(path).toEncoded());
    return uris;
}

/// A line each, as RFC 2483 has them: the last one ends, too.
QByteArray uriList(const QByteArrayList& uris)
{
    const auto lineEnd = QByteArrayLiteral("\r\n");
    return uris.join(lineEnd) + lineEnd;
}

/// What GNOME's and its relatives' file managers paste: whether the files are copied or moved, and
/// then the files. A last empty line would be one file more.
QByteArray copiedFiles(const QByteArrayList& uris)
{
    return QByteArrayLiteral("copy\n") + uris.join('\n');
}

} // namespace

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

ClipboardContent ClipboardContent::files(const QStringList& paths)
{
    ClipboardContent content;
    if (paths.isEmpty())
        return content;
    const QByteArrayList uris = urisOf(paths);
    content.formats.push_back({QByteArrayLiteral("text/uri-list"), uriList(uris), nullptr});
    content.formats.push_back(
        {QByteArrayLiteral("x-special/gnome-copied-files"), copiedFiles(uris), nullptr});
    return content;
}

ClipboardContent ClipboardContent::gif(const QByteArray& bytes, const QString& path)
{
    ClipboardContent content = path.isEmpty() ? ClipboardContent() : files({path});
    if (!bytes.isEmpty())
        content.formats.push_back({QByteArrayLiteral("image/gif"), bytes, nullptr});
    return content;
}

} // namespace brindlecam
