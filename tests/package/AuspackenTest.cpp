// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Auspacken.h"

#include "FreshFile.h"
#include "ResourceLimit.h"
#include "SafeFile.h"
#include "StoreError.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"
#include "ZipWriter.h"

#include <QDir>
#include <QDirIterator>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <sys/wait.h>
#include <unistd.h>

using namespace paukfix;
using namespace Qt::StringLiterals;

class AuspackenTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> aussen_;

    // Packages lie in a directory of a directory, so that what leads outside can be seen.
    QString Pfad(const QString &name = {}) const { return aussen_->filePath("innen/" + name); }

    QStringList Alles() const
    {
        QStringList alles;
        QDirIterator eintraege(aussen_->path(),
                               QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                               QDirIterator::Subdirectories);
        while (eintraege.hasNext())
            alles << QDir(aussen_->path()).relativeFilePath(eintraege.next());
        alles.sort();
        return alles;
    }

    using Eintraege = QList<std::pair<QString, QByteArray>>;

    void Paket(const Eintraege &eintraege) const
    {
        QFile::remove(Pfad("p.pzbz"));
        ZipWriter paket(Pfad("p.pzbz"));
        for (const auto &[name, inhalt] : eintraege)
            paket.Add(name, inhalt);
        paket.Finish();
    }

    static QByteArray Kartei()
    {
        const QTemporaryDir ordner;
        MakeCardFile(ordner.filePath("x.pzb"), {MakeCard(1, 0, 1)});
        return paukfix::ReadFile(ordner.filePath("x.pzb"), 1 << 20);
    }

    // Changes the record of an entry in the package's table of contents, counted from 0.
    void Aendern(int eintrag, const std::function<void(QByteArray &bytes, qsizetype kopf)> &aendern) const
    {
        QByteArray bytes = paukfix::ReadFile(Pfad("p.pzbz"), 1 << 28);
        qsizetype kopf = -1;
        for (int i = 0; i <= eintrag; ++i)
            kopf = bytes.indexOf("PK\x01\x02", kopf + 1);
        QVERIFY(kopf > 0);
        aendern(bytes, kopf);
        WriteFileSynced(Pfad("p.pzbz"), bytes);
    }

    // The sentence with which the package is refused; nothing was written.
    QString Abgelehnt() const
    {
        const QStringList vorher = Alles();
        QString text;
        try {
            Auspacken(Pfad("p.pzbz"));
        } catch (const StoreError &fehler) {
            text = fehler.Text();
        }
        if (Alles() != vorher)
            return "written: " + Alles().join(' ');
        return text;
    }

private slots:

    void init()
    {
        aussen_ = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir(aussen_->path()).mkdir("innen"));
    }

    void EachUnpackingHasADirectoryOfItsOwn();
    void WhatIsNoPartOfABoxIsLeftOutAndNamed();
    void PathsThatLeadOutsideAreRefused_data();
    void PathsThatLeadOutsideAreRefused();
    void LinksAreRefused();
    void NamesThatDifferInLettersOnlyAreTwoFiles();
    void PackagesWithoutOneBoxAreRefused();
    void BombsAreRefused();
    void DamageIsRefused();
    void AFullDiskAndCancellingLeaveNothing();
    void WhatAKillLeavesIsCleared();
    void TheLongestNameCanBeUnpacked();
};

void AuspackenTest::EachUnpackingHasADirectoryOfItsOwn()
{
    Paket({{"box.pzb", Kartei()}, {"bild.jpg", "B"}});
    QCOMPARE(SchonAusgepackt(Pfad("p.pzbz")), QString());
    QCOMPARE(Auspacken(Pfad("p.pzbz")).kartei, Pfad("p/box.pzb"));
    QCOMPARE(SchonAusgepackt(Pfad("p.pzbz")), Pfad("p/box.pzb"));
    WriteFileSynced(Pfad("p/bild.jpg"), "geändert");
    QCOMPARE(Auspacken(Pfad("p.pzbz")).kartei, Pfad("p-2/box.pzb"));
    QCOMPARE(paukfix::ReadFile(Pfad("p/bild.jpg"), 100), "geändert");
    QCOMPARE(paukfix::ReadFile(Pfad("p-2/bild.jpg"), 100), "B");
    QCOMPARE(paukfix::ReadFile(Pfad("p-2/box.pzb"), 1 << 20), Kartei());
    QCOMPARE(Alles(), (QStringList{"innen", "innen/p", "innen/p-2", "innen/p-2/bild.jpg", "innen/p-2/box.pzb",
                                   "innen/p.pzbz", "innen/p/bild.jpg", "innen/p/box.pzb"}));
}

void AuspackenTest::WhatIsNoPartOfABoxIsLeftOutAndNamed()
{
    Paket({{"box.pzb", Kartei()},
           {"liesmich.txt", "x"},
           {"ordner/", ""},
           {"ordner/bild.jpg", "x"},
           {"konfig.dat", "x"},
           {"box.pzb-journal", "x"},
           {".versteckt.jpg", "x"},
           {"bild.jpg", "B"}});
    const Ausgepackt ausgepackt = Auspacken(Pfad("p.pzbz"));
    QCOMPARE(ausgepackt.bericht,
             "Nicht ausgepackt, weil es kein Bild und kein Klang einer Kartei ist:\n\n"
             "liesmich.txt\nordner/bild.jpg\nkonfig.dat\nbox.pzb-journal\n.versteckt.jpg");
    QCOMPARE(QDir(Pfad("p")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             (QStringList{"bild.jpg", "box.pzb"}));
}

void AuspackenTest::PathsThatLeadOutsideAreRefused_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"../b.jpg", "../../b.jpg", "ordner/../../b.jpg", "..", "/tmp/paukfix-b.jpg",
                             "..\\b.jpg", "a\\b.jpg", "C:\\b.jpg", "C:b.jpg", "../box.pzb"})
        QTest::newRow(name) << QString(name);
}

void AuspackenTest::PathsThatLeadOutsideAreRefused()
{
    QFETCH(QString, name);
    Paket({{"box.pzb", Kartei()}, {name, "x"}});
    QCOMPARE(Abgelehnt(),
             u"Das Paket „%1“ enthält mit „%2“ einen Pfad, der aus seinem Ordner hinausführt. Es wurde "
             u"nichts ausgepackt."_s.arg(Pfad("p.pzbz"), name));
}

void AuspackenTest::LinksAreRefused()
{
    for (const QString &name : {u"bild.jpg"_s, u"box.pzb"_s}) {
        Paket({{name, "/etc/passwd"}, {"andere.pzb", Kartei()}});
        Aendern(0, [](QByteArray &bytes, qsizetype kopf) {
            bytes[kopf + 5] = 3; // made by Unix
            bytes[kopf + 40] = static_cast<char>(0xff);
            bytes[kopf + 41] = static_cast<char>(0xa1); // a link that everybody may read
        });
        QCOMPARE(Abgelehnt(),
                 u"Das Paket „%1“ enthält mit „%2“ etwas, das keine gewöhnliche Datei ist. Es wurde "
                 u"nichts ausgepackt."_s.arg(Pfad("p.pzbz"), name));
    }
}

// Where the file system holds them for one, neither takes the other one's place.
void AuspackenTest::NamesThatDifferInLettersOnlyAreTwoFiles()
{
    Paket({{"box.pzb", Kartei()}, {"Bild.jpg", "gross"}, {"bild.jpg", "klein"}, {"NUL.jpg", "leer"}});
    Auspacken(Pfad("p.pzbz"));
    QCOMPARE(QDir(Pfad("p")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name),
             (QStringList{"Bild.jpg", "NUL.jpg", "bild.jpg", "box.pzb"}));
    QCOMPARE(paukfix::ReadFile(Pfad("p/Bild.jpg"), 100), QByteArray("gross"));
    QCOMPARE(paukfix::ReadFile(Pfad("p/bild.jpg"), 100), QByteArray("klein"));
}

void AuspackenTest::PackagesWithoutOneBoxAreRefused()
{
    Paket({{"bild.jpg", "x"}});
    QCOMPARE(Abgelehnt(), u"Das Paket „%1“ enthält keine Kartei (.pzb). Es wurde nichts ausgepackt."_s.arg(
                              Pfad("p.pzbz")));
    Paket({{"a.pzb", Kartei()}, {"b.PZB", Kartei()}});
    QCOMPARE(Abgelehnt(), u"Das Paket „%1“ enthält mehr als eine Kartei. Es wurde nichts ausgepackt."_s.arg(
                              Pfad("p.pzbz")));
    for (const QByteArray &bytes : {QByteArray(), QByteArray("kein Paket"), Kartei()}) {
        WriteFileSynced(Pfad("p.pzbz"), bytes);
        QVERIFY2(IsGermanMessage(Abgelehnt()), qPrintable(Abgelehnt()));
    }
}

void AuspackenTest::BombsAreRefused()
{
    Paket({{"box.pzb", Kartei()}, {"bombe.wav", QByteArray(120 << 20, '\0')}});
    QVERIFY2(Abgelehnt().contains("ein Vielfaches seiner Größe"), qPrintable(Abgelehnt()));
    // It says that it is small.
    Aendern(1, [](QByteArray &bytes, qsizetype kopf) {
        for (int i = 24; i < 28; ++i)
            bytes[kopf + i] = i == 24 ? 100 : 0;
    });
    QVERIFY2(IsGermanMessage(Abgelehnt()), qPrintable(Abgelehnt()));
}

void AuspackenTest::DamageIsRefused()
{
    QByteArray bild(20'000, '\0');
    QRandomGenerator zufall(3);
    zufall.generate(bild.begin(), bild.end());
    Paket({{"box.pzb", Kartei()}, {"bild.jpg", bild}});
    const QByteArray ganz = paukfix::ReadFile(Pfad("p.pzbz"), 1 << 20);
    const QStringList vorher = Alles();
    for (int i = 0; i < 300; ++i) {
        QByteArray bytes = ganz;
        if (i % 3 == 0)
            bytes.truncate(zufall.bounded(static_cast<int>(ganz.size())));
        else
            bytes[zufall.bounded(static_cast<int>(ganz.size()))] ^=
                static_cast<char>(1 + zufall.bounded(255));
        WriteFileSynced(Pfad("p.pzbz"), bytes);
        try {
            // Some bytes mean nothing: times, and who made it.
            const QDir ordner = QFileInfo(Auspacken(Pfad("p.pzbz")).kartei).dir();
            for (const QString &name : ordner.entryList(QDir::Files))
                QCOMPARE(paukfix::ReadFile(ordner.filePath(name), 1 << 20),
                         name.endsWith("jpg") ? bild : Kartei());
            QVERIFY(QDir(ordner).removeRecursively());
        } catch (const StoreError &fehler) {
            QVERIFY2(IsGermanMessage(fehler.Text()), qPrintable(fehler.Text()));
        }
        QCOMPARE(Alles(), vorher);
    }
}

void AuspackenTest::AFullDiskAndCancellingLeaveNothing()
{
    QByteArray bild(3 << 20, '\0');
    QRandomGenerator(3).generate(bild.begin(), bild.end());
    Paket({{"bild.jpg", bild}, {"box.pzb", Kartei()}});
    {
        const FullDisk voll(1 << 20);
        QCOMPARE(Abgelehnt(), "Der Datenträger ist voll: " + Pfad("p/bild.jpg"));
    }
    const QStringList vorher = Alles();
    int gemeldet = 0;
    QVERIFY_EXCEPTION_THROWN(Auspacken(Pfad("p.pzbz"),
                                       [&](int, int) {
                                           if (++gemeldet == 2)
                                               throw StoreError(Fehler::Abgebrochen, "abgebrochen");
                                       }),
                             StoreError);
    QCOMPARE(Alles(), vorher);
}

void AuspackenTest::WhatAKillLeavesIsCleared()
{
    QByteArray bild(3 << 20, '\0');
    QRandomGenerator(3).generate(bild.begin(), bild.end());
    Paket({{"bild.jpg", bild}, {"box.pzb", Kartei()}});
    const QStringList vorher = Alles();
    for (const bool nochmal : {false, true}) {
        const pid_t kind = fork();
        if (kind == 0) {
            int gemeldet = 0;
            Auspacken(Pfad("p.pzbz"), [&](int, int) {
                if (++gemeldet == 2)
                    _exit(0);
            });
            _exit(1);
        }
        int status = 0;
        QCOMPARE(waitpid(kind, &status, 0), kind);
        QCOMPARE(status, 0);
        QVERIFY(Alles() != vorher);
        if (nochmal) {
            QCOMPARE(Auspacken(Pfad("p.pzbz")).kartei, Pfad("p/box.pzb"));
            QVERIFY(QDir(Pfad("p")).removeRecursively());
        } else {
            ClearFreshFiles(Pfad());
        }
        QCOMPARE(Alles(), vorher);
    }
}

void AuspackenTest::TheLongestNameCanBeUnpacked()
{
    Paket({{"box.pzb", Kartei()}});
    const QString name(250, u'n');
    QVERIFY(QFile::rename(Pfad("p.pzbz"), Pfad(name + ".pzbz")));
    QCOMPARE(Auspacken(Pfad(name + ".pzbz")).kartei, Pfad(name + "/box.pzb"));
}

PAUKFIX_APPLESS_TEST(AuspackenTest)
#include "AuspackenTest.moc"
