// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "NeueKartei.h"

#include "FreshFile.h"
#include "TestProgram.h"
#include "VollePlatte.h"
#include "Werkstatt.h"

#include <QTest>

#include <unistd.h>

using namespace paukfix;
using namespace Qt::StringLiterals;

class NeueKarteiTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void TopicsAreListedOnceInBoxOrder();
    void BlankTopicsGatherUnderOneName();
    void LetterCaseMakesTwoTopics();
    void TopicWithALineBreakMatchesItsCards();
    void FilterKeepsChosenCardsAsTheyAre();
    void NoTopicGivesAFileWithoutCards();
    void AllTopicsGiveAPlainCopy();
    void MirrorExchangesSimpleCardsOnly();
    void MirrorKeepsATickCardsQuestionAnswersAndTicks();
    void MirrorKeepsASimpleCardsPlaceInTheBox();
    void MirrorKeepsFormattingAndUnsetTexts();
    void MirroringTwiceGivesTheSameBytes();
    void NewFileIsOpenAndTheOldOneUnchanged();
    void NewFileMayLieInAnotherDirectory();
    void ExistingFileAndItsJournalAreReplaced();
    void OpenFileIsRefusedHoweverItIsSpelled();
    void BoxThatAnotherFileReplacedIsRefused_data();
    void BoxThatAnotherFileReplacedIsRefused();
    void FailureThatTouchesNothingLeavesTheSession_data();
    void FailureThatTouchesNothingLeavesTheSession();
    void TargetInUseIsRefused();
    void FullDiskLeavesTheOldTarget();
    void DiskThatFillsDuringTheWorkLeavesTheOldTarget();
    void WhatAKillLeftIsUsedAgain();
    void WhatTheFileHoldsBesidesIsNotLost();
};

namespace {

QList<CardRecord> ThreeTopics()
{
    QList<CardRecord> cards{MakeCard(1, 3, 1), MakeCard(2, 0, 5), MakeCard(3, 0, 9), MakeCard(4, 6, 2)};
    cards[0].Picture_9_Name = "Tiere";
    cards[1].Picture_9_Name = "Pflanzen";
    cards[2].Picture_9_Name = "Tiere";
    cards[3].Picture_9_Name = "";
    return cards;
}

QStringList TopicsOf(Werkstatt &w)
{
    return Themen(w.store.Karten(), w.store.Felder().Picture_name[8]);
}

} // namespace

void NeueKarteiTest::initTestCase()
{
    VollePlatte::Einbauen();
}

void NeueKarteiTest::TopicsAreListedOnceInBoxOrder()
{
    Werkstatt w;
    w.Oeffnen(ThreeTopics());
    QCOMPARE(TopicsOf(w), (QStringList{"Pflanzen", "Tiere", "<leeres Themafeld>"}));
    Werkstatt leer;
    leer.Oeffnen({});
    QCOMPARE(TopicsOf(leer), QStringList());
}

void NeueKarteiTest::BlankTopicsGatherUnderOneName()
{
    Werkstatt w;
    QList<CardRecord> cards{MakeCard(1, 0, 1), MakeCard(2, 0, 2), MakeCard(3, 0, 3), MakeCard(4, 0, 4)};
    cards[0].Picture_9_Name = "";
    cards[1].Picture_9_Name = "   ";
    cards[2].Picture_9_Name = "\t\r\n";
    cards[3].Picture_9_Name = " a ";
    w.Oeffnen(cards);
    w.store.Karten().Past([](SQLite::Database &database) {
        database.exec("UPDATE Lernkarten SET Picture_9_Name=NULL WHERE FrageNr=1");
    });
    QCOMPARE(TopicsOf(w), (QStringList{"<leeres Themafeld>", " a "}));
    QCOMPARE(ThemenAusfiltern(w.bank, w.Pfad("neu.pzb"), {"<leeres Themafeld>"}), Ausgang::Gelungen);
    QCOMPARE(w.Karten().size(), 3);
}

void NeueKarteiTest::LetterCaseMakesTwoTopics()
{
    Werkstatt w;
    QList<CardRecord> cards{MakeCard(1, 0, 1), MakeCard(2, 0, 2)};
    cards[0].Picture_9_Name = "tiere";
    cards[1].Picture_9_Name = "Tiere";
    w.Oeffnen(cards);
    QCOMPARE(TopicsOf(w), (QStringList{"tiere", "Tiere"}));
    QCOMPARE(ThemenAusfiltern(w.bank, w.Pfad("neu.pzb"), {"Tiere"}), Ausgang::Gelungen);
    QCOMPARE(w.Karten(), QList{cards[1]});
}

void NeueKarteiTest::TopicWithALineBreakMatchesItsCards()
{
    Werkstatt w;
    QList<CardRecord> cards{MakeCard(1, 0, 1), MakeCard(2, 0, 2)};
    cards[0].Picture_9_Name = "große\r\nTiere\tund";
    w.Oeffnen(cards);
    QCOMPARE(TopicsOf(w).front(), "große  Tiere und");
    QCOMPARE(ThemenAusfiltern(w.bank, w.Pfad("neu.pzb"), {"große  Tiere und"}), Ausgang::Gelungen);
    QCOMPARE(w.Karten(), QList{cards[0]});
}

void NeueKarteiTest::FilterKeepsChosenCardsAsTheyAre()
{
    Werkstatt w;
    const QList<CardRecord> cards = ThreeTopics();
    w.Oeffnen(cards);
    QCOMPARE(ThemenAusfiltern(w.bank, w.Pfad("neu.pzb"), {"Tiere"}), Ausgang::Gelungen);
    QVERIFY(w.meldungen.gezeigt.isEmpty());
    QCOMPARE(w.store.CurrentFileName, "neu.pzb");
    QCOMPARE(w.Karten(), (QList{cards[2], cards[0]}));
    QCOMPARE(w.store.FachInfo[0].LfdMax, qint16(9)); // gaps stay
    QCOMPARE(w.store.FachInfo[0].Anzahl, qint16(1));
}

void NeueKarteiTest::NoTopicGivesAFileWithoutCards()
{
    Werkstatt w;
    w.Oeffnen(ThreeTopics());
    QCOMPARE(ThemenAusfiltern(w.bank, w.Pfad("neu.pzb"), {}), Ausgang::Gelungen);
    QCOMPARE(w.store.CurrentFileName, "neu.pzb");
    QVERIFY(w.Karten().isEmpty());
}

void NeueKarteiTest::AllTopicsGiveAPlainCopy()
{
    Werkstatt w;
    w.Oeffnen(ThreeTopics());
    QCOMPARE(ThemenAusfiltern(w.bank, w.Pfad("neu.pzb"), TopicsOf(w)), Ausgang::Gelungen);
    w.store.CloseCardFile();
    QCOMPARE(w.Bytes("neu.pzb"), w.Bytes("offen.pzb"));
}

void NeueKarteiTest::MirrorExchangesSimpleCardsOnly()
{
    Werkstatt w;
    CardRecord simple = MakeCard(1, 4, 7);
    simple.Antwort_2 = "bleibt";
    CardRecord ticks = MakeCard(2, 0, 1);
    ticks.Antworttyp = 2;
    ticks.Antwort_3 = "drei";
    ticks.Antwort_ch_3 = true;
    w.Oeffnen({simple, ticks});
    QCOMPARE(KarteiSpiegeln(w.bank, w.Pfad("neu.pzb")), Ausgang::Gelungen);
    std::swap(simple.Frage, simple.Antwort_1);
    std::swap(simple.Frage_Klartext, simple.Antwort_1_Klartext);
    QCOMPARE(w.Karten(), (QList{ticks, simple}));
    QVERIFY(w.meldungen.gezeigt.isEmpty());
}

void NeueKarteiTest::MirrorKeepsATickCardsQuestionAnswersAndTicks()
{
    Werkstatt w;
    CardRecord ticks = MakeCard(1, 2, 3);
    ticks.Antworttyp = 2;
    ticks.Antwort_1_Klartext = ticks.Antwort_1 = "eins";
    ticks.Antwort_2_Klartext = ticks.Antwort_2 = "zwei";
    ticks.Antwort_3_Klartext = ticks.Antwort_3 = "drei";
    ticks.Antwort_4_Klartext = ticks.Antwort_4 = "vier";
    ticks.Antwort_5_Klartext = ticks.Antwort_5 = "fünf";
    ticks.Antwort_ch_1 = ticks.Antwort_ch_3 = ticks.Antwort_ch_5 = true;
    w.Oeffnen({ticks});
    QCOMPARE(KarteiSpiegeln(w.bank, w.Pfad("neu.pzb")), Ausgang::Gelungen);
    QCOMPARE(w.Karten(), QList{ticks});
}

void NeueKarteiTest::MirrorKeepsASimpleCardsPlaceInTheBox()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(7, 0, 12), MakeCard(3, 4, 9)});
    QCOMPARE(KarteiSpiegeln(w.bank, w.Pfad("neu.pzb")), Ausgang::Gelungen);
    const QList<CardRecord> cards = w.Karten();
    QCOMPARE(cards.size(), 2);
    QCOMPARE(cards[0].FrageNr, 7);
    QCOMPARE(cards[0].FachNr, 0);
    QCOMPARE(cards[0].FachLfdNr, 12);
    QCOMPARE(cards[0].Frage_Klartext, "Antwort 7");
    QCOMPARE(cards[1].FrageNr, 3);
    QCOMPARE(cards[1].FachNr, 4);
    QCOMPARE(cards[1].FachLfdNr, 9);
    QCOMPARE(cards[1].Antwort_1_Klartext, "Frage 3");
    QCOMPARE(w.store.FachInfo[4].LfdMax, qint16(9));
}

void NeueKarteiTest::MirrorKeepsFormattingAndUnsetTexts()
{
    Werkstatt w;
    CardRecord card = MakeCard(1, 0, 1);
    card.Antwort_1 = R"({\rtf1\ansi {\b dog}\par})";
    w.Oeffnen({card, MakeCard(2, 0, 2)});
    w.store.Karten().Past([](SQLite::Database &database) {
        database.exec("UPDATE Lernkarten SET Antwort_1=NULL, Antwort_1_Klartext=NULL WHERE FrageNr=2");
    });
    QCOMPARE(KarteiSpiegeln(w.bank, w.Pfad("neu.pzb")), Ausgang::Gelungen);
    w.store.Karten().MoveFirst();
    QCOMPARE(w.store.Felder().Frage.Text(), card.Antwort_1);
    w.store.Karten().MoveNext();
    QVERIFY(w.store.Felder().Frage.IsNull());
    QVERIFY(w.store.Felder().Frage_Klartext.IsNull());
    QCOMPARE(w.store.Felder().Antwort[0].Text(), "Frage 2");
}

void NeueKarteiTest::MirroringTwiceGivesTheSameBytes()
{
    Werkstatt w;
    QList<CardRecord> cards;
    for (int i = 1; i <= 200; ++i)
        cards << MakeCard(i, i % 7, i);
    w.Oeffnen(cards);
    // Also what no program of ours writes: bytes that are no UTF-8, blobs, numbers.
    w.store.Karten().Past([](SQLite::Database &database) {
        database.exec(
            "UPDATE Lernkarten SET Frage=x'00ff41', Antwort_1=CAST(x'c328' AS TEXT) WHERE FrageNr=7");
    });
    const auto fields = [&] {
        QStringList all;
        w.store.Karten().Past([&](SQLite::Database &database) {
            SQLite::Statement read(database, "SELECT typeof(Frage)||hex(Frage)||hex(Frage_Klartext)||"
                                             "typeof(Antwort_1)||hex(Antwort_1)||hex(Antwort_1_Klartext) "
                                             "FROM Lernkarten ORDER BY FrageNr");
            while (read.executeStep())
                all << QString::fromUtf8(read.getColumn(0).getText());
        });
        return all;
    };
    const QStringList before = fields();
    QCOMPARE(KarteiSpiegeln(w.bank, w.Pfad("eins.pzb")), Ausgang::Gelungen);
    QVERIFY(fields() != before);
    QCOMPARE(KarteiSpiegeln(w.bank, w.Pfad("zwei.pzb")), Ausgang::Gelungen);
    QCOMPARE(fields(), before);
}

void NeueKarteiTest::NewFileIsOpenAndTheOldOneUnchanged()
{
    Werkstatt w;
    MakeCardFile(w.Pfad("alt.pzb"), ThreeTopics());
    const QByteArray before = w.Bytes("alt.pzb");
    QString name = "alt.pzb";
    w.oeffner.OpenCardFile(name);
    QCOMPARE(KarteiSpiegeln(w.bank, w.Pfad("neu.pzb")), Ausgang::Gelungen);
    QCOMPARE(w.Bytes("alt.pzb"), before);
    QCOMPARE(w.store.CurrentFileName, "neu.pzb");
    QCOMPARE(w.meldungen.Titel(), "Merkkasten (neu.pzb)");
    QCOMPARE(w.store.FehlerStatus, qint16(0));
    QCOMPARE(w.Dateien(), (QStringList{"alt.pzb", "neu.pzb"}));
}

void NeueKarteiTest::NewFileMayLieInAnotherDirectory()
{
    Werkstatt w;
    QVERIFY(QDir(w.verzeichnis.path()).mkdir("weg"));
    w.Oeffnen(ThreeTopics());
    QCOMPARE(KarteiSpiegeln(w.bank, "weg/getippt.pzb"), Ausgang::Gelungen);
    QCOMPARE(w.store.KarteiPfad, w.Pfad("weg"));
    QCOMPARE(w.store.CurrentFileName, "getippt.pzb");
    QVERIFY(w.store.IsOpen());
}

void NeueKarteiTest::ExistingFileAndItsJournalAreReplaced()
{
    Werkstatt w;
    w.Oeffnen(ThreeTopics());
    MakeCardFile(w.Pfad("neu.pzb"), {MakeCard(99, 0, 1)});
    w.Schreiben("neu.pzb-journal", "stale");
    QCOMPARE(ThemenAusfiltern(w.bank, w.Pfad("neu.pzb"), {"Tiere"}), Ausgang::Gelungen);
    QCOMPARE(w.Karten().size(), 2);
    QCOMPARE(w.Dateien(), (QStringList{"neu.pzb", "offen.pzb"}));
}

void NeueKarteiTest::OpenFileIsRefusedHoweverItIsSpelled()
{
    Werkstatt w;
    w.Oeffnen(ThreeTopics());
    QVERIFY(QFile::link(w.Pfad("offen.pzb"), w.Pfad("weich.pzb")));
    QCOMPARE(::link(qPrintable(w.Pfad("offen.pzb")), qPrintable(w.Pfad("hart.pzb"))), 0);
    const qint32 openings = w.oeffner.verzoegerung.LoopsPerSecond;
    for (const QString &spelled : {w.Pfad("offen.pzb"), w.Pfad("weich.pzb"), w.Pfad("hart.pzb"),
                                   w.Pfad(".//offen.pzb"), u"offen.pzb"_s}) {
        w.meldungen.gezeigt.clear();
        QCOMPARE(KarteiSpiegeln(w.bank, spelled), Ausgang::Gescheitert);
        QVERIFY(MeldetFehler(w.meldungen));
        QCOMPARE(ThemenAusfiltern(w.bank, spelled, {}), Ausgang::Gescheitert);
        QVERIFY(w.meldungen.Texte().last().contains("ist die Kartei, die gerade geöffnet ist"));
    }
    QCOMPARE(w.oeffner.verzoegerung.LoopsPerSecond, openings); // never closed
    QCOMPARE(w.Karten().size(), 4);
}

void NeueKarteiTest::BoxThatAnotherFileReplacedIsRefused_data()
{
    QTest::addColumn<bool>("mirror");
    QTest::addColumn<bool>("replaced");
    QTest::newRow("mirror, replaced") << true << true;
    QTest::newRow("filter, replaced") << false << true;
    QTest::newRow("mirror, gone") << true << false;
    QTest::newRow("filter, gone") << false << false;
}

void NeueKarteiTest::BoxThatAnotherFileReplacedIsRefused()
{
    QFETCH(bool, mirror);
    QFETCH(bool, replaced);
    Werkstatt w;
    w.Oeffnen(ThreeTopics());
    QVERIFY(QFile::rename(w.Pfad("offen.pzb"), w.Pfad("weg.pzb")));
    if (replaced)
        MakeCardFile(w.Pfad("offen.pzb"), {MakeCard(77, 0, 1)});
    const Ausgang ausgang = mirror ? KarteiSpiegeln(w.bank, w.Pfad("neu.pzb"))
                                   : ThemenAusfiltern(w.bank, w.Pfad("neu.pzb"), {"Tiere"});
    QCOMPARE(ausgang, Ausgang::Gescheitert);
    QCOMPARE(
        w.meldungen.Texte().front(),
        "Leider ist folgender Fehler Aufgetreten: Die Datei „" + w.Pfad("offen.pzb") +
            "“ wurde gelöscht, umbenannt oder ersetzt, während sie offen war. Es wurde nichts übernommen.");
    QVERIFY(!w.Dateien().contains("neu.pzb"));
    QCOMPARE(ReadCards(w.Pfad("weg.pzb")).size(), 4);
    // Box and file agree again.
    QCOMPARE(w.store.IsOpen(), replaced);
    if (replaced)
        QCOMPARE(w.Karten(), QList{MakeCard(77, 0, 1)});
}

void NeueKarteiTest::FailureThatTouchesNothingLeavesTheSession_data()
{
    QTest::addColumn<QString>("target");
    QTest::newRow("directory missing") << "fehlt/neu.pzb";
    QTest::newRow("target is a directory") << "ordner";
    QTest::newRow("no name") << "";
    QTest::newRow("name too long") << QString(300, QChar('n')) + ".pzb";
    QTest::newRow("name too long for a journal") << QString(246, QChar('n')) + ".pzb";
}

void NeueKarteiTest::FailureThatTouchesNothingLeavesTheSession()
{
    QFETCH(QString, target);
    Werkstatt w;
    QVERIFY(QDir(w.verzeichnis.path()).mkpath("ordner/darin"));
    w.Oeffnen(ThreeTopics());
    for (int i = 0; i < 5; ++i)
        w.store.sitzung.Zaehlen(true);
    const qint32 openings = w.oeffner.verzoegerung.LoopsPerSecond;
    QCOMPARE(KarteiSpiegeln(w.bank, target.isEmpty() ? target : w.Pfad(target)), Ausgang::Gescheitert);
    QVERIFY(MeldetFehler(w.meldungen));
    QVERIFY(w.store.IsOpen());
    QCOMPARE(w.store.sitzung.RichtigZaehler(), qint16(5));
    QCOMPARE(w.oeffner.verzoegerung.LoopsPerSecond, openings); // never closed
    QCOMPARE(w.store.CurrentFileName, "offen.pzb");
    QCOMPARE(w.store.KarteiPfad, w.verzeichnis.path());
    QCOMPARE(w.store.FachInfo[0].Anzahl, qint16(2));
    QCOMPARE(w.Karten().size(), 4);
    QCOMPARE(w.Dateien(), QStringList{"offen.pzb"});
}

void NeueKarteiTest::TargetInUseIsRefused()
{
    Werkstatt w;
    w.Oeffnen(ThreeTopics());
    MakeCardFile(w.Pfad("neu.pzb"), {MakeCard(99, 0, 1)});
    {
        const CardFile otherProgram(w.Pfad("neu.pzb"));
        QCOMPARE(KarteiSpiegeln(w.bank, w.Pfad("neu.pzb")), Ausgang::Gescheitert);
        QVERIFY(w.meldungen.Texte().front().contains("ist gesperrt"));
    }
    QCOMPARE(ReadCards(w.Pfad("neu.pzb")), QList{MakeCard(99, 0, 1)});
    QVERIFY(w.store.IsOpen());
}

void NeueKarteiTest::FullDiskLeavesTheOldTarget()
{
    Werkstatt w;
    w.Oeffnen(ThreeTopics());
    MakeCardFile(w.Pfad("neu.pzb"), {MakeCard(99, 0, 1)});
    {
        const FullDisk voll(8000);
        QCOMPARE(KarteiSpiegeln(w.bank, w.Pfad("neu.pzb")), Ausgang::Gescheitert);
    }
    QCOMPARE(w.meldungen.Texte(), QStringList{"Leider ist folgender Fehler Aufgetreten: "
                                              "Der Datenträger ist voll: " +
                                              w.Pfad("neu.pzb")});
    QCOMPARE(w.store.CurrentFileName, "offen.pzb");
    QCOMPARE(w.Karten().size(), 4);
    QCOMPARE(ReadCards(w.Pfad("neu.pzb")), QList{MakeCard(99, 0, 1)});
    QCOMPARE(w.Dateien(), (QStringList{"neu.pzb", "offen.pzb"}));
}

void NeueKarteiTest::DiskThatFillsDuringTheWorkLeavesTheOldTarget()
{
    Werkstatt w;
    QList<CardRecord> cards;
    for (int i = 1; i <= 500; ++i)
        cards << MakeCard(i, 0, i);
    w.Oeffnen(cards);
    MakeCardFile(w.Pfad("neu.pzb"), {MakeCard(99, 0, 1)});
    w.bank.progress = [](int, int) { VollePlatte::Setzen(VollePlatte::Zustand::Voll); };
    QCOMPARE(KarteiSpiegeln(w.bank, w.Pfad("neu.pzb")), Ausgang::Gescheitert);
    VollePlatte::Setzen(VollePlatte::Zustand::Gesund);
    QVERIFY(MeldetFehler(w.meldungen));
    QVERIFY2(w.meldungen.Texte().front().contains(w.Pfad("neu.pzb")),
             qPrintable(w.meldungen.Texte().front()));
    QCOMPARE(w.store.CurrentFileName, "offen.pzb");
    QCOMPARE(w.Karten(), cards);
    QCOMPARE(ReadCards(w.Pfad("neu.pzb")), QList{MakeCard(99, 0, 1)});
    QCOMPARE(w.Dateien(), (QStringList{"neu.pzb", "offen.pzb"}));
}

void NeueKarteiTest::WhatAKillLeftIsUsedAgain()
{
    Werkstatt w;
    w.Oeffnen(ThreeTopics());
    QString left;
    {
        FreshFile killed(w.Pfad("neu.pzb"));
        killed.Make([&](const QString &path) { left = path; });
    }
    MakeCardFile(left, {MakeCard(99, 0, 1)});
    WriteFileSynced(left + "-journal", "half");
    QCOMPARE(ThemenAusfiltern(w.bank, w.Pfad("neu.pzb"), {"Tiere"}), Ausgang::Gelungen);
    QCOMPARE(w.Karten().size(), 2);
    QCOMPARE(w.Dateien(), (QStringList{"neu.pzb", "offen.pzb"}));
}

void NeueKarteiTest::WhatTheFileHoldsBesidesIsNotLost()
{
    Werkstatt w;
    w.Oeffnen(ThreeTopics());
    w.store.Karten().Past([](SQLite::Database &database) {
        database.exec("CREATE TABLE Notizen(Text); INSERT INTO Notizen VALUES('bleibt');"
                      "CREATE TRIGGER weg AFTER DELETE ON Lernkarten BEGIN DELETE FROM Notizen; END");
    });
    QCOMPARE(ThemenAusfiltern(w.bank, w.Pfad("neu.pzb"), {}), Ausgang::Gelungen);
    w.store.Karten().Past([](SQLite::Database &database) {
        QCOMPARE(database.execAndGet("SELECT Text FROM Notizen").getString(), std::string("bleibt"));
    });
}

PAUKFIX_CORE_TEST(NeueKarteiTest)
#include "NeueKarteiTest.moc"
