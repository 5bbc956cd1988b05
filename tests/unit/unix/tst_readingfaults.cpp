// Covers ReadingQueue.
#include "OwnThreads.h"
#include "platform/unix/TesseractTextRecognizer.h"
#include "reading/TextEngineModule.h"
#include "support/FaultyModule.h"
#include "support/ReadingAnswers.h"
#include "support/TestCase.h"

#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTimer>

#include <sys/resource.h>
#include <unistd.h>

namespace brindlecam {

namespace {

using test::FaultyModule;

/// Keeps the process from taking much more memory than it has.
class ScarceMemory final {
public:
    explicit ScarceMemory(rlim_t more)
    {
        ::getrlimit(RLIMIT_AS, &m_before);
        QFile sizes(QStringLiteral("/proc/self/statm"));
        if (!sizes.open(QIODevice::ReadOnly))
            return;
        const rlim_t pages = sizes.readAll().split(' ').front().toULongLong();
        rlimit limit = m_before;
        limit.rlim_cur = pages * static_cast<rlim_t>(::sysconf(_SC_PAGESIZE)) + more;
        ::setrlimit(RLIMIT_AS, &limit);
    }
    ~ScarceMemory() { ::setrlimit(RLIMIT_AS, &m_before); }
    ScarceMemory(const ScarceMemory&) = delete;
    ScarceMemory& operator=(const ScarceMemory&) = delete;

private:
    rlimit m_before{};
};

} // namespace

/// Readings with an engine that does not do as it should, in the program's own recogniser.
class TestReadingFaults final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aFailingEngineIsAnErrorAndTheNextReadingWorks_data()
    {
        QTest::addColumn<QByteArray>("fault");
        QTest::addColumn<QString>("message");
        const auto failed = QStringLiteral("el motor de reconocimiento falló");
        QTest::newRow("it says so") << QByteArray("fails") << failed;
        QTest::newRow("it throws") << QByteArray("throws") << failed;
        QTest::newRow("it has no memory")
            << QByteArray("throws-memory") << QStringLiteral("no hay memoria suficiente");
    }
    void aFailingEngineIsAnErrorAndTheNextReadingWorks()
    {
        QFETCH(QByteArray, fault);
        QFETCH(QString, message);
        FaultyModule module;
        module.set(fault);
        TesseractTextRecognizer recognizer({.module = FaultyModule::path()});
        test::Answers answers;
        const QImage page = test::writtenPage({QStringLiteral("hola")});
        recognizer.recognize(page, &answers.context, answers.collect());
        QTRY_COMPARE_WITH_TIMEOUT(answers.count(), 1, test::kReadingTime);
        QVERIFY(!answers.all[0].ok());
        QCOMPARE(answers.all[0].error().message, message);

        module.set({});
        recognizer.recognize(page, &answers.context, answers.collect());
        QTRY_COMPARE_WITH_TIMEOUT(answers.count(), 2, test::kReadingTime);
        QCOMPARE(answers.all[1].value(), QStringList(QStringLiteral("hola")));
    }

    void aPictureTooLargeForTheMemoryIsAnError()
    {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
        QSKIP("the sanitizer ends the program where memory does");
#endif
        constexpr rlim_t kTooLittle = 20 << 20;
        const FaultyModule module;
        TesseractTextRecognizer recognizer({.module = FaultyModule::path()});
        test::Answers answers;
        const QImage small = test::writtenPage({QStringLiteral("hola")});
        const QImage large = test::noise({4000, 4000});
        recognizer.recognize(small, &answers.context, answers.collect());
        QTRY_COMPARE_WITH_TIMEOUT(answers.count(), 1, test::kReadingTime);
        {
            const ScarceMemory scarce(kTooLittle);
            recognizer.recognize(large, &answers.context, answers.collect());
            QTRY_COMPARE_WITH_TIMEOUT(answers.count(), 2, test::kReadingTime);
        }
        QVERIFY(!answers.all[1].ok());
        QCOMPARE(answers.all[1].error().message, QStringLiteral("no hay memoria suficiente"));
        recognizer.recognize(small, &answers.context, answers.collect());
        QTRY_COMPARE_WITH_TIMEOUT(answers.count(), 3, test::kReadingTime);
        QCOMPARE(answers.all[2].value(), QStringList(QStringLiteral("hola")));
    }

    void anEngineThatDoesNotListenHoldsUpNobody()
    {
        FaultyModule module;
        module.set("deaf");
        TesseractTextRecognizer recognizer({.module = FaultyModule::path()});
        test::Answers answers;
        const QImage page = test::writtenPage({QStringLiteral("hola")});
        auto gone = std::make_unique<QObject>();
        const auto held = std::make_shared<int>(0);
        recognizer.recognize(page, gone.get(), [done = answers.collect(), held](auto lines) {
            done(std::move(lines));
        });
        QTRY_COMPARE_WITH_TIMEOUT(module.readings(), 1, test::kReadingTime);

        module.set({});
        // One that waits already, and one that comes later.
        recognizer.recognize(page, &answers.context, answers.collect());
        gone.reset();
        QCOMPARE(held.use_count(), 1);
        QTRY_COMPARE_WITH_TIMEOUT(answers.count(), 1, test::kReadingTime);
        recognizer.recognize(page, &answers.context, answers.collect());
        QTRY_COMPARE_WITH_TIMEOUT(answers.count(), 2, test::kReadingTime);
        QCOMPARE(answers.all[1].value(), QStringList(QStringLiteral("hola")));

        module.free();
        QCOMPARE(module.readings(), 3);
        QCOMPARE(answers.count(), 2);
    }

    void anEngineThatListensGoesOnWithTheNextReading()
    {
        FaultyModule module;
        module.set("endless");
        TesseractTextRecognizer recognizer(
            {.module = FaultyModule::path(), .patience = std::chrono::hours(1)});
        test::Answers answers;
        const QImage page = test::writtenPage({QStringLiteral("hola")});
        auto gone = std::make_unique<QObject>();
        recognizer.recognize(page, gone.get(), answers.collect());
        QTRY_COMPARE_WITH_TIMEOUT(module.readings(), 1, test::kReadingTime);
        module.set({});
        recognizer.recognize(page, &answers.context, answers.collect());
        gone.reset();
        QTRY_COMPARE_WITH_TIMEOUT(answers.count(), 1, test::kReadingTime);
        QCOMPARE(answers.all[0].value(), QStringList(QStringLiteral("hola")));
    }

    void theLoopGoesOnDuringAReading()
    {
        constexpr int kTicks = 20;
        FaultyModule module;
        module.set("deaf");
        TesseractTextRecognizer recognizer({.module = FaultyModule::path()});
        test::Answers answers;
        recognizer.recognize(test::writtenPage({QStringLiteral("hola")}), &answers.context,
                             answers.collect());
        QTRY_COMPARE_WITH_TIMEOUT(module.readings(), 1, test::kReadingTime);
        int ticks = 0;
        QTimer ticking;
        ticking.callOnTimeout([&ticks] { ++ticks; });
        ticking.start(1);
        QTRY_VERIFY_WITH_TIMEOUT(ticks >= kTicks, test::kReadingTime);
        QCOMPARE(answers.count(), 0);
        module.free();
        QTRY_COMPARE_WITH_TIMEOUT(answers.count(), 1, test::kReadingTime);
    }

    void afterTwoEnginesLeftBehindTheNextReadingWaits()
    {
        constexpr int kMostThreads = 3;
        constexpr std::chrono::milliseconds kPatience{1};
        FaultyModule module;
        module.set("deaf");
        TesseractTextRecognizer recognizer({.module = FaultyModule::path(), .patience = kPatience});
        test::Answers answers;
        const QImage page = test::writtenPage({QStringLiteral("hola")});
        for (int begun = 1; begun <= kMostThreads; ++begun) {
            QObject gone;
            recognizer.recognize(page, &gone, answers.collect());
            QTRY_COMPARE_WITH_TIMEOUT(module.readings(), begun, test::kReadingTime);
        }
        module.set({});
        recognizer.recognize(page, &answers.context, answers.collect());
        const auto threads = test::ownThreads();
        bool patienceIsOver = false; // the recogniser's own began earlier
        QTimer::singleShot(2 * kPatience, this, [&patienceIsOver] { patienceIsOver = true; });
        QTRY_VERIFY_WITH_TIMEOUT(patienceIsOver, test::kReadingTime);
        QCOMPARE(test::ownThreads() - threads, QSet<QString>());
        QCOMPARE(module.readings(), kMostThreads);
        QCOMPARE(answers.count(), 0);

        module.free();
        QTRY_COMPARE_WITH_TIMEOUT(answers.count(), 1, test::kReadingTime);
        QCOMPARE(answers.all[0].value(), QStringList(QStringLiteral("hola")));
        QCOMPARE(module.readings(), kMostThreads + 1);
    }

    void quittingLeavesAnEngineThatDoesNotListenBehind()
    {
        FaultyModule module;
        module.set("deaf");
        test::Answers answers;
        const auto held = std::make_shared<int>(0);
        {
            TesseractTextRecognizer recognizer(
                {.module = FaultyModule::path(), .patienceAtTheEnd = std::chrono::milliseconds(1)});
            recognizer.recognize(
                test::writtenPage({QStringLiteral("hola")}), &answers.context,
                [done = answers.collect(), held](auto lines) { done(std::move(lines)); });
            QTRY_COMPARE_WITH_TIMEOUT(module.readings(), 1, test::kReadingTime);
        }                              // this engine would wait forever
        QCOMPARE(held.use_count(), 1); // let go here, not on the thread left behind
        module.free();
        QCoreApplication::processEvents();
        QCOMPARE(answers.count(), 0);
    }

    void theProcessEndsInOrderAmidAReading_data()
    {
        QTest::addColumn<QString>("module");
        QTest::addColumn<QString>("fault");
        QTest::addColumn<int>("side");
        QTest::newRow("deaf") << FaultyModule::path() << QStringLiteral("deaf") << 200;
        // Takes the engine many seconds.
        QTest::newRow("Tesseract") << TextEngineModule::usualPath() << QString() << 2400;
    }
    void theProcessEndsInOrderAmidAReading()
    {
        QFETCH(QString, module);
        QFETCH(QString, fault);
        QFETCH(int, side);
        constexpr int kExitCode = 7;
        QProcess process;
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QString::fromLatin1(FaultyModule::kVariable), fault);
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(QStringLiteral(BRINDLECAM_QUITTING_READER), {module, QString::number(side)});
        QVERIFY(process.waitForReadyRead(test::kReadingTime));
        QVERIFY(process.waitForFinished(test::kReadingTime));
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), kExitCode);
    }
};

BRINDLECAM_TEST(TestReadingFaults);

} // namespace brindlecam

#include "tst_readingfaults.moc"
