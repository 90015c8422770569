// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Packen.h"

#include "Auspacken.h"
#include "FreshFile.h"
#include "ResourceLimit.h"
#include "SafeFile.h"
#include "StoreError.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"
#include "ZipReader.h"

#include <QDir>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <sys/wait.h>
#include <unistd.h>

using namespace paukfix;
using namespace Qt::StringLiterals;

class PackenTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> ordner_;

    QString Pfad(const QString &name) const { return ordner_->filePath(name); }

    QStringList Da() const
    {
        return QDir(ordner_->path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
    }

    // Packs the box "box.pzb" with all that is named.
    Packliste Packen(const QList<MediaName> &medien, const Progress &progress = {}) const
    {
        Packliste liste = PacklisteVon(Pfad("box.pzb"), medien);
        paukfix::Packen(Pfad("box.pzb"), liste, Pfad("p.pzbz"), progress);
        return liste;
    }

private slots:

    void init() { ordner_ = std::make_unique<QTemporaryDir>(); }

    void WhatComesOutIsWhatWentIn();
    void WhatIsMissingIsNamed();
    void NothingOutsideTheDirectoryGoesIn();
    void TheOldPackageStaysUntilTheNewOneIsWhole();
    void WhatAKillLeavesIsCleared();
    void WhatPacksToNothingCanBeUnpackedToo();
};

// Byte for byte, with names as people give them.
void PackenTest::WhatComesOutIsWhatWentIn()
{
    QRandomGenerator zufall(4711);
    QList<CardRecord> karten;
    QList<MediaName> medien;
    const QStringList namen{u"Käse & Brot.JPG"_s, u"日本.bmp"_s,  u"a.b.c.wav"_s,
                            u"leer.jpg"_s,        u"GROSS.Wav"_s, u"mit 'Zeichen' (1).jpeg"_s};
    for (const QString &name : namen) {
        QByteArray bytes(name.startsWith("leer") ? 0 : zufall.bounded(200'000), '\0');
        for (char &byte : bytes)
            byte = static_cast<char>(zufall.bounded(name.endsWith("bmp") ? 2 : 256));
        WriteFileSynced(Pfad(name), bytes);
        karten << MakeCard(static_cast<int>(karten.size()) + 1, 0, static_cast<int>(karten.size()) + 1);
        medien.append({name, 1});
    }
    medien.append({"gross.wav", 1}); // found whatever the case, and in the package once
    WriteFileSynced(Pfad("niemandes.jpg"), "niemandes");
    MakeCardFile(Pfad("box.pzb"), karten);
    QCOMPARE(Packen(medien).bericht, QString());
    QTemporaryDir dort;
    CopyFile(Pfad("p.pzbz"), dort.filePath("Reise.pzbz"));
    const Ausgepackt ausgepackt = Auspacken(dort.filePath("Reise.pzbz"));
    QCOMPARE(ausgepackt.kartei, dort.filePath("Reise/box.pzb"));
    QCOMPARE(ausgepackt.bericht, QString());
    QStringList erwartet = namen;
    erwartet << "box.pzb";
    QStringList da = QDir(dort.filePath("Reise")).entryList(QDir::Files | QDir::Hidden);
    da.sort();
    erwartet.sort();
    QCOMPARE(da, erwartet);
    for (const QString &name : erwartet)
        QCOMPARE(paukfix::ReadFile(dort.filePath("Reise/" + name), 1 << 20),
                 paukfix::ReadFile(Pfad(name), 1 << 20));
}

void PackenTest::WhatIsMissingIsNamed()
{
    MakeCardFile(Pfad("box.pzb"), {MakeCard(1, 0, 1)});
    const Packliste liste = Packen({{"fehlt.jpg", 3}, {"konfig.dat", 1}});
    QCOMPARE(liste.bericht, "Nicht im Paket sind diese Bilder und Töne, die Karten nennen:\n\n"
                            "„fehlt.jpg“ fehlt. (3 Karten)\n"
                            "„konfig.dat“ ist kein Name eines Bildes oder Klangs. (1 Karte)");
    QCOMPARE(liste.fehlend, 2);
    QCOMPARE(ZipReader(Pfad("p.pzbz")).Entries().size(), std::size_t(1));
}

void PackenTest::NothingOutsideTheDirectoryGoesIn()
{
    QTemporaryDir anderswo;
    WriteFileSynced(anderswo.filePath("geheim.jpg"), "geheim");
    WriteFileSynced(Pfad("andere.pzb"), "eine andere Kartei");
    QCOMPARE(::symlink(qPrintable(anderswo.filePath("geheim.jpg")), qPrintable(Pfad("link.jpg"))), 0);
    MakeCardFile(Pfad("box.pzb"), {MakeCard(1, 0, 1)});
    const QString hinaus = "../" + QDir(anderswo.path()).dirName() + "/geheim.jpg";
    const Packliste liste = Packen(
        {{hinaus, 1}, {anderswo.filePath("geheim.jpg"), 1}, {"link.jpg", 1}, {"andere.pzb", 1}, {"..", 1}});
    QCOMPARE(liste.fehlend, 5);
    const ZipReader paket(Pfad("p.pzbz"));
    QCOMPARE(paket.Entries().size(), std::size_t(1));
    QCOMPARE(paket.Entries()[0].name, "box.pzb");
}

void PackenTest::TheOldPackageStaysUntilTheNewOneIsWhole()
{
    WriteFileSynced(Pfad("p.pzbz"), "altes Paket");
    QByteArray bytes(300'000, '\0');
    QRandomGenerator(1).generate(bytes.begin(), bytes.end());
    WriteFileSynced(Pfad("bild.jpg"), bytes);
    MakeCardFile(Pfad("box.pzb"), {MakeCard(1, 0, 1)});
    const QStringList vorher = Da();
    {
        const FullDisk voll(100'000);
        QVERIFY_EXCEPTION_THROWN(Packen({{"bild.jpg", 1}}), StoreError);
    }
    QCOMPARE(Da(), vorher);
    for (const int bis : {0, 1, 3}) {
        int gemeldet = 0;
        QVERIFY_EXCEPTION_THROWN(Packen({{"bild.jpg", 1}},
                                        [&](int, int) {
                                            if (gemeldet++ == bis)
                                                throw StoreError(Fehler::Abgebrochen, "abgebrochen");
                                        }),
                                 StoreError);
        QCOMPARE(Da(), vorher);
    }
    QCOMPARE(paukfix::ReadFile(Pfad("p.pzbz"), 100), "altes Paket");
    Packen({{"bild.jpg", 1}});
    QCOMPARE(Da(), vorher);
    QCOMPARE(ZipReader(Pfad("p.pzbz")).Entries().size(), std::size_t(2));
}

void PackenTest::WhatAKillLeavesIsCleared()
{
    WriteFileSynced(Pfad("p.pzbz"), "altes Paket");
    QByteArray bytes(300'000, '\0');
    QRandomGenerator(1).generate(bytes.begin(), bytes.end());
    WriteFileSynced(Pfad("bild.jpg"), bytes);
    MakeCardFile(Pfad("box.pzb"), {MakeCard(1, 0, 1)});
    const QStringList vorher = Da();
    const pid_t kind = fork();
    if (kind == 0) {
        int gemeldet = 0;
        Packen({{"bild.jpg", 1}}, [&](int, int) {
            if (++gemeldet == 3)
                _exit(0);
        });
        _exit(1);
    }
    int status = 0;
    QCOMPARE(waitpid(kind, &status, 0), kind);
    QCOMPARE(status, 0);
    QVERIFY(Da() != vorher);
    ClearFreshFiles(ordner_->path());
    QCOMPARE(Da(), vorher);
    QCOMPARE(paukfix::ReadFile(Pfad("p.pzbz"), 100), "altes Paket");
}

// Silence and white paper pack to a thousandth, as what is made to harm does.
void PackenTest::WhatPacksToNothingCanBeUnpackedToo()
{
    WriteFileSynced(Pfad("stille.wav"), QByteArray(100 << 20, '\0'));
    MakeCardFile(Pfad("box.pzb"), {MakeCard(1, 0, 1)});
    Packen({{"stille.wav", 1}});
    QCOMPARE(QFileInfo(QFileInfo(Auspacken(Pfad("p.pzbz")).kartei).dir().filePath("stille.wav")).size(),
             100 << 20);
}

PAUKFIX_APPLESS_TEST(PackenTest)
#include "PackenTest.moc"
