#include "canvas/CanvasCommand.h"

#include "base/LatinLetter.h"

#include <QKeyEvent>
#include <QKeySequence>

namespace brindlecam {

namespace {

constexpr qreal kFine = 1;    // points
constexpr qreal kCoarse = 10; // points, with Shift

std::optional<QPointF> direction(int key)
{
    switch (key) {
    case Qt::Key_Left:
        return QPointF(-1, 0);
    case Qt::Key_Right:
        return QPointF(1, 0);
    case Qt::Key_Up:
        return QPointF(0, -1);
    case Qt::Key_Down:
        return QPointF(0, 1);
    default:
        return std::nullopt;
    }
}

// Not with a modifier that reaches further levels of a map: on them Latin maps have foreign
// letters.
int letterOf(const QKeyEvent& event)
{
    return event.modifiers() & Qt::GroupSwitchModifier
               ? event.key()
               : latinLetter(event.key(), event.nativeScanCode());
}

} // namespace

std::optional<CanvasCommand> CanvasCommand::of(const QKeyEvent& event)
{
    const bool commanded = event.modifiers() & Qt::ControlModifier;
    const bool shifted = event.modifiers() & Qt::ShiftModifier;
    const int letter = letterOf(event);
    const auto asks = [&](Qt::Key wanted, QKeySequence::StandardKey standard) {
        return (commanded && letter == wanted) || event.matches(standard);
    };
    const auto plain = [](Kind kind) { return CanvasCommand{.kind = kind, .by = {}}; };

    if (const auto towards = direction(event.key())) {
        return CanvasCommand{.kind = commanded ? Kind::moveFarEdges : Kind::move,
                             .by = *towards * (shifted ? kCoarse : kFine)};
    }
    if (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter)
        return plain(Kind::copy);
    if (event.key() == Qt::Key_Escape)
        return plain(Kind::cancel);
    if (!commanded && (event.key() == Qt::Key_Backspace || event.key() == Qt::Key_Delete))
        return plain(Kind::deleteAnnotation);
    if (asks(Qt::Key_C, QKeySequence::Copy))
        return plain(Kind::copy);
    if (asks(Qt::Key_S, QKeySequence::Save))
        return plain(Kind::save);
    // Where Z with Shift is a sign of no script, as on Thai keys, there is Y.
    if (event.matches(QKeySequence::Redo) || (commanded && shifted && letter == Qt::Key_Z) ||
        (commanded && !shifted && letter == Qt::Key_Y))
        return plain(Kind::redo);
    if (asks(Qt::Key_Z, QKeySequence::Undo))
        return plain(Kind::undo);
    return std::nullopt;
}

} // namespace brindlecam
