// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "PFAendern.h"

#include "Bildbearbeiten.h"
#include "Blaettertaste.h"
#include "Feldtasten.h"
#include "Formatmenue.h"
#include "Karteititel.h"
#include "KartenTextBox.h"
#include "Kartenformular.h"
#include "Kartenlauf.h"
#include "Knopfzeile.h"
#include "Kopfzeile.h"
#include "Medienannahme.h"
#include "Menuebau.h"
#include "Soundbearbeiten.h"
#include "Speicherstand.h"
#include "Step.h"
#include "Suchen.h"
#include "Symbolleiste.h"
#include "Themenzeile.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QPushButton>
#include <QScopeGuard>
#include <QScreen>
#include <QSessionManager>
#include <QVBoxLayout>

#include <array>

namespace paukfix {

using namespace Qt::StringLiterals;

PFÄndern::PFÄndern(CardStore &kartei, const Dienste &dienste, SearchHit &suche, const QString &bilder,
                   QWidget *parent)
    : QMainWindow(parent),
      kartei_(kartei),
      dienste_(dienste),
      suche_(suche),
      stand_(new Speicherstand(this)),
      leiste_(new Symbolleiste(stand_, this)),
      formular_(new Kartenformular(dienste, bilder, this)),
      aufbewahrung_(kartei, dienste.meldungen, dienste.dialoge),
      editor_(kartei, dienste.meldungen, aufbewahrung_, *formular_)
{
    setObjectName(u"PFÄndern"_s);
    setWindowTitle(u"Merkkasten Ändern"_s);
    auto *flaeche = new QWidget(this);
    auto *zeilen = new QVBoxLayout(flaeche);
    zeilen->setContentsMargins(0, 0, 0, 0);
    zeilen->setSpacing(0);
    zeilen->addWidget(leiste_);
    zeilen->addWidget(formular_, 1);
    setCentralWidget(flaeche);
    KnoepfeBauen();
    MenueBauen();
    LeisteBauen();
    FormularVerbinden();
    aufbewahrung_.umgezogen = [this](const QString &pfad) {
        dienste_.konfig.Sichern(1, pfad,
                                u"Die Liste der letzten Dateien konnte nicht gespeichert werden: "_s);
    };
    connect(
        qGuiApp, &QGuiApplication::commitDataRequest, this,
        [this](QSessionManager &sitzung) { SitzungEndet(sitzung); }, Qt::DirectConnection);
    if (kartei_.NurAnsehen())
        NurAnsehen();
    GroesseWaehlen();
}

// Nothing of a card can be changed, and no new one begun.
void PFÄndern::NurAnsehen()
{
    setWindowTitle(windowTitle() + NurAnsehenZusatz(kartei_));
    formular_->NurLesen();
    format_->Sperren();
    for (const char *name : {"MHinzufügen", "MKopieren", "MLöschen", "MBilder", "MTon"})
        findChild<QAction *>(QString::fromUtf8(name))->setEnabled(false);
}

PFÄndern::~PFÄndern() = default;

void PFÄndern::KnoepfeBauen()
{
    const Knopfzeile knoepfe(formular_);
    formular_->Anfuegen(knoepfe);
    lauf_ = std::make_unique<Kartenlauf>(editor_, formular_, knoepfe.CZZurück, knoepfe.CVVor);
    const auto tun = [this](QPushButton *taste, auto aktion) {
        connect(taste, &QPushButton::clicked, this, [this, aktion] {
            lauf_->Beenden();
            aktion();
        });
    };
    tun(knoepfe.CZurück, [this] { editor_.CZurück(); });
    tun(knoepfe.CVor, [this] { editor_.CVor(); });
    tun(knoepfe.CEOF, [this] { CEOF_Click(); });
    tun(knoepfe.Cadd, [this] { Cadd_Click(); });
    tun(knoepfe.Cback, [this] { close(); });
}

void PFÄndern::MenueBauen()
{
    format_ = std::make_unique<Formatmenue>(dienste_, formular_, menuBar());
    connect(format_.get(), &Formatmenue::gewaehlt, this, [this] { lauf_->Beenden(); });

    QMenu *extras = paukfix::MenueBauen(menuBar(), u"MExtras"_s, u"E&xtras"_s);
    const auto eintrag = [this, extras](const char *name, const QString &text, const QKeySequence &taste,
                                        auto aktion) {
        EintragBauen(extras, QString::fromUtf8(name), text, taste, [this, aktion] {
            lauf_->Beenden();
            aktion();
        });
    };
    eintrag("MHinzufügen", u"&hinzufügen"_s, Qt::CTRL | Qt::Key_I, [this] { Cadd_Click(); });
    eintrag("MSuchen", u"&suchen"_s, Qt::Key_F3, [this] { MSuchen_Click(); });
    eintrag("MKopieren", u"&kopieren"_s, {}, [this] { editor_.Kopieren(); });
    eintrag("MLöschen", u"&löschen"_s, {}, [this] { editor_.Loeschen(); });
    eintrag("MDrucken", u"&drucken"_s, {}, [this] { MDrucken_Click(); });
    eintrag("MBilder", u"&Bilder"_s, {}, [this] { MBilder_Click(); });
    eintrag("MTon", u"&Ton"_s, {}, [this] { MTon_Click(); });
    new Feldtasten(this, formular_->Felder());
}

void PFÄndern::LeisteBauen()
{
    struct Eintrag
    {
        const char *name; // of the action; none between groups
        Symbole symbol;
    };

    constexpr std::array Eintraege{
        Eintrag{"MFontFett", Symbole::Fett},
        Eintrag{"MFontKursiv", Symbole::Kursiv},
        Eintrag{"MFontUnterstrichen", Symbole::Unterstrichen},
        Eintrag{nullptr, {}},
        Eintrag{"MFonthoch", Symbole::Hochgestellt},
        Eintrag{"MFontNormal", Symbole::Normalstellung},
        Eintrag{"MFontTief", Symbole::Tiefgestellt},
        Eintrag{nullptr, {}},
        Eintrag{"MSchriftart", Symbole::Schrift},
        Eintrag{"Textfarbe", Symbole::Farbe},
        Eintrag{"Standardschrift", Symbole::Standardschrift},
        Eintrag{nullptr, {}},
        Eintrag{"MBilder", Symbole::Bild},
        Eintrag{"MTon", Symbole::Ton},
        Eintrag{nullptr, {}},
        Eintrag{"MSuchen", Symbole::Suchen},
        Eintrag{"MDrucken", Symbole::Drucken},
        Eintrag{"MKopieren", Symbole::Kopieren},
        Eintrag{"MLöschen", Symbole::Loeschen},
    };
    for (const Eintrag &eintrag : Eintraege) {
        if (eintrag.name)
            leiste_->Anfuegen(findChild<QAction *>(QString::fromUtf8(eintrag.name)), eintrag.symbol);
        else
            leiste_->Gruppe();
    }
    auto *wechseln = new QAction(this);
    wechseln->setObjectName(u"Symbolleistewechsel"_s);
    wechseln->setShortcut(Qt::Key_F6);
    connect(wechseln, &QAction::triggered, leiste_, [this] { leiste_->Wechseln(); });
    addAction(wechseln);
}

void PFÄndern::FormularVerbinden()
{
    connect(formular_, &Kartenformular::geaendert, this, [this] { Geaendert(); });
    // The type and the ticks alone make no new card.
    connect(formular_, &Kartenformular::auswahlGeaendert, this, [this] {
        if (!editor_.Neu())
            Geaendert();
    });
    connect(formular_, &Kartenformular::nummerEingegeben, this, [this](const QString &nummer) {
        lauf_->Beenden();
        editor_.Springen(nummer);
    });
    connect(formular_->Kopf(), &Kopfzeile::bilderGewuenscht, this, [this] { MBilder_Click(); });
    connect(formular_->Kopf(), &Kopfzeile::toeneGewuenscht, this, [this] { MTon_Click(); });
    editor_.cardDirty.gewechselt = [this](bool geaendert) { stand_->Zeigen(geaendert); };
    formular_->Kopf()->Themenfeld()->themen = [this] {
        QStringList themen;
        try {
            themen = Topics(kartei_.Karten());
        } catch (const StoreError &) { // nothing is offered
        }
        return themen;
    };
    if (kartei_.NurAnsehen())
        return;
    auto *annahme =
        new Medienannahme(kartei_, dienste_.meldungen, formular_->Dateien(), formular_, formular_->Felder());
    annahme->angenommen = [this] {
        Geaendert();
        formular_->BilderZeigen();
    };
}

// As large as reads well, and so large that a new card's picture has its place; never larger than the screen.
void PFÄndern::GroesseWaehlen()
{
    const int zeile = fontMetrics().height();
    const QSize schirm = screen()->availableSize() * 0.9;
    resize(QSize(zeile * 62, zeile * 46).expandedTo({1000, 740}).boundedTo(schirm));
}

void PFÄndern::Form_Load()
{
    offen_ = true;
    show();
    raise();
    activateWindow();
    formular_->FokusAufFrage();
    editor_.Load();
}

void PFÄndern::Geaendert()
{
    if (!kartei_.NurAnsehen())
        editor_.cardDirty = true;
}

void PFÄndern::Cadd_Click()
{
    const bool neu = editor_.Neu();
    if (editor_.StoreCard() && neu)
        formular_->FokusAufFrage(); // of the next new card
}

void PFÄndern::CEOF_Click()
{
    editor_.CEOF();
    if (editor_.Neu() && !editor_.cardDirty)
        formular_->FokusAufFrage();
}

void PFÄndern::MSuchen_Click()
{
    if (!editor_.StoreIfDirty())
        return;
    suche_.feld = 0;
    Suchen fenster(kartei_, dienste_.meldungen, suche_, this);
    const bool gesucht = fenster.exec() == QDialog::Accepted;
    // A message over the dialog has taken the keyboard with it: typing goes on here.
    activateWindow();
    if (!gesucht)
        return;
    editor_.AktuelleZeigen();
    formular_->TrefferZeigen(suche_);
}

void PFÄndern::MDrucken_Click()
{
    // What went wrong is told when the form is itself again.
    Step(dienste_.meldungen, u"Fehler beim Drucken: "_s, [this] {
        dienste_.meldungen.Sanduhr(true);
        const auto fertig = qScopeGuard([this] { dienste_.meldungen.Sanduhr(false); });
        formular_->Drucken(drucker);
    });
}

Kartendateien PFÄndern::Dateien()
{
    return {formular_->Dateien(), formular_->Nummer(), [this] { Geaendert(); }};
}

void PFÄndern::MBilder_Click()
{
    Bildbearbeiten(kartei_, dienste_, Dateien(), this).exec();
    formular_->BilderZeigen();
}

void PFÄndern::MTon_Click()
{
    Soundbearbeiten(kartei_, dienste_, Dateien(), this).exec();
    dienste_.ton.Stille();
    formular_->Kopf()->DateienZeigen(formular_->Dateien());
}

void PFÄndern::keyPressEvent(QKeyEvent *event)
{
    const Blaettern blaettern = Blaettertaste(*event);
    if (blaettern == Blaettern::Nicht) {
        QMainWindow::keyPressEvent(event);
        return;
    }
    lauf_->Beenden();
    if (blaettern == Blaettern::Vor)
        editor_.CVor();
    else
        editor_.CZurück();
}

void PFÄndern::closeEvent(QCloseEvent *event)
{
    if (!offen_)
        return;
    lauf_->Beenden();
    if (!editor_.Verlassen()) {
        event->ignore();
        return;
    }
    offen_ = false;
    dienste_.ton.Stille();
    editor_.Geschlossen();
    geschlossen();
}

void PFÄndern::SitzungEndet(QSessionManager &sitzung)
{
    if (!offen_ || !editor_.cardDirty)
        return;
    lauf_->Beenden();
    // A card that cannot be stored is an error too: some ends of a session allow questions for no less.
    const bool darfFragen = sitzung.allowsInteraction() || sitzung.allowsErrorInteraction();
    if (!editor_.SitzungEndet(darfFragen))
        sitzung.cancel(); // a release behind it would first say that all is well
    else if (darfFragen)
        sitzung.release();
}

void PFÄndern::changeEvent(QEvent *event)
{
    QMainWindow::changeEvent(event);
    if (!lauf_) // the window is being built
        return;
    if (event->type() == QEvent::PaletteChange)
        formular_->FarbenSetzen();
    if (event->type() == QEvent::ActivationChange && !isActiveWindow())
        lauf_->Beenden();
}

} // namespace paukfix
