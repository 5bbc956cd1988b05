#pragma once

#include "Chance.h"
#include "Drawer.h"
#include "Ledger.h"
#include "Person.h"
#include "Picture.h"
#include "Scene.h"

#include "desktop/TrayHost.h"

#include "base/Tool.h"

#include <QDir>
#include <QJsonObject>
#include <QRect>
#include <QStringList>

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace brindlecam::soak {

/// Where in the program somebody is.
enum class Situation : std::uint8_t {
    rest,
    session,  ///< the screen is frozen, nothing is selected
    selected, ///< the bars are around an area
    panel,    ///< the session is over, the panel asks where to save
    drawer,   ///< the recent captures are shown
    settings, ///< their window is open
};

/// What the program was told by its settings.
struct Settings {
    bool autoCopy = true;
    bool autoSaveArea = true;
    bool autoSaveFullScreen = true;
    bool keepHistory = true;
    bool showLoupe = false;

    [[nodiscard]] QJsonObject toJson() const;
};

/// A capture that has begun. Native pixels.
struct Session {
    Situation stage = Situation::session;
    Picture frozen{};
    QRect area{};
    std::optional<Picture> live{}; ///< what it has copied so far
    std::optional<Tool> tool{};    ///< none: the pointer
    int marks = 0;
    int undone = 0;
};

/// A pin that stands on the screen. Native pixels.
struct Pin {
    QRect place{};
    Picture picture{};
    double scale = 1;
};

/// A desktop, the program on it and a person in front of both, with all that is known of them:
/// what the program does is held against it.
struct World {
    explicit World(Chance& chance);

    [[nodiscard]] Situation situation() const;
    /// Where the program keeps small pictures of its history.
    [[nodiscard]] QDir thumbnails();
    /// What the next capture shows; the pointer stands on this monitor.
    [[nodiscard]] Picture freeze(const QRect& monitor);
    /// Whether the pin can be seen whole, as large as it is.
    [[nodiscard]] bool isSeen(const Pin& pin);
    [[nodiscard]] bool isFreeForPin(const QRect& place, const Pin* moved = nullptr) const;

    Chance& chance;
    Person person;
    std::unique_ptr<Scene> scene;
    std::unique_ptr<Ledger> ledger;
    std::unique_ptr<desktop::TrayHost> tray;
    std::unique_ptr<desktop::ClipboardManager> manager;
    QString clock; ///< path of the file that holds how far the program's clock is off
    Settings settings;
    std::vector<QRect> monitors{Scene::kScreen};
    std::optional<Session> session;
    std::vector<Pin> pins;
    std::optional<Drawer> drawer; ///< while it is open
    bool settingsAreOpen = false;
    QStringList removed; ///< names of captures that were removed from the history
    int step = 0;
};

} // namespace brindlecam::soak
