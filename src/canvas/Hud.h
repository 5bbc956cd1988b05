#pragma once

#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QTimer>

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>

class QPainter;

namespace brindlecam {

/// The message that stands over the selection for a moment: a size that changes, a reason why
/// nothing happened. Main thread; points of the canvas.
class Hud final {
public:
    enum class Stay : std::uint8_t {
        timed, ///< goes by itself
        sticky ///< stays until another one comes
    };

    Hud();

    /// The text has come, changed or gone: paint anew.
    std::function<void()> onChange;

    /// Replaces what is shown. `time` is how long a timed one stays.
    void show(const QString& text, Stay stay, std::chrono::milliseconds time = {});
    void clear();

    [[nodiscard]] const std::optional<QString>& text() const { return m_text; }
    /// For how long the text was to be shown; none where nothing takes it away.
    [[nodiscard]] std::optional<std::chrono::milliseconds> stays() const;

    /// Where a text stands: over the selection's centre, moved as far as the canvas needs.
    [[nodiscard]] static QRectF rect(const QString& text, const QRectF& selection, QSizeF canvas);
    static void paint(QPainter& painter, const QString& text, const QRectF& selection,
                      QSizeF canvas);

private:
    void setText(std::optional<QString> text);

    std::optional<QString> m_text;
    QTimer m_timer;
};

} // namespace brindlecam
