// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Befehlszeile.h"
#include "TestPlaces.h"
#include "TestProgram.h"

#include <QDir>
#include <QFile>
#include <QMimeDatabase>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

using namespace paukfix;
using namespace Qt::StringLiterals;

// What is installed beside the program, read by the tools that a desktop reads it with.
class AuslieferungTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir ordner_;

    QString Ziel(const QString &pfad) const { return ordner_.filePath("ziel/" + pfad); }

    static QByteArray Lesen(const QString &pfad)
    {
        QFile datei(pfad);
        return datei.open(QIODevice::ReadOnly) ? datei.readAll() : QByteArray();
    }

    // What a tool says, on both of its channels; its failure is one of the test.
    static QString Sagt(const QString &programm, const QStringList &argumente)
    {
        QProcess prozess;
        QProcessEnvironment umgebung = QProcessEnvironment::systemEnvironment();
        umgebung.insert("LC_ALL", "C.UTF-8");
        umgebung.insert("MANWIDTH", "80");
        prozess.setProcessEnvironment(umgebung);
        prozess.setProcessChannelMode(QProcess::MergedChannels);
        prozess.start(programm, argumente);
        if (!prozess.waitForFinished(120000) || prozess.exitStatus() != QProcess::NormalExit)
            return programm + " did not run";
        const QString text = QString::fromUtf8(prozess.readAll());
        return prozess.exitCode() == 0 ? text : programm + " failed: " + text;
    }

    static QSet<QString> Optionen(const QString &text)
    {
        static const QRegularExpression option("(?<![\\w-])--?[a-z][a-z]*(?![\\w-])"_L1);
        QSet<QString> gefunden;
        for (auto treffer = option.globalMatch(text); treffer.hasNext();)
            gefunden << treffer.next().captured();
        return gefunden;
    }

    // What bash offers for the last of these words, in a directory with files of all kinds.
    QStringList Ergaenzt(const QStringList &worte) const
    {
        const QString skript = "cd " + ordner_.filePath("karteien") +
                               " && . /usr/share/bash-completion/bash_completion && . " +
                               Ziel("share/bash-completion/completions/paukfix") +
                               " && COMP_WORDS=(\"$@\") COMP_CWORD=$(($# - 1)) COMP_LINE=\"$*\" "
                               "COMP_POINT=${#COMP_LINE} && _paukfix \"$1\" \"${@: -1}\" "
                               "&& printf '%s\\n' \"${COMPREPLY[@]}\"";
        QStringList angebot =
            Sagt("bash", QStringList{"-c", skript, "bash"} + worte).split('\n', Qt::SkipEmptyParts);
        angebot.sort();
        return angebot;
    }

private slots:

    void initTestCase()
    {
        QVERIFY(!Sagt(CMakeProgram(), {"--install", BuildFile(""), "--prefix", Ziel("")}).contains("failed"));
        QVERIFY(QDir().mkpath(ordner_.filePath("karteien")));
        for (const char *name : {"a.pzb", "b.pzbz", "c.apkg", "d.colpkg", "e.kvtml", "f.txt"})
            QVERIFY(QFile::copy(SourceFile("LICENSE"), ordner_.filePath(u"karteien/"_s + name)));
    }

    // An option that is new must be told everywhere.
    void OptionsStandInHelpManPagesAndCompletion()
    {
        QSet<QString> gezeigt = Optionen(BefehlszeileLesen({"paukfix", "--help"}).text);
        QVERIFY(gezeigt.contains("--weiter") && gezeigt.contains("-v"));
        for (const char *seite : {"share/man/man1/paukfix.1", "share/man/de/man1/paukfix.1"}) {
            QSet<QString> beschrieben =
                Optionen(QString::fromUtf8(Lesen(Ziel(seite))).replace("\\-", "-").remove("\\fB"));
            QVERIFY2(beschrieben.remove("-platform"), seite); // the toolkit's
            QCOMPARE(beschrieben, gezeigt);
        }
        QStringList alle = gezeigt.values() + QStringList{"--"};
        alle.sort();
        QCOMPARE(Ergaenzt({"paukfix", "-"}), alle);
        for (const QString &option : std::as_const(gezeigt))
            QVERIFY2(BefehlszeileLesen({"paukfix", option}).art != Befehlszeile::Art::Fehler,
                     qPrintable(option));
    }

    void CompletionOffersWhatCanBeOpened()
    {
        QCOMPARE(Ergaenzt({"paukfix", ""}),
                 QStringList({"a.pzb", "b.pzbz", "c.apkg", "d.colpkg", "e.kvtml"}));
    }

    void ManPagesRenderWithoutAWarning()
    {
        for (const char *seite : {"share/man/man1/paukfix.1", "share/man/de/man1/paukfix.1"}) {
            QCOMPARE(Sagt("sh", {"-c", "man --warnings -E UTF-8 -l -Tutf8 -Z '" + Ziel(seite) +
                                           "' 2>&1 >/dev/null"}),
                     QString());
            QVERIFY(Sagt("man", {"-P", "cat", "-l", Ziel(seite)}).contains("paukfix"));
        }
    }

    void MetadataAndDesktopEntryAreValid()
    {
        const QString daten = Ziel("share/metainfo/org.paukfix.paukfix.metainfo.xml");
        const QString urteil = Sagt("appstreamcli", {"validate", "--no-net", "--pedantic", daten});
        QVERIFY2(urteil.contains("Validation was successful") && !urteil.contains("pedantic:"),
                 qPrintable(urteil));
        QCOMPARE(Sagt("desktop-file-validate", {Ziel("share/applications/paukfix.desktop")}), QString());
        const QByteArray text = Lesen(daten);
        QVERIFY(!text.contains('@'));
        for (const char *bild : {"kasten.png", "editor.png"}) {
            QVERIFY(text.contains(QByteArray("/bilder/") + bild));
            QVERIFY(QFile::exists(SourceFile(u"docs/bilder/"_s + bild)));
        }
    }

    // One release for each heading of the changelog; what is packaged is the version that the program tells.
    void TheVersionIsTheSameEverywhere()
    {
        static const QRegularExpression kopf("^## (.*)$"_L1, QRegularExpression::MultilineOption);
        static const QRegularExpression ausgabe("<release [^>]*version=\"([^\"]*)\""_L1);
        QStringList versionen;
        for (auto treffer = kopf.globalMatch(QString::fromUtf8(Lesen(SourceFile("CHANGELOG.md"))));
             treffer.hasNext();) {
            const QString name = treffer.next().captured(1).section(' ', 0, 0);
            versionen << (name == "Unreleased" ? PAUKFIX_VERSION : QString(name).remove('[').remove(']'));
        }
        QStringList ausgaben;
        for (auto treffer = ausgabe.globalMatch(
                 QString::fromUtf8(Lesen(Ziel("share/metainfo/org.paukfix.paukfix.metainfo.xml"))));
             treffer.hasNext();)
            ausgaben << treffer.next().captured(1);
        QVERIFY(!versionen.isEmpty());
        QCOMPARE(ausgaben, versionen);
        QVERIFY(Lesen(SourceFile("debian/changelog")).startsWith("paukfix (" PAUKFIX_VERSION ")"));
    }

    // By the mark in its first bytes, by the desktop's own list of types with ours in it.
    void CardFilesAreRecognisedUnderAnyName()
    {
        const QString typen = ordner_.filePath("typen/mime/packages/");
        QVERIFY(QDir().mkpath(typen));
        QVERIFY(QFile::copy("/usr/share/mime/packages/freedesktop.org.xml", typen + "freedesktop.org.xml"));
        QVERIFY(QFile::copy(Ziel("share/mime/packages/paukfix.xml"), typen + "paukfix.xml"));
        QVERIFY(!Sagt("update-mime-database", {ordner_.filePath("typen/mime")}).contains("failed"));
        qputenv("XDG_DATA_DIRS", QFile::encodeName(ordner_.filePath("typen")));
        const QMimeDatabase arten;
        const auto art = [&](const QString &name, const QString &inhalt) {
            const QString pfad = ordner_.filePath(name);
            return QFile::copy(inhalt, pfad) ? arten.mimeTypeForFile(pfad).name() : QString();
        };
        const QString kartei = Ziel("share/paukfix/beispiele/Englisch.pzb");
        for (const char *name : {"brief", "brief.alt", "Kartei.pzb"})
            QCOMPARE(art(name, kartei), "application/x-paukfix");
        QCOMPARE(arten.mimeTypeForFile(ordner_.filePath("brief")).comment(),
                 arten.mimeTypeForName("application/x-paukfix").comment());
        // Another program's database is none of ours; a package is told by its name.
        QProcess sqlite;
        sqlite.start("sqlite3", {ordner_.filePath("fremd"), "CREATE TABLE a(b)"});
        QVERIFY(sqlite.waitForFinished());
        QCOMPARE(arten.mimeTypeForFile(ordner_.filePath("fremd")).name(), "application/vnd.sqlite3");
        QCOMPARE(art("packet.pzbz", SourceFile("LICENSE")), "application/x-paukfix-package");
    }

    void LicencesAreInstalled()
    {
        QCOMPARE(Lesen(Ziel("share/doc/paukfix/LICENSE")), Lesen(SourceFile("LICENSE")));
        QVERIFY(Lesen(Ziel("share/doc/paukfix/THIRD-PARTY.md")).contains("SQLiteCpp"));
    }
};

PAUKFIX_CORE_TEST(AuslieferungTest)
#include "AuslieferungTest.moc"
