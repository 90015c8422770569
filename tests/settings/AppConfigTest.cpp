// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AppConfig.h"

#include "StoreTestSupport.h"

#include <QDir>
#include <QFile>
#include <QLocale>
#include <QTest>

#include <csignal>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace std::string_view_literals;

namespace {

// Bytes with NUL among them.
QByteArray Raw(std::string_view bytes)
{
    return {bytes.data(), static_cast<qsizetype>(bytes.size())};
}

} // namespace

class AppConfigTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> directory_;
    std::unique_ptr<TestMeldungen> meldungen_;
    std::unique_ptr<AppConfig> config_;
    int gelesen_ = 0;

    QString Path(const QString &name) const { return directory_->filePath(name); }

    // Lines end with CR LF where `content` writes \n.
    void Write(QByteArray content) const { WriteBytes(content.replace('\n', "\r\n")); }

    void WriteBytes(const QByteArray &content) const
    {
        QFile file(Path("konfig.dat"));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write konfig.dat");
    }

    QByteArray ReadBytes(const QString &name = "konfig.dat") const
    {
        QFile file(Path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
    }

    // With \n for CR LF.
    QByteArray Read() const { return ReadBytes().replace("\r\n", "\n"); }

    int WriteError(qint16 section, const QString &value) const
    {
        try {
            config_->WriteConfig(section, value);
        } catch (const StoreError &error) {
            return error.Number();
        }
        return 0;
    }

    int IntroError() const
    {
        try {
            config_->ReadIntroAnimation();
        } catch (const StoreError &error) {
            return error.Number();
        }
        return 0;
    }

    QStringList Names() const { return QStringList(config_->MDat.begin(), config_->MDat.end()); }

private slots:
    void init();
    void cleanup();

    void EverySettingIsRead();
    void HeadersAndKeysAreReadInAnyLetterCase();
    void CommentsAreSkipped();
    void LinesOfAnUnknownSectionAreIgnored();
    void LinesBeforeTheFirstHeaderAreIgnored();
    void HeaderWithABlankBehindItIsUnknown();
    void ValueIsNotTrimmed();
    void EmptyFontNameIsTaken();
    void MissingSettingsKeepTheirValues();
    void UmlautsAreReadInTheCodePage();
    void OtherLineEndsAreRead_data();
    void OtherLineEndsAreRead();
    void FontSizeIsReadWithEitherDecimalSign();
    void UnreadableValueIsReportedAndKeepsTheOldOne_data();
    void UnreadableValueIsReportedAndKeepsTheOldOne();
    void BooleanMayBeANumber();
    void SixthRecentFileIsReportedAndTheRestIsRead();
    void MissingFileIsReportedAndValuesStay();
    void MissingDirectoryIsReported();
    void HostileFileEndsInSettingsOrAReport_data();
    void HostileFileEndsInSettingsOrAReport();
    void HugeFileIsRefused();
    void FileOfAnotherKindIsRefused();

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
    void FullDiskLeavesTheOldFile();
    void RewritingThatGrowsTooLargeIsAnError();
    void WritingWithoutAFileIsAnError();
    void OtherProgramWritingIsAnError();

    void IntroReadsTheLastAnimationEntry();
    void IntroTakesTrueWithoutAnEntry();
    void IntroDistinguishesLetterCase();
    void IntroReportsErrorsToItsCaller();

    void ShippedFileIsSound();
};

void AppConfigTest::init()
{
    directory_ = std::make_unique<QTemporaryDir>();
    meldungen_ = std::make_unique<TestMeldungen>();
    config_ = std::make_unique<AppConfig>(*meldungen_);
    config_->ProgrammPfad = directory_->path();
    gelesen_ = 0;
    config_->Gelesen = [this] { ++gelesen_; };
    QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany));
}

void AppConfigTest::cleanup()
{
    QLocale::setDefault(QLocale::system());
}

void AppConfigTest::EverySettingIsRead()
{
    Write("[recentfiles]\n/a/eins.pzb\n/b/zwei.pzb\n[Font]\nFontName=Liberation Serif\nFontSize=12,5\n"
          "FontBold=True\nFontItalic=True\nFontStrikethru=True\nFontUnderline=True\nColor=16711680\n"
          "[Animation]\nAnimation=False\n");
    config_->ReadConfig();
    QCOMPARE(Names(), QStringList({"/a/eins.pzb", "/b/zwei.pzb", "", "", ""}));
    QCOMPARE(config_->schrift.FontName, "Liberation Serif");
    QCOMPARE(config_->schrift.FontSize, 12.5F);
    QVERIFY(config_->schrift.FontBold);
    QVERIFY(config_->schrift.FontItalic);
    QVERIFY(config_->schrift.FontStrikethru);
    QVERIFY(config_->schrift.FontUnderline);
    QCOMPARE(config_->schrift.Color, 16711680);
    QVERIFY(!config_->Animation);
    QCOMPARE(meldungen_->Texte(), QStringList());
    QCOMPARE(gelesen_, 1);
}

void AppConfigTest::HeadersAndKeysAreReadInAnyLetterCase()
{
    Write("[RECENTFILES]\na.pzb\n[font]\nfONTnAME=X\nCOLOR=7\n[animation]\nanimation=False\n");
    config_->ReadConfig();
    QCOMPARE(config_->MDat[0], "a.pzb");
    QCOMPARE(config_->schrift.FontName, "X");
    QCOMPARE(config_->schrift.Color, 7);
    QVERIFY(!config_->Animation);
}

void AppConfigTest::CommentsAreSkipped()
{
    Write("#[Font]\n[recentfiles]\n#a.pzb\nb.pzb\n#c.pzb\n[Animation]\n#Animation=False\n");
    config_->ReadConfig();
    QCOMPARE(Names(), QStringList({"b.pzb", "", "", "", ""}));
    QVERIFY(config_->Animation);
}

void AppConfigTest::LinesOfAnUnknownSectionAreIgnored()
{
    Write("[recentfiles]\na.pzb\n[Fenster]\nb.pzb\nAnimation=False\nColor=5\n");
    config_->ReadConfig();
    QCOMPARE(Names(), QStringList({"a.pzb", "", "", "", ""}));
    QVERIFY(config_->Animation);
    QCOMPARE(config_->schrift.Color, 0);
}

void AppConfigTest::LinesBeforeTheFirstHeaderAreIgnored()
{
    Write("Animation=False\nFontName=X\n[Font]\n");
    config_->ReadConfig();
    QVERIFY(config_->Animation);
    QCOMPARE(config_->schrift.FontName, "");
}

void AppConfigTest::HeaderWithABlankBehindItIsUnknown()
{
    Write("[Font]\nColor=1\n[Animation] \nAnimation=False\nColor=2\n");
    config_->ReadConfig();
    QVERIFY(config_->Animation);
    QCOMPARE(config_->schrift.Color, 1);
}

void AppConfigTest::ValueIsNotTrimmed()
{
    Write("[recentfiles]\n a b.pzb \n[Font]\nFontName=  Sans \n");
    config_->ReadConfig();
    QCOMPARE(config_->MDat[0], " a b.pzb ");
    QCOMPARE(config_->schrift.FontName, "  Sans ");
}

void AppConfigTest::EmptyFontNameIsTaken()
{
    config_->schrift.FontName = "X";
    Write("[Font]\nFontName=\n");
    config_->ReadConfig();
    QCOMPARE(config_->schrift.FontName, "");
    QCOMPARE(meldungen_->Texte(), QStringList());
}

void AppConfigTest::MissingSettingsKeepTheirValues()
{
    config_->schrift.FontName = "X";
    config_->schrift.FontSize = 14;
    config_->schrift.Color = 3;
    config_->Animation = false;
    config_->MDat[1] = "b.pzb";
    Write("[recentfiles]\na.pzb\n[Font]\nColor=4\n");
    config_->ReadConfig();
    QCOMPARE(config_->schrift.FontName, "X");
    QCOMPARE(config_->schrift.FontSize, 14.0F);
    QCOMPARE(config_->schrift.Color, 4);
    QVERIFY(!config_->Animation);
    QCOMPARE(Names(), QStringList({"a.pzb", "b.pzb", "", "", ""}));
}

void AppConfigTest::UmlautsAreReadInTheCodePage()
{
    WriteBytes("[recentfiles]\r\n/home/M\xFCller/Stra\xDF"
               "en \x80.pzb\r\n");
    config_->ReadConfig();
    QCOMPARE(config_->MDat[0], "/home/Müller/Straßen €.pzb");
}

void AppConfigTest::OtherLineEndsAreRead_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("LF") << QByteArray("[recentfiles]\na.pzb\n[Animation]\nAnimation=False\n");
    QTest::newRow("CR") << QByteArray("[recentfiles]\ra.pzb\r[Animation]\rAnimation=False\r");
    QTest::newRow("no last end") << QByteArray("[recentfiles]\r\na.pzb\r\n[Animation]\r\nAnimation=False");
}

void AppConfigTest::OtherLineEndsAreRead()
{
    QFETCH(const QByteArray, content);
    WriteBytes(content);
    config_->ReadConfig();
    QCOMPARE(Names(), QStringList({"a.pzb", "", "", "", ""}));
    QVERIFY(!config_->Animation);
    QCOMPARE(meldungen_->Texte(), QStringList());
}

void AppConfigTest::FontSizeIsReadWithEitherDecimalSign()
{
    for (const QLocale &locale : {QLocale(QLocale::German), QLocale(QLocale::English), QLocale::c()}) {
        QLocale::setDefault(locale);
        for (const char *text : {"8,25", "8.25", " 8,25 "}) {
            config_->schrift.FontSize = 10;
            Write(QByteArray("[Font]\nFontSize=") + text + "\n");
            config_->ReadConfig();
            QCOMPARE(config_->schrift.FontSize, 8.25F);
        }
    }
}

void AppConfigTest::UnreadableValueIsReportedAndKeepsTheOldOne_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("message");
    const auto row = [](const char *line, const char *text) {
        const QString value = QString(line).section('=', 1);
        QTest::newRow(line) << QString(line)
                            << QStringLiteral("Fehler in Konfig_Lesen%1: \"%2\"").arg(QString(text), value);
    };
    row("FontSize=groß", "Typen unverträglich");
    row("FontSize=", "Typen unverträglich");
    row("FontSize=12 Punkt", "Typen unverträglich");
    row("FontSize=1.234,5", "Typen unverträglich");
    row("FontSize=inf", "Typen unverträglich");
    row("FontSize=1e3", "Typen unverträglich");
    row("FontSize=0", "Schriftgröße außerhalb von 1 bis 1638");
    row("FontSize=-10", "Schriftgröße außerhalb von 1 bis 1638");
    row("FontSize=99999999999999999999999999999999999999999999", "Schriftgröße außerhalb von 1 bis 1638");
    row("FontBold=ja", "Typen unverträglich");
    row("FontItalic=", "Typen unverträglich");
    row("FontStrikethru=True!", "Typen unverträglich");
    row("FontUnderline=1,5", "Typen unverträglich");
    row("Color=rot", "Typen unverträglich");
    row("Color=", "Typen unverträglich");
    row("Color=2147483648", "Überlauf");
    row("Color=-2147483649", "Überlauf");
}

void AppConfigTest::UnreadableValueIsReportedAndKeepsTheOldOne()
{
    QFETCH(const QString, line);
    QFETCH(const QString, message);
    config_->schrift = {"X", 11, true, true, true, true, 9};
    Write("[Font]\n" + line.toLatin1() + "\n[Animation]\nAnimation=False\n");
    config_->ReadConfig();
    QCOMPARE(meldungen_->Texte(), QStringList(message));
    QCOMPARE(meldungen_->gezeigt.first().symbol, Meldungen::Symbol::Keins);
    QCOMPARE(config_->schrift.FontSize, 11.0F);
    QVERIFY(config_->schrift.FontBold && config_->schrift.FontItalic && config_->schrift.FontStrikethru &&
            config_->schrift.FontUnderline);
    QCOMPARE(config_->schrift.Color, 9);
    QVERIFY(!config_->Animation); // the reading went on
    QCOMPARE(gelesen_, 1);
}

void AppConfigTest::BooleanMayBeANumber()
{
    Write("[Font]\nFontBold=-1\nFontItalic=0\nFontUnderline= true \n");
    config_->schrift.FontItalic = true;
    config_->ReadConfig();
    QVERIFY(config_->schrift.FontBold);
    QVERIFY(!config_->schrift.FontItalic);
    QVERIFY(config_->schrift.FontUnderline);
}

void AppConfigTest::SixthRecentFileIsReportedAndTheRestIsRead()
{
    Write("[recentfiles]\na\nb\nc\nd\ne\nf\n[Animation]\nAnimation=False\n");
    config_->ReadConfig();
    QCOMPARE(meldungen_->Texte(),
             QStringList("Fehler in Konfig_LesenIndex außerhalb des gültigen Bereichs: \"f\""));
    QCOMPARE(Names(), QStringList({"a", "b", "c", "d", "e"}));
    QVERIFY(!config_->Animation);
}

void AppConfigTest::MissingFileIsReportedAndValuesStay()
{
    config_->schrift.FontName = "X";
    config_->MDat[0] = "a.pzb";
    config_->Animation = false;
    config_->ReadConfig();
    QCOMPARE(meldungen_->Texte(),
             QStringList("Fehler in Konfig_LesenDatei nicht gefunden: " + Path("konfig.dat")));
    QCOMPARE(config_->schrift.FontName, "X");
    QCOMPARE(config_->MDat[0], "a.pzb");
    QVERIFY(!config_->Animation);
    QCOMPARE(gelesen_, 1);
}

void AppConfigTest::MissingDirectoryIsReported()
{
    config_->ProgrammPfad = Path("fehlt");
    config_->ReadConfig();
    QCOMPARE(meldungen_->Texte(),
             QStringList("Fehler in Konfig_LesenPfad nicht gefunden: " + Path("fehlt/konfig.dat")));
}

void AppConfigTest::HostileFileEndsInSettingsOrAReport_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("messages");
    QTest::newRow("nothing but NUL") << QByteArray(10'000, '\0') << 0;
    QTest::newRow("NUL in values") << Raw("[recentfiles]\na\0b\n[Font]\nFontName=a\0b\n"sv) << 2;
    QTest::newRow("one long line") << QByteArray(200'000, 'x') << 0;
    QTest::newRow("long values") << "[recentfiles]\n" + QByteArray(100'000, 'x') +
                                        "\n[Font]\nFontName=" + QByteArray(100'000, 'x') +
                                        "\nFontSize=" + QByteArray(10'000, '9')
                                 << 3;
    QTest::newRow("thousands of names") << "[recentfiles]\n" + QByteArray("x\n").repeated(100'000) << 10;
    QTest::newRow("thousands of empty names") << "[recentfiles]" + QByteArray(200'000, '\n') << 10;
    QTest::newRow("every byte") << [] {
        QByteArray all;
        for (int i = 0; i < 256; ++i)
            all += "[Font]\nFontName=" + QByteArray(1, static_cast<char>(i)) + "\n";
        return all;
    }() << 1;
}

void AppConfigTest::HostileFileEndsInSettingsOrAReport()
{
    QFETCH(const QByteArray, content);
    WriteBytes(content);
    config_->ReadConfig();
    QTEST(static_cast<int>(meldungen_->gezeigt.size()), "messages");
    for (const QString &text : meldungen_->Texte())
        QVERIFY(text.startsWith("Fehler in Konfig_Lesen") && text.size() < 300);
    QVERIFY(config_->schrift.FontName.size() <= 1);
    QCOMPARE(gelesen_, 1);
}

void AppConfigTest::HugeFileIsRefused()
{
    Write("[recentfiles]\na.pzb\n");
    QVERIFY(QFile::resize(Path("konfig.dat"), 100'000'000));
    config_->ReadConfig();
    QCOMPARE(
        meldungen_->Texte(),
        QStringList("Fehler in Konfig_LesenDie Datei ist zu groß (mehr als 256 KB): " + Path("konfig.dat")));
    QCOMPARE(Names(), QStringList({"", "", "", "", ""}));
    QCOMPARE(WriteError(1, "b.pzb"), Fehler::ZuWenigSpeicher);
    QCOMPARE(IntroError(), Fehler::ZuWenigSpeicher);
    QCOMPARE(QFileInfo(Path("konfig.dat")).size(), 100'000'000);
}

void AppConfigTest::FileOfAnotherKindIsRefused()
{
    QVERIFY(QDir(directory_->path()).mkdir("konfig.dat"));
    config_->ReadConfig();
    QVERIFY(QDir(directory_->path()).rmdir("konfig.dat"));
    QCOMPARE(mkfifo(qPrintable(Path("konfig.dat")), 0600), 0); // nobody writes into it
    config_->ReadConfig();
    QCOMPARE(meldungen_->Texte(),
             QStringList({"Fehler in Konfig_LesenDas ist ein Verzeichnis: " + Path("konfig.dat"),
                          "Fehler in Konfig_LesenDas ist keine gewöhnliche Datei: " + Path("konfig.dat")}));
    QCOMPARE(WriteError(1, "b.pzb"), Fehler::NichtErlaubt);
}

void AppConfigTest::NewNameMovesToTheTopOfTheList()
{
    Write("[recentfiles]\na.pzb\nB.PZB\nc.pzb\nd.pzb\ne.pzb\n[Font]\n");
    config_->WriteConfig(1, "b.pzb");
    QCOMPARE(Read(), "[recentfiles]\nb.pzb\na.pzb\nc.pzb\nd.pzb\ne.pzb\n[Font]\n");
    QCOMPARE(Names(), QStringList({"b.pzb", "a.pzb", "c.pzb", "d.pzb", "e.pzb"}));
    QCOMPARE(meldungen_->Texte(), QStringList());
}

void AppConfigTest::ListIsCutToFive()
{
    Write("[recentfiles]\na.pzb\nb.pzb\nc.pzb\nd.pzb\ne.pzb\n");
    config_->WriteConfig(1, "neu.pzb");
    QCOMPARE(Read(), "[recentfiles]\nneu.pzb\na.pzb\nb.pzb\nc.pzb\nd.pzb\n");
}

void AppConfigTest::DuplicateIsFoundWithoutRegardToCaseOfUmlauts()
{
    WriteBytes("[recentfiles]\r\n\xDC"
               "BUNG.PZB\r\n");
    config_->WriteConfig(1, "übung.pzb");
    QCOMPARE(ReadBytes(), "[recentfiles]\r\n\xFC"
                          "bung.pzb\r\n");
}

void AppConfigTest::RewritingKeepsEveryOtherByte()
{
    const QByteArray before = Raw("vorher\x81\xFF\0\r\n#K\r\nohne CR\nnur CR\r\r\n[Fenster]\n x=1\r\n"sv);
    const QByteArray after = "[FONT]\nfontname=Y\n# Kommentar\n[Ende]\r\n\r\n  letzte Zeile ohne Ende";
    WriteBytes(before + "[recentfiles]\na.pzb\n#k\nb.pzb\n" + after);
    config_->WriteConfig(1, "b.pzb");
    QCOMPARE(ReadBytes(), before + "[recentfiles]\nb.pzb\r\na.pzb\n#k\n" + after);
}

void AppConfigTest::CommentsInsideARewrittenSectionSurvive()
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

void AppConfigTest::FontIsWrittenInOrder()
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

void AppConfigTest::FontSizeIsWrittenForTheUsersLocale()
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

void AppConfigTest::AnimationIsWritten()
{
    Write("[Animation]\nAnimation=True\nAnimation=True\nalt\n[Font]\n");
    config_->WriteConfig(3, "False");
    QCOMPARE(Read(), "[Animation]\nAnimation=False\n[Font]\n");
    QVERIFY(!config_->Animation);
}

void AppConfigTest::MissingSectionIsNotWritten()
{
    const QByteArray content = "[recentfiles]\na.pzb\n[Font]\nFontName=X\n";
    Write(content);
    config_->WriteConfig(3, "False");
    QCOMPARE(Read(), content);
    QVERIFY(config_->Animation);
}

void AppConfigTest::EmptyNameAddsNoEntry()
{
    Write("[recentfiles]\na.pzb\nb.pzb\n");
    config_->WriteConfig(1, "");
    QCOMPARE(Read(), "[recentfiles]\na.pzb\nb.pzb\n");
}

void AppConfigTest::HeaderAsLastLineWithoutEndGetsItsEntries()
{
    WriteBytes("[Animation]");
    config_->WriteConfig(3, "False");
    QCOMPARE(ReadBytes(), "[Animation]\r\nAnimation=False\r\n");
}

void AppConfigTest::NewFileStaysBesideTheOldOne()
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

void AppConfigTest::WritingReadsAnew()
{
    Write("[recentfiles]\n[Animation]\nAnimation=False\n");
    config_->WriteConfig(1, "a.pzb");
    QCOMPARE(gelesen_, 1);
    QCOMPARE(config_->MDat[0], "a.pzb");
    QVERIFY(!config_->Animation);
}

void AppConfigTest::NameThatTheFileCannotHoldReadsBackExactly_data()
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

void AppConfigTest::NameThatTheFileCannotHoldReadsBackExactly()
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

void AppConfigTest::NameOutsideTheCodePageIsNotRepeated()
{
    Write("[recentfiles]\n");
    config_->WriteConfig(1, "/a/ωμέγα.pzb");
    config_->WriteConfig(1, "/a/b.pzb");
    config_->WriteConfig(1, "/a/ΩΜΈΓΑ.PZB");
    QCOMPARE(Names(), QStringList({"/a/ΩΜΈΓΑ.PZB", "/a/b.pzb", "", "", ""}));
}

void AppConfigTest::ReadableUrlIsReadAsAName()
{
    Write("[recentfiles]\nfile:///home/eva/K%C3%A4se%201.pzb\nfile:///home/M%FCller.pzb\n");
    config_->ReadConfig();
    // Bytes that are no UTF-8 could be anything: the line stays what it says.
    QCOMPARE(Names(), QStringList({"/home/eva/Käse 1.pzb", "file:///home/M%FCller.pzb", "", "", ""}));
}

void AppConfigTest::TextThatTheFileCannotHoldIsRefused()
{
    const QByteArray content = "[recentfiles]\na.pzb\n[Font]\nFontName=X\n[Animation]\nAnimation=True\n";
    Write(content);
    config_->schrift.FontName = "ゴシック";
    QCOMPARE(WriteError(2, "Dummy"), Fehler::TypUnvertraeglich);
    config_->schrift.FontName = "X\r\nColor=7";
    QCOMPARE(WriteError(2, "Dummy"), Fehler::TypUnvertraeglich);
    QCOMPARE(WriteError(3, "False\nx"), Fehler::TypUnvertraeglich);
    QCOMPARE(WriteError(1, QString(QChar(0xD800))), Fehler::TypUnvertraeglich);
    QCOMPARE(WriteError(1, QStringLiteral("a") + QChar::Null + "b.pzb"), Fehler::TypUnvertraeglich);
    QCOMPARE(WriteError(1, QString(5000, 'x')), Fehler::TypUnvertraeglich);
    QCOMPARE(Read(), content);
}

void AppConfigTest::LinkStaysALink()
{
    Write("[recentfiles]\n");
    QVERIFY(QDir(directory_->path()).mkdir("sicher"));
    QVERIFY(QFile::rename(Path("konfig.dat"), Path("sicher/meine.dat")));
    QVERIFY(QFile::link("sicher/meine.dat", Path("konfig.dat")));
    config_->WriteConfig(1, "a.pzb");
    QVERIFY(QFileInfo(Path("konfig.dat")).isSymLink());
    QCOMPARE(ReadBytes("sicher/meine.dat"), "[recentfiles]\r\na.pzb\r\n");
}

void AppConfigTest::PermissionsStay()
{
    Write("[recentfiles]\n");
    QCOMPARE(chmod(qPrintable(Path("konfig.dat")), 0640), 0);
    config_->WriteConfig(1, "a.pzb");
    struct stat status = {};
    QCOMPARE(stat(qPrintable(Path("konfig.dat")), &status), 0);
    QCOMPARE(status.st_mode & 07777, 0640U);
}

void AppConfigTest::FullDiskLeavesTheOldFile()
{
    const QByteArray content = "# " + QByteArray(5000, 'k') + "\n[recentfiles]\na.pzb\n";
    Write(content);
    // A limit on the size of files fails a write as a full disk does.
    rlimit old{};
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &old), 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{1000, old.rlim_max};
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &small), 0);
    const int error = WriteError(1, "b.pzb");
    QCOMPARE(setrlimit(RLIMIT_FSIZE, &old), 0);
    std::signal(SIGXFSZ, handler);
    QCOMPARE(error, Fehler::DatentraegerVoll);
    QCOMPARE(Read(), content);
    QCOMPARE(gelesen_, 0);
    QCOMPARE(WriteError(1, "b.pzb"), 0);
    QCOMPARE(Names(), QStringList({"b.pzb", "a.pzb", "", "", ""}));
}

void AppConfigTest::RewritingThatGrowsTooLargeIsAnError()
{
    const QByteArray content = QByteArray("[Font]\n").repeated(10'000);
    Write(content);
    QCOMPARE(WriteError(2, "Dummy"), Fehler::ZuWenigSpeicher);
    QCOMPARE(Read(), content);
}

void AppConfigTest::WritingWithoutAFileIsAnError()
{
    QCOMPARE(WriteError(1, "a.pzb"), Fehler::DateiNichtGefunden);
    QCOMPARE(QDir(directory_->path()).entryList(QDir::Files), QStringList());
    config_->ProgrammPfad = Path("fehlt");
    QCOMPARE(WriteError(1, "a.pzb"), Fehler::PfadNichtGefunden);
    QCOMPARE(meldungen_->Texte(), QStringList());
}

void AppConfigTest::OtherProgramWritingIsAnError()
{
    Write("[recentfiles]\n");
    const int other = open(qPrintable(directory_->path()), O_RDONLY | O_DIRECTORY);
    QVERIFY(other >= 0);
    QCOMPARE(flock(other, LOCK_EX), 0);
    QCOMPARE(WriteError(1, "a.pzb"), Fehler::Gesperrt);
    QCOMPARE(Read(), "[recentfiles]\n");
    close(other);
    QCOMPARE(WriteError(1, "a.pzb"), 0);
}

void AppConfigTest::IntroReadsTheLastAnimationEntry()
{
    Write("Animation=False\n[Animation]\nAnimation=True\n# "
          "Animation=True\nAnimation=False\n[Font]\nAnimation=True\n");
    QVERIFY(!config_->ReadIntroAnimation());
    Write("[Animation]\nAnimation=False\n[Animation]\nAnimation=True\n");
    QVERIFY(config_->ReadIntroAnimation());
}

void AppConfigTest::IntroTakesTrueWithoutAnEntry()
{
    Write("[Animation]\n[Font]\n");
    QVERIFY(config_->ReadIntroAnimation());
    Write("");
    QVERIFY(config_->ReadIntroAnimation());
}

void AppConfigTest::IntroDistinguishesLetterCase()
{
    for (const char *content : {"[animation]\nanimation=False\n", "[animation]\nAnimation=False\n",
                                "[Animation]\nanimation=False\n"}) {
        Write(content);
        QVERIFY(config_->ReadIntroAnimation());
        config_->Animation = true;
        config_->ReadConfig();
        QVERIFY(!config_->Animation);
    }
}

void AppConfigTest::IntroReportsErrorsToItsCaller()
{
    QCOMPARE(IntroError(), Fehler::DateiNichtGefunden);
    Write("[Animation]\nAnimation=vielleicht\n");
    QCOMPARE(IntroError(), Fehler::TypUnvertraeglich);
    QCOMPARE(meldungen_->Texte(), QStringList());
}

void AppConfigTest::ShippedFileIsSound()
{
    QVERIFY(QFile::copy(SHIPPED_KONFIG, Path("konfig.dat")));
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

QTEST_APPLESS_MAIN(AppConfigTest)
#include "AppConfigTest.moc"
