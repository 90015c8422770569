// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AsciiTausch.h"
#include "TestProgram.h"
#include "Werkstatt.h"

#include <QTest>

#include <unistd.h>

using namespace paukfix;
using namespace Qt::StringLiterals;

class AsciiExportTest : public QObject
{
    Q_OBJECT

private slots:
    void WritesHeaderAndCardsInBoxOrder();
    void NoSimpleCardsGiveTheHeaderOnly();
    void SkipsTickCardsAndKeepsCardsWithPictures();
    void SemicolonBecomesABlankOnlyWhereItSeparates();
    void LineBreakBecomesTwoBlanks();
    void CardWithoutTopicEndsInTheSeparator();
    void UnsetTextsBecomeEmptyColumns();
    void OtherSeparatorIsRefusedByMessage();
    void IsWindows1252();
    void CharactersOutsideTheCodePageMakeItUtf8();
    void TextsThatWouldBeTakenForUtf8MakeItUtf8();
    void ReplacesAnOldFileAndItsStaleJournal();
    void NameMayBeAsLongAsTheFileSystemAllows();
    void LinkStaysALink();
    void FailureLeavesTheOldFileAndNothingElse();
    void EmptyNameIsAnError();
    void NameWithoutDirectoryLiesBesideTheCardFile();
    void OpenCardFileIsRefusedHoweverItIsSpelled();
    void CardFileInUseIsRefused();
    void UnreadableCardIsLeftOutAndReportedOnce();
    void NeverChangesTheCardFile();
};

void AsciiExportTest::WritesHeaderAndCardsInBoxOrder()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 3, 2), MakeCard(2, 3, 1), MakeCard(3, 0, 9)});
    QCOMPARE(AsciiExportieren(w.bank, w.Pfad("a.txt"), u'\t'), Ausgang::Gelungen);
    QCOMPARE(w.Bytes("a.txt"), QByteArray("Frage\tAntwort\tThema\r\n"
                                          "Frage 3\tAntwort 3\tThema 3\r\n"
                                          "Frage 2\tAntwort 2\tThema 2\r\n"
                                          "Frage 1\tAntwort 1\tThema 1\r\n"));
    QVERIFY(w.meldungen.gezeigt.isEmpty());
    QVERIFY(w.store.Karten().AtEOF());
}

void AsciiExportTest::NoSimpleCardsGiveTheHeaderOnly()
{
    Werkstatt w;
    CardRecord ticks = MakeCard(1, 0, 1);
    ticks.Antworttyp = 2;
    w.Oeffnen({ticks});
    QCOMPARE(AsciiExportieren(w.bank, w.Pfad("a.txt"), u'#'), Ausgang::Gelungen);
    QCOMPARE(w.Bytes("a.txt"), QByteArray("Frage#Antwort#Thema\r\n"));

    Werkstatt leer;
    leer.Oeffnen({});
    QCOMPARE(AsciiExportieren(leer.bank, leer.Pfad("a.txt"), u';'), Ausgang::Gelungen);
    QCOMPARE(leer.Bytes("a.txt"), QByteArray("Frage;Antwort;Thema\r\n"));
}

void AsciiExportTest::SkipsTickCardsAndKeepsCardsWithPictures()
{
    Werkstatt w;
    CardRecord ticks = MakeCard(1, 0, 1);
    ticks.Antworttyp = 2;
    CardRecord picture = MakeCard(2, 0, 2);
    picture.Picture_1_Name = "hund.bmp";
    CardRecord untyped = MakeCard(3, 0, 3);
    untyped.Antworttyp = 0;
    w.Oeffnen({ticks, picture, untyped});
    QCOMPARE(AsciiExportieren(w.bank, w.Pfad("a.txt"), u';'), Ausgang::Gelungen);
    QCOMPARE(w.Bytes("a.txt"), QByteArray("Frage;Antwort;Thema\r\nFrage 2;Antwort 2;Thema 2\r\n"));
}

void AsciiExportTest::SemicolonBecomesABlankOnlyWhereItSeparates()
{
    Werkstatt w;
    CardRecord card = MakeCard(1, 0, 1);
    card.Frage_Klartext = "eins; zwei;";
    card.Antwort_1_Klartext = "#3";
    card.Picture_9_Name = "a\tb";
    w.Oeffnen({card});
    QCOMPARE(AsciiExportieren(w.bank, w.Pfad("semikolon.txt"), u';'), Ausgang::Gelungen);
    QVERIFY(w.Bytes("semikolon.txt").endsWith("\r\neins  zwei ;#3;a b\r\n"));
    QCOMPARE(AsciiExportieren(w.bank, w.Pfad("tab.txt"), u'\t'), Ausgang::Gelungen);
    QVERIFY(w.Bytes("tab.txt").endsWith("\r\neins; zwei;\t#3\ta b\r\n"));
    QCOMPARE(AsciiExportieren(w.bank, w.Pfad("raute.txt"), u'#'), Ausgang::Gelungen);
    QVERIFY(w.Bytes("raute.txt").endsWith("\r\neins; zwei;# 3#a b\r\n"));
}

void AsciiExportTest::LineBreakBecomesTwoBlanks()
{
    Werkstatt w;
    CardRecord card = MakeCard(1, 0, 1);
    card.Frage_Klartext = "oben\r\nunten\n ";
    w.Oeffnen({card});
    QCOMPARE(AsciiExportieren(w.bank, w.Pfad("a.txt"), u';'), Ausgang::Gelungen);
    QVERIFY(w.Bytes("a.txt").endsWith("\r\noben  unten  ;Antwort 1;Thema 1\r\n"));
}

void AsciiExportTest::CardWithoutTopicEndsInTheSeparator()
{
    Werkstatt w;
    CardRecord card = MakeCard(1, 0, 1);
    card.Picture_9_Name.clear();
    w.Oeffnen({card});
    QCOMPARE(AsciiExportieren(w.bank, w.Pfad("a.txt"), u';'), Ausgang::Gelungen);
    QVERIFY(w.Bytes("a.txt").endsWith("\r\nFrage 1;Antwort 1;\r\n"));
}

void AsciiExportTest::UnsetTextsBecomeEmptyColumns()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    w.store.Karten().Past([](SQLite::Database &database) {
        database.exec("UPDATE Lernkarten SET Frage_Klartext=NULL, Antwort_1_Klartext=NULL, "
                      "Picture_9_Name=NULL");
    });
    QCOMPARE(AsciiExportieren(w.bank, w.Pfad("a.txt"), u';'), Ausgang::Gelungen);
    QCOMPARE(w.Bytes("a.txt"), QByteArray("Frage;Antwort;Thema\r\n;;\r\n"));
}

void AsciiExportTest::OtherSeparatorIsRefusedByMessage()
{
    TestMeldungen meldungen;
    QVERIFY(!Trennzeichen(meldungen, ","));
    QVERIFY(!Trennzeichen(meldungen, ""));
    QVERIFY(!Trennzeichen(meldungen, "<tab>"));
    QCOMPARE(meldungen.Texte(), (QStringList{"Trennzeichen: ,ungültig!", "Trennzeichen: ungültig!",
                                             "Trennzeichen: <tab>ungültig!"}));
    QCOMPARE(Trennzeichen(meldungen, "<Tab>"), QChar('\t'));
    QCOMPARE(Trennzeichen(meldungen, ";"), QChar(';'));
    QCOMPARE(Trennzeichen(meldungen, "#"), QChar('#'));
}

void AsciiExportTest::IsWindows1252()
{
    Werkstatt w;
    CardRecord card = MakeCard(1, 0, 1);
    card.Frage_Klartext = "Größe „5 €“";
    w.Oeffnen({card});
    QCOMPARE(AsciiExportieren(w.bank, w.Pfad("a.txt"), u';'), Ausgang::Gelungen);
    QVERIFY(w.Bytes("a.txt").contains("\r\nGr\xF6\xDF"
                                      "e \x84"
                                      "5 \x80\x93;"));
}

void AsciiExportTest::CharactersOutsideTheCodePageMakeItUtf8()
{
    Werkstatt w;
    CardRecord first = MakeCard(1, 0, 1);
    first.Frage_Klartext = "Größe – klein";
    CardRecord second = MakeCard(2, 0, 2);
    second.Antwort_1_Klartext = "мышь";
    w.Oeffnen({first, second});
    QCOMPARE(AsciiExportieren(w.bank, w.Pfad("a.txt"), u';'), Ausgang::Gelungen);
    QCOMPARE(w.Bytes("a.txt"),
             QByteArray("\xEF\xBB\xBF") + u"Frage;Antwort;Thema\r\nGröße – klein;Antwort 1;Thema 1\r\n"
                                          u"Frage 2;мышь;Thema 2\r\n"_s.toUtf8());
}

void AsciiExportTest::TextsThatWouldBeTakenForUtf8MakeItUtf8()
{
    Werkstatt w;
    CardRecord card = MakeCard(1, 0, 1);
    card.Frage_Klartext = "GrÃ¶ÃŸe"; // "Größe" as it looks when UTF-8 is read wrongly
    w.Oeffnen({card});
    QCOMPARE(AsciiExportieren(w.bank, w.Pfad("a.txt"), u';'), Ausgang::Gelungen);
    QVERIFY(w.Bytes("a.txt").startsWith("\xEF\xBB\xBF"));
    QVERIFY(QString::fromUtf8(w.Bytes("a.txt")).contains(card.Frage_Klartext));
}

void AsciiExportTest::ReplacesAnOldFileAndItsStaleJournal()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    w.Schreiben("a.txt", "alt");
    w.Schreiben("a.txt-journal", "alt");
    QCOMPARE(AsciiExportieren(w.bank, w.Pfad("a.txt"), u';'), Ausgang::Gelungen);
    QVERIFY(w.Bytes("a.txt").startsWith("Frage;"));
    QCOMPARE(w.Dateien(), (QStringList{"a.txt", "offen.pzb"}));
}

// No journal stands beside a text.
void AsciiExportTest::NameMayBeAsLongAsTheFileSystemAllows()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    const QString name = QString(251, u'n') + ".txt";
    for (int time = 0; time < 2; ++time) {
        QCOMPARE(AsciiExportieren(w.bank, w.Pfad(name), u';'), Ausgang::Gelungen);
        QVERIFY(w.Bytes(name).startsWith("Frage;"));
    }
}

void AsciiExportTest::LinkStaysALink()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    w.Schreiben("wirklich.txt", "alt");
    QVERIFY(QFile::link(w.Pfad("wirklich.txt"), w.Pfad("a.txt")));
    QCOMPARE(AsciiExportieren(w.bank, w.Pfad("a.txt"), u';'), Ausgang::Gelungen);
    QVERIFY(QFileInfo(w.Pfad("a.txt")).isSymLink());
    QVERIFY(w.Bytes("wirklich.txt").startsWith("Frage;"));
}

void AsciiExportTest::FailureLeavesTheOldFileAndNothingElse()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    QVERIFY(QDir(w.verzeichnis.path()).mkdir("ordner"));
    QCOMPARE(AsciiExportieren(w.bank, w.Pfad("ordner"), u';'), Ausgang::Gescheitert);
    QVERIFY(MeldetFehler(w.meldungen));
    QVERIFY(QDir(w.Pfad("ordner")).exists());
    QCOMPARE(AsciiExportieren(w.bank, w.Pfad("fehlt/a.txt"), u';'), Ausgang::Gescheitert);
    QCOMPARE(w.meldungen.Texte().last(),
             "Leider ist folgender Fehler Aufgetreten: Pfad nicht gefunden: " + w.Pfad("fehlt"));
    QCOMPARE(w.Dateien(), QStringList{"offen.pzb"});
    w.Schreiben("a.txt", "alt");
    {
        const FullDisk voll(10);
        QCOMPARE(AsciiExportieren(w.bank, w.Pfad("a.txt"), u';'), Ausgang::Gescheitert);
    }
    QCOMPARE(w.meldungen.Texte().last(),
             "Leider ist folgender Fehler Aufgetreten: Der Datenträger ist voll: " + w.Pfad("a.txt"));
    QCOMPARE(w.Bytes("a.txt"), QByteArray("alt"));
    QCOMPARE(w.Dateien(), (QStringList{"a.txt", "offen.pzb"}));
}

void AsciiExportTest::EmptyNameIsAnError()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    QCOMPARE(AsciiExportieren(w.bank, "", u';'), Ausgang::Gescheitert);
    QCOMPARE(w.meldungen.Texte(),
             QStringList{"Leider ist folgender Fehler Aufgetreten: Es ist kein Dateiname angegeben."});
}

void AsciiExportTest::NameWithoutDirectoryLiesBesideTheCardFile()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    QCOMPARE(AsciiExportieren(w.bank, "getippt.txt", u';'), Ausgang::Gelungen);
    QVERIFY(w.Dateien().contains("getippt.txt"));
}

void AsciiExportTest::OpenCardFileIsRefusedHoweverItIsSpelled()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    QVERIFY(QFile::link(w.Pfad("offen.pzb"), w.Pfad("weich.pzb")));
    QCOMPARE(::link(qPrintable(w.Pfad("offen.pzb")), qPrintable(w.Pfad("hart.pzb"))), 0);
    for (const QString &spelled : {w.Pfad("offen.pzb"), w.Pfad("./offen.pzb"),
                                   w.Pfad("../") + QDir(w.Pfad("")).dirName() + "/offen.pzb",
                                   w.Pfad("weich.pzb"), w.Pfad("hart.pzb"), u"offen.pzb"_s}) {
        w.meldungen.gezeigt.clear();
        QCOMPARE(AsciiExportieren(w.bank, spelled, u';'), Ausgang::Gescheitert);
        QVERIFY(MeldetFehler(w.meldungen));
        QVERIFY(w.meldungen.Texte().front().contains("ist die Kartei, die gerade geöffnet ist"));
    }
    QCOMPARE(w.meldungen.Texte(),
             QStringList("Leider ist folgender Fehler Aufgetreten: Die Datei „" + w.Pfad("offen.pzb") +
                         "“ ist die Kartei, die gerade geöffnet ist."));
    QCOMPARE(w.Dateien(), (QStringList{"hart.pzb", "offen.pzb", "weich.pzb"}));
    QCOMPARE(w.Karten(), QList{MakeCard(1, 0, 1)});
}

void AsciiExportTest::CardFileInUseIsRefused()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    MakeCardFile(w.Pfad("andere.pzb"), {MakeCard(99, 0, 1)});
    {
        const CardFile otherProgram(w.Pfad("andere.pzb"));
        QCOMPARE(AsciiExportieren(w.bank, w.Pfad("andere.pzb"), u';'), Ausgang::Gescheitert);
        QVERIFY(MeldetFehler(w.meldungen));
        QVERIFY(w.meldungen.Texte().front().contains("ist gesperrt"));
    }
    QCOMPARE(ReadCards(w.Pfad("andere.pzb")), QList{MakeCard(99, 0, 1)});
}

void AsciiExportTest::UnreadableCardIsLeftOutAndReportedOnce()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1), MakeCard(2, 0, 2), MakeCard(3, 0, 3)});
    w.store.Karten().Past([](SQLite::Database &database) {
        database.exec("UPDATE Lernkarten SET Antworttyp='eins' WHERE FrageNr<>2");
    });
    QCOMPARE(AsciiExportieren(w.bank, w.Pfad("a.txt"), u';'), Ausgang::Teilweise);
    QCOMPARE(w.Bytes("a.txt"), QByteArray("Frage;Antwort;Thema\r\nFrage 2;Antwort 2;Thema 2\r\n"));
    QCOMPARE(w.meldungen.Texte(), QStringList{"Leider ist folgender Fehler Aufgetreten: "
                                              "Typen unverträglich im Feld „Antworttyp“."});
}

void AsciiExportTest::NeverChangesTheCardFile()
{
    Werkstatt w;
    MakeCardFile(w.Pfad("kartei.pzb"), {MakeCard(1, 0, 1), MakeCard(2, 4, 1)});
    const QByteArray before = w.Bytes("kartei.pzb");
    QString name = "kartei.pzb";
    w.oeffner.OpenCardFile(name);
    QCOMPARE(AsciiExportieren(w.bank, w.Pfad("a.txt"), u';'), Ausgang::Gelungen);
    w.store.CloseCardFile();
    QCOMPARE(w.Bytes("kartei.pzb"), before);
}

PAUKFIX_CORE_TEST(AsciiExportTest)
#include "AsciiExportTest.moc"
