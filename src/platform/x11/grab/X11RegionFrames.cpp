#include "platform/x11/grab/X11RegionFrames.h"

#include "platform/x11/grab/GrabErrors.h"

#include <utility>

namespace brindlecam {

Result<std::unique_ptr<RegionFrames>> X11RegionFrames::open(const QRect& native,
                                                            const RegionOptions& options,
                                                            std::chrono::milliseconds patience)
{
    auto server = std::make_unique<x11::PatientConnection>(patience);
    if (!server->isAlive())
        return GrabErrors::noAnswer();
    const auto format = RootFormat::of(*xcb_get_setup(server->raw()), server->screen());
    if (format.format == QImage::Format_Invalid)
        return GrabErrors::unknownFormat();
    std::unique_ptr<X11RegionFrames> frames(
        new X11RegionFrames(std::move(server), format, native, options));
    if (const auto refused = frames->m_reader.refuses(native))
        return *refused;
    return std::unique_ptr<RegionFrames>(std::move(frames));
}

X11RegionFrames::X11RegionFrames(std::unique_ptr<x11::PatientConnection> server,
                                 const RootFormat& format, const QRect& native,
                                 const RegionOptions& options)
    : m_native(native)
    , m_size(options.frameSize(native.size()))
    , m_server(std::move(server))
    , m_access(m_server->access())
    , m_reader(m_access, format, options)
{
}

X11RegionFrames::~X11RegionFrames()
{
    stop();
    const std::lock_guard returned(m_underWay);
}

Result<std::optional<RegionFrame>> X11RegionFrames::next()
{
    const std::lock_guard underWay(m_underWay);
    if (m_server->wasCut())
        return std::optional<RegionFrame>();
    m_server->beginWaiting();
    auto frame = take();
    if (m_server->wasCut())
        return std::optional<RegionFrame>();
    if (!frame)
        return frame.error();
    return std::optional(std::move(frame).value());
}

void X11RegionFrames::stop()
{
    m_server->cut();
}

Result<RegionFrame> X11RegionFrames::take()
{
    auto read = m_reader.read(m_native, std::exchange(m_last, {}));
    if (!read)
        return read.error();
    RegionReader::Look look = std::move(read).value();
    if (look.pointer)
        look.pointer->paintInto(look.image, m_native.topLeft());
    QImage frame = look.image.size() == m_size
                       ? look.image
                       : look.image.scaled(m_size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    m_last = std::move(look.image);
    if (frame.isNull())
        return GrabErrors::noMemory();
    return RegionFrame{std::move(frame), look.taken, look.showsPanels};
}

} // namespace brindlecam
