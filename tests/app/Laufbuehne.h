// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Anzeige.h"
#include "Programmkopie.h"

#include <QTemporaryDir>

namespace paukfix {

// The built program as its users meet it: on a display that lasts for the class, in a directory of its own
// for each test.
class Laufbuehne : public QObject
{
protected:
    // Before each test.
    void Aufbauen(Vorspann vorspann)
    {
        if (!anzeige_)
            anzeige_ = std::make_unique<Anzeige>();
        ordner_ = std::make_unique<QTemporaryDir>();
        ProgrammKopieren(ordner_->path(), vorspann);
    }

    // Of a file beside the program.
    QString Pfad(const QString &name) const { return ordner_->filePath(name); }

    std::unique_ptr<Anzeige> anzeige_;
    std::unique_ptr<QTemporaryDir> ordner_;
};

} // namespace paukfix
