#include "shell/InstanceMessages.h"

#include "shell/InstanceProtocol.h"

#include <algorithm>

namespace brindlecam::InstanceMessages {

namespace {

QByteArray escaped(const QByteArray& bytes)
{
    QByteArray field(3 * bytes.size() + 1, Qt::Uninitialized);
    field.truncate(static_cast<qsizetype>(brindlecam_escape(
        bytes.constData(), static_cast<std::size_t>(bytes.size()), field.data())));
    return field;
}

/// The bytes that are written like this, and no other way.
std::optional<QByteArray> unescaped(const QByteArray& field)
{
    QByteArray bytes = QByteArray::fromPercentEncoding(field);
    return escaped(bytes) == field ? std::optional(bytes) : std::nullopt;
}

/// A number as we write it, and no other way: digits alone, few of them.
std::optional<int> number(const QByteArray& digits)
{
    constexpr qsizetype kMostDigits = 9;
    const bool plain = std::ranges::all_of(digits, [](char c) { return c >= '0' && c <= '9'; });
    if (digits.isEmpty() || digits.size() > kMostDigits || !plain)
        return std::nullopt;
    const int number = digits.toInt();
    return QByteArray::number(number) == digits ? std::optional(number) : std::nullopt;
}

} // namespace

QByteArray line(const InstanceRequest& request)
{
    QByteArray line = QByteArray::number(BRINDLECAM_PROTOCOL_VERSION);
    for (const QByteArray& word : request.words)
        line += ' ' + escaped(word);
    return line + ' ' + escaped(request.folder) + '\n';
}

QByteArray bytes(const InstanceReply& reply)
{
    return QByteArray::number(reply.exitCode) + '\n' + reply.text;
}

std::variant<InstanceRequest, OtherVersion, Nonsense> readRequest(const QByteArray& line)
{
    if (!line.endsWith('\n'))
        return Nonsense();
    QByteArrayList fields = line.chopped(1).split(' ');
    const std::optional<int> version = number(fields.takeFirst());
    if (!version)
        return Nonsense();
    if (*version != BRINDLECAM_PROTOCOL_VERSION)
        return OtherVersion();
    if (fields.isEmpty())
        return Nonsense();
    InstanceRequest request;
    for (const QByteArray& field : fields) {
        const std::optional<QByteArray> bytes = unescaped(field);
        if (!bytes)
            return Nonsense();
        request.words << *bytes;
    }
    request.folder = request.words.takeLast();
    return request;
}

std::optional<InstanceReply> readReply(const QByteArray& bytes)
{
    const qsizetype end = bytes.indexOf('\n');
    const std::optional<int> exitCode = number(bytes.left(std::max<qsizetype>(end, 0)));
    if (!exitCode || *exitCode > BRINDLECAM_LARGEST_CODE)
        return std::nullopt;
    return InstanceReply{*exitCode, bytes.mid(end + 1)};
}

} // namespace brindlecam::InstanceMessages
