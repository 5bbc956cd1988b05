#pragma once

#include <QRgb>
#include <QSize>
#include <QString>

#include <memory>

namespace brindlecam {

/// Reads a PNG file row by row: a long capture has more pixels than one would like to hold only to
/// show it small. Any thread, one at a time.
class PngRows final {
public:
    /// Null where there is no PNG file of a size that makes sense, or one whose rows do not come in
    /// order (an interlaced one).
    [[nodiscard]] static std::unique_ptr<PngRows> open(const QString& path);
    ~PngRows();
    PngRows(const PngRows&) = delete;
    PngRows& operator=(const PngRows&) = delete;

    [[nodiscard]] QSize size() const;
    /// The next row, from the top: `size().width()` premultiplied pixels. False when the file is
    /// damaged or ends here; nothing more comes then.
    [[nodiscard]] bool next(QRgb* row);

private:
    struct Reader;
    explicit PngRows(std::unique_ptr<Reader> reader);

    const std::unique_ptr<Reader> m_reader;
};

} // namespace brindlecam
