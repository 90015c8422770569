// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "DamageLab.h"

#include "CardFile.h"
#include "CardRecord.h"
#include "StoreTestSupport.h"

#include <QCryptographicHash>
#include <QFile>
#include <SQLiteCpp/SQLiteCpp.h>

#include <algorithm>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

int Big16(const QByteArray &bytes, qint64 at)
{
    return static_cast<quint8>(bytes[at]) << 8 | static_cast<quint8>(bytes[at + 1]);
}

std::string AllColumns()
{
    std::string columns;
    for (const CardColumn &column : CardColumns())
        columns += std::string(columns.empty() ? "" : ",") + column.name;
    return columns;
}

// Digest of the 52 values from column `first` on, with their types.
QByteArray Digest(SQLite::Statement &row, int first)
{
    QCryptographicHash hash(QCryptographicHash::Md5);
    for (int i = first; i < first + CardColumnCount; ++i) {
        const SQLite::Column column = row.getColumn(i);
        const char type = static_cast<char>('0' + column.getType());
        hash.addData(QByteArrayView(&type, 1));
        const char *text = column.getText();
        hash.addData(QByteArrayView(text, column.getBytes()));
    }
    return hash.result();
}

QByteArray Marker(const char *question)
{
    const QByteArray text(question);
    return text.left(text.indexOf(' '));
}

QByteArray Words(Random &random, int length)
{
    static const QList<QByteArray> words{"Haus",  "laufen",  "größer", "weiß",   "die Übung", "und",
                                         "wofür", "because", "naïve",  "Straße", "42",        "(ugs.)"};
    QByteArray text;
    while (text.size() < length)
        text += words[Pick(random, words.size())] + ' ';
    return text;
}

QByteArray Rtf(const QByteArray &text)
{
    return "{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0 Arial;}}\\pard\\f0\\fs24 " + text + "\\par}";
}

// Most texts are short, some long, a few very long.
int TextLength(Random &random)
{
    const int kind = Pick(random, 100);
    return kind < 80   ? 20 + Pick(random, 250)
           : kind < 98 ? 300 + Pick(random, 3000)
                       : 5000 + Pick(random, 25000);
}

class Writer
{
public:
    Writer(SQLite::Database &database, Random &random)
        : random_(random),
          insert_(database, "INSERT INTO Lernkarten(FrageNr,FachNr,FachLfdNr,Antworttyp,Picture_1_Name,"
                            "Picture_9_Name,Picture_1_endlos,PictureTop,Frage,Frage_Klartext,Antwort_1,"
                            "Antwort_ch_1,Antwort_1_Klartext,Antwort_2) VALUES(?,?,?,?,?,?,?,?,?,?,?,?,?,?)"),
          move_(database, "UPDATE Lernkarten SET FachNr=?, FachLfdNr=? WHERE FrageNr=?"),
          edit_(database, "UPDATE Lernkarten SET Antwort_1=?, Antwort_1_Klartext=? WHERE FrageNr=?"),
          remove_(database, "DELETE FROM Lernkarten WHERE FrageNr=?")
    {
        places_.fill(0, 7);
        SQLite::Statement last(database, "SELECT FachNr, max(FachLfdNr) FROM Lernkarten GROUP BY FachNr");
        while (last.executeStep())
            places_[last.getColumn(0).getInt()] = last.getColumn(1).getInt();
    }

    void Insert(int number)
    {
        const QByteArray marker = 'K' + QByteArray::number(number) + '-' +
                                  QByteArray::number(quint64(random_()) << 32 | random_(), 16);
        const QByteArray question = marker + ' ' + Words(random_, TextLength(random_));
        const QByteArray answer = Words(random_, TextLength(random_));
        const int compartment = number % 3 == 0 ? Pick(random_, 7) : 0;
        insert_.bind(1, number);
        insert_.bind(2, compartment);
        insert_.bind(3, ++places_[compartment]);
        insert_.bind(4, 1 + number % 2);
        if (number % 5 == 0)
            insert_.bind(5, "Bild " + std::to_string(number) + ".bmp");
        insert_.bind(6, number % 7 == 0 ? "" : "Thema " + std::to_string(number % 7));
        insert_.bind(7, number % 11 == 0 ? -1 : 0);
        insert_.bind(8, number % 1000 * 7.5);
        insert_.bind(9, Rtf(question).toStdString());
        insert_.bind(10, question.toStdString());
        insert_.bind(11, Rtf(answer).toStdString());
        insert_.bind(12, number % 4 == 0 ? 1 : 0);
        insert_.bind(13, answer.toStdString());
        if (number % 13 == 0)
            insert_.bind(14, Words(random_, TextLength(random_)).toStdString());
        insert_.exec();
        insert_.reset();
        insert_.clearBindings();
    }

    void Move(int number)
    {
        const int compartment = Pick(random_, 7);
        Run(move_, compartment, ++places_[compartment], number);
    }

    void Edit(int number)
    {
        const QByteArray answer = "neu " + Words(random_, TextLength(random_));
        Run(edit_, Rtf(answer).toStdString(), answer.toStdString(), number);
    }

    void Delete(int number) { Run(remove_, number); }

private:
    template <class... Values>
    void Run(SQLite::Statement &statement, const Values &...values)
    {
        int index = 0;
        (statement.bind(++index, values), ...);
        statement.exec();
        statement.reset();
    }

    Random &random_;
    SQLite::Statement insert_, move_, edit_, remove_;
    QList<int> places_;
};

QList<int> Numbers(SQLite::Database &database)
{
    QList<int> numbers;
    SQLite::Statement rows(database, "SELECT FrageNr FROM Lernkarten ORDER BY FrageNr");
    while (rows.executeStep())
        numbers << rows.getColumn(0).getInt();
    return numbers;
}

QSet<QByteArray> Markers(SQLite::Database &database)
{
    QSet<QByteArray> markers;
    SQLite::Statement rows(database, "SELECT Frage_Klartext FROM Lernkarten");
    while (rows.executeStep())
        markers << Marker(rows.getColumn(0).getText());
    return markers;
}

// Finds every card's bytes with the page statistics of the engine.
void FindExtents(SQLite::Database &database, Box &box)
{
    struct Leaf
    {
        int page, cells;
    };

    QMap<QByteArray, Leaf> leaves;               // by path, which is the order of the rows
    QHash<QByteArray, QList<int>> overflowPages; // by path of the cell
    SQLite::Statement pages(database, "SELECT name, path, pageno, pagetype, ncell FROM dbstat");
    while (pages.executeStep()) {
        const QByteArray name = pages.getColumn(0).getText(), path = pages.getColumn(1).getText(),
                         type = pages.getColumn(3).getText();
        const int page = pages.getColumn(2).getInt();
        if (name == "FrageNr" || name == "BoxKey") {
            box.indexPages << page;
        } else if (name == "Lernkarten" && type == "overflow") {
            overflowPages[path.left(path.indexOf('+'))] << page;
        } else if (name == "Lernkarten" && type == "leaf") {
            leaves[path] = {page, pages.getColumn(4).getInt()};
            box.tableLeaves << page;
        } else if (name == "Lernkarten") {
            box.tableInteriors << page;
        }
    }

    SQLite::Statement rows(database, "SELECT FrageNr, Frage_Klartext," + AllColumns() +
                                         " FROM Lernkarten ORDER BY rowid");
    for (auto leaf = leaves.begin(); leaf != leaves.end(); ++leaf) {
        const qint64 start = qint64(leaf->page - 1) * box.pageSize;
        QList<int> pointers;
        for (int cell = 0; cell < leaf->cells; ++cell)
            pointers << Big16(box.bytes, start + 8 + qint64(2) * cell);
        QList<int> sorted = pointers;
        sorted << box.pageSize;
        std::sort(sorted.begin(), sorted.end());
        for (int cell = 0; cell < leaf->cells; ++cell) {
            if (!rows.executeStep())
                qFatal("the pages hold more cards than the table");
            CardTruth card;
            card.number = rows.getColumn(0).getInt();
            card.marker = Marker(rows.getColumn(1).getText());
            card.digest = Digest(rows, 2);
            const int end = *std::upper_bound(sorted.begin(), sorted.end(), pointers[cell]);
            card.extents.append({start + pointers[cell], start + end});
            const QByteArray path = leaf.key() + QByteArray::number(cell, 16).rightJustified(3, '0');
            for (const int page : overflowPages.value(path))
                card.extents.append({qint64(page - 1) * box.pageSize, qint64(page) * box.pageSize});
            box.cards << card;
        }
    }
    if (rows.executeStep())
        qFatal("the table holds more cards than the pages");
}

// The index is walked in its order: the entries of a leaf, then the one that divides it from the next leaf.
void FindNumberLeaves(SQLite::Database &database, Box &box)
{
    const QList<int> numbers = Numbers(database);
    qsizetype next = 0;
    SQLite::Statement pages(
        database, "SELECT pageno, ncell FROM dbstat WHERE name='FrageNr' AND pagetype='leaf' ORDER BY path");
    for (; pages.executeStep(); ++next) {
        const int count = pages.getColumn(1).getInt();
        box.numberLeaves[pages.getColumn(0).getInt()] = numbers.mid(next, count);
        next += count;
    }
    if (next != numbers.size() + 1)
        qFatal("the index has more than two levels");
}

void FindFreePages(Box &box)
{
    QSet<int> used(box.tableLeaves.begin(), box.tableLeaves.end());
    for (const QList<int> &pages : {box.tableInteriors, box.indexPages})
        used.unite(QSet<int>(pages.begin(), pages.end()));
    for (const CardTruth &card : box.cards)
        for (const CardTruth::Extent &extent : card.extents)
            used << static_cast<int>(extent.from / box.pageSize) + 1;
    for (int page = 2; page <= box.bytes.size() / box.pageSize; ++page)
        if (!used.contains(page))
            box.freePages << page;
}

Box TakeBox(const QString &path, const QSet<QByteArray> &everMarkers)
{
    Box box;
    box.bytes = ReadFile(path);
    SQLite::Database database(QFile::encodeName(path).constData(), SQLite::OPEN_READONLY);
    box.pageSize = database.execAndGet("PRAGMA page_size").getInt();
    FindExtents(database, box);
    FindNumberLeaves(database, box);
    FindFreePages(box);
    box.deletedMarkers = everMarkers - Markers(database);
    return box;
}

// One evening of work on a box.
void Work(SQLite::Database &database, Random &random)
{
    Writer writer(database, random);
    QList<int> numbers = Numbers(database);
    // A gap among the highest numbers, left by the evening before: it goes with the cards above it, and new
    // cards get all these numbers again.
    if (numbers.last() - numbers[numbers.size() - 3] > 2)
        for (int i = 0; i < 2; ++i)
            writer.Delete(numbers.takeLast());
    const int count = std::max<int>(1, static_cast<int>(numbers.size()) / 20);
    for (int i = 0; i < count; ++i) {
        writer.Move(numbers[Pick(random, numbers.size())]);
        writer.Edit(numbers[Pick(random, numbers.size())]);
        writer.Insert(numbers.last() + 1 + i);
    }
    for (int i = 0; i < count; ++i)
        writer.Delete(numbers[Pick(random, numbers.size())]);
    if (Pick(random, 2) == 0)
        writer.Delete(Numbers(database).at(Numbers(database).size() - 3));
}

} // namespace

int Pick(Random &random, qint64 below)
{
    return static_cast<int>(random() % static_cast<quint64>(below));
}

QList<CardRecord> SomeCards(int count)
{
    QList<CardRecord> cards;
    for (int number = 1; number <= count; ++number)
        cards << MakeCard(number, number % 7, number);
    return cards;
}

void WriteFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(path));
}

QByteArray ReadFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QList<const CardTruth *> Box::Untouched(const QByteArray &damaged) const
{
    QList<const CardTruth *> untouched;
    for (const CardTruth &card : cards)
        if (std::all_of(card.extents.begin(), card.extents.end(), [&](const CardTruth::Extent &extent) {
                return extent.to <= damaged.size() &&
                       std::equal(bytes.begin() + extent.from, bytes.begin() + extent.to,
                                  damaged.begin() + extent.from);
            }))
            untouched << &card;
    return untouched;
}

Box MakeBox(const QString &directory, const BoxOptions &options)
{
    const QString path = directory + u"/werkstatt.pzb"_s;
    QFile::remove(path);
    MakeEmptyCardFile(path, options.pageSize, options.sums);
    SQLite::Database database(QFile::encodeName(path).constData(), SQLite::OPEN_READWRITE);
    database.exec(std::string("PRAGMA synchronous=OFF; PRAGMA secure_delete=") +
                  (options.secureDelete ? "ON" : "OFF"));
    Random random(options.seed);
    {
        SQLite::Transaction transaction(database);
        Writer writer(database, random);
        for (int number = 1; number <= options.cards; ++number)
            writer.Insert(number);
        transaction.commit();
    }
    QSet<QByteArray> ever = Markers(database);
    {
        SQLite::Transaction transaction(database);
        Writer writer(database, random);
        const int count = options.cards;
        for (int i = 0; i < count / 3; ++i)
            writer.Move(1 + Pick(random, count));
        for (int i = 0; i < count / 10; ++i)
            writer.Edit(1 + Pick(random, count));
        for (int i = 0; i < count / 12 + 1; ++i)
            writer.Delete(1 + Pick(random, count));
        for (int i = 0; i < count / 20; ++i)
            writer.Insert(count + 1 + i);
        // A whole lesson goes, so that pages become free.
        for (int i = count / 2; i < count / 2 + count / 30; ++i)
            writer.Delete(i);
        transaction.commit();
    }
    ever.unite(Markers(database));
    return TakeBox(path, ever);
}

Box AfterTransaction(const QString &directory, const Box &box, quint32 seed, bool secureDelete)
{
    const QString path = directory + u"/werkstatt.pzb"_s;
    WriteFile(path, box.bytes);
    QSet<QByteArray> ever = box.deletedMarkers;
    {
        SQLite::Database database(QFile::encodeName(path).constData(), SQLite::OPEN_READWRITE);
        database.exec(std::string("PRAGMA synchronous=OFF; PRAGMA secure_delete=") +
                      (secureDelete ? "ON" : "OFF"));
        ever.unite(Markers(database));
        Random random(seed);
        SQLite::Transaction transaction(database);
        Work(database, random);
        transaction.commit();
        ever.unite(Markers(database));
    }
    return TakeBox(path, ever);
}

Box AmidTransaction(const QString &directory, const Box &box)
{
    const QString path = directory + u"/werkstatt.pzb"_s;
    WriteFile(path, box.bytes);
    Box amid = box;
    SQLite::Database database(QFile::encodeName(path).constData(), SQLite::OPEN_READWRITE);
    // So small a cache makes the engine write before the end.
    database.exec("PRAGMA cache_size=2; PRAGMA cache_spill=2");
    Random random(7);
    SQLite::Transaction transaction(database);
    Work(database, random);
    amid.bytes = ReadFile(path);
    amid.journal = ReadFile(path + u"-journal"_s);
    return amid;
}

QMultiHash<QByteArray, QByteArray> ReadDigests(const QString &path)
{
    QMultiHash<QByteArray, QByteArray> digests;
    try {
        SQLite::Database database(QFile::encodeName(path).constData(), SQLite::OPEN_READONLY);
        SQLite::Statement rows(database,
                               "SELECT Frage_Klartext," + AllColumns() + " FROM Lernkarten NOT INDEXED");
        while (rows.executeStep())
            digests.insert(Marker(rows.getColumn(0).getText()), Digest(rows, 1));
    } catch (const SQLite::Exception &) {
        return digests;
    }
    return digests;
}

} // namespace paukfix
