// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Formularbild.h"

#include "Antworten.h"
#include "BildBox.h"
#include "Fensterbau.h"
#include "KartenTextBox.h"
#include "Mediendatei.h"
#include "RichTextBox.h"
#include "Sizer.h"
#include "Twips.h"

#include <QKeyEvent>

#include <algorithm>
#include <limits>
#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t Bilder = 3; // slots that hold pictures

// Where a picture may be moved to on the form, in twips: beyond these, not on them.
constexpr int RandLinksOben = 150;
constexpr int RandRechts = 300;
constexpr int RandUnten = 600;
constexpr int KleinsteSeite = 24; // pixels

QRect Pixel(const Bildlage &lage)
{
    return PixelVonTwips(lage.links, lage.oben, lage.breite, lage.hoehe);
}

Kartenbild::Grenzen FormularGrenzen()
{
    const int rand = PixelVonTwips(RandLinksOben) + 1;
    return {{rand, rand, PixelVonTwips(RandRechts) + 1, PixelVonTwips(RandUnten) + 1},
            {KleinsteSeite, KleinsteSeite}};
}

} // namespace

Formularbild::Formularbild(QWidget *formular, RichTextBox *frage)
    : QObject(formular),
      formular_(formular),
      frage_(frage),
      bild_(formular, frage, FormularGrenzen()),
      sizer_(Benannt(new Sizer(formular), u"Sizer"_s, u"Größe des Bildes"_s))
{
    BildBox *box = Benannt(Box(), u"Picture1"_s, u"Bild der Karte"_s);
    box->setToolTip(u"Das Bild lässt sich mit der Maus oder den Pfeiltasten verschieben, "
                    u"mit Umschalt und den Pfeiltasten in der Größe ändern"_s);
    box->setFocusPolicy(Qt::StrongFocus);
    box->installEventFilter(this);
    box->gegriffen = [this] {
        emit angefasst();
        sizer_->hide();
    };
    // It goes as far as it may, and says in the card's own twips how far.
    box->begrenzen = [this](QPoint neu) {
        Bewegen(neu);
        return Box()->pos();
    };
    box->gezogen = [] {};
    box->losgelassen = [this] {
        Loslassen();
        GriffZeigen();
    };
    sizer_->setToolTip(u"Ziehen ändert die Größe des Bildes"_s);
    sizer_->gegriffen = [this] {
        emit angefasst();
        Box()->setFocus(); // the box is outlined while it is sized
    };
    sizer_->gezogen = [this](QPoint neu) { Ziehen(neu); };
    sizer_->losgelassen = [this] { Loslassen(); };
    Verbergen();
}

void Formularbild::SetLage(const Bildlage &lage)
{
    Verbergen();
    lage_ = lage;
}

void Formularbild::Zeigen(const Bildnamen &namen, const QString &verzeichnis, const QString &programmPfad,
                          Meldungen &meldungen)
{
    Verbergen();
    for (std::size_t i = 0; i < Bilder; ++i) {
        if (!bild_.Zeigen(namen.at(i), verzeichnis, programmPfad, meldungen))
            continue;
        Box()->setAccessibleDescription(BlosserName(namen.at(i)));
        Platzieren();
        GriffZeigen();
    }
}

void Formularbild::Verbergen()
{
    // The arrow keys that moved the picture must not change what stands behind it in the tab order.
    if (formular_->window()->focusWidget() == Box())
        frage_->setFocus();
    sizer_->hide();
    bild_.Verbergen();
    bild_.SetPlatz(Pixel(BildlageVorgabe));
}

void Formularbild::Platzieren()
{
    const bool sichtbar = !Box()->isHidden();
    if (sichtbar)
        bild_.SetPlatz(Ausweichen(bild_.Innerhalb(Pixel(lage_))));
    if (antworten_) {
        KartenTextBox *antwort = antworten_->Boxen()[0];
        antwort->SetRand(sichtbar && Textfelder().contains(antwort)
                             ? RandUmBild(AufFormular(antwort), Box()->geometry())
                             : QMargins());
    }
    sizer_->move(Box()->geometry().bottomRight() - QPoint(sizer_->width() - 1, sizer_->height() - 1));
}

// Put where it would cover a text, it goes beside it, and the card then says so.
void Formularbild::Loslassen()
{
    const QRect gezogen = Box()->geometry();
    Platzieren();
    if (Box()->size() != gezogen.size()) {
        lage_.breite = TwipsVonPixel(Box()->width());
        lage_.hoehe = TwipsVonPixel(Box()->height());
    }
    if (Box()->pos() != gezogen.topLeft()) {
        lage_.links = TwipsVonPixel(Box()->x());
        lage_.oben = TwipsVonPixel(Box()->y());
    }
}

void Formularbild::SetUmgebung(QList<QWidget *> hindernisse, const Antworten *antworten)
{
    hindernisse_ = std::move(hindernisse);
    antworten_ = antworten;
}

// Those whose text makes room.
QList<QWidget *> Formularbild::Textfelder() const
{
    QList<QWidget *> felder{frage_};
    if (antworten_ && antworten_->Boxen()[1]->parentWidget()->isHidden())
        felder << antworten_->Boxen()[0];
    return felder;
}

QRect Formularbild::AufFormular(const QWidget *widget) const
{
    return {widget->mapTo(formular_, QPoint()), widget->size()};
}

bool Formularbild::Frei(const QRect &platz) const
{
    const auto beruehrt = [&](const QWidget *widget) { return AufFormular(widget).intersects(platz); };
    if (std::ranges::any_of(hindernisse_, beruehrt))
        return false;
    if (antworten_ && platz.bottom() > AufFormular(antworten_).bottom())
        return false; // the buttons stand there
    const QList<QWidget *> felder = Textfelder();
    if (felder.size() == 1 && antworten_ && beruehrt(antworten_))
        return false;
    return std::ranges::all_of(felder, [&](const QWidget *feld) {
        return !beruehrt(feld) || !RandUmBild(AufFormular(feld), platz).isNull();
    });
}

QRect Formularbild::Ausweichen(QRect platz) const
{
    if (Frei(platz))
        return platz;
    QRect zone;
    int meiste = -1;
    for (const QWidget *feld : Textfelder()) {
        const QRect hier = AufFormular(feld) & platz;
        if (hier.width() * hier.height() > meiste) {
            meiste = hier.width() * hier.height();
            zone = AufFormular(feld);
        }
    }
    zone.adjust(0, 2, -4, -2);
    const QSize hoechstens(zone.width() * 3 / 5, zone.height());
    if (platz.width() > hoechstens.width() || platz.height() > hoechstens.height())
        platz.setSize(platz.size().scaled(hoechstens, Qt::KeepAspectRatio).expandedTo({1, 1}));
    platz.moveLeft(std::clamp(platz.left(), zone.left(), zone.right() + 1 - platz.width()));
    platz.moveTop(std::clamp(platz.top(), zone.top(), zone.bottom() + 1 - platz.height()));
    if (RandUmBild(zone, platz).isNull())
        platz.moveRight(zone.right());
    return platz;
}

void Formularbild::Schuetzen()
{
    Box()->setEnabled(false);
    Box()->setToolTip({});
    sizer_->hide();
}

void Formularbild::GriffZeigen()
{
    if (!Box()->isEnabled())
        return;
    sizer_->show();
    sizer_->raise();
}

void Formularbild::SetGriffSichtbar(bool sichtbar)
{
    sizer_->setVisible(sichtbar && !Box()->isHidden() && Box()->isEnabled());
}

bool Formularbild::Darf(const QRect &platz) const
{
    constexpr int Grenze = std::numeric_limits<qint16>::max(); // that a card can keep
    const int links = TwipsVonPixel(platz.left());
    const int oben = TwipsVonPixel(platz.top());
    const int rechts = TwipsVonPixel(platz.left() + platz.width());
    const int unten = TwipsVonPixel(platz.top() + platz.height());
    return links > RandLinksOben && oben > RandLinksOben && rechts <= Grenze && unten <= Grenze &&
           TwipsVonPixel(formular_->width()) - rechts > RandRechts &&
           TwipsVonPixel(formular_->height()) - unten > RandUnten;
}

void Formularbild::Bewegen(QPoint neu)
{
    if (!Darf({neu, Box()->size()}))
        return;
    lage_.links = TwipsVonPixel(neu.x());
    lage_.oben = TwipsVonPixel(neu.y());
    Box()->move(neu);
}

// Moves the handle, and the picture's corner with it.
void Formularbild::Ziehen(QPoint griff)
{
    const QRect neu(griff, sizer_->size());
    const QSize groesse(neu.right() + 1 - Box()->x(), neu.bottom() + 1 - Box()->y());
    if (!Darf(neu) || groesse.width() < KleinsteSeite || groesse.height() < KleinsteSeite)
        return;
    lage_.breite = TwipsVonPixel(groesse.width());
    lage_.hoehe = TwipsVonPixel(groesse.height());
    sizer_->move(griff);
    Box()->resize(groesse);
    bild_.TextUmBild();
}

bool Formularbild::eventFilter(QObject *objekt, QEvent *event)
{
    if (event->type() == QEvent::KeyPress)
        return Taste(static_cast<const QKeyEvent &>(*event));
    return QObject::eventFilter(objekt, event);
}

// The arrow keys move the picture, with Shift they size it.
bool Formularbild::Taste(const QKeyEvent &taste)
{
    constexpr int Weite = 10; // pixels
    QPoint um;
    switch (taste.key()) {
    case Qt::Key_Left:
        um = {-Weite, 0};
        break;
    case Qt::Key_Right:
        um = {Weite, 0};
        break;
    case Qt::Key_Up:
        um = {0, -Weite};
        break;
    case Qt::Key_Down:
        um = {0, Weite};
        break;
    default:
        return false;
    }
    emit angefasst();
    if (taste.modifiers().testFlag(Qt::ShiftModifier))
        Ziehen(sizer_->pos() + um);
    else
        Bewegen(Box()->pos() + um);
    Platzieren();
    return true;
}

} // namespace paukfix
