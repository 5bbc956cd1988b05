#include "reading/ReadingThread.h"
#include "support/FaultyModule.h"
#include "support/ReadingAnswers.h"
#include "support/TestCase.h"

#include <QDeadlineTimer>

namespace brindlecam {

class TestReadingThread final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void onlyTheReadingUnderWayIsGivenUpWithItsThread()
    {
        test::FaultyModule module;
        QObject home;
        test::Answers answers;
        const auto added = [&answers](ReadingThread& thread) {
            auto reading = std::make_shared<Reading>();
            reading->picture = test::writtenPage({QStringLiteral("hola")});
            reading->context = &answers.context;
            reading->done = answers.collect();
            thread.add(reading);
            return reading;
        };
        ReadingThread thread(
            {.module = test::FaultyModule::path(), .keepFor = std::chrono::minutes(1)}, home);
        module.set("deaf");
        const auto first = added(thread);
        const auto second = added(thread);
        QTRY_COMPARE_WITH_TIMEOUT(module.readings(), 1, test::kReadingTime);
        QVERIFY(!thread.closeIfAt(*second));
        module.set({});
        module.free();
        QTRY_COMPARE_WITH_TIMEOUT(module.readings(), 2, test::kReadingTime);
        // The first one is over, though its answer may still be on its way.
        QVERIFY(!thread.closeIfAt(*first));
        QTRY_COMPARE_WITH_TIMEOUT(answers.count(), 2, test::kReadingTime);
        // Let go here, not on the thread, which may hold the readings a little longer.
        QVERIFY(!first->done && !second->done);

        module.set("deaf");
        const auto third = added(thread);
        const auto fourth = added(thread);
        QTRY_COMPARE_WITH_TIMEOUT(module.readings(), 3, test::kReadingTime);
        const auto waiting = thread.closeIfAt(*third);
        QVERIFY(waiting && waiting->size() == 1 && waiting->front() == fourth);
        QVERIFY(third->cancelled);
        QVERIFY(!first->cancelled && !second->cancelled && !fourth->cancelled);
        module.free();
        QVERIFY(thread.endsBy(QDeadlineTimer(test::kReadingTime)));
        QCoreApplication::processEvents();
        QCOMPARE(answers.count(), 2);
    }
};

BRINDLECAM_TEST(TestReadingThread);

} // namespace brindlecam

#include "tst_readingthread.moc"
