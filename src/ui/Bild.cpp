// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Bild.h"

#include "BildPruefung.h"
#include "Mediendatei.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImageReader>

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// A file may claim any size: what could take half a gigabyte is not even begun.
constexpr qint64 MaxPixelJpeg = 64'000'000; // up to six bytes each while it is read
constexpr qint64 MaxPixelBmp = 40'000'000;  // up to eight: a bitmap is made smaller only when it is there
constexpr int MaxSeite = 4096;
constexpr qint64 MaxBytes = 128'000'000; // of the file, which is read whole

[[noreturn]] void KeinBild(const QString &pfad, const QString &grund)
{
    throw StoreError(Fehler::UngueltigesBild, u"Ungültiges Bild „%1“: %2"_s.arg(pfad, grund));
}

// The format as the file's first bytes tell it, empty for any other.
QByteArray BildFormat(const QByteArray &anfang)
{
    if (anfang.startsWith("BM"))
        return "bmp"_ba;
    if (anfang.startsWith("\xff\xd8\xff"))
        return "jpeg"_ba;
    return {};
}

// The smallest of a half, a quarter and so on of a picture that still fills one side of its place.
QSize Halbiert(QSize bild, const QSize &platz)
{
    const auto fuellt = [&](const QSize &groesse) {
        return groesse.width() >= platz.width() || groesse.height() >= platz.height();
    };
    while (fuellt(bild / 2) && bild.width() > 1 && bild.height() > 1)
        bild /= 2;
    return bild;
}

} // namespace

QImage BildLesen(const QString &pfad, const QSize &platz, Einpassen wie)
{
    const QFileInfo info(pfad);
    if (!info.dir().exists())
        throw StoreError(Fehler::PfadNichtGefunden, u"Pfad nicht gefunden: „%1“"_s.arg(pfad));
    if (!info.exists())
        throw StoreError(Fehler::DateiNichtGefunden, u"Datei nicht gefunden: „%1“"_s.arg(pfad));
    QFile datei(pfad);
    // A pipe or a device would keep the program waiting.
    if (!info.isFile() || !datei.open(QIODevice::ReadOnly))
        throw StoreError(Fehler::PfadZugriff, u"Die Datei „%1“ kann nicht gelesen werden."_s.arg(pfad));

    const QByteArray format = BildFormat(datei.peek(3));
    if (format.isEmpty())
        KeinBild(pfad, u"weder BMP noch JPEG."_s);
    if (datei.size() > MaxBytes)
        KeinBild(pfad, u"es ist zu groß."_s);
    QByteArray inhalt = datei.readAll();
    if (format == "bmp") {
        if (inhalt.size() > 18 && !KopfBekannt(inhalt))
            KeinBild(pfad, u"diese Art von BMP ist nicht bekannt."_s);
        inhalt = MitLesbaremKopf(std::move(inhalt));
    }
    if (!(format == "bmp" ? BmpVollstaendig(inhalt) : JpegVollstaendig(inhalt)))
        KeinBild(pfad, u"die Datei ist unvollständig."_s);
    inhalt.append(4, '\0'); // the padding of the last row, where it is missing
    QBuffer puffer(&inhalt);
    puffer.open(QIODevice::ReadOnly);
    QImageReader leser(&puffer, format);
    leser.setAutoDetectImageFormat(false);
    leser.setAutoTransform(true);
    // The height of a BMP that is stored from top to bottom is negative.
    const qint64 breite = std::abs(qint64{leser.size().width()});
    const qint64 hoehe = std::abs(qint64{leser.size().height()});
    const qint64 maxPixel = format == "bmp" ? MaxPixelBmp : MaxPixelJpeg;
    if (breite * hoehe > maxPixel)
        KeinBild(pfad, u"es ist zu groß."_s);
    const QSize groesse(static_cast<int>(breite), static_cast<int>(hoehe));
    QSize grenze = (platz.isEmpty() ? QSize(MaxSeite, MaxSeite) : platz).boundedTo({MaxSeite, MaxSeite});
    if (wie == Einpassen::Halbieren && !platz.isEmpty())
        grenze = Halbiert(groesse, platz).boundedTo({MaxSeite, MaxSeite});
    if (groesse.width() > grenze.width() || groesse.height() > grenze.height())
        leser.setScaledSize(groesse.scaled(grenze, Qt::KeepAspectRatio).expandedTo({1, 1}));
    // A bitmap of runs may leave pixels out: they have the first colour.
    QImage bild;
    if (leser.imageFormat() == QImage::Format_Indexed8) {
        bild = QImage(groesse, QImage::Format_Indexed8);
        bild.fill(0);
    }
    if (!leser.read(&bild) || bild.isNull())
        KeinBild(pfad, u"die Datei ist beschädigt oder zu groß."_s);
    return bild;
}

QImage BildSuchen(const QString &name, const QString &karteiPfad, const QString &programmPfad,
                  const QSize &platz)
{
    for (const QString &verzeichnis : {karteiPfad, programmPfad}) {
        try {
            if (!BlosserName(name).isEmpty())
                return BildLesen(Mediendatei(verzeichnis, name), platz, Einpassen::Halbieren);
        } catch (const StoreError &fehler) {
            if (fehler.Number() != Fehler::DateiNichtGefunden && fehler.Number() != Fehler::PfadNichtGefunden)
                throw;
        }
    }
    throw StoreError(Fehler::DateiNichtGefunden, u"Bilddatei nicht gefunden "_s + name);
}

QImage BildLaden(const QString &name, const QString &karteiPfad, const QString &programmPfad,
                 Meldungen &meldungen, const QSize &platz)
{
    try {
        return BildSuchen(name, karteiPfad, programmPfad, platz);
    } catch (const StoreError &fehler) {
        meldungen.Zeigen(fehler.Text());
        return {};
    }
}

} // namespace paukfix
