// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "RichText.h"

#include "LayoutBound.h"
#include "RtfReader.h"
#include "RtfTabs.h"
#include "RtfWriter.h"

#include <QStringDecoder>
#include <QTextDocument>

#include <algorithm>
#include <optional>

namespace paukfix {

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

qsizetype LongestWord(const QString &text)
{
    qsizetype longest = 0;
    qsizetype length = 0;
    for (const QChar c : text) {
        const bool separates = c != QChar::Nbsp && c.isSpace();
        length = separates ? 0 : length + 1;
        longest = std::max(longest, length);
    }
    return longest;
}

// Laying out takes the square of a word's length where lines break between words and, in words that are too
// long, anywhere. A document with absurd words breaks its lines anywhere at once, which does not.
std::optional<QTextOption> OtherWrapping(const QTextDocument &document, bool absurd)
{
    QTextOption option = document.defaultTextOption();
    if (option.wrapMode() != (absurd ? QTextOption::WrapAtWordBoundaryOrAnywhere : QTextOption::WrapAnywhere))
        return std::nullopt;
    option.setWrapMode(absurd ? QTextOption::WrapAnywhere : QTextOption::WrapAtWordBoundaryOrAnywhere);
    return option;
}

void SetWrapping(QTextDocument &document, qsizetype longestWord)
{
    if (const auto option = OtherWrapping(document, longestWord > LongWord)) {
        document.clear(); // nothing is laid out twice
        document.setDefaultTextOption(*option);
    }
}

// Makes a document ready for a text in the place of the selection. False where it cannot take it.
bool MakeRoom(const QTextCursor &cursor, const QTextDocument &text)
{
    QTextDocument &document = *cursor.document();
    LayoutBound bound(document.defaultFont());
    bound.Add(document, cursor.selectionStart(), cursor.selectionEnd());
    bound.Add(text);
    if (bound.isExceeded())
        return false;
    const QString before = document.toRawText();
    const QString after =
        before.left(cursor.selectionStart()) + text.toRawText() + before.mid(cursor.selectionEnd());
    if (LongestWord(after) > LongWord) {
        if (const auto option = OtherWrapping(document, true))
            document.setDefaultTextOption(*option);
    }
    return true;
}

bool Show(QTextDocument &document, QStringView text, RtfReader::Input input)
{
    const FreshContent fresh(document);
    qsizetype longestWord = 0;
    if (text.size() > LongWord) {
        QTextDocument unseen;
        Fill(unseen, text, input);
        longestWord = LongestWord(unseen.toRawText());
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
    for (const QChar c : raw)
        if (c == QChar::ParagraphSeparator || c == QChar::LineSeparator || c == u'\uFDD0' || c == u'\uFDD1')
            text += u"\r\n";
        else if (c != QChar::ObjectReplacementCharacter)
            text += c;
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
    QTextOption option = document.defaultTextOption();
    option.setTabStopDistance(Pixels(UsualTabWidth));
    document.setDefaultTextOption(option);
    QTextCursor(&document).insertFragment(fragment);
    const bool oneLine = document.blockCount() == 1;
    return RtfWriter(document).Write(oneLine ? RtfWriter::LastParagraph::Open
                                             : RtfWriter::LastParagraph::Ended);
}

std::unique_ptr<QTextDocument> DocumentFromRtf(const QByteArray &rtf)
{
    auto document = std::make_unique<QTextDocument>();
    const FreshContent fresh(*document);
    if (!Fill(*document, QString::fromLatin1(rtf), RtfReader::Input::Bytes))
        return nullptr;
    return document;
}

void ReviseWrapping(QTextDocument &document)
{
    const auto option = OtherWrapping(document, false);
    if (option && LongestWord(document.toRawText()) <= LongWord)
        document.setDefaultTextOption(*option);
}

bool IsWithinBound(const QTextDocument &document)
{
    LayoutBound bound(document.defaultFont());
    bound.Add(document);
    return !bound.isExceeded();
}

bool InsertRichText(QTextCursor cursor, const QTextDocument &text)
{
    if (!MakeRoom(cursor, text))
        return false;
    cursor.insertFragment(QTextDocumentFragment(&text));
    return true;
}

bool InsertPlainText(QTextCursor cursor, const QString &text)
{
    QTextDocument lines;
    if (!FillWithPlainText(lines, text) || !MakeRoom(cursor, lines))
        return false;
    cursor.insertText(lines.toRawText());
    return true;
}

} // namespace paukfix
