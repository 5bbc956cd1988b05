// A copy of the program as far as tst_singleinstance needs one. Arguments: the action ("reopen" for
// none) and the milliseconds it takes to start. Says "first", "performed", "unavailable" or
// "unanswered" on stdout; as the first copy it then notes its own request and all that come in, one
// line each, until it is killed. "recents" is what it can't do.
#include "app/SingleInstance.h"

#include <QCoreApplication>
#include <QTextStream>
#include <QTimer>

#include <chrono>
#include <cstdio>

using namespace brindlecam;

namespace {

void say(const QString& word)
{
    QTextStream(stdout) << word << Qt::endl;
}

InstanceReply perform(const InstanceRequest& request)
{
    say(QString::fromLatin1(InstanceProtocol::line(request)).trimmed());
    return request.action == CaptureAction::recents ? InstanceReply::unavailable
                                                    : InstanceReply::performed;
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc != 3)
        return 64;
    const InstanceRequest request{captureAction(QString::fromLocal8Bit(argv[1]))};
    SingleInstance instance;
    switch (instance.handOver(request)) {
    case SingleInstance::Outcome::performed:
        say(QStringLiteral("performed"));
        return 0;
    case SingleInstance::Outcome::unavailable:
        say(QStringLiteral("unavailable"));
        return 3;
    case SingleInstance::Outcome::unanswered:
        say(QStringLiteral("unanswered"));
        return 1;
    case SingleInstance::Outcome::first:
        break;
    }
    say(QStringLiteral("first"));
    QCoreApplication application(argc, argv);
    QTimer::singleShot(std::chrono::milliseconds(std::atoi(argv[2])), &application, [&] {
        perform(request);
        if (!instance.listen(perform))
            QCoreApplication::exit(5);
    });
    QTimer::singleShot(std::chrono::seconds(60), &application, &QCoreApplication::quit);
    return QCoreApplication::exec();
}
