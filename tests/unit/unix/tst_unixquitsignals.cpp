#include "platform/unix/UnixQuitSignals.h"
#include "support/TestCase.h"

#include <csignal>

namespace brindlecam {

class TestUnixQuitSignals final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void signalsArriveOnTheMainLoop_data()
    {
        QTest::addColumn<int>("signal");
        QTest::newRow("SIGTERM") << SIGTERM;
        QTest::newRow("SIGINT") << SIGINT;
        QTest::newRow("SIGHUP") << SIGHUP;
    }
    void signalsArriveOnTheMainLoop()
    {
        QFETCH(int, signal);
        UnixQuitSignals quitSignals;
        int quits = 0;
        quitSignals.whenAsked(this, [&] { ++quits; });
        QCOMPARE(std::raise(signal), 0);
        QCOMPARE(quits, 0);
        QTRY_COMPARE(quits, 1);
    }

    void ignoredSignalsStayIgnored()
    {
        const auto former = std::signal(SIGHUP, SIG_IGN);
        {
            const UnixQuitSignals quitSignals;
            struct sigaction action {};
            ::sigaction(SIGHUP, nullptr, &action);
            QVERIFY(action.sa_handler == SIG_IGN);
        }
        std::signal(SIGHUP, former);
    }

    void formerMeaningComesBack()
    {
        struct sigaction before {};
        ::sigaction(SIGTERM, nullptr, &before);
        {
            const UnixQuitSignals quitSignals;
            struct sigaction during {};
            ::sigaction(SIGTERM, nullptr, &during);
            QVERIFY(during.sa_handler != before.sa_handler);
        }
        struct sigaction after {};
        ::sigaction(SIGTERM, nullptr, &after);
        QVERIFY(after.sa_handler == before.sa_handler);
    }
};

BRINDLECAM_TEST(TestUnixQuitSignals);

} // namespace brindlecam

#include "tst_unixquitsignals.moc"
