#pragma once

#include <QLabel>

namespace brindlecam {

/// A label that breaks its lines to a width (points), and is as high as they need. QLabel by itself
/// asks for the room of lines that are shorter than it may draw them.
class WrappedText final : public QLabel {
    Q_OBJECT

public:
    WrappedText(const QString& text, int width, QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

private:
    const int m_width;
};

} // namespace brindlecam
