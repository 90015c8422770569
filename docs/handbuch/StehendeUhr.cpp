// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
//
// Loaded into the program while the handbook's pictures are taken: it is 10 o'clock on 9 March 2026, and
// stays so. The seconds go by and begin anew, so that nothing that waits for the next one waits for ever;
// what measures a length of time has another clock.
#include <ctime>
#include <sys/syscall.h>
#include <sys/time.h>
#include <unistd.h>

namespace {

constexpr time_t Minute = 1773050400; // UTC

timespec Gehend(clockid_t uhr)
{
    timespec zeit{};
    ::syscall(SYS_clock_gettime, uhr, &zeit);
    return zeit;
}

timespec Stehend()
{
    static const time_t beginn = Gehend(CLOCK_MONOTONIC).tv_sec;
    timespec zeit = Gehend(CLOCK_MONOTONIC);
    zeit.tv_sec = Minute + (zeit.tv_sec - beginn) % 60;
    return zeit;
}

} // namespace

extern "C" {

int clock_gettime(clockid_t uhr, timespec *zeit) noexcept
{
    *zeit = uhr == CLOCK_REALTIME || uhr == CLOCK_REALTIME_COARSE ? Stehend() : Gehend(uhr);
    return 0;
}

int gettimeofday(timeval *zeit, void *) noexcept
{
    const timespec jetzt = Stehend();
    *zeit = {jetzt.tv_sec, jetzt.tv_nsec / 1000};
    return 0;
}

time_t time(time_t *zeit) noexcept
{
    const time_t jetzt = Stehend().tv_sec;
    if (zeit)
        *zeit = jetzt;
    return jetzt;
}
}
