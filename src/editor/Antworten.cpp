// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Antworten.h"

#include "Fensterbau.h"
#include "Flaeche.h"
#include "KartenTextBox.h"

#include <QCheckBox>
#include <QFontMetrics>
#include <QGridLayout>
#include <QTextCharFormat>
#include <QTextDocument>

#include <algorithm>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr int Abstand = 5; // between the lines of a tick card, in pixels
constexpr int Zeilen = static_cast<int>(AntwortBoxen);

} // namespace

Antworten::Antworten(const QTextCharFormat &standard, QWidget *parent)
    : QWidget(parent), zeilen_(new QGridLayout(this))
{
    const int schrift = QFontMetrics(standard.font()).lineSpacing();
    const int zeile = std::max(fontMetrics().lineSpacing(), schrift) + 14;
    zeilen_->setContentsMargins(0, 0, 0, 0);
    zeilen_->setSpacing(Abstand);
    setMinimumHeight(Zeilen * (zeile + Abstand));
    for (std::size_t i = 0; i < AntwortBoxen; ++i) {
        KartenTextBox *box = Benannt(new KartenTextBox(this), Name("Antwort", i), u"Antwort %1"_s.arg(i + 1));
        Flaeche *feld = box->AufFeld(this);
        box->document()->setDocumentMargin(2);
        box->setMinimumHeight(0);
        QCheckBox *kreuz = Benannt(new QCheckBox(u"richtig"_s, feld), Name("Check1", i),
                                   u"Antwort %1 ist richtig"_s.arg(i + 1));
        kreuz->setToolTip(u"Diese Antwort ist richtig"_s);
        connect(kreuz, &QCheckBox::clicked, this, &Antworten::kreuzGeaendert);
        feld->layout()->addWidget(kreuz);
        feld->layout()->setAlignment(kreuz, Qt::AlignTop); // beside the first line
        feld->setMinimumHeight(zeile);
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
}

void Antworten::Fokus(std::size_t box)
{
    (feld_[box]->isHidden() ? Antwort_[0] : Antwort_[box])->setFocus();
}

QList<QWidget *> Antworten::Tabfolge() const
{
    QList<QWidget *> folge;
    for (std::size_t i = 0; i < AntwortBoxen; ++i)
        folge << Antwort_[i] << Check1_[i];
    return folge;
}

void Antworten::FarbenSetzen(const QPalette &form)
{
    // The ticks stand on the fields, not on the form.
    const QColor feld = form.color(QPalette::Base);
    const QColor text = form.color(QPalette::Text);
    for (QCheckBox *kreuz : Check1_)
        Faerben(kreuz, {{QPalette::WindowText, text}, {QPalette::Window, UmrissGrund(text, feld)}});
}

void Antworten::Umranden(const KartenTextBox *aktiv)
{
    for (std::size_t i = 0; i < AntwortBoxen; ++i)
        feld_[i]->SetUmriss(Antwort_[i] == aktiv ? Flaeche::Umriss::Fokus : Flaeche::Umriss::Feld);
}

// A rest of pixels that five lines cannot share stays below them.
void Antworten::resizeEvent(QResizeEvent *event)
{
    zeilen_->setContentsMargins(0, 0, 0, (height() - (Zeilen - 1) * Abstand) % Zeilen);
    QWidget::resizeEvent(event);
}

} // namespace paukfix
