// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "TextDatei.h"

#include "StoreError.h"
#include "TextHelpers.h"
#include "Windows1252.h"

#include <QStringConverter>

#include <algorithm>
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

} // namespace

TextZeilen::TextZeilen(const QByteArray &inhalt) : bytes_(inhalt)
{
    const auto marke = QStringConverter::encodingForData(inhalt);
    if (inhalt.startsWith(Utf8Marke)) {
        utf8_ = true;
        stelle_ = Utf8Marke.size();
        if (!inhalt.isValidUtf8())
            KeinText(u"sie ist als UTF-8 gekennzeichnet, aber kein gültiges UTF-8."_s);
    } else if (marke == QStringConverter::Utf16LE || marke == QStringConverter::Utf16BE) {
        QStringDecoder decoder(*marke);
        const QString text = decoder.decode(inhalt);
        if (decoder.hasError() || inhalt.size() % 2 != 0)
            KeinText(u"sie ist als UTF-16 gekennzeichnet, aber kein gültiges UTF-16."_s);
        bytes_ = WithWholeCharacters(text).toUtf8();
        utf8_ = true;
    } else {
        utf8_ = HatMehrbyte(inhalt) && inhalt.isValidUtf8();
    }
    if (bytes_.contains('\0'))
        KeinText(u"sie enthält Null-Zeichen."_s);
}

bool TextZeilen::Naechste(QString &zeile)
{
    if (stelle_ >= bytes_.size())
        return false;
    const char *const anfang = bytes_.constData() + stelle_;
    const char *const schluss = bytes_.constData() + bytes_.size();
    const char *const ende = std::find_if(anfang, schluss, [](char c) { return c == '\r' || c == '\n'; });
    const QByteArrayView gelesen(anfang, ende - anfang);
    zeile = utf8_ ? TextFromUtf8(gelesen) : Aus1252(gelesen);
    stelle_ += gelesen.size();
    if (ende != schluss)
        stelle_ += *ende == '\r' && ende + 1 != schluss && ende[1] == '\n' ? 2 : 1;
    return true;
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
    if (!utf8_ && HatMehrbyte(bytes_) && bytes_.isValidUtf8())
        AufUtf8();
    return utf8_ ? Utf8Marke + bytes_ : bytes_;
}

void TextSchreiber::AufUtf8()
{
    bytes_ = Aus1252(bytes_).toUtf8();
    utf8_ = true;
}

} // namespace paukfix
