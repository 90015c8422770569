// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AppConfig.h"
#include "Bewegungstakt.h"
#include "BoxRechnung.h"
#include "Farben.h"
#include "KarteVerschieben.h"
#include "Kasten.h"
#include "LBOX.h"
#include "PFUse.h"
#include "Tastaturwechsel.h"
#include "Wuerfel.h"
#include "WuerfelBild.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QSessionManager>
#include <QWindow>

#include <exception>
#include <optional>

namespace {

constexpr qint16 FlugLinks = 2280, FlugOben = 975; // twips: where a flight begins

// Milliseconds.
constexpr int Flugdauer = 300, Flugpause = 15;
constexpr int Wurfdauer = 120, Wurfpause = 30; // of a face; a roll shows two

constexpr int Pausenwechsel = 3; // changes of the clock's second from one automatic query to the next

} // namespace

void LBOX::Image0_Click(int fach)
{
    if (kartei_.FehlerStatus > 0 || IstGesperrt())
        return;
    const auto weiter = qScopeGuard([this] { eingabe_.Weitergeben(*this); });
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
    kasten_->KarteLegen(QString::number(kartei_.Felder().FrageNr.Number()), FlugLinks, FlugOben);
    Tastaturhalt halt(windowHandle());
    eingabe_.Halten();
    std::optional<Tastaturrueckgabe> zurueck;
    PFUse abfrage({.store = kartei_,
                   .zustand = umgebung_.zustand,
                   .meldungen = meldungen_,
                   .zufall = umgebung_.zufall,
                   .konfig = umgebung_.konfig,
                   .klang = umgebung_.klang,
                   .stille = umgebung_.stille,
                   .automatikAus = [this] { AutomatikAus(); },
                   .bearbeitbar = static_cast<bool>(fenster_.MKarten),
                   // What was typed before the keyboard was held is on its way to this window, which takes
                   // no keys once the query is shown.
                   .erscheint =
                       [&] {
                           TastenAbholen(windowHandle());
                           eingabe_.Weitergeben(abfrage);
                       },
                   .geht =
                       [&] {
                           eingabe_.Halten();
                           zurueck.emplace(abfrage.windowHandle(), windowHandle());
                           TastenAbholen(windowHandle()); // a hidden window takes none
                       }},
                  this);
    const auto zurueckgegeben = qScopeGuard([&] { zurueck.reset(); }); // while the query's window is there
    const QScopedValueRollback laufend(abfrage_, &abfrage);
    const PFUse::Ausgang ausgang = abfrage.Fragen();
    zurueck.reset();
    if (ausgang != PFUse::Ausgang::Bearbeiten) {
        show();
        activateWindow();
        setFocus();
    }
    if (ausgang == PFUse::Ausgang::Beurteilt) {
        KarteAnimieren(umgebung_.zustand.AbfrageErgebnis);
        kasten_->KarteVerbergen();
        KarteVerschieben();
    }
    kasten_->KarteVerbergen();
    BoxZeichnen();
    if (abfrage.Lage() != umgebung_.konfig.Abfrage) {
        umgebung_.konfig.Abfrage = abfrage.Lage();
        umgebung_.konfig.Sichern(4, QString(),
                                 QStringLiteral("Die Fensterlage konnte nicht gespeichert werden: "));
    }
    if (ausgang == PFUse::Ausgang::Bearbeiten && fenster_.MKarten)
        fenster_.MKarten();
}

void LBOX::KarteAnimieren(qint16 ergebnis)
{
    if (!Animiert())
        return;
    const bool richtig = ergebnis == ErgebnisRichtig;
    const int ziel = ZielFach(kartei_.Felder().FachNr.Integer(), richtig);
    kasten_->KarteFaerben(richtig ? Farben::Richtig : Farben::Falsch);
    const Bewegungstakt takt(umgebung_.oeffner.verzoegerung, Flugdauer, Flugpause);
    for (int schritt = 1; schritt <= takt.Schritte() && !takt.IstUm() && !eingabe_.Unterbrochen();
         ++schritt) {
        kasten_->KarteFliegen(ziel, double(schritt) / takt.Schritte());
        takt.Pause();
    }
}

// Stores the verdict of the query, unless the end of the session has done so.
void LBOX::KarteVerschieben()
{
    if (!std::exchange(abfrage_, nullptr))
        return;
    try {
        ::KarteVerschieben(kartei_, meldungen_, umgebung_.zustand.AbfrageErgebnis);
    } catch (const std::exception &fehler) {
        LesefehlerMelden(QStringLiteral("Die Antwort konnte nicht gespeichert werden: "), fehler);
    }
}

// A verdict that is shown is stored at once, and its query is over: nobody knows how long the program may
// live on.
void LBOX::SitzungEndet(QSessionManager &sitzung)
{
    if (!abfrage_ || !abfrage_->IstBeurteilt())
        return;
    // Nothing may hold up the answer to the desktop: neither the closing nor a message.
    QMetaObject::invokeMethod(std::exchange(abfrage_, nullptr), &QWidget::close, Qt::QueuedConnection);
    try {
        KarteEinordnen(kartei_, umgebung_.zustand.AbfrageErgebnis);
    } catch (const std::exception &) {
        sitzung.cancel();
        QMetaObject::invokeMethod(
            this,
            [this, fehler = std::current_exception()] {
                try {
                    std::rethrow_exception(fehler);
                } catch (const std::exception &grund) {
                    LesefehlerMelden(QStringLiteral("Die Antwort konnte nicht gespeichert werden: "), grund);
                }
            },
            Qt::QueuedConnection);
    }
}

// The box shows what is really stored before the user reads what went wrong.
void LBOX::LesefehlerMelden(const QString &kontext, const std::exception &fehler)
{
    const auto *bekannt = dynamic_cast<const StoreError *>(&fehler);
    const QString text = kontext + ErrorText(fehler);
    umgebung_.gescheitert();
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
    if (kartei_.FehlerStatus > 0 || IstGesperrt())
        return;
    if (KartenImSpiel(kartei_.FachInfo) == 0) {
        meldungen_.Zeigen(QStringLiteral("Sorry, gar keine Karten da"));
        return;
    }
    const auto weiter = qScopeGuard([this] { eingabe_.Weitergeben(*this); });
    const QScopedValueRollback beschaeftigt(beschaeftigt_, true);
    eingabe_.Halten();
    int fach = 0;
    if (!Wuerfeln(fach))
        return;
    // The colour belongs to the pick that is under way.
    const auto weiss = qScopeGuard([this] { kasten_->Wuerfel().SetGrund(Qt::white); });
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
    const auto zeigen = [&] {
        if (!Animiert())
            return;
        bild.repaint();
        const Bewegungstakt takt(umgebung_.oeffner.verzoegerung, Wurfdauer, Wurfpause);
        for (int i = 0; i < takt.Schritte() && !takt.IstUm() && !eingabe_.Unterbrochen(); ++i)
            takt.Pause();
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
