#include "base/Background.h"
#include "support/GatedExecutor.h"
#include "support/TestCase.h"

#include <QThread>

#include <memory>
#include <optional>
#include <thread>

namespace brindlecam {

class TestBackground final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void resultComesHomeAfterTheCall()
    {
        std::optional<int> result;
        const Background background([](const std::function<void()>& job) { job(); });
        background.run([] { return 7; }, [&result](int value) { result = value; });
        QVERIFY(!result);
        test::sendAllPostedEvents();
        QCOMPARE(result, 7);
    }

    void resultComesHomeToTheThreadItWasAskedOn()
    {
        std::vector<std::thread> threads;
        const Background background(
            [&threads](std::function<void()> job) { threads.emplace_back(std::move(job)); });
        QThread* worked = nullptr;
        QThread* home = nullptr;
        background.run([&worked] { worked = QThread::currentThread(); },
                       [&home] { home = QThread::currentThread(); });
        threads.front().join();
        test::sendAllPostedEvents();
        QVERIFY(worked && worked != QThread::currentThread());
        QCOMPARE(home, QThread::currentThread());
    }

    void resultsNeedNotBeCopyable()
    {
        int value = 0;
        const Background background([](const std::function<void()>& job) { job(); });
        background.run([] { return std::make_unique<int>(3); },
                       [&value](const std::unique_ptr<int>& result) { value = *result; });
        test::sendAllPostedEvents();
        QCOMPARE(value, 3);
    }

    void whatIsStillRunningWhenItGoesIsDropped()
    {
        test::GatedExecutor gate;
        bool worked = false;
        bool came = false;
        auto background = std::make_unique<Background>(gate.executor());
        background->run([&worked] { worked = true; }, [&came] { came = true; });
        background.reset();
        gate.run(0);
        test::sendAllPostedEvents();
        QVERIFY(worked);
        QVERIFY(!came);
    }

    void whatHasComeButWasNotReceivedIsDropped()
    {
        bool came = false;
        auto background =
            std::make_unique<Background>([](const std::function<void()>& job) { job(); });
        background->run([] {}, [&came] { came = true; });
        background.reset();
        test::sendAllPostedEvents();
        QVERIFY(!came);
    }

    void manyMayReportWhileItGoes()
    {
        for (int round = 0; round < 50; ++round) {
            std::vector<std::thread> threads;
            auto background = std::make_unique<Background>(
                [&threads](std::function<void()> job) { threads.emplace_back(std::move(job)); });
            int received = 0;
            for (int i = 0; i < 4; ++i)
                background->run([i] { return i; }, [&received](int) { ++received; });
            background.reset();
            for (std::thread& thread : threads)
                thread.join();
            test::sendAllPostedEvents();
            QCOMPARE(received, 0);
        }
    }
};

BRINDLECAM_TEST(TestBackground);

} // namespace brindlecam

#include "tst_background.moc"
