// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Zwischenablage.h"

#include "RichText.h"

#include <QMimeData>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextList>

#include <algorithm>
#include <array>

namespace {

const std::array<QString, 2> RtfArten{QStringLiteral("text/rtf"), QStringLiteral("application/rtf")};

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

QTextCharFormat MitSchrift(QTextCharFormat format, const QTextCharFormat &amCaret, const QFont &standard)
{
    if (format.fontFamilies().toStringList().isEmpty() && amCaret.hasProperty(QTextFormat::FontFamilies))
        format.setFontFamilies(amCaret.fontFamilies().toStringList());
    const int stufe = format.intProperty(QTextFormat::FontSizeAdjustment);
    format.clearProperty(QTextFormat::FontSizeAdjustment);
    if (HatGroesse(format))
        return format;
    const double groesse = amCaret.fontPointSize() > 0 ? amCaret.fontPointSize() : standard.pointSizeF();
    if (amCaret.fontPointSize() > 0 || (stufe != 0 && groesse > 0))
        format.setFontPointSize(groesse * Groessenstufe(stufe));
    return format;
}

// A bullet has the font of its item, and none of its other attributes.
QTextCharFormat Listenzeichenformat(const QTextBlock &block)
{
    const QTextCharFormat format =
        block.length() > 1 ? block.begin().fragment().charFormat() : block.charFormat();
    QTextCharFormat zeichen;
    for (const QTextFormat::Property eigenschaft :
         {QTextFormat::FontFamilies, QTextFormat::FontPointSize, QTextFormat::FontPixelSize,
          QTextFormat::FontSizeAdjustment}) {
        if (format.hasProperty(eigenschaft))
            zeichen.setProperty(eigenschaft, format.property(eigenschaft));
    }
    return zeichen;
}

// From the end, so that the numbers of those before hold.
void ListenAusschreiben(QTextDocument &dokument)
{
    for (QTextBlock block = dokument.lastBlock(); block.isValid(); block = block.previous()) {
        QTextList *liste = block.textList();
        if (liste == nullptr)
            continue;
        const auto stil = liste->format().style();
        const int ebene = std::max(liste->format().indent(), 1);
        QString zeichen;
        if (stil <= QTextListFormat::ListDecimal)
            zeichen = liste->itemText(block);
        else if (stil < QTextListFormat::ListStyleUndefined)
            zeichen = QStringLiteral("•");
        liste->remove(block);
        QTextBlockFormat format = block.blockFormat();
        format.setIndent(0);
        format.setLeftMargin(format.leftMargin() + Listeneinzug * (ebene - 1));
        QTextCursor cursor(block);
        cursor.setBlockFormat(format);
        if (!zeichen.isEmpty())
            cursor.insertText(zeichen + u' ', Listenzeichenformat(block));
    }
}

void SchriftSetzen(QTextDocument &dokument, const QTextCharFormat &amCaret, const QFont &standard)
{
    struct Stueck
    {
        int von, bis;
        QTextCharFormat format;
    };

    QList<Stueck> stuecke;
    for (QTextBlock block = dokument.begin(); block.isValid(); block = block.next()) {
        QTextCursor(block).setBlockCharFormat(MitSchrift(block.charFormat(), amCaret, standard));
        for (auto teil = block.begin(); !teil.atEnd(); ++teil) {
            const QTextFragment fragment = teil.fragment();
            stuecke.append({fragment.position(), fragment.position() + fragment.length(),
                            MitSchrift(fragment.charFormat(), amCaret, standard)});
        }
    }
    QTextCursor cursor(&dokument);
    for (const Stueck &stueck : stuecke) {
        cursor.setPosition(stueck.von);
        cursor.setPosition(stueck.bis, QTextCursor::KeepAnchor);
        cursor.setCharFormat(stueck.format);
    }
}

QString Klartext(const QTextDocumentFragment &fragment)
{
    QTextDocument dokument;
    QTextCursor(&dokument).insertFragment(fragment);
    return PlainText(dokument).replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
}

} // namespace

std::unique_ptr<QMimeData> MimeVon(const QTextDocumentFragment &fragment, const QFont &schrift)
{
    auto mime = std::make_unique<QMimeData>();
    const QByteArray rtf = FragmentToRtf(fragment, schrift);
    for (const QString &art : RtfArten)
        mime->setData(art, rtf);
    mime->setHtml(fragment.toHtml());
    mime->setText(Klartext(fragment));
    return mime;
}

std::optional<QTextDocumentFragment> FragmentVon(const QMimeData &mime, const QTextCharFormat &amCaret,
                                                 const QFont &standard)
{
    for (const QString &art : RtfArten) {
        const QByteArray rtf = mime.data(art);
        if (IsRtf(QString::fromLatin1(rtf.left(256))))
            return FragmentFromRtf(rtf);
    }
    if (!mime.hasHtml())
        return std::nullopt;
    OhneQuellen dokument;
    dokument.setHtml(mime.html());
    ListenAusschreiben(dokument);
    SchriftSetzen(dokument, amCaret, standard);
    return FragmentFromRtf(FragmentToRtf(QTextDocumentFragment(&dokument)));
}

bool HatText(const QMimeData &mime)
{
    return mime.hasText() || mime.hasHtml() || mime.hasFormat(RtfArten[0]) || mime.hasFormat(RtfArten[1]);
}
