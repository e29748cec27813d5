// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <sys/resource.h>

namespace test
{
/// As on a disk that is full: while it lives no file of this process, nor of one that is started
/// meanwhile, grows above so many bytes.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &m_before); }

private:
    rlimit m_before{};
};
} // namespace test
