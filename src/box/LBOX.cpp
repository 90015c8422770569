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
#include <QMenuBar>
#include <QScreen>
#include <QStatusBar>
#include <QToolButton>

#include <utility>

LBOX::LBOX(LBoxUmgebung umgebung, QWidget *parent)
    : QMainWindow(parent),
      umgebung_(std::move(umgebung)),
      kartei_(umgebung_.kartei),
      meldungen_(umgebung_.meldungen)
{
    setObjectName(QStringLiteral("LBOX"));
    setWindowTitle(QStringLiteral("Lern-Box"));
    setAccessibleName(QStringLiteral("Lern-Box"));
    // Keys belong to the window until Tab takes them to a part of the box.
    setFocusPolicy(Qt::StrongFocus);
    if (!kartei_.IsOpen())
        kartei_.FachInfo = FachStartwerte();

    kasten_ = new Kasten(kartei_.FachInfo, this);
    setCentralWidget(kasten_);
    kasten_->Image0_Click = [this](int fach) { Image0_Click(fach); };
    kasten_->PicWuerfel_Click = [this] { PicWürfel_Click(); };
    kasten_->erstesBild = [this] { Form_Load(); };

    lKartei_ = new QToolButton(this);
    lKartei_->setObjectName(QStringLiteral("LKartei"));
    lKartei_->setAutoRaise(true);
    lKartei_->setToolTip(QStringLiteral("Andere Kartei dieses Ordners laden (Strg+L)"));
    karteiWechseln_ = new QAction(this);
    karteiWechseln_->setObjectName(QStringLiteral("KarteiWechseln"));
    karteiWechseln_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_L));
    addAction(karteiWechseln_);
    connect(karteiWechseln_, &QAction::triggered, this, [this] {
        if (!IstGesperrt())
            KarteiWechseln_Click();
    });
    connect(lKartei_, &QToolButton::clicked, karteiWechseln_, &QAction::trigger);
    // Without a choice of files the button is a plain label.
    QPalette farben = lKartei_->palette();
    farben.setColor(QPalette::Disabled, QPalette::ButtonText, farben.color(QPalette::WindowText));
    lKartei_->setPalette(farben);
    lAutomatik_ = new QLabel(QStringLiteral("Automatik läuft"), this);
    lAutomatik_->setObjectName(QStringLiteral("LAutomatik"));
    QFont betont = lAutomatik_->font();
    betont.setBold(true);
    lAutomatik_->setFont(betont);
    lAutomatik_->hide();
    lTongeraet_ = new QLabel(QStringLiteral("kein Tongerät"), this);
    lTongeraet_->setObjectName(QStringLiteral("LTongeraet"));
    lTongeraet_->setToolTip(QStringLiteral("Das System bietet kein Tongerät an: Töne spielen stumm. "
                                           "Ein Gerät, das später kommt, wird von selbst gefunden."));
    lTongeraet_->setContentsMargins(0, 0, 2 * fontMetrics().averageCharWidth(), 0);
    lTongeraet_->hide();
    lTasten_ = new KurzLabel(this);
    lTasten_->setObjectName(QStringLiteral("LTasten"));
    statusBar()->addWidget(lKartei_);
    statusBar()->addPermanentWidget(lAutomatik_);
    statusBar()->addPermanentWidget(lTongeraet_);
    statusBar()->addPermanentWidget(lTasten_);

    MenueBauen();
    takt_.setInterval(100);
    connect(&takt_, &QTimer::timeout, this, [this] { AutomatikTakt(); });
    connect(
        qGuiApp, &QGuiApplication::commitDataRequest, this,
        [this](QSessionManager &sitzung) { SitzungEndet(sitzung); }, Qt::DirectConnection);
    kartei_.BoxZeichnen = [this] {
        const BoxBild bild = BoxRechnen(kartei_.FachInfo);
        umgebung_.zustand.VollstesFach = bild.VollstesFach;
        kasten_->SetOffen(kartei_.IsOpen());
        kasten_->ZeigenLaufend(bild);
        // A tool that has opened another file tells its success before it ends.
        if (kartei_.FehlerStatus == 0)
            lKartei_->setText(OhneKuerzel(kartei_.CurrentFileName));
    };
    kartei_.WartenZeigen = [this](const QString &was, const QString &abgebrochen) {
        return WartenMitAbbruch(was, abgebrochen, meldungen_.Titel(), this);
    };
    connect(&umgebung_.konfig, &AppConfig::Gelesen, this, [this] { KonfigZeigen(); });
    KonfigZeigen();
    SetFenster({});

    resize(sizeHint().boundedTo(screen()->availableSize() * 0.9));
}

LBOX::~LBOX()
{
    kartei_.BoxZeichnen = [] {};
    kartei_.WartenZeigen = [](const QString &, const QString &) { return Fortschritt(); };
    umgebung_.konfig.disconnect(this);
}

void LBOX::BoxZeichnen()
{
    const BoxBild bild = BoxRechnen(kartei_.FachInfo);
    umgebung_.zustand.VollstesFach = bild.VollstesFach;
    kasten_->SetOffen(kartei_.IsOpen());
    kasten_->Zeigen(bild);
    HinweiseZeigen();
}

// The next step, wherever the keys of the box lead to none.
void LBOX::HinweiseZeigen()
{
    QString zettel;
    std::function<void()> tun;
    if (!kartei_.IsOpen()) {
        if (geladen_) {
            tun = [this] { findChild<QAction *>(QStringLiteral("Möffnen"))->trigger(); };
            zettel = QStringLiteral("Keine Kartei geöffnet.\n\n"
                                    "Strg+O öffnet eine, Strg+N legt eine neue an.");
        }
    } else if (IstLeer(kartei_.FachInfo) && fenster_.MKarten) {
        zettel = QStringLiteral("Noch keine Karten: ändern › Karten legt welche an.");
        tun = [this] { findChild<QAction *>(QStringLiteral("MKarten"))->trigger(); };
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
        return QStringLiteral("Fach 1 und 2 sperren einander: Karten löschen (ändern › Karten) "
                              "oder Extras › Alle Karten nach Neu");
    const int fach = umgebung_.zustand.VollstesFach;
    return QStringLiteral("Eingabe: %1    1 bis 5, N: Fach wählen    W: würfeln")
        .arg(fach == FachNeu ? QStringLiteral("Neu") : QStringLiteral("Fach %1").arg(fach));
}

void LBOX::SetTongeraet(bool vorhanden)
{
    lTongeraet_->setVisible(!vorhanden);
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
    if (beschaeftigt_) {
        event->ignore();
        umgebung_.beenden();
        return;
    }
    if (fenster_.DarfSchliessen && !fenster_.DarfSchliessen()) {
        event->ignore();
        return;
    }
    AutomatikAus();
    event->accept();
}
