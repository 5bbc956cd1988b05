#include "Decoders.h"

#include <QProcess>

namespace brindlecam::demo {

namespace {

/// What a program prints; none when it fails.
std::optional<QString> outputOf(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    const bool succeeds = process.waitForFinished() &&
                          process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    return succeeds ? std::optional(QString::fromUtf8(process.readAllStandardOutput()))
                    : std::nullopt;
}

} // namespace

bool isSoundPng(const QString& path)
{
    return outputOf(QStringLiteral("pngcheck"), {QStringLiteral("-q"), path}).has_value();
}

std::optional<QString> sizeOf(const QString& path)
{
    return outputOf(QStringLiteral("identify"),
                    {QStringLiteral("-format"), QStringLiteral("%w × %h"), path});
}

} // namespace brindlecam::demo
