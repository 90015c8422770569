// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Formatierung.h"

#include "CharFormat.h"
#include "Schriftgrade.h"

#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr int HochTwips = 50;
constexpr int TiefTwips = -20;
constexpr double PunkteJePixel = 0.75;

// The format of some text, with the document's font where it does not say.
struct Stueck
{
    QString name;
    double groesse;
    bool fett, kursiv, durch, unter;
    QColor farbe;
    int versatz;
};

double Groesse(const QTextCharFormat &format, const QFont &standard)
{
    if (format.fontPointSize() > 0)
        return format.fontPointSize();
    if (format.hasProperty(QTextFormat::FontPixelSize))
        return format.intProperty(QTextFormat::FontPixelSize) * PunkteJePixel;
    return standard.pointSizeF() > 0 ? standard.pointSizeF() : standard.pixelSize() * PunkteJePixel;
}

// What the desktop has set in place of a name says nothing about the text.
QString Familie(const QFont &schrift)
{
    return (schrift.resolveMask() & QFont::FamiliesResolved) != 0 ? schrift.family() : QString();
}

Stueck StueckLesen(const QTextCharFormat &format, const QFont &standard)
{
    const QStringList namen = format.fontFamilies().toStringList();
    return {
        namen.isEmpty() ? Familie(standard) : namen.front(),
        Groesse(format, standard),
        format.hasProperty(QTextFormat::FontWeight) ? format.fontWeight() >= QFont::DemiBold
                                                    : standard.bold(),
        format.hasProperty(QTextFormat::FontItalic) ? format.fontItalic() : standard.italic(),
        format.hasProperty(QTextFormat::FontStrikeOut) ? format.fontStrikeOut() : standard.strikeOut(),
        format.hasProperty(QTextFormat::TextUnderlineStyle)
            ? format.underlineStyle() != QTextCharFormat::NoUnderline
            : standard.underline(),
        TextColour(format),
        CharOffset(format),
    };
}

template <typename Wert>
void Angleichen(std::optional<Wert> &gemeinsam, const Wert &wert)
{
    if (gemeinsam != wert)
        gemeinsam.reset();
}

// Takes one more piece into account; the first one sets all values.
class Sammlung
{
public:
    explicit Sammlung(const QFont &standard) : standard_(standard) {}

    void Nehmen(const QTextCharFormat &format)
    {
        const Stueck s = StueckLesen(format, standard_);
        if (!std::exchange(begonnen_, true)) {
            auswahl_ = {s.name, s.groesse, s.fett, s.kursiv, s.durch, s.unter, s.farbe, s.versatz};
            return;
        }
        Angleichen(auswahl_.SelFontName, s.name);
        Angleichen(auswahl_.SelFontSize, s.groesse);
        Angleichen(auswahl_.SelBold, s.fett);
        Angleichen(auswahl_.SelItalic, s.kursiv);
        Angleichen(auswahl_.SelStrikeThru, s.durch);
        Angleichen(auswahl_.SelUnderline, s.unter);
        Angleichen(auswahl_.SelColor, s.farbe);
        Angleichen(auswahl_.SelCharOffset, s.versatz);
    }

    const Auswahlformat &Auswahl() const { return auswahl_; }

    bool Leer() const { return !begonnen_; }

private:
    QFont standard_;
    Auswahlformat auswahl_;
    bool begonnen_ = false;
};

// True for a mixed selection.
bool Umgeschaltet(const std::optional<bool> &jetzt)
{
    return !jetzt.value_or(false);
}

QTextCharFormat KleinFett(int twips)
{
    QTextCharFormat format;
    format.setFontFamilies({u"Small Fonts"_s});
    format.setFontPointSize(7);
    format.setFontWeight(QFont::Bold);
    SetCharOffset(format, twips);
    return format;
}

} // namespace

Auswahlformat AuswahlLesen(const QTextCursor &cursor, const QTextCharFormat &amCaret)
{
    const QTextDocument &dokument = *cursor.document();
    Sammlung sammlung(dokument.defaultFont());
    const int ende = cursor.selectionEnd();
    for (QTextBlock block = dokument.findBlock(cursor.selectionStart());
         cursor.hasSelection() && block.isValid() && block.position() < ende; block = block.next()) {
        for (auto teil = block.begin(); !teil.atEnd(); ++teil) {
            const int anfang = teil.fragment().position();
            if (anfang < ende && anfang + teil.fragment().length() > cursor.selectionStart())
                sammlung.Nehmen(teil.fragment().charFormat());
        }
    }
    if (sammlung.Leer())
        sammlung.Nehmen(amCaret);
    return sammlung.Auswahl();
}

QTextCharFormat FettFormat(const Auswahlformat &auswahl)
{
    QTextCharFormat format;
    format.setFontWeight(Umgeschaltet(auswahl.SelBold) ? QFont::Bold : QFont::Normal);
    return format;
}

QTextCharFormat KursivFormat(const Auswahlformat &auswahl)
{
    QTextCharFormat format;
    if (auswahl.SelItalic)
        format.setFontItalic(!*auswahl.SelItalic);
    else
        format.setFontWeight(QFont::Bold);
    return format;
}

QTextCharFormat UnterstrichenFormat(const Auswahlformat &auswahl)
{
    QTextCharFormat format;
    format.setFontUnderline(Umgeschaltet(auswahl.SelUnderline));
    return format;
}

QTextCharFormat HochgestelltFormat()
{
    return KleinFett(HochTwips);
}

QTextCharFormat TiefgestelltFormat()
{
    return KleinFett(TiefTwips);
}

QTextCharFormat NormalgestelltFormat()
{
    QTextCharFormat format;
    SetCharOffset(format, 0);
    return format;
}

Schriftwahl DialogVorgabe(const Auswahlformat &auswahl, const Schrift &standard)
{
    Schriftwahl wahl = standard.Wahl();
    if (auswahl.SelFontName && !auswahl.SelFontName->isEmpty())
        wahl.font.setFamily(*auswahl.SelFontName);
    if (auswahl.SelFontSize && *auswahl.SelFontSize > 0)
        wahl.font.setPointSizeF(*auswahl.SelFontSize);
    if (auswahl.SelBold)
        wahl.font.setBold(*auswahl.SelBold);
    if (auswahl.SelItalic)
        wahl.font.setItalic(*auswahl.SelItalic);
    if (auswahl.SelStrikeThru)
        wahl.font.setStrikeOut(*auswahl.SelStrikeThru);
    if (auswahl.SelUnderline)
        wahl.font.setUnderline(*auswahl.SelUnderline);
    if (auswahl.SelColor)
        wahl.farbe = *auswahl.SelColor;
    return wahl;
}

QTextCharFormat DialogFormat(const Schriftwahl &wahl)
{
    QTextCharFormat format;
    if (const QString familie = Familie(wahl.font); !familie.isEmpty())
        format.setFontFamilies({familie});
    if (wahl.font.pointSizeF() > 0)
        format.setFontPointSize(wahl.font.pointSizeF());
    format.setFontWeight(wahl.font.bold() ? QFont::Bold : QFont::Normal);
    format.setFontItalic(wahl.font.italic());
    format.setFontStrikeOut(wahl.font.strikeOut());
    format.setFontUnderline(wahl.font.underline());
    SetTextColour(format, wahl.farbe);
    return format;
}

double Kartenfaktor(const Schrift &standard, const QFont &desktop)
{
    const double punkte = QFontInfo(desktop).pointSizeF();
    return std::max(1.0, Schriftgrad::Gross * punkte / static_cast<double>(standard.FontSize));
}

QTextCharFormat StandardFormat(const Schrift &schrift)
{
    QTextCharFormat format;
    if (!schrift.FontName.isEmpty())
        format.setFontFamilies({schrift.FontName});
    if (schrift.FontSize > 0)
        format.setFontPointSize(static_cast<double>(schrift.FontSize));
    format.setFontWeight(schrift.FontBold ? QFont::Bold : QFont::Normal);
    format.setFontItalic(schrift.FontItalic);
    format.setFontStrikeOut(schrift.FontStrikethru);
    format.setFontUnderline(schrift.FontUnderline);
    SetTextColour(format, schrift.Farbe());
    return format;
}

} // namespace paukfix
