#include "app/Defaults.h"
#include "app/Prefs.h"
#include "capture/Output.h"
#include "recents/History.h"
#include "support/FakePasteboard.h"
#include "support/GatedExecutor.h"
#include "support/TestCase.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace brindlecam {

namespace {

Rendered picture(QColor colour, QSize pixels = {40, 30})
{
    QImage image(pixels, QImage::Format_RGB32);
    image.fill(colour);
    return {image, QSizeF(pixels) / 2};
}

QColor colourOf(const QImage& image)
{
    return image.isNull() ? QColor() : image.pixelColor(0, 0);
}

QColor colourOfFile(const QString& path)
{
    return colourOf(QImage(path));
}

} // namespace

class TestOutput final : public test::TestCase {
    Q_OBJECT

private:
    struct Fixture {
        QTemporaryDir folder;
        Defaults defaults{folder.filePath(QStringLiteral("settings.json"))};
        Prefs prefs{defaults};
        test::FakePasteboard pasteboard;
        History history{folder.filePath(QStringLiteral("historia"))};
        test::GatedExecutor gate;
        Output output{pasteboard, history, prefs, gate.executor()};

        ~Fixture() { settle(); }

        QString file(const QString& name = QStringLiteral("a.png")) const
        {
            return folder.filePath(QStringLiteral("capturas/") + name);
        }
        // Lets everything run in the order it was handed in.
        void settle()
        {
            do {
                test::sendAllPostedEvents();
                if (!gate.jobs.empty())
                    gate.run(0);
                test::sendAllPostedEvents();
            } while (!gate.jobs.empty());
        }
        void runAndDeliver(std::size_t index)
        {
            gate.run(index);
            test::sendAllPostedEvents();
        }
    };

private Q_SLOTS:
    void copyReachesTheClipboardAsPngAndTiff()
    {
        Fixture f;
        f.output.deliver(picture(Qt::red), {.copy = true});
        f.settle();
        QCOMPARE(colourOf(f.pasteboard.picture()), QColor(Qt::red));
        const QImage png = QImage::fromData(*f.pasteboard.png, "PNG");
        QCOMPARE(png.dotsPerMeterX(), 5669);
        const QImage tiff = QImage::fromData(f.pasteboard.makeTiff(), "TIFF");
        QCOMPARE(colourOf(tiff), QColor(Qt::red));
        QCOMPARE(tiff.dotsPerMeterX(), 5669);
    }

    void theNewestPictureWinsEvenWhenTheOlderEncodeEndsLast()
    {
        Fixture f;
        f.output.deliver(picture(Qt::red), {.copy = true});
        f.output.deliver(picture(Qt::blue), {.copy = true});
        QCOMPARE(f.gate.jobs.size(), 2U);
        f.runAndDeliver(1);
        QCOMPARE(colourOf(f.pasteboard.picture()), QColor(Qt::blue));
        f.runAndDeliver(0);
        QCOMPARE(colourOf(f.pasteboard.picture()), QColor(Qt::blue));
        QCOMPARE(f.pasteboard.changes, 1);
    }

    void anOlderPictureThatEndsFirstIsNotShownEither()
    {
        Fixture f;
        f.output.deliver(picture(Qt::red), {.copy = true});
        f.output.deliver(picture(Qt::blue), {.copy = true});
        f.runAndDeliver(0);
        QCOMPARE(f.pasteboard.changes, 0);
        f.settle();
        QCOMPARE(colourOf(f.pasteboard.picture()), QColor(Qt::blue));
    }

    void aDeliveryWithoutCopyNeitherTouchesNorOvertakesTheClipboard()
    {
        Fixture f;
        f.output.deliver(picture(Qt::red), {.copy = true});
        f.output.deliver(picture(Qt::blue), {.copy = false, .saveTo = f.file()});
        f.settle();
        QCOMPARE(colourOf(f.pasteboard.picture()), QColor(Qt::red));
        QCOMPARE(f.pasteboard.changes, 1);
        QCOMPARE(colourOfFile(f.file()), QColor(Qt::blue));
    }

    void clipboardComesBeforeFileAndTheCompletionLast()
    {
        Fixture f;
        std::optional<Fate> fate;
        f.output.deliver(picture(Qt::red), {.copy = true, .saveTo = f.file(), .history = true},
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
        QCOMPARE(colourOfFile(f.file()), QColor(Qt::red));
        QCOMPARE(f.history.items().size(), 1);
        QVERIFY(fate);
        QCOMPARE(fate->clipboard, ClipboardFate::taken);
        QCOMPARE(fate->file, Fate::Copy::done);
        QCOMPARE(fate->history, Fate::Copy::done);
    }

    void missingFolderIsMadeWithItsParents()
    {
        Fixture f;
        const QString path = f.folder.filePath(QStringLiteral("una/dos/tres.png"));
        f.output.deliver(picture(Qt::red), {.copy = false, .saveTo = path});
        f.settle();
        QCOMPARE(colourOfFile(path), QColor(Qt::red));
    }

    void aFileInTheFoldersPlaceFailsTheFileAndNothingElse()
    {
        Fixture f;
        QFile obstacle(f.folder.filePath(QStringLiteral("capturas")));
        QVERIFY(obstacle.open(QIODevice::WriteOnly));
        obstacle.close();
        std::optional<Fate> fate;
        f.output.deliver(picture(Qt::red), {.copy = true, .saveTo = f.file(), .history = true},
                         [&fate](const Fate& told) { fate = told; });
        f.settle();
        QVERIFY(fate);
        QCOMPARE(fate->clipboard, ClipboardFate::taken);
        QCOMPARE(fate->file, Fate::Copy::failed);
        QCOMPARE(fate->history, Fate::Copy::done);
        QCOMPARE(colourOf(f.pasteboard.picture()), QColor(Qt::red));
        QCOMPARE(f.history.items().size(), 1);
        QCOMPARE(obstacle.size(), 0);
    }

    void historyIsLeftAloneWhenTheUserKeepsNone()
    {
        Fixture f;
        f.defaults.setBoolean(QStringLiteral("keepHistory"), false);
        f.output.deliver(picture(Qt::red), {.copy = true, .history = true});
        f.settle();
        QVERIFY(f.history.items().isEmpty());
        QCOMPARE(f.pasteboard.changes, 1);
    }

    void twoCapturesOfOneSecondLeaveTheLaterOne()
    {
        Fixture f;
        f.output.deliver(picture(Qt::red), {.copy = false, .saveTo = f.file()});
        f.output.deliver(picture(Qt::blue), {.copy = false, .saveTo = f.file()});
        f.runAndDeliver(1); // the later one is encoded first
        f.settle();
        QCOMPARE(colourOfFile(f.file()), QColor(Qt::blue));
        QCOMPARE(QDir(f.folder.filePath(QStringLiteral("capturas"))).count(), 3U); // . .. file
    }

    void theSamePictureIsEncodedOnceForTheClipboard()
    {
        Fixture f;
        const Rendered shown = picture(Qt::red);
        f.output.deliver(shown, {.copy = true});
        f.settle();
        f.output.deliver(shown, {.copy = true});
        QVERIFY(f.gate.jobs.empty());
        QCOMPARE(f.pasteboard.changes, 2);
        QCOMPARE(colourOf(f.pasteboard.picture()), QColor(Qt::red));
    }

    void theSamePictureWhileItIsBeingEncodedWaitsForThatEncode()
    {
        Fixture f;
        const Rendered shown = picture(Qt::red);
        std::optional<Fate> fate;
        f.output.deliver(shown, {.copy = true});
        f.output.deliver(shown, {.copy = true}, [&fate](const Fate& told) { fate = told; });
        QCOMPARE(f.gate.jobs.size(), 1U);
        f.settle();
        QCOMPARE(f.pasteboard.changes, 1);
        QCOMPARE(colourOf(f.pasteboard.picture()), QColor(Qt::red));
        QVERIFY(fate);
        QCOMPARE(fate->clipboard, ClipboardFate::taken);
        QCOMPARE(fate->file, Fate::Copy::notWanted);
    }

    void aPictureOvertakenWhileItWaitedIsNotEvenFlattened()
    {
        Fixture f;
        int flattened = 0;
        f.output.deliver(Rendered(QSize(40, 30), QSizeF(40, 30),
                                  [&flattened] {
                                      ++flattened;
                                      return QImage();
                                  }),
                         {.copy = true});
        f.output.deliver(picture(Qt::blue), {.copy = true});
        f.settle();
        QCOMPARE(flattened, 0);
        QCOMPARE(f.output.stoppedEncodes(), 1);
        QCOMPARE(colourOf(f.pasteboard.picture()), QColor(Qt::blue));
    }

    void aNewerPictureMakesAnOlderEncodeStopEarly()
    {
        Fixture f;
        f.output.deliver(picture(Qt::red, QSize(4000, 3000)), {.copy = true});
        f.output.sessionEnded(); // the session it belonged to is over
        f.output.deliver(picture(Qt::blue), {.copy = true});
        f.gate.run(1);
        // What runs to its end asks whether it is still wanted and finds that it is not.
        f.gate.run(0);
        test::sendAllPostedEvents();
        QCOMPARE(f.pasteboard.changes, 1);
        QCOMPARE(f.output.stoppedEncodes(), 1);
    }

    void textOvertakesAPictureOnItsWay()
    {
        Fixture f;
        std::optional<Fate> fate;
        std::optional<ClipboardFate> textFate;
        f.output.deliver(picture(Qt::red), {.copy = true},
                         [&fate](const Fate& told) { fate = told; });
        f.output.copy(ClipboardContent::text(QStringLiteral("hola")),
                      [&textFate](ClipboardFate told) { textFate = told; });
        QVERIFY(!textFate); // never before the caller has its call behind it
        f.settle();
        QVERIFY(fate);
        QCOMPARE(fate->clipboard, ClipboardFate::overtaken);
        QCOMPARE(textFate, ClipboardFate::taken);
        QCOMPARE(f.pasteboard.plainText, std::optional(QStringLiteral("hola")));
        QCOMPARE(f.pasteboard.changes, 1);
    }

    void aRefusedClipboardIsToldAndTheFileIsWrittenAllTheSame()
    {
        Fixture f;
        f.pasteboard.answers = ClipboardFate::refused;
        std::optional<Fate> fate;
        std::optional<ClipboardFate> textFate;
        f.output.deliver(picture(Qt::red), {.copy = true, .saveTo = f.file(), .history = true},
                         [&fate](const Fate& told) { fate = told; });
        f.settle();
        f.output.copy(ClipboardContent::text(QStringLiteral("hola")),
                      [&textFate](ClipboardFate told) { textFate = told; });
        f.settle();
        QVERIFY(fate);
        QCOMPARE(fate->clipboard, ClipboardFate::refused);
        QCOMPARE(fate->file, Fate::Copy::done);
        QCOMPARE(fate->history, Fate::Copy::done);
        QCOMPARE(colourOfFile(f.file()), QColor(Qt::red));
        QCOMPARE(textFate, ClipboardFate::refused);
    }

    void anOvertakenPictureIsToldAsSuch()
    {
        Fixture f;
        std::optional<Fate> older;
        std::optional<Fate> newer;
        f.output.deliver(picture(Qt::red), {.copy = true, .saveTo = f.file()},
                         [&older](const Fate& told) { older = told; });
        f.output.deliver(picture(Qt::blue), {.copy = true},
                         [&newer](const Fate& told) { newer = told; });
        f.settle();
        QVERIFY(older && newer);
        QCOMPARE(older->clipboard, ClipboardFate::overtaken);
        QCOMPARE(older->file, Fate::Copy::done);
        QCOMPARE(newer->clipboard, ClipboardFate::taken);
    }

    void aHistoryThatCanNotBeWrittenIsTold()
    {
        Fixture f;
        QFile obstacle(f.folder.filePath(QStringLiteral("historia")));
        QVERIFY(obstacle.open(QIODevice::WriteOnly));
        std::optional<Fate> fate;
        f.output.deliver(picture(Qt::red), {.copy = true, .history = true},
                         [&fate](const Fate& told) { fate = told; });
        f.settle();
        QVERIFY(fate);
        QCOMPARE(fate->clipboard, ClipboardFate::taken);
        QCOMPARE(fate->history, Fate::Copy::failed);
    }

    void finishingTellsWhenPicturesAndTextsHaveReachedTheirPlace()
    {
        Fixture f;
        bool finished = false;
        f.output.deliver(picture(Qt::red), {.copy = true, .saveTo = f.file()});
        f.output.finishAll([&finished] { finished = true; });
        QVERIFY(!finished);
        f.settle();
        QVERIFY(finished);
        QCOMPARE(colourOfFile(f.file()), QColor(Qt::red));
        finished = false;
        f.output.copy(ClipboardContent::text(QStringLiteral("hola")), [&finished](ClipboardFate) {
            QVERIFY(!finished); // told first
        });
        f.output.finishAll([&finished] { finished = true; });
        f.settle();
        QVERIFY(finished);
    }

    void forgettingTheLastCopyWhileItIsEncodedLosesNothing()
    {
        Fixture f;
        f.output.deliver(picture(Qt::red), {.copy = true});
        f.output.sessionEnded();
        f.settle();
        QCOMPARE(colourOf(f.pasteboard.picture()), QColor(Qt::red));
    }

    void completionComesAfterTheCallEvenWithNothingToDo()
    {
        Fixture f;
        bool completed = false;
        f.output.deliver(picture(Qt::red), {}, [&completed](const Fate&) { completed = true; });
        QVERIFY(!completed);
        f.settle();
        QVERIFY(completed);
    }

    void aNullPictureLeavesNoFileAndSaysSo()
    {
        Fixture f;
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

BRINDLECAM_TEST(TestOutput);

} // namespace brindlecam

#include "tst_output.moc"
