// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "PFUse.h"

#include "Abfrageteile.h"
#include "AntwortAnsicht.h"
#include "BildBox.h"
#include "Fensterwechsel.h"
#include "GrossesBild.h"
#include "KarteLoeschen.h"
#include "Kartenflaeche.h"
#include "Klickschutz.h"
#include "Kurztext.h"
#include "Mediendatei.h"
#include "RichTextBox.h"
#include "Step.h"
#include "Tastenkappe.h"
#include "Texttaste.h"
#include "UrteilZeile.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QShortcutEvent>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

using Stand = AbfrageLauf::Stand;

namespace {

// The other cards of the compartment that a card is asked from.
int AndereImFach(const CardStore &store, const Abfragekarte &karte)
{
    const auto fach = static_cast<std::size_t>(karte.FachNr);
    return fach < store.FachInfo.size() ? std::max(store.FachInfo[fach].Anzahl - 1, 0) : 0;
}

// An X window manager takes longer to frame a window than it takes to paint it: it is painted meanwhile. The
// toolkit would wait for the frame, and paint anew what it has asked for until then.
void VorausMalen(QWidget &fenster)
{
    if (QGuiApplication::platformName() != u"xcb")
        return;
    QCoreApplication::sendPostedEvents(nullptr, QEvent::UpdateLater);
    fenster.setAttribute(Qt::WA_Mapped);
    fenster.repaint();
}

} // namespace

PFUse::PFUse(CardStore &store, const Dienste &dienste, Fensterwechsel &wechsel, QWidget *parent)
    : QDialog(parent), store_(store), dienste_(dienste), wechsel_(wechsel)
{
    setObjectName(u"PFUse"_s);
    setWindowTitle(u"Merkkasten Abfrage"_s);
    setWindowModality(Qt::ApplicationModal);

    karte_ = new Kartenflaeche(this, dienste_.meldungen);
    for (AntwortAnsicht *form : karte_->findChildren<AntwortAnsicht *>()) {
        connect(form, &AntwortAnsicht::Fertig, this, [this] { Cpruefen_Click(); });
        connect(form, &AntwortAnsicht::Angeklickt, this, [this] { Cpruefen_->setFocus(); });
    }
    connect(&karte_->Urteil(), &UrteilZeile::Gewaehlt, this,
            [this](bool richtig) { richtig ? Ergebnis_R_Click() : Ergebnis_F_Click(); });
    connect(karte_, &Kartenflaeche::BildAngeklickt, this, [this] { BildGrossZeigen(); });
    connect(karte_, &Kartenflaeche::Umgelegt, this, [this] {
        if (const QImage bild = bilder_.Groesser(karte_->Bildgroesse()); !bild.isNull())
            karte_->BildZeigen(bild, lauf_.Bild());
    });

    auto *spalte = new QVBoxLayout(this);
    spalte->addWidget(karte_, 1);
    spalte->addLayout(KnoepfeBauen());
    gross_ = new GrossesBild(this);

    for (QWidget *teil : findChildren<QWidget *>())
        if (teil->focusPolicy() != Qt::NoFocus)
            teil->installEventFilter(this);
}

QLayout *PFUse::KnoepfeBauen()
{
    const auto knopf = [this](const QString &text, const QString &name, const QString &tipp, auto aktion) {
        auto *neu = Benannt(new QPushButton(text, this), name, QString(text).remove(u'&'));
        neu->setToolTip(tipp);
        connect(neu, &QPushButton::clicked, this, aktion);
        return neu;
    };
    Command1_ = knopf(u"Karte &bearbeiten"_s, u"Command1"_s, u"Diese Karte im Karteneditor öffnen"_s,
                      [this] { Command1_Click(); });
    Clöschen_ = knopf(u"Karte &löschen"_s, u"Clöschen"_s, u"Diese Karte aus dem Merkkasten entfernen"_s,
                      [this] { Clöschen_Click(); });
    nochEinmal_ = knopf(u"♪ noch einmal"_s, u"NochEinmal"_s, u"Den Klang noch einmal abspielen (F5)"_s,
                        [this] { KlangSpielen(); });
    nochEinmal_->setAccessibleName(u"Klang noch einmal abspielen"_s);
    nochEinmal_->setFocusPolicy(Qt::TabFocus); // a click leaves the keyboard where it is
    nochEinmal_->setShortcut(Qt::Key_F5);
    nochEinmal_->hide();
    Cpruefen_ = knopf(u"&Prüfen"_s, u"Cpruefen"_s, u"Die Antwort prüfen (Eingabe oder Strg+P)"_s,
                      [this] { Cpruefen_Click(); });
    Command3_ =
        knopf(u"&Weiter"_s, u"Command3"_s, u"Schließen und weiter (Eingabe)"_s, [this] { Command3_Click(); });
    auto *strgP = new QAction(this);
    strgP->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_P));
    connect(strgP, &QAction::triggered, this, [this] { Cpruefen_Click(); });
    addAction(strgP);
    hinweise_ = new Tastenkappe({}, this);
    hinweise_->setObjectName(u"Tastenhinweise"_s);
    hinweise_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);

    // The two that lead share one place.
    auto *platz = new QGridLayout;
    for (QPushButton *leitend : {Cpruefen_, Command3_}) {
        leitend->setProperty("leitend", true);
        PlatzHalten(leitend);
        platz->addWidget(leitend, 0, 0);
    }
    new Klickschutz(*Cpruefen_, *Command3_);
    auto *zeile = new QHBoxLayout;
    zeile->setSpacing(8);
    zeile->addWidget(Command1_);
    zeile->addWidget(Clöschen_);
    zeile->addWidget(nochEinmal_);
    zeile->addSpacing(8);
    zeile->addWidget(hinweise_, 1);
    zeile->addSpacing(8);
    zeile->addLayout(platz);
    return zeile;
}

void PFUse::Vorbereiten(int fach)
{
    if (isVisible())
        return;
    voraus_.Lesen(store_, fach);
    Zeigen(voraus_.Karte());
    TabFolge();
    platz_.Waehlen(dienste_.konfig.Abfrage, *karte_);
    create(); // the window system's side of the window; winId() would give one to each part of the box too
    karte_->BildZeigen(voraus_.Bild(), lauf_.Bild());
    bilder_.Gelesen(voraus_.Karte().Medium[1]);
    grab(); // texts are laid out and the picture is scaled when they are painted first
}

std::optional<AbfrageErgebnis> PFUse::Fragen(bool bearbeitbar)
{
    Abfragekarte karte;
    if (!Step(dienste_.meldungen, u"Fehler beim Lesen der Karte: "_s,
              [&] { karte = KarteLesen(store_.Felder()); }))
        return std::nullopt;

    wechsel_.Beginnen();
    const bool bereit = voraus_.Gilt(karte) && karte_->Uebrig() == AndereImFach(store_, karte);
    const bool mitBild = bereit && !voraus_.Bild().isNull();
    if (!bereit)
        Zeigen(karte);
    voraus_.Verwerfen();
    if (karte.typ == Antworttyp::Ankreuzen)
        karte_->Mischen(AntwortenMischen(dienste_.zufall));
    Command1_->setEnabled(bearbeitbar);
    TabFolge();
    platz_.Waehlen(dienste_.konfig.Abfrage, *karte_);

    geht_ = false;
    wechsel_.Erscheint(*this);
    show();
    if (!mitBild)
        BildZeigen();
    KlangSpielen();
    VorausMalen(*this);
    exec();
    // The sound of a verdict may ring out while the learner goes on; any other belongs to this card only.
    if (!Urteil())
        dienste_.ton.Stille();
    return lauf_.Ergebnis();
}

std::optional<AbfrageErgebnis> PFUse::Urteil() const
{
    return IstUrteil(lauf_.Ergebnis()) ? lauf_.Ergebnis() : std::nullopt;
}

void PFUse::Schliessen()
{
    QMetaObject::invokeMethod(this, &QWidget::close, Qt::QueuedConnection);
}

void PFUse::Zurueckkehren()
{
    wechsel_.Beenden();
}

void PFUse::Abschliessen()
{
    if (platz_.Lage() == dienste_.konfig.Abfrage)
        return;
    dienste_.konfig.Abfrage = platz_.Lage();
    dienste_.konfig.Sichern(4, QString(), u"Die Fensterlage konnte nicht gespeichert werden: "_s);
}

void PFUse::done(int ergebnis)
{
    if (isVisible() && !std::exchange(geht_, true)) {
        platz_.Abschliessen();
        wechsel_.Geht(*this);
    }
    QDialog::done(ergebnis);
}

// Everything that a card, or its learner, may have changed is set here.
void PFUse::Zeigen(const Abfragekarte &karte)
{
    lauf_ = AbfrageLauf(karte);
    setAttribute(Qt::WA_KeyboardFocusChange, false);
    gross_->hide();
    bilder_.SetOrte(store_.KarteiPfad, dienste_.konfig.ProgrammPfad);
    karte_->Zeigen(karte, AndereImFach(store_, karte));
    setAccessibleDescription(Kurztext(karte_->Frage()->PlainText()));
    nochEinmal_->setVisible(!lauf_.Klang().isEmpty());
    for (QPushButton *knopf : {nochEinmal_, Cpruefen_, Clöschen_, Command1_, Command3_})
        knopf->setDown(false);
    Cpruefen_->setEnabled(true);
    Cpruefen_->show();
    Cpruefen_->setDefault(true);
    Command3_->setEnabled(false);
    Command3_->hide();
    Command3_->setAccessibleDescription({});
    HinweiseZeigen();
}

void PFUse::TabFolge()
{
    QList<QWidget *> folge = karte_->Ansicht().Tabfolge();
    folge.first()->setFocus();
    folge << Cpruefen_ << karte_->Urteil().Tabfolge() << Command3_ << nochEinmal_ << karte_->Frage()
          << karte_->Bild() << Command1_ << Clöschen_;
    for (qsizetype i = 1; i < folge.size(); ++i)
        setTabOrder(folge[i - 1], folge[i]);
}

void PFUse::HinweiseZeigen()
{
    QStringList tasten;
    if (lauf_.Wo() == Stand::Gefragt)
        tasten << karte_->Ansicht().Hinweise();
    else if (lauf_.Wo() == Stand::Beurteilt)
        tasten << u"[Eingabe] weiter"_s;
    else
        tasten << u"[Pfeiltasten] wählen"_s << u"[Eingabe] bestätigt"_s;
    if (lauf_.Wo() != Stand::Gefragt)
        tasten << u"[Alt]+[R] richtig"_s << u"[Alt]+[F] falsch"_s;
    if (lauf_.Wo() != Stand::Beurteilt)
        tasten << u"[Esc] ohne Antwort zurück"_s;
    hinweise_->SetTasten(tasten.front().isEmpty() ? QString() : tasten.join(u" · "_s));
}

// A picture stays until there is another one.
void PFUse::BildZeigen()
{
    if (lauf_.Bild().isEmpty())
        return;
    karte_->BildZeigen(bilder_.Laden(lauf_.Bild(), karte_->Bildgroesse(), dienste_.meldungen), lauf_.Bild());
}

void PFUse::BildGrossZeigen()
{
    if (const QImage bild = bilder_.Groesser(gross_->Platz()); !bild.isNull())
        karte_->BildZeigen(bild, lauf_.Bild());
    gross_->Zeigen(karte_->Bild()->Bild());
}

void PFUse::KlangSpielen()
{
    if (!lauf_.Klang().isEmpty())
        dienste_.ton.Spielen(Mediendatei(store_.KarteiPfad, lauf_.Klang()));
}

// A shortcut clicks at once: the toolkit takes a tenth of a second, and the next key, or the next card, would
// come first. And an Enter that is held down must not check and close in one go.
bool PFUse::eventFilter(QObject *objekt, QEvent *event)
{
    auto *knopf = qobject_cast<QAbstractButton *>(objekt);
    if (event->type() == QEvent::Shortcut && knopf &&
        !static_cast<const QShortcutEvent &>(*event).isAmbiguous()) {
        if (knopf->focusPolicy() & Qt::ClickFocus)
            knopf->setFocus();
        knopf->click();
        return true;
    }
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto &taste = static_cast<const QKeyEvent &>(*event);
    return IstEingabetaste(taste) && taste.isAutoRepeat() && !taste.modifiers().testFlag(Qt::ShiftModifier);
}

bool PFUse::event(QEvent *event)
{
    const bool erledigt = QDialog::event(event);
    if (!karte_)
        return erledigt;
    platz_.Merken(*event);
    if (event->type() == QEvent::PaletteChange)
        karte_->Faerben();
    if (event->type() == QEvent::Resize) {
        const bool schmal = width() < 800;
        const int rand = schmal ? 12 : 24;
        layout()->setContentsMargins(rand, rand, rand, schmal ? 12 : 16);
        layout()->setSpacing(schmal ? 8 : 16);
    }
    return erledigt;
}

// The digits answer wherever the focus is (but in the question, which refuses keys).
void PFUse::keyPressEvent(QKeyEvent *event)
{
    const bool nackt = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    const int ziffer = event->key() - Qt::Key_0;
    if (!nackt || ziffer < 0 || ziffer > 9)
        QDialog::keyPressEvent(event);
    else if (!event->isAutoRepeat()) // a key that is held answers once
        karte_->Ansicht().Ziffer(ziffer);
}

void PFUse::Cpruefen_Click()
{
    if (lauf_.Wo() != Stand::Gefragt)
        return;
    const std::optional<bool> richtig = lauf_.Pruefen(karte_->Ansicht().Gegeben());
    karte_->Ansicht().Aufloesen(lauf_.Karte(), richtig == false);
    if (richtig) {
        karte_->Urteil().Waehlen(*richtig);
        return;
    }
    karte_->Urteil().Fragen();
    Command3_->show();
    Cpruefen_->setEnabled(false);
    Cpruefen_->hide();
    HinweiseZeigen();
}

void PFUse::Ergebnis_R_Click()
{
    UrteilZeigen(true);
}

void PFUse::Ergebnis_F_Click()
{
    UrteilZeigen(false);
}

void PFUse::UrteilZeigen(bool richtig)
{
    lauf_.Urteilen(richtig);
    QString satz = Wohin(lauf_.Karte().FachNr, richtig);
    if (const QString mehr = karte_->Ansicht().Erklaerung(); !richtig && !mehr.isEmpty())
        satz = u"%1 %2"_s.arg(mehr, satz);
    karte_->UrteilZeigen(richtig, dienste_.konfig.ProgrammDatei(richtig ? u"face03.ico"_s : u"face01.ico"_s),
                         satz, dienste_.konfig.Animation);
    // Is said with the button that gets the keyboard.
    Command3_->setAccessibleDescription(u"%1 %2"_s.arg(karte_->Urteil().Text(), karte_->Ansicht().Ansage()));
    Command3_->setEnabled(true);
    Command3_->show();
    Command3_->setDefault(true);
    Command3_->setFocus();
    Cpruefen_->setEnabled(false);
    Cpruefen_->hide();
    HinweiseZeigen();

    BildZeigen();
    nochEinmal_->setVisible(!lauf_.Klang().isEmpty());
    if (richtig && lauf_.Klang().isEmpty())
        dienste_.ton.Spielen(dienste_.konfig.ProgrammDatei(u"Applause.wav"_s));
    else
        KlangSpielen();
}

void PFUse::Clöschen_Click()
{
    if (IstLetzteKarte(store_.FachInfo, Erledigte::Zaehlen)) {
        dienste_.meldungen.Zeigen(u"Die letzte Karte kann nicht gelöscht werden"_s);
        return;
    }
    if (dienste_.meldungen.Fragen(u"Diese Karte wirklich löschen"_s, Meldungen::Antwort::Nein) !=
        Meldungen::Antwort::Ja)
        return;
    // The end of the session may have stored the verdict meanwhile: the card is asked no more.
    if (!isVisible())
        return;
    bool geloescht = false;
    Step(dienste_.meldungen, u"Fehler beim Löschen der Karte: "_s, [&] {
        const Loeschung loeschung = KarteLoeschen(store_);
        geloescht = loeschung.geloescht;
        if (loeschung.fehler)
            throw *loeschung.fehler;
    });
    if (!geloescht)
        return;
    lauf_.Beenden(AbfrageErgebnis::Geloescht);
    close();
}

void PFUse::Command1_Click()
{
    lauf_.Beenden(AbfrageErgebnis::Bearbeiten);
    close();
}

void PFUse::Command3_Click()
{
    close();
}

} // namespace paukfix
