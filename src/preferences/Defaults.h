#pragma once

#include "preferences/SettingsFile.h"

#include <QByteArray>
#include <QDateTime>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <QThreadPool>

#include <atomic>
#include <chrono>
#include <mutex>
#include <optional>

namespace brindlecam {

/// The typed settings store: one flat JSON object in one file, read once; memory is the truth, and
/// every change is saved at once, on a thread of its own, because a disk may take its time; the
/// destructor waits for the last one. Only keys that were changed here are set in the file, so that
/// copies of the program can share it; what they have changed is seen at the next start. What can't
/// be saved stays in memory and is tried again with the next change, and at the end. How the file
/// is treated is told in preferences/SettingsFile.h. Safe from several threads.
class Defaults final {
public:
    /// Reads `file`; it and its folder need not exist. `lockPatience`: see SettingsFile.
    explicit Defaults(QString file,
                      std::chrono::milliseconds lockPatience = SettingsFile::kPatience);
    ~Defaults();
    Defaults(const Defaults&) = delete;
    Defaults& operator=(const Defaults&) = delete;

    /// `settings.json` in the program's own configuration folder.
    [[nodiscard]] static QString standardFile();

    // Each reads as absent when the key holds another type.
    [[nodiscard]] std::optional<bool> boolean(const QString& key) const;
    [[nodiscard]] std::optional<double> number(const QString& key) const;
    [[nodiscard]] std::optional<QString> string(const QString& key) const;
    [[nodiscard]] std::optional<QByteArray> data(const QString& key) const;
    /// In UTC.
    [[nodiscard]] std::optional<QDateTime> date(const QString& key) const;
    /// Whether anything at all is stored under the key.
    [[nodiscard]] bool contains(const QString& key) const;

    void setBoolean(const QString& key, bool value);
    /// Ignored unless finite: JSON has no other numbers.
    void setNumber(const QString& key, double value);
    void setString(const QString& key, const QString& value);
    void setData(const QString& key, const QByteArray& value);
    void setDate(const QString& key, const QDateTime& value);
    void remove(const QString& key);

    /// The folder that the file really lies in, where it is a link.
    [[nodiscard]] QString folder() const { return m_file.folder(); }
    /// Waits until every change so far has been tried to save.
    void waitForSaves() { m_saver.waitForDone(); }

private:
    [[nodiscard]] QJsonValue value(const QString& key) const;
    void store(const QString& key, const QJsonValue& value);
    void saveSoon();
    void save();

    const SettingsFile m_file;
    mutable std::mutex m_mutex; ///< held for memory only, so that nobody waits for the disk
    QJsonObject m_values;
    SettingsFile::Changes m_unsaved;       ///< not in the file yet, nor on the way into it
    std::atomic<bool> m_saveWaits = false; ///< a save that has not begun will see every change
    QThreadPool m_saver;                   ///< one thread while there is something to save
};

} // namespace brindlecam
