// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AsciiTausch.h"
#include "TestProgram.h"
#include "Werkstatt.h"

#include <QStringEncoder>
#include <QTest>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

QByteArray Utf16(const QString &text, QStringConverter::Encoding zeichensatz, bool marke)
{
    QStringEncoder encoder(zeichensatz, marke ? QStringConverter::Flag::WriteBom : QStringConverter::Flag());
    return encoder.encode(text);
}

// "Frage|Antwort|Thema" of each card of the open file, in its order.
QStringList Inhalt(Werkstatt &w)
{
    QStringList inhalt;
    for (const CardRecord &karte : w.Karten())
        inhalt << karte.Frage_Klartext + "|" + karte.Antwort_1_Klartext + "|" + karte.Picture_9_Name;
    return inhalt;
}

} // namespace

// Lists as people have them, read as their look makes likely.
class ListenTest : public QObject
{
    Q_OBJECT

private slots:

    void ListsAreReadAsTheyLook_data()
    {
        QTest::addColumn<QByteArray>("datei");
        QTest::addColumn<QStringList>("karten");
        const QString drei = "Größe\tsize\tMaße\r\nHäuser\thouses\tWohnen\r\n";
        const QStringList dieseDrei{"Größe|size|Maße", "Häuser|houses|Wohnen"};
        QTest::newRow("spreadsheet, Unicode text")
            << Utf16(drei, QStringConverter::Utf16LE, true) << dieseDrei;
        QTest::newRow("UTF-16 without a mark") << Utf16(drei, QStringConverter::Utf16LE, false) << dieseDrei;
        QTest::newRow("UTF-16 the other way") << Utf16(drei, QStringConverter::Utf16BE, false) << dieseDrei;
        QTest::newRow("UTF-8 with a mark") << "\xEF\xBB\xBF" + drei.toUtf8() << dieseDrei;
        QTest::newRow("Windows, text with tabs") << drei.toLatin1() << dieseDrei;
        QTest::newRow("Mac line ends") << QString(drei).replace("\r\n", "\r").toUtf8() << dieseDrei;
        QTest::newRow("Unix line ends, the last missing")
            << QString(drei).replace("\r\n", "\n").chopped(1).toUtf8() << dieseDrei;
        QTest::newRow("spreadsheet, CSV with semicolons")
            << QByteArray("Deutsch;Englisch\r\n\"Haus; Hof\";house\r\nBaum;\"the \"\"tree\"\"\"\r\n;\r\n")
            << QStringList{"Haus; Hof|house|", "Baum|the \"tree\"|"};
        QTest::newRow("CSV with commas, line breaks in a cell")
            << QByteArray("front,back,tags\n\"two\nlines\",\"a, b\",x\nplain,word,\n")
            << QStringList{"two\r\nlines|a, b|x", "plain|word|"};
        QTest::newRow("columns in another order")
            << QByteArray("Nr,Thema,Antwort,Frage\n1,\"Zoo, Haus\",dog,Hund\n2,Zoo,cat,Katze\n")
            << QStringList{"Hund|dog|Zoo, Haus", "Katze|cat|Zoo"};
        QTest::newRow("everything in quotes") << QByteArray("\"Hund\";\"dog\"\r\n\"Katze\";\"cat\"\r\n")
                                              << QStringList{"Hund|dog|", "Katze|cat|"};
        QTest::newRow("quotes that are meant")
            << QByteArray(
                   "\"Faust\" von Goethe\tTragödie\r\n\"Nathan\"\tLessing\r\nEr rief \"ja\"\the cried\r\n")
            << QStringList{"\"Faust\" von Goethe|Tragödie|", "\"Nathan\"|Lessing|",
                           "Er rief \"ja\"|he cried|"};
        QTest::newRow("commas in sentences")
            << QByteArray("Ich gehe, du gehst;I go, you go\r\nja, klar;yes, sure\r\n")
            << QStringList{"Ich gehe, du gehst|I go, you go|", "ja, klar|yes, sure|"};
        QTest::newRow("commas alone, no quotes")
            << QByteArray("Hund,dog\nKatze,cat\n") << QStringList{"Hund|dog|", "Katze|cat|"};
        QTest::newRow("empty lines between") << QByteArray("\r\n\r\nHund\tdog\r\n\r\n\r\nKatze\tcat\r\n\r\n")
                                             << QStringList{"Hund|dog|", "Katze|cat|"};
        QTest::newRow("rows of separators alone in a table")
            << QByteArray("\"Hund\";\"dog\";\r\n;;\r\n\"Katze\";\"cat\";\r\n;;\r\n")
            << QStringList{"Hund|dog|", "Katze|cat|"};
        QTest::newRow("the program's own text")
            << QByteArray("Frage\tAntwort\tThema\r\n\"Hund\"\tdog\tZoo\r\n")
            << QStringList{"Frage|Antwort|Thema", "\"Hund\"|dog|Zoo"};
    }

    void ListsAreReadAsTheyLook()
    {
        QFETCH(QByteArray, datei);
        QFETCH(QStringList, karten);
        Werkstatt w;
        w.Oeffnen({});
        w.Schreiben("liste", datei);
        Zugang zugang;
        QCOMPARE(AsciiImportieren(w.bank, w.Pfad("liste"), Importwahl(AufbauRaten(datei)), &zugang),
                 Ausgang::Gelungen);
        QCOMPARE(Inhalt(w), karten);
        QCOMPARE(zugang.karten, static_cast<int>(karten.size()));
        QVERIFY(w.ZaehlerStimmen());
    }

    void OtherEncodingsAreReadWhereTheyAreChosen_data()
    {
        QTest::addColumn<QByteArray>("zeichensatz");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("text");
        QTest::newRow("1251") << QByteArray("windows-1251") << QByteArray("\xEC\xFB\xF8\xFC") << "мышь";
        QTest::newRow("KOI8-R") << QByteArray("KOI8-R") << QByteArray("\xCD\xD9\xDB\xD8") << "мышь";
        QTest::newRow("DOS") << QByteArray("ibm-850")
                             << QByteArray("Gr\x94\xE1"
                                           "e")
                             << "Größe";
        QTest::newRow("Mac") << QByteArray("macintosh")
                             << QByteArray("Gr\x9A\xA7"
                                           "e")
                             << "Größe";
        QTest::newRow("1250") << QByteArray("windows-1250") << QByteArray("\x9Elu\x9Do\x9E") << "žluťož";
        QTest::newRow("1253") << QByteArray("windows-1253") << QByteArray("\xE1\xE2") << "αβ";
        QTest::newRow("Shift-JIS") << QByteArray("Shift_JIS") << QByteArray("\x93\xFA\x96\x7B") << "日本";
        QTest::newRow("GB18030") << QByteArray("GB18030") << QByteArray("\xD6\xD0\xB9\xFA") << "中国";
        QTest::newRow("8859-15") << QByteArray("ISO-8859-15") << QByteArray("5 \xA4") << "5 €";
    }

    void OtherEncodingsAreReadWhereTheyAreChosen()
    {
        QFETCH(QByteArray, zeichensatz);
        QFETCH(QByteArray, bytes);
        QFETCH(QString, text);
        Werkstatt w;
        w.Oeffnen({});
        w.Schreiben("liste", bytes + ";" + bytes + "\r\n");
        Importwahl wahl(u';');
        wahl.aufbau.zeichensatz = zeichensatz;
        QCOMPARE(AsciiImportieren(w.bank, w.Pfad("liste"), wahl), Ausgang::Gelungen);
        QCOMPARE(Inhalt(w), QStringList{text + "|" + text + "|"});
    }

    void EveryEncodingOnOfferCanBeRead()
    {
        for (const Zeichensatzname &einer : Zeichensaetze()) {
            const bool breit = einer.zeichensatz.startsWith("UTF-16");
            const bool klein = einer.zeichensatz.endsWith("LE");
            const QByteArray datei =
                breit ? Utf16("a;b", klein ? QStringConverter::Utf16LE : QStringConverter::Utf16BE, false)
                      : QByteArray("a;b");
            const Textinhalt inhalt = TextLesen(datei, einer.zeichensatz);
            QCOMPARE(inhalt.bytes, QByteArray("a;b"));
            QCOMPARE(inhalt.unpassend.stellen, 0);
        }
    }

    void BytesThatDoNotFitAreAskedAbout()
    {
        const QByteArray datei =
            QByteArray("Größe;1\r\nHäuser;2\r\n\xC4pfel;3\r\nBär;4\r\nTüten;5\r\n\xD6l;6\r\n");
        const QString frage =
            "In den Zeilen 3 und 6 passen Bytes nicht zum Zeichensatz UTF-8, als erstes C4.";
        Werkstatt w;
        w.Oeffnen({});
        w.Schreiben("liste", datei);
        QCOMPARE(AsciiImportieren(w.bank, w.Pfad("liste"), u';'), Ausgang::Gescheitert); // closed
        QVERIFY2(w.meldungen.Texte().value(0).startsWith(frage), qPrintable(w.meldungen.Texte().value(0)));
        QCOMPARE(w.meldungen.knopfreihen.value(0).size(), 3);
        QVERIFY(w.Karten().isEmpty());
        w.meldungen.wahlen = {0};
        QCOMPARE(AsciiImportieren(w.bank, w.Pfad("liste"), u';'), Ausgang::Gelungen);
        QCOMPARE(Inhalt(w),
                 (QStringList{"Größe|1|", "Häuser|2|", "Äpfel|3|", "Bär|4|", "Tüten|5|", "Öl|6|"}));
        w.meldungen.wahlen = {1};
        QCOMPARE(AsciiImportieren(w.bank, w.Pfad("liste"), u';'), Ausgang::Gelungen);
        QCOMPARE(Inhalt(w).value(8), u"\uFFFDpfel|3|"_s);
    }

    void BytesThatDoNotFitAnotherEncodingAreAskedAbout()
    {
        Werkstatt w;
        w.Oeffnen({});
        w.Schreiben("liste", "a;1\r\n\x93\xFA;2\r\r\x93"
                             ";3\r\nb;4\r\n");
        Importwahl wahl(u';');
        wahl.aufbau.zeichensatz = "Shift_JIS";
        w.meldungen.wahlen = {0};
        QCOMPARE(AsciiImportieren(w.bank, w.Pfad("liste"), wahl), Ausgang::Gelungen);
        QVERIFY2(w.meldungen.Texte().value(0).startsWith("In Zeile 4 passt ein Byte ("),
                 qPrintable(w.meldungen.Texte().value(0)));
        QCOMPARE(w.Karten().size(), 4);
    }

    void MarkedUtf8WithABadByteIsAskedAbout()
    {
        Werkstatt w;
        w.Oeffnen({});
        w.Schreiben("a.txt", "\xEF\xBB\xBF\xF6;b");
        QCOMPARE(AsciiImportieren(w.bank, w.Pfad("a.txt"), u';'), Ausgang::Gescheitert);
        QVERIFY(w.meldungen.Texte().value(0).startsWith(
            "In Zeile 1 passt ein Byte (F6) nicht zum Zeichensatz UTF-8."));
        QVERIFY(w.Karten().isEmpty());
    }

    void QuotesThatDoNotEndAreToldWithTheirLine()
    {
        Werkstatt w;
        w.Oeffnen({});
        w.Schreiben("a.csv", "\"Hund\";dog\r\n\"zwei\nZeilen\";two\r\n\"Katze;cat\r\nBär;bear\r\n");
        Importwahl wahl(u';');
        wahl.aufbau.form.anfuehrung = true;
        QCOMPARE(AsciiImportieren(w.bank, w.Pfad("a.csv"), wahl), Ausgang::Gescheitert);
        QCOMPARE(w.meldungen.Texte(),
                 QStringList{"Leider ist folgender Fehler Aufgetreten: In Zeile 4 beginnt ein "
                             "Anführungszeichen, das nirgends endet. Es wurde nichts übernommen."});
        QVERIFY(w.Karten().isEmpty());
        QVERIFY(w.ZaehlerStimmen());
    }

    void ErrorsNameTheirLines()
    {
        Werkstatt w;
        w.Oeffnen({});
        const QByteArray lang(251, 't');
        w.Schreiben("a.txt", "a;1\r\nohne\r\nb;2;" + lang + "\r\n\r\nc;3;" + lang + "\r\nd;4\r\n");
        Zugang zugang;
        QCOMPARE(AsciiImportieren(w.bank, w.Pfad("a.txt"), u';', &zugang), Ausgang::Teilweise);
        QCOMPARE(zugang.zeilen, (std::vector{3, 5}));
        QVERIFY(TeilweiseEingelesen(zugang).contains("(Zeilen 3 und 5)"));
    }

    void ASuccessWithoutCardsSaysWhy_data()
    {
        QTest::addColumn<QByteArray>("datei");
        QTest::addColumn<QString>("grund");
        QTest::newRow("empty") << QByteArray() << "Die Datei ist leer.";
        QTest::newRow("mark alone") << QByteArray("\xEF\xBB\xBF") << "Die Datei ist leer.";
        QTest::newRow("wrong separator")
            << QByteArray("a\tb\r\nc\td\r\n") << "Keine der 2 Zeilen mit Text enthält das Trennzeichen „;“.";
        QTest::newRow("one line") << QByteArray("a\tb\r\n")
                                  << "Die einzige Zeile mit Text enthält das Trennzeichen „;“ nicht.";
        QTest::newRow("empty lines") << QByteArray("\r\n\r\n")
                                     << "In der Datei steht keine Zeile mit einer Karte.";
    }

    void ASuccessWithoutCardsSaysWhy()
    {
        QFETCH(QByteArray, datei);
        QFETCH(QString, grund);
        Werkstatt w;
        w.Oeffnen({});
        w.Schreiben("a.txt", datei);
        Zugang zugang;
        QCOMPARE(AsciiImportieren(w.bank, w.Pfad("a.txt"), u';', &zugang), Ausgang::Gelungen);
        QCOMPARE(ErfolgreichEingelesen("a.txt", zugang),
                 "a.txt erfolgreich eingelesen\nEs kam keine Karte herein: " + grund);
    }

    void WhatIsThereAlreadyIsToldAndLeftOut()
    {
        Werkstatt w;
        w.Oeffnen({MakeCard(1, 3, 1)});
        w.Schreiben("a.txt", "Frage 1;Antwort 1\r\nFrage 1;anders\r\nneu;new\r\n");
        Importwahl wahl(u';');
        wahl.vorhandene = Vorhandene::Auslassen;
        Zugang zugang;
        QCOMPARE(AsciiImportieren(w.bank, w.Pfad("a.txt"), wahl, &zugang), Ausgang::Gelungen);
        QCOMPARE(ErfolgreichEingelesen("a.txt", zugang),
                 "a.txt erfolgreich eingelesen\n2 Karten neu; 1 gab es schon, sie blieb aus.");
        QCOMPARE(AsciiImportieren(w.bank, w.Pfad("a.txt"), wahl, &zugang), Ausgang::Gelungen);
        QCOMPARE(ErfolgreichEingelesen("a.txt", zugang),
                 "a.txt erfolgreich eingelesen\n0 Karten neu; 3 gab es schon, sie blieben aus.");
        QCOMPARE(w.Karten().size(), 3);
    }

    void AHundredThousandLinesFillTheBox()
    {
        QByteArray datei;
        for (int i = 1; i <= 100'000; ++i)
            datei += "Frage " + QByteArray::number(i) + "\tAntwort " + QByteArray::number(i) + "\r\n";
        Werkstatt w;
        w.Oeffnen({});
        w.Schreiben("a.txt", datei);
        Zugang zugang;
        QCOMPARE(AsciiImportieren(w.bank, w.Pfad("a.txt"), Importwahl(AufbauRaten(datei)), &zugang),
                 Ausgang::Teilweise);
        QCOMPARE(zugang.karten, 32767);
        QCOMPARE(zugang.fehlen, 100'000 - 32767);
        QCOMPARE(zugang.zeilen, std::vector{32768});
        QVERIFY(w.ZaehlerStimmen());
    }

    void AnImportThatIsEndedLeavesTheBoxAsItWas()
    {
        Werkstatt w;
        w.Oeffnen({MakeCard(1, 0, 1)});
        w.Schreiben("a.txt", QByteArray("a;b\r\n").repeated(2000));
        int gemeldet = 0;
        w.bank.progress = [&](int, int) {
            if (++gemeldet == 5)
                throw StoreError(Fehler::Abgebrochen, u"Abgebrochen."_s);
        };
        QCOMPARE(AsciiImportieren(w.bank, w.Pfad("a.txt"), u';'), Ausgang::Gescheitert);
        QCOMPARE(w.meldungen.Texte(), QStringList{"Abgebrochen."});
        QCOMPARE(w.Karten(), QList{MakeCard(1, 0, 1)});
        QVERIFY(w.ZaehlerStimmen());
        QCOMPARE(w.store.schritte.Zurueckzunehmen(), QString());
    }
};

PAUKFIX_CORE_TEST(ListenTest)
#include "ListenTest.moc"
