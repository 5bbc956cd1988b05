#include "RestRows.h"

#include "Figures.h"
#include "Rest.h"

#include <QThread>

namespace brindlecam::bench {

namespace {

constexpr unsigned long kUntilRest = 10;          // seconds
constexpr unsigned long kUntilEngineIsGone = 130; // what reads texts stays ready for two minutes
constexpr unsigned long kRest = 30;
constexpr int kCaptures = 10;
constexpr double kMostAfterStart = 4; // MiB
constexpr double kMostAfterCaptures = 12;

} // namespace

RestRows::RestRows(Stage& stage, Figures& figures)
    : m_stage(stage)
    , m_figures(figures)
{
}

void RestRows::run()
{
    m_stage.start();
    QThread::sleep(kUntilRest);
    measure(QStringLiteral("after start"), kMostAfterStart);
    for (int i = 0; i < kCaptures; ++i) {
        if (i % 2 == 0) {
            capture();
        } else {
            m_stage.strikeFullScreen();
            QThread::msleep(300);
            m_stage.input().letGo();
        }
        QThread::msleep(1500);
    }
    QThread::sleep(kUntilEngineIsGone);
    measure(QStringLiteral("after ten captures"), kMostAfterCaptures);
    m_stage.quit();
}

void RestRows::capture()
{
    m_stage.openSession();
    m_stage.select({300, 250, 800, 600});
    QThread::msleep(100);
    m_stage.input().tap(Qt::Key_Return);
    QThread::msleep(300);
    m_stage.input().moveTo(m_stage.aside());
}

void RestRows::measure(const QString& when, double mostMebibytes)
{
    const Rest rest(m_stage.desktop().name(), m_stage.program().pid());
    const auto before = rest.switches();
    QThread::sleep(kRest);
    const auto after = rest.switches();
    m_figures.add({.what = QStringLiteral("at rest %1: context switches in 30 s").arg(when),
                   .unit = QStringLiteral("switches"),
                   .samples = {double(Rest::between(before, after))},
                   .limit = 0,
                   .yardstick = {},
                   .yardstickSamples = {},
                   .ratioLimit = {}});
    for (auto thread = after.begin(); thread != after.end(); ++thread) {
        if (thread.value() != before.value(thread.key(), 0))
            m_figures.note(QStringLiteral("    thread %1: %2")
                               .arg(QString::fromUtf8(thread.key()))
                               .arg(thread.value() - before.value(thread.key(), 0)));
    }
    const Rest::Memory memory = rest.memory();
    m_figures.add({.what = QStringLiteral("at rest %1: memory").arg(when),
                   .unit = QStringLiteral("MiB"),
                   .samples = {memory.all()},
                   .limit = mostMebibytes,
                   .yardstick = {},
                   .yardstickSamples = {},
                   .ratioLimit = {}});
    m_figures.note(QStringLiteral("    anonymous %1, shared %2, other segments %3, X pixmaps %4")
                       .arg(memory.anonymous, 0, 'f', 2)
                       .arg(memory.shared, 0, 'f', 2)
                       .arg(memory.segments, 0, 'f', 2)
                       .arg(memory.pixmaps, 0, 'f', 2));
}

} // namespace brindlecam::bench
