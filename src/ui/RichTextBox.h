// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "HtmlAuszug.h"

#include <QList>
#include <QTextCharFormat>
#include <QTextEdit>

#include <functional>
#include <memory>

namespace paukfix {

class Lupe;

// How a part of a text looks for a while: the text itself does not change.
struct Textmarke
{
    qsizetype anfang = 0; // in the document
    qsizetype laenge = 0;
    QTextCharFormat format;
};

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
    virtual void SetRand(const QMargins &rand) { setViewportMargins(rand); }

    // Of the text that is shown; another text has none.
    void SetMarken(const QList<Textmarke> &marken);

    // Shows all text, with its indents and tab stops, this many times as large. The document keeps its sizes.
    void SetFaktor(double faktor);
    // Of a line in the font that the box was given, as large as it is shown.
    int Zeilenhoehe() const;
    // How wide this box would show `text` by itself, and how high in `breite` pixels, `faktor` times as
    // large.
    QSizeF Bedarf(const QTextDocument &text, int breite, double faktor) const;

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
    class Farbausgleich;

    void Einmitten();
    Ablehnung Einfuegen(const QMimeData &quelle);

    std::unique_ptr<Lupe> lupe_;      // what the text is measured for
    Farbausgleich *farben_ = nullptr; // keeps the text's colours readable, and draws its marks
    int hoechstens_ = 0;              // lines; 0 leaves the height to the layout
    bool abgelehnt_ = false;          // what was last put in did not fit
};

} // namespace paukfix
