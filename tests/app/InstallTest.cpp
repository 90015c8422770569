// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Anzeige.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

// The installed program, in a place that its user may not write to.
class InstallTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<Anzeige> anzeige_;
    QTemporaryDir ordner_;

    QString Installiert(const QString &pfad) const { return ordner_.filePath("ziel/usr/" + pfad); }

    QString Eigene(const QString &name) const { return ordner_.filePath("heim/daten/paukfix/" + name); }

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

    // The installed program, run by an ordinary user with a home of their own.
    std::unique_ptr<Lauf> Programm() const
    {
        auto lauf = std::make_unique<Lauf>(*anzeige_, Installiert("bin/paukfix"));
        QProcessEnvironment umgebung = anzeige_->umgebung;
        umgebung.insert("HOME", ordner_.filePath("heim"));
        umgebung.insert("XDG_DATA_HOME", ordner_.filePath("heim/daten"));
        umgebung.insert("XDG_RUNTIME_DIR", ordner_.filePath("heim"));
        // Another user may not be allowed to read the list of known leaks in the source tree.
        umgebung.remove("LSAN_OPTIONS");
        umgebung.insert("ASAN_OPTIONS", "detect_leaks=0");
        lauf->prozess.setProcessEnvironment(umgebung);
        lauf->prozess.setWorkingDirectory(ordner_.filePath("heim"));
        if (geteuid() == 0) {
            lauf->prozess.setChildProcessModifier([] {
                if (setgid(65534) != 0 || setuid(65534) != 0)
                    _exit(1);
            });
        }
        return lauf;
    }

private slots:

    void initTestCase()
    {
        QVERIFY(QDir().mkpath(ordner_.filePath("heim")));
        QCOMPARE(chmod(QFile::encodeName(ordner_.path()).constData(), 0755), 0);
        if (geteuid() == 0)
            QCOMPARE(chown(QFile::encodeName(ordner_.filePath("heim")).constData(), 65534, 65534), 0);
        QProcess cmake;
        QProcessEnvironment umgebung = QProcessEnvironment::systemEnvironment();
        umgebung.insert("DESTDIR", ordner_.filePath("ziel"));
        cmake.setProcessEnvironment(umgebung);
        cmake.setStandardOutputFile(QProcess::nullDevice());
        cmake.start(CMAKE, {"--install", BUILD_DIR, "--prefix", "/usr"});
        QVERIFY(cmake.waitForFinished(120000));
        QCOMPARE(cmake.exitCode(), 0);
        Rechte(Installiert(""), false);
        anzeige_ = std::make_unique<Anzeige>();
    }

    void cleanupTestCase()
    {
        anzeige_.reset();
        Rechte(Installiert(""), true);
    }

    void EverythingLiesWhereADesktopLooks()
    {
        for (const char *pfad :
             {"bin/paukfix", "share/applications/paukfix.desktop", "share/mime/packages/paukfix.xml",
              "share/icons/hicolor/48x48/apps/paukfix.png", "share/icons/hicolor/256x256/apps/paukfix.png",
              "share/icons/hicolor/scalable/apps/paukfix.svg", "share/paukfix/konfig.dat",
              "share/paukfix/ueber.rtf", "share/paukfix/Applause.wav", "share/paukfix/face01.ico",
              "share/paukfix/face03.ico", "share/paukfix/paukfix.ico", "share/paukfix/lbox05.jpg",
              "share/paukfix/lbox11.jpg", "share/paukfix/Englisch.pzb", "share/paukfix/Natur.pzb",
              "share/paukfix/kuckuck.wav", "share/paukfix/ahorn.jpg", "share/paukfix/vollmond.bmp"})
            QVERIFY2(QFile::exists(Installiert(pfad)), pfad);
        QVERIFY(QFileInfo(Installiert("bin/paukfix")).isExecutable());
    }

    // Not the settings and cards that somebody has used in the build tree.
    void FilesAreInstalledAsTheyWereMade()
    {
        QCOMPARE(Lesen(Installiert("share/paukfix/konfig.dat")), Lesen(SOURCE_DIR "/assets/konfig.dat"));
        QCOMPARE(Lesen(Installiert("share/paukfix/Englisch.pzb")), Lesen(BUILD_DIR "/samples/Englisch.pzb"));
    }

    void TheDesktopEntryStartsTheProgramWithACardFile()
    {
        const QByteArray eintrag = Lesen(Installiert("share/applications/paukfix.desktop"));
        for (const char *zeile :
             {"\nExec=paukfix %f\n", "\nIcon=paukfix\n", "\nMimeType=application/x-paukfix;\n"})
            QVERIFY2(eintrag.contains(zeile), zeile);
        const QByteArray typ = Lesen(Installiert("share/mime/packages/paukfix.xml"));
        QVERIFY(typ.contains("type=\"application/x-paukfix\""));
        QVERIFY(typ.contains("glob pattern=\"*.pzb\""));
    }

    void AnOrdinaryUserGetsADirectoryOfTheirOwnOnce()
    {
        const auto erster = Programm();
        QVERIFY(erster->Starten());
        QVERIFY(anzeige_->Taste("Merkkasten", "Return"));
        QVERIFY(anzeige_->Taste("Merkkasten öffnen", "Escape"));
        QVERIFY(anzeige_->Taste("Lern-Box", "ctrl+q"));
        QVERIFY(erster->IstZuEnde());
        for (const char *name : {"konfig.dat", "lbox11.jpg", "Englisch.pzb", "ueber.rtf"})
            QCOMPARE(Lesen(Eigene(name)), Lesen(Installiert(QString("share/paukfix/") + name)));

        // What the user deletes stays deleted, and is reported.
        QVERIFY(QFile::remove(Eigene("konfig.dat")));
        const auto zweiter = Programm();
        QVERIFY(zweiter->Starten());
        QVERIFY(anzeige_->Schliessen("Merkkasten", "Return")); // the report of the intro
        QVERIFY(anzeige_->Schliessen("Merkkasten", "Return")); // the intro
        QVERIFY(anzeige_->Schliessen("Merkkasten", "Return")); // the report of the main window
        QVERIFY(anzeige_->Taste("Merkkasten öffnen", "Escape"));
        QVERIFY(anzeige_->Taste("Lern-Box", "ctrl+q"));
        QVERIFY(zweiter->IstZuEnde());
        QVERIFY(!QFile::exists(Eigene("konfig.dat")));
    }
};

QTEST_GUILESS_MAIN(InstallTest)
#include "InstallTest.moc"
