#include "CaptureFixture.h"
#include "support/GatedExecutor.h"
#include "support/TestCase.h"

#include <QFile>
#include <QFileDialog>
#include <QLineEdit>

namespace brindlecam {

namespace {

struct ResultsFixture : test::CaptureFixture {
    explicit ResultsFixture(ClipboardFate answers)
    {
        pasteboard.answers = answers;
        output.finishAll();
    }
    /// What was told, once everything has reached its place; null: nothing.
    [[nodiscard]] QString told()
    {
        output.finishAll();
        return toast.visible() ? panels.shown.back().widget->accessibleName() : QString();
    }
};

const QString kNotCopied = QStringLiteral("No se pudo copiar la captura");

} // namespace

/// What users are told where the clipboard or a folder does not play along.
class TestCaptureResults final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void aRefusedAreaIsNotToldAsCopied()
    {
        ResultsFixture f(ClipboardFate::refused);
        f.results.area(test::onePicture(Qt::red), {});
        QCOMPARE(f.told(), QStringLiteral("Guardada, pero no se pudo copiar"));
        QCOMPARE(f.savedFiles().size(), 1);
        f.defaults.setBoolean(QStringLiteral("autoSaveArea"), false);
        f.results.area(test::onePicture(Qt::red), {});
        QCOMPARE(f.told(), kNotCopied);
    }

    void aRefusedFullScreenIsNotToldAsCopied()
    {
        ResultsFixture f(ClipboardFate::refused);
        QImage image(kSize, QImage::Format_RGB32);
        image.fill(Qt::red);
        f.results.fullScreen({.screen = test::kLeft, .image = image});
        QCOMPARE(f.told(), QStringLiteral("Guardada, pero no se pudo copiar"));
    }

    void aPageIsToldWithItsHeight()
    {
        ResultsFixture f(ClipboardFate::taken);
        f.results.page(test::onePicture(Qt::red), {});
        QCOMPARE(f.told(), QStringLiteral("Captura larga copiada y guardada (30 px de alto)"));
        QCOMPARE(f.savedFiles().size(), 1);
        QCOMPARE(f.history.items().size(), 1);
        f.defaults.setBoolean(QStringLiteral("autoSaveArea"), false);
        f.results.page(test::onePicture(Qt::red), {});
        QCOMPARE(f.told(), QStringLiteral("Captura larga copiada (30 px de alto)"));
        QCOMPARE(f.savedFiles().size(), 1);
        f.pasteboard.answers = ClipboardFate::refused;
        f.results.page(test::onePicture(Qt::red), {});
        QCOMPARE(f.told(), kNotCopied);
    }

    void whatTakesLongForAPageIsSaid()
    {
        ResultsFixture f(ClipboardFate::taken);
        test::GatedExecutor gate;
        Output output(f.pasteboard, f.history, f.prefs, gate.executor());
        CaptureResults results(f.prefs, output, f.toast, f.alerts);
        results.page(test::onePicture(Qt::red), {});
        QTRY_COMPARE(f.told(), QStringLiteral("Preparando la captura larga…"));
        while (!gate.jobs.empty()) {
            gate.run(0);
            test::sendAllPostedEvents();
        }
        QCOMPARE(f.told(), QStringLiteral("Captura larga copiada y guardada (30 px de alto)"));
    }

    void aPageWhoseFolderRefusesItIsToldAsCopied()
    {
        ResultsFixture f(ClipboardFate::taken);
        f.defaults.setString(QStringLiteral("saveFolder"), QStringLiteral("/dev/null/capturas"));
        f.results.page(test::onePicture(Qt::red), {});
        QCOMPARE(f.told(), QStringLiteral("Copiada, pero no se pudo guardar en la carpeta"));
    }

    void aRefusedTextIsNotToldAsCopied()
    {
        ResultsFixture f(ClipboardFate::refused);
        f.results.text(QStringLiteral("hola"), {});
        QCOMPARE(f.told(), QStringLiteral("No se pudo copiar el texto"));
    }

    void aTextIsToldAsCopiedOnlyWhenItIs()
    {
        ResultsFixture f(ClipboardFate::taken);
        f.results.text(QStringLiteral("hola"), {});
        QVERIFY(!f.toast.visible());
        QCOMPARE(f.told(), QStringLiteral("Texto copiado (1 línea)"));
    }

    void pinningTellsOnlyThatItCouldNotBeCopied()
    {
        ResultsFixture f(ClipboardFate::taken);
        f.results.pinned(test::onePicture(Qt::red), {});
        QCOMPARE(f.told(), QString());
        f.pasteboard.answers = ClipboardFate::refused;
        f.results.pinned(test::onePicture(Qt::blue), {});
        QCOMPARE(f.told(), kNotCopied);
        QCOMPARE(f.kept(), 2);
    }

    void whatIsOvertakenLeavesTellingToWhatHasOvertakenIt()
    {
        ResultsFixture f(ClipboardFate::overtaken);
        f.results.area(test::onePicture(Qt::red), {});
        f.results.text(QStringLiteral("hola"), {});
        f.results.pinned(test::onePicture(Qt::red), {});
        const Rendered last = test::onePicture(Qt::blue);
        f.results.live(last);
        f.results.keep(last, {});
        f.results.sessionEnded();
        QCOMPARE(f.told(), QString());
        QCOMPARE(f.savedFiles().size(), 1);
        QCOMPARE(f.kept(), 3);
    }

    void whoCopiesAPinsPictureIsToldItsFate_data()
    {
        QTest::addColumn<ClipboardFate>("fate");
        QTest::newRow("taken") << ClipboardFate::taken;
        QTest::newRow("overtaken") << ClipboardFate::overtaken;
        QTest::newRow("refused") << ClipboardFate::refused;
    }
    void whoCopiesAPinsPictureIsToldItsFate()
    {
        QFETCH(const ClipboardFate, fate);
        ResultsFixture f(fate);
        QList<ClipboardFate> told;
        f.results.copyPinned(test::onePicture(Qt::red),
                             [&told](ClipboardFate what) { told << what; });
        f.output.finishAll();
        QCOMPARE(told, QList{fate});
    }

    void aLiveCopyThatWasRefusedIsToldWhenTheSessionEndsWithIt()
    {
        ResultsFixture f(ClipboardFate::refused);
        const Rendered picture = test::onePicture(Qt::red);
        f.results.live(picture);
        QCOMPARE(f.told(), QString());
        f.results.keep(picture, {});
        f.results.sessionEnded();
        QCOMPARE(f.told(), kNotCopied);
        QCOMPARE(f.kept(), 1);
    }

    void aLiveCopyThatIsRefusedAfterTheSessionIsToldThen()
    {
        ResultsFixture f(ClipboardFate::refused);
        const Rendered picture = test::onePicture(Qt::red);
        f.results.live(picture);
        f.results.keep(picture, {});
        f.results.sessionEnded();
        QVERIFY(!f.toast.visible());
        QCOMPARE(f.told(), kNotCopied);
    }

    void theLastLiveCopyCounts()
    {
        ResultsFixture f(ClipboardFate::refused);
        f.results.live(test::onePicture(Qt::red));
        QCOMPARE(f.told(), QString());
        f.pasteboard.answers = ClipboardFate::taken;
        const Rendered last = test::onePicture(Qt::blue);
        f.results.live(last);
        QCOMPARE(f.told(), QString());
        f.results.keep(last, {});
        f.results.sessionEnded();
        QCOMPARE(f.told(), QString());
    }

    void aRefusedLiveCopyOfAnEarlierSessionIsForgotten()
    {
        ResultsFixture f(ClipboardFate::refused);
        f.results.live(test::onePicture(Qt::red));
        f.output.finishAll();
        f.results.sessionEnded();
        f.results.keep(test::onePicture(Qt::blue), {});
        QCOMPARE(f.told(), QString());
    }

    void aFileThatCouldNotBeSavedIsTold()
    {
        ResultsFixture f(ClipboardFate::taken);
        QFile obstacle(f.folder.filePath(QStringLiteral("obstáculo")));
        QVERIFY(obstacle.open(QIODevice::WriteOnly));
        bool closed = false;
        f.results.save(test::onePicture(Qt::red), [&closed] { closed = true; });
        const auto panels = QApplication::topLevelWidgets();
        const auto found = std::ranges::find_if(
            panels, [](QWidget* widget) { return qobject_cast<QFileDialog*>(widget); });
        QVERIFY(found != panels.end());
        auto* panel = qobject_cast<QFileDialog*>(*found);
        QVERIFY(QDir(f.folder.path()).mkpath(QStringLiteral("sin")));
        const QString chosen = f.folder.filePath(QStringLiteral("sin/sitio.png"));
        panel->findChild<QLineEdit*>()->setText(chosen);
        QVERIFY(QDir(f.folder.path()).rmdir(QStringLiteral("sin")));
        QVERIFY(QFile::link(obstacle.fileName(), f.folder.filePath(QStringLiteral("sin"))));
        QMetaObject::invokeMethod(panel, "accept");
        QVERIFY(closed);
        QCOMPARE(f.told(), QStringLiteral("No se pudo guardar la captura"));
    }

private:
    static constexpr QSize kSize{40, 30};
};

BRINDLECAM_TEST(TestCaptureResults);

} // namespace brindlecam

#include "tst_captureresults.moc"
