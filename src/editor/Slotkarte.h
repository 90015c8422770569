// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Flaeche.h"
#include "Medienkopie.h"

#include <functional>
#include <optional>

class QLabel;
class QPushButton;
class QRadioButton;
class QVBoxLayout;

namespace paukfix {

class KurzLabel;
class Slotvorschau;

// One of the three slots of a media dialog, as a card: its option, what it holds, and the name of its file.
// A file can be dropped on it.
class Slotkarte final : public Flaeche
{
public:
    // `nummer` from 1 on; what is dropped must be of this kind.
    Slotkarte(int nummer, Medienart art, QWidget *parent);

    std::function<void()> geklickt = [] {};                               // on what it holds
    std::function<void()> anzuhoeren = [] {};                             // its sound
    std::function<void(const Medium &)> gebracht = [](const Medium &) {}; // dropped on it

    QRadioButton *Option() const { return option_; }

    // The card's own, while it does not lend its place to others.
    Slotvorschau *Vorschau() const { return vorschau_; }

    // The name as the card has it; empty for none.
    void NamenZeigen(const QString &name);
    // The sound's length; empty where it cannot be played. Nothing for no sound at all.
    void DauerZeigen(const std::optional<QString> &dauer);
    // The chosen slot has the outline, and shows these instead of its own; null for those it keeps.
    void Waehlen(bool gewaehlt, Slotvorschau *vorschau, KurzLabel *name);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void FarbenSetzen();
    std::optional<Medium> Passendes(const QMimeData &mime) const;

    Medienart art_;
    QRadioButton *option_;
    Slotvorschau *vorschau_;
    KurzLabel *belegung_;
    QPushButton *abspielen_;
    QLabel *dauer_;
    QVBoxLayout *bildplatz_;
    QVBoxLayout *namensplatz_;
};

} // namespace paukfix
