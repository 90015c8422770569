// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "LBOX.h"

#include "BoxRechnung.h"
#include "Kasten.h"
#include "KurzLabel.h"
#include "Wartefenster.h"
#include "Wuerfel.h"

#include <QAction>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QScreen>
#include <QSessionManager>
#include <QStatusBar>
#include <QToolButton>

#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

LBOX::LBOX(CardStore &kartei, KarteiOeffner &oeffner, BoxZustand &zustand, const Dienste &dienste,
           const Programmstart &start, QWidget *parent)
    : QMainWindow(parent),
      kartei_(kartei),
      oeffner_(oeffner),
      zustand_(zustand),
      dienste_(dienste),
      befehlszeile_(start.befehlszeile),
      kasten_(new Kasten(kartei_.FachInfo, this)),
      flug_(kasten_->Karte(), oeffner_.verzoegerung, dienste.konfig, eingabe_),
      lernlauf_({kartei_, dienste.meldungen, belegung_, eingabe_, flug_}),
      wuerfelspiel_(
          {kartei_, oeffner_.verzoegerung, dienste, belegung_, eingabe_, kasten_->Wuerfel(), lernlauf_}),
      automatik_(dienste.clock, belegung_),
      aktionen_({kartei_, oeffner_, dienste, belegung_}, start.verzeichnis),
      menue_({*this, dienste, belegung_, aktionen_, automatik_, fenster_})
{
    setObjectName(u"LBOX"_s);
    setWindowTitle(u"Lern-Box"_s);
    setAccessibleName(u"Lern-Box"_s);
    // Keys belong to the window until Tab takes them to a part of the box.
    setFocusPolicy(Qt::StrongFocus);
    setCentralWidget(kasten_);
    StatuszeileBauen();
    Verbinden();
    oeffner_.BoxZeichnen = [this] {
        kasten_->ZeigenLaufend(Rechnen());
        // A tool that has opened another file tells its success before it ends.
        if (kartei_.FehlerStatus == 0)
            lKartei_->setText(Boxmenue::OhneKuerzel(kartei_.CurrentFileName));
    };
    oeffner_.WartenZeigen = [this](const QString &was, const QString &abgebrochen) {
        return WartenMitAbbruch(was, abgebrochen, dienste_.meldungen.Titel(), this);
    };
    connect(&dienste_.konfig, &AppConfig::Gelesen, this, [this] { menue_.KonfigZeigen(); });
    StandZeigen();
    resize(sizeHint().boundedTo(screen()->availableSize() * 0.9));
}

LBOX::~LBOX()
{
    oeffner_.BoxZeichnen = [] {};
    oeffner_.WartenZeigen = [](const QString &, const QString &) { return Progress(); };
    dienste_.konfig.disconnect(this); // the settings outlive the window
}

void LBOX::StatuszeileBauen()
{
    lKartei_ = new QToolButton(this);
    lKartei_->setObjectName(u"LKartei"_s);
    lKartei_->setAutoRaise(true);
    lKartei_->setToolTip(u"Andere Kartei dieses Ordners laden (Strg+L)"_s);
    karteiWechseln_ = new QAction(this);
    karteiWechseln_->setObjectName(u"KarteiWechseln"_s);
    karteiWechseln_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_L));
    addAction(karteiWechseln_);
    // Without a choice of files the button is a plain label.
    QPalette farben = lKartei_->palette();
    farben.setColor(QPalette::Disabled, QPalette::ButtonText, farben.color(QPalette::WindowText));
    lKartei_->setPalette(farben);
    lAutomatik_ = new QLabel(u"Automatik läuft"_s, this);
    lAutomatik_->setObjectName(u"LAutomatik"_s);
    QFont betont = lAutomatik_->font();
    betont.setBold(true);
    lAutomatik_->setFont(betont);
    lAutomatik_->hide();
    lTongeraet_ = new QLabel(u"kein Tongerät"_s, this);
    lTongeraet_->setObjectName(u"LTongeraet"_s);
    lTongeraet_->setToolTip(u"Das System bietet kein Tongerät an: Töne spielen stumm. "
                            u"Ein Gerät, das später kommt, wird von selbst gefunden."_s);
    lTongeraet_->setContentsMargins(0, 0, 2 * fontMetrics().averageCharWidth(), 0);
    lTongeraet_->hide();
    lTasten_ = new KurzLabel(this);
    lTasten_->setObjectName(u"LTasten"_s);
    statusBar()->addWidget(lKartei_);
    statusBar()->addPermanentWidget(lAutomatik_);
    statusBar()->addPermanentWidget(lTongeraet_);
    statusBar()->addPermanentWidget(lTasten_);
}

void LBOX::Verbinden()
{
    connect(kasten_, &Kasten::Gemalt, this, &LBOX::Form_Load);
    connect(kasten_, &Kasten::FachGewaehlt, &lernlauf_, &Lernlauf::Image0_Click);
    connect(kasten_, &Kasten::WuerfelGewaehlt, this, [this] { wuerfelspiel_.PicWürfel_Click(); });
    connect(karteiWechseln_, &QAction::triggered, this, &LBOX::KarteiWechseln_Click);
    connect(lKartei_, &QToolButton::clicked, karteiWechseln_, &QAction::trigger);

    ruhe_.setSingleShot(true);
    ruhe_.setInterval(30);
    connect(&ruhe_, &QTimer::timeout, this, [this] { lernlauf_.Vorbereiten(zustand_.VollstesFach); });
    connect(&lernlauf_, &Lernlauf::Zurueckgekehrt, this, [this] {
        show();
        activateWindow();
        setFocus();
    });
    connect(&lernlauf_, &Lernlauf::BoxGeaendert, this, &LBOX::BoxZeichnen);
    connect(&lernlauf_, &Lernlauf::BearbeitenGewuenscht, this, [this] {
        automatik_.AutomatikAus();
        if (fenster_.MKarten)
            fenster_.MKarten();
    });
    connect(&lernlauf_, &Lernlauf::Gescheitert, this, &LBOX::Gescheitert);
    connect(&lernlauf_, &Lernlauf::KarteiVerloren, this, [this] {
        automatik_.AutomatikAus();
        StandZeigen();
    });
    connect(
        qGuiApp, &QGuiApplication::commitDataRequest, &lernlauf_,
        [this](QSessionManager &sitzung) {
            if (!lernlauf_.SitzungEndet())
                sitzung.cancel();
        },
        Qt::DirectConnection);

    connect(&automatik_, &Automatik::Umgeschaltet, lAutomatik_, &QLabel::setVisible);
    connect(&automatik_, &Automatik::Faellig, this,
            [this] { lernlauf_.Image0_Click(zustand_.VollstesFach); });

    connect(&aktionen_, &KarteiAktionen::WirdAngelegt, this,
            [this](const QString &name) { kasten_->SetHinweis(name + u" wird angelegt …"_s); });
    connect(&aktionen_, &KarteiAktionen::WirdGeoeffnet, this, [this](const QString &name) {
        lKartei_->setText(QString());
        kasten_->SetHinweis(name + u" wird geöffnet …"_s);
    });
    connect(&aktionen_, &KarteiAktionen::Fertig, this, &LBOX::StandZeigen);
    connect(&menue_, &Boxmenue::Zurueck, this, &LBOX::StandZeigen); // another file may be open
}

// Opening a file blocks the program for a second or two, so it runs when the window has been painted.
void LBOX::Form_Load()
{
    emit Gemalt();
    dienste_.konfig.ReadConfig();
    geladen_ = true;
    aktionen_.Starten(befehlszeile_);
}

void LBOX::SetFenster(LBoxFenster fenster)
{
    fenster_ = std::move(fenster);
    lernlauf_.SetBearbeitbar(static_cast<bool>(fenster_.MKarten));
    menue_.Freischalten();
    StandZeigen();
}

void LBOX::KarteiWechseln_Click()
{
    if (!belegung_.IstGesperrt())
        aktionen_.Wechseln(fenster_.KarteiWechseln());
}

BoxBild LBOX::Rechnen()
{
    const BoxBild bild = BoxRechnen(kartei_.FachInfo);
    zustand_.VollstesFach = bild.VollstesFach;
    kasten_->SetOffen(kartei_.IsOpen());
    return bild;
}

void LBOX::BoxZeichnen()
{
    kasten_->Zeigen(Rechnen());
    HinweiseZeigen();
    ruhe_.start();
    emit BoxGezeichnet();
}

// What the window says about the open file.
void LBOX::StandZeigen()
{
    lKartei_->setText(kartei_.IsOpen() ? Boxmenue::OhneKuerzel(kartei_.CurrentFileName)
                                       : u"Keine Kartei geöffnet"_s);
    lKartei_->setEnabled(static_cast<bool>(fenster_.KarteiWechseln));
    karteiWechseln_->setEnabled(static_cast<bool>(fenster_.KarteiWechseln));
    BoxZeichnen();
}

// The next step, wherever the keys of the box lead to none.
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
    kasten_->SetHinweis(zettel, std::move(tun));
    lTasten_->setText(zettel.isEmpty() ? Tastenhinweis() : QString());
    lTasten_->setToolTip(lTasten_->text()); // a small window may show its beginning only
}

QString LBOX::Tastenhinweis() const
{
    if (!kartei_.IsOpen())
        return {};
    // Compartments 1 and 2, both too full, are in each other's way and in that of all others; no other two
    // can be.
    if (KartenImSpiel(kartei_.FachInfo) > 0 && !IrgendeinFachSpielbar(kartei_.FachInfo))
        return u"Fach 1 und 2 sperren einander: Karten löschen (ändern › Karten) "
               u"oder Extras › Alle Karten nach Neu"_s;
    const int fach = zustand_.VollstesFach;
    return u"Eingabe: %1    1 bis 5, N: Fach wählen    W: würfeln"_s.arg(
        fach == FachNeu ? u"Neu"_s : u"Fach %1"_s.arg(fach));
}

void LBOX::SetTongeraet(bool vorhanden)
{
    lTongeraet_->setVisible(!vorhanden);
}

void LBOX::Form_KeyPress(const QKeyEvent &taste)
{
    if (taste.key() == Qt::Key_Return || taste.key() == Qt::Key_Enter || taste.key() == Qt::Key_Space) {
        lernlauf_.Image0_Click(zustand_.VollstesFach);
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
