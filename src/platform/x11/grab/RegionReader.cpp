#include "platform/x11/grab/RegionReader.h"

#include "platform/x11/connection/X11Windows.h"
#include "platform/x11/grab/BandRing.h"
#include "platform/x11/grab/BeneathPanels.h"
#include "platform/x11/grab/ConnectionPixels.h"
#include "platform/x11/grab/DesktopOutline.h"
#include "platform/x11/grab/DrawingPause.h"
#include "platform/x11/grab/GrabErrors.h"
#include "platform/x11/grab/RootBands.h"

#include <utility>

namespace brindlecam {

namespace {

bool canTellPointer(const x11::RootAccess& access)
{
    const auto* const extension = xcb_get_extension_data(access.connection, &xcb_xfixes_id);
    if (!extension || !extension->present)
        return false;
    // The server answers nothing else before.
    return access.reply<xcb_xfixes_query_version_reply_t>(
               xcb_xfixes_query_version(access.connection, 1, 0).sequence) != nullptr;
}

std::unique_ptr<PixelBuffer> makeRing(xcb_connection_t* connection)
{
    if (!PixelBuffer::canShare(connection))
        return nullptr;
    return PixelBuffer::make(PixelBuffer::Kind::shared, BandRing::kBytes, connection);
}

} // namespace

RegionReader::RegionReader(const x11::RootAccess& access, const RootFormat& format,
                           const RegionOptions& options)
    : m_access(access)
    , m_format(format)
    , m_knowsMonitors(OutlineQuestion::canTellMonitors(access))
    , m_seesPointer(options.pointer == RegionOptions::Pointer::shown && canTellPointer(access))
    , m_showsPanels(options.panels == RegionOptions::Panels::shown)
    , m_beneath(m_showsPanels ? nullptr
                              : BeneathPanels::make(access, x11::ClientIds::of(x11::connection())))
    , m_ring(makeRing(access.connection))
{
}

RegionReader::~RegionReader()
{
    // The connection goes, too: a detach that it would have to carry out is not waited for.
    if (m_ring)
        m_ring->forgetServer();
}

std::optional<Error> RegionReader::refuses(const QRect& native) const
{
    return refusal(OutlineQuestion(m_access, m_knowsMonitors), native);
}

std::optional<Error> RegionReader::refusal(const OutlineQuestion& question, const QRect& native)
{
    const DesktopOutline outline = question.answer();
    if (outline.desktop.isEmpty())
        return GrabErrors::noAnswer();
    if (!outline.shows(native))
        return GrabErrors::outside();
    return {};
}

Result<RegionReader::Look> RegionReader::read(const QRect& native, QImage used)
{
    // Outline, pointer and pixels are of one moment: nothing is read past a desktop that shrinks.
    DrawingPause pause(m_access.connection);
    const OutlineQuestion question(m_access, m_knowsMonitors);
    std::optional<xcb_xfixes_get_cursor_image_cookie_t> asked;
    if (m_seesPointer)
        asked = xcb_xfixes_get_cursor_image(m_access.connection);
    const std::optional<Error> refused = refusal(question, native);
    Look look;
    look.taken = std::chrono::steady_clock::now();
    if (asked) {
        const auto cursor = m_access.reply<xcb_xfixes_get_cursor_image_reply_t>(asked->sequence);
        if (cursor)
            look.pointer = PointerPicture::of(*cursor);
    }
    if (refused)
        return *refused;
    const auto beneath = m_beneath ? m_beneath->draw(native) : std::nullopt;
    look.showsPanels = beneath ? beneath->showsPanels : !m_showsPanels && !m_beneath;
    if (beneath)
        pause.end(); // nobody else draws on that picture
    auto image = beneath
                     ? readPixels(pause, beneath->pixels, QRect({}, native.size()), std::move(used))
                     : readPixels(pause, m_access.root, native, std::move(used));
    if (!image)
        return image.error();
    look.image = std::move(image).value();
    return look;
}

Result<QImage> RegionReader::readPixels(DrawingPause& pause, xcb_drawable_t source,
                                        const QRect& rect, QImage used)
{
    if (m_ring)
        return readThroughRing(pause, source, rect, std::move(used));
    const auto cookie = ConnectionPixels::request(m_access, source, rect);
    pause.end();
    auto raw = ConnectionPixels::receive(m_access, m_format, rect.size(), cookie);
    if (!raw)
        return raw;
    QImage picture = m_format.converted(std::move(raw).value());
    if (picture.isNull())
        return GrabErrors::noMemory();
    return picture;
}

Result<QImage> RegionReader::readThroughRing(DrawingPause& pause, xcb_drawable_t source,
                                             const QRect& rect, QImage used)
{
    const qsizetype bytesPerLine = m_format.bytesPerLine(rect.width());
    RootBands bands(m_access, pause, *m_ring, source, rect);
    const auto readInto = [&](uchar* target) {
        return BandRing::read(bands, m_ring->data(), rect.height(), bytesPerLine, target);
    };
    if (m_format.isDirect()) {
        if (used.size() != rect.size() || !used.isDetached())
            used = QImage(rect.size(), m_format.format);
        if (used.isNull())
            return GrabErrors::noMemory();
        return readInto(used.bits()) ? Result<QImage>(std::move(used)) : GrabErrors::noAnswer();
    }
    m_raw.resize(static_cast<std::size_t>(bytesPerLine * rect.height()));
    if (!readInto(m_raw.data()))
        return GrabErrors::noAnswer();
    const QImage raw(m_raw.data(), rect.width(), rect.height(), bytesPerLine, m_format.format);
    // Another picture in any case: this one's memory is overwritten by the next.
    QImage picture = raw.convertToFormat(QImage::Format_RGB32);
    if (picture.isNull())
        return GrabErrors::noMemory();
    return picture;
}

} // namespace brindlecam
