// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QTimer>

#include <deque>
#include <functional>
#include <utility>

namespace paukfix {

// What a user does while the program waits in a window: scenes that are tried again and again until each has
// happened, one after the other.
class Drehbuch
{
public:
    // A scene looks for what it needs, acts, and returns true when it has happened.
    using Szene = std::function<bool()>;

    explicit Drehbuch(std::deque<Szene> szenen) : szenen_(std::move(szenen))
    {
        QObject::connect(&takt_, &QTimer::timeout, &takt_, [this] { Weiter(); });
        takt_.setSingleShot(true);
        takt_.start(1);
    }

    bool Fertig() const { return szenen_.empty(); }

private:
    void Weiter()
    {
        if (szenen_.empty())
            return;
        // A scene may open a window that waits: the next one plays within it.
        takt_.start(1);
        const Szene szene = szenen_.front();
        szenen_.pop_front();
        if (!szene())
            szenen_.push_front(szene);
    }

    std::deque<Szene> szenen_;
    QTimer takt_;
};

} // namespace paukfix
