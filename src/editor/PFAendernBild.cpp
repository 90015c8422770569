// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Bild.h"
#include "BildBox.h"
#include "Bildbearbeiten.h"
#include "Fensterbau.h"
#include "Flaeche.h"
#include "KartenTextBox.h"
#include "PFAendern.h"
#include "Sizer.h"
#include "Soundbearbeiten.h"
#include "Themenzeile.h"
#include "Twips.h"

#include <QDir>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

#include <algorithm>
#include <limits>

namespace {

constexpr std::size_t Bilder = 3; // slots that hold pictures

// Where a picture may be moved to on the form, in twips.
constexpr int RandLinksOben = 150;
constexpr int RandRechts = 300;
constexpr int RandUnten = 600;
constexpr int KleinsteSeite = 24; // pixels

} // namespace

void PFÄndern::BildBauen()
{
    Picture1_ = Benannt(new BildBox(formular_), QStringLiteral("Picture1"), QStringLiteral("Bild der Karte"));
    Picture1_->setToolTip(QStringLiteral("Das Bild lässt sich mit der Maus oder den Pfeiltasten verschieben, "
                                         "mit Umschalt und den Pfeiltasten in der Größe ändern"));
    Picture1_->setFocusPolicy(Qt::StrongFocus);
    Picture1_->installEventFilter(this);
    Picture1_->gegriffen = [this] {
        Geaendert();
        Sizer_->hide();
    };
    Picture1_->begrenzen = [this](QPoint neu) {
        Picture1_Move(neu);
        return Picture1_->pos();
    };
    Picture1_->losgelassen = [this] {
        BildPlatzieren();
        Sizer_->show();
        Sizer_->raise();
    };
    Sizer_ = Benannt(new Sizer(formular_), QStringLiteral("Sizer"), QStringLiteral("Größe des Bildes"));
    Sizer_->setToolTip(QStringLiteral("Ziehen ändert die Größe des Bildes"));
    Sizer_->gegriffen = [this] {
        Geaendert();
        Picture1_->setFocus(); // the box is outlined while it is sized
    };
    Sizer_->gezogen = [this](QPoint neu) { Sizer_Move(neu); };
    BildVerbergen();
}

void PFÄndern::BildVerbergen()
{
    // The arrow keys that moved the picture must not change what stands behind it in the tab order.
    if (focusWidget() == Picture1_)
        FokusAufFrage();
    Picture1_->hide();
    Sizer_->hide();
    Picture1_->setGeometry(PixelVonTwips(BildlageVorgabe.links, BildlageVorgabe.oben, BildlageVorgabe.breite,
                                         BildlageVorgabe.hoehe));
    MFrage_->SetRand({});
}

// The last picture that can be shown stays visible.
void PFÄndern::BilderZeigen()
{
    for (std::size_t i = 0; i < Bilder; ++i) {
        if (!pictureNames_[i].isEmpty())
            ShowPicture(pictureNames_[i]);
    }
}

void PFÄndern::ShowPicture(const QString &name)
{
    // By its bare name from the current directory, then from the program's; the card file's own directory is
    // where the dialog looks, not the form.
    const QImage bild =
        BildLaden(name, QDir::currentPath(), umgebung_.konfig.ProgrammPfad, umgebung_.meldungen);
    if (bild.isNull())
        return;
    Picture1_->SetBild(bild);
    BildPlatzieren();
    Picture1_->show();
    Picture1_->raise();
    Sizer_->show();
    Sizer_->raise();
    // On a small window a picture must not lie on what one works with.
    for (QWidget *widget : NichtGedruckt())
        widget->raise();
    TextUmBild();
}

void PFÄndern::BildPlatzieren()
{
    Picture1_->setGeometry(ImFormular(PixelVonTwips(lage_.links, lage_.oben, lage_.breite, lage_.hoehe)));
    Sizer_->move(Picture1_->geometry().bottomRight() - QPoint(Sizer_->width() - 1, Sizer_->height() - 1));
    TextUmBild();
}

// A picture that the card puts outside the window is shown within it, so that it can be taken hold of; what
// the card says stays until it is.
QRect PFÄndern::ImFormular(QRect platz) const
{
    const int rand = PixelVonTwips(RandLinksOben) + 1;
    const QRect innen =
        formular_->rect().adjusted(rand, rand, -PixelVonTwips(RandRechts) - 1, -PixelVonTwips(RandUnten) - 1);
    platz.setSize(platz.size().boundedTo(innen.size()).expandedTo({KleinsteSeite, KleinsteSeite}));
    platz.moveLeft(std::max(std::min(platz.left(), innen.right() + 1 - platz.width()), innen.left()));
    platz.moveTop(std::max(std::min(platz.top(), innen.bottom() + 1 - platz.height()), innen.top()));
    return platz;
}

bool PFÄndern::BildDarf(const QRect &platz) const
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

void PFÄndern::Picture1_Move(const QPoint &neu)
{
    if (!BildDarf({neu, Picture1_->size()}))
        return;
    lage_.links = TwipsVonPixel(neu.x());
    lage_.oben = TwipsVonPixel(neu.y());
    Picture1_->move(neu);
}

void PFÄndern::Sizer_Move(const QPoint &neu)
{
    const QRect griff(neu, Sizer_->size());
    const QSize groesse(griff.right() + 1 - Picture1_->x(), griff.bottom() + 1 - Picture1_->y());
    if (!BildDarf(griff) || groesse.width() < KleinsteSeite || groesse.height() < KleinsteSeite)
        return;
    lage_.breite = TwipsVonPixel(groesse.width());
    lage_.hoehe = TwipsVonPixel(groesse.height());
    Sizer_->move(neu);
    Picture1_->resize(groesse);
    TextUmBild();
}

// The arrow keys move the picture, with Shift they size it.
bool PFÄndern::Picture1_KeyPress(const QKeyEvent &taste)
{
    constexpr int Weite = 10;
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
    Geaendert();
    if (taste.modifiers().testFlag(Qt::ShiftModifier))
        Sizer_Move(Sizer_->pos() + um);
    else
        Picture1_Move(Picture1_->pos() + um);
    BildPlatzieren();
    return true;
}

// The question's text makes room beside the picture, unless too little would be left for it.
void PFÄndern::TextUmBild()
{
    const QRect frage(MFrage_->mapTo(formular_, QPoint()), MFrage_->size());
    MFrage_->SetRand(RandUmBild(frage, Picture1_->geometry()));
}

void PFÄndern::MBilder_Click()
{
    Bildbearbeiten fenster(
        {umgebung_.kartei, umgebung_.meldungen, umgebung_.dialoge, pictureNames_, [this] { Geaendert(); }},
        kopf_.FrageNr, this);
    fenster.exec();
    BildVerbergen();
    BilderZeigen();
}

void PFÄndern::MTon_Click()
{
    Soundbearbeiten fenster(
        {umgebung_.kartei, umgebung_.meldungen, umgebung_.dialoge, pictureNames_, [this] { Geaendert(); }},
        umgebung_.klang, kopf_.FrageNr, this);
    fenster.exec();
    umgebung_.stille();
}
