// Measures the program from outside and prints the table of figures. Arguments choose the parts to
// run (overlay, cold, marks, manymarks, clipboard, livecopy, text, textrest, pins, drawer,
// settings, stitch, scroll, rest, marksrest) and the sizes (1080p, 4k); without arguments
// everything is run. Ends with 1 when a limit is missed.
#include "ClipboardRows.h"
#include "DrawerRows.h"
#include "Figures.h"
#include "LiveCopyRows.h"
#include "MarkRestRows.h"
#include "MarkRows.h"
#include "OverlayRows.h"
#include "PinRows.h"
#include "RestRows.h"
#include "ScrollRows.h"
#include "SettingsRows.h"
#include "Stage.h"
#include "StitchRows.h"
#include "TextRows.h"

#include <QGuiApplication>
#include <QStringList>

using namespace brindlecam::bench;

namespace {

struct Size {
    const char* name;
    QSize pixels;
};

constexpr Size kSizes[] = {{"1080p", {1920, 1080}}, {"4k", {3840, 2160}}};
const QStringList kParts{
    QStringLiteral("overlay"),   QStringLiteral("cold"),      QStringLiteral("marks"),
    QStringLiteral("manymarks"), QStringLiteral("clipboard"), QStringLiteral("livecopy"),
    QStringLiteral("text"),      QStringLiteral("textrest"),  QStringLiteral("pins"),
    QStringLiteral("drawer"),    QStringLiteral("settings"),  QStringLiteral("stitch"),
    QStringLiteral("scroll"),    QStringLiteral("rest"),      QStringLiteral("marksrest")};

class Choice final {
public:
    explicit Choice(QStringList words)
        : m_words(std::move(words))
    {
    }

    [[nodiscard]] bool part(const char* name) const { return has(QLatin1String(name), kParts); }
    [[nodiscard]] bool size(const char* name) const
    {
        return has(QLatin1String(name), {QStringLiteral("1080p"), QStringLiteral("4k")});
    }

private:
    /// A kind of which nothing is named is wanted whole.
    [[nodiscard]] bool has(QLatin1String name, const QStringList& kind) const
    {
        const bool named = std::any_of(kind.begin(), kind.end(), [this](const QString& other) {
            return m_words.contains(other);
        });
        return !named || m_words.contains(name);
    }

    QStringList m_words;
};

void measureMarks(const Size& size, Stage& stage, const Choice& choice, Figures& figures)
{
    if (choice.part("marks")) {
        figures.begin(QStringLiteral("%1, drawing").arg(QLatin1String(size.name)));
        stage.start();
        MarkRows marks(stage, figures);
        marks.bars();
        marks.moves();
        marks.longStroke();
        stage.quit();
    }
    if (choice.part("manymarks")) {
        figures.begin(QStringLiteral("%1, very many marks").arg(QLatin1String(size.name)));
        stage.start({{QStringLiteral("autoCopy"), false}});
        MarkRows(stage, figures).manyMarks();
        stage.quit();
    }
}

void measureStitching(const Size& size, Figures& figures)
{
    figures.begin(QStringLiteral("%1, stitching").arg(QLatin1String(size.name)));
    StitchRows stitch(size.pixels, figures);
    stitch.signature();
    stitch.add();
}

void measure(const Size& size, const Choice& choice, Figures& figures)
{
    Stage stage(size.pixels, Page::interface);
    OverlayRows overlay(stage, figures);
    if (choice.part("overlay") || choice.part("cold")) {
        figures.begin(QStringLiteral("%1, overlay").arg(QLatin1String(size.name)));
        stage.start();
        if (choice.part("overlay")) {
            overlay.warmCapture();
            overlay.pointerMoves();
        }
        if (choice.part("cold"))
            overlay.captureAfterRest();
        stage.quit();
        if (choice.part("overlay"))
            overlay.firstCapture();
    }
    const bool isSmall = size.pixels.width() < 3000;
    if (choice.part("stitch") && isSmall)
        measureStitching(size, figures);
    if (choice.part("scroll") && isSmall) {
        figures.begin(QStringLiteral("%1, long captures").arg(QLatin1String(size.name)));
        Stage own(ScrollRows::kStage, Page::interface);
        ScrollRows scroll(own, figures);
        scroll.load();
        scroll.tallPage();
    }
    measureMarks(size, stage, choice, figures);
    if (choice.part("pins")) {
        figures.begin(QStringLiteral("%1, pins").arg(QLatin1String(size.name)));
        Stage own(size.pixels, Page::interface);
        PinRows(own, figures).run();
    }
    if (choice.part("drawer") && isSmall) {
        figures.begin(QStringLiteral("%1, drawer").arg(QLatin1String(size.name)));
        DrawerRows(stage, figures).run();
    }
    if (choice.part("settings") && isSmall) {
        figures.begin(QStringLiteral("%1, settings").arg(QLatin1String(size.name)));
        Stage own(size.pixels, Page::interface);
        SettingsRows(own, figures).run();
    }
    if ((choice.part("text") || choice.part("textrest")) && isSmall) {
        figures.begin(QStringLiteral("%1, text").arg(QLatin1String(size.name)));
        TextRows text(stage, figures);
        if (choice.part("text"))
            text.pressToClipboard();
        if (choice.part("textrest"))
            text.afterTwoMinutes();
    }
    if (choice.part("rest") && isSmall) {
        figures.begin(QStringLiteral("%1, at rest").arg(QLatin1String(size.name)));
        RestRows(stage, figures).run();
    }
    if (choice.part("marksrest") && isSmall) {
        figures.begin(QStringLiteral("%1, at rest after drawing").arg(QLatin1String(size.name)));
        MarkRestRows(stage, figures).run();
    }
}

void measureClipboard(const Size& size, Page page, Figures& figures)
{
    figures.begin(
        QStringLiteral("%1, clipboard and file, %2").arg(QLatin1String(size.name), name(page)));
    Stage stage(size.pixels, page);
    ClipboardRows clipboard(stage, figures);
    clipboard.areaWithoutAutomaticCopy();
    clipboard.areaWithAutomaticCopy();
    clipboard.fullScreen();
}

void measureLiveCopy(const Size& size, Page page, Figures& figures)
{
    figures.begin(QStringLiteral("%1, live copy, %2").arg(QLatin1String(size.name), name(page)));
    Stage stage(size.pixels, page);
    stage.start();
    LiveCopyRows live(stage, figures);
    live.endOfMark();
    live.manyChanges();
    stage.quit();
}

} // namespace

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen"); // for the letters of the paragraph
    const QGuiApplication application(argc, argv);
    const Choice choice(QCoreApplication::arguments().mid(1));
    Figures figures;
    for (const Size& size : kSizes) {
        if (!choice.size(size.name))
            continue;
        measure(size, choice, figures);
        for (const Page page : {Page::interface, Page::photo}) {
            if (choice.part("clipboard"))
                measureClipboard(size, page, figures);
            if (choice.part("livecopy"))
                measureLiveCopy(size, page, figures);
        }
    }
    figures.conclude();
    return figures.allMet() ? 0 : 1;
}
