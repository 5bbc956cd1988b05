#include "canvas/CanvasCommand.h"

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

} // namespace

std::optional<CanvasCommand> CanvasCommand::of(const QKeyEvent& event)
{
    const bool commanded = event.modifiers() & Qt::ControlModifier;
    const bool shifted = event.modifiers() & Qt::ShiftModifier;
    const auto asks = [&](Qt::Key letter, QKeySequence::StandardKey standard) {
        return (commanded && event.key() == letter) || event.matches(standard);
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
    if (event.matches(QKeySequence::Redo) || (commanded && shifted && event.key() == Qt::Key_Z))
        return plain(Kind::redo);
    if (asks(Qt::Key_Z, QKeySequence::Undo))
        return plain(Kind::undo);
    return std::nullopt;
}

} // namespace brindlecam
