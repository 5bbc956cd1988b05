#include "DrawerRows.h"

#include "Busy.h"
#include "Figures.h"
#include "Heartbeat.h"
#include "Stretches.h"

#include <QDir>
#include <QThread>

namespace brindlecam::bench {

namespace {

constexpr Qt::Key kRecentsKey = Qt::Key_0;
constexpr int kEntries = 20;
constexpr QSize kEntry(1920, 1080);
constexpr int kRounds = 12;
constexpr int kGrid = 24; // pixels between places looked at
constexpr std::size_t kMostSamples = 60;
constexpr QSize kDrawer(1880, 212);
constexpr int kAboveBottom = 14;
constexpr int kFrames = 14; // of the slide

// Milliseconds.
constexpr double kSlide = 220;
constexpr double kMostFirst = 40;
constexpr double kMostCached = kMostFirst + kSlide;
constexpr double kMostDecoded = 300;
constexpr double kMostStep = 8;
constexpr double kMostFrame = 4;
constexpr double kMostBusy = 8;
constexpr unsigned long kGone = 400;
constexpr unsigned long kBetweenSteps = 80;

} // namespace

DrawerRows::DrawerRows(Stage& stage, Figures& figures)
    : m_stage(stage)
    , m_figures(figures)
{
}

void DrawerRows::fillHistory()
{
    const QString folder = m_stage.program().folders().history();
    QDir().mkpath(folder);
    const QImage page = m_stage.page().scaled(kEntry);
    for (int i = 0; i < kEntries; ++i) {
        const QString name =
            QStringLiteral("/20260314-0926%1-000.png").arg(i, 2, 10, QLatin1Char('0'));
        QImage entry = page.mirrored(i % 2 == 1, i % 4 > 1);
        if (!entry.save(folder + name, "PNG", 100))
            qFatal("the history takes no entry");
    }
}

void DrawerRows::forgetThumbnails()
{
    QDir(m_stage.program().folders().home() + QStringLiteral("/cache/brindlecam"))
        .removeRecursively();
}

Sample DrawerRows::doorstep() const
{
    const QPoint place(m_stage.pixels().width() / 2, m_stage.pixels().height() - 1);
    return {place, m_stage.page().pixel(place)};
}

std::vector<Sample> DrawerRows::rehearsed()
{
    m_stage.strike(desktop::hotKey(kRecentsKey));
    m_stage.input().letGo();
    QThread::msleep(3 * kGone);
    const QImage seen = m_stage.eyes().grabAtRest();
    const QPoint corner((m_stage.pixels().width() - kDrawer.width()) / 2,
                        m_stage.pixels().height() - kAboveBottom - kDrawer.height());
    const auto all = changes(m_stage.page(), seen, QRect(corner, kDrawer), kGrid);
    if (all.empty())
        qFatal("the drawer does not open");
    close();
    return thinned(all, kMostSamples);
}

void DrawerRows::close()
{
    m_stage.input().tap(Qt::Key_Escape);
    m_stage.input().awaitTaken();
    m_stage.awaitPage();
    QThread::msleep(kGone);
}

void DrawerRows::opening(const QString& kind, bool cached, double mostWhole)
{
    const std::vector<Sample> whole = rehearsed();
    Figure first{.what = QStringLiteral("drawer, %1: key to its first pixels").arg(kind),
                 .samples = {},
                 .limit = kMostFirst,
                 .yardstick = {},
                 .yardstickSamples = {},
                 .ratioLimit = {}};
    Figure all{.what = QStringLiteral("drawer, %1: key to all tiles in their place").arg(kind),
               .samples = {},
               .limit = mostWhole,
               .yardstick = {},
               .yardstickSamples = {},
               .ratioLimit = {}};
    Figure frame{.what =
                     QStringLiteral("drawer, %1: main thread for a frame of the slide").arg(kind),
                 .samples = {},
                 .limit = kMostFrame,
                 .yardstick = {},
                 .yardstickSamples = {},
                 .ratioLimit = {}};
    const Busy busy(m_stage.program().pid());
    for (int round = 0; round < kRounds; ++round) {
        if (!cached)
            forgetThumbnails();
        const auto struck = m_stage.strike(desktop::hotKey(kRecentsKey));
        const auto begun = m_stage.eyes().awaitOther(doorstep());
        const double before = busy.mainThread();
        const auto done = m_stage.eyes().await(whole);
        if (begun && done) {
            frame.samples.push_back((busy.mainThread() - before) / kFrames);
            first.samples.push_back(millisecondsBetween(struck, *begun));
            all.samples.push_back(millisecondsBetween(struck, *done));
        }
        m_stage.input().letGo();
        close();
    }
    m_figures.add(first);
    m_figures.add(all);
    m_figures.add(frame);
}

void DrawerRows::answering(const QString& kind, bool cached)
{
    Figure stretch{
        .what = QStringLiteral("drawer, %1: main thread's longest work without a pause").arg(kind),
        .samples = {},
        .limit = kMostBusy,
        .yardstick = {},
        .yardstickSamples = {},
        .ratioLimit = {}};
    Figure busy{.what = QStringLiteral("drawer, %1: longest wait for an answer").arg(kind),
                .samples = {},
                .limit = {},
                .yardstick = QStringLiteral("the same while nothing happens"),
                .yardstickSamples = {},
                .ratioLimit = {}};
    for (int round = 0; round < kRounds; ++round) {
        Heartbeat quiet(m_stage.program());
        QThread::msleep(2 * kGone);
        busy.yardstickSamples.push_back(quiet.longest());
        if (!cached)
            forgetThumbnails();
        Heartbeat heartbeat(m_stage.program());
        m_stage.strike(desktop::hotKey(kRecentsKey));
        m_stage.input().letGo();
        QThread::msleep(2 * kGone);
        busy.samples.push_back(heartbeat.longest());
        close();
        if (!cached)
            forgetThumbnails();
        Stretches stretches(m_stage.program().pid());
        m_stage.strike(desktop::hotKey(kRecentsKey));
        m_stage.input().letGo();
        QThread::msleep(2 * kGone);
        stretch.samples.push_back(stretches.longest());
        close();
    }
    m_figures.add(stretch);
    m_figures.add(busy);
}

void DrawerRows::scrolling()
{
    m_stage.strike(desktop::hotKey(kRecentsKey));
    m_stage.input().letGo();
    QThread::msleep(3 * kGone);
    const QPoint middle(m_stage.pixels().width() / 2, m_stage.pixels().height() - 120);
    m_stage.input().moveTo(middle);
    QThread::msleep(kGone);
    Figure step{.what = QStringLiteral("drawer: a notch of the wheel to the moved tiles"),
                .samples = {},
                .limit = kMostStep,
                .yardstick = {},
                .yardstickSamples = {},
                .ratioLimit = {}};
    for (const desktop::Button wheel : {desktop::Button::wheelDown, desktop::Button::wheelUp}) {
        for (int i = 0; i < kRounds; ++i) {
            const QImage before = m_stage.eyes().grabAtRest();
            // The gap between two cards moves, whatever is on them.
            const QRect row(20, m_stage.pixels().height() - 60, m_stage.pixels().width() - 40, 1);
            QPoint gap = row.topLeft();
            for (int x = row.left() + 40; x < row.right() - 40; ++x) {
                if (before.pixelColor(x, row.y()).lightness() <
                    before.pixelColor(x - 12, row.y()).lightness()) {
                    gap = QPoint(x, row.y());
                    break;
                }
            }
            m_stage.input().press(wheel);
            const auto sent = m_stage.input().lastSent();
            m_stage.input().release(wheel);
            if (const auto seen = m_stage.eyes().awaitOther({gap, before.pixel(gap)}))
                step.samples.push_back(millisecondsBetween(sent, *seen));
            QThread::msleep(kBetweenSteps);
        }
    }
    m_figures.add(step);
    m_stage.input().moveTo(m_stage.aside());
    close();
}

void DrawerRows::run()
{
    m_stage.start();
    fillHistory();
    const QString there = QStringLiteral("thumbnails there");
    const QString none = QStringLiteral("no thumbnails");
    opening(there, true, kMostCached);
    answering(there, true);
    opening(none, false, kMostDecoded);
    answering(none, false);
    scrolling();
    m_stage.quit();
}

} // namespace brindlecam::bench
