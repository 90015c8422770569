// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KonfigFixture.h"
#include "TestProgram.h"

#include <QDir>
#include <QLoggingCategory>
#include <QScopeGuard>
#include <QTest>

#include <sys/stat.h>

using namespace paukfix;
using namespace Qt::StringLiterals;

using namespace std::string_view_literals;

class ReadConfigTest : public KonfigFixture
{
    Q_OBJECT

private slots:

    void init() { SetUp(); }

    void cleanup() { QLocale::setDefault(QLocale::system()); }

    void EverySettingIsRead();
    void ReadingAndWritingAreLoggedWhereAskedFor();
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
    void MissingFileIsMadeAgainFromTheShippedOneOnceItIsReported();
    void ProgramFilesComeFromTheFirstPlaceThatHasThem();
    void MissingDirectoryIsReported();
    void HostileFileEndsInSettingsOrAReport_data();
    void HostileFileEndsInSettingsOrAReport();
    void HugeFileIsRefused();
    void FileOfAnotherKindIsRefused();
    void IntroReadsTheLastAnimationEntry();
    void IntroTakesTrueWithoutAnEntry();
    void IntroDistinguishesLetterCase();
    void IntroReportsErrorsToItsCaller();
};

void ReadConfigTest::ReadingAndWritingAreLoggedWhereAskedFor()
{
    Write("[Animation]\nAnimation=Nein\n");
    QLoggingCategory::setFilterRules("paukfix.einstellungen=true");
    const auto wieVorher = qScopeGuard([] { QLoggingCategory::setFilterRules({}); });
    const QString konfig = config_->ProgrammPfad + "/konfig.dat";
    QTest::ignoreMessage(QtInfoMsg, qPrintable("read " + konfig + " errors: 1"));
    config_->ReadConfig();
    QTest::ignoreMessage(QtInfoMsg, qPrintable("wrote section 3 of " + konfig));
    QTest::ignoreMessage(QtInfoMsg, qPrintable("read " + konfig + " errors: 0"));
    config_->WriteConfig(3, "False");
}

void ReadConfigTest::EverySettingIsRead()
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

void ReadConfigTest::HeadersAndKeysAreReadInAnyLetterCase()
{
    Write("[RECENTFILES]\na.pzb\n[font]\nfONTnAME=X\nCOLOR=7\n[animation]\nanimation=False\n");
    config_->ReadConfig();
    QCOMPARE(config_->MDat[0], "a.pzb");
    QCOMPARE(config_->schrift.FontName, "X");
    QCOMPARE(config_->schrift.Color, 7);
    QVERIFY(!config_->Animation);
}

void ReadConfigTest::CommentsAreSkipped()
{
    Write("#[Font]\n[recentfiles]\n#a.pzb\nb.pzb\n#c.pzb\n[Animation]\n#Animation=False\n");
    config_->ReadConfig();
    QCOMPARE(Names(), QStringList({"b.pzb", "", "", "", ""}));
    QVERIFY(config_->Animation);
}

void ReadConfigTest::LinesOfAnUnknownSectionAreIgnored()
{
    Write("[recentfiles]\na.pzb\n[Fenster]\nb.pzb\nAnimation=False\nColor=5\n");
    config_->ReadConfig();
    QCOMPARE(Names(), QStringList({"a.pzb", "", "", "", ""}));
    QVERIFY(config_->Animation);
    QCOMPARE(config_->schrift.Color, 0);
}

void ReadConfigTest::LinesBeforeTheFirstHeaderAreIgnored()
{
    Write("Animation=False\nFontName=X\n[Font]\n");
    config_->ReadConfig();
    QVERIFY(config_->Animation);
    QCOMPARE(config_->schrift.FontName, "");
}

void ReadConfigTest::HeaderWithABlankBehindItIsUnknown()
{
    Write("[Font]\nColor=1\n[Animation] \nAnimation=False\nColor=2\n");
    config_->ReadConfig();
    QVERIFY(config_->Animation);
    QCOMPARE(config_->schrift.Color, 1);
}

void ReadConfigTest::ValueIsNotTrimmed()
{
    Write("[recentfiles]\n a b.pzb \n[Font]\nFontName=  Sans \n");
    config_->ReadConfig();
    QCOMPARE(config_->MDat[0], " a b.pzb ");
    QCOMPARE(config_->schrift.FontName, "  Sans ");
}

void ReadConfigTest::EmptyFontNameIsTaken()
{
    config_->schrift.FontName = "X";
    Write("[Font]\nFontName=\n");
    config_->ReadConfig();
    QCOMPARE(config_->schrift.FontName, "");
    QCOMPARE(meldungen_->Texte(), QStringList());
}

void ReadConfigTest::MissingSettingsKeepTheirValues()
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

void ReadConfigTest::UmlautsAreReadInTheCodePage()
{
    WriteBytes("[recentfiles]\r\n/home/M\xFCller/Stra\xDF"
               "en \x80.pzb\r\n");
    config_->ReadConfig();
    QCOMPARE(config_->MDat[0], "/home/Müller/Straßen €.pzb");
}

void ReadConfigTest::OtherLineEndsAreRead_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("LF") << QByteArray("[recentfiles]\na.pzb\n[Animation]\nAnimation=False\n");
    QTest::newRow("CR") << QByteArray("[recentfiles]\ra.pzb\r[Animation]\rAnimation=False\r");
    QTest::newRow("no last end") << QByteArray("[recentfiles]\r\na.pzb\r\n[Animation]\r\nAnimation=False");
}

void ReadConfigTest::OtherLineEndsAreRead()
{
    QFETCH(const QByteArray, content);
    WriteBytes(content);
    config_->ReadConfig();
    QCOMPARE(Names(), QStringList({"a.pzb", "", "", "", ""}));
    QVERIFY(!config_->Animation);
    QCOMPARE(meldungen_->Texte(), QStringList());
}

void ReadConfigTest::FontSizeIsReadWithEitherDecimalSign()
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

void ReadConfigTest::UnreadableValueIsReportedAndKeepsTheOldOne_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("message");
    const auto row = [](const char *line, const char *text) {
        const QString value = QString(line).section('=', 1);
        QTest::newRow(line) << QString(line)
                            << u"Fehler in Konfig_Lesen%1: \"%2\""_s.arg(QString(text), value);
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

void ReadConfigTest::UnreadableValueIsReportedAndKeepsTheOldOne()
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

void ReadConfigTest::BooleanMayBeANumber()
{
    Write("[Font]\nFontBold=-1\nFontItalic=0\nFontUnderline= true \n");
    config_->schrift.FontItalic = true;
    config_->ReadConfig();
    QVERIFY(config_->schrift.FontBold);
    QVERIFY(!config_->schrift.FontItalic);
    QVERIFY(config_->schrift.FontUnderline);
}

void ReadConfigTest::SixthRecentFileIsReportedAndTheRestIsRead()
{
    Write("[recentfiles]\na\nb\nc\nd\ne\nf\n[Animation]\nAnimation=False\n");
    config_->ReadConfig();
    QCOMPARE(meldungen_->Texte(),
             QStringList("Fehler in Konfig_LesenIndex außerhalb des gültigen Bereichs: \"f\""));
    QCOMPARE(Names(), QStringList({"a", "b", "c", "d", "e"}));
    QVERIFY(!config_->Animation);
}

void ReadConfigTest::MissingFileIsReportedAndValuesStay()
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

void ReadConfigTest::MissingFileIsMadeAgainFromTheShippedOneOnceItIsReported()
{
    const QTemporaryDir shipped;
    Write("[recentfiles]\n[Font]\nColor=7\n[Animation]\n");
    const QByteArray content = ReadBytes();
    QVERIFY(QFile::rename(Path("konfig.dat"), shipped.filePath("konfig.dat")));
    config_->Lieferpfade = QStringList{"/gibt/es/nicht", shipped.path()};
    config_->MDat[0] = "a.pzb";
    config_->ReadConfig();
    QCOMPARE(meldungen_->Texte(),
             QStringList("Fehler in Konfig_LesenDatei nicht gefunden: " + Path("konfig.dat")));
    QCOMPARE(ReadBytes(), content);
    QCOMPARE(config_->schrift.Color, 7);
    QCOMPARE(config_->MDat[0], "a.pzb");
    config_->ReadConfig();
    QCOMPARE(meldungen_->Texte().size(), 1);
    QCOMPARE(WriteError(1, "b.pzb"), 0);
}

void ReadConfigTest::ProgramFilesComeFromTheFirstPlaceThatHasThem()
{
    const QTemporaryDir installed, running;
    config_->Lieferpfade = QStringList{installed.path(), running.path()};
    QCOMPARE(config_->ProgrammDatei("ueber.rtf"), Path("ueber.rtf"));
    for (const QString &place : {running.path(), installed.path(), directory_->path()}) {
        QFile file(place + "/ueber.rtf");
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(config_->ProgrammDatei("ueber.rtf"), file.fileName());
    }
    // A directory of that name is no file.
    QVERIFY(QFile::remove(Path("ueber.rtf")));
    QVERIFY(QDir(directory_->path()).mkdir("ueber.rtf"));
    QCOMPARE(config_->ProgrammDatei("ueber.rtf"), installed.filePath("ueber.rtf"));
}

void ReadConfigTest::MissingDirectoryIsReported()
{
    config_->ProgrammPfad = Path("fehlt");
    config_->ReadConfig();
    QCOMPARE(meldungen_->Texte(),
             QStringList("Fehler in Konfig_LesenPfad nicht gefunden: " + Path("fehlt/konfig.dat")));
}

void ReadConfigTest::HostileFileEndsInSettingsOrAReport_data()
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

void ReadConfigTest::HostileFileEndsInSettingsOrAReport()
{
    QFETCH(const QByteArray, content);
    WriteBytes(content);
    config_->ReadConfig();
    QTEST(static_cast<int>(meldungen_->gezeigt.size()), "messages");
    if (meldungen_->gezeigt.size() == 10)
        QCOMPARE(meldungen_->Texte().last(),
                 QString("Fehler in Konfig_Lesen: weitere Fehler in konfig.dat werden nicht gemeldet"));
    for (const QString &text : meldungen_->Texte())
        QVERIFY(text.startsWith("Fehler in Konfig_Lesen") && text.size() < 300);
    QVERIFY(config_->schrift.FontName.size() <= 1);
    QCOMPARE(gelesen_, 1);
}

void ReadConfigTest::HugeFileIsRefused()
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

void ReadConfigTest::FileOfAnotherKindIsRefused()
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

void ReadConfigTest::IntroReadsTheLastAnimationEntry()
{
    Write("Animation=False\n[Animation]\nAnimation=True\n# "
          "Animation=True\nAnimation=False\n[Font]\nAnimation=True\n");
    QVERIFY(!config_->ReadIntroAnimation());
    Write("[Animation]\nAnimation=False\n[Animation]\nAnimation=True\n");
    QVERIFY(config_->ReadIntroAnimation());
}

void ReadConfigTest::IntroTakesTrueWithoutAnEntry()
{
    Write("[Animation]\n[Font]\n");
    QVERIFY(config_->ReadIntroAnimation());
    Write("");
    QVERIFY(config_->ReadIntroAnimation());
}

void ReadConfigTest::IntroDistinguishesLetterCase()
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

void ReadConfigTest::IntroReportsErrorsToItsCaller()
{
    QCOMPARE(IntroError(), Fehler::DateiNichtGefunden);
    Write("[Animation]\nAnimation=vielleicht\n");
    QCOMPARE(IntroError(), Fehler::TypUnvertraeglich);
    QCOMPARE(meldungen_->Texte(), QStringList());
}

PAUKFIX_APPLESS_TEST(ReadConfigTest)
#include "ReadConfigTest.moc"
