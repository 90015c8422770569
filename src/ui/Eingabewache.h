// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <deque>
#include <memory>

class QEvent;

namespace paukfix {

// Keeps keys and clicks, in the order in which they were made, while the card flies, the die rolls or a query
// comes and goes: windows live on, but nobody can start something else, and no key is lost on its way from
// one window to the next.
class Eingabewache final : public QObject
{
public:
    // Watches `box`, which must outlive it, and every window that input is handed to.
    explicit Eingabewache(QWidget &box);
    ~Eingabewache() override;

    // From now on input is kept.
    void Halten();
    // Lets pending events run. True once a key or mouse button has been pressed: a movement should end then.
    bool Unterbrochen();
    // The keys that are kept go to the window `ziel`, one by one with the event loop; what comes meanwhile
    // goes behind them. Clicks are for the box only, and are dropped where it is not the one.
    void Weitergeben(QWidget &ziel);

    // The same, to the box.
    void Weitergeben() { Weitergeben(box_); }

protected:
    bool eventFilter(QObject *objekt, QEvent *event) override;

private:
    struct Aufgehoben
    {
        QPointer<QObject> empfaenger;
        std::unique_ptr<QEvent> event;
    };

    bool HinterMeldung() const;
    bool GehoertDazu(const QObject *objekt) const;
    bool Gedrueckt(const QEvent &loslassen) const;
    void Weiter();
    void Liefern();

    QWidget &box_;
    QPointer<QWidget> ziel_;
    std::deque<Aufgehoben> aufgehoben_;
    bool haelt_ = false;
    bool liefert_ = false; // what passes now was kept before
};

} // namespace paukfix
