// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Vorhandenenwahl.h"

#include "Fensterbau.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>

namespace paukfix {

using namespace Qt::StringLiterals;

Vorhandenenwahl::Vorhandenenwahl(QWidget *eltern) : QWidget(eltern)
{
    auto *reihe = new QHBoxLayout(this);
    reihe->setContentsMargins(0, 0, 0, 0);
    cmbVorhandene_ = Benannt(new QComboBox(this), u"cmbVorhandene"_s, u"Karten, die es schon gibt"_s);
    cmbVorhandene_->addItem(u"trotzdem übernehmen"_s, static_cast<int>(Vorhandene::Uebernehmen));
    cmbVorhandene_->addItem(u"auslassen"_s, static_cast<int>(Vorhandene::Auslassen));
    cmbVorhandene_->addItem(u"Antwort erneuern"_s, static_cast<int>(Vorhandene::Erneuern));
    lblVorhandene_ = Beschriftung({}, cmbVorhandene_, this);
    lblVorhandene_->setObjectName(u"lblVorhandene"_s);
    reihe->addWidget(lblVorhandene_);
    reihe->addWidget(cmbVorhandene_);
    reihe->addStretch(1);
    hide();
}

void Vorhandenenwahl::Anbieten(int bekannt, int andereAntwort)
{
    QString text = u"%1 gibt es schon"_s.arg(bekannt);
    if (andereAntwort > 0)
        text += u", %1 mit anderer Antwort"_s.arg(andereAntwort);
    lblVorhandene_->setText(text + u':');
    setVisible(bekannt + andereAntwort > 0);
}

Vorhandene Vorhandenenwahl::Wahl() const
{
    return isHidden() ? Vorhandene::Uebernehmen
                      : static_cast<Vorhandene>(cmbVorhandene_->currentData().toInt());
}

} // namespace paukfix
