// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Endsignale.h"

#include <QCoreApplication>
#include <QEvent>

#include <csignal>
#include <sys/signalfd.h>

namespace paukfix {

Endsignale::Endsignale()
{
    sigset_t signale;
    sigemptyset(&signale);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        // One that the program was started to ignore ("nohup") would come through the line all the same.
        struct sigaction bisher = {};
        if (sigaction(signal, nullptr, &bisher) == 0 && bisher.sa_handler != SIG_IGN)
            sigaddset(&signale, signal);
    }
    leitung_ = FileHandle(signalfd(-1, &signale, SFD_NONBLOCK | SFD_CLOEXEC));
    // Without the line they do what they always did.
    if (leitung_.Get() >= 0)
        pthread_sigmask(SIG_BLOCK, &signale, nullptr);
}

void Endsignale::Melden()
{
    if (leitung_.Get() < 0)
        return;
    waechter_ = std::make_unique<QSocketNotifier>(leitung_.Get(), QSocketNotifier::Read);
    QObject::connect(waechter_.get(), &QSocketNotifier::activated, waechter_.get(), [this] {
        signalfd_siginfo signal{};
        while (read(leitung_.Get(), &signal, sizeof signal) > 0) {
        }
        // Sent, not posted: a dialog's event loop that is about to begin would throw a posted one away.
        QEvent ende(QEvent::Quit);
        QCoreApplication::sendEvent(QCoreApplication::instance(), &ende);
    });
}

} // namespace paukfix
