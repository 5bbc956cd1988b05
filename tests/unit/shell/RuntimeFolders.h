#pragma once

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

namespace brindlecam::test {

/// How a process ended.
struct Ended {
    int exitCode = -1; ///< -1: it never ended, or a signal ended it
    QString output;
    QString error;
};

/// Folders of a test's own for runtime and temporary files, and processes that know no others.
class RuntimeFolders final {
public:
    RuntimeFolders()
    {
        QVERIFY(QDir(m_root.path()).mkpath(QStringLiteral("tmp")));
        makeFolder(runtime(), 0700);
        set("XDG_RUNTIME_DIR", runtime());
        set("TMPDIR", temporary());
        set("DISPLAY", QStringLiteral(":1"));
    }

    [[nodiscard]] QString runtime() const { return m_root.filePath(QStringLiteral("run")); }
    [[nodiscard]] QString temporary() const { return m_root.filePath(QStringLiteral("tmp")); }
    /// What takes the place of a runtime folder that will not do.
    [[nodiscard]] QString fallback() const
    {
        return QStringLiteral("%1/brindlecam-%2").arg(temporary()).arg(::geteuid());
    }
    /// Where the copy on the display ":1" listens.
    [[nodiscard]] QString socket() const
    {
        return runtime() + QStringLiteral("/brindlecam-:1.socket");
    }
    void set(const char* name, const QString& value)
    {
        m_environment.insert(QString::fromLatin1(name), value);
    }
    void unset(const char* name) { m_environment.remove(QString::fromLatin1(name)); }

    static void makeFolder(const QString& path, mode_t mode)
    {
        QVERIFY(QDir().mkpath(path));
        QCOMPARE(::chmod(QFile::encodeName(path).constData(), mode), 0);
    }

    /// Runs a program to its end. Meanwhile this process goes on: it may be the one that is asked.
    [[nodiscard]] Ended run(const QString& program, const QStringList& words = {}) const
    {
        constexpr int kPatience = 20000; // ms; generous for a busy machine
        QProcess process;
        process.setProcessEnvironment(m_environment);
        process.start(program, words);
        const bool ended =
            QTest::qWaitFor([&] { return process.state() == QProcess::NotRunning; }, kPatience);
        const bool whole = ended && process.exitStatus() == QProcess::NormalExit;
        return {whole ? process.exitCode() : -1, QString::fromUtf8(process.readAllStandardOutput()),
                QString::fromUtf8(process.readAllStandardError())};
    }

private:
    QTemporaryDir m_root;
    QProcessEnvironment m_environment = QProcessEnvironment::systemEnvironment();
};

} // namespace brindlecam::test
