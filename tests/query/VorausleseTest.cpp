// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Vorauslese.h"

#include "AbfrageTestSupport.h"
#include "TestProgram.h"

using namespace paukfix;
using namespace Qt::StringLiterals;

// The card that will probably be asked next.
class VorausleseTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<AbfrageBuehne> b_;

    void BildSchreiben(const QColor &farbe) const
    {
        QImage bild(30, 20, QImage::Format_RGB32);
        bild.fill(farbe);
        QVERIFY(bild.save(b_->kartei.filePath("bild.bmp")));
    }

private slots:

    void init() { b_ = std::make_unique<AbfrageBuehne>(); }

    void ItIsReadAsItWillBeAsked()
    {
        CardRecord karte = KreuzKarte("25");
        karte.FachNr = 3;
        karte.FachLfdNr = 4;
        karte.Picture_1_Name = "b1.bmp";
        karte.Picture_2_Name = "b2.bmp";
        karte.Picture_3_Name = "b3.bmp";
        karte.Picture_6_Name = "k6.wav";
        karte.Picture_7_Name = "k7.wav";
        karte.Picture_8_Name = "k8.wav";
        karte.Picture_9_Name = u"Größen"_s;
        karte.PictureTop = 150;
        karte.Pictureleft = 300;
        karte.Picturewidth = 450;
        karte.Pictureheight = 600;
        karte.Antwort_1_Klartext = "eins";
        b_->Oeffnen({MakeCard(1, 0, 1), MakeCard(5, 3, 9), karte});
        Vorauslese voraus;
        voraus.Lesen(b_->store, 3);
        QCOMPARE(b_->store.Felder().FrageNr.Number(), 1.0); // where it stood
        b_->store.Karten().MoveNext();
        QCOMPARE(b_->store.Felder().FrageNr.Number(), 17.0);
        QVERIFY(voraus.Karte() == KarteLesen(b_->store.Felder()));
        QVERIFY(voraus.Gilt(KarteLesen(b_->store.Felder())));
    }

    void NullsAreReadAsTheyWillBeAsked()
    {
        b_->Oeffnen({TippKarte("x")});
        b_->store.CloseCardFile();
        SQLite::Database(b_->kartei.filePath("a.pzb").toStdString(), SQLite::OPEN_READWRITE)
            .exec("UPDATE Lernkarten SET Frage=NULL, Antwort_1=NULL, Antworttyp=NULL, Picture_1_Name=NULL,"
                  " PictureTop=NULL, Antwort_ch_1=NULL");
        b_->Oeffnen();
        Vorauslese voraus;
        voraus.Lesen(b_->store, 0);
        QVERIFY(voraus.Gilt(KarteLesen(b_->store.Felder())));
    }

    void AnEmptyCompartmentAndAClosedFileGiveNoCard()
    {
        b_->Oeffnen({TippKarte("x")});
        Vorauslese voraus;
        voraus.Lesen(b_->store, 5);
        QVERIFY(!voraus.Gilt(Abfragekarte()));
        voraus.Lesen(b_->store, 0);
        QVERIFY(voraus.Gilt(KarteLesen(b_->store.Felder())));
        b_->store.CloseCardFile();
        voraus.Lesen(b_->store, 0);
        QVERIFY(!voraus.Gilt(Abfragekarte()));
        QCOMPARE(b_->meldungen.Texte(), QStringList());
    }

    void APictureThatHasChangedIsReadAnew()
    {
        CardRecord karte = TippKarte("x");
        karte.Picture_1_Name = "bild.bmp";
        BildSchreiben(Qt::red);
        b_->Oeffnen({karte});
        b_->FensterBauen();
        b_->fenster->Vorbereiten(0);
        QFile datei(b_->kartei.filePath("bild.bmp"));
        BildSchreiben(Qt::blue);
        QVERIFY(datei.open(QIODevice::ReadWrite));
        QVERIFY(datei.setFileTime(QDateTime::currentDateTime().addSecs(5), QFile::FileModificationTime));
        datei.close();
        b_->Fragen([&] {
            const auto *bild = b_->Finde<QWidget>("Picture1");
            QVERIFY(bild->isVisible());
            const QPoint mitte = bild->mapTo(b_->fenster.get(), bild->rect().center());
            QCOMPARE(b_->fenster->grab().toImage().pixelColor(mitte), QColor(Qt::blue));
        });
    }

    void WhatCannotBeReadAheadIsToldWhenItIsAsked()
    {
        CardRecord karte = TippKarte("x");
        karte.Picture_1_Name = "fehlt.bmp";
        b_->Oeffnen({karte});
        b_->FensterBauen();
        b_->fenster->Vorbereiten(0);
        QCOMPARE(b_->meldungen.Texte(), QStringList());
        b_->Fragen([&] { QVERIFY(!b_->Finde<QWidget>("Picture1")->isVisible()); });
        QCOMPARE(b_->meldungen.Texte(), QStringList("Bilddatei nicht gefunden fehlt.bmp"));
    }
};

PAUKFIX_TEST(VorausleseTest)
#include "VorausleseTest.moc"
