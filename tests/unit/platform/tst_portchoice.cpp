// Covers ForcedPorts.
#include "platform/factory/PortChoice.h"
#include "platform/null/NullPlatform.h"
#include "support/TestCase.h"

#include <algorithm>
#include <map>

namespace brindlecam {

namespace {

/// A grabber that says who it is by the error that it answers with.
class NamedGrabber final : public Grabber {
public:
    explicit NamedGrabber(QString name)
        : m_name(std::move(name))
    {
    }
    void grabScreens(const std::vector<ScreenInfo>&, QObject*, Done done) override
    {
        done(Error{m_name});
    }
    void openRegion(const QRect&, const RegionOptions&, QObject*, Opened opened) override
    {
        opened(Error{m_name});
    }

private:
    const QString m_name;
};

Maker<Grabber> grabber(const char* name, const char* className,
                       std::function<bool(const Session&)> offered)
{
    return {name, className, std::move(offered),
            [name] { return std::make_unique<NamedGrabber>(QString::fromLatin1(name)); }};
}

/// A kind of tray that is there or not.
class KindOfTray final : public TrayHosts {
public:
    explicit KindOfTray(bool available)
        : m_available(available)
    {
    }
    [[nodiscard]] bool available() const override { return m_available; }
    void whenChanged(QObject*, std::function<void()>) override {}

private:
    const bool m_available;
};

class AnyTray final : public TrayHosts {
public:
    explicit AnyTray(PortList<TrayHosts>::Several kinds)
        : m_kinds(std::move(kinds))
    {
    }
    [[nodiscard]] bool available() const override
    {
        return std::ranges::any_of(m_kinds, [](const auto& kind) { return kind->available(); });
    }
    void whenChanged(QObject*, std::function<void()>) override {}

private:
    const PortList<TrayHosts>::Several m_kinds;
};

Maker<TrayHosts> tray(const char* name, const char* className, WindowSystem system, bool available)
{
    return {name, className,
            [system](const Session& session) { return session.windowSystem == system; },
            [available] { return std::make_unique<KindOfTray>(available); }};
}

bool hasCopy(const Session& session)
{
    return session.waylandGlobals.size() == 1 && session.waylandGlobals.front() == "copy";
}

/// What three systems might offer for one port, the best first.
PortOffers offersOfThreeSystems()
{
    PortOffers offers = nullOffers();
    offers.grabber.makers = {
        grabber("copy", "CopyGrabber", hasCopy),
        grabber("asking", "AskingGrabber",
                [](const Session& session) {
                    return session.isWayland() && session.hasBusName(QStringLiteral("asks.first"));
                }),
        grabber("x11", "ServerGrabber",
                [](const Session& session) {
                    return session.windowSystem == WindowSystem::x11 && !session.isWayland();
                }),
    };
    return offers;
}

QString serving(const ChosenPorts& ports, const char* name)
{
    const auto found =
        std::ranges::find(ports.served, QString::fromLatin1(name), &ServedPort::name);
    return found == ports.served.end() ? QString() : found->serves;
}

Session x11Session()
{
    return {
        .namesX11 = true, .xServer = Session::XServer::itself, .windowSystem = WindowSystem::x11};
}

Session guestSession(bool hasTheName)
{
    return {.namesX11 = true,
            .namesWayland = true,
            .xServer = Session::XServer::insideWayland,
            .hasBusName = [hasTheName](const QString&) { return hasTheName; },
            .windowSystem = WindowSystem::x11};
}

Session waylandSession(const QByteArray& interface)
{
    return {
        .namesWayland = true, .waylandGlobals = {interface}, .windowSystem = WindowSystem::wayland};
}

} // namespace

/// Which class serves which port, among makers and sessions that are made up.
class TestPortChoice final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void theFirstThatIsOfferedServes_data()
    {
        QTest::addColumn<Session>("session");
        QTest::addColumn<QString>("serves");
        QTest::addColumn<QString>("answers");
        const QString nobody = QStringLiteral("No hay ninguna pantalla que capturar.");
        QTest::newRow("no desktop") << Session() << "NullGrabber" << nobody;
        QTest::newRow("X11") << x11Session() << "ServerGrabber"
                             << "x11";
        QTest::newRow("a guest of Wayland that may ask") << guestSession(true) << "AskingGrabber"
                                                         << "asking";
        QTest::newRow("a guest of Wayland that nobody answers")
            << guestSession(false) << "NullGrabber" << nobody;
        QTest::newRow("Wayland") << waylandSession("copy") << "CopyGrabber"
                                 << "copy";
        QTest::newRow("Wayland with something else")
            << waylandSession("paste") << "NullGrabber" << nobody;
    }
    void theFirstThatIsOfferedServes()
    {
        QFETCH(Session, session);
        const auto ports = choosePorts(offersOfThreeSystems(), session, {});
        QVERIFY(ports);
        QTEST(serving(ports.value(), "grabber"), "serves");
        const Platform platform = ports.value().make();
        QString answer;
        platform.grabber->openRegion({0, 0, 1, 1}, {}, this, [&answer](const auto& opened) {
            answer = opened ? QStringLiteral("frames") : opened.error().message;
        });
        QTEST(answer, "answers");
    }

    void nobodyBehindTheFirstIsAsked()
    {
        PortOffers offers = nullOffers();
        int asked = 0;
        offers.grabber.makers = {
            grabber("sure", "SureGrabber", [](const Session&) { return true; }),
            grabber("slow", "SlowGrabber", [&asked](const Session&) { return ++asked > 0; })};
        const auto ports = choosePorts(offers, Session(), {});
        QVERIFY(ports);
        QCOMPARE(serving(ports.value(), "grabber"), QStringLiteral("SureGrabber"));
        QCOMPARE(asked, 0);
    }

    void eachPortIsChosenByItself()
    {
        const auto ports = choosePorts(offersOfThreeSystems(), x11Session(), {});
        QVERIFY(ports);
        for (const ServedPort& port : ports.value().served)
            QCOMPARE(port.serves.startsWith(QLatin1String("Null")),
                     port.name != QLatin1String("grabber"));
        QCOMPARE(ports.value().served.size(), std::size_t(17));
    }

    void whatStandsSideBySideIsJoined_data()
    {
        QTest::addColumn<WindowSystem>("system");
        QTest::addColumn<QString>("serves");
        QTest::addColumn<bool>("available");
        QTest::newRow("two kinds") << WindowSystem::x11 << "EmptyTray+FullTray" << true;
        QTest::newRow("one kind") << WindowSystem::wayland << "OtherTray" << false;
        QTest::newRow("none") << WindowSystem::none << "NullTrayHosts" << false;
    }
    void whatStandsSideBySideIsJoined()
    {
        QFETCH(WindowSystem, system);
        PortOffers offers = nullOffers();
        offers.trayHosts.makers = {tray("empty", "EmptyTray", WindowSystem::x11, false),
                                   tray("other", "OtherTray", WindowSystem::wayland, false),
                                   tray("full", "FullTray", WindowSystem::x11, true)};
        offers.trayHosts.join = [](PortList<TrayHosts>::Several kinds) {
            return std::make_unique<AnyTray>(std::move(kinds));
        };
        const auto ports = choosePorts(offers, Session{.windowSystem = system}, {});
        QVERIFY(ports);
        QTEST(serving(ports.value(), "trayHosts"), "serves");
        QTEST(ports.value().make().trayHosts->available(), "available");
    }

    void oneOfThoseThatStandSideBySideCanBeForced()
    {
        PortOffers offers = nullOffers();
        offers.trayHosts.makers = {tray("empty", "EmptyTray", WindowSystem::x11, false),
                                   tray("full", "FullTray", WindowSystem::x11, true)};
        offers.trayHosts.join = [](PortList<TrayHosts>::Several) -> std::unique_ptr<TrayHosts> {
            qFatal("there is nothing to join");
        };
        const ForcedPorts forced{{QStringLiteral("TRAYHOSTS"), QStringLiteral("full")}};
        const auto ports = choosePorts(offers, x11Session(), forced);
        QVERIFY(ports);
        QCOMPARE(serving(ports.value(), "trayHosts"), QStringLiteral("FullTray"));
        QVERIFY(ports.value().make().trayHosts->available());
    }

    void whatIsForcedServesWhateverIsOfferedBefore_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("serves");
        QTest::newRow("the first") << "first"
                                   << "FirstGrabber";
        QTest::newRow("the second") << "second"
                                    << "SecondGrabber";
        QTest::newRow("the null class") << "null"
                                        << "NullGrabber";
    }
    void whatIsForcedServesWhateverIsOfferedBefore()
    {
        QFETCH(QString, name);
        PortOffers offers = nullOffers();
        const auto always = [](const Session&) { return true; };
        offers.grabber.makers = {grabber("first", "FirstGrabber", always),
                                 grabber("second", "SecondGrabber", always)};
        const ForcedPorts forced{{QStringLiteral("GRABBER"), name}};
        const auto ports = choosePorts(offers, Session(), forced);
        QVERIFY(ports);
        QTEST(serving(ports.value(), "grabber"), "serves");
    }

    void everyPortCanBeForcedToItsNullClass()
    {
        PortOffers offers = nullOffers();
        ForcedPorts forced;
        offers.forEach([&](auto& list) {
            list.makers.push_back({"real", "Real", [](const Session&) { return true; },
                                   []() -> decltype(list.null.make()) { qFatal("it is made"); }});
            forced.emplace(QString::fromLatin1(list.name).toUpper(), QStringLiteral("null"));
        });
        const auto ports = choosePorts(offers, x11Session(), forced);
        QVERIFY(ports);
        const Platform platform = ports.value().make();
        offers.forEach([&](auto& list) { QVERIFY(platform.*list.member); });
    }

    void whatCantBeForcedIsRefusedWithWhatThereIs_data()
    {
        QTest::addColumn<QString>("variable");
        QTest::addColumn<QString>("maker");
        QTest::addColumn<QString>("message");
        QTest::newRow("a maker that nobody knows")
            << "GRABBER"
            << "camera"
            << QStringLiteral("BRINDLECAM_PORT_GRABBER: aquí no hay “camera”. Hay: x11, null.");
        QTest::newRow("one that is not offered here")
            << "GRABBER"
            << "copy"
            << QStringLiteral("BRINDLECAM_PORT_GRABBER: aquí no hay “copy”. Hay: x11, null.");
        QTest::newRow("names are exact")
            << "GRABBER"
            << "X11"
            << QStringLiteral("BRINDLECAM_PORT_GRABBER: aquí no hay “X11”. Hay: x11, null.");
        QTest::newRow("a port that nobody knows")
            << "GRABER"
            << "x11"
            << QStringLiteral("BRINDLECAM_PORT_GRABER: no hay ningún puerto que se llame así. Hay: "
                              "DISPLAYS, GRABBER, WINDOWLIST, CAPTUREACCESS, HOTKEYS, INPUTGRABS, "
                              "FOREIGNPRESSES, PANELS, PINS, COMPOSITING, PASTEBOARD, "
                              "FRONTAPPLICATION, "
                              "FILEOPENER, LOGINITEM, TEXTRECOGNIZER, TRAYHOSTS, QUITSIGNALS.");
    }
    void whatCantBeForcedIsRefusedWithWhatThereIs()
    {
        QFETCH(QString, variable);
        QFETCH(QString, maker);
        const auto ports = choosePorts(offersOfThreeSystems(), x11Session(), {{variable, maker}});
        QVERIFY(!ports);
        QTEST(ports.error().message, "message");
    }

    void theEnvironmentForcesPorts()
    {
        qputenv("BRINDLECAM_PORT_GRABBER", "null");
        qputenv("BRINDLECAM_PORT_PANELS", "");
        qputenv("BRINDLECAM_PORTS", "x11");
        const ForcedPorts forced = forcedByEnvironment();
        for (const char* name :
             {"BRINDLECAM_PORT_GRABBER", "BRINDLECAM_PORT_PANELS", "BRINDLECAM_PORTS"})
            qunsetenv(name);
        QCOMPARE(forced, (ForcedPorts{{QStringLiteral("GRABBER"), QStringLiteral("null")}}));
    }
};

BRINDLECAM_TEST(TestPortChoice);

} // namespace brindlecam

#include "tst_portchoice.moc"
