// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Gemaltes.h"

#include <QApplication>
#include <QGenericPlugin>
#include <QSocketNotifier>

#include <array>
#include <cstdio>
#include <unistd.h>

using namespace paukfix;

namespace {

void Antworten()
{
    for (QWidget *fenster : QApplication::topLevelWidgets())
        if (fenster->isVisible() && fenster->isActiveWindow())
            for (const QString &text : Gemaltes(*fenster))
                std::puts(text.simplified().toUtf8().constData());
    std::puts(".");
    std::fflush(stdout);
}

} // namespace

// Sits in the running program and tells, whenever it is asked on the standard input, what the active window
// writes on the screen: a line for each text, and a dot.
class Vorlesehilfe final : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "vorlesehilfe.json")

public:
    QObject *create(const QString &, const QString &) override
    {
        auto *ohr = new QSocketNotifier(STDIN_FILENO, QSocketNotifier::Read);
        QObject::connect(ohr, &QSocketNotifier::activated, ohr, [ohr] {
            std::array<char, 64> frage{};
            if (::read(STDIN_FILENO, frage.data(), frage.size()) > 0)
                Antworten();
            else
                ohr->setEnabled(false); // nobody asks any more
        });
        return ohr;
    }
};

#include "Vorlesehilfe.moc"
