#include "preferences/Defaults.h"
#include "preferences/Prefs.h"
#include "support/TestCase.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>

namespace brindlecam {

class TestPrefs final : public test::TestCase {
    Q_OBJECT

    QTemporaryDir m_folder;
    std::unique_ptr<Defaults> m_defaults;
    std::unique_ptr<Prefs> m_prefs;

    void startFresh()
    {
        // What the last test stored is on its way to the file until its store is gone.
        m_prefs.reset();
        m_defaults.reset();
        const QString path = m_folder.filePath(QStringLiteral("settings.json"));
        QFile::remove(path);
        m_defaults = std::make_unique<Defaults>(path);
        m_prefs = std::make_unique<Prefs>(*m_defaults);
    }

private Q_SLOTS:
    /// Every test starts as a fresh installation.
    void cleanup() { startFresh(); }
    void initTestCase() { startFresh(); }

    void aFreshInstallationHasEverythingOnButLightGifs()
    {
        QVERIFY(m_prefs->autoCopy());
        QVERIFY(m_prefs->autoSaveArea());
        QVERIFY(m_prefs->autoSaveFullScreen());
        QVERIFY(m_prefs->keepHistory());
        QVERIFY(m_prefs->showLoupe());
        QVERIFY(m_prefs->checkUpdates());
        QVERIFY(!m_prefs->lightGifs());
        QCOMPARE(m_prefs->markerOpacity(), 0.4);
    }

    void switchesFollowTheirOwnKey_data()
    {
        QTest::addColumn<QString>("key");
        for (const char* key : {"autoCopy", "autoSaveArea", "autoSaveFullScreen", "keepHistory",
                                "showLoupe", "checkUpdates"})
            QTest::newRow(key) << QString::fromLatin1(key);
    }
    void switchesFollowTheirOwnKey()
    {
        QFETCH(QString, key);
        const auto offNow = [this] {
            QStringList off;
            if (!m_prefs->autoCopy())
                off << QStringLiteral("autoCopy");
            if (!m_prefs->autoSaveArea())
                off << QStringLiteral("autoSaveArea");
            if (!m_prefs->autoSaveFullScreen())
                off << QStringLiteral("autoSaveFullScreen");
            if (!m_prefs->keepHistory())
                off << QStringLiteral("keepHistory");
            if (!m_prefs->showLoupe())
                off << QStringLiteral("showLoupe");
            if (!m_prefs->checkUpdates())
                off << QStringLiteral("checkUpdates");
            return off;
        };
        m_defaults->setBoolean(key, false);
        QCOMPARE(offNow(), QStringList(key));
        m_defaults->setString(key, QStringLiteral("false"));
        QCOMPARE(offNow(), QStringList());
        m_defaults->setNumber(key, 0);
        QCOMPARE(offNow(), QStringList());
    }

    void lightGifsAreOnOnlyWhenSaidSo()
    {
        m_defaults->setString(QStringLiteral("lightGifs"), QStringLiteral("yes"));
        QVERIFY(!m_prefs->lightGifs());
        m_defaults->setBoolean(QStringLiteral("lightGifs"), true);
        QVERIFY(m_prefs->lightGifs());
    }

    void markerOpacityIsClampedWhenRead()
    {
        const QString key = QStringLiteral("markerOpacity");
        m_defaults->setNumber(key, 0.05);
        QCOMPARE(m_prefs->markerOpacity(), 0.1);
        m_defaults->setNumber(key, 3);
        QCOMPARE(m_prefs->markerOpacity(), 1.0);
        m_defaults->setNumber(key, 0.7);
        QCOMPARE(m_prefs->markerOpacity(), 0.7);
        m_defaults->setString(key, QStringLiteral("0.7"));
        QCOMPARE(m_prefs->markerOpacity(), 0.4);
    }

    void markerOpacityIsClampedWhenStored()
    {
        const auto stored = [this](double opacity) {
            m_prefs->setMarkerOpacity(opacity);
            return m_defaults->number(QStringLiteral("markerOpacity"));
        };
        QCOMPARE(stored(0.55), std::optional(0.55));
        QCOMPARE(m_prefs->markerOpacity(), 0.55);
        QCOMPARE(stored(0.05), std::optional(0.1));
        QCOMPARE(stored(1.05), std::optional(1.0));
    }

    void sizesAreClampedWhenReadAndWhenStored()
    {
        QCOMPARE(m_prefs->size(Tool::marker), 16.0);
        m_defaults->setNumber(QStringLiteral("size.marker"), 100);
        QCOMPARE(m_prefs->size(Tool::marker), 40.0);
        m_defaults->setNumber(QStringLiteral("size.pen"), 0);
        QCOMPARE(m_prefs->size(Tool::pen), 1.0);
        m_prefs->setSize(2, Tool::number);
        QCOMPARE(m_defaults->number(QStringLiteral("size.number")), std::optional(16.0));
        m_prefs->setSize(21, Tool::arrow);
        QCOMPARE(m_defaults->number(QStringLiteral("size.arrow")), std::optional(20.0));
    }

    void toolsWithoutSizesAlwaysRead3()
    {
        for (const Tool tool : {Tool::text, Tool::pixelate}) {
            m_prefs->setSize(12, tool);
            QVERIFY(!m_defaults->contains(QStringLiteral("size.") + name(tool)));
            m_defaults->setNumber(QStringLiteral("size.") + name(tool), 12);
            QCOMPARE(m_prefs->size(tool), 3.0);
        }
    }

    void theCapturesFolderIsTheOneStored_data()
    {
        const QString standard =
            QStandardPaths::writableLocation(QStandardPaths::PicturesLocation) +
            QStringLiteral("/Brindlecam");
        const QString home = QDir::homePath();
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("folder");
        QTest::newRow("full path") << QStringLiteral("/srv/shots") << QStringLiteral("/srv/shots");
        QTest::newRow("as it stands")
            << QStringLiteral("/srv/../a b/~") << QStringLiteral("/srv/../a b/~");
        QTest::newRow("below home")
            << QStringLiteral("~/Mis capturas") << home + QStringLiteral("/Mis capturas");
        QTest::newRow("home") << QStringLiteral("~/") << home;
        QTest::newRow("a tilde alone") << QStringLiteral("~") << standard;
        QTest::newRow("another's home") << QStringLiteral("~root/shots") << standard;
        QTest::newRow("relative") << QStringLiteral("shots") << standard;
        QTest::newRow("upwards") << QStringLiteral("../../shots") << standard;
        QTest::newRow("inside the program") << QStringLiteral(":/shots") << standard;
        QTest::newRow("empty") << QString() << standard;
    }
    void theCapturesFolderIsTheOneStored()
    {
        QFETCH(QString, stored);
        m_defaults->setString(QStringLiteral("saveFolder"), stored);
        QTEST(m_prefs->saveFolder(), "folder");
    }

    void withoutAStoredTextTheCapturesFolderLiesInThePictures()
    {
        const QString standard =
            QStandardPaths::writableLocation(QStandardPaths::PicturesLocation) +
            QStringLiteral("/Brindlecam");
        QCOMPARE(m_prefs->saveFolder(), standard);
        m_defaults->setNumber(QStringLiteral("saveFolder"), 1);
        QCOMPARE(m_prefs->saveFolder(), standard);
    }

    void newFilesAreNamedByTheMomentAndByWhatTheyAre_data()
    {
        QTest::addColumn<QString>("fileExtension");
        QTest::newRow("picture") << QStringLiteral("png");
        QTest::newRow("animation") << QStringLiteral("gif");
    }
    void newFilesAreNamedByTheMomentAndByWhatTheyAre()
    {
        QFETCH(QString, fileExtension);
        const QDateTime before = QDateTime::currentDateTime();
        const QString name = Prefs::newFileName(fileExtension);
        const QRegularExpression form(
            QStringLiteral(R"(^Brindlecam (\d{4}-\d{2}-\d{2} \d{2}\.\d{2}\.\d{2})\.%1$)")
                .arg(fileExtension));
        const QRegularExpressionMatch match = form.match(name);
        QVERIFY(match.hasMatch());
        const QDateTime named =
            QDateTime::fromString(match.captured(1), QStringLiteral("yyyy-MM-dd HH.mm.ss"));
        QVERIFY(before.secsTo(named) >= -1);
        QVERIFY(named <= QDateTime::currentDateTime());
    }

    void aClearedShortcutStaysClearedAndADeletedKeyBringsTheDefaultBack()
    {
        const QString key = QStringLiteral("hotkey.area");
        QCOMPARE(m_prefs->combo(CaptureAction::area)->display, QStringLiteral("⇧⌘9"));
        m_prefs->setCombo(std::nullopt, CaptureAction::area);
        QCOMPARE(m_defaults->data(key), std::optional(QByteArray()));
        QVERIFY(!m_prefs->combo(CaptureAction::area));
        QVERIFY(m_prefs->combo(CaptureAction::recents));
        m_defaults->remove(key);
        QCOMPARE(m_prefs->combo(CaptureAction::area), defaultCombo(CaptureAction::area));
    }

    void shortcutsAreStoredAsJson()
    {
        const KeyCombo combo{105, 0, QStringLiteral("F13")};
        m_prefs->setCombo(combo, CaptureAction::fullScreen);
        QCOMPARE(m_prefs->combo(CaptureAction::fullScreen), std::optional(combo));
        QCOMPARE(m_defaults->data(QStringLiteral("hotkey.fullScreen")),
                 std::optional(combo.toJson()));
    }

    void whatIsStoredButIsNoShortcutMeansNone()
    {
        m_defaults->setData(QStringLiteral("hotkey.area"), QByteArray("{\"keyCode\": 25}"));
        QVERIFY(!m_prefs->combo(CaptureAction::area));
        m_defaults->setString(QStringLiteral("hotkey.area"), QStringLiteral("⇧⌘1"));
        QCOMPARE(m_prefs->combo(CaptureAction::area),
                 std::optional(defaultCombo(CaptureAction::area)));
    }
};

BRINDLECAM_TEST(TestPrefs);

} // namespace brindlecam

#include "tst_prefs.moc"
