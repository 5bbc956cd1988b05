#include "DrawerFixture.h"
#include "drawer/EntryActions.h"
#include "support/TestCase.h"

#include <QDir>
#include <QFileInfo>

namespace brindlecam {

using test::DrawerFixture;
using test::kDenseScreen;

namespace {

struct ActionsDesk : DrawerFixture {
    EntryActions actions{{opener, prefs, history, output, toast, activity, executor}};
    const QString captures = folder.filePath(QStringLiteral("capturas"));

    [[nodiscard]] QStringList saved() const { return test::filesIn(captures); }
};

} // namespace

class TestEntryActions final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void copyIsTheEntrysBytesAndIsTold()
    {
        ActionsDesk desk;
        const QString entry = desk.add({30, 20}, Qt::green);
        desk.actions.copy(entry, kDenseScreen);
        QTRY_COMPARE(desk.said(), QStringLiteral("Copiado al portapapeles"));
        QCOMPARE(desk.pasteboard.png, test::contentOf(entry));
        QVERIFY(kDenseScreen.native.contains(desk.saidAt()));
    }

    void animationsAreCopiedAsFilesToo()
    {
        ActionsDesk desk;
        desk.history.add("GIF89a", QStringLiteral("gif"));
        desk.actions.copy(desk.history.items().constFirst(), kDenseScreen);
        QTRY_COMPARE(desk.said(), QStringLiteral("Copiado al portapapeles"));
        QCOMPARE(desk.pasteboard.formats.front().mimeType, QByteArray("text/uri-list"));
        QCOMPARE(desk.pasteboard.formats.back().bytes, QByteArray("GIF89a"));
    }

    void anEntryThatIsGoneLeavesTheClipboard()
    {
        ActionsDesk desk;
        const QString entry = desk.add();
        QVERIFY(QFile::remove(entry));
        desk.actions.copy(entry, kDenseScreen);
        QTRY_COMPARE(desk.said(), QStringLiteral("No se pudo leer la captura"));
        QCOMPARE(desk.pasteboard.changes, 0);
    }

    void aClipboardThatRefusesIsTold()
    {
        ActionsDesk desk;
        desk.pasteboard.answers = ClipboardFate::refused;
        desk.actions.copy(desk.add(), kDenseScreen);
        QTRY_COMPARE(desk.said(), QStringLiteral("No se pudo copiar la captura"));
    }

    void nothingIsCopiedWhileTheProgramEnds()
    {
        ActionsDesk desk;
        desk.activity.stage = Activity::Stage::quitting;
        desk.actions.copy(desk.add(), kDenseScreen);
        test::sendAllPostedEvents();
        QCOMPARE(desk.pasteboard.changes, 0);
        QCOMPARE(desk.said(), QString());
    }

    void opensAndShowsItAndTellsWhatFails()
    {
        ActionsDesk desk;
        const QString entry = desk.add();
        desk.actions.openInPreview(entry, kDenseScreen);
        desk.actions.reveal(entry, kDenseScreen);
        test::sendAllPostedEvents();
        QCOMPARE(desk.opener.files, QStringList{entry});
        QCOMPARE(desk.opener.revealed, QStringList{entry});
        QCOMPARE(desk.said(), QString());
        desk.opener.succeeds = false;
        desk.actions.openInPreview(entry, kDenseScreen);
        QTRY_COMPARE(desk.said(), QStringLiteral("No se pudo abrir la captura"));
        desk.actions.reveal(entry, kDenseScreen);
        QTRY_COMPARE(desk.said(), QStringLiteral("No se pudo abrir la carpeta"));
    }

    void savesACopyUnderANewNameAndShowsIt()
    {
        ActionsDesk desk;
        const QString entry = desk.add();
        desk.actions.saveToFolder(entry, kDenseScreen);
        QTRY_COMPARE(desk.opener.revealed.size(), 1);
        QCOMPARE(desk.saved().size(), 1);
        QVERIFY(desk.saved().front().startsWith(QStringLiteral("Brindlecam ")));
        QVERIFY(desk.saved().front().endsWith(QStringLiteral(".png")));
        const QString target = QDir(desk.captures).filePath(desk.saved().front());
        QCOMPARE(desk.opener.revealed.front(), target);
        QCOMPARE(test::contentOf(target), test::contentOf(entry));
        QVERIFY(QFileInfo::exists(entry));
    }

    void savesAnimationsAsWhatTheyAre()
    {
        ActionsDesk desk;
        desk.history.add("GIF89a", QStringLiteral("gif"));
        desk.actions.saveToFolder(desk.history.items().constFirst(), kDenseScreen);
        QTRY_COMPARE(desk.opener.revealed.size(), 1);
        QVERIFY(desk.saved().front().endsWith(QStringLiteral(".gif")));
        QVERIFY(!desk.saved().front().contains(QStringLiteral(".png")));
    }

    void whatCannotBeSavedIsTold()
    {
        ActionsDesk desk;
        const QString entry = desk.add();
        test::put(desk.captures); // no folder any more
        desk.actions.saveToFolder(entry, kDenseScreen);
        QTRY_COMPARE(desk.said(), QStringLiteral("No se pudo guardar la captura"));
        QVERIFY(desk.opener.revealed.isEmpty());
        QCOMPARE(test::contentOf(desk.captures), QByteArray("by hand"));
    }

    void aFileThatIsThereIsNeverReplaced()
    {
        ActionsDesk desk;
        const QString entry = desk.add();
        // Whichever second it is by then.
        QVERIFY(QDir().mkpath(desk.captures));
        const QDateTime now = QDateTime::currentDateTime();
        for (int second = 0; second < 30; ++second) {
            const QString name =
                QStringLiteral("/Brindlecam %1.png")
                    .arg(now.addSecs(second).toString(QStringLiteral("yyyy-MM-dd HH.mm.ss")));
            test::put(desk.captures + name);
        }
        desk.actions.saveToFolder(entry, kDenseScreen);
        QTRY_COMPARE(desk.said(), QStringLiteral("No se pudo guardar la captura"));
        for (const QString& name : desk.saved())
            QCOMPARE(test::contentOf(desk.captures + QLatin1Char('/') + name),
                     QByteArray("by hand"));
    }

    void removesTheEntryAndTellsWhenItIsGone()
    {
        ActionsDesk desk;
        const QString entry = desk.add();
        bool done = false;
        desk.actions.remove(entry, [&done] { done = true; });
        QTRY_VERIFY(done);
        QVERIFY(!QFileInfo::exists(entry));
        desk.actions.remove(entry, [&done] { done = false; }); // a failure is none
        QTRY_VERIFY(!done);
    }
};

BRINDLECAM_TEST(TestEntryActions);

} // namespace brindlecam

#include "tst_entryactions.moc"
