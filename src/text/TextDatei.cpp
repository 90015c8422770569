// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "TextDatei.h"

#include "StoreError.h"
#include "TextHelpers.h"
#include "Windows1252.h"

#include <QStringConverter>

#include <algorithm>
#include <optional>
#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

const QByteArray Utf8Marke("\xEF\xBB\xBF");

// Where Windows-1252 and Latin-1 agree, which is nearly everywhere, there is no need for a converter.
bool WieLatin1(ushort zeichen)
{
    return zeichen < 0x80 || (zeichen >= 0xA0 && zeichen <= 0xFF);
}

QString Aus1252(QByteArrayView bytes)
{
    const auto wieLatin1 = [](char byte) { return WieLatin1(static_cast<uchar>(byte)); };
    if (std::all_of(bytes.begin(), bytes.end(), wieLatin1))
        return QString::fromLatin1(bytes);
    return FromWindows1252(bytes);
}

std::optional<QByteArray> Nach1252(const QString &text)
{
    const auto wieLatin1 = [](QChar zeichen) { return WieLatin1(zeichen.unicode()); };
    if (std::all_of(text.begin(), text.end(), wieLatin1))
        return text.toLatin1();
    return ToWindows1252(text);
}

bool HatMehrbyte(QByteArrayView bytes)
{
    return std::any_of(bytes.begin(), bytes.end(),
                       [](char byte) { return static_cast<uchar>(byte) >= 0x80; });
}

[[noreturn]] void KeinText(const QString &grund)
{
    throw StoreError(Fehler::TypUnvertraeglich, u"Das ist keine Textdatei: "_s + grund);
}

// Most of our letters have a null beside them there.
std::optional<Zeichensatz> Utf16OhneMarke(QByteArrayView bytes)
{
    constexpr qsizetype Probe = 4096;
    const qsizetype laenge = std::min(bytes.size(), Probe) / 2 * 2;
    qsizetype gerade = 0;
    qsizetype ungerade = 0;
    for (qsizetype i = 0; i < laenge; i += 2) {
        gerade += bytes[i] == '\0' ? 1 : 0;
        ungerade += bytes[i + 1] == '\0' ? 1 : 0;
    }
    if (laenge == 0 || bytes.size() % 2 != 0)
        return std::nullopt;
    if (ungerade * 4 > laenge && gerade * 20 < laenge)
        return Utf16Le;
    if (gerade * 4 > laenge && ungerade * 20 < laenge)
        return Utf16Be;
    return std::nullopt;
}

QByteArray AusUtf16(const QByteArray &datei, bool klein)
{
    const bool gekennzeichnet = QStringConverter::encodingForData(datei).has_value();
    QStringDecoder decoder(klein ? QStringConverter::Utf16LE : QStringConverter::Utf16BE);
    const QString text = decoder.decode(datei);
    if (decoder.hasError() || datei.size() % 2 != 0)
        KeinText(gekennzeichnet ? u"sie ist als UTF-16 gekennzeichnet, aber kein gültiges UTF-16."_s
                                : u"sie ist kein gültiges UTF-16."_s);
    return WithWholeCharacters(text).toUtf8();
}

} // namespace

Zeichensatz ZeichensatzRaten(const QByteArray &datei)
{
    const auto marke = QStringConverter::encodingForData(datei);
    if (datei.startsWith(Utf8Marke))
        return Utf8;
    if (marke == QStringConverter::Utf16LE || marke == QStringConverter::Utf16BE)
        return marke == QStringConverter::Utf16LE ? Utf16Le : Utf16Be;
    if (!HatMehrbyte(datei))
        return Utf16OhneMarke(datei).value_or(Windows1252);
    if (datei.isValidUtf8())
        return Utf8;
    if (const auto utf16 = Utf16OhneMarke(datei))
        return *utf16;
    const Utf8Probe probe = AlsUtf8(datei);
    return probe.zeichen >= 2 * probe.fehler ? Utf8 : Windows1252;
}

Textinhalt TextLesen(const QByteArray &datei, const Zeichensatz &zeichensatz, Fremdes fremdes)
{
    Textinhalt inhalt;
    inhalt.zeichensatz = zeichensatz.isEmpty() ? ZeichensatzRaten(datei) : zeichensatz;
    inhalt.bytes = datei;
    inhalt.utf8 = inhalt.zeichensatz != Windows1252;
    if (inhalt.zeichensatz == Utf8) {
        if (!datei.isValidUtf8())
            inhalt.bytes = BereinigtesUtf8(datei, fremdes == Fremdes::AlsWindows1252, inhalt.unpassend);
        inhalt.anfang = datei.startsWith(Utf8Marke) ? Utf8Marke.size() : 0;
    } else if (inhalt.zeichensatz == Utf16Le || inhalt.zeichensatz == Utf16Be) {
        inhalt.bytes = AusUtf16(datei, inhalt.zeichensatz == Utf16Le);
    } else if (inhalt.utf8) {
        inhalt.bytes = NachUtf8(datei, inhalt.zeichensatz, inhalt.unpassend);
    }
    if (inhalt.bytes.contains('\0'))
        KeinText(u"sie enthält Null-Zeichen."_s);
    return inhalt;
}

QString TextAus(QByteArrayView bytes, bool utf8)
{
    return utf8 ? TextFromUtf8(bytes) : Aus1252(bytes);
}

void TextSchreiber::Zeile(QString text)
{
    text.remove(QChar::Null); // which no text file has, and no box shows
    if (!utf8_) {
        if (const auto bytes = Nach1252(text)) {
            bytes_ += *bytes;
            bytes_ += "\r\n";
            return;
        }
        AufUtf8();
    }
    bytes_ += text.toUtf8();
    bytes_ += "\r\n";
}

QByteArray TextSchreiber::Inhalt()
{
    if (!utf8_ && ZeichensatzRaten(bytes_) != Windows1252)
        AufUtf8();
    return utf8_ ? Utf8Marke + bytes_ : bytes_;
}

void TextSchreiber::AufUtf8()
{
    bytes_ = Aus1252(bytes_).toUtf8();
    utf8_ = true;
}

} // namespace paukfix
