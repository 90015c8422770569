// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QAbstractFileIconProvider>

namespace paukfix {

// Symbols and kinds for the files that a dialog lists, told by their names alone: the toolkit's own provider
// opens each file of the directory to find out what it is, the open card file and a slow drive's included.
class Dateisymbole final : public QAbstractFileIconProvider
{
public:
    QIcon icon(IconType art) const override;
    QIcon icon(const QFileInfo &datei) const override;
    QString type(const QFileInfo &datei) const override;
};

} // namespace paukfix
