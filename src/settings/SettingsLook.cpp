#include "settings/SettingsLook.h"

#include "look/DevicePixels.h"
#include "look/InterfaceFont.h"
#include "settings/WrappedText.h"

#include <QCheckBox>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

namespace brindlecam::SettingsLook {

namespace {

// Points.
constexpr int kTextSize = 13;
constexpr int kSmallSize = 11;
constexpr int kSeparatorLength = 20; // at least
constexpr float kSeparatorAlpha = 0.16F;

/// A thin line through the middle of its place, sharp at every scale.
class Separator final : public QWidget {
public:
    explicit Separator(Qt::Orientation orientation)
        : m_orientation(orientation)
    {
        const auto along = QSizePolicy::Expanding;
        const auto across = QSizePolicy::Fixed;
        if (orientation == Qt::Horizontal)
            setSizePolicy(along, across);
        else
            setSizePolicy(across, along);
    }

    [[nodiscard]] QSize sizeHint() const override
    {
        return m_orientation == Qt::Horizontal ? QSize(kSeparatorLength, 1)
                                               : QSize(1, kSeparatorLength);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        const DevicePixels pixels(painter);
        const int thickness = pixels.lineWidth(1);
        QRect line = pixels.nearest(QRectF(rect()));
        if (m_orientation == Qt::Horizontal)
            line.setHeight(thickness);
        else
            line.setWidth(thickness);
        painter.fillRect(line, separatorColor(palette()));
    }

private:
    const Qt::Orientation m_orientation;
};

void makeSmall(QLabel& label)
{
    label.setFont(InterfaceFont::regular(kSmallSize));
    label.setForegroundRole(QPalette::PlaceholderText); // the system's secondary text colour
}

} // namespace

QVBoxLayout* column(QWidget* of)
{
    auto* layout = new QVBoxLayout(of);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(kSpacing);
    return layout;
}

QLabel* header(const QString& title)
{
    auto* label = new QLabel(title);
    label->setTextFormat(Qt::PlainText);
    label->setFont(InterfaceFont::semibold(kTextSize));
    return label;
}

WrappedText* help(const QString& words)
{
    auto* label = new WrappedText(words, kColumnWidth);
    makeSmall(*label);
    return label;
}

QLabel* note()
{
    auto* label = new QLabel;
    label->setTextFormat(Qt::PlainText);
    makeSmall(*label);
    return label;
}

QCheckBox* box(const QString& title, const QString& toolTip)
{
    auto* box = new QCheckBox(title);
    box->setFont(InterfaceFont::regular(kTextSize));
    box->setToolTip(toolTip);
    return box;
}

QColor separatorColor(const QPalette& palette)
{
    QColor color = palette.color(QPalette::WindowText);
    color.setAlphaF(kSeparatorAlpha);
    return color;
}

QWidget* separator(Qt::Orientation orientation)
{
    return new Separator(orientation);
}

} // namespace brindlecam::SettingsLook
