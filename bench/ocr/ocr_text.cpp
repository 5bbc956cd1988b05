// ocr_text --out DIR IMAGE...: reads each picture with the program's own recogniser, all in one
// process, and writes DIR/<image name without ending>.txt. --times also prints how long each took,
// in milliseconds. Exits with 1 when a picture or its text could not be read or written.
#include "platform/unix/TesseractTextRecognizer.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QImageReader>

#include <cstdio>

namespace {

/// Reads the pictures one after the other and then ends the program.
class Reading final : public QObject {
public:
    Reading(QStringList images, QString folder, bool times)
        : m_images(std::move(images))
        , m_folder(std::move(folder))
        , m_times(times)
    {
    }

    void next()
    {
        if (m_images.isEmpty()) {
            QCoreApplication::exit(m_failed ? 1 : 0);
            return;
        }
        const QString image = m_images.takeFirst();
        const QImage picture(image);
        if (picture.isNull()) {
            fail(image, QStringLiteral("no picture"));
            QMetaObject::invokeMethod(
                this, [this] { next(); }, Qt::QueuedConnection);
            return;
        }
        QElapsedTimer timer;
        timer.start();
        m_recognizer.recognize(picture, this, [this, image, timer](const auto& lines) {
            if (m_times)
                std::printf("%6lld ms  %s\n", static_cast<long long>(timer.elapsed()),
                            qPrintable(QFileInfo(image).completeBaseName()));
            if (!lines)
                fail(image, lines.error().message);
            else
                write(image, lines.value());
            next();
        });
    }

private:
    void write(const QString& image, const QStringList& lines)
    {
        const QString name = QFileInfo(image).completeBaseName() + QStringLiteral(".txt");
        QFile file(QDir(m_folder).filePath(name));
        QByteArray text = lines.join(QLatin1Char('\n')).toUtf8();
        if (!text.isEmpty())
            text += '\n';
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
            fail(file.fileName(), file.errorString());
    }

    void fail(const QString& file, const QString& why)
    {
        std::fprintf(stderr, "%s: %s\n", qPrintable(file), qPrintable(why));
        m_failed = true;
    }

    QStringList m_images;
    const QString m_folder;
    const bool m_times;
    bool m_failed = false;
    brindlecam::TesseractTextRecognizer m_recognizer;
};

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    QImageReader::setAllocationLimit(0);
    QCommandLineParser parser;
    const QCommandLineOption out(QStringLiteral("out"), QStringLiteral("Where the texts go."),
                                 QStringLiteral("DIR"), QStringLiteral("."));
    const QCommandLineOption times(QStringLiteral("times"), QStringLiteral("Print the times."));
    parser.addHelpOption();
    parser.addOption(out);
    parser.addOption(times);
    parser.addPositionalArgument(QStringLiteral("images"), QStringLiteral("Pictures to read."),
                                 QStringLiteral("IMAGE..."));
    parser.process(application);
    if (!QDir().mkpath(parser.value(out))) {
        std::fprintf(stderr, "%s: no folder\n", qPrintable(parser.value(out)));
        return 1;
    }
    Reading reading(parser.positionalArguments(), parser.value(out), parser.isSet(times));
    QMetaObject::invokeMethod(
        &reading, [&reading] { reading.next(); }, Qt::QueuedConnection);
    return QCoreApplication::exec();
}
