// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "FremdEinlesen.h"
#include "Werkzeugfenster.h"

#include <memory>
#include <optional>

class QCheckBox;
class QRadioButton;

namespace paukfix {

// Reads a deck of another program: shows what is in it before anything happens, and asks where its cards go.
// There need not be an open card file.
class FremdeKartei final : public Werkzeugfenster
{
public:
    // With the deck `datei`, where one was dropped or named.
    FremdeKartei(KarteiOeffner &oeffner, const Dienste &dienste, QWidget *parent = nullptr,
                 const QString &datei = {});

protected:
    void showEvent(QShowEvent *event) override;

private:
    void WahlBauen();
    void cmdDateiname_Click();
    void cmdZiel_Click();
    void cmdRest_Click();
    void cmdOK_Click();
    void Ansehen();
    void InhaltZeigen();
    void InhaltSetzen(const QString &text);
    void ThemenAnbieten();
    void PlanZeigen();
    void ErgebnisZeigen(const Eingelesenes &ergebnis);
    QString ZielVorschlag() const;

    QLineEdit *lblDateiname_;
    QLabel *lblInhalt_ = nullptr;
    QRadioButton *optNeu_ = nullptr;
    QRadioButton *optOffen_ = nullptr;
    QLineEdit *lblZiel_ = nullptr;
    QPushButton *cmdZiel_ = nullptr;
    QComboBox *cmbThema_ = nullptr;
    QComboBox *cmbVorhandene_ = nullptr;
    QCheckBox *chkFaecher_ = nullptr;
    QPushButton *cmdRest_ = nullptr;
    QString angesehen_; // the file that `vorschau_` is of
    QString warum_;     // it cannot be read
    std::unique_ptr<Deckquelle> quelle_;
    std::optional<Deckvorschau> vorschau_;
    QObject fokuswache_; // goes before the controls do: their going moves the focus
};

} // namespace paukfix
