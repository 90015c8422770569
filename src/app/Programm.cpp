// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Programm.h"

#include "AExport.h"
#include "AImport.h"
#include "AlleNull.h"
#include "CardSnapshot.h"
#include "Datausw.h"
#include "ErlNull.h"
#include "FremdeKartei.h"
#include "Handbuchfenster.h"
#include "Handbuchseiten.h"
#include "Intro.h"
#include "Karteianhaengen.h"
#include "Karteiausgeben.h"
#include "Karteipacken.h"
#include "Karteispiegeln.h"
#include "ProgramDirectory.h"
#include "Sicherungsfenster.h"
#include "Statistik.h"
#include "Themaausfiltern.h"
#include "Ueber.h"
#include "Uebersicht.h"
#include "VerlaufFenster.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QIcon>
#include <QWindow>

#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

Programm::Programm(const QString &laufverzeichnis)
{
    // Behind a message, or between intro and main window, no window is open for a moment.
    QGuiApplication::setQuitOnLastWindowClosed(false);
    VerzeichnisseSetzen(laufverzeichnis);
    ClearSnapshots(); // of a run that was killed
}

Programm::~Programm() = default;

void Programm::VerzeichnisseSetzen(const QString &laufverzeichnis)
{
    const ProgramDirectory gefunden =
        FindProgramDirectory({.running = laufverzeichnis,
                              .installed = QDir::cleanPath(laufverzeichnis + u"/../share/paukfix"_s),
                              .own = OwnDirectory(),
                              .former = FormerOwnDirectory()});
    konfig_.ProgrammPfad = gefunden.path;
    konfig_.Lieferpfade = gefunden.shipped;
    konfig_.NurDieserLauf = !gefunden.keepsSettings;
    if (!gefunden.message.isEmpty())
        meldungen_.Zeigen(gefunden.message);
    kartei_.KarteiPfad = konfig_.ProgrammPfad;
    sicherungen_ = std::make_unique<Sicherungen>(konfig_.ProgrammPfad + u"/Sicherungen"_s, clock_);
    // Told when nothing is under way: a change of the box may be waiting for its backup.
    QObject::connect(
        sicherungen_.get(), &Sicherungen::Gescheitert, sicherungen_.get(),
        [this](const QString &text) { meldungen_.Zeigen(text); }, Qt::QueuedConnection);
    oeffner_.SichernMit(*sicherungen_);
}

bool Programm::Starten(const Befehlszeile &befehl)
{
    if (const QStringList &weitere = befehl.weitere; !weitere.isEmpty()) {
        const QString andere = weitere.size() == 1 ? QString() : u" und %1 weitere"_s.arg(weitere.size() - 1);
        meldungen_.Zeigen(
            u"Es kann nur eine Datei geöffnet werden. Nicht geöffnet: „%1“%2"_s.arg(weitere.first(), andere));
    }
    Intro intro(konfig_, meldungen_);
    // Who names on the command line what to learn is not kept waiting.
    if (intro.Form_Load(befehl.weiter ? u"--weiter"_s : befehl.kartei) == Intro::Ausgang::Programmende)
        return false;
    lbox_ = std::make_unique<LBOX>(kartei_, oeffner_, dienste_,
                                   Programmstart{.befehlszeile = befehl.kartei,
                                                 .verzeichnis = QDir::currentPath(),
                                                 .weiter = befehl.weiter});
    // To read the icon and to make the query takes a good part of a start.
    QObject::connect(lbox_.get(), &LBOX::Gemalt, lbox_.get(), [this] {
        const QIcon bild(konfig_.ProgrammDatei(u"paukfix.ico"_s));
        QGuiApplication::setWindowIcon(bild);
        AbfrageBauen();
        // A window manager reads all of a window's icon whenever it comes, a millisecond for the large ones.
        QIcon klein;
        for (const int kante : {16, 24, 32, 48})
            klein.addPixmap(bild.pixmap(QSize(kante, kante), 1));
        abfrage_->setWindowIcon(klein);
    });
    QObject::connect(lbox_.get(), &LBOX::BeendenGewuenscht, &ende_, &Programmende::Beenden);
    QObject::connect(lbox_.get(), &LBOX::Gescheitert, &ende_, &Programmende::Absagen);
    verlauf_ = std::make_unique<Verlaufsbuch>(kartei_, clock_, konfig_.ProgrammPfad + u"/verlauf.sqlite"_s);
    QObject::connect(lbox_.get(), &LBOX::BoxGezeichnet, lbox_.get(), [this] { verlauf_->Nachsehen(); });
    LBoxFenster fenster;
    fenster.MKarten = [this] { EditorZeigen(); };
    fenster.Manzeigen = [this] { UebersichtZeigen(); };
    fenster.MSicherungen = [this] { SicherungenZeigen(); };
    fenster.MAscii_Export = Werkzeug<AExport>();
    fenster.MAscii_Import = Werkzeug<AImport>();
    fenster.MKartei_ausgeben = Werkzeug<Karteiausgeben>();
    fenster.MFremdeKartei = Werkzeug<FremdeKartei>();
    fenster.FremdeKartei = Einlesefenster<FremdeKartei>();
    fenster.AsciiImport = Einlesefenster<AImport>();
    fenster.MThema_ausfiltern = Werkzeug<Themaausfiltern>();
    fenster.MKartei_anhängen = Werkzeug<Karteianhängen>();
    fenster.MKartei_spiegeln = Werkzeug<Karteispiegeln>();
    fenster.MKartei_packen = Werkzeug<Karteipacken>();
    fenster.MAlleNeu = Werkzeug<AlleNull>();
    fenster.MErledigtNeu = Werkzeug<ErlNull>();
    fenster.MStatistik = [this] { Statistik(StatistikLesen(kartei_, clock_.Now()), lbox_.get()).exec(); };
    fenster.MVerlauf = [this] { VerlaufOeffnen(); };
    fenster.MHandbuch = [this] { HandbuchZeigen(u"index.html"_s); };
    fenster.MTasten = [this] { HandbuchZeigen(u"tasten.html"_s); };
    fenster.Müber = [this] { UeberZeigen(); };
    fenster.KarteiWechseln = [this] { return KarteiWaehlen(); };
    fenster.DarfSchliessen = [this] { return !editor_ || editor_->close(); };
    lbox_->SetFenster(std::move(fenster));
    intro.hide();
    lbox_->show();
    QGuiApplication::setQuitOnLastWindowClosed(true);
    return true;
}

void Programm::AbfrageBauen()
{
    wechsel_ = std::make_unique<Fensterwechsel>(lbox_->Eingabe(), *lbox_);
    abfrage_ = std::make_unique<PFUse>(kartei_, dienste_, *wechsel_, lbox_.get());
    lbox_->SetAbfrage(*abfrage_);
}

// While cards are edited the box is away: nothing else may move through the card table.
void Programm::EditorZeigen()
{
    lbox_->Automatisch().AutomatikAus();
    auto neu = std::make_unique<PFÄndern>(kartei_, dienste_, suche_, lbox_->Aktionen().Arbeitsverzeichnis());
    neu->geschlossen = [this] { EditorGeschlossen(); };
    if (editor_)
        neu->restoreGeometry(editor_->saveGeometry());
    editor_ = std::move(neu);
    lbox_->hide();
    editor_->Form_Load();
}

void Programm::EditorGeschlossen()
{
    lbox_->BoxZeichnen();
    // A window manager places a hidden window anew, unless its place was asked for.
    lbox_->windowHandle()->setGeometry(lbox_->geometry());
    lbox_->show();
    lbox_->activateWindow();
}

template <typename Fenster>
std::function<void()> Programm::Werkzeug()
{
    return [this] {
        Fenster(oeffner_, dienste_, lbox_.get()).exec();
        lbox_->activateWindow(); // a message and the dialog behind it close at once: nobody has the keyboard
    };
}

template <typename Fenster>
std::function<void(const QString &)> Programm::Einlesefenster()
{
    return [this](const QString &pfad) {
        Fenster(oeffner_, dienste_, lbox_.get(), pfad).exec();
        lbox_->activateWindow();
    };
}

void Programm::UebersichtZeigen()
{
    if (!kartei_.IsOpen()) {
        meldungen_.Zeigen(u"Bitte zuerst eine Datei öffnen"_s);
        return;
    }
    Uebersicht(kartei_, dienste_, {.bearbeiten = [this] { EditorZeigen(); }}, lbox_.get()).exec();
    if (lbox_->isVisible())
        lbox_->activateWindow();
}

void Programm::SicherungenZeigen()
{
    Sicherungsfenster fenster(oeffner_, *sicherungen_, dienste_, lbox_.get());
    QObject::connect(&fenster, &Sicherungsfenster::NeueKartei, lbox_.get(),
                     [this](const QString &pfad) { lbox_->Aktionen().DateiOeffnen(pfad); });
    fenster.exec();
    lbox_->activateWindow();
}

void Programm::VerlaufOeffnen()
{
    VerlaufZeigen(*verlauf_, kartei_.CurrentFileName, clock_.Now().date(), meldungen_, lbox_.get());
    lbox_->activateWindow();
}

void Programm::UeberZeigen()
{
    über(konfig_.ProgrammDatei(u"ueber.rtf"_s), meldungen_, lbox_.get()).exec();
    lbox_->show();
    lbox_->activateWindow();
}

void Programm::HandbuchZeigen(const QString &seite)
{
    const QString ordner = QFileInfo(konfig_.ProgrammDatei(u"handbuch/index.html"_s)).path();
    Handbuchfenster(ordner, seite, QApplication::activeWindow()).exec();
}

QString Programm::KarteiWaehlen()
{
    Datausw auswahl(kartei_.ChosenFileName, lbox_.get());
    auswahl.Auflisten(kartei_.KarteiPfad, u"*.pzb"_s, kartei_.CurrentFileName);
    auswahl.exec();
    return kartei_.ChosenFileName;
}

} // namespace paukfix
