// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <csignal>
#include <sys/resource.h>

namespace paukfix {

// As long as it lives the process may have so much of a resource and no more.
class ResourceLimit
{
public:
    ResourceLimit(__rlimit_resource resource, rlim_t most) : resource_(resource)
    {
        getrlimit(resource, &before_);
        const rlimit limit{most, before_.rlim_max};
        setrlimit(resource, &limit);
    }

    ResourceLimit(const ResourceLimit &) = delete;
    ResourceLimit &operator=(const ResourceLimit &) = delete;

    ~ResourceLimit() { setrlimit(resource_, &before_); }

private:
    __rlimit_resource resource_;
    rlimit before_{};
};

// As long as it lives no file of the process grows beyond `bytes`: writing fails as on a full disk.
class FullDisk
{
public:
    explicit FullDisk(rlim_t bytes) : signal_(std::signal(SIGXFSZ, SIG_IGN)), limit_(RLIMIT_FSIZE, bytes) {}

    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;

    ~FullDisk() { std::signal(SIGXFSZ, signal_); }

private:
    void (*signal_)(int);
    ResourceLimit limit_;
};

} // namespace paukfix
