// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardList.h"
#include "StoreError.h"

#include <QAbstractTableModel>

#include <functional>

namespace paukfix {

// The cards as a grid: number, compartment, place, question, answer, topic. Rows are read as they are shown.
class KartenModell final : public QAbstractTableModel
{
public:
    enum Spalte
    {
        Column0, // FrageNr
        Column1, // FachNr
        Column2, // FachLfdNr
        Column3, // Frage
        Column4, // Antwort
        Column5  // Thema
    };

    KartenModell(CardRecordset &karten, QObject *parent);

    // Told of an error while rows are read; at most once for each text, as a view asks again and again.
    std::function<void(const StoreError &fehler)> leseFehler = [](const StoreError &) {};

    CardList &Liste() { return liste_; }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation richtung, int role) const override;
    void sort(int spalte, Qt::SortOrder folge) override;
    // Shows the cards that `text` is found in; see CardList::Filter.
    void Filtern(const QString &text);

private:
    void Gescheitert(const StoreError &fehler) const;

    mutable CardList liste_; // a cache inside
    mutable QString gemeldet_;
};

} // namespace paukfix
