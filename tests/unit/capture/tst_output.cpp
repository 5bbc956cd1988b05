#include "OutputFixture.h"
#include "support/TestCase.h"

#include <QFile>

namespace brindlecam {

/// How the lanes are joined, and what is told at the end.
class TestOutput final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void clipboardComesBeforeFileAndTheCompletionLast()
    {
        test::OutputFixture f;
        std::optional<Fate> fate;
        f.output.deliver(test::plain(Qt::red), {.copy = true, .saveTo = f.file(), .history = true},
                         [&fate](const Fate& told) { fate = told; });
        test::sendAllPostedEvents();
        QCOMPARE(f.gate.jobs.size(), 1U); // nothing takes the clipboard's time
        f.runAndDeliver(0);
        QCOMPARE(f.pasteboard.changes, 1);
        QCOMPARE(f.gate.jobs.size(), 1U);
        f.runAndDeliver(0); // encoding for the file
        QCOMPARE(f.gate.jobs.size(), 1U);
        QVERIFY(!QFile::exists(f.file()));
        QVERIFY(!fate);
        f.runAndDeliver(0); // writing
        QCOMPARE(test::colourOfFile(f.file()), QColor(Qt::red));
        QCOMPARE(f.history.items().size(), 1);
        QVERIFY(fate);
        QCOMPARE(fate->clipboard, ClipboardFate::taken);
        QCOMPARE(fate->file, Fate::Copy::done);
        QCOMPARE(fate->history, Fate::Copy::done);
    }

    void everyFateOfTheClipboardComesBeforeTheFile_data()
    {
        QTest::addColumn<ClipboardFate>("fate");
        QTest::newRow("taken") << ClipboardFate::taken;
        QTest::newRow("overtaken") << ClipboardFate::overtaken;
        QTest::newRow("refused") << ClipboardFate::refused;
    }
    void everyFateOfTheClipboardComesBeforeTheFile()
    {
        QFETCH(const ClipboardFate, fate);
        test::OutputFixture f;
        f.pasteboard.answers = fate;
        QList<Fate> told;
        f.output.deliver(test::plain(Qt::red), {.copy = true, .saveTo = f.file(), .history = true},
                         [&told](const Fate& what) { told << what; });
        f.gate.run(0);
        QVERIFY(f.gate.jobs.empty()); // not before the clipboard has answered
        f.settle();
        QCOMPARE(told.size(), 1);
        QCOMPARE(told.front().clipboard, fate);
        QCOMPARE(told.front().file, Fate::Copy::done);
        QCOMPARE(told.front().history, Fate::Copy::done);
        QCOMPARE(test::colourOfFile(f.file()), QColor(Qt::red));
    }

    void finishingTellsWhenPicturesAndTextsHaveReachedTheirPlace()
    {
        test::OutputFixture f;
        bool finished = false;
        f.output.deliver(test::plain(Qt::red), {.copy = true, .saveTo = f.file()});
        f.output.finishAll([&finished] { finished = true; });
        QVERIFY(!finished);
        f.settle();
        QVERIFY(finished);
        QCOMPARE(test::colourOfFile(f.file()), QColor(Qt::red));
        finished = false;
        f.output.copy(ClipboardContent::text(QStringLiteral("hola")), [&finished](ClipboardFate) {
            QVERIFY(!finished); // told first
        });
        f.output.finishAll([&finished] { finished = true; });
        f.settle();
        QVERIFY(finished);
    }

    void completionComesAfterTheCallEvenWithNothingToDo()
    {
        test::OutputFixture f;
        bool completed = false;
        f.output.deliver(test::plain(Qt::red), {}, [&completed](const Fate&) { completed = true; });
        QVERIFY(!completed);
        f.settle();
        QVERIFY(completed);
    }
};

BRINDLECAM_TEST(TestOutput);

} // namespace brindlecam

#include "tst_output.moc"
