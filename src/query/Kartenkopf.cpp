// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Kartenkopf.h"

#include "Abfrage.h"
#include "Abfrageteile.h"
#include "KurzLabel.h"

#include <QHBoxLayout>

namespace paukfix {

using namespace Qt::StringLiterals;

Kartenkopf::Kartenkopf(QWidget *eltern)
    : QWidget(eltern),
      MaskFrageNr_(Wert(u"MaskFrageNr"_s, new QLabel(this))),
      MaskFachNr_(Wert(u"MaskFachNr"_s, new QLabel(this))),
      neu_(Wert(u"FachName"_s, new QLabel(u"· Neu"_s, this))),
      themaTitel_(Beschriftung(this, u"Thema"_s)),
      MaskThema_(Wert(u"MaskThema"_s, new KurzLabel(this))),
      uebrig_(Beschriftung(this, {}))
{
    constexpr int Abstand = 4, Gruppe = 24;
    uebrig_->setObjectName(u"Uebrig"_s);
    auto *zeile = new QHBoxLayout(this);
    zeile->setContentsMargins(0, 0, 0, 0);
    zeile->setSpacing(Abstand);
    zeile->addWidget(Beschriftung(this, u"Frage Nr."_s));
    zeile->addWidget(MaskFrageNr_);
    zeile->addSpacing(Gruppe - Abstand);
    zeile->addWidget(Beschriftung(this, u"Fach"_s));
    zeile->addWidget(MaskFachNr_);
    zeile->addWidget(neu_);
    zeile->addSpacing(Gruppe - Abstand);
    zeile->addWidget(themaTitel_);
    zeile->addWidget(MaskThema_, 1000);
    zeile->addStretch(1); // where there is no topic
    zeile->addSpacing(Gruppe - Abstand);
    zeile->addWidget(uebrig_);
}

QLabel *Kartenkopf::Wert(const QString &name, QLabel *label)
{
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    return label;
}

void Kartenkopf::Zeigen(const Abfragekarte &karte, int uebrig)
{
    for (QLabel *label : findChildren<QLabel *>())
        label->setFont(Schriftgrad::In(font(), Schriftgrad::Klein));
    for (QLabel *wert : {MaskFrageNr_, MaskFachNr_, neu_, MaskThema_})
        HalbfettSetzen(wert);
    // A number alone says nothing to those who hear it.
    const QString thema = Kurztext(karte.Thema);
    MaskFrageNr_->setText(karte.FrageNr);
    MaskFrageNr_->setAccessibleName(u"Frage Nr. %1"_s.arg(karte.FrageNr));
    MaskFachNr_->setText(QString::number(karte.FachNr));
    MaskFachNr_->setAccessibleName(u"Fach %1"_s.arg(karte.FachNr));
    neu_->setVisible(karte.FachNr == 0);
    MaskThema_->setText(karte.Thema);
    MaskThema_->setToolTip(thema.toHtmlEscaped());
    MaskThema_->setAccessibleName(u"Thema %1"_s.arg(thema));
    for (QLabel *label : {themaTitel_, MaskThema_})
        label->setVisible(!karte.Thema.isEmpty());
    uebrig_->setText(uebrig > 0 ? u"noch %1 in diesem Fach"_s.arg(uebrig) : u"die letzte in diesem Fach"_s);
}

} // namespace paukfix
