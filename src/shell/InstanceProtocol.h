#pragma once

/*
 * How copies of the program find each other and what they say, for all who speak it: C99 and POSIX,
 * no Qt.
 *
 * One copy runs per user and display. It listens on the socket of brindlecam_meeting_path().
 *
 * A request is one line: fields with one space between them and a line feed at the end, at most
 * BRINDLECAM_LONGEST_LINE bytes. The first field is BRINDLECAM_PROTOCOL_VERSION, the last one the
 * folder that the asker works in, and those between are the words of its command line, without the
 * program's name. No words: the program was opened again. Words and folder are written by
 * brindlecam_escape() and may be empty. The asker keeps the connection open until it has the
 * answer: who has left is not served.
 *
 * An answer is the exit code in decimal digits, at most 255, a line feed, and the text to print as
 * it is, up to the end of the connection. The text goes to standard output where the code is 0, and
 * to standard error otherwise.
 *
 * A request of another version is answered with code 5 and a text, so the version stays the first
 * field, and an answer what it is, in all versions. Whoever says anything else is hung up on.
 *
 * A connection that ends without an answer means that the running copy is about to end: it holds
 * the lock beside the socket for as long as it works, and is not to be disturbed any more.
 */

/* NOLINTBEGIN(modernize-*,readability-*,bugprone-*): this is C. */

#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <sys/un.h>
#include <unistd.h>

enum {
    BRINDLECAM_PROTOCOL_VERSION = 1,
    /* A request, its line feed included. */
    BRINDLECAM_LONGEST_LINE = 65536,
    /* An answer; nobody of ours says more. */
    BRINDLECAM_LONGEST_ANSWER = 1 << 20,
    /* What a process can end with. */
    BRINDLECAM_LARGEST_CODE = 255,
    /* How long an asker waits for the answer of a copy that listens, in milliseconds. */
    BRINDLECAM_ANSWER_PATIENCE = 2000,
    /* The longest id of a display, its NUL included. */
    BRINDLECAM_DISPLAY_ID_ROOM = 33,
    /* A path of a socket, its NUL included; this system's limit. */
    BRINDLECAM_PATH_ROOM = sizeof(((struct sockaddr_un*)0)->sun_path)
};

#define BRINDLECAM_SOCKET_ENDING ".socket"
#define BRINDLECAM_LOCK_ENDING ".lock"

/*
 * Writes these bytes so that they are one field of a request, or a part of a file's name: letters,
 * digits and -._~:+,=@ stand as they are, every other byte as % and two capital hex digits. `out`
 * takes three times `length` and a NUL. Returns the length of what was written.
 */
static inline size_t brindlecam_escape(const char* bytes, size_t length, char* out)
{
    static const char digits[] = "0123456789ABCDEF";
    size_t written = 0;
    for (size_t i = 0; i < length; ++i) {
        const unsigned char byte = (unsigned char)bytes[i];
        const int plain = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
                          (byte >= '0' && byte <= '9') ||
                          (byte != 0 && strchr("-._~:+,=@", byte) != NULL);
        if (plain) {
            out[written++] = (char)byte;
        } else {
            out[written++] = '%';
            out[written++] = digits[byte >> 4];
            out[written++] = digits[byte & 15];
        }
    }
    out[written] = '\0';
    return written;
}

/* The display that this process belongs to; empty where there is none. A name that a Wayland
 * session gives has no colon, so both kinds have room beside each other. */
static inline const char* brindlecam_display(void)
{
    const char* const display = getenv("DISPLAY");
    return display != NULL ? display : "";
}

/* How long the display's name is without its screen number, which is ".0" in ":1.0" and nothing in
 * a path: all screens of a display have one copy. */
static inline size_t brindlecam_length_without_screen(const char* display)
{
    const char* const colon = strrchr(display, ':');
    const char* dot = colon != NULL ? strchr(colon, '.') : NULL;
    if (dot == NULL || dot == colon + 1 ||
        strspn(colon + 1, "0123456789") != (size_t)(dot - colon - 1) || dot[1] == '\0' ||
        dot[1 + strspn(dot + 1, "0123456789")] != '\0')
        return strlen(display);
    return (size_t)(dot - display);
}

/*
 * What stands for a display in file names: its name without the screen number, escaped; where that
 * is long, a checksum of the name (FNV-1a of 64 bits) after a #. "unix:1" is the long form of ":1".
 */
static inline void brindlecam_display_id(const char* display, char id[BRINDLECAM_DISPLAY_ID_ROOM])
{
    if (strncmp(display, "unix:", 5) == 0)
        display += 4;
    const size_t length = brindlecam_length_without_screen(display);
    char escaped[3 * BRINDLECAM_DISPLAY_ID_ROOM + 1];
    if (length < BRINDLECAM_DISPLAY_ID_ROOM &&
        brindlecam_escape(display, length, escaped) < BRINDLECAM_DISPLAY_ID_ROOM) {
        strcpy(id, escaped);
        return;
    }
    unsigned long long sum = 14695981039346656037ULL;
    for (size_t i = 0; i < length; ++i)
        sum = (sum ^ (unsigned char)display[i]) * 1099511628211ULL;
    snprintf(id, BRINDLECAM_DISPLAY_ID_ROOM, "#%016llx", sum);
}

/* Whether we can keep files in this folder and nobody else can put other ones in their place. */
static inline int brindlecam_is_our_folder(const char* folder, const struct stat* found)
{
    return S_ISDIR(found->st_mode) && found->st_uid == geteuid() &&
           (found->st_mode & (S_IWGRP | S_IWOTH)) == 0 && access(folder, W_OK | X_OK) == 0;
}

/* Puts the path together; 0 where no socket could have a name in that folder. */
static inline int brindlecam_path_in(const char* folder, const char* display, const char* ending,
                                     char path[BRINDLECAM_PATH_ROOM])
{
    char id[BRINDLECAM_DISPLAY_ID_ROOM];
    brindlecam_display_id(display, id);
    const int length = snprintf(path, BRINDLECAM_PATH_ROOM, "%s/brindlecam-%s%s", folder, id,
                                BRINDLECAM_SOCKET_ENDING);
    if (length < 0 || length >= (int)BRINDLECAM_PATH_ROOM)
        return 0;
    snprintf(path, BRINDLECAM_PATH_ROOM, "%s/brindlecam-%s%s", folder, id, ending);
    return 1;
}

/*
 * Where the copies on this display meet: the file with this ending. In $XDG_RUNTIME_DIR; where that
 * is missing, not ours, locked, or too long for a socket's path, in a folder of ours below $TMPDIR,
 * else below the system's own, which is made when it is missing. Returns 0 when there is no place.
 */
static inline int brindlecam_meeting_path(const char* display, const char* ending,
                                          char path[BRINDLECAM_PATH_ROOM])
{
    struct stat found;
    const char* const runtime = getenv("XDG_RUNTIME_DIR");
    if (runtime != NULL && runtime[0] == '/' && stat(runtime, &found) == 0 &&
        brindlecam_is_our_folder(runtime, &found) &&
        brindlecam_path_in(runtime, display, ending, path))
        return 1;

    char folder[BRINDLECAM_PATH_ROOM];
    const char* const given = getenv("TMPDIR");
    const char* const temporary = given != NULL && given[0] == '/' ? given : "/tmp";
    const int length =
        snprintf(folder, sizeof folder, "%s/brindlecam-%lu", temporary, (unsigned long)geteuid());
    if (length < 0 || length >= (int)sizeof folder)
        return 0;
    mkdir(folder, S_IRWXU);
    /* Others may write in the folder above, so a link there is not ours to follow. */
    return lstat(folder, &found) == 0 && brindlecam_is_our_folder(folder, &found) &&
           brindlecam_path_in(folder, display, ending, path);
}

/* NOLINTEND(modernize-*,readability-*,bugprone-*) */
