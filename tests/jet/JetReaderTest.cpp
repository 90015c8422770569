// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "JetReading.h"
#include "SafeFile.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <fcntl.h>

using namespace paukfix;
using namespace Qt::StringLiterals;

// Card files of the former engine as it left them.
class JetReaderTest : public QObject
{
    Q_OBJECT

private slots:
    void EveryFieldIsReadAsItWasWritten_data();
    void EveryFieldIsReadAsItWasWritten();
    void WholeNumbersKeepTheirSign();
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
    void FileIsOpenedForReadingOnly();
};

namespace {

// The values as a reader must deliver them.
SalvagedCard Expected(const JetLab::Row &row)
{
    SalvagedCard card;
    for (std::size_t i = 0; i < row.size(); ++i)
        if (const auto *text = std::get_if<QString>(&row[i]))
            card.values[i] = text->toUtf8();
        else if (const auto *number = std::get_if<double>(&row[i]))
            card.values[i] = *number;
        else if (const auto *flag = std::get_if<bool>(&row[i]))
            card.values[i] = *flag ? -1.0 : 0.0;
    return card;
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
                     qPrintable(u"card %1, %2"_s.arg(i).arg(ColumnText(column))));
    }
}

// A card with a value of its own in every field.
JetLab::Row FullRow(int number)
{
    JetLab::Row row = JetLab::RowOf(MakeCard(number, number % 7, number));
    for (std::size_t i = 3; i < row.size(); ++i) {
        const auto kind = static_cast<int>(CardColumns()[i].member.index());
        const QString text = u"%1 ü %2"_s.arg(number).arg(i);
        row[i] = kind == 0   ? JetLab::Value(static_cast<double>(i) * 1.25 - number)
                 : kind == 1 ? JetLab::Value(text)
                             : JetLab::Value((i + static_cast<std::size_t>(number)) % 2 == 0);
    }
    return row;
}

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

void JetReaderTest::WholeNumbersKeepTheirSign()
{
    constexpr int Integer = 3, Long = 4; // as the format counts its types
    for (const int version : {3, 4}) {
        JetLab lab(version);
        lab.retyped = {{u"Pictureleft"_s, Integer}, {u"PictureTop"_s, Long}};
        CardRecord card = MakeCard(1, 0, 1);
        card.Pictureleft = -300;
        card.PictureTop = -70000;
        CheckRows(lab, {JetLab::RowOf(card)});
    }
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
        // No character with a zero in its lower byte, so that it can be compressed.
        row[frage] = u"日本 dazwischen русский € 🙂 zurück"_s;
        row[36] = u"Ā hat eine Null im unteren Byte"_s;
        CheckRows(lab, {row});
    }
}

void JetReaderTest::BytesTheCodePageLacksStayControlCharacters()
{
    JetLab lab(3);
    CardRecord card = MakeCard(1, 0, 1);
    card.Frage = u"12345 €"_s;
    lab.Add(card);
    QByteArray bytes = lab.Bytes();
    bytes.replace("12345 \x80", "\x81\x8D\x8F\x90\x9D \x80");
    QCOMPARE(Read(bytes).cards.value(0).Text(frage), QString::fromUtf16(u"\u0081\u008D\u008F\u0090\u009D €"));
}

void JetReaderTest::HalfCharactersAreReplacedAndRemarked()
{
    JetLab lab(4);
    CardRecord card = MakeCard(1, 0, 1);
    card.Frage = u"a"_s + QChar(0xD83D) + u"b😀"_s;
    lab.compress = false;
    lab.Add(card);
    const SalvagedCard found = Read(lab.Bytes()).cards.value(0);
    QCOMPARE(found.Text(frage), u"a\uFFFDb😀"_s);
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
        QCOMPARE(found.cards[0].Text(frage), u"Frage 1"_s);
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

void JetReaderTest::FileIsOpenedForReadingOnly()
{
    const QTemporaryDir directory;
    const QByteArray bytes = Three(4).Bytes();
    const QString path = Put(directory, bytes);
    JetCards cards(path);
    int open = 0;
    const QDir descriptors(u"/proc/self/fd"_s);
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

PAUKFIX_CORE_TEST(JetReaderTest)
#include "JetReaderTest.moc"
