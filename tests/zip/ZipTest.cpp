// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "PlainName.h"
#include "StoreError.h"
#include "TestProgram.h"
#include "ZipReader.h"
#include "ZipWriter.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace paukfix;

class ZipTest : public QObject
{
    Q_OBJECT

private slots:
    void WhatIsWrittenIsReadBack();
    void NothingIsLeftBehindOfAPackageThatIsNotFinished();
    void WhatTheProgressThrowsEndsTheWriting();
    void AnExistingFileIsNotOverwritten();
    void FilesMadeToHarmAreRefused_data();
    void FilesMadeToHarmAreRefused();
    void EntriesThatLieInEachOtherCountOnce();
    void APipeIsRefused();
    void ALinkIsNoRegularEntry();
    void AnEntryAboveTheLimitIsRefused();
    void NamesThatLeadElsewhereAreNotPlain_data();
    void NamesThatLeadElsewhereAreNotPlain();

private:
    QString Path(const QString &name) const { return directory_.filePath(name); }

    const QTemporaryDir directory_;
};

namespace {

QString Deck(const QString &name)
{
    return QStringLiteral(DECKS_DIR "/hostile/") + name;
}

// All of a package, or the text with which it is refused.
QString Refusal(const QString &path)
{
    try {
        const ZipReader zip(path);
        for (std::size_t entry = 0; entry < zip.Entries().size(); ++entry)
            zip.Unpack(entry, [](Bytes) {});
        return {};
    } catch (const StoreError &error) {
        return error.Text();
    }
}

} // namespace

void ZipTest::WhatIsWrittenIsReadBack()
{
    QByteArray large;
    for (int i = 0; i < 300'000; ++i)
        large += static_cast<char>((i * 2654435761U) >> 24U);
    QFile file(Path("ton.wav"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(large);
    file.close();
    ZipWriter out(Path("paket.zip"));
    out.Add("Käse & Brot.txt", "ein Text");
    out.AddFile("1", file.fileName(), ZipWriter::Packing::Store);
    out.Add("leer", {});
    out.Finish();

    const ZipReader zip(Path("paket.zip"));
    QCOMPARE(zip.Entries().size(), 3U);
    QCOMPARE(zip.Read(*zip.Find("Käse & Brot.txt"), 100), QByteArray("ein Text"));
    QVERIFY(zip.Read(*zip.Find("1"), 1'000'000) == large);
    QCOMPARE(zip.Read(*zip.Find("leer"), 0), QByteArray());
    QVERIFY(!zip.Find("KÄSE & BROT.TXT"));
}

void ZipTest::NothingIsLeftBehindOfAPackageThatIsNotFinished()
{
    {
        ZipWriter out(Path("angefangen.zip"));
        out.Add("eins", "ein Text");
    }
    QVERIFY(QDir(directory_.path()).entryList({"angefangen*"}, QDir::Files).isEmpty());
}

void ZipTest::WhatTheProgressThrowsEndsTheWriting()
{
    ZipWriter out(Path("abgebrochen.zip"));
    out.Add("eins", QByteArray(1'000'000, 'x'));
    QVERIFY_EXCEPTION_THROWN(
        out.Finish([](int, int) { throw StoreError(Fehler::Abgebrochen, "abgebrochen"); }), StoreError);
    QVERIFY(QDir(directory_.path()).entryList({"abgebrochen*"}, QDir::Files).isEmpty());
}

void ZipTest::AnExistingFileIsNotOverwritten()
{
    QFile file(Path("da.zip"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("mein");
    file.close();
    QVERIFY_EXCEPTION_THROWN(ZipWriter(file.fileName()), StoreError);
    QCOMPARE(QFileInfo(file.fileName()).size(), 4);
}

void ZipTest::FilesMadeToHarmAreRefused_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("reason");
    QTest::newRow("bomb of overlapping entries") << "zipbomb-deflate.apkg"
                                                 << "Vielfaches seiner Größe";
    QTest::newRow("wrong sum") << "bad-crc.apkg"
                               << "beschädigt";
    QTest::newRow("cut off") << "truncated.apkg"
                             << "beschädigt";
    QTest::newRow("empty") << "empty.apkg"
                           << "beschädigt";
    QTest::newRow("text") << "not-a-zip.apkg"
                          << "kein Paket";
    QTest::newRow("two of a name") << "zip-duplicate-names.apkg"
                                   << "gleichen Namens";
    QTest::newRow("link") << "zip-symlink.apkg"
                          << "keine gewöhnliche Datei";
}

void ZipTest::FilesMadeToHarmAreRefused()
{
    QFETCH(const QString, name);
    QFETCH(const QString, reason);
    const QString text = Refusal(Deck(name));
    QVERIFY2(text.contains(reason), qPrintable(text));
}

// Each of them, and all together, are no more than what they say that they are packed to allows.
void ZipTest::EntriesThatLieInEachOtherCountOnce()
{
    constexpr int Entries = 40;
    QByteArray pattern;
    for (unsigned i = 0; i < 20'000; ++i)
        pattern += static_cast<char>((i * 2654435761U) >> 24U);
    {
        ZipWriter out(Path("einer.zip"));
        out.Add("a00", pattern.repeated(200));
        out.Finish();
    }
    const ZipReader one(Path("einer.zip"));
    QVERIFY(one.Entries()[0].unpacked < one.Entries()[0].packed * 200);
    QFile file(Path("einer.zip"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    const qsizetype record = bytes.lastIndexOf("PK\x01\x02");
    const qsizetype end = bytes.lastIndexOf("PK\x05\x06");
    QVERIFY(record > 0 && end > record);
    QByteArray directory;
    for (int i = 0; i < Entries; ++i) {
        constexpr qsizetype Name = 46; // in a record
        QByteArray entry = bytes.mid(record, end - record);
        entry.replace(Name, 3, 'a' + QByteArray::number(i).rightJustified(2, '0'));
        directory += entry;
    }
    QByteArray tail = bytes.mid(end);
    const auto set = [&](qsizetype place, qsizetype size, qsizetype value) {
        for (qsizetype i = 0; i < size; ++i)
            tail[place + i] = static_cast<char>((value >> (8 * i)) & 0xFF);
    };
    set(8, 2, Entries);
    set(10, 2, Entries);
    set(12, 4, directory.size());
    QFile many(Path("viele.zip"));
    QVERIFY(many.open(QIODevice::WriteOnly));
    many.write(bytes.left(record) + directory + tail);
    many.close();
    const QString text = Refusal(many.fileName());
    QVERIFY2(text.contains("Vielfaches seiner Größe"), qPrintable(text));
}

void ZipTest::APipeIsRefused()
{
    const QString path = Path("rohr.zip");
    QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
    QVERIFY(!Refusal(path).isEmpty());
}

void ZipTest::ALinkIsNoRegularEntry()
{
    const ZipReader zip(Deck("zip-symlink.apkg"));
    int links = 0;
    for (const ZipReader::Entry &entry : zip.Entries())
        links += entry.regular ? 0 : 1;
    QCOMPARE(links, 1);
}

void ZipTest::AnEntryAboveTheLimitIsRefused()
{
    ZipWriter out(Path("gross.zip"));
    out.Add("eins", QByteArray(1000, 'x'));
    out.Finish();
    const ZipReader zip(Path("gross.zip"));
    QCOMPARE(zip.Read(0, 1000).size(), 1000);
    QVERIFY_EXCEPTION_THROWN(zip.Read(0, 999), StoreError);
}

void ZipTest::NamesThatLeadElsewhereAreNotPlain_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("plain");
    QTest::newRow("usual") << "Bild 1.jpg" << true;
    QTest::newRow("umlauts") << "große Küche (2).jpg" << true;
    QTest::newRow("empty") << "" << false;
    QTest::newRow("up") << "../x.jpg" << false;
    QTest::newRow("absolute") << "/etc/x.jpg" << false;
    QTest::newRow("backslash") << "..\\x.jpg" << false;
    QTest::newRow("drive") << "C:x.jpg" << false;
    QTest::newRow("hidden") << ".profile" << false;
    QTest::newRow("dots") << ".." << false;
    QTest::newRow("zero") << QString("a\0.jpg").replace(1, 1, QChar(0)) << false;
    QTest::newRow("line break") << "a\nb.jpg" << false;
    QTest::newRow("right to left") << QString("a") + QChar(0x202E) + "gpj.exe" << false;
    QTest::newRow("half a pair") << QString("a") + QChar(0xD83D) << false;
    QTest::newRow("slash inside") << "ordner/x.jpg" << false;
    QTest::newRow("end of a line of another kind") << QString("a") + QChar(0x2028) + ".jpg" << false;
    // Of another system: here they are files like any other, and "con" is a word that is spoken.
    QTest::newRow("device") << "con.mp3" << true;
    QTest::newRow("long") << QString(201, 'x') << false;
}

void ZipTest::NamesThatLeadElsewhereAreNotPlain()
{
    QFETCH(const QString, name);
    QFETCH(const bool, plain);
    QCOMPARE(IsPlainName(name), plain);
}

PAUKFIX_APPLESS_TEST(ZipTest)
#include "ZipTest.moc"
