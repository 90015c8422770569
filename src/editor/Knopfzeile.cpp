// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Knopfzeile.h"

#include "Fensterbau.h"

#include <QHBoxLayout>
#include <QPushButton>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

QPushButton *Knopf(QWidget *form, const QString &text, const QString &name, const QString &zugaenglich,
                   const QString &tipp)
{
    auto *neu = Benannt(new QPushButton(text, form), name, zugaenglich);
    neu->setToolTip(tipp);
    PlatzHalten(neu);
    return neu;
}

} // namespace

Knopfzeile::Knopfzeile(QWidget *form)
    : CZZurück(
          Knopf(form, u"<<"_s, u"CZZurück"_s, u"zurückblättern"_s, u"zurückblättern, solange gedrückt"_s)),
      CZurück(Knopf(form, u"<"_s, u"CZurück"_s, u"vorige Karte"_s, u"vorige Karte STRG+<"_s)),
      CVor(Knopf(form, u">"_s, u"CVor"_s, u"nächste Karte"_s, u"nächste Karte STRG + SHIFT + >"_s)),
      CVVor(Knopf(form, u">>"_s, u"CVVor"_s, u"vorblättern"_s, u"vorblättern, solange gedrückt"_s)),
      CEOF(Knopf(form, u">>|"_s, u"CEOF"_s, u"neue Karte am Ende"_s, u"neue Karte hinter der letzten"_s)),
      Cadd(Knopf(form, u"&hinzufügen"_s, u"Cadd"_s, u"hinzufügen"_s, u"Karte hinzufügen (STRG+I)"_s)),
      Cback(Knopf(form, u"Zu&rück"_s, u"Cback"_s, u"Zurück"_s, u"den Editor schließen"_s)),
      zeile(new QHBoxLayout)
{
    for (QPushButton *taste : {CZZurück, CZurück, CVor, CVVor, CEOF}) {
        taste->setMinimumWidth(form->fontMetrics().height() * 3);
        taste->setMaximumWidth(form->fontMetrics().height() * 4);
        zeile->addWidget(taste);
    }
    zeile->addStretch(1);
    zeile->addWidget(Cadd);
    zeile->addWidget(Cback);
}

QList<QWidget *> Knopfzeile::Alle() const
{
    return {CZZurück, CZurück, CVor, CVVor, CEOF, Cadd, Cback};
}

} // namespace paukfix
