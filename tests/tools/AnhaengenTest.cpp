// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Anhaengen.h"

#include "JetLab.h"
#include "TestProgram.h"
#include "Werkstatt.h"

#include <QLocale>
#include <QTest>
#include <SQLiteCpp/SQLiteCpp.h>

using namespace paukfix;
using namespace Qt::StringLiterals;

class AnhaengenTest : public QObject
{
    Q_OBJECT

private slots:
    void CardsLandBehindThoseInNeuInBoxOrder();
    void EveryMappedFieldIsCopiedAndNoOther();
    void TickCardKeepsAnswersTicksAndFormatting();
    void PictureCardKeepsNamesAndFrameButNotTypeAndLoop();
    void UnsetFieldsStayUnset();
    void EmptySourceChangesNothingButOpensAgain();
    void OpenFileItselfIsRefused();
    void SameNameInADirectoryOfSameLengthIsRefused();
    void SameNameInAnotherDirectoryIsAppended();
    void SourceIsNotChangedAndMayBeWriteProtected();
    void MissingOrForeignSourceIsReported();
    void SourceThatLacksAFieldIsReported();
    void LockedSourceIsReported();
    void OverflowStopsAtTheLimitAndIsReportedOnce();
    void WhatACardCannotHoldIsLeftOutAndReportedOnce();
    void DamagedSourceGivesAllThatCanBeRead();
    void CardThatTheIndexLacksIsAppended();
    void SourceWithoutHeaderGivesEveryCard();
    void DoubtfulCardsOfASourceAreTold();
    void UnfinishedChangeInTheSourceIsNamed();
    void SoundSourceIsReadWithItsLog();
    void FullDiskTakesNothingOver();
    void SessionAndCountersBeginAnew();
    void FileOfTheFormerEngineIsAppendedAsItIs();
    void DamageInAFileOfTheFormerEngineIsReported();
    void UnreadableFileOfTheFormerEngineIsReported();
};

namespace {

// A card with a value of its own in every field.
CardRecord FullCard(int number, int fach, int place)
{
    CardRecord card;
    int i = 0;
    for (const CardColumn &column : CardColumns()) {
        ++i;
        if (const auto *text = std::get_if<QString CardRecord::*>(&column.member))
            card.*(*text) = u"%1 \u00fc %2"_s.arg(QLatin1String(column.name)).arg(number);
        else if (const auto *flag = std::get_if<bool CardRecord::*>(&column.member))
            card.*(*flag) = i % 2 == 0;
        else
            card.*std::get<double CardRecord::*>(column.member) = 100 * i + number;
    }
    card.FrageNr = number;
    card.FachNr = fach;
    card.FachLfdNr = place;
    card.Antworttyp = 2;
    return card;
}

} // namespace

void AnhaengenTest::CardsLandBehindThoseInNeuInBoxOrder()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(3, 0, 4), MakeCard(8, 2, 1)});
    MakeCardFile(w.Pfad("quelle.pzb"), {MakeCard(1, 6, 2), MakeCard(2, 6, 1), MakeCard(3, 3, 9)});
    QCOMPARE(KarteiAnhaengen(w.bank, w.Pfad("quelle.pzb")), Ausgang::Gelungen);
    QVERIFY(w.meldungen.gezeigt.isEmpty());
    const QList<CardRecord> cards = w.Karten();
    QStringList found;
    for (const CardRecord &card : cards)
        found << u"%1/%2/%3 %4"_s.arg(card.FrageNr)
                     .arg(card.FachNr)
                     .arg(card.FachLfdNr)
                     .arg(card.Frage_Klartext);
    QCOMPARE(found, (QStringList{"3/0/4 Frage 3", "9/0/5 Frage 3", "10/0/6 Frage 2", "11/0/7 Frage 1",
                                 "8/2/1 Frage 8"}));
}

void AnhaengenTest::EveryMappedFieldIsCopiedAndNoOther()
{
    Werkstatt w;
    w.Oeffnen({});
    MakeCardFile(w.Pfad("quelle.pzb"), {FullCard(5, 4, 3)});
    QCOMPARE(KarteiAnhaengen(w.bank, w.Pfad("quelle.pzb")), Ausgang::Gelungen);
    CardRecord expected = FullCard(5, 4, 3);
    expected.FrageNr = 1;
    expected.FachNr = 0;
    expected.FachLfdNr = 1;
    for (const CardColumn &column : CardColumns()) {
        const QLatin1String name(column.name);
        if (name.endsWith("_type"_L1))
            expected.*std::get<QString CardRecord::*>(column.member) = QString();
        if (name.endsWith("_endlos"_L1))
            expected.*std::get<bool CardRecord::*>(column.member) = false;
    }
    QCOMPARE(w.Karten(), QList{expected});
}

void AnhaengenTest::TickCardKeepsAnswersTicksAndFormatting()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    CardRecord ticks = MakeCard(1, 2, 1);
    ticks.Antworttyp = 2;
    ticks.Frage = R"({\rtf1\ansi {\b fett}\par})";
    ticks.Antwort_5 = R"({\rtf1\ansi {\i schr\'e4g}\par})";
    ticks.Antwort_ch_1 = ticks.Antwort_ch_5 = true;
    MakeCardFile(w.Pfad("quelle.pzb"), {ticks});
    QCOMPARE(KarteiAnhaengen(w.bank, w.Pfad("quelle.pzb")), Ausgang::Gelungen);
    const CardRecord copy = w.Karten().value(1);
    QCOMPARE(copy.Antworttyp, 2);
    QCOMPARE(copy.Frage, ticks.Frage);
    QCOMPARE(copy.Antwort_5, ticks.Antwort_5);
    QVERIFY(copy.Antwort_ch_1 && !copy.Antwort_ch_2 && copy.Antwort_ch_5);
}

void AnhaengenTest::PictureCardKeepsNamesAndFrameButNotTypeAndLoop()
{
    Werkstatt w;
    w.Oeffnen({});
    CardRecord picture = MakeCard(1, 2, 1);
    picture.Picture_1_Name = "hund.bmp";
    picture.Picture_1_type = "bmp";
    picture.Picture_1_endlos = true;
    picture.Picture_6_Name = "wau.wav";
    picture.Picture_6_type = "wav";
    picture.Picture_6_endlos = true;
    picture.PictureTop = 100;
    picture.Pictureleft = 200;
    picture.Pictureheight = 3000;
    picture.Picturewidth = 4000;
    MakeCardFile(w.Pfad("quelle.pzb"), {picture});
    QCOMPARE(KarteiAnhaengen(w.bank, w.Pfad("quelle.pzb")), Ausgang::Gelungen);
    const CardRecord copy = w.Karten().value(0);
    QCOMPARE(copy.Picture_1_Name, "hund.bmp");
    QCOMPARE(copy.Picture_6_Name, "wau.wav");
    QCOMPARE(copy.PictureTop, 100);
    QCOMPARE(copy.Pictureleft, 200);
    QCOMPARE(copy.Pictureheight, 3000);
    QCOMPARE(copy.Picturewidth, 4000);
    QCOMPARE(copy.Picture_1_type, "");
    QCOMPARE(copy.Picture_6_type, "");
    QVERIFY(!copy.Picture_1_endlos);
    QVERIFY(!copy.Picture_6_endlos);
}

void AnhaengenTest::UnsetFieldsStayUnset()
{
    Werkstatt w;
    w.Oeffnen({});
    CardFile::Create(w.Pfad("quelle.pzb"));
    {
        CardFile source(w.Pfad("quelle.pzb"));
        source.Database().exec("INSERT INTO Lernkarten(FrageNr,FachNr,FachLfdNr) VALUES(1,0,1)");
    }
    QCOMPARE(KarteiAnhaengen(w.bank, w.Pfad("quelle.pzb")), Ausgang::Gelungen);
    CardRecordset &cards = w.store.Karten();
    cards.MoveFirst();
    for (const char *name : {"Antworttyp", "Frage", "Picture_1_Name", "Picture_9_Name", "PictureTop"})
        QVERIFY2(cards[QString::fromLatin1(name)].IsNull(), name);
    QCOMPARE(cards[u"Antwort_ch_1"].Value(), QVariant(false));
}

void AnhaengenTest::EmptySourceChangesNothingButOpensAgain()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 3, 1)});
    MakeCardFile(w.Pfad("quelle.pzb"), {});
    const qint32 openings = w.oeffner.verzoegerung.LoopsPerSecond;
    for (int i = 0; i < 5; ++i)
        w.store.sitzung.Zaehlen(true);
    QCOMPARE(KarteiAnhaengen(w.bank, w.Pfad("quelle.pzb")), Ausgang::Gelungen);
    QVERIFY(w.oeffner.verzoegerung.LoopsPerSecond > openings);
    QCOMPARE(w.store.sitzung.RichtigZaehler(), qint16(0));
    QVERIFY(w.meldungen.gezeigt.isEmpty());
    QCOMPARE(w.Karten(), QList{MakeCard(1, 3, 1)});
}

void AnhaengenTest::OpenFileItselfIsRefused()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    QVERIFY(QFile::link(w.Pfad("offen.pzb"), w.Pfad("verweis.pzb")));
    for (const QString &path :
         {w.Pfad("offen.pzb"), w.Pfad("verweis.pzb"), w.Pfad("./offen.pzb"), u"offen.pzb"_s}) {
        w.meldungen.gezeigt.clear();
        QCOMPARE(KarteiAnhaengen(w.bank, path), Ausgang::Gescheitert);
        QCOMPARE(w.meldungen.Texte(),
                 QStringList{"Datei kann nicht an sich selbst angehängt werden offen.pzb"});
    }
    QCOMPARE(w.Karten().size(), 1);
}

void AnhaengenTest::SameNameInADirectoryOfSameLengthIsRefused()
{
    Werkstatt w;
    QVERIFY(QDir(w.verzeichnis.path()).mkdir("eins"));
    QVERIFY(QDir(w.verzeichnis.path()).mkdir("zwei"));
    w.store.KarteiPfad = w.Pfad("eins");
    MakeCardFile(w.Pfad("eins/a.pzb"), {MakeCard(1, 0, 1)});
    MakeCardFile(w.Pfad("zwei/a.pzb"), {MakeCard(2, 0, 1)});
    QString name = "a.pzb";
    w.oeffner.OpenCardFile(name);
    QCOMPARE(KarteiAnhaengen(w.bank, w.Pfad("zwei/a.pzb")), Ausgang::Gescheitert);
    QCOMPARE(w.meldungen.Texte(), QStringList{"Datei kann nicht an sich selbst angehängt werden a.pzb"});
    QCOMPARE(w.Karten().size(), 1);
}

void AnhaengenTest::SameNameInAnotherDirectoryIsAppended()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    QVERIFY(QDir(w.verzeichnis.path()).mkdir("anderswo"));
    MakeCardFile(w.Pfad("anderswo/offen.pzb"), {MakeCard(2, 0, 1)});
    QCOMPARE(KarteiAnhaengen(w.bank, w.Pfad("anderswo/offen.pzb")), Ausgang::Gelungen);
    QCOMPARE(w.Karten().size(), 2);
}

void AnhaengenTest::SourceIsNotChangedAndMayBeWriteProtected()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    MakeCardFile(w.Pfad("quelle.pzb"), {MakeCard(1, 2, 3), MakeCard(2, 2, 4)});
    const QByteArray before = w.Bytes("quelle.pzb");
    QVERIFY(QFile::setPermissions(w.Pfad("quelle.pzb"), QFile::ReadOwner));
    QCOMPARE(KarteiAnhaengen(w.bank, w.Pfad("quelle.pzb")), Ausgang::Gelungen);
    QCOMPARE(w.Bytes("quelle.pzb"), before);
    QCOMPARE(w.Karten().size(), 3);
    QCOMPARE(w.Dateien(), (QStringList{"offen.pzb", "quelle.pzb"}));
}

void AnhaengenTest::MissingOrForeignSourceIsReported()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    w.Schreiben("text.pzb", QByteArray(5000, 't'));
    for (const QString &path : {w.Pfad("fehlt.pzb"), w.Pfad("text.pzb"), w.verzeichnis.path(), QString()}) {
        w.meldungen.gezeigt.clear();
        QCOMPARE(KarteiAnhaengen(w.bank, path), Ausgang::Gescheitert);
        QVERIFY(MeldetFehler(w.meldungen));
    }
    QVERIFY(w.store.IsOpen());
    QCOMPARE(w.Karten().size(), 1);
}

void AnhaengenTest::SourceThatLacksAFieldIsReported()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    MakeCardFile(w.Pfad("quelle.pzb"), {MakeCard(1, 2, 3)});
    {
        CardFile source(w.Pfad("quelle.pzb"));
        source.Database().exec("PRAGMA application_id=0; ALTER TABLE Lernkarten DROP COLUMN PictureTop");
    }
    QCOMPARE(KarteiAnhaengen(w.bank, w.Pfad("quelle.pzb")), Ausgang::Gescheitert);
    QCOMPARE(w.meldungen.Texte(), QStringList{"Leider ist folgender Fehler Aufgetreten: "
                                              "Das Feld „PictureTop“ fehlt in dieser Kartei."});
    QCOMPARE(w.Karten().size(), 1);
}

void AnhaengenTest::LockedSourceIsReported()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    MakeCardFile(w.Pfad("quelle.pzb"), {MakeCard(1, 2, 3)});
    const CardFile otherProgram(w.Pfad("quelle.pzb"));
    QCOMPARE(KarteiAnhaengen(w.bank, w.Pfad("quelle.pzb")), Ausgang::Gescheitert);
    QVERIFY(MeldetFehler(w.meldungen));
    QVERIFY(w.meldungen.Texte().front().contains("ist gesperrt"));
}

void AnhaengenTest::OverflowStopsAtTheLimitAndIsReportedOnce()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(32764, 0, 32767)});
    QList<CardRecord> source;
    for (int i = 1; i <= 10; ++i)
        source << MakeCard(i, 1, i);
    MakeCardFile(w.Pfad("quelle.pzb"), source);
    QCOMPARE(KarteiAnhaengen(w.bank, w.Pfad("quelle.pzb")), Ausgang::Teilweise);
    QCOMPARE(w.meldungen.Texte(),
             QStringList{"Leider ist folgender Fehler Aufgetreten: Überlauf: Nummern und Anzahlen gehen "
                         "nur bis 32767."});
    QVERIFY(w.ZaehlerStimmen());
    const QList<CardRecord> cards = w.Karten();
    QCOMPARE(cards.size(), 4);
    QCOMPARE(cards[0].FachLfdNr, 1); // closed up
    QCOMPARE(cards[3].FrageNr, 32767);
    QCOMPARE(cards[3].FachLfdNr, 4);
    QCOMPARE(cards[3].Frage, "Frage 3");
}

void AnhaengenTest::WhatACardCannotHoldIsLeftOutAndReportedOnce()
{
    Werkstatt w;
    w.Oeffnen({});
    MakeCardFile(w.Pfad("quelle.pzb"), {MakeCard(1, 0, 1), MakeCard(2, 0, 2), MakeCard(3, 0, 3)});
    {
        CardFile source(w.Pfad("quelle.pzb"));
        source.Database().exec("UPDATE Lernkarten SET Picture_9_Name=printf('%300c', 't'), PictureTop=1e9, "
                               "Antworttyp='zwei' WHERE FrageNr<3");
    }
    QCOMPARE(KarteiAnhaengen(w.bank, w.Pfad("quelle.pzb")), Ausgang::Teilweise);
    QCOMPARE(
        w.meldungen.Texte(),
        (QStringList{
            "Leider ist folgender Fehler Aufgetreten: Typen unverträglich im Feld „Antworttyp“.",
            "Leider ist folgender Fehler Aufgetreten: "
            "Der Text im Feld „Thema“ ist länger als 250 Zeichen.",
            "Leider ist folgender Fehler Aufgetreten: Überlauf im Feld „PictureTop“: Es fasst Zahlen von "
            "-32768 bis 32767.",
        }));
    const QList<CardRecord> cards = w.Karten();
    QCOMPARE(cards.size(), 3);
    QCOMPARE(cards[0].Frage, "Frage 1");
    QVERIFY(cards[0].Picture_9_Name.isEmpty());
    QCOMPARE(cards[2].Picture_9_Name, "Thema 3");
    QVERIFY(w.ZaehlerStimmen());
}

void AnhaengenTest::DamagedSourceGivesAllThatCanBeRead()
{
    Werkstatt w;
    w.Oeffnen({});
    QList<CardRecord> source;
    for (int i = 1; i <= 2000; ++i) {
        source << MakeCard(i, 0, i);
        source.back().Frage = source.back().Frage_Klartext = QString(300, QChar('x'));
    }
    MakeCardFile(w.Pfad("quelle.pzb"), source);
    QByteArray bytes = w.Bytes("quelle.pzb");
    bytes.replace(bytes.size() / 2, 4096, QByteArray(4096, '\x7f'));
    w.Schreiben("quelle.pzb", bytes);
    QCOMPARE(KarteiAnhaengen(w.bank, w.Pfad("quelle.pzb")), Ausgang::Teilweise);
    QVERIFY(MeldetFehler(w.meldungen));
    const qsizetype copied = w.Karten().size();
    QVERIFY2(copied > 1980 && copied < 2000, qPrintable(QString::number(copied)));
    QCOMPARE(w.meldungen.Texte().size(), 1);
    const QString text = w.meldungen.Texte().front();
    QVERIFY2(text.startsWith("Leider ist folgender Fehler Aufgetreten: Die Datei „" + w.Pfad("quelle.pzb") +
                             "“ ist beschädigt. " + QLocale(QLocale::German).toString(copied) +
                             " Karten wurden übernommen; Spuren von " + QString::number(2000 - copied) +
                             " weiteren ließen sich nicht mehr lesen"),
             qPrintable(text));
    QVERIFY(w.ZaehlerStimmen());
    QCOMPARE(w.Bytes("quelle.pzb"), bytes);
    QCOMPARE(w.Dateien(), (QStringList{"offen.pzb", "quelle.pzb"}));
}

// The engine reads such a file without a word and leaves out what the index "BoxKey" does not list.
void AnhaengenTest::CardThatTheIndexLacksIsAppended()
{
    Werkstatt w;
    w.Oeffnen({});
    QList<CardRecord> source;
    for (int i = 1; i <= 50; ++i)
        source << MakeCard(i, 0, i);
    MakeCardFile(w.Pfad("quelle.pzb"), source);
    {
        SQLite::Database database(w.Pfad("quelle.pzb").toStdString(), SQLite::OPEN_READWRITE);
        const std::string sql =
            database.execAndGet("SELECT sql FROM sqlite_schema WHERE name='BoxKey'").getString();
        database.exec("DROP INDEX BoxKey; CREATE UNIQUE INDEX BoxKey ON Lernkarten(FachNr,FachLfdnr) WHERE "
                      "FrageNr<=25; PRAGMA writable_schema=ON");
        SQLite::Statement whole(database, "UPDATE sqlite_schema SET sql=? WHERE name='BoxKey'");
        whole.bind(1, sql);
        whole.exec();
    }
    QCOMPARE(KarteiAnhaengen(w.bank, w.Pfad("quelle.pzb")), Ausgang::Gelungen);
    QCOMPARE(w.meldungen.Texte(), QStringList("Die Datei „" + w.Pfad("quelle.pzb") +
                                              "“ ist beschädigt. Alle Karten ließen sich lesen."));
    QCOMPARE(w.Karten().size(), 50);
    QVERIFY(w.ZaehlerStimmen());
}

void AnhaengenTest::SourceWithoutHeaderGivesEveryCard()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    QList<CardRecord> source;
    for (int i = 1; i <= 50; ++i)
        source << MakeCard(i, i % 7, i);
    MakeCardFile(w.Pfad("quelle.pzb"), source);
    QByteArray bytes = w.Bytes("quelle.pzb");
    bytes.replace(0, 4096, QByteArray(4096, '\x33'));
    w.Schreiben("quelle.pzb", bytes);
    QVERIFY(QFile::setPermissions(w.Pfad("quelle.pzb"), QFile::ReadOwner));
    QCOMPARE(KarteiAnhaengen(w.bank, w.Pfad("quelle.pzb")), Ausgang::Gelungen);
    QVERIFY(w.meldungen.Texte().front().endsWith("ist beschädigt. Alle Karten ließen sich lesen."));
    QCOMPARE(w.Karten().size(), 51);
    QCOMPARE(w.Karten()[1].Frage, "Frage 7"); // in box order
    QCOMPARE(w.Bytes("quelle.pzb"), bytes);
    QCOMPARE(w.Dateien(), (QStringList{"offen.pzb", "quelle.pzb"}));
}

void AnhaengenTest::DoubtfulCardsOfASourceAreTold()
{
    CardRecord doubtful = MakeCard(2, 0, 2);
    doubtful.Frage = "{\\rtf1 nicht geschlossen";
    Werkstatt w;
    w.Oeffnen({});
    MakeCardFile(w.Pfad("quelle.pzb"), {MakeCard(1, 0, 1), doubtful});
    QByteArray bytes = w.Bytes("quelle.pzb");
    bytes.replace(0, 100, QByteArray(100, '\x33'));
    w.Schreiben("quelle.pzb", bytes);
    QCOMPARE(KarteiAnhaengen(w.bank, w.Pfad("quelle.pzb")), Ausgang::Teilweise);
    const QString told = "“ ist beschädigt. 2 Karten wurden übernommen; 1 davon hat zweifelhaften Inhalt.";
    QVERIFY2(w.meldungen.Texte().front().endsWith(told), qPrintable(w.meldungen.Texte().front()));

    w.meldungen.gezeigt.clear();
    JetLab lab(4);
    doubtful.Frage = QString("halb ") + QChar(0xd83d);
    lab.Add(MakeCard(1, 0, 1));
    lab.Add(doubtful);
    w.Schreiben("quelle.pzb", lab.Bytes());
    QCOMPARE(KarteiAnhaengen(w.bank, w.Pfad("quelle.pzb")), Ausgang::Teilweise);
    QVERIFY2(w.meldungen.Texte().front().endsWith(told), qPrintable(w.meldungen.Texte().front()));
}

void AnhaengenTest::UnfinishedChangeInTheSourceIsNamed()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    QList<CardRecord> source;
    for (int i = 1; i <= 500; ++i)
        source << MakeCard(i, 0, i);
    MakeCardFile(w.Pfad("anderes.pzb"), source);
    {
        SQLite::Database database(w.Pfad("anderes.pzb").toStdString(), SQLite::OPEN_READWRITE);
        database.exec("PRAGMA cache_size=2; PRAGMA cache_spill=2; BEGIN; UPDATE Lernkarten SET Frage='halb'");
        // As the power's going leaves them.
        for (const QString &name : {QString(), u"-journal"_s})
            QVERIFY(QFile::copy(w.Pfad("anderes.pzb" + name), w.Pfad("quelle.pzb" + name)));
        database.exec("ROLLBACK");
    }
    const QByteArray bytes = w.Bytes("quelle.pzb"), journal = w.Bytes("quelle.pzb-journal");
    QVERIFY(bytes.contains("halb"));
    for (const bool damaged : {false, true}) {
        if (damaged)
            w.Schreiben("quelle.pzb", QByteArray(100, 'x') + bytes.mid(100));
        w.meldungen.gezeigt.clear();
        QCOMPARE(KarteiAnhaengen(w.bank, w.Pfad("quelle.pzb")), Ausgang::Gescheitert);
        QCOMPARE(
            w.meldungen.Texte(),
            QStringList("Leider ist folgender Fehler Aufgetreten: In der Datei „" + w.Pfad("quelle.pzb") +
                        "“ ist eine Änderung nicht zu Ende gekommen. Bitte beenden Sie das Programm, das "
                        "sie benutzt, oder öffnen Sie sie einmal als Kartei; danach lässt sie sich "
                        "anhängen."));
        QCOMPARE(w.Karten().size(), 1);
        QCOMPARE(w.Bytes("quelle.pzb-journal"), journal);
    }
}

// The engine reads both together, and leaves both as they are.
void AnhaengenTest::SoundSourceIsReadWithItsLog()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    MakeCardFile(w.Pfad("anderes.pzb"), {MakeCard(1, 0, 1), MakeCard(2, 0, 2)});
    {
        SQLite::Database database(w.Pfad("anderes.pzb").toStdString(), SQLite::OPEN_READWRITE);
        database.exec("PRAGMA journal_mode=WAL; PRAGMA wal_autocheckpoint=0; "
                      "UPDATE Lernkarten SET Frage_Klartext='im Log'");
        for (const QString &name : {QString(), u"-wal"_s})
            QVERIFY(QFile::copy(w.Pfad("anderes.pzb" + name), w.Pfad("quelle.pzb" + name)));
    }
    const QByteArray bytes = w.Bytes("quelle.pzb"), log = w.Bytes("quelle.pzb-wal");
    QVERIFY(!bytes.contains("im Log") && log.contains("im Log"));
    QCOMPARE(KarteiAnhaengen(w.bank, w.Pfad("quelle.pzb")), Ausgang::Gelungen);
    QCOMPARE(w.meldungen.Texte(), QStringList());
    QCOMPARE(w.Karten().size(), 3);
    QCOMPARE(w.Karten()[2].Frage_Klartext, "im Log");
    QCOMPARE(w.Bytes("quelle.pzb"), bytes);
    QCOMPARE(w.Bytes("quelle.pzb-wal"), log);
    // Damaged, it is not read without its log.
    w.Schreiben("quelle.pzb", QByteArray(100, 'x') + bytes.mid(100));
    QCOMPARE(KarteiAnhaengen(w.bank, w.Pfad("quelle.pzb")), Ausgang::Gescheitert);
    QVERIFY(w.meldungen.Texte().front().contains("nicht zu Ende gekommen"));
    QCOMPARE(w.Bytes("quelle.pzb-wal"), log);
}

void AnhaengenTest::FullDiskTakesNothingOver()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    w.store.Karten().Past([](SQLite::Database &database) { database.exec("PRAGMA max_page_count=40"); });
    QList<CardRecord> source;
    for (int i = 1; i <= 2000; ++i)
        source << MakeCard(i, 0, i);
    MakeCardFile(w.Pfad("quelle.pzb"), source);
    QCOMPARE(KarteiAnhaengen(w.bank, w.Pfad("quelle.pzb")), Ausgang::Gescheitert);
    QVERIFY(MeldetFehler(w.meldungen));
    QCOMPARE(w.meldungen.Texte(),
             QStringList("Leider ist folgender Fehler Aufgetreten: Der Datenträger ist voll; in „" +
                         w.Pfad("offen.pzb") + "“ wurde nichts gespeichert. Es wurde nichts übernommen."));
    QVERIFY(w.ZaehlerStimmen());
    QCOMPARE(w.Karten(), QList{MakeCard(1, 0, 1)});
}

void AnhaengenTest::SessionAndCountersBeginAnew()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 5, 1)});
    MakeCardFile(w.Pfad("quelle.pzb"), {MakeCard(1, 6, 1)});
    for (int i = 0; i < 3; ++i)
        w.store.sitzung.Zaehlen(false);
    QCOMPARE(KarteiAnhaengen(w.bank, w.Pfad("quelle.pzb")), Ausgang::Gelungen);
    QCOMPARE(w.store.sitzung.FalschZaehler(), qint16(0));
    QCOMPARE(w.store.sitzung.BegAnz()[0], qint16(1));
    QCOMPARE(w.store.FachInfo[0].Anzahl, qint16(1));
    QCOMPARE(w.store.FachInfo[5].Anzahl, qint16(1));
    QCOMPARE(w.store.HighestCardNumber, qint16(2));
}

void AnhaengenTest::FileOfTheFormerEngineIsAppendedAsItIs()
{
    for (const int version : {3, 4}) {
        Werkstatt w;
        w.Oeffnen({MakeCard(3, 0, 4)});
        JetLab lab(version);
        CardRecord full = FullCard(9, 3, 7);
        full.Antwort_ch_1 = true;
        for (const CardRecord &card : {MakeCard(1, 6, 2), MakeCard(2, 6, 1), full})
            lab.Add(card);
        const QByteArray bytes = lab.Bytes();
        w.Schreiben("quelle.pzb", bytes);
        QCOMPARE(KarteiAnhaengen(w.bank, w.Pfad("quelle.pzb")), Ausgang::Gelungen);
        QVERIFY(w.meldungen.gezeigt.isEmpty());
        const QList<CardRecord> cards = w.Karten();
        QCOMPARE(cards.size(), 4);
        QCOMPARE(cards[2].Frage, "Frage 2");
        QCOMPARE(cards[3].FrageNr, 6);
        QCOMPARE(cards[3].FachLfdNr, 7);
        CardRecord expected = full; // in box order the first
        expected.FrageNr = 4;
        expected.FachNr = 0;
        expected.FachLfdNr = 5;
        for (const CardColumn &column : CardColumns()) {
            const QLatin1String name(column.name);
            if (name.endsWith("_type"_L1))
                expected.*std::get<QString CardRecord::*>(column.member) = QString();
            if (name.endsWith("_endlos"_L1))
                expected.*std::get<bool CardRecord::*>(column.member) = false;
        }
        QCOMPARE(cards[1], expected);
        QVERIFY(w.ZaehlerStimmen());
        QCOMPARE(w.Bytes("quelle.pzb"), bytes);
        QCOMPARE(w.Dateien(), (QStringList{"offen.pzb", "quelle.pzb"}));
    }
}

void AnhaengenTest::DamageInAFileOfTheFormerEngineIsReported()
{
    Werkstatt w;
    w.Oeffnen({});
    JetLab lab(4);
    for (int i = 1; i <= 4; ++i) {
        if (i == 3)
            lab.BreakPage();
        lab.Add(MakeCard(i, 0, i));
    }
    QByteArray bytes = lab.Bytes();
    bytes.replace(lab.PageOf(3) * lab.PageSize(), lab.PageSize(), QByteArray(lab.PageSize(), '\0'));
    w.Schreiben("quelle.pzb", bytes);
    QCOMPARE(KarteiAnhaengen(w.bank, w.Pfad("quelle.pzb")), Ausgang::Teilweise);
    QVERIFY(MeldetFehler(w.meldungen));
    QCOMPARE(
        w.meldungen.Texte(),
        QStringList("Leider ist folgender Fehler Aufgetreten: Die Datei „" + w.Pfad("quelle.pzb") +
                    "“ ist beschädigt. 2 Karten wurden übernommen; Spuren von 2 weiteren ließen sich nicht "
                    "mehr lesen."));
    QCOMPARE(w.Karten().size(), 2);
}

void AnhaengenTest::UnreadableFileOfTheFormerEngineIsReported()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    JetLab lab(4);
    lab.password = "geheim";
    w.Schreiben("quelle.pzb", lab.Bytes());
    QCOMPARE(KarteiAnhaengen(w.bank, w.Pfad("quelle.pzb")), Ausgang::Gescheitert);
    QVERIFY(w.meldungen.Texte().front().contains("Kennwort"));
    QCOMPARE(w.Karten().size(), 1);
}

PAUKFIX_CORE_TEST(AnhaengenTest)
#include "AnhaengenTest.moc"
