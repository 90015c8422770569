// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Kartenblatt.h"

#include <QScrollArea>

class QCheckBox;
class QGridLayout;
class QTextCharFormat;

namespace paukfix {

class Antwortfeld;
class KartenTextBox;

// The answers of a card: five texts with a tick each where it is to be ticked, else the first text alone.
// They share one room, so nothing around them moves when the type changes; where it is too low for them, they
// scroll together.
class Antworten final : public QScrollArea
{
    Q_OBJECT

public:
    // Texts are shown `faktor` times as large. `standard` is what an empty answer is typed in: a line of it
    // is seen whole.
    Antworten(const QTextCharFormat &standard, double faktor, QWidget *parent);

    void Zeigen(const Kartenblatt &blatt, const QTextCharFormat &standard);
    // The texts and ticks, those that are not seen too.
    void Lesen(Kartenblatt &blatt) const;
    // The texts are in the record now.
    void Gespeichert();
    void ArtZeigen(Antwortart art);
    // A box that is not there cannot be typed into; the first always is.
    void Fokus(std::size_t box);

    const std::array<KartenTextBox *, AntwortBoxen> &Boxen() const { return Antwort_; }

    QList<QWidget *> Tabfolge() const;

    // The height of five answers, in pixels.
    int Ganz() const { return 5 * zeile_ + 4 * Abstand; }

    // For paper: no answer is scrolled away while this holds, and an empty line says nothing.
    void SetGedruckt(bool gedruckt);

signals:
    void kreuzGeaendert(); // by the writer

protected:
    void resizeEvent(QResizeEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    static constexpr int Abstand = 8; // between the lines of a tick card, in pixels

    void FeldZeigen(std::size_t nummer);
    void FelderZeigen();

    bool gedruckt_ = false;
    int zeile_ = 0; // height of one answer, in pixels
    QWidget *flaeche_;
    std::array<KartenTextBox *, AntwortBoxen> Antwort_{};
    std::array<QCheckBox *, AntwortBoxen> Check1_{};
    std::array<Antwortfeld *, AntwortBoxen> feld_{}; // what an answer stands on, with its tick
    QGridLayout *zeilen_;
};

} // namespace paukfix
