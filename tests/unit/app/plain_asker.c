/* Asks the running copy without any library: what a launcher in C has to do. Without arguments it
 * prints the socket's path and that of the lock, or "nowhere". */
#include "app/InstanceProtocol.h"

static size_t add_field(char* line, size_t length, const char* bytes)
{
    line[length++] = ' ';
    return length + brindlecam_escape(bytes, strlen(bytes), line + length);
}

static int print_paths(void)
{
    char path[BRINDLECAM_PATH_ROOM];
    if (!brindlecam_meeting_path(brindlecam_display(), BRINDLECAM_SOCKET_ENDING, path))
        return puts("nowhere") < 0;
    puts(path);
    if (!brindlecam_meeting_path(brindlecam_display(), BRINDLECAM_LOCK_ENDING, path))
        return 1;
    return puts(path) < 0;
}

int main(int argc, char* argv[])
{
    if (argc < 2)
        return print_paths();

    static char line[BRINDLECAM_LONGEST_LINE];
    char folder[4096];
    size_t length = (size_t)sprintf(line, "%d", (int)BRINDLECAM_PROTOCOL_VERSION);
    for (int i = 1; i < argc; ++i)
        length = add_field(line, length, argv[i]);
    length = add_field(line, length, getcwd(folder, sizeof folder) ? folder : "");
    line[length++] = '\n';

    struct sockaddr_un address;
    memset(&address, 0, sizeof address);
    address.sun_family = AF_UNIX;
    if (!brindlecam_meeting_path(brindlecam_display(), BRINDLECAM_SOCKET_ENDING, address.sun_path))
        return 100;
    const int connection = socket(AF_UNIX, SOCK_STREAM, 0);
    if (connect(connection, (struct sockaddr*)&address, sizeof address) != 0 ||
        write(connection, line, length) != (ssize_t)length)
        return 101;
    FILE* const answer = fdopen(connection, "r");
    int code = 102;
    if (fscanf(answer, "%d", &code) != 1 || fgetc(answer) != '\n')
        return 103;
    for (int byte = fgetc(answer); byte != EOF; byte = fgetc(answer))
        fputc(byte, code == 0 ? stdout : stderr);
    return code;
}
