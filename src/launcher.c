/*
 * What a command starts. It hands the command over to the running copy, with no library but C's:
 * the program itself would first load dozens. Whatever is not settled that way is the program's
 * business, and it becomes the program; but only as long as nothing was said, so that nothing is
 * done twice.
 */
#include "shell/InstanceProtocol.h"

#include <errno.h>
#include <limits.h>
#include <sys/time.h>
#include <time.h>

/* A request that nobody answers ends like the program itself. */
static const char unanswered_text[] = "Brindlecam ya está abierto, pero no responde.\n";
static const int unanswered_code = 1;
static const int no_program_code = 127; /* the shell's for a program it can't find */

struct text {
    char* bytes;
    size_t length;
};

static long long now_in_ms(void)
{
    struct timespec now;
    clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec * 1000LL + now.tv_nsec / 1000000;
}

/* False when it does not fit. */
static int add_field(struct text* request, const char* bytes)
{
    const size_t length = strlen(bytes);
    if (request->length + 3 * length + 2 > BRINDLECAM_LONGEST_LINE)
        return 0;
    request->bytes[request->length++] = ' ';
    request->length += brindlecam_escape(bytes, length, request->bytes + request->length);
    return 1;
}

/* The request for these words; false for one that we leave to the program. */
static int write_request(char* const words[], struct text* request)
{
    static char line[BRINDLECAM_LONGEST_LINE];
    char folder[PATH_MAX];
    request->bytes = line;
    request->length = (size_t)sprintf(line, "%d", (int)BRINDLECAM_PROTOCOL_VERSION);
    for (; *words != NULL; ++words) {
        /* Options may name another display, or ask this program and not the running one. */
        if (**words == '-' || !add_field(request, *words))
            return 0;
    }
    if (getcwd(folder, sizeof folder) == NULL) {
        if (errno != ENOENT)
            return 0;
        folder[0] = '\0';
    }
    if (!add_field(request, folder))
        return 0;
    line[request->length++] = '\n';
    return 1;
}

/* How long one step may still take. Zero would mean for ever. */
static void set_patience(int connection, int step, long long deadline)
{
    const long long left = deadline - now_in_ms();
    struct timeval patience = {0, 1000};
    if (left > 0) {
        patience.tv_sec = (time_t)(left / 1000);
        patience.tv_usec = (suseconds_t)(left % 1000 * 1000);
    }
    setsockopt(connection, SOL_SOCKET, step, &patience, sizeof patience);
}

/* Less than 0: there is nobody to speak to, or with `busy` set nobody who takes the connection. */
static int connect_to_running_copy(long long deadline, int* busy)
{
    struct sockaddr_un address;
    memset(&address, 0, sizeof address);
    address.sun_family = AF_UNIX;
    if (!brindlecam_meeting_path(brindlecam_display(), BRINDLECAM_SOCKET_ENDING, address.sun_path))
        return -1;
    const int connection = socket(AF_UNIX, SOCK_STREAM, 0);
    if (connection < 0)
        return -1;
    set_patience(connection, SO_SNDTIMEO, deadline);
    if (connect(connection, (struct sockaddr*)&address, sizeof address) == 0)
        return connection;
    *busy = errno == EAGAIN;
    close(connection);
    return -1;
}

/* How much of it was written. */
static size_t say(int connection, const struct text* request, long long deadline)
{
    size_t written = 0;
    while (written < request->length && now_in_ms() < deadline) {
        set_patience(connection, SO_SNDTIMEO, deadline);
        const ssize_t more =
            send(connection, request->bytes + written, request->length - written, MSG_NOSIGNAL);
        if (more >= 0)
            written += (size_t)more;
        else if (errno != EINTR)
            break;
    }
    return written;
}

/* All that is said up to the end of the connection; false when that does not come in time. */
static int hear(int connection, struct text* answer, long long deadline)
{
    static char bytes[BRINDLECAM_LONGEST_ANSWER + 1];
    answer->bytes = bytes;
    answer->length = 0;
    while (answer->length < sizeof bytes && now_in_ms() < deadline) {
        set_patience(connection, SO_RCVTIMEO, deadline);
        const ssize_t more =
            recv(connection, bytes + answer->length, sizeof bytes - answer->length, 0);
        if (more == 0)
            return 1;
        if (more > 0)
            answer->length += (size_t)more;
        else if (errno != EINTR)
            return 0;
    }
    return 0;
}

/* Takes the code off the answer's front; less than 0 when it is none. */
static int take_code(struct text* answer)
{
    const char* const end = memchr(answer->bytes, '\n', answer->length);
    const size_t digits = end != NULL ? (size_t)(end - answer->bytes) : 0;
    if (digits == 0 || digits > 9 || (answer->bytes[0] == '0' && digits > 1))
        return -1;
    int code = 0;
    for (size_t i = 0; i < digits; ++i) {
        if (answer->bytes[i] < '0' || answer->bytes[i] > '9')
            return -1;
        code = 10 * code + (answer->bytes[i] - '0');
    }
    if (code > BRINDLECAM_LARGEST_CODE)
        return -1;
    answer->bytes += digits + 1;
    answer->length -= digits + 1;
    return code;
}

static int complain(void)
{
    fputs(unanswered_text, stderr);
    return unanswered_code;
}

/* The exit code, once the running copy has been told; less than 0 when it has not. */
static int hand_over(char* const words[])
{
    struct text request;
    if (!write_request(words, &request))
        return -1;
    const long long deadline = now_in_ms() + BRINDLECAM_ANSWER_PATIENCE;
    int busy = 0;
    const int connection = connect_to_running_copy(deadline, &busy);
    if (connection < 0)
        return busy ? complain() : -1;
    struct text answer = {NULL, 0};
    const size_t written = say(connection, &request, deadline);
    const int whole = written == request.length && hear(connection, &answer, deadline);
    /* First: where a standard stream was closed it has that stream's number. */
    close(connection);
    if (written == 0)
        return -1;
    const int code = whole ? take_code(&answer) : -1;
    if (code < 0)
        return complain();
    fwrite(answer.bytes, 1, answer.length, code == 0 ? stdout : stderr);
    return code;
}

/* Where the program is; an empty path when we don't know where we are ourselves. */
static void find_program(char path[PATH_MAX])
{
    const size_t room = PATH_MAX - sizeof BRINDLECAM_PROGRAM;
    const ssize_t length = readlink("/proc/self/exe", path, room);
    path[length > 0 && (size_t)length < room ? length : 0] = '\0';
    char* const slash = strrchr(path, '/');
    if (slash != NULL)
        strcpy(slash + 1, BRINDLECAM_PROGRAM);
}

/* Returns only when that fails. */
static int become_program(char* const words[])
{
    char path[PATH_MAX];
    find_program(path);
    execv(path, words);
    fprintf(stderr, "No se puede ejecutar %s: %s\n", path[0] != '\0' ? path : BRINDLECAM_PROGRAM,
            strerror(errno));
    return no_program_code;
}

int main(int argc, char* argv[])
{
    const int code = argc > 0 ? hand_over(argv + 1) : -1;
    return code >= 0 ? code : become_program(argv);
}
