#include "MarkRestRows.h"

#include "Figures.h"
#include "Rest.h"

#include <QThread>

namespace brindlecam::bench {

namespace {

constexpr int kWarmUpMarks = 14; // two of each tool
constexpr int kMarks = 200;
constexpr int kSteps = 100;
constexpr unsigned long kUntilRest = 10; // seconds
constexpr double kMostGrowth = 1.1;

} // namespace

MarkRestRows::MarkRestRows(Stage& stage, Figures& figures)
    : m_stage(stage)
    , m_figures(figures)
    , m_user(stage)
{
}

void MarkRestRows::session(int marks, int steps)
{
    m_user.selectScreen();
    m_user.drawMany(marks);
    for (int step = 0; step < steps; ++step)
        m_user.undo();
    m_user.rest();
    for (int step = 0; step < steps; ++step)
        m_user.redo();
    m_user.rest();
    m_stage.endSession();
    m_stage.input().moveTo(m_stage.aside());
}

double MarkRestRows::atRest()
{
    QThread::sleep(kUntilRest);
    return Rest(m_stage.desktop().name(), m_stage.program().pid()).memory().anonymous;
}

void MarkRestRows::run()
{
    m_stage.start();
    session(kWarmUpMarks, kWarmUpMarks);
    const double before = atRest();
    session(kMarks, kSteps);
    const double after = atRest();
    m_figures.add({.what = QStringLiteral("private memory after 200 marks and 100 undo steps"),
                   .unit = QStringLiteral("MiB"),
                   .samples = {after},
                   .limit = {},
                   .yardstick = QStringLiteral("before"),
                   .yardstickSamples = {before},
                   .ratioLimit = kMostGrowth});
    m_stage.quit();
}

} // namespace brindlecam::bench
