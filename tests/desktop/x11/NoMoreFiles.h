#pragma once

#include <sys/resource.h>
#include <unistd.h>

namespace brindlecam::test {

/// While it lives nobody in this process gets a new file descriptor, and so no memory to share with
/// the server.
class NoMoreFiles final {
public:
    NoMoreFiles()
    {
        ::getrlimit(RLIMIT_NOFILE, &m_before);
        const int next = ::dup(0); // the lowest that is free
        ::close(next);
        const rlimit none{static_cast<rlim_t>(next), m_before.rlim_max};
        ::setrlimit(RLIMIT_NOFILE, &none);
    }
    ~NoMoreFiles() { ::setrlimit(RLIMIT_NOFILE, &m_before); }
    NoMoreFiles(const NoMoreFiles&) = delete;
    NoMoreFiles& operator=(const NoMoreFiles&) = delete;

private:
    rlimit m_before{};
};

} // namespace brindlecam::test
