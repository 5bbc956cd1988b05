#pragma once

#include <QByteArray>
#include <QByteArrayList>

#include <functional>
#include <optional>
#include <variant>

namespace brindlecam {

/// What a later copy of the program asks of the running one. Bytes as the system gave them.
struct InstanceRequest {
    QByteArrayList words; ///< of its command line; none: the program was opened again
    QByteArray folder;    ///< the one it works in; empty where it has none

    bool operator==(const InstanceRequest&) const = default;
};

/// What the later copy ends with.
struct InstanceReply {
    int exitCode = 0;
    QByteArray text = {}; ///< to print, UTF-8, with its line feeds

    bool operator==(const InstanceReply&) const = default;
};

/// What the running copy makes of a request.
struct InstanceAnswer {
    InstanceReply reply;
    /// Does what was asked, once the asker has its reply; not called for one that has left.
    std::function<void()> carryOut = {};
};

/// Requests and replies as shell/InstanceProtocol.h writes them.
namespace InstanceMessages {

[[nodiscard]] QByteArray line(const InstanceRequest& request);
[[nodiscard]] QByteArray bytes(const InstanceReply& reply);

/// A request of a version that is not ours.
struct OtherVersion {};
/// Nothing that a copy of the program says.
struct Nonsense {};

/// Reads one whole line.
[[nodiscard]] std::variant<InstanceRequest, OtherVersion, Nonsense>
readRequest(const QByteArray& line);
/// Reads all that came on one connection; nothing when it is no answer.
[[nodiscard]] std::optional<InstanceReply> readReply(const QByteArray& bytes);

} // namespace InstanceMessages

} // namespace brindlecam
