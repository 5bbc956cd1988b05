#include "platform/linux/SessionBus.h"

#include <QDBusConnection>
#include <QDBusMessage>

#include <sys/stat.h>
#include <unistd.h>

namespace brindlecam::SessionBus {

namespace {

constexpr const char* kVariable = "DBUS_SESSION_BUS_ADDRESS";
// No transport is called so: whoever connects to it fails at once.
constexpr const char* kNowhere = "disabled:";

const auto kBus = QStringLiteral("org.freedesktop.DBus");
const auto kConnection = QStringLiteral("brindlecam asks");
constexpr int kPatienceInMs = 500;

/// A connection of our own for some questions.
class Asker final {
public:
    Asker()
        : m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, kConnection))
    {
    }
    ~Asker() { QDBusConnection::disconnectFromBus(kConnection); }
    Asker(const Asker&) = delete;
    Asker& operator=(const Asker&) = delete;

    /// The answer's one argument; invalid without an answer.
    [[nodiscard]] QVariant ask(const QString& method, const QVariantList& arguments = {}) const
    {
        auto call = QDBusMessage::createMethodCall(kBus, QStringLiteral("/org/freedesktop/DBus"),
                                                   kBus, method);
        call.setArguments(arguments);
        const QDBusMessage reply = m_bus.call(call, QDBus::Block, kPatienceInMs);
        return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0) : QVariant();
    }

private:
    const QDBusConnection m_bus;
};

/// The libraries trust a socket of the user's own only.
bool hasSocketInRuntimeFolder()
{
    const QByteArray folder = qgetenv("XDG_RUNTIME_DIR");
    struct stat found {};
    return !folder.isEmpty() && stat((folder + "/bus").constData(), &found) == 0 &&
           S_ISSOCK(found.st_mode) && found.st_uid == getuid();
}

} // namespace

void neverLaunch()
{
    // An empty address counts as none.
    if (qgetenv(kVariable).isEmpty() && !hasSocketInRuntimeFolder())
        qputenv(kVariable, kNowhere);
}

QProcessEnvironment environmentOfOthers()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    const QString variable = QString::fromLatin1(kVariable);
    if (environment.value(variable) == QLatin1String(kNowhere))
        environment.remove(variable);
    return environment;
}

bool hasName(const QString& name)
{
    const Asker bus;
    return bus.ask(QStringLiteral("NameHasOwner"), {name}).toBool() ||
           bus.ask(QStringLiteral("ListActivatableNames")).toStringList().contains(name);
}

} // namespace brindlecam::SessionBus
