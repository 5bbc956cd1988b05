#pragma once

#include "base/Result.h"
#include "reading/TextEngine.h"

#include <QString>

#include <memory>

namespace brindlecam {

/// The module with the engine, loaded, and one engine out of it; both go with the object. Made,
/// used and destroyed on one thread.
class TextEngineModule final {
public:
    /// Where the module is: beside the program as it is built, in its library folder once
    /// installed.
    [[nodiscard]] static QString usualPath();

    /// The same for a program in this folder.
    [[nodiscard]] static QString usualPath(const QString& programFolder);

    /// Loads module and models, which takes a tenth of a second and more. Fails when the module,
    /// a library it needs or the data of all languages are missing, or when the module is damaged
    /// or another version's; the error says which.
    [[nodiscard]] static Result<std::shared_ptr<TextEngineModule>> load(const QString& path);

    [[nodiscard]] TextEngine& engine() { return *m_engine; }

private:
    struct Closer {
        void operator()(void* library) const;
    };

    explicit TextEngineModule(void* library);

    // Not QLibrary, whose count of users is wrong when several threads have the same module: Qt
    // (6.4 and 6.11, QLibraryPrivate::load) counts outside of the lock under which it loads.
    std::unique_ptr<void, Closer> m_library;
    std::unique_ptr<TextEngine> m_engine; ///< its code is the library's
};

} // namespace brindlecam
