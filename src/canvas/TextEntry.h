#pragma once

#include "canvas/TextField.h"

#include <QPointer>
#include <QRectF>
#include <QString>

#include <functional>
#include <optional>

namespace brindlecam {

/// The typing of one text mark at a time, on a canvas it borrows. Main thread.
class TextEntry final {
public:
    /// What was typed, in which colour and where (points of the canvas).
    struct Typed {
        QString text;
        QColor color;
        QRectF box;
    };

    explicit TextEntry(QWidget& canvas);
    ~TextEntry();

    /// Return was pressed in the field, or the focus has left it.
    std::function<void()> onCommit;
    /// Escape was pressed in it.
    std::function<void()> onCancel;

    /// Opens the field for a text begun at this place; it takes the focus.
    void begin(QPointF point, const QRectF& selection, const QColor& color);
    /// Closes the field and gives the focus to the canvas; none when nothing is typed just now.
    std::optional<Typed> end();

    /// The field while text is typed, or null.
    [[nodiscard]] TextField* field() const { return m_field; }

private:
    QWidget& m_canvas;
    QPointer<TextField> m_field; ///< a child of the canvas
};

} // namespace brindlecam
