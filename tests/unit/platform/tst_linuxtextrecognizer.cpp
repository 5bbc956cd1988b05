#include "platform/linux/LinuxTextRecognizer.h"
#include "platform/linux/text/TextPage.h"
#include "platform/null/NullPlatform.h"
#include "support/FakeTextRecognizer.h"
#include "support/TestCase.h"

#include <QElapsedTimer>
#include <QFile>
#include <QLibraryInfo>
#include <QPainter>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <ctime>

namespace brindlecam {

namespace {

const char* const kDataFolder = "TESSDATA_PREFIX";
constexpr int kReadingTime = 30000; // milliseconds; a busy machine under sanitizers

/// A picture with lines of text in it.
QImage writtenPage(const QStringList& lines, QColor ink = Qt::black, QColor paper = Qt::white)
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(15);
    QImage page(420, 20 + 26 * static_cast<int>(lines.size()), QImage::Format_RGB32);
    page.fill(paper);
    QPainter painter(&page);
    painter.setFont(font);
    painter.setPen(ink);
    for (int i = 0; i < lines.size(); ++i)
        painter.drawText(QPoint(12, 28 + 26 * i), lines[i]);
    return page;
}

QImage blankPage(QSize size)
{
    QImage page(size, QImage::Format_RGB32);
    page.fill(Qt::white);
    return page;
}

/// Waits for what a recogniser reports.
struct Answers {
    QObject context;
    std::vector<Result<QStringList>> all;

    LinuxTextRecognizer::Done collect()
    {
        return [this](Result<QStringList> lines) { all.push_back(std::move(lines)); };
    }
    [[nodiscard]] int count() const { return static_cast<int>(all.size()); }
};

/// Lets the engine look for its data in a folder of the test's.
class DataFolder final {
public:
    DataFolder()
        : m_before(qgetenv(kDataFolder))
    {
        qputenv(kDataFolder, QFile::encodeName(m_folder.path()));
    }
    ~DataFolder()
    {
        if (m_before.isEmpty())
            qunsetenv(kDataFolder);
        else
            qputenv(kDataFolder, m_before);
    }
    DataFolder(const DataFolder&) = delete;
    DataFolder& operator=(const DataFolder&) = delete;

    /// Puts the data of one language there.
    bool add(const QString& language)
    {
        const QString name = language + QStringLiteral(".traineddata");
        const QByteArray usual = m_before.isEmpty() ? QByteArray(BRINDLECAM_TESSDATA) : m_before;
        return QFile::link(QFile::decodeName(usual) + QLatin1Char('/') + name,
                           m_folder.filePath(name));
    }

private:
    const QByteArray m_before;
    QTemporaryDir m_folder;
};

} // namespace

class TestLinuxTextRecognizer final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void spanishIsReadToTheAccent_data()
    {
        QTest::addColumn<QColor>("ink");
        QTest::addColumn<QColor>("paper");
        QTest::newRow("black on white") << QColor(Qt::black) << QColor(Qt::white);
        QTest::newRow("a dark terminal") << QColor(210, 210, 200) << QColor(30, 32, 40);
        QTest::newRow("a coloured button") << QColor(Qt::white) << QColor(30, 100, 210);
    }
    void spanishIsReadToTheAccent()
    {
        QFETCH(QColor, ink);
        QFETCH(QColor, paper);
        const QStringList written{QStringLiteral("El camión llegó mañana temprano."),
                                  QStringLiteral("¿Dónde está la canción?")};
        LinuxTextRecognizer recognizer;
        Answers answers;
        recognizer.recognize(writtenPage(written, ink, paper), &answers.context, answers.collect());
        QCOMPARE(answers.count(), 0);
        QTRY_COMPARE_WITH_TIMEOUT(answers.count(), 1, kReadingTime);
        QVERIFY2(answers.all[0].ok(), "see the row");
        QCOMPARE(answers.all[0].value(), written);
    }

    void aPictureWithoutTextGivesNoLines_data()
    {
        QTest::addColumn<QImage>("picture");
        QTest::newRow("blank") << blankPage({200, 80});
        QTest::newRow("one pixel") << blankPage({1, 1});
        QTest::newRow("none at all") << QImage();
        QTest::newRow("a thin line") << blankPage({3000, 2});
    }
    void aPictureWithoutTextGivesNoLines()
    {
        QFETCH(QImage, picture);
        LinuxTextRecognizer recognizer;
        Answers answers;
        recognizer.recognize(picture, &answers.context, answers.collect());
        QTRY_COMPARE_WITH_TIMEOUT(answers.count(), 1, kReadingTime);
        QVERIFY(answers.all[0].ok());
        QCOMPARE(answers.all[0].value(), QStringList());
    }

    void everyRequestReportsInItsTurn()
    {
        LinuxTextRecognizer recognizer;
        recognizer.warmUp();
        recognizer.warmUp();
        Answers answers;
        for (const QString& word : {QStringLiteral("Primera captura"), QStringLiteral("Segunda")})
            recognizer.recognize(writtenPage({word}), &answers.context, answers.collect());
        QTRY_COMPARE_WITH_TIMEOUT(answers.count(), 2, kReadingTime);
        QCOMPARE(answers.all[0].value(), QStringList(QStringLiteral("Primera captura")));
        QCOMPARE(answers.all[1].value(), QStringList(QStringLiteral("Segunda")));
    }

    void theResultOfAVanishedContextIsDropped()
    {
        LinuxTextRecognizer recognizer;
        Answers answers;
        auto gone = std::make_unique<QObject>();
        const auto held = std::make_shared<int>(0);
        recognizer.recognize(
            writtenPage(QStringList(40, QStringLiteral("Una línea de muchas"))), gone.get(),
            [done = answers.collect(), held](auto lines) { done(std::move(lines)); });
        gone.reset();
        recognizer.recognize(writtenPage({QStringLiteral("Segunda")}), &answers.context,
                             answers.collect());
        QTRY_COMPARE_WITH_TIMEOUT(answers.count(), 1, kReadingTime);
        QCOMPARE(answers.all[0].value(), QStringList(QStringLiteral("Segunda")));
        QCOMPARE(held.use_count(), 1);
    }

    void aReadingUnderWayIsGivenUpWithItsContext()
    {
        LinuxTextRecognizer recognizer;
        Answers answers;
        const QImage page =
            writtenPage(QStringList(200, QStringLiteral("Una línea larga entre muchas otras más")));
        // Processor time: a busy machine makes both readings longer, but not more work.
        const std::clock_t start = std::clock();
        recognizer.recognize(page, &answers.context, answers.collect());
        QElapsedTimer timer;
        timer.start();
        QTRY_COMPARE_WITH_TIMEOUT(answers.count(), 1, 4 * kReadingTime);
        QVERIFY(answers.all[0].value().size() >= 199);
        const qint64 wall = timer.elapsed();
        const std::clock_t whole = std::clock() - start;

        auto gone = std::make_unique<QObject>();
        recognizer.recognize(page, gone.get(), answers.collect());
        // Into the middle of it.
        QTest::qWait(static_cast<int>(wall / 8));
        gone.reset();
        recognizer.recognize(blankPage({40, 40}), &answers.context, answers.collect());
        QTRY_COMPARE_WITH_TIMEOUT(answers.count(), 2, 4 * kReadingTime);
        QVERIFY2(std::clock() - start - whole < whole * 2 / 3, "the whole page was read");
    }

    void whereNothingReadsTheErrorSaysSo()
    {
        const Platform platform = makeNullPlatform();
        Answers answers;
        platform.textRecognizer->warmUp();
        platform.textRecognizer->recognize(blankPage({9, 9}), &answers.context, answers.collect());
        QCOMPARE(answers.count(), 0);
        QTRY_COMPARE(answers.count(), 1);
        QCOMPARE(answers.all[0].error().message,
                 QStringLiteral("este sistema no tiene reconocimiento de texto"));
    }

    void theFakeAnswersOnlyWhoIsStillThere()
    {
        test::FakeTextRecognizer fake;
        Answers answers;
        auto gone = std::make_unique<QObject>();
        fake.recognize(blankPage({9, 9}), gone.get(), answers.collect());
        fake.recognize(blankPage({9, 9}), &answers.context, answers.collect());
        gone.reset();
        fake.answer(QStringList(QStringLiteral("uno")));
        QCOMPARE(answers.count(), 0);
        fake.answer(QStringList(QStringLiteral("dos")));
        QCOMPARE(answers.count(), 1);
    }

    void quittingDoesNotWaitForTheText()
    {
        Answers answers;
        {
            LinuxTextRecognizer recognizer;
            recognizer.recognize(
                writtenPage(QStringList(100, QStringLiteral("Una línea larga entre muchas"))),
                &answers.context, answers.collect());
        }
        QCoreApplication::processEvents();
        QCOMPARE(answers.count(), 0);
    }

    void withoutAnyDataTheErrorSaysSo()
    {
        const DataFolder empty;
        LinuxTextRecognizer recognizer;
        recognizer.warmUp();
        Answers answers;
        recognizer.recognize(writtenPage({QStringLiteral("Hola")}), &answers.context,
                             answers.collect());
        QTRY_COMPARE_WITH_TIMEOUT(answers.count(), 1, kReadingTime);
        QVERIFY(!answers.all[0].ok());
        QCOMPARE(
            answers.all[0].error().message,
            QStringLiteral("faltan los datos de idioma (tesseract-ocr-spa o tesseract-ocr-eng)"));
        QVERIFY(!recognizer.isLoaded());
    }

    void oneLanguageIsEnough_data()
    {
        QTest::addColumn<QString>("language");
        QTest::newRow("Spanish") << QStringLiteral("spa");
        QTest::newRow("English") << QStringLiteral("eng");
    }
    void oneLanguageIsEnough()
    {
        QFETCH(QString, language);
        DataFolder folder;
        QVERIFY(folder.add(language));
        LinuxTextRecognizer recognizer;
        Answers answers;
        recognizer.recognize(writtenPage({QStringLiteral("Total 2024")}), &answers.context,
                             answers.collect());
        QTRY_COMPARE_WITH_TIMEOUT(answers.count(), 1, kReadingTime);
        QVERIFY2(answers.all[0].ok(), "see the row");
        QCOMPARE(answers.all[0].value(), QStringList(QStringLiteral("Total 2024")));
    }

    void whatIsMissingIsNamed()
    {
        QTemporaryDir folder;
        const QString missing = folder.filePath(QStringLiteral("brindlecam_ocr.so"));
        LinuxTextRecognizer recognizer({.module = missing});
        Answers answers;
        recognizer.recognize(blankPage({9, 9}), &answers.context, answers.collect());
        QTRY_COMPARE_WITH_TIMEOUT(answers.count(), 1, kReadingTime);
        QCOMPARE(answers.all[0].error().message, QStringLiteral("falta el módulo brindlecam_ocr"));

        // There, but its libraries are not.
        QFile file(missing);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("no library") > 0);
        file.close();
        recognizer.recognize(blankPage({9, 9}), &answers.context, answers.collect());
        QTRY_COMPARE_WITH_TIMEOUT(answers.count(), 2, kReadingTime);
        QCOMPARE(answers.all[1].error().message,
                 QStringLiteral("falta la biblioteca libtesseract5"));
    }

    void theEngineIsGivenBackAfterAWhileAndComesAgain()
    {
        LinuxTextRecognizer recognizer({.module = {}, .keepFor = std::chrono::milliseconds(1)});
        recognizer.warmUp();
        Answers answers;
        for (int round = 1; round <= 2; ++round) {
            recognizer.recognize(writtenPage({QStringLiteral("Otra vez")}), &answers.context,
                                 answers.collect());
            QTRY_COMPARE_WITH_TIMEOUT(answers.count(), round, kReadingTime);
            QCOMPARE(answers.all.back().value(), QStringList(QStringLiteral("Otra vez")));
            QTRY_VERIFY_WITH_TIMEOUT(!recognizer.isLoaded(), kReadingTime);
        }
    }

    void aPageIsMadeLargeEnoughAndGetsABorder()
    {
        const TextPage page(writtenPage({QStringLiteral("mesa y nombre")}));
        QVERIFY(page.grey().width() > 1.3 * 420);
        QCOMPARE(qGray(page.grey().pixel(0, 0)), 255);
        QVERIFY(page.lines({}).isEmpty());
    }
};

BRINDLECAM_TEST(TestLinuxTextRecognizer);

} // namespace brindlecam

#include "tst_linuxtextrecognizer.moc"
