// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Antworten.h"

#include "Antwortfeld.h"
#include "Fensterbau.h"
#include "Hausfarben.h"
#include "KartenTextBox.h"

#include <QCheckBox>
#include <QEvent>
#include <QFontMetrics>
#include <QGridLayout>
#include <QScrollBar>
#include <QTextCharFormat>
#include <QTextDocument>

#include <algorithm>
#include <cmath>

namespace paukfix {

using namespace Qt::StringLiterals;

Antworten::Antworten(const QTextCharFormat &standard, double faktor, QWidget *parent)
    : QScrollArea(parent), flaeche_(new QWidget), zeilen_(new QGridLayout(flaeche_))
{
    QFont schrift = standard.font();
    schrift.setPointSizeF(schrift.pointSizeF() * faktor);
    zeile_ = std::max(fontMetrics().lineSpacing(), QFontMetrics(schrift).lineSpacing()) + 14;
    setFrameShape(QFrame::NoFrame);
    setWidget(flaeche_);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setFocusPolicy(Qt::NoFocus);
    viewport()->setAutoFillBackground(false);
    flaeche_->setAutoFillBackground(false);
    setMinimumHeight(zeile_ * 2 + Abstand);
    zeilen_->setContentsMargins(0, 0, 0, 0);
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, [this](int von, int bis) {
        zeilen_->setContentsMargins(0, 0, bis > von ? Abstand / 2 : 0, 0); // the lines stand clear of it
    });
    zeilen_->setSpacing(Abstand);
    for (std::size_t i = 0; i < AntwortBoxen; ++i) {
        auto *feld = new Antwortfeld(flaeche_);
        KartenTextBox *box = Benannt(new KartenTextBox(feld), Name("Antwort", i), u"Antwort %1"_s.arg(i + 1));
        box->AufFeld(feld);
        box->SetFaktor(faktor);
        box->document()->setDocumentMargin(2);
        box->setMinimumHeight(0);
        QCheckBox *kreuz = Benannt(new QCheckBox(u"richtig"_s, feld), Name("Check1", i),
                                   u"Antwort %1 ist richtig"_s.arg(i + 1));
        kreuz->setToolTip(u"Diese Antwort ist richtig"_s);
        kreuz->setLayoutDirection(Qt::RightToLeft); // the tick stands at the line's end
        connect(kreuz, &QCheckBox::clicked, this, &Antworten::kreuzGeaendert);
        connect(kreuz, &QCheckBox::toggled, this, [this, i] { FeldZeigen(i); });
        connect(box, &QTextEdit::textChanged, this, [this, i] { FeldZeigen(i); });
        kreuz->setMinimumHeight(zeile_ - 10); // as high as the first line, beside which it stands
        feld->layout()->addWidget(kreuz);
        feld->layout()->setAlignment(kreuz, Qt::AlignTop);
        feld->setMinimumHeight(zeile_);
        zeilen_->addWidget(feld, static_cast<int>(i), 0);
        Antwort_[i] = box;
        Check1_[i] = kreuz;
        feld_[i] = feld;
    }
}

void Antworten::Zeigen(const Kartenblatt &blatt, const QTextCharFormat &standard)
{
    for (std::size_t i = 0; i < AntwortBoxen; ++i) {
        Antwort_[i]->Zeigen(blatt.Antwort[i], standard);
        Check1_[i]->setChecked(blatt.Antwort_ch[i]);
    }
    ArtZeigen(blatt.art);
}

void Antworten::Lesen(Kartenblatt &blatt) const
{
    for (std::size_t i = 0; i < AntwortBoxen; ++i) {
        blatt.Antwort[i] = Antwort_[i]->RichText();
        blatt.Antwort_Klartext[i] = Antwort_[i]->PlainText();
        blatt.Antwort_bearbeitet[i] = Antwort_[i]->Bearbeitet();
        blatt.Antwort_unsichtbar[i] = blatt.Antwort_Klartext[i].isEmpty() && !Antwort_[i]->IstLeer();
        blatt.Antwort_ch[i] = Check1_[i]->isChecked();
    }
}

void Antworten::Gespeichert()
{
    for (KartenTextBox *box : Antwort_)
        box->Gespeichert();
}

void Antworten::ArtZeigen(Antwortart art)
{
    const bool ankreuzen = art == Antwortart::Ankreuzen;
    // What goes away leaves the keyboard where it can be typed, not to whatever control comes next.
    if (!ankreuzen && isAncestorOf(window()->focusWidget()))
        Fokus(0);
    for (std::size_t i = 0; i < AntwortBoxen; ++i) {
        feld_[i]->setVisible(ankreuzen || i == 0);
        Check1_[i]->setVisible(ankreuzen);
        zeilen_->setRowStretch(static_cast<int>(i), ankreuzen || i == 0 ? 1 : 0);
    }
    FelderZeigen();
}

void Antworten::FelderZeigen()
{
    zeilen_->activate();
    for (std::size_t i = 0; i < AntwortBoxen; ++i)
        FeldZeigen(i);
}

// A right answer looks right, and a line that is not used says so.
void Antworten::FeldZeigen(std::size_t nummer)
{
    const bool ankreuzen = !Check1_[nummer]->isHidden();
    const bool leer = ankreuzen && Antwort_[nummer]->IstLeer();
    const bool richtig = ankreuzen && Check1_[nummer]->isChecked();
    feld_[nummer]->SetRichtig(richtig);
    const Hausfarben &farben = HausfarbenZu(palette());
    QCheckBox *kreuz = Check1_[nummer];
    if (gedruckt_)
        kreuz->setPalette({});
    else
        Faerben(kreuz, {{QPalette::WindowText, richtig ? farben.richtigText : farben.leiseTinte}});
    kreuz->setProperty("zeichenfarbe", richtig ? farben.richtigText : QColor());
    // A text that is lower than its line stands in the middle.
    const int hoch = static_cast<int>(std::ceil(Antwort_[nummer]->document()->size().height()));
    const int frei = ankreuzen ? (feld_[nummer]->height() - hoch) / 2 : 0;
    feld_[nummer]->layout()->setContentsMargins(10, std::max(frei, 4), 10, 4);
    feld_[nummer]->SetLeer(leer && !gedruckt_);
    Antwort_[nummer]->setAccessibleDescription(leer ? u"leer"_s : QString());
}

void Antworten::SetGedruckt(bool gedruckt)
{
    gedruckt_ = gedruckt;
    setMinimumHeight(gedruckt ? flaeche_->minimumSizeHint().height() : zeile_ * 2 + Abstand);
    FelderZeigen();
}

void Antworten::resizeEvent(QResizeEvent *event)
{
    QScrollArea::resizeEvent(event);
    FelderZeigen();
}

void Antworten::changeEvent(QEvent *event)
{
    QScrollArea::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && feld_.back())
        FelderZeigen();
}

void Antworten::Fokus(std::size_t box)
{
    KartenTextBox *ziel = feld_[box]->isHidden() ? Antwort_[0] : Antwort_[box];
    ziel->setFocus();
    ensureWidgetVisible(ziel, 0, Abstand);
}

QList<QWidget *> Antworten::Tabfolge() const
{
    QList<QWidget *> folge;
    for (std::size_t i = 0; i < AntwortBoxen; ++i)
        folge << Antwort_[i] << Check1_[i];
    return folge;
}

} // namespace paukfix
