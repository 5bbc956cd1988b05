#pragma once

#include "platform/RegionFrames.h"
#include "platform/x11/connection/PatientConnection.h"
#include "platform/x11/grab/RegionReader.h"

#include <QRect>

#include <chrono>
#include <memory>
#include <mutex>

namespace brindlecam {

/// Frames of a part of the root window, over a connection of their own. The pointer is not in them
/// where the server lacks XFixes. The pad byte of their pixels is undefined.
class X11RegionFrames final : public RegionFrames {
public:
    /// Long enough for another client that has the server for itself: a window manager while the
    /// user drags a window's edge. Whoever does not want to wait stops it.
    static constexpr std::chrono::milliseconds kPatience{5000};

    /// On the server that DISPLAY names. An error where its first frame would be one.
    [[nodiscard]] static Result<std::unique_ptr<RegionFrames>>
    open(const QRect& native, const RegionOptions& options,
         std::chrono::milliseconds patience = kPatience);
    ~X11RegionFrames() override;
    X11RegionFrames(const X11RegionFrames&) = delete;
    X11RegionFrames& operator=(const X11RegionFrames&) = delete;

    /// What fails because nobody answers within the patience fails for good.
    [[nodiscard]] Result<std::optional<RegionFrame>> next() override;
    [[nodiscard]] bool seesBeneathPanels() const override { return m_reader.seesBeneathPanels(); }
    void stop() override;

private:
    X11RegionFrames(std::unique_ptr<x11::PatientConnection> server, const RootFormat& format,
                    const QRect& native, const RegionOptions& options);

    [[nodiscard]] Result<RegionFrame> take();

    const QRect m_native;
    const QSize m_size; ///< of the frames
    const std::unique_ptr<x11::PatientConnection> m_server;
    const x11::RootAccess m_access;
    RegionReader m_reader;
    QImage m_last;         ///< its memory serves again once nobody else has it
    std::mutex m_underWay; ///< held by next()
};

} // namespace brindlecam
