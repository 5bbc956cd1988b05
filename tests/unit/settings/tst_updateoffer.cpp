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

/// The alerts that are open, by what they tell besides their message.
QStringList openOffers(const UpdaterDesk& desk)
{
    QStringList details;
    for (const auto& shown : desk.panels.shown) {
        const auto* const box = qobject_cast<QMessageBox*>(shown.widget.data());
        if (box && box->isVisible())
            details << box->informativeText().section(QLatin1Char('\n'), 0, 0);
    }
    return details;
}

const QString kOffers13 = QStringLiteral("Tienes la 1.2 y ya está disponible la 1.3.");
const QString kOffers14 = QStringLiteral("Tienes la 1.2 y ya está disponible la 1.4.");

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

    void anOfferThatIsStillOpenGivesWayToTheNext()
    {
        UpdaterDesk desk;
        announce(desk, "1.3");
        QCOMPARE(openOffers(desk), QStringList{kOffers13});
        announce(desk, "1.4");
        QCOMPARE(openOffers(desk), QStringList{kOffers14});
        desk.answer("Más tarde");
        QCOMPARE(openOffers(desk), QStringList());
    }

    void anOfferThatIsStillOpenGoesWithItsVersion()
    {
        UpdaterDesk desk;
        announce(desk, "1.3");
        announce(desk, "1.2");
        QCOMPARE(openOffers(desk), QStringList());
    }

    void anOfferThatIsStillOpenStaysWhenTheHostDoesNotAnswer()
    {
        UpdaterDesk desk;
        announce(desk, "1.3");
        desk.updater->check(Updater::Asker::clock);
        desk.feed.answer(std::nullopt);
        QCOMPARE(openOffers(desk), QStringList{kOffers13});
    }

    void ofSeveralThatWaitTheNewestIsOffered()
    {
        UpdaterDesk desk;
        desk.activity.capture = true;
        announce(desk, "1.3");
        announce(desk, "1.4");
        desk.activity.capture = false;
        QTRY_COMPARE(openOffers(desk), QStringList{kOffers14});
        QTest::qWait(int(2 * test::kIdleAgain.count()));
        QCOMPARE(openOffers(desk), QStringList{kOffers14});
        QCOMPARE(desk.panels.shown.size(), std::size_t(1));
    }

    void whatTheUserWasOfferedMeanwhileWaitsNoMore()
    {
        UpdaterDesk desk;
        desk.activity.capture = true;
        announce(desk, "1.3");
        desk.activity.capture = false;
        QVERIFY(isOffered(desk, Updater::Asker::user, "1.3"));
        QTest::qWait(int(2 * test::kIdleAgain.count()));
        QCOMPARE(openOffers(desk), QStringList());
    }

    void whatIsGoneBeforeItCouldBeOfferedIsNot()
    {
        UpdaterDesk desk;
        desk.activity.capture = true;
        announce(desk, "1.3");
        announce(desk, "1.2");
        desk.activity.capture = false;
        QTest::qWait(int(2 * test::kIdleAgain.count()));
        QCOMPARE(openOffers(desk), QStringList());
        QVERIFY(!desk.defaults.contains(QStringLiteral("updateNotifiedVersion")));
    }

private:
    /// What the daily search finds.
    static void announce(UpdaterDesk& desk, const char* version)
    {
        desk.updater->check(Updater::Asker::clock);
        desk.feed.announce(version);
    }
};

BRINDLECAM_TEST(TestUpdateOffer);

} // namespace brindlecam

#include "tst_updateoffer.moc"
