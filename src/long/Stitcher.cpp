#include "long/Stitcher.h"

#include "long/DisplacementSearch.h"
#include "long/RowSignature.h"
#include "long/TallBody.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <utility>

namespace brindlecam {

namespace {

constexpr std::size_t kFramePixelBytes = 4;

/// For what would be a fault of the caller's, in a release, too.
void require(bool condition, const char* complaint)
{
    if (condition)
        return;
    std::fprintf(stderr, "Stitcher: %s\n", complaint);
    std::abort();
}

/// With a point in every locale.
std::string twoDecimals(double number)
{
    char text[32];
    const auto end = std::to_chars(text, text + sizeof text, number, std::chars_format::fixed, 2);
    return {text, end.ptr};
}

std::string report(const Displacement& moved)
{
    using Outcome = Displacement::Outcome;
    const std::string top = "top " + std::to_string(moved.top);
    const std::string bottom = "bottom " + std::to_string(moved.bottom);
    switch (moved.outcome) {
    case Outcome::still:
        return "still";
    case Outcome::tooSmall:
        return "lost: región " + std::to_string(moved.region) + " (" + top + ", " + bottom + ")";
    case Outcome::unknown:
        // There is no best cost to tell: none is found that is too high.
        return "lost: mejor costo -1.0 " + top + " " + bottom;
    case Outcome::found:
        break;
    }
    return "d=" + std::to_string(moved.rows) + " costo=" + twoDecimals(moved.cost) +
           " top=" + std::to_string(moved.top) + " bottom=" + std::to_string(moved.bottom);
}

} // namespace

std::unique_ptr<Stitcher> Stitcher::create(int width, int height, int maxRows)
{
    require(width > 0 && height > 0 && maxRows >= 0, "no size for a picture");
    const std::size_t rowBytes = static_cast<std::size_t>(width) * kFramePixelBytes;
    const auto frameRows = static_cast<std::size_t>(height);
    const std::size_t most = static_cast<std::size_t>(std::max(height, maxRows)) + frameRows;
    if (most > static_cast<std::size_t>(std::numeric_limits<int>::max()) ||
        most > std::numeric_limits<std::size_t>::max() / rowBytes)
        return nullptr;
    auto body = TallBody::reserve(most * rowBytes);
    if (!body || !body->growTo(frameRows * rowBytes))
        return nullptr;
    return std::unique_ptr<Stitcher>(new Stitcher(width, height, maxRows, std::move(body)));
}

Stitcher::Stitcher(int width, int height, int maxRows, std::shared_ptr<TallBody> body)
    : m_width(width)
    , m_height(height)
    , m_maxRows(maxRows)
    , m_body(std::move(body))
    , m_lastSignature(static_cast<std::size_t>(height) * RowSignature::kBytes)
    , m_signature(m_lastSignature.size())
{
}

Stitcher::Step Stitcher::add(std::span<const std::uint8_t> frame)
{
    require(frame.size() == bytesOf(m_height), "a frame of another size");
    require(m_body.use_count() == 1, "a frame after the picture was made");
    if (m_rows == 0) {
        RowSignature::copyAndSign(frame.data(), m_width, m_height, m_body->data(),
                                  m_lastSignature.data());
        m_rows = m_height;
        return {Step::Kind::still};
    }
    RowSignature::sign(frame.data(), m_width, m_height, m_signature.data());
    const Displacement moved =
        DisplacementSearch::find(m_lastSignature.data(), m_signature.data(), m_height);
    if (trace)
        trace(report(moved));
    switch (moved.outcome) {
    case Displacement::Outcome::still:
        return {Step::Kind::still};
    case Displacement::Outcome::tooSmall:
    case Displacement::Outcome::unknown:
        return {Step::Kind::lost};
    case Displacement::Outcome::found:
        break;
    }
    return append(frame, moved);
}

Stitcher::Step Stitcher::append(std::span<const std::uint8_t> frame, const Displacement& moved)
{
    if (!m_footerRows) {
        m_footerRows = moved.bottom; // and lies behind the body as soon as that ends above it
        m_rows -= moved.bottom;
    }
    const int footer = *m_footerRows;
    const int room = m_maxRows - m_rows;
    if (room < 1)
        return {Step::Kind::full};
    const int taken = std::min(moved.rows, room);
    if (!m_body->growTo(bytesOf(m_rows + taken + footer)))
        return {Step::Kind::full};

    // Where the footer moved after all, the new rows may begin above this frame. Those rows are
    // there already: they are the upper ones of the last frame's footer.
    const int first = m_height - footer - moved.rows;
    const int there = std::clamp(-first, 0, taken);
    put(m_rows + there, frame, first + there, taken - there);
    m_rows += taken;
    put(m_rows, frame, m_height - footer, footer);
    std::swap(m_lastSignature, m_signature);
    if (taken < moved.rows)
        return {Step::Kind::full};
    return {Step::Kind::added, moved.rows};
}

std::optional<Stitcher::Picture> Stitcher::makeImage() const
{
    if (m_rows == 0)
        return {};
    return Picture{{m_body, m_body->data()}, m_width, pictureRows()};
}

/// Copies rows of the frame to the body's row `at`.
void Stitcher::put(int at, std::span<const std::uint8_t> frame, int first, int count)
{
    if (count > 0)
        m_body->write(bytesOf(at), frame.subspan(bytesOf(first), bytesOf(count)));
}

std::size_t Stitcher::bytesOf(int rows) const
{
    return static_cast<std::size_t>(rows) * static_cast<std::size_t>(m_width) * kFramePixelBytes;
}

} // namespace brindlecam
