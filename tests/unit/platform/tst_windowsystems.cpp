// Covers SessionSearch.
#include "platform/factory/SessionSearch.h"
#include "platform/factory/WindowSystems.h"
#include "support/TestCase.h"

#include <QHash>

#include <array>

namespace brindlecam {

namespace {

using XServer = Session::XServer;

const std::vector<BuiltSystem> kBuilt{
    {WindowSystem::none, nullptr,
     [](const Session& session) { return session.told == WindowSystem::none; }},
    {WindowSystem::wayland, "wayland",
     [](const Session& session) { return !session.waylandGlobals.empty(); }},
    {WindowSystem::x11, "xcb",
     [](const Session& session) {
         return session.xServer == XServer::itself && !session.isWayland();
     }},
};

} // namespace

/// Whose windows Qt makes, and what is said where there is nobody. Changes the environment of this
/// process and puts it back.
class TestWindowSystems final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        for (const char* name : kVariables) {
            if (qEnvironmentVariableIsSet(name))
                m_former.insert(QByteArray(name), qgetenv(name));
        }
    }
    void cleanup()
    {
        for (const char* name : kVariables) {
            if (m_former.contains(name))
                qputenv(name, m_former.value(name));
            else
                qunsetenv(name);
        }
    }

    void theFirstThatIsOfferedIsChosen_data()
    {
        QTest::addColumn<Session>("session");
        QTest::addColumn<WindowSystem>("chosen");
        QTest::newRow("an X server")
            << Session{.namesX11 = true, .xServer = XServer::itself} << WindowSystem::x11;
        QTest::newRow("Wayland with what we need")
            << Session{.namesWayland = true, .waylandGlobals = {"layers"}} << WindowSystem::wayland;
        QTest::newRow("told to do without")
            << Session{.namesX11 = true, .told = WindowSystem::none, .xServer = XServer::itself}
            << WindowSystem::none;
        QTest::newRow("told to do without, where there is nothing")
            << Session{.told = WindowSystem::none} << WindowSystem::none;
    }
    void theFirstThatIsOfferedIsChosen()
    {
        QFETCH(Session, session);
        QFETCH(WindowSystem, chosen);
        const auto system = chooseWindowSystem(kBuilt, session);
        QVERIFY(system);
        QCOMPARE(system.value().system, chosen);
    }

    void whereNobodyIsItIsSaidWhatIsMissing_data()
    {
        const auto noDisplay =
            QStringLiteral("Brindlecam necesita un entorno gráfico: no hay DISPLAY.");
        const auto needsX11 = QStringLiteral("Brindlecam todavía necesita X11.");
        QTest::addColumn<Session>("session");
        QTest::addColumn<QString>("message");
        QTest::newRow("nothing named") << Session() << noDisplay;
        QTest::newRow("nothing named, though it is called Wayland")
            << Session{.isCalledWayland = true} << noDisplay;
        QTest::newRow("told X11, nothing named") << Session{.told = WindowSystem::x11} << noDisplay;
        QTest::newRow("nobody answers")
            << Session{.namesX11 = true, .xServer = XServer::silent} << noDisplay;
        QTest::newRow("Wayland alone") << Session{.namesWayland = true} << needsX11;
        QTest::newRow("an X server in a session that is called Wayland")
            << Session{.namesX11 = true, .isCalledWayland = true} << needsX11;
        QTest::newRow("an X server where Qt was told Wayland")
            << Session{.namesX11 = true, .told = WindowSystem::wayland} << needsX11;
        QTest::newRow("an X server that is a guest itself")
            << Session{.namesX11 = true, .xServer = XServer::insideWayland} << needsX11;
        QTest::newRow("an X server that nobody was built to ask")
            << Session{.namesX11 = true} << needsX11;
    }
    void whereNobodyIsItIsSaidWhatIsMissing()
    {
        QFETCH(Session, session);
        const auto system = chooseWindowSystem(kBuilt, session);
        QVERIFY(!system);
        QTEST(system.error().message, "message");
    }

    void theEnvironmentSaysWhatItCan_data()
    {
        using Told = std::optional<WindowSystem>;
        QTest::addColumn<QByteArray>("qtPlatform");
        QTest::addColumn<Told>("told");
        QTest::newRow("nothing") << QByteArray() << Told();
        QTest::newRow("xcb") << QByteArray("xcb") << Told(WindowSystem::x11);
        QTest::newRow("a list") << QByteArray("wayland;xcb") << Told(WindowSystem::wayland);
        QTest::newRow("a variant") << QByteArray("wayland-egl") << Told(WindowSystem::wayland);
        QTest::newRow("offscreen") << QByteArray("offscreen") << Told(WindowSystem::none);
    }
    void theEnvironmentSaysWhatItCan()
    {
        QFETCH(QByteArray, qtPlatform);
        qputenv("DISPLAY", ":3");
        qputenv("WAYLAND_DISPLAY", "");
        qputenv("XDG_SESSION_TYPE", "wayland");
        qputenv("QT_QPA_PLATFORM", qtPlatform);
        const Session session = sessionOfEnvironment();
        QVERIFY(session.namesX11 && !session.namesWayland && session.isCalledWayland);
        QTEST(session.told, "told");
        QCOMPARE(session.xServer, XServer::unasked);
    }

    void anXServerIsAskedWhereItMayServe_data()
    {
        QTest::addColumn<Session>("session");
        QTest::addColumn<bool>("asked");
        QTest::newRow("named") << Session{.namesX11 = true} << true;
        QTest::newRow("told so") << Session{.namesX11 = true, .told = WindowSystem::x11} << true;
        QTest::newRow("not named") << Session() << false;
        QTest::newRow("told to do without")
            << Session{.namesX11 = true, .told = WindowSystem::none} << false;
        QTest::newRow("beside Wayland") << Session{.namesX11 = true, .namesWayland = true} << false;
    }
    void anXServerIsAskedWhereItMayServe()
    {
        QFETCH(Session, session);
        QTEST(isWorthAskingXServer(session), "asked");
    }

private:
    static constexpr std::array kVariables{"DISPLAY", "WAYLAND_DISPLAY", "XDG_SESSION_TYPE",
                                           "QT_QPA_PLATFORM"};

    QHash<QByteArray, QByteArray> m_former;
};

BRINDLECAM_TEST(TestWindowSystems);

} // namespace brindlecam

#include "tst_windowsystems.moc"
