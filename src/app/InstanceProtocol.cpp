#include "app/InstanceProtocol.h"

namespace brindlecam::InstanceProtocol {

namespace {

const QByteArray kReopen = QByteArrayLiteral("reopen\n");
const QByteArray kPerformed = QByteArrayLiteral("ok\n");
const QByteArray kUnavailable = QByteArrayLiteral("unavailable\n");

} // namespace

QByteArray line(const InstanceRequest& request)
{
    return request.action ? rawValue(*request.action).toLatin1() + '\n' : kReopen;
}

QByteArray line(InstanceReply reply)
{
    return reply == InstanceReply::performed ? kPerformed : kUnavailable;
}

std::optional<InstanceRequest> readRequest(const QByteArray& line)
{
    if (line == kReopen)
        return InstanceRequest{};
    for (const CaptureAction action : kAllCaptureActions) {
        const InstanceRequest request{action};
        if (line == InstanceProtocol::line(request))
            return request;
    }
    return std::nullopt;
}

std::optional<InstanceReply> readReply(const QByteArray& line)
{
    if (line == kPerformed)
        return InstanceReply::performed;
    if (line == kUnavailable)
        return InstanceReply::unavailable;
    return std::nullopt;
}

} // namespace brindlecam::InstanceProtocol
