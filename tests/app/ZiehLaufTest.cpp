// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Anzeige.h"
#include "Programmkopie.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"

#include <QFile>
#include <QImage>

using namespace paukfix;

// Files are dragged from another program's window into the real program's, with the mouse of the display.
class ZiehLaufTest : public QObject
{
    Q_OBJECT

private:
    const QString box_ = "Lern-Box", editor_ = "Merkkasten Ändern", bilder_ = "Bild bearbeiten";
    std::unique_ptr<Anzeige> anzeige_;
    std::unique_ptr<QTemporaryDir> ordner_;
    std::unique_ptr<Lauf> lauf_;
    std::unique_ptr<Lauf> quelle_; // stays: what was dropped is fetched from it afterwards

    QString Pfad(const QString &name) const { return ordner_->filePath(name); }

    // Drags the file to a place of this window, in hundredths of its size, and drops it there once the window
    // wants it. False where it is not taken.
    bool Ziehen(const QString &datei, const QString &titel, QPoint wohin)
    {
        quelle_ = std::make_unique<Lauf>(*anzeige_, WorkerPath("ziehquelle"), QStringList{datei});
        Lauf &quelle = *quelle_;
        quelle.prozess.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        QStringList gesagt;
        const auto sagt = [&](const QString &wort) {
            gesagt
                << QString::fromUtf8(quelle.prozess.readAllStandardOutput()).split('\n', Qt::SkipEmptyParts);
            return gesagt.contains(wort);
        };
        const QRect fenster = anzeige_->Flaeche(titel);
        if (fenster.isEmpty() || !quelle.Starten() || !QTest::qWaitFor([&] { return sagt("bereit"); }, 30000))
            return false;
        const QPoint ziel =
            fenster.topLeft() + QPoint(fenster.width() * wohin.x() / 100, fenster.height() * wohin.y() / 100);
        int schritt = 0; // each look is a step of the mouse: whoever has not seen the last one sees the next
        anzeige_->MausNach({10, 10});
        anzeige_->MausTaste(true);
        const bool zieht = QTest::qWaitFor(
            [&] {
                anzeige_->MausNach({20 + ++schritt % 2, 20});
                return sagt("zieht");
            },
            30000);
        const bool erwuenscht = zieht && QTest::qWaitFor(
                                             [&] {
                                                 anzeige_->MausNach(ziel + QPoint(++schritt % 2, 0));
                                                 return sagt("erwuenscht");
                                             },
                                             30000);
        anzeige_->MausTaste(false);
        if (!erwuenscht)
            qWarning("%s is not wanted: %s", qPrintable(datei), qPrintable(gesagt.join(' ')));
        return erwuenscht && QTest::qWaitFor([&] { return sagt("abgelegt"); }, 30000);
    }

    QString Bild(const QString &name, Qt::GlobalColor farbe) const
    {
        QImage bild(60, 40, QImage::Format_RGB32);
        bild.fill(farbe);
        const QString pfad = Pfad("woanders/" + name);
        return bild.save(pfad) ? pfad : QString();
    }

    // What is asked before a file is copied beside the box.
    bool Einwilligen() const { return anzeige_->Schliessen("Merkkasten (a.pzb)", "Return"); }

    CardRecord Gespeichert(const QString &kartei) const { return ReadCards(Pfad(kartei)).value(0); }

private slots:

    void initTestCase() { anzeige_ = std::make_unique<Anzeige>(); }

    void cleanupTestCase() { anzeige_.reset(); }

    void init()
    {
        ordner_ = std::make_unique<QTemporaryDir>();
        ProgrammKopieren(ordner_->path(), Vorspann::Nein);
        QVERIFY(QDir(ordner_->path()).mkdir("woanders"));
        MakeCardFile(Pfad("a.pzb"), {MakeCard(1, 0, 1)});
        lauf_ = std::make_unique<Lauf>(*anzeige_, Pfad("paukfix"), QStringList{Pfad("a.pzb")});
        QVERIFY(lauf_->Starten());
        QVERIFY(lauf_->HatGeoeffnet(Pfad("a.pzb")));
    }

    void cleanup()
    {
        lauf_.reset();
        quelle_.reset();
    }

    void APictureDroppedOnASlotIsThatMomentsPicture()
    {
        const QString bild = Bild("katze.bmp", Qt::red);
        QVERIFY(anzeige_->Tasten(box_, {"alt+n", "k"}));
        QVERIFY(anzeige_->Tasten(editor_, {"alt+x", "b"}));
        QVERIFY(Ziehen(bild, bilder_, {50, 50})); // the second of three
        QVERIFY(Einwilligen());
        QVERIFY(anzeige_->Schliessen(bilder_, "Escape"));
        QVERIFY(anzeige_->Tasten(editor_, {"ctrl+i", "alt+F4"}));
        QVERIFY(anzeige_->Taste(box_, "ctrl+q"));
        QVERIFY(lauf_->IstZuEnde());
        QCOMPARE(Gespeichert("a.pzb").Picture_1_Name, QString());
        QCOMPARE(Gespeichert("a.pzb").Picture_2_Name, "katze.bmp");
        QCOMPARE(QImage(Pfad("katze.bmp")), QImage(bild));
        QVERIFY(QFile::exists(bild));
    }

    void APictureDroppedOnTheCardIsItsQuestionsPicture()
    {
        const QString bild = Bild("hund.bmp", Qt::blue);
        QVERIFY(anzeige_->Tasten(box_, {"alt+n", "k"}));
        QVERIFY(Ziehen(bild, editor_, {40, 35})); // on the question's text
        QVERIFY(Einwilligen());
        QVERIFY(anzeige_->Tasten(editor_, {"ctrl+i", "alt+F4"}));
        QVERIFY(anzeige_->Taste(box_, "ctrl+q"));
        QVERIFY(lauf_->IstZuEnde());
        QCOMPARE(Gespeichert("a.pzb").Picture_1_Name, "hund.bmp");
        QCOMPARE(Gespeichert("a.pzb").Frage_Klartext, MakeCard(1, 0, 1).Frage_Klartext);
        QCOMPARE(QImage(Pfad("hund.bmp")), QImage(bild));
    }

    void ACardFileDroppedOnTheBoxIsOpened()
    {
        MakeCardFile(Pfad("woanders/b.pzb"), {MakeCard(7, 0, 1)});
        QVERIFY(Ziehen(Pfad("woanders/b.pzb"), box_, {50, 50}));
        QVERIFY(lauf_->HatGeoeffnet(Pfad("woanders/b.pzb")));
        QVERIFY(anzeige_->Taste(box_, "ctrl+q"));
        QVERIFY(lauf_->IstZuEnde());
        QCOMPARE(Gespeichert("woanders/b.pzb").FrageNr, 7.0);
    }
};

PAUKFIX_TEST(ZiehLaufTest)
#include "ZiehLaufTest.moc"
