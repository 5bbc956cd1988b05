#include "SettingsFixture.h"
#include "notices/Activity.h"
#include "settings/ReleaseFeed.h"
#include "settings/Updater.h"
#include "support/FakeFileOpener.h"
#include "support/FakeReleaseFeed.h"
#include "support/TestCase.h"

#include <QTranslator>

namespace brindlecam {

using test::SettingsFixture;

namespace {

constexpr std::chrono::milliseconds kFirst{20};
constexpr std::chrono::milliseconds kAgain{60};
constexpr std::chrono::milliseconds kIdleAgain{30};

/// An updater in version 1.2, at a time of the test's own.
struct UpdaterDesk : SettingsFixture {
    test::FakeFileOpener& opener = test::install<test::FakeFileOpener>(platform.fileOpener);
    Activity activity;
    test::FakeReleaseFeed feed;
    QDateTime now{QDate(2026, 3, 14), QTime(9, 26, 53), Qt::UTC};
    int changes = 0;
    std::optional<Updater> updater;

    UpdaterDesk()
    {
        QCoreApplication::setApplicationVersion(QStringLiteral("1.2"));
        begin();
    }
    ~UpdaterDesk() { QCoreApplication::setApplicationVersion({}); }
    Q_DISABLE_COPY_MOVE(UpdaterDesk)

    /// A new start of the program, with the settings of the one before.
    void begin()
    {
        updater.emplace(Updater::Rooms{prefs, alerts, opener, activity, feed},
                        Updater::Timing{kFirst, kAgain, kIdleAgain, [this] { return now; }});
        updater->onChange = [this] { ++changes; };
    }
    [[nodiscard]] QString said() const { return question() ? question()->text() : QString(); }
    [[nodiscard]] QString details() const { return question()->informativeText(); }
    /// Lets all timers run that are due soon.
    static void wait() { QTest::qWait(int((kFirst + 2 * kAgain).count())); }
};

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

/// The catalogue of a language that says so.
class EnglishCatalogue final : public QTranslator {
public:
    [[nodiscard]] bool isEmpty() const override { return false; }
    [[nodiscard]] QString translate(const char*, const char* source, const char*,
                                    int) const override
    {
        return qstrcmp(source, "es") == 0 ? QStringLiteral("en") : QString();
    }
};

} // namespace

class TestUpdater final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void asksSoonAfterTheStartAndOnceADay()
    {
        UpdaterDesk desk;
        desk.updater->start();
        QCOMPARE(desk.feed.asked, 0);
        QTRY_COMPARE(desk.feed.asked, 1);
        desk.feed.announce("1.2");
        QCOMPARE(desk.defaults.date(QStringLiteral("updateLastCheck")), desk.now);
        UpdaterDesk::wait();
        QCOMPARE(desk.feed.asked, 1);
        desk.now = desk.now.addSecs(86399);
        UpdaterDesk::wait();
        QCOMPARE(desk.feed.asked, 1);
        desk.now = desk.now.addSecs(1);
        QTRY_COMPARE(desk.feed.asked, 2);
    }

    void theUsualTimes()
    {
        const Updater::Timing timing;
        QCOMPARE(timing.first.count(), 8000);
        QCOMPARE(timing.again.count(), 21600000);
        QCOMPARE(timing.idleAgain.count(), 60000);
    }

    void aNewStartKnowsWhenItAskedLast()
    {
        UpdaterDesk desk;
        desk.updater->check(Updater::Asker::clock);
        desk.feed.announce("1.2");
        desk.begin();
        desk.updater->start();
        UpdaterDesk::wait();
        QCOMPARE(desk.feed.asked, 1);
    }

    void aDateThatIsNoneIsLongAgo()
    {
        UpdaterDesk desk;
        desk.defaults.setString(QStringLiteral("updateLastCheck"), QStringLiteral("ayer"));
        desk.updater->start();
        QTRY_COMPARE(desk.feed.asked, 1);
    }

    void switchedOffItAsksOnlyWhenTheUserDoes()
    {
        UpdaterDesk desk;
        desk.defaults.setBoolean(QStringLiteral("checkUpdates"), false);
        desk.updater->start();
        UpdaterDesk::wait();
        QCOMPARE(desk.feed.asked, 0);
        desk.updater->check(Updater::Asker::user);
        QCOMPARE(desk.feed.asked, 1);
        desk.feed.announce("1.2");
        QCOMPARE(desk.said(), QStringLiteral("Brindlecam está al día"));
    }

    void oneQuestionAtATime()
    {
        UpdaterDesk desk;
        desk.updater->check(Updater::Asker::clock);
        desk.updater->check(Updater::Asker::user);
        QCOMPARE(desk.feed.asked, 1);
        desk.feed.announce("1.2");
        QCOMPARE(desk.said(), QString()); // the user's was dropped
        desk.updater->check(Updater::Asker::user);
        QCOMPARE(desk.feed.asked, 2);
    }

    void usersAreToldThatTheyAreUpToDate_data()
    {
        QTest::addColumn<QByteArray>("version");
        QTest::newRow("the same") << QByteArray("1.2");
        QTest::newRow("the same, longer") << QByteArray("1.2.0");
        QTest::newRow("an older one") << QByteArray("1.1.9");
        QTest::newRow("none at all") << QByteArray("v2.0-beta..");
    }
    void usersAreToldThatTheyAreUpToDate()
    {
        QFETCH(QByteArray, version);
        UpdaterDesk desk;
        desk.updater->check(Updater::Asker::user);
        desk.feed.announce(version.constData());
        QCOMPARE(desk.said(), QStringLiteral("Brindlecam está al día"));
        QCOMPARE(desk.details(), QStringLiteral("Tienes la versión 1.2, la más reciente."));
        QVERIFY(!desk.updater->available());
        QCOMPARE(desk.changes, 1);
    }

    void failuresAreToldToUsersAlone_data()
    {
        QTest::addColumn<std::optional<QByteArray>>("body");
        const auto row = [](const char* name, std::optional<QByteArray> body) {
            QTest::newRow(name) << std::move(body);
        };
        row("no answer", std::nullopt);
        row("no announcement", QByteArray("<html>"));
        row("a plain address", test::json("{'version': '9', 'url': 'http://x.org/'}"));
        row("no address", test::json("{'version': '9', 'url': 'x y'}"));
    }
    void failuresAreToldToUsersAlone()
    {
        QFETCH(std::optional<QByteArray>, body);
        UpdaterDesk desk;
        desk.updater->check(Updater::Asker::clock);
        desk.feed.answer(body);
        QCOMPARE(desk.said(), QString());
        desk.updater->check(Updater::Asker::user);
        desk.feed.answer(body);
        QCOMPARE(desk.said(), QStringLiteral("No se pudo buscar actualizaciones"));
        QCOMPARE(desk.details(),
                 QStringLiteral("Revisa tu conexión a internet e inténtalo de nuevo."));
        QVERIFY(!desk.defaults.contains(QStringLiteral("updateLastCheck")));
        QVERIFY(!desk.updater->available());
        QCOMPARE(desk.changes, 0);
    }

    void aFailureForgetsNothing()
    {
        UpdaterDesk desk;
        desk.updater->check(Updater::Asker::clock);
        desk.feed.announce("1.3");
        desk.updater->check(Updater::Asker::clock);
        desk.feed.answer(std::nullopt);
        QCOMPARE(desk.updater->available()->version, QStringLiteral("1.3"));
    }

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
        QTest::qWait(int(2 * kIdleAgain.count()));
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
        QTest::qWait(int(2 * kIdleAgain.count()));
        QCOMPARE(desk.said(), QString());
    }

    void nothingIsToldWhileTheProgramEnds()
    {
        UpdaterDesk desk;
        desk.updater->check(Updater::Asker::user);
        desk.activity.stage = Activity::Stage::quitting;
        desk.feed.answer(std::nullopt);
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
        QTest::qWait(int(2 * kIdleAgain.count()));
        QCOMPARE(desk.said(), QString());
        QVERIFY(!desk.defaults.contains(QStringLiteral("updateNotifiedVersion")));
    }

    void whoAsksTwiceIsToldOnce()
    {
        UpdaterDesk desk;
        for (int i = 0; i < 2; ++i) {
            desk.updater->check(Updater::Asker::user);
            desk.feed.answer(std::nullopt);
        }
        QCOMPARE(desk.panels.shown.size(), std::size_t(1));
        desk.answer("Aceptar");
        desk.updater->check(Updater::Asker::user);
        desk.feed.answer(std::nullopt);
        QCOMPARE(desk.panels.shown.size(), std::size_t(2));
    }

    void aPageThatNothingOpensIsTold()
    {
        UpdaterDesk desk;
        desk.opener.succeeds = false;
        desk.updater->check(Updater::Asker::clock);
        desk.feed.announce("1.3");
        desk.answer("Descargar");
        QCOMPARE(desk.said(), QStringLiteral("No se pudo abrir la página"));
        QCOMPARE(desk.details(), QStringLiteral("https://x.org/es"));
    }

    void aVersionThatIsGoneIsForgotten()
    {
        UpdaterDesk desk;
        desk.updater->check(Updater::Asker::clock);
        desk.feed.announce("1.3");
        desk.updater->check(Updater::Asker::clock);
        desk.feed.announce("1.2");
        QVERIFY(!desk.updater->available());
        QCOMPARE(desk.changes, 2);
        desk.updater->openDownload();
        QVERIFY(desk.opener.pages.isEmpty());
    }

    void pageAndNotesAreInTheLanguageOfTheInterface()
    {
        EnglishCatalogue english;
        QCoreApplication::installTranslator(&english);
        UpdaterDesk desk;
        desk.updater->check(Updater::Asker::clock);
        desk.feed.announce("1.3");
        QVERIFY(desk.details().endsWith(QStringLiteral("\n\nNews.")));
        desk.updater->openDownload();
        QCOMPARE(desk.opener.pages, QStringList(QStringLiteral("https://x.org/en")));
        QCoreApplication::removeTranslator(&english);
    }

    void anEnglishPageThatIsNotSafeIsNotOpened()
    {
        EnglishCatalogue english;
        QCoreApplication::installTranslator(&english);
        UpdaterDesk desk;
        desk.updater->check(Updater::Asker::clock);
        desk.feed.answer(test::json(
            "{'version': '1.3', 'url': 'https://x.org/', 'url_en': 'file:///etc/passwd'}"));
        desk.updater->openDownload();
        QVERIFY(desk.opener.pages.isEmpty());
        QCoreApplication::removeTranslator(&english);
    }

    void aProgramThatKnowsNoVersionOfItsOwnIsOlderThanAny()
    {
        QCoreApplication::setApplicationVersion({});
        QCOMPARE(Updater::installedVersion(), QStringLiteral("0"));
        UpdaterDesk desk;
        QCoreApplication::setApplicationVersion({});
        desk.updater->check(Updater::Asker::clock);
        desk.feed.announce("0.0.1");
        QVERIFY(desk.updater->available());
    }
};

BRINDLECAM_TEST(TestUpdater);

} // namespace brindlecam

#include "tst_updater.moc"
