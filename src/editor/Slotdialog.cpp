// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Slotdialog.h"

#include "Farben.h"
#include "Fensterbau.h"
#include "KurzLabel.h"
#include "Medienannahme.h"
#include "Mediendatei.h"
#include "SafeFile.h"
#include "Schriftgrade.h"
#include "Slotkarte.h"
#include "Slotvorschau.h"
#include "Step.h"

#include <QClipboard>
#include <QDir>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMimeData>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>

#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize Gewoehnlich{960, 500}; // pixels
constexpr int Untereinander = 560;     // a narrower window has the slots one under the other
constexpr int Abstand = 16;

} // namespace

Slotdialog::Slotdialog(const CardStore &kartei, const Dienste &dienste, Kartendateien dateien,
                       SlotTexte texte, QWidget *parent)
    : QDialog(parent),
      kartei_(kartei),
      dienste_(dienste),
      dateien_(std::move(dateien)),
      texte_(std::move(texte))
{
    setObjectName(texte_.name);
    setWindowTitle(texte_.titel);
    KartenBauen();
    KnoepfeBauen();

    auto *frage = new QLabel(texte_.frage, this);
    frage->setObjectName(u"Frame1"_s);
    QFont gross = Schriftgrad::In(font(), Schriftgrad::Gross);
    gross.setWeight(QFont::DemiBold);
    frage->setFont(gross);
    auto *nummer = new QLabel(dateien_.frageNr, this);
    nummer->setObjectName(u"Fragenummer"_s);
    nummer->setTextFormat(Qt::PlainText);
    QFont fett = font();
    fett.setWeight(QFont::DemiBold);
    nummer->setFont(fett);
    auto *kopf = new QHBoxLayout;
    kopf->addWidget(frage);
    kopf->addStretch(1);
    kopf->addWidget(new QLabel(u"Fragenr:"_s, this));
    kopf->addWidget(nummer);
    auto *knoepfe = new QHBoxLayout;
    auto *hinweis = new QLabel(texte_.art == Medienart::Bild
                                   ? u"Ein Bild, das Sie hierher ziehen, wird neben die Kartei kopiert."_s
                                   : u"Eine Datei, die Sie hierher ziehen, wird neben die Kartei kopiert."_s,
                               this);
    hinweis->setWordWrap(true);
    hinweis->setPalette(Farben::Leise(palette()));
    hinweis->setFont(Schriftgrad::In(font(), Schriftgrad::Klein));
    knoepfe->addWidget(cmdÄndern_);
    knoepfe->addSpacing(Abstand);
    knoepfe->addWidget(hinweis, 1);
    knoepfe->addSpacing(Abstand);
    knoepfe->addWidget(cmdLöschen_);
    knoepfe->addSpacing(24);
    knoepfe->addWidget(cmdOK_);
    auto *alles = new QVBoxLayout(this);
    alles->setContentsMargins(24, 18, 24, 18);
    alles->setSpacing(Abstand);
    alles->addLayout(kopf);
    alles->addWidget(rolle_, 1);
    alles->addLayout(knoepfe);
    setMinimumSize(400, 320);
    resize(Gewoehnlich.boundedTo((parent ? parent->screen() : screen())->availableSize() * 0.95));
}

void Slotdialog::KartenBauen()
{
    rolle_ = new QScrollArea(this);
    rolle_->setFrameShape(QFrame::NoFrame);
    rolle_->setFocusPolicy(Qt::NoFocus);
    rolle_->setWidgetResizable(true);
    rolle_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto *flaeche = new QWidget;
    rolle_->setWidget(flaeche);
    rolle_->viewport()->setAutoFillBackground(false);
    flaeche->setAutoFillBackground(false);
    reihe_ = new QBoxLayout(QBoxLayout::LeftToRight, flaeche);
    reihe_->setContentsMargins(0, 0, 0, 0);
    reihe_->setSpacing(Abstand);
    for (int i = 0; i < static_cast<int>(Momente); ++i) {
        auto *karte = new Slotkarte(i + 1, texte_.art, flaeche);
        karten_.at(static_cast<std::size_t>(i)) = karte;
        // Options of several parents are no group by themselves.
        karte->Option()->setAutoExclusive(false);
        connect(karte->Option(), &QRadioButton::clicked, this, [this, i] { Option_Click(i); });
        karte->geklickt = [karte] { karte->Option()->click(); };
        karte->gebracht = [this, i](const Medium &medium) { Bringen(i, medium); };
        karte->anzuhoeren = [this, i] { dienste_.ton.Spielen(Mediendatei(kartei_.KarteiPfad, SlotName(i))); };
        reihe_->addWidget(karte, 1);
    }
    Dateiname_ = Benannt(new KurzLabel(this), u"Dateiname"_s, {});
    Dateiname_->setTextFormat(Qt::PlainText);
    QFont fett = Schriftgrad::In(font(), Schriftgrad::Klein);
    fett.setWeight(QFont::DemiBold);
    Dateiname_->setFont(fett);
    Dateiname_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

void Slotdialog::KnoepfeBauen()
{
    const auto knopf = [this](const QString &text, const QString &name, auto tun) {
        auto *neu = Benannt(new QPushButton(text, this), name, QString(text).remove(u'&'));
        neu->setAutoDefault(false);
        connect(neu, &QPushButton::clicked, this, tun);
        return neu;
    };
    cmdÄndern_ = knopf(u"&ändern"_s, u"cmdÄndern"_s, [this] { cmdÄndern_Click(); });
    cmdLöschen_ = knopf(u"&löschen"_s, u"cmdLöschen"_s, [this] { cmdLöschen_Click(); });
    cmdLöschen_->setProperty("loeschend", true);
    cmdOK_ = knopf(u"OK"_s, u"cmdOK"_s, [this] { accept(); });
    cmdOK_->setProperty("leitend", true);
    cmdOK_->setDefault(true);
}

void Slotdialog::Aufbauen()
{
    for (int i = 0; i < static_cast<int>(Momente); ++i) {
        const QString name = SlotName(i);
        Belegen(*karten_.at(static_cast<std::size_t>(i)),
                name.isEmpty() ? QString() : Mediendatei(kartei_.KarteiPfad, name));
    }
    NamenZeigen({});
}

QString &Slotdialog::SlotName(int welche)
{
    return dateien_.namen.at(texte_.ersterPlatz + static_cast<std::size_t>(welche));
}

void Slotdialog::Option_Click(int welche)
{
    gewaehlt_ = welche;
    SlotZeigen();
}

// The buttons are there for a slot that names a file.
void Slotdialog::NamenZeigen(const QString &name)
{
    Dateiname_->setText(name);
    Dateiname_->setToolTip(Kurztext(name).toHtmlEscaped());
    Dateiname_->setAccessibleName(name.isEmpty() ? QString() : u"Dateiname: "_s + Kurztext(name));
    cmdÄndern_->setEnabled(!name.isEmpty());
    cmdLöschen_->setEnabled(!name.isEmpty());
    // The chosen slot shows what it has in these, which an empty one has no use for.
    Slotvorschau *eigene = EigeneVorschau();
    Dateiname_->setVisible(!name.isEmpty());
    if (eigene)
        eigene->setVisible(!name.isEmpty());
    for (int i = 0; i < static_cast<int>(Momente); ++i) {
        Slotkarte *karte = karten_.at(static_cast<std::size_t>(i));
        const bool hier = i == gewaehlt_;
        karte->Option()->setChecked(hier);
        karte->NamenZeigen(SlotName(i));
        karte->Waehlen(hier, hier && !name.isEmpty() ? eigene : nullptr,
                       hier && !name.isEmpty() ? Dateiname_ : nullptr);
    }
}

void Slotdialog::SlotZeigen()
{
    NamenZeigen({});
    VorschauLeeren();
    const QString name = SlotName(gewaehlt_);
    if (name.isEmpty()) {
        DateiWaehlen();
        return;
    }
    NamenZeigen(name);
    Step(dienste_.meldungen, texte_.fehler, [&] { Vorschau(Mediendatei(kartei_.KarteiPfad, name)); });
}

void Slotdialog::DateiWaehlen()
{
    DateiDialog dialog;
    dialog.titel = texte_.dialog;
    dialog.filter = texte_.filter;
    dialog.alle = texte_.alle;
    dialog.verzeichnis = kartei_.KarteiPfad;
    const QString gewaehlt = dienste_.dialoge.DateiOeffnen(dialog);
    if (gewaehlt.isEmpty())
        return;
    const qsizetype trenner = gewaehlt.lastIndexOf(QDir::separator());
    const QString name = gewaehlt.mid(trenner + 1);
    if (!SameFile(gewaehlt.left(trenner + 1), kartei_.KarteiPfad)) {
        dienste_.meldungen.Zeigen(texte_.fremd + u" ("_s + kartei_.KarteiPfad + u')');
        return;
    }
    if (!name.isEmpty())
        Zuweisen(name);
}

void Slotdialog::Bringen(int welche, const Medium &medium)
{
    const auto name =
        MediumAnbieten(medium, static_cast<std::size_t>(welche), kartei_.KarteiPfad, dienste_.meldungen);
    if (!name)
        return;
    gewaehlt_ = welche;
    Zuweisen(*name);
}

// A file beside the card file becomes that of the chosen slot.
void Slotdialog::Zuweisen(const QString &name)
{
    const QString pfad = kartei_.CardPath(name);
    if (!Step(dienste_.meldungen, texte_.fehler, [&] { Annehmen(pfad); }))
        return;
    SlotName(gewaehlt_) = name;
    Belegen(*karten_.at(static_cast<std::size_t>(gewaehlt_)), pfad);
    NamenZeigen(name);
    dateien_.geaendert();
    Step(dienste_.meldungen, texte_.fehler, [&] { Angenommen(pfad); });
}

// Where no other file is taken, the slot keeps the one it has.
void Slotdialog::cmdÄndern_Click()
{
    DateiWaehlen();
}

void Slotdialog::cmdLöschen_Click()
{
    if (gewaehlt_ < 0)
        return;
    SlotName(gewaehlt_).clear();
    Belegen(*karten_.at(static_cast<std::size_t>(gewaehlt_)), {});
    NamenZeigen({});
    VorschauLeeren();
    dateien_.geaendert();
}

// What is pasted goes to the chosen slot, or to the first where none is.
void Slotdialog::keyPressEvent(QKeyEvent *event)
{
    if (!event->matches(QKeySequence::Paste)) {
        QDialog::keyPressEvent(event);
        return;
    }
    const QList<Medium> medien = MedienVon(*QGuiApplication::clipboard()->mimeData());
    for (const Medium &medium : medien) {
        if (medium.art != texte_.art)
            continue;
        Bringen(std::max(gewaehlt_, 0), medium);
        return;
    }
}

void Slotdialog::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    reihe_->setDirection(width() < Untereinander ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
}

} // namespace paukfix
