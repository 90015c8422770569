// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "LBOX.h"

#include "BoxRechnung.h"
#include "Kasten.h"

#include <QAction>
#include <QCloseEvent>
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
    connect(karteiWechseln_, &QAction::triggered, this, [this] { KarteiWechseln_Click(); });
    connect(lKartei_, &QToolButton::clicked, karteiWechseln_, &QAction::trigger);
    // Without a choice of files the button is a plain label.
    QPalette farben = lKartei_->palette();
    farben.setColor(QPalette::Disabled, QPalette::ButtonText, farben.color(QPalette::WindowText));
    lKartei_->setPalette(farben);
    lTasten_ = new QLabel(this);
    lTasten_->setObjectName(QStringLiteral("LTasten"));
    statusBar()->addWidget(lKartei_);
    statusBar()->addPermanentWidget(lTasten_);

    MenueBauen();
    takt_.setInterval(100);
    connect(&takt_, &QTimer::timeout, this, [this] { AutomatikTakt(); });
    kartei_.BoxZeichnen = [this] {
        const BoxBild bild = BoxRechnen(kartei_.FachInfo);
        umgebung_.zustand.VollstesFach = bild.VollstesFach;
        kasten_->ZeigenLaufend(bild);
        // A tool that has opened another file tells its success before it ends.
        if (kartei_.FehlerStatus == 0)
            lKartei_->setText(OhneKuerzel(kartei_.CurrentFileName));
    };
    umgebung_.konfig.Gelesen = [this] { KonfigZeigen(); };
    KonfigZeigen();
    SetFenster({});

    resize(sizeHint().boundedTo(screen()->availableSize() * 0.9));
}

LBOX::~LBOX()
{
    kartei_.BoxZeichnen = [] {};
    umgebung_.konfig.Gelesen = [] {};
}

void LBOX::BoxZeichnen()
{
    const BoxBild bild = BoxRechnen(kartei_.FachInfo);
    umgebung_.zustand.VollstesFach = bild.VollstesFach;
    kasten_->Zeigen(bild);
    const QString vollstes = bild.VollstesFach == FachNeu ? QStringLiteral("Neu")
                                                          : QStringLiteral("Fach %1").arg(bild.VollstesFach);
    lTasten_->setText(QStringLiteral("Eingabe: %1    1 bis 5, N: Fach wählen    W: würfeln").arg(vollstes));
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
    if (beschaeftigt_ || (fenster_.DarfSchliessen && !fenster_.DarfSchliessen())) {
        event->ignore();
        return;
    }
    AutomatikAus();
    event->accept();
}
