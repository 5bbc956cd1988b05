#include "LiveCopyRows.h"

#include "Busy.h"
#include "Figures.h"
#include "LibPng.h"

#include <QThread>

namespace brindlecam::bench {

namespace {

constexpr int kFewMarks = 12;
constexpr int kManyMarks = 200;
constexpr int kRoundsOnMany = 8;
constexpr unsigned long kUntilCalm = 250; // milliseconds
constexpr int kChanges = 30;
constexpr unsigned long kBetweenChanges = 1000 / kChanges;

} // namespace

LiveCopyRows::LiveCopyRows(Stage& stage, Figures& figures)
    : m_stage(stage)
    , m_figures(figures)
    , m_user(stage)
    , m_pastes(stage.desktop())
{
}

LiveCopyRows::Costs LiveCopyRows::endMarks(int rounds)
{
    const Busy busy(m_stage.program().pid());
    desktop::Input& input = m_stage.input();
    Costs costs;
    m_user.take(Tool::rect);
    for (int round = 0; round < rounds; ++round) {
        const QPoint from(m_stage.pixels().width() / 5 + 30 * round,
                          m_stage.pixels().height() / 5 + 20 * round);
        input.moveTo(from);
        input.press(desktop::Button::left);
        input.moveTo(from + QPoint(150, 100));
        input.moveTo(from + QPoint(300, 200));
        m_user.rest();
        QThread::msleep(kUntilCalm);
        m_pastes.forget();
        const double before = busy.mainThread();
        input.release(desktop::Button::left);
        const auto released = input.lastSent();
        const auto offered = m_pastes.awaitPng();
        // Whatever it still has to do afterwards counts too.
        QThread::msleep(kUntilCalm);
        const double after = busy.mainThread();
        if (offered && pngSize(m_pastes.readPng()) == m_stage.pixels()) {
            costs.offered.push_back(millisecondsBetween(released, *offered));
            costs.mainThread.push_back(after - before);
        }
    }
    return costs;
}

void LiveCopyRows::report(const QString& when, const Costs& costs)
{
    std::vector<double> yardstick;
    for (int round = 0; round < 2; ++round)
        yardstick.push_back(encodeAndWriteByLibPng(m_stage.page()).milliseconds);
    m_figures.add({.what = QStringLiteral("end of a mark, full screen, %1: PNG offered").arg(when),
                   .samples = costs.offered,
                   .limit = isLarge() ? (isPhoto() ? 120 : 60) : (isPhoto() ? 35 : 15),
                   .yardstick = QStringLiteral("libpng + write"),
                   .yardstickSamples = yardstick,
                   .ratioLimit = {},
                   .leastCounts = true});
    m_figures.add({.what = QStringLiteral("main thread busy for that"),
                   .samples = costs.mainThread,
                   .limit = isLarge() ? 8 : 3,
                   .yardstick = QStringLiteral("memcpy of the frame"),
                   .yardstickSamples = m_stage.frameCopy().memoryCopy(10),
                   .ratioLimit = {}});
}

void LiveCopyRows::endOfMark()
{
    m_user.selectScreen();
    report(QStringLiteral("few marks"), endMarks(kFewMarks));
    m_stage.endSession();
    m_stage.awaitPage();
    m_user.selectScreen();
    m_user.drawMany(kManyMarks);
    report(QStringLiteral("200 marks"), endMarks(kRoundsOnMany));
    m_stage.endSession();
}

void LiveCopyRows::manyChanges()
{
    m_user.selectScreen();
    m_user.drawMany(kChanges + 1);
    QThread::msleep(kUntilCalm);

    // What one change costs, all threads together.
    const Busy busy(m_stage.program().pid());
    m_pastes.forget();
    double before = busy.allThreads();
    m_user.undo();
    (void)m_pastes.countOffers();
    const double one = busy.allThreads() - before;

    before = busy.allThreads();
    for (int change = 0; change < kChanges; ++change) {
        m_user.undo();
        QThread::msleep(kBetweenChanges);
    }
    const int offered = m_pastes.countOffers();
    m_figures.note(QStringLiteral("thirty changes within a second: %1 offered, all threads busy "
                                  "for %2 ms, as for %3 changes at leisure")
                       .arg(offered)
                       .arg(busy.allThreads() - before, 0, 'f', 1)
                       .arg(one > 0 ? (busy.allThreads() - before) / one : 0, 0, 'f', 1));
    m_stage.endSession();
}

} // namespace brindlecam::bench
