#pragma once

#include "desktop/support/Clipboard.h"
#include "desktop/support/x11/SelectionReader.h"

namespace brindlecam::desktop {

/// Asks the owner of CLIPBOARD for its contents.
class X11Clipboard final : public Clipboard {
public:
    explicit X11Clipboard(const QString& display);

    [[nodiscard]] std::uint64_t owner() const override { return m_reader.owner(); }
    [[nodiscard]] QByteArrayList formats() override { return m_reader.targets(); }
    [[nodiscard]] std::optional<QByteArray> read(const QByteArray& format) override
    {
        return m_reader.read(format);
    }
    [[nodiscard]] bool lastCameInPieces() const override { return m_reader.lastCameInPieces(); }
    [[nodiscard]] std::optional<QString> text() override;
    void askAndLeave(const QByteArray& format) override;
    void cutOwnersConnection() override;

private:
    const QString m_display;
    SelectionReader m_reader;
};

} // namespace brindlecam::desktop
