#pragma once

#include "reading/TextEngine.h"

#include <memory>

namespace tesseract {
class TessBaseAPI;
}

namespace brindlecam {

/// Tesseract, Spanish first and English second. The only place that knows its headers.
class TesseractEngine final : public TextEngine {
public:
    /// Nothing when there is no data for either language.
    [[nodiscard]] static std::unique_ptr<TesseractEngine> open();

    ~TesseractEngine() override;

    [[nodiscard]] std::optional<std::vector<EngineWord>> read(const unsigned char* grey, int width,
                                                              int height, int bytesPerLine,
                                                              StopRequest stop) override;

private:
    explicit TesseractEngine(std::unique_ptr<tesseract::TessBaseAPI> api);
    [[nodiscard]] std::vector<EngineWord> words() const;

    std::unique_ptr<tesseract::TessBaseAPI> m_api;
};

} // namespace brindlecam
