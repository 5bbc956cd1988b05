#pragma once

#include "history/History.h"
#include "support/Files.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <memory>

namespace brindlecam::test {

/// A history in a folder of its own, by a clock that stands still until it is set.
struct HistoryFixture {
    std::unique_ptr<QTemporaryDir> place = std::make_unique<QTemporaryDir>();
    const QString kPng = QStringLiteral("png");
    int milliseconds = 0; ///< after 9:26:53 on 14 March 2026

    void startFresh()
    {
        place = std::make_unique<QTemporaryDir>();
        milliseconds = 0;
    }

    [[nodiscard]] QString folder() const
    {
        return place->filePath(QStringLiteral("share/Brindlecam/Recientes"));
    }

    [[nodiscard]] QString thumbnails() const
    {
        return place->filePath(QStringLiteral("cache/brindlecam/thumbnails"));
    }

    [[nodiscard]] History history() const
    {
        return History({folder(), thumbnails()}, [this] {
            return QDateTime(QDate(2026, 3, 14), QTime(9, 26, 53)).addMSecs(milliseconds);
        });
    }

    /// Adds entries that hold "0", "1" and so on, a millisecond after each other.
    void addMany(int count)
    {
        for (int i = 0; i < count; ++i) {
            history().add(QByteArray::number(i), kPng);
            ++milliseconds;
        }
    }

    /// File names of the entries, newest first.
    [[nodiscard]] QStringList names() const
    {
        QStringList result;
        for (const QString& item : history().items())
            result << QFileInfo(item).fileName();
        return result;
    }
};

} // namespace brindlecam::test
