// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AsciiTausch.h"
#include "TestProgram.h"
#include "TextHelpers.h"
#include "Werkstatt.h"

#include <QRandomGenerator>
#include <QTest>
#include <SQLiteCpp/Statement.h>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

constexpr int Anzahl = 1000;

// Every row of the open file, each value with its type, as the engine holds it.
QByteArray Rohinhalt(CardStore &store)
{
    QByteArray inhalt;
    store.Karten().Beside([&](SQLite::Database &database) {
        SQLite::Statement zeilen(database, R"(SELECT * FROM "Lernkarten" ORDER BY "FrageNr")");
        while (zeilen.executeStep()) {
            for (int i = 0; i < zeilen.getColumnCount(); ++i)
                inhalt += QByteArray::number(zeilen.getColumn(i).getType()) + ':' +
                          QByteArray::fromStdString(zeilen.getColumn(i).getString()) + '|';
            inhalt += '\n';
        }
    });
    return inhalt;
}

QString MitCrLf(QString text)
{
    return text.replace("\r\n", "\n").replace('\r', '\n').replace('\n', "\r\n");
}

Exportwahl Form(char16_t trennzeichen, bool anfuehrung, bool utf8)
{
    Exportwahl wahl(trennzeichen);
    wahl.form.anfuehrung = anfuehrung;
    wahl.utf8 = utf8;
    return wahl;
}

Exportwahl AlleFelder()
{
    Exportwahl wahl = Form(u';', true, true);
    wahl.alleFelder = true;
    return wahl;
}

} // namespace

// Cards with everything in them, written in each form and read again as the file makes likely.
class FormenTest : public QObject
{
    Q_OBJECT

private:
    QRandomGenerator zufall_{20261122};

    QString Text()
    {
        static const QStringList stuecke{"Haus",       " ",  "\r\n",   "\n", "\t",   ";",  ",",    "#",
                                         "Größe",      "€",  "„“",     "\"", "\"\"", "'",  "мышь", "日本",
                                         "\U0001F600", "\r", "\u00A0", "ÃŸ", "0",    "-1", "=1+1", "{\\b x}"};
        QString text;
        for (quint32 i = zufall_.bounded(7u); i > 0; --i)
            text += stuecke[zufall_.bounded(stuecke.size())];
        return text;
    }

    // Some numbers are left out, and running numbers begin where they like.
    QList<CardRecord> Karten()
    {
        QList<CardRecord> karten;
        std::array<int, 7> plaetze{-5, 0, 10, 1, 100, 7, 3};
        for (int i = 1; i <= Anzahl; ++i) {
            CardRecord karte;
            for (const CardColumn &spalte : CardColumns())
                if (const auto *text = std::get_if<QString CardRecord::*>(&spalte.member))
                    karte.*(*text) = Text().left(250);
                else if (const auto *haken = std::get_if<bool CardRecord::*>(&spalte.member))
                    karte.*(*haken) = zufall_.bounded(2) == 0;
                else
                    karte.*std::get<double CardRecord::*>(spalte.member) = zufall_.bounded(-9999, 9999) / 4.0;
            karte.Frage = R"({\rtf1\ansi\deff0{\fonttbl{\f0 Arial;}}\b )" + Text() + "\\b0\\par\r\n}";
            const int fach = zufall_.bounded(7);
            karte.FrageNr = i * 3 - 1;
            karte.FachNr = fach;
            karte.FachLfdNr = plaetze[static_cast<std::size_t>(fach)] += 2;
            karte.Antworttyp = zufall_.bounded(3) == 0 ? 2 : 1;
            if (i % 100 == 0) // as long as a text of the box gets
                karte.Frage_Klartext = karte.Antwort_1_Klartext = u"Größe; \"so\"\r\n"_s.repeated(2'000);
            karten << karte;
        }
        return karten;
    }

    // Writes the open file in this form and reads it, as it looks, into an empty one.
    static void HinUndZurueck(Werkstatt &w, const Exportwahl &wahl)
    {
        QCOMPARE(AsciiExportieren(w.bank, w.Pfad("aus.csv"), wahl), Ausgang::Gelungen);
        w.Oeffnen({}, "leer.pzb");
        const Aufbau aufbau = AufbauRaten(w.Bytes("aus.csv"));
        QCOMPARE(aufbau.alleFelder, wahl.alleFelder);
        QCOMPARE(aufbau.form, wahl.form);
        QCOMPARE(AsciiImportieren(w.bank, w.Pfad("aus.csv"), Importwahl(aufbau)), Ausgang::Gelungen);
        QCOMPARE(w.meldungen.Texte(), QStringList());
        QVERIFY(w.ZaehlerStimmen());
    }

private slots:

    void AllFieldsGiveBackEveryCardAsItWas()
    {
        Werkstatt w;
        w.Oeffnen(Karten());
        // Null and an empty text are two things.
        w.store.Karten().Past([](SQLite::Database &database) {
            database.exec(R"(UPDATE "Lernkarten" SET "Antwort_3"=NULL,"Picture_5_Name"='',"PictureTop"=NULL,)"
                          R"("Picture_9_Name"=NULL WHERE "FrageNr"%2=0)");
        });
        const QList<CardRecord> vorher = w.Karten();
        const QByteArray roh = Rohinhalt(w.store);
        const qint16 hoechste = w.store.HighestCardNumber;
        HinUndZurueck(w, AlleFelder());
        QCOMPARE(w.Karten(), vorher);
        QVERIFY(Rohinhalt(w.store) == roh);
        QCOMPARE(w.store.HighestCardNumber, hoechste);
    }

    // What these forms cannot hold: cards to tick, formats, media, compartments; which of CR, LF and CR LF
    // parts lines; letters that are written as two characters become one.
    void SimpleFormsGiveBackTheirTexts_data()
    {
        QTest::addColumn<QChar>("trennzeichen");
        QTest::addColumn<bool>("utf8");
        for (const QChar trennzeichen : {u';', u',', u'\t', u'#'})
            for (const bool utf8 : {false, true})
                QTest::addRow("%x %d", trennzeichen.unicode(), utf8) << trennzeichen << utf8;
    }

    void SimpleFormsGiveBackTheirTexts()
    {
        QFETCH(QChar, trennzeichen);
        QFETCH(bool, utf8);
        Werkstatt w;
        w.Oeffnen(Karten());
        QList<SimpleCard> erwartet;
        for (const CardRecord &karte : w.Karten())
            if (karte.Antworttyp == 1 &&
                !(karte.Frage_Klartext + karte.Antwort_1_Klartext + karte.Picture_9_Name).isEmpty())
                erwartet << SimpleCard{MitCrLf(karte.Frage_Klartext), MitCrLf(karte.Antwort_1_Klartext),
                                       MitCrLf(karte.Picture_9_Name).left(250)};
        QVERIFY(erwartet.size() > Anzahl / 2);
        HinUndZurueck(w, Form(trennzeichen.unicode(), true, utf8));
        const QList<CardRecord> karten = w.Karten();
        QCOMPARE(karten.size(), erwartet.size());
        for (qsizetype i = 0; i < karten.size(); ++i) {
            QCOMPARE(karten[i].Frage_Klartext, erwartet[i].question);
            QCOMPARE(karten[i].Frage, erwartet[i].question);
            QCOMPARE(karten[i].Antwort_1_Klartext, erwartet[i].answer);
            QCOMPARE(karten[i].Picture_9_Name, erwartet[i].topic);
            QCOMPARE(karten[i].FachNr, 0);
        }
    }

    void TheFormOfTodayCanBeWrittenAsUtf8()
    {
        Werkstatt w;
        w.Oeffnen(Karten());
        QCOMPARE(AsciiExportieren(w.bank, w.Pfad("a.txt"), Form(u';', false, true)), Ausgang::Gelungen);
        QVERIFY(w.Bytes("a.txt").startsWith("\xEF\xBB\xBF"
                                            "Frage;Antwort;Thema\r\n"));
        QVERIFY(w.Bytes("a.txt").isValidUtf8());
        QStringList erwartet{"Frage|Antwort|Thema"};
        for (CardRecord karte : w.Karten())
            if (karte.Antworttyp == 1)
                erwartet << CleanFieldText(karte.Frage_Klartext, ";") + "|" +
                                CleanFieldText(karte.Antwort_1_Klartext, ";") + "|" +
                                CleanFieldText(karte.Picture_9_Name, ";");
        w.Oeffnen({}, "leer.pzb");
        QCOMPARE(AsciiImportieren(w.bank, w.Pfad("a.txt"), u';'), Ausgang::Gelungen);
        QStringList gefunden;
        for (const CardRecord &karte : w.Karten())
            gefunden << karte.Frage + "|" + karte.Antwort_1_Klartext + "|" + karte.Picture_9_Name;
        QCOMPARE(gefunden, erwartet);
    }

    // In other columns, with the words and commas of its language, what is empty without quotes.
    void WhatASpreadsheetMakesOfAllFieldsIsUnderstood()
    {
        Werkstatt w;
        w.Oeffnen({});
        w.Schreiben("a.csv", "Frage;Frage_Klartext;antworttyp;Antwort_1;Antwort_1_Klartext;Antwort_ch_1;"
                             "Antwort_ch_2;PictureTop;FachNr;FachLfdNr;FrageNr\r\n"
                             "\"zwei\nZeilen\";\"zwei\nZeilen\";2;\"a;b\";\"a;b\";WAHR;FALSCH;12,5;3;7;9\r\n"
                             ";;;;;;;;;;\r\n"
                             "x;x;1;y;y;-1;0;;9;1;10\r\n"
                             "u;u;1;v;v;vielleicht;0;;4;1;11\r\n");
        const Aufbau aufbau = AufbauRaten(w.Bytes("a.csv"));
        QVERIFY(aufbau.alleFelder);
        Zugang zugang;
        QCOMPARE(AsciiImportieren(w.bank, w.Pfad("a.csv"), Importwahl(aufbau), &zugang), Ausgang::Teilweise);
        QCOMPARE(w.meldungen.Texte(),
                 (QStringList{
                     "Leider ist folgender Fehler Aufgetreten: Typen unverträglich im Feld „Antwort_ch_1“.",
                     "Leider ist folgender Fehler Aufgetreten: Ein Fach gibt es nicht; die Karte kam "
                     "nach Neu."}));
        QCOMPARE(zugang.zeilen, (std::vector{6, 7}));
        const QList<CardRecord> karten = w.Karten();
        QCOMPARE(karten.size(), 3);
        QCOMPARE(karten[0].Frage, "x"); // in Neu
        QVERIFY(karten[0].Antwort_ch_1);
        QCOMPARE(karten[1].FrageNr, 9);
        QCOMPARE(karten[1].FachLfdNr, 7);
        QCOMPARE(karten[1].PictureTop, 12.5);
        QVERIFY(karten[1].Antwort_ch_1 && !karten[1].Antwort_ch_2);
        QCOMPARE(karten[1].Frage, "zwei\nZeilen");
        QCOMPARE(karten[2].FrageNr, 11);
        QVERIFY(w.ZaehlerStimmen());
    }

    void ABoxWithCardsTakesThemToTheirCompartmentsOrToNeu()
    {
        Werkstatt w;
        w.Oeffnen({MakeCard(1, 3, 1), MakeCard(2, 6, 1)});
        QCOMPARE(AsciiExportieren(w.bank, w.Pfad("a.csv"), AlleFelder()), Ausgang::Gelungen);
        Importwahl wahl(AufbauRaten(w.Bytes("a.csv")));
        QCOMPARE(AsciiImportieren(w.bank, w.Pfad("a.csv"), wahl), Ausgang::Gelungen);
        wahl.mitFaechern = false;
        QCOMPARE(AsciiImportieren(w.bank, w.Pfad("a.csv"), wahl), Ausgang::Gelungen);
        QStringList orte;
        for (const CardRecord &karte : w.Karten())
            orte << u"%1:%2/%3"_s.arg(karte.FrageNr).arg(karte.FachNr).arg(karte.FachLfdNr);
        QCOMPARE(orte, (QStringList{"5:0/1", "6:0/2", "1:3/1", "3:3/2", "2:6/1", "4:6/2"}));
        wahl.vorhandene = Vorhandene::Auslassen;
        Zugang zugang;
        QCOMPARE(AsciiImportieren(w.bank, w.Pfad("a.csv"), wahl, &zugang), Ausgang::Gelungen);
        QCOMPARE(zugang.ausgelassen, 2);
        QCOMPARE(w.Karten().size(), 6);
    }

    void AllFieldsAreTakenBackInOneStep()
    {
        Werkstatt w;
        w.Oeffnen({MakeCard(1, 3, 1), MakeCard(2, 6, 1)});
        QCOMPARE(AsciiExportieren(w.bank, w.Pfad("a.csv"), AlleFelder()), Ausgang::Gelungen);
        const Importwahl wahl(AufbauRaten(w.Bytes("a.csv")));
        QCOMPARE(AsciiImportieren(w.bank, w.Pfad("a.csv"), wahl), Ausgang::Gelungen);
        QCOMPARE(w.store.schritte.Zurueckzunehmen(), u"Import von „a.csv“"_s);
        w.store.schritte.Zuruecknehmen();
        QCOMPARE(w.Karten(), (QList{MakeCard(1, 3, 1), MakeCard(2, 6, 1)}));
    }
};

PAUKFIX_CORE_TEST(FormenTest)
#include "FormenTest.moc"
