// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Dienste.h"
#include "Kartenblatt.h"

#include <QDialog>

#include <array>
#include <functional>

class QGridLayout;
class QRadioButton;
class QPushButton;

namespace paukfix {

class KurzLabel;

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
    QString name;     // of the window's object
    QString titel;    // of the window
    QString frage;    // above the options
    QString dialog;   // title of the file dialog
    QString filter;   // of the file dialog
    QString fremd;    // the beginning of the message for a file of another directory
    QString fehler;   // the beginning of the message for a file that cannot be opened
    int ersterSlot{}; // of the three: question, right answer, wrong answer
};

// Assigns the files of a card's three moments: question, answer, wrong answer. Choosing a moment shows its
// file, or asks for one where it has none.
class Slotdialog : public QDialog
{
public:
    Slotdialog(const CardStore &kartei, const Dienste &dienste, Kartendateien dateien, SlotTexte texte,
               QWidget *parent);

protected:
    // Shows or plays a file of the card file's directory; throws StoreError where it cannot be opened.
    virtual void Vorschau(const QString &pfad) = 0;

    virtual void VorschauLeeren() {}

    // A file was chosen: before its name is taken (throws for one that is not), and after.
    virtual void Annehmen(const QString &pfad) = 0;
    virtual void Angenommen(const QString &pfad) = 0;

    const Dienste &Dienst() const { return dienste_; }

    // Column 1 is free for a preview, as high as the rest together.
    QGridLayout *Gitter() { return gitter_; }

private:
    void Option_Click(int welche);
    void SlotZeigen();
    void DateiWaehlen();
    void NamenZeigen(const QString &name);
    void BelegungZeigen();
    void cmdÄndern_Click();
    void cmdLöschen_Click();
    QString &SlotName();

    const CardStore &kartei_;
    Dienste dienste_;
    Kartendateien dateien_;
    SlotTexte texte_;
    int slot_ = 0; // 1 to 9; 0 until an option is chosen
    QGridLayout *gitter_ = nullptr;
    std::array<QRadioButton *, 3> optionen_{};
    std::array<KurzLabel *, 3> belegung_{}; // beside each option the file of its slot
    KurzLabel *Dateiname_ = nullptr;
    QPushButton *cmdÄndern_ = nullptr;
    QPushButton *cmdLöschen_ = nullptr;
};

} // namespace paukfix
