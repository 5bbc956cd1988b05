#include "desktop/support/CaptureTest.h"
#include "desktop/support/Launchers.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace brindlecam::desktop {

/// Settings the program cannot use: what is wrong reads as if it were not there.
class TestFaultsSettings final : public CaptureTest {
    Q_OBJECT

private Q_SLOTS:
    void settingsThatDoNotParseAreSetAside_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("no JSON") << QByteArray("autoCopy = false\n");
        QTest::newRow("cut off") << QByteArray("{\"didShowWelcome\": true, \"autoSaveArea\": fal");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("a list") << QByteArray("[1, 2]");
        QTest::newRow("bytes") << QByteArray("\xff\xfe\0\0{}", 6);
    }
    void settingsThatDoNotParseAreSetAside()
    {
        QFETCH(QByteArray, content);
        useSettings(content);
        startProgram();
        QVERIFY(capturesWithDefaults());
        QCOMPARE(contentOf(settingsFile() + QStringLiteral(".damaged")), content);
        // The first run's message counts as shown now: that is all there is to save.
        QCOMPARE(program().settings(), QJsonObject({{QStringLiteral("didShowWelcome"), true}}));
    }

    void unreadableSettingsAreLeftAlone()
    {
        useSettings("{\"autoSaveArea\": false}");
        QFile::setPermissions(settingsFile(), {});
        program().setLauncher(Launchers::withoutPrivileges());
        startProgram();
        QVERIFY(capturesWithDefaults());
        QFile::setPermissions(settingsFile(), QFile::ReadOwner);
        QCOMPARE(contentOf(settingsFile()), QByteArray("{\"autoSaveArea\": false}"));
        QVERIFY(!QFileInfo::exists(settingsFile() + QStringLiteral(".damaged")));
    }

    void folderInPlaceOfTheSettingsIsLeftAlone()
    {
        useSmallDesktop();
        QDir().mkpath(settingsFile());
        startProgram();
        QVERIFY(capturesWithDefaults());
        QVERIFY(QFileInfo(settingsFile()).isDir());
    }

    void valuesOfWrongTypesReadAsDefaults()
    {
        useSettings(R"({"autoCopy": "no", "autoSaveArea": 0, "autoSaveFullScreen": [],
                        "keepHistory": null, "showLoupe": {}, "checkUpdates": false,
                        "markerOpacity": "x", "size.pen": true, "saveFolder": 5,
                        "hotkey.area": 7, "hotkey.fullScreen": {"base64": 3},
                        "didShowWelcome": "yes", "unknown": [[]]})");
        startProgram();
        QVERIFY(capturesWithDefaults());
        QVERIFY(!QFileInfo::exists(settingsFile() + QStringLiteral(".damaged")));
    }

    void shortcutThatCannotBeReadIsNone()
    {
        // "{}" and noise: data is there, but no shortcut in it.
        useSettings(R"({"hotkey.area": {"base64": "e30="}, "didShowWelcome": true})");
        program().start();
        const auto rival = desktop().rival();
        QVERIFY(waitUntil([&] { return rival->isHotKeyTaken(kFullScreenKey, kHotKeyModifiers); }));
        QVERIFY(!rival->isHotKeyTaken(kAreaKey, kHotKeyModifiers));
        pressHotKey(kFullScreenKey);
        QVERIFY(toastSays(QStringLiteral("Pantalla completa copiada y guardada")));
    }

private:
    void useSmallDesktop() { useDesktop({.screen = {.pixels = {640, 480}}}); }

    void useSettings(const QByteArray& content)
    {
        useSmallDesktop();
        QDir().mkpath(QFileInfo(settingsFile()).path());
        QFile file(settingsFile());
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("no settings can be written");
    }

    QString settingsFile() { return program().folders().settingsFile(); }

    static QByteArray contentOf(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
    }

    /// Hot keys, live copy, file and history, all as nobody has ever changed anything.
    bool capturesWithDefaults()
    {
        const QSize size(120, 90);
        if (!openArea())
            return false;
        select(QRect(QPoint(10, 10), size));
        if (!waitUntil([&] { return pasted().size() == size; }))
            return false;
        input().tap(Qt::Key_Return);
        return toastSays(QStringLiteral("Copiado y guardado")) &&
               onlyPictureIn(program().folders().captures()).size() == size &&
               onlyPictureIn(program().folders().history()).size() == size;
    }
};

} // namespace brindlecam::desktop

QTEST_GUILESS_MAIN(brindlecam::desktop::TestFaultsSettings)

#include "tst_faults_settings.moc"
