#include "platform/Platform.h"
#include "platform/null/NullPlatform.h"
#include "support/TestCase.h"

#include <QHash>
#include <QTemporaryDir>

#include <typeinfo>

namespace brindlecam {

/// What the program says about its surroundings before it starts. Changes the environment of this
/// process and puts it back.
class TestPrepare final : public test::TestCase {
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

    void surroundingsAreJudged_data()
    {
        const auto noDisplay =
            QStringLiteral("Brindlecam necesita un entorno gráfico: no hay DISPLAY.");
        const auto needsX11 = QStringLiteral("Brindlecam todavía necesita X11.");
        const QByteArray here = qgetenv("DISPLAY");
        QTest::addColumn<QByteArray>("display");
        QTest::addColumn<QByteArray>("wayland");
        QTest::addColumn<QByteArray>("session");
        QTest::addColumn<QByteArray>("qtPlatform");
        QTest::addColumn<QString>("message");
        QTest::newRow("X11") << here << QByteArray() << QByteArray("x11") << QByteArray()
                             << QString();
        QTest::newRow("nothing") << QByteArray() << QByteArray() << QByteArray() << QByteArray()
                                 << noDisplay;
        QTest::newRow("Wayland") << QByteArray() << QByteArray("wayland-0") << QByteArray()
                                 << QByteArray() << needsX11;
        QTest::newRow("Wayland with an X server in it")
            << here << QByteArray("wayland-0") << QByteArray() << QByteArray() << needsX11;
        QTest::newRow("Wayland session")
            << here << QByteArray() << QByteArray("wayland") << QByteArray() << needsX11;
        QTest::newRow("no server behind DISPLAY") << QByteArray("/nonexistent:1") << QByteArray()
                                                  << QByteArray() << QByteArray() << noDisplay;
        QTest::newRow("offscreen")
            << QByteArray() << QByteArray() << QByteArray() << QByteArray("offscreen") << QString();
        QTest::newRow("xcb asked for without a display")
            << QByteArray() << QByteArray() << QByteArray() << QByteArray("xcb") << noDisplay;
    }
    void surroundingsAreJudged()
    {
        QFETCH(QByteArray, display);
        QFETCH(QByteArray, wayland);
        QFETCH(QByteArray, session);
        QFETCH(QByteArray, qtPlatform);
        set("DISPLAY", display);
        set("WAYLAND_DISPLAY", wayland);
        set("XDG_SESSION_TYPE", session);
        set("QT_QPA_PLATFORM", qtPlatform);
        const auto ports = choosePorts();
        QTEST(ports ? QString() : ports.error().message, "message");
    }

    void qtIsToldToUseX11UnlessItWasToldAlready()
    {
        qunsetenv("QT_QPA_PLATFORM");
        qunsetenv("XDG_SESSION_TYPE");
        qunsetenv("WAYLAND_DISPLAY");
        QVERIFY(choosePorts());
        QCOMPARE(qgetenv("QT_QPA_PLATFORM"), QByteArray("xcb"));
        qputenv("QT_QPA_PLATFORM", "offscreen");
        QVERIFY(choosePorts());
        QCOMPARE(qgetenv("QT_QPA_PLATFORM"), QByteArray("offscreen"));
    }

    void everyPortIsThere()
    {
        const auto ports = choosePorts();
        QVERIFY(ports);
        const Platform platform = ports.value().make();
        QVERIFY(platform.displays && platform.grabber && platform.windowList &&
                platform.captureAccess && platform.hotKeys && platform.panels &&
                platform.pasteboard && platform.frontApplication && platform.fileOpener &&
                platform.trayHosts && platform.quitSignals);
        QCOMPARE(platform.displays->screens().size(), std::size_t(1));
        QVERIFY(!platform.captureAccess->needsPermission());
        QCOMPARE(platform.interfaceFont, QStringLiteral("Inter"));
        const QTemporaryDir folder;
        std::optional<bool> opened;
        platform.fileOpener->openFolder(folder.filePath(QStringLiteral("missing")), this,
                                        [&opened](bool answer) { opened = answer; });
        QTRY_VERIFY(opened);
        QVERIFY(!*opened);
    }

    void eachPortIsServedByTheClassThatIsNamed()
    {
        const auto ports = choosePorts();
        QVERIFY(ports);
        Platform platform = ports.value().make();
        QHash<QString, QByteArray> classes;
        nullOffers().forEach([&](auto& list) {
            const auto& port = *(platform.*list.member);
            classes.insert(QString::fromLatin1(list.name), typeid(port).name());
        });
        // Which kinds of trays stand behind it is another test's business.
        QVERIFY(classes.take(QStringLiteral("trayHosts")).contains("LinuxTrayHosts"));
        for (const ServedPort& port : ports.value().served) {
            if (port.name == QLatin1String("trayHosts"))
                QCOMPARE(port.serves, QStringLiteral("XEmbedTrayHosts+StatusNotifierHosts"));
            else
                QVERIFY2(classes.value(port.name).contains(port.serves.toLatin1()),
                         qPrintable(port.name));
        }
    }

    void aPortCanBeForcedAndTheOthersStay()
    {
        qputenv("BRINDLECAM_PORT_GRABBER", "null");
        const auto ports = choosePorts();
        qunsetenv("BRINDLECAM_PORT_GRABBER");
        QVERIFY(ports);
        const Platform platform = ports.value().make();
        const std::vector<ScreenInfo> screens = platform.displays->screens();
        QCOMPARE(screens.size(), std::size_t(1));
        std::optional<bool> opened;
        platform.grabber->openRegion(screens.front().native, {}, this,
                                     [&opened](const auto& frames) { opened = frames.ok(); });
        QCOMPARE(opened, std::optional(false));
        // Panels read what lies beneath them by themselves.
        const QRect part(0, 0, 20, 10);
        QCOMPARE(platform.compositing->backdrop(part).size(), part.size());
    }

private:
    static constexpr std::array kVariables{"DISPLAY", "WAYLAND_DISPLAY", "XDG_SESSION_TYPE",
                                           "QT_QPA_PLATFORM", "DBUS_SESSION_BUS_ADDRESS"};

    static void set(const char* name, const QByteArray& value)
    {
        if (value.isEmpty())
            qunsetenv(name);
        else
            qputenv(name, value);
    }

    QHash<QByteArray, QByteArray> m_former;
};

BRINDLECAM_TEST(TestPrepare);

} // namespace brindlecam

#include "tst_prepare.moc"
