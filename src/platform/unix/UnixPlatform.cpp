#include "platform/unix/UnixPlatform.h"

#include "platform/unix/TesseractTextRecognizer.h"
#include "platform/unix/UnixQuitSignals.h"

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace brindlecam::UnixPlatform {

namespace {

/// Encoders use buffers as large as the screen. The allocator would learn from the first of them to
/// keep the later ones, once per thread, for good; a fixed limit makes it give each back at once.
void giveLargeBuffersBack()
{
#ifdef __GLIBC__
    constexpr int kLargeBytes = 1024 * 1024;
    mallopt(M_MMAP_THRESHOLD, kLargeBytes);
#endif
}

} // namespace

void prepare()
{
    giveLargeBuffersBack();
}

void offer(PortOffers& offers)
{
    offers.textRecognizer.makers.push_back({"tesseract", "TesseractTextRecognizer",
                                            &Session::hasDesktop,
                                            std::make_unique<TesseractTextRecognizer>});
    offers.quitSignals.makers.push_back(
        {"unix", "UnixQuitSignals", &Session::hasDesktop, std::make_unique<UnixQuitSignals>});
}

} // namespace brindlecam::UnixPlatform
