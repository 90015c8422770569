// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "HtmlText.h"

#include "HtmlAuszug.h"
#include "RichText.h"

#include <QHash>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextList>
#include <QTextTable>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// Pictures and style sheets that a text names are not read, from the network as little as from the disk.
class OhneQuellen final : public QTextDocument
{
protected:
    QVariant loadResource(int, const QUrl &) override { return {}; }
};

constexpr double Listeneinzug = 24.0; // pixels for each level of a list within a list

// The sizes of HTML, from "smaller" than the usual one by two steps to "larger" by four.
double Groessenstufe(int stufe)
{
    constexpr std::array<double, 7> Stufen{0.7, 0.8, 1.0, 1.2, 1.5, 2.0, 2.4};
    return Stufen.at(static_cast<std::size_t>(std::clamp(stufe + 2, 0, 6)));
}

bool HatGroesse(const QTextCharFormat &format)
{
    return format.fontPointSize() > 0 || format.hasProperty(QTextFormat::FontPixelSize);
}

QString Roemisch(int zahl)
{
    struct Ziffer
    {
        int wert;
        const char *zeichen;
    };

    constexpr std::array<Ziffer, 13> Ziffern{{{1000, "m"},
                                              {900, "cm"},
                                              {500, "d"},
                                              {400, "cd"},
                                              {100, "c"},
                                              {90, "xc"},
                                              {50, "l"},
                                              {40, "xl"},
                                              {10, "x"},
                                              {9, "ix"},
                                              {5, "v"},
                                              {4, "iv"},
                                              {1, "i"}}};
    QString text;
    for (const Ziffer &ziffer : Ziffern)
        for (; zahl >= ziffer.wert; zahl -= ziffer.wert)
            text += QLatin1String(ziffer.zeichen);
    return text;
}

// a to z, aa to az and so on.
QString Buchstaben(int zahl)
{
    QString text;
    for (; zahl > 0; zahl = (zahl - 1) / 26)
        text.prepend(QChar(u'a' + (zahl - 1) % 26));
    return text;
}

// The sign of an item and what stands between it and the text; empty where the list has no signs.
QString Listenzeichen(QTextListFormat::Style stil, int nummer)
{
    constexpr int HoechsteRoemische = 4999;
    QString zeichen = QString::number(nummer);
    switch (stil) {
    case QTextListFormat::ListDecimal:
        break;
    case QTextListFormat::ListLowerAlpha:
    case QTextListFormat::ListUpperAlpha:
        if (nummer > 0)
            zeichen = Buchstaben(nummer);
        break;
    case QTextListFormat::ListLowerRoman:
    case QTextListFormat::ListUpperRoman:
        if (nummer > 0 && nummer <= HoechsteRoemische)
            zeichen = Roemisch(nummer);
        break;
    case QTextListFormat::ListStyleUndefined:
        return {};
    default:
        return u"• "_s;
    }
    const bool gross = stil == QTextListFormat::ListUpperAlpha || stil == QTextListFormat::ListUpperRoman;
    return (gross ? zeichen.toUpper() : zeichen) + u". "_s;
}

// A bullet has the font of its item, and none of its other attributes.
QTextCharFormat Listenzeichenformat(const QTextBlock &block)
{
    const QTextCharFormat format =
        block.length() > 1 ? block.begin().fragment().charFormat() : block.charFormat();
    QTextCharFormat zeichen;
    for (const QTextFormat::Property eigenschaft :
         {QTextFormat::FontFamilies, QTextFormat::FontPointSize, QTextFormat::FontPixelSize,
          QTextFormat::FontSizeAdjustment})
        if (format.hasProperty(eigenschaft))
            zeichen.setProperty(eigenschaft, format.property(eigenschaft));
    return zeichen;
}

// Where a paragraph stands among the cells of the innermost table around it.
struct Zelle
{
    const QTextTable *tabelle = nullptr; // null outside of tables
    int zeile = 0;
    int spalte = 0;

    bool operator==(const Zelle &) const = default;
};

Zelle ZelleVon(const QTextBlock &block)
{
    const QTextTable *tabelle = QTextCursor(block).currentTable();
    if (!tabelle)
        return {};
    const QTextTableCell zelle = tabelle->cellAt(block.position());
    return {tabelle, zelle.row(), zelle.column()};
}

// Copies a document into one of paragraphs alone, in one walk.
class Abschrift
{
public:
    Abschrift(const QTextDocument &quelle, const QTextCharFormat &amCaret, const QFont &standard)
        : quelle_(quelle),
          amCaret_(amCaret),
          standard_(standard),
          text_(std::make_unique<QTextDocument>()),
          ende_(text_.get())
    {
    }

    std::unique_ptr<QTextDocument> Schreiben()
    {
        ende_.beginEditBlock();
        for (QTextBlock block = quelle_.begin(); block.isValid(); block = block.next()) {
            const Zelle zelle = ZelleVon(block);
            if (!RandEinerTabelle(block, zelle))
                Absatz(block, zelle);
            davor_ = zelle;
        }
        ende_.endEditBlock();
        return std::move(text_);
    }

private:
    // The toolkit has an empty paragraph before a table that begins a document, behind one that ends it, and
    // between two.
    bool RandEinerTabelle(const QTextBlock &block, const Zelle &zelle) const
    {
        if (block.length() > 1 || zelle.tabelle)
            return false;
        const QTextBlock danach = block.next();
        const bool vorTabelle = danach.isValid() && ZelleVon(danach).tabelle;
        return davor_.tabelle ? vorTabelle || !danach.isValid() : vorTabelle && !block.previous().isValid();
    }

    void Absatz(const QTextBlock &block, const Zelle &zelle)
    {
        const bool inZeile = zelle.tabelle && zelle.tabelle == davor_.tabelle &&
                             zelle.zeile == davor_.zeile && zelle.spalte > davor_.spalte;
        if (inZeile) {
            tabs_ += zelle.spalte - davor_.spalte;
        } else {
            AbsatzBeginnen(block);
            // Cells may reach down from the rows above.
            tabs_ = zelle.tabelle && zelle != davor_ ? zelle.spalte : 0;
        }
        Zeichen(block);
        for (auto teil = block.begin(); !teil.atEnd(); ++teil)
            Text(teil.fragment().text(), teil.fragment().charFormat());
    }

    void AbsatzBeginnen(const QTextBlock &block)
    {
        QTextBlockFormat format = block.blockFormat();
        format.setObjectIndex(-1);
        format.setIndent(0);
        if (const QTextList *liste = block.textList())
            format.setLeftMargin(format.leftMargin() +
                                 Listeneinzug * (std::max(liste->format().indent(), 1) - 1));
        const QTextCharFormat schrift = MitSchrift(block.charFormat());
        if (begonnen_)
            ende_.insertBlock(format, schrift);
        else {
            ende_.setBlockFormat(format);
            ende_.setBlockCharFormat(schrift);
        }
        begonnen_ = true;
    }

    void Zeichen(const QTextBlock &block)
    {
        const QTextList *liste = block.textList();
        if (!liste)
            return;
        const QTextListFormat format = liste->format();
        auto nummer = nummern_.find(liste);
        if (nummer == nummern_.end())
            nummer = nummern_.insert(liste, Listenanfang(format.numberPrefix()));
        Text(Listenzeichen(format.style(), (*nummer)++), Listenzeichenformat(block));
    }

    void Text(QString text, const QTextCharFormat &format)
    {
        text.remove(QChar::ObjectReplacementCharacter);
        if (!text.isEmpty())
            ende_.insertText(QString(std::exchange(tabs_, 0), u'\t') + text, MitSchrift(format));
    }

    QTextCharFormat MitSchrift(QTextCharFormat format) const
    {
        format.setObjectIndex(-1);
        if (format.fontFamilies().toStringList().isEmpty() && amCaret_.hasProperty(QTextFormat::FontFamilies))
            format.setFontFamilies(amCaret_.fontFamilies().toStringList());
        const int stufe = format.intProperty(QTextFormat::FontSizeAdjustment);
        format.clearProperty(QTextFormat::FontSizeAdjustment);
        if (HatGroesse(format))
            return format;
        const double groesse =
            amCaret_.fontPointSize() > 0 ? amCaret_.fontPointSize() : standard_.pointSizeF();
        if (amCaret_.fontPointSize() > 0 || (stufe != 0 && groesse > 0))
            format.setFontPointSize(groesse * Groessenstufe(stufe));
        return format;
    }

    const QTextDocument &quelle_;
    const QTextCharFormat &amCaret_;
    const QFont &standard_;
    std::unique_ptr<QTextDocument> text_;
    QTextCursor ende_;
    bool begonnen_ = false;
    Zelle davor_;
    int tabs_ = 0;                          // before the next text; none are at the end of a row
    QHash<const QTextList *, int> nummern_; // of the next item
};

} // namespace

Angebot TextAusHtml(const QString &html, const QTextCharFormat &amCaret, const QFont &standard)
{
    const BereitesHtml auszug = HtmlAuszug(html);
    if (auszug.ablehnung != Ablehnung::Keine)
        return {.text = nullptr, .ablehnung = auszug.ablehnung};
    OhneQuellen quelle;
    quelle.setUndoRedoEnabled(false);
    quelle.setHtml(auszug.html);
    if (!IsWithinBound(quelle))
        return {.text = nullptr, .ablehnung = Ablehnung::ZuGross};
    return {.text = Abschrift(quelle, amCaret, standard).Schreiben()};
}

} // namespace paukfix
