// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AppConfig.h"

#include "KonfigFormat.h"
#include "ProgramDirectory.h"
#include "SafeFile.h"
#include "Schritt.h"

#include <QFileInfo>

#include <algorithm>
#include <iterator>

namespace {

// The numbers of the sections that can be rewritten.
constexpr qint16 RecentFiles = 1, Font = 2, AnimationSwitch = 3, Windows = 4;

constexpr qint64 MaxFileSize = qint64{256} * 1024; // bytes; a file of settings holds a few hundred
constexpr int MaxReports = 10; // messages of one reading: a broken file must not show thousands
constexpr qsizetype MaxRecentFiles = 5;
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
         if (const auto pair = PairValue(v)) {
             l.platz = QPoint(pair->first, pair->second);
         }
     },
     [](const Fensterlage &l) {
         return l.platz ? std::optional(PairText(l.platz->x(), l.platz->y())) : std::nullopt;
     }},
    {"AbfrageGroesse=",
     [](Fensterlage &l, QByteArrayView v) {
         const auto pair = PairValue(v);
         if (pair && pair->first > 0 && pair->second > 0) {
             l.groesse = QSize(pair->first, pair->second);
         }
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
    case RecentFiles:
        return RecentFilesHeader;
    case Font:
        return FontHeader;
    case AnimationSwitch:
        return AnimationHeader;
    case Windows:
        return WindowsHeader;
    default:
        return {};
    }
}

// The section that the line opens, 0 for one that is not known.
qint16 SectionOf(QByteArrayView line)
{
    for (const qint16 section : {RecentFiles, Font, AnimationSwitch, Windows}) {
        if (SameLetters(line, HeaderOf(section))) {
            return section;
        }
    }
    return 0;
}

void SetRecentFile(std::array<QString, 5> &names, size_t index, QByteArrayView line)
{
    const QString name = NameValue(line);
    if (index >= names.size()) {
        throw StoreError(Fehler::IndexAusserhalb,
                         QStringLiteral("Index außerhalb des gültigen Bereichs: \"%1\"").arg(name));
    }
    names.at(index) = name;
}

// The lines that a rewritten section begins with.
QByteArray NewEntries(qint16 section, const QString &value, const AppConfig &config)
{
    QByteArray entries;
    if (section == RecentFiles && !value.isEmpty()) {
        entries = LineFromName(value) + "\r\n";
    } else if (section == Font) {
        for (const FontKey &key : FontKeys) {
            entries += key.name + key.text(config.schrift) + "\r\n";
        }
    } else if (section == Windows) {
        for (const WindowKey &key : WindowKeys) {
            if (const auto text = key.text(config.Abfrage)) {
                entries += key.name + *text + "\r\n";
            }
        }
    } else if (section == AnimationSwitch) {
        entries = AnimationKey.toByteArray() + LineFromText(value) + "\r\n";
    }
    return entries;
}

// `content` with one section rewritten, every other line byte for byte as it was.
QByteArray Rewritten(const QByteArray &content, qint16 section, const QString &value, const AppConfig &config)
{
    const QByteArrayView header = HeaderOf(section);
    const QByteArray entries = NewEntries(section, value, config);
    QByteArray result;
    bool replacing = false;
    bool found = false;
    qsizetype names = 0;
    for (const KonfigLine &line : KonfigLines(content)) {
        if (IsHeader(line.text)) {
            replacing = false;
        }
        if (!header.isEmpty() && SameLetters(line.text, header)) {
            replacing = found = true;
            names = value.isEmpty() ? 0 : 1;
            result += line.whole;
            if (line.whole.size() == line.text.size()) { // the last line, without an end
                result += "\r\n";
            }
            result += entries;
        } else if (!replacing || IsComment(line.text) || (section == Windows && !IsWindowEntry(line.text))) {
            result += line.whole;
        } else if (section == RecentFiles && names < MaxRecentFiles &&
                   NameFromLine(line.text).compare(value, Qt::CaseInsensitive) != 0) {
            ++names;
            result += line.whole;
        }
    }
    if (section == Windows && !found) {
        if (!result.isEmpty() && !result.endsWith('\n') && !result.endsWith('\r')) {
            result += "\r\n";
        }
        result += header.toByteArray() + "\r\n" + entries;
    }
    return result;
}

} // namespace

AppConfig::AppConfig(Meldungen &meldungen) : meldungen_(meldungen) {}

QString AppConfig::KonfigPfad(const char *name) const
{
    return ProgrammPfad + QLatin1Char('/') + QLatin1String(name);
}

QString AppConfig::ProgrammDatei(const QString &name) const
{
    const auto in = [&name](const QString &ordner) { return ordner + QLatin1Char('/') + name; };
    QString eigene = in(ProgrammPfad);
    if (!QFileInfo(eigene).isFile()) {
        for (const QString &ordner : Lieferpfade) {
            if (QFileInfo(in(ordner)).isFile()) {
                return in(ordner);
            }
        }
    }
    return eigene;
}

// "konfig.dat" is gone, and there is a shipped one to make it from.
bool AppConfig::Verloren() const
{
    const QString konfig = KonfigPfad("konfig.dat");
    return !QFileInfo::exists(konfig) && ProgrammDatei(QStringLiteral("konfig.dat")) != konfig;
}

// Makes "konfig.dat" again as it was shipped and returns its content; throws where that cannot be.
QByteArray AppConfig::NeuAnlegen() const
{
    const DirectoryLock lock(ProgrammPfad);
    QByteArray content = ReadFile(ProgrammDatei(QStringLiteral("konfig.dat")), MaxFileSize);
    RewriteFile(KonfigPfad("konfig.dat"), content);
    return content;
}

void AppConfig::ReadConfig()
{
    int errors = 0;
    const auto tryStep = [&](const auto &step) {
        try {
            step();
        } catch (const std::exception &error) {
            ++errors;
            if (errors <= MaxReports) {
                const QString last = QStringLiteral(": weitere Fehler in konfig.dat werden nicht gemeldet");
                meldungen_.Zeigen(QStringLiteral("Fehler in Konfig_Lesen") +
                                  (errors < MaxReports ? ErrorText(error) : last));
            }
        }
    };

    QByteArray content;
    tryStep([&] { content = ReadFile(KonfigPfad("konfig.dat"), MaxFileSize); });
    if (errors > 0 && Verloren()) {
        tryStep([&] { content = NeuAnlegen(); });
    }
    qint16 section = 0;
    size_t recentFile = 0;
    for (const KonfigLine &line : KonfigLines(content)) {
        if (IsComment(line.text)) {
            continue;
        }
        if (IsHeader(line.text)) {
            section = SectionOf(line.text);
        } else if (section == RecentFiles) {
            tryStep([&] { SetRecentFile(MDat, recentFile, line.text); });
            ++recentFile;
        } else if (section == Font) {
            for (const FontKey &key : FontKeys) {
                if (const auto value = ValueBehind(line.text, key.name)) {
                    tryStep([&] { key.take(schrift, *value); });
                }
            }
        } else if (section == AnimationSwitch) {
            if (const auto value = ValueBehind(line.text, AnimationKey)) {
                tryStep([&] { Animation = BoolValue(*value); });
            }
        } else if (section == Windows) {
            for (const WindowKey &key : WindowKeys) {
                if (const auto value = ValueBehind(line.text, key.name)) {
                    key.take(Abfrage, *value);
                }
            }
        }
    }
    Gelesen();
}

void AppConfig::WriteConfig(qint16 section, const QString &value)
{
    {
        const DirectoryLock lock(ProgrammPfad);
        const QString konfig = KonfigPfad("konfig.dat");
        const QByteArray content = Rewritten(ReadFile(konfig, MaxFileSize), section, value, *this);
        // A rename asks nobody whether the file that it replaces may be written.
        if (!MayWrite(konfig)) {
            throw StoreError(Fehler::NichtErlaubt,
                             QStringLiteral("Die Datei ist schreibgeschützt: %1").arg(konfig));
        }
        if (content.size() > MaxFileSize) {
            throw StoreError(Fehler::ZuWenigSpeicher,
                             QStringLiteral("Die Datei würde zu groß: %1").arg(konfig));
        }
        WriteFileSynced(KonfigPfad("konfig.new"), content);
        // konfig.new stays, so konfig.dat gets a second copy in one rename: overwriting it in place would
        // leave half a file after a kill, and a hard link to konfig.new would share what is written there
        // next.
        RewriteFile(konfig, content);
    }
    ReadConfig();
}

// Puts a recent file on top in memory alone, by the rule of Rewritten.
void AppConfig::NurMerken(qint16 section, const QString &value)
{
    if (section != RecentFiles) {
        return; // the caller has changed the settings already
    }
    std::array<QString, 5> names;
    size_t next = 0;
    if (!value.isEmpty()) {
        names[next++] = value;
    }
    for (const QString &name : MDat) {
        if (next < names.size() && !name.isEmpty() && name.compare(value, Qt::CaseInsensitive) != 0) {
            names[next++] = name;
        }
    }
    MDat = names;
    Gelesen();
}

void AppConfig::Sichern(qint16 section, const QString &value, const QString &kontext)
{
    if (NurDieserLauf) {
        NurMerken(section, value);
        return;
    }
    try {
        WriteConfig(section, value);
    } catch (const StoreError &error) {
        NurDieserLauf = error.Number() == Fehler::NichtErlaubt;
        meldungen_.Zeigen(kontext + error.Text());
        if (NurDieserLauf) {
            NurMerken(section, value);
        } else if (Verloren()) {
            Schritt(meldungen_, kontext, [&] {
                NeuAnlegen();
                WriteConfig(section, value);
            });
        }
    }
}

bool AppConfig::ReadIntroAnimation() const
{
    const QByteArray content = ReadFile(KonfigPfad("konfig.dat"), MaxFileSize);
    bool animation = true;
    bool inAnimation = false;
    for (const KonfigLine &line : KonfigLines(content)) {
        if (IsHeader(line.text)) {
            inAnimation = SameLetters(line.text, AnimationHeader, Qt::CaseSensitive);
        } else if (inAnimation && !IsComment(line.text)) {
            if (const auto value = ValueBehind(line.text, AnimationKey, Qt::CaseSensitive)) {
                animation = BoolValue(*value);
            }
        }
    }
    return animation;
}
