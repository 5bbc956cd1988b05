#pragma once

#include <QString>
#include <QWidget>

#include <functional>

class QLabel;

namespace brindlecam {

class CaptureTile;
class PanelButton;
class TileRow;

/// The drawer's window: a dark strip with a header, and below it the row of tiles, or a sentence
/// where there are none. Knows the keys. Main thread; sizes in points.
class DrawerPanel final : public QWidget {
    Q_OBJECT

public:
    enum class Entries { none, some };
    /// As wide as this. `emptyText` is what stands there when there are no entries.
    DrawerPanel(qreal width, Entries entries, const QString& emptyText);
    ~DrawerPanel() override;

    // Filled by whoever makes it; each may end it.
    std::function<void()> onEscape;
    std::function<void()> onSpace;
    std::function<void(CaptureTile&)> onDelete; ///< of the tile that has the keys
    std::function<void()> onClear;
    std::function<void()> onLeft;    ///< another window has the keyboard
    std::function<void()> onPressed; ///< a button went down in it, whatever was under the pointer

    [[nodiscard]] TileRow& row() { return *m_row; }
    [[nodiscard]] const TileRow& row() const { return *m_row; }

    /// Whether it may be translucent from now on, or has to be cut and opaque.
    void setBlends(bool blends);

    /// It is about to go: from now on it hears of nothing, and neither does whoever made it.
    void retire();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    void layOut(Entries entries);
    void layOutHeader(Entries entries);
    void cut();

    const qreal m_width;
    QLabel* m_title; ///< children, as all below
    QLabel* m_help;
    QLabel* m_empty;
    PanelButton* m_clear;
    TileRow* m_row;
    bool m_blends = true;
};

} // namespace brindlecam
