#include "OverlayRows.h"

#include "Figures.h"
#include "Launch.h"

#include <QFile>
#include <QThread>

#include <cmath>

namespace brindlecam::bench {

namespace {

constexpr int kLargeWidth = 3840;
constexpr int kWarmRounds = 25;
constexpr int kFirstRounds = 7;
constexpr int kRestRounds = 7;
constexpr int kYardstickRounds = 25;
constexpr int kMoves = 40;
constexpr std::chrono::milliseconds kBetween{200};
constexpr std::chrono::milliseconds kAfterStart{1500}; // the program has made itself ready
constexpr std::chrono::seconds kRest{6};               // everything is given back by then
constexpr double kMostForACommand = 2;                 // ms more than for the key
constexpr int kGrid = 160;                             // pixels between dimmed places looked at
constexpr QSize kHintArea(400, 12);                    // in the middle of the hint
constexpr int kHintMiddleFromTop = 72;
constexpr int kHintGrid = 6;
constexpr std::size_t kMostSamples = 40;
constexpr int kAroundPointer = 260; // loupe and label
constexpr int kFaultsField = 7;     // of /proc/PID/stat, behind the name

/// Page faults of a process so far that needed no disk.
double faults(qint64 process)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(process));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray all = file.readAll();
    // The name, in brackets, may hold anything; what follows are words.
    return all.mid(all.lastIndexOf(')') + 2).split(' ').value(kFaultsField).toDouble();
}

void pause(std::chrono::milliseconds time)
{
    QThread::msleep(static_cast<unsigned long>(time.count()));
}

} // namespace

OverlayRows::OverlayRows(Stage& stage, Figures& figures)
    : m_stage(stage)
    , m_figures(figures)
{
}

bool OverlayRows::isLarge() const
{
    return m_stage.pixels().width() >= kLargeWidth;
}

OverlayRows::Limits OverlayRows::limits() const
{
    return isLarge() ? Limits{.warm = 25, .first = 60, .rested = 42, .move = 6}
                     : Limits{.warm = 8, .first = 20, .rested = 16, .move = 3};
}

// One session at leisure shows what the later ones are waited for.
void OverlayRows::rehearse()
{
    if (!m_painted.empty())
        return;
    m_stage.strikeArea();
    m_stage.awaitOverlay();
    pause(std::chrono::seconds(1));
    const QImage overlay = m_stage.eyes().grabAtRest();
    m_stage.endSession();

    const QRect all({}, m_stage.pixels());
    std::vector<Sample> dimmed;
    for (const Sample& sample : changes(m_stage.page(), overlay, all, kGrid)) {
        if ((sample.place - m_stage.aside()).manhattanLength() > 2 * kAroundPointer)
            dimmed.push_back(sample);
    }
    const QRect hint(
        QPoint((all.width() - kHintArea.width()) / 2, kHintMiddleFromTop - kHintArea.height() / 2),
        kHintArea);
    const auto hinted = changes(m_stage.page(), overlay, hint, kHintGrid);
    if (dimmed.size() < 8 || hinted.size() < 8)
        qFatal("no overlay to be seen:\n%s", qPrintable(m_stage.program().log()));
    m_painted = thinned(dimmed, kMostSamples / 2);
    for (const Sample& sample : thinned(hinted, kMostSamples / 2))
        m_painted.push_back(sample);
}

std::optional<double> OverlayRows::measureSince(Clock::time_point start)
{
    const auto seen = m_stage.eyes().await(m_painted);
    m_stage.endSession();
    if (!seen)
        return {};
    return millisecondsBetween(start, *seen);
}

std::optional<double> OverlayRows::measure()
{
    return measureSince(m_stage.strikeArea());
}

std::optional<double> OverlayRows::measure(Launch& command)
{
    const auto time = measureSince(command.start());
    return command.wait() == 0 ? time : std::nullopt;
}

void OverlayRows::firstCapture()
{
    m_stage.start();
    rehearse();
    m_stage.quit();
    Figure figure{.what = QStringLiteral("overlay painted, first capture after start"),
                  .samples = {},
                  .limit = limits().first,
                  .yardstick = QStringLiteral("bare grab + put"),
                  .yardstickSamples = m_stage.frameCopy().grabAndPut(kYardstickRounds),
                  .ratioLimit = {}};
    for (int round = 0; round < kFirstRounds; ++round) {
        m_stage.start();
        pause(kAfterStart);
        if (const auto time = measure())
            figure.samples.push_back(*time);
        m_stage.quit();
    }
    m_figures.add(figure);
}

void OverlayRows::warmCapture()
{
    rehearse();
    Figure figure{.what = QStringLiteral("overlay painted, warm"),
                  .samples = {},
                  .limit = limits().warm,
                  .yardstick = QStringLiteral("bare grab + put"),
                  .yardstickSamples = {},
                  .ratioLimit = 4};
    for (int round = 0; round < kWarmRounds; ++round) {
        pause(kBetween);
        figure.yardstickSamples.push_back(m_stage.frameCopy().grabAndPut(1).front());
        if (const auto time = measure())
            figure.samples.push_back(*time);
    }
    m_figures.add(figure);
    m_figures.add({.what = QStringLiteral("memcpy of the frame"),
                   .samples = m_stage.frameCopy().memoryCopy(kYardstickRounds),
                   .limit = {},
                   .yardstick = {},
                   .yardstickSamples = {},
                   .ratioLimit = {}});
}

void OverlayRows::captureAfterRest()
{
    rehearse();
    Figure figure{.what = QStringLiteral("overlay painted after rest"),
                  .samples = {},
                  .limit = limits().rested,
                  .yardstick = QStringLiteral("bare grab + put"),
                  .yardstickSamples = m_stage.frameCopy().grabAndPut(kYardstickRounds),
                  .ratioLimit = {},
                  .leastCounts = true};
    Figure ours{.what = QStringLiteral("page faults of a session after rest, program"),
                .unit = QStringLiteral("faults"),
                .samples = {},
                .limit = {},
                .yardstick = {},
                .yardstickSamples = {},
                .ratioLimit = {}};
    Figure servers = ours;
    servers.what = QStringLiteral("page faults of a session after rest, server");
    Figure commands = figure;
    commands.what = QStringLiteral("overlay painted after rest, by a command");
    commands.limit = limits().rested + kMostForACommand;
    Launch area(QStringLiteral(BRINDLECAM_LAUNCHER), {QStringLiteral("area")},
                m_stage.program().environment());
    for (int round = 0; round < kRestRounds; ++round) {
        pause(kRest);
        const double before = faults(m_stage.program().pid());
        const double beforeOfServer = faults(m_stage.desktop().serverPid());
        if (const auto time = measure())
            figure.samples.push_back(*time);
        ours.samples.push_back(faults(m_stage.program().pid()) - before);
        servers.samples.push_back(faults(m_stage.desktop().serverPid()) - beforeOfServer);
        pause(kRest);
        if (const auto time = measure(area))
            commands.samples.push_back(*time);
    }
    for (const Figure& row : {figure, commands, ours, servers})
        m_figures.add(row);
}

void OverlayRows::pointerMoves()
{
    const auto place = [this](int step) {
        return QPoint(m_stage.pixels().width() / 5 + 9 * step,
                      m_stage.pixels().height() / 4 + 7 * step);
    };
    const auto beginDrag = [&] {
        m_stage.openSession();
        m_stage.input().moveTo(place(-20));
        m_stage.input().press(desktop::Button::left);
        m_stage.input().moveTo(place(0));
    };
    const auto endDrag = [&] {
        m_stage.input().release(desktop::Button::left);
        m_stage.endSession();
        m_stage.input().moveTo(m_stage.aside());
    };

    // The same drag at leisure first: what each move changes around the pointer, all of it.
    std::vector<std::vector<Sample>> changed;
    beginDrag();
    QImage before = m_stage.eyes().grabAtRest();
    for (int step = 1; step <= kMoves; ++step) {
        m_stage.input().moveTo(place(step));
        const QImage after = m_stage.eyes().grabAtRest();
        const QRect around =
            QRect(place(step), QSize(1, 1))
                .adjusted(-kAroundPointer, -kAroundPointer, kAroundPointer, kAroundPointer);
        changed.push_back(thinned(changes(before, after, around, 3), kMostSamples));
        before = after;
    }
    endDrag();

    Figure figure{.what = QStringLiteral("pointer move in a drag, repainted"),
                  .samples = {},
                  .limit = limits().move,
                  .yardstick = {},
                  .yardstickSamples = {},
                  .ratioLimit = {}};
    beginDrag();
    (void)m_stage.eyes().grabAtRest();
    for (int step = 1; step <= kMoves; ++step) {
        m_stage.input().moveTo(place(step));
        const auto moved = m_stage.input().lastSent();
        if (const auto seen = m_stage.eyes().await(changed[static_cast<std::size_t>(step - 1)]))
            figure.samples.push_back(millisecondsBetween(moved, *seen));
        pause(std::chrono::milliseconds(30));
    }
    endDrag();
    m_figures.add(figure);
}

} // namespace brindlecam::bench
