// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "AsciiTausch.h"
#include "Importprobe.h"
#include "Werkzeugfenster.h"

#include <optional>

class QCheckBox;

namespace paukfix {

class Importtafel;
class Vorhandenenwahl;

// Reads cards from a text file into the open card file. How the file is to be read is guessed when it is
// chosen, shown by its first cards, and can be corrected.
class AImport final : public Werkzeugfenster
{
public:
    // With the list `datei`, where one was dropped.
    AImport(KarteiOeffner &oeffner, const Dienste &dienste, QWidget *parent = nullptr,
            const QString &datei = {});

private:
    void cmdDateiname_Click();
    void cmdOK_Click();
    void DateiGewaehlt();
    void FormGewaehlt();
    void Raten();
    Importvorschau Ansehen(const Aufbau &aufbau);
    void Zeigen();
    void FormZeigen(const Aufbau &aufbau);
    Zeichensatz GewaehlterZeichensatz() const;
    std::optional<Textform> Form() const;
    std::optional<Aufbau> Gewaehlt() const;
    QString VorhabenVon(const Importvorschau &vorschau, bool alleFelder);

    QComboBox *cmbForm_;
    QComboBox *cmbZeichensatz_;
    QComboBox *cmbTrennzeichen_;
    QLineEdit *lblDateiname_;
    QList<QLabel *> hinweise_; // until a file can be shown
    Importtafel *tafel_;
    Vorhandenenwahl *vorhandene_;
    QCheckBox *chkFaecher_;
    std::optional<Importprobe> probe_;
    bool formSelbst_ = false;        // the learner has chosen the form
    bool zeichensatzSelbst_ = false; // and the encoding
};

} // namespace paukfix
