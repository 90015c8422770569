// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "RichTextBox.h"

#include "CharFormat.h"
#include "Farben.h"
#include "Lupe.h"
#include "RichText.h"
#include "Zwischenablage.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QDropEvent>
#include <QEvent>
#include <QMimeData>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QSyntaxHighlighter>
#include <QTextBlock>
#include <QTextDocument>

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

QString Grund(Ablehnung ablehnung)
{
    if (ablehnung == Ablehnung::ZuVerschachtelt)
        return u"Dieser Text ist zu verschachtelt und wurde nicht eingefügt: Zu viele Teile liegen "
               u"ineinander, "
               u"stehen in Listen oder haben eigene Formate. Fügen Sie ihn in Stücken ein, oder erst in ein "
               u"Programm, das nur einfachen Text kennt, und von dort hierher."_s;
    return u"Dieser Text ist zu groß und wurde nicht eingefügt. Ein Feld fasst etwa 1.000.000 "
           u"Zeichen, 80.000 Zeilen oder 80.000 Wechsel der Schrift."_s;
}

} // namespace

// Draws text in a colour that cannot be read on the box's ground in a lighter or darker shade of it; the text
// itself keeps its colour. Marks are drawn over that.
class RichTextBox::Farbausgleich final : public QSyntaxHighlighter
{
public:
    Farbausgleich(QTextDocument *document, const QWidget &box) : QSyntaxHighlighter(document), box_(box) {}

    QList<Textmarke> marken;

protected:
    void highlightBlock(const QString &text) override
    {
        const QColor grund = box_.palette().color(QPalette::Base);
        for (auto teil = currentBlock().begin(); !teil.atEnd(); ++teil) {
            const QTextCharFormat format = teil.fragment().charFormat();
            const QColor farbe = TextColour(format);
            if (!farbe.isValid() || format.hasProperty(QTextFormat::BackgroundBrush))
                continue;
            const QColor lesbar = Farben::Lesbar(farbe, grund);
            if (lesbar != farbe)
                setFormat(teil.fragment().position() - currentBlock().position(), teil.fragment().length(),
                          lesbar);
        }
        for (const Textmarke &marke : marken) {
            const qsizetype anfang = std::max<qsizetype>(marke.anfang - currentBlock().position(), 0);
            const qsizetype ende =
                std::min(marke.anfang + marke.laenge - currentBlock().position(), text.size());
            if (anfang < ende)
                setFormat(static_cast<int>(anfang), static_cast<int>(ende - anfang), marke.format);
        }
    }

private:
    const QWidget &box_;
};

RichTextBox::RichTextBox(QWidget *parent) : QTextEdit(parent), lupe_(std::make_unique<Lupe>(*this))
{
    setTabChangesFocus(true);
    farben_ = new Farbausgleich(document(), *this);
    connect(this, &QTextEdit::textChanged, this, [this] { ReviseWrapping(*document()); });
}

// The layout measures for the lens until it has gone.
RichTextBox::~RichTextBox()
{
    document()->documentLayout()->setPaintDevice(viewport());
}

void RichTextBox::SetFaktor(double faktor)
{
    if (lupe_->Faktor() == faktor && document()->documentLayout()->paintDevice() == lupe_.get())
        return;
    lupe_->SetFaktor(faktor);
    document()->documentLayout()->setPaintDevice(lupe_.get());
    document()->markContentsDirty(0, document()->characterCount());
    updateGeometry();
    Einmitten();
}

int RichTextBox::Zeilenhoehe() const
{
    return QFontMetrics(font(), lupe_.get()).lineSpacing();
}

bool RichTextBox::ZeigeRichText(const QString &text)
{
    farben_->marken.clear();
    const bool ganz = SetRichText(*document(), text);
    moveCursor(QTextCursor::Start);
    verticalScrollBar()->setValue(0); // the caret stands a little below the text's beginning
    updateGeometry();                 // another text may be higher
    Einmitten();
    return ganz;
}

void RichTextBox::SetMarken(const QList<Textmarke> &marken)
{
    if (marken.isEmpty() && farben_->marken.isEmpty())
        return;
    const QSignalBlocker still(this); // the text does not change
    farben_->marken = marken;
    farben_->rehighlight();
}

QSizeF RichTextBox::Bedarf(const QTextDocument &text, int breite, double faktor) const
{
    Lupe lupe(*this);
    lupe.SetFaktor(faktor);
    const std::unique_ptr<QTextDocument> probe(text.clone());
    probe->setDefaultFont(document()->defaultFont());
    probe->setDocumentMargin(document()->documentMargin());
    probe->documentLayout()->setPaintDevice(&lupe);
    probe->setTextWidth(breite);
    return {probe->idealWidth(), probe->size().height()};
}

QString RichTextBox::PlainText() const
{
    return paukfix::PlainText(*document());
}

QString RichTextBox::RichText() const
{
    return ToRtf(*document());
}

QMimeData *RichTextBox::createMimeDataFromSelection() const
{
    return MimeVon(textCursor().selection(), document()->defaultFont()).release();
}

bool RichTextBox::canInsertFromMimeData(const QMimeData *source) const
{
    return HatText(*source);
}

void RichTextBox::insertFromMimeData(const QMimeData *source)
{
    if (isReadOnly())
        return;
    const Ablehnung ablehnung = Einfuegen(*source);
    abgelehnt_ = ablehnung != Ablehnung::Keine;
    if (!abgelehnt_) {
        ensureCursorVisible();
        return;
    }
    // A drop is not over before this returns.
    QMetaObject::invokeMethod(
        this, [this, ablehnung] { bei_Ablehnung ? bei_Ablehnung(Grund(ablehnung)) : QApplication::beep(); },
        Qt::QueuedConnection);
}

Ablehnung RichTextBox::Einfuegen(const QMimeData &quelle)
{
    Angebot angebot;
    if (acceptRichText())
        angebot = AngebotVon(quelle, currentCharFormat(), document()->defaultFont());
    if (angebot.ablehnung != Ablehnung::Keine)
        return angebot.ablehnung;
    const bool passt = angebot.text ? InsertRichText(textCursor(), *angebot.text)
                                    : InsertPlainText(textCursor(), quelle.text());
    return passt ? Ablehnung::Keine : Ablehnung::ZuGross;
}

void RichTextBox::dropEvent(QDropEvent *event)
{
    abgelehnt_ = false;
    QTextEdit::dropEvent(event);
    if (!std::exchange(abgelehnt_, false))
        return;
    // What is moved within the box is taken out before it is put in; elsewhere the source does so afterwards.
    const bool eigenes = event->source() == this || event->source() == viewport();
    if (eigenes && event->dropAction() == Qt::MoveAction) {
        undo();
        document()->clearUndoRedoStacks(QTextDocument::RedoStack);
    }
    event->setDropAction(Qt::IgnoreAction);
    event->ignore();
}

QSize RichTextBox::minimumSizeHint() const
{
    const int zeile = Zeilenhoehe();
    return {zeile * 6, zeile + 2 * frameWidth()};
}

void RichTextBox::changeEvent(QEvent *event)
{
    QTextEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        const QSignalBlocker still(this); // the text does not change
        farben_->rehighlight();
    }
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
    const int hoechstens = Zeilenhoehe() * hoechstens_;
    // No need to lay out a text that is far too long anyway.
    if (document()->characterCount() > hoechstens_ * 300)
        return hoechstens + rand;
    const double hoehe = Bedarf(*document(), breite - rand, lupe_->Faktor()).height();
    return std::min(static_cast<int>(std::ceil(hoehe)), hoechstens) + rand;
}

void RichTextBox::resizeEvent(QResizeEvent *event)
{
    QTextEdit::resizeEvent(event);
    Einmitten();
}

void RichTextBox::showEvent(QShowEvent *event)
{
    QTextEdit::showEvent(event);
    Einmitten();
}

void RichTextBox::Einmitten()
{
    if (hoechstens_ == 0)
        return;
    // Only the height is taken away, so the text keeps its lines and this ends after one round. A box that is
    // not shown may still have the height that another text needed.
    const int frei =
        isVisible() ? contentsRect().height() - static_cast<int>(std::ceil(document()->size().height())) : 0;
    const QMargins rand(0, std::max(frei / 2, 0), 0, 0);
    if (viewportMargins() != rand)
        setViewportMargins(rand);
}

} // namespace paukfix
