#include "platform/linux/text/TextEngineModule.h"

#include "base/Text.h"

#include <QCoreApplication>
#include <QFile>

namespace brindlecam {

QString TextEngineModule::usualPath()
{
    const QString folder = QCoreApplication::applicationDirPath() + QLatin1Char('/');
    QString built = folder + QStringLiteral(BRINDLECAM_OCR_MODULE);
    if (QFile::exists(built))
        return built;
    return folder + QStringLiteral(BRINDLECAM_OCR_FOLDER "/" BRINDLECAM_OCR_MODULE);
}

Result<std::shared_ptr<TextEngineModule>> TextEngineModule::load(const QString& path)
{
    if (!QFile::exists(path))
        return Error{text("falta el módulo brindlecam_ocr")};
    const std::shared_ptr<TextEngineModule> module(new TextEngineModule(path));
    const auto make =
        reinterpret_cast<TextEngineFactory>(module->m_library.resolve(kTextEngineFactory));
    if (!make)
        return Error{text("falta la biblioteca libtesseract5")};
    module->m_engine.reset(make());
    if (!module->m_engine)
        return Error{text("faltan los datos de idioma (tesseract-ocr-spa o tesseract-ocr-eng)")};
    return module;
}

TextEngineModule::TextEngineModule(const QString& path)
    : m_library(path)
{
}

TextEngineModule::~TextEngineModule()
{
    m_engine.reset();
    m_library.unload();
}

} // namespace brindlecam
