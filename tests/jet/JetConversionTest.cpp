// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "JetConversion.h"

#include "JetLab.h"
#include "JetSource.h"
#include "KarteiOeffner.h"
#include "SafeFile.h"
#include "StoreError.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"
#include "VollePlatte.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTest>

#include <csignal>
#include <ctime>
#include <sys/wait.h>
#include <unistd.h>

using namespace paukfix;
using namespace Qt::StringLiterals;

class JetConversionTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void AfterYesTheFileIsOpenWithTheOldOneBesideIt_data();
    void AfterYesTheFileIsOpenWithTheOldOneBesideIt();
    void AfterNoTheOpenFailsAndNothingIsChanged();
    void WhatCannotBeReadIsRefusedWithoutAQuestion_data();
    void WhatCannotBeReadIsRefusedWithoutAQuestion();
    void BrokenRulesAreMendedAndNamedInTheReport();
    void DamagedPageIsNamedInTheReport();
    void LinkIsFollowedAndANameInUseIsNotTaken();
    void ALinkUnderTheOldNameIsNotTakenForTheOldFile();
    void JournalOfAnotherFileIsNotRolledBack();
    void FullDiskLeavesTheOldFile();
    void AKillAtAnyMomentLeavesTheOldFileOrBoth();
};

namespace {

struct Laden
{
    Laden()
    {
        clock.perSecond = 3; // each opening counts on
        store.KarteiPfad = directory.path();
    }

    QString Path(const QString &name) const { return directory.filePath(name); }

    void Put(const QByteArray &bytes, const QString &name = u"alt.pzb"_s) const
    {
        WriteFileSynced(Path(name), bytes);
    }

    QByteArray Bytes(const QString &name) const { return ReadFile(Path(name), 1 << 24); }

    QStringList Names() const
    {
        return QDir(directory.path()).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
    }

    bool Open(const QString &file = u"alt.pzb"_s)
    {
        QString name = file;
        oeffner.OpenCardFile(name);
        return !name.isEmpty();
    }

    QTemporaryDir directory;
    TestMeldungen meldungen;
    TestClock clock;
    CardStore store;
    KarteiOeffner oeffner{store, meldungen, clock};
};

QList<CardRecord> SomeCards()
{
    QList<CardRecord> cards;
    for (int i = 1; i <= 40; ++i)
        cards << MakeCard(i, i % 7, i / 7 + 1);
    cards[3].Picture_1_Name = u"Bär.bmp"_s;
    cards[3].Picture_6_Name = u"Bär.wav"_s;
    cards[3].Antworttyp = 2;
    cards[3].Antwort_ch_2 = cards[3].Picture_4_endlos = true;
    cards[3].PictureTop = 120;
    cards[3].Picturewidth = 2400;
    std::sort(cards.begin(), cards.end(), [](const CardRecord &one, const CardRecord &other) {
        return std::tie(one.FachNr, one.FachLfdNr) < std::tie(other.FachNr, other.FachLfdNr);
    });
    return cards;
}

QByteArray FormerFile(int version, const QList<CardRecord> &cards)
{
    JetLab lab(version);
    for (const CardRecord &card : cards)
        lab.Add(card);
    return lab.Bytes();
}

const auto question = u"Die Kartei „alt.pzb“ hat noch das alte Dateiformat – soll sie "
                      u"umgewandelt werden (die alte Datei bleibt als "
                      u"„alt.pzb.altes-Format“ daneben erhalten)?"_s;

} // namespace

void JetConversionTest::initTestCase()
{
    VollePlatte::Einbauen();
}

void JetConversionTest::AfterYesTheFileIsOpenWithTheOldOneBesideIt_data()
{
    QTest::addColumn<int>("version");
    QTest::newRow("3") << 3;
    QTest::newRow("4") << 4;
}

void JetConversionTest::AfterYesTheFileIsOpenWithTheOldOneBesideIt()
{
    QFETCH(const int, version);
    Laden laden;
    const QByteArray old = FormerFile(version, SomeCards());
    laden.Put(old);
    laden.meldungen.antworten = {Meldungen::Antwort::Ja};
    QVERIFY(laden.Open());
    QCOMPARE(laden.meldungen.Texte(), QStringList{question});
    QVERIFY(laden.meldungen.gezeigt.front().frage);
    QCOMPARE(laden.store.CurrentFileName, u"alt.pzb"_s);
    QCOMPARE(laden.store.HighestCardNumber, qint16(40));
    QCOMPARE(laden.store.FachInfo[3].Anzahl, qint16(6));
    laden.store.CloseCardFile();
    QCOMPARE(laden.Names(), (QStringList{"alt.pzb", "alt.pzb.altes-Format"}));
    QCOMPARE(laden.Bytes("alt.pzb.altes-Format"), old);
    QCOMPARE(ReadCards(laden.Path("alt.pzb")), SomeCards());
    // From now on it is a file like any other.
    laden.meldungen.gezeigt.clear();
    QVERIFY(laden.Open());
    QVERIFY(laden.meldungen.gezeigt.isEmpty());
}

void JetConversionTest::AfterNoTheOpenFailsAndNothingIsChanged()
{
    Laden laden;
    const QByteArray old = FormerFile(4, SomeCards());
    laden.Put(old);
    QVERIFY(!laden.Open());
    QCOMPARE(laden.meldungen.Texte(),
             (QStringList{question,
                          "Die Datei „" + laden.Path("alt.pzb") +
                              "“ hat noch das alte Dateiformat und wurde nicht umgewandelt. Fcode: 3343"}));
    QVERIFY(!laden.store.IsOpen());
    QCOMPARE(laden.Names(), QStringList{"alt.pzb"});
    QCOMPARE(laden.Bytes("alt.pzb"), old);
}

void JetConversionTest::WhatCannotBeReadIsRefusedWithoutAQuestion_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("answer");
    JetLab locked(3);
    locked.password = "geheim";
    QTest::newRow("password") << locked.Bytes()
                              << "ist mit einem Kennwort geschützt und lässt sich nicht lesen. Fcode: 3031";
    JetLab other(4);
    other.tableName = u"Kunden"_s;
    QTest::newRow("another database") << other.Bytes() << "enthält keine Tabelle „Lernkarten“. Fcode: 3078";
    // No card can be found, and our repair knows nothing of such files.
    QTest::newRow("cut off behind its first page")
        << FormerFile(4, SomeCards()).left(4096) << "ist beschädigt. Fcode: 3049";
}

void JetConversionTest::WhatCannotBeReadIsRefusedWithoutAQuestion()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QString, answer);
    Laden laden;
    laden.Put(bytes);
    laden.meldungen.antworten = {Meldungen::Antwort::Ja};
    QVERIFY(!laden.Open());
    QCOMPARE(laden.meldungen.Texte(), QStringList{"Die Datei „" + laden.Path("alt.pzb") + "“ " + answer});
    QCOMPARE(laden.Names(), QStringList{"alt.pzb"});
    QCOMPARE(laden.Bytes("alt.pzb"), bytes);
}

void JetConversionTest::BrokenRulesAreMendedAndNamedInTheReport()
{
    Laden laden;
    QList<CardRecord> cards;
    for (int i = 1; i <= 6; ++i)
        cards << MakeCard(i, 2, i);
    cards[1].FachNr = 9;
    cards[2].FachLfdNr = 1; // the place of the first
    cards[3].FrageNr = 1e6;
    cards[4].PictureTop = 70000;
    cards[5].FrageNr = 1; // the number of the first
    const QByteArray old = FormerFile(4, cards);
    laden.Put(old);
    laden.meldungen.antworten = {Meldungen::Antwort::Ja};
    QVERIFY(laden.Open());
    QCOMPARE(
        laden.meldungen.Texte(),
        (QStringList{question, "Nicht jede Karte ließ sich unverändert übernehmen. Was geändert wurde, steht "
                               "in „alt.pzb.Umwandlung.txt“."}));
    laden.store.CloseCardFile();
    QStringList found;
    for (const CardRecord &card : ReadCards(laden.Path("alt.pzb")))
        found << u"%1/%2/%3/%4 %5"_s.arg(card.FachNr)
                     .arg(card.FachLfdNr)
                     .arg(card.FrageNr)
                     .arg(card.PictureTop)
                     .arg(card.Frage);
    QCOMPARE(found, (QStringList{"0/1/2/0 Frage 2", "2/1/3/0 Frage 3", "2/4/6/0 Frage 4", "2/5/5/0 Frage 5",
                                 "2/6/1/0 Frage 6", "2/7/7/0 Frage 1"}));
    const QString report = QString::fromUtf8(laden.Bytes("alt.pzb.Umwandlung.txt"));
    for (const char *line :
         {"Bericht über die Umwandlung einer Kartei", "\nUmgewandelt am:          ",
          "Alte Datei:              alt.pzb.altes-Format (unverändert", "Übernommen:              6 Karten",
          "  ohne Beanstandung:     2 Karten", "Nicht übernommen:        keine Karte bekannt",
          "Karte 2 („Frage 2“): Fach war unbrauchbar", "Karte 6 („Frage 4“): Nummer (1e+06) war unbrauchbar",
          "Karte 5 („Frage 5“): PictureTop hatte den unbrauchbaren Wert 70000",
          "Karte 7 („Frage 1“): Nummer (1) war unbrauchbar oder schon vergeben"})
        QVERIFY2(report.contains(QString::fromUtf8(line)), qPrintable(line + ("\n" + report)));
    QCOMPARE(laden.Bytes("alt.pzb.altes-Format"), old);
}

void JetConversionTest::DamagedPageIsNamedInTheReport()
{
    Laden laden;
    JetLab lab(4);
    for (int i = 1; i <= 9; ++i) {
        if (i == 4 || i == 7)
            lab.BreakPage();
        lab.Add(MakeCard(i, 0, i));
    }
    QByteArray bytes = lab.Bytes();
    bytes.replace(lab.PageOf(4) * lab.PageSize(), lab.PageSize(), QByteArray(lab.PageSize(), '\xE5'));
    laden.Put(bytes);
    laden.meldungen.antworten = {Meldungen::Antwort::Ja};
    QVERIFY(laden.Open());
    laden.store.CloseCardFile();
    QCOMPARE(ReadCards(laden.Path("alt.pzb")).size(), 6);
    const QString report = QString::fromUtf8(laden.Bytes("alt.pzb.Umwandlung.txt"));
    QVERIFY(report.contains(u"Nicht übernommen:        3 Karten"_s));
    QVERIFY(report.contains(u"Die alte Datei zählt 3 Karten mehr, als sich in ihr lesen ließen."_s));
}

void JetConversionTest::LinkIsFollowedAndANameInUseIsNotTaken()
{
    Laden laden;
    const QByteArray old = FormerFile(3, SomeCards());
    laden.Put(old, "wirklich.pzb");
    laden.Put("ein anderer", "wirklich.pzb.altes-Format");
    QVERIFY(QFile::link(laden.Path("wirklich.pzb"), laden.Path("alt.pzb")));
    laden.meldungen.antworten = {Meldungen::Antwort::Ja};
    QVERIFY(laden.Open());
    QVERIFY(laden.meldungen.Texte().front().contains("„wirklich.pzb.altes-Format-2“"));
    laden.store.CloseCardFile();
    QVERIFY(QFileInfo(laden.Path("alt.pzb")).isSymLink());
    QCOMPARE(laden.Bytes("wirklich.pzb.altes-Format"), QByteArray("ein anderer"));
    QCOMPARE(laden.Bytes("wirklich.pzb.altes-Format-2"), old);
    QCOMPARE(ReadCards(laden.Path("wirklich.pzb")), SomeCards());
}

// Such a link would lead to the new file afterwards, and the old one would be gone.
void JetConversionTest::ALinkUnderTheOldNameIsNotTakenForTheOldFile()
{
    Laden laden;
    const QByteArray old = FormerFile(3, SomeCards());
    laden.Put(old);
    QVERIFY(QFile::link(laden.Path("alt.pzb"), laden.Path("alt.pzb.altes-Format")));
    laden.meldungen.antworten = {Meldungen::Antwort::Ja};
    QVERIFY(laden.Open());
    laden.store.CloseCardFile();
    QCOMPARE(laden.Bytes("alt.pzb.altes-Format-2"), old);
    QCOMPARE(ReadCards(laden.Path("alt.pzb")), SomeCards());
}

// The engine of today would write what it holds into the old file, or into the new one.
void JetConversionTest::JournalOfAnotherFileIsNotRolledBack()
{
    Laden laden;
    const QByteArray old = FormerFile(4, SomeCards());
    laden.Put(old);
    QByteArray journal("\xd9\xd5\x05\xf9\x20\xa1\x63\xd7", 8);
    journal += QByteArray("\0\0\0\1\0\0\0\0\0\0\0\1\0\0\2\0\0\0\x10\0", 20);
    journal = journal.leftJustified(512, '\0') + QByteArray("\0\0\0\1", 4) + QByteArray(4096, 'j') +
              QByteArray(4, '\0');
    laden.Put(journal, "alt.pzb-journal");
    QVERIFY(!laden.Open()); // No
    QCOMPARE(laden.Bytes("alt.pzb"), old);
    laden.meldungen.antworten = {Meldungen::Antwort::Ja};
    QVERIFY(laden.Open());
    laden.store.CloseCardFile();
    QCOMPARE(ReadCards(laden.Path("alt.pzb")), SomeCards());
}

void JetConversionTest::FullDiskLeavesTheOldFile()
{
    Laden laden;
    const QByteArray old = FormerFile(4, SomeCards());
    laden.Put(old);
    laden.meldungen.antworten = {Meldungen::Antwort::Ja};
    VollePlatte::Setzen(VollePlatte::Zustand::Voll);
    const bool opened = laden.Open();
    VollePlatte::Setzen(VollePlatte::Zustand::Gesund);
    QVERIFY(!opened);
    QVERIFY(laden.meldungen.Texte().back().contains(u"Der Datenträger ist voll"_s));
    QCOMPARE(laden.Names(), QStringList{"alt.pzb"});
    QCOMPARE(laden.Bytes("alt.pzb"), old);
}

void JetConversionTest::AKillAtAnyMomentLeavesTheOldFileOrBoth()
{
    const int kills = qEnvironmentVariableIsSet("PAUKFIX_SHORT_TESTS") ? 20 : 120;
    const QTemporaryDir directory;
    const QString path = directory.filePath("alt.pzb");
    QList<CardRecord> cards = SomeCards();
    cards[0].PictureTop = 1e9; // so that there is a report
    const QByteArray old = FormerFile(4, cards);
    cards[0].PictureTop = 0;
    QRandomGenerator random(815);
    qint64 whole = 20'000'000; // nanoseconds that a conversion takes
    int before = 0;
    int after = 0;
    for (int kill = 0; kill < kills; ++kill) {
        if (!IsJetFile(path)) {
            for (const QString &name : QDir(directory.path()).entryList(QDir::Files | QDir::Hidden))
                QVERIFY(QFile::remove(directory.filePath(name)));
            WriteFileSynced(path, old);
        }
        const pid_t child = fork();
        if (child == 0) {
            try {
                ConvertJetFile(path);
            } catch (...) {
                _exit(1);
            }
            _exit(0);
        }
        const qint64 pause = random.bounded(whole);
        const timespec moment{0, static_cast<long>(pause)};
        nanosleep(&moment, nullptr);
        ::kill(child, SIGKILL);
        int status = 0;
        QCOMPARE(waitpid(child, &status, 0), child);
        if (WIFEXITED(status)) {
            QCOMPARE(WEXITSTATUS(status), 0);
            whole = std::max<qint64>(whole * 9 / 10, 100'000);
        } else {
            whole = std::min<qint64>(whole * 12 / 10, 900'000'000);
        }
        const QString aside = directory.filePath("alt.pzb.altes-Format");
        if (IsJetFile(path)) {
            ++before;
            QCOMPARE(ReadFile(path, 1 << 24), old);
        } else {
            ++after;
            QCOMPARE(ReadFile(aside, 1 << 24), old);
            QVERIFY(QFileInfo::exists(directory.filePath("alt.pzb.Umwandlung.txt")));
            QCOMPARE(ReadCards(path), cards);
        }
        // Kills do not pile up what they leave.
        const QStringList names = QDir(directory.path()).entryList(QDir::Files | QDir::Hidden);
        QVERIFY2(names.size() <= 5, qPrintable(names.join(u' ')));
    }
    QVERIFY2(before > kills / 10 && after > kills / 10,
             qPrintable(u"%1 before, %2 after"_s.arg(before).arg(after)));
}

PAUKFIX_CORE_TEST(JetConversionTest)
#include "JetConversionTest.moc"
