#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QImage>
#include <QString>

#include <cstdint>
#include <optional>

namespace brindlecam::desktop {

/// Pasting like any other program: asks whoever offers something for its contents. That must be
/// another process.
class Clipboard {
public:
    Clipboard() = default;
    virtual ~Clipboard() = default;
    Clipboard(const Clipboard&) = delete;
    Clipboard& operator=(const Clipboard&) = delete;

    /// Who offers something; 0 when nobody does.
    [[nodiscard]] virtual std::uint64_t owner() const = 0;
    [[nodiscard]] bool isTaken() const { return owner() != 0; }
    /// The names of all offered formats in the owner's order; empty when nobody offers anything.
    [[nodiscard]] virtual QByteArrayList formats() = 0;
    /// The bytes of one format, as in "image/png"; none when refused or not delivered in time.
    [[nodiscard]] virtual std::optional<QByteArray> read(const QByteArray& format) = 0;
    /// Whether the last read came in pieces.
    [[nodiscard]] virtual bool lastCameInPieces() const = 0;
    /// The picture as other programs paste it; null when there is none.
    [[nodiscard]] QImage picture();
    /// The text; none when there is none.
    [[nodiscard]] virtual std::optional<QString> text() = 0;

    /// Asks for one format and is gone before the answer comes, as a program that crashes is.
    virtual void askAndLeave(const QByteArray& format) = 0;
    /// Cuts the connection of whoever offers something.
    virtual void cutOwnersConnection() = 0;
};

} // namespace brindlecam::desktop
