// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Themenzeile.h"

#include "Kurztext.h"

#include <QAbstractItemView>
#include <QAction>
#include <QCompleter>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QListView>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QStringListModel>

namespace paukfix {

using namespace Qt::StringLiterals;

Themenzeile::Themenzeile(QWidget *parent) : QLineEdit(parent), vorschlaege_(new QStringListModel(this))
{
    auto *ergaenzer = new QCompleter(vorschlaege_, this);
    ergaenzer->setCaseSensitivity(Qt::CaseInsensitive);
    ergaenzer->setFilterMode(Qt::MatchContains);
    ergaenzer->popup()->setAccessibleName(u"Themen der Kartei"_s);
    // Measured one by one, thousands of topics would hold up each key.
    if (auto *liste = qobject_cast<QListView *>(ergaenzer->popup()))
        liste->setUniformItemSizes(true);
    setCompleter(ergaenzer);
    // The toolkit sets the text of a proposal as the program would.
    for (const auto &weg : {qOverload<const QString &>(&QCompleter::activated),
                            qOverload<const QString &>(&QCompleter::highlighted)})
        connect(ergaenzer, weg, this, &QLineEdit::textEdited);
}

void Themenzeile::focusInEvent(QFocusEvent *event)
{
    if (event->reason() != Qt::PopupFocusReason)
        vorschlaege_->setStringList(themen());
    QLineEdit::focusInEvent(event);
}

void Themenzeile::Schuetzen()
{
    setReadOnly(true);
    setToolTip(u"Die Kartei ist nur zum Ansehen geöffnet."_s);
}

void Themenzeile::Zeigen(const QString &thema)
{
    thema_ = thema;
    const bool zuLang = thema.size() > KurztextLaenge;
    setReadOnly(zuLang);
    setText(Kurztext(thema));
    if (zuLang)
        setCursorPosition(0);
    setToolTip(zuLang ? u"Dieses Thema ist zu lang, um es ganz zu zeigen. Es bleibt in der "
                        u"Kartei, wie es ist."_s
                      : QString());
}

// For undoing, a move of the caret parts what was done before it from what comes.
void Themenzeile::SchrittBeginnen()
{
    const int stelle = cursorPosition();
    home(false);
    end(false);
    setCursorPosition(stelle);
}

void Themenzeile::Einfuegen(QClipboard::Mode woher)
{
    if (isReadOnly())
        return;
    // What is selected is replaced in a step of its own anyway.
    if (!hasSelectedText())
        SchrittBeginnen();
    insert(Einzeilig(QGuiApplication::clipboard()->text(woher)));
    SchrittBeginnen();
}

void Themenzeile::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Paste))
        Einfuegen(QClipboard::Clipboard);
    else
        QLineEdit::keyPressEvent(event);
    // What is taken back is no search, and the list of proposals would keep the next key to itself.
    if (event->matches(QKeySequence::Undo) || event->matches(QKeySequence::Redo))
        completer()->popup()->hide();
}

void Themenzeile::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu *menue = createStandardContextMenu();
    menue->setAttribute(Qt::WA_DeleteOnClose);
    const QList<QAction *> eintraege = menue->actions();
    for (QAction *eintrag : eintraege) {
        if (!eintrag->text().startsWith(QLineEdit::tr("&Paste")))
            continue;
        eintrag->disconnect(this);
        connect(eintrag, &QAction::triggered, this, [this] { Einfuegen(QClipboard::Clipboard); });
    }
    menue->popup(event->globalPos());
}

void Themenzeile::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::MiddleButton || !QGuiApplication::clipboard()->supportsSelection()) {
        QLineEdit::mouseReleaseEvent(event);
        return;
    }
    setCursorPosition(cursorPositionAt(event->position().toPoint()));
    Einfuegen(QClipboard::Selection);
}

void Themenzeile::dropEvent(QDropEvent *event)
{
    QMimeData mime;
    mime.setText(Einzeilig(event->mimeData()->text()));
    QDropEvent einzeilig(event->position(), event->possibleActions(), &mime, event->buttons(),
                         event->modifiers());
    einzeilig.setDropAction(event->dropAction());
    QLineEdit::dropEvent(&einzeilig);
    event->setDropAction(einzeilig.dropAction());
    event->setAccepted(einzeilig.isAccepted());
}

} // namespace paukfix
