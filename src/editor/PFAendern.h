// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardEditor.h"
#include "Dienste.h"
#include "Druckauftrag.h"
#include "SearchHit.h"

#include <QMainWindow>

#include <functional>
#include <memory>

class QSessionManager;

namespace paukfix {

class Formatmenue;
class Kartenformular;
class Kartenlauf;
class Speicherstand;
class Symbolleiste;
struct Kartendateien;

// The card editor: walks through the cards of the open card file, changes them and adds new ones. The window
// arranges form, menu, icons and buttons, and ends it all when it closes.
class PFÄndern final : public QMainWindow
{
public:
    // What is handed in outlives the window. The form looks for pictures in `bilder` before it looks in the
    // program's directory.
    PFÄndern(CardStore &kartei, const Dienste &dienste, SearchHit &suche, const QString &bilder,
             QWidget *parent = nullptr);
    ~PFÄndern() override;

    // Shows the window on the current card.
    void Form_Load();

    std::function<std::unique_ptr<QPrinter>()> drucker = Standarddrucker;
    // The editor has closed; nothing is lost. The window may be deleted later, not within.
    std::function<void()> geschlossen = [] {};

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void MenueBauen();
    void LeisteBauen();
    void FormularVerbinden();
    void NurAnsehen();
    void KnoepfeBauen();
    void GroesseWaehlen();
    void Geaendert();
    Kartendateien Dateien();
    void Cadd_Click();
    void CEOF_Click();
    void MSuchen_Click();
    void MDrucken_Click();
    void MBilder_Click();
    void MTon_Click();
    void SitzungEndet(QSessionManager &sitzung);

    CardStore &kartei_;
    Dienste dienste_;
    SearchHit &suche_;
    Speicherstand *stand_;
    Symbolleiste *leiste_;
    Kartenformular *formular_;
    Aufbewahrung aufbewahrung_;
    CardEditor editor_;
    bool offen_ = false;
    // These go before the controls do: their going moves the focus.
    std::unique_ptr<Formatmenue> format_;
    std::unique_ptr<Kartenlauf> lauf_;
};

} // namespace paukfix
