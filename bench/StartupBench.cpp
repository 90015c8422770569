// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
// Times two programs from their start to the first painted window, warm and cold, and reads their memory at
// rest, on an X display that is otherwise black (bench/startup starts one). The first argument is the floor,
// the second the program, which is given a box of 32,767 cards. They run in turn.
#include "BigBox.h"

#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QScreen>
#include <QSet>
#include <QThread>

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

using Clock = std::chrono::steady_clock;

constexpr int WarmRounds = 21;
constexpr int ColdRounds = 7;
constexpr int RestRounds = 3;

// Of the process alone, and with its part of what it shares.
struct Memory
{
    double anonymous = 0; // megabytes
    double proportional = 0;
};

struct Run
{
    double milliseconds = 0;
    Memory memory;
    QSet<QString> files; // that were mapped
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

double Megabytes(pid_t process, const QString &file, QByteArrayView field)
{
    QFile from(u"/proc/%1/%2"_s.arg(process).arg(file));
    if (from.open(QIODevice::ReadOnly))
        for (const QByteArray &line : from.readAll().split('\n'))
            if (line.startsWith(field))
                return line.mid(field.size()).simplified().split(' ').first().toDouble() / 1024;
    return 0;
}

QSet<QString> MappedFiles(pid_t process)
{
    QSet<QString> files;
    QFile maps(u"/proc/%1/maps"_s.arg(process));
    if (maps.open(QIODevice::ReadOnly))
        for (const QByteArray &line : maps.readAll().split('\n'))
            if (const qsizetype path = line.indexOf('/'); path > 0)
                files << QFile::decodeName(line.mid(path));
    return files;
}

// Cold is: nothing of the disk is in memory. Where the kernel does not let us say so for everything, what the
// programs have mapped is given up file by file.
bool MakeCold(const QSet<QString> &files)
{
    sync();
    QFile drop(u"/proc/sys/vm/drop_caches"_s);
    if (drop.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && drop.write("3") == 1)
        return true;
    for (const QString &path : files)
        if (const int file = open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC); file >= 0) {
            posix_fadvise(file, 0, 0, POSIX_FADV_DONTNEED);
            close(file);
        }
    return false;
}

Run Measure(const QByteArrayList &command, QScreen &screen, unsigned long settleMilliseconds)
{
    while (SomethingPainted(screen))
        QThread::msleep(5);
    const auto begin = Clock::now();
    const pid_t process = fork();
    if (process == 0) {
        std::vector<char *> arguments;
        for (const QByteArray &argument : command)
            arguments.push_back(const_cast<char *>(argument.constData()));
        arguments.push_back(nullptr);
        const int nowhere = open("/dev/null", O_WRONLY);
        dup2(nowhere, STDOUT_FILENO);
        dup2(nowhere, STDERR_FILENO);
        execv(arguments.front(), arguments.data());
        _exit(127);
    }
    Run run;
    while (!SomethingPainted(screen) && waitpid(process, nullptr, WNOHANG) == 0)
        QThread::usleep(200);
    run.milliseconds = std::chrono::duration<double, std::milli>(Clock::now() - begin).count();
    QThread::msleep(settleMilliseconds);
    run.memory = {.anonymous = Megabytes(process, u"status"_s, "RssAnon:"),
                  .proportional = Megabytes(process, u"smaps_rollup"_s, "Pss:")};
    run.files = MappedFiles(process);
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
    if (argc != 3)
        return 2;
    const QGuiApplication application(argc, argv);
    QScreen &screen = *QGuiApplication::primaryScreen();
    const std::array<QByteArrayList, 2> commands{
        QByteArrayList{argv[1]}, QByteArrayList{argv[2], QFile::encodeName(paukfix::BigFile())}};
    std::array<QSet<QString>, 2> files;
    const auto series = [&](int rounds, unsigned long settle, bool cold, const auto &value) {
        std::array<std::vector<double>, 2> values;
        for (int round = 0; round < rounds; ++round)
            for (std::size_t i = 0; i < commands.size(); ++i) {
                if (cold)
                    MakeCold(files[0] + files[1]);
                const Run run = Measure(commands[i], screen, settle);
                files[i] += run.files;
                values[i].push_back(value(run));
            }
        return std::array{Median(values[0]), Median(values[1])};
    };
    const auto milliseconds = [](const Run &run) { return run.milliseconds; };
    const auto settle = static_cast<unsigned long>(qEnvironmentVariableIntValue("SETTLE_MS"));

    series(2, 0, false, milliseconds); // reads all of it once
    const auto warm = series(WarmRounds, 0, false, milliseconds);
    const bool all = MakeCold({});
    const auto cold = series(ColdRounds, 0, true, milliseconds);
    std::printf("first paint, ms (median)  floor  program  ratio\n");
    std::printf("warm, of %2d runs        %7.1f  %7.1f  %5.2f\n", WarmRounds, warm[0], warm[1],
                warm[1] / warm[0]);
    std::printf("cold, of %2d runs        %7.1f  %7.1f  %5.2f  (%s)\n", ColdRounds, cold[0], cold[1],
                cold[1] / cold[0], all ? "all caches dropped" : "the mapped files given up");
    const auto anonymous =
        series(RestRounds, settle, false, [](const Run &run) { return run.memory.anonymous; });
    const auto shared =
        series(RestRounds, settle, false, [](const Run &run) { return run.memory.proportional; });
    std::printf("at rest, MB               floor  program  above\n");
    std::printf("of its own (RssAnon)    %7.1f  %7.1f  %5.1f\n", anonymous[0], anonymous[1],
                anonymous[1] - anonymous[0]);
    std::printf("with its part (PSS)     %7.1f  %7.1f  %5.1f\n", shared[0], shared[1], shared[1] - shared[0]);
    return 0;
}
