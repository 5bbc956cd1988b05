// An engine that does what BRINDLECAM_FAULT says: fails, throws, throws-memory, deaf (does not hear
// that its reading is given up), endless (hears that, and nothing else ends it), or nothing: then
// it reads the word "hola".
#include "reading/TextEngine.h"

#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <new>
#include <string>

namespace {

std::atomic<int> begun = 0;
std::atomic<int> freed = 0;
std::atomic<int> deaf = 0;
std::atomic<bool> gone = false;

/// Stands for the globals of a library, which a reading uses all the time.
struct Globals {
    ~Globals()
    {
        gone = true;
        // Long enough for a reading to notice.
        for (int i = 0; i < 1000 && deaf > 0; ++i)
            ::usleep(1000);
    }
} globals;

class FaultyEngine final : public brindlecam::TextEngine {
public:
    std::optional<std::vector<EngineWord>> read(const unsigned char* /*grey*/, int width,
                                                int height, int /*bytesPerLine*/,
                                                brindlecam::StopRequest stop) override
    {
        const char* const set = std::getenv("BRINDLECAM_FAULT");
        const std::string fault = set ? set : "";
        const int freedBefore = freed;
        ++begun;
        if (fault == "fails")
            return std::nullopt;
        if (fault == "throws")
            throw 1;
        if (fault == "throws-memory")
            throw std::bad_alloc();
        if (fault == "deaf")
            waitUntilFreed(freedBefore);
        if (fault == "endless")
            waitUntil(stop);
        EngineWord word;
        word.utf8 = "hola";
        word.confidence = 99;
        word.right = width;
        word.bottom = height;
        return std::vector<EngineWord>{word};
    }

private:
    static void waitUntilFreed(int freedBefore)
    {
        ++deaf;
        while (freed == freedBefore) {
            if (gone)
                std::abort();
            ::usleep(1000);
        }
        --deaf;
    }
    static void waitUntil(brindlecam::StopRequest stop)
    {
        while (!stop.isThere())
            ::usleep(1000);
    }
};

} // namespace

extern "C" {

__attribute__((visibility("default"))) brindlecam::TextEngine* brindlecamTextEngine3()
{
    return new FaultyEngine;
}

/// Readings begun so far.
__attribute__((visibility("default"))) int faultyEngineBegun()
{
    return begun;
}

/// Lets the deaf readings end.
__attribute__((visibility("default"))) void faultyEngineFree()
{
    ++freed;
}
}
