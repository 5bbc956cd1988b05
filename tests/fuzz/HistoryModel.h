#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>

#include <map>

namespace brindlecam {

class History;

namespace fuzz {

/// What a history folder holds according to what History says it does, worked out without it.
class HistoryModel final {
public:
    enum class Kind { file, folder, link };

    explicit HistoryModel(QString folder)
        : m_folder(std::move(folder))
    {
    }

    void makeFolder(int mode);
    /// Somebody else leaves something there, unless something has this name or nothing can have it.
    void leave(const QString& name, Kind kind, int mode, const QDateTime& written);

    // What is expected of History's functions, and their answers.
    bool add(const QByteArray& data, const QString& extension, const QDateTime& now);
    int clear();
    void tidy(const QDateTime& now);

    /// Holds the folder and the list of entries against the model.
    void check(const History& history) const;

private:
    struct Thing {
        Kind kind = Kind::file;
        QByteArray content = {};
        int mode = 0;
        QDateTime written = {};
    };

    [[nodiscard]] QString path(const QString& name) const;
    [[nodiscard]] QStringList entries() const;
    [[nodiscard]] QString nextName(const QString& extension, const QDateTime& now) const;
    void prune(const QString& added);
    void checkThing(const QString& name, const Thing& thing) const;

    QString m_folder;
    int m_folderMode = 0; ///< 0: it is not there
    std::map<QString, Thing> m_things;
};

} // namespace fuzz

} // namespace brindlecam
