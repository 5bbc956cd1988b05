#include "shell/InstancePlace.h"

#include "shell/InstanceProtocol.h"

#include <QFile>

#include <array>

namespace brindlecam {

namespace {

QString standardPath(const char* ending)
{
    std::array<char, BRINDLECAM_PATH_ROOM> path{};
    if (brindlecam_meeting_path(brindlecam_display(), ending, path.data()) == 0)
        return {};
    return QFile::decodeName(path.data());
}

} // namespace

InstancePlace InstancePlace::standard()
{
    return {standardPath(BRINDLECAM_SOCKET_ENDING), standardPath(BRINDLECAM_LOCK_ENDING)};
}

} // namespace brindlecam
