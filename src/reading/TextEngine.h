#pragma once

#include "reading/StopRequest.h"

#include <optional>
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

    /// Reads an 8-bit grey picture, dark on white. Answers nothing when the engine fails; throws
    /// std::bad_alloc, after which it is of no more use. When `stop` is wanted it ends without
    /// words: soon while it reads words, but while it looks for the lines of a large picture it
    /// does not listen, for minutes perhaps.
    [[nodiscard]] virtual std::optional<std::vector<EngineWord>>
    read(const unsigned char* grey, int width, int height, int bytesPerLine, StopRequest stop) = 0;
};

/// The type of the module's only function, named as below. It answers nothing when there is no data
/// for any language. The number changes with this header, so that a module of another version is
/// not taken for ours.
using TextEngineFactory = TextEngine* (*)();
inline constexpr const char* kTextEngineFactory = "brindlecamTextEngine3";

} // namespace brindlecam
