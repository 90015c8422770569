// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Kartenflaeche.h"

#include "Abfrageteile.h"
#include "BildBox.h"
#include "Farben.h"
#include "Fragetext.h"
#include "Hausfarben.h"
#include "Kartenkopf.h"
#include "KreuzAnsicht.h"
#include "Kurztext.h"
#include "Meldungen.h"
#include "Texttaste.h"
#include "TippAnsicht.h"
#include "UrteilZeile.h"
#include "Urteilskante.h"

#include <QFontInfo>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>
#include <QVariantAnimation>

#include <algorithm>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr int Stapel = 10;  // what is seen of the cards below
constexpr int Blende = 120; // ms in which the verdict's colours appear
constexpr int Ringrand = 4; // around the forms, for the ring of what has the keyboard

// Distances on the card, in pixels.
struct Masse
{
    int rand, kopf, unterKopf, frage, zone, vorUrteil;
};

constexpr Masse Gross{32, 14, 8, 8, 16, 12};
constexpr Masse Klein{26, 8, 5, 6, 8, 6};

QRect Karte(const QWidget &flaeche)
{
    return flaeche.rect().adjusted(0, 0, 0, -Stapel);
}

// The widest that a text is, where there is no picture.
int Spalte(const QWidget &flaeche)
{
    return QFontInfo(flaeche.font()).pixelSize() * 57;
}

// The least height of the question.
int Mindestfrage(const QWidget &flaeche)
{
    return flaeche.fontMetrics().lineSpacing() * 7 / 2;
}

// Lines of the window's font that a picture beside a question is to have.
constexpr int Bildzeilen = 15;

// Lines of the window's font below which a card is small.
constexpr int KleinTipp = 26, KleinKreuz = 30;

} // namespace

Kartenflaeche::Kartenflaeche(QWidget *eltern, Meldungen &meldungen)
    : QWidget(eltern),
      meldungen_(meldungen),
      kopf_(new Kartenkopf(this)),
      MFrage_(Benannt(new Fragetext(this), u"MFrage"_s, u"Frage"_s)),
      rolle_(new QScrollArea(this)),
      urteil_(new UrteilZeile(this)),
      Frame1_(Benannt(new Urteilskante(this), u"Frame1"_s, u"Ergebnis"_s)),
      blende_(new QVariantAnimation(this))
{
    Benannt(this, u"Karte"_s, u"Karte"_s);
    MFrage_->installEventFilter(this);
    auto *formen = new QWidget;
    tippen_ = new TippAnsicht(formen, meldungen_);
    kreuze_ = new KreuzAnsicht(formen);
    rolle_->setWidget(formen);
    rolle_->setFrameShape(QFrame::NoFrame);
    rolle_->setFocusPolicy(Qt::NoFocus);
    rolle_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    rolle_->viewport()->setAutoFillBackground(false);
    formen->setAutoFillBackground(false);
    BildBauen();
    blende_->setStartValue(0.0);
    blende_->setEndValue(1.0);
    blende_->setDuration(Blende);
    connect(blende_, &QVariantAnimation::valueChanged, this, [this](const QVariant &deckung) {
        Frame1_->SetDeckung(deckung.toDouble());
        urteil_->SetDeckung(deckung.toDouble());
    });
}

void Kartenflaeche::BildBauen()
{
    bild_ =
        std::make_unique<Kartenbild>(this, MFrage_, Kartenbild::Grenzen{.abstand = {}, .nebenText = true});
    BildBox *box = Benannt(bild_->Box(), u"Picture1"_s, u"Bild"_s);
    box->setToolTip(u"Ein Klick zeigt das Bild groß; mit der Maus lässt es sich verschieben"_s);
    box->setFocusPolicy(Qt::TabFocus);
    box->angeklickt = [this] { emit BildAngeklickt(); };
    box->installEventFilter(this);
}

void Kartenflaeche::Zeigen(const Abfragekarte &karte, int uebrig)
{
    ankreuzen_ = karte.typ == Antworttyp::Ankreuzen;
    uebrig_ = uebrig;
    mitBild_ = std::any_of(karte.Medium.begin() + 1, karte.Medium.begin() + 4,
                           [](const QString &name) { return !name.isEmpty(); });
    wunsch_ = mitBild_ ? karte.Bildplatz : QRect();
    Faerben();
    blende_->stop();
    Frame1_->hide();
    Frame1_->setPalette({});
    BildZeigen({}, {});
    kopf_->Zeigen(karte, uebrig);
    // Of the two forms the one that is there holds the name of the first answer.
    for (AntwortAnsicht *form :
         {static_cast<AntwortAnsicht *>(tippen_), static_cast<AntwortAnsicht *>(kreuze_)})
        form->SetGezeigt(form == &Ansicht());
    Ansicht().Zeigen(karte);
    urteil_->Leeren();
    MFrage_->Zeigen(karte.Frage, !mitBild_, Spalte(*this));
    bild_->SetPlatz(wunsch_);
    bild_->SetFreihalten(mitBild_);
    Anordnen();
}

AntwortAnsicht &Kartenflaeche::Ansicht() const
{
    if (ankreuzen_)
        return *kreuze_;
    return *tippen_;
}

void Kartenflaeche::Mischen(const std::array<int, AntwortAnzahl> &folge)
{
    kreuze_->Mischen(folge);
}

RichTextBox *Kartenflaeche::Frage() const
{
    return MFrage_;
}

BildBox *Kartenflaeche::Bild() const
{
    return bild_->Box();
}

void Kartenflaeche::Faerben()
{
    setPalette(Kartenpalette(parentWidget()->palette()));
}

void Kartenflaeche::UrteilZeigen(bool richtig, const QString &gesicht, const QString &satz, bool weich)
{
    urteil_->Zeigen(richtig, gesicht, satz);
    paukfix::Faerben(Frame1_, {{QPalette::Window, richtig ? Farben::Richtig : Farben::Falsch}});
    if (!Frame1_->isHidden())
        return;
    Frame1_->show();
    Frame1_->SetDeckung(1);
    if (weich)
        blende_->start();
}

QSize Kartenflaeche::Bildbedarf() const
{
    return wunsch_.isEmpty() ? QSize() : QSize(wunsch_.right(), wunsch_.bottom());
}

QSize Kartenflaeche::Bildgroesse() const
{
    return (QSizeF(bild_->Bildplatz().size()) * devicePixelRatioF()).toSize();
}

void Kartenflaeche::BildZeigen(const QImage &bild, const QString &name)
{
    if (!bild.isNull()) {
        bild_->Zeigen(bild);
        bild_->Box()->setAccessibleName(u"Bild "_s + Kurztext(name));
        Frame1_->raise();
        return;
    }
    bild_->Verbergen();
    bild_->Box()->SetBild({});
    bild_->Box()->setAccessibleName(u"Bild"_s);
}

QSize Kartenflaeche::minimumSizeHint() const
{
    const int zeile = fontMetrics().height();
    const int formen = zeile * 5;
    return {zeile * 30, Klein.kopf + kopf_->sizeHint().height() + Klein.unterKopf + 2 + Mindestfrage(*this) +
                            2 * Klein.zone + formen + Klein.vorUrteil + zeile * 2 + Stapel};
}

int Kartenflaeche::Kopfhoehe() const
{
    const Masse &masse = kompakt_ ? Klein : Gross;
    return masse.kopf + kopf_->sizeHint().height() + masse.unterKopf + 2;
}

// A small card is tight; so is one whose answers would have to be scrolled otherwise.
void Kartenflaeche::Anordnen()
{
    const int klein = fontMetrics().height() * (ankreuzen_ ? KleinKreuz : KleinTipp);
    if (Karte(*this).height() < klein || !Anordnen(false))
        Anordnen(true);
    update();
}

bool Kartenflaeche::Anordnen(bool kompakt)
{
    const QRect karte = Karte(*this);
    kompakt_ = kompakt;
    const Masse &masse = kompakt ? Klein : Gross;
    Ansicht().SetKompakt(kompakt);
    urteil_->SetKompakt(kompakt);
    const int innen = karte.width() - 2 * masse.rand;
    // One line on a large card is a poster; long lines are hard to read.
    const int spalte = mitBild_ ? innen : std::min(innen, Spalte(*this));
    const int links = (karte.width() - spalte) / 2;
    const int urteil = urteil_->sizeHint().height();
    const int um = 2 * masse.zone + masse.vorUrteil + urteil - 2 * Ringrand;
    const int raum = karte.height() - Kopfhoehe() - Mindestfrage(*this) - 2 * masse.frage - um;
    int breite = spalte;
    int hoehe = Ansicht().Hoehe(breite);
    // A picture is worth tighter answers.
    const int bild =
        mitBild_ && ankreuzen_ && !kompakt ? fontMetrics().height() * Bildzeilen - Mindestfrage(*this) : 0;
    const bool passt = hoehe + 2 * Ringrand <= raum - bild;
    if (!passt) {
        if (!kompakt)
            return false;
        breite -= rolle_->verticalScrollBar()->sizeHint().width();
        hoehe = Ansicht().Hoehe(breite);
    }
    const int formen = std::max(0, std::min(hoehe + 2 * Ringrand, raum));
    zone_ = karte.height() - um - formen;
    rolle_->setGeometry(links - Ringrand, zone_ + masse.zone - Ringrand, spalte + 2 * Ringrand, formen);
    rolle_->widget()->resize(breite + 2 * Ringrand, hoehe + 2 * Ringrand);
    Ansicht().setGeometry(Ringrand, Ringrand, breite, hoehe);
    urteil_->setGeometry(links, karte.height() - masse.zone - urteil, spalte, urteil);
    kopf_->setGeometry(masse.rand, masse.kopf, innen, kopf_->sizeHint().height());
    const int oben = Kopfhoehe() + masse.frage;
    MFrage_->setGeometry(masse.rand, oben, innen, std::max(0, zone_ - masse.frage - oben));
    Frame1_->setGeometry(0, 0, Urteilskante::Breite + 1, karte.height());
    bild_->Platzieren();
    return passt;
}

void Kartenflaeche::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    Anordnen();
    emit Umgelegt();
}

void Kartenflaeche::paintEvent(QPaintEvent *)
{
    const Hausfarben &farben = HausfarbenZu(palette());
    const QRect flaeche = Karte(*this);
    const QRectF karte = QRectF(flaeche).adjusted(0.5, 0.5, -0.5, -0.5);
    QPainter maler(this);
    maler.setRenderHint(QPainter::Antialiasing);
    maler.setPen(farben.umriss);
    // The last card but one lies on one more, the last on none. What the card hides takes time as well.
    maler.setClipRect(QRect(0, flaeche.bottom() - Radius, width(), height()));
    for (int i = std::min(uebrig_, 2); i > 0; --i) {
        maler.setBrush(i == 2 ? Farben::Getoent(farben.fokus, farben.karte, 0.4) : farben.karte);
        maler.drawRoundedRect(karte.adjusted(5 * i, 5 * i, -5 * i, 5 * i), Radius, Radius);
    }
    // Question and answer are one card in two colours.
    maler.setClipRect(QRect(0, 0, width(), zone_));
    maler.setBrush(farben.karte);
    maler.drawRoundedRect(karte, Radius, Radius);
    maler.setClipRect(QRect(0, zone_, width(), height()));
    maler.setBrush(farben.antwortzone);
    maler.drawRoundedRect(karte, Radius, Radius);
    maler.setClipping(false);
    maler.fillRect(QRect(1, zone_, width() - 2, 1), Farben::Getoent(farben.tinte, farben.antwortzone, 0.15));
    const int rand = (kompakt_ ? Klein : Gross).rand - 8;
    maler.fillRect(QRect(rand, Kopfhoehe() - 2, width() - 2 * rand, 2), farben.linie);
    if (MFrage_->hasFocus()) {
        maler.setBrush(Qt::NoBrush);
        maler.setPen(QPen(farben.fokus, 2));
        maler.drawRoundedRect(QRectF(MFrage_->geometry()).adjusted(-5, -3, 5, 3), Radius, Radius);
    }
}

// The question takes no key that would change it; Enter or Space on the picture does what a click does.
bool Kartenflaeche::eventFilter(QObject *objekt, QEvent *event)
{
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
        update();
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto &taste = static_cast<const QKeyEvent &>(*event);
    if (objekt == bild_->Box()) {
        if (taste.key() != Qt::Key_Space && !IstEingabetaste(taste))
            return false;
        emit BildAngeklickt();
        return true;
    }
    if (!AendertText(taste, true))
        return false;
    if (!taste.isAutoRepeat())
        meldungen_.Zeigen(u"Jetzt bitte nicht ändern"_s);
    return true;
}

} // namespace paukfix
