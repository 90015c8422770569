// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QHash>
#include <QString>

class QWidget;

namespace paukfix {

// The handbook's page of each window that has one, by the window's object name: "karten.html#suchen".
const QHash<QString, QString> &Handbuchseiten();

// The page for the window that has the keyboard, which may be null. A message, or another window without a
// page, stands over the window that is meant.
QString HandbuchseiteZu(const QWidget *fenster);

} // namespace paukfix
