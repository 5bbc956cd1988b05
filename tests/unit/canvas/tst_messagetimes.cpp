#include "canvas/CanvasActions.h"
#include "canvas/CanvasModel.h"
#include "canvas/Hud.h"
#include "canvas/ToolControl.h"
#include "preferences/Defaults.h"
#include "preferences/Prefs.h"
#include "support/FakeTextRecognizer.h"
#include "support/TestCase.h"

#include <QTemporaryDir>
#include <QWidget>

namespace brindlecam {

using namespace std::chrono_literals;

namespace {

/// A selection of 39 points by 39, too small for every long capture, and who speaks over it.
struct Speakers {
    QTemporaryDir folder;
    Defaults defaults{folder.filePath(QStringLiteral("settings.json"))};
    Prefs prefs{defaults};
    QWidget canvas;
    CanvasModel model{QImage(400, 300, QImage::Format_RGB32), {400, 300}, {}};
    Hud hud;
    test::FakeTextRecognizer recognizer;
    ToolControl tools{canvas, {.editor = model.editor(), .prefs = prefs, .hud = hud}};
    CanvasActions actions{model, hud, recognizer, canvas};

    Speakers()
    {
        (void)model.press({100, 100}, {});
        (void)model.moveTo({139, 139}, AnnotationEditor::Constraint::none);
        (void)model.release();
    }
};

using Speaks = std::function<void(Speakers&)>;

} // namespace

/// How long each message over the selection stays.
class TestMessageTimes final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void eachMessageHasItsTime_data()
    {
        QTest::addColumn<Speaks>("speaks");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("time");
        const auto row = [](const char* name, const Speaks& speaks, const QString& text, int time) {
            QTest::newRow(name) << speaks << text << time;
        };
        row(
            "size", [](Speakers& s) { s.tools.setSize(4, Tool::pen); },
            QStringLiteral("Grosor del lápiz: 4 px"), 1400);
        row(
            "opacity", [](Speakers& s) { s.tools.setOpacity(0.5); },
            QStringLiteral("Opacidad del marcador: 50 %"), 1400);
        row(
            "no text",
            [](Speakers& s) {
                s.actions.recognizeText();
                s.recognizer.answer(QStringList());
            },
            QStringLiteral("No se encontró texto en la selección"), 1400);
        row(
            "text not read",
            [](Speakers& s) {
                s.actions.recognizeText();
                s.recognizer.answer(Error{QStringLiteral("sin modelos")});
            },
            QStringLiteral("No se pudo leer el texto: sin modelos"), 1400);
        row(
            "too small to scroll", [](Speakers& s) { s.actions.scrollCapture(); },
            QStringLiteral("Selecciona un área más grande para la captura con desplazamiento"),
            2500);
        row(
            "too small for a GIF", [](Speakers& s) { s.actions.recordGif(); },
            QStringLiteral("Selecciona un área más grande para grabar"), 2500);
    }
    void eachMessageHasItsTime()
    {
        QFETCH(const Speaks, speaks);
        QFETCH(const QString, text);
        QFETCH(const int, time);
        Speakers s;
        speaks(s);
        QCOMPARE(s.hud.text(), std::optional(text));
        QCOMPARE(s.hud.stays(), std::optional(std::chrono::milliseconds(time)));
    }

    void thatTextIsBeingReadStaysUntilItIs()
    {
        Speakers s;
        s.actions.recognizeText();
        QCOMPARE(s.hud.text(), std::optional(QStringLiteral("Leyendo texto…")));
        QVERIFY(!s.hud.stays());
    }
};

BRINDLECAM_TEST(TestMessageTimes);

} // namespace brindlecam

#include "tst_messagetimes.moc"
