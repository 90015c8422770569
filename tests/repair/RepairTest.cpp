// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Repair.h"

#include "CardSurvey.h"
#include "DamageLab.h"
#include "RepairReport.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>
#include <SQLiteCpp/SQLiteCpp.h>

#include <algorithm>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

// Length of the engine's variable-length number at `at`.
int VarintLength(const QByteArray &bytes, qint64 at)
{
    int length = 1;
    while (length < 9 && (static_cast<quint8>(bytes[at + length - 1]) & 0x80U) != 0)
        ++length;
    return length;
}

// Where the first value of the card's record, its FrageNr, stands in the file.
qint64 FirstValue(const QByteArray &bytes, const CardTruth &card)
{
    qint64 at = card.extents.first().from;
    at += VarintLength(bytes, at);
    at += VarintLength(bytes, at);
    return at + bytes[at]; // the head's length fits into one byte here
}

} // namespace

// Which cards a repair takes, and what it says of them.
class RepairTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> directory_;

    QString Path(const QString &name = u"Kasten.pzb"_s) const { return directory_->filePath(name); }

    void Sql(const std::string &sql)
    {
        SQLite::Database database(Path().toStdString(), SQLite::OPEN_READWRITE);
        database.exec(sql);
    }

    // Makes the file unusable without touching a card.
    void DestroyFirstPage()
    {
        QByteArray bytes = ReadFile(Path());
        bytes.replace(0, 4096, QByteArray(4096, '\x55'));
        WriteFile(Path(), bytes);
    }

    QString Report(const RepairResult &result) { return QString::fromUtf8(ReadFile(result.report)); }

    // The cards of the file at Path() by their number.
    QMap<int, CardRecord> Cards()
    {
        QMap<int, CardRecord> cards;
        for (const CardRecord &card : ReadCards(Path()))
            cards[static_cast<int>(card.FrageNr)] = card;
        return cards;
    }

private slots:

    void init() { directory_ = std::make_unique<QTemporaryDir>(); }

    void SoundFileComesBackAsItWas()
    {
        const QList<CardRecord> cards = SomeCards(50);
        MakeCardFile(Path(), cards);
        const QList<CardRecord> before = ReadCards(Path());
        const RepairResult result = RepairDatabase(Path());
        QCOMPARE(result.cards, 50);
        QCOMPARE(ReadCards(Path()), before);
        QVERIFY(Report(result).contains(u"ohne Beanstandung:     50 Karten"_s));
    }

    void EveryPageSizeIsReadWithoutHeader_data()
    {
        QTest::addColumn<int>("pageSize");
        for (int pageSize = 512; pageSize <= 65536; pageSize *= 2)
            QTest::addRow("%d bytes", pageSize) << pageSize;
    }

    void EveryPageSizeIsReadWithoutHeader()
    {
        QFETCH(int, pageSize);
        const Box box = MakeBox(directory_->path(), {.cards = 300, .pageSize = pageSize});
        QCOMPARE(box.pageSize, pageSize);
        QByteArray bytes = box.bytes;
        bytes.replace(0, pageSize, QByteArray(pageSize, '\0'));
        WriteFile(Path(), bytes);
        RepairDatabase(Path());
        const auto found = ReadDigests(Path());
        QCOMPARE(found.size(), box.cards.size());
        for (const CardTruth &card : box.cards)
            QCOMPARE(found.value(card.marker), card.digest);
    }

    void DamagedNumberIsTakenFromTheIndex()
    {
        const Box box = MakeBox(directory_->path(), {.cards = 300});
        const CardTruth &hit = box.cards[220], &victim = box.cards[180];
        QVERIFY(hit.number > 127 && victim.number > 127); // both numbers take two bytes
        QByteArray bytes = box.bytes;
        // The damaged card says that it has another one's number.
        bytes.replace(FirstValue(bytes, hit), 2, bytes.mid(FirstValue(bytes, victim), 2));
        WriteFile(Path(), bytes);
        const RepairResult result = RepairDatabase(Path());
        QCOMPARE(result.cards, box.cards.size());
        const auto found = ReadDigests(Path());
        QCOMPARE(found.value(victim.marker), victim.digest);
        QCOMPARE(found.value(hit.marker), hit.digest);
        QVERIFY(Report(result).contains(u"): Nummer war unbrauchbar und kommt aus dem Index\n"_s));
    }

    void NumberThatTheIndexContradictsIsNamed()
    {
        const Box box = MakeBox(directory_->path(), {.cards = 300});
        const CardTruth &hit = box.cards[220];
        QVERIFY(hit.number > 127);
        QByteArray bytes = box.bytes;
        bytes.replace(FirstValue(bytes, hit), 2, QByteArray::fromHex("7531")); // 30001
        WriteFile(Path(), bytes);
        const RepairResult result = RepairDatabase(Path());
        QCOMPARE(result.cards, box.cards.size());
        const QString report = Report(result);
        const QRegularExpression line(
            u"\nKarte 30001( \\(„.*“\\))?: der Index nennt die Nummer %1 "
            u"für sie; steht auf einer Seite, deren Prüfsumme nicht stimmt\n"_s.arg(hit.number));
        QVERIFY2(report.contains(line), qPrintable(report));
    }

    void DamagedCompartmentIsTakenFromTheIndex()
    {
        const Box box = MakeBox(directory_->path(), {.cards = 300});
        WriteFile(Path(), box.bytes);
        const auto before = Cards();
        const auto hit = std::find_if(box.cards.begin(), box.cards.end(), [&](const CardTruth &card) {
            return card.number > 127 && before[card.number].FachNr >= 2; // numbers 0 and 1 take no byte
        });
        QVERIFY(hit != box.cards.end());
        QByteArray bytes = box.bytes;
        const qint64 at = FirstValue(bytes, *hit) + 2;
        QCOMPARE(static_cast<double>(bytes[at]), before[hit->number].FachNr);
        bytes[at] = 99;
        WriteFile(Path(), bytes);
        const RepairResult result = RepairDatabase(Path());
        QCOMPARE(Cards()[hit->number].FachNr, before[hit->number].FachNr);
        QVERIFY(Report(result).contains(u"): Fach war unbrauchbar und kommt aus dem Index\n"_s));
    }

    void TheReportIsCompared()
    {
        MakeCardFile(Path(), SomeCards(30));
        Sql("DROP INDEX BoxKey; DROP INDEX FrageNr;"
            "UPDATE Lernkarten SET FachNr=9 WHERE FrageNr=1;"
            "UPDATE Lernkarten SET FachLfdNr=1e300 WHERE FrageNr=3;"
            "UPDATE Lernkarten SET FrageNr=5 WHERE FrageNr=4;"
            "UPDATE Lernkarten SET FrageNr=NULL WHERE FrageNr=6;"
            "UPDATE Lernkarten SET Picturewidth=99999,Frage='a'||char(0)||'b' WHERE FrageNr=7");
        QString report = Report(RepairDatabase(Path()));
        report.replace(QRegularExpression("\\d\\d\\.\\d\\d\\.\\d{4} \\d\\d:\\d\\d"), "TAG");
        QCOMPARE(
            report,
            QString(
                "Bericht über die Reparatur einer Kartei\n"
                "\n"
                "Kartei:                  Kasten.pzb\n"
                "Repariert am:            TAG\n"
                "Beschädigte Datei:       Kasten.pzb.beschädigt (unverändert aufgehoben)\n"
                "\n"
                "Gerettet:                30 Karten\n"
                "  ohne Beanstandung:     25 Karten\n"
                "  lückenhaft:            0 Karten\n"
                "  zweifelhafter Inhalt:  1 Karte\n"
                "  neu eingeordnet:       4 Karten\n"
                "Nicht gerettet:          keine Karte bekannt\n"
                "\n"
                "Karten mit zweifelhaftem Inhalt\n"
                "Sie sind so aufgehoben, wie sie in der Datei standen. Bitte nachsehen.\n"
                "Karte 7 („Frage 7“): Picturewidth hatte den unbrauchbaren Wert 99999 und "
                "steht jetzt auf 0; Frage enthält Nullzeichen; Frage („ab“) und Frage Klartext („Frage“) "
                "sagen Verschiedenes, beide sind aufgehoben\n"
                "\n"
                "Neu eingeordnete Karten\n"
                "Ihr Inhalt ist, wie er war; Nummer, Fach oder Platz waren nicht zu "
                "gebrauchen.\n"
                "Karte 1 („Frage 1“): Fach war unbrauchbar, liegt jetzt in „Neu“; Platz war unbrauchbar oder "
                "besetzt, liegt jetzt hinten in Fach 0\n"
                "Karte 3 („Frage 3“): Platz war unbrauchbar oder besetzt, liegt jetzt hinten in Fach 3\n"
                "Karte 31 („Frage 6“): Nummer war unbrauchbar oder schon vergeben, neu vergeben\n"
                "Karte 32 („Frage 4“): Nummer (5) war unbrauchbar oder schon vergeben, neu vergeben\n"));
    }

    void TwoCardsWithOneNumberAreBothKept()
    {
        MakeCardFile(Path(), SomeCards(20));
        Sql("DROP INDEX FrageNr; UPDATE Lernkarten SET FrageNr=5 WHERE FrageNr=12");
        const RepairResult result = RepairDatabase(Path());
        QCOMPARE(result.cards, 20);
        const auto cards = Cards();
        QCOMPARE(cards[5].Frage, u"Frage 12"_s); // the newer row
        QCOMPARE(cards[21].Frage, u"Frage 5"_s);
        QVERIFY(Report(result).contains(
            u"Karte 21 („Frage 5“): Nummer (5) war unbrauchbar oder schon vergeben, neu vergeben\n"_s));
    }

    void OneCardInTwoRowsIsKeptOnce()
    {
        MakeCardFile(Path(), SomeCards(20));
        Sql("DROP INDEX FrageNr; DROP INDEX BoxKey; INSERT INTO Lernkarten SELECT * FROM Lernkarten WHERE "
            "FrageNr=7");
        QCOMPARE(RepairDatabase(Path()).cards, 20);
        QCOMPARE(Cards()[7].Frage, u"Frage 7"_s);
    }

    void TwoCardsOnOnePlaceSendTheLaterToTheBack()
    {
        MakeCardFile(Path(), SomeCards(30));
        Sql("DROP INDEX BoxKey; UPDATE Lernkarten SET FachNr=3, FachLfdNr=3 WHERE FrageNr=8");
        const RepairResult result = RepairDatabase(Path());
        const auto cards = Cards();
        QCOMPARE(cards.size(), 30);
        QCOMPARE(cards[3].FachLfdNr, 3.0);
        QCOMPARE(cards[8].FachNr, 3.0);
        QCOMPARE(cards[8].FachLfdNr, 25.0); // behind 24, the last one there
        QVERIFY(Report(result).contains(
            u"Karte 8 („Frage 8“): Platz war unbrauchbar oder besetzt, liegt jetzt hinten in Fach 3\n"_s));
    }

    void FullCompartmentIsClosedUp()
    {
        MakeCardFile(Path(), SomeCards(30));
        Sql("DROP INDEX BoxKey; UPDATE Lernkarten SET FachLfdNr=32767 WHERE FrageNr IN (24, 10)");
        RepairDatabase(Path());
        const auto cards = Cards();
        QList<int> numbers;
        for (const CardRecord &card : ReadCards(Path()))
            if (card.FachNr == 3)
                numbers << static_cast<int>(card.FrageNr);
        QCOMPARE(numbers, (QList<int>{3, 17, 10, 24}));
        QCOMPARE(cards[24].FachLfdNr, 4.0);
    }

    void UnusableKeysAreMendedAndNamed()
    {
        MakeCardFile(Path(), SomeCards(30));
        Sql("DROP INDEX BoxKey; DROP INDEX FrageNr;"
            "UPDATE Lernkarten SET FachNr=9 WHERE FrageNr=1; UPDATE Lernkarten SET FachNr=NULL WHERE "
            "FrageNr=2;"
            "UPDATE Lernkarten SET FachLfdNr=1e300 WHERE FrageNr=3;"
            "UPDATE Lernkarten SET FrageNr=2.5 WHERE FrageNr=4; UPDATE Lernkarten SET FrageNr=NULL WHERE "
            "FrageNr=5;"
            "UPDATE Lernkarten SET FachNr=2.5 WHERE FrageNr=6; UPDATE Lernkarten SET Picturewidth=99999 "
            "WHERE FrageNr=7");
        const RepairResult result = RepairDatabase(Path());
        QCOMPARE(result.cards, 30);
        const auto cards = Cards();
        for (const int number : {1, 2, 6})
            QCOMPARE(cards[number].FachNr, 0.0);
        QCOMPARE(cards[3].FachNr, 3.0);
        QCOMPARE(cards[3].FachLfdNr, 25.0);
        QCOMPARE(cards[7].Picturewidth, 0.0);
        QVERIFY(!cards.contains(4) && !cards.contains(5));
        QCOMPARE(QSet<QString>({cards[31].Frage, cards[32].Frage}),
                 QSet<QString>({u"Frage 4"_s, u"Frage 5"_s}));
        const QString report = Report(result);
        QVERIFY(report.contains(u"Karte 1 („Frage 1“): Fach war unbrauchbar, liegt jetzt in „Neu“"_s));
        QVERIFY(report.contains(u"Picturewidth hatte den unbrauchbaren Wert 99999"_s));
    }

    void DoubtfulContentIsKeptAndNamed()
    {
        MakeCardFile(Path(), SomeCards(10));
        Sql("UPDATE Lernkarten SET Antwort_1=CAST(x'4142C3FF43' AS TEXT) WHERE FrageNr=1;"
            "UPDATE Lernkarten SET Frage='{\\rtf1 offen {' WHERE FrageNr=2;"
            "UPDATE Lernkarten SET Frage='{\\rtf1 zu \\} }'||char(13,10),Frage_Klartext='zu }' WHERE "
            "FrageNr=3;"
            "UPDATE Lernkarten SET Picture_1_Name=replace(hex(zeroblob(200)),'0','ü') WHERE FrageNr=4");
        DestroyFirstPage();
        const RepairResult result = RepairDatabase(Path());
        QCOMPARE(result.cards, 10);
        SQLite::Database database(Path().toStdString(), SQLite::OPEN_READONLY);
        QCOMPARE(database.execAndGet("SELECT hex(Antwort_1) FROM Lernkarten WHERE FrageNr=1").getString(),
                 std::string("4142C3FF43"));
        QCOMPARE(
            database.execAndGet("SELECT length(Picture_1_Name) FROM Lernkarten WHERE FrageNr=4").getInt(),
            400);
        const QString report = Report(result);
        QVERIFY(report.contains(u"Karte 1 („Frage 1“): Antwort 1 enthält unlesbare Zeichen"_s));
        QVERIFY(report.contains(u"Frage ist kein geschlossener RTF-Text"_s));
        QVERIFY(!report.contains(u"Karte 3"_s));
        QVERIFY(report.contains(u"Picture 1 Name ist länger als 250 Zeichen"_s));
        QVERIFY(report.contains(u"zweifelhafter Inhalt:  3 Karten"_s));
        QVERIFY2(result.summary.contains(u"; 3 davon haben zweifelhaften Inhalt."_s),
                 qPrintable(result.summary));
    }

    void BrokenChainKeepsWhatStandsBeforeTheBreak()
    {
        CardRecord longCard = MakeCard(4, 1, 40);
        longCard.Antwort_1 = u"größer "_s.repeated(3000);
        longCard.Antwort_1_Klartext = u"Ende "_s.repeated(1000);
        MakeCardFile(Path(), {MakeCard(1, 0, 1), longCard, MakeCard(9, 0, 2)});
        QByteArray bytes = ReadFile(Path());
        const qint64 page = bytes.lastIndexOf("größer") / 4096;
        bytes.replace(page * 4096, 4096, QByteArray(4096, '\0'));
        WriteFile(Path(), bytes);
        const RepairResult result = RepairDatabase(Path());
        QCOMPARE(result.cards, 3);
        const CardRecord card = Cards()[4];
        QCOMPARE(card.Frage, longCard.Frage);
        QVERIFY(card.Antwort_1.size() > 5000 && card.Antwort_1.size() < longCard.Antwort_1.size());
        QVERIFY(longCard.Antwort_1.startsWith(card.Antwort_1));
        QCOMPARE(card.Antwort_1_Klartext, QString());
        const QString report = Report(result);
        QVERIFY(report.contains(u"lückenhaft:            1 Karte\n"_s));
        QVERIFY(report.contains(
            u"\nLückenhafte Karten\nWas nicht mehr zu lesen war, fehlt; nichts wurde ergänzt.\n"
            u"Karte 4 („Frage 4“): Antwort 1 bricht ab; Antwort 1 Klartext fehlt\n"_s));
    }

    void LostCardsAreNamedFromTheIndex()
    {
        const Box box = MakeBox(directory_->path(), {.cards = 300});
        QByteArray bytes = box.bytes;
        const qint64 page = box.cards[100].extents.first().from / 4096;
        bytes.replace(page * 4096, 4096, QByteArray(4096, '\0'));
        QStringList lost;
        for (const CardTruth &card : box.cards)
            if (card.extents.first().from / 4096 == page)
                lost << QString::number(card.number);
        WriteFile(Path(), bytes);
        const RepairResult result = RepairDatabase(Path());
        QCOMPARE(result.cards, box.cards.size() - lost.size());
        QVERIFY(Report(result).contains(u"\nNicht gerettet\nVon diesen Karten ist nur noch die "
                                        u"Nummer bekannt: "_s +
                                        lost.join(u", "_s) + u'\n'));
    }

    // Of two states of a card's page the one is taken that fits its sum, whatever the tree says.
    void WhatStandsOnAPageThatFitsItsSumIsPreferred()
    {
        const Box box = MakeBox(directory_->path(), {.cards = 1000});
        const CardTruth &card = box.cards[100];
        const qint64 page = card.extents.first().from / 4096 * 4096;
        QByteArray bytes = box.bytes;
        bytes.replace(qint64(box.freePages.last() - 1) * 4096, 4096, bytes.mid(page, 4096));
        const qint64 letter = bytes.indexOf(card.marker.left(4), card.extents.first().from);
        QVERIFY(letter > 0 && letter < card.extents.first().to);
        bytes[letter] = static_cast<char>(bytes[letter] ^ 2);
        WriteFile(Path(), bytes);
        const RepairResult result = RepairDatabase(Path());
        QCOMPARE(result.cards, box.cards.size());
        QCOMPARE(ReadDigests(Path()).value(card.marker), card.digest);
        QVERIFY(Report(result).contains(
            u"\nBei 1 von %1 Seiten der Datei stimmt die Prüfsumme nicht.\n"_s.arg(bytes.size() / 4096)));
    }

    void CardsOnPagesThatDoNotFitTheirSumsAreNamed()
    {
        const Box box = MakeBox(directory_->path(), {.cards = 300});
        const CardTruth &card = box.cards[100];
        QByteArray bytes = box.bytes;
        const qint64 page = card.extents.first().from / 4096;
        const qint64 inside = card.extents.first().to - 5; // of the card's last text
        bytes[inside] = static_cast<char>(bytes[inside] ^ 1);
        WriteFile(Path(), bytes);
        const RepairResult result = RepairDatabase(Path());
        QCOMPARE(result.cards, box.cards.size());
        const QString report = Report(result);
        for (const CardTruth &other : box.cards) {
            const bool hit = std::any_of(other.extents.begin(), other.extents.end(),
                                         [&](const auto &extent) { return extent.from / 4096 == page; });
            const QRegularExpression line(
                u"\nKarte %1( \\(„.*“\\))?: .*Seite, deren Prüfsumme nicht stimmt\n"_s.arg(other.number));
            QCOMPARE(report.contains(line), hit);
        }
    }

    // Another program that writes the file anew keeps the room for sums and fills none in.
    void AFileThatAnotherProgramWroteAnewGivesAllCardsWithoutDoubts()
    {
        MakeCardFile(Path(), SomeCards(200));
        const auto before = Cards();
        QProcess other;
        other.start("sqlite3", {Path(), "VACUUM"});
        QVERIFY(other.waitForFinished());
        const RepairResult result = RepairDatabase(Path());
        QCOMPARE(result.cards, 200);
        QCOMPARE(result.summary, QString());
        const auto pages = QFileInfo(result.damagedFile).size() / 4096;
        QVERIFY(Report(result).contains(
            u"\nBei %1 von %1 Seiten der Datei stimmt die Prüfsumme nicht.\nDer Datenträger hat etwas "
            u"verändert, "
            u"oder ein Programm, das keine Prüfsummen kennt, hat in die Datei geschrieben.\n"_s.arg(pages)));
        QCOMPARE(Cards(), before);
    }

    // What the journal keeps is rolled back all the same; the page with the changed letter is known.
    void AChangedLetterInAJournalIsNamedAndCostsNoCard()
    {
        const Box box = MakeBox(directory_->path(), {.cards = 300});
        const Box amid = AmidTransaction(directory_->path(), box);
        QByteArray journal = amid.journal;
        const auto hit = std::find_if(box.cards.begin(), box.cards.end(), [&](const CardTruth &card) {
            return journal.contains(card.marker) &&
                   amid.bytes.indexOf(card.marker) != box.bytes.indexOf(card.marker);
        });
        QVERIFY(hit != box.cards.end());
        const qsizetype letter = journal.indexOf(hit->marker) - 1;
        journal[letter] = static_cast<char>(journal[letter] ^ 2);
        WriteFile(Path(), amid.bytes);
        WriteFile(Path(u"Kasten.pzb-journal"_s), journal);
        const RepairResult result = RepairDatabase(Path());
        QCOMPARE(result.cards, box.cards.size());
        const QString report = Report(result);
        QVERIFY(
            report.contains(u"Ein Schreibvorgang war nicht zu Ende gekommen; er wurde zurückgenommen."_s));
        QVERIFY2(report.contains(u"\nBei 1 von "_s), qPrintable(report));
        const QRegularExpression line(
            u"\nKarte %1( \\(„.*“\\))?: .*Seite, deren Prüfsumme nicht stimmt\n"_s.arg(hit->number));
        QVERIFY2(report.contains(line), qPrintable(report));
        const auto found = ReadDigests(Path());
        for (const CardTruth &card : box.cards)
            if (card.number != hit->number)
                QCOMPARE(found.value(card.marker), card.digest);
    }

    void AnOlderFileGetsItsSumsWithTheRepair()
    {
        MakeFormerCardFile(Path(), SomeCards(20));
        DestroyFirstPage();
        RepairDatabase(Path());
        QVERIFY(!CardFile(Path()).LacksPageSums());
        QCOMPARE(static_cast<int>(ReadFile(Path())[20]), 8);
    }

    void AContradictionOfTheTwoFormsOfATextIsNamedAndBothAreKept()
    {
        MakeFormerCardFile(Path(), SomeCards(6));
        Sql("UPDATE Lernkarten SET Frage='{\\rtf1\\ansi {\\b der} H\\''fcndchen\\par ist hier\\par}',"
            "Frage_Klartext='der Hündchen'||char(13,10)||'ist  hier' WHERE FrageNr=1;"
            "UPDATE Lernkarten SET Antwort_1='{\\rtf1 der Hund}',Antwort_1_Klartext='der Hand' WHERE "
            "FrageNr=2;"
            "UPDATE Lernkarten SET Antwort_1='' WHERE FrageNr=3;"
            "UPDATE Lernkarten SET Frage_Klartext='Frage' WHERE FrageNr=4");
        DestroyFirstPage();
        const RepairResult result = RepairDatabase(Path());
        const QString report = Report(result);
        QVERIFY2(report.contains(
                     u"\nKarte 2 („Frage 2“): Antwort 1 („Hund“) und Antwort 1 Klartext („Hand“) sagen "
                     u"Verschiedenes, beide sind aufgehoben\n"
                     u"Karte 4 („Frage“): Frage („4“) und Frage Klartext (nichts) sagen Verschiedenes, "
                     u"beide sind aufgehoben\n"_s),
                 qPrintable(report));
        QVERIFY(report.contains(u"zweifelhafter Inhalt:  2 Karten"_s));
        const auto cards = Cards();
        QCOMPARE(cards[2].Antwort_1, u"{\\rtf1 der Hund}"_s);
        QCOMPARE(cards[2].Antwort_1_Klartext, u"der Hand"_s);
        QCOMPARE(cards[4].Frage_Klartext, u"Frage"_s);
    }

    void DeletedCardsStayDeletedWhereTheEngineDidNotWipe()
    {
        const Box box = MakeBox(directory_->path(), {.cards = 1000, .secureDelete = false});
        QVERIFY(std::any_of(box.deletedMarkers.begin(), box.deletedMarkers.end(),
                            [&](const QByteArray &marker) { return box.bytes.contains(marker); }));
        const auto damage = [&](int kind, QByteArray &bytes) {
            const QList<int> pages = kind == 0   ? box.tableInteriors
                                     : kind == 1 ? box.indexPages
                                     : kind == 2 ? box.tableLeaves.mid(10, 3)
                                                 : QList<int>();
            for (const int page : pages)
                bytes.replace(qint64(page - 1) * 4096, 8, QByteArray(8, '\x77'));
            if (kind == 3)
                bytes.replace(32, 8, QByteArray(8, '\0')); // the free list
        };
        for (int kind = 0; kind < 4; ++kind) {
            QByteArray bytes = box.bytes;
            damage(kind, bytes);
            WriteFile(Path(), bytes);
            RepairDatabase(Path());
            const auto found = ReadDigests(Path());
            QCOMPARE(found.size(), box.cards.size());
            for (const CardTruth &card : box.cards)
                QCOMPARE(found.value(card.marker), card.digest);
        }
    }

    void NumbersGivenAgainAreNotDeniedByAnOldIndexPage()
    {
        constexpr int PageSize = 4096, Index = 3; // the page of "FrageNr", which is one leaf here
        MakeCardFile(Path(), SomeCards(100));
        Sql("DELETE FROM Lernkarten WHERE FrageNr=98");
        const QByteArray old = ReadFile(Path()).mid((Index - 1) * PageSize, PageSize);
        QCOMPARE(old[0], '\x0a');
        Sql("DELETE FROM Lernkarten WHERE FrageNr>98");
        for (const std::string number : {"98", "99", "100"})
            Sql("INSERT INTO Lernkarten(FrageNr,FachNr,FachLfdNr,Frage) VALUES(" + number + ",0," + number +
                ",'neu')");
        const QList<CardRecord> before = ReadCards(Path());
        WriteFile(Path(), ReadFile(Path()) + old);
        const RepairResult result = RepairDatabase(Path());
        QCOMPARE(result.cards, 100);
        QCOMPARE(ReadCards(Path()), before);
    }

    void AnotherTableOfTheSameShapeIsNoCardTable()
    {
        MakeCardFile(Path(), SomeCards(200));
        Sql("CREATE TABLE Sicherung AS SELECT * FROM Lernkarten;"
            "UPDATE Sicherung SET Frage='alt'; DELETE FROM Lernkarten WHERE FrageNr > 150; DROP INDEX "
            "BoxKey");
        RepairDatabase(Path());
        const auto cards = Cards();
        QCOMPARE(cards.size(), 150);
        QCOMPARE(cards[7].Frage, u"Frage 7"_s);
    }

    void TableLaidOutOtherwiseIsReadThroughTheEngine()
    {
        MakeCardFile(Path(), SomeCards(100));
        Sql("ALTER TABLE Lernkarten ADD COLUMN Zusatz TEXT; UPDATE Lernkarten SET Zusatz='x'; DROP INDEX "
            "FrageNr");
        QCOMPARE(RepairDatabase(Path()).cards, 100);
        QCOMPARE(Cards()[42].Antwort_1_Klartext, u"Antwort 42"_s);
    }

    // Then the one table is read through the engine, which knows the row by its place only.
    void CardWithoutNumberInATableLaidOutOtherwiseGetsOne()
    {
        MakeCardFile(Path(), SomeCards(10));
        Sql("ALTER TABLE Lernkarten ADD COLUMN Zusatz TEXT; UPDATE Lernkarten SET Zusatz='x';"
            "UPDATE Lernkarten SET FrageNr=NULL WHERE FrageNr=4");
        QCOMPARE(RepairDatabase(Path()).cards, 10);
        QCOMPARE(Cards()[11].Frage, u"Frage 4"_s);
    }

    // As a write that went astray leaves it: the index still knows all, the tree leads to one leaf.
    void RootsOverwrittenByTheirLeavesCostNothing()
    {
        MakeCardFile(Path(), SomeCards(2000));
        QByteArray bytes = ReadFile(Path());
        const auto put = [&](int root, char kind) {
            for (qint64 page = 5 * 4096; page < bytes.size(); page += 4096)
                if (bytes[page] == kind) {
                    bytes.replace((root - 1) * 4096, 4096, bytes.mid(page, 4096));
                    return;
                }
        };
        put(2, '\x0d');
        put(3, '\x0a');
        WriteFile(Path(), bytes);
        const RepairResult result = RepairDatabase(Path());
        QCOMPARE(result.cards, 2000);
        QCOMPARE(result.summary, QString());
    }

    // A failing medium gives a block once and zeros from then on.
    void CardsThatCannotBeReadAgainAreNotWhole()
    {
        MakeCardFile(Path(), SomeCards(2000));
        const qint64 size = QFileInfo(Path()).size();
        QFile file(Path());
        QVERIFY(file.open(QIODevice::ReadOnly));
        const PageReader reader(file.handle(), size, PageGeometry{});
        const CardSurvey sound(reader);
        QCOMPARE(sound.Cards().size(), 2000U);
        QVERIFY(sound.Cards().front().whole && !sound.Read(sound.Cards().front()).bytes.empty());
        // The first cards are found, then the pages turn to zeros.
        int pages = 0;
        const auto fail = [&](int page, int) {
            pages += page == ProgressSteps ? 1 : 0;
            if (pages == 4) // after the trees and the indexes
                WriteFile(Path(), QByteArray(size, '\0'));
        };
        const CardSurvey failing(reader, fail);
        QVERIFY(!failing.Cards().empty());
        for (const CardCell &card : failing.Cards())
            QVERIFY(!card.whole);
        for (const CardCell &card : sound.Cards())
            QVERIFY(sound.Read(card).bytes.empty());
    }

    void SummaryNamesWhatIsLostAndIncomplete()
    {
        QCOMPARE(LossText(5, u"gerettet"_s, {}), QString());
        QCOMPARE(LossText(8, u"gerettet"_s, {.lost = 1992}),
                 u"8 Karten wurden gerettet; Spuren von 1.992 weiteren ließen sich nicht mehr lesen."_s);
        QCOMPARE(LossText(1, u"gerettet"_s, {.lost = 1, .incomplete = 1, .uncertain = 1}),
                 u"1 Karte wurde gerettet; 1 davon ist lückenhaft; 1 davon ist ungewiss; "
                 u"Spuren von 1 weiteren Karte ließen sich nicht mehr lesen."_s);
        QCOMPARE(LossText(9, u"gerettet"_s, {.doubtful = 1}),
                 u"9 Karten wurden gerettet; 1 davon hat zweifelhaften Inhalt."_s);
        QCOMPARE(LossText(9, u"gerettet"_s, {.doubtful = 2}),
                 u"9 Karten wurden gerettet; 2 davon haben zweifelhaften Inhalt."_s);
        QCOMPARE(LossText(1000, u"gerettet"_s, {.incomplete = 2, .uncertain = 3}),
                 u"1.000 Karten wurden gerettet; 2 davon sind lückenhaft; 3 davon sind ungewiss."_s);
    }

    void TextsInUtf16AreRead_data()
    {
        QTest::addColumn<QString>("encoding");
        QTest::newRow("little endian") << u"UTF-16le"_s;
        QTest::newRow("big endian") << u"UTF-16be"_s;
    }

    void TextsInUtf16AreRead()
    {
        QFETCH(QString, encoding);
        MakeCardFile(Path(), SomeCards(50));
        const QList<CardRecord> before = ReadCards(Path());
        // A database keeps its encoding: the rows are carried over into another one.
        SQLite::Database to(Path(u"anders.pzb"_s).toStdString(),
                            SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
        to.exec("PRAGMA encoding='" + encoding.toStdString() + "'");
        {
            SQLite::Database from(Path().toStdString(), SQLite::OPEN_READONLY);
            to.exec(from.execAndGet("SELECT sql FROM sqlite_schema WHERE type='table'").getString());
            SQLite::Statement rows(from, "SELECT * FROM Lernkarten");
            SQLite::Statement insert(to, "INSERT INTO Lernkarten VALUES(" +
                                             u"?,"_s.repeated(51).toStdString() + "?)");
            SQLite::Transaction transaction(to);
            while (rows.executeStep()) {
                for (int i = 0; i < CardColumnCount; ++i)
                    if (rows.getColumn(i).isText())
                        insert.bind(i + 1, rows.getColumn(i).getString());
                    else if (!rows.getColumn(i).isNull())
                        insert.bind(i + 1, rows.getColumn(i).getDouble());
                insert.exec();
                insert.reset();
                insert.clearBindings();
            }
            transaction.commit();
        }
        QFile::remove(Path());
        QVERIFY(QFile::copy(Path(u"anders.pzb"_s), Path()));
        DestroyFirstPage();
        QCOMPARE(RepairDatabase(Path()).cards, 50);
        QCOMPARE(ReadCards(Path()), before);
    }
};

PAUKFIX_CORE_TEST(RepairTest)
#include "RepairTest.moc"
