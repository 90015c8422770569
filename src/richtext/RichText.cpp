// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "RichText.h"

#include "RtfReader.h"
#include "RtfWriter.h"

#include <QStringDecoder>
#include <QTextDocument>

#include <algorithm>

namespace {
constexpr qsizetype LongWord = 1'000;

// Filling a document is no step that can be undone, and leaves it unchanged in the sense of isModified().
class FreshContent
{
public:
    explicit FreshContent(QTextDocument &document) : document_(document), undo_(document.isUndoRedoEnabled())
    {
        document_.setUndoRedoEnabled(false);
    }

    ~FreshContent()
    {
        document_.setUndoRedoEnabled(undo_);
        document_.setModified(false);
    }

    Q_DISABLE_COPY_MOVE(FreshContent)

private:
    QTextDocument &document_;
    bool undo_;
};

// Where the RTF begins, or -1 for text that is none.
qsizetype RtfStart(QStringView text)
{
    qsizetype start = 0;
    while (start < text.size() && (text[start].isSpace() || text[start] == QChar::ByteOrderMark))
        ++start;
    return text.mid(start).startsWith(u"{\\rtf") ? start : -1;
}

// These are true when all of the text is in the document.

bool FillWithPlainText(QTextDocument &document, QStringView text)
{
    RtfDocumentBuilder builder(document, RtfDocumentBuilder::Formats::None);
    if (text.startsWith(QChar::ByteOrderMark))
        text = text.mid(1);
    bool afterCarriageReturn = false;
    for (const QChar c : text) {
        if (builder.isFull())
            break;
        const bool endsLine = c == u'\r' || c == u'\n' || c == u'\f' || c == QChar::ParagraphSeparator;
        if (!endsLine)
            builder.Append(c.unicode(), {});
        else if (c != u'\n' || !afterCarriageReturn)
            builder.EndParagraph({}, {});
        afterCarriageReturn = c == u'\r';
    }
    builder.EndParagraph({}, {});
    builder.Finish({}, {});
    return !builder.isFull();
}

bool Fill(QTextDocument &document, QStringView text, RtfReader::Input input)
{
    const qsizetype start = RtfStart(text);
    return start < 0 ? FillWithPlainText(document, text) : RtfReader(document, text.mid(start), input).Read();
}

qsizetype LongestWord(const QTextDocument &document)
{
    qsizetype longest = 0;
    qsizetype length = 0;
    const QString text = document.toRawText();
    for (const QChar c : text) {
        const bool separates = c != QChar::Nbsp && c.isSpace();
        length = separates ? 0 : length + 1;
        longest = std::max(longest, length);
    }
    return longest;
}

// Laying out takes the square of a word's length where lines break between words and, in words that are too
// long, anywhere. A document with absurd words breaks its lines anywhere at once, which does not.
void SetWrapping(QTextDocument &document, qsizetype longestWord)
{
    const bool absurd = longestWord > LongWord;
    QTextOption option = document.defaultTextOption();
    if (option.wrapMode() != (absurd ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::WrapAnywhere))
        return;
    option.setWrapMode(absurd ? QTextOption::WrapAnywhere : QTextOption::WrapAtWordBoundaryOrAnywhere);
    document.clear(); // nothing is laid out twice
    document.setDefaultTextOption(option);
}

bool Show(QTextDocument &document, QStringView text, RtfReader::Input input)
{
    const FreshContent fresh(document);
    qsizetype longestWord = 0;
    if (text.size() > LongWord) {
        QTextDocument unseen;
        Fill(unseen, text, input);
        longestWord = LongestWord(unseen);
    }
    SetWrapping(document, longestWord);
    return Fill(document, text, input);
}

QString Decode(const QByteArray &bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8(bytes);
    return utf8.hasError() ? QStringDecoder("windows-1252")(bytes) : text;
}
} // namespace

bool SetRichText(QTextDocument &document, const QString &text)
{
    return Show(document, text, RtfReader::Input::Text);
}

bool SetRichTextBytes(QTextDocument &document, const QByteArray &bytes)
{
    const QString text = QString::fromLatin1(bytes);
    return Show(document, IsRtf(text) ? text : Decode(bytes), RtfReader::Input::Bytes);
}

bool IsRtf(QStringView text)
{
    return RtfStart(text) >= 0;
}

QString PlainText(const QTextDocument &document)
{
    QString text;
    const QString raw = document.toRawText();
    text.reserve(raw.size());
    for (const QChar c : raw) {
        if (c == QChar::ParagraphSeparator || c == QChar::LineSeparator || c == u'\uFDD0' || c == u'\uFDD1')
            text += u"\r\n";
        else if (c != QChar::ObjectReplacementCharacter)
            text += c;
    }
    return text;
}

QString ToRtf(const QTextDocument &document)
{
    return QString::fromLatin1(RtfWriter(document).Write(RtfWriter::LastParagraph::Ended));
}

QByteArray FragmentToRtf(const QTextDocumentFragment &fragment, const QFont &defaultFont)
{
    QTextDocument document;
    document.setDefaultFont(defaultFont);
    QTextCursor(&document).insertFragment(fragment);
    const bool oneLine = document.blockCount() == 1;
    return RtfWriter(document).Write(oneLine ? RtfWriter::LastParagraph::Open
                                             : RtfWriter::LastParagraph::Ended);
}

QTextDocumentFragment FragmentFromRtf(const QByteArray &rtf)
{
    QTextDocument document;
    SetRichTextBytes(document, rtf);
    return QTextDocumentFragment(&document);
}
