// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Mediendatei.h"

#include "TestProgram.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <sys/stat.h>

using namespace paukfix;

class MediendateiTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> ordner_;

    QString Pfad(const QString &name) const { return ordner_->filePath(name); }

    void Anlegen(const QStringList &namen) const
    {
        for (const QString &name : namen) {
            QFile datei(Pfad(name));
            QVERIFY(datei.open(QIODevice::WriteOnly));
        }
    }

    QString Gefunden(const QString &name) const
    {
        return QDir(ordner_->path()).relativeFilePath(Mediendatei(ordner_->path(), name));
    }

private slots:

    void init() { ordner_ = std::make_unique<QTemporaryDir>(); }

    void TheExactNameComesFirst()
    {
        Anlegen({"HUND.BMP", "hund.bmp", "Hund.bmp"});
        QCOMPARE(Gefunden("Hund.bmp"), "Hund.bmp");
        QCOMPARE(Gefunden("hund.bmp"), "hund.bmp");
    }

    void ANameOfAnotherCaseIsFound()
    {
        Anlegen({"BÄR.Wav", "katze.jpg"});
        QCOMPARE(Gefunden("bär.wav"), "BÄR.Wav");
        QCOMPARE(Gefunden("KATZE.JPG"), "katze.jpg");
        QCOMPARE(Gefunden("bär.wave"), "bär.wave");
    }

    void OfSeveralTheFirstInOrderIsTaken()
    {
        Anlegen({"hund.BMP", "HUND.bmp", "huNd.bmp"});
        QCOMPARE(Gefunden("Hund.bmp"), "HUND.bmp");
    }

    void OnlyFilesAreFound()
    {
        QVERIFY(QDir(ordner_->path()).mkdir("HUND.bmp"));
        QVERIFY(QFile::link(Pfad("fehlt"), Pfad("HuND.bmp")));
        QCOMPARE(Gefunden("hund.bmp"), "hund.bmp");
        Anlegen({"Hund.BMP"});
        QCOMPARE(Gefunden("hund.bmp"), "Hund.BMP");
    }

    void NothingOutsideTheDirectoryIsFound()
    {
        QVERIFY(QDir(ordner_->path()).mkdir("drin"));
        Anlegen({"Hund.bmp"});
        for (const char *name : {"../hund.bmp", "..\\HUND.BMP", "/hund.bmp", "../Hund.bmp"}) {
            const QString pfad = Mediendatei(Pfad("drin"), name);
            QCOMPARE(QFileInfo(pfad).path(), Pfad("drin"));
            QVERIFY(!QFile::exists(pfad));
        }
    }

    void AHugeDirectoryIsNotSearched()
    {
        QVERIFY(QDir(ordner_->path()).mkdir("viele"));
        for (int i = 0; i < 50'001; ++i)
            QCOMPARE(
                mknod(QFile::encodeName(Pfad(QString("viele/%1.BMP").arg(i))).constData(), S_IFREG | 0600, 0),
                0);
        QVERIFY(!QFile::exists(Mediendatei(Pfad("viele"), "7.bmp")));
        QVERIFY(QFile::exists(Mediendatei(Pfad("viele"), "7.BMP")));
        QVERIFY(QFile::remove(Pfad("viele/0.BMP")));
        QCOMPARE(Mediendatei(Pfad("viele"), "7.bmp"), Pfad("viele/7.BMP"));
    }
};

PAUKFIX_APPLESS_TEST(MediendateiTest)
#include "MediendateiTest.moc"
