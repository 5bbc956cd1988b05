#include "OutputFixture.h"
#include "capture/ClipboardLane.h"
#include "support/TestCase.h"

#include <utility>
#include <vector>

namespace brindlecam {

namespace {

/// What can be copied, besides pictures.
const std::pair<const char*, ClipboardContent> kContents[] = {
    {"text", ClipboardContent::text(QStringLiteral("hola"))},
    {"GIF", ClipboardContent::gif("GIF89a", QStringLiteral("/una.gif"))},
    {"files", ClipboardContent::files({QStringLiteral("/una.png"), QStringLiteral("/dos.png")})},
};

/// Formats with their bytes, in order.
QByteArrayList offered(const std::vector<ClipboardContent::Format>& formats)
{
    QByteArrayList offered;
    for (const auto& format : formats)
        offered << format.mimeType << format.bytes;
    return offered;
}

} // namespace

/// What reaches the clipboard, and what overtakes it.
class TestClipboardLane final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void whatNobodyCouldPasteIsNotOfferedAsTiff()
    {
        QVERIFY(ClipboardLane::offersTiff({1920, 20000}));
        QVERIFY(ClipboardLane::offersTiff({8000, 8000}));
        QVERIFY(!ClipboardLane::offersTiff({8001, 8000}));
        QVERIFY(!ClipboardLane::offersTiff({100'000, 100'000}));
    }

    void copyReachesTheClipboardAsPngAndTiff()
    {
        test::OutputFixture f;
        f.output.deliver(test::plain(Qt::red), {.copy = true});
        f.settle();
        QCOMPARE(f.shownColour(), QColor(Qt::red));
        const QImage png = QImage::fromData(*f.pasteboard.png, "PNG");
        QCOMPARE(png.dotsPerMeterX(), 5669);
        const QImage tiff = QImage::fromData(f.pasteboard.makeTiff(), "TIFF");
        QCOMPARE(test::colourOf(tiff), QColor(Qt::red));
        QCOMPARE(tiff.dotsPerMeterX(), 5669);
    }

    void theNewestPictureWinsEvenWhenTheOlderEncodeEndsLast()
    {
        test::OutputFixture f;
        f.output.deliver(test::plain(Qt::red), {.copy = true});
        f.output.deliver(test::plain(Qt::blue), {.copy = true});
        QCOMPARE(f.gate.jobs.size(), 2U);
        f.runAndDeliver(1);
        QCOMPARE(f.shownColour(), QColor(Qt::blue));
        f.runAndDeliver(0);
        QCOMPARE(f.shownColour(), QColor(Qt::blue));
        QCOMPARE(f.pasteboard.changes, 1);
    }

    void anOlderPictureThatEndsFirstIsNotShownEither()
    {
        test::OutputFixture f;
        f.output.deliver(test::plain(Qt::red), {.copy = true});
        f.output.deliver(test::plain(Qt::blue), {.copy = true});
        f.runAndDeliver(0);
        QCOMPARE(f.pasteboard.changes, 0);
        f.settle();
        QCOMPARE(f.shownColour(), QColor(Qt::blue));
    }

    void aDeliveryWithoutCopyNeitherTouchesNorOvertakesTheClipboard()
    {
        test::OutputFixture f;
        f.output.deliver(test::plain(Qt::red), {.copy = true});
        f.output.deliver(test::plain(Qt::blue), {.copy = false, .saveTo = f.file()});
        f.settle();
        QCOMPARE(f.shownColour(), QColor(Qt::red));
        QCOMPARE(f.pasteboard.changes, 1);
        QCOMPARE(test::colourOfFile(f.file()), QColor(Qt::blue));
    }

    void theSamePictureIsEncodedOnceForTheClipboard()
    {
        test::OutputFixture f;
        const Rendered shown = test::plain(Qt::red);
        f.output.deliver(shown, {.copy = true});
        f.settle();
        f.output.deliver(shown, {.copy = true});
        QVERIFY(f.gate.jobs.empty());
        QCOMPARE(f.pasteboard.changes, 2);
        QCOMPARE(f.shownColour(), QColor(Qt::red));
    }

    void theSamePictureWhileItIsBeingEncodedWaitsForThatEncode()
    {
        test::OutputFixture f;
        const Rendered shown = test::plain(Qt::red);
        std::optional<Fate> earlier;
        std::optional<Fate> fate;
        f.output.deliver(shown, {.copy = true}, [&earlier](const Fate& told) { earlier = told; });
        f.output.deliver(shown, {.copy = true}, [&fate](const Fate& told) { fate = told; });
        QCOMPARE(f.gate.jobs.size(), 1U);
        f.settle();
        QCOMPARE(f.pasteboard.changes, 1);
        QVERIFY(earlier);
        QCOMPARE(earlier->clipboard, ClipboardFate::overtaken);
        QCOMPARE(f.shownColour(), QColor(Qt::red));
        QVERIFY(fate);
        QCOMPARE(fate->clipboard, ClipboardFate::taken);
        QCOMPARE(fate->file, Fate::Copy::notWanted);
    }

    void aPictureOvertakenWhileItWaitedIsNotEvenFlattened()
    {
        test::OutputFixture f;
        int flattened = 0;
        f.output.deliver(Rendered(QSize(40, 30), QSizeF(40, 30),
                                  [&flattened] {
                                      ++flattened;
                                      return QImage();
                                  }),
                         {.copy = true});
        f.output.deliver(test::plain(Qt::blue), {.copy = true});
        f.settle();
        QCOMPARE(flattened, 0);
        QCOMPARE(f.output.stoppedEncodes(), 1);
        QCOMPARE(f.shownColour(), QColor(Qt::blue));
    }

    void whatASessionHasEndedWithIsOvertakenAllTheSame()
    {
        test::OutputFixture f;
        f.output.deliver(test::plain(Qt::red), {.copy = true});
        f.output.sessionEnded();
        f.output.deliver(test::plain(Qt::blue), {.copy = true});
        f.gate.run(1);
        f.runAndDeliver(0);
        QCOMPARE(f.pasteboard.changes, 1);
        QCOMPARE(f.shownColour(), QColor(Qt::blue));
        QCOMPARE(f.output.stoppedEncodes(), 1);
    }

    void everyContentOvertakesAPictureOnItsWay_data()
    {
        QTest::addColumn<ClipboardContent>("content");
        for (const auto& [name, content] : kContents)
            QTest::newRow(name) << content;
    }
    void everyContentOvertakesAPictureOnItsWay()
    {
        QFETCH(const ClipboardContent, content);
        test::OutputFixture f;
        std::optional<Fate> fate;
        std::optional<ClipboardFate> contentFate;
        f.output.deliver(test::plain(Qt::red), {.copy = true},
                         [&fate](const Fate& told) { fate = told; });
        f.output.copy(content, [&contentFate](ClipboardFate told) { contentFate = told; });
        QVERIFY(!contentFate);             // never before the caller has its call behind it
        QCOMPARE(f.pasteboard.changes, 1); // but there already
        f.settle();
        QVERIFY(fate);
        QCOMPARE(fate->clipboard, ClipboardFate::overtaken);
        QCOMPARE(contentFate, ClipboardFate::taken);
        QCOMPARE(offered(f.pasteboard.formats), offered(content.formats));
        QCOMPARE(f.pasteboard.changes, 1);
    }

    void aPictureReplacesEveryContent_data() { everyContentOvertakesAPictureOnItsWay_data(); }
    void aPictureReplacesEveryContent()
    {
        QFETCH(const ClipboardContent, content);
        test::OutputFixture f;
        const Rendered picture = test::plain(Qt::red);
        f.output.deliver(picture, {.copy = true});
        f.settle();
        f.output.copy(content);
        f.output.deliver(picture, {.copy = true});
        QCOMPARE(f.gate.jobs.size(), 1U); // its bytes were not kept for that
        f.settle();
        QCOMPARE(f.shownColour(), QColor(Qt::red));
        QCOMPARE(f.pasteboard.changes, 3);
    }

    void everyFateOfEveryContentIsTold_data()
    {
        QTest::addColumn<ClipboardContent>("content");
        QTest::addColumn<ClipboardFate>("fate");
        for (const auto& [name, content] : kContents) {
            QTest::addRow("%s taken", name) << content << ClipboardFate::taken;
            QTest::addRow("%s overtaken", name) << content << ClipboardFate::overtaken;
            QTest::addRow("%s refused", name) << content << ClipboardFate::refused;
        }
    }
    void everyFateOfEveryContentIsTold()
    {
        QFETCH(const ClipboardContent, content);
        QFETCH(const ClipboardFate, fate);
        test::OutputFixture f;
        f.pasteboard.answers = fate;
        QList<ClipboardFate> told;
        f.output.copy(content, [&told](ClipboardFate what) { told << what; });
        f.settle();
        QCOMPARE(told, QList{fate});
        QCOMPARE(f.pasteboard.changes, fate == ClipboardFate::taken ? 1 : 0);
    }

    void everyFateOfAPictureIsTold_data()
    {
        QTest::addColumn<ClipboardFate>("fate");
        QTest::addColumn<bool>("live");
        for (const bool live : {false, true}) {
            const char* kind = live ? "live" : "result";
            QTest::addRow("%s taken", kind) << ClipboardFate::taken << live;
            QTest::addRow("%s overtaken", kind) << ClipboardFate::overtaken << live;
            QTest::addRow("%s refused", kind) << ClipboardFate::refused << live;
        }
    }
    void everyFateOfAPictureIsTold()
    {
        QFETCH(const ClipboardFate, fate);
        QFETCH(const bool, live);
        test::OutputFixture f;
        f.pasteboard.answers = fate;
        QList<ClipboardFate> told;
        f.output.deliver(test::plain(Qt::red), {.copy = true, .soonStale = live},
                         [&told](const Fate& what) { told << *what.clipboard; });
        f.settle();
        QCOMPARE(told, QList{fate});
        QCOMPARE(f.pasteboard.changes, fate == ClipboardFate::taken ? 1 : 0);
    }

    void whatWasRefusedIsTriedAnewWithTheSameBytes()
    {
        test::OutputFixture f;
        const Rendered picture = test::plain(Qt::red);
        f.pasteboard.answers = ClipboardFate::refused;
        f.output.deliver(picture, {.copy = true});
        f.settle();
        f.pasteboard.answers = ClipboardFate::taken;
        f.output.deliver(picture, {.copy = true});
        QVERIFY(f.gate.jobs.empty());
        QCOMPARE(f.shownColour(), QColor(Qt::red));
    }

    void anOvertakenPictureIsToldAsSuch()
    {
        test::OutputFixture f;
        std::optional<Fate> older;
        std::optional<Fate> newer;
        f.output.deliver(test::plain(Qt::red), {.copy = true, .saveTo = f.file()},
                         [&older](const Fate& told) { older = told; });
        f.output.deliver(test::plain(Qt::blue), {.copy = true},
                         [&newer](const Fate& told) { newer = told; });
        f.settle();
        QVERIFY(older && newer);
        QCOMPARE(older->clipboard, ClipboardFate::overtaken);
        QCOMPARE(older->file, Fate::Copy::done);
        QCOMPARE(newer->clipboard, ClipboardFate::taken);
    }

    void forgettingTheLastCopyWhileItIsEncodedLosesNothing()
    {
        test::OutputFixture f;
        f.output.deliver(test::plain(Qt::red), {.copy = true});
        f.output.sessionEnded();
        f.settle();
        QCOMPARE(f.shownColour(), QColor(Qt::red));
    }
};

BRINDLECAM_TEST(TestClipboardLane);

} // namespace brindlecam

#include "tst_clipboardlane.moc"
