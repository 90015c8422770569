// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "JetReading.h"
#include "StoreError.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"

#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>

#include <bit>
#include <functional>

using namespace paukfix;

// Card files of the former engine that cannot be read, are damaged, or are made to harm.
class JetDamageTest : public QObject
{
    Q_OBJECT

private slots:
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
    void TextsThatNoCardFileCanHoldAreNamed();
    void AnyBytesEndWithoutHarm();
};

namespace {

QByteArray Number(std::uint32_t number, int bytes = 4)
{
    QByteArray text;
    for (int i = 0; i < bytes; ++i)
        text += static_cast<char>(i < 4 ? number >> 8 * i : 0);
    return text;
}

} // namespace

void JetDamageTest::FileIsRefusedWithItsReason_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("error");
    QTest::addColumn<QString>("reason");
    const QString newer(
        "Die Datei „DATEI“ hat ein neueres Format der Jet-Datenbank; gelesen werden nur Jet 3 und Jet 4.");
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

void JetDamageTest::FileIsRefusedWithItsReason()
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

void JetDamageTest::DamagedPageCostsOnlyTheCardsOnIt()
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

void JetDamageTest::PagesThatADamagedMapLeavesOutAreFound()
{
    for (const int version : {3, 4}) {
        JetLab lab = Three(version);
        QByteArray bytes = lab.Bytes();
        bytes.replace(JetLab::MapPage * lab.PageSize() + 100, lab.PageSize() - 100,
                      QByteArray(lab.PageSize() - 100, '\0'));
        QCOMPARE(Numbers(Read(bytes)), (QStringList{"1", "2", "3"}));
    }
}

void JetDamageTest::TableIsFoundWhereTheCatalogueIsDamaged()
{
    for (const int version : {3, 4}) {
        JetLab lab = Three(version);
        QByteArray bytes = lab.Bytes();
        bytes.replace(JetLab::CataloguePage * lab.PageSize(), lab.PageSize(),
                      QByteArray(lab.PageSize(), '\x7F'));
        QCOMPARE(Numbers(Read(bytes)), (QStringList{"1", "2", "3"}));
    }
}

void JetDamageTest::BrokenMemoIsKeptUpToTheBreak()
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

void JetDamageTest::SeveralBrokenMemosAreNamedTogether()
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

void JetDamageTest::ForgedPointersEndWithoutHarm_data()
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
void JetDamageTest::ForgedPointersEndWithoutHarm()
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
void JetDamageTest::OneMemoAskedForByManyIsNotReadForAll()
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

// The old engine took more in one card than a row of a card file can hold.
void JetDamageTest::TextsThatNoCardFileCanHoldAreNamed()
{
    constexpr int Half = 16'000'000; // of what a row can hold
    JetLab lab(3);
    lab.memo = JetLab::Memo::Chained;
    CardRecord card = MakeCard(1, 0, 1);
    card.Frage = QString(Half, u'x');
    card.Antwort_1 = QString(Half, u'y');
    lab.Add(card);
    const SalvagedCard found = Read(lab.Bytes()).cards.value(0);
    QCOMPARE(found.Text(frage).size(), Half);
    QCOMPARE(found.Text(CardColumnIndex(u"Antwort_1_Klartext")), card.Antwort_1_Klartext);
    QCOMPARE(Remarks(found), QStringList{"Antwort 1 fehlt"});
}

void JetDamageTest::AnyBytesEndWithoutHarm()
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

PAUKFIX_CORE_TEST(JetDamageTest)
#include "JetDamageTest.moc"
