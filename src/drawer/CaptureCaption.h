#pragma once

#include <QDateTime>
#include <QLocale>
#include <QSize>
#include <QString>

namespace brindlecam {

/// What stands under a capture: when it was taken, and how large it is. Pure.
namespace CaptureCaption {

/// "Hoy, 9:26", "Ayer, 18:05", else the short date: "14/3/26, 9:26"; each word with a capital where
/// there are any: "9:26 A. M.".
[[nodiscard]] QString when(const QDateTime& time, const QDateTime& now, const QLocale& locale);

/// That of a file, with its size in pixels once that is known: "GIF  ·  Hoy, 9:26  ·  1440×900".
[[nodiscard]] QString of(const QString& path, const QString& when, QSize pixels);

/// The user's, and Spanish where the system has none of its own.
[[nodiscard]] QLocale locale();

} // namespace CaptureCaption

} // namespace brindlecam
