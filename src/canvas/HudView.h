#pragma once

#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QWidget>

namespace brindlecam {

/// Shows the transient message above everything else on its canvas, also above the bars: around a
/// small selection they stand where the message is. The mouse goes through it. Main thread; points
/// of the canvas.
class HudView final : public QWidget {
    Q_OBJECT

public:
    explicit HudView(QWidget& canvas);

    /// Shows the text over this selection; an empty one of either hides.
    void present(const QString& text, const QRectF& selection, QSizeF canvasSize);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString m_text;
    QRectF m_selection;
    QSizeF m_canvasSize;
};

} // namespace brindlecam
