/* Prints the path of the socket and that of the lock, or "nowhere". */
#include "shell/InstanceProtocol.h"

int main(void)
{
    char path[BRINDLECAM_PATH_ROOM];
    if (!brindlecam_meeting_path(brindlecam_display(), BRINDLECAM_SOCKET_ENDING, path))
        return puts("nowhere") < 0;
    puts(path);
    if (!brindlecam_meeting_path(brindlecam_display(), BRINDLECAM_LOCK_ENDING, path))
        return 1;
    return puts(path) < 0;
}
