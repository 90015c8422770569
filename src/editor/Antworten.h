// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Kartenblatt.h"

#include <QWidget>

class QCheckBox;
class QGridLayout;
class QTextCharFormat;

namespace paukfix {

class Flaeche;
class KartenTextBox;

// The answers of a card: five texts with a tick each where it is to be ticked, else the first text alone.
// They share one room, so nothing around them moves when the type changes.
class Antworten final : public QWidget
{
    Q_OBJECT

public:
    // `standard` is what an empty answer is typed in: a line of it is seen whole, without a scroll bar.
    Antworten(const QTextCharFormat &standard, QWidget *parent);

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
    void FarbenSetzen(const QPalette &form);
    // Outlines the field of this box, if it is one of them, as the one that has the keyboard.
    void Umranden(const KartenTextBox *aktiv);

signals:
    void kreuzGeaendert(); // by the writer

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    std::array<KartenTextBox *, AntwortBoxen> Antwort_{};
    std::array<QCheckBox *, AntwortBoxen> Check1_{};
    std::array<Flaeche *, AntwortBoxen> feld_{}; // what an answer stands on, with its tick
    QGridLayout *zeilen_;
};

} // namespace paukfix
