// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "TippAnsicht.h"

#include "Abfrageteile.h"
#include "Flaeche.h"
#include "Meldungen.h"
#include "RichTextBox.h"
#include "Texttaste.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QVBoxLayout>

namespace paukfix {

using namespace Qt::StringLiterals;

TippAnsicht::TippAnsicht(QWidget *eltern, Meldungen &meldungen)
    : AntwortAnsicht(eltern), antwort_(FeldBauen(0, u"Ihre Antwort"_s)), loesung_(FeldBauen(5, u"Lösung"_s))
{
    antwort_.text->setAcceptRichText(false);
    antwort_.text->bei_Ablehnung = [&meldungen](const QString &grund) { meldungen.Zeigen(grund); };
    antwort_.text->installEventFilter(this);
    loesung_.text->setReadOnly(true);
    loesung_.text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);

    auto *gitter = new QGridLayout(this);
    gitter->setContentsMargins(0, 0, 0, 0);
    gitter->setHorizontalSpacing(18);
    int spalte = 0;
    for (const Feld &feld : {antwort_, loesung_}) {
        gitter->addWidget(feld.titel, 0, spalte);
        gitter->addWidget(feld.flaeche, 1, spalte);
        gitter->setColumnStretch(spalte++, 1);
    }
}

TippAnsicht::Feld TippAnsicht::FeldBauen(std::size_t nummer, const QString &titel)
{
    Feld feld;
    feld.titel = Beschriftung(this, titel);
    feld.flaeche = new Flaeche(this);
    feld.text = Benannt(new RichTextBox(feld.flaeche), Name("Antwort", nummer), titel);
    feld.text->setFrameShape(QFrame::NoFrame);
    feld.text->viewport()->setAutoFillBackground(false);
    auto *rand = new QVBoxLayout(feld.flaeche);
    rand->setContentsMargins(4, 4, 4, 4);
    rand->addWidget(feld.text);
    return feld;
}

QWidget *TippAnsicht::Erste() const
{
    return antwort_.text;
}

void TippAnsicht::Zeigen(const Abfragekarte &karte)
{
    selbst_ = karte.typ != Antworttyp::Getippt;
    for (const Feld &feld : {antwort_, loesung_}) {
        Schriftgroesse(feld.titel, 0.9);
        Schriftgroesse(feld.text, 1.2);
        feld.text->setMinimumHeight(feld.text->fontMetrics().lineSpacing() * 6);
        feld.text->ZeigeRichText({});
        feld.text->setCurrentCharFormat({});
    }
    antwort_.text->setReadOnly(false);
    loesung_.text->setEnabled(false);
}

Antwort TippAnsicht::Gegeben() const
{
    if (selbst_)
        return {};
    return antwort_.text->PlainText();
}

void TippAnsicht::Aufloesen(const Abfragekarte &karte)
{
    antwort_.text->setReadOnly(true);
    loesung_.text->setEnabled(true);
    loesung_.text->ZeigeRichText(karte.Antwort[0]);
}

QList<QWidget *> TippAnsicht::Tabfolge() const
{
    return {antwort_.text, loesung_.text};
}

void TippAnsicht::Faerben(AbfrageLauf::Stand stand)
{
    const bool gefragt = stand == AbfrageLauf::Stand::Gefragt;
    const auto umranden = [](const Feld &feld, Flaeche::Umriss sonst) {
        feld.flaeche->SetUmriss(feld.text->hasFocus() ? Flaeche::Umriss::Fokus : sonst);
        LeiseFaerben(feld.titel, feld.flaeche->palette().color(QPalette::Base));
    };
    umranden(antwort_, gefragt ? Flaeche::Umriss::Feld : Flaeche::Umriss::Fein);
    umranden(loesung_, gefragt ? Flaeche::Umriss::Gestrichelt : Flaeche::Umriss::Fein);
}

QStringList TippAnsicht::Hinweise() const
{
    return {u"Eingabe prüft"_s, u"Umschalt+Eingabe neue Zeile"_s};
}

bool TippAnsicht::eventFilter(QObject * /*antwort*/, QEvent *event)
{
    if (event->type() != QEvent::KeyPress || antwort_.text->isReadOnly())
        return false; // once checked, Enter goes to the window's default button
    const auto &taste = static_cast<const QKeyEvent &>(*event);
    if (!IstEingabetaste(taste) || taste.modifiers().testFlag(Qt::ShiftModifier))
        return false;
    emit Fertig();
    return true;
}

} // namespace paukfix
