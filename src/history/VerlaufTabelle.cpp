// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "VerlaufTabelle.h"

namespace paukfix {

void VerlaufTabelle::Zeigen(const std::vector<Tagesstand> &tage)
{
    beginResetModel();
    tage_ = tage;
    endResetModel();
}

int VerlaufTabelle::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(tage_.size());
}

int VerlaufTabelle::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(Tabellenkopf().size());
}

QVariant VerlaufTabelle::data(const QModelIndex &index, int role) const
{
    switch (role) {
    case Qt::DisplayRole:
        return Tabellenzeile(tage_.at(static_cast<std::size_t>(index.row()))).at(index.column());
    case Qt::AccessibleTextRole: // a number alone says nothing
        return QVariant(Tabellenkopf().at(index.column()) + u' ' + data(index, Qt::DisplayRole).toString());
    case Qt::TextAlignmentRole:
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    default:
        return {};
    }
}

QVariant VerlaufTabelle::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role == Qt::TextAlignmentRole)
        return QVariant(Qt::AlignRight | Qt::AlignVCenter);
    return orientation == Qt::Horizontal && role == Qt::DisplayRole ? QVariant(Tabellenkopf().at(section))
                                                                    : QVariant();
}

} // namespace paukfix
