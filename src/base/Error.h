#pragma once

#include <QString>

namespace brindlecam {

/// Why something failed, in words fit for the user (Spanish where we write them ourselves).
struct Error {
    QString message;
};

} // namespace brindlecam
