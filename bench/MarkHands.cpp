#include "MarkHands.h"

#include "Busy.h"

#include <QThread>

#include <algorithm>
#include <array>
#include <random>

namespace brindlecam::bench {

namespace {

constexpr QMargins kEdges(140, 30, 120, 80); // the strip, the bars and the handles
constexpr std::array kDrawn{Tool::pen,    Tool::line,   Tool::arrow,   Tool::rect,
                            Tool::marker, Tool::number, Tool::pixelate};
constexpr int kLargestPart = 8; // of the screen's width
constexpr int kSmallestPart = 24;
constexpr double kIdle = 0.2; // milliseconds of work while a screen is looked at

} // namespace

MarkHands::MarkHands(Stage& stage)
    : m_stage(stage)
{
}

void MarkHands::selectScreen()
{
    select(QRect({}, m_stage.pixels() - QSize(1, 1)));
}

void MarkHands::select(const QRect& area)
{
    QThread::msleep(kUnhurried); // the session before has let go of the keyboard
    m_stage.openSession();
    m_stage.select(area);
    m_stage.input().moveTo(freeStrip().center());
    m_taken.reset();
    rest();
}

void MarkHands::take(std::optional<Tool> tool)
{
    if (m_taken == tool)
        return;
    // From the canvas, Tab goes down the tools bar: the pointer first, then the tools. The next
    // press on the canvas takes the keys back.
    const auto* const place = tool ? std::ranges::find(kAllTools, *tool) : kAllTools.begin();
    const auto tabs = (tool ? 2 : 1) + std::distance(kAllTools.begin(), place);
    for (int i = 0; i < tabs; ++i)
        m_stage.input().tap(Qt::Key_Tab);
    m_stage.input().tap(Qt::Key_Space);
    m_taken = tool;
}

Clock::time_point MarkHands::choose(Action action)
{
    // Past the pointer, the tools, colour, undo and redo.
    const auto before = 1 + std::ssize(kAllTools) + 3;
    for (int i = 0; i <= before + static_cast<int>(action); ++i)
        m_stage.input().tap(Qt::Key_Tab);
    rest();
    const auto struck = m_stage.strike({Qt::Key_Space});
    m_stage.input().letGo(); // a button acts when the key is let go
    return struck;
}

void MarkHands::drag(QPoint from, QPoint to)
{
    m_stage.input().drag(from, to, kDragMoves);
}

void MarkHands::drawMany(int count)
{
    const QRect area = QRect({}, m_stage.pixels()).marginsRemoved(kEdges);
    const int smallest = m_stage.pixels().width() / kSmallestPart;
    const int largest = m_stage.pixels().width() / kLargestPart;
    std::minstd_rand random(1);
    const auto between = [&random](int least, int most) {
        return least + static_cast<int>(random() % static_cast<unsigned>(most - least + 1));
    };
    // One tool after the other: on a desktop nobody changes the tool for every mark either.
    for (std::size_t i = 0; i < kDrawn.size(); ++i) {
        take(kDrawn.at(i));
        const auto share = [count](std::size_t tools) {
            return count * static_cast<int>(tools) / static_cast<int>(kDrawn.size());
        };
        for (int mark = share(i); mark < share(i + 1); ++mark) {
            const QSize size(between(smallest, largest), between(smallest, largest));
            const QPoint from(between(area.left(), area.right() - size.width()),
                              between(area.top(), area.bottom() - size.height()));
            drag(from, from + QPoint(size.width(), size.height()));
        }
    }
    rest();
}

void MarkHands::undo()
{
    m_stage.input().chord({Qt::Key_Control, Qt::Key_Z});
    m_stage.input().awaitTaken();
}

void MarkHands::redo()
{
    m_stage.input().chord({Qt::Key_Control, Qt::Key_Shift, Qt::Key_Z});
    m_stage.input().awaitTaken();
}

// Drawing what came in a rush may take longer than nothing is drawn between two of its steps.
QImage MarkHands::rest()
{
    const Busy busy(m_stage.program().pid());
    QImage screen;
    double before = 0;
    do {
        before = busy.allThreads();
        screen = m_stage.eyes().grabAtRest();
    } while (busy.allThreads() - before > kIdle);
    return screen;
}

QRect MarkHands::freeStrip() const
{
    return {QPoint(20, kEdges.top()),
            QSize(kEdges.left() - 40, m_stage.pixels().height() - kEdges.top() - kEdges.bottom())};
}

} // namespace brindlecam::bench
