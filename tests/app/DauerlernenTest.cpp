// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Abfrage.h"
#include "AbfrageLauf.h"
#include "AsciiTausch.h"
#include "BoxRechnung.h"
#include "CardEditorWerk.h"
#include "Dauerlerner.h"
#include "KarteVerschieben.h"
#include "NachNeu.h"
#include "TestProgram.h"

using namespace paukfix;

// The same learner with the program's rules, editor, tools and store, but no windows: a verdict takes a
// hundredth of the time, so that very many can be passed.
class DauerlernenTest : public QObject, private Dauerlerner
{
    Q_OBJECT

private:
    std::unique_ptr<Werk> werk_;

    CardStore &Kartei() { return werk_->store; }

    Werkbank Bank() { return {werk_->store, werk_->kartei.oeffner, werk_->kartei.messages}; }

    void Urteilen(int fach) override
    {
        const int nummer = modell_->Schlange(fach).first();
        const bool gewusst = Wuerfeln(10) < 7;
        QVERIFY(ErsteKarte(Kartei().Karten(), fach));
        AbfrageLauf lauf(KarteLesen(Kartei().Felder()));
        const GefragteKarte karte = Gefragt(Kartei());
        QCOMPARE(static_cast<int>(karte.frageNr), nummer);
        const auto befund =
            lauf.Pruefen(gewusst ? modell_->Jetzt().karten.at(nummer).antwort : QString("keine Ahnung"));
        QCOMPARE(befund, std::optional(gewusst));
        const bool richtig = gewusst != Selten(10);
        lauf.Urteilen(richtig);
        KarteVerschieben(Kartei(), werk_->kartei.messages, karte, richtig);
        modell_->Antworten(nummer, richtig);
        ++getan_["verdicts"];
    }

    void Bearbeiten() override
    {
        werk_->editor.Load();
        for (int i = Wuerfeln(3); i >= 0; --i)
            if (modell_->Jetzt().karten.size() < 300)
                Schreiben();
            else if (Selten(2))
                Entfernen();
            else
                Umschreiben();
        QVERIFY(werk_->editor.Verlassen());
        werk_->editor.Geschlossen();
    }

    void Speichern(const Boxmodell::Texte &texte)
    {
        werk_->form.Tippen(texte.frage, texte.antwort);
        werk_->editor.cardDirty = true;
        QVERIFY(werk_->editor.StoreCard());
    }

    void Schreiben()
    {
        const Boxmodell::Texte texte = NeueTexte();
        werk_->editor.CEOF();
        QCOMPARE(werk_->form.kopf.FrageNr, QString::number(modell_->HoechsteNummer() + 1));
        Speichern(texte);
        modell_->Dazu({texte});
        ++getan_["cards written"];
    }

    int AufEineKarte()
    {
        const int nummer = EineKarte();
        werk_->editor.Springen(QString::number(nummer));
        return nummer;
    }

    void Umschreiben()
    {
        const int nummer = AufEineKarte();
        QCOMPARE(werk_->form.blatt.Frage, modell_->Jetzt().karten.at(nummer).frage);
        QCOMPARE(werk_->form.blatt.Antwort[0], modell_->Jetzt().karten.at(nummer).antwort);
        const Boxmodell::Texte texte = NeueTexte();
        Speichern(texte);
        modell_->Umschreiben(nummer, texte);
        ++getan_["cards rewritten"];
    }

    void Entfernen()
    {
        const int nummer = AufEineKarte();
        werk_->kartei.messages.antworten = {Meldungen::Antwort::Ja};
        werk_->editor.Loeschen();
        modell_->Loeschen(nummer);
        ++getan_["cards deleted"];
    }

    void Ansehen() override // nothing is to be seen; the counts are
    {
        for (int fach = 0; fach < FachAnzahl; ++fach)
            QCOMPARE(Kartei().FachInfo.at(static_cast<std::size_t>(fach)).Anzahl,
                     static_cast<qint16>(modell_->Schlange(fach).size()));
        ++getan_["counts compared"];
    }

    void Einlesen() override
    {
        if (modell_->Jetzt().karten.size() > 400)
            return;
        QList<Boxmodell::Texte> neue;
        QByteArray zeilen;
        for (int i = Wuerfeln(5); i >= 0; --i) {
            neue << NeueTexte();
            zeilen += (neue.last().frage + '\t' + neue.last().antwort + "\r\n").toLatin1();
        }
        const QString liste = werk_->kartei.directory.filePath("liste.txt");
        QFile datei(liste);
        QVERIFY(datei.open(QIODevice::WriteOnly) && datei.write(zeilen) == zeilen.size());
        datei.close();
        QCOMPARE(AsciiImportieren(Bank(), liste, Importwahl(u'\t')), Ausgang::Gelungen);
        modell_->Dazu(neue);
        ++getan_["imports"];
    }

    void AlleZurueck() override
    {
        if (modell_->Schlange(0).size() == static_cast<qsizetype>(modell_->Jetzt().karten.size()))
            return; // would be no step
        QCOMPARE(AlleNachNeu(Bank()), Ausgang::Gelungen);
        modell_->AlleNachNeu();
        ++getan_["resets of all cards"];
    }

    void ErledigteZurueck() override
    {
        const qsizetype erledigte = modell_->Schlange(FachErledigt).size();
        if (erledigte == 0)
            return;
        QCOMPARE(ErledigteNachNeu(Bank()), std::optional(static_cast<int>(erledigte)));
        modell_->ErledigteNachNeu();
        ++getan_["resets of done cards"];
    }

    void Zurueck() override { Kartei().schritte.Zuruecknehmen(); }

    void Wieder() override { Kartei().schritte.Wiederholen(); }

    void Weglegen() override
    {
        Kartei().CloseCardFile();
        werk_->kartei.messages.gezeigt.clear();
        werk_->kartei.messages.vorgaben.clear();
    }

    void Holen() override { werk_->kartei.Open(); }

private slots:

    void TheBoxHoldsWhatItMustAfterVeryManyVerdicts()
    {
        werk_ = std::make_unique<Werk>();
        Kartei().CloseCardFile();
        QVERIFY(QFile::remove(werk_->kartei.Path()));
        Anfangen(werk_->kartei.Path());
        Holen();
        Lernen(2000);
    }

    void cleanup() { werk_.reset(); }
};

PAUKFIX_TEST(DauerlernenTest)
#include "DauerlernenTest.moc"
