// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KonfigFixture.h"
#include "ResourceLimit.h"
#include "TestPlaces.h"
#include "TestProgram.h"

#include <QDir>
#include <QTest>

#include <fcntl.h>
#include <optional>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace paukfix;
using namespace Qt::StringLiterals;

using namespace std::string_view_literals;

class WriteConfigTest : public KonfigFixture
{
    Q_OBJECT

private slots:

    void init() { SetUp(); }

    void cleanup() { QLocale::setDefault(QLocale::system()); }

    void NewNameMovesToTheTopOfTheList();
    void ListIsCutToFive();
    void DuplicateIsFoundWithoutRegardToCaseOfUmlauts();
    void RewritingKeepsEveryOtherByte();
    void CommentsInsideARewrittenSectionSurvive();
    void FontIsWrittenInOrder();
    void FontSizeIsWrittenForTheUsersLocale();
    void AnimationIsWritten();
    void MissingSectionIsNotWritten();
    void EmptyNameAddsNoEntry();
    void HeaderAsLastLineWithoutEndGetsItsEntries();
    void NewFileStaysBesideTheOldOne();
    void WritingReadsAnew();
    void NameThatTheFileCannotHoldReadsBackExactly_data();
    void NameThatTheFileCannotHoldReadsBackExactly();
    void NameOutsideTheCodePageIsNotRepeated();
    void ReadableUrlIsReadAsAName();
    void TextThatTheFileCannotHoldIsRefused();
    void LinkStaysALink();
    void PermissionsStay();
    void ReadOnlyFileIsNotReplaced();
    void ReadOnlyFileIsToldOnce();
    void RecentFilesHoldUntilTheEndWhereTheyCannotBeWritten();
    void FileThatIsGoneIsToldAndMadeAgain();
    void FullDiskLeavesTheOldFile();
    void RewritingThatGrowsTooLargeIsAnError();
    void WritingWithoutAFileIsAnError();
    void OtherProgramWritingIsAnError();
    void ShippedFileIsSound();
};

void WriteConfigTest::NewNameMovesToTheTopOfTheList()
{
    Write("[recentfiles]\na.pzb\nB.PZB\nc.pzb\nd.pzb\ne.pzb\n[Font]\n");
    config_->WriteConfig(1, "b.pzb");
    QCOMPARE(Read(), "[recentfiles]\nb.pzb\na.pzb\nc.pzb\nd.pzb\ne.pzb\n[Font]\n");
    QCOMPARE(Names(), QStringList({"b.pzb", "a.pzb", "c.pzb", "d.pzb", "e.pzb"}));
    QCOMPARE(meldungen_->Texte(), QStringList());
}

void WriteConfigTest::ListIsCutToFive()
{
    Write("[recentfiles]\na.pzb\nb.pzb\nc.pzb\nd.pzb\ne.pzb\n");
    config_->WriteConfig(1, "neu.pzb");
    QCOMPARE(Read(), "[recentfiles]\nneu.pzb\na.pzb\nb.pzb\nc.pzb\nd.pzb\n");
}

void WriteConfigTest::DuplicateIsFoundWithoutRegardToCaseOfUmlauts()
{
    WriteBytes("[recentfiles]\r\n\xDC"
               "BUNG.PZB\r\n");
    config_->WriteConfig(1, "übung.pzb");
    QCOMPARE(ReadBytes(), "[recentfiles]\r\n\xFC"
                          "bung.pzb\r\n");
}

void WriteConfigTest::RewritingKeepsEveryOtherByte()
{
    const QByteArray before = Raw("vorher\x81\xFF\0\r\n#K\r\nohne CR\nnur CR\r\r\n[Fenster]\n x=1\r\n"sv);
    const QByteArray after = "[FONT]\nfontname=Y\n# Kommentar\n[Ende]\r\n\r\n  letzte Zeile ohne Ende";
    WriteBytes(before + "[recentfiles]\na.pzb\n#k\nb.pzb\n" + after);
    config_->WriteConfig(1, "b.pzb");
    QCOMPARE(ReadBytes(), before + "[recentfiles]\nb.pzb\r\na.pzb\n#k\n" + after);
}

void WriteConfigTest::CommentsInsideARewrittenSectionSurvive()
{
    Write("[Font]\n# eins\nFontName=X\n# zwei\nFontSize=9\n# drei\n[Animation]\n# vier\nAnimation=True\n# "
          "ende\n");
    config_->schrift = {"Y", 10, false, false, false, false, 0};
    config_->WriteConfig(2, "Dummy");
    config_->WriteConfig(3, "False");
    QCOMPARE(Read(),
             "[Font]\nFontName=Y\nFontSize=10\nFontBold=False\nFontItalic=False\nFontStrikethru=False\n"
             "FontUnderline=False\nColor=0\n# eins\n# zwei\n# drei\n"
             "[Animation]\nAnimation=False\n# vier\n# ende\n");
}

void WriteConfigTest::FontIsWrittenInOrder()
{
    Write("[recentfiles]\na.pzb\n[Font]\nColor=1\nUnbekannt=2\n\n[Animation]\nAnimation=True\n");
    config_->schrift = {"Käse Sans", 12, true, false, true, false, -2147483640};
    config_->WriteConfig(2, "Dummy");
    QCOMPARE(Read(), "[recentfiles]\na.pzb\n[Font]\nFontName=K\xE4se Sans\nFontSize=12\nFontBold=True\n"
                     "FontItalic=False\nFontStrikethru=True\nFontUnderline=False\nColor=-2147483640\n"
                     "[Animation]\nAnimation=True\n");
    QCOMPARE(config_->schrift.FontName, "Käse Sans");
    QCOMPARE(config_->schrift.Color, -2147483640);
}

void WriteConfigTest::FontSizeIsWrittenForTheUsersLocale()
{
    Write("[Font]\n");
    config_->schrift.FontSize = 8.25;
    config_->WriteConfig(2, "Dummy");
    QVERIFY(Read().contains("\nFontSize=8,25\n"));
    QLocale::setDefault(QLocale(QLocale::English));
    config_->WriteConfig(2, "Dummy");
    QVERIFY(Read().contains("\nFontSize=8.25\n"));
    QLocale::setDefault(QLocale(QLocale::German));
    for (const float size : {10.1F, 1638.0F, 1.0F, 72.3F, 999.9F}) {
        config_->schrift.FontSize = size;
        config_->WriteConfig(2, "Dummy");
        QCOMPARE(config_->schrift.FontSize, size);
    }
    QCOMPARE(meldungen_->Texte(), QStringList());
}

void WriteConfigTest::AnimationIsWritten()
{
    Write("[Animation]\nAnimation=True\nAnimation=True\nalt\n[Font]\n");
    config_->WriteConfig(3, "False");
    QCOMPARE(Read(), "[Animation]\nAnimation=False\n[Font]\n");
    QVERIFY(!config_->Animation);
}

void WriteConfigTest::MissingSectionIsNotWritten()
{
    const QByteArray content = "[recentfiles]\na.pzb\n[Font]\nFontName=X\n";
    Write(content);
    config_->WriteConfig(3, "False");
    QCOMPARE(Read(), content);
    QVERIFY(config_->Animation);
}

void WriteConfigTest::EmptyNameAddsNoEntry()
{
    Write("[recentfiles]\na.pzb\nb.pzb\n");
    config_->WriteConfig(1, "");
    QCOMPARE(Read(), "[recentfiles]\na.pzb\nb.pzb\n");
}

void WriteConfigTest::HeaderAsLastLineWithoutEndGetsItsEntries()
{
    WriteBytes("[Animation]");
    config_->WriteConfig(3, "False");
    QCOMPARE(ReadBytes(), "[Animation]\r\nAnimation=False\r\n");
}

void WriteConfigTest::NewFileStaysBesideTheOldOne()
{
    Write("[recentfiles]\n");
    config_->WriteConfig(1, "a.pzb");
    QCOMPARE(ReadBytes("konfig.new"), ReadBytes());
    QCOMPARE(QDir(directory_->path()).entryList(QDir::Files, QDir::Name),
             QStringList({"konfig.dat", "konfig.new"}));
    // Two files, not two names of one: writing one must never touch the other.
    struct stat dat = {}, neu = {};
    QCOMPARE(stat(qPrintable(Path("konfig.dat")), &dat), 0);
    QCOMPARE(stat(qPrintable(Path("konfig.new")), &neu), 0);
    QVERIFY(dat.st_ino != neu.st_ino);
}

void WriteConfigTest::WritingReadsAnew()
{
    Write("[recentfiles]\n[Animation]\nAnimation=False\n");
    config_->WriteConfig(1, "a.pzb");
    QCOMPARE(gelesen_, 1);
    QCOMPARE(config_->MDat[0], "a.pzb");
    QVERIFY(!config_->Animation);
}

void WriteConfigTest::NameThatTheFileCannotHoldReadsBackExactly_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("Greek") << "/home/Ελένη/a.pzb"
                           << QByteArray("file:///home/%CE%95%CE%BB%CE%AD%CE%BD%CE%B7/a.pzb");
    QTest::newRow("emoji") << "/a/😀.pzb" << QByteArray("file:///a/%F0%9F%98%80.pzb");
    QTest::newRow("lookalike") << "/a/Ａ.pzb" << QByteArray("file:///a/%EF%BC%A1.pzb");
    QTest::newRow("combining umlaut")
        << QString::fromUtf8("/a/u\u0308.pzb") << QByteArray("file:///a/u%CC%88.pzb");
    QTest::newRow("percent in it") << "/a/Ω 100%25.pzb" << QByteArray("file:///a/%CE%A9%20100%2525.pzb");
    QTest::newRow("CR LF") << "/a/x\r\n[Animation]\r\nAnimation=False.pzb"
                           << QByteArray("file:///a/x%0D%0A%5BAnimation%5D%0D%0AAnimation%3DFalse.pzb");
    QTest::newRow("LF at the end") << "/a/x.pzb\n" << QByteArray("file:///a/x.pzb%0A");
    QTest::newRow("like a comment") << "#1.pzb" << QByteArray("file://%231.pzb");
    QTest::newRow("like a header") << "[Font]" << QByteArray("file://%5BFont%5D");
    QTest::newRow("like a URL") << "file:///a.pzb" << QByteArray("file://file%3A///a.pzb");
    QTest::newRow("plain percent") << "/a/100%25.pzb" << QByteArray("/a/100%25.pzb");
    QTest::newRow("whole code page") << "/a/ÄÖÜ ß € „“ – Ÿ.pzb"
                                     << QByteArray("/a/\xC4\xD6\xDC \xDF \x80 \x84\x93 \x96 \x9F.pzb");
}

void WriteConfigTest::NameThatTheFileCannotHoldReadsBackExactly()
{
    QFETCH(const QString, name);
    QFETCH(const QByteArray, line);
    Write("[recentfiles]\nb.pzb\nc.pzb\n[Animation]\nAnimation=True\n");
    config_->WriteConfig(1, name);
    QCOMPARE(ReadBytes(),
             "[recentfiles]\r\n" + line + "\r\nb.pzb\r\nc.pzb\r\n[Animation]\r\nAnimation=True\r\n");
    QCOMPARE(Names(), QStringList({name, "b.pzb", "c.pzb", "", ""}));
    QVERIFY(config_->Animation);
    config_->WriteConfig(1, "d.pzb");
    QCOMPARE(Names(), QStringList({"d.pzb", name, "b.pzb", "c.pzb", ""}));
}

void WriteConfigTest::NameOutsideTheCodePageIsNotRepeated()
{
    Write("[recentfiles]\n");
    config_->WriteConfig(1, "/a/ωμέγα.pzb");
    config_->WriteConfig(1, "/a/b.pzb");
    config_->WriteConfig(1, "/a/ΩΜΈΓΑ.PZB");
    QCOMPARE(Names(), QStringList({"/a/ΩΜΈΓΑ.PZB", "/a/b.pzb", "", "", ""}));
}

void WriteConfigTest::ReadableUrlIsReadAsAName()
{
    Write("[recentfiles]\nfile:///home/eva/K%C3%A4se%201.pzb\nfile:///home/M%FCller.pzb\n");
    config_->ReadConfig();
    // Bytes that are no UTF-8 could be anything: the line stays what it says.
    QCOMPARE(Names(), QStringList({"/home/eva/Käse 1.pzb", "file:///home/M%FCller.pzb", "", "", ""}));
}

void WriteConfigTest::TextThatTheFileCannotHoldIsRefused()
{
    const QByteArray content = "[recentfiles]\na.pzb\n[Font]\nFontName=X\n[Animation]\nAnimation=True\n";
    Write(content);
    config_->schrift.FontName = "ゴシック";
    QCOMPARE(WriteError(2, "Dummy"), Fehler::TypUnvertraeglich);
    config_->schrift.FontName = "X\r\nColor=7";
    QCOMPARE(WriteError(2, "Dummy"), Fehler::TypUnvertraeglich);
    QCOMPARE(WriteError(3, "False\nx"), Fehler::TypUnvertraeglich);
    QCOMPARE(WriteError(1, QString(QChar(0xD800))), Fehler::TypUnvertraeglich);
    QCOMPARE(WriteError(1, u"a"_s + QChar::Null + "b.pzb"), Fehler::TypUnvertraeglich);
    QCOMPARE(WriteError(1, QString(5000, 'x')), Fehler::TypUnvertraeglich);
    QCOMPARE(WriteErrorText(3, "False\nx"), QString("\"False\nx\" lässt sich in konfig.dat nicht speichern"));
    QCOMPARE(WriteErrorText(1, QString(5000, 'x')),
             QString("\"%1\" lässt sich in konfig.dat nicht speichern").arg(QString(60, 'x')));
    QCOMPARE(Read(), content);
}

void WriteConfigTest::LinkStaysALink()
{
    Write("[recentfiles]\n");
    QVERIFY(QDir(directory_->path()).mkdir("sicher"));
    QVERIFY(QFile::rename(Path("konfig.dat"), Path("sicher/meine.dat")));
    QVERIFY(QFile::link("sicher/meine.dat", Path("konfig.dat")));
    config_->WriteConfig(1, "a.pzb");
    QVERIFY(QFileInfo(Path("konfig.dat")).isSymLink());
    QCOMPARE(ReadBytes("sicher/meine.dat"), "[recentfiles]\r\na.pzb\r\n");
}

void WriteConfigTest::PermissionsStay()
{
    Write("[recentfiles]\n");
    QCOMPARE(chmod(qPrintable(Path("konfig.dat")), 0640), 0);
    config_->WriteConfig(1, "a.pzb");
    struct stat status = {};
    QCOMPARE(stat(qPrintable(Path("konfig.dat")), &status), 0);
    QCOMPARE(status.st_mode & 07777, 0640U);
}

// Not by the administrator either.
void WriteConfigTest::ReadOnlyFileIsNotReplaced()
{
    Write("[recentfiles]\n");
    QCOMPARE(chmod(qPrintable(Path("konfig.dat")), 0444), 0);
    QCOMPARE(WriteError(1, "a.pzb"), Fehler::NichtErlaubt);
    QCOMPARE(WriteErrorText(1, "a.pzb"), "Die Datei ist schreibgeschützt: " + Path("konfig.dat"));
    QCOMPARE(Read(), "[recentfiles]\n");
    QCOMPARE(QDir(directory_->path()).entryList(QDir::Files), QStringList("konfig.dat"));
}

void WriteConfigTest::ReadOnlyFileIsToldOnce()
{
    Write("[recentfiles]\n[Animation]\nAnimation=True\n");
    QCOMPARE(chmod(qPrintable(Path("konfig.dat")), 0444), 0);
    config_->Sichern(1, "a.pzb", "Nicht gespeichert: ");
    config_->Animation = false;
    config_->Sichern(3, "False", "Nicht gespeichert: ");
    QCOMPARE(meldungen_->Texte(),
             QStringList("Nicht gespeichert: Die Datei ist schreibgeschützt: " + Path("konfig.dat")));
    QVERIFY(!config_->Animation); // until the program ends
}

void WriteConfigTest::RecentFilesHoldUntilTheEndWhereTheyCannotBeWritten()
{
    Write("[recentfiles]\na.pzb\nb.pzb\nc.pzb\nd.pzb\ne.pzb\n");
    config_->ReadConfig();
    QCOMPARE(chmod(qPrintable(Path("konfig.dat")), 0444), 0);
    gelesen_ = 0;
    config_->Sichern(1, "B.PZB", "Nicht gespeichert: "); // tells it
    QCOMPARE(gelesen_, 1);
    QCOMPARE(Names(), QStringList({"B.PZB", "a.pzb", "c.pzb", "d.pzb", "e.pzb"}));
    config_->Sichern(1, "f.pzb", "Nicht gespeichert: "); // knows it
    QCOMPARE(gelesen_, 2);
    QCOMPARE(Names(), QStringList({"f.pzb", "B.PZB", "a.pzb", "c.pzb", "d.pzb"}));
    QCOMPARE(meldungen_->Texte().size(), 1);
}

void WriteConfigTest::FileThatIsGoneIsToldAndMadeAgain()
{
    const QTemporaryDir shipped;
    QVERIFY(QFile::copy(SourceFile("assets/konfig.dat"), shipped.filePath("konfig.dat")));
    config_->Lieferpfade = QStringList(shipped.path());
    config_->Sichern(1, "a.pzb", "Nicht gespeichert: ");
    QCOMPARE(meldungen_->Texte(),
             QStringList("Nicht gespeichert: Datei nicht gefunden: " + Path("konfig.dat")));
    QCOMPARE(Names()[0], "a.pzb");
    QVERIFY(Read().contains("[recentfiles]\na.pzb\n"));
}

void WriteConfigTest::FullDiskLeavesTheOldFile()
{
    const QByteArray content = "# " + QByteArray(5000, 'k') + "\n[recentfiles]\na.pzb\n";
    Write(content);
    std::optional<FullDisk> full(1000);
    const int error = WriteError(1, "b.pzb");
    full.reset();
    QCOMPARE(error, Fehler::DatentraegerVoll);
    QCOMPARE(Read(), content);
    QCOMPARE(gelesen_, 0);
    QCOMPARE(WriteError(1, "b.pzb"), 0);
    QCOMPARE(Names(), QStringList({"b.pzb", "a.pzb", "", "", ""}));
}

void WriteConfigTest::RewritingThatGrowsTooLargeIsAnError()
{
    const QByteArray content = QByteArray("[Font]\n").repeated(10'000);
    Write(content);
    QCOMPARE(WriteError(2, "Dummy"), Fehler::ZuWenigSpeicher);
    QCOMPARE(WriteErrorText(2, "Dummy"), "Die Datei würde zu groß: " + Path("konfig.dat"));
    QCOMPARE(Read(), content);
}

void WriteConfigTest::WritingWithoutAFileIsAnError()
{
    QCOMPARE(WriteError(1, "a.pzb"), Fehler::DateiNichtGefunden);
    QCOMPARE(QDir(directory_->path()).entryList(QDir::Files), QStringList());
    config_->ProgrammPfad = Path("fehlt");
    QCOMPARE(WriteError(1, "a.pzb"), Fehler::PfadNichtGefunden);
    QCOMPARE(meldungen_->Texte(), QStringList());
}

void WriteConfigTest::OtherProgramWritingIsAnError()
{
    Write("[recentfiles]\n");
    const int other = open(qPrintable(directory_->path()), O_RDONLY | O_DIRECTORY);
    QVERIFY(other >= 0);
    QCOMPARE(flock(other, LOCK_EX), 0);
    QCOMPARE(WriteError(1, "a.pzb"), Fehler::Gesperrt);
    QCOMPARE(WriteErrorText(1, "a.pzb"),
             "Ein anderes Programm schreibt gerade in dieses Verzeichnis: " + directory_->path());
    QCOMPARE(Read(), "[recentfiles]\n");
    close(other);
    QCOMPARE(WriteError(1, "a.pzb"), 0);
}

void WriteConfigTest::ShippedFileIsSound()
{
    QVERIFY(QFile::copy(SourceFile("assets/konfig.dat"), Path("konfig.dat")));
    const QByteArray shipped = ReadBytes();
    QCOMPARE(shipped.count("\r\n"), shipped.count('\n'));
    QVERIFY(shipped.endsWith("\r\n"));
    config_->ReadConfig();
    QCOMPARE(meldungen_->Texte(), QStringList());
    QCOMPARE(Names(), QStringList({"", "", "", "", ""}));
    QVERIFY(!config_->schrift.FontName.isEmpty());
    QCOMPARE(config_->schrift.FontSize, 10.0F);
    QVERIFY(config_->Animation);
    QVERIFY(config_->ReadIntroAnimation());
    config_->WriteConfig(2, "Dummy");
    config_->WriteConfig(3, "True");
    QCOMPARE(ReadBytes(), shipped); // the program writes what it ships
    config_->WriteConfig(1, "a.pzb");
    QCOMPARE(ReadBytes(), QByteArray(shipped).replace("[recentfiles]\r\n", "[recentfiles]\r\na.pzb\r\n"));
}

PAUKFIX_APPLESS_TEST(WriteConfigTest)
#include "WriteConfigTest.moc"
