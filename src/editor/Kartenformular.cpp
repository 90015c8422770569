// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Kartenformular.h"

#include "Antworten.h"
#include "Artwahl.h"
#include "BildBox.h"
#include "Farben.h"
#include "Fensterbau.h"
#include "Flaeche.h"
#include "Formatierung.h"
#include "Formularbild.h"
#include "Formulardruck.h"
#include "KartenTextBox.h"
#include "Kartensuche.h"
#include "Knopfzeile.h"
#include "Kopfzeile.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QTextCursor>

#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr QColor HellGrau{0xC0, 0xC0, 0xC0};

// On paper everything is dark on white, whatever the desktop's colours are.
QPalette Papier(const QPalette &vorher)
{
    QPalette papier(Qt::black, Qt::white, Qt::white, Qt::darkGray, Qt::gray, Qt::black, Qt::white);
    papier.setColor(QPalette::Window, Qt::white);
    papier.setColor(QPalette::Highlight, vorher.color(QPalette::Highlight));
    papier.setColor(QPalette::HighlightedText, vorher.color(QPalette::HighlightedText));
    return papier;
}

} // namespace

Kartenformular::Kartenformular(const Dienste &dienste, QString verzeichnis, QWidget *parent)
    : QWidget(parent),
      dienste_(dienste),
      verzeichnis_(std::move(verzeichnis)),
      gitter_(new QGridLayout(this)),
      kopf_(new Kopfzeile(this)),
      MFrage_(Benannt(new KartenTextBox(this), u"MFrage"_s, u"Frage"_s)),
      frageFeld_(MFrage_->AufFeld(this)),
      art_(new Artwahl(this)),
      antworten_(new Antworten(StandardFormat(dienste.konfig.schrift), this)),
      bild_(new Formularbild(this, MFrage_)),
      hinweise_(Benannt(new QLabel(this), u"Tastenhinweise"_s, u"Tasten"_s))
{
    Benannt(this, u"Formular"_s, u"Karte"_s);
    setAutoFillBackground(true);
    MFrage_->setMinimumHeight(fontMetrics().lineSpacing() * 5);
    MFrage_->installEventFilter(this);
    BoxVerbinden(MFrage_);
    for (KartenTextBox *box : antworten_->Boxen())
        BoxVerbinden(box);
    connect(antworten_, &Antworten::kreuzGeaendert, this, &Kartenformular::auswahlGeaendert);
    connect(art_, &Artwahl::gewaehlt, this, [this] {
        art_->Zeigen(art_->Art());
        antworten_->ArtZeigen(art_->Art());
        emit auswahlGeaendert();
    });
    connect(kopf_, &Kopfzeile::nummerEingegeben, this, &Kartenformular::nummerEingegeben);
    connect(kopf_, &Kopfzeile::themaGeaendert, this, &Kartenformular::geaendert);
    connect(bild_, &Formularbild::angefasst, this, &Kartenformular::geaendert);
    // On a small window a picture must not lie on what one works with.
    connect(bild_, &Formularbild::gezeigt, this, [this] {
        for (QWidget *knopf : knoepfe_)
            knopf->raise();
        art_->raise();
    });
    hinweise_->setAlignment(Qt::AlignCenter);
    hinweise_->setTextFormat(Qt::PlainText);
    hinweise_->setText(u"Strg+I speichert   ·   Strg+< vorige Karte   ·   "
                       u"Strg+Umschalt+> nächste Karte   ·   F3 sucht"_s);
    hinweise_->setWordWrap(true);
    PlatzHalten(hinweise_);
    Anordnen();
    FarbenSetzen();
}

// The question begins near the top: cards have their pictures there.
void Kartenformular::Anordnen()
{
    gitter_->setContentsMargins(14, 8, 14, 8);
    gitter_->setSpacing(8);
    const auto beschriften = [this](int zeile, const QString &text, QWidget *ziel) {
        QLabel *label = Beschriftung(text, ziel, this);
        const bool einzeilig = zeile == 0;
        label->setContentsMargins(0, einzeilig ? 0 : 6, 0, 0);
        gitter_->addWidget(label, zeile, 0, Qt::AlignRight | (einzeilig ? Qt::AlignVCenter : Qt::AlignTop));
    };
    beschriften(0, u"Frage &Nr.:"_s, kopf_->Nummernfeld());
    gitter_->addWidget(kopf_, 0, 1);
    beschriften(1, u"&Frage:"_s, MFrage_);
    gitter_->addWidget(frageFeld_, 1, 1);
    auto *art = new QHBoxLayout;
    art->addWidget(art_);
    art->addStretch(1);
    gitter_->addLayout(art, 2, 1);
    beschriften(3, u"&Antwort:"_s, antworten_->Boxen()[0]);
    gitter_->addWidget(antworten_, 3, 1);
    gitter_->addWidget(hinweise_, 5, 0, 1, 2);
    gitter_->setRowStretch(1, 1);
    gitter_->setRowStretch(3, 1);
}

void Kartenformular::Anfuegen(const Knopfzeile &knoepfe)
{
    gitter_->addLayout(knoepfe.zeile, 4, 1);
    knoepfe_ = knoepfe.Alle();
    const QList<QWidget *> folge = Felder().first(3)
                                   << bild_->Box() << art_->Tabfolge() << antworten_->Tabfolge() << knoepfe_;
    for (qsizetype i = 1; i < folge.size(); ++i)
        setTabOrder(folge[i - 1], folge[i]);
}

QList<QWidget *> Kartenformular::Felder() const
{
    QList<QWidget *> felder{kopf_->Nummernfeld(), kopf_->Themenfeld(), MFrage_};
    for (KartenTextBox *box : antworten_->Boxen())
        felder << box;
    return felder;
}

void Kartenformular::BoxVerbinden(KartenTextBox *box)
{
    connect(box, &QTextEdit::textChanged, this, [this] {
        if (!zeigt_)
            emit geaendert();
    });
    box->bei_Ablehnung = [this](const QString &grund) { dienste_.meldungen.Zeigen(grund); };
    // Asked before the first change of a text; what the writer then has typed is never thrown away.
    box->darfVerlieren = [this, box](RichTextLosses verluste) {
        const QString was = box == MFrage_ ? u"Die Frage"_s : box->accessibleName();
        return dienste_.meldungen.Fragen(
                   u"%1 enthält %2.\nDas kann dieser Editor nicht erhalten: Es geht verloren, "
                   u"wenn Sie den Text ändern.\n\nTrotzdem ändern? Bei „Nein“ bleibt der Text, "
                   u"wie er ist."_s.arg(was, Aufzaehlung(verluste)),
                   Meldungen::Antwort::Nein) == Meldungen::Antwort::Ja;
    };
}

Kartenblatt Kartenformular::Inhalt() const
{
    Kartenblatt blatt;
    blatt.Frage = MFrage_->RichText();
    blatt.Frage_Klartext = MFrage_->PlainText();
    blatt.Frage_bearbeitet = MFrage_->Bearbeitet();
    blatt.Frage_unsichtbar = blatt.Frage_Klartext.isEmpty() && !MFrage_->IstLeer();
    antworten_->Lesen(blatt);
    blatt.art = art_->Art();
    blatt.Thema = kopf_->Thema();
    blatt.pictureNames = pictureNames_;
    blatt.lage = bild_->Lage();
    return blatt;
}

void Kartenformular::Zeigen(const Kartenblatt &blatt, const Kartenkopf &kopf)
{
    {
        const QScopedValueRollback zeigt(zeigt_, true);
        pictureNames_ = blatt.pictureNames;
        kopf_->Zeigen(kopf);
        kopf_->ThemaZeigen(blatt.Thema);
        // What is typed into an empty box comes in the standard font.
        const QTextCharFormat standard = StandardFormat(dienste_.konfig.schrift);
        MFrage_->Zeigen(blatt.Frage, standard);
        art_->Zeigen(blatt.art);
        antworten_->Zeigen(blatt, standard);
        bild_->SetLage(blatt.lage);
    }
    BilderZeigen();
}

void Kartenformular::BilderZeigen()
{
    bild_->Zeigen(pictureNames_, verzeichnis_, dienste_.konfig.ProgrammPfad, dienste_.meldungen);
}

void Kartenformular::KopfZeigen(const Kartenkopf &kopf)
{
    kopf_->Zeigen(kopf);
}

QString Kartenformular::Nummer() const
{
    return kopf_->Nummer();
}

void Kartenformular::Gespeichert()
{
    MFrage_->Gespeichert();
    antworten_->Gespeichert();
}

void Kartenformular::FokusAufFrage()
{
    MFrage_->setFocus();
}

void Kartenformular::FokusAufAntwort(std::size_t box)
{
    antworten_->Fokus(box);
}

void Kartenformular::TrefferZeigen(const SearchHit &treffer)
{
    if (treffer.feld == 0)
        return;
    const auto stelle = static_cast<qsizetype>(treffer.position) - 1;
    const qsizetype laenge = treffer.letzterBegriff.size();
    if (treffer.feld == 1) {
        kopf_->ThemaMarkieren(stelle, laenge);
        return;
    }
    KartenTextBox *box =
        treffer.feld == 2 ? MFrage_ : antworten_->Boxen().at(static_cast<std::size_t>(treffer.feld - 7));
    box->setFocus();
    QTextCursor cursor(box->document());
    cursor.setPosition(DokumentStelle(*box->document(), stelle + laenge));
    cursor.setPosition(DokumentStelle(*box->document(), stelle), QTextCursor::KeepAnchor);
    box->setTextCursor(cursor);
}

void Kartenformular::Umranden(const KartenTextBox *aktiv)
{
    frageFeld_->SetUmriss(aktiv == MFrage_ ? Flaeche::Umriss::Fokus : Flaeche::Umriss::Feld);
    antworten_->Umranden(aktiv);
}

void Kartenformular::FarbenSetzen()
{
    // Printing leaves the form light grey, on which a dark desktop's text could not be read.
    if (gedruckt_)
        Faerben(this, {{QPalette::Window, HellGrau}, {QPalette::WindowText, Qt::black}});
    FarbenAbleiten();
}

// The colours that the form's own do not tell by themselves.
void Kartenformular::FarbenAbleiten()
{
    const QColor grund = palette().color(QPalette::Window);
    const QColor text = palette().color(QPalette::WindowText);
    Faerben(hinweise_, {{QPalette::WindowText, Farben::Leise(text, grund)}});
    const QColor umriss = UmrissGrund(text, grund);
    kopf_->FarbenSetzen(palette(), umriss);
    art_->FarbenSetzen(umriss);
    antworten_->FarbenSetzen(palette());
}

void Kartenformular::NebensachenZeigen(bool sichtbar)
{
    for (QWidget *knopf : knoepfe_)
        knopf->setVisible(sichtbar);
    art_->setVisible(sichtbar);
    hinweise_->setVisible(sichtbar);
    bild_->SetGriffSichtbar(sichtbar);
}

void Kartenformular::Drucken(const std::function<std::unique_ptr<QPrinter>()> &drucker)
{
    QWidget *fokus = window()->focusWidget();
    if (fokus)
        fokus->clearFocus(); // no caret on paper, and none that moves on when its control is hidden
    NebensachenZeigen(false);
    setPalette(Papier(palette()));
    FarbenAbleiten();
    const auto wieDanach = qScopeGuard([this, fokus] {
        NebensachenZeigen(true);
        if (fokus)
            fokus->setFocus();
        gedruckt_ = true;
        FarbenSetzen();
    });
    const std::unique_ptr<QPrinter> papier = drucker();
    if (!papier)
        throw StoreError(Fehler::DateiNichtGefunden, u"Es ist kein Drucker eingerichtet."_s);
    papier->setDocName(u"Karte "_s + Nummer());
    FormularDrucken(*this, *papier);
}

bool Kartenformular::eventFilter(QObject *objekt, QEvent *event)
{
    if (event->type() == QEvent::KeyPress) {
        const auto &taste = static_cast<const QKeyEvent &>(*event);
        if (taste.key() == Qt::Key_PageUp && taste.modifiers().testFlag(Qt::AltModifier)) {
            dienste_.meldungen.Zeigen(u"Alt + PageUp"_s);
            return true;
        }
    }
    return QWidget::eventFilter(objekt, event);
}

void Kartenformular::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    // The window does not ask for the height that the hint takes in two lines.
    setMinimumHeight(gitter_->minimumHeightForWidth(width()));
    bild_->Platzieren();
}

} // namespace paukfix
