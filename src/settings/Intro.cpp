// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Intro.h"

#include "Bild.h"
#include "Bildpunkte.h"
#include "Fensterbau.h"
#include "Step.h"

#include <QCoreApplication>
#include <QDir>
#include <QGridLayout>
#include <QIcon>
#include <QKeyEvent>
#include <QPainter>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>

#include <algorithm>
#include <array>
#include <limits>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr qint16 ErstesBild = 5;
constexpr qint16 LetztesBild = 11;
constexpr qint16 LosGehts = 13;
constexpr int Takt = 1000;        // milliseconds
constexpr QSizeF Masse{960, 600}; // of the window at 96 dpi, in the shape of the pictures

// What the pictures tell, in words.
constexpr std::array<const char16_t *, LetztesBild - ErstesBild + 1> Geschichte{
    u"Eine neue Karte wird geschrieben. Der Kasten hat die Fächer Neu, 1, 2, 3, 4 und 5, daneben liegen die "
    u"erledigten.",
    u"Die Karte kommt in das Fach Neu.",
    u"Eine falsche Antwort: Die Karte geht in Fach 1.",
    u"Eine richtige Antwort: Die Karte steigt in Fach 2 auf.",
    u"Noch zwei richtige Antworten: Sie ist in Fach 4.",
    u"Fünf richtige Antworten nacheinander: Die Karte ist erledigt.",
    u"Paukfix. Jede Karte wandert durch die Fächer Neu, 1, 2, 3, 4 und 5 zu den erledigten."};

const QString Kontext = u"Fehler bei Form Intro Load: "_s;

} // namespace

Intro::Intro(const AppConfig &konfig, Meldungen &meldungen) : konfig_(konfig), meldungen_(meldungen)
{
    setObjectName(u"Intro"_s);
    setWindowTitle(u"Merkkasten"_s);
    setAccessibleName(u"Merkkasten"_s);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

// Most starts show the main window at once: nothing is built for them.
void Intro::Aufbauen()
{
    setWindowIcon(QIcon(konfig_.ProgrammDatei(u"paukfix.ico"_s)));
    Timer_Intro_ = new QTimer(this);
    Timer_Intro_->setObjectName(u"Timer_Intro"_s);
    Timer_Intro_->setInterval(Takt);
    connect(Timer_Intro_, &QTimer::timeout, this, [this] { Timer_Intro_Timer(); });

    // The pictures are light on every desktop: so is what stands on them, and the ring around it.
    Faerben(this,
            {{QPalette::Window, QColor(0xFB, 0xE9, 0xCB)}, {QPalette::WindowText, QColor(0x33, 0x30, 0x4A)}});
    Command1_ = Benannt(new QPushButton(u"los geht's"_s, this), u"Command1"_s, u"los geht's"_s);
    Command1_->setProperty("leitend", true);
    Schriftgroesse(Command1_, 1.3);
    const int zeile = Command1_->fontMetrics().height();
    Command1_->setMinimumSize(Command1_->sizeHint() + QSize(zeile, zeile / 3));
    connect(Command1_, &QPushButton::clicked, this, [this] { Command1_Click(); });

    punkte_ = new Bildpunkte(LetztesBild - ErstesBild + 1, this);
    punkte_->setObjectName(u"Punkte"_s);
    punkte_->setToolTip(u"Bilder einzeln ansehen (Pfeiltasten)"_s);
    punkte_->Gewaehlt = [this](int bild) { Blaettern(ErstesBild + bild); };
    connect(new QShortcut(Qt::Key_Left, this), &QShortcut::activated, this,
            [this] { Blaettern(gezeigt_ - 1); });
    connect(new QShortcut(Qt::Key_Right, this), &QShortcut::activated, this,
            [this] { Blaettern(gezeigt_ + 1); });

    // Where the pictures have their empty corners.
    auto *platz = new QGridLayout(this);
    platz->setContentsMargins(zeile, zeile, zeile, zeile);
    platz->setRowStretch(0, 1);
    platz->addWidget(punkte_, 1, 0, Qt::AlignLeft | Qt::AlignVCenter);
    platz->addWidget(Command1_, 1, 1, Qt::AlignRight | Qt::AlignVCenter);

    const QSizeF gross = Masse * std::max(1.0, logicalDpiX() / 96.0);
    resize(gross.boundedTo(Masse.scaled(screen()->availableSize() * 0.8, Qt::KeepAspectRatio)).toSize());
}

Intro::Ausgang Intro::Form_Load(const QString &befehlszeile)
{
    animationOn_ = true;
    Step(meldungen_, Kontext, [this] { animationOn_ = konfig_.ReadIntroAnimation(); });
    if (!animationOn_ || !befehlszeile.isEmpty())
        return Ausgang::Hauptfenster;
    Abspielen();
    return introStep_ >= LosGehts ? Ausgang::Hauptfenster : Ausgang::Programmende;
}

void Intro::Abspielen()
{
    Aufbauen();
    Timer_Intro_->start();
    show();
    activateWindow();
    Command1_->setFocus();
    for (introStep_ = ErstesBild; introStep_ <= LetztesBild && !geschlossen_; ++introStep_) {
        NummerZeigen(introStep_);
        QCoreApplication::processEvents();
    }
    // It stays until the user says so. Messages may have taken the keyboard away.
    if (introStep_ < LosGehts && !geschlossen_) {
        activateWindow();
        warten_.exec();
    }
    Timer_Intro_->stop();
}

void Intro::NummerZeigen(int nummer)
{
    gezeigt_ = nummer;
    punkte_->SetBild(nummer - ErstesBild);
    setAccessibleDescription(
        QString::fromUtf16(Geschichte.at(static_cast<std::size_t>(nummer - ErstesBild))));
    Step(meldungen_, Kontext,
         [this] { BildZeigen(konfig_.ProgrammDatei(u"lbox%1.jpg"_s.arg(gezeigt_, 2, 10, '0'_L1))); });
}

// The story plays too fast to be read: it is read afterwards.
void Intro::Blaettern(int nummer)
{
    if (warten_.isRunning() && nummer >= ErstesBild && nummer <= LetztesBild && nummer != gezeigt_)
        NummerZeigen(nummer);
}

// Where the picture cannot be read, the one before stays.
void Intro::BildZeigen(const QString &pfad)
{
    bild_ = BildLesen(QDir::toNativeSeparators(pfad), size() * devicePixelRatio());
    pfad_ = pfad;
    update();
}

void Intro::Command1_Click()
{
    introStep_ = LosGehts;
    warten_.quit();
}

void Intro::Timer_Intro_Timer()
{
    constexpr int Grenze = std::numeric_limits<qint16>::max();
    introElapsed_ = static_cast<qint16>(std::min(introElapsed_ + Timer_Intro_->interval(), Grenze));
    if (introElapsed_ == Grenze)
        Timer_Intro_->stop();
}

void Intro::paintEvent(QPaintEvent *)
{
    QPainter maler(this);
    maler.fillRect(rect(), palette().window());
    if (bild_.isNull())
        return;
    QRectF platz(QPointF(), QSizeF(bild_.size()).scaled(size(), Qt::KeepAspectRatio));
    platz.moveCenter(QRectF(rect()).center());
    maler.setRenderHint(QPainter::SmoothPixmapTransform);
    maler.drawImage(platz, bild_);
}

void Intro::resizeEvent(QResizeEvent *)
{
    if (pfad_.isEmpty())
        return;
    try {
        BildZeigen(pfad_);
    } catch (const std::exception &) {
        update(); // the picture is gone meanwhile: what was read of it is stretched
    }
}

void Intro::keyPressEvent(QKeyEvent *event)
{
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && !event->isAutoRepeat())
        Command1_->click();
    else
        QWidget::keyPressEvent(event);
}

void Intro::closeEvent(QCloseEvent *event)
{
    geschlossen_ = true;
    warten_.quit();
    event->accept();
}

} // namespace paukfix
