// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Kartenbild.h"

#include "Bild.h"
#include "BildBox.h"
#include "Kurztext.h"
#include "RichTextBox.h"

#include <algorithm>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// Moved as little as can be.
QRect Hinein(QRect platz, const QRect &innen)
{
    platz.moveLeft(std::max(std::min(platz.left(), innen.right() + 1 - platz.width()), innen.left()));
    platz.moveTop(std::max(std::min(platz.top(), innen.bottom() + 1 - platz.height()), innen.top()));
    return platz;
}

} // namespace

Kartenbild::Kartenbild(QWidget *karte, RichTextBox *frage, const Grenzen &grenzen)
    : karte_(karte), frage_(frage), box_(new BildBox(karte)), grenzen_(grenzen)
{
    box_->hide();
    box_->begrenzen = [this](QPoint neu) { return Innerhalb({neu, box_->size()}).topLeft(); };
    box_->gezogen = [this] { SetPlatz(box_->geometry()); };
}

void Kartenbild::SetPlatz(const QRect &platz)
{
    platz_ = platz;
    Platzieren();
}

void Kartenbild::SetFreihalten(bool freihalten)
{
    freihalten_ = freihalten;
    Platzieren();
}

bool Kartenbild::Zeigen(const QString &name, const QString &verzeichnis, const QString &programmPfad,
                        Meldungen &meldungen)
{
    if (name.isEmpty())
        return false;
    const QImage bild = BildLaden(name, verzeichnis, programmPfad, meldungen);
    if (bild.isNull())
        return false;
    Zeigen(bild);
    box_->setAccessibleName(u"Bild der Karte: "_s + Kurztext(name));
    return true;
}

void Kartenbild::Zeigen(const QImage &bild)
{
    box_->SetBild(bild);
    box_->setGeometry(Eingepasst());
    box_->show();
    box_->raise();
    TextUmBild();
}

void Kartenbild::Verbergen()
{
    box_->hide();
    Platzieren();
}

void Kartenbild::Platzieren()
{
    box_->setGeometry(Eingepasst());
    TextUmBild();
}

void Kartenbild::TextUmBild()
{
    const bool raum = freihalten_ || !box_->isHidden();
    frage_->SetRand(raum ? RandUmBild(Frageplatz(), Bildplatz()) : QMargins());
}

QRect Kartenbild::Frageplatz() const
{
    return {frage_->mapTo(karte_, QPoint()), frage_->size()};
}

QRect Kartenbild::Bildplatz() const
{
    if (!platz_.isEmpty())
        return Innerhalb(platz_);
    QRect platz = Frageplatz();
    platz.setLeft(platz.right() - platz.width() * 2 / 5);
    return platz;
}

// A picture without a place stands at the right edge, however wide it is: what is shown after it needs no
// other room.
QRect Kartenbild::Eingepasst() const
{
    QRect platz = Bildplatz();
    if (!grenzen_.nebenText || !platz_.isEmpty() || box_->Bild().isNull())
        return platz;
    const QSize groesse = box_->Bild().size().scaled(platz.size(), Qt::KeepAspectRatio).expandedTo({1, 1});
    return {
        QPoint(platz.right() + 1 - groesse.width(), platz.top() + (platz.height() - groesse.height()) / 2),
        groesse};
}

QRect Kartenbild::Innerhalb(QRect platz) const
{
    if (grenzen_.nebenText)
        return NebenText(platz);
    const QRect innen = karte_->rect().marginsRemoved(grenzen_.abstand);
    platz.setSize(platz.size().boundedTo(innen.size()).expandedTo(grenzen_.mindestens));
    return Hinein(platz, innen);
}

QRect Kartenbild::NebenText(QRect platz) const
{
    const QRect frage = Frageplatz();
    const QSize raum(frage.width() * 2 / 5, frage.height());
    const int mitte = platz.center().x();
    const bool kleiner = platz.width() > raum.width() || platz.height() > raum.height();
    if (kleiner)
        platz.setSize(platz.size().scaled(raum, Qt::KeepAspectRatio).expandedTo({1, 1}));
    platz = Hinein(platz, frage);
    // One that cannot stand as it was put, or would leave too little on both sides, stands at an edge.
    if (kleiner || RandUmBild(frage, platz).isNull())
        platz.moveLeft(mitte < frage.center().x() ? frage.left() : frage.right() + 1 - platz.width());
    return platz;
}

} // namespace paukfix
