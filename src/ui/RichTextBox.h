// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "HtmlAuszug.h"

#include <QTextEdit>

#include <functional>
#include <memory>

class QSyntaxHighlighter;

namespace paukfix {

class Lupe;

// The one box that shows and takes formatted text. Tab moves the focus on.
class RichTextBox : public QTextEdit
{
public:
    explicit RichTextBox(QWidget *parent = nullptr);
    ~RichTextBox() override;

    // Shows RTF, or plain text where it is none. False when the text is too long to be shown whole: what the
    // box holds then must not be stored over it.
    bool ZeigeRichText(const QString &text);
    // The plain text with CR LF between lines.
    QString PlainText() const;
    // The text as RTF, as it is stored.
    QString RichText() const;

    // Is told in words why a text that was pasted or dropped was not taken; the box is as it was then.
    std::function<void(const QString &)> bei_Ablehnung;

    // Leaves room at the sides that the text flows around.
    void SetRand(const QMargins &rand) { setViewportMargins(rand); }

    // Shows all text, with its indents and tab stops, this many times as large. The document keeps its sizes.
    void SetFaktor(double faktor);

    // Makes the box as high as its text, up to `zeilen` lines; in a higher one the text stands in the middle.
    void SetHoechstens(int zeilen);

    bool hasHeightForWidth() const override { return hoechstens_ > 0; }

    int heightForWidth(int breite) const override;

    // Small: how much room a text gets is the layout's to say.
    QSize sizeHint() const override { return minimumSizeHint(); }

    QSize minimumSizeHint() const override;

protected:
    // Copy and paste go through RTF: between our boxes nothing is lost, and from elsewhere nothing comes in
    // that a card cannot hold.
    QMimeData *createMimeDataFromSelection() const override;
    bool canInsertFromMimeData(const QMimeData *source) const override;
    void insertFromMimeData(const QMimeData *source) override;
    void dropEvent(QDropEvent *event) override;

    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void Einmitten();
    Ablehnung Einfuegen(const QMimeData &quelle);

    std::unique_ptr<Lupe> lupe_;           // what the text is measured for
    QSyntaxHighlighter *farben_ = nullptr; // keeps the text's colours readable
    int hoechstens_ = 0;                   // lines; 0 leaves the height to the layout
    bool abgelehnt_ = false;               // what was last put in did not fit
};

} // namespace paukfix
