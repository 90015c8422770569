// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "TippAnsicht.h"

#include "Abfrageteile.h"
#include "Flaeche.h"
#include "Kurztext.h"
#include "Loesungsfeld.h"
#include "Meldungen.h"
#include "RichTextBox.h"
#include "Tastenkappe.h"
#include "TextHelpers.h"
#include "Texttaste.h"
#include "Unterschied.h"

#include <QKeyEvent>
#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr int Abstand = 4;   // between a label and its field
constexpr int Darunter = 10; // below the field

// The part of a text that is compared.
Stelle Verglichen(const QString &text, bool gestutzt)
{
    Stelle teil{0, text.size()};
    if (const qsizetype hinweis = text.indexOf("Hinweis:"_L1); !gestutzt && hinweis >= 0) {
        teil.laenge = hinweis;
        gestutzt = true;
    }
    if (!gestutzt)
        return teil;
    const QString getrimmt = Trimmed(text.left(teil.laenge));
    teil.anfang = std::max<qsizetype>(text.indexOf(getrimmt), 0);
    teil.laenge = getrimmt.size();
    return teil;
}

QList<Stelle> Verschoben(QList<Stelle> stellen, qsizetype um)
{
    for (Stelle &stelle : stellen)
        stelle.anfang += um;
    return stellen;
}

} // namespace

TippAnsicht::TippAnsicht(QWidget *eltern, Meldungen &meldungen)
    : AntwortAnsicht(eltern),
      titel_(Beschriftung(this, u"Ihre Antwort"_s)),
      feld_(new Flaeche(this)),
      antwort_(Benannt(new RichTextBox(feld_), Name("Antwort", 0), u"Ihre Antwort"_s)),
      tasten_(new Tastenkappe({}, this)),
      loesung_(new Loesungsfeld(this))
{
    antwort_->setAcceptRichText(false);
    antwort_->bei_Ablehnung = [&meldungen](const QString &grund) { meldungen.Zeigen(grund); };
    antwort_->installEventFilter(this);
    antwort_->setFrameShape(QFrame::NoFrame);
    antwort_->viewport()->setAutoFillBackground(false);
    antwort_->document()->setDocumentMargin(0);
    tasten_->setObjectName(u"Antworttasten"_s);
    auto *rand = new QVBoxLayout(feld_);
    rand->setContentsMargins(Loesungsfeld::Einzug, 0, Loesungsfeld::Einzug, 0);
    rand->addWidget(antwort_);
}

QWidget *TippAnsicht::Erste() const
{
    return antwort_;
}

void TippAnsicht::Zeigen(const Abfragekarte &karte)
{
    selbst_ = karte.typ != Antworttyp::Getippt;
    titel_->setFont(Schriftgrad::In(font(), Schriftgrad::Klein));
    antwort_->setFont(Kartenschrift(font()));
    antwort_->SetFaktor(Kartenfaktor(font(), Schriftgrad::Gross));
    antwort_->ZeigeRichText({});
    antwort_->setCurrentCharFormat({});
    antwort_->setReadOnly(false);
    feld_->SetUmriss(Flaeche::Umriss::Feld);
    tasten_->SetTasten(u"[Eingabe] prüft · [Umschalt]+[Eingabe] neue Zeile · [Esc] ohne Antwort zurück"_s);
    tasten_->setVisible(!kompakt_);
    loesung_->Vorbereiten(karte);
    Anordnen();
}

Antwort TippAnsicht::Gegeben() const
{
    if (selbst_)
        return {};
    return antwort_->PlainText();
}

void TippAnsicht::Aufloesen(const Abfragekarte &karte, bool vergleichen)
{
    antwort_->setReadOnly(true);
    tasten_->hide();
    loesung_->Zeigen(karte);
    // What is shown may be another text than the plain one that counts.
    const QString gezeigt = loesung_->Text()->document()->toRawText();
    if (!vergleichen || Referenztext(loesung_->Text()->PlainText()) != Referenztext(karte.Antwort_1_Klartext))
        return;
    const QString getippt = antwort_->document()->toRawText();
    const Stelle links = Verglichen(getippt, true), rechts = Verglichen(gezeigt, false);
    const Unterschied anders = UnterschiedVon(QStringView(getippt).mid(links.anfang, links.laenge),
                                              QStringView(gezeigt).mid(rechts.anfang, rechts.laenge));
    QList<Textmarke> marken;
    for (const Stelle &stelle : Verschoben(anders.inEingabe, links.anfang))
        marken << Textmarke{stelle.anfang, stelle.laenge, Buchstabenmarke(palette(), false)};
    antwort_->SetMarken(marken);
    loesung_->Vergleichen(Verschoben(anders.inLoesung, rechts.anfang), anders.worte);
}

int TippAnsicht::Feldhoehe(int breite) const
{
    const int zeilen = loesung_->Zeilen(breite - Loesungsfeld::Einzug);
    return std::max(kompakt_ ? 36 : 44, antwort_->Zeilenhoehe() * zeilen + (kompakt_ ? 8 : 16));
}

int TippAnsicht::Hoehe(int breite) const
{
    return titel_->sizeHint().height() + Abstand + Feldhoehe(breite) + (kompakt_ ? 4 : Darunter) +
           std::max(loesung_->Hoehe(breite), tasten_->sizeHint().height());
}

void TippAnsicht::SetKompakt(bool kompakt)
{
    kompakt_ = kompakt;
    tasten_->setVisible(!kompakt && loesung_->isHidden());
    loesung_->SetKompakt(kompakt);
    Anordnen();
}

QList<QWidget *> TippAnsicht::Tabfolge() const
{
    return {antwort_, loesung_->Text()};
}

QString TippAnsicht::Hinweise() const
{
    return {};
}

QString TippAnsicht::Ansage() const
{
    const QString loesung = u"Lösung: %1."_s.arg(Einzeilig(Kurztext(loesung_->Text()->PlainText())));
    return loesung_->Worte().isEmpty() ? loesung : u"%1 %2."_s.arg(loesung, loesung_->Worte());
}

void TippAnsicht::resizeEvent(QResizeEvent *event)
{
    AntwortAnsicht::resizeEvent(event);
    Anordnen();
}

void TippAnsicht::Anordnen()
{
    const int titel = titel_->sizeHint().height();
    titel_->setGeometry(0, 0, width(), titel);
    const int feld = Feldhoehe(width());
    feld_->setGeometry(0, titel + Abstand, width(), feld);
    // A few lines stand in the middle of the field as long as they fit.
    const int oben = titel + Abstand + feld + (kompakt_ ? 4 : Darunter);
    tasten_->setGeometry(0, oben, width(), tasten_->sizeHint().height());
    loesung_->setGeometry(0, oben, width(), loesung_->Hoehe(width()));
    const int zeilen = loesung_->Zeilen(width() - Loesungsfeld::Einzug);
    const int rand = (feld - antwort_->Zeilenhoehe() * zeilen) / 2;
    feld_->layout()->setContentsMargins(Loesungsfeld::Einzug, rand, Loesungsfeld::Einzug, 0);
}

bool TippAnsicht::eventFilter(QObject * /*antwort*/, QEvent *event)
{
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
        feld_->SetUmriss(event->type() == QEvent::FocusIn ? Flaeche::Umriss::Fokus : Flaeche::Umriss::Feld);
    if (event->type() != QEvent::KeyPress || antwort_->isReadOnly())
        return false; // once checked, Enter goes to the window's default button
    const auto &taste = static_cast<const QKeyEvent &>(*event);
    if (!IstEingabetaste(taste) || taste.modifiers().testFlag(Qt::ShiftModifier))
        return false;
    emit Fertig();
    return true;
}

} // namespace paukfix
