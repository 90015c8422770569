// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "LBOX.h"

#include "BoxRechnung.h"
#include "Dateiannahme.h"
#include "Deckquelle.h"
#include "Karteititel.h"
#include "Kasten.h"
#include "Kurztext.h"
#include "Statuszeile.h"
#include "Wartefenster.h"
#include "Wuerfel.h"

#include <QAction>
#include <QCloseEvent>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <QScreen>
#include <QSessionManager>

#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// Of the endings that the import's own dialog offers.
bool IstListe(const QString &pfad)
{
    const QString endung = QFileInfo(pfad).suffix().toLower();
    return endung == u"txt" || endung == u"asc" || endung == u"csv" || endung == u"tsv";
}

} // namespace

LBOX::LBOX(CardStore &kartei, KarteiOeffner &oeffner, const Dienste &dienste, const Programmstart &start,
           QWidget *parent)
    : QMainWindow(parent),
      kartei_(kartei),
      oeffner_(oeffner),
      dienste_(dienste),
      befehlszeile_(start.befehlszeile),
      weiter_(start.weiter),
      kasten_(new Kasten(kartei_.FachInfo, this)),
      flug_(*kasten_, oeffner_.verzoegerung, dienste.konfig, eingabe_),
      aufbewahrung_(kartei_, dienste.meldungen, dienste.dialoge),
      lernlauf_({kartei_, dienste.meldungen, belegung_, eingabe_, flug_, aufbewahrung_}),
      wuerfelspiel_(
          {kartei_, oeffner_.verzoegerung, dienste, belegung_, eingabe_, kasten_->Wuerfel(), lernlauf_}),
      automatik_(dienste.clock, belegung_),
      aktionen_({kartei_, oeffner_, dienste, belegung_}, start.verzeichnis),
      ruecknahme_(kartei_, dienste.meldungen),
      menue_({*this, kartei_, dienste, belegung_, aktionen_, automatik_, ruecknahme_, fenster_}),
      status_(new Statuszeile(this))
{
    setObjectName(u"LBOX"_s);
    setWindowTitle(u"Lern-Box"_s);
    setAccessibleName(u"Lern-Box"_s);
    // Keys are the window's; what has the focus from the start does what Enter does.
    setFocusPolicy(Qt::StrongFocus);
    setFocusProxy(&kasten_->Kopf().Weiter());
    setCentralWidget(kasten_);
    setStatusBar(status_);
    karteiWechseln_ = new QAction(this);
    karteiWechseln_->setObjectName(u"KarteiWechseln"_s);
    karteiWechseln_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_L));
    addAction(karteiWechseln_);
    Verbinden();
    oeffner_.BoxZeichnen = [this] {
        kasten_->ZeigenLaufend(Rechnen());
        // A tool that has opened another file tells its success before it ends.
        if (kartei_.FehlerStatus == 0)
            status_->SetKartei(Boxmenue::OhneKuerzel(kartei_.CurrentFileName), false);
    };
    oeffner_.WartenZeigen = [this](const QString &was, const QString &abgebrochen) {
        return WartenMitAbbruch(was, abgebrochen, dienste_.meldungen.Titel(), this);
    };
    connect(&dienste_.konfig, &AppConfig::Gelesen, this, [this] { menue_.KonfigZeigen(); });
    BoxZeichnen();
    resize(sizeHint().boundedTo(screen()->availableSize() * 0.9));
}

LBOX::~LBOX()
{
    oeffner_.BoxZeichnen = [] {};
    oeffner_.WartenZeigen = [](const QString &, const QString &) { return Progress(); };
    dienste_.konfig.disconnect(this); // the settings outlive the window
}

void LBOX::Verbinden()
{
    connect(kasten_, &Kasten::Gemalt, this, &LBOX::Form_Load);
    connect(kasten_, &Kasten::FachGewaehlt, &lernlauf_, &Lernlauf::Image0_Click);
    connect(kasten_, &Kasten::WuerfelGewaehlt, this, [this] { wuerfelspiel_.PicWürfel_Click(); });
    connect(&kasten_->Kopf(), &Kastenkopf::WeiterGewaehlt, this, &LBOX::Weiter);
    connect(karteiWechseln_, &QAction::triggered, this, [this] {
        if (!belegung_.IstGesperrt())
            aktionen_.Wechseln(fenster_.KarteiWechseln());
    });
    connect(status_, &Statuszeile::KarteiGewaehlt, karteiWechseln_, &QAction::trigger);

    ruhe_.setSingleShot(true);
    ruhe_.setInterval(30);
    connect(&ruhe_, &QTimer::timeout, this, [this] { lernlauf_.Vorbereiten(vollstesFach_); });
    connect(&lernlauf_, &Lernlauf::Zurueckgekehrt, this, [this] {
        show();
        activateWindow();
        setFocus();
    });
    connect(&lernlauf_, &Lernlauf::Bewegt, this, &LBOX::Bewegt);
    connect(&lernlauf_, &Lernlauf::BoxGeaendert, this, &LBOX::BoxZeichnen);
    connect(&lernlauf_, &Lernlauf::BearbeitenGewuenscht, this, [this] {
        automatik_.AutomatikAus();
        if (fenster_.MKarten)
            fenster_.MKarten();
    });
    connect(&lernlauf_, &Lernlauf::Gescheitert, this, &LBOX::Gescheitert);
    aufbewahrung_.umgezogen = [this](const QString &pfad) { aktionen_.Umgezogen(pfad); };
    connect(&lernlauf_, &Lernlauf::KarteiVerloren, this, [this] {
        automatik_.AutomatikAus();
        BoxZeichnen();
    });
    connect(
        qGuiApp, &QGuiApplication::commitDataRequest, &lernlauf_,
        [this](QSessionManager &sitzung) {
            if (!lernlauf_.SitzungEndet())
                sitzung.cancel();
        },
        Qt::DirectConnection);

    connect(&ruecknahme_, &Ruecknahme::BoxGeaendert, this, [this](const QString &getan) {
        if (!getan.isEmpty()) {
            geschehen_ = getan;
            geschehenKurz_.clear();
            bilanz_.Nachsehen(kartei_.Karten());
        }
        BoxZeichnen();
    });
    connect(&ruecknahme_, &Ruecknahme::Gescheitert, this, &LBOX::Gescheitert);

    connect(&automatik_, &Automatik::Umgeschaltet, status_, &Statuszeile::SetAutomatik);
    connect(&automatik_, &Automatik::Faellig, this, [this] {
        if (kartei_.NurAnsehen())
            automatik_.AutomatikAus();
        else
            lernlauf_.Image0_Click(vollstesFach_);
    });

    auto *annahme = new Dateiannahme(*this, [this](const QString &pfad) {
        return !belegung_.IstGesperrt() && (KarteiAktionen::Kennt(pfad) || EinlesefensterFuer(pfad));
    });
    connect(annahme, &Dateiannahme::Abgelegt, this, [this](const QString &pfad) {
        if (belegung_.IstGesperrt())
            return;
        if (EinlesefensterFuer(pfad))
            Einlesen(pfad);
        else
            aktionen_.DateiOeffnen(pfad);
    });

    connect(&aktionen_, &KarteiAktionen::WirdAngelegt, this,
            [this](const QString &name) { kasten_->SetHinweis(name + u" wird angelegt …"_s); });
    connect(&aktionen_, &KarteiAktionen::WirdGeoeffnet, this, [this](const QString &name) {
        status_->SetKartei(QString(), false);
        geschehen_.clear();
        geschehenKurz_.clear();
        kasten_->SetHinweis(Kurztext(name, 40) + u" wird geöffnet …"_s);
    });
    connect(&aktionen_, &KarteiAktionen::Fertig, this, &LBOX::BoxZeichnen);
    connect(&menue_, &Boxmenue::Zurueck, this, &LBOX::BoxZeichnen); // another file may be open
}

// Opening a file blocks the program for a second or two, so it runs when the window has been painted.
void LBOX::Form_Load()
{
    emit Gemalt();
    dienste_.konfig.ReadConfig();
    geladen_ = true;
    if (weiter_)
        befehlszeile_ = dienste_.konfig.LetzteDatei(0);
    if (!KarteiAktionen::Kennt(befehlszeile_))
        BoxZeichnen(); // behind what asks for a file
    if (EinlesefensterFuer(befehlszeile_))
        Einlesen(QDir(aktionen_.Arbeitsverzeichnis()).absoluteFilePath(befehlszeile_));
    else
        aktionen_.Starten(befehlszeile_);
}

// The window that reads such a file in; an empty one where none can, now.
const LBoxFenster::Einlesefenster &LBOX::EinlesefensterFuer(const QString &pfad) const
{
    static const LBoxFenster::Einlesefenster keines;
    if (IstDeckname(pfad))
        return fenster_.FremdeKartei;
    return IstListe(pfad) && kartei_.IsOpen() && !kartei_.NurAnsehen() ? fenster_.AsciiImport : keines;
}

void LBOX::Einlesen(const QString &pfad)
{
    EinlesefensterFuer(pfad)(pfad);
    BoxZeichnen(); // another file may be open
}

void LBOX::SetFenster(LBoxFenster fenster)
{
    fenster_ = std::move(fenster);
    lernlauf_.SetBearbeitbar(static_cast<bool>(fenster_.MKarten));
    menue_.Freischalten();
    BoxZeichnen();
}

BoxBild LBOX::Rechnen()
{
    const BoxBild bild = BoxRechnen(kartei_.FachInfo);
    vollstesFach_ = bild.VollstesFach;
    kasten_->SetZustand(kartei_.NurAnsehen()                 ? Kastenkopf::Zustand::Ansehen
                        : kartei_.IsOpen()                   ? Kastenkopf::Zustand::Offen
                        : geladen_ && !belegung_.IstBelegt() ? Kastenkopf::Zustand::Geschlossen
                                                             : Kastenkopf::Zustand::Wartend);
    return bild;
}

void LBOX::BoxZeichnen()
{
    const bool waehlbar = static_cast<bool>(fenster_.KarteiWechseln);
    const QString zusatz = NurAnsehenZusatz(kartei_);
    setWindowTitle(u"Lern-Box"_s + zusatz);
    status_->SetKartei(kartei_.IsOpen() ? Boxmenue::OhneKuerzel(kartei_.CurrentFileName) + zusatz
                                        : u"Keine Kartei geöffnet"_s,
                       waehlbar);
    karteiWechseln_->setEnabled(waehlbar);
    const BoxBild bild = Rechnen();
    if (dienste_.konfig.Animation)
        kasten_->ZeigenTickend(bild);
    else
        kasten_->Zeigen(bild);
    HinweiseZeigen();
    menue_.BoxZeigen();
    ruhe_.start();
    emit BoxGezeichnet();
}

void LBOX::Bewegt(const Bewegung &bewegung)
{
    geschehen_ = Geschehen(bewegung, kartei_.FachInfo);
    geschehenKurz_ = GeschehenKurz(bewegung);
    bilanz_.Zaehlen(bewegung, kartei_.sitzung);
}

// The next step, wherever the keys of the box lead to none, and what was done so far.
void LBOX::HinweiseZeigen()
{
    QString zettel;
    std::function<void()> tun;
    if (!kartei_.IsOpen()) {
        if (geladen_) {
            tun = [this] { findChild<QAction *>(u"Möffnen"_s)->trigger(); };
            zettel = u"Keine Kartei geöffnet.\n\n"
                     u"Strg+O öffnet eine, Strg+N legt eine neue an."_s;
        }
    } else if (IstLeer(kartei_.FachInfo) && fenster_.MKarten) {
        zettel = u"Noch keine Karten: ändern › Karten legt welche an."_s;
        tun = [this] { findChild<QAction *>(u"MKarten"_s)->trigger(); };
    }
    const bool offen = kartei_.IsOpen();
    // Compartments 1 and 2, both too full, are in each other's way and in that of all others; no other two
    // can be.
    const bool gesperrt =
        offen && KartenImSpiel(kartei_.FachInfo) > 0 && !IrgendeinFachSpielbar(kartei_.FachInfo);
    status_->SetGeschehen(gesperrt ? u"Fach 1 und 2 sperren einander: Karten löschen (ändern › Karten) "
                                     u"oder Extras › Alle Karten nach Neu"_s
                          : offen ? geschehen_
                                  : QString(),
                          offen && !gesperrt ? geschehenKurz_ : QString());
    status_->SetBilanz(offen ? bilanz_.Text(kartei_.sitzung) : QString(), Bilanz::Kurz(kartei_.sitzung));
    status_->SetTasten(offen && !kartei_.NurAnsehen() && zettel.isEmpty() && !gesperrt
                           ? u"[1] bis [5], [N] Fach wählen · [W] würfeln · [F1] Handbuch"_s
                           : QString());
    kasten_->Kopf().SetAntworten(offen ? Bilanz::Seither(kartei_.sitzung, QDate::currentDate()) : QString());
    kasten_->SetHinweis(zettel, std::move(tun));
}

// What Enter does, and the button that leads.
void LBOX::Weiter()
{
    if (kartei_.IsOpen() && !kartei_.NurAnsehen())
        lernlauf_.Image0_Click(vollstesFach_);
    else
        findChild<QAction *>(kartei_.IsOpen() ? u"Manzeigen"_s : u"Möffnen"_s)->trigger();
}

void LBOX::Form_KeyPress(const QKeyEvent &taste)
{
    if (taste.key() == Qt::Key_Return || taste.key() == Qt::Key_Enter || taste.key() == Qt::Key_Space) {
        Weiter();
        return;
    }
    const QString text = taste.text();
    const QChar zeichen = text.isEmpty() ? QChar() : text.front();
    if (zeichen >= u'1' && zeichen <= u'5')
        lernlauf_.Image0_Click(zeichen.unicode() - u'0');
    else if (zeichen.toLower() == u'n')
        lernlauf_.Image0_Click(FachNeu);
    else if (zeichen.toLower() == u'w')
        wuerfelspiel_.PicWürfel_Click();
}

void LBOX::keyPressEvent(QKeyEvent *event)
{
    constexpr auto Befehl = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;
    // A key that is held down must not ask one card after the other.
    if (event->modifiers() & Befehl || event->isAutoRepeat())
        QMainWindow::keyPressEvent(event);
    else
        Form_KeyPress(*event);
}

void LBOX::showEvent(QShowEvent *event)
{
    QMainWindow::showEvent(event);
    setFocus();
}

void LBOX::closeEvent(QCloseEvent *event)
{
    if (Beschaeftigt()) {
        event->ignore();
        emit BeendenGewuenscht();
        return;
    }
    if (fenster_.DarfSchliessen && !fenster_.DarfSchliessen()) {
        event->ignore();
        return;
    }
    automatik_.AutomatikAus();
    event->accept();
}

} // namespace paukfix
