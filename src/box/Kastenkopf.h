// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "KastenMasse.h"

#include <QObject>
#include <QWidget>

class QLabel;
class QPushButton;

namespace paukfix {

class Tastenkappe;

// The seven compartments' shares of all cards: a thin bar, and below it their names.
class Anteile final : public QWidget
{
public:
    explicit Anteile(QWidget *parent);

    void SetTabelle(const FachTabelle &tabelle);
    // Whether the names are shown, where there is room for them.
    void SetMitLegende(bool mitLegende);

    // Height of the bar in pixels.
    static constexpr int BalkenHoehe = 12;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void LegendeMalen(QPainter &maler, int oben);

    std::array<int, FachAnzahl> anzahl_{};
    bool mitLegende_ = true;
};

// What stands above the box: left the invitation to go on, which says what Enter does, right the whole box in
// one line and in shares.
class Kastenkopf final : public QObject
{
    Q_OBJECT

public:
    // Wartend: a file is about to be opened, and nobody knows yet what comes next.
    enum class Zustand
    {
        Wartend,
        Geschlossen,
        Ansehen, // open, but nothing is asked
        Offen
    };

    // Its controls are made on `kasten`, which must outlive it.
    explicit Kastenkopf(QWidget &kasten);

    void Anordnen(const KastenMasse &masse);
    void Zeigen(const FachTabelle &tabelle, int vollstesFach, Zustand zustand);
    // A line about the answers so far; may be empty.
    void SetAntworten(const QString &text);

    QPushButton &Weiter() { return *weiter_; }

signals:
    void WeiterGewaehlt();

private:
    void KnopfAnordnen(const KastenMasse &masse);
    void UeberblickAnordnen(const KastenMasse &masse);

    QPushButton *weiter_ = nullptr;
    Tastenkappe *taste_ = nullptr;
    QLabel *karten_ = nullptr;
    QLabel *antworten_ = nullptr;
    Anteile *anteile_ = nullptr;
    KastenMasse masse_;
    bool offen_ = false;
};

} // namespace paukfix
