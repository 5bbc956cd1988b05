#include "FuzzTarget.h"

#include <QGuiApplication>
#include <QString>

#include <cstdio>
#include <cstdlib>

namespace {

/// No target gives cause for a warning, neither ours nor Qt's.
void endOnWarning(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message)
{
    std::fprintf(stderr, "%s\n", qPrintable(message));
    if (type == QtWarningMsg || type == QtCriticalMsg || type == QtFatalMsg)
        std::abort();
}

} // namespace

// NOLINTNEXTLINE(readability-non-const-parameter): the application keeps it and may change it.
int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_FONT_DPI", "96");
    qputenv("QT_NO_GLIB", "1"); // one kind of event loop everywhere
    // For good: the fuzzer's own main() knows nothing of it.
    static const auto* const application = new QGuiApplication(*argc, *argv);
    Q_UNUSED(application);
    qInstallMessageHandler(endOnWarning); // what the machine lacks was told above
    return 0;
}
