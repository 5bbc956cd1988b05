#include "SettingsRows.h"

#include "Figures.h"
#include "Rest.h"

#include <QThread>

namespace brindlecam::bench {

namespace {

constexpr int kStarts = 6;
constexpr int kRounds = 12;
constexpr int kGrid = 6; // pixels between places looked at
constexpr std::size_t kMostSamples = 80;

// Milliseconds.
constexpr double kMostFirst = 80;
constexpr double kMostAgain = 25;
constexpr unsigned long kSettled = 900;

constexpr unsigned long kUntilRest = 10; // seconds
constexpr unsigned long kLater = 60;
constexpr double kMostLeft = 2; // MiB

const QByteArray kOpen = "1 settings %2F\n";
const QByteArray kSearch = "1 update %2F\n";

} // namespace

SettingsRows::SettingsRows(Stage& stage, Figures& figures)
    : m_stage(stage)
    , m_figures(figures)
{
}

void SettingsRows::run()
{
    m_stage.lowerPage();
    rehearse();
    firstAndAgain();
    leftBehind();
}

void SettingsRows::rehearse()
{
    m_stage.start();
    const QImage before = m_stage.eyes().grabAtRest();
    if (m_stage.program().answerTo(kOpen) != 0)
        qFatal("the settings do not open");
    QThread::msleep(kSettled);
    const QImage seen = m_stage.eyes().grabAtRest();
    for (const desktop::SeenWindow& window :
         m_stage.desktop().windows().shown(m_stage.program().pid()))
        m_pixels |= window.pixels;
    m_window = thinned(changes(before, seen, m_pixels, kGrid), kMostSamples);
    if (m_window.empty())
        qFatal("the settings can't be seen");
    m_stage.quit();
}

std::optional<double> SettingsRows::open()
{
    const auto asked = Clock::now();
    if (m_stage.program().answerTo(kOpen) != 0)
        return std::nullopt;
    const auto seen = m_stage.eyes().await(m_window);
    return seen ? std::optional(millisecondsBetween(asked, *seen)) : std::nullopt;
}

void SettingsRows::close()
{
    QThread::msleep(kSettled);
    m_stage.input().tap(Qt::Key_Escape);
    m_stage.input().awaitTaken();
    QThread::msleep(kSettled);
}

double SettingsRows::bareWindow()
{
    const auto asked = Clock::now();
    const auto window = m_stage.desktop().open({.pixels = m_pixels});
    const double time = millisecondsBetween(asked, Clock::now());
    QThread::msleep(kUnhurried);
    return time;
}

void SettingsRows::firstAndAgain()
{
    const QString bare = QStringLiteral("a bare window of its size");
    Figure first{.what = QStringLiteral("settings: command to the painted window, first"),
                 .samples = {},
                 .limit = kMostFirst,
                 .yardstick = bare,
                 .yardstickSamples = {},
                 .ratioLimit = {}};
    Figure again = first;
    again.what = QStringLiteral("settings: the same, again");
    again.limit = kMostAgain;
    for (int start = 0; start < kStarts; ++start) {
        m_stage.start();
        QThread::msleep(2 * kSettled);
        if (const auto time = open())
            first.samples.push_back(*time);
        close();
        first.yardstickSamples.push_back(bareWindow());
        if (start + 1 == kStarts) {
            for (int round = 0; round < kRounds; ++round) {
                if (const auto time = open())
                    again.samples.push_back(*time);
                close();
                again.yardstickSamples.push_back(bareWindow());
            }
        }
        m_stage.quit();
    }
    m_figures.add(first);
    m_figures.add(again);
}

void SettingsRows::leftBehind()
{
    m_stage.start({{QStringLiteral("checkUpdates"), true}});
    QThread::sleep(kUntilRest);
    const Rest rest(m_stage.desktop().name(), m_stage.program().pid());
    const double before = rest.memory().all();
    m_stage.strike(desktop::hotKey(Qt::Key_0));
    m_stage.input().letGo();
    QThread::msleep(kSettled);
    m_stage.input().tap(Qt::Key_Escape);
    QThread::msleep(kSettled);
    (void)open();
    close();
    if (m_stage.program().answerTo(kSearch) != 0)
        qFatal("nobody looks for new versions");
    QThread::sleep(kUntilRest);
    m_stage.input().tap(Qt::Key_Return); // whatever came of it is told
    m_stage.input().awaitTaken();
    QThread::sleep(kLater);
    m_figures.add({.what = QStringLiteral("a minute after drawer, settings, search: memory more"),
                   .unit = QStringLiteral("MiB"),
                   .samples = {rest.memory().all() - before},
                   .limit = kMostLeft,
                   .yardstick = {},
                   .yardstickSamples = {},
                   .ratioLimit = {}});
    const auto switches = rest.switches();
    QThread::sleep(kLater);
    m_figures.add({.what = QStringLiteral("then: context switches in 60 s"),
                   .unit = QStringLiteral("switches"),
                   .samples = {double(Rest::between(switches, rest.switches()))},
                   .limit = 0,
                   .yardstick = {},
                   .yardstickSamples = {},
                   .ratioLimit = {}});
    m_stage.quit();
}

} // namespace brindlecam::bench
