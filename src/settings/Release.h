#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

#include <optional>

namespace brindlecam {

/// A release of the program as the product's web host announces it. Pure.
struct Release {
    QString version;                   ///< dotted numbers: "1.4.2"
    QString url;                       ///< its download page
    std::optional<QString> englishUrl; ///< the same in English
    QHash<QString, QString> notes;     ///< by language: "es", "en"

    /// None where the bytes are no such announcement: "version" and "url" are needed, and whatever
    /// is there must be of its type.
    [[nodiscard]] static std::optional<Release> fromJson(const QByteArray& json);

    /// The page for who reads this language.
    [[nodiscard]] QString pageIn(const QString& language) const;
    /// What is new, in this language or in Spanish; empty when nothing is said.
    [[nodiscard]] QString notesIn(const QString& language) const;

    /// Whether this is the address of a page that may be opened: by HTTPS, and nothing else.
    [[nodiscard]] static bool isSafe(const QString& url);
    /// Number by number; what is no number counts as 0, as does what is missing.
    [[nodiscard]] static bool isVersion(const QString& version, const QString& newerThan);
};

} // namespace brindlecam
