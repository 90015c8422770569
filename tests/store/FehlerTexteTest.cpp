// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardFileCheck.h"
#include "DamagedCards.h"
#include "JetSource.h"
#include "KarteiOeffner.h"
#include "Repair.h"
#include "ResourceLimit.h"
#include "SafeFile.h"
#include "StoreError.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"

#include <QDir>
#include <QTest>
#include <sqlite3.h>

#include <cerrno>
#include <fcntl.h>
#include <functional>
#include <new>
#include <optional>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

using namespace paukfix;
using namespace Qt::StringLiterals;

// What the user reads when something fails, word for word.
class FehlerTexteTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir directory_;

    QString Path(const QString &name = u"a.pzb"_s) const { return directory_.filePath(name); }

    // The text with the file's path replaced by DATEI and the directory's by ORDNER.
    QString Text(const std::function<void()> &step) const
    {
        try {
            step();
        } catch (const StoreError &error) {
            return error.Text().replace(Path(), u"DATEI"_s).replace(directory_.path(), u"ORDNER"_s);
        }
        return {};
    }

    void Sql(const char *sql) const
    {
        SQLite::Database database(Path().toStdString(), SQLite::OPEN_READWRITE);
        database.exec(sql);
    }

    // Runs `step` as a user who may not do everything.
    static void AsSomebody(const std::function<void()> &step)
    {
        const bool root = ::geteuid() == 0;
        if (root && ::seteuid(65534) != 0)
            qFatal("no other user to be");
        step();
        if (root && ::seteuid(0) != 0)
            qFatal("not the superuser any more");
    }

private slots:

    void init()
    {
        ::chmod(QFile::encodeName(directory_.path()).constData(), 0777);
        QFile::remove(Path());
        MakeCardFile(Path(), {MakeCard(1, 0, 1), MakeCard(2, 0, 2)});
        ::chmod(QFile::encodeName(Path()).constData(), 0666);
    }

    void ErrorsOfTheEngine_data()
    {
        QTest::addColumn<int>("code");
        QTest::addColumn<int>("number");
        QTest::addColumn<QString>("text");
        const auto row = [](int code, int number, const char *text) {
            QTest::addRow("%d", code) << code << number << QString::fromUtf8(text);
        };
        const char *damaged = "Die Datei „DATEI“ ist beschädigt oder keine Kartei.";
        const char *locked = "Die Datei „DATEI“ ist gesperrt: ein anderes Programm hat sie geöffnet.";
        const char *forbidden = "Die Datei „DATEI“ darf nicht geändert werden.";
        row(SQLITE_CORRUPT, 3049, damaged);
        row(SQLITE_CORRUPT_INDEX, 3049, damaged);
        row(SQLITE_NOTADB, 3049, damaged);
        row(SQLITE_BUSY, 3045, locked);
        row(SQLITE_LOCKED, 3045, locked);
        row(SQLITE_READONLY, 3051, forbidden);
        row(SQLITE_READONLY_DBMOVED, 3051, forbidden);
        row(SQLITE_PERM, 3051, forbidden);
        row(SQLITE_AUTH, 3051, forbidden);
        row(SQLITE_CANTOPEN, 3051, "Die Datei „DATEI“ kann nicht geöffnet werden.");
        row(SQLITE_FULL, 61, "Der Datenträger ist voll; in „DATEI“ wurde nichts gespeichert.");
        row(SQLITE_NOMEM, 7, "Nicht genügend Speicher.");
        row(SQLITE_TOOBIG, 3163, "Ein Text in der Datei „DATEI“ ist zu lang.");
        row(SQLITE_IOERR, 57, "Ein-/Ausgabefehler bei der Datei „DATEI“.");
        row(SQLITE_IOERR_FSYNC, 57, "Ein-/Ausgabefehler bei der Datei „DATEI“.");
        row(SQLITE_CONSTRAINT, SQLITE_CONSTRAINT, "Fehler der Datenbank bei der Datei „DATEI“ (Nummer 19).");
        row(SQLITE_ERROR, SQLITE_ERROR, "Fehler der Datenbank bei der Datei „DATEI“ (Nummer 1).");
    }

    void ErrorsOfTheEngine()
    {
        QFETCH(int, code);
        QFETCH(int, number);
        const SQLite::Exception error("not for users", code);
        QTEST(Text([&] { ThrowStoreError(error, Path()); }), "text");
        try {
            ThrowStoreError(error, Path());
        } catch (const StoreError &thrown) {
            QCOMPARE(thrown.Number(), number);
        }
    }

    void FilesThatCannotBeOpened_data()
    {
        QTest::addColumn<QByteArray>("sql");
        QTest::addColumn<QString>("text");
        QTest::newRow("table") << QByteArray("PRAGMA application_id=0; DROP TABLE Lernkarten")
                               << "Die Datei „DATEI“ enthält keine Tabelle „Lernkarten“.";
        QTest::newRow("index") << QByteArray("PRAGMA application_id=0; DROP INDEX BoxKey")
                               << "Die Datei „DATEI“ hat keinen Index „BoxKey“.";
        QTest::newRow("version") << QByteArray("PRAGMA user_version=3;"
                                               "ALTER TABLE Lernkarten ADD COLUMN Neues LONGTEXT")
                                 << "Die Datei „DATEI“ wurde mit einer neueren Version von Paukfix "
                                    "geschrieben.";
        QTest::newRow("computed")
            << QByteArray("PRAGMA application_id=0; ALTER TABLE Lernkarten ADD COLUMN boese AS (FrageNr*2)")
            << "Die Datei „DATEI“ enthält Berechnungen und wird deshalb nicht geöffnet.";
        QTest::newRow("ours without index")
            << QByteArray("DROP INDEX BoxKey") << "Die Datei „DATEI“ ist beschädigt oder keine Kartei.";
    }

    void FilesThatCannotBeOpened()
    {
        QFETCH(QByteArray, sql);
        Sql(sql.constData());
        QTEST(Text([&] { CardFile{Path()}; }), "text");
    }

    void AFileWhoseIndexContradictsItsTable()
    {
        // The table is changed while the index is not in the schema.
        Sql("CREATE TABLE Beiseite AS SELECT * FROM sqlite_schema WHERE name='FrageNr';"
            "PRAGMA writable_schema=ON; DELETE FROM sqlite_schema WHERE name='FrageNr'");
        Sql("UPDATE Lernkarten SET FrageNr=77 WHERE FrageNr=2;"
            "PRAGMA writable_schema=ON; INSERT INTO sqlite_schema SELECT * FROM Beiseite");
        CardFile file(Path());
        QCOMPARE(Text([&] { CheckCardFile(file.Database()); }), QString("Die Datei „DATEI“ ist beschädigt."));
    }

    void WhatIsNoCardFile()
    {
        const auto opening = [this](const QString &path) { return Text([&] { CardFile{path}; }); };
        QCOMPARE(opening(Path("fehlt.pzb")), QString("Die Datei „ORDNER/fehlt.pzb“ wurde nicht gefunden."));
        QCOMPARE(opening(Path("fehlt/a.pzb")), QString("Den Ordner „ORDNER/fehlt“ gibt es nicht."));
        QCOMPARE(opening(directory_.path()), QString("„ORDNER“ ist ein Ordner und keine Kartei."));
        QCOMPARE(opening("/dev/zero"), QString("„/dev/zero“ ist keine gewöhnliche Datei."));
        const QString tooLong(300, u'x');
        QCOMPARE(opening(Path(tooLong)),
                 QString("Der Dateiname „ORDNER/") + tooLong + QString("“ ist zu lang."));
        WriteFileSynced(Path(), {});
        QCOMPARE(opening(Path()), QString("Die Datei „DATEI“ ist leer und keine Kartei."));
        WriteFileSynced(Path(), "Text und keine Kartei");
        QCOMPARE(opening(Path()), QString("Die Datei „DATEI“ ist beschädigt oder keine Kartei."));
        QCOMPARE(Text([this] { RepairDatabase(Path()); }),
                 QString("In der Datei „DATEI“ ist nichts zu retten."));
    }

    void FilesOfTheFormerEngine()
    {
        const auto reading = [this](const QByteArray &bytes) {
            WriteFileSynced(Path(), bytes.leftJustified(4096, '\0'));
            return Text([this] { OpenJetCards(Path()); });
        };
        QCOMPARE(reading("etwas anderes"),
                 QString("Die Datei „DATEI“ ist keine Kartei im alten Dateiformat."));
        QCOMPARE(
            reading(QByteArray("\0\1\0\0Standard Jet DB\0\7", 21)),
            QString(
                "Die Datei „DATEI“ hat ein neueres Format der Jet-Datenbank; gelesen werden nur Jet 3 und "
                "Jet 4."));
    }

    void FilesThatAreForbidden()
    {
        const auto opening = [this] {
            QString text;
            AsSomebody([&] { text = Text([this] { CardFile{Path()}; }); });
            return text;
        };
        const QByteArray file = QFile::encodeName(Path());
        const QByteArray directory = QFile::encodeName(directory_.path());
        ::chmod(file.constData(), 0000);
        QCOMPARE(opening(), QString("Die Datei „DATEI“ darf nicht gelesen werden."));
        ::chmod(file.constData(), 0444);
        QCOMPARE(opening(), QString("Die Datei „DATEI“ ist schreibgeschützt."));
        ::chmod(file.constData(), 0666);
        ::chmod(directory.constData(), 0555);
        QCOMPARE(opening(), QString("Der Ordner „ORDNER“ ist schreibgeschützt."));
        QString text;
        AsSomebody([&] { text = Text([this] { RepairDatabase(Path()); }); });
        QCOMPARE(text, QString("Neben der Datei „DATEI“ darf nicht geschrieben werden."));
        ::chmod(directory.constData(), 0000);
        QCOMPARE(opening(), QString("Die Datei „DATEI“ darf nicht gelesen werden."));
        ::chmod(directory.constData(), 0777);
    }

    void FilesThatAreOpen()
    {
        CardFile file(Path());
        const QString locked("Die Datei „DATEI“ ist gesperrt: ein anderes Programm hat sie geöffnet.");
        QCOMPARE(Text([this] { CardFile{Path()}; }), locked);
        QCOMPARE(Text([this] { CheckReplaceable(Path()); }), locked);
        QVERIFY(QFile::rename(Path(), Path("weg.pzb")));
        QCOMPARE(Text([&] { file.CheckStillInPlace(); }),
                 QString("Die Datei „DATEI“ wurde gelöscht, umbenannt oder ersetzt, während sie offen war."));
        QVERIFY(QFile::rename(Path("weg.pzb"), Path()));
    }

    // A file that cannot even be opened is not a file that nobody has, nor one without cards.
    void NoDescriptorIsLeft()
    {
        const int next = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
        ::close(next);
        std::optional<ResourceLimit> none(std::in_place, RLIMIT_NOFILE, static_cast<rlim_t>(next));
        const QString replacing = Text([this] { CheckReplaceable(Path()); });
        const QString reading = Text([this] { OpenDamagedCards(Path()); });
        none.reset();
        QCOMPARE(replacing, QString("Zu viele Dateien sind offen: DATEI"));
        QCOMPARE(reading, QString("Zu viele Dateien sind offen: DATEI"));
    }

    void MisuseOfTheCards()
    {
        TestMeldungen messages;
        const TestClock clock;
        CardStore store;
        KarteiOeffner oeffner(store, messages, clock);
        QCOMPARE(Text([&] { store.Karten(); }), QString("Es ist keine Kartei geöffnet."));
        CardFile file(Path());
        CardRecordset cards(file);
        const Field nr = cards[u"FrageNr"], question = cards[u"Frage"];
        const Field topic = cards[u"Picture_9_Name"];
        QCOMPARE(Text([&] { cards.SetIndex(u"Thema"); }), QString("Einen Index „Thema“ gibt es nicht."));
        QCOMPARE(Text([&] { cards[u"Thema"]; }), QString("Das Feld „Thema“ fehlt in dieser Kartei."));
        QCOMPARE(Text([&] { cards.Update(); }), QString("Die Karte wird gerade nicht geändert."));
        cards.Edit();
        QCOMPARE(Text([&] {
                     Field(nr).Set(u"zwei"_s);
                     cards.Update();
                 }),
                 QString("Typen unverträglich im Feld „FrageNr“."));
        Field(nr).Set(40'000);
        QCOMPARE(Text([&] { cards.Update(); }),
                 QString("Überlauf im Feld „FrageNr“: Es fasst Zahlen von -32768 bis 32767."));
        Field(nr).Set(QVariant());
        QCOMPARE(Text([&] { cards.Update(); }),
                 QString("Das Feld „FrageNr“ ist leer, braucht aber einen Wert."));
        Field(nr).Set(2);
        QCOMPARE(Text([&] { cards.Update(); }), QString("Eine Karte mit diesem Schlüssel gibt es schon."));
        Field(nr).Set(1);
        Field(topic).Set(QString(251, u't'));
        QCOMPARE(Text([&] { cards.Update(); }),
                 QString("Der Text im Feld „Thema“ ist länger als 250 Zeichen."));
        cards.MoveLast();
        cards.MoveNext();
        QCOMPARE(Text([&] { question.Text(); }), QString("Kein aktueller Datensatz."));
    }

    void ACardInACompartmentThatIsNone()
    {
        Sql("UPDATE Lernkarten SET FachNr=7 WHERE FrageNr=2");
        TestMeldungen messages;
        const TestClock clock;
        CardStore store;
        KarteiOeffner oeffner(store, messages, clock);
        store.KarteiPfad = directory_.path();
        QString name = u"a.pzb"_s;
        oeffner.OpenCardFile(name);
        QCOMPARE(messages.Texte(),
                 (QStringList{"Diese Datei ist beschädigt Reparaturversuch ?",
                              "Eine Karte liegt in Fach 7; es gibt nur die Fächer 0 bis 6. Fcode: 9"}));
    }

    void ErrorsOfTheSystem_data()
    {
        QTest::addColumn<int>("error");
        QTest::addColumn<QString>("text");
        QTest::newRow("file") << ENOENT << "Datei nicht gefunden: DATEI";
        QTest::newRow("path") << ENOTDIR << "Pfad nicht gefunden: DATEI";
        QTest::newRow("access") << EACCES << "Zugriff verweigert: DATEI";
        QTest::newRow("read-only") << EROFS << "Der Datenträger ist schreibgeschützt: DATEI";
        QTest::newRow("directory") << EISDIR << "Das ist ein Verzeichnis: DATEI";
        QTest::newRow("full") << ENOSPC << "Der Datenträger ist voll: DATEI";
        QTest::newRow("memory") << ENOMEM << "Zu wenig Speicher: DATEI";
        QTest::newRow("files") << EMFILE << "Zu viele Dateien sind offen: DATEI";
        QTest::newRow("device") << EIO << "Ein-/Ausgabefehler (5): DATEI";
    }

    void ErrorsOfTheSystem()
    {
        QFETCH(int, error);
        QTEST(Text([&] { ThrowFileError(error, Path()); }), "text");
    }

    void ErrorsOfTheLanguage()
    {
        QCOMPARE(ErrorText(std::bad_alloc()), QString("Nicht genügend Speicher."));
        QCOMPARE(ErrorText(std::out_of_range("array::at")), QString("Unerwarteter Fehler (array::at)."));
        QCOMPARE(ErrorText(StoreError(9, u"Fächer"_s)), QString("Fächer"));
    }
};

PAUKFIX_CORE_TEST(FehlerTexteTest)
#include "FehlerTexteTest.moc"
