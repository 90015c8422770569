// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Zeichensatz.h"

#include "StoreError.h"
#include "Windows1252.h"
#include "Zeilenzaehler.h"

#include <algorithm>
#include <array>
#include <memory>
#include <unicode/ucnv.h>
#include <unicode/ucnv_err.h>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t HoechstensZeilen = 100;

void Vermerken(Unpassendes &unpassend, int zeile, QByteArrayView bytes)
{
    if (++unpassend.stellen == 1)
        unpassend.erste = bytes.toByteArray();
    if (unpassend.zeilen.size() < HoechstensZeilen &&
        (unpassend.zeilen.empty() || unpassend.zeilen.back() != zeile))
        unpassend.zeilen.push_back(zeile);
}

// How many bytes the UTF-8 character at `von` has; 0 where there is none.
qsizetype LaengeDesZeichens(const char *von, const char *bis)
{
    const auto byte = [&](qsizetype i) { return static_cast<uchar>(von[i]); };
    const uchar erstes = byte(0);
    const qsizetype laenge = erstes < 0x80                      ? 1
                             : erstes >= 0xC2 && erstes <= 0xDF ? 2
                             : (erstes & 0xF0) == 0xE0          ? 3
                             : erstes >= 0xF0 && erstes <= 0xF4 ? 4
                                                                : 0;
    if (laenge == 0 || bis - von < laenge)
        return 0;
    for (qsizetype i = 1; i < laenge; ++i)
        if ((byte(i) & 0xC0) != 0x80)
            return 0;
    // Longer than needed, half a surrogate pair, beyond the last character.
    if ((erstes == 0xE0 && byte(1) < 0xA0) || (erstes == 0xED && byte(1) > 0x9F) ||
        (erstes == 0xF0 && byte(1) < 0x90) || (erstes == 0xF4 && byte(1) > 0x8F))
        return 0;
    return laenge;
}

using Wandler = std::unique_ptr<UConverter, decltype(&ucnv_close)>;

Wandler Oeffnen(const Zeichensatz &zeichensatz)
{
    UErrorCode fehler = U_ZERO_ERROR;
    Wandler wandler(ucnv_open(zeichensatz.constData(), &fehler), &ucnv_close);
    if (U_SUCCESS(fehler))
        ucnv_setToUCallBack(wandler.get(), UCNV_TO_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &fehler);
    if (U_FAILURE(fehler))
        throw StoreError(Fehler::TypUnvertraeglich,
                         u"Den Zeichensatz „%1“ gibt es hier nicht."_s.arg(QString::fromLatin1(zeichensatz)));
    return wandler;
}

} // namespace

const std::vector<Zeichensatzname> &Zeichensaetze()
{
    static const std::vector<Zeichensatzname> alle{
        {Utf8, u"UTF-8"_s},
        {Windows1252, u"Windows-1252 (Westeuropa)"_s},
        {Utf16Le, u"UTF-16 (Unicode-Text)"_s},
        {Utf16Be, u"UTF-16, Bytes vertauscht"_s},
        {"ISO-8859-15", u"ISO-8859-15 (Westeuropa)"_s},
        {"macintosh", u"Macintosh (Westeuropa)"_s},
        {"ibm-850", u"DOS 850 (Westeuropa)"_s},
        {"ibm-437", u"DOS 437"_s},
        {"windows-1250", u"Windows-1250 (Mitteleuropa)"_s},
        {"ISO-8859-2", u"ISO-8859-2 (Mitteleuropa)"_s},
        {"windows-1251", u"Windows-1251 (Kyrillisch)"_s},
        {"KOI8-R", u"KOI8-R (Kyrillisch)"_s},
        {"windows-1253", u"Windows-1253 (Griechisch)"_s},
        {"windows-1254", u"Windows-1254 (Türkisch)"_s},
        {"windows-1255", u"Windows-1255 (Hebräisch)"_s},
        {"windows-1256", u"Windows-1256 (Arabisch)"_s},
        {"windows-1257", u"Windows-1257 (Baltisch)"_s},
        {"GB18030", u"GB18030 (Chinesisch)"_s},
        {"Big5", u"Big5 (Chinesisch)"_s},
        {"Shift_JIS", u"Shift-JIS (Japanisch)"_s},
        {"EUC-JP", u"EUC-JP (Japanisch)"_s},
        {"EUC-KR", u"EUC-KR (Koreanisch)"_s},
    };
    return alle;
}

QString NameVon(const Zeichensatz &zeichensatz)
{
    const auto &alle = Zeichensaetze();
    const auto einer = std::find_if(alle.begin(), alle.end(), [&](const Zeichensatzname &dieser) {
        return dieser.zeichensatz == zeichensatz;
    });
    return einer == alle.end() ? QString::fromLatin1(zeichensatz) : einer->name;
}

QByteArray NachUtf8(QByteArrayView bytes, const Zeichensatz &zeichensatz, Unpassendes &unpassend)
{
    const Wandler wandler = Oeffnen(zeichensatz);
    const char *quelle = bytes.data();
    const char *const schluss = quelle + bytes.size();
    Zeilenzaehler zaehler;
    QString text;
    std::array<UChar, 4096> puffer{};
    while (true) {
        UErrorCode fehler = U_ZERO_ERROR;
        UChar *ziel = puffer.data();
        ucnv_toUnicode(wandler.get(), &ziel, puffer.data() + puffer.size(), &quelle, schluss, nullptr, true,
                       &fehler);
        zaehler.Weiter(puffer.data(), ziel);
        text.append(reinterpret_cast<const QChar *>(puffer.data()), ziel - puffer.data());
        if (fehler == U_BUFFER_OVERFLOW_ERROR)
            continue;
        if (U_SUCCESS(fehler))
            return text.toUtf8();
        std::array<char, 32> diese{};
        auto laenge = static_cast<int8_t>(diese.size());
        UErrorCode gefragt = U_ZERO_ERROR;
        ucnv_getInvalidChars(wandler.get(), diese.data(), &laenge, &gefragt);
        Vermerken(unpassend, zaehler.Zeile(), {diese.data(), U_SUCCESS(gefragt) ? laenge : 0});
        text.append(QChar(QChar::ReplacementCharacter));
        if (quelle == schluss)
            return text.toUtf8(); // it ended within a character
    }
}

QByteArray BereinigtesUtf8(QByteArrayView bytes, bool fremdeAls1252, Unpassendes &unpassend)
{
    QByteArray ergebnis;
    ergebnis.reserve(bytes.size());
    Zeilenzaehler zaehler;
    const char *stelle = bytes.data();
    const char *const schluss = stelle + bytes.size();
    while (stelle != schluss) {
        if (const qsizetype laenge = LaengeDesZeichens(stelle, schluss); laenge > 0) {
            zaehler.Weiter(stelle, stelle + laenge);
            ergebnis.append(stelle, laenge);
            stelle += laenge;
            continue;
        }
        const QByteArrayView byte(stelle, 1);
        Vermerken(unpassend, zaehler.Zeile(), byte);
        ergebnis += fremdeAls1252 ? FromWindows1252(byte).toUtf8() : QByteArray("\xEF\xBF\xBD");
        ++stelle;
    }
    return ergebnis;
}

Utf8Probe AlsUtf8(QByteArrayView bytes)
{
    Utf8Probe probe;
    const char *stelle = bytes.data();
    const char *const schluss = stelle + bytes.size();
    while (stelle != schluss) {
        const qsizetype laenge = LaengeDesZeichens(stelle, schluss);
        probe.zeichen += laenge > 1 ? 1 : 0;
        probe.fehler += laenge == 0 ? 1 : 0;
        stelle += std::max<qsizetype>(laenge, 1);
    }
    return probe;
}

} // namespace paukfix
