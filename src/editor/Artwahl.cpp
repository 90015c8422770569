// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Artwahl.h"

#include "Farben.h"
#include "Fensterbau.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>

namespace paukfix {

using namespace Qt::StringLiterals;

Artwahl::Artwahl(QWidget *parent)
    : QWidget(parent),
      Antwort_T_(
          Benannt(new QRadioButton(u"Text/&Zahl"_s, this), u"Antwort_T"_s, u"Antwort als Text/Zahl"_s)),
      Antwort_K_(
          Benannt(new QRadioButton(u"An&kreuzen"_s, this), u"Antwort_K"_s, u"Antwort zum Ankreuzen"_s)),
      art_(new QButtonGroup(this)),
      frage_(new QLabel(u"Antwort als:"_s, this))
{
    Benannt(this, u"Frame2"_s, u"Antwort als:"_s);
    auto *zeile = new QHBoxLayout(this);
    zeile->setContentsMargins(0, 0, 0, 0);
    zeile->setSpacing(16);
    zeile->addWidget(frage_);
    for (QRadioButton *knopf : {Antwort_T_, Antwort_K_}) {
        art_->addButton(knopf);
        connect(knopf, &QRadioButton::clicked, this, &Artwahl::gewaehlt);
        zeile->addWidget(knopf);
    }
    PlatzHalten(this);
}

void Artwahl::Zeigen(Antwortart art)
{
    const bool ankreuzen = art == Antwortart::Ankreuzen;
    art_->setExclusive(false);
    Antwort_T_->setChecked(art == Antwortart::Text);
    Antwort_K_->setChecked(ankreuzen);
    art_->setExclusive(true);
    // Tab goes to the selected option.
    Antwort_T_->setFocusPolicy(ankreuzen ? Qt::ClickFocus : Qt::StrongFocus);
    Antwort_K_->setFocusPolicy(ankreuzen ? Qt::StrongFocus : Qt::ClickFocus);
}

Antwortart Artwahl::Art() const
{
    if (Antwort_K_->isChecked())
        return Antwortart::Ankreuzen;
    return Antwort_T_->isChecked() ? Antwortart::Text : Antwortart::Keine;
}

void Artwahl::FarbenSetzen(const QPalette &form)
{
    frage_->setPalette(Farben::Leise(form));
}

QList<QWidget *> Artwahl::Tabfolge() const
{
    return {Antwort_T_, Antwort_K_};
}

} // namespace paukfix
