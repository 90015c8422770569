// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Beilagen.h"

#include "CardFile.h"
#include "CardMedia.h"
#include "CardRecordset.h"
#include "CardTransaction.h"
#include "FreshFile.h"
#include "Medienmitnahme.h"
#include "ResourceLimit.h"
#include "StoreError.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace paukfix;
using namespace Qt::StringLiterals;

class BeilagenTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> von_, nach_;

    QString Von(const QString &name) const { return von_->filePath(name); }

    QString Nach(const QString &name) const { return nach_->filePath(name); }

    // What lies in the new directory, hidden files too.
    QStringList Da() const
    {
        return QDir(nach_->path()).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
    }

    QByteArray Inhalt(const QString &name) const { return paukfix::ReadFile(Nach(name), 1 << 20); }

    // Takes the file along that a card of the old directory names.
    QString Nehmen(Beilagen &beilagen, const QString &name) const
    {
        return beilagen.Kopieren(name, Von(name), InhaltVon(Von(name)));
    }

    // A box in the new directory with a card that names `bild`.
    void Box(const QString &bild) const
    {
        CardRecord karte = MakeCard(1, 0, 1);
        karte.Picture_1_Name = bild;
        MakeCardFile(Nach("box.pzb"), {karte});
    }

    // In a process that dies at the end of `tun`, as by a kill.
    static void Sterben(const std::function<void()> &tun)
    {
        const pid_t kind = fork();
        if (kind == 0) {
            tun();
            _exit(0);
        }
        int status = 0;
        QCOMPARE(waitpid(kind, &status, 0), kind);
        QCOMPARE(status, 0);
    }

private slots:

    void init()
    {
        von_ = std::make_unique<QTemporaryDir>();
        nach_ = std::make_unique<QTemporaryDir>();
    }

    void FilesStandAtTheirPlacesOnlyWhenAllAreWhole();
    void AnotherFileOfTheNameMakesANumber();
    void NamesThatDifferInCaseClash();
    void TheSameFileIsNotCopiedTwice();
    void WhatIsGivenUpLeavesNothing();
    void WhatNoStoredCardNamesGoesAgain();
    void AKillBeforeTheCardsAreStoredLeavesNothing();
    void AKillAfterTheCardsAreStoredLeavesTheirPictures();
    void WhileAProgramHasTheBoxNothingIsDecided();
    void AFileThatCameMeanwhileStays();
    void AFullDiskLeavesNothing();
    void ANoteOfAStrangerTakesNothingElse();
    void LinksPipesAndOddNamesAreTold();
    void CardsFollowTheirFiles();
    void NamesOfAllSlotsAreFoundAndChanged();
};

void BeilagenTest::FilesStandAtTheirPlacesOnlyWhenAllAreWhole()
{
    WriteFileSynced(Von("a.jpg"), "A");
    WriteFileSynced(Von("b.wav"), "B");
    Box("b.wav");
    const DirectoryLock ort(nach_->path());
    {
        Beilagen beilagen(ort, "box.pzb");
        QCOMPARE(Nehmen(beilagen, "a.jpg"), "a.jpg");
        QCOMPARE(Nehmen(beilagen, "b.wav"), "b.wav");
        QVERIFY(!QFile::exists(Nach("a.jpg")));
        beilagen.Hinlegen();
        QCOMPARE(Inhalt("a.jpg"), "A");
        QCOMPARE(Inhalt("b.wav"), "B");
        beilagen.Abschliessen({"a.jpg", "b.wav"});
    }
    QCOMPARE(Da(), (QStringList{"a.jpg", "b.wav", "box.pzb"}));
}

void BeilagenTest::AnotherFileOfTheNameMakesANumber()
{
    WriteFileSynced(Von("bild.jpg"), "neu");
    WriteFileSynced(Nach("bild.jpg"), "alt");
    WriteFileSynced(Nach("bild-2.jpg"), "auch alt");
    QCOMPARE(::symlink("nirgends", qPrintable(Nach("bild-3.jpg"))), 0);
    Box("bild-4.jpg");
    const DirectoryLock ort(nach_->path());
    {
        Beilagen beilagen(ort, "box.pzb");
        QCOMPARE(Nehmen(beilagen, "bild.jpg"), "bild-4.jpg");
        // Another one of the same name, of this run.
        QCOMPARE(beilagen.Machen("bild.jpg", [](const QString &pfad) { WriteFileSynced(pfad, "dritte"); }),
                 "bild-5.jpg");
        beilagen.Hinlegen();
        beilagen.Abschliessen({"bild-4.jpg", "bild-5.jpg"});
    }
    QCOMPARE(Inhalt("bild.jpg"), "alt");
    QCOMPARE(Inhalt("bild-2.jpg"), "auch alt");
    QCOMPARE(Inhalt("bild-4.jpg"), "neu");
    QCOMPARE(Inhalt("bild-5.jpg"), "dritte");
}

// A card finds its picture whatever the case: a file that differs in nothing else would be in another's way.
void BeilagenTest::NamesThatDifferInCaseClash()
{
    WriteFileSynced(Von("katze.jpg"), "neu");
    WriteFileSynced(Von("hund.jpg"), "gleich");
    WriteFileSynced(Nach("KATZE.JPG"), "alt");
    WriteFileSynced(Nach("Hund.jpg"), "gleich");
    const DirectoryLock ort(nach_->path());
    Beilagen beilagen(ort, "box.pzb");
    QCOMPARE(Nehmen(beilagen, "katze.jpg"), "katze-2.jpg");
    QCOMPARE(Nehmen(beilagen, "hund.jpg"), "Hund.jpg");
    QCOMPARE(beilagen.Anzahl(), 1);
}

void BeilagenTest::TheSameFileIsNotCopiedTwice()
{
    WriteFileSynced(Von("bild.jpg"), "gleich");
    WriteFileSynced(Nach("bild.jpg"), "anders");
    WriteFileSynced(Nach("bild-2.jpg"), "gleich");
    const DirectoryLock ort(nach_->path());
    Beilagen beilagen(ort, "box.pzb");
    QCOMPARE(Nehmen(beilagen, "bild.jpg"), "bild-2.jpg");
    QCOMPARE(beilagen.Machen("bild.jpg", [](const QString &pfad) { WriteFileSynced(pfad, "gleich"); }),
             "bild-2.jpg");
    QCOMPARE(beilagen.Anzahl(), 0);
    WriteFileSynced(Von("zwei.jpg"), "zwei");
    QCOMPARE(Nehmen(beilagen, "zwei.jpg"), "zwei.jpg");
    QCOMPARE(Nehmen(beilagen, "zwei.jpg"), "zwei.jpg");
    QCOMPARE(beilagen.Anzahl(), 1);
}

void BeilagenTest::WhatIsGivenUpLeavesNothing()
{
    WriteFileSynced(Von("a.jpg"), "A");
    Box("fremd.jpg");
    const DirectoryLock ort(nach_->path());
    {
        Beilagen beilagen(ort, "box.pzb");
        Nehmen(beilagen, "a.jpg");
        QVERIFY_EXCEPTION_THROWN(beilagen.Machen("b.jpg",
                                                 [](const QString &pfad) {
                                                     WriteFileSynced(pfad, "halb");
                                                     throw StoreError(Fehler::Abgebrochen, "abgebrochen");
                                                 }),
                                 StoreError);
    }
    QCOMPARE(Da(), QStringList{"box.pzb"});
    {
        Beilagen beilagen(ort, "box.pzb");
        Nehmen(beilagen, "a.jpg");
        beilagen.Hinlegen(); // and the box could not take its place
    }
    QCOMPARE(Da(), QStringList{"box.pzb"});
}

void BeilagenTest::WhatNoStoredCardNamesGoesAgain()
{
    WriteFileSynced(Von("a.jpg"), "A");
    WriteFileSynced(Von("b.jpg"), "B");
    const DirectoryLock ort(nach_->path());
    Beilagen beilagen(ort, "box.pzb");
    Nehmen(beilagen, "a.jpg");
    Nehmen(beilagen, "b.jpg");
    beilagen.Hinlegen();
    beilagen.Abschliessen({"ordner\\A.JPG"});
    QCOMPARE(Da(), QStringList{"a.jpg"});
}

void BeilagenTest::AKillBeforeTheCardsAreStoredLeavesNothing()
{
    WriteFileSynced(Von("a.jpg"), "A");
    for (const bool hingelegt : {false, true}) {
        for (const bool box : {false, true}) {
            if (box)
                Box("anderes.jpg");
            const QStringList vorher = Da();
            Sterben([&] {
                const DirectoryLock ort(nach_->path());
                auto *beilagen = new Beilagen(ort, "box.pzb");
                Nehmen(*beilagen, "a.jpg");
                if (hingelegt)
                    beilagen->Hinlegen();
                _exit(Da() == vorher ? 1 : 0);
            });
            QVERIFY(Da() != vorher);
            ClearFreshFiles(nach_->path());
            QCOMPARE(Da(), vorher);
            QFile::remove(Nach("box.pzb"));
        }
    }
}

void BeilagenTest::AKillAfterTheCardsAreStoredLeavesTheirPictures()
{
    WriteFileSynced(Von("a.jpg"), "A");
    Sterben([&] {
        const DirectoryLock ort(nach_->path());
        auto *beilagen = new Beilagen(ort, "box.pzb");
        Nehmen(*beilagen, "a.jpg");
        beilagen->Hinlegen();
        Box("a.jpg");
        _exit(0);
    });
    ClearFreshFiles(nach_->path());
    QCOMPARE(Da(), (QStringList{"a.jpg", "box.pzb"}));
    QCOMPARE(Inhalt("a.jpg"), "A");
}

void BeilagenTest::WhileAProgramHasTheBoxNothingIsDecided()
{
    WriteFileSynced(Von("a.jpg"), "A");
    Box("anderes.jpg");
    Sterben([&] {
        const DirectoryLock ort(nach_->path());
        auto *beilagen = new Beilagen(ort, "box.pzb");
        Nehmen(*beilagen, "a.jpg");
        beilagen->Hinlegen();
        _exit(0);
    });
    {
        const CardFile offen(Nach("box.pzb"));
        ClearFreshFiles(nach_->path());
        QCOMPARE(Inhalt("a.jpg"), "A");
        // Nobody may begin anew meanwhile: the note would be lost.
        const DirectoryLock ort(nach_->path());
        try {
            const Beilagen beilagen(ort, "box.pzb");
            QFAIL("begun anew");
        } catch (const StoreError &fehler) {
            QCOMPARE(fehler.Number(), Fehler::Gesperrt);
            QVERIFY(IsGermanMessage(fehler.Text()));
        }
    }
    ClearFreshFiles(nach_->path());
    QCOMPARE(Da(), QStringList{"box.pzb"});
}

void BeilagenTest::AFileThatCameMeanwhileStays()
{
    WriteFileSynced(Von("a.jpg"), "A");
    WriteFileSynced(Von("b.jpg"), "B");
    {
        const DirectoryLock ort(nach_->path());
        Beilagen beilagen(ort, "box.pzb");
        Nehmen(beilagen, "a.jpg");
        Nehmen(beilagen, "b.jpg");
        WriteFileSynced(Nach("b.jpg"), "eines anderen");
        QVERIFY_EXCEPTION_THROWN(beilagen.Hinlegen(), StoreError);
    }
    QCOMPARE(Da(), QStringList{"b.jpg"});
    QCOMPARE(Inhalt("b.jpg"), "eines anderen");
}

void BeilagenTest::AFullDiskLeavesNothing()
{
    WriteFileSynced(Von("gross.jpg"), QByteArray(100'000, 'x'));
    WriteFileSynced(Von("klein.jpg"), "x");
    {
        const DirectoryLock ort(nach_->path());
        Beilagen beilagen(ort, "box.pzb");
        const FullDisk voll(50'000);
        Nehmen(beilagen, "klein.jpg");
        try {
            Nehmen(beilagen, "gross.jpg");
            QFAIL("written");
        } catch (const StoreError &fehler) {
            QCOMPARE(fehler.Number(), Fehler::DatentraegerVoll);
            QCOMPARE(fehler.Text(), "Der Datenträger ist voll: " + Nach("gross.jpg"));
        }
    }
    QCOMPARE(Da(), QStringList());
}

void BeilagenTest::ANoteOfAStrangerTakesNothingElse()
{
    WriteFileSynced(Nach("bild.jpg"), "eigenes");
    WriteFileSynced(Nach("box.txt"), "Text");
    WriteFileSynced(Von("ausserhalb.jpg"), "fremd");
    const QByteArray text = QCryptographicHash::hash("Text", QCryptographicHash::Sha256).toHex();
    const QByteArray fremd = QCryptographicHash::hash("fremd", QCryptographicHash::Sha256).toHex();
    const QByteArray falsch(64, '0');
    WriteFileSynced(Nach(".paukfix-beilagen"), "../box.pzb\n" + text + " box.txt\n" + falsch + " bild.jpg\n" +
                                                   fremd + ' ' + Von("ausserhalb.jpg").toUtf8() + '\n' +
                                                   fremd + " ../" + QDir(von_->path()).dirName().toUtf8() +
                                                   "/ausserhalb.jpg\n" + "kurz\n" + text + " ohne Ende");
    ClearFreshFiles(nach_->path());
    QCOMPARE(Da(), (QStringList{"bild.jpg", "box.txt"}));
    QVERIFY(QFile::exists(Von("ausserhalb.jpg")));
}

void BeilagenTest::LinksPipesAndOddNamesAreTold()
{
    QTemporaryDir anderswo;
    WriteFileSynced(anderswo.filePath("geheim.jpg"), "geheim");
    WriteFileSynced(Von("konfig.dat"), "x");
    WriteFileSynced(Von("box.pzb-journal"), "x");
    QCOMPARE(::symlink(qPrintable(anderswo.filePath("geheim.jpg")), qPrintable(Von("link.jpg"))), 0);
    QCOMPARE(::mkfifo(qPrintable(Von("rohr.wav")), 0600), 0);
    QVERIFY(QDir(von_->path()).mkdir("ordner.jpg"));
    const DirectoryLock ort(nach_->path());
    Beilagen beilagen(ort, "box.pzb");
    Medienmitnahme mitnahme(von_->path(), beilagen);
    const QStringList namen{"link.jpg",
                            "rohr.wav",
                            "ordner.jpg",
                            "konfig.dat",
                            "box.pzb-journal",
                            "../" + QDir(anderswo.path()).dirName() + "/geheim.jpg",
                            "..",
                            anderswo.filePath("geheim.jpg"),
                            "zeile\n.jpg",
                            ".versteckt.jpg",
                            u"g\u202Egpj.jpg"_s};
    for (const QString &name : namen)
        QCOMPARE(mitnahme.Mitnehmen(name), name);
    QVERIFY_EXCEPTION_THROWN(InhaltVon(Von("link.jpg")), StoreError);
    QVERIFY(mitnahme.Umbenannt().isEmpty());
    const QString bericht = mitnahme.Bericht();
    for (const QString &name : namen)
        QVERIFY2(bericht.contains(u"„%1“"_s.arg(name)), qPrintable(name + "\n" + bericht));
    QVERIFY(bericht.contains("„link.jpg“ ist eine Verknüpfung auf eine andere Datei. (1 Karte)"));
    QVERIFY(bericht.contains("„konfig.dat“ ist kein Name eines Bildes oder Klangs."));
    beilagen.Hinlegen();
    QCOMPARE(Da(), QStringList());
}

void BeilagenTest::CardsFollowTheirFiles()
{
    WriteFileSynced(Von("a.jpg"), "A");
    WriteFileSynced(Von("B.wav"), "B");
    WriteFileSynced(Nach("a.jpg"), "anders");
    const DirectoryLock ort(nach_->path());
    Beilagen beilagen(ort, "box.pzb");
    Medienmitnahme mitnahme(von_->path(), beilagen);
    QCOMPARE(mitnahme.Mitnehmen("a.jpg", 2), "a-2.jpg");
    QCOMPARE(mitnahme.Mitnehmen("C:\\Bilder\\a.jpg"), "a-2.jpg"); // as it is shown
    QCOMPARE(mitnahme.Mitnehmen("b.wav"), "b.wav");               // found whatever the case
    QCOMPARE(mitnahme.Bericht(), QString());
    QCOMPARE(mitnahme.Mitnehmen("fehlt.jpg", 3), "fehlt.jpg");
    QCOMPARE(mitnahme.Umbenannt(),
             (QHash<QString, QString>{{"a.jpg", "a-2.jpg"}, {"C:\\Bilder\\a.jpg", "a-2.jpg"}}));
    QCOMPARE(mitnahme.Bericht(),
             "Nicht mitgekommen sind diese Bilder und Töne; die Karten nennen sie weiter:\n\n"
             "„fehlt.jpg“ fehlt. (3 Karten)\n\n"
             "Unter einem anderen Namen, weil es ihren schon gab, und die Karten nennen den neuen:\n\n"
             "„a.jpg“ heißt jetzt „a-2.jpg“.\n„C:\\Bilder\\a.jpg“ heißt jetzt „a-2.jpg“.");
    QCOMPARE(beilagen.Anzahl(), 2);
}

void BeilagenTest::NamesOfAllSlotsAreFoundAndChanged()
{
    CardRecord eine = MakeCard(2, 0, 1);
    eine.Picture_1_Name = "b.jpg";
    eine.Picture_2_Name = eine.Picture_3_Name = eine.Picture_4_Name = eine.Picture_5_Name = "";
    eine.Picture_6_Name = eine.Picture_7_Name = "";
    eine.Picture_8_Name = "b.jpg";
    eine.Picture_9_Name = "b.jpg"; // the topic
    CardRecord andere = eine;
    andere.FrageNr = 1;
    andere.FachLfdNr = 2;
    andere.Picture_3_Name = "a.jpg";
    MakeCardFile(Nach("box.pzb"), {eine, andere});
    CardFile datei(Nach("box.pzb"));
    CardRecordset karten(datei);
    const auto namen = MediaNames(karten);
    QCOMPARE(namen.size(), 2);
    QCOMPARE(namen[0].name, "a.jpg");
    QCOMPARE(namen[0].cards, 1);
    QCOMPARE(namen[1].name, "b.jpg");
    QCOMPARE(namen[1].cards, 2);
    CardTransaction zug(karten);
    RenameMedia(karten, {{"b.jpg", "b-2.jpg"}, {"a", "x"}});
    zug.Commit();
    karten.MoveFirst();
    andere.Picture_1_Name = andere.Picture_8_Name = "b-2.jpg";
    QCOMPARE(karten.Read(), andere);
}

PAUKFIX_APPLESS_TEST(BeilagenTest)
#include "BeilagenTest.moc"
