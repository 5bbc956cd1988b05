#include "platform/Platform.h"
#include "support/TestCase.h"

#include <QHash>
#include <QTemporaryDir>

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
        const auto error = preparePlatform();
        QTEST(error ? error->message : QString(), "message");
    }

    void qtIsToldToUseX11UnlessItWasToldAlready()
    {
        qunsetenv("QT_QPA_PLATFORM");
        qunsetenv("XDG_SESSION_TYPE");
        qunsetenv("WAYLAND_DISPLAY");
        QVERIFY(!preparePlatform());
        QCOMPARE(qgetenv("QT_QPA_PLATFORM"), QByteArray("xcb"));
        qputenv("QT_QPA_PLATFORM", "offscreen");
        QVERIFY(!preparePlatform());
        QCOMPARE(qgetenv("QT_QPA_PLATFORM"), QByteArray("offscreen"));
    }

    void everyPortIsThere()
    {
        const Platform platform = makePlatform();
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
