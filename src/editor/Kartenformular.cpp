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
#include "Kopfzeile.h"
#include "Tastenkappe.h"
#include "Themenzeile.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QTextCursor>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr QColor HellGrau{0xC0, 0xC0, 0xC0};
constexpr int SchmalesFenster = 800; // pixels

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
      zeilen_(new QVBoxLayout(this)),
      kopf_(new Kopfzeile(this)),
      frageFeld_(new Flaeche(this)),
      MFrage_(Benannt(new KartenTextBox(frageFeld_), u"MFrage"_s, u"Frage"_s)),
      art_(new Artwahl(this)),
      antworten_(new Antworten(StandardFormat(dienste.konfig.schrift),
                               Kartenfaktor(dienste.konfig.schrift, font()), this)),
      bild_(new Formularbild(this, MFrage_))
{
    Benannt(this, u"Formular"_s, u"Karte"_s);
    setAutoFillBackground(true);
    MFrage_->document()->setDocumentMargin(2); // the answers', so that both texts begin at one line
    MFrage_->AufFeld(frageFeld_);
    MFrage_->SetFaktor(Kartenfaktor(dienste.konfig.schrift, font()));
    MFrage_->setMinimumHeight(fontMetrics().lineSpacing() * 3);
    MFrage_->installEventFilter(this);
    BoxVerbinden(MFrage_);
    for (KartenTextBox *box : antworten_->Boxen())
        BoxVerbinden(box);
    connect(antworten_, &Antworten::kreuzGeaendert, this, &Kartenformular::auswahlGeaendert);
    connect(art_, &Artwahl::gewaehlt, this, [this] {
        art_->Zeigen(art_->Art());
        antworten_->ArtZeigen(art_->Art());
        bild_->Platzieren();
        emit auswahlGeaendert();
    });
    connect(kopf_, &Kopfzeile::nummerEingegeben, this, &Kartenformular::nummerEingegeben);
    connect(kopf_, &Kopfzeile::themaGeaendert, this, &Kartenformular::geaendert);
    connect(bild_, &Formularbild::angefasst, this, &Kartenformular::geaendert);
    Anordnen();
    FarbenSetzen();
}

// The question begins near the top: cards have their pictures there.
void Kartenformular::Anordnen()
{
    zeilen_->setContentsMargins(24, 12, 24, 12);
    zeilen_->setSpacing(0);
    zeilen_->addWidget(kopf_);
    zeilen_->addSpacing(10);
    QLabel *frage = Beschriftung(u"&Frage:"_s, MFrage_, this);
    zeilen_->addWidget(frage, 0, Qt::AlignLeft);
    zeilen_->addSpacing(2);
    zeilen_->addWidget(frageFeld_, 5);
    zeilen_->addSpacing(8);
    auto *zwischen = new QHBoxLayout;
    QLabel *antwort = Beschriftung(u"&Antwort:"_s, antworten_->Boxen()[0], this);
    zwischen->addWidget(antwort);
    zwischen->addStretch(1);
    zwischen->addWidget(art_);
    zeilen_->addLayout(zwischen);
    zeilen_->addSpacing(4);
    zeilen_->addWidget(antworten_, 5);
    bild_->SetUmgebung({kopf_, frage, antwort, art_}, antworten_);
}

void Kartenformular::Anfuegen(const Knopfzeile &knoepfe)
{
    zeilen_->addSpacing(12);
    zeilen_->addLayout(knoepfe.zeile);
    knoepfe_ = knoepfe;
    FarbenSetzen();
    // Who writes many cards goes from the question to the answer: most are of the kind that is chosen
    // already.
    const QList<QWidget *> folge = kopf_->Tabfolge() << MFrage_ << bild_->Box() << antworten_->Tabfolge()
                                                     << art_->Tabfolge() << knoepfe.Alle();
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

void Kartenformular::Zeigen(const Kartenblatt &blatt, const Formularkopf &kopf)
{
    {
        const QScopedValueRollback zeigt(zeigt_, true);
        pictureNames_ = blatt.pictureNames;
        KopfZeigen(kopf);
        kopf_->ThemaZeigen(blatt.Thema);
        // What is typed into an empty box comes in the standard font.
        const QTextCharFormat standard = StandardFormat(dienste_.konfig.schrift);
        MFrage_->Zeigen(blatt.Frage, standard);
        art_->Zeigen(blatt.art);
        antworten_->Zeigen(blatt, standard);
        bild_->SetLage(blatt.lage);
    }
    BilderZeigen();
    if (nurLesen_)
        NurLesen();
}

void Kartenformular::NurLesen()
{
    nurLesen_ = true;
    MFrage_->Schuetzen();
    for (KartenTextBox *box : antworten_->Boxen())
        box->Schuetzen();
    kopf_->Themenfeld()->Schuetzen();
    kopf_->DateienSchuetzen();
    art_->setEnabled(false);
    for (QCheckBox *kreuz : antworten_->findChildren<QCheckBox *>())
        kreuz->setEnabled(false);
    bild_->Schuetzen();
    if (!knoepfe_)
        return;
    for (QPushButton *knopf : {knoepfe_->CEOF, knoepfe_->Cadd})
        knopf->setEnabled(false);
    knoepfe_->tasten->SetTasten({});
}

void Kartenformular::BilderZeigen()
{
    kopf_->DateienZeigen(pictureNames_);
    bild_->Zeigen(pictureNames_, verzeichnis_, dienste_.konfig.ProgrammPfad, dienste_.meldungen);
}

void Kartenformular::KopfZeigen(const Formularkopf &kopf)
{
    kopf_->Zeigen(kopf);
    if (knoepfe_)
        knoepfe_->Zeigen(kopf);
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

void Kartenformular::FarbenSetzen()
{
    // A dark desktop's text could not be read on it.
    if (gedruckt_)
        Faerben(this, {{QPalette::Window, HellGrau}, {QPalette::WindowText, Qt::black}});
    art_->FarbenSetzen(palette());
    if (knoepfe_)
        knoepfe_->platz->setPalette(Farben::Leise(palette()));
}

void Kartenformular::NebensachenZeigen(bool sichtbar)
{
    if (knoepfe_)
        for (QWidget *knopf : knoepfe_->Alle())
            knopf->setVisible(sichtbar);
    art_->setVisible(sichtbar);
    bild_->SetGriffSichtbar(sichtbar);
    antworten_->SetGedruckt(!sichtbar);
}

void Kartenformular::Drucken(const std::function<std::unique_ptr<QPrinter>()> &drucker)
{
    QWidget *fokus = window()->focusWidget();
    if (fokus)
        fokus->clearFocus(); // no caret on paper, and none that moves on when its control is hidden
    NebensachenZeigen(false);
    setPalette(Papier(palette()));
    // On paper there is room for all answers.
    const QSize fenster = size();
    resize(fenster.expandedTo({0, zeilen_->totalMinimumSize().height()}));
    zeilen_->activate();
    const auto wieDanach = qScopeGuard([this, fokus, fenster] {
        NebensachenZeigen(true);
        resize(fenster);
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
    const int rand = width() < SchmalesFenster ? 12 : 24;
    zeilen_->setContentsMargins(rand, rand / 2, rand, 12);
    if (knoepfe_)
        knoepfe_->zeile->setSpacing(rand / 3); // 8, or 4
    // Question and answers share what they have, but the answers are seen whole before the question grows.
    const int beide = frageFeld_->height() + antworten_->height();
    const int antworten = std::clamp(antworten_->Ganz(), beide / 2, beide * 3 / 5);
    zeilen_->setStretchFactor(frageFeld_, std::max(beide - antworten, 1));
    zeilen_->setStretchFactor(antworten_, antworten);
    zeilen_->activate();
    bild_->Platzieren();
}

} // namespace paukfix
