#pragma once

#include "KeptFiles.h"
#include "Picture.h"

#include <QString>

#include <memory>
#include <variant>

namespace brindlecam::desktop {
class Clipboard;
class PrivateFolders;
} // namespace brindlecam::desktop

namespace brindlecam::soak {

/// Where a picture goes.
struct Places {
    bool clipboard = true;
    bool file = false;
    bool history = false;
};

/// The books of what was taken: what must be on the clipboard, in the captures folder and in the
/// history, pixel for pixel.
class Ledger final {
public:
    explicit Ledger(const desktop::PrivateFolders& folders);

    void takes(const Picture& picture, Places places);
    /// The program may be killed before it has brought the picture there.
    void mayTake(const Picture& picture);
    /// The file may be there or not.
    void allowFile(const Picture& picture) { m_files.allow(std::make_shared<Picture>(picture)); }
    void copiesText(const QString& text) { m_clipboard = Text{text, Owner::program}; }
    void othersCopy(const QString& text) { m_clipboard = Text{text, Owner::other}; }
    /// Whoever had it and kept nothing has ended.
    void losesClipboard() { m_clipboard = Nothing{}; }
    /// What the program offers goes with it.
    void programEnds();
    [[nodiscard]] bool programHasClipboard() const;

    /// Nothing can be written there from now on, or again.
    void refuseFiles(bool refused) { m_filesRefused = refused; }
    void refuseHistory(bool refused) { m_historyRefused = refused; }
    [[nodiscard]] bool refusesFiles() const { return m_filesRefused; }
    [[nodiscard]] bool refusesHistory() const { return m_historyRefused; }

    [[nodiscard]] KeptFiles& files() { return m_files; }
    [[nodiscard]] KeptFiles& history() { return m_history; }

    /// Waits until everything is where it must be. Throws Failure.
    void verify(desktop::Clipboard& clipboard, int patience = desktop::kPatience);

private:
    enum class Owner { program, other };
    struct Nothing {};
    struct Text {
        QString text;
        Owner owner;
    };
    using Shared = std::shared_ptr<Picture>;

    static void verifyNothing(const desktop::Clipboard& clipboard, int patience);
    static void verifyText(desktop::Clipboard& clipboard, const QString& text, int patience);
    static void verifyPicture(desktop::Clipboard& clipboard, Picture& picture, int patience);

    std::variant<Nothing, Text, Shared> m_clipboard;
    KeptFiles m_files;
    KeptFiles m_history;
    bool m_filesRefused = false;
    bool m_historyRefused = false;
};

} // namespace brindlecam::soak
