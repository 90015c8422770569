// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Lauftext.h"

#include "CharFormat.h"
#include "RichText.h"

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
constexpr double Tabulator = 48; // pixels: half an inch, which RTF takes for granted

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
    QTextDocument dokument;
    dokument.setUndoRedoEnabled(false);
    QTextOption option = dokument.defaultTextOption();
    option.setTabStopDistance(Tabulator);
    dokument.setDefaultTextOption(option);
    Fuellen(dokument, text);
    if (!IsWithinBound(dokument))
        return std::nullopt;
    return Kartentext{formatiert ? ToRtf(dokument) : klar, klar};
}

} // namespace paukfix
