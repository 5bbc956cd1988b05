#pragma once

#include "base/KeyCombo.h"
#include "base/Tool.h"
#include "preferences/CaptureAction.h"

#include <QString>

#include <optional>

namespace brindlecam {

class Defaults;

/// The settings as the program reads them, each at the moment it is needed: defaults, ranges and
/// wrong types are settled here. Borrows the store. Safe from several threads.
class Prefs final {
public:
    explicit Prefs(Defaults& defaults);

    // Feature switches: on when absent or not a boolean.
    [[nodiscard]] bool autoCopy() const;
    [[nodiscard]] bool autoSaveArea() const;
    [[nodiscard]] bool autoSaveFullScreen() const;
    [[nodiscard]] bool keepHistory() const;
    [[nodiscard]] bool showLoupe() const;
    [[nodiscard]] bool checkUpdates() const;
    /// Off when absent.
    [[nodiscard]] bool lightGifs() const;

    /// 0.1 … 1.0, 0.4 when absent.
    [[nodiscard]] double markerOpacity() const;
    /// Clamped before it is stored.
    void setMarkerOpacity(double opacity);
    /// Stroke width or badge size in points, inside the tool's range; 3 for tools without sizes.
    [[nodiscard]] double size(Tool tool) const;
    /// Clamped before it is stored; ignored for tools without sizes.
    void setSize(double size, Tool tool);

    /// Path of the captures folder as stored, a leading "~/" being the home folder; "Brindlecam" in
    /// the user's pictures folder where nothing or no absolute path is stored. It need not exist:
    /// whoever writes into it makes it.
    [[nodiscard]] QString saveFolder() const;
    /// "Brindlecam 2026-03-14 09.26.53.png", in local time.
    [[nodiscard]] static QString newFileName(const QString& fileExtension = QStringLiteral("png"));

    /// The action's shortcut: the default when no data is stored, none when it was cleared or the
    /// data can't be read.
    [[nodiscard]] std::optional<KeyCombo> combo(CaptureAction action) const;
    /// Stores a shortcut; none clears it for good.
    void setCombo(const std::optional<KeyCombo>& combo, CaptureAction action);

    /// The store itself, for the few keys with one reader (first run, permission, updates).
    [[nodiscard]] Defaults& defaults() const { return m_defaults; }

private:
    [[nodiscard]] bool isOn(const char* key) const;

    Defaults& m_defaults;
};

} // namespace brindlecam
