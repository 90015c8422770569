// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Anzeige.h"
#include "TestPlaces.h"
#include "TestProgram.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

#include <sys/stat.h>
#include <unistd.h>

using namespace paukfix;
using namespace Qt::StringLiterals;

// The installed program, in a place that its user may not write to.
class InstallTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<Anzeige> anzeige_;
    QTemporaryDir ordner_;

    QString Installiert(const QString &pfad) const { return ordner_.filePath("ziel/usr/" + pfad); }

    QString Heim(const QString &pfad = {}) const { return ordner_.filePath("heim/" + pfad); }

    QString Eigene(const QString &name) const { return Heim("Dokumente/Paukfix/" + name); }

    static void Schreiben(const QString &pfad, const QByteArray &inhalt)
    {
        QVERIFY(QDir().mkpath(QFileInfo(pfad).path()));
        QFile datei(pfad);
        QVERIFY(datei.open(QIODevice::WriteOnly));
        QCOMPARE(datei.write(inhalt), inhalt.size());
    }

    // Everything below the home belongs to the ordinary user.
    void Uebergeben() const
    {
        if (geteuid() != 0)
            return;
        QDirIterator alles(Heim(), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                           QDirIterator::Subdirectories);
        QStringList pfade{Heim()};
        while (alles.hasNext())
            pfade << alles.next();
        for (const QString &pfad : pfade)
            QCOMPARE(lchown(QFile::encodeName(pfad).constData(), 65534, 65534), 0);
    }

    // All files below the home but the caches, by their paths in it.
    QStringList Dateien() const
    {
        QStringList namen;
        QDirIterator alles(Heim(), QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
        while (alles.hasNext()) {
            const QString name = QDir(Heim()).relativeFilePath(alles.next());
            if (!name.startsWith(".cache/") && name != "terminal")
                namen << name;
        }
        namen.sort();
        return namen;
    }

    // The texts of all message boxes of the last run.
    QStringList Meldungen() const
    {
        QStringList texte;
        for (const QString &zeile : QString::fromUtf8(Lesen(ordner_.filePath("terminal"))).split('\n')) {
            const QString anfang = "paukfix.meldung: ";
            if (zeile.startsWith(anfang))
                texte << zeile.mid(anfang.size());
        }
        return texte;
    }

    static QByteArray Lesen(const QString &pfad)
    {
        QFile datei(pfad);
        return datei.open(QIODevice::ReadOnly) ? datei.readAll() : QByteArray();
    }

    static void Rechte(const QString &pfad, bool schreibbar)
    {
        const QFileInfo info(pfad);
        const bool ausfuehrbar = info.isDir() || info.isExecutable();
        const mode_t rechte = (ausfuehrbar ? 0555U : 0444U) | (schreibbar ? 0200U : 0U);
        QCOMPARE(chmod(QFile::encodeName(pfad).constData(), rechte), 0);
        if (!info.isDir())
            return;
        for (const QFileInfo &eintrag : QDir(pfad).entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot))
            Rechte(eintrag.filePath(), schreibbar);
    }

    static void Installieren(const QString &ziel, const QString &wurzel)
    {
        QProcess cmake;
        QProcessEnvironment umgebung = QProcessEnvironment::systemEnvironment();
        umgebung.insert("DESTDIR", wurzel);
        cmake.setProcessEnvironment(umgebung);
        cmake.setStandardOutputFile(QProcess::nullDevice());
        cmake.start(CMakeProgram(), {"--install", BuildFile(""), "--prefix", ziel});
        QVERIFY(cmake.waitForFinished(120000));
        QCOMPARE(cmake.exitCode(), 0);
    }

    // The installed program, run by an ordinary user with a home of their own.
    std::unique_ptr<Lauf> Programm(const QStringList &argumente = {}) const
    {
        auto lauf = std::make_unique<Lauf>(*anzeige_, Installiert("bin/paukfix"), argumente);
        QProcessEnvironment umgebung = anzeige_->umgebung;
        umgebung.insert("HOME", Heim());
        umgebung.insert("XDG_RUNTIME_DIR", ordner_.filePath("lauf"));
        umgebung.insert("QT_LOGGING_RULES", "*=false;paukfix.meldung=true");
        for (const char *name : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME"})
            umgebung.remove(name);
        // Another user may not be allowed to read the list of known leaks in the source tree.
        umgebung.remove("LSAN_OPTIONS");
        umgebung.insert("ASAN_OPTIONS", "detect_leaks=0");
        lauf->prozess.setProcessEnvironment(umgebung);
        lauf->prozess.setProcessChannelMode(QProcess::SeparateChannels);
        lauf->prozess.setStandardErrorFile(ordner_.filePath("terminal"));
        lauf->prozess.setWorkingDirectory(Heim());
        if (geteuid() == 0) {
            lauf->prozess.setChildProcessModifier([] {
                if (setgid(65534) != 0 || setuid(65534) != 0)
                    _exit(1);
            });
        }
        return lauf;
    }

    void Waehlen(const QString &name) const
    {
        QVERIFY(anzeige_->WarteAuf("Merkkasten öffnen"));
        anzeige_->Tippen(name);
        QVERIFY(anzeige_->Schliessen("Merkkasten öffnen", "Return"));
    }

    void Beenden(Lauf &lauf) const
    {
        QVERIFY(anzeige_->Taste("Lern-Box", "ctrl+q"));
        QVERIFY(lauf.IstZuEnde());
    }

private slots:

    void initTestCase()
    {
        QVERIFY(QDir().mkpath(ordner_.filePath("lauf")));
        QCOMPARE(chmod(QFile::encodeName(ordner_.path()).constData(), 0755), 0);
        if (geteuid() == 0)
            QCOMPARE(chown(QFile::encodeName(ordner_.filePath("lauf")).constData(), 65534, 65534), 0);
        Installieren("/usr", ordner_.filePath("ziel"));
        Rechte(Installiert(""), false);
        anzeige_ = std::make_unique<Anzeige>();
    }

    // A German desktop's home, with nothing of the program.
    void init()
    {
        QVERIFY(QDir().mkpath(Heim("Dokumente")));
        Schreiben(Heim(".config/user-dirs.dirs"), "XDG_DOCUMENTS_DIR=\"$HOME/Dokumente\"\n");
        Uebergeben();
    }

    void cleanup()
    {
        Rechte(Heim(), true);
        QVERIFY(QDir(Heim()).removeRecursively());
    }

    void cleanupTestCase()
    {
        anzeige_.reset();
        Rechte(Installiert(""), true);
    }

    void EverythingLiesWhereADesktopLooks()
    {
        for (const char *pfad : {"bin/paukfix",
                                 "share/applications/paukfix.desktop",
                                 "share/mime/packages/paukfix.xml",
                                 "share/icons/hicolor/48x48/apps/paukfix.png",
                                 "share/icons/hicolor/256x256/apps/paukfix.png",
                                 "share/icons/hicolor/scalable/apps/paukfix.svg",
                                 "share/paukfix/konfig.dat",
                                 "share/paukfix/ueber.rtf",
                                 "share/paukfix/Applause.wav",
                                 "share/paukfix/face01.ico",
                                 "share/paukfix/face03.ico",
                                 "share/paukfix/paukfix.ico",
                                 "share/paukfix/lbox05.jpg",
                                 "share/paukfix/lbox11.jpg",
                                 "share/paukfix/beispiele/Englisch.pzb",
                                 "share/paukfix/beispiele/Natur.pzb",
                                 "share/paukfix/beispiele/kuckuck.wav",
                                 "share/paukfix/beispiele/ahorn.jpg",
                                 "share/paukfix/beispiele/vollmond.bmp",
                                 "share/metainfo/org.paukfix.paukfix.metainfo.xml",
                                 "share/man/man1/paukfix.1",
                                 "share/man/de/man1/paukfix.1",
                                 "share/bash-completion/completions/paukfix"})
            QVERIFY2(QFile::exists(Installiert(pfad)), pfad);
        QVERIFY(QFileInfo(Installiert("bin/paukfix")).isExecutable());
        for (const char *seite : {"index.html", "tasten.html"})
            QVERIFY2(QFile::exists(Installiert(QString("share/paukfix/handbuch/") + seite)), seite);
    }

    // Not the settings and cards that somebody has used in the build tree.
    void FilesAreInstalledAsTheyWereMade()
    {
        QCOMPARE(Lesen(Installiert("share/paukfix/konfig.dat")), Lesen(SourceFile("assets/konfig.dat")));
        QCOMPARE(Lesen(Installiert("share/paukfix/beispiele/Englisch.pzb")),
                 Lesen(BuildFile("samples/Englisch.pzb")));
    }

    void TheDesktopEntryStartsTheProgramWithACardFile()
    {
        const QByteArray eintrag = Lesen(Installiert("share/applications/paukfix.desktop"));
        for (const char *zeile : {"\nExec=paukfix %f\n", "\nIcon=paukfix\n",
                                  "\nMimeType=application/x-paukfix;application/x-paukfix-package;\n"})
            QVERIFY2(eintrag.contains(zeile), zeile);
        const QByteArray typ = Lesen(Installiert("share/mime/packages/paukfix.xml"));
        QVERIFY(typ.contains("type=\"application/x-paukfix\""));
        QVERIFY(typ.contains("glob pattern=\"*.pzb\""));
    }

    // Nothing else is written either: no copies of the program's files, no settings of the toolkit's dialogs.
    void TheFirstStartPutsSettingsAndSampleBoxesInTheDocuments()
    {
        const QStringList vorher = Dateien();
        const auto lauf = Programm();
        QVERIFY(lauf->Starten());
        QVERIFY(anzeige_->Taste("Merkkasten", "Return"));
        Waehlen("Englisch.pzb");
        QVERIFY(lauf->HatGeoeffnet(Eigene("Englisch.pzb")));
        Beenden(*lauf);
        QCOMPARE(Meldungen(), QStringList());

        QStringList erwartet{vorher};
        erwartet << "Dokumente/Paukfix/konfig.dat"
                 << "Dokumente/Paukfix/konfig.new";
        for (const QString &name : QDir(Installiert("share/paukfix/beispiele")).entryList(QDir::Files))
            erwartet << "Dokumente/Paukfix/" + name;
        erwartet.sort();
        // The box that was opened has been backed up, and its history begun.
        QStringList da = Dateien();
        QCOMPARE(da.removeIf([](const QString &name) {
            return name.startsWith("Dokumente/Paukfix/Sicherungen/Englisch (");
        }),
                 1);
        da.removeAll("Dokumente/Paukfix/verlauf.sqlite");
        QCOMPARE(da.join("\n"), erwartet.join("\n"));
        QVERIFY(Lesen(Eigene("konfig.dat")).contains(QFile::encodeName(Eigene("Englisch.pzb"))));
        for (const char *name : {"Natur.pzb", "ahorn.jpg", "kuckuck.wav"})
            QCOMPARE(Lesen(Eigene(name)), Lesen(Installiert(QString("share/paukfix/beispiele/") + name)));
    }

    // What a right click on the program's icon offers.
    void TheDesktopActionOpensTheBoxThatWasUsedLast()
    {
        Schreiben(Heim("Latein.pzb"), Lesen(Installiert("share/paukfix/beispiele/Englisch.pzb")));
        Schreiben(
            Eigene("konfig.dat"),
            Lesen(Installiert("share/paukfix/konfig.dat"))
                .replace("[recentfiles]\r\n", "[recentfiles]\r\n" + Heim("Latein.pzb").toUtf8() + "\r\n"));
        Uebergeben();
        const QString eintrag = QString::fromUtf8(Lesen(Installiert("share/applications/paukfix.desktop")));
        QStringList befehl = eintrag.section("[Desktop Action weiter]", 1)
                                 .section("\nExec=", 1)
                                 .section('\n', 0, 0)
                                 .split(' ');
        QCOMPARE(befehl.takeFirst(), "paukfix");
        const auto lauf = Programm(befehl);
        QVERIFY(lauf->Starten());
        QVERIFY(lauf->HatGeoeffnet(Heim("Latein.pzb")));
        Beenden(*lauf);
        QCOMPARE(Meldungen(), QStringList());
    }

    void AHomeThatCannotBeWrittenIsOneMessage()
    {
        Rechte(Heim(), false);
        const QStringList vorher = Dateien();
        const auto lauf = Programm();
        QVERIFY(lauf->Starten());
        QVERIFY(anzeige_->MeldungSchliessen());
        QVERIFY(anzeige_->Taste("Merkkasten", "Return"));
        QVERIFY(anzeige_->Taste("Merkkasten öffnen", "Escape"));
        Beenden(*lauf);
        QCOMPARE(Meldungen(), QStringList("Fehler bei Form Intro Load: Die Einstellungen können nicht "
                                          "gespeichert werden: Zugriff verweigert: " +
                                          QFileInfo(Eigene("x")).path()));
        QCOMPARE(Dateien().join("\n"), vorher.join("\n"));
    }

    void SettingsThatAreGoneAreMadeAgainAndSamplesAreNot()
    {
        Schreiben(Eigene("konfig.new"), "");
        Uebergeben();
        const QString konfig = Eigene("konfig.dat");
        const auto lauf = Programm();
        QVERIFY(lauf->Starten());
        QVERIFY(anzeige_->MeldungSchliessen());
        QVERIFY(anzeige_->Schliessen("Merkkasten", "Return")); // the intro
        QVERIFY(anzeige_->Schliessen("Merkkasten", "Return"));
        QVERIFY(anzeige_->Taste("Merkkasten öffnen", "Escape"));
        Beenden(*lauf);
        QCOMPARE(Meldungen(), QStringList({"Fehler bei Form Intro Load: Datei nicht gefunden: " + konfig,
                                           "Fehler in Konfig_LesenDatei nicht gefunden: " + konfig}));
        QCOMPARE(Lesen(konfig), Lesen(Installiert("share/paukfix/konfig.dat")));
        QVERIFY(!QFile::exists(Eigene("Englisch.pzb")));
    }

    void FilesOfAnEarlierVersionAreMovedToTheDocuments()
    {
        const QString alt = Heim(".local/share/paukfix/");
        Schreiben(alt + "konfig.dat",
                  Lesen(Installiert("share/paukfix/konfig.dat"))
                      .replace("[recentfiles]\r\n", "[recentfiles]\r\n" + alt.toUtf8() + "Latein.pzb\r\n"));
        Schreiben(alt + "Latein.pzb", Lesen(Installiert("share/paukfix/beispiele/Englisch.pzb")));
        Schreiben(alt + "ueber.rtf", Lesen(Installiert("share/paukfix/ueber.rtf")));
        Uebergeben();
        const auto lauf = Programm();
        QVERIFY(lauf->Starten());
        QVERIFY(anzeige_->MeldungSchliessen());
        QVERIFY(anzeige_->Taste("Merkkasten", "Return"));
        QVERIFY(anzeige_->Taste("Merkkasten öffnen", "Escape"));
        // The first of the recent files, by the name that it had.
        QVERIFY(anzeige_->Tasten("Lern-Box", {"alt+d", "Down", "Down", "Return"}));
        QVERIFY(lauf->HatGeoeffnet(Eigene("Latein.pzb")));
        Beenden(*lauf);
        QCOMPARE(Meldungen(), QStringList(u"Ihre Karteien und Einstellungen liegen jetzt in „%1“. "
                                          u"Bisher lagen sie in „%2“."_s.arg(QFileInfo(Eigene("x")).path(),
                                                                             QFileInfo(alt + "x").path())));
        QVERIFY(!QFile::exists(Eigene("ueber.rtf")));
    }

    // "cmake --install ... --prefix ~/.local": the place where earlier versions kept the user's files.
    void InstalledBelowTheHomeItStaysWhole_data()
    {
        QTest::addColumn<bool>("benutzt");
        QTest::newRow("new") << false;
        QTest::newRow("used in an earlier version") << true;
    }

    void InstalledBelowTheHomeItStaysWhole()
    {
        QFETCH(const bool, benutzt);
        const QString daten = Heim(".local/share/paukfix/");
        const QByteArray latein = Lesen(Installiert("share/paukfix/beispiele/Englisch.pzb"));
        if (benutzt) {
            Schreiben(daten + "konfig.dat", "");
            Schreiben(
                daten + "konfig.new",
                Lesen(Installiert("share/paukfix/konfig.dat"))
                    .replace("[recentfiles]\r\n", "[recentfiles]\r\n" + daten.toUtf8() + "Latein.pzb\r\n"));
            Schreiben(daten + "Latein.pzb", latein);
            Schreiben(daten + "kaese.jpg", "own picture");
        }
        Installieren(Heim(".local"), {});
        Uebergeben();
        const auto installiert = [&] {
            QStringList namen = Dateien().filter(QRegularExpression("^\\.local/share/paukfix/"));
            namen.removeIf([](const QString &name) {
                return QStringList{"konfig.new", "Latein.pzb", "kaese.jpg"}.contains(
                    QFileInfo(name).fileName());
            });
            return namen;
        };
        const QStringList vorher = installiert();
        QVERIFY(vorher.contains(".local/share/paukfix/ueber.rtf"));
        for (int start = 0; start < 2; ++start) {
            const auto lauf = Programm();
            lauf->prozess.setProgram(Heim(".local/bin/paukfix"));
            QVERIFY(lauf->Starten());
            if (benutzt && start == 0)
                QVERIFY(anzeige_->MeldungSchliessen());
            QVERIFY(anzeige_->Taste("Merkkasten", "Return"));
            if (benutzt) {
                // The first of the recent files, where it is now.
                QVERIFY(anzeige_->Taste("Merkkasten öffnen", "Escape"));
                QVERIFY(anzeige_->Tasten("Lern-Box", {"alt+d", "Down", "Down", "Return"}));
                QVERIFY(lauf->HatGeoeffnet(Eigene("Latein.pzb")));
            } else {
                Waehlen("Englisch.pzb");
                QVERIFY(lauf->HatGeoeffnet(Eigene("Englisch.pzb")));
            }
            Beenden(*lauf);
            QCOMPARE(Meldungen().size(), benutzt && start == 0 ? 1 : 0);
            QCOMPARE(installiert().join("\n"), vorher.join("\n"));
        }
        QVERIFY(!QFileInfo(Heim(".local/share/paukfix")).isSymLink());
        QCOMPARE(Lesen(daten + "konfig.dat"), Lesen(Installiert("share/paukfix/konfig.dat")));
        QCOMPARE(Lesen(Eigene("kaese.jpg")), benutzt ? QByteArray("own picture") : QByteArray());
        for (const char *name : {"ueber.rtf", "Applause.wav", "lbox05.jpg", "beispiele"})
            QVERIFY(!QFile::exists(Eigene(name)));
        // What the program does next does not go through to the shipped files, nor an update to the user's.
        const QByteArray meine = Lesen(Eigene("konfig.dat"));
        Installieren(Heim(".local"), {});
        QCOMPARE(Lesen(Eigene("konfig.dat")), meine);
    }

    void ReadOnlySettingsAreRespectedAndTellItOnce()
    {
        const QString konfig = Eigene("konfig.dat");
        const QByteArray inhalt =
            Lesen(Installiert("share/paukfix/konfig.dat")).replace("Animation=True", "Animation=False");
        Schreiben(konfig, inhalt);
        for (const char *name : {"Englisch.pzb", "Musik.pzb"})
            Schreiben(Eigene(name), Lesen(Installiert(QString("share/paukfix/beispiele/") + name)));
        Uebergeben();
        QCOMPARE(chmod(QFile::encodeName(konfig).constData(), 0444), 0);
        const auto lauf = Programm();
        QVERIFY(lauf->Starten());
        Waehlen("Englisch.pzb");
        QVERIFY(anzeige_->Schliessen("Merkkasten (Englisch.pzb)", "Return"));
        QVERIFY(anzeige_->Taste("Lern-Box", "ctrl+o"));
        Waehlen("Musik.pzb");
        QVERIFY(lauf->HatGeoeffnet(Eigene("Musik.pzb")));
        Beenden(*lauf);
        QCOMPARE(Meldungen(),
                 QStringList("Die Liste der letzten Dateien konnte nicht gespeichert werden: Die "
                             "Datei ist schreibgeschützt: " +
                             konfig));
        QCOMPARE(Lesen(konfig), inhalt);
        QVERIFY(!QFile::exists(Eigene("konfig.new")));
        QVERIFY(!QFileInfo(konfig).permission(QFile::WriteOwner));
    }

    void AnAddressIsOpenedAndASecondFileIsNot()
    {
        const QString kartei = Heim("Käse 100%.pzb");
        Schreiben(kartei, Lesen(Installiert("share/paukfix/beispiele/Englisch.pzb")));
        Uebergeben();
        const auto lauf =
            Programm({QString::fromLatin1(QUrl::fromLocalFile(kartei).toEncoded()), "zwei.pzb"});
        QVERIFY(lauf->Starten());
        QVERIFY(anzeige_->Schliessen("Merkkasten", "Return"));
        QVERIFY(lauf->HatGeoeffnet(kartei));
        Beenden(*lauf);
        QCOMPARE(Meldungen(),
                 QStringList("Es kann nur eine Datei geöffnet werden. Nicht geöffnet: „zwei.pzb“"));
    }

    void HelpAndVersionNeedNoDisplay()
    {
        for (const auto &[option, anfang] :
             {std::pair("--help", "Aufruf: paukfix [KARTEI.pzb]\n"), std::pair("--version", "Paukfix ")}) {
            QProcess programm;
            QProcessEnvironment umgebung = QProcessEnvironment::systemEnvironment();
            for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
                umgebung.remove(name);
            programm.setProcessEnvironment(umgebung);
            programm.start(Installiert("bin/paukfix"), {option});
            QVERIFY(programm.waitForFinished());
            QCOMPARE(programm.exitCode(), 0);
            QVERIFY(programm.readAllStandardOutput().startsWith(anfang));
            QCOMPARE(programm.readAllStandardError(), QByteArray());
        }
    }
};

PAUKFIX_CORE_TEST(InstallTest)
#include "InstallTest.moc"
