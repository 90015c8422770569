// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "BildPruefung.h"

#include <algorithm>
#include <cstdlib>

namespace paukfix {

namespace {

constexpr qsizetype BmpDateikopf = 14;
constexpr quint32 KopfOs2Alt = 12, KopfWindows = 40, KopfOs2 = 64, KopfVersion4 = 108, KopfVersion5 = 124;
constexpr quint32 KopfOs2Kurz = 16, KopfVersion2 = 52, KopfVersion3 = 56;

enum Kompression : quint32
{
    Keine = 0,
    Rle8 = 1,
    Rle4 = 2,
    Masken = 3
};

uchar Byte(const QByteArray &datei, qsizetype ort)
{
    return static_cast<uchar>(datei.at(ort));
}

// Of up to four bytes, the lowest first; 0 where the file is shorter.
quint32 Zahl(const QByteArray &datei, qsizetype ort, int bytes)
{
    quint32 zahl = 0;
    for (int i = 0; i < bytes && ort + i < datei.size(); ++i)
        zahl |= quint32{Byte(datei, ort + i)} << 8 * i;
    return zahl;
}

void ZahlSetzen(QByteArray &datei, qsizetype ort, quint32 zahl)
{
    for (int i = 0; i < 4 && ort + i < datei.size(); ++i)
        datei[ort + i] = static_cast<char>(zahl >> 8 * i & 0xFF);
}

struct BmpKopf
{
    explicit BmpKopf(const QByteArray &datei)
    {
        const quint32 groesse = Zahl(datei, BmpDateikopf, 4);
        qint64 farben = 0;
        if (groesse == KopfWindows || groesse == KopfOs2 || groesse == KopfVersion4 ||
            groesse == KopfVersion5) {
            breite = static_cast<qint32>(Zahl(datei, 18, 4));
            hoehe = std::abs(qint64{static_cast<qint32>(Zahl(datei, 22, 4))});
            bits = static_cast<int>(Zahl(datei, 28, 2));
            kompression = Zahl(datei, 30, 4);
            farben = Zahl(datei, 46, 4);
        } else {
            breite = static_cast<qint16>(Zahl(datei, 18, 2));
            hoehe = std::abs(qint64{static_cast<qint16>(Zahl(datei, 20, 2))});
            bits = static_cast<int>(Zahl(datei, 24, 2));
        }
        // Behind the header stands the table of colours or of masks, and nearer than that is no place.
        anfang = BmpDateikopf + qint64{groesse};
        if (bits <= 8)
            anfang += (farben > 0 ? farben : qint64{1} << bits) * (groesse == KopfOs2Alt ? 3 : 4);
        else if (kompression == Masken && groesse < KopfVersion4)
            anfang += 12;
        anfang = std::max(anfang, qint64{static_cast<qint32>(Zahl(datei, 10, 4))});
    }

    qint64 breite = 0, hoehe = 0; // pixels
    int bits = 0;                 // a pixel
    quint32 kompression = Keine;
    qint64 anfang = 0; // of the pixels
};

// Runs end with a mark, or where the last row is full.
bool RleVollstaendig(const QByteArray &datei, const BmpKopf &kopf)
{
    qint64 ort = kopf.anfang;
    qint64 x = 0;
    qint64 y = 0;
    while (y < kopf.hoehe && ort + 2 <= datei.size()) {
        const qint64 anzahl = Byte(datei, ort);
        const qint64 wert = Byte(datei, ort + 1);
        ort += 2;
        if (anzahl > 0) {
            x += anzahl;
        } else if (wert == 0) {
            x = 0;
            ++y;
        } else if (wert == 1) {
            return true;
        } else if (wert == 2) {
            if (ort + 2 > datei.size())
                return false;
            x += Byte(datei, ort);
            y += Byte(datei, ort + 1);
            ort += 2;
        } else { // pixels one by one, padded to an even number of bytes
            const qint64 bytes = kopf.kompression == Rle4 ? (wert + 1) / 2 : wert;
            if (ort + bytes > datei.size())
                return false;
            x += wert;
            ort += bytes + bytes % 2;
        }
    }
    return y >= kopf.hoehe || (y == kopf.hoehe - 1 && x >= kopf.breite);
}

} // namespace

bool BmpVollstaendig(const QByteArray &datei)
{
    const BmpKopf kopf(datei);
    if (kopf.breite <= 0 || kopf.hoehe <= 0 || kopf.bits < 1 || kopf.bits > 32)
        return false;
    if (kopf.kompression == Rle8 || kopf.kompression == Rle4)
        return RleVollstaendig(datei, kopf);
    const qint64 zeile = (kopf.breite * kopf.bits + 31) / 32 * 4;
    const qint64 letzteZeile = (kopf.breite * kopf.bits + 7) / 8;
    const qint64 davor = datei.size() - kopf.anfang - letzteZeile;
    return davor >= 0 && davor / zeile >= kopf.hoehe - 1;
}

bool JpegVollstaendig(const QByteArray &datei)
{
    constexpr uchar Beginn = 0xFF, Ende = 0xD9, ErsteOhneLaenge = 0xD0, LetzteOhneLaenge = 0xD8,
                    Zeitmarke = 1;
    qsizetype ort = 2;
    while ((ort = datei.indexOf(static_cast<char>(Beginn), ort)) >= 0) {
        while (ort < datei.size() && Byte(datei, ort) == Beginn)
            ++ort;
        if (ort >= datei.size())
            return false;
        const uchar marke = Byte(datei, ort++);
        if (marke == Ende)
            return true;
        // In the pixels, 0 stands behind a byte that only looks like a mark's beginning.
        if (marke <= Zeitmarke || (marke >= ErsteOhneLaenge && marke <= LetzteOhneLaenge))
            continue;
        // What such a part holds, a small picture with an end of its own perhaps, is passed over.
        if (datei.size() - ort < 2)
            return false;
        ort += Byte(datei, ort) << 8 | Byte(datei, ort + 1);
    }
    return false;
}

QByteArray MitLesbaremKopf(QByteArray datei)
{
    const quint32 groesse = Zahl(datei, BmpDateikopf, 4);
    const quint32 anfang = Zahl(datei, 10, 4);
    if (groesse == KopfVersion2 || groesse == KopfVersion3) {
        // Three masks behind a header of 40 are read where they already stand; else nothing may be there.
        const quint32 bleibt = Zahl(datei, 30, 4) == Masken ? KopfVersion2 : KopfWindows;
        datei.remove(BmpDateikopf + qsizetype{bleibt}, qsizetype{groesse} - bleibt);
        ZahlSetzen(datei, 10, anfang - (groesse - bleibt));
    } else if (groesse == KopfOs2Kurz) {
        datei.insert(BmpDateikopf + qsizetype{KopfOs2Kurz}, QByteArray(KopfWindows - KopfOs2Kurz, '\0'));
        ZahlSetzen(datei, 10, anfang + (KopfWindows - KopfOs2Kurz));
    } else {
        return datei;
    }
    ZahlSetzen(datei, BmpDateikopf, KopfWindows);
    return datei;
}

bool KopfBekannt(const QByteArray &datei)
{
    switch (Zahl(datei, BmpDateikopf, 4)) {
    case KopfOs2Alt:
    case KopfOs2Kurz:
    case KopfWindows:
    case KopfVersion2:
    case KopfVersion3:
    case KopfOs2:
    case KopfVersion4:
    case KopfVersion5:
        return true;
    default:
        return false;
    }
}

} // namespace paukfix
