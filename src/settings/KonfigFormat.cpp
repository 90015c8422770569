// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KonfigFormat.h"

#include "StoreError.h"
#include "Windows1252.h"

#include <QLocale>
#include <QStringConverter>
#include <QUrl>

#include <algorithm>
#include <limits>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr QByteArrayView UrlStart = "file://";
constexpr qsizetype MaxTextLength = 4096; // characters; no path is longer
constexpr int MaxPixels = 32767;          // of a desktop, in each direction
constexpr double MinFontSize = 1, MaxFontSize = 1638;

[[noreturn]] void ThrowValueError(int number, const QString &what, QByteArrayView value)
{
    // Only the beginning: the text ends up in a message box.
    throw StoreError(
        number, u"%1: \"%2\""_s.arg(what, FromWindows1252(value.first(qMin<qsizetype>(value.size(), 60)))));
}

[[noreturn]] void ThrowTypeError(QByteArrayView value)
{
    ThrowValueError(Fehler::TypUnvertraeglich, u"Typen unverträglich"_s, value);
}

// A text without NUL and of a length that a path or a font's name can have.
bool IsSensible(const QString &text)
{
    return text.size() <= MaxTextLength && !text.contains(QChar::Null);
}

[[noreturn]] void ThrowNotStorable(const QString &text)
{
    throw StoreError(Fehler::TypUnvertraeglich,
                     u"\"%1\" lässt sich in konfig.dat nicht speichern"_s.arg(text.left(60)));
}

// The name behind the start of a file URL, nothing where it is no such URL.
std::optional<QString> NameFromUrl(QByteArrayView url)
{
    QStringDecoder decoder(QStringDecoder::Utf8);
    QString name = decoder.decode(QByteArray::fromPercentEncoding(url.sliced(UrlStart.size()).toByteArray()));
    if (decoder.hasError() || name.isEmpty())
        return std::nullopt;
    return name;
}

} // namespace

std::vector<KonfigLine> KonfigLines(QByteArrayView content)
{
    std::vector<KonfigLine> lines;
    qsizetype start = 0;
    while (start < content.size()) {
        qsizetype end = start;
        while (end < content.size() && content[end] != '\r' && content[end] != '\n')
            ++end;
        qsizetype next = qMin(end + 1, content.size());
        if (next < content.size() && content[end] == '\r' && content[next] == '\n')
            ++next;
        lines.push_back({content.sliced(start, end - start), content.sliced(start, next - start)});
        start = next;
    }
    return lines;
}

bool IsComment(QByteArrayView line)
{
    return line.startsWith('#');
}

bool IsHeader(QByteArrayView line)
{
    return line.startsWith('[');
}

bool SameLetters(QByteArrayView line, QByteArrayView text, Qt::CaseSensitivity letterCase)
{
    return line.compare(text, letterCase) == 0;
}

std::optional<QByteArrayView> ValueBehind(QByteArrayView line, QByteArrayView key,
                                          Qt::CaseSensitivity letterCase)
{
    if (line.size() < key.size() || !SameLetters(line.first(key.size()), key, letterCase))
        return std::nullopt;
    return line.sliced(key.size());
}

QByteArray LineFromName(const QString &name)
{
    if (!IsSensible(name))
        ThrowNotStorable(name);
    const std::optional<QByteArray> plain = ToWindows1252(name);
    const auto breaksLine = [](char c) { return c == '\r' || c == '\n'; };
    if (plain && !IsComment(*plain) && !IsHeader(*plain) && !plain->startsWith(UrlStart) &&
        std::none_of(plain->begin(), plain->end(), breaksLine))
        return *plain;
    QByteArray url = UrlStart.toByteArray() + QUrl::toPercentEncoding(name, "/");
    if (NameFromLine(url) != name) // half a surrogate pair
        ThrowNotStorable(name);
    return url;
}

QString NameFromLine(QByteArrayView line)
{
    if (line.startsWith(UrlStart)) {
        if (const std::optional<QString> name = NameFromUrl(line))
            return *name;
    }
    return FromWindows1252(line);
}

QByteArray LineFromText(const QString &text)
{
    const std::optional<QByteArray> line = ToWindows1252(text);
    if (!IsSensible(text) || !line || line->contains('\r') || line->contains('\n'))
        ThrowNotStorable(text);
    return *line;
}

QString TextValue(QByteArrayView value)
{
    QString text = FromWindows1252(value);
    if (!IsSensible(text))
        ThrowTypeError(value);
    return text;
}

QString NameValue(QByteArrayView line)
{
    QString name = NameFromLine(line);
    if (!IsSensible(name))
        ThrowTypeError(line);
    return name;
}

bool BoolValue(QByteArrayView value)
{
    const QByteArrayView text = value.trimmed();
    if (SameLetters(text, "True"))
        return true;
    if (SameLetters(text, "False"))
        return false;
    bool isNumber = false;
    const int number = text.toInt(&isNumber);
    if (!isNumber)
        ThrowTypeError(value);
    return number != 0;
}

float SizeValue(QByteArrayView value)
{
    // Comma and point both, for a file that has seen another locale; "inf", "nan" and "1e9" are no sizes.
    const QByteArray text = value.trimmed().toByteArray().replace(',', '.');
    const auto isPart = [](char c) { return (c >= '0' && c <= '9') || c == '.' || c == '-' || c == '+'; };
    bool isNumber = std::all_of(text.begin(), text.end(), isPart);
    const double size = isNumber ? text.toDouble(&isNumber) : 0;
    if (!isNumber)
        ThrowTypeError(value);
    if (!(size >= MinFontSize && size <= MaxFontSize))
        ThrowValueError(Fehler::Ueberlauf, u"Schriftgröße außerhalb von 1 bis 1638"_s, value);
    return static_cast<float>(size);
}

qint32 ColorValue(QByteArrayView value)
{
    bool isNumber = false;
    const qint64 color = value.trimmed().toLongLong(&isNumber);
    if (!isNumber)
        ThrowTypeError(value);
    if (color < std::numeric_limits<qint32>::min() || color > std::numeric_limits<qint32>::max())
        ThrowValueError(Fehler::Ueberlauf, u"Überlauf"_s, value);
    return static_cast<qint32>(color);
}

std::optional<std::pair<int, int>> PairValue(QByteArrayView value)
{
    const QByteArray text = value.trimmed().toByteArray();
    const qsizetype middle = text.indexOf(';');
    const int first = text.left(middle).toInt();
    const int second = text.mid(middle + 1).toInt();
    if (text != PairText(first, second) || qAbs(qint64{first}) > MaxPixels ||
        qAbs(qint64{second}) > MaxPixels)
        return std::nullopt;
    return std::pair(first, second);
}

QByteArray BoolText(bool value)
{
    return value ? "True" : "False";
}

QByteArray SizeText(float value)
{
    QByteArray text = QByteArray::number(static_cast<double>(value), 'g', 7);
    if (QLocale().decimalPoint() == u","_s)
        text.replace('.', ',');
    return text;
}

QByteArray PairText(int first, int second)
{
    return QByteArray::number(first) + ';' + QByteArray::number(second);
}

} // namespace paukfix
