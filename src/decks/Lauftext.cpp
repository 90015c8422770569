// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Lauftext.h"

#include "CharFormat.h"
#include "RichText.h"
#include "RtfOutput.h"
#include "RtfTabs.h"

#include <QColor>
#include <QTextBlockFormat>
#include <QTextCharFormat>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextOption>

#include <algorithm>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// So long a text is laid out whatever is in it.
constexpr qsizetype ImmerErlaubt = 40'000;
constexpr qsizetype Laengster = 1'000'000;
// So long a formatted one can be, however large its letters are.
constexpr qsizetype KurzerFormatierter = 10'000;

QTextCharFormat Zeichenformat(const Laufformat &lauf, const QStringList &schriften)
{
    QTextCharFormat format;
    if (lauf.fett)
        format.setFontWeight(QFont::Bold);
    if (lauf.kursiv)
        format.setFontItalic(true);
    if (lauf.unterstrichen)
        format.setFontUnderline(true);
    if (lauf.durchgestrichen)
        format.setFontStrikeOut(true);
    if (lauf.lage != 0)
        format.setVerticalAlignment(lauf.lage > 0 ? QTextCharFormat::AlignSuperScript
                                                  : QTextCharFormat::AlignSubScript);
    if (lauf.halbpunkte > 0)
        format.setFontPointSize(lauf.halbpunkte / 2.0);
    if (lauf.versatz != 0)
        SetCharOffset(format, lauf.versatz);
    if (lauf.schrift >= 0)
        format.setFontFamilies({schriften.at(lauf.schrift)});
    if (lauf.farbe)
        SetTextColour(format, QColor::fromRgb(*lauf.farbe));
    return format;
}

Qt::Alignment AlsAlignment(Ausrichtung ausrichtung)
{
    switch (ausrichtung) {
    case Ausrichtung::Mitte:
        return Qt::AlignHCenter;
    case Ausrichtung::Rechts:
        return Qt::AlignRight;
    case Ausrichtung::Block:
        return Qt::AlignJustify;
    default:
        return Qt::AlignLeft;
    }
}

void Fuellen(QTextDocument &dokument, const Lauftext &text)
{
    QTextCursor cursor(&dokument);
    cursor.beginEditBlock();
    qsizetype von = 0;
    std::size_t lauf = 0;
    std::size_t absatz = 0;
    QTextBlockFormat block;
    const qsizetype ende = text.text.size();
    const auto ausrichten = [&] {
        while (absatz < text.absaetze.size() && text.absaetze[absatz].von <= von)
            block.setAlignment(AlsAlignment(text.absaetze[absatz++].ausrichtung));
        cursor.setBlockFormat(block);
    };
    if (!text.absaetze.empty())
        ausrichten();
    while (von < ende) {
        while (lauf + 1 < text.laeufe.size() && text.laeufe[lauf + 1].von <= von)
            ++lauf;
        qsizetype bis = lauf + 1 < text.laeufe.size() ? text.laeufe[lauf + 1].von : ende;
        const qsizetype umbruch = text.text.indexOf(u'\n', von);
        const bool bricht = umbruch >= 0 && umbruch < bis;
        bis = bricht ? umbruch : bis;
        const bool formatiert = lauf < text.laeufe.size() && text.laeufe[lauf].von <= von;
        const QTextCharFormat format =
            formatiert ? Zeichenformat(text.laeufe[lauf].format, text.schriften) : QTextCharFormat();
        if (bis > von)
            cursor.insertText(text.text.mid(von, bis - von), format);
        von = bis;
        if (bricht) {
            ++von;
            cursor.insertBlock(block, format);
            if (!text.absaetze.empty())
                ausrichten();
        }
    }
    cursor.endEditBlock();
}

// What a document keeps as it is, character for character.
bool OhneBesondere(const QString &text)
{
    return std::none_of(text.begin(), text.end(), [](QChar zeichen) {
        const char16_t c = zeichen.unicode();
        return (c < 0x20 && c != u'\n') || (c >= 0x7F && c <= 0xA0) || c == 0x2028 || c == 0x2029 ||
               c >= 0xFDD0;
    });
}

RtfCharState Zustand(const Laufformat &lauf, const QStringList &schriften)
{
    RtfCharState zustand;
    zustand.bold = lauf.fett;
    zustand.italic = lauf.kursiv;
    zustand.strikeOut = lauf.durchgestrichen;
    if (lauf.unterstrichen)
        zustand.underline = QTextCharFormat::SingleUnderline;
    if (lauf.versatz != 0)
        zustand.offset = lauf.versatz;
    else if (lauf.lage != 0)
        zustand.script = lauf.lage > 0 ? QTextCharFormat::AlignSuperScript : QTextCharFormat::AlignSubScript;
    zustand.halfPoints = lauf.halbpunkte;
    if (lauf.schrift >= 0)
        zustand.family = schriften.at(lauf.schrift);
    zustand.colour = lauf.farbe.value_or(0) & RGB_MASK;
    return zustand;
}

// What ToRtf writes of a document that is filled with it, but without one, which costs ten times as much.
QString AlsRtf(const Lauftext &text)
{
    RtfOutput rtf(UsualTabWidth);
    const QStringView alles(text.text);
    std::size_t lauf = 0;
    std::size_t absatz = 0;
    const auto format = [&](qsizetype von) {
        while (lauf + 1 < text.laeufe.size() && text.laeufe[lauf + 1].von <= von)
            ++lauf;
        return lauf < text.laeufe.size() && text.laeufe[lauf].von <= von
                   ? Zustand(text.laeufe[lauf].format, text.schriften)
                   : RtfCharState();
    };
    Qt::Alignment ausrichtung = Qt::AlignLeft;
    RtfCharState davor; // at the end of the line before
    for (qsizetype von = 0; von <= alles.size(); ++von) {
        while (absatz < text.absaetze.size() && text.absaetze[absatz].von <= von)
            ausrichtung = AlsAlignment(text.absaetze[absatz++].ausrichtung);
        rtf.BeginParagraph(ausrichtung);
        const qsizetype umbruch = alles.indexOf(u'\n', von);
        const qsizetype ende = umbruch < 0 ? alles.size() : umbruch;
        if (von == ende)
            rtf.Format(davor);
        while (von < ende) {
            rtf.Format(format(von));
            const qsizetype bis =
                lauf + 1 < text.laeufe.size() ? std::min(ende, text.laeufe[lauf + 1].von) : ende;
            rtf.Characters(alles.mid(von, bis - von));
            von = bis;
        }
        rtf.EndParagraph();
        davor = format(ende);
    }
    return QString::fromLatin1(rtf.Whole());
}

QString MitCrLf(const QString &text)
{
    const qsizetype zeilen = text.count(u'\n');
    if (zeilen == 0)
        return text;
    QString fertig;
    fertig.reserve(text.size() + zeilen);
    qsizetype von = 0;
    for (qsizetype bis = text.indexOf(u'\n'); bis >= 0; bis = text.indexOf(u'\n', von)) {
        fertig += QStringView(text).mid(von, bis - von);
        fertig += u"\r\n";
        von = bis + 1;
    }
    return fertig += QStringView(text).mid(von);
}

} // namespace

bool Lauftext::IstFormatiert() const
{
    return !absaetze.empty() || std::any_of(laeufe.begin(), laeufe.end(),
                                            [](const Lauf &lauf) { return lauf.format != Laufformat(); });
}

std::optional<Kartentext> AlsKartentext(const Lauftext &text)
{
    if (text.text.size() > Laengster)
        return std::nullopt;
    const QString klar = MitCrLf(text.text);
    const bool formatiert = text.IstFormatiert() || IsRtf(text.text);
    if (!formatiert && text.text.size() <= ImmerErlaubt)
        return Kartentext{klar, klar};
    if (formatiert && text.text.size() <= KurzerFormatierter && OhneBesondere(text.text))
        return Kartentext{AlsRtf(text), klar};
    QTextDocument dokument;
    dokument.setUndoRedoEnabled(false);
    QTextOption option = dokument.defaultTextOption();
    option.setTabStopDistance(Pixels(UsualTabWidth));
    dokument.setDefaultTextOption(option);
    Fuellen(dokument, text);
    if (!IsWithinBound(dokument))
        return std::nullopt;
    return Kartentext{formatiert ? ToRtf(dokument) : klar, klar};
}

} // namespace paukfix
