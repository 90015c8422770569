// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KartenModell.h"

#include <QPixmap>

#include <array>
#include <unordered_map>

namespace paukfix {

namespace {

// Column0 to Column5.
constexpr std::array Spalten{"FrageNr", "FachNr", "FachLfdNr", "Frage", "Antwort", "Thema"};

// Room of so many pixels before the questions: the numbers before them end at their column's right edge.
QPixmap Abstand(int breite)
{
    QPixmap leer(breite, 1);
    leer.fill(Qt::transparent);
    return leer;
}

} // namespace

KartenModell::KartenModell(CardRecordset &karten, QObject *parent)
    : QAbstractTableModel(parent), liste_(karten)
{
}

int KartenModell::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : liste_.Count();
}

int KartenModell::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(Spalten.size());
}

QVariant KartenModell::data(const QModelIndex &index, int role) const
{
    const auto spalte = static_cast<std::size_t>(index.column());
    if (role == Qt::TextAlignmentRole)
        return static_cast<int>((spalte < Column3 ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    if (role == Qt::DecorationRole && spalte == Column3) {
        static const QPixmap zelle = Abstand(4); // a cell adds margins of its own
        return zelle;
    }
    if (role != Qt::DisplayRole)
        return {};
    try {
        const CardList::Row &zeile = liste_.At(index.row());
        if (spalte < zeile.numbers.size())
            return zeile.numbers[spalte] ? QString::number(*zeile.numbers[spalte]) : QString();
        return OneLine(spalte == Column3 ? zeile.question : spalte == Column4 ? zeile.answer : zeile.topic);
    } catch (const StoreError &fehler) {
        Gescheitert(fehler);
        return {};
    }
}

QVariant KartenModell::headerData(int section, Qt::Orientation richtung, int role) const
{
    if (richtung != Qt::Horizontal)
        return {};
    if (role == Qt::DisplayRole)
        return QString::fromLatin1(Spalten[static_cast<std::size_t>(section)]);
    if (role == Qt::DecorationRole && section == Column3)
        return Abstand(12);
    if (role == Qt::TextAlignmentRole)
        return static_cast<int>((section < Column3 ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    return {};
}

void KartenModell::sort(int spalte, Qt::SortOrder folge)
{
    if (spalte < 0)
        return;
    emit layoutAboutToBeChanged({}, VerticalSortHint);
    // The current row stays on its card.
    const QModelIndexList alte = persistentIndexList();
    std::vector<std::int64_t> karten;
    for (const QModelIndex &index : alte)
        karten.push_back(liste_.Id(index.row()));
    try {
        liste_.Sort(static_cast<CardList::Column>(spalte), folge == Qt::AscendingOrder);
    } catch (const StoreError &fehler) {
        Gescheitert(fehler);
    }
    // Of many selected rows each is looked for.
    std::unordered_map<std::int64_t, int> zeilen;
    for (int zeile = 0; zeile < liste_.Count(); ++zeile)
        zeilen.emplace(liste_.Id(zeile), zeile);
    QModelIndexList neue;
    for (qsizetype i = 0; i < alte.size(); ++i) {
        const auto zeile = zeilen.find(karten[static_cast<std::size_t>(i)]);
        neue << (zeile == zeilen.end() ? QModelIndex() : index(zeile->second, alte[i].column()));
    }
    changePersistentIndexList(alte, neue);
    emit layoutChanged({}, VerticalSortHint);
}

void KartenModell::Filtern(const QString &text)
{
    beginResetModel();
    try {
        liste_.Filter(text);
    } catch (const StoreError &fehler) {
        Gescheitert(fehler);
    }
    endResetModel();
}

void KartenModell::Gescheitert(const StoreError &fehler) const
{
    if (std::exchange(gemeldet_, fehler.Text()) != fehler.Text())
        leseFehler(fehler);
}

} // namespace paukfix
