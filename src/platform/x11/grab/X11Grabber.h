#pragma once

#include "platform/Grabber.h"
#include "platform/x11/grab/RootReader.h"

#include <memory>

namespace brindlecam {

class ServerPixels;

/// Reads the root window. The pad byte of the pictures' pixels is undefined.
class X11Grabber final : public Grabber {
public:
    explicit X11Grabber(std::shared_ptr<ServerPixels> pixels);

    /// `done` is called before this returns.
    void grabScreens(const std::vector<ScreenInfo>& screens, QObject* context, Done done) override;
    /// `opened` is called before this returns.
    void openRegion(const QRect& native, const RegionOptions& options, QObject* context,
                    Opened opened) override;

private:
    RootReader m_reader;
};

} // namespace brindlecam
