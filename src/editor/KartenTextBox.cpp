// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KartenTextBox.h"

#include "Flaeche.h"
#include "Medienannahme.h"
#include "Texttaste.h"
#include "Zwischenablage.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QHBoxLayout>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMimeData>
#include <QStringList>
#include <QTextBlock>

#include <array>
#include <memory>
#include <optional>

namespace paukfix {

using namespace Qt::StringLiterals;

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

constexpr auto NurLesen = Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard;

} // namespace

QString Aufzaehlung(RichTextLosses verluste)
{
    QStringList namen;
    for (const Verlustname &eintrag : Verlustnamen)
        if (verluste.testFlag(eintrag.verlust))
            namen << QString::fromUtf8(eintrag.name);
    if (namen.size() < 2)
        return namen.join(QString());
    const QString letzter = namen.takeLast();
    return namen.join(u", "_s) + u" und "_s + letzter;
}

KartenTextBox::KartenTextBox(QWidget *parent) : RichTextBox(parent) {}

void KartenTextBox::AufFeld(Flaeche *feld)
{
    setFrameShape(QFrame::NoFrame);
    setProperty("fokusring", false); // the field has one
    viewport()->setAutoFillBackground(false);
    auto *zeile = new QHBoxLayout(feld);
    zeile->setContentsMargins(10, 4, 10, 4);
    zeile->addWidget(this, 1);
    feld_ = feld;
    Umranden(false);
}

void KartenTextBox::Umranden(bool aktiv)
{
    if (feld_)
        feld_->SetUmriss(aktiv ? Flaeche::Umriss::Fokus : Flaeche::Umriss::Feld);
}

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
        setToolTip(u"Dieser Text ist zu lang, um ihn ganz zu zeigen. Er bleibt in der "
                   u"Kartei, wie er ist."_s);
    } else if (verluste_ = LossesOf(text); verluste_) {
        Sperren();
    }
}

// The toolkit offers and takes changes while this lives, though the text is locked: those that it makes then
// ask before.
class KartenTextBox::Offen
{
public:
    explicit Offen(KartenTextBox &box) : box_(box)
    {
        if (box_.gesperrt_)
            box_.setTextInteractionFlags(Qt::TextEditorInteraction);
    }

    Offen(const Offen &) = delete;
    Offen &operator=(const Offen &) = delete;

    ~Offen()
    {
        if (box_.gesperrt_)
            box_.setTextInteractionFlags(NurLesen);
    }

private:
    KartenTextBox &box_;
};

// It is read, marked and copied like any other, by mouse and key.
void KartenTextBox::Sperren()
{
    gesperrt_ = true;
    setReadOnly(true);
    setTextInteractionFlags(NurLesen);
    setAttribute(Qt::WA_InputMethodEnabled); // an accent that is typed first is a change, too
    setToolTip(
        u"Dieser Text enthält %1. Das geht verloren, wenn er geändert wird."_s.arg(Aufzaehlung(verluste_)));
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

void KartenTextBox::Schuetzen()
{
    gesperrt_ = false;
    setReadOnly(true);
    setTextInteractionFlags(NurLesen);
    setToolTip(u"Die Kartei ist nur zum Ansehen geöffnet."_s);
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

void KartenTextBox::contextMenuEvent(QContextMenuEvent *event)
{
    if (!gesperrt_) {
        RichTextBox::contextMenuEvent(event);
        return;
    }
    QMenu *menue = nullptr;
    {
        const Offen offen(*this);
        menue = createStandardContextMenu();
    }
    menue->setAttribute(Qt::WA_DeleteOnClose);
    // Where the text is locked, the toolkit's own do nothing. Pasting asks by itself.
    const auto verbinden = [&](const char *name, auto tun) {
        if (auto *eintrag = menue->findChild<QAction *>(QLatin1String(name)))
            connect(eintrag, &QAction::triggered, this, [this, tun] {
                if (gesperrt_ && Freigeben())
                    tun();
            });
    };
    verbinden("edit-cut", [this] { cut(); });
    verbinden("edit-delete", [this] { textCursor().removeSelectedText(); });
    menue->popup(event->globalPos());
    event->accept();
}

// The middle button pastes what is marked elsewhere.
void KartenTextBox::mouseReleaseEvent(QMouseEvent *event)
{
    std::optional<Offen> offen;
    if (event->button() == Qt::MiddleButton)
        offen.emplace(*this);
    RichTextBox::mouseReleaseEvent(event);
}

void KartenTextBox::dragEnterEvent(QDragEnterEvent *event)
{
    const Offen offen(*this);
    RichTextBox::dragEnterEvent(event);
}

void KartenTextBox::dragMoveEvent(QDragMoveEvent *event)
{
    const Offen offen(*this);
    RichTextBox::dragMoveEvent(event);
}

// Nobody can answer before the drop is over, and the source must keep its text until then.
void KartenTextBox::dropEvent(QDropEvent *event)
{
    if (MedienNehmen(*event->mimeData())) {
        QDragLeaveEvent zuEnde;
        dragLeaveEvent(&zuEnde); // the toolkit shows no caret for it any more
        event->setDropAction(Qt::CopyAction);
        event->accept();
        return;
    }
    RichTextBox::dropEvent(event);
    if (!gesperrt_ || !canInsertFromMimeData(event->mimeData()))
        return;
    const QTextCursor ort = cursorForPosition(event->position().toPoint());
    const auto frage = [this, ort, text = std::shared_ptr<QMimeData>(Textkopie(*event->mimeData()))] {
        if (!Freigeben())
            return;
        setTextCursor(ort);
        insertFromMimeData(text.get());
    };
    QMetaObject::invokeMethod(this, frage, Qt::QueuedConnection);
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

bool KartenTextBox::MedienNehmen(const QMimeData &mime)
{
    if (!medien || !medien->Passt(mime))
        return false;
    medien->Nehmen(mime);
    return true;
}

bool KartenTextBox::canInsertFromMimeData(const QMimeData *source) const
{
    return (medien && medien->Passt(*source)) || RichTextBox::canInsertFromMimeData(source);
}

void KartenTextBox::insertFromMimeData(const QMimeData *source)
{
    if (MedienNehmen(*source))
        return;
    if (!gesperrt_) {
        RichTextBox::insertFromMimeData(source);
        return;
    }
    // While the question is open, the clipboard may change.
    const auto text = Textkopie(*source);
    if (Freigeben())
        RichTextBox::insertFromMimeData(text.get());
}

} // namespace paukfix
