// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "BildBox.h"
#include "EditorBuehne.h"

#include <QImage>
#include <QMouseEvent>

namespace paukfix {

// A picture of one colour; `name` says the format.
inline void BildSchreiben(const QString &pfad, QSize groesse, const QColor &farbe)
{
    QImage bild(groesse, QImage::Format_RGB32);
    bild.fill(farbe);
    QVERIFY(bild.save(pfad));
}

// A wave of eight samples.
inline void KlangSchreiben(const QString &pfad)
{
    QFile datei(pfad);
    QVERIFY(datei.open(QIODevice::WriteOnly));
    const QByteArray wave = QByteArray::fromHex("52494646 2c000000 57415645"
                                                "666d7420 10000000 0100 0100 401f0000 401f0000 0100 0800"
                                                "64617461 08000000 8090a0b0b0a09080");
    QCOMPARE(datei.write(wave), qint64(wave.size()));
}

inline CardRecord Bildkarte(int nummer, const QString &eins, const QString &zwei = {},
                            const QString &drei = {})
{
    CardRecord card = MakeCard(nummer, 0, nummer);
    card.Picture_1_Name = eins;
    card.Picture_2_Name = zwei;
    card.Picture_3_Name = drei;
    card.PictureTop = 1203;
    card.Pictureleft = 3007;
    card.Picturewidth = 3001;
    card.Pictureheight = 2003;
    return card;
}

// An editor whose card file has pictures beside it.
struct Bildbuehne : EditorBuehne
{
    explicit Bildbuehne(const QList<CardRecord> &cards, const QString &bilder = {})
        : EditorBuehne(cards, nullptr, bilder)
    {
        BildSchreiben(Datei("rot.bmp"), {200, 150}, Qt::red);
        BildSchreiben(Datei("blau.jpg"), {80, 60}, Qt::blue);
        BildSchreiben(Datei("gross.bmp"), {900, 700}, Qt::green);
        BildSchreiben(Datei("hoch.bmp"), {100, 700}, Qt::green);
    }

    QString Datei(const char *name) const { return kartei.directory.filePath(QString::fromUtf8(name)); }

    BildBox *Bild() { return Finde<BildBox>("Picture1"); }

    QColor Farbe() { return Bild()->Bild().pixelColor(5, 5); }

    void Ziehen(QWidget *griff, QPoint um)
    {
        const QPoint mitte = griff->rect().center();
        QTest::mousePress(griff, Qt::LeftButton, {}, mitte);
        // The handle goes along with the mouse, so each move is told from where it is.
        const QPoint start = griff->mapToParent(mitte);
        for (const QPoint &ort : {start + um / 2, start + um}) {
            QMouseEvent zug(QEvent::MouseMove, griff->mapFromParent(ort),
                            griff->parentWidget()->mapToGlobal(ort), Qt::NoButton, Qt::LeftButton,
                            Qt::NoModifier);
            QApplication::sendEvent(griff, &zug);
        }
        QTest::mouseRelease(griff, Qt::LeftButton, {}, griff->rect().center());
    }

    // Opens the picture or sound dialog and does this in it.
    void Dialog(const char *menue, const QString &name, std::function<void(QWidget &)> tun)
    {
        const Drehbuch buch({Drehbuch::In(name, std::move(tun))});
        Menue("MExtras", menue);
    }
};

} // namespace paukfix
