// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Formularbild.h"

#include "BildBox.h"
#include "Fensterbau.h"
#include "RichTextBox.h"
#include "Sizer.h"
#include "Twips.h"

#include <QKeyEvent>

#include <limits>

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
        Platzieren();
        GriffZeigen();
    };
    sizer_->setToolTip(u"Ziehen ändert die Größe des Bildes"_s);
    sizer_->gegriffen = [this] {
        emit angefasst();
        Box()->setFocus(); // the box is outlined while it is sized
    };
    sizer_->gezogen = [this](QPoint neu) { Ziehen(neu); };
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
        Platzieren();
        GriffZeigen();
        emit gezeigt();
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
    if (Box()->isHidden())
        return;
    bild_.SetPlatz(Pixel(lage_));
    sizer_->move(Box()->geometry().bottomRight() - QPoint(sizer_->width() - 1, sizer_->height() - 1));
}

void Formularbild::GriffZeigen()
{
    sizer_->show();
    sizer_->raise();
}

void Formularbild::SetGriffSichtbar(bool sichtbar)
{
    sizer_->setVisible(sichtbar && !Box()->isHidden());
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
