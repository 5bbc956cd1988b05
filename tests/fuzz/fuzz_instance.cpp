#include "Asker.h"
#include "FuzzInput.h"
#include "FuzzTarget.h"
#include "Promise.h"
#include "shell/InstanceMessages.h"
#include "shell/InstanceProtocol.h"
#include "shell/InstanceServer.h"

#include <QTemporaryDir>

#include <array>
#include <chrono>
#include <functional>
#include <optional>
#include <string_view>
#include <variant>
#include <vector>

namespace brindlecam {

namespace {

constexpr int kMostWords = 4;
constexpr int kMostBytes = 80;
constexpr int kMostPieces = 4;
constexpr int kMostBeyondALine = 9;
constexpr std::chrono::minutes kEndless{10};

/// What programs say, whole and in halves, so that stories get beyond the first field.
constexpr std::array<std::string_view, 10> kSayings{"1 area %2Fhome\n",
                                                    "1 \n",
                                                    "1 ",
                                                    "area ",
                                                    "%2F",
                                                    "\n",
                                                    "2 area %2F\n",
                                                    "01 area %2F\n",
                                                    "1\n",
                                                    "fullScreen --livetest "};

QByteArray saying(fuzz::FuzzInput& input)
{
    if (input.flag())
        return input.bytes(kMostBytes);
    const std::string_view chosen = input.oneOf(kSayings);
    return {chosen.data(), static_cast<qsizetype>(chosen.size())};
}

QByteArray withoutNul(const QByteArray& bytes)
{
    return bytes.left(bytes.indexOf('\0') < 0 ? bytes.size() : bytes.indexOf('\0'));
}

// What is read has one form only, so that it is written as it was read.
void readAnything(fuzz::FuzzInput& input)
{
    QByteArray bytes;
    while (!input.isSpent())
        bytes += saying(input);
    const auto read = InstanceMessages::readRequest(bytes);
    if (const auto* request = std::get_if<InstanceRequest>(&read))
        BRINDLECAM_PROMISE(InstanceMessages::line(*request) == bytes);
    if (const auto reply = InstanceMessages::readReply(bytes))
        BRINDLECAM_PROMISE(InstanceMessages::bytes(*reply) == bytes);
}

// What is written is read as it was.
void writeAnything(fuzz::FuzzInput& input)
{
    InstanceRequest request;
    for (int left = input.integer(0, kMostWords); left > 0; --left)
        request.words << input.bytes(kMostBytes);
    request.folder = input.bytes(kMostBytes);
    const QByteArray line = InstanceMessages::line(request);
    const auto read = InstanceMessages::readRequest(line);
    BRINDLECAM_PROMISE(std::holds_alternative<InstanceRequest>(read));
    BRINDLECAM_PROMISE(std::get<InstanceRequest>(read) == request);
    BRINDLECAM_PROMISE(line.count('\n') == 1 && line.count(' ') == request.words.size() + 1);

    constexpr int kMostCode = 255;
    const int code = input.integer(0, kMostCode);
    const InstanceReply reply{code, input.rest()};
    BRINDLECAM_PROMISE(InstanceMessages::readReply(InstanceMessages::bytes(reply)) == reply);
}

QByteArray displayId(const QByteArray& display)
{
    std::array<char, BRINDLECAM_DISPLAY_ID_ROOM> id{};
    brindlecam_display_id(display.constData(), id.data());
    return id.data();
}

// Every display has a file name of its own, whichever screen of it is meant.
void nameDisplays(fuzz::FuzzInput& input)
{
    const QByteArray display = withoutNul(input.bytes(kMostBytes));
    const QByteArray id = displayId(display);
    BRINDLECAM_PROMISE(!id.contains('/') && id.size() < BRINDLECAM_DISPLAY_ID_ROOM);
    if (display.startsWith(':'))
        BRINDLECAM_PROMISE(displayId("unix" + display) == id);
    const QByteArray number = ':' + QByteArray::number(input.integer(0, UINT16_MAX));
    BRINDLECAM_PROMISE(displayId(display + number + ".3") == displayId(display + number));

    const QByteArray folder = '/' + withoutNul(input.rest());
    const QByteArray wanted = folder + "/brindlecam-" + id + BRINDLECAM_LOCK_ENDING;
    const QByteArray longest = folder + "/brindlecam-" + id + BRINDLECAM_SOCKET_ENDING;
    std::array<char, BRINDLECAM_PATH_ROOM> path{};
    const bool fits = brindlecam_path_in(folder.constData(), display.constData(),
                                         BRINDLECAM_LOCK_ENDING, path.data()) != 0;
    BRINDLECAM_PROMISE(fits == (longest.size() < BRINDLECAM_PATH_ROOM));
    BRINDLECAM_PROMISE(!fits || wanted == path.data());
}

/// A running copy that answers every request alike and notes what it is asked.
struct Running {
    InstanceReply reply;
    std::function<void()> onAsked;
    std::vector<InstanceRequest> asked;
    int carriedOut = 0;
    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("socket"));
    InstanceServer server{[this](const InstanceRequest& request) { return answer(request); },
                          kEndless};

    InstanceAnswer answer(const InstanceRequest& request)
    {
        asked.push_back(request);
        if (onAsked)
            onAsked();
        return {reply, [this] { ++carriedOut; }};
    }
};

/// What a copy makes of all that it is sent, however it is cut.
struct Expected {
    std::optional<InstanceRequest> request;
    bool otherVersion = false;

    explicit Expected(const QByteArray& sent)
    {
        const qsizetype end = sent.indexOf('\n');
        if (end < 0 || end >= BRINDLECAM_LONGEST_LINE)
            return;
        const auto read = InstanceMessages::readRequest(sent.left(end + 1));
        otherVersion = std::holds_alternative<InstanceMessages::OtherVersion>(read);
        if (const auto* ours = std::get_if<InstanceRequest>(&read))
            request = *ours;
    }
};

QByteArray longPiece(fuzz::FuzzInput& input)
{
    const int beyond = input.integer(-kMostBeyondALine, kMostBeyondALine);
    return "1 " + QByteArray(BRINDLECAM_LONGEST_LINE - 2 + beyond, 'a') + '\n';
}

void checkAnswered(const Running& running, const fuzz::Asker& asker, const QByteArray& sent)
{
    const Expected expected(sent);
    const bool whole = sent.contains('\n') || sent.size() >= BRINDLECAM_LONGEST_LINE;
    BRINDLECAM_PROMISE(asker.isHungUpOn() == whole);
    BRINDLECAM_PROMISE(running.asked.size() == (expected.request ? 1U : 0U));
    BRINDLECAM_PROMISE(running.carriedOut == (expected.request ? 1 : 0));
    if (expected.request) {
        BRINDLECAM_PROMISE(running.asked.front() == *expected.request);
        BRINDLECAM_PROMISE(asker.heard() == InstanceMessages::bytes(running.reply));
    } else if (expected.otherVersion) {
        constexpr int kOtherVersion = 5;
        const auto reply = InstanceMessages::readReply(asker.heard());
        BRINDLECAM_PROMISE(reply && reply->exitCode == kOtherVersion && !reply->text.isEmpty());
    } else {
        BRINDLECAM_PROMISE(asker.heard().isEmpty());
    }
}

enum class Ending { stays, leaves, leavesWhenAsked, hangsUp };

void endEarly(Ending ending, Running& running, fuzz::Asker& asker, const QByteArray& sent)
{
    const std::size_t askedBefore = running.asked.size();
    const int carriedOutBefore = running.carriedOut;
    switch (ending) {
    case Ending::stays:
        break;
    case Ending::leaves:
        asker.leave();
        break;
    case Ending::leavesWhenAsked:
        running.onAsked = [&asker] { asker.leave(); };
        break;
    case Ending::hangsUp:
        running.server.hangUp();
        break;
    }
    fuzz::settle();
    BRINDLECAM_PROMISE(running.carriedOut == carriedOutBefore);
    if (ending != Ending::leavesWhenAsked) {
        BRINDLECAM_PROMISE(running.asked.size() == askedBefore);
        return;
    }
    BRINDLECAM_PROMISE(running.asked.size() == (Expected(sent).request ? 1U : 0U));
}

// A copy and somebody who speaks to it, in pieces, and may leave.
void converse(fuzz::FuzzInput& input)
{
    Running running;
    running.reply.exitCode = input.integer(0, UINT8_MAX);
    running.reply.text = input.bytes(kMostBytes);
    const auto ending = static_cast<Ending>(input.integer(0, 3));
    BRINDLECAM_PROMISE(running.server.listen(running.path));
    fuzz::Asker asker(running.path);
    QByteArray sent;
    for (int left = input.integer(1, kMostPieces); left > 0; --left) {
        const bool isLong = sent.isEmpty() && input.oneIn(16);
        sent += asker.send(isLong ? longPiece(input) : saying(input));
        if (left > 1 && input.flag())
            fuzz::settle();
    }
    if (ending != Ending::stays)
        return endEarly(ending, running, asker, sent);
    fuzz::settle();
    checkAnswered(running, asker, sent);
}

} // namespace

} // namespace brindlecam

/// Copies of the program that meet: their messages, their names, and one that is spoken to.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace brindlecam;
    fuzz::FuzzInput input(data, size);
    enum class Kind { reading, writing, naming, conversation };
    switch (static_cast<Kind>(input.integer(0, 3))) {
    case Kind::reading:
        readAnything(input);
        break;
    case Kind::writing:
        writeAnything(input);
        break;
    case Kind::naming:
        nameDisplays(input);
        break;
    case Kind::conversation:
        converse(input);
        break;
    }
    return 0;
}
