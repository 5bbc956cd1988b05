#pragma once

#include <atomic>
#include <string>
#include <vector>

namespace brindlecam {

/// What reads letters. It lives in a module of its own, because the libraries it needs are many;
/// this header is all that module and program share, and free of Qt. Made, used and destroyed on
/// one thread.
class TextEngine {
public:
    struct EngineWord {
        std::string utf8;
        float confidence = 0; ///< 0 to 100
        int left = 0;         ///< the box in pixels; right and bottom lie outside of it
        int top = 0;
        int right = 0;
        int bottom = 0;
        int line = 0; ///< from the top
    };

    virtual ~TextEngine() = default;

    /// Reads an 8-bit grey picture, dark on white. Ends soon, with nothing, once `cancelled` is
    /// set.
    [[nodiscard]] virtual std::vector<EngineWord> read(const unsigned char* grey, int width,
                                                       int height, int bytesPerLine,
                                                       const std::atomic<bool>& cancelled) = 0;
};

/// The type of the module's only function, named as below. It answers nothing when there is no data
/// for any language.
using TextEngineFactory = TextEngine* (*)();
inline constexpr const char* kTextEngineFactory = "brindlecamTextEngine";

} // namespace brindlecam
