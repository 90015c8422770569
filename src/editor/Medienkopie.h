// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QImage>
#include <QList>
#include <QString>

#include <optional>

class QMimeData;

namespace paukfix {

// Pictures and sounds that come from elsewhere onto a card: what they are, and how they get beside the card
// file.

enum class Medienart
{
    Bild,
    Ton
};

struct Medium
{
    Medienart art = Medienart::Bild;
    QString name; // of the file that it would be beside the card file
    QString pfad; // the file to copy; empty for a picture that is none
    QImage bild;  // to be written, where `pfad` is empty
};

// The files of a drag or of the clipboard that cards can name; a picture alone where there are no files, nor
// a text.
QList<Medium> MedienVon(const QMimeData &mime);

// Throws StoreError where the file is no picture or sound that a card can have.
void MediumPruefen(const Medium &medium);

// The file beside the card file where it lies there already.
std::optional<QString> LiegtIn(const Medium &medium, const QString &verzeichnis);

// Its name, or the first of "name-2", "name-3", ... under which nothing stands there.
QString FreierName(const QString &verzeichnis, const QString &name);

// Puts it into the directory under its FreierName, whole and durably or not at all, never over what is there.
// Returns the name; throws StoreError.
QString Danebenlegen(const Medium &medium, const QString &verzeichnis);

} // namespace paukfix
