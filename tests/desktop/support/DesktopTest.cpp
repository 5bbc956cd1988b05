#include "desktop/support/DesktopTest.h"

#include <QDir>
#include <QFile>

namespace brindlecam::desktop {

void DesktopTest::useDesktop(const DesktopOptions& options)
{
    m_controls.reset();
    m_desktop = Desktop::start(options);
    m_program = std::make_unique<ProgramUnderTest>(*m_desktop);
    if (m_desktop->accessBus())
        m_controls = std::make_unique<Controls>(*m_program, *m_desktop);
}

Controls& DesktopTest::controls()
{
    if (!m_controls)
        qFatal("this desktop is without Accessibility::on");
    return *m_controls;
}

void DesktopTest::cleanup()
{
    if (!m_desktop)
        return;
    if (QTest::currentTestFailed())
        keepArtifacts(); // with the program's windows still there
    if (m_program->isRunning() && m_program->quit() != 0) {
        keepArtifacts();
        QTest::qFail("the program does not quit cleanly", __FILE__, __LINE__);
    }
    m_controls.reset();
    m_program.reset();
    m_desktop.reset();
}

void DesktopTest::keepArtifacts() const
{
    const QString text = m_program->log();
    if (!text.isEmpty())
        qInfo("The program's log:\n%s", qPrintable(text));
    const QString root = qEnvironmentVariable("BRINDLECAM_ARTIFACTS");
    if (root.isEmpty() || !QDir().mkpath(root))
        return;
    QString name = QString::fromLatin1(QTest::currentTestFunction());
    if (const char* row = QTest::currentDataTag())
        name +=
            QLatin1Char('.') + QString::fromLatin1(row).replace(QLatin1Char('/'), QLatin1Char('-'));
    const QDir folder(root);
    m_desktop->screen().grab().save(folder.filePath(name + QLatin1String(".png")));
    QFile log(folder.filePath(name + QLatin1String(".log")));
    if (log.open(QIODevice::WriteOnly))
        log.write(text.toUtf8());
}

} // namespace brindlecam::desktop
