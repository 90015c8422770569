// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Repair.h"

#include "StoreError.h"

RepairResult RepairDatabase(const QString &path)
{
    throw StoreError(Fehler::Beschaedigt,
                     QStringLiteral("In der Datei „%1“ ist nichts zu retten.").arg(path));
}
