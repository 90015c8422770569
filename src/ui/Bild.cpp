// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Bild.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>
#include <QtEndian>

#include <algorithm>
#include <cstdlib>

namespace {

// A file may claim any size: what is larger than any camera's picture is not even begun.
constexpr qint64 MaxPixel = 120'000'000;
constexpr qint64 MaxBytes = 4 * MaxPixel;
constexpr int MaxSeite = 4096;

[[noreturn]] void KeinBild(const QString &pfad, const QString &grund)
{
    throw StoreError(Fehler::UngueltigesBild, QStringLiteral("Ungültiges Bild „%1“: %2").arg(pfad, grund));
}

// The format as the file's first bytes tell it, empty for any other.
QByteArray BildFormat(QFile &datei)
{
    const QByteArray anfang = datei.peek(3);
    if (anfang.startsWith("BM"))
        return QByteArrayLiteral("bmp");
    if (anfang == "\xff\xd8\xff")
        return QByteArrayLiteral("jpeg");
    return {};
}

// Whether a JPEG goes on to its end mark; what stands behind that does not matter.
bool JpegIstGanz(QByteArrayView jpeg)
{
    const auto byte = [&](qsizetype ort) { return static_cast<uchar>(jpeg[ort]); };
    // Compressed bytes that are no mark are passed one by one.
    for (qsizetype ort = 2; ort + 1 < jpeg.size();) {
        const uchar marke = byte(ort) == 0xFF ? byte(ort + 1) : 0xFF;
        if (marke == 0xFF) {
            ++ort;
            continue;
        }
        ort += 2;
        if (marke == 0xD9)
            return true;
        const bool ohneLaenge = marke <= 0x01 || (marke >= 0xD0 && marke <= 0xD8);
        if (!ohneLaenge && ort + 1 < jpeg.size())
            ort += std::max(byte(ort) << 8 | byte(ort + 1), 2);
    }
    return false;
}

// Whether all rows of a bitmap are there.
bool BmpIstGanz(QByteArrayView kopf, qint64 laenge)
{
    constexpr qint64 Dateikopf = 14;
    constexpr qsizetype Beschrieben = 38; // bytes up to the size of the compressed rows
    constexpr qint64 Os2 = 12;            // the shortest header, with 16 bits for each measure
    const auto zahl = [&](qsizetype ort) { return qint64{qFromLittleEndian<quint32>(kopf.data() + ort)}; };
    const auto kurz = [&](qsizetype ort) { return qint64{qFromLittleEndian<quint16>(kopf.data() + ort)}; };
    if (kopf.size() < Beschrieben)
        return false;
    const qint64 kopfLaenge = zahl(14);
    const bool os2 = kopfLaenge == Os2;
    const qint64 kompression = os2 ? 0 : zahl(30);
    const qint64 anfang = std::max(zahl(10), Dateikopf + kopfLaenge);
    if (kompression == 1 || kompression == 2)
        return anfang + zahl(34) <= laenge;
    const qint64 breite = os2 ? kurz(18) : std::abs(qint64{static_cast<qint32>(zahl(18))});
    const qint64 hoehe = os2 ? kurz(20) : std::abs(qint64{static_cast<qint32>(zahl(22))});
    const qint64 zeile = (breite * kurz(os2 ? 24 : 28) + 31) / 32 * 4;
    return hoehe == 0 || zeile <= (laenge - anfang) / hoehe; // the product may be beyond all numbers
}

// The toolkit shows what there is of a file that was cut off, and the rest in any colours.
bool IstGanz(QFile &datei, const QByteArray &format)
{
    if (format == "bmp")
        return BmpIstGanz(datei.peek(64), datei.size());
    const bool ganz = JpegIstGanz(datei.readAll());
    datei.seek(0);
    return ganz;
}

} // namespace

QString BlosserName(const QString &name)
{
    return name.mid(std::max(name.lastIndexOf(u'\\'), name.lastIndexOf(u'/')) + 1);
}

QImage BildLesen(const QString &pfad, const QSize &platz)
{
    const QFileInfo info(pfad);
    if (!info.dir().exists())
        throw StoreError(Fehler::PfadNichtGefunden, QStringLiteral("Pfad nicht gefunden: „%1“").arg(pfad));
    if (!info.exists())
        throw StoreError(Fehler::DateiNichtGefunden, QStringLiteral("Datei nicht gefunden: „%1“").arg(pfad));
    QFile datei(pfad);
    // A pipe or a device would keep the program waiting.
    if (!info.isFile() || !datei.open(QIODevice::ReadOnly))
        throw StoreError(Fehler::PfadZugriff,
                         QStringLiteral("Die Datei „%1“ kann nicht gelesen werden.").arg(pfad));

    const QByteArray format = BildFormat(datei);
    if (format.isEmpty())
        KeinBild(pfad, QStringLiteral("weder BMP noch JPEG."));
    if (datei.size() > MaxBytes)
        KeinBild(pfad, QStringLiteral("es ist zu groß."));
    if (!IstGanz(datei, format))
        KeinBild(pfad, QStringLiteral("die Datei ist beschädigt."));
    QImageReader leser(&datei, format);
    leser.setAutoDetectImageFormat(false);
    leser.setAutoTransform(true);
    // The height of a BMP that is stored from top to bottom is negative.
    const qint64 breite = std::abs(qint64{leser.size().width()});
    const qint64 hoehe = std::abs(qint64{leser.size().height()});
    if (breite * hoehe > MaxPixel)
        KeinBild(pfad, QStringLiteral("es ist zu groß."));
    const QSize groesse(static_cast<int>(std::min<qint64>(breite, MaxPixel)),
                        static_cast<int>(std::min<qint64>(hoehe, MaxPixel)));
    const QSize grenze =
        (platz.isEmpty() ? QSize(MaxSeite, MaxSeite) : platz).boundedTo({MaxSeite, MaxSeite});
    if (groesse.width() > grenze.width() || groesse.height() > grenze.height())
        leser.setScaledSize(groesse.scaled(grenze, Qt::KeepAspectRatio).expandedTo({1, 1}));
    QImage bild = leser.read();
    if (bild.isNull())
        KeinBild(pfad, QStringLiteral("die Datei ist beschädigt oder zu groß."));
    return bild;
}

QImage BildLaden(const QString &name, const QString &karteiPfad, const QString &programmPfad,
                 Meldungen &meldungen)
{
    const QString blosserName = BlosserName(name);
    for (const QString &verzeichnis : {karteiPfad, programmPfad}) {
        try {
            if (blosserName.isEmpty())
                throw StoreError(Fehler::DateiNichtGefunden, name);
            return BildLesen(QDir(verzeichnis).filePath(blosserName));
        } catch (const StoreError &fehler) {
            if (fehler.Number() != Fehler::DateiNichtGefunden &&
                fehler.Number() != Fehler::PfadNichtGefunden) {
                meldungen.Zeigen(fehler.Text());
                return {};
            }
        }
    }
    meldungen.Zeigen(QStringLiteral("Bilddatei nicht gefunden ") + name);
    return {};
}
