// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Fragetext.h"

#include "Abfrageteile.h"

#include <QTextDocument>

#include <algorithm>
#include <cmath>
#include <utility>

namespace paukfix {

Fragetext::Fragetext(QWidget *eltern) : RichTextBox(eltern)
{
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    viewport()->setAutoFillBackground(false);
    document()->setDocumentMargin(0);
}

void Fragetext::Zeigen(const QString &text, bool mitte, int breite)
{
    mitte_ = mitte;
    breite_ = breite;
    rand_ = {};
    setFont(Kartenschrift(parentWidget()->font()));
    ZeigeRichText(text);
    Anpassen();
}

void Fragetext::SetRand(const QMargins &rand)
{
    if (rand_ == rand)
        return;
    rand_ = rand;
    Anpassen();
}

void Fragetext::resizeEvent(QResizeEvent *event)
{
    RichTextBox::resizeEvent(event);
    Anpassen();
}

void Fragetext::Anpassen()
{
    // Taking the room changes the size of the text's own widget.
    if (std::exchange(passtAn_, true))
        return;
    constexpr int Lang = 3000; // characters: too many for a large font anyway
    const QFont schrift = parentWidget()->font();
    const QSize raum = contentsRect().marginsRemoved(rand_).size();
    const int breite = mitte_ ? std::min(breite_, raum.width()) : raum.width();
    double faktor = Kartenfaktor(schrift, Schriftgrad::Gross);
    QSizeF bedarf(breite, raum.height());
    if (document()->characterCount() < Lang) {
        for (const double grad : {Schriftgrad::Anzeige, 1.8, 1.6, 1.45, Schriftgrad::Gross}) {
            faktor = Kartenfaktor(schrift, grad);
            bedarf = Bedarf(*document(), breite, faktor);
            if (bedarf.height() <= raum.height())
                break;
        }
    }
    const int frei = raum.height() - static_cast<int>(std::ceil(bedarf.height()));
    const bool passt = frei >= 0 && document()->characterCount() < Lang;
    // A bar that was there once would take the width for which it stays.
    setVerticalScrollBarPolicy(passt ? Qt::ScrollBarAlwaysOff : Qt::ScrollBarAsNeeded);
    SetFaktor(faktor);
    QMargins rand = rand_;
    // Of a text that must be scrolled all lines are as wide as can be.
    if (passt) {
        rand.setTop(rand.top() + frei / 2);
        const int breit = std::min(static_cast<int>(std::ceil(bedarf.width())) + 1, breite);
        if (mitte_)
            rand += QMargins((raum.width() - breit) / 2, 0, (raum.width() - breit) / 2, 0);
    } else if (mitte_) {
        rand += QMargins((raum.width() - breite) / 2, 0, (raum.width() - breite) / 2, 0);
    }
    setViewportMargins(rand);
    // Of a width that changes to and fro while the window comes up, the text learns the first one only.
    if (passt && document()->textWidth() != viewport()->width())
        document()->setTextWidth(viewport()->width());
    passtAn_ = false;
}

} // namespace paukfix
