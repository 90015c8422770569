// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KreuzAnsicht.h"

#include "Abfrageteile.h"
#include "Farben.h"
#include "Flaeche.h"
#include "RichTextBox.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QScrollBar>
#include <QVBoxLayout>

#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

KreuzAnsicht::KreuzAnsicht(QWidget *eltern) : AntwortAnsicht(eltern)
{
    titel_ = Beschriftung(this, u"Was trifft zu?"_s);
    Label4_ = Benannt(Beschriftung(this, u"richtig"_s), u"Label4"_s, u"Richtige Antworten"_s);
    PlatzHalten(Label4_);
    Label4_->hide();
    auto *kopf = new QHBoxLayout;
    kopf->addWidget(titel_, 1);
    kopf->addWidget(Label4_);

    spalte_ = new QVBoxLayout(this);
    spalte_->setContentsMargins(0, 0, 0, 0);
    spalte_->setSpacing(4);
    spalte_->addLayout(kopf);
    for (std::size_t i = 0; i < zeilen_.size(); ++i) {
        zeilen_[i] = ZeileBauen(i);
        spalte_->addWidget(zeilen_[i].flaeche);
        zeileAmPlatz_[i] = i;
    }
}

KreuzAnsicht::Zeile KreuzAnsicht::ZeileBauen(std::size_t i)
{
    Zeile neu;
    neu.flaeche = new Flaeche(this);
    neu.flaeche->installEventFilter(this);
    neu.kreuz = Benannt(new QCheckBox(neu.flaeche), Name("Check1", i), {});
    neu.kreuz->installEventFilter(this);
    connect(neu.kreuz, &QCheckBox::clicked, this, [this] { Check1_Click(); });
    neu.text = Benannt(new RichTextBox(neu.flaeche), Name("Antwort", i), {});
    neu.text->setReadOnly(true);
    neu.text->setTextInteractionFlags(Qt::NoTextInteraction);
    neu.text->setFocusPolicy(Qt::NoFocus);
    neu.text->setFrameShape(QFrame::NoFrame);
    neu.text->viewport()->setAutoFillBackground(false);
    neu.text->viewport()->installEventFilter(this);
    neu.text->SetHoechstens(4);
    neu.richtig = Benannt(new QCheckBox(neu.flaeche), Name("Check2", i), {});
    neu.richtig->setFocusPolicy(Qt::NoFocus);
    neu.richtig->setAttribute(Qt::WA_TransparentForMouseEvents);
    PlatzHalten(neu.richtig);
    neu.richtig->hide();

    auto *zeile = new QHBoxLayout(neu.flaeche);
    zeile->setContentsMargins(10, 2, 10, 2);
    zeile->addWidget(neu.kreuz);
    zeile->addWidget(neu.text, 1);
    zeile->addWidget(neu.richtig);
    return neu;
}

QWidget *KreuzAnsicht::Erste() const
{
    return zeilen_[0].text;
}

void KreuzAnsicht::Zeigen(const Abfragekarte &karte)
{
    aufgeloest_ = false;
    leertaste_ = false;
    Schriftgroesse(titel_, 0.9);
    Schriftgroesse(Label4_, 0.9);
    Label4_->hide();
    for (std::size_t i = 0; i < zeilen_.size(); ++i) {
        const Zeile &zeile = zeilen_[i];
        zeile.flaeche->setPalette({});
        Schriftgroesse(zeile.text, 1);
        zeile.text->ZeigeRichText(karte.Antwort[i]);
        zeile.kreuz->setChecked(false);
        zeile.kreuz->setDown(false);
        zeile.kreuz->setFocusPolicy(Qt::StrongFocus);
        zeile.kreuz->setAttribute(Qt::WA_TransparentForMouseEvents, false);
        zeile.richtig->setChecked(false);
        zeile.richtig->hide();
    }
    Mischen({0, 1, 2, 3, 4});
}

void KreuzAnsicht::Mischen(const std::array<int, AntwortAnzahl> &folge)
{
    for (std::size_t i = 0; i < folge.size(); ++i)
        zeileAmPlatz_[static_cast<std::size_t>(folge[i])] = i;
    for (std::size_t platz = 0; platz < zeileAmPlatz_.size(); ++platz) {
        const Zeile &zeile = zeilen_[zeileAmPlatz_[platz]];
        const int stelle = static_cast<int>(platz) + 1; // below the title
        if (spalte_->indexOf(zeile.flaeche) != stelle) {
            spalte_->removeWidget(zeile.flaeche);
            spalte_->insertWidget(stelle, zeile.flaeche);
        }
        const QString name = u"Antwort %1"_s.arg(platz + 1);
        zeile.text->setAccessibleName(name);
        zeile.kreuz->setText(QString::number(platz + 1));
        zeile.kreuz->setAccessibleName(u"%1: %2"_s.arg(name, zeile.text->PlainText()));
        zeile.richtig->setAccessibleName(name + u" ist richtig"_s);
    }
}

Antwort KreuzAnsicht::Gegeben() const
{
    Kreuze kreuze{};
    for (std::size_t i = 0; i < kreuze.size(); ++i)
        kreuze[i] = zeilen_[i].kreuz->isChecked();
    return kreuze;
}

void KreuzAnsicht::Aufloesen(const Abfragekarte &karte)
{
    aufgeloest_ = true;
    Label4_->show();
    for (std::size_t i = 0; i < zeilen_.size(); ++i) {
        zeilen_[i].richtig->setChecked(karte.Antwort_ch[i]);
        zeilen_[i].richtig->show();
        // From here on the ticks are to be read only.
        zeilen_[i].kreuz->setFocusPolicy(Qt::NoFocus);
        zeilen_[i].kreuz->setAttribute(Qt::WA_TransparentForMouseEvents);
    }
}

QList<QWidget *> KreuzAnsicht::Tabfolge() const
{
    QList<QWidget *> folge;
    for (const std::size_t i : zeileAmPlatz_)
        folge << zeilen_[i].kreuz;
    return folge;
}

void KreuzAnsicht::Faerben(AbfrageLauf::Stand stand)
{
    const QColor karte = palette().color(QPalette::Base);
    LeiseFaerben(titel_, karte);
    LeiseFaerben(Label4_, karte);
    for (const Zeile &zeile : zeilen_) {
        zeile.flaeche->SetUmriss(zeile.kreuz->hasFocus() ? Flaeche::Umriss::Fokus : Flaeche::Umriss::Fein);
        if (stand != AbfrageLauf::Stand::Gefragt) {
            const bool stimmt = zeile.kreuz->isChecked() == zeile.richtig->isChecked();
            paukfix::Faerben(
                zeile.flaeche,
                {{QPalette::Base, Farben::Getoent(stimmt ? Farben::Richtig : Farben::Falsch, karte, 0.18)}});
        }
        UmrissFaerben(zeile.kreuz);
        UmrissFaerben(zeile.richtig);
    }
}

QStringList KreuzAnsicht::Hinweise() const
{
    return {u"1 bis 5 kreuzt an"_s, u"Eingabe prüft"_s};
}

bool KreuzAnsicht::Ziffer(int ziffer)
{
    if (aufgeloest_ || ziffer < 1 || ziffer > AntwortAnzahl)
        return false;
    zeilen_[zeileAmPlatz_[static_cast<std::size_t>(ziffer - 1)]].kreuz->toggle();
    return true;
}

bool KreuzAnsicht::eventFilter(QObject *objekt, QEvent *event)
{
    for (const Zeile &zeile : zeilen_) {
        if (event->type() == QEvent::KeyPress && objekt == zeile.kreuz)
            return Check1_KeyPress(zeile, static_cast<const QKeyEvent &>(*event));
        if (event->type() == QEvent::MouseButtonRelease &&
            Zeile_Click(zeile, objekt, static_cast<const QMouseEvent &>(*event)))
            return true;
    }
    return false;
}

void KreuzAnsicht::Check1_Click()
{
    // The mouse goes on to the button that is pressed next; the keyboard stays to tick the next line.
    if (!std::exchange(leertaste_, false))
        emit Angeklickt();
}

bool KreuzAnsicht::Check1_KeyPress(const Zeile &zeile, const QKeyEvent &taste)
{
    leertaste_ = taste.key() == Qt::Key_Space;
    // A long answer is read without the mouse.
    QScrollBar *leiste = zeile.text->verticalScrollBar();
    if (taste.key() == Qt::Key_PageDown)
        leiste->triggerAction(QAbstractSlider::SliderPageStepAdd);
    else if (taste.key() == Qt::Key_PageUp)
        leiste->triggerAction(QAbstractSlider::SliderPageStepSub);
    return taste.key() == Qt::Key_PageDown || taste.key() == Qt::Key_PageUp;
}

// The whole line is the target, not the small box alone.
bool KreuzAnsicht::Zeile_Click(const Zeile &zeile, const QObject *objekt, const QMouseEvent &maus)
{
    if (aufgeloest_ || maus.button() != Qt::LeftButton ||
        (objekt != zeile.flaeche && objekt != zeile.text->viewport()))
        return false;
    zeile.kreuz->click();
    return true;
}

} // namespace paukfix
