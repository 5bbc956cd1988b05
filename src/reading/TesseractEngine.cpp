#include "reading/TesseractEngine.h"

#include <tesseract/baseapi.h>
#include <tesseract/ocrclass.h>
#include <tesseract/resultiterator.h>

#include <dlfcn.h>

namespace brindlecam {

namespace {

constexpr const char* kLanguages = "spa+eng";
constexpr int kScreenResolution = 150; ///< dots per inch; spares the engine a guess and a message

bool isStopped(void* stop, int /*words*/)
{
    return static_cast<const StopRequest*>(stop)->isThere();
}

/// Several threads per line mostly wait for each other: four times the work for no gain. Nothing
/// but this call, on the very thread that reads, keeps the library from starting them; where it was
/// built without OpenMP, there is nothing to call.
void readInOneThread()
{
    using SetLevels = void (*)(int);
    if (const auto setLevels =
            reinterpret_cast<SetLevels>(::dlsym(RTLD_DEFAULT, "omp_set_max_active_levels")))
        setLevels(0);
}

} // namespace

std::unique_ptr<TesseractEngine> TesseractEngine::open()
{
    readInOneThread();
    auto api = std::make_unique<tesseract::TessBaseAPI>();
    // Before anything else: a missing language is told by the result, not on the error stream.
    api->SetVariable("debug_file", "/dev/null");
    if (api->Init(nullptr, kLanguages, tesseract::OEM_LSTM_ONLY) != 0)
        return nullptr;
    api->SetPageSegMode(tesseract::PSM_SINGLE_BLOCK);
    return std::unique_ptr<TesseractEngine>(new TesseractEngine(std::move(api)));
}

TesseractEngine::TesseractEngine(std::unique_ptr<tesseract::TessBaseAPI> api)
    : m_api(std::move(api))
{
}

TesseractEngine::~TesseractEngine()
{
    m_api->End();
    tesseract::TessBaseAPI::ClearPersistentCache();
}

std::optional<std::vector<TextEngine::EngineWord>> TesseractEngine::read(const unsigned char* grey,
                                                                         int width, int height,
                                                                         int bytesPerLine,
                                                                         StopRequest stop)
{
    m_api->SetImage(grey, width, height, 1, bytesPerLine);
    m_api->SetSourceResolution(kScreenResolution);
    tesseract::ETEXT_DESC monitor;
    monitor.cancel = isStopped;
    monitor.cancel_this = &stop;
    const bool read = m_api->Recognize(&monitor) == 0;
    std::optional<std::vector<EngineWord>> result;
    if (stop.isThere())
        result.emplace();
    else if (read)
        result = words();
    m_api->Clear();
    return result;
}

std::vector<TextEngine::EngineWord> TesseractEngine::words() const
{
    std::vector<EngineWord> result;
    const std::unique_ptr<tesseract::ResultIterator> at(m_api->GetIterator());
    if (!at)
        return result;
    int line = -1;
    do {
        if (at->IsAtBeginningOf(tesseract::RIL_TEXTLINE))
            ++line;
        const std::unique_ptr<char[]> text(at->GetUTF8Text(tesseract::RIL_WORD));
        EngineWord word{.utf8 = text ? text.get() : "",
                        .confidence = at->Confidence(tesseract::RIL_WORD),
                        .line = line};
        if (!word.utf8.empty() &&
            at->BoundingBox(tesseract::RIL_WORD, &word.left, &word.top, &word.right, &word.bottom))
            result.push_back(std::move(word));
    } while (at->Next(tesseract::RIL_WORD));
    return result;
}

} // namespace brindlecam

extern "C" __attribute__((visibility("default"))) brindlecam::TextEngine* brindlecamTextEngine3()
{
    return brindlecam::TesseractEngine::open().release();
}
