#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <QThreadPool>

#include <atomic>
#include <mutex>
#include <optional>

namespace brindlecam {

/// The typed settings store: one flat JSON object in one file, read once; memory is the truth, and
/// every change is saved at once by an atomic replacement, on a thread of its own, because a disk
/// may take its time; the destructor waits for the last one. Safe from several threads. A file that
/// is not a JSON object is set aside as "<file>.damaged" and every key reads as absent. A file that
/// is there but can't be read is never replaced, and one that can't be written is left as it is:
/// the store then works in memory.
class Defaults final {
public:
    /// Reads `file`; it and its folder need not exist.
    explicit Defaults(QString file);
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
    /// Whether anything at all is stored under the key.
    [[nodiscard]] bool contains(const QString& key) const;

    void setBoolean(const QString& key, bool value);
    /// Ignored unless finite: JSON has no other numbers.
    void setNumber(const QString& key, double value);
    void setString(const QString& key, const QString& value);
    void setData(const QString& key, const QByteArray& value);
    void remove(const QString& key);

private:
    void load();
    [[nodiscard]] QJsonValue value(const QString& key) const;
    void store(const QString& key, const QJsonValue& value);
    void saveSoon();
    void save();

    const QString m_file;
    bool m_savable = true;      ///< settled by load()
    mutable std::mutex m_mutex; ///< held for memory only, so that nobody waits for the disk
    QJsonObject m_values;
    std::atomic<bool> m_saveWaits = false; ///< a save that has not begun will see every change
    QThreadPool m_saver;                   ///< one thread while there is something to save
};

} // namespace brindlecam
