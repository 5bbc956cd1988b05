// Covers X11Platform.
#include "platform/factory/PortChoice.h"
#include "platform/null/NullPlatform.h"
#include "platform/x11/X11Platform.h"
#include "support/TestCase.h"

#include <array>

namespace brindlecam {

/// Which ports the X server serves in which session. Nothing is made, so there need not be one.
class TestX11Offers final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void whatTheServerServes_data()
    {
        QTest::addColumn<Session>("session");
        QTest::addColumn<QStringList>("missing");
        const QStringList null{QStringLiteral("captureAccess"), QStringLiteral("fileOpener"),
                               QStringLiteral("loginItem"), QStringLiteral("textRecognizer"),
                               QStringLiteral("quitSignals")};
        Session session{.namesX11 = true,
                        .xServer = Session::XServer::itself,
                        .windowSystem = WindowSystem::x11};
        QTest::newRow("the whole desktop") << session << null;
        session.xServer = Session::XServer::insideWayland;
        QTest::newRow("inside of Wayland: windows only")
            << session
            << null + QStringList{QStringLiteral("grabber"), QStringLiteral("windowList"),
                                  QStringLiteral("hotKeys"), QStringLiteral("foreignPresses")};
    }
    void whatTheServerServes()
    {
        QFETCH(Session, session);
        QFETCH(QStringList, missing);
        PortOffers offers = nullOffers();
        X11Platform::offer(offers);
        const auto ports = choosePorts(std::move(offers), session, {});
        QVERIFY(ports);
        for (const ServedPort& port : ports.value().served)
            QCOMPARE(port.serves.startsWith(QLatin1String("Null")), missing.contains(port.name));
    }

    void nothingOfItServesOtherWindows()
    {
        for (const WindowSystem system : {WindowSystem::none, WindowSystem::wayland}) {
            PortOffers offers = nullOffers();
            X11Platform::offer(offers);
            const Session session{.xServer = Session::XServer::itself, .windowSystem = system};
            const auto ports = choosePorts(std::move(offers), session, {});
            QVERIFY(ports);
            for (const ServedPort& port : ports.value().served)
                QVERIFY(port.serves.startsWith(QLatin1String("Null")));
        }
    }

    void windowsAreOfferedWhereTheServerIsTheDesktop()
    {
        using XServer = Session::XServer;
        QVERIFY(X11Platform::isOffered({.xServer = XServer::itself}));
        QVERIFY(!X11Platform::isOffered({.namesWayland = true, .xServer = XServer::itself}));
        for (const XServer other : {XServer::unasked, XServer::silent, XServer::insideWayland})
            QVERIFY(!X11Platform::isOffered({.xServer = other}));
    }
};

BRINDLECAM_TEST(TestX11Offers);

} // namespace brindlecam

#include "tst_x11offers.moc"
