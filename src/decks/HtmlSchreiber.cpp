// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "HtmlSchreiber.h"

#include "CharFormat.h"
#include "RichText.h"

#include <QStringList>
#include <QTextBlock>
#include <QTextDocument>

#include <cmath>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// White space that a page would not keep as it is.
bool BrauchtWoertlich(const QString &text)
{
    if (text.isEmpty())
        return false;
    QChar davor = u'\n';
    for (const QChar c : text) {
        const bool leer = c.isSpace();
        if ((leer && c != u' ' && c != u'\n') || (leer && davor.isSpace()))
            return true;
        davor = c;
    }
    return davor.isSpace();
}

// A bracket may begin "[sound:".
QString Maskiert(const QString &text)
{
    return text.toHtmlEscaped().replace(u'[', u"&#91;"_s);
}

QString Ausrichtung(Qt::Alignment ausrichtung)
{
    if (ausrichtung.testFlag(Qt::AlignHCenter))
        return u"center"_s;
    if (ausrichtung.testFlag(Qt::AlignRight))
        return u"right"_s;
    if (ausrichtung.testFlag(Qt::AlignJustify))
        return u"justify"_s;
    return {};
}

QString Zeichenstil(const QTextCharFormat &format)
{
    QString stil;
    if (format.fontPointSize() > 0)
        stil += u"font-size:%1pt;"_s.arg(format.fontPointSize());
    const QStringList familien = format.fontFamilies().toStringList();
    if (!familien.isEmpty())
        stil += u"font-family:%1;"_s.arg(QString(familien.front()).remove(u'"').remove(u';').toHtmlEscaped());
    if (const QColor farbe = TextColour(format); farbe.isValid())
        stil += u"color:%1;"_s.arg(farbe.name());
    if (const int versatz = CharOffset(format); versatz != 0)
        stil += u"vertical-align:%1pt;"_s.arg(versatz / 20.0);
    return stil;
}

QString Stueck(const QString &text, const QTextCharFormat &format)
{
    QString html = Maskiert(text);
    const auto in = [&](bool ja, const QString &tag) {
        if (ja)
            html = u'<' + tag + u'>' + html + u"</"_s + tag + u'>';
    };
    in(format.verticalAlignment() == QTextCharFormat::AlignSuperScript, u"sup"_s);
    in(format.verticalAlignment() == QTextCharFormat::AlignSubScript, u"sub"_s);
    in(format.fontStrikeOut(), u"s"_s);
    in(format.fontUnderline(), u"u"_s);
    in(format.fontItalic(), u"i"_s);
    in(format.fontWeight() >= QFont::DemiBold, u"b"_s);
    const QString stil = Zeichenstil(format);
    return stil.isEmpty() ? html : u"<span style=\"%1\">%2</span>"_s.arg(stil, html);
}

// Lines of one alignment.
struct Gruppe
{
    QString ausrichtung;
    QStringList zeilen;
};

QString Zeilen(const Gruppe &gruppe, bool letzte, bool woertlich)
{
    QString text = gruppe.zeilen.join(woertlich ? u"\n"_s : u"<br>"_s);
    if (gruppe.zeilen.back().isEmpty() && !letzte) // the edge of an empty line breaks nothing
        text += woertlich ? u"\n"_s : u"<br>"_s;
    return text;
}

} // namespace

QString HtmlAusKartentext(const QString &reich)
{
    if (!IsRtf(reich)) {
        QString text = reich;
        text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
        if (BrauchtWoertlich(text))
            return u"<span style=\"white-space: pre-wrap\">"_s + Maskiert(text) + u"</span>"_s;
        return Maskiert(text).replace(u"\n"_s, u"<br>"_s);
    }
    QTextDocument dokument;
    dokument.setUndoRedoEnabled(false);
    SetRichText(dokument, reich);
    QString klar = PlainText(dokument);
    const bool woertlich = BrauchtWoertlich(klar.replace(u"\r\n"_s, u"\n"_s));
    std::vector<Gruppe> gruppen;
    for (QTextBlock block = dokument.begin(); block.isValid(); block = block.next()) {
        const QString wo = Ausrichtung(block.blockFormat().alignment());
        if (gruppen.empty() || gruppen.back().ausrichtung != wo)
            gruppen.push_back({wo, {}});
        QString zeile;
        for (auto teil = block.begin(); !teil.atEnd(); ++teil)
            zeile += Stueck(teil.fragment().text().replace(QChar::LineSeparator, u'\n'),
                            teil.fragment().charFormat());
        gruppen.back().zeilen << (woertlich ? zeile : zeile.replace(u"\n"_s, u"<br>"_s));
    }
    QString html;
    for (std::size_t i = 0; i < gruppen.size(); ++i) {
        const QString text = Zeilen(gruppen[i], i + 1 == gruppen.size(), woertlich);
        if (gruppen.size() == 1 && gruppen[i].ausrichtung.isEmpty())
            html += text;
        else
            html += gruppen[i].ausrichtung.isEmpty()
                        ? u"<div>"_s + text + u"</div>"_s
                        : u"<div style=\"text-align:%1\">%2</div>"_s.arg(gruppen[i].ausrichtung, text);
    }
    return woertlich ? u"<span style=\"white-space: pre-wrap\">"_s + html + u"</span>"_s : html;
}

} // namespace paukfix
