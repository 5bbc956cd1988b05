#include "Demo.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <csignal>
#include <cstdlib>

using brindlecam::demo::Demo;

/// Usage: demo FOLDER. Shows the program beside it at work on a virtual screen, leaves the pictures
/// in the folder and prints where they are; succeeds only when all of them decode.
int main(int argc, char* argv[])
{
    if (argc != 2)
        qFatal("usage: demo FOLDER");
    // Nothing of the user's own session takes part.
    for (const char* name : {"QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS"})
        qunsetenv(name);
    qputenv("QT_FONT_DPI", "96");
    const QCoreApplication application(argc, argv);
    const QString programs = QCoreApplication::applicationDirPath();
    qputenv("BRINDLECAM_PROGRAM", QFile::encodeName(programs + QStringLiteral("/brindlecam")));
    const auto interrupt = [](int) { Demo::interrupt(); };
    for (const int signal : {SIGINT, SIGTERM})
        std::signal(signal, interrupt);
    return Demo(programs, QDir(QFile::decodeName(argv[1])).absolutePath()).show() ? EXIT_SUCCESS
                                                                                  : EXIT_FAILURE;
}
