// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "BoxRechnung.h"
#include "Eingabewache.h"
#include "Farben.h"
#include "KarteVerschieben.h"
#include "Kasten.h"
#include "LBOX.h"
#include "PFUse.h"
#include "Wuerfel.h"
#include "WuerfelBild.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QScopedValueRollback>

namespace {

// The delays below last longer with every file that the program has opened: few steps keep the movement
// short.
constexpr int Flugschritte = 14;
constexpr qint16 Flugpause = 12; // milliseconds after each step
constexpr int Wurfschritte = 4;
constexpr qint16 Wurfpause = 40;

constexpr int Pausenwechsel = 3; // changes of the clock's second from one automatic query to the next

} // namespace

void LBOX::Image0_Click(int fach)
{
    if (kartei_.FehlerStatus > 0 || beschaeftigt_)
        return;
    const QScopedValueRollback beschaeftigt(beschaeftigt_, true);
    if (const auto voll = ZuVollesFach(kartei_.FachInfo, fach)) {
        meldungen_.Zeigen(
            QStringLiteral("Fach Nr. %1 ist zu voll  Bitte erst dieses Fach bearbeiten").arg(*voll));
        return;
    }
    try {
        if (!ErsteKarte(kartei_.Karten(), fach)) {
            meldungen_.Zeigen(QStringLiteral("Fach Nr. %1 ist leer").arg(fach));
            return;
        }
        KarteAbfragen();
    } catch (const std::exception &fehler) {
        LesefehlerMelden(QStringLiteral("Die Karte kann nicht gelesen werden: "), fehler);
    }
}

// Asks the current card and does what its answer asks for.
void LBOX::KarteAbfragen()
{
    kasten_->KarteLegen(QString::number(kartei_.Felder().FrageNr.Number()), kartei_.FlugLinks,
                        kartei_.FlugOben);
    PFUse abfrage({.store = kartei_,
                   .zustand = umgebung_.zustand,
                   .meldungen = meldungen_,
                   .zufall = umgebung_.zufall,
                   .konfig = umgebung_.konfig,
                   .klang = umgebung_.klang,
                   .stille = umgebung_.stille,
                   .automatikAus = [this] { AutomatikAus(); },
                   .bearbeitbar = static_cast<bool>(fenster_.MKarten)},
                  this);
    const PFUse::Ausgang ausgang = abfrage.Fragen();
    if (ausgang != PFUse::Ausgang::Bearbeiten) {
        show();
        activateWindow();
        setFocus();
    }
    if (ausgang == PFUse::Ausgang::Beurteilt) {
        const qint16 ergebnis = umgebung_.zustand.AbfrageErgebnis;
        KarteAnimieren(ergebnis);
        kasten_->KarteVerbergen();
        KarteVerschieben(ergebnis);
    }
    kasten_->KarteVerbergen();
    BoxZeichnen();
    if (ausgang == PFUse::Ausgang::Bearbeiten && fenster_.MKarten)
        fenster_.MKarten();
}

void LBOX::KarteAnimieren(qint16 ergebnis)
{
    if (!Animiert())
        return;
    const bool richtig = ergebnis == ErgebnisRichtig;
    const int ziel = ZielFach(kartei_.Felder().FachNr.Integer(), richtig);
    Eingabewache wache;
    kasten_->KarteFaerben(richtig ? Farben::Richtig : Farben::Falsch);
    for (int schritt = 1; schritt <= Flugschritte && !wache.Unterbrochen(); ++schritt) {
        kasten_->KarteFliegen(ziel, double(schritt) / Flugschritte);
        kartei_.DelayMilliseconds(Flugpause);
    }
}

void LBOX::KarteVerschieben(qint16 ergebnis)
{
    try {
        ::KarteVerschieben(kartei_, meldungen_, ergebnis);
    } catch (const std::exception &fehler) {
        LesefehlerMelden(QStringLiteral("Die Antwort konnte nicht gespeichert werden: "), fehler);
    }
}

// The box shows what is really stored before the user reads what went wrong.
void LBOX::LesefehlerMelden(const QString &kontext, const std::exception &fehler)
{
    const auto *bekannt = dynamic_cast<const StoreError *>(&fehler);
    const QString text = kontext + ErrorText(fehler);
    NeuZaehlen(kartei_, bekannt ? bekannt->Number() : Fehler::ZuWenigSpeicher);
    kasten_->KarteVerbergen();
    if (kartei_.IsOpen()) {
        BoxZeichnen();
        meldungen_.Zeigen(text);
        return;
    }
    AutomatikAus();
    StandZeigen();
    meldungen_.Zeigen(text + QStringLiteral("\n\nDie Kartei wurde geschlossen."));
    meldungen_.SetTitel(QStringLiteral("Merkkasten"));
}

bool LBOX::Animiert() const
{
    return mAnimation_->isChecked();
}

void LBOX::PicWürfel_Click()
{
    if (kartei_.FehlerStatus > 0 || beschaeftigt_)
        return;
    if (KartenImSpiel(kartei_.FachInfo) == 0) {
        meldungen_.Zeigen(QStringLiteral("Sorry, gar keine Karten da"));
        return;
    }
    const QScopedValueRollback beschaeftigt(beschaeftigt_, true);
    int fach = 0;
    if (!Wuerfeln(fach))
        return;
    try {
        if (ZufaelligeKarte(kartei_.Karten(), fach, kartei_.FachInfo[static_cast<std::size_t>(fach)].Anzahl,
                            umgebung_.zufall))
            KarteAbfragen();
    } catch (const std::exception &fehler) {
        LesefehlerMelden(QStringLiteral("Die Karte kann nicht gelesen werden: "), fehler);
    }
}

// Rolls until a compartment is accepted. False where none can be: a rejected roll is shown then.
bool LBOX::Wuerfeln(int &fach)
{
    WuerfelBild &bild = kasten_->Wuerfel();
    Eingabewache wache;
    const auto zeigen = [&] {
        if (!Animiert())
            return;
        bild.repaint();
        for (int i = 0; i < Wurfschritte && !wache.Unterbrochen(); ++i)
            kartei_.DelayMilliseconds(Wurfpause);
    };
    const bool moeglich = IrgendeinFachSpielbar(kartei_.FachInfo);
    for (;;) {
        const Wurf wurf = ::Wuerfeln(kartei_.FachInfo, umgebung_.zufall);
        bild.SetGrund(Qt::white);
        bild.Leeren();
        if (Animiert())
            bild.WuerfelZeichnen(wurf.augen);
        zeigen();
        bild.SetGrund(wurf.angenommen ? Farben::Richtig : Farben::Falsch);
        bild.WuerfelZeichnen(wurf.augen);
        zeigen();
        fach = wurf.fach;
        if (wurf.angenommen || !moeglich)
            return wurf.angenommen;
    }
}

void LBOX::MAutoschalter_Click()
{
    if (!mAutoschalter_->isChecked()) {
        AutomatikAus();
        return;
    }
    mAutoschalter_->setText(QStringLiteral("ausschalten"));
    sekunde_ = umgebung_.uhr.Sekunde();
    sekundenwechsel_ = 0;
    lAutomatik_->show();
    takt_.start();
}

void LBOX::AutomatikAus()
{
    takt_.stop();
    lAutomatik_->hide();
    mAutoschalter_->setChecked(false);
    mAutoschalter_->setText(QStringLiteral("einschalten"));
}

// Looks at the clock. While a query or anything else is open, the pause has not begun yet.
void LBOX::AutomatikTakt()
{
    const qint64 jetzt = umgebung_.uhr.Sekunde();
    if (beschaeftigt_ || QApplication::activeModalWidget() || QApplication::activePopupWidget()) {
        sekundenwechsel_ = 0;
    } else if (jetzt != sekunde_ && ++sekundenwechsel_ >= Pausenwechsel) {
        sekundenwechsel_ = 0;
        Image0_Click(umgebung_.zustand.VollstesFach);
    }
    sekunde_ = umgebung_.uhr.Sekunde();
}

void LBOX::Form_KeyPress(const QKeyEvent &taste)
{
    if (taste.key() == Qt::Key_Return || taste.key() == Qt::Key_Enter || taste.key() == Qt::Key_Space) {
        Image0_Click(umgebung_.zustand.VollstesFach);
        return;
    }
    const QString text = taste.text();
    const QChar zeichen = text.isEmpty() ? QChar() : text.front();
    if (zeichen >= u'1' && zeichen <= u'5')
        Image0_Click(zeichen.unicode() - u'0');
    else if (zeichen.toLower() == u'n')
        Image0_Click(FachNeu);
    else if (zeichen.toLower() == u'w')
        PicWürfel_Click();
}
