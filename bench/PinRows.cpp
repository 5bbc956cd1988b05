#include "PinRows.h"

#include "Busy.h"
#include "Figures.h"

#include <QThread>

namespace brindlecam::bench {

namespace {

constexpr QSize kPin(1920, 1080);
constexpr int kSteps = 6;                   // larger, then twice as many smaller, then back
constexpr unsigned long kBetweenTurns = 60; // milliseconds
constexpr int kGrid = 5;                    // pixels between places looked at
constexpr std::size_t kMostSamples = 40;
constexpr double kMost = 8; // milliseconds

} // namespace

PinRows::PinRows(Stage& stage, Figures& figures)
    : m_stage(stage)
    , m_figures(figures)
    , m_user(stage)
{
}

QRect PinRows::area() const
{
    // The whole of a screen as large as the pin; a drag to the last pixel takes that, too.
    const QSize size = kPin == m_stage.pixels() ? kPin - QSize(1, 1) : kPin;
    return {
        QPoint(m_stage.pixels().width() - kPin.width(), m_stage.pixels().height() - kPin.height()) /
            2,
        size};
}

void PinRows::open()
{
    m_user.select(area());
    m_user.choose(MarkHands::Action::pin);
    QThread::msleep(kUnhurried);
    m_stage.input().moveTo(area().center());
    m_user.rest();
}

void PinRows::close()
{
    m_stage.input().doubleClick(area().center());
    m_user.rest();
}

Clock::time_point PinRows::turnWheel(desktop::Button wheel)
{
    m_stage.input().press(wheel);
    const auto moment = m_stage.input().lastSent();
    m_stage.input().release(wheel);
    return moment;
}

std::vector<PinRows::Turn> PinRows::rehearsed()
{
    std::vector<Turn> turns(kSteps, {desktop::Button::wheelUp, {}});
    turns.insert(turns.end(), 2 * static_cast<std::size_t>(kSteps),
                 {desktop::Button::wheelDown, {}});
    turns.insert(turns.end(), kSteps, {desktop::Button::wheelUp, {}});
    open();
    QImage before = m_user.rest();
    for (Turn& turn : turns) {
        turnWheel(turn.wheel);
        const QImage after = m_user.rest();
        turn.changed = thinned(changes(before, after, after.rect(), kGrid), kMostSamples);
        if (turn.changed.empty())
            qFatal("the wheel does nothing to the pin");
        before = after;
    }
    close();
    return turns;
}

void PinRows::run()
{
    m_stage.start();
    m_stage.lowerPage();
    const std::vector<Turn> turns = rehearsed();
    open();
    Figure figure{.what = QStringLiteral("a notch on a pin of 1920 × 1080: repainted"),
                  .samples = {},
                  .limit = kMost,
                  .yardstick = QStringLiteral("memcpy of the screen"),
                  .yardstickSamples = {},
                  .ratioLimit = {}};
    const Busy busy(m_stage.program().pid());
    const double before = busy.mainThread();
    for (const Turn& turn : turns) {
        const auto turned = turnWheel(turn.wheel);
        if (const auto seen = m_stage.eyes().await(turn.changed))
            figure.samples.push_back(millisecondsBetween(turned, *seen));
        QThread::msleep(kBetweenTurns);
    }
    const double each = (busy.mainThread() - before) / static_cast<double>(turns.size());
    figure.yardstickSamples = m_stage.frameCopy().memoryCopy(static_cast<int>(turns.size()));
    m_figures.add(figure);
    m_figures.note(QStringLiteral("    main thread for a notch: %1 ms").arg(each, 0, 'f', 1));
    close();
    m_stage.quit();
}

} // namespace brindlecam::bench
