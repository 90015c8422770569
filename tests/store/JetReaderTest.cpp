// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "JetCards.h"
#include "JetLab.h"
#include "SafeFile.h"
#include "StoreError.h"
#include "StoreTestSupport.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>

#include <bit>
#include <fcntl.h>

class JetReaderTest : public QObject
{
    Q_OBJECT

private slots:
    void EveryFieldIsReadAsItWasWritten_data();
    void EveryFieldIsReadAsItWasWritten();
    void TableWithoutRowsHasNoCards();
    void RowsOfEveryLengthAreRead();
    void MemosOfEveryLengthAreRead();
    void NullAndEmptyAreKeptApart();
    void CharactersOutsideTheCodePageAreKept();
    void BytesTheCodePageLacksStayControlCharacters();
    void HalfCharactersAreReplacedAndRemarked();
    void DeletedRowsStayDeleted();
    void MovedRowIsReadOnceAndNotAfterItsPointerWasDeleted();
    void MapsInFurtherPagesAndLongDefinitionsAreRead();
    void FileIsRefusedWithItsReason_data();
    void FileIsRefusedWithItsReason();
    void DamagedPageCostsOnlyTheCardsOnIt();
    void PagesThatADamagedMapLeavesOutAreFound();
    void TableIsFoundWhereTheCatalogueIsDamaged();
    void BrokenMemoIsKeptUpToTheBreak();
    void SeveralBrokenMemosAreNamedTogether();
    void ForgedPointersEndWithoutHarm_data();
    void ForgedPointersEndWithoutHarm();
    void OneMemoAskedForByManyIsNotReadForAll();
    void AnyBytesEndWithoutHarm();
    void FileIsOpenedForReadingOnly();
};

namespace {

struct Found
{
    QList<SalvagedCard> cards;
    QList<CardPlan> plans;
    std::uint32_t lost = 0;
};

QString Put(const QTemporaryDir &directory, const QByteArray &bytes)
{
    const QString path = directory.filePath(QStringLiteral("früher.pzb"));
    WriteFileSynced(path, bytes);
    return path;
}

Found Read(const QByteArray &bytes)
{
    const QTemporaryDir directory;
    JetCards cards(Put(directory, bytes));
    Found found;
    for (const CardPlan &plan : cards.Cards()) {
        found.plans << plan;
        found.cards << cards.Read(plan);
    }
    found.lost = cards.Lost();
    return found;
}

// The values as a reader must deliver them.
SalvagedCard Expected(const JetLab::Row &row)
{
    SalvagedCard card;
    for (std::size_t i = 0; i < row.size(); ++i) {
        if (const auto *text = std::get_if<QString>(&row[i]))
            card.values[i] = text->toUtf8();
        else if (const auto *number = std::get_if<double>(&row[i]))
            card.values[i] = *number;
        else if (const auto *flag = std::get_if<bool>(&row[i]))
            card.values[i] = *flag ? -1.0 : 0.0;
    }
    return card;
}

QStringList Remarks(const SalvagedCard &card)
{
    QStringList texts;
    for (const Remark &remark : card.remarks)
        texts << remark.text;
    return texts;
}

QStringList Numbers(const Found &found)
{
    QStringList numbers;
    for (const CardPlan &plan : found.plans)
        numbers << QString::number(plan.number);
    return numbers;
}

void CheckRows(JetLab &lab, const QList<JetLab::Row> &rows)
{
    for (const JetLab::Row &row : rows)
        lab.Add(row);
    const Found found = Read(lab.Bytes());
    QCOMPARE(found.cards.size(), rows.size());
    QCOMPARE(found.lost, 0U);
    for (qsizetype i = 0; i < rows.size(); ++i) {
        const SalvagedCard expected = Expected(rows[i]);
        QVERIFY2(found.cards[i].remarks.empty(), qPrintable(Remarks(found.cards[i]).join(u';')));
        for (int column = 0; column < CardColumnCount; ++column)
            QVERIFY2(found.cards[i].values[static_cast<std::size_t>(column)] ==
                         expected.values[static_cast<std::size_t>(column)],
                     qPrintable(QStringLiteral("card %1, %2").arg(i).arg(ColumnText(column))));
    }
}

// A card with a value of its own in every field.
JetLab::Row FullRow(int number)
{
    JetLab::Row row = JetLab::RowOf(MakeCard(number, number % 7, number));
    for (std::size_t i = 3; i < row.size(); ++i) {
        const auto kind = static_cast<int>(CardColumns()[i].member.index());
        const QString text = QStringLiteral("%1 ü %2").arg(number).arg(i);
        row[i] = kind == 0   ? JetLab::Value(static_cast<double>(i) * 1.25 - number)
                 : kind == 1 ? JetLab::Value(text)
                             : JetLab::Value((i + static_cast<std::size_t>(number)) % 2 == 0);
    }
    return row;
}

JetLab Three(int version)
{
    JetLab lab(version);
    for (int i = 1; i <= 3; ++i)
        lab.Add(MakeCard(i, 0, i));
    return lab;
}

QByteArray Number(std::uint32_t number, int bytes = 4)
{
    QByteArray text;
    for (int i = 0; i < bytes; ++i)
        text += static_cast<char>(i < 4 ? number >> 8 * i : 0);
    return text;
}

constexpr int frage = 35; // column of the question

} // namespace

void JetReaderTest::EveryFieldIsReadAsItWasWritten_data()
{
    QTest::addColumn<int>("version");
    QTest::addColumn<int>("memo");
    QTest::addColumn<bool>("compress");
    for (const int version : {3, 4})
        for (const int memo : {0, 1, 2})
            for (const bool compress : {false, true})
                if (version == 4 || !compress)
                    QTest::addRow("version %d memo %d compress %d", version, memo, compress ? 1 : 0)
                        << version << memo << compress;
}

void JetReaderTest::EveryFieldIsReadAsItWasWritten()
{
    QFETCH(const int, version);
    QFETCH(const int, memo);
    QFETCH(const bool, compress);
    JetLab lab(version);
    lab.memo = static_cast<JetLab::Memo>(memo);
    lab.compress = compress;
    QList<JetLab::Row> rows;
    for (int i = 1; i <= 20; ++i)
        rows << FullRow(i) << JetLab::RowOf(MakeCard(100 + i, 2, 100 + i));
    std::sort(rows.begin(), rows.end(), [](const JetLab::Row &one, const JetLab::Row &other) {
        return std::get<double>(one[0]) < std::get<double>(other[0]);
    });
    CheckRows(lab, rows);
}

void JetReaderTest::TableWithoutRowsHasNoCards()
{
    for (const int version : {3, 4}) {
        const Found found = Read(JetLab(version).Bytes());
        QVERIFY(found.cards.isEmpty());
        QCOMPARE(found.lost, 0U);
    }
}

// In version 3 rows over 256 bytes have a jump table, and at some lengths one with a dummy entry.
void JetReaderTest::RowsOfEveryLengthAreRead()
{
    for (const int version : {3, 4}) {
        JetLab lab(version);
        lab.memo = JetLab::Memo::InRow;
        QList<JetLab::Row> rows;
        for (int length = 0; length <= 1100; length += version == 3 ? 1 : 13) {
            JetLab::Row row;
            row[0] = static_cast<double>(length + 1);
            row[1] = 0.0;
            row[2] = static_cast<double>(length + 1);
            for (std::size_t i = 22; i < 31; ++i)
                row[i] = false;
            for (std::size_t i = 42; i < 47; ++i)
                row[i] = false;
            row[4] = QString(length % 7, u'n');
            row[frage] = QString(length, u'f');
            row[51] = QString(length % 3, u'a');
            rows << row;
        }
        CheckRows(lab, rows);
    }
}

void JetReaderTest::MemosOfEveryLengthAreRead()
{
    for (const int version : {3, 4}) {
        JetLab lab(version);
        lab.memo = JetLab::Memo::Chained;
        lab.compress = false;
        QList<JetLab::Row> rows;
        int number = 0;
        for (const int length :
             {0, 1, 1015, 1016, 1017, 2031, 2032, 2033, 2037, 2038, 2039, 4075, 4076, 4077, 20000, 70000}) {
            ++number;
            JetLab::Row row = JetLab::RowOf(MakeCard(number, 0, number));
            row[frage] = QString(length, u'ä');
            rows << row;
        }
        CheckRows(lab, rows);
    }
}

void JetReaderTest::NullAndEmptyAreKeptApart()
{
    for (const int version : {3, 4}) {
        JetLab lab(version);
        lab.memo = JetLab::Memo::InRow;
        JetLab::Row row;
        row[0] = 7.0;
        row[1] = 1.0;
        row[2] = 1.0;
        row[4] = QString();
        row[frage] = QString();
        lab.Add(row);
        const Found found = Read(lab.Bytes());
        QCOMPARE(found.cards.size(), 1);
        const SalvagedCard &card = found.cards.front();
        QVERIFY(card.remarks.empty());
        QVERIFY(card.values[4] == SalvagedCard::Value(QByteArray("")));
        QVERIFY(card.values[frage] == SalvagedCard::Value(QByteArray("")));
        for (const std::size_t column : {3, 5, 21, 31, 36, 51})
            QVERIFY(std::holds_alternative<std::monostate>(card.values[column]));
        QVERIFY(card.values[22] == SalvagedCard::Value(0.0));
    }
}

void JetReaderTest::CharactersOutsideTheCodePageAreKept()
{
    for (const bool compress : {false, true}) {
        JetLab lab(4);
        lab.compress = compress;
        JetLab::Row row = JetLab::RowOf(MakeCard(1, 0, 1));
        row[frage] = QStringLiteral("日本 dazwischen русский € 😀 zurück");
        row[36] = QStringLiteral("Ā hat eine Null im unteren Byte");
        CheckRows(lab, {row});
    }
}

void JetReaderTest::BytesTheCodePageLacksStayControlCharacters()
{
    JetLab lab(3);
    CardRecord card = MakeCard(1, 0, 1);
    card.Frage = QStringLiteral("12345 €");
    lab.Add(card);
    QByteArray bytes = lab.Bytes();
    bytes.replace("12345 \x80", "\x81\x8D\x8F\x90\x9D \x80");
    QCOMPARE(Read(bytes).cards.value(0).Text(frage), QString::fromUtf16(u"\u0081\u008D\u008F\u0090\u009D €"));
}

void JetReaderTest::HalfCharactersAreReplacedAndRemarked()
{
    JetLab lab(4);
    CardRecord card = MakeCard(1, 0, 1);
    card.Frage = QStringLiteral("a") + QChar(0xD83D) + QStringLiteral("b😀");
    lab.compress = false;
    lab.Add(card);
    const SalvagedCard found = Read(lab.Bytes()).cards.value(0);
    QCOMPARE(found.Text(frage), QStringLiteral("a\uFFFDb😀"));
    QCOMPARE(Remarks(found), QStringList{"Frage enthielt unlesbare Zeichen"});
}

void JetReaderTest::DeletedRowsStayDeleted()
{
    for (const int version : {3, 4}) {
        JetLab lab = Three(version);
        lab.Delete(1);
        const Found found = Read(lab.Bytes());
        QCOMPARE(Numbers(found), (QStringList{"1", "3"}));
        QCOMPARE(found.lost, 0U);
    }
}

void JetReaderTest::MovedRowIsReadOnceAndNotAfterItsPointerWasDeleted()
{
    for (const int version : {3, 4}) {
        JetLab lab = Three(version);
        lab.Move(0);
        lab.Move(1);
        lab.Delete(1);
        const Found found = Read(lab.Bytes());
        QCOMPARE(Numbers(found), (QStringList{"1", "3"}));
        QCOMPARE(found.cards[0].Text(frage), QStringLiteral("Frage 1"));
    }
}

void JetReaderTest::MapsInFurtherPagesAndLongDefinitionsAreRead()
{
    for (const int version : {3, 4}) {
        JetLab lab = Three(version);
        lab.mapType = 1;
        lab.realIndexes = 900;
        QCOMPARE(Numbers(Read(lab.Bytes())), (QStringList{"1", "2", "3"}));
    }
}

void JetReaderTest::FileIsRefusedWithItsReason_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("error");
    QTest::addColumn<QString>("reason");
    const QString newer(
        "Die Datei „DATEI“ wurde mit einer neueren Version der früheren Datenbank geschrieben, die "
        "Paukfix nicht liest (Jet 3 und Jet 4 liest es).");
    for (const int version : {3, 4}) {
        const auto row = [&](const char *name, const std::function<void(JetLab &)> &change, int error,
                             const QString &reason) {
            JetLab lab = Three(version);
            change(lab);
            QTest::addRow("%s, version %d", name, version) << lab.Bytes() << error << reason;
        };
        const QString file("Die Datei „DATEI“ ");
        row(
            "password", [](JetLab &lab) { lab.password = "geheim"; }, Fehler::KennwortFalsch,
            file + "ist mit einem Kennwort geschützt und lässt sich nicht lesen.");
        row(
            "encryption", [](JetLab &lab) { lab.databaseKey = 0x1234; }, Fehler::FormatUnbekannt,
            file + "ist verschlüsselt und lässt sich nicht lesen.");
        row(
            "newer", [](JetLab &lab) { lab.versionByte = 2; }, Fehler::FormatUnbekannt, newer);
        row(
            "code page", [](JetLab &lab) { lab.codePage = 1250; }, Fehler::FormatUnbekannt,
            file + "benutzt die Codeseite 1250; gelesen werden nur Windows-1252 und Unicode.");
        row(
            "table", [](JetLab &lab) { lab.tableName = "Karten"; }, Fehler::TabelleFehlt,
            file + "enthält keine Tabelle „Lernkarten“.");
        row(
            "field", [](JetLab &lab) { lab.renamed["PictureTop"] = "Oben"; }, Fehler::FeldFehlt,
            "Das Feld „PictureTop“ fehlt in dieser Kartei.");
        row(
            "type", [](JetLab &lab) { lab.retyped["FachNr"] = 8; }, Fehler::TypUnvertraeglich,
            "Typen unverträglich im Feld „FachNr“.");
    }
    JetLab lab = Three(3);
    lab.columnCodePage = 1251;
    QTest::newRow("code page of a field") << lab.Bytes() << Fehler::FormatUnbekannt
                                          << "Das Feld „Picture_1_Name“ benutzt die Codeseite 1251; gelesen "
                                             "werden nur Windows-1252 und Unicode.";
    QTest::newRow("newest") << QByteArray("\0\1\0\0Standard ACE DB\0\2\0\0\0", 24) << Fehler::FormatUnbekannt
                            << newer;
    QTest::newRow("nothing but a header")
        << lab.Bytes().left(2048) << Fehler::Beschaedigt << "Die Datei „DATEI“ ist beschädigt.";
}

void JetReaderTest::FileIsRefusedWithItsReason()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const int, error);
    QFETCH(const QString, reason);
    try {
        Read(bytes);
        QFAIL("read");
    } catch (const StoreError &refusal) {
        QCOMPARE(refusal.Number(), error);
        QCOMPARE(refusal.Text().replace(QRegularExpression("„/[^“]*“"), "„DATEI“"), reason);
    }
}

void JetReaderTest::DamagedPageCostsOnlyTheCardsOnIt()
{
    for (const int version : {3, 4}) {
        JetLab lab(version);
        for (int i = 1; i <= 9; ++i) {
            if (i == 4 || i == 7)
                lab.BreakPage();
            lab.Add(MakeCard(i, 0, i));
        }
        QByteArray bytes = lab.Bytes();
        bytes.replace(lab.PageOf(4) * lab.PageSize(), lab.PageSize(), QByteArray(lab.PageSize(), '\0'));
        const Found found = Read(bytes);
        QCOMPARE(Numbers(found), (QStringList{"1", "2", "3", "7", "8", "9"}));
        QCOMPARE(found.lost, 3U);
        for (const SalvagedCard &card : found.cards)
            QVERIFY(card.remarks.empty());
        // A file that was cut off.
        QCOMPARE(Numbers(Read(lab.Bytes().left(lab.PageOf(8) * lab.PageSize()))).size(), 6);
    }
}

void JetReaderTest::PagesThatADamagedMapLeavesOutAreFound()
{
    for (const int version : {3, 4}) {
        JetLab lab = Three(version);
        QByteArray bytes = lab.Bytes();
        bytes.replace(JetLab::MapPage * lab.PageSize() + 100, lab.PageSize() - 100,
                      QByteArray(lab.PageSize() - 100, '\0'));
        QCOMPARE(Numbers(Read(bytes)), (QStringList{"1", "2", "3"}));
    }
}

void JetReaderTest::TableIsFoundWhereTheCatalogueIsDamaged()
{
    for (const int version : {3, 4}) {
        JetLab lab = Three(version);
        QByteArray bytes = lab.Bytes();
        bytes.replace(JetLab::CataloguePage * lab.PageSize(), lab.PageSize(),
                      QByteArray(lab.PageSize(), '\x7F'));
        QCOMPARE(Numbers(Read(bytes)), (QStringList{"1", "2", "3"}));
    }
}

void JetReaderTest::BrokenMemoIsKeptUpToTheBreak()
{
    for (const int version : {3, 4}) {
        JetLab lab(version);
        lab.memo = JetLab::Memo::Chained;
        lab.compress = false;
        lab.chainPart = 100;
        JetLab::Row row;
        row[0] = row[2] = 1.0;
        row[1] = 0.0;
        row[frage] = QString(1000, u'x');
        lab.Add(row);
        QByteArray bytes = lab.Bytes();
        // The parts are written from the last to the first.
        const int third = lab.LongPages().at(lab.LongPages().size() - 3);
        bytes[third * lab.PageSize() + 4] = 'X';
        const SalvagedCard card = Read(bytes).cards.value(0);
        QCOMPARE(card.Text(frage), QString(version == 3 ? 200 : 100, u'x'));
        QCOMPARE(Remarks(card), QStringList{"Frage bricht ab"});
    }
}

void JetReaderTest::SeveralBrokenMemosAreNamedTogether()
{
    const int answer = CardColumnIndex(u"Antwort_1");
    JetLab lab(4);
    lab.memo = JetLab::Memo::Chained;
    lab.compress = false;
    lab.chainPart = 100;
    JetLab::Row row;
    row[0] = row[2] = 1.0;
    row[1] = 0.0;
    row[frage] = row[static_cast<std::size_t>(answer)] = QString(1000, u'x');
    lab.Add(row);
    const QByteArray whole = lab.Bytes();
    // Of each text the parts are written from the last to the first.
    const qsizetype parts = lab.LongPages().size() / 2;
    const auto broken = [&](qsizetype part) {
        QByteArray bytes = whole;
        for (const qsizetype end : {parts, 2 * parts})
            bytes[lab.LongPages().at(end - part) * lab.PageSize() + 4] = 'X';
        return Remarks(Read(bytes).cards.value(0));
    };
    QCOMPARE(broken(3), QStringList{"Frage, Antwort 1 brechen ab"});
    QCOMPARE(broken(1), QStringList{"Frage, Antwort 1 fehlen"});
}

void JetReaderTest::ForgedPointersEndWithoutHarm_data()
{
    QTest::addColumn<int>("version");
    QTest::addColumn<QString>("forgery");
    for (const int version : {3, 4})
        for (const char *forgery :
             {"memo loop", "memo length", "memo outside", "memo in a table's page", "row outside",
              "row before the table", "row table full", "row without end", "moved to itself", "moved outside",
              "definition loop", "definition outside", "map outside", "columns", "values"})
            QTest::addRow("%s, version %d", forgery, version) << version << QString(forgery);
}

// The second card of three is hit; first and third stay what they were.
void JetReaderTest::ForgedPointersEndWithoutHarm()
{
    QFETCH(const int, version);
    QFETCH(const QString, forgery);
    JetLab lab(version);
    lab.memo = JetLab::Memo::Chained;
    lab.compress = false;
    lab.chainPart = 40;
    lab.realIndexes = forgery == "definition loop" ? 900 : 2;
    for (int i = 1; i <= 3; ++i) {
        JetLab::Row row;
        row[0] = row[2] = static_cast<double>(i);
        row[1] = 0.0;
        row[frage] = QString(100, u'x');
        lab.Add(row);
    }
    if (forgery.startsWith("moved"))
        lab.Move(1);
    QByteArray bytes = lab.Bytes();
    const auto [at, size] = lab.RowAt(1);
    const int tail = 7 + (version == 3 ? 1 : 2); // mask and number of values
    const int head = at + (version == 3 ? 1 : 2) + 8 * 8;
    const QList<int> &parts = lab.LongPages(); // of one card after the other, the last part first
    const int each = static_cast<int>(parts.size()) / 3;
    const int firstPart = parts[2 * each - 1];
    const int pageSize = lab.PageSize();
    const auto put = [&](int where, std::uint32_t number, int count = 4) {
        bytes.replace(where, count, Number(number, count));
    };
    // A part begins where its page's only row begins, with the pointer to the next.
    const auto partAt = [&](int page) {
        return page * pageSize +
               (static_cast<std::uint8_t>(bytes[page * pageSize + (version == 3 ? 10 : 14)]) |
                static_cast<std::uint8_t>(bytes[page * pageSize + (version == 3 ? 11 : 15)]) << 8);
    };
    if (forgery == "memo loop")
        put(partAt(parts[2 * each - 2]), JetLab::Pointer(firstPart, 0));
    else if (forgery == "memo length")
        put(head, 0x3FFFFFFF);
    else if (forgery == "memo outside")
        put(head + 4, 0xFFFFFF00);
    else if (forgery == "memo in a table's page")
        put(head + 4, JetLab::Pointer(lab.PageOf(1), 0));
    else if (forgery == "row outside")
        put(lab.RowEntryAt(1), 0x1FFF, 2);
    else if (forgery == "row before the table")
        put(lab.RowEntryAt(1), 0x0003, 2);
    else if (forgery == "row table full")
        put(lab.PageOf(1) * pageSize + (version == 3 ? 8 : 12), 0xFFFF, 2);
    else if (forgery == "row without end")
        put(lab.RowEntryAt(1), static_cast<std::uint32_t>((at + size) % pageSize), 2);
    else if (forgery == "moved to itself")
        put(at, JetLab::Pointer(lab.PageOf(1), 1));
    else if (forgery == "moved outside")
        put(at, 0x00FFFFFF);
    else if (forgery == "definition loop")
        put(lab.DefinitionPage() * pageSize + 4, static_cast<std::uint32_t>(lab.DefinitionPage()));
    else if (forgery == "definition outside")
        put(lab.DefinitionPage() * pageSize + 4, 0xFFFFFFFF);
    else if (forgery == "map outside")
        bytes.replace(JetLab::MapPage * pageSize + 100, pageSize - 100, QByteArray(pageSize - 100, '\xFF'));
    else if (forgery == "columns")
        put(at, 0xFF, 1);
    else if (forgery == "values")
        put(at + size - tail, 0xFF, 1);
    try {
        const Found found = Read(bytes);
        QVERIFY(!found.cards.isEmpty());
        QCOMPARE(found.plans.front().number, 1);
        if (!forgery.startsWith("row")) // the rows of a page stand on each other
            QCOMPARE(found.plans.back().number, 3);
        QCOMPARE(found.cards.front().Text(frage), QString(100, u'x'));
        if (forgery == "memo length" || forgery == "memo loop")
            QCOMPARE(Remarks(found.cards[1]), QStringList{"Frage bricht ab"});
        if (forgery == "memo outside" || forgery.contains("table's"))
            QCOMPARE(Remarks(found.cards[1]), QStringList{"Frage fehlt"});
        if (forgery.startsWith("moved") || forgery == "columns" || forgery == "values") {
            QCOMPARE(found.cards.size(), 2);
            QCOMPARE(found.lost, 1U);
        }
    } catch (const StoreError &error) {
        QVERIFY2(forgery == "definition loop", error.what());
        QCOMPARE(error.Number(), Fehler::Beschaedigt);
    }
}

// Thousands of cards that all lead to one long memo would make terabytes of a small file.
void JetReaderTest::OneMemoAskedForByManyIsNotReadForAll()
{
    JetLab lab(4);
    lab.memo = JetLab::Memo::Chained;
    lab.compress = false;
    JetLab::Row row;
    row[0] = row[2] = 1.0;
    row[1] = 0.0;
    row[frage] = QString(40000, u'x');
    const int first = lab.Add(row);
    QByteArray bytes = lab.Bytes();
    const auto [at, size] = lab.RowAt(first);
    QByteArray copy = bytes.mid(at, size);
    for (int i = 2; i <= 500; ++i) {
        copy.replace(2, 8, Number(0, 8));
        const auto number = std::bit_cast<std::uint64_t>(static_cast<double>(i));
        for (int byte = 0; byte < 8; ++byte)
            copy[2 + byte] = static_cast<char>(number >> 8 * byte);
        lab.AddRaw(copy);
    }
    const Found found = Read(lab.Bytes());
    QCOMPARE(found.cards.size(), 500);
    qsizetype texts = 0;
    for (const SalvagedCard &card : found.cards)
        texts += card.Text(frage).size();
    QVERIFY2(texts >= 40000 && texts < 5 * 40000, qPrintable(QString::number(texts)));
}

void JetReaderTest::AnyBytesEndWithoutHarm()
{
    QRandomGenerator random(2711);
    for (const int version : {3, 4}) {
        JetLab lab = Three(version);
        lab.Move(2);
        lab.mapType = version == 3 ? 1 : 0;
        lab.memo = version == 3 ? JetLab::Memo::Chained : JetLab::Memo::OnePage;
        const QByteArray sound = lab.Bytes();
        int read = 0;
        for (int round = 0; round < 400; ++round) {
            QByteArray bytes = sound;
            for (int change = 0; change <= round % 9; ++change)
                bytes[static_cast<qsizetype>(random.bounded(0x98, static_cast<int>(bytes.size())))] =
                    static_cast<char>(random.bounded(256));
            try {
                read += static_cast<int>(Read(bytes).cards.size());
            } catch (const StoreError &error) {
                QVERIFY(!error.Text().isEmpty());
            }
        }
        QVERIFY(read > 400);
    }
}

void JetReaderTest::FileIsOpenedForReadingOnly()
{
    const QTemporaryDir directory;
    const QByteArray bytes = Three(4).Bytes();
    const QString path = Put(directory, bytes);
    JetCards cards(path);
    int open = 0;
    const QDir descriptors(QStringLiteral("/proc/self/fd"));
    for (const QString &name : descriptors.entryList(QDir::Files | QDir::System))
        if (QFile::symLinkTarget(descriptors.filePath(name)) == path) {
            ++open;
            QCOMPARE(fcntl(name.toInt(), F_GETFL) & O_ACCMODE, O_RDONLY);
        }
    QCOMPARE(open, 1);
    for (const CardPlan &plan : cards.Cards())
        cards.Read(plan);
    QCOMPARE(ReadFile(path, bytes.size()), bytes);
}

QTEST_GUILESS_MAIN(JetReaderTest)
#include "JetReaderTest.moc"
