// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "FreshFile.h"

#include "AnderesProgramm.h"
#include "CardFile.h"
#include "DamageLab.h"
#include "DiskCalls.h"
#include "JournalFile.h"
#include "StoreError.h"
#include "TestProgram.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <memory>
#include <unistd.h>

using namespace paukfix;

class FreshFileTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> directory_;

    QString Path(const QString &name) const { return directory_->filePath(name); }

    QStringList Entries() const { return QDir(directory_->path()).entryList(QDir::Files, QDir::Name); }

private slots:

    void init() { directory_ = std::make_unique<QTemporaryDir>(); }

    void TheNewFileIsOnTheDiskBeforeItIsReported();
    void AReadOnlyDriveIsNamed();
    void AnOldBoxThatStaysHasWhatItsJournalHeld_data();
    void AnOldBoxThatStaysHasWhatItsJournalHeld();
    void WhatIsNoSoundBoxIsReplacedWithItsJournal();
    void MessagesNameThePlaceOnly();
};

void FreshFileTest::TheNewFileIsOnTheDiskBeforeItIsReported()
{
    const QString directory = directory_->path();
    WriteFileSynced(Path("ziel"), "alt");
    DiskCalls disk;
    QStringList &calls = disk.calls;
    QString made;
    {
        FreshFile fresh(Path("ziel"));
        fresh.Make([&](const QString &path) {
            made = path;
            WriteFileSynced(path, "frisch");
        });
        fresh.TakePlace();
    }
    QVERIFY(calls.contains("sync " + made));
    QCOMPARE(calls.mid(calls.size() - 2),
             (QStringList{"rename " + made + " to " + Path("ziel"), "sync " + directory}));
}

void FreshFileTest::AReadOnlyDriveIsNamed()
{
    DiskCalls disk;
    disk.readOnlyDirectory = directory_->path();
    QString text;
    try {
        FreshFile fresh(Path("neu.pzb"));
    } catch (const StoreError &error) {
        QCOMPARE(error.Number(), Fehler::NichtErlaubt);
        text = error.Text();
    }
    QCOMPARE(text, "Der Datenträger ist schreibgeschützt: " + Path("neu.pzb"));
}

void FreshFileTest::AnOldBoxThatStaysHasWhatItsJournalHeld_data()
{
    QTest::addColumn<bool>("log");
    QTest::addColumn<bool>("made");
    QTest::newRow("journal, new file lost") << false << false;
    QTest::newRow("journal, no renaming") << false << true;
    QTest::newRow("log, new file lost") << true << false;
    QTest::newRow("log, no renaming") << true << true;
}

// The new file cannot take its place: the old one must not have lost the journal that makes it whole.
void FreshFileTest::AnOldBoxThatStaysHasWhatItsJournalHeld()
{
    QFETCH(bool, log);
    QFETCH(bool, made);
    QTemporaryDir elsewhere;
    const QString old = Path("alt.pzb");
    const Box box = MakeBox(elsewhere.path(), {.cards = 300});
    if (log) {
        const QString source = elsewhere.filePath("log.pzb");
        WriteFile(source, box.bytes);
        SQLite::Database database(source.toStdString(), SQLite::OPEN_READWRITE);
        database.exec("PRAGMA journal_mode=WAL; PRAGMA wal_autocheckpoint=0; "
                      "UPDATE Lernkarten SET Picture_9_Name='im Log'");
        for (const char *suffix : {"", "-wal"})
            QVERIFY(QFile::copy(source + suffix, old + suffix));
    } else {
        const Box amid = AmidTransaction(elsewhere.path(), box);
        WriteFile(old, amid.bytes);
        WriteFile(old + "-journal", amid.journal);
    }
    QVERIFY(HasUnfinishedChange(old));
    {
        FreshFile fresh(old);
        QString file;
        fresh.Make([&](const QString &path) {
            CardFile::Create(path);
            file = path;
        });
        if (!made)
            QVERIFY(QFile::remove(file));
        DiskCalls disk;
        disk.renameFails = [&old](const QString &to) { return to == old ? EIO : 0; };
        QVERIFY_EXCEPTION_THROWN(fresh.TakePlace(), StoreError);
    }
    if (log) {
        QCOMPARE(OtherProgram(old, "SELECT DISTINCT Picture_9_Name FROM Lernkarten"), QString("im Log\n"));
    } else {
        CardFile{old};
        const auto found = ReadDigests(old);
        QCOMPARE(found.size(), box.cards.size());
        for (const CardTruth &card : box.cards)
            QCOMPARE(found.value(card.marker), card.digest);
    }
}

// Nothing of it can be taken back, or it is no database: what stands there is replaced all the same.
void FreshFileTest::WhatIsNoSoundBoxIsReplacedWithItsJournal()
{
    QTemporaryDir elsewhere;
    const QByteArray journal =
        AmidTransaction(elsewhere.path(), MakeBox(elsewhere.path(), {.cards = 300})).journal;
    const QByteArray header("SQLite format 3\0", 16);
    for (const QByteArray &bytes : {QByteArray("Text"), header, header + QByteArray(8000, 'x')}) {
        for (const QByteArray &beside :
             {journal, QByteArray("stale"), journal + QByteArray::fromHex("d9d505f920a163d7")}) {
            WriteFile(Path("alt"), bytes);
            WriteFile(Path("alt-journal"), beside);
            QCOMPARE(::link(qPrintable(Path("alt")), qPrintable(Path("zweitname"))), 0);
            {
                FreshFile fresh(Path("alt"));
                fresh.Make([](const QString &path) { WriteFileSynced(path, "neu"); });
                fresh.TakePlace();
            }
            QCOMPARE(::ReadFile(Path("alt"), 100), "neu");
            if (!bytes.startsWith(header))
                QCOMPARE(::ReadFile(Path("zweitname"), 100), bytes);
            QVERIFY(QFile::remove(Path("zweitname")));
            QCOMPARE(Entries(), QStringList{"alt"});
        }
    }
}

// The name under which a file is made beside its place means nothing to its user.
void FreshFileTest::MessagesNameThePlaceOnly()
{
    QVERIFY(QDir(directory_->path()).mkdir("ordner"));
    WriteFileSynced(Path("ordner/voll"), "x");
    const QString longName(300, u'n');
    const auto take = [&](const QString &place, bool make) {
        try {
            FreshFile fresh(place);
            if (make)
                fresh.Make([](const QString &path) { WriteFileSynced(path, "x"); });
            fresh.TakePlace();
        } catch (const StoreError &error) {
            return error.Text();
        }
        return QString();
    };
    QCOMPARE(take(Path("ziel"), false), "Datei nicht gefunden: " + Path("ziel"));
    QCOMPARE(take(Path("ordner"), true), "Das ist ein Verzeichnis: " + Path("ordner"));
    QCOMPARE(take(Path(longName), true), "Der Dateiname ist zu lang: " + Path(longName));
    QVERIFY(Entries().isEmpty());
}

PAUKFIX_APPLESS_TEST(FreshFileTest)
#include "FreshFileTest.moc"
