#pragma once

#include <QDialog>

namespace brindlecam {

/// What the program is: icon, name, version, credits. Shown through Alerts, which owns it.
class AboutPanel final : public QDialog {
    Q_OBJECT

public:
    AboutPanel();
};

} // namespace brindlecam
