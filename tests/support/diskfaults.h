// SPDX-FileCopyrightText: The VorrelDataCore authors
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <csignal>
#include <functional>
#include <thread>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace vo::test {

/// No file grows beyond so many bytes while one lives: as on a full disk, writing fails.
class FullDisk
{
public:
    explicit FullDisk(rlim_t size)
        : m_handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_former);
        const rlimit limit { size, m_former.rlim_max };
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_former);
        std::signal(SIGXFSZ, m_handler);
    }
    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;

private:
    void (*m_handler)(int);
    rlimit m_former {};
};

/// Does \p work in a process of its own, which is killed after \p delay.
inline void diesAfter(std::chrono::milliseconds delay, const std::function<void()> &work)
{
    const pid_t child = fork();
    if (child == 0) {
        work();
        _exit(0);
    }
    std::this_thread::sleep_for(delay);
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
}

} // namespace vo::test
