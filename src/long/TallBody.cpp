#include "long/TallBody.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>

namespace brindlecam {

namespace {

constexpr std::size_t kGrowth = std::size_t{4} << 20; ///< bytes; of any system's pages

std::size_t wholePages(std::size_t bytes)
{
    const auto page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    return (bytes + page - 1) / page * page;
}

} // namespace

std::shared_ptr<TallBody> TallBody::reserve(std::size_t bytes)
{
    if (bytes == 0 || bytes > std::numeric_limits<std::size_t>::max() / 2)
        return nullptr;
    const std::size_t reserved = wholePages(bytes);
    // What can't be written counts for nothing, even where the system promises no more memory than
    // it has.
    constexpr int kFlags = MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE;
    void* const memory = ::mmap(nullptr, reserved, PROT_NONE, kFlags, -1, 0);
    if (memory == MAP_FAILED)
        return nullptr;
#ifdef MADV_HUGEPAGE
    // A wish: fetching page after page takes longer than copying the rows into them.
    ::madvise(memory, reserved, MADV_HUGEPAGE);
#endif
    return std::shared_ptr<TallBody>(new TallBody(static_cast<std::uint8_t*>(memory), reserved));
}

TallBody::TallBody(std::uint8_t* data, std::size_t reserved)
    : m_data(data)
    , m_reserved(reserved)
{
}

TallBody::~TallBody()
{
    ::munmap(m_data, m_reserved);
}

bool TallBody::growTo(std::size_t bytes)
{
    if (bytes <= m_usable)
        return true;
    if (bytes > m_reserved)
        return false;
    const std::size_t wanted = std::min(m_reserved, (bytes + kGrowth - 1) / kGrowth * kGrowth);
    if (::mprotect(m_data + m_usable, wanted - m_usable, PROT_READ | PROT_WRITE) != 0)
        return false;
    m_usable = wanted;
    return true;
}

void TallBody::write(std::size_t at, std::span<const std::uint8_t> pixels)
{
    constexpr std::uint32_t kOpaque =
        std::endian::native == std::endian::little ? 0xff000000U : 0x000000ffU;
    const std::uint8_t* __restrict source = pixels.data();
    std::uint8_t* __restrict target = m_data + at;
    for (std::size_t i = 0; i + sizeof kOpaque <= pixels.size(); i += sizeof kOpaque) {
        std::uint32_t pixel = 0;
        std::memcpy(&pixel, source + i, sizeof pixel);
        pixel |= kOpaque;
        std::memcpy(target + i, &pixel, sizeof pixel);
    }
}

} // namespace brindlecam
