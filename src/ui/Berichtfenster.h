// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QDialog>

namespace paukfix {

// A text of many lines to be read, and copied from.
class Berichtfenster final : public QDialog
{
public:
    Berichtfenster(const QString &titel, const QString &text, QWidget *parent = nullptr);
};

} // namespace paukfix
