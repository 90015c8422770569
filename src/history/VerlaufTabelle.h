// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Verlaufswerte.h"

#include <QAbstractTableModel>

namespace paukfix {

// The days of a period as the rows of a table.
class VerlaufTabelle final : public QAbstractTableModel
{
public:
    using QAbstractTableModel::QAbstractTableModel;

    void Zeigen(const std::vector<Tagesstand> &tage);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    std::vector<Tagesstand> tage_;
};

} // namespace paukfix
