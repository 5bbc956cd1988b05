// A copy of the program as far as tst_singleinstance needs one. Arguments: the milliseconds it
// takes to start, and the words of its command line. Says "first" on stdout, or what it was
// replied, with the reply's exit code, or "unanswered". As the first copy it notes its own words
// once it listens, then those of every request, one line each ("reopen" for none), until it is
// killed. "recents" is what it can't do.
#include "base/Overloaded.h"
#include "shell/SingleInstance.h"

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

void note(const QByteArrayList& words)
{
    say(QString::fromUtf8(words.isEmpty() ? QByteArray("reopen") : words.join(' ')));
}

InstanceAnswer answer(const InstanceRequest& request)
{
    const auto carryOut = [words = request.words] { note(words); };
    if (request.words.contains("recents"))
        return {{3, "unavailable"}, carryOut};
    return {{0, "performed"}, carryOut};
}

int runFirst(int argc, char* argv[], const InstanceRequest& request, SingleInstance& instance)
{
    say(QStringLiteral("first"));
    QCoreApplication application(argc, argv);
    QTimer::singleShot(std::chrono::milliseconds(std::atoi(argv[1])), &application, [&] {
        if (!instance.listen(answer))
            QCoreApplication::exit(5);
        note(request.words);
    });
    QTimer::singleShot(std::chrono::seconds(60), &application, &QCoreApplication::quit);
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc < 2)
        return 64;
    InstanceRequest request;
    for (int i = 2; i < argc; ++i)
        request.words << argv[i];
    SingleInstance instance;
    return std::visit(
        Overloaded{
            [&](SingleInstance::First) { return runFirst(argc, argv, request, instance); },
            [](const InstanceReply& reply) {
                say(QString::fromUtf8(reply.text));
                return reply.exitCode;
            },
            [](SingleInstance::Unanswered) {
                say(QStringLiteral("unanswered"));
                return 1;
            },
        },
        instance.handOver(request));
}
