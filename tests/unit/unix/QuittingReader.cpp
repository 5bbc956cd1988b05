// quitting_reader MODULE SIDE: ends in the middle of a reading of many dots, on a square page with
// sides of so many pixels, in order and with exit code 7. Says so on standard output the moment
// before.
#include "platform/unix/TesseractTextRecognizer.h"
#include "support/ReadingAnswers.h"

#include <QCoreApplication>
#include <QFile>

#include <dlfcn.h>

#include <cstdio>
#include <ctime>

using namespace brindlecam;

namespace {

/// Dots so far apart that they may be text, as far as our own steps can tell.
constexpr int kPercent = 2;

/// Whether the engine is at it: the faulty one counts. The other has had more processor time than
/// loading and our own steps take together.
bool isAtIt(const QString& module)
{
    void* const library = ::dlopen(QFile::encodeName(module).constData(), RTLD_NOW);
    const auto begun = reinterpret_cast<int (*)()>(::dlsym(library, "faultyEngineBegun"));
    return begun ? begun() > 0 : std::clock() > 2 * CLOCKS_PER_SEC;
}

} // namespace

int main(int argc, char* argv[])
{
    constexpr int kDone = 7;
    QCoreApplication application(argc, argv);
    if (argc != 3)
        return 1;
    const QString module = QString::fromLocal8Bit(argv[1]);
    const int side = QByteArray(argv[2]).toInt();
    test::Answers answers;
    TesseractTextRecognizer recognizer({.module = module});
    recognizer.recognize(test::scatteredDots({side, side}, kPercent), &answers.context,
                         answers.collect());
    while (!isAtIt(module))
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    if (answers.count() > 0)
        return 2;
    std::puts("quitting");
    std::fflush(stdout);
    return kDone;
}
