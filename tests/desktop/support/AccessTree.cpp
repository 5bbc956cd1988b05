#include "desktop/support/AccessTree.h"

#include "desktop/support/Patience.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusPendingCall>
#include <QDBusVariant>

#include <optional>
#include <utility>

namespace brindlecam::desktop {

namespace {

constexpr std::uint32_t kPopupMenu = 41; // a role
constexpr std::uint32_t kShowing = 25;   // a state
constexpr uint kOfTheScreen = 0;         // a kind of coordinates

const auto kAccessible = QStringLiteral("org.a11y.atspi.Accessible");
const auto kRoot = QStringLiteral("/org/a11y/atspi/accessible/root");

/// A question that is on its way. Many are asked before the first answer is waited for.
class Question final {
public:
    Question(const AccessBus& bus, const QString& program, const QString& path,
             const QString& interface, const QString& method, const QVariantList& arguments = {})
        : m_call(asked(bus, QDBusMessage::createMethodCall(program, path, interface, method),
                       arguments))
    {
    }

    /// The answer; invalid when there is none, because the object has gone.
    [[nodiscard]] QVariant answer()
    {
        m_call.waitForFinished();
        return m_call.isError() ? QVariant() : m_call.reply().arguments().value(0);
    }

private:
    static QDBusPendingCall asked(const AccessBus& bus, QDBusMessage message,
                                  const QVariantList& arguments)
    {
        message.setArguments(arguments);
        return bus.connection().asyncCall(message, kPatience);
    }

    QDBusPendingCall m_call;
};

/// Asks one program.
class Asker final {
public:
    Asker(const AccessBus& bus, QString program)
        : m_bus(bus)
        , m_program(std::move(program))
    {
    }

    [[nodiscard]] Question states(const QString& path) const { return ask(path, "GetState"); }
    [[nodiscard]] Question role(const QString& path) const { return ask(path, "GetRole"); }
    [[nodiscard]] Question children(const QString& path) const { return ask(path, "GetChildren"); }
    [[nodiscard]] Question name(const QString& path) const
    {
        return {m_bus,
                m_program,
                path,
                QStringLiteral("org.freedesktop.DBus.Properties"),
                QStringLiteral("Get"),
                {kAccessible, QStringLiteral("Name")}};
    }
    [[nodiscard]] Question place(const QString& path) const
    {
        return {m_bus,
                m_program,
                path,
                QStringLiteral("org.a11y.atspi.Component"),
                QStringLiteral("GetExtents"),
                {kOfTheScreen}};
    }

private:
    [[nodiscard]] Question ask(const QString& path, const char* method) const
    {
        return {m_bus, m_program, path, kAccessible, QString::fromLatin1(method)};
    }

    const AccessBus& m_bus;
    const QString m_program;
};

/// From au: 32 states each.
std::uint64_t readStates(const QVariant& answer)
{
    const auto words = qdbus_cast<QList<uint>>(answer);
    return words.size() == 2 ? words.at(0) | static_cast<std::uint64_t>(words.at(1)) << 32U : 0;
}

/// From a(so).
QStringList readPaths(const QVariant& answer)
{
    QStringList paths;
    if (!answer.isValid())
        return paths;
    const auto list = answer.value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd()) {
        QString program;
        QDBusObjectPath path;
        list.beginStructure();
        list >> program >> path;
        list.endStructure();
        paths.append(path.path());
    }
    list.endArray();
    return paths;
}

/// From (iiii).
QRect readPlace(const QVariant& answer)
{
    if (!answer.isValid())
        return {};
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    const auto place = answer.value<QDBusArgument>();
    place.beginStructure();
    place >> x >> y >> width >> height;
    place.endStructure();
    return {x, y, width, height};
}

/// An object and the window that it is in.
struct Place {
    QString path;
    std::optional<std::size_t> window; ///< none: it is one
};

/// Adds those that are shown, and returns what is below them.
std::vector<Place> addShown(const std::vector<Place>& level, const Asker& asker,
                            std::vector<AccessNode>& all)
{
    std::vector<Question> states;
    for (const Place& place : level)
        states.push_back(asker.states(place.path));
    struct Questions {
        Question name;
        Question role;
        Question place;
        Question children;
    };
    std::vector<Questions> questions;
    const std::size_t first = all.size();
    for (std::size_t i = 0; i < level.size(); ++i) {
        AccessNode node;
        node.states = readStates(states.at(i).answer());
        if (!node.is(kShowing))
            continue;
        node.window = level.at(i).window.value_or(all.size());
        all.push_back(node);
        const QString& path = level.at(i).path;
        questions.push_back(
            {asker.name(path), asker.role(path), asker.place(path), asker.children(path)});
    }
    std::vector<Place> below;
    for (std::size_t i = 0; i < questions.size(); ++i) {
        AccessNode& node = all.at(first + i);
        node.name = questions.at(i).name.answer().value<QDBusVariant>().variant().toString();
        node.role = questions.at(i).role.answer().toUInt();
        node.points = readPlace(questions.at(i).place.answer());
        const QStringList children = readPaths(questions.at(i).children.answer());
        for (const QString& path : children)
            below.push_back({path, node.window});
    }
    return below;
}

} // namespace

AccessTree::AccessTree(const AccessBus& bus, qint64 pid)
    : m_bus(bus)
    , m_pid(pid)
{
}

std::vector<AccessNode> AccessTree::shown()
{
    if (m_program.isEmpty())
        m_program = m_bus.nameOf(m_pid);
    if (m_program.isEmpty())
        return {};
    const QStringList roots = windows() + menus();
    std::vector<Place> level;
    level.reserve(static_cast<std::size_t>(roots.size()));
    for (const QString& path : roots)
        level.push_back({path, std::nullopt});
    std::vector<AccessNode> all;
    const Asker asker(m_bus, m_program);
    while (!level.empty())
        level = addShown(level, asker, all);
    return all;
}

QStringList AccessTree::windows() const
{
    return readPaths(Asker(m_bus, m_program).children(kRoot).answer());
}

// Qt counts no menu among its windows, but says when it shows one.
QStringList AccessTree::menus()
{
    const Asker asker(m_bus, m_program);
    const QSet<QString> shown = m_bus.registry().shownBy(m_program);
    std::vector<std::pair<QString, Question>> unknown;
    for (const QString& path : shown) {
        if (!m_menus.contains(path) && !m_others.contains(path))
            unknown.emplace_back(path, asker.role(path));
    }
    for (auto& [path, role] : unknown)
        (role.answer().toUInt() == kPopupMenu ? m_menus : m_others).insert(path);
    QSet<QString> menus = m_menus;
    return menus.intersect(shown).values();
}

} // namespace brindlecam::desktop
