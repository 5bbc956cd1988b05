#include "reading/TextPage.h"

#include "reading/Allocated.h"
#include "reading/DoubtfulWords.h"
#include "reading/FixedPitch.h"
#include "reading/Flatten.h"
#include "reading/Fragment.h"
#include "reading/Icons.h"
#include "reading/InkSpots.h"
#include "reading/Lanczos.h"
#include "reading/Noise.h"
#include "reading/ReadingOrder.h"
#include "reading/SpotScale.h"
#include "reading/TextFixes.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace brindlecam {

namespace {

constexpr int kBorder = 10; ///< pixels
constexpr uchar kWhite = 255;

QImage bordered(const QImage& grey)
{
    QImage result = allocated(
        QImage(grey.width() + 2 * kBorder, grey.height() + 2 * kBorder, QImage::Format_Grayscale8));
    result.fill(kWhite);
    for (int y = 0; y < grey.height(); ++y)
        std::memcpy(result.scanLine(y + kBorder) + kBorder, grey.constScanLine(y), grey.width());
    return result;
}

/// Whether there is nothing, not even something faint.
bool isBlank(const QImage& grey)
{
    for (int y = 0; y < grey.height(); ++y) {
        const uchar* const line = grey.constScanLine(y);
        if (std::any_of(line, line + grey.width(), [](uchar value) { return value != kWhite; }))
            return false;
    }
    return true;
}

} // namespace

TextPage::TextPage(const QImage& picture, StopRequest stop)
{
    if (picture.isNull())
        return;
    Flattened flat = flatten(picture, stop);
    m_backgrounds = std::move(flat.backgrounds);
    std::vector<QRect> spots = InkSpots::boxes(flat.grey, stop);
    if (Noise::erase(flat.grey, spots, stop))
        spots = InkSpots::boxes(flat.grey, stop);
    if (isBlank(flat.grey))
        return;
    m_factor = SpotScale::factor(spots, flat.grey.size());
    QImage grey = enlarged(flat.grey, m_factor, stop);
    flat.grey = {}; // no second owner: what is erased needs no copy
    const Icons::Found icons = Icons::among(InkSpots::boxes(grey, stop), m_factor, stop);
    Icons::erase(grey, icons.certain);
    for (const QRect& icon : icons.possible)
        m_possibleIcons.push_back(icon.translated(kBorder, kBorder));
    m_grey = bordered(grey);
}

QStringList TextPage::lines(std::vector<Word> words, StopRequest stop) const
{
    DoubtfulWords::dropInkless(words, m_grey);
    DoubtfulWords::dropIcons(words, m_possibleIcons);
    FixedPitch::join(words);
    QStringList lines =
        readingOrder(fragments(words, [this](QPoint pixel) { return backgroundAt(pixel); }), stop);
    for (QString& line : lines)
        line = fixedText(line);
    return lines;
}

int TextPage::backgroundAt(QPoint grey) const
{
    return m_backgrounds.at({static_cast<int>(std::floor((grey.x() - kBorder) / m_factor)),
                             static_cast<int>(std::floor((grey.y() - kBorder) / m_factor))});
}

} // namespace brindlecam
