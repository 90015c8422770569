// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Statuszeile.h"

#include "Hausfarben.h"
#include "KurzLabel.h"
#include "Tastenkappe.h"

#include <QAccessible>
#include <QToolButton>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

template <typename Label>
Label *Angelegt(const QString &name, QWidget *eltern)
{
    auto *label = new Label(eltern);
    label->setObjectName(name);
    label->setContentsMargins(0, 0, label->fontMetrics().averageCharWidth(), 0);
    return label;
}

} // namespace

Statuszeile::Statuszeile(QWidget *parent)
    : QStatusBar(parent),
      kartei_(new QToolButton(this)),
      geschehen_(Angelegt<KurzLabel>(u"LGeschehen"_s, this)),
      bilanz_(Angelegt<KurzLabel>(u"LBilanz"_s, this)),
      automatik_(Angelegt<QLabel>(u"LAutomatik"_s, this)),
      tongeraet_(Angelegt<QLabel>(u"LTongeraet"_s, this)),
      tasten_(new Tastenkappe(QString(), this))
{
    setSizeGripEnabled(false);
    const int rand = fontMetrics().averageCharWidth();
    setContentsMargins(rand, 0, rand, 0);
    kartei_->setObjectName(u"LKartei"_s);
    kartei_->setAutoRaise(true);
    kartei_->setToolTip(u"Andere Kartei dieses Ordners laden (Strg+L)"_s);
    // Without a choice of files the button is a plain label.
    QPalette farben = kartei_->palette();
    farben.setColor(QPalette::Disabled, QPalette::ButtonText, farben.color(QPalette::WindowText));
    kartei_->setPalette(farben);
    connect(kartei_, &QToolButton::clicked, this, &Statuszeile::KarteiGewaehlt);
    QFont betont = font();
    betont.setBold(true);
    automatik_->setText(u"Automatik läuft"_s);
    automatik_->setFont(betont);
    automatik_->hide();
    tongeraet_->setText(u"kein Tongerät"_s);
    tongeraet_->setToolTip(u"Das System bietet kein Tongerät an: Töne spielen stumm. "
                           u"Ein Gerät, das später kommt, wird von selbst gefunden."_s);
    tongeraet_->hide();
    tasten_->setObjectName(u"LTasten"_s);
    tasten_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    // In a narrow window the keys go first.
    tasten_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    addWidget(kartei_);
    addWidget(geschehen_);
    auto *abstand = new QWidget(this); // one text ends in a number, the next one begins with one
    abstand->setFixedWidth(3 * rand);
    addPermanentWidget(abstand);
    addPermanentWidget(bilanz_);
    addPermanentWidget(automatik_);
    addPermanentWidget(tongeraet_);
    addPermanentWidget(tasten_, 1);
}

void Statuszeile::SetKartei(const QString &name, bool waehlbar)
{
    constexpr int Breite = 40; // characters: its button cannot be narrower than its text
    const QFontMetrics schrift = kartei_->fontMetrics();
    const QString gezeigt = schrift.elidedText(name, Qt::ElideMiddle, schrift.averageCharWidth() * Breite);
    kartei_->setText(gezeigt);
    kartei_->setAccessibleName(gezeigt == name ? QString() : name);
    kartei_->setEnabled(waehlbar);
}

void Statuszeile::SetGeschehen(const QString &text, const QString &kurz)
{
    geschehen_->SetKurzform(kurz);
    if (text == geschehen_->text())
        return;
    geschehen_->setText(text);
    geschehen_->setToolTip(text); // a small window may show less
    if (text.isEmpty())
        return;
    QAccessibleEvent gesagt(geschehen_, QAccessible::Alert);
    QAccessible::updateAccessibility(&gesagt);
}

void Statuszeile::SetBilanz(const QString &text, const QString &kurz)
{
    bilanz_->SetKurzform(kurz);
    bilanz_->setText(text);
    bilanz_->setToolTip(text);
}

void Statuszeile::SetAutomatik(bool laeuft)
{
    automatik_->setVisible(laeuft);
}

void Statuszeile::SetTongeraet(bool vorhanden)
{
    tongeraet_->setVisible(!vorhanden);
}

void Statuszeile::SetTasten(const QString &muster)
{
    tasten_->SetTasten(muster);
    tasten_->setToolTip(tasten_->text());
}

} // namespace paukfix
