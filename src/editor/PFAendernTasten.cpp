// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Blaettertaste.h"
#include "KartenTextBox.h"
#include "PFAendern.h"

#include <QAction>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>

namespace {

bool IstWiederholen(const QKeyEvent &taste)
{
    return taste.key() == Qt::Key_Y && taste.modifiers() == Qt::ControlModifier;
}

} // namespace

bool PFÄndern::eventFilter(QObject *objekt, QEvent *event)
{
    if (objekt == CVVor_ || objekt == CZZurück_)
        return Laufknopf(objekt, *event);
    switch (event->type()) {
    case QEvent::ShortcutOverride:
        // The menu's keys hold against the box's own; not accepted, the key goes to the menu.
        if (TasteHaltMenue(static_cast<QKeyEvent &>(*event))) {
            event->ignore();
            return true;
        }
        break;
    case QEvent::KeyPress:
        return Feld_KeyPress(objekt, static_cast<QKeyEvent &>(*event));
    default:
        break;
    }
    return false;
}

bool PFÄndern::TasteHaltMenue(const QKeyEvent &taste) const
{
    const QList<QAction *> eintraege = findChildren<QAction *>();
    for (const QAction *eintrag : eintraege) {
        if (eintrag->isEnabled() && !eintrag->shortcut().isEmpty() &&
            eintrag->shortcut() == QKeySequence(taste.keyCombination()))
            return true;
    }
    return false;
}

bool PFÄndern::Feld_KeyPress(QObject *feld, const QKeyEvent &taste)
{
    if (feld == MFrage_ && taste.key() == Qt::Key_PageUp && taste.modifiers().testFlag(Qt::AltModifier)) {
        umgebung_.meldungen.Zeigen(QStringLiteral("Alt + PageUp"));
        return true;
    }
    if (feld == MaskFrageNr_ && taste.key() == Qt::Key_Escape) {
        MaskFrageNr_->setText(kopf_.FrageNr);
        return true;
    }
    if (!IstWiederholen(taste))
        return false;
    if (auto *box = dynamic_cast<KartenTextBox *>(feld))
        box->redo();
    else if (auto *zeile = dynamic_cast<QLineEdit *>(feld))
        zeile->redo();
    return true;
}

// The menu "Format" acts on the box that has the keyboard. The menu itself, and another window in front, take
// it just for a while.
void PFÄndern::FokusWechselt(QWidget *neu)
{
    if (neu && formular_->isAncestorOf(neu))
        FormatFuer(dynamic_cast<KartenTextBox *>(neu));
}

void PFÄndern::FormatFuer(KartenTextBox *box)
{
    aktiv_ = box;
    MFont_->setEnabled(aktiv_);
    for (QAction *eintrag : MFont_->actions())
        eintrag->setEnabled(aktiv_);
    FelderUmranden();
}

void PFÄndern::keyPressEvent(QKeyEvent *event)
{
    const Blaettern blaettern = Blaettertaste(*event);
    if (blaettern == Blaettern::Nicht) {
        QMainWindow::keyPressEvent(event);
        return;
    }
    LaufBeenden();
    if (blaettern == Blaettern::Vor)
        editor_.CVor();
    else
        editor_.CZurück();
}

// The buttons that run on as long as they are held, by any mouse button or the space bar.
bool PFÄndern::Laufknopf(QObject *knopf, QEvent &event)
{
    const auto richtung = knopf == CVVor_ ? CardEditor::Richtung::Vor : CardEditor::Richtung::Zurück;
    const auto istLeertaste = [&event] {
        const auto &taste = static_cast<const QKeyEvent &>(event);
        return taste.key() == Qt::Key_Space && !taste.isAutoRepeat();
    };
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        // A button that does not run is not shown as held either.
        return !LaufBeginnen(richtung);
    case QEvent::KeyPress:
        return istLeertaste() && !LaufBeginnen(richtung);
    case QEvent::KeyRelease:
        if (istLeertaste())
            LaufBeenden();
        return false;
    case QEvent::MouseButtonRelease:
    case QEvent::FocusOut:
    case QEvent::Hide:
        LaufBeenden();
        return false;
    default:
        return false;
    }
}

bool PFÄndern::LaufBeginnen(CardEditor::Richtung richtung)
{
    LaufBeenden();
    if (!editor_.StoreIfDirty())
        return false;
    laufrichtung_ = richtung;
    LaufSchritt();
    return laufrichtung_.has_value();
}

void PFÄndern::LaufSchritt()
{
    // A step may open a message: no further one is due while it stands, nor behind it.
    lauf_.stop();
    const bool weiter = laufrichtung_ && editor_.Laufschritt(*laufrichtung_);
    formular_->repaint(); // every card that is passed is seen
    if (!weiter || !laufrichtung_ || !isActiveWindow()) {
        LaufBeenden();
        return;
    }
    // The event loop comes round between the steps, so the release of the button is seen at once.
    lauf_.start(0, this);
}

// The release may have gone to a message's window: the buttons do not wait for it.
void PFÄndern::LaufBeenden()
{
    laufrichtung_.reset();
    lauf_.stop();
    CVVor_->setDown(false);
    CZZurück_->setDown(false);
}

void PFÄndern::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == lauf_.timerId())
        LaufSchritt();
    else
        QMainWindow::timerEvent(event);
}
