#include "base/Listeners.h"

#include "support/TestCase.h"

#include <QTest>

#include <memory>
#include <optional>

namespace brindlecam {

class TestListeners final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everybodyIsToldInTheOrderTheyCame()
    {
        Listeners listeners;
        QObject context;
        QString told;
        QVERIFY(!listeners.any());
        listeners.add(&context, [&] { told += QLatin1Char('a'); });
        listeners.add(&context, [&] { told += QLatin1Char('b'); });
        QVERIFY(listeners.any());
        listeners.tell();
        listeners.tell();
        QCOMPARE(told, QStringLiteral("abab"));
    }

    void whoeverIsGoneIsNotTold()
    {
        Listeners listeners;
        QObject stays;
        std::optional<QObject> goes(std::in_place);
        int told = 0;
        listeners.add(&*goes, [] { QFAIL("told after the end"); });
        listeners.add(&stays, [&] { ++told; });
        goes.reset();
        listeners.tell();
        QCOMPARE(told, 1);
        QVERIFY(listeners.any());
    }

    void whoeverGoesWhileOthersAreToldIsNotTold()
    {
        Listeners listeners;
        QObject stays;
        auto goes = std::make_unique<QObject>();
        listeners.add(&stays, [&] { goes.reset(); });
        listeners.add(goes.get(), [] { QFAIL("told after the end"); });
        listeners.tell();
        QVERIFY(!goes);
    }

    void whoeverComesWhileOthersAreToldHearsOfTheNextOne()
    {
        Listeners listeners;
        QObject context;
        int late = 0;
        int rounds = 0;
        listeners.add(&context, [&] {
            if (++rounds == 1)
                listeners.add(&context, [&] { ++late; });
        });
        listeners.tell();
        QCOMPARE(late, 0);
        listeners.tell();
        QCOMPARE(late, 1);
    }

    void tellingOnceMoreFromWithinIsHeard()
    {
        Listeners listeners;
        QObject context;
        int told = 0;
        listeners.add(&context, [&] {
            if (++told == 1)
                listeners.tell();
        });
        listeners.tell();
        QCOMPARE(told, 2);
    }
};

BRINDLECAM_TEST(TestListeners);

} // namespace brindlecam

#include "tst_listeners.moc"
