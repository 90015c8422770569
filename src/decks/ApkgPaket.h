// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "ZipReader.h"

#include <QHash>
#include <QString>
#include <QTemporaryFile>

#include <optional>

namespace paukfix {

// A package (.apkg, .colpkg): a zip file with a collection of cards, which is an SQLite file, a list of
// media, and the media under numbers. Three layouts: "collection.anki2" alone; "collection.anki21" with a
// "collection.anki2" beside it that only says that it is old; and "collection.anki21b" with everything packed
// once more. Which of them it is, is said by "meta".
class ApkgPaket
{
public:
    // Unpacks the collection into a temporary file. Throws StoreError.
    explicit ApkgPaket(const QString &pfad);

    // The collection, as long as this lives.
    QString Sammlung() const { return sammlung_.fileName(); }

    qint64 Groesse() const { return groesse_; } // of the collection, in bytes

    // Whether the list of media could be read.
    bool MedienlisteGut() const { return medienlisteGut_; }

    int Medien() const { return static_cast<int>(medien_.size()); }

    bool HatMedium(const QString &name) const { return medien_.contains(name); }

    // Nothing where it cannot be read.
    std::optional<QByteArray> Medium(const QString &name) const;

private:
    int Fassung() const;
    void SammlungEntpacken(const QString &eintrag);
    void MedienLesen();
    void Eintragen(const QString &name, const QString &eintrag);

    ZipReader zip_;
    bool gepackt_ = false; // everything once more
    QTemporaryFile sammlung_;
    qint64 groesse_ = 0;
    bool medienlisteGut_ = true;
    QHash<QString, std::size_t> medien_; // the entries of plain names
};

} // namespace paukfix
