// Covers FolderPanel.
#include "SettingsFixture.h"
#include "settings/FolderPanel.h"
#include "settings/FolderRow.h"
#include "settings/SmallButton.h"
#include "support/TestCase.h"

#include <QDir>
#include <QLineEdit>

namespace brindlecam {

using test::SettingsFixture;

namespace {

FolderRow& row(SettingsFixture& desk)
{
    return desk.open().behaviour().folderRow();
}

/// Clicks the button, and waits until it is known where to begin.
void clickChange(const SettingsFixture& desk, FolderRow& folder)
{
    folder.changeButton().click();
    desk.settle();
}

/// Types the path into the panel, and takes it.
void choose(FolderPanel& panel, const QString& path)
{
    panel.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(path);
    panel.accept();
}

} // namespace

class TestFolderRow final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void homeIsWrittenAsATilde_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("shown");
        const auto row = [](const char* name, const char* path, const char* shown) {
            QTest::newRow(name) << QString::fromUtf8(path) << QString::fromUtf8(shown);
        };
        row("in it", "/home/ana/Imágenes/Brindlecam", "~/Imágenes/Brindlecam");
        row("itself", "/home/ana", "~");
        row("elsewhere", "/media/disco", "/media/disco");
        row("somebody whose name begins alike", "/home/anabel/x", "/home/anabel/x");
    }
    void homeIsWrittenAsATilde()
    {
        QFETCH(QString, path);
        QTEST(abbreviatedPath(path, QStringLiteral("/home/ana")), "shown");
    }

    void showsTheFolderAndAllOfItInATip()
    {
        SettingsFixture desk;
        const QString path = QDir::homePath() + QStringLiteral("/fotos");
        desk.defaults.setString(QStringLiteral("saveFolder"), path);
        QLabel& label = row(desk).folderLabel();
        QCOMPARE(label.text(), QStringLiteral("Carpeta: ~/fotos"));
        QCOMPARE(label.toolTip(), path);
    }

    void aLongPathIsCutInTheMiddle()
    {
        SettingsFixture desk;
        const QString path =
            QStringLiteral("/media/") + QString(80, QLatin1Char('x')) + QStringLiteral("/capturas");
        desk.defaults.setString(QStringLiteral("saveFolder"), path);
        QLabel& label = row(desk).folderLabel();
        QVERIFY(label.text().startsWith(QStringLiteral("Carpeta: /media/")));
        QVERIFY(label.text().endsWith(QStringLiteral("/capturas")));
        QVERIFY(label.text().contains(QChar(0x2026)));
        QCOMPARE(label.width(), 250);
        QVERIFY(label.fontMetrics().horizontalAdvance(label.text()) <= 250);
        QCOMPARE(label.accessibleName(), QStringLiteral("Carpeta: ") + path);
        QCOMPARE(label.toolTip(), path);
    }

    void theFolderThatIsChosenIsStoredAndShown()
    {
        SettingsFixture desk;
        const QString chosen = desk.folder.filePath(QStringLiteral("otra"));
        QVERIFY(QDir().mkpath(chosen));
        FolderRow& folder = row(desk);
        clickChange(desk, folder);
        QVERIFY(folder.panel());
        QVERIFY(folder.panel()->isVisible());
        QCOMPARE(folder.panel()->labelText(QFileDialog::Accept), QStringLiteral("Elegir"));
        QCOMPARE(folder.panel()->fileMode(), QFileDialog::Directory);
        choose(*folder.panel(), chosen);
        QCOMPARE(desk.prefs.saveFolder(), chosen);
        QCOMPARE(folder.folderLabel().toolTip(), chosen);
        QTRY_VERIFY(!folder.panel());
    }

    void itBeginsInTheFolderThatIsThere()
    {
        SettingsFixture desk;
        // The captures folder of this fixture is not there yet.
        FolderRow& folder = row(desk);
        clickChange(desk, folder);
        QCOMPARE(folder.panel()->directory().absolutePath(), desk.folder.path());
    }

    void cancellingChangesNothing()
    {
        SettingsFixture desk;
        FolderRow& folder = row(desk);
        const QString before = desk.prefs.saveFolder();
        clickChange(desk, folder);
        folder.panel()->reject();
        QCOMPARE(desk.prefs.saveFolder(), before);
    }

    void aFolderThatIsNotThereIsToldAndAskedForAgain()
    {
        SettingsFixture desk;
        FolderRow& folder = row(desk);
        const QString before = desk.prefs.saveFolder();
        clickChange(desk, folder);
        choose(*folder.panel(), desk.folder.filePath(QStringLiteral("nunca")));
        QVERIFY(desk.question());
        QCOMPARE(desk.question()->text(), QStringLiteral("La carpeta “nunca” no existe"));
        QVERIFY(folder.panel()->isVisible());
        QCOMPARE(desk.prefs.saveFolder(), before);
    }

    void thereIsOnePanelAtATime()
    {
        SettingsFixture desk;
        FolderRow& folder = row(desk);
        clickChange(desk, folder);
        FolderPanel* const first = folder.panel();
        clickChange(desk, folder);
        QCOMPARE(folder.panel(), first);
        QCOMPARE(desk.panels.focused.back().data(), first);
    }

    void theFolderIsOpenedByTheShell()
    {
        SettingsFixture desk;
        row(desk).openButton().click();
        QCOMPARE(desk.host.foldersOpened, 1);
    }
};

BRINDLECAM_TEST(TestFolderRow);

} // namespace brindlecam

#include "tst_folderrow.moc"
