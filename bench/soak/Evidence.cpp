#include "Evidence.h"

#include "Failure.h"
#include "World.h"

#include <QDir>
#include <QFile>

namespace brindlecam::soak::Evidence {

namespace {

void write(const QString& path, const QString& text)
{
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write(text.toUtf8());
}

} // namespace

QString keep(World& world, const Failure& failure, const QString& story)
{
    const QDir folder(qEnvironmentVariable("BRINDLECAM_ARTIFACTS", QDir::currentPath()));
    QDir().mkpath(folder.path());
    const auto named = [&](const char* ending) {
        return folder.filePath(QStringLiteral("seed-%1-step-%2.%3")
                                   .arg(world.chance.seed())
                                   .arg(world.step)
                                   .arg(QString::fromLatin1(ending)));
    };
    world.person.screen().grab().save(named("screen.png"));
    if (!failure.wanted.isNull())
        failure.wanted.save(named("wanted.png"));
    if (!failure.found.isNull())
        failure.found.save(named("found.png"));
    write(named("log"), world.person.program().log());
    write(named("txt"), failure.what + QLatin1Char('\n') + story);
    return named("*");
}

} // namespace brindlecam::soak::Evidence
