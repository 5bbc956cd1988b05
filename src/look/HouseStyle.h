#pragma once

#include <QIcon>
#include <QProxyStyle>

#include <map>
#include <utility>

namespace brindlecam {

/// Qt's Fusion style with our measures: roomier menus and buttons, no icons on dialog buttons,
/// boxes that can be seen in a dark theme. The same on every desktop, so that dialogs and menus
/// look finished where no desktop styles them.
class HouseStyle final : public QProxyStyle {
    Q_OBJECT

public:
    HouseStyle();

    int pixelMetric(PixelMetric metric, const QStyleOption* option,
                    const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returned) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override;
    /// The same icon each time: a save panel asks for some twenty of them whenever it opens, the
    /// styles of Qt 6.4 make each anew, and QPixmapCache keeps for long what was painted of every
    /// one. Drop it when they hand out the same.
    QIcon standardIcon(StandardPixmap which, const QStyleOption* option,
                       const QWidget* widget) const override;

private:
    mutable std::map<std::pair<StandardPixmap, Qt::LayoutDirection>, QIcon> m_icons;
};

} // namespace brindlecam
