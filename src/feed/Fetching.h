#pragma once

#include <QByteArray>
#include <QSslConfiguration>
#include <QUrl>

namespace brindlecam {

/// Asks and prints the answer to standard output; 0, or 1 where there is none, and nothing is
/// printed. Runs the application's loop meanwhile.
[[nodiscard]] int printAnswer(const QUrl& feed, const QByteArray& userAgent,
                              const QSslConfiguration& security);

} // namespace brindlecam
