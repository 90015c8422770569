// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Boxmodell.h"
#include "ProgrammBuehne.h"
#include "TestProgram.h"

#include <QAbstractItemView>
#include <QElapsedTimer>
#include <QListWidget>
#include <QProcess>
#include <QTimer>

#include <malloc.h>
#include <random>

using namespace paukfix;

namespace {

// What the process holds: kilobytes of memory of its own, and open handles.
struct Verbrauch
{
    qint64 kilobyte = 0;
    qsizetype griffe = 0;

    // The least of some looks: backups and the history are written a little later, by threads of their own.
    static Verbrauch InRuhe()
    {
        Verbrauch wenigstens = Jetzt();
        for (int i = 0; i < 15; ++i) {
            QTest::qWait(100);
            const Verbrauch jetzt = Jetzt();
            wenigstens = {std::min(wenigstens.kilobyte, jetzt.kilobyte),
                          std::min(wenigstens.griffe, jetzt.griffe)};
        }
        return wenigstens;
    }

    static Verbrauch Jetzt()
    {
        malloc_trim(0); // what was given back counts no more
        Verbrauch verbrauch;
        QFile status("/proc/self/status");
        if (status.open(QIODevice::ReadOnly))
            for (const QByteArray &zeile : status.readAll().split('\n'))
                if (zeile.startsWith("RssAnon:"))
                    verbrauch.kilobyte = zeile.mid(8).simplified().split(' ').first().toLongLong();
        status.close();
        verbrauch.griffe = QDir("/proc/self/fd").entryList(QDir::AllEntries | QDir::System).size();
        return verbrauch;
    }
};

// How long a run is: by the clock, or until so many verdicts were given.
struct Laenge
{
    qint64 sekunden = 15;
    qint64 urteile = std::numeric_limits<qint64>::max();

    static Laenge Gewuenscht()
    {
        Laenge laenge;
        if (const qint64 sekunden = qEnvironmentVariable("PAUKFIX_SOAK_SECONDS").toLongLong())
            laenge.sekunden = sekunden;
        if (const qint64 urteile = qEnvironmentVariable("PAUKFIX_SOAK_VERDICTS").toLongLong())
            laenge.urteile = urteile;
        return laenge;
    }
};

} // namespace

// A learner who never stops, in the program's real windows: asks, writes, takes back, uses the tools, opens
// the box again and again, and lets it be used by processes that are killed, all beside a model of what the
// box must hold. "scripts/soak" runs it for minutes or hours.
class DauerlaufTest : public ProgrammBuehne
{
    Q_OBJECT

private:
    std::mt19937 zufall_;
    std::unique_ptr<Boxmodell> modell_;
    std::map<QString, qint64> getan_;
    int texte_ = 0; // that were thought up so far

    int Wuerfeln(int unter) { return std::uniform_int_distribution(0, unter - 1)(zufall_); }

    bool Selten(int einsIn) { return Wuerfeln(einsIn) == 0; }

    static Hand Box() { return Hand::An("LBOX"); }

    static void BoxAbwarten() { QTRY_VERIFY_WITH_TIMEOUT(Hand::Bereit("LBOX"), 60000); }

    QString Pfad() const { return ProgrammBuehne::Pfad("a.pzb"); }

    QString NeuerText(const QString &was) { return QString("%1 %2").arg(was).arg(++texte_); }

    // Compartments that are about to be too full come first; none where all cards are done.
    int NaechstesFach()
    {
        for (const auto &[fach, voll] : {std::pair(1, 25), std::pair(2, 70), std::pair(3, 200)})
            if (modell_->Schlange(fach).size() > voll)
                return fach;
        QList<int> faecher;
        for (int fach = 0; fach < FachErledigt; ++fach)
            if (!modell_->Schlange(fach).isEmpty())
                faecher << fach;
        return faecher.isEmpty() ? FachErledigt : faecher[Wuerfeln(static_cast<int>(faecher.size()))];
    }

    void Urteilen()
    {
        const int fach = NaechstesFach();
        if (fach == FachErledigt)
            return ErledigteZurueck();
        const int nummer = modell_->Schlange(fach).first();
        const bool gewusst = Wuerfeln(10) < 7;
        const bool anders = Selten(10); // than the program thinks
        const bool ohne = Selten(20);
        QString gefragt;
        Drehbuch buch({Drehbuch::In("PFUse", [&](QWidget &abfrage) {
            const Hand hand(abfrage);
            gefragt = hand.Text("MaskFrageNr");
            if (ohne) {
                hand.Taste(Qt::Key_Escape);
                return;
            }
            hand.Tippe(gewusst ? modell_->Jetzt().karten.at(nummer).antwort : QString("keine Ahnung"));
            hand.Taste(Qt::Key_Return);
            if (anders)
                hand.Taste(gewusst ? Qt::Key_F : Qt::Key_R, Qt::AltModifier);
            hand.Taste(Qt::Key_Return);
        })});
        const bool richtig = gewusst != anders;
        if (!ohne && richtig && fach == 5)
            buch.Dazu(Meldung());
        Box().Taste(fach == 0 ? Qt::Key_N : static_cast<Qt::Key>(Qt::Key_0 + fach));
        QTRY_VERIFY(buch.Fertig());
        QCOMPARE(gefragt, QString::number(nummer));
        BoxAbwarten();
        if (!ohne)
            modell_->Antworten(nummer, richtig);
        ++getan_[ohne ? "without an answer" : "verdicts"];
    }

    void Bearbeiten()
    {
        Waehlen("MKarten");
        QTRY_VERIFY(Hand::Bereit("PFÄndern"));
        const Hand editor = Hand::An("PFÄndern");
        for (int i = Wuerfeln(3); i >= 0; --i)
            if (modell_->Jetzt().karten.size() < 300)
                Schreiben(editor);
            else if (Selten(2))
                Entfernen(editor);
            else
                Umschreiben(editor);
        editor.Klick("Cback");
        BoxAbwarten();
    }

    void Schreiben(const Hand &editor)
    {
        const Boxmodell::Texte texte{NeuerText("Frage"), NeuerText("Antwort")};
        editor.Klick("CEOF");
        QCOMPARE(editor.Text("MaskFrageNr"), QString::number(modell_->HoechsteNummer() + 1));
        editor.Tippe("MFrage", texte.frage);
        editor.Tippe("Antwort(0)", texte.antwort);
        editor.Klick("Cadd");
        modell_->Dazu({texte});
        ++getan_["cards written"];
    }

    // Any card but the last one, whose number could be given to another.
    int AufEineKarte(const Hand &editor)
    {
        const auto &karten = modell_->Jetzt().karten;
        const int nummer = std::next(karten.begin(), Wuerfeln(static_cast<int>(karten.size()) - 1))->first;
        editor.Ersetze("MaskFrageNr", QString::number(nummer));
        editor.Taste(Qt::Key_Return);
        return nummer;
    }

    void Umschreiben(const Hand &editor)
    {
        const int nummer = AufEineKarte(editor);
        QCOMPARE(editor.Text("MFrage"), modell_->Jetzt().karten.at(nummer).frage);
        QCOMPARE(editor.Text("Antwort(0)"), modell_->Jetzt().karten.at(nummer).antwort);
        const Boxmodell::Texte texte{NeuerText("Frage"), NeuerText("Antwort")};
        editor.Ersetze("MFrage", texte.frage);
        editor.Ersetze("Antwort(0)", texte.antwort);
        editor.Klick("Cadd"); // stores it
        modell_->Umschreiben(nummer, texte);
        ++getan_["cards rewritten"];
    }

    void Entfernen(const Hand &editor)
    {
        const int nummer = AufEineKarte(editor);
        const Drehbuch buch({Ja()});
        editor.Finde<QAction>("MLöschen")->trigger();
        QTRY_VERIFY(buch.Fertig());
        modell_->Loeschen(nummer);
        ++getan_["cards deleted"];
    }

    // Agrees to the question that is open.
    static Drehbuch::Szene Ja()
    {
        return Drehbuch::In<QMessageBox>([](QMessageBox &box) { Hand::Klick(box.button(QMessageBox::Yes)); });
    }

    void Werkzeug(const char *eintrag, std::deque<Drehbuch::Szene> szenen, const QString &name)
    {
        const Drehbuch buch(std::move(szenen));
        Waehlen(eintrag);
        QTRY_VERIFY_WITH_TIMEOUT(buch.Fertig(), 60000);
        BoxAbwarten();
        ++getan_[name];
    }

    void Einlesen()
    {
        if (modell_->Jetzt().karten.size() > 400)
            return;
        QList<Boxmodell::Texte> neue;
        for (int i = Wuerfeln(5); i >= 0; --i)
            neue << Boxmodell::Texte{NeuerText("Wort"), NeuerText("word")};
        const QString liste = ProgrammBuehne::Pfad("liste.txt");
        QFile datei(liste);
        QVERIFY(datei.open(QIODevice::WriteOnly));
        for (const Boxmodell::Texte &texte : neue)
            datei.write((texte.frage + '\t' + texte.antwort + "\r\n").toLatin1());
        datei.close();
        Werkzeug("MAscii_Import",
                 {ProgrammBuehne::Schreiben("AImport", liste), Taste("AImport", Qt::Key_Return), Meldung()},
                 "imports");
        modell_->Dazu(neue);
    }

    void AlleZurueck()
    {
        if (modell_->Schlange(0).size() == static_cast<qsizetype>(modell_->Jetzt().karten.size()))
            return; // would be no step
        Werkzeug("MAlleNeu", {Taste("AlleNull", Qt::Key_Return), Ja(), Meldung()}, "resets of all cards");
        modell_->AlleNachNeu();
    }

    void ErledigteZurueck()
    {
        if (modell_->Schlange(FachErledigt).isEmpty())
            return;
        Werkzeug("MErledigtNeu", {Taste("ErlNull", Qt::Key_Return), Meldung()}, "resets of done cards");
        modell_->ErledigteNachNeu();
    }

    void Ansehen()
    {
        const auto fenster =
            std::array{std::pair("MStatistik", "Statistik"), std::pair("Manzeigen", "Uebersicht"),
                       std::pair("MVerlauf", "Verlauf"), std::pair("Müber", "über")};
        const auto &[eintrag, name] = fenster.at(static_cast<std::size_t>(Wuerfeln(4)));
        Werkzeug(eintrag, {Taste(name, Qt::Key_Escape)}, "windows looked at");
    }

    // Back and forth by keys.
    void Zuruecknehmen()
    {
        for (int i = Wuerfeln(6); i >= 0; --i) {
            if (Selten(3) ? modell_->KannWieder() : !modell_->KannZurueck() && modell_->KannWieder()) {
                Box().Taste(Qt::Key_Y, Qt::ControlModifier);
                modell_->Wieder();
                ++getan_["steps done again"];
            } else if (modell_->KannZurueck()) {
                Box().Taste(Qt::Key_Z, Qt::ControlModifier);
                modell_->Zurueck();
                ++getan_["steps taken back"];
            }
        }
    }

    // To the other box or back, by the list of the directory's files.
    void Wechseln(const QString &kartei)
    {
        const Drehbuch buch({Drehbuch::In("Datausw", [&](QWidget &fenster) {
            auto *liste = Hand(fenster).Finde<QListWidget>("Filelist");
            liste->setCurrentItem(liste->findItems(kartei, Qt::MatchExactly).first());
            Hand(fenster).Taste(Qt::Key_Return);
        })});
        Box().Taste(Qt::Key_L, Qt::ControlModifier);
        QTRY_VERIFY(buch.Fertig());
        QTRY_COMPARE_WITH_TIMEOUT(Kartei(), kartei, 60000);
        BoxAbwarten();
    }

    void Vergleichen()
    {
        QCOMPARE(FaultIn(Pfad()), QString());
        const Boxmodell::Stand datei = Boxmodell::In(Pfad());
        const Boxmodell::Stand &soll = modell_->Jetzt();
        for (const auto &[nummer, texte] : soll.karten)
            if (!datei.karten.contains(nummer) || datei.karten.at(nummer) != texte)
                QFAIL(qPrintable(QString("card %1 is not what was stored").arg(nummer)));
        QCOMPARE(datei.karten.size(), soll.karten.size());
        for (std::size_t fach = 0; fach < soll.faecher.size(); ++fach)
            QCOMPARE(datei.faecher.at(fach), soll.faecher.at(fach));
        ++getan_["comparisons"];
    }

    // Another process uses the box, and is killed at a random moment. What it has said to be stored must be
    // there; what it was about to store may.
    void Toeten()
    {
        modell_->Vergessen();
        QProcess anderer;
        anderer.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        anderer.start(WorkerPath("learn_worker"), {Pfad(), QString::number(Wuerfeln(1 << 30)), "wenden"});
        QByteArray gesagt;
        const int zeilen = 1 + Wuerfeln(12);
        while (gesagt.count('\n') < zeilen && anderer.waitForReadyRead(60000))
            gesagt += anderer.readAllStandardOutput();
        QVERIFY2(gesagt.startsWith("offen"), gesagt.constData());
        QTest::qSleep(Wuerfeln(3)); // somewhere within the next steps
        anderer.kill();
        QVERIFY(anderer.waitForFinished(60000));
        gesagt += anderer.readAllStandardOutput();
        QList<QByteArray> offen; // announced and not reported
        for (const QByteArray &zeile : gesagt.split('\n')) {
            const QList<QByteArray> worte = zeile.split(' ');
            if (worte[0] == "will")
                offen = worte;
            else if (worte[0] == "hat" && worte.size() >= 2) {
                Nachvollziehen(worte);
                offen.clear();
            }
        }
        if (offen.size() >= 2 && Boxmodell::In(Pfad()) != modell_->Jetzt()) {
            Nachvollziehen(offen);
            ++getan_["kills behind the writing"];
        }
        modell_->Vergessen();
        ++getan_["kills"];
    }

    void Nachvollziehen(const QList<QByteArray> &worte)
    {
        if (worte[1] == "zurueck")
            modell_->Zurueck();
        else if (worte[1] == "wieder")
            modell_->Wieder();
        else if (worte[1] == "import")
            modell_->Dazu(QList<Boxmodell::Texte>(3, {"Frage", "Antwort"}));
        else
            modell_->Antworten(worte.at(2).toInt(), worte.at(3).toInt() != 0);
    }

    void Neuoeffnen()
    {
        Wechseln("b.pzb");
        Vergleichen();
        modell_->Vergessen();
        if (!QTest::currentTestFailed()) {
            Toeten();
            Vergleichen();
        }
        Wechseln("a.pzb");
        ++getan_["reopenings"];
    }

    void Schritt()
    {
        const int was = Wuerfeln(1000);
        if (was < 880)
            Urteilen();
        else if (was < 930)
            Zuruecknehmen();
        else if (was < 960)
            Bearbeiten();
        else if (was < 975)
            Ansehen();
        else if (was < 985)
            Einlesen();
        else if (was < 988)
            AlleZurueck();
        else
            ErledigteZurueck();
        meldungen_.clear();
    }

private slots:

    void init() { Aufstellen(); }

    void cleanup() { Abraeumen(); }

    void TheBoxHoldsWhatItMustHowLongeverItIsUsed()
    {
        const Laenge laenge = Laenge::Gewuenscht();
        const uint saat = qEnvironmentVariable("PAUKFIX_SOAK_SEED").toUInt();
        zufall_.seed(saat);
        qInfo("seed %u", saat);
        Konfig("False");
        QVERIFY(
            QFile::copy(QDir(ProgramDir()).filePath("Applause.wav"), ProgrammBuehne::Pfad("Applause.wav")));
        QList<CardRecord> karten;
        for (int i = 1; i <= 250; ++i)
            karten << MakeCard(i, i % 6, i);
        MakeCardFile(Pfad(), karten);
        MakeCardFile(ProgrammBuehne::Pfad("b.pzb"), {MakeCard(9999, 0, 1)});
        modell_ = std::make_unique<Boxmodell>(Pfad());
        MachProgramm();
        QVERIFY(programm_->Starten(BefehlszeileLesen({"paukfix", Pfad()})));
        QTRY_COMPARE_WITH_TIMEOUT(Kartei(), "a.pzb", 60000);
        BoxAbwarten();

        // A message that nobody waits for would be waited for here for ever.
        QPointer<QWidget> stand;
        QTimer aufsicht;
        connect(&aufsicht, &QTimer::timeout, this, [&] {
            auto *meldung = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            if (meldung && meldung == stand)
                qFatal("unexpected: %s", qPrintable(meldung->text()));
            stand = meldung;
        });
        aufsicht.start(20000);

        QElapsedTimer uhr;
        uhr.start();
        // The program has used everything once, and the engine's caches are full, after a sixth of the way.
        std::optional<Verbrauch> anfangs;
        Verbrauch zuletzt;
        qint64 berichtet = 0;
        const auto anteil = [&] {
            return std::max(double(uhr.elapsed()) / 1000 / double(laenge.sekunden),
                            double(getan_["verdicts"]) / double(laenge.urteile));
        };
        for (bool ende = false; !ende;) {
            for (int i = 100 + Wuerfeln(200); i > 0 && anteil() < 1 && !QTest::currentTestFailed(); --i)
                Schritt();
            ende = anteil() >= 1 && anfangs;
            Neuoeffnen();
            if (QTest::currentTestFailed())
                break;
            zuletzt = Verbrauch::InRuhe();
            if (!anfangs && anteil() > 1.0 / 6)
                anfangs = zuletzt;
            if (ende || uhr.elapsed() - berichtet > 60000) {
                berichtet = uhr.elapsed();
                QString zeile = QString("%1 s, %2 kB of its own, %3 handles")
                                    .arg(berichtet / 1000)
                                    .arg(zuletzt.kilobyte)
                                    .arg(zuletzt.griffe);
                for (const auto &[was, wieoft] : getan_)
                    zeile += QString(", %1 %2").arg(wieoft).arg(was);
                qInfo("%s", qPrintable(zeile));
            }
        }
        if (QTest::currentTestFailed())
            return;
        qInfo("after warming up: %lld kB, %lld handles; at the end: %lld kB, %lld handles", anfangs->kilobyte,
              qint64(anfangs->griffe), zuletzt.kilobyte, qint64(zuletzt.griffe));
        QVERIFY(getan_["verdicts"] > 0);
        QVERIFY(getan_["kills"] > 0);
        QCOMPARE(zuletzt.griffe, anfangs->griffe);
#ifndef __SANITIZE_ADDRESS__ // which keeps for a while what was given back
        QVERIFY(zuletzt.kilobyte - anfangs->kilobyte <= 5 * 1024);
#endif
    }
};

PAUKFIX_TEST(DauerlaufTest)
#include "DauerlaufTest.moc"
