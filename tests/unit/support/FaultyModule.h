#pragma once

#include <QByteArray>
#include <QString>

#include <dlfcn.h>

namespace brindlecam::test {

/// The engine with faults. What it counts starts anew with each test.
class FaultyModule final {
public:
    static constexpr const char* kVariable = "BRINDLECAM_FAULT"; ///< says what a reading does

    FaultyModule()
        : m_library(::dlopen(BRINDLECAM_FAULTY_ENGINE, RTLD_NOW))
        , m_before(begun())
    {
    }
    ~FaultyModule()
    {
        qunsetenv(kVariable);
        free();
        ::dlclose(m_library);
    }
    FaultyModule(const FaultyModule&) = delete;
    FaultyModule& operator=(const FaultyModule&) = delete;

    static QString path() { return QStringLiteral(BRINDLECAM_FAULTY_ENGINE); }

    /// What the readings from now on do.
    static void set(const QByteArray& fault) { qputenv(kVariable, fault); }

    [[nodiscard]] int readings() { return begun() - m_before; }
    void free() { reinterpret_cast<void (*)()>(::dlsym(m_library, "faultyEngineFree"))(); }

private:
    int begun() { return reinterpret_cast<int (*)()>(::dlsym(m_library, "faultyEngineBegun"))(); }

    void* const m_library;
    const int m_before;
};

} // namespace brindlecam::test
