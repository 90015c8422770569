// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Kartenflaeche.h"

#include "Abfrageteile.h"
#include "BildBox.h"
#include "Farben.h"
#include "KreuzAnsicht.h"
#include "KurzLabel.h"
#include "Meldungen.h"
#include "RichTextBox.h"
#include "Texttaste.h"
#include "TippAnsicht.h"
#include "UrteilZeile.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>

namespace paukfix {

using namespace Qt::StringLiterals;

Kartenflaeche::Kartenflaeche(QWidget *eltern, Meldungen &meldungen) : Flaeche(eltern), meldungen_(meldungen)
{
    Benannt(this, u"Karte"_s, u"Karte"_s);
    SetUmriss(Umriss::Fein);
    auto *inhalt = new QVBoxLayout(this); // the question takes the room that the answers leave
    inhalt->setContentsMargins(22, 14, 22, 14);
    inhalt->setSpacing(10);
    inhalt->addLayout(KopfBauen());

    MFrage_ = Benannt(new RichTextBox(this), u"MFrage"_s, u"Frage"_s);
    MFrage_->setReadOnly(true);
    MFrage_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    MFrage_->setFrameShape(QFrame::NoFrame);
    MFrage_->viewport()->setAutoFillBackground(false);
    MFrage_->document()->setDocumentMargin(0);
    strich_ = new Flaeche(this, QPalette::Mid);
    strich_->setFixedHeight(2);
    tippen_ = new TippAnsicht(this, meldungen_);
    kreuze_ = new KreuzAnsicht(this);
    urteil_ = new UrteilZeile(this);
    inhalt->addWidget(MFrage_, 1);
    inhalt->addWidget(strich_);
    inhalt->addWidget(tippen_);
    inhalt->addWidget(kreuze_);
    inhalt->addWidget(urteil_);
    BildBauen();
    MFrage_->installEventFilter(this);
}

QLayout *Kartenflaeche::KopfBauen()
{
    auto *zeile = new QHBoxLayout;
    std::size_t i = 0;
    const auto feld = [&](const QString &beschriftung, const char *name, QLabel *label) {
        kopf_[i] = Beschriftung(this, beschriftung);
        zeile->addWidget(kopf_[i++]);
        label->setTextFormat(Qt::PlainText);
        zeile->addWidget(Benannt(label, QLatin1String(name), beschriftung));
        return label;
    };
    MaskFrageNr_ = feld(u"Frage Nr."_s, "MaskFrageNr", new QLabel(this));
    zeile->addSpacing(12);
    MaskFachNr_ = feld(u"Fach"_s, "MaskFachNr", new QLabel(this));
    zeile->addSpacing(12);
    MaskThema_ = feld(u"Thema"_s, "MaskThema", new KurzLabel(this));
    zeile->setStretchFactor(MaskThema_, 1);
    return zeile;
}

void Kartenflaeche::BildBauen()
{
    constexpr int Rand = 6;
    bild_ =
        std::make_unique<Kartenbild>(this, MFrage_, Kartenbild::Grenzen{.abstand{Rand, Rand, Rand, Rand}});
    BildBox *box = Benannt(bild_->Box(), u"Picture1"_s, u"Bild"_s);
    box->setToolTip(u"Das Bild lässt sich mit der Maus verschieben"_s);
}

void Kartenflaeche::Zeigen(const Abfragekarte &karte)
{
    ankreuzen_ = karte.typ == Antworttyp::Ankreuzen;
    const bool mitBild = std::any_of(karte.Medium.begin() + 1, karte.Medium.begin() + 4,
                                     [](const QString &name) { return !name.isEmpty(); });
    wunsch_ = mitBild ? karte.Bildplatz : QRect();
    bild_->SetFreihalten(mitBild);
    BildZeigen({});

    for (QLabel *label : {kopf_[0], kopf_[1], kopf_[2], MaskFrageNr_, MaskFachNr_, MaskThema_})
        Schriftgroesse(label, 0.9);
    MaskFrageNr_->setText(karte.FrageNr);
    MaskFachNr_->setText(QString::number(karte.FachNr));
    MaskThema_->setText(karte.Thema);
    MaskThema_->setToolTip(Kurztext(karte.Thema).toHtmlEscaped());
    Schriftgroesse(MFrage_, 1.4);
    MFrage_->ZeigeRichText(karte.Frage);

    // Of the two forms the one that is there holds the name of the first answer.
    for (AntwortAnsicht *form :
         {static_cast<AntwortAnsicht *>(tippen_), static_cast<AntwortAnsicht *>(kreuze_)})
        form->SetGezeigt(form == &Ansicht());
    Ansicht().Zeigen(karte);
    urteil_->Leeren();
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

QWidget *Kartenflaeche::Frage() const
{
    return MFrage_;
}

void Kartenflaeche::Faerben(AbfrageLauf::Stand stand)
{
    const QColor grund = palette().color(QPalette::Base);
    const QColor text = palette().color(QPalette::WindowText);
    for (QLabel *label : kopf_)
        LeiseFaerben(label, grund);
    paukfix::Faerben(strich_, {{QPalette::Mid, MFrage_->hasFocus() ? palette().color(QPalette::Highlight)
                                                                   : Farben::Getoent(text, grund, 0.15)}});
    Ansicht().Faerben(stand);
    urteil_->Faerben();
}

QRect Kartenflaeche::Bildbedarf()
{
    MFrage_->setMinimumHeight(MFrage_->fontMetrics().lineSpacing() * 3);
    bild_->SetPlatz(wunsch_);
    return wunsch_;
}

void Kartenflaeche::FrageNebenBild(int mehr)
{
    const QLayout &inhalt = *layout();
    const int oben = inhalt.contentsMargins().top() + MaskThema_->sizeHint().height() + inhalt.spacing();
    const int soll = wunsch_.bottom() - oben;
    const int moeglich = MFrage_->minimumHeight() + mehr;
    MFrage_->setMinimumHeight(std::clamp(soll, MFrage_->minimumHeight(), moeglich));
    if (soll <= moeglich)
        return;
    QRect kleiner = wunsch_;
    kleiner.setHeight(std::max(kleiner.height() / 2, kleiner.height() - soll + moeglich));
    bild_->SetPlatz(kleiner);
}

void Kartenflaeche::BildZeigen(const QImage &bild)
{
    if (!bild.isNull()) {
        bild_->Zeigen(bild);
        return;
    }
    bild_->Verbergen();
    bild_->Box()->SetBild({});
}

// The picture goes where the question goes, and the question takes no key that would change it.
bool Kartenflaeche::eventFilter(QObject * /*frage*/, QEvent *event)
{
    if (event->type() == QEvent::Resize || event->type() == QEvent::Move)
        bild_->Platzieren();
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto &taste = static_cast<const QKeyEvent &>(*event);
    if (!AendertText(taste, true))
        return false;
    if (!taste.isAutoRepeat())
        meldungen_.Zeigen(u"Jetzt bitte nicht ändern"_s);
    return true;
}

} // namespace paukfix
