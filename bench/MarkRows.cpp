#include "MarkRows.h"

#include "Busy.h"
#include "Figures.h"
#include "Rest.h"

#include <QThread>

namespace brindlecam::bench {

namespace {

constexpr int kMarks = 200;
constexpr int kMoves = 24;
constexpr int kYardstickRounds = 25;
constexpr unsigned long kBetweenMoves = 30; // milliseconds
constexpr int kGrid = 5;                    // pixels between places looked at
constexpr std::size_t kMostSamples = 40;

constexpr QRect kArea(300, 200, 800, 600);
constexpr QRect kToolsBar(1108, 200, 38, 200); // its upper part, far from the pointer
constexpr int kBarRounds = 20;

constexpr int kStrokePoints = 5000;
constexpr unsigned long kPointPace = 1200; // microseconds

constexpr int kManyMarks = 2000;
constexpr int kUndoSteps = 500;
constexpr int kHovers = 200;

} // namespace

MarkRows::MarkRows(Stage& stage, Figures& figures)
    : m_stage(stage)
    , m_figures(figures)
    , m_user(stage)
{
}

QPoint MarkRows::at(double x, double y) const
{
    return {static_cast<int>(m_stage.pixels().width() * x),
            static_cast<int>(m_stage.pixels().height() * y)};
}

void MarkRows::beginDrag(const Path& path)
{
    desktop::Input& input = m_stage.input();
    input.moveTo(path.press);
    input.press(desktop::Button::left);
    input.moveTo(path.first);
}

std::vector<std::vector<Sample>> MarkRows::rehearsed(const Path& path)
{
    std::vector<std::vector<Sample>> changed;
    beginDrag(path);
    QImage before = m_user.rest();
    for (int move = 1; move <= kMoves; ++move) {
        m_stage.input().moveTo(path.first + path.step * move);
        const QImage after = m_user.rest();
        changed.push_back(thinned(changes(before, after, after.rect(), kGrid), kMostSamples));
        before = after;
    }
    m_stage.input().release(desktop::Button::left);
    m_user.undo();
    m_user.rest();
    return changed;
}

void MarkRows::measureMoves(const QString& what, const Path& path,
                            const std::vector<std::vector<Sample>>& changed)
{
    const Busy busy(m_stage.program().pid());
    Figure figure{.what = what,
                  .samples = {},
                  .limit = moveLimit(),
                  .yardstick = QStringLiteral("bare grab + put"),
                  .yardstickSamples = {},
                  .ratioLimit = {}};
    std::vector<double> worked;
    for (int move = 1; move <= kMoves; ++move) {
        const auto& samples = changed.at(static_cast<std::size_t>(move - 1));
        figure.yardstickSamples.push_back(m_stage.frameCopy().grabAndPut(1).front());
        const double before = busy.mainThread();
        m_stage.input().moveTo(path.first + path.step * move);
        const auto moved = m_stage.input().lastSent();
        const auto seen = m_stage.eyes().await(samples);
        if (seen && !samples.empty())
            figure.samples.push_back(millisecondsBetween(moved, *seen));
        QThread::msleep(kBetweenMoves);
        worked.push_back(busy.mainThread() - before);
    }
    m_stage.input().release(desktop::Button::left);
    m_figures.add(figure);
    m_figures.note(QStringLiteral("    main thread busy %1 ms for each (median)")
                       .arg(median(worked), 0, 'f', 2));
}

void MarkRows::measureDrag(const QString& what, const Path& path)
{
    const auto changed = rehearsed(path);
    beginDrag(path);
    m_user.rest();
    measureMoves(what, path, changed);
    m_user.undo();
    m_user.rest();
}

void MarkRows::moves()
{
    m_user.selectScreen();
    const QPoint grip = m_user.freeStrip().center();
    m_user.take(Tool::rect);
    m_user.drag({grip.x(), m_user.freeStrip().top()}, at(0.6, 0.6));
    m_user.drawMany(kMarks - 1);

    const QPoint step = at(0.005, 0.0065);
    m_user.take(Tool::arrow);
    measureDrag(QStringLiteral("200 marks, an arrow is drawn across them: move repainted"),
                {.press = at(0.15, 0.15), .first = at(0.5, 0.5), .step = step});
    m_user.take(Tool::pixelate);
    measureDrag(QStringLiteral("200 marks, a pixelation grows over them: move repainted"),
                {.press = at(0.15, 0.15), .first = at(0.5, 0.5), .step = step});
    m_user.take(std::nullopt);
    measureDrag(QStringLiteral("200 marks, a large rectangle moves beneath them: move repainted"),
                {.press = grip, .first = grip + step, .step = step});
    m_figures.add({.what = QStringLiteral("memcpy of the frame"),
                   .samples = m_stage.frameCopy().memoryCopy(kYardstickRounds),
                   .limit = {},
                   .yardstick = {},
                   .yardstickSamples = {},
                   .ratioLimit = {}});
    m_stage.endSession();
}

void MarkRows::bars()
{
    desktop::Input& input = m_stage.input();
    const auto beginSelection = [&] {
        m_stage.openSession();
        input.moveTo(kArea.topLeft());
        input.press(desktop::Button::left);
        input.moveTo(kArea.center());
        input.moveTo(kArea.topLeft() + QPoint(kArea.width(), kArea.height()));
        return m_user.rest();
    };
    const auto endSession = [&] {
        input.moveTo(m_stage.aside());
        m_stage.endSession();
        QThread::msleep(kUnhurried);
    };

    const QImage without = beginSelection();
    input.release(desktop::Button::left);
    const QImage with = m_user.rest();
    const auto bar = thinned(changes(without, with, kToolsBar, kGrid), kMostSamples);
    endSession();
    Figure figure{.what = QStringLiteral("end of a selection: bars painted"),
                  .samples = {},
                  .limit = 3,
                  .yardstick = {},
                  .yardstickSamples = {},
                  .ratioLimit = {}};
    for (int round = 0; round < kBarRounds && !bar.empty(); ++round) {
        (void)beginSelection();
        input.release(desktop::Button::left);
        const auto released = input.lastSent();
        if (const auto seen = m_stage.eyes().await(bar))
            figure.samples.push_back(millisecondsBetween(released, *seen));
        endSession();
    }
    m_figures.add(figure);
}

void MarkRows::longStroke()
{
    m_user.selectScreen();
    m_user.take(Tool::pen);
    // The end is drawn where the rest of the stroke does not come.
    const Path end{.press = at(0.5, 0.6), .first = at(0.52, 0.65), .step = {9, 7}};
    const auto changed = rehearsed(end);
    desktop::Input& input = m_stage.input();
    input.moveTo(at(0.1, 0.1));
    input.press(desktop::Button::left);
    const QSize field = m_stage.pixels() / 2;
    for (int i = 0; i < kStrokePoints; ++i) {
        input.moveTo(at(0.1, 0.1) +
                     QPoint(i * 37 % field.width(), (i * 11 + i / 50) % (field.height() / 2)));
        QThread::usleep(kPointPace);
    }
    input.moveTo(end.press);
    QThread::msleep(kBetweenMoves);
    input.moveTo(end.first);
    m_user.rest();
    measureMoves(QStringLiteral("a stroke after 5,000 moves: move repainted"), end, changed);
    m_stage.endSession();
}

void MarkRows::measureHover(const QString& what)
{
    const Busy busy(m_stage.program().pid());
    const double before = busy.mainThread();
    for (int i = 0; i < kHovers; ++i) {
        m_stage.input().moveTo(at(0.1, 0.1) + QPoint(i * 37 % m_stage.pixels().width() / 2,
                                                     i * 23 % m_stage.pixels().height() / 2));
        QThread::msleep(5);
    }
    m_user.rest();
    m_figures.add({.what = what,
                   .samples = {(busy.mainThread() - before) / kHovers},
                   .limit = {},
                   .yardstick = {},
                   .yardstickSamples = {},
                   .ratioLimit = {}});
}

void MarkRows::measureUndo(const QString& what)
{
    std::vector<std::vector<Sample>> changed;
    QImage before = m_user.rest();
    for (int step = 0; step < kMoves; ++step) {
        m_user.undo();
        const QImage after = m_user.rest();
        changed.push_back(thinned(changes(before, after, after.rect(), kGrid), kMostSamples));
        before = after;
    }
    for (int step = 0; step < kMoves; ++step)
        m_user.redo();
    m_user.rest();
    Figure figure{.what = what,
                  .samples = {},
                  .limit = moveLimit(),
                  .yardstick = {},
                  .yardstickSamples = {},
                  .ratioLimit = {}};
    for (const auto& samples : changed) {
        const auto struck = m_stage.strike({Qt::Key_Control, Qt::Key_Z});
        const auto seen = m_stage.eyes().await(samples);
        m_stage.input().letGo();
        if (seen && !samples.empty())
            figure.samples.push_back(millisecondsBetween(struck, *seen));
        QThread::msleep(kBetweenMoves);
    }
    m_figures.add(figure);
}

void MarkRows::manyMarks()
{
    m_user.selectScreen();
    const Rest rest(m_stage.desktop().name(), m_stage.program().pid());
    m_user.drawMany(kMarks);
    const double some = rest.memory().anonymous;
    m_user.drawMany(kManyMarks - kMarks);
    const double many = rest.memory().anonymous;
    m_user.take(Tool::arrow);
    measureDrag(QStringLiteral("2,000 marks, an arrow is drawn across them: move repainted"),
                {.press = at(0.15, 0.15), .first = at(0.5, 0.5), .step = at(0.005, 0.0065)});
    m_user.take(std::nullopt);
    m_user.drag(m_user.freeStrip().center(), m_user.freeStrip().center()); // the keys are its own
    measureHover(QStringLiteral("2,000 marks, pointer passes over them: main thread for a move"));
    measureUndo(QStringLiteral("2,000 marks, undo repainted"));
    for (int step = 0; step < kUndoSteps; ++step)
        m_user.undo();
    m_user.rest();
    m_figures.note(QStringLiteral("    private memory in the session: %1 MiB with 200 marks, %2 "
                                  "with 2,000, %3 after 500 undo steps")
                       .arg(some, 0, 'f', 1)
                       .arg(many, 0, 'f', 1)
                       .arg(rest.memory().anonymous, 0, 'f', 1));
    m_stage.endSession();
}

} // namespace brindlecam::bench
