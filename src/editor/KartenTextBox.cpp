// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KartenTextBox.h"

#include "Texttaste.h"

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QStringList>
#include <QTextBlock>

#include <array>

namespace {

struct Verlustname
{
    RichTextLoss verlust;
    const char *name;
};

constexpr std::array Verlustnamen{
    Verlustname{RichTextLoss::Pictures, "Bilder"},
    Verlustname{RichTextLoss::Objects, "eingebettete Objekte"},
    Verlustname{RichTextLoss::Drawings, "Zeichnungen"},
    Verlustname{RichTextLoss::Tables, "Tabellen"},
    Verlustname{RichTextLoss::Lists, "automatische Aufzählungen"},
    Verlustname{RichTextLoss::Formulas, "Formeln"},
    Verlustname{RichTextLoss::Footnotes, "Fußnoten"},
    Verlustname{RichTextLoss::Comments, "Kommentare"},
    Verlustname{RichTextLoss::Fields, "Felder oder Verweise"},
    Verlustname{RichTextLoss::HeadersFooters, "Kopf- oder Fußzeilen"},
    Verlustname{RichTextLoss::HiddenText, "verborgenen Text"},
    Verlustname{RichTextLoss::Highlight, "farbig hinterlegten Text"},
    Verlustname{RichTextLoss::Effects, "besondere Schrifteffekte"},
    Verlustname{RichTextLoss::Borders, "Rahmen"},
    Verlustname{RichTextLoss::Breaks, "Seitenumbrüche"},
    Verlustname{RichTextLoss::Other, "Inhalte eines anderen Programms"},
};

} // namespace

QString Aufzaehlung(RichTextLosses verluste)
{
    QStringList namen;
    for (const Verlustname &eintrag : Verlustnamen) {
        if (verluste.testFlag(eintrag.verlust))
            namen << QString::fromUtf8(eintrag.name);
    }
    if (namen.size() < 2)
        return namen.join(QString());
    const QString letzter = namen.takeLast();
    return namen.join(QStringLiteral(", ")) + QStringLiteral(" und ") + letzter;
}

KartenTextBox::KartenTextBox(QWidget *parent) : RichTextBox(parent) {}

void KartenTextBox::Zeigen(const QString &text, const QTextCharFormat &amAnfang)
{
    gesperrt_ = false;
    verluste_ = {};
    setReadOnly(false);
    setToolTip({});
    const bool ganz = ZeigeRichText(text);
    if (text.isEmpty()) {
        // There is nothing to undo yet.
        document()->setUndoRedoEnabled(false);
        QTextCursor(document()).setBlockCharFormat(amAnfang);
        document()->setUndoRedoEnabled(true);
        document()->setModified(false);
        setCurrentCharFormat(amAnfang);
    } else if (!ganz) {
        setReadOnly(true);
        setToolTip(QStringLiteral("Dieser Text ist zu lang, um ihn ganz zu zeigen. Er bleibt in der "
                                  "Kartei, wie er ist."));
    } else if (verluste_ = LossesOf(text); verluste_) {
        Sperren();
    }
}

// It is read, marked and copied like any other, by mouse and key.
void KartenTextBox::Sperren()
{
    gesperrt_ = true;
    setReadOnly(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setAttribute(Qt::WA_InputMethodEnabled); // an accent that is typed first is a change, too
    setToolTip(QStringLiteral("Dieser Text enthält %1. Das geht verloren, wenn er geändert wird.")
                   .arg(Aufzaehlung(verluste_)));
}

bool KartenTextBox::Freigeben()
{
    if (!gesperrt_)
        return !isReadOnly();
    if (!darfVerlieren(verluste_))
        return false;
    gesperrt_ = false;
    setReadOnly(false);
    setToolTip({});
    return true;
}

bool KartenTextBox::Bearbeitet() const
{
    return !isReadOnly() && document()->isModified();
}

void KartenTextBox::Gespeichert()
{
    if (Bearbeitet())
        verluste_ = {};
    document()->setModified(false);
}

bool KartenTextBox::IstLeer() const
{
    return PlainText().isEmpty() && (Bearbeitet() || !verluste_);
}

void KartenTextBox::keyPressEvent(QKeyEvent *event)
{
    if (!gesperrt_ || !AendertText(*event, false) || Freigeben())
        RichTextBox::keyPressEvent(event);
}

void KartenTextBox::inputMethodEvent(QInputMethodEvent *event)
{
    const bool aendert = !event->commitString().isEmpty() || !event->preeditString().isEmpty();
    if (!gesperrt_ || !aendert || Freigeben())
        RichTextBox::inputMethodEvent(event);
}
