// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Artwahl.h"

#include "Fensterbau.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QLabel>
#include <QRadioButton>

Artwahl::Artwahl(QWidget *parent)
    : QWidget(parent),
      Antwort_T_(Benannt(new QRadioButton(QStringLiteral("Text/&Zahl"), this), QStringLiteral("Antwort_T"),
                         QStringLiteral("Antwort als Text oder Zahl"))),
      Antwort_K_(Benannt(new QRadioButton(QStringLiteral("An&kreuzen"), this), QStringLiteral("Antwort_K"),
                         QStringLiteral("Antwort zum Ankreuzen"))),
      art_(new QButtonGroup(this))
{
    Benannt(this, QStringLiteral("Frame2"), QStringLiteral("Antwort als:"));
    auto *zeile = new QHBoxLayout(this);
    zeile->setContentsMargins(0, 0, 0, 0);
    zeile->addWidget(new QLabel(QStringLiteral("Antwort als:"), this));
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

void Artwahl::FarbenSetzen(const QColor &umriss)
{
    for (QWidget *knopf : {Antwort_T_, Antwort_K_})
        Faerben(knopf, {{QPalette::Window, umriss}});
}

QList<QWidget *> Artwahl::Tabfolge() const
{
    return {Antwort_T_, Antwort_K_};
}
