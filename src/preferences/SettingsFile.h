#pragma once

#include <QHash>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>

#include <chrono>
#include <optional>

namespace brindlecam {

/// The file that holds the settings as one JSON object. Others write it, too: further copies of the
/// program, and people; so a change is merged into what it holds at that moment. The user may keep
/// it elsewhere and put a link in its place: what the link points at is read and replaced, the link
/// stays. A file that is no JSON object is set aside as "<file>.damaged"; one that can't be read,
/// or is no file at all, is never touched. Any thread; as slow as the disk.
class SettingsFile final {
public:
    /// Keys and their new values; an undefined value removes the key.
    using Changes = QHash<QString, QJsonValue>;

    /// How long merge() waits for another copy that is just writing. After that it goes on without:
    /// what hangs must not cost a setting.
    static constexpr std::chrono::milliseconds kPatience{2000};

    explicit SettingsFile(QString path, std::chrono::milliseconds patience = kPatience);

    /// Every key, for the start: empty when there is no file that can be used. From now on only its
    /// owner may read it.
    [[nodiscard]] QJsonObject load() const;

    /// Sets the changed keys in the file. Where there is none any more, it gets `all`, in which the
    /// changes are contained. False when nothing could be written.
    [[nodiscard]] bool merge(const Changes& changes, const QJsonObject& all) const;

    /// The folder that the file really lies in.
    [[nodiscard]] QString folder() const;

private:
    struct Content;

    [[nodiscard]] QString target() const;
    [[nodiscard]] static Content read(const QString& target);
    [[nodiscard]] static bool setAside(const QString& target);

    QString m_path;
    std::chrono::milliseconds m_patience;
};

} // namespace brindlecam
