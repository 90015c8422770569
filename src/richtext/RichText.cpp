// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "RichText.h"

#include "RtfReader.h"
#include "RtfWriter.h"

#include <QStringDecoder>
#include <QTextDocument>

namespace {
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

void SetPlainText(QTextDocument &document, QString text)
{
    if (text.startsWith(QChar::ByteOrderMark))
        text.remove(0, 1);
    text.removeIf([](QChar c) { return c.isNull() || c == u'\uFDD0' || c == u'\uFDD1' || c == u'\uFFFC'; });
    text.replace(u'\v', QChar::LineSeparator);
    text.replace(u'\f', QChar::ParagraphSeparator);
    document.setPlainText(text);
}

QString Decode(const QByteArray &bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8);
    const QString text = utf8(bytes);
    return utf8.hasError() ? QStringDecoder("windows-1252")(bytes) : text;
}
} // namespace

void SetRichText(QTextDocument &document, const QString &text)
{
    const FreshContent fresh(document);
    const qsizetype start = RtfStart(text);
    if (start < 0)
        SetPlainText(document, text);
    else
        RtfReader(document, QStringView(text).mid(start), RtfReader::Input::Text).Read();
}

void SetRichTextBytes(QTextDocument &document, const QByteArray &bytes)
{
    const FreshContent fresh(document);
    const QString text = QString::fromLatin1(bytes);
    const qsizetype start = RtfStart(text);
    if (start < 0)
        SetPlainText(document, Decode(bytes));
    else
        RtfReader(document, QStringView(text).mid(start), RtfReader::Input::Bytes).Read();
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

QByteArray FragmentToRtf(const QTextDocumentFragment &fragment)
{
    QTextDocument document;
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
