// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "RichTextBox.h"
#include "RichTextLosses.h"

#include <functional>

namespace paukfix {

class Flaeche;
class Medienannahme;

// The box of one of a card's texts, which knows whether its writer has changed it.
//
// A text may hold what the box cannot (pictures, footnotes, ...). The first change would be its end, so such
// a text is locked, and who begins to change it is asked once before: once unlocked it stays so, even when
// all is undone, until a text is shown anew. A text that is too long to be shown whole cannot be changed at
// all. What is locked is never `Bearbeitet`, whatever happens to the box.
class KartenTextBox final : public RichTextBox
{
public:
    explicit KartenTextBox(QWidget *parent);

    // Puts the box on a field, alone or first of a line, which shows where the keyboard goes.
    void AufFeld(Flaeche *feld);
    // Outlines that field as the one that has the keyboard.
    void Umranden(bool aktiv);

    // Gets the pictures and sounds that are pasted or dropped; outlives the box. The text stays as it is
    // then.
    Medienannahme *medien = nullptr;

    // Asks whether a text may lose these. Without an answer it may not.
    std::function<bool(RichTextLosses)> darfVerlieren = [](RichTextLosses) { return false; };

    // The text as the record has it: unchanged, and nothing to undo. An empty one is typed in this format.
    void Zeigen(const QString &text, const QTextCharFormat &amAnfang);
    // What the box holds is in the record now.
    void Gespeichert();

    // The writer has changed the text. One that was changed back by undoing is not changed.
    bool Bearbeitet() const;
    // The text may be changed: unlocks it, where its writer agrees to what it loses.
    bool Freigeben();
    // What is shown can be read, marked and copied, and not be changed, until another text is shown.
    void Schuetzen();
    // There is neither text nor anything that the box cannot show.
    bool IstLeer() const;

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void inputMethodEvent(QInputMethodEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    bool canInsertFromMimeData(const QMimeData *source) const override;
    void insertFromMimeData(const QMimeData *source) override;

private:
    class Offen;

    void Sperren();
    bool MedienNehmen(const QMimeData &mime);

    Flaeche *feld_ = nullptr;
    RichTextLosses verluste_; // of the text that is locked, or was shown
    bool gesperrt_ = false;
};

// "Bilder, Tabellen und Fußnoten"; empty for none.
QString Aufzaehlung(RichTextLosses verluste);

} // namespace paukfix
