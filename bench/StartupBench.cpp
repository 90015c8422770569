// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
// Times programs from their start to the first painted window, and their peak memory a while later, on an X
// display that is otherwise black (bench/startup starts one). Each argument is one command; they run in turn.
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QScreen>
#include <QThread>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

using Clock = std::chrono::steady_clock;

struct Run
{
    double milliseconds = 0;
    double megabytes = 0;
};

bool SomethingPainted(QScreen &screen)
{
    // A line through the middle of where windows without a manager stand.
    const QImage line = screen.grabWindow(0, 20, 200, 400, 1).toImage();
    for (int x = 0; x < line.width(); ++x)
        if ((line.pixel(x, 0) & 0xffffff) != 0)
            return true;
    return false;
}

// Peak of the memory that belongs to the process alone and of what it shares, as the kernel counts it.
double PeakMegabytes(pid_t process)
{
    QFile status(u"/proc/%1/status"_s.arg(process));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n'))
        if (line.startsWith("VmHWM:"))
            return line.mid(6).simplified().split(' ').first().toDouble() / 1024;
    return 0;
}

Run Measure(const QByteArray &command, QScreen &screen, int settleMilliseconds)
{
    while (SomethingPainted(screen))
        QThread::msleep(5);
    const auto begin = Clock::now();
    const pid_t process = fork();
    if (process == 0) {
        execl("/bin/sh", "sh", "-c", ("exec " + command + " >/dev/null 2>&1").constData(), nullptr);
        _exit(127);
    }
    Run run;
    while (!SomethingPainted(screen) && waitpid(process, nullptr, WNOHANG) == 0)
        QThread::usleep(300);
    run.milliseconds = std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
    QThread::msleep(static_cast<unsigned long>(settleMilliseconds));
    run.megabytes = PeakMegabytes(process);
    kill(process, SIGKILL);
    waitpid(process, nullptr, 0);
    return run;
}

double Median(std::vector<double> values)
{
    std::ranges::sort(values);
    return values[values.size() / 2];
}

} // namespace

int main(int argc, char *argv[])
{
    const QGuiApplication application(argc, argv);
    QScreen &screen = *QGuiApplication::primaryScreen();
    const int settle = qEnvironmentVariableIntValue("SETTLE_MS");
    constexpr int Rounds = 11;
    std::vector<std::vector<double>> times(static_cast<std::size_t>(argc));
    std::vector<std::vector<double>> peaks(static_cast<std::size_t>(argc));
    for (int round = 0; round < Rounds; ++round)
        for (int i = 1; i < argc; ++i) {
            const Run run = Measure(argv[i], screen, settle);
            times[static_cast<std::size_t>(i)].push_back(run.milliseconds);
            peaks[static_cast<std::size_t>(i)].push_back(run.megabytes);
        }
    std::printf("%10s %8s %10s %8s  command\n", "painted ms", "ratio", "peak MB", "above");
    for (int i = 1; i < argc; ++i) {
        const auto n = static_cast<std::size_t>(i);
        std::printf("%10.1f %8.2f %10.1f %8.1f  %s\n", Median(times[n]), Median(times[n]) / Median(times[1]),
                    Median(peaks[n]), Median(peaks[n]) - Median(peaks[1]), argv[i]);
    }
    return 0;
}
