// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AsciiTausch.h"
#include "TestProgram.h"
#include "VollePlatte.h"
#include "Werkstatt.h"

#include <QStringEncoder>
#include <QTest>

#include <limits>

using namespace paukfix;
using namespace Qt::StringLiterals;

class AsciiImportTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void LinesBecomeCardsBehindThoseInNeu();
    void EveryFieldIsSetAsItShould();
    void HeaderLineIsACard();
    void LinesWithoutSeparatorAddNothing();
    void ThirdSeparatorStaysInTheTopic();
    void EmptyPartsStayUnset();
    void NothingIsTrimmedOrUnquoted();
    void FirstCardOfAnEmptyFileBecomesCurrent();
    void CursorStaysOnItsCard();
    void CountersFollow();
    void MissingFileIsReportedByName();
    void LineEndsMayBeMixedAndTheLastMayBeMissing();
    void EncodingsAreRecognised_data();
    void EncodingsAreRecognised();
    void NoTextFileIsAClearError_data();
    void NoTextFileIsAClearError();
    void LineOfManyMegabytesIsACard();
    void LineTooLongForACardIsLeftOut();
    void FullCardNumbersStopWithOneOverflow();
    void FullCompartmentIsClosedUpFirst();
    void ReallyFullCompartmentStopsWithOneOverflow();
    void TooLongTopicsAreLeftOutAndReportedOnce();
    void FullDiskTakesNothingOverAndOpensTheFileAgain();
    void BrokenDiskTakesNothingOver();
    void DeletedCardFileTakesNothingOver();
    void OpenCardFileAndDirectoryAndPipeAreRefused();
};

namespace {

QVariant Value(CardStore &store, const char *field)
{
    return store.Karten()[QString::fromLatin1(field)].Value();
}

} // namespace

void AsciiImportTest::initTestCase()
{
    VollePlatte::Einbauen();
}

void AsciiImportTest::LinesBecomeCardsBehindThoseInNeu()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(7, 0, 5), MakeCard(9, 3, 80)});
    w.Schreiben("a.txt", "eins;one;Zahl\r\nzwei;two\r\n");
    QCOMPARE(AsciiImportieren(w.bank, w.Pfad("a.txt"), u';'), Ausgang::Gelungen);
    QVERIFY(w.meldungen.gezeigt.isEmpty());
    const QList<CardRecord> cards = w.Karten();
    QCOMPARE(cards.size(), 4);
    QCOMPARE(cards[0], MakeCard(7, 0, 5));
    QCOMPARE(cards[3], MakeCard(9, 3, 80));
    QCOMPARE(cards[1].FrageNr, 10);
    QCOMPARE(cards[1].FachLfdNr, 6);
    QCOMPARE(cards[1].Frage_Klartext, "eins");
    QCOMPARE(cards[2].FrageNr, 11);
    QCOMPARE(cards[2].FachNr, 0);
    QCOMPARE(cards[2].FachLfdNr, 7);
    QCOMPARE(cards[2].Antwort_1_Klartext, "two");
}

void AsciiImportTest::EveryFieldIsSetAsItShould()
{
    Werkstatt w;
    w.Oeffnen({});
    w.Schreiben("a.txt", "eins#one#Zahl");
    QCOMPARE(AsciiImportieren(w.bank, w.Pfad("a.txt"), u'#'), Ausgang::Gelungen);
    CardRecord card;
    card.FrageNr = card.FachLfdNr = card.Antworttyp = 1;
    card.Frage = card.Frage_Klartext = "eins";
    card.Antwort_1 = card.Antwort_1_Klartext = "one";
    card.Picture_9_Name = "Zahl";
    QCOMPARE(w.Karten(), QList{card});
    // What is not set is as in any new card: ticks false, the rest null.
    w.store.Karten().MoveFirst();
    QCOMPARE(Value(w.store, "Antwort_ch_3"), QVariant(false));
    QCOMPARE(Value(w.store, "Picture_4_endlos"), QVariant(false));
    QVERIFY(!Value(w.store, "Antwort_2").isValid());
    QVERIFY(!Value(w.store, "PictureTop").isValid());
    QVERIFY(!Value(w.store, "Picture_1_Name").isValid());
}

void AsciiImportTest::HeaderLineIsACard()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 2, 1)});
    QCOMPARE(AsciiExportieren(w.bank, w.Pfad("a.txt"), u'\t'), Ausgang::Gelungen);
    QCOMPARE(AsciiImportieren(w.bank, w.Pfad("a.txt"), u'\t'), Ausgang::Gelungen);
    const QList<CardRecord> cards = w.Karten();
    QCOMPARE(cards.size(), 3);
    QCOMPARE(cards[0].Frage, "Frage");
    QCOMPARE(cards[0].Antwort_1, "Antwort");
    QCOMPARE(cards[0].Picture_9_Name, "Thema");
    QCOMPARE(cards[1].Frage, "Frage 1");
}

void AsciiImportTest::LinesWithoutSeparatorAddNothing()
{
    Werkstatt w;
    w.Oeffnen({});
    w.Schreiben("a.txt", "kein Trenner\r\n\r\n   \r\na;b\r\n");
    QCOMPARE(AsciiImportieren(w.bank, w.Pfad("a.txt"), u';'), Ausgang::Gelungen);
    QCOMPARE(w.Karten().size(), 1);
    w.Schreiben("leer.txt", "");
    QCOMPARE(AsciiImportieren(w.bank, w.Pfad("leer.txt"), u';'), Ausgang::Gelungen);
    QCOMPARE(w.Karten().size(), 1);
}

void AsciiImportTest::ThirdSeparatorStaysInTheTopic()
{
    Werkstatt w;
    w.Oeffnen({});
    w.Schreiben("a.txt", "a;b;c;d;\r\na;b;;\r\n");
    QCOMPARE(AsciiImportieren(w.bank, w.Pfad("a.txt"), u';'), Ausgang::Gelungen);
    const QList<CardRecord> cards = w.Karten();
    QCOMPARE(cards[0].Picture_9_Name, "c;d;");
    QCOMPARE(cards[1].Picture_9_Name, ";");
}

void AsciiImportTest::EmptyPartsStayUnset()
{
    Werkstatt w;
    w.Oeffnen({});
    w.Schreiben("a.txt", "a;\r\n;b;\r\n");
    QCOMPARE(AsciiImportieren(w.bank, w.Pfad("a.txt"), u';'), Ausgang::Gelungen);
    w.store.Karten().MoveFirst();
    QCOMPARE(Value(w.store, "Frage"), QVariant("a"));
    QVERIFY(!Value(w.store, "Antwort_1").isValid());
    QVERIFY(!Value(w.store, "Antwort_1_Klartext").isValid());
    QVERIFY(!Value(w.store, "Picture_9_Name").isValid());
    w.store.Karten().MoveNext();
    QVERIFY(!Value(w.store, "Frage").isValid());
    QVERIFY(!Value(w.store, "Frage_Klartext").isValid());
    QVERIFY(!Value(w.store, "Picture_9_Name").isValid());
}

void AsciiImportTest::NothingIsTrimmedOrUnquoted()
{
    Werkstatt w;
    w.Oeffnen({});
    w.Schreiben("a.txt", " \"a\" \t b\t  \r\n");
    QCOMPARE(AsciiImportieren(w.bank, w.Pfad("a.txt"), u'\t'), Ausgang::Gelungen);
    const CardRecord card = w.Karten().value(0);
    QCOMPARE(card.Frage, " \"a\" ");
    QCOMPARE(card.Antwort_1, " b");
    QCOMPARE(card.Picture_9_Name, "  ");
}

void AsciiImportTest::FirstCardOfAnEmptyFileBecomesCurrent()
{
    Werkstatt w;
    w.Oeffnen({});
    w.Schreiben("a.txt", "erste;1\r\nzweite;2\r\n");
    QCOMPARE(AsciiImportieren(w.bank, w.Pfad("a.txt"), u';'), Ausgang::Gelungen);
    QCOMPARE(w.store.Felder().Frage.Text(), "erste");
    QCOMPARE(w.store.Felder().FrageNr.Integer(), qint16(1));
}

void AsciiImportTest::CursorStaysOnItsCard()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1), MakeCard(2, 4, 1)});
    w.store.Karten().MoveFirst();
    w.Schreiben("a.txt", "neu;new\r\n");
    QCOMPARE(AsciiImportieren(w.bank, w.Pfad("a.txt"), u';'), Ausgang::Gelungen);
    QCOMPARE(w.store.Felder().Frage.Text(), "Frage 1");
    w.store.Karten().MoveNext();
    QCOMPARE(w.store.Felder().Frage.Text(), "neu");
}

void AsciiImportTest::CountersFollow()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(7, 0, 5)});
    int redrawn = 0;
    w.oeffner.BoxZeichnen = [&] { ++redrawn; };
    w.Schreiben("a.txt", "a;b\r\nc;d\r\n");
    QCOMPARE(AsciiImportieren(w.bank, w.Pfad("a.txt"), u';'), Ausgang::Gelungen);
    QCOMPARE(redrawn, 1);
    QCOMPARE(w.store.HighestCardNumber, qint16(9));
    QCOMPARE(w.store.FachInfo[0].LfdMax, qint16(7));
    QCOMPARE(w.store.FachInfo[0].Anzahl, qint16(3));
    QVERIFY(w.ZaehlerStimmen());
}

void AsciiImportTest::MissingFileIsReportedByName()
{
    Werkstatt w;
    w.Oeffnen({});
    QCOMPARE(AsciiImportieren(w.bank, w.Pfad("fehlt.txt"), u';'), Ausgang::Gescheitert);
    QCOMPARE(AsciiImportieren(w.bank, "", u';'), Ausgang::Gescheitert);
    QCOMPARE(w.meldungen.Texte(),
             (QStringList{w.Pfad("fehlt.txt") + " Datei nicht gefunden !", " Datei nicht gefunden !"}));
    QVERIFY(w.Karten().isEmpty());
}

void AsciiImportTest::LineEndsMayBeMixedAndTheLastMayBeMissing()
{
    Werkstatt w;
    w.Oeffnen({});
    w.Schreiben("a.txt", "a;1\r\nb;2\nc;3\rd;4\n\re;5\r\r\nf;6");
    QCOMPARE(AsciiImportieren(w.bank, w.Pfad("a.txt"), u';'), Ausgang::Gelungen);
    QStringList lines;
    for (const CardRecord &card : w.Karten())
        lines << card.Frage + card.Antwort_1;
    QCOMPARE(lines, (QStringList{"a1", "b2", "c3", "d4", "e5", "f6"}));
}

void AsciiImportTest::EncodingsAreRecognised_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("question");
    const QString text = "Größe – мышь";
    const QString line = text + ";b\r\n";
    QTest::newRow("UTF-8 with mark") << "\xEF\xBB\xBF" + line.toUtf8() << text;
    QTest::newRow("UTF-8 without mark") << line.toUtf8() << text;
    QStringEncoder little(QStringConverter::Utf16LE, QStringConverter::Flag::WriteBom);
    QTest::newRow("UTF-16 little end") << QByteArray(little(line)) << text;
    QStringEncoder big(QStringConverter::Utf16BE, QStringConverter::Flag::WriteBom);
    QTest::newRow("UTF-16 big end") << QByteArray(big(line)) << text;
    QTest::newRow("decomposed") << QString("Gro\u0308\u00DFe;b").toUtf8() << "Größe";
    QStringEncoder decomposed(QStringConverter::Utf16LE, QStringConverter::Flag::WriteBom);
    QTest::newRow("decomposed UTF-16") << QByteArray(decomposed(QString("Ba\u0308r;b"))) << "Bär";
    QTest::newRow("what becomes a separator") << u"a\u037Eä;b"_s.toUtf8() << "a;ä";
    QTest::newRow("half a character in UTF-16")
        << QByteArray("\xFF\xFE\x3D\xD8\x61\0;\0\x62\0", 10) << u"\uFFFDa"_s;
    QTest::newRow("FEFF behind the mark") << u"\uFEFF\uFEFFa;b"_s.toUtf8() << u"\uFEFFa"_s;
    QTest::newRow("Windows-1252") << QByteArray("Gr\xF6\xDF"
                                                "e \x96 5 \x80;b\r\n")
                                  << "Größe – 5 €";
    QTest::newRow("valid but for one byte") << QByteArray("\xC3\xB6 \xF6;b\r\n") << "Ã¶ ö";
    QTest::newRow("ends within a character") << QByteArray("x;\xC3\xB6\xC3") << "x";
    QTest::newRow("only ASCII") << QByteArray("plain;b") << "plain";
}

void AsciiImportTest::EncodingsAreRecognised()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, question);
    Werkstatt w;
    w.Oeffnen({});
    w.Schreiben("a.txt", bytes);
    QCOMPARE(AsciiImportieren(w.bank, w.Pfad("a.txt"), u';'), Ausgang::Gelungen);
    QCOMPARE(w.Karten().value(0).Frage_Klartext, question);
    QCOMPARE(w.Karten().value(0).Frage, question);
}

void AsciiImportTest::NoTextFileIsAClearError_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("reason");
    QByteArray binary;
    for (int i = 0; i < 100'000; ++i)
        binary += static_cast<char>(i % 251 * i % 251);
    QTest::newRow("binary") << binary << "sie enthält Null-Zeichen.";
    QTest::newRow("null in a line") << QByteArray("a;b\r\nc\0d;e\r\n", 12) << "sie enthält Null-Zeichen.";
    QTest::newRow("half UTF-16") << QByteArray("\xFF\xFE\x61\0;", 5)
                                 << "sie ist als UTF-16 gekennzeichnet, aber kein gültiges UTF-16.";
}

void AsciiImportTest::NoTextFileIsAClearError()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, reason);
    Werkstatt w;
    w.Oeffnen({});
    w.Schreiben("a.txt", bytes);
    QCOMPARE(AsciiImportieren(w.bank, w.Pfad("a.txt"), u';'), Ausgang::Gescheitert);
    QCOMPARE(w.meldungen.Texte(),
             QStringList{"Leider ist folgender Fehler Aufgetreten: Das ist keine Textdatei: " + reason});
    QVERIFY(w.Karten().isEmpty());
}

void AsciiImportTest::LineOfManyMegabytesIsACard()
{
    Werkstatt w;
    w.Oeffnen({});
    const QByteArray question(12'000'000, 'x');
    w.Schreiben("a.txt", question + ";kurz\r\nnoch;eine\r\n");
    QCOMPARE(AsciiImportieren(w.bank, w.Pfad("a.txt"), u';'), Ausgang::Gelungen);
    const QList<CardRecord> cards = w.Karten();
    QCOMPARE(cards.size(), 2);
    QCOMPARE(cards[0].Frage.size(), question.size());
}

void AsciiImportTest::LineTooLongForACardIsLeftOut()
{
    Werkstatt w;
    w.Oeffnen({});
    w.Schreiben("a.txt", "vorher;1\r\n" + QByteArray(60'000'000, 'x') + ";kurz\r\n" +
                             QByteArray(110'000'000, 'y') + ";kurz\r\nnachher;2\r\n");
    QCOMPARE(AsciiImportieren(w.bank, w.Pfad("a.txt"), u';'), Ausgang::Teilweise);
    QCOMPARE(w.meldungen.Texte(),
             QStringList{"Leider ist folgender Fehler Aufgetreten: Ein Text in der Datei „" +
                         w.Pfad("offen.pzb") + "“ ist zu lang."});
    const QList<CardRecord> cards = w.Karten();
    QCOMPARE(cards.size(), 2);
    QCOMPARE(cards[1].Frage, "nachher");
    QVERIFY(w.ZaehlerStimmen());
}

void AsciiImportTest::FullCardNumbersStopWithOneOverflow()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(32765, 0, 1)});
    w.Schreiben("a.txt", "a;1\r\nb;2\r\nc;3\r\nd;4\r\n");
    QCOMPARE(AsciiImportieren(w.bank, w.Pfad("a.txt"), u';'), Ausgang::Teilweise);
    QCOMPARE(w.meldungen.Texte(),
             QStringList{"Leider ist folgender Fehler Aufgetreten: Überlauf: Nummern und Anzahlen gehen "
                         "nur bis 32767."});
    const QList<CardRecord> cards = w.Karten();
    QCOMPARE(cards.size(), 3);
    QCOMPARE(cards[2].FrageNr, 32767);
    QCOMPARE(cards[2].Frage, "b");
    QVERIFY(w.ZaehlerStimmen());
}

void AsciiImportTest::FullCompartmentIsClosedUpFirst()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, -4), MakeCard(2, 0, 2), MakeCard(3, 0, 32766), MakeCard(4, 3, 32767)});
    w.Schreiben("a.txt", "a;1\r\nb;2\r\nc;3\r\n");
    QCOMPARE(AsciiImportieren(w.bank, w.Pfad("a.txt"), u';'), Ausgang::Gelungen);
    const QList<CardRecord> cards = w.Karten();
    QCOMPARE(cards.size(), 7);
    const QList<int> expected{1, 2, 3, 5, 6, 7, 4};
    for (int i = 0; i < 6; ++i) {
        QCOMPARE(cards[i].FrageNr, expected[i]);
        QCOMPARE(cards[i].FachLfdNr, i + 1);
    }
    QCOMPARE(cards[6], MakeCard(4, 3, 32767));
    QVERIFY(w.ZaehlerStimmen());
}

void AsciiImportTest::ReallyFullCompartmentStopsWithOneOverflow()
{
    Werkstatt w;
    QList<CardRecord> cards;
    for (int i = 1; i <= 32766; ++i) {
        CardRecord card;
        card.FrageNr = i - 100; // below zero too, so that the card numbers are not the limit
        card.FachLfdNr = i;
        cards << card;
    }
    w.Oeffnen(cards);
    w.Schreiben("a.txt", "a;1\r\nb;2\r\nc;3\r\n");
    QCOMPARE(AsciiImportieren(w.bank, w.Pfad("a.txt"), u';'), Ausgang::Teilweise);
    QCOMPARE(w.meldungen.Texte(),
             QStringList{"Leider ist folgender Fehler Aufgetreten: Überlauf: Nummern und Anzahlen gehen "
                         "nur bis 32767."});
    QCOMPARE(w.store.FachInfo[0].Anzahl, std::numeric_limits<qint16>::max());
    QVERIFY(w.ZaehlerStimmen());
    QCOMPARE(w.Karten().size(), 32767);
}

void AsciiImportTest::TooLongTopicsAreLeftOutAndReportedOnce()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(32764, 0, 1)});
    const QByteArray topic(251, 't');
    const QByteArray longest = QString(250, QChar(0xFC)).toUtf8(); // 250 characters, 500 bytes
    w.Schreiben("a.txt", "a;1;" + topic + "\r\nb;2;" + topic + "\r\nc;3;" + longest + "\r\nd;4\r\n");
    QCOMPARE(AsciiImportieren(w.bank, w.Pfad("a.txt"), u';'), Ausgang::Teilweise);
    QCOMPARE(w.meldungen.Texte(),
             (QStringList{"Leider ist folgender Fehler Aufgetreten: "
                          "Der Text im Feld „Thema“ ist länger als 250 Zeichen.",
                          "Leider ist folgender Fehler Aufgetreten: Überlauf: Nummern und Anzahlen gehen "
                          "nur bis 32767."}));
    const QList<CardRecord> cards = w.Karten();
    QCOMPARE(cards.size(), 4);
    QCOMPARE(cards[1].Frage, "a");
    QVERIFY(cards[1].Picture_9_Name.isEmpty());
    QCOMPARE(cards[3].Picture_9_Name.size(), 250);
}

void AsciiImportTest::FullDiskTakesNothingOverAndOpensTheFileAgain()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    w.store.Karten().Past([](SQLite::Database &database) { database.exec("PRAGMA max_page_count=40"); });
    QByteArray lines;
    for (int i = 0; i < 2000; ++i)
        lines += "Frage " + QByteArray::number(i) + ";" + QByteArray(200, 'a') + "\r\n";
    w.Schreiben("a.txt", lines);
    const qint32 openings = w.oeffner.verzoegerung.LoopsPerSecond;
    QCOMPARE(AsciiImportieren(w.bank, w.Pfad("a.txt"), u';'), Ausgang::Gescheitert);
    QVERIFY(MeldetFehler(w.meldungen));
    QCOMPARE(w.meldungen.Texte(),
             QStringList("Leider ist folgender Fehler Aufgetreten: Der Datenträger ist voll; in „" +
                         w.Pfad("offen.pzb") + "“ wurde nichts gespeichert. Es wurde nichts übernommen."));
    QVERIFY(w.oeffner.verzoegerung.LoopsPerSecond > openings); // opened again
    QCOMPARE(w.store.HighestCardNumber, qint16(1));
    QVERIFY(w.ZaehlerStimmen());
    QCOMPARE(w.Karten(), QList{MakeCard(1, 0, 1)});
}

void AsciiImportTest::BrokenDiskTakesNothingOver()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    w.Schreiben("a.txt", QByteArray("a;b\r\n").repeated(200));
    w.bank.progress = [](int, int) { VollePlatte::Setzen(VollePlatte::Zustand::Kaputt); };
    // The disk is well again before the file is opened again.
    w.oeffner.BoxZeichnen = [] { VollePlatte::Setzen(VollePlatte::Zustand::Gesund); };
    QCOMPARE(AsciiImportieren(w.bank, w.Pfad("a.txt"), u';'), Ausgang::Gescheitert);
    QVERIFY(MeldetFehler(w.meldungen));
    QCOMPARE(w.meldungen.Texte(),
             QStringList("Leider ist folgender Fehler Aufgetreten: Ein-/Ausgabefehler bei der Datei „" +
                         w.Pfad("offen.pzb") + "“. Es wurde nichts übernommen."));
    QVERIFY(w.store.IsOpen());
    QVERIFY(w.ZaehlerStimmen());
    QCOMPARE(w.Karten(), QList{MakeCard(1, 0, 1)});
}

void AsciiImportTest::DeletedCardFileTakesNothingOver()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    w.Schreiben("a.txt", "a;b\r\n");
    QVERIFY(QFile::rename(w.Pfad("offen.pzb"), w.Pfad("weg.pzb")));
    QCOMPARE(AsciiImportieren(w.bank, w.Pfad("a.txt"), u';'), Ausgang::Gescheitert);
    QCOMPARE(
        w.meldungen.Texte().front(),
        "Leider ist folgender Fehler Aufgetreten: Die Datei „" + w.Pfad("offen.pzb") +
            "“ wurde gelöscht, umbenannt oder ersetzt, während sie offen war. Es wurde nichts übernommen.");
    QVERIFY(!w.store.IsOpen()); // and why was reported by the store
    QCOMPARE(w.meldungen.gezeigt.size(), 2);
    QCOMPARE(ReadCards(w.Pfad("weg.pzb")), QList{MakeCard(1, 0, 1)});
}

void AsciiImportTest::OpenCardFileAndDirectoryAndPipeAreRefused()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    for (const QString &path : {w.Pfad("offen.pzb"), w.verzeichnis.path(), u"/dev/zero"_s}) {
        w.meldungen.gezeigt.clear();
        QCOMPARE(AsciiImportieren(w.bank, path, u';'), Ausgang::Gescheitert);
        QVERIFY(MeldetFehler(w.meldungen));
    }
    QCOMPARE(w.Karten().size(), 1);
}

PAUKFIX_CORE_TEST(AsciiImportTest)
#include "AsciiImportTest.moc"
