#pragma once

#include "base/ScreenInfo.h"

#include <QObject>
#include <QString>

#include <chrono>
#include <optional>

namespace brindlecam {

class Toast;

/// Says what takes so long, as long as it lasts: a toast that goes with this, unless another one
/// has taken its place. Main thread; borrows the toast.
class Progress final : public QObject {
    Q_OBJECT

public:
    /// After `patience`, so that what is quick is not announced.
    Progress(Toast& toast, const QString& text, const std::optional<ScreenInfo>& screen,
             std::chrono::milliseconds patience);
    ~Progress() override;

private:
    Toast& m_toast;
    bool m_said = false;
};

} // namespace brindlecam
