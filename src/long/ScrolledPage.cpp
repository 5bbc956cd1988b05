#include "long/ScrolledPage.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <utility>

namespace brindlecam {

namespace {

constexpr int kMostRows = 20000;
constexpr int kLostTooOften = 3; // in a row

std::span<const std::uint8_t> bytesOf(const QImage& frame)
{
    return {frame.constBits(), static_cast<std::size_t>(frame.sizeInBytes())};
}

void forget(void* owner)
{
    delete static_cast<std::shared_ptr<const std::uint8_t>*>(owner);
}

} // namespace

ScrolledPage::State ScrolledPage::add(const QImage& frame)
{
    if (!m_stitcher) {
        m_stitcher =
            Stitcher::create(frame.width(), frame.height(), std::max(frame.height(), kMostRows));
        if (!m_stitcher)
            return State::failed;
    }
    const Stitcher::Step step = m_stitcher->add(bytesOf(frame));
    const bool lost = step.kind == Stitcher::Step::Kind::lost;
    m_lostInARow = lost ? m_lostInARow + 1 : 0;
    if (step.kind == Stitcher::Step::Kind::full)
        return State::complete;
    if (m_lostInARow >= kLostTooOften)
        return State::tooFast;
    return height() > frame.height() ? State::growing : State::waiting;
}

std::optional<QImage> ScrolledPage::picture() const
{
    auto stitched = m_stitcher ? m_stitcher->makeImage() : std::nullopt;
    if (!stitched)
        return std::nullopt;
    auto* const owner = new std::shared_ptr<const std::uint8_t>(std::move(stitched->bytes));
    return QImage(owner->get(), stitched->width, stitched->height, qsizetype{stitched->width} * 4,
                  QImage::Format_RGB32, forget, owner);
}

} // namespace brindlecam
