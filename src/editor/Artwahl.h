// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Kartenblatt.h"

#include <QWidget>

class QButtonGroup;
class QLabel;
class QRadioButton;

namespace paukfix {

// The two options that say how a card is answered.
class Artwahl final : public QWidget
{
    Q_OBJECT

public:
    explicit Artwahl(QWidget *parent);

    // A card may say neither.
    void Zeigen(Antwortart art);
    Antwortart Art() const;
    void FarbenSetzen(const QPalette &form);

    QList<QWidget *> Tabfolge() const;

signals:
    void gewaehlt(); // by the writer

private:
    QRadioButton *Antwort_T_;
    QRadioButton *Antwort_K_;
    QButtonGroup *art_;
    QLabel *frage_;
};

} // namespace paukfix
