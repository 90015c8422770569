// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Einstellungen.h"

#include "KonfigFormat.h"
#include "StoreError.h"

#include <algorithm>
#include <iterator>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr QByteArrayView RecentFilesHeader = "[recentfiles]";
constexpr QByteArrayView FontHeader = "[Font]";
constexpr QByteArrayView AnimationHeader = "[Animation]";
constexpr QByteArrayView WindowsHeader = "[Fenster]";
constexpr QByteArrayView AnimationKey = "Animation=";

struct FontKey
{
    const char *name;
    void (*take)(Schrift &schrift, QByteArrayView value);
    QByteArray (*text)(const Schrift &schrift);
};

// In the order in which they are tested and written.
constexpr FontKey FontKeys[] = {
    {"FontName=", [](Schrift &s, QByteArrayView v) { s.FontName = TextValue(v); },
     [](const Schrift &s) { return LineFromText(s.FontName); }},
    {"FontSize=", [](Schrift &s, QByteArrayView v) { s.FontSize = SizeValue(v); },
     [](const Schrift &s) { return SizeText(s.FontSize); }},
    {"FontBold=", [](Schrift &s, QByteArrayView v) { s.FontBold = BoolValue(v); },
     [](const Schrift &s) { return BoolText(s.FontBold); }},
    {"FontItalic=", [](Schrift &s, QByteArrayView v) { s.FontItalic = BoolValue(v); },
     [](const Schrift &s) { return BoolText(s.FontItalic); }},
    {"FontStrikethru=", [](Schrift &s, QByteArrayView v) { s.FontStrikethru = BoolValue(v); },
     [](const Schrift &s) { return BoolText(s.FontStrikethru); }},
    {"FontUnderline=", [](Schrift &s, QByteArrayView v) { s.FontUnderline = BoolValue(v); },
     [](const Schrift &s) { return BoolText(s.FontUnderline); }},
    {"Color=", [](Schrift &s, QByteArrayView v) { s.Color = ColorValue(v); },
     [](const Schrift &s) { return QByteArray::number(s.Color); }},
};

struct WindowKey
{
    const char *name;
    void (*take)(Fensterlage &lage, QByteArrayView value);
    std::optional<QByteArray> (*text)(const Fensterlage &lage); // nothing where no line is written
};

// A section of this name may be another program's or written by hand: what is no place is no error.
constexpr WindowKey WindowKeys[] = {
    {"AbfragePlatz=",
     [](Fensterlage &l, QByteArrayView v) {
         if (const auto pair = PairValue(v))
             l.platz = QPoint(pair->first, pair->second);
     },
     [](const Fensterlage &l) {
         return l.platz ? std::optional(PairText(l.platz->x(), l.platz->y())) : std::nullopt;
     }},
    {"AbfrageGroesse=",
     [](Fensterlage &l, QByteArrayView v) {
         const auto pair = PairValue(v);
         if (pair && pair->first > 0 && pair->second > 0)
             l.groesse = QSize(pair->first, pair->second);
     },
     [](const Fensterlage &l) {
         return l.groesse ? std::optional(PairText(l.groesse->width(), l.groesse->height())) : std::nullopt;
     }},
    {"AbfrageMaximiert=",
     [](Fensterlage &l, QByteArrayView v) { l.maximiert = SameLetters(v.trimmed(), BoolText(true)); },
     [](const Fensterlage &l) { return l.maximiert ? std::optional(BoolText(true)) : std::nullopt; }},
};

bool IsWindowEntry(QByteArrayView line)
{
    return std::any_of(std::begin(WindowKeys), std::end(WindowKeys),
                       [line](const WindowKey &key) { return ValueBehind(line, key.name).has_value(); });
}

QByteArrayView HeaderOf(qint16 section)
{
    switch (section) {
    case Abschnitt::LetzteDateien:
        return RecentFilesHeader;
    case Abschnitt::Schrift:
        return FontHeader;
    case Abschnitt::Animation:
        return AnimationHeader;
    case Abschnitt::Fenster:
        return WindowsHeader;
    default:
        return {};
    }
}

// The section that the line opens, 0 for one that is not known.
qint16 SectionOf(QByteArrayView line)
{
    for (const qint16 section :
         {Abschnitt::LetzteDateien, Abschnitt::Schrift, Abschnitt::Animation, Abschnitt::Fenster})
        if (SameLetters(line, HeaderOf(section)))
            return section;
    return 0;
}

void SetRecentFile(std::array<QString, 5> &names, size_t index, QByteArrayView line)
{
    const QString name = NameValue(line);
    if (index >= names.size()) {
        throw StoreError(Fehler::IndexAusserhalb,
                         u"Index außerhalb des gültigen Bereichs: \"%1\""_s.arg(name));
    }
    names.at(index) = name;
}

// The lines that a rewritten section begins with.
QByteArray NewEntries(qint16 section, const QString &value, const Einstellungen &werte)
{
    QByteArray entries;
    if (section == Abschnitt::LetzteDateien && !value.isEmpty()) {
        entries = LineFromName(value) + "\r\n";
    } else if (section == Abschnitt::Schrift) {
        for (const FontKey &key : FontKeys)
            entries += key.name + key.text(werte.schrift) + "\r\n";
    } else if (section == Abschnitt::Fenster) {
        for (const WindowKey &key : WindowKeys)
            if (const auto text = key.text(werte.Abfrage))
                entries += key.name + *text + "\r\n";
    } else if (section == Abschnitt::Animation) {
        entries = AnimationKey.toByteArray() + LineFromText(value) + "\r\n";
    }
    return entries;
}

} // namespace

void Einstellungen::ZuletztGeoeffnet(const QString &name)
{
    std::array<QString, 5> names;
    std::size_t next = 0;
    if (!name.isEmpty())
        names[next++] = name;
    for (const QString &older : MDat)
        if (next < names.size() && !older.isEmpty() && older.compare(name, Qt::CaseInsensitive) != 0)
            names[next++] = older;
    MDat = names;
}

void EinstellungenLesen(Einstellungen &werte, QByteArrayView content,
                        const std::function<void(const std::exception &fehler)> &melden)
{
    const auto tryStep = [&melden](const auto &step) {
        try {
            step();
        } catch (const std::exception &error) {
            melden(error);
        }
    };
    qint16 section = 0;
    size_t recentFile = 0;
    for (const KonfigLine &line : KonfigLines(content)) {
        if (IsComment(line.text))
            continue;
        if (IsHeader(line.text)) {
            section = SectionOf(line.text);
        } else if (section == Abschnitt::LetzteDateien) {
            tryStep([&] { SetRecentFile(werte.MDat, recentFile, line.text); });
            ++recentFile;
        } else if (section == Abschnitt::Schrift) {
            for (const FontKey &key : FontKeys)
                if (const auto value = ValueBehind(line.text, key.name))
                    tryStep([&] { key.take(werte.schrift, *value); });
        } else if (section == Abschnitt::Animation) {
            if (const auto value = ValueBehind(line.text, AnimationKey))
                tryStep([&] { werte.Animation = BoolValue(*value); });
        } else if (section == Abschnitt::Fenster) {
            for (const WindowKey &key : WindowKeys)
                if (const auto value = ValueBehind(line.text, key.name))
                    key.take(werte.Abfrage, *value);
        }
    }
}

QByteArray MitNeuemAbschnitt(const QByteArray &content, qint16 section, const QString &value,
                             const Einstellungen &werte)
{
    const QByteArrayView header = HeaderOf(section);
    const QByteArray entries = NewEntries(section, value, werte);
    QByteArray result;
    bool replacing = false;
    bool found = false;
    qsizetype names = 0;
    for (const KonfigLine &line : KonfigLines(content)) {
        if (IsHeader(line.text))
            replacing = false;
        if (!header.isEmpty() && SameLetters(line.text, header)) {
            replacing = found = true;
            names = value.isEmpty() ? 0 : 1;
            result += line.whole;
            if (line.whole.size() == line.text.size()) // the last line, without an end
                result += "\r\n";
            result += entries;
        } else if (!replacing || IsComment(line.text) ||
                   (section == Abschnitt::Fenster && !IsWindowEntry(line.text))) {
            result += line.whole;
        } else if (section == Abschnitt::LetzteDateien &&
                   names < qsizetype{std::tuple_size_v<decltype(Einstellungen::MDat)>} &&
                   NameFromLine(line.text).compare(value, Qt::CaseInsensitive) != 0) {
            ++names;
            result += line.whole;
        }
    }
    if (section == Abschnitt::Fenster && !found) {
        if (!result.isEmpty() && !result.endsWith('\n') && !result.endsWith('\r'))
            result += "\r\n";
        result += header.toByteArray() + "\r\n" + entries;
    }
    return result;
}

bool AnimationDesIntros(QByteArrayView content)
{
    bool animation = true;
    bool inAnimation = false;
    for (const KonfigLine &line : KonfigLines(content)) {
        if (IsHeader(line.text)) {
            inAnimation = SameLetters(line.text, AnimationHeader, Qt::CaseSensitive);
        } else if (inAnimation && !IsComment(line.text)) {
            if (const auto value = ValueBehind(line.text, AnimationKey, Qt::CaseSensitive))
                animation = BoolValue(*value);
        }
    }
    return animation;
}

} // namespace paukfix
