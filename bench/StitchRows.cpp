#include "StitchRows.h"

#include "Eyes.h"
#include "Figures.h"
#include "PagePainter.h"
#include "long/RowSignature.h"
#include "long/Stitcher.h"

#include <QImage>

#include <cstring>

namespace brindlecam::bench {

namespace {

constexpr int kCopies = 200;
constexpr int kFrames = 30;
constexpr int kScrolled = 300; // rows
constexpr int kMaxRows = 20000;

constexpr double kMostSigned = 0.7;           // of a copy
constexpr double kMostSignedAndCopied = 1.05; // of a copy
constexpr double kMostAdded = 3;              // milliseconds

/// Milliseconds of one call; the results of which count as seen, or the compiler might leave it
/// out.
template <typename Work>
double timed(Work work)
{
    const auto from = Clock::now();
    work();
    asm volatile("" : : : "memory");
    return millisecondsBetween(from, Clock::now());
}

QString nameOf(QSize frame)
{
    return QStringLiteral("%1×%2").arg(frame.width()).arg(frame.height());
}

} // namespace

StitchRows::StitchRows(QSize frame, Figures& figures)
    : m_frame(frame)
    , m_figures(figures)
{
}

void StitchRows::signature()
{
    const QImage frame = test::PagePainter::interfacePage(m_frame);
    const std::uint8_t* const pixels = frame.constBits();
    const auto bytes = static_cast<std::size_t>(frame.sizeInBytes());
    std::vector<std::uint8_t> target(bytes, 1);
    std::vector<std::uint8_t> signatures(static_cast<std::size_t>(m_frame.height()) *
                                         RowSignature::kBytes);
    const auto sign = [&] {
        RowSignature::sign(pixels, m_frame.width(), m_frame.height(), signatures.data());
    };
    const auto copyAndSign = [&] {
        RowSignature::copyAndSign(pixels, m_frame.width(), m_frame.height(), target.data(),
                                  signatures.data());
    };
    std::vector<double> copied;
    std::vector<double> onlySigned;
    std::vector<double> both;
    for (int round = 0; round < kCopies; ++round) {
        copied.push_back(timed([&] { std::memcpy(target.data(), pixels, bytes); }));
        onlySigned.push_back(timed(sign));
        both.push_back(timed(copyAndSign));
    }
    Figure figure{.what = QStringLiteral("signature of a %1 frame").arg(nameOf(m_frame)),
                  .samples = onlySigned,
                  .limit = {},
                  .yardstick = QStringLiteral("memcpy of the frame, same run"),
                  .yardstickSamples = copied,
                  .ratioLimit = kMostSigned};
    m_figures.add(figure);
    figure.what = QStringLiteral("the same while the frame is copied");
    figure.samples = both;
    figure.ratioLimit = kMostSignedAndCopied;
    m_figures.add(figure);
}

void StitchRows::add()
{
    const QImage page =
        test::PagePainter::interfacePage({m_frame.width(), m_frame.height() + kFrames * kScrolled});
    const auto stitcher = Stitcher::create(m_frame.width(), m_frame.height(), kMaxRows);
    const auto frame = [&](int number) {
        return std::span(page.constScanLine(number * kScrolled),
                         static_cast<std::size_t>(page.bytesPerLine()) *
                             static_cast<std::size_t>(m_frame.height()));
    };
    Figure figure{.what = QStringLiteral("one add of a %1 frame moved by %2 rows")
                              .arg(nameOf(m_frame))
                              .arg(kScrolled),
                  .samples = {},
                  .limit = kMostAdded,
                  .yardstick = {},
                  .yardstickSamples = {},
                  .ratioLimit = {}};
    if (stitcher)
        stitcher->add(frame(0));
    constexpr Stitcher::Step kExpected{Stitcher::Step::Kind::added, kScrolled};
    for (int number = 1; stitcher && number <= kFrames; ++number) {
        Stitcher::Step step;
        const double time = timed([&] { step = stitcher->add(frame(number)); });
        if (step == kExpected)
            figure.samples.push_back(time);
    }
    // What was not found again says nothing about what finding it costs.
    if (figure.samples.size() < kFrames)
        figure.samples.clear();
    m_figures.add(figure);
}

} // namespace brindlecam::bench
