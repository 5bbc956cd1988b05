#include "OutputFixture.h"
#include "support/TestCase.h"

#include <QDir>
#include <QFile>

namespace brindlecam {

/// What reaches the disk, and in which order.
class TestFileLane final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void missingFolderIsMadeWithItsParents()
    {
        test::OutputFixture f;
        const QString path = f.folder.filePath(QStringLiteral("una/dos/tres.png"));
        f.output.deliver(test::plain(Qt::red), {.copy = false, .saveTo = path});
        f.settle();
        QCOMPARE(test::colourOfFile(path), QColor(Qt::red));
    }

    void aFileInTheFoldersPlaceFailsTheFileAndNothingElse()
    {
        test::OutputFixture f;
        QFile obstacle(f.folder.filePath(QStringLiteral("capturas")));
        QVERIFY(obstacle.open(QIODevice::WriteOnly));
        obstacle.close();
        std::optional<Fate> fate;
        f.output.deliver(test::plain(Qt::red), {.copy = true, .saveTo = f.file(), .history = true},
                         [&fate](const Fate& told) { fate = told; });
        f.settle();
        QVERIFY(fate);
        QCOMPARE(fate->clipboard, ClipboardFate::taken);
        QCOMPARE(fate->file, Fate::Copy::failed);
        QCOMPARE(fate->history, Fate::Copy::done);
        QCOMPARE(f.shownColour(), QColor(Qt::red));
        QCOMPARE(f.history.items().size(), 1);
        QCOMPARE(obstacle.size(), 0);
    }

    void historyIsLeftAloneWhenTheUserKeepsNone()
    {
        test::OutputFixture f;
        f.defaults.setBoolean(QStringLiteral("keepHistory"), false);
        f.output.deliver(test::plain(Qt::red), {.copy = true, .history = true});
        f.runAndDeliver(0);
        QCOMPARE(f.pasteboard.changes, 1);
        QVERIFY(f.gate.jobs.empty()); // nor encoded for nobody
        QVERIFY(f.history.items().isEmpty());
    }

    void twoCapturesOfOneSecondLeaveTheLaterOne()
    {
        test::OutputFixture f;
        f.output.deliver(test::plain(Qt::red), {.copy = false, .saveTo = f.file()});
        f.output.deliver(test::plain(Qt::blue), {.copy = false, .saveTo = f.file()});
        f.runAndDeliver(1); // the later one is encoded first
        f.settle();
        QCOMPARE(test::colourOfFile(f.file()), QColor(Qt::blue));
        QCOMPARE(QDir(f.folder.filePath(QStringLiteral("capturas"))).count(), 3U); // . .. file
    }

    void aLaterFileWaitsForAnEarlierOneThatIsStillOnItsWayToTheClipboard()
    {
        test::OutputFixture f;
        f.output.deliver(test::plain(Qt::red), {.copy = true, .saveTo = f.file()});
        f.output.deliver(test::plain(Qt::blue), {.copy = false, .saveTo = f.file()});
        f.runAndDeliver(1); // the later one is encoded
        QCOMPARE(f.gate.jobs.size(), 1U);
        QVERIFY(!QFile::exists(f.file()));
        f.settle();
        QCOMPARE(test::colourOfFile(f.file()), QColor(Qt::blue));
    }

    void whatGoesElsewhereWaitsForNobody()
    {
        test::OutputFixture f;
        f.output.deliver(test::plain(Qt::red), {.copy = true, .saveTo = f.file(), .history = true});
        f.output.deliver(test::plain(Qt::red), {.copy = true, .history = true});
        f.output.deliver(test::plain(Qt::blue),
                         {.saveTo = f.file(QStringLiteral("b.png")), .history = true});
        f.output.deliver(test::plain(Qt::green), {.history = true});
        QCOMPARE(f.gate.jobs.size(), 4U);
        while (f.gate.jobs.size() > 2) // the pictures that are copied wait
            f.runAndDeliver(2);
        QCOMPARE(test::colourOfFile(f.file(QStringLiteral("b.png"))), QColor(Qt::blue));
        QCOMPARE(f.history.items().size(), 2);
        QVERIFY(!QFile::exists(f.file()));
    }

    void everyOneOfManyToOnePathIsToldInItsOrder()
    {
        constexpr int kMany = 4;
        test::OutputFixture f;
        QList<int> told;
        for (int i = 0; i < kMany; ++i) {
            f.output.deliver(test::plain(QColor::fromHsv(i * 60, 255, 255)), {.saveTo = f.file()},
                             [&told, i](const Fate& fate) {
                                 QCOMPARE(fate.file, Fate::Copy::done);
                                 told << i;
                             });
        }
        for (int last = kMany - 1; last >= 0; --last) // the first one is encoded last
            f.runAndDeliver(static_cast<std::size_t>(last));
        QCOMPARE(told, QList<int>());
        f.settle();
        QCOMPARE(told, (QList{0, 1, 2, 3}));
        QCOMPARE(test::colourOfFile(f.file()).rgb(),
                 QColor::fromHsv((kMany - 1) * 60, 255, 255).rgb());
    }

    void aHistoryThatIsGivenUpMeanwhileGetsNothing()
    {
        test::OutputFixture f;
        std::optional<Fate> fate;
        f.output.deliver(test::plain(Qt::red), {.history = true},
                         [&fate](const Fate& told) { fate = told; });
        f.defaults.setBoolean(QStringLiteral("keepHistory"), false);
        f.settle();
        QVERIFY(fate);
        QCOMPARE(fate->history, Fate::Copy::notWanted);
        QVERIFY(f.history.items().isEmpty());
    }

    void aHistoryThatCanNotBeWrittenIsTold()
    {
        test::OutputFixture f;
        QFile obstacle(f.folder.filePath(QStringLiteral("historia")));
        QVERIFY(obstacle.open(QIODevice::WriteOnly));
        std::optional<Fate> fate;
        f.output.deliver(test::plain(Qt::red), {.copy = true, .history = true},
                         [&fate](const Fate& told) { fate = told; });
        f.settle();
        QVERIFY(fate);
        QCOMPARE(fate->clipboard, ClipboardFate::taken);
        QCOMPARE(fate->history, Fate::Copy::failed);
    }

    void aNullPictureLeavesNoFileAndSaysSo()
    {
        test::OutputFixture f;
        std::optional<Fate> fate;
        f.output.deliver({}, {.copy = false, .saveTo = f.file(), .history = true},
                         [&fate](const Fate& told) { fate = told; });
        f.settle();
        QVERIFY(fate);
        QVERIFY(!fate->clipboard);
        QCOMPARE(fate->file, Fate::Copy::failed);
        QCOMPARE(fate->history, Fate::Copy::failed);
        QVERIFY(!QFile::exists(f.file()));
        QVERIFY(f.history.items().isEmpty());
    }
};

BRINDLECAM_TEST(TestFileLane);

} // namespace brindlecam

#include "tst_filelane.moc"
