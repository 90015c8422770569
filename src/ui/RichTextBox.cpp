// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "RichTextBox.h"

#include "Farben.h"
#include "RichText.h"
#include "Zwischenablage.h"

#include <QEvent>
#include <QMimeData>
#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>
#include <cmath>
#include <memory>

RichTextBox::RichTextBox(QWidget *parent) : QTextEdit(parent)
{
    setTabChangesFocus(true);
    connect(document(), &QTextDocument::contentsChanged, this, [this] { FarbenAnpassen(); });
}

void RichTextBox::ZeigeRichText(const QString &text)
{
    SetRichText(*document(), text);
    moveCursor(QTextCursor::Start);
    Einmitten();
}

QString RichTextBox::PlainText() const
{
    return ::PlainText(*document());
}

QString RichTextBox::RichText() const
{
    return ToRtf(*document());
}

QMimeData *RichTextBox::createMimeDataFromSelection() const
{
    return MimeVon(textCursor().selection()).release();
}

bool RichTextBox::canInsertFromMimeData(const QMimeData *source) const
{
    return HatText(*source);
}

void RichTextBox::insertFromMimeData(const QMimeData *source)
{
    if (isReadOnly())
        return;
    if (acceptRichText()) {
        if (const auto fragment = FragmentVon(*source)) {
            textCursor().insertFragment(*fragment);
            ensureCursorVisible();
            return;
        }
    }
    QMimeData text; // takes the format at the caret
    text.setText(source->text());
    QTextEdit::insertFromMimeData(&text);
}

QSize RichTextBox::minimumSizeHint() const
{
    const int zeile = fontMetrics().lineSpacing();
    return {zeile * 6, zeile + 2 * frameWidth()};
}

void RichTextBox::changeEvent(QEvent *event)
{
    QTextEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        FarbenAnpassen();
}

void RichTextBox::SetHoechstens(int zeilen)
{
    hoechstens_ = zeilen;
    QSizePolicy regel = sizePolicy();
    regel.setHeightForWidth(zeilen > 0);
    setSizePolicy(regel);
    Einmitten();
}

int RichTextBox::heightForWidth(int breite) const
{
    const int rand = 2 * frameWidth();
    const int hoechstens = fontMetrics().lineSpacing() * hoechstens_;
    // No need to lay out a text that is far too long anyway.
    if (document()->characterCount() > hoechstens_ * 300)
        return hoechstens + rand;
    const std::unique_ptr<QTextDocument> probe(document()->clone());
    probe->setTextWidth(breite - rand);
    return std::min(static_cast<int>(std::ceil(probe->size().height())), hoechstens) + rand;
}

void RichTextBox::resizeEvent(QResizeEvent *event)
{
    QTextEdit::resizeEvent(event);
    Einmitten();
}

void RichTextBox::Einmitten()
{
    if (hoechstens_ == 0)
        return;
    // Only the height is taken away, so the text keeps its lines and this ends after one round.
    const int frei = contentsRect().height() - static_cast<int>(std::ceil(document()->size().height()));
    const QMargins rand(0, std::max(frei / 2, 0), 0, 0);
    if (viewportMargins() != rand)
        setViewportMargins(rand);
}

void RichTextBox::FarbenAnpassen()
{
    const QColor grund = palette().color(QPalette::Base);
    QList<ExtraSelection> angepasst;
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        for (auto teil = block.begin(); !teil.atEnd(); ++teil) {
            const QTextCharFormat format = teil.fragment().charFormat();
            if (!format.hasProperty(QTextFormat::ForegroundBrush) ||
                format.hasProperty(QTextFormat::BackgroundBrush))
                continue;
            const QColor farbe = format.foreground().color();
            const QColor lesbar = Farben::Lesbar(farbe, grund);
            if (lesbar == farbe)
                continue;
            ExtraSelection auswahl;
            auswahl.cursor = QTextCursor(document());
            auswahl.cursor.setPosition(teil.fragment().position());
            auswahl.cursor.setPosition(teil.fragment().position() + teil.fragment().length(),
                                       QTextCursor::KeepAnchor);
            auswahl.format.setForeground(lesbar);
            angepasst.append(auswahl);
        }
    }
    if (!angepasst.isEmpty() || !extraSelections().isEmpty())
        setExtraSelections(angepasst);
}
