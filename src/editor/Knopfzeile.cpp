// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Knopfzeile.h"

#include "Fensterbau.h"

#include <QHBoxLayout>
#include <QPushButton>

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
    : CZZurück(Knopf(form, QStringLiteral("<<"), QStringLiteral("CZZurück"), QStringLiteral("zurückblättern"),
                     QStringLiteral("zurückblättern, solange gedrückt"))),
      CZurück(Knopf(form, QStringLiteral("<"), QStringLiteral("CZurück"), QStringLiteral("vorige Karte"),
                    QStringLiteral("vorige Karte STRG+<"))),
      CVor(Knopf(form, QStringLiteral(">"), QStringLiteral("CVor"), QStringLiteral("nächste Karte"),
                 QStringLiteral("nächste Karte STRG + SHIFT + >"))),
      CVVor(Knopf(form, QStringLiteral(">>"), QStringLiteral("CVVor"), QStringLiteral("vorblättern"),
                  QStringLiteral("vorblättern, solange gedrückt"))),
      CEOF(Knopf(form, QStringLiteral(">>|"), QStringLiteral("CEOF"), QStringLiteral("neue Karte am Ende"),
                 QStringLiteral("neue Karte hinter der letzten"))),
      Cadd(Knopf(form, QStringLiteral("&hinzufügen"), QStringLiteral("Cadd"), QStringLiteral("hinzufügen"),
                 QStringLiteral("Karte hinzufügen (STRG+I)"))),
      Cback(Knopf(form, QStringLiteral("Zu&rück"), QStringLiteral("Cback"), QStringLiteral("Zurück"),
                  QStringLiteral("den Editor schließen"))),
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
