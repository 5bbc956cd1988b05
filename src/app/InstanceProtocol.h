#pragma once

#include "app/CaptureAction.h"

#include <QByteArray>

#include <optional>

namespace brindlecam {

/// What a second copy of the program asks of the running one: an action at once, or, without one,
/// the same as opening the program again.
struct InstanceRequest {
    std::optional<CaptureAction> action;

    bool operator==(const InstanceRequest&) const = default;
};

enum class InstanceReply { performed, unavailable };

/// The words two copies exchange: one line each way, ended by a line feed.
namespace InstanceProtocol {

/// Nobody of ours sends a longer line, its end included.
inline constexpr qsizetype kLongestLine = 64;

[[nodiscard]] QByteArray line(const InstanceRequest& request);
[[nodiscard]] QByteArray line(InstanceReply reply);

/// Each reads one whole line; nothing when it says something else.
[[nodiscard]] std::optional<InstanceRequest> readRequest(const QByteArray& line);
[[nodiscard]] std::optional<InstanceReply> readReply(const QByteArray& line);

} // namespace InstanceProtocol

} // namespace brindlecam
