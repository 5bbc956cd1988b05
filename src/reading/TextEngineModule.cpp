#include "reading/TextEngineModule.h"

#include "base/Text.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <dlfcn.h>

namespace brindlecam {

namespace {

/// Why the module could not be used. The system's own words come in the user's language, so only
/// their form counts: a library that was not found stands in front, without a folder; whatever is
/// wrong with one that was found follows its path.
Error whyUnusable(const QString& words)
{
    static const QRegularExpression missing(QStringLiteral(R"(^([^\s/:]+): )"));
    const QRegularExpressionMatch found = missing.match(words);
    if (found.hasMatch())
        return {text("falta la biblioteca %1").arg(found.captured(1))};
    return {text("el módulo brindlecam_ocr está dañado o es de otra versión")};
}

} // namespace

QString TextEngineModule::usualPath()
{
    return usualPath(QCoreApplication::applicationDirPath());
}

QString TextEngineModule::usualPath(const QString& programFolder)
{
    const QString folder = programFolder + QLatin1Char('/');
    QString built = folder + QStringLiteral(BRINDLECAM_OCR_MODULE);
    if (QFile::exists(built))
        return built;
    return folder + QStringLiteral(BRINDLECAM_OCR_FOLDER "/" BRINDLECAM_OCR_MODULE);
}

Result<std::shared_ptr<TextEngineModule>> TextEngineModule::load(const QString& path)
{
    if (!QFile::exists(path))
        return Error{text("falta el módulo brindlecam_ocr")};
    const QByteArray file = QFile::encodeName(QFileInfo(path).absoluteFilePath());
    // All it needs is looked up now: later, what is missing would end the program.
    const std::shared_ptr<TextEngineModule> module(
        new TextEngineModule(::dlopen(file.constData(), RTLD_NOW | RTLD_LOCAL)));
    if (!module->m_library)
        return whyUnusable(QString::fromLocal8Bit(::dlerror()));
    const auto make =
        reinterpret_cast<TextEngineFactory>(::dlsym(module->m_library.get(), kTextEngineFactory));
    if (!make)
        return whyUnusable(QString());
    module->m_engine.reset(make());
    if (!module->m_engine)
        return Error{text("faltan los datos de idioma (tesseract-ocr-spa o tesseract-ocr-eng)")};
    return module;
}

TextEngineModule::TextEngineModule(void* library)
    : m_library(library)
{
}

void TextEngineModule::Closer::operator()(void* library) const
{
    ::dlclose(library);
}

} // namespace brindlecam
