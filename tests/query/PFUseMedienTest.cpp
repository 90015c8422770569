// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AbfrageTestSupport.h"
#include "BildBox.h"
#include "TestProgram.h"

#include <QDir>
#include <QImage>

using namespace paukfix;

// Pictures, sounds and faces of a query.
class PFUseMedienTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<AbfrageBuehne> b_;

    static void Malen(const QString &pfad, const QColor &farbe, QSize groesse = {40, 30})
    {
        QImage bild(groesse, QImage::Format_RGB32);
        bild.fill(farbe);
        QVERIFY(bild.save(pfad, pfad.endsWith("ico") ? "PNG" : nullptr));
    }

    BildBox *Bild() const { return static_cast<BildBox *>(b_->Finde<QWidget>("Picture1")); }

    // The colour of the picture that is shown; none when there is none.
    QColor Gezeigt() const { return Bild()->isVisible() ? Bild()->Bild().pixelColor(2, 2) : QColor(); }

    // A card with a red question's, green right and blue wrong picture and sounds for all three.
    CardRecord VolleKarte() const
    {
        CardRecord karte = TippKarte("ja");
        Malen(b_->kartei.filePath("frage.bmp"), Qt::red);
        Malen(b_->kartei.filePath("richtig.bmp"), Qt::green);
        Malen(b_->kartei.filePath("falsch.bmp"), Qt::blue);
        karte.Picture_1_Name = "frage.bmp";
        karte.Picture_2_Name = "richtig.bmp";
        karte.Picture_3_Name = "falsch.bmp";
        karte.Picture_6_Name = "frage.wav";
        karte.Picture_7_Name = "richtig.wav";
        karte.Picture_8_Name = "falsch.wav";
        return karte;
    }

    void Antworten(const QString &text)
    {
        b_->Tippe(text);
        b_->Taste(Qt::Key_Return);
    }

    QString KarteiDatei(const QString &name) const { return b_->kartei.filePath(name); }

    QString ProgrammDatei(const QString &name) const { return b_->programm.filePath(name); }

private slots:

    void init() { b_ = std::make_unique<AbfrageBuehne>(); }

    void TheQuestionShowsItsPictureAndPlaysItsSound()
    {
        b_->Fragen(VolleKarte(), [&] {
            QCOMPARE(Gezeigt(), QColor(Qt::red));
            QCOMPARE(b_->ton.gespielt, QStringList(KarteiDatei("frage.wav")));
        });
        QCOMPARE(b_->meldungen.Texte(), QStringList());
    }

    // Card files come from systems where the case of a name does not count.
    void MediaAreFoundWhateverTheCaseOfTheirNames()
    {
        CardRecord karte = VolleKarte();
        karte.Picture_1_Name = "FRAGE.BMP";
        karte.Picture_2_Name = "Programm.Jpg";
        karte.Picture_6_Name = "Frage.WAV";
        karte.Picture_7_Name = "FEHLT.wav";
        Malen(ProgrammDatei("programm.JPG"), Qt::black);
        QFile klang(KarteiDatei("fRAGE.wav"));
        QVERIFY(klang.open(QIODevice::WriteOnly));
        b_->Fragen(karte, [&] {
            QCOMPARE(Gezeigt(), QColor(Qt::red));
            QCOMPARE(b_->ton.gespielt, QStringList(KarteiDatei("fRAGE.wav")));
            Antworten("ja");
            QCOMPARE(Gezeigt(), QColor(Qt::black));
            QCOMPARE(b_->ton.gespielt.last(), KarteiDatei("FEHLT.wav"));
        });
        QCOMPARE(b_->meldungen.Texte(), QStringList());
    }

    void ACardWithoutMediaShowsAndPlaysNothing()
    {
        b_->Fragen(TippKarte("ja"), [&] {
            QVERIFY(!Bild()->isVisible());
            QCOMPARE(b_->ton.gespielt, QStringList());
            Antworten("nein");
            QVERIFY(!Bild()->isVisible());
            QCOMPARE(b_->ton.gespielt, QStringList());
        });
        QCOMPARE(b_->meldungen.Texte(), QStringList());
    }

    void ARightAnswerHasItsPictureAndSound()
    {
        b_->Fragen(VolleKarte(), [&] {
            Antworten("ja");
            QCOMPARE(Gezeigt(), QColor(Qt::green));
            QCOMPARE(b_->ton.gespielt, QStringList({KarteiDatei("frage.wav"), KarteiDatei("richtig.wav")}));
        });
    }

    void AWrongAnswerHasItsPictureAndSound()
    {
        b_->Fragen(VolleKarte(), [&] {
            Antworten("nein");
            QCOMPARE(Gezeigt(), QColor(Qt::blue));
            QCOMPARE(b_->ton.gespielt.last(), KarteiDatei("falsch.wav"));
        });
    }

    void AWrongAnswerTakesTheRightOnesMediaWhereItHasNone()
    {
        CardRecord karte = VolleKarte();
        karte.Picture_3_Name.clear();
        karte.Picture_8_Name.clear();
        b_->Fragen(karte, [&] {
            Antworten("nein");
            QCOMPARE(Gezeigt(), QColor(Qt::green));
            QCOMPARE(b_->ton.gespielt.last(), KarteiDatei("richtig.wav"));
        });
    }

    void ARightAnswerWithoutSoundIsApplauded()
    {
        b_->Fragen(TippKarte("ja"), [&] {
            Antworten("ja");
            QCOMPARE(b_->ton.gespielt, QStringList(ProgrammDatei("Applause.wav")));
        });
    }

    void TheVerdictByHandShowsAndPlaysToo()
    {
        b_->Fragen(VolleKarte(), [&] {
            Antworten("nein");
            b_->Klick("Ergebnis_R");
            QCOMPARE(Gezeigt(), QColor(Qt::green));
            QCOMPARE(b_->ton.gespielt.last(), KarteiDatei("richtig.wav"));
            const qsizetype anzahl = b_->ton.gespielt.size();
            b_->Klick("Ergebnis_R");
            QCOMPARE(b_->ton.gespielt.size(), anzahl);
        });
    }

    void TheQuestionsPictureStaysWhereTheVerdictHasNone()
    {
        CardRecord karte = VolleKarte();
        karte.Picture_2_Name.clear();
        karte.Picture_3_Name.clear();
        b_->Fragen(karte, [&] {
            Antworten("nein");
            QCOMPARE(Gezeigt(), QColor(Qt::red));
        });
    }

    void AMissingPictureIsReportedAndTheQueryGoesOn()
    {
        CardRecord karte = VolleKarte();
        karte.Picture_1_Name = "C:\\Alt\\fehlt.jpg";
        b_->Fragen(karte, [&] {
            QCOMPARE(b_->meldungen.Texte(), QStringList("Bilddatei nicht gefunden C:\\Alt\\fehlt.jpg"));
            QVERIFY(!Bild()->isVisible());
            QCOMPARE(b_->ton.gespielt, QStringList(KarteiDatei("frage.wav")));
            Antworten("ja");
            QCOMPARE(Gezeigt(), QColor(Qt::green));
        });
        QCOMPARE(b_->fenster->Urteil(), Richtig);
    }

    void AMissingPictureOfTheVerdictTakesTheQuestionsAway()
    {
        CardRecord karte = VolleKarte();
        karte.Picture_3_Name = "fehlt.jpg";
        b_->Fragen(karte, [&] {
            Antworten("nein");
            QCOMPARE(b_->meldungen.Texte(), QStringList("Bilddatei nicht gefunden fehlt.jpg"));
            QVERIFY(!Bild()->isVisible());
            QCOMPARE(b_->FokusName(), "Command3");
        });
    }

    void APictureIsLookedForInTheProgramDirectoryToo()
    {
        CardRecord karte = TippKarte("ja");
        karte.Picture_1_Name = "..\\bilder\\da.bmp";
        Malen(ProgrammDatei("da.bmp"), Qt::yellow);
        b_->Fragen(karte, [&] { QCOMPARE(Gezeigt(), QColor(Qt::yellow)); });
        QCOMPARE(b_->meldungen.Texte(), QStringList());
    }

    void WhatIsNoPictureIsReportedWithTheErrorsText()
    {
        CardRecord karte = TippKarte("ja");
        karte.Picture_1_Name = "text.jpg";
        QFile datei(KarteiDatei("text.jpg"));
        QVERIFY(datei.open(QIODevice::WriteOnly));
        datei.write("kein Bild");
        datei.close();
        b_->Fragen(karte, [&] { QVERIFY(!Bild()->isVisible()); });
        QCOMPARE(b_->meldungen.Texte().size(), 1);
        QVERIFY(b_->meldungen.Texte()[0].startsWith("Ungültiges Bild"));
    }

    void ASoundNeverComesFromAnotherDirectory()
    {
        CardRecord karte = TippKarte("ja");
        karte.Picture_6_Name = "..\\..\\etc\\laut.wav";
        b_->Fragen(karte, [&] { QCOMPARE(b_->ton.gespielt, QStringList(KarteiDatei("laut.wav"))); });
    }

    void ThePictureStandsWhereTheCardSays()
    {
        CardRecord karte = VolleKarte();
        karte.Pictureleft = 15 * 300;
        karte.PictureTop = 15 * 50;
        karte.Picturewidth = 15 * 210;
        karte.Pictureheight = 15 * 120;
        b_->Fragen(karte, [&] {
            QCOMPARE(Bild()->geometry(), QRect(300, 50, 210, 120));
            // The question makes room: nothing of it lies under the picture, nor under one that comes later.
            const auto *frage = b_->Finde<QTextEdit>("MFrage")->viewport();
            const QRect text(frage->mapTo(Bild()->parentWidget(), QPoint()), frage->size());
            QVERIFY(!text.intersects(Bild()->geometry()));
            Antworten("ja");
            QCOMPARE(Bild()->geometry(), QRect(300, 50, 210, 120));
        });
    }

    void APictureWithoutAPlaceStandsBesideTheQuestion()
    {
        b_->Fragen(VolleKarte(), [&] {
            const QRect frage = b_->Finde<QTextEdit>("MFrage")->geometry();
            QVERIFY(frage.contains(Bild()->geometry()));
            QCOMPARE(Bild()->geometry().right(), frage.right());
        });
    }

    void AnAbsurdPlaceIsBroughtOntoTheCard_data()
    {
        QTest::addColumn<double>("links");
        QTest::addColumn<double>("breite");
        QTest::newRow("far right") << 1e9 << 3000.0;
        QTest::newRow("far left") << -1e9 << 3000.0;
        QTest::newRow("huge") << 0.0 << 1e12;
        QTest::newRow("negative width") << 0.0 << -3000.0;
    }

    void AnAbsurdPlaceIsBroughtOntoTheCard()
    {
        QFETCH(double, links);
        QFETCH(double, breite);
        b_->Oeffnen({VolleKarte()});
        b_->store.CloseCardFile();
        SQLite::Database(KarteiDatei("a.pzb").toStdString(), SQLite::OPEN_READWRITE)
            .exec(qPrintable(QString("UPDATE Lernkarten SET Pictureleft=%1, PictureTop=%1, Picturewidth=%2,"
                                     " Pictureheight=%2")
                                 .arg(links)
                                 .arg(breite)));
        b_->Oeffnen();
        b_->Fragen([&] {
            QVERIFY(Bild()->isVisible());
            QVERIFY(Bild()->parentWidget()->rect().contains(Bild()->geometry()));
            QVERIFY(b_->fenster->screen()->availableGeometry().width() >= b_->fenster->width());
        });
    }

    void TheMouseDragsThePictureAndNothingIsStored()
    {
        CardRecord karte = VolleKarte();
        karte.Pictureleft = 15 * 300;
        karte.PictureTop = 15 * 50;
        karte.Picturewidth = 15 * 100;
        karte.Pictureheight = 15 * 80;
        b_->Fragen(karte, [&] {
            const auto ziehen = [&](QPoint um) {
                QTest::mousePress(Bild(), Qt::LeftButton, {}, {10, 10});
                QMouseEvent weg(QEvent::MouseMove, QPointF(10, 10) + um,
                                Bild()->mapToGlobal(QPointF(10, 10) + um), Qt::NoButton, Qt::LeftButton,
                                Qt::NoModifier);
                QApplication::sendEvent(Bild(), &weg);
                QTest::mouseRelease(Bild(), Qt::LeftButton, {}, {10, 10});
            };
            ziehen({-120, 60});
            QCOMPARE(Bild()->geometry(), QRect(180, 110, 100, 80));
            b_->fenster->resize(b_->fenster->size() + QSize(60, 40));
            QCOMPARE(Bild()->geometry(), QRect(180, 110, 100, 80));
            // The picture of the verdict stands where the learner has put the question's.
            Antworten("ja");
            QCOMPARE(Bild()->geometry(), QRect(180, 110, 100, 80));
            ziehen({-5000, -5000});
            QVERIFY(Bild()->parentWidget()->rect().contains(Bild()->geometry()));
        });
        const CardRecord danach = b_->store.Karten().Read();
        QCOMPARE(danach.Pictureleft, 4500.0);
        QCOMPARE(danach.PictureTop, 750.0);
    }

    void TheFaceSmilesOrFrowns()
    {
        Malen(ProgrammDatei("face03.ico"), Qt::green, {48, 48});
        Malen(ProgrammDatei("face01.ico"), Qt::red, {48, 48});
        b_->Fragen(TippKarte("ja"), [&] {
            const auto gesicht = [&] {
                return b_->Finde<QLabel>("Image1")->pixmap().toImage().pixelColor(20, 20);
            };
            QVERIFY(b_->Finde<QLabel>("Image1")->pixmap().isNull());
            Antworten("ja");
            QCOMPARE(gesicht(), QColor(Qt::green));
            b_->Klick("Ergebnis_F");
            QCOMPARE(gesicht(), QColor(Qt::red));
        });
    }

    void AFaceIsReadOnceForAllCards()
    {
        const QString datei = ProgrammDatei("face03.ico");
        Malen(datei, Qt::green, {48, 48});
        for (int karte = 0; karte < 2; ++karte) {
            b_->Fragen(TippKarte("ja"), [&] {
                Antworten("ja");
                QCOMPARE(b_->Finde<QLabel>("Image1")->pixmap().toImage().pixelColor(20, 20),
                         QColor(Qt::green));
            });
            QFile::remove(datei);
        }
    }

    void MissingFacesAndProgramDirectoryAreNoTrouble()
    {
        b_->konfig.ProgrammPfad = "/gibt/es/nicht";
        b_->Fragen(TippKarte("ja"), [&] {
            Antworten("ja");
            QVERIFY(b_->Finde<QLabel>("Image1")->pixmap().isNull());
            b_->Klick("Ergebnis_F");
        });
        QCOMPARE(b_->meldungen.Texte(), QStringList());
    }
};

PAUKFIX_TEST(PFUseMedienTest)
#include "PFUseMedienTest.moc"
