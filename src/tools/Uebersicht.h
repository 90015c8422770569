// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardStore.h"
#include "Dienste.h"
#include "Druckauftrag.h"

#include <QDialog>

#include <functional>
#include <memory>
#include <optional>

class QLabel;
class QLineEdit;
class QModelIndex;
class QProgressBar;

namespace paukfix {

class KartenModell;
class Kartengitter;

// What the overview reaches beyond its window.
struct UebersichtWege
{
    // Opens the card editor on the current card.
    std::function<void()> bearbeiten = [] {};
    // The printer, or nothing where none is installed.
    std::function<std::unique_ptr<QPrinter>()> drucker = Standarddrucker;
};

// All cards of the open file in a grid. A row opens the card editor by Enter and by double click; a range of
// card numbers can be printed; a column's head sorts; what is typed is searched for.
class Uebersicht final : public QDialog
{
public:
    Uebersicht(CardStore &store, const Dienste &dienste, UebersichtWege wege, QWidget *parent = nullptr);

    void reject() override;

protected:
    bool eventFilter(QObject *objekt, QEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    QWidget *KnoepfeBauen();
    QLineEdit *Feld(QLayout *zeile, const QString &text, const QString &name, int zeichen);
    void Form_Load();
    void Form_Paint();
    void FarbenSetzen();
    void ZeileOeffnen(const QModelIndex &index);
    void cmdDrucken_Click();
    void cmdSchließen_Click();
    std::optional<qint16> Nummer(QLineEdit *feld, const QString &name);
    void Drucken(qint16 von, qint16 bis);
    void Suchen(int abZeile);
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
    QLabel *hinweise_ = nullptr;
    QLineEdit *txtVon_ = nullptr;
    QLineEdit *txtBis_ = nullptr;
    QLineEdit *txtSuchen_ = nullptr;
    QProgressBar *progress_ = nullptr;
    bool laeuft_ = false;
};

} // namespace paukfix
