// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QByteArray>
#include <QFont>
#include <QString>
#include <QTextDocumentFragment>

#include <memory>

class QTextCursor;
class QTextDocument;

namespace paukfix {

// RTF to and from QTextDocument, with what a rich-text box holds: font, size, bold, italic, underline,
// strike-through, colour, raised and lowered text, paragraphs with alignment, indents, spacing and tab stops.
//
// \par ends a paragraph, it does not begin one: "a\par" is the one line "a", "a\par\par" is "a" and an empty
// line. So the \par that rich-text boxes write behind the last line adds nothing to text or plain text.
//
// Colour 0, unknown colours and pure black are "automatic": the text shows in the palette's text colour and
// so stays readable on a dark ground. Other colours are kept as they are.

// Replaces the document's content, without undo, by `text`: RTF when it begins with "{\rtf" (after blanks,
// line breaks or a byte order mark), else plain text. Characters above 0x7F in the text stand for themselves.
// Never throws on bad RTF: what can be read of it is shown.
//
// Takes linear time, and so does laying out what it leaves in the document, whatever the text is:
// - False is returned when not all of the text is in the document, because it is beyond its LayoutBound. It
//   then ends in a line "[…]" and should not be stored.
// - A document that wraps at word boundaries or anywhere (Qt's default) wraps anywhere while it holds a word
//   of more than 1,000 characters; the next text sets this back.
bool SetRichText(QTextDocument &document, const QString &text);

// The same for the bytes of an RTF file: bytes above 0x7F belong to the code page of the current font. Bytes
// that are not RTF are taken as UTF-8 where they are that, else as Windows-1252.
bool SetRichTextBytes(QTextDocument &document, const QByteArray &bytes);

// True when SetRichText would read `text` as RTF.
bool IsRtf(QStringView text);

// The plain text with CR LF between lines (paragraphs and line breaks alike); no-break spaces survive.
QString PlainText(const QTextDocument &document);

// The document as RTF, 7-bit ASCII, every paragraph ended by \par. A format that names no font, size, bold or
// italic gets those that were set on the document's default font; what nobody set is left to the reader.
// Background colours, pictures, lists and tables are not kept (a table's texts become paragraphs).
QString ToRtf(const QTextDocument &document);

// Puts a text in the place of the cursor's selection, in one step that can be undone: plain text in the
// format at the cursor, its halves of surrogate pairs as U+FFFD. False, and nothing is changed, where the
// document would be beyond its LayoutBound with it. A word that gets too long is wrapped as SetRichText does.
bool InsertRichText(QTextCursor cursor, const QTextDocument &text);
bool InsertPlainText(QTextCursor cursor, const QString &text);

// Lets a document wrap between words again when its long word is gone. For each change of the text.
void ReviseWrapping(QTextDocument &document);

// Whether a document is one that SetRichText would show whole and InsertRichText would leave.
bool IsWithinBound(const QTextDocument &document);

// For the clipboard: part of a document with that default font as RTF, and back. A part of one paragraph has
// no \par at its end, so that it is pasted into a line without breaking it. Null for RTF that does not fit
// into a document.
QByteArray FragmentToRtf(const QTextDocumentFragment &fragment, const QFont &defaultFont = {});
std::unique_ptr<QTextDocument> DocumentFromRtf(const QByteArray &rtf);

} // namespace paukfix
