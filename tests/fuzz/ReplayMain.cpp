#include "FuzzTarget.h"

#include <QByteArray>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <algorithm>
#include <cstdio>

namespace {

/// The files of a folder and those below it, in an order that stays; or the file itself.
QStringList inputsIn(const QString& path)
{
    if (QFileInfo(path).isFile())
        return {path};
    QStringList files;
    QDirIterator below(path, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (below.hasNext())
        files << below.next();
    std::sort(files.begin(), files.end());
    return files;
}

bool replay(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "%s cannot be read\n", qPrintable(path));
        return false;
    }
    const QByteArray bytes = file.readAll();
    // Before it runs: a run that fails ends the process, and this line says which one it was.
    std::printf("%s\n", qPrintable(path));
    std::fflush(stdout);
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                           static_cast<std::size_t>(bytes.size()));
    return true;
}

} // namespace

/// Runs a target once with each file that is named, or that lies in a folder that is named. Fails
/// where there is none, so that a corpus cannot go missing unnoticed.
int main(int argc, char* argv[])
{
    LLVMFuzzerInitialize(&argc, &argv);
    bool good = argc > 1;
    for (int i = 1; i < argc; ++i) {
        const QStringList inputs = inputsIn(QFile::decodeName(argv[i]));
        if (inputs.isEmpty())
            std::fprintf(stderr, "%s: nothing to replay\n", argv[i]);
        good = good && !inputs.isEmpty() && std::all_of(inputs.begin(), inputs.end(), replay);
    }
    return good ? 0 : 1;
}
