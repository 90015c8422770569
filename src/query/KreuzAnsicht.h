// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "AntwortAnsicht.h"

#include <QStringList>

#include <array>

class QKeyEvent;
class QLabel;
class QMouseEvent;

namespace paukfix {

class KreuzZeile;

// The answer ticked on five lines, which stand in an order of their own for each card. What is right appears
// as a second tick beside the learner's.
class KreuzAnsicht final : public AntwortAnsicht
{
    Q_OBJECT

public:
    explicit KreuzAnsicht(QWidget *eltern);

    // Line i takes the place, from the top, that folge[i] says.
    void Mischen(const std::array<int, AntwortAnzahl> &folge);

    void Zeigen(const Abfragekarte &karte) override;
    Antwort Gegeben() const override;
    void Aufloesen(const Abfragekarte &karte, bool vergleichen) override;
    int Hoehe(int breite) const override;
    void SetKompakt(bool kompakt) override;
    QList<QWidget *> Tabfolge() const override;
    QString Hinweise() const override;
    QString Erklaerung() const override;
    QString Ansage() const override;
    bool Ziffer(int ziffer) override;

protected:
    bool eventFilter(QObject *objekt, QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QWidget *Erste() const override;
    void Anordnen();
    QStringList Richtige() const;
    void Check1_Click();
    bool Check1_KeyPress(const KreuzZeile &zeile, const QKeyEvent &taste);
    bool Zeile_Click(const KreuzZeile &zeile, const QObject *objekt, const QMouseEvent &maus);

    std::array<KreuzZeile *, AntwortAnzahl> zeilen_{};
    std::array<std::size_t, AntwortAnzahl> zeileAmPlatz_{}; // which line stands at a place, from the top
    QLabel *titel_ = nullptr;
    QLabel *Label4_ = nullptr;
    int abstand_ = 4; // between the lines
    bool aufgeloest_ = false;
    bool leertaste_ = false; // a tick box is being clicked by the keyboard
};

} // namespace paukfix
