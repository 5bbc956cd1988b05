#include "OwnThreads.h"
#include "platform/unix/TesseractTextRecognizer.h"
#include "reading/TextEngineModule.h"
#include "support/FakeTextRecognizer.h"
#include "support/ReadingAnswers.h"
#include "support/TestCase.h"

#include <QFile>
#include <QTemporaryDir>

#include <array>

namespace brindlecam {

namespace {

const char* const kDataFolder = "TESSDATA_PREFIX";
using test::Answers;
using test::blankPage;
using test::kReadingTime;
using test::writtenPage;

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

class TestTesseractTextRecognizer final : public test::TestCase {
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
        TesseractTextRecognizer recognizer;
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
        QTest::newRow("twenty megapixels of noise") << test::noise({5000, 4000});
    }
    void aPictureWithoutTextGivesNoLines()
    {
        QFETCH(QImage, picture);
        TesseractTextRecognizer recognizer;
        Answers answers;
        recognizer.recognize(picture, &answers.context, answers.collect());
        QTRY_COMPARE_WITH_TIMEOUT(answers.count(), 1, kReadingTime);
        QVERIFY(answers.all[0].ok());
        QCOMPARE(answers.all[0].value(), QStringList());
    }

    void everyRequestReportsInItsTurn()
    {
        TesseractTextRecognizer recognizer;
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
        TesseractTextRecognizer recognizer;
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

    void eachReaderTakesOneThread()
    {
        // The second one starts as after an engine that was left behind.
        std::array<TesseractTextRecognizer, 2> recognizers;
        Answers answers;
        const QImage page = writtenPage(QStringList(3, QStringLiteral("Una línea entre varias")));
        int round = 0;
        for (TesseractTextRecognizer& recognizer : recognizers) {
            const auto before = test::ownThreads();
            recognizer.recognize(page, &answers.context, answers.collect());
            ++round;
            QTRY_COMPARE_WITH_TIMEOUT(answers.count(), round, kReadingTime);
            QCOMPARE(answers.all.back().value().size(), 3);
            // The engine's own helpers would still be there.
            QCOMPARE((test::ownThreads() - before).size(), 1);
        }
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

    void twentyMegapixelsAreRead()
    {
        const QStringList written{QStringLiteral("Arriba a la izquierda"),
                                  QStringLiteral("de una página enorme")};
        QImage page = blankPage({5000, 4000});
        test::writeOn(page, written, Qt::black);
        TesseractTextRecognizer recognizer;
        Answers answers;
        recognizer.recognize(page, &answers.context, answers.collect());
        QTRY_COMPARE_WITH_TIMEOUT(answers.count(), 1, kReadingTime);
        QCOMPARE(answers.all[0].value(), written);
    }

    void withoutAnyDataTheErrorSaysSo()
    {
        const DataFolder empty;
        TesseractTextRecognizer recognizer;
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
        TesseractTextRecognizer recognizer;
        Answers answers;
        recognizer.recognize(writtenPage({QStringLiteral("Total 2024")}), &answers.context,
                             answers.collect());
        QTRY_COMPARE_WITH_TIMEOUT(answers.count(), 1, kReadingTime);
        QVERIFY2(answers.all[0].ok(), "see the row");
        QCOMPARE(answers.all[0].value(), QStringList(QStringLiteral("Total 2024")));
    }

    void aModuleThatComesLaterIsFound()
    {
        QTemporaryDir folder;
        const QString module = folder.filePath(QStringLiteral("brindlecam_ocr.so"));
        TesseractTextRecognizer recognizer({.module = module});
        Answers answers;
        const QImage page = writtenPage({QStringLiteral("Segunda")});
        recognizer.recognize(page, &answers.context, answers.collect());
        QTRY_COMPARE_WITH_TIMEOUT(answers.count(), 1, kReadingTime);
        QCOMPARE(answers.all[0].error().message, QStringLiteral("falta el módulo brindlecam_ocr"));

        QVERIFY(QFile::link(TextEngineModule::usualPath(), module));
        recognizer.recognize(page, &answers.context, answers.collect());
        QTRY_COMPARE_WITH_TIMEOUT(answers.count(), 2, kReadingTime);
        QCOMPARE(answers.all[1].value(), QStringList(QStringLiteral("Segunda")));
    }

    void theEngineIsGivenBackAfterAWhileAndComesAgain()
    {
        TesseractTextRecognizer recognizer({.module = {}, .keepFor = std::chrono::milliseconds(1)});
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
};

BRINDLECAM_TEST(TestTesseractTextRecognizer);

} // namespace brindlecam

#include "tst_tesseracttextrecognizer.moc"
