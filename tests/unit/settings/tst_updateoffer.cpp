// Covers Updater.
#include "UpdaterDesk.h"
#include "support/TestCase.h"

namespace brindlecam {

using test::UpdaterDesk;

namespace {

/// Whether this version is offered to who asks now; "later" is the answer.
bool isOffered(UpdaterDesk& desk, Updater::Asker asker, const char* version)
{
    desk.updater->check(asker);
    desk.feed.announce(version);
    if (!desk.question())
        return false;
    desk.answer("Más tarde");
    return true;
}

} // namespace

/// The offer of a newer version.
class TestUpdateOffer final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aNewerVersionIsOffered()
    {
        UpdaterDesk desk;
        desk.updater->check(Updater::Asker::clock);
        desk.feed.announce("1.3");
        QCOMPARE(desk.said(), QStringLiteral("Hay una versión nueva de Brindlecam"));
        QCOMPARE(desk.details(),
                 QStringLiteral("Tienes la 1.2 y ya está disponible la 1.3.\n\nNovedades."));
        QStringList buttons;
        for (const QAbstractButton* button : desk.question()->buttons())
            buttons << button->text();
        QCOMPARE(buttons, QStringList({QStringLiteral("Descargar"), QStringLiteral("Más tarde")}));
        QCOMPARE(desk.updater->available()->version, QStringLiteral("1.3"));
        QCOMPARE(desk.changes, 1);
        desk.answer("Descargar");
        QCOMPARE(desk.opener.pages, QStringList(QStringLiteral("https://x.org/es")));
    }

    void laterIsNotNow()
    {
        UpdaterDesk desk;
        desk.updater->check(Updater::Asker::clock);
        desk.feed.announce("1.3");
        desk.answer("Más tarde");
        QVERIFY(desk.opener.pages.isEmpty());
        QVERIFY(desk.updater->available());
    }

    void withoutNotesOnlyTheVersionsAreNamed()
    {
        UpdaterDesk desk;
        desk.updater->check(Updater::Asker::clock);
        desk.feed.answer(test::json("{'version': '1.3', 'url': 'https://x.org/'}"));
        QCOMPARE(desk.details(), QStringLiteral("Tienes la 1.2 y ya está disponible la 1.3."));
    }

    void eachVersionIsAnnouncedByItselfOnlyOnce()
    {
        UpdaterDesk desk;
        QVERIFY(isOffered(desk, Updater::Asker::clock, "1.3"));
        QVERIFY(!isOffered(desk, Updater::Asker::clock, "1.3"));
        desk.begin();
        QVERIFY(!isOffered(desk, Updater::Asker::clock, "1.3"));
        QVERIFY(desk.updater->available());
        QVERIFY(isOffered(desk, Updater::Asker::user, "1.3"));
        QVERIFY(isOffered(desk, Updater::Asker::clock, "1.4"));
    }

    void anOfferWaitsUntilNothingIsCaptured_data()
    {
        QTest::addColumn<int>("what");
        QTest::newRow("a capture") << 0;
        QTest::newRow("a scrolled page") << 1;
        QTest::newRow("a recording") << 2;
    }
    void anOfferWaitsUntilNothingIsCaptured()
    {
        QFETCH(int, what);
        UpdaterDesk desk;
        bool* const busy[] = {&desk.activity.capture, &desk.activity.scrollCapture,
                              &desk.activity.recording};
        *busy[what] = true;
        desk.updater->check(Updater::Asker::clock);
        desk.feed.announce("1.3");
        QTest::qWait(int(2 * test::kIdleAgain.count()));
        QCOMPARE(desk.said(), QString());
        QVERIFY(!desk.defaults.contains(QStringLiteral("updateNotifiedVersion")));
        QVERIFY(desk.updater->available()); // the menu says so already
        *busy[what] = false;
        QTRY_VERIFY(!desk.said().isEmpty());
        QCOMPARE(desk.defaults.string(QStringLiteral("updateNotifiedVersion")),
                 QStringLiteral("1.3"));
    }

    void anOfferThatWaitsGoesWithTheUpdater()
    {
        UpdaterDesk desk;
        desk.activity.capture = true;
        desk.updater->check(Updater::Asker::user);
        desk.feed.announce("1.3");
        desk.updater.reset();
        desk.activity.capture = false;
        QTest::qWait(int(2 * test::kIdleAgain.count()));
        QCOMPARE(desk.said(), QString());
    }

    void anOfferThatWaitsIsNotMadeWhileTheProgramEnds()
    {
        UpdaterDesk desk;
        desk.activity.capture = true;
        desk.updater->check(Updater::Asker::clock);
        desk.feed.announce("1.3");
        desk.activity.capture = false;
        desk.activity.stage = Activity::Stage::quitting;
        QTest::qWait(int(2 * test::kIdleAgain.count()));
        QCOMPARE(desk.said(), QString());
        QVERIFY(!desk.defaults.contains(QStringLiteral("updateNotifiedVersion")));
    }
};

BRINDLECAM_TEST(TestUpdateOffer);

} // namespace brindlecam

#include "tst_updateoffer.moc"
