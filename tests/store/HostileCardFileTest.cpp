// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KarteiOeffner.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"

#include <QDir>
#include <QFile>
#include <QTest>
#include <SQLiteCpp/Statement.h>

#include <algorithm>
#include <sys/resource.h>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

// The CREATE text of the table with one part replaced by another.
QByteArray OtherTable(const char *part, const char *replacement, const char *end = ")")
{
    QByteArray columns;
    for (const CardColumn &column : CardColumns())
        columns += (columns.isEmpty() ? "\"" : ",\"") + QByteArray(column.name) + "\" " + column.declaredType;
    return "CREATE TABLE Lernkarten(" + columns.replace(part, replacement) + end + ";" +
           "CREATE UNIQUE INDEX FrageNr ON Lernkarten(FrageNr);"
           "CREATE UNIQUE INDEX BoxKey ON Lernkarten(FachNr,FachLfdNr);";
}

const char *const twoCards = "INSERT INTO Lernkarten(FrageNr,FachNr,FachLfdNr,Antworttyp,Frage_Klartext) "
                             "VALUES(1,0,1,1,'eins'),(2,0,2,1,'zwei');";

QByteArray Varint(quint64 value)
{
    QByteArray bytes(1, static_cast<char>(value & 0x7f));
    while ((value >>= 7) != 0)
        bytes.prepend(static_cast<char>(0x80 | (value & 0x7f)));
    return bytes;
}

QByteArray Big32(quint32 value)
{
    QByteArray bytes;
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes += static_cast<char>(value >> shift & 0xff);
    return bytes;
}

} // namespace

// Card files that somebody made to do harm: they run nothing, reach nothing but themselves, and end in cards
// or in a clear message.
class HostileCardFileTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> directory_;
    TestMeldungen messages_;
    TestClock clock_;
    std::unique_ptr<CardStore> store_;
    std::unique_ptr<KarteiOeffner> oeffner_;

    QString Path(const QString &name) const { return directory_->filePath(name); }

    void Make(const QByteArray &sql) const
    {
        SQLite::Database database(Path(u"a.pzb"_s).toStdString(),
                                  SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
        database.exec(sql.toStdString());
    }

    QByteArray Bytes(const QString &name) const
    {
        QFile file(Path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    void Put(const QString &name, const QByteArray &bytes) const
    {
        QFile file(Path(name));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }

    bool Open()
    {
        QString name = u"a.pzb"_s;
        oeffner_->OpenCardFile(name);
        return store_->IsOpen();
    }

    // The number at the end of the last message.
    int Number() const
    {
        return messages_.Texte().isEmpty() ? 0 : messages_.Texte().last().section(u' ', -1).toInt();
    }

    // A card is moved, one added, one deleted; returns the error that ends this.
    int Learn()
    {
        try {
            CardRecordset &cards = store_->Karten();
            cards.MoveFirst();
            static_cast<void>(cards.Read());
            cards.Edit();
            store_->Felder().FachNr.Set(1);
            cards.Update();
            cards.AddNew();
            cards.Write(MakeCard(7, 2, 1));
            cards.Update();
            cards.AddNew(); // with nothing but its place
            store_->Felder().FrageNr.Set(8);
            store_->Felder().FachNr.Set(3);
            store_->Felder().FachLfdNr.Set(1);
            cards.Update();
            cards.MoveLast();
            cards.Delete();
        } catch (const StoreError &error) {
            if (!IsGermanMessage(error.Text()))
                qFatal("%s", qPrintable(error.Text()));
            return error.Number();
        }
        return 0;
    }

private slots:

    void init()
    {
        directory_ = std::make_unique<QTemporaryDir>();
        clock_.perSecond = 1;
        messages_.gezeigt.clear();
        messages_.antworten.clear();
        store_ = std::make_unique<CardStore>();
        oeffner_ = std::make_unique<KarteiOeffner>(*store_, messages_, clock_);
        store_->KarteiPfad = directory_->path();
    }

    void cleanup()
    {
        oeffner_.reset();
        store_.reset();
        directory_.reset();
    }

    void SchemasMadeToHarmEndInCardsOrAMessage_data()
    {
        QTest::addColumn<QByteArray>("sql");
        QTest::addColumn<int>("number");   // of the refusal, 0 where the file opens
        QTest::addColumn<int>("learning"); // the error of the first change, 0 for none
        const QByteArray table = OtherTable("", "");
        const QByteArray cards = twoCards;

        QTest::newRow("triggers that wipe the table")
            << table + cards +
                   "CREATE TABLE opfer(a); INSERT INTO opfer VALUES(1);"
                   "CREATE TRIGGER t1 AFTER UPDATE ON Lernkarten BEGIN DELETE FROM opfer; END;"
                   "CREATE TRIGGER t2 BEFORE INSERT ON Lernkarten BEGIN DELETE FROM opfer; END;"
                   "CREATE TRIGGER t3 AFTER DELETE ON Lernkarten BEGIN DELETE FROM opfer; END;"
            << 0 << 0;
        QTest::newRow("endless view under the table's name")
            << QByteArray(
                   "CREATE VIEW Lernkarten AS WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x+1 FROM "
                   "c) SELECT x AS FrageNr FROM c;")
            << 3078 << 0;
        QTest::newRow("endless view beside")
            << table + cards +
                   "CREATE VIEW v AS WITH RECURSIVE c(x) AS (SELECT 1 UNION ALL SELECT x+1 FROM c) SELECT * "
                   "FROM c, Lernkarten;"
            << 0 << 0;
        QTest::newRow("virtual table under the table's name")
            << QByteArray("CREATE VIRTUAL TABLE Lernkarten USING fts5(FrageNr, FachNr)") << 3078 << 0;
        QTest::newRow("virtual table beside")
            << table + cards + "CREATE VIRTUAL TABLE suche USING fts5(a);" << 0 << 0;
        QTest::newRow("computed question")
            << OtherTable("\"Frage_Klartext\" LONGTEXT",
                          "\"Frage_Klartext\" LONGTEXT AS (printf('%.*c', 90000000, 'x'))")
            << 3343 << 0;
        QTest::newRow("computed column beside")
            << OtherTable("\"FrageNr\" DOUBLE", "\"x\" AS (printf('%.*c', 100, 'x')),\"FrageNr\" DOUBLE") +
                   cards
            << 3343 << 0;
        QTest::newRow("no cards at all") << table << 0 << 3021;
        QTest::newRow("check that a moved card does not meet")
            << OtherTable("", "", ", CHECK(FachNr <> 1))") + cards << 0 << 0;
        QTest::newRow("field that must not be empty")
            << OtherTable("\"Picture_1_type\" TEXT(250)", "\"Picture_1_type\" TEXT(250) NOT NULL") +
                   "INSERT INTO Lernkarten(FrageNr,FachNr,FachLfdNr,Antworttyp,Picture_1_type) "
                   "VALUES(1,0,1,1,'x'),(2,0,2,1,'x');"
            << 0 << 19;
        QTest::newRow("new cards replace old ones")
            << OtherTable("", "", ", UNIQUE(FachNr) ON CONFLICT REPLACE)") +
                   "INSERT INTO Lernkarten(FrageNr,FachNr,FachLfdNr) VALUES(1,0,1),(2,1,1);"
            << 0 << 3022;
        QTest::newRow("index over a giant text")
            << table + "CREATE INDEX riese ON Lernkarten(printf('%.*c', FachNr * 2000000000, 'x'));" + cards
            << 3343 << 0;
        QTest::newRow("computed default")
            << OtherTable("\"Frage\" LONGTEXT",
                          "\"Frage\" LONGTEXT DEFAULT (printf('%.*c', 2000000000, 'x'))")
            << 3343 << 0;
        QTest::newRow("computed column in a table beside")
            << table + cards + "CREATE TABLE x(a, b AS (printf('%.*c', a, 'x'))); INSERT INTO x VALUES(100);"
            << 3343 << 0;
        QTest::newRow("index over a computed key")
            << QByteArray("CREATE TABLE Lernkarten(FrageNr, FachNr, FachLfdNr);"
                          "CREATE UNIQUE INDEX FrageNr ON Lernkarten(abs(FrageNr));"
                          "CREATE UNIQUE INDEX BoxKey ON Lernkarten(FachNr,FachLfdNr);")
            << 3343 << 0;
        QTest::newRow("index over some of the cards")
            << table +
                   "DROP INDEX FrageNr; CREATE UNIQUE INDEX FrageNr ON Lernkarten(FrageNr) WHERE "
                   "FrageNr > 1;" +
                   cards
            << 3343 << 0;
        QTest::newRow("table without rows' numbers")
            << OtherTable("\"FrageNr\" DOUBLE", "\"FrageNr\" DOUBLE PRIMARY KEY", ") WITHOUT ROWID") + cards
            << 1 << 0;
        QTest::newRow("order that the engine does not know")
            << table + cards +
                   "PRAGMA writable_schema=ON; UPDATE sqlite_schema SET sql=replace(sql,'\"FrageNr\" "
                   "DOUBLE','\"FrageNr\" DOUBLE COLLATE boese') WHERE name='Lernkarten';"
            << 1 << 0;
        QTest::newRow("numbers that are texts")
            << OtherTable("DOUBLE", "BLOB") +
                   "INSERT INTO Lernkarten(FrageNr,FachNr,FachLfdNr) VALUES('eins','null','x');"
            << 13 << 0;
        QTest::newRow("number beyond all numbers")
            << table + "INSERT INTO Lernkarten(FrageNr,FachNr,FachLfdNr) VALUES(9e999,0,1);" << 6 << 0;
        QTest::newRow("texts that are numbers, and bytes")
            << OtherTable("LONGTEXT", "ANYTHING") +
                   "INSERT INTO Lernkarten(FrageNr,FachNr,FachLfdNr,Frage,Frage_Klartext) "
                   "VALUES(1,0,1,x'00ff00ff',3.5);"
            << 0 << 0;
        QTest::newRow("keys of the schema that are none")
            << table + cards +
                   "PRAGMA writable_schema=ON; INSERT INTO sqlite_schema VALUES('table','x','x',0,"
                   "'CREATE TABLE x(a, ');"
            << 3049 << 0;
    }

    void SchemasMadeToHarmEndInCardsOrAMessage()
    {
        QFETCH(QByteArray, sql);
        QFETCH(int, number);
        QFETCH(int, learning);
        Make(sql);
        const bool opened = Open();
        QVERIFY2(opened == (number == 0), qPrintable(messages_.Texte().join(u'|')));
        for (const QString &text : messages_.Texte())
            QVERIFY2(IsGermanMessage(text), qPrintable(text));
        if (!opened)
            QVERIFY2(Number() == number, qPrintable(messages_.Texte().last()));
        else
            QCOMPARE(Learn(), learning);
        store_->CloseCardFile();
        SQLite::Database database(Path(u"a.pzb"_s).toStdString());
        if (sql.contains("opfer"))
            QCOMPARE(database.execAndGet("SELECT count(*) FROM opfer").getInt(), 1);
        QCOMPARE(QDir(directory_->path()).entryList(QDir::Files | QDir::Hidden), QStringList{u"a.pzb"_s});
    }

    // A text of 900 MB, declared in a cell whose pages are not there, or lead in a circle.
    void ATextDeclaredLongerThanTheFileIsDamage_data()
    {
        QTest::addColumn<bool>("circle");
        QTest::newRow("pages that are not there") << false;
        QTest::newRow("pages in a circle") << true;
    }

    void ATextDeclaredLongerThanTheFileIsDamage()
    {
        QFETCH(bool, circle);
        MakeCardFile(Path(u"a.pzb"_s), {MakeCard(1, 0, 1)});
        QByteArray bytes = Bytes(u"a.pzb"_s);
        constexpr qsizetype Page = 4096;
        const qsizetype leaf = bytes.indexOf(QByteArray("\x0d\x00\x00\x00\x01", 5), Page);
        QVERIFY(leaf > 0 && leaf % Page == 0);

        constexpr quint64 Length = 900'000'000;
        QByteArray types;
        for (const CardColumn &column : CardColumns())
            types += qstrcmp(column.name, "Frage_Klartext") == 0 ? Varint(13 + 2 * Length) : QByteArray(1, 0);
        const QByteArray record = Varint(static_cast<quint64>(types.size()) + 1) + types;
        const quint64 payload = static_cast<quint64>(record.size()) + Length;
        // As many bytes as the format keeps in the page.
        constexpr quint64 Most = Page - 35, Least = (Page - 12) * 32 / 255 - 23;
        quint64 local = Least + (payload - Least) % (Page - 4);
        if (local > Most)
            local = Least;
        QByteArray cell = Varint(payload) + Varint(1) + record;
        cell += QByteArray(static_cast<qsizetype>(local) - record.size(), 'x');
        const auto last = static_cast<quint32>(bytes.size() / Page + 1);
        cell += Big32(circle ? last : last + 7);
        const qsizetype at = Page - cell.size();
        bytes.replace(leaf + 5, 2, Big32(static_cast<quint32>(at)).last(2));
        bytes.replace(leaf + 8, 2, Big32(static_cast<quint32>(at)).last(2));
        bytes.replace(leaf + at, cell.size(), cell);
        bytes += Big32(last) + QByteArray(Page - 4, 'x');
        bytes.replace(28, 4, Big32(last));
        Put(u"a.pzb"_s, bytes);

        messages_.antworten = {Meldungen::Antwort::Ja};
        Open();
        for (const QString &text : messages_.Texte())
            QVERIFY2(IsGermanMessage(text) || text.startsWith(u"Datei "_s), qPrintable(text));
        QCOMPARE(messages_.Texte().first(), u"Diese Datei ist beschädigt Reparaturversuch ?"_s);
        rusage usage{};
        QCOMPARE(getrusage(RUSAGE_SELF, &usage), 0);
        QVERIFY2(usage.ru_maxrss < 512 * 1024, qPrintable(QString::number(usage.ru_maxrss)));
    }

    // A journal may name another one, which the engine opens wherever it is, and deletes.
    void AJournalReachesNoOtherFile()
    {
        MakeCardFile(Path(u"a.pzb"_s), {MakeCard(1, 0, 1)});
        const QString victim = Path(u"opfer.txt"_s);
        Put(u"opfer.txt"_s, QByteArray("wichtig", 8));
        const QByteArray name = QFile::encodeName(victim);
        const QByteArray mark("\xd9\xd5\x05\xf9\x20\xa1\x63\xd7", 8);
        quint32 sum = 0;
        for (const char c : name)
            sum += static_cast<quint32>(static_cast<signed char>(c));
        // A header without pages for a file of as many pages as there are, then the name.
        const auto pages = static_cast<quint32>(Bytes(u"a.pzb"_s).size() / 4096);
        QByteArray journal = mark + Big32(0) + Big32(1) + Big32(pages) + Big32(512) + Big32(4096);
        journal.append(512 - journal.size(), '\0');
        journal += Big32(0x40000000 / 4096 + 1) + name + Big32(static_cast<quint32>(name.size())) +
                   Big32(sum) + mark;
        Put(u"a.pzb-journal"_s, journal);

        QVERIFY(!Open());
        QCOMPARE(Number(), 3049);
        QVERIFY(QFile::exists(victim));
        messages_.antworten = {Meldungen::Antwort::Ja};
        QVERIFY2(Open(), qPrintable(messages_.Texte().join(u'|')));
        QCOMPARE(store_->Karten().RecordCount(), 1);
        QVERIFY(QFile::exists(victim));
    }
};

PAUKFIX_CORE_TEST(HostileCardFileTest)
#include "HostileCardFileTest.moc"
