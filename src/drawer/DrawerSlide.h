#pragma once

#include "drawer/DrawerGeometry.h"

#include <QObject>
#include <QVariantAnimation>

#include <memory>
#include <vector>

namespace brindlecam {

class DrawerPanel;
class Panels;

/// Moves drawers into sight and out of it; what goes out is its own until it is gone, and hears of
/// nothing any more. Main thread; borrows the port.
class DrawerSlide final : public QObject {
    Q_OBJECT

public:
    explicit DrawerSlide(Panels& panels);
    ~DrawerSlide() override;

    /// Where a panel that comes in is seen first.
    [[nodiscard]] static QRect firstPlace(const DrawerGeometry::Places& places);
    /// Shows this panel and brings it to its place. It must not go before out() or cutShort().
    void in(DrawerPanel& panel, const DrawerGeometry::Places& places);
    /// Takes it off the screen.
    void out(std::unique_ptr<DrawerPanel> panel, const DrawerGeometry::Places& places);
    /// Ends all movement: what was on its way out is off the screen. Whether anything was.
    bool cutShort();

    /// Panels from which something is being dragged may not be deleted: an event loop of theirs
    /// runs. They are kept, off the screen, until the next call with false.
    void setDragging(bool dragging);
    [[nodiscard]] bool isDragging() const { return m_dragging; }
    /// Deletes a panel, as soon as that may be done.
    void discard(std::unique_ptr<DrawerPanel> panel);

private:
    struct Leaving {
        std::unique_ptr<DrawerPanel> panel;
        QVariantAnimation* animation = nullptr; ///< a child
    };

    void left(const QVariantAnimation* animation);

    Panels& m_panels;
    QVariantAnimation m_in;
    std::vector<Leaving> m_leaving;
    std::vector<std::unique_ptr<DrawerPanel>> m_kept;
    bool m_dragging = false;
};

} // namespace brindlecam
