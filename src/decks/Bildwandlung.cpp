// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Bildwandlung.h"

#include <QBuffer>
#include <QImage>
#include <QImageReader>
#include <QImageWriter>
#include <QPainter>
#include <QXmlStreamReader>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr int GroessteSeite = 4096;     // pixels
constexpr int MeisteSpeicher = 128;     // MB for one picture
constexpr int KleinesteZeichnung = 600; // pixels: a drawing that says less of itself is made larger
constexpr int Guete = 90;
constexpr qsizetype GroessteZeichnung = 4'000'000; // bytes
constexpr int MeisteVerweise = 16;                 // of a drawing on parts of itself: each may double it

bool IstZeichnung(const QByteArray &format)
{
    return format == "svg" || format == "svgz";
}

// A drawing may name files, and itself again and again.
bool IstHarmlos(const QByteArray &svg)
{
    if (svg.size() > GroessteZeichnung || svg.startsWith("\x1f\x8b"))
        return false;
    QXmlStreamReader xml(svg);
    xml.setEntityExpansionLimit(0);
    int verweise = 0;
    int tiefe = 0;
    while (!xml.atEnd()) {
        const auto art = xml.readNext();
        if (art == QXmlStreamReader::EndElement)
            --tiefe;
        if (art != QXmlStreamReader::StartElement)
            continue;
        verweise += xml.name() == u"use" ? 1 : 0;
        for (const QXmlStreamAttribute &attribut : xml.attributes())
            if (attribut.name() == u"href" && !attribut.value().trimmed().startsWith(u'#') &&
                !attribut.value().trimmed().startsWith(u"data:") && xml.name() == u"image")
                return false;
        if (++tiefe > 200 || verweise > MeisteVerweise)
            return false;
    }
    return !xml.hasError();
}

QSize Gelesen(const QSize &eigen, bool zeichnung)
{
    if (!eigen.isValid() || eigen.isEmpty())
        return {};
    if (eigen.width() > GroessteSeite || eigen.height() > GroessteSeite)
        return eigen.scaled(GroessteSeite, GroessteSeite, Qt::KeepAspectRatio).expandedTo({1, 1});
    if (zeichnung && eigen.width() < KleinesteZeichnung && eigen.height() < KleinesteZeichnung)
        return eigen.scaled(KleinesteZeichnung, KleinesteZeichnung, Qt::KeepAspectRatio).expandedTo({1, 1});
    return {};
}

} // namespace

std::optional<Kartenmedium> AlsKartenbild(const QByteArray &inhalt)
{
    QBuffer puffer;
    puffer.setData(inhalt);
    puffer.open(QIODevice::ReadOnly);
    QImageReader leser(&puffer);
    leser.setDecideFormatFromContent(true);
    QImageReader::setAllocationLimit(MeisteSpeicher);
    const QByteArray format = leser.format();
    if (IstZeichnung(format) && !IstHarmlos(inhalt))
        return std::nullopt;
    leser.setAutoTransform(true);
    const QSize eigen = leser.size();
    if (format == "jpeg" || format == "bmp") {
        // Whether it can be read at all; small, as nobody wants to see it now.
        if (eigen.width() > 64 && format == "jpeg")
            leser.setScaledSize(eigen.scaled(64, 64, Qt::KeepAspectRatio).expandedTo({1, 1}));
        if (leser.read().isNull())
            return std::nullopt;
        return Kartenmedium{inhalt, format == "bmp" ? u"bmp"_s : u"jpg"_s};
    }
    if (const QSize anders = Gelesen(eigen, IstZeichnung(format)); !anders.isEmpty())
        leser.setScaledSize(anders);
    const QImage bild = leser.read();
    if (bild.isNull())
        return std::nullopt;
    QImage auf(bild.size(), QImage::Format_RGB32);
    if (auf.isNull())
        return std::nullopt;
    auf.fill(Qt::white);
    QPainter(&auf).drawImage(0, 0, bild);
    Kartenmedium medium{.inhalt = {}, .endung = u"jpg"_s};
    QBuffer ziel(&medium.inhalt);
    ziel.open(QIODevice::WriteOnly);
    QImageWriter schreiber(&ziel, "jpeg");
    schreiber.setQuality(Guete);
    if (!schreiber.write(auf))
        return std::nullopt;
    return medium;
}

} // namespace paukfix
