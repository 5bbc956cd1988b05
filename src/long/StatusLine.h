#pragma once

#include <QLabel>

namespace brindlecam {

/// What a long capture is at, in one line: white, cut off at its tail where there is no room, and
/// still while it counts, as all digits have one width. Assistive technology knows each text, and
/// is told when one says something else than the one before, not when it only counts on. Main
/// thread.
class StatusLine final : public QLabel {
    Q_OBJECT

public:
    explicit StatusLine(QWidget* parent);

    void setStatus(const QString& status);

    /// Whether the second of two texts says something else than the first, and does not only count
    /// on.
    [[nodiscard]] static bool isNews(const QString& before, const QString& after);

protected:
    void showEvent(QShowEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void announce();
};

} // namespace brindlecam
