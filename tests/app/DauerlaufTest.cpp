// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Dauerlerner.h"
#include "ProgrammBuehne.h"
#include "TestProgram.h"

#include <QAbstractItemView>
#include <QListWidget>
#include <QTimer>

using namespace paukfix;

// A learner who never stops, in the program's real windows.
class DauerlaufTest : public ProgrammBuehne, private Dauerlerner
{
    Q_OBJECT

private:
    static Hand Box() { return Hand::An("LBOX"); }

    static void BoxAbwarten() { QTRY_VERIFY_WITH_TIMEOUT(Hand::Bereit("LBOX"), 60000); }

    QString Pfad() const { return ProgrammBuehne::Pfad("a.pzb"); }

    void Urteilen(int fach) override
    {
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

    void Bearbeiten() override
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
        const Boxmodell::Texte texte = NeueTexte();
        editor.Klick("CEOF");
        QCOMPARE(editor.Text("MaskFrageNr"), QString::number(modell_->HoechsteNummer() + 1));
        editor.Tippe("MFrage", texte.frage);
        editor.Tippe("Antwort(0)", texte.antwort);
        editor.Klick("Cadd");
        modell_->Dazu({texte});
        ++getan_["cards written"];
    }

    int AufEineKarte(const Hand &editor)
    {
        const int nummer = EineKarte();
        editor.Ersetze("MaskFrageNr", QString::number(nummer));
        editor.Taste(Qt::Key_Return);
        return nummer;
    }

    void Umschreiben(const Hand &editor)
    {
        const int nummer = AufEineKarte(editor);
        QCOMPARE(editor.Text("MFrage"), modell_->Jetzt().karten.at(nummer).frage);
        QCOMPARE(editor.Text("Antwort(0)"), modell_->Jetzt().karten.at(nummer).antwort);
        const Boxmodell::Texte texte = NeueTexte();
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

    void Einlesen() override
    {
        if (modell_->Jetzt().karten.size() > 400)
            return;
        QList<Boxmodell::Texte> neue;
        for (int i = Wuerfeln(5); i >= 0; --i)
            neue << NeueTexte();
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

    void AlleZurueck() override
    {
        if (modell_->Schlange(0).size() == static_cast<qsizetype>(modell_->Jetzt().karten.size()))
            return; // would be no step
        Werkzeug("MAlleNeu", {Taste("AlleNull", Qt::Key_Return), Ja(), Meldung()}, "resets of all cards");
        modell_->AlleNachNeu();
    }

    void ErledigteZurueck() override
    {
        if (modell_->Schlange(FachErledigt).isEmpty())
            return;
        Werkzeug("MErledigtNeu", {Taste("ErlNull", Qt::Key_Return), Meldung()}, "resets of done cards");
        modell_->ErledigteNachNeu();
    }

    void Ansehen() override
    {
        const auto fenster =
            std::array{std::pair("MStatistik", "Statistik"), std::pair("Manzeigen", "Uebersicht"),
                       std::pair("MVerlauf", "Verlauf"), std::pair("Müber", "über")};
        const auto &[eintrag, name] = fenster.at(static_cast<std::size_t>(Wuerfeln(4)));
        Werkzeug(eintrag, {Taste(name, Qt::Key_Escape)}, "windows looked at");
    }

    void Zurueck() override { Box().Taste(Qt::Key_Z, Qt::ControlModifier); }

    void Wieder() override { Box().Taste(Qt::Key_Y, Qt::ControlModifier); }

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

    void Weglegen() override { Wechseln("b.pzb"); }

    void Holen() override
    {
        Wechseln("a.pzb");
        meldungen_.clear();
    }

private slots:

    void init() { Aufstellen(); }

    void cleanup() { Abraeumen(); }

    void TheBoxHoldsWhatItMustHowLongeverItIsUsed()
    {
        Konfig("False");
        QVERIFY(
            QFile::copy(QDir(ProgramDir()).filePath("Applause.wav"), ProgrammBuehne::Pfad("Applause.wav")));
        Anfangen(Pfad());
        MakeCardFile(ProgrammBuehne::Pfad("b.pzb"), {MakeCard(9999, 0, 1)});
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

        Lernen(100);
    }
};

PAUKFIX_TEST(DauerlaufTest)
#include "DauerlaufTest.moc"
