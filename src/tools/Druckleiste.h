// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Dienste.h"
#include "Druckauftrag.h"

#include <QWidget>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

class QHBoxLayout;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;

namespace paukfix {

class KartenModell;
class Kartengitter;

// The overview's button strip: prints the cards of a range of numbers or, where none is given, the selected
// ones; tells which before it does, and shows the pages first where that is wanted. `inhalt` takes no keys
// and clicks while a job is made.
class Druckleiste final : public QWidget
{
public:
    // The printer, or nothing where none is installed.
    using Drucker = std::function<std::unique_ptr<QPrinter>()>;

    Druckleiste(const Dienste &dienste, Drucker drucker, QWidget *inhalt);

    // Told how many cards the printer has taken.
    std::function<void(int karten)> gedruckt = [](int) {};

    // The cards that may be printed, and those that are selected of them. Both outlive the strip.
    void Zeigen(KartenModell &modell, Kartengitter &gitter);
    // Puts another control at the strip's end.
    void Anfuegen(QWidget *widget);

    bool Laeuft() const { return laeuft_; }

    // Tells anew what would be printed.
    void VorhabenZeigen();

private:
    struct Auftrag
    {
        std::vector<std::int64_t> karten;
        QString keine; // what is said where there are none
    };

    QLineEdit *Feld(const QString &text, const QString &name, const QString &tipp);
    QPushButton *Knopf(const QString &text, const QString &name);
    void cmdDrucken_Click();
    void cmdVorschau_Click();
    void Ausfuehren(const std::function<void(const Auftrag &auftrag)> &arbeit);
    bool NachAuswahl() const;
    std::optional<qint16> Nummer(QLineEdit *feld, const QString &name);
    std::optional<Auftrag> AuftragLesen();
    std::vector<std::int64_t> Gewaehlte() const;
    int Drucken(const Auftrag &auftrag, QPrinter &drucker);
    void Vorschau(const Auftrag &auftrag);

    Dienste dienste_;
    Drucker drucker_;
    QWidget *inhalt_;
    KartenModell *modell_ = nullptr;
    Kartengitter *gitter_ = nullptr;
    QHBoxLayout *zeile_ = nullptr;
    QLineEdit *txtVon_ = nullptr;
    QLineEdit *txtBis_ = nullptr;
    QLabel *vorhaben_ = nullptr;
    QProgressBar *progress_ = nullptr;
    bool laeuft_ = false;
};

} // namespace paukfix
