// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KreuzAnsicht.h"

#include "Abfrageteile.h"
#include "KreuzZeile.h"
#include "RichTextBox.h"

#include <QCheckBox>
#include <QKeyEvent>
#include <QLabel>
#include <QScrollBar>

#include <algorithm>
#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

KreuzAnsicht::KreuzAnsicht(QWidget *eltern) : AntwortAnsicht(eltern)
{
    titel_ = Beschriftung(this, u"Ihre Wahl: Was trifft zu?"_s);
    Label4_ = Beschriftung(this, u"richtig"_s);
    Label4_->setObjectName(u"Label4"_s);
    Label4_->hide();
    for (std::size_t i = 0; i < zeilen_.size(); ++i) {
        auto *zeile = zeilen_[i] = new KreuzZeile(i, this);
        zeile->installEventFilter(this);
        zeile->Kreuz()->installEventFilter(this);
        zeile->Text()->viewport()->installEventFilter(this);
        connect(zeile->Kreuz(), &QCheckBox::clicked, this, [this] { Check1_Click(); });
        zeileAmPlatz_[i] = i;
    }
}

QWidget *KreuzAnsicht::Erste() const
{
    return zeilen_[0]->Text();
}

void KreuzAnsicht::Zeigen(const Abfragekarte &karte)
{
    aufgeloest_ = false;
    leertaste_ = false;
    for (QLabel *label : {titel_, Label4_})
        label->setFont(Schriftgrad::In(font(), Schriftgrad::Klein));
    Label4_->hide();
    for (std::size_t i = 0; i < zeilen_.size(); ++i)
        zeilen_[i]->Zeigen(karte.Antwort[i]);
    Mischen({0, 1, 2, 3, 4});
}

void KreuzAnsicht::Mischen(const std::array<int, AntwortAnzahl> &folge)
{
    for (std::size_t i = 0; i < folge.size(); ++i)
        zeileAmPlatz_[static_cast<std::size_t>(folge[i])] = i;
    for (std::size_t platz = 0; platz < zeileAmPlatz_.size(); ++platz)
        zeilen_[zeileAmPlatz_[platz]]->SetPlatz(static_cast<int>(platz));
    Anordnen();
}

Antwort KreuzAnsicht::Gegeben() const
{
    Kreuze kreuze{};
    for (std::size_t i = 0; i < kreuze.size(); ++i)
        kreuze[i] = zeilen_[i]->Angekreuzt();
    return kreuze;
}

void KreuzAnsicht::Aufloesen(const Abfragekarte &karte, bool /*vergleichen*/)
{
    aufgeloest_ = true;
    Label4_->show();
    for (std::size_t i = 0; i < zeilen_.size(); ++i)
        zeilen_[i]->Aufloesen(karte.Antwort_ch[i]);
}

int KreuzAnsicht::Hoehe(int breite) const
{
    int hoehe = titel_->sizeHint().height();
    for (const KreuzZeile *zeile : zeilen_)
        hoehe += abstand_ + zeile->Hoehe(breite);
    return hoehe;
}

void KreuzAnsicht::SetKompakt(bool kompakt)
{
    for (KreuzZeile *zeile : zeilen_)
        zeile->SetKompakt(kompakt);
    abstand_ = kompakt ? 3 : 4;
    Anordnen();
}

void KreuzAnsicht::resizeEvent(QResizeEvent *event)
{
    AntwortAnsicht::resizeEvent(event);
    Anordnen();
}

void KreuzAnsicht::Anordnen()
{
    constexpr int Rand = 12; // of the titles, over the ticks
    const QSize rechts = Label4_->sizeHint();
    int oben = titel_->sizeHint().height();
    titel_->setGeometry(Rand, 0, width() - 2 * Rand - rechts.width(), oben);
    Label4_->setGeometry(width() - Rand - rechts.width(), 0, rechts.width(), oben);
    for (const std::size_t i : zeileAmPlatz_) {
        const int hoehe = zeilen_[i]->Hoehe(width());
        oben += abstand_;
        zeilen_[i]->setGeometry(0, oben, width(), hoehe);
        oben += hoehe;
    }
}

QList<QWidget *> KreuzAnsicht::Tabfolge() const
{
    QList<QWidget *> folge;
    for (const std::size_t i : zeileAmPlatz_)
        folge << zeilen_[i]->Kreuz() << zeilen_[i]->RichtigesKreuz();
    return folge;
}

QString KreuzAnsicht::Hinweise() const
{
    return u"[1] bis [5] kreuzt an · [Eingabe] prüft"_s;
}

// The right answers that are none of the empty ones, from the top.
QStringList KreuzAnsicht::Richtige() const
{
    QStringList richtig;
    for (const std::size_t i : zeileAmPlatz_)
        if (zeilen_[i]->RichtigesKreuz()->isChecked() && !zeilen_[i]->Antwort().isEmpty())
            richtig << zeilen_[i]->Antwort();
    return richtig;
}

QString KreuzAnsicht::Erklaerung() const
{
    constexpr qsizetype Kurz = 40; // more would not fit beside the verdict
    const QStringList richtig = Richtige();
    return richtig.size() == 1 && richtig[0].size() <= Kurz ? u"%1 wäre richtig."_s.arg(richtig[0])
                                                            : QString();
}

QString KreuzAnsicht::Ansage() const
{
    const QStringList richtig = Richtige();
    return richtig.isEmpty() ? u"Keine Antwort ist richtig."_s : u"Richtig: %1."_s.arg(richtig.join(u"; "_s));
}

bool KreuzAnsicht::Ziffer(int ziffer)
{
    if (aufgeloest_ || ziffer < 1 || ziffer > AntwortAnzahl)
        return false;
    zeilen_[zeileAmPlatz_[static_cast<std::size_t>(ziffer - 1)]]->Kreuz()->toggle();
    return true;
}

bool KreuzAnsicht::eventFilter(QObject *objekt, QEvent *event)
{
    for (const KreuzZeile *zeile : zeilen_) {
        if (event->type() == QEvent::KeyPress && objekt == zeile->Kreuz())
            return Check1_KeyPress(*zeile, static_cast<const QKeyEvent &>(*event));
        if (event->type() == QEvent::MouseButtonRelease &&
            Zeile_Click(*zeile, objekt, static_cast<const QMouseEvent &>(*event)))
            return true;
    }
    return false;
}

void KreuzAnsicht::Check1_Click()
{
    // The mouse goes on to the button that is pressed next; the keyboard stays to tick the next line.
    if (!std::exchange(leertaste_, false) && !aufgeloest_)
        emit Angeklickt();
}

bool KreuzAnsicht::Check1_KeyPress(const KreuzZeile &zeile, const QKeyEvent &taste)
{
    leertaste_ = taste.key() == Qt::Key_Space;
    // A long answer is read without the mouse.
    QScrollBar *leiste = zeile.Text()->verticalScrollBar();
    if (taste.key() == Qt::Key_PageDown)
        leiste->triggerAction(QAbstractSlider::SliderPageStepAdd);
    else if (taste.key() == Qt::Key_PageUp)
        leiste->triggerAction(QAbstractSlider::SliderPageStepSub);
    return taste.key() == Qt::Key_PageDown || taste.key() == Qt::Key_PageUp;
}

// The whole line is the target, not the small box alone.
bool KreuzAnsicht::Zeile_Click(const KreuzZeile &zeile, const QObject *objekt, const QMouseEvent &maus)
{
    if (aufgeloest_ || maus.button() != Qt::LeftButton ||
        (objekt != &zeile && objekt != zeile.Text()->viewport()))
        return false;
    zeile.Kreuz()->click();
    return true;
}

} // namespace paukfix
