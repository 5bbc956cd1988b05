#pragma once

#include <QString>

#include <functional>
#include <optional>

namespace brindlecam {

class Alerts;

/// Asks where a picture is to be saved: PNG files, starting in the captures folder.
namespace SavePanel {

/// Opens the panel without blocking; makes `folder` first when it is missing. `done` receives the
/// full path, or nothing when the user cancelled.
void open(Alerts& alerts, const QString& folder, const QString& fileName,
          std::function<void(std::optional<QString>)> done);

} // namespace SavePanel

} // namespace brindlecam
