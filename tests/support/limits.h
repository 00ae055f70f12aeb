#pragma once

#include <csignal>

#include <sys/resource.h>
#include <unistd.h>

/// No file grows beyond this many bytes while it lives: writes fail as on a full disk.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        rlimit limit = m_before;
        limit.rlim_cur = bytes;
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() { ::setrlimit(RLIMIT_FSIZE, &m_before); }
    FileSizeLimit(const FileSizeLimit &) = delete;
    FileSizeLimit &operator=(const FileSizeLimit &) = delete;

private:
    rlimit m_before{};
};

/// Whoever may write everywhere is somebody else while it lives, so that permissions mean
/// something to tests that run as the superuser, too.
class OrdinaryUser {
public:
    static constexpr uid_t Nobody = 65534;

    OrdinaryUser()
    {
        if (m_isSuper)
            m_changed = ::seteuid(Nobody) == 0;
    }
    ~OrdinaryUser()
    {
        if (m_changed)
            m_changed = ::seteuid(0) != 0;
    }
    OrdinaryUser(const OrdinaryUser &) = delete;
    OrdinaryUser &operator=(const OrdinaryUser &) = delete;

private:
    bool m_isSuper = ::geteuid() == 0;
    bool m_changed = false;
};
