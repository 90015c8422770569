// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardStore.h"
#include "Dienste.h"
#include "Druckauftrag.h"

#include <QDialog>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

class QLabel;
class QLayout;
class QLineEdit;
class QModelIndex;

namespace paukfix {

class Druckleiste;
class KartenModell;
class Kartengitter;
class Tastenkappe;

// What the overview reaches beyond its window.
struct UebersichtWege
{
    // Opens the card editor on the current card.
    std::function<void()> bearbeiten = [] {};
    // The printer, or nothing where none is installed.
    std::function<std::unique_ptr<QPrinter>()> drucker = Standarddrucker;
};

// All cards of the open file in a grid. A row opens the card editor by Enter and by double click; a range of
// card numbers or the selected rows can be printed; a column's head sorts; what is typed leaves the cards
// that hold it.
class Uebersicht final : public QDialog
{
public:
    Uebersicht(CardStore &store, const Dienste &dienste, UebersichtWege wege, QWidget *parent = nullptr);

    void reject() override;

protected:
    bool eventFilter(QObject *objekt, QEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    QLayout *SuchzeileBauen();
    QWidget *KnoepfeBauen();
    void Form_Load();
    void Form_Paint();
    void FarbenSetzen();
    void ZeileOeffnen(const QModelIndex &index);
    void cmdSchließen_Click();
    void Filtern();
    void NaechsterTreffer();
    void TrefferZeigen();
    bool NichtGefunden() const;
    void datPrimaryRS_Reposition();
    void datPrimaryRS_Error(const StoreError &fehler);

    CardStore &store_;
    Dienste dienste_;
    UebersichtWege wege_;
    QWidget *inhalt_ = nullptr;
    KartenModell *modell_ = nullptr; // nothing where the cards cannot be read
    Kartengitter *grdDataGrid_ = nullptr;
    QLabel *datPrimaryRS_ = nullptr;
    QLabel *treffer_ = nullptr;
    Tastenkappe *hinweise_ = nullptr;
    QLineEdit *txtSuchen_ = nullptr;
    Druckleiste *drucken_ = nullptr;
    std::optional<std::int64_t> karte_; // the current one, also while a filter hides it
};

} // namespace paukfix
