// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Dienste.h"
#include "Kartenblatt.h"
#include "Medienkopie.h"

#include <QDialog>

#include <array>
#include <functional>

class QBoxLayout;
class QPushButton;
class QScrollArea;

namespace paukfix {

class KurzLabel;
class Slotkarte;
class Slotvorschau;

// What a dialog for a card's media files works on.
struct Kartendateien
{
    Bildnamen &namen; // edited in place; the card keeps them when it is stored
    QString frageNr;
    std::function<void()> geaendert = [] {}; // a name was changed
};

// In what the dialogs for pictures and for sounds differ.
struct SlotTexte
{
    Medienart art = Medienart::Bild;
    QString name;                // of the window's object
    QString titel;               // of the window
    QString frage;               // above the options
    QString dialog;              // title of the file dialog
    QString filter;              // of the file dialog
    QString alle;                // name of the file dialog's entry for all types
    QString fremd;               // the beginning of the message for a file of another directory
    QString fehler;              // the beginning of the message for a file that cannot be opened
    std::size_t ersterPlatz = 0; // of the three among the names: question, right answer, wrong answer
};

// Assigns the files of a card's three moments: question, answer, wrong answer. All three are seen; choosing a
// moment shows its file, or asks for one where it has none. A file from elsewhere that is dropped on one, or
// pasted, is copied beside the card file.
class Slotdialog : public QDialog
{
public:
    Slotdialog(const CardStore &kartei, const Dienste &dienste, Kartendateien dateien, SlotTexte texte,
               QWidget *parent);

protected:
    // Shows or plays a file of the card file's directory, in the chosen slot; throws StoreError where it
    // cannot be opened.
    virtual void Vorschau(const QString &pfad) = 0;
    // What stands in the slot while it is not chosen; an empty path for nothing.
    virtual void Belegen(Slotkarte &karte, const QString &pfad) = 0;

    virtual void VorschauLeeren() {}

    // In place of the chosen slot's own preview; null for none.
    virtual Slotvorschau *EigeneVorschau() { return nullptr; }

    // A file was chosen: before its name is taken (throws for one that is not), and after.
    virtual void Annehmen(const QString &pfad) = 0;
    virtual void Angenommen(const QString &pfad) = 0;

    const Dienste &Dienst() const { return dienste_; }

    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    // To be called when it is built.
    void Aufbauen();

private:
    void KartenBauen();
    void KnoepfeBauen();
    void Option_Click(int welche);
    void SlotZeigen();
    void DateiWaehlen();
    void Bringen(int welche, const Medium &medium);
    void Zuweisen(const QString &name);
    void NamenZeigen(const QString &name);
    void cmdÄndern_Click();
    void cmdLöschen_Click();
    QString &SlotName(int welche);

    const CardStore &kartei_;
    Dienste dienste_;
    Kartendateien dateien_;
    SlotTexte texte_;
    int gewaehlt_ = -1; // 0 to 2; none until an option is chosen
    std::array<Slotkarte *, Momente> karten_{};
    QBoxLayout *reihe_ = nullptr; // of the cards
    QScrollArea *rolle_ = nullptr;
    KurzLabel *Dateiname_ = nullptr; // of the chosen slot
    QPushButton *cmdÄndern_ = nullptr;
    QPushButton *cmdLöschen_ = nullptr;
    QPushButton *cmdOK_ = nullptr;
};

} // namespace paukfix
