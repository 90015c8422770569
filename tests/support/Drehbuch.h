// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Hand.h"

#include <QDeadlineTimer>
#include <QTimer>

#include <deque>
#include <functional>
#include <utility>

namespace paukfix {

// What a user does while the program waits in a window: scenes that are tried again and again until each has
// happened, one after the other. The test is red where one has not; one that does not come within a minute
// closes the window that waits.
class Drehbuch
{
public:
    // A scene looks for what it needs, acts, and returns true when it has happened.
    using Szene = std::function<bool()>;

    explicit Drehbuch(std::deque<Szene> szenen = {}) : szenen_(std::move(szenen))
    {
        QObject::connect(&takt_, &QTimer::timeout, &takt_, [this] { Weiter(); });
        takt_.setSingleShot(true);
        takt_.start(1);
    }

    Drehbuch(const Drehbuch &) = delete;
    Drehbuch &operator=(const Drehbuch &) = delete;

    ~Drehbuch()
    {
        if (!Fertig())
            QTest::qFail(qPrintable(QString("%1 scenes did not happen").arg(szenen_.size())), __FILE__,
                         __LINE__);
    }

    // One more, behind the last.
    void Dazu(Szene szene)
    {
        szenen_.push_back(std::move(szene));
        frist_.setRemainingTime(Geduld);
        takt_.start(1);
    }

    bool Fertig() const { return szenen_.empty(); }

    // In the window of this name, as soon as it can be used.
    static Szene In(const QString &name, std::function<void(QWidget &)> tun)
    {
        return [name, tun = std::move(tun)] {
            QWidget *fenster = Hand::Bereit(name);
            if (fenster)
                tun(*fenster);
            return fenster != nullptr;
        };
    }

    // In the message or dialog of this type that waits for an answer.
    template <typename Fenster>
    static Szene In(std::function<void(Fenster &)> tun)
    {
        return [tun = std::move(tun)] {
            auto *fenster = dynamic_cast<Fenster *>(QApplication::activeModalWidget());
            if (!fenster)
                return false;
            Hand::Aktivieren(fenster);
            if (!fenster->isActiveWindow())
                return false;
            tun(*fenster);
            return true;
        };
    }

private:
    static constexpr qint64 Geduld = 60000; // ms

    void Weiter()
    {
        if (szenen_.empty())
            return;
        // A scene may open a window that waits: the next one plays within it.
        takt_.start(1);
        const Szene szene = szenen_.front();
        szenen_.pop_front();
        if (szene()) {
            frist_.setRemainingTime(Geduld);
            return;
        }
        szenen_.push_front(szene);
        if (!frist_.hasExpired())
            return;
        takt_.stop();
        if (QWidget *fenster = QApplication::activeModalWidget())
            fenster->close();
    }

    std::deque<Szene> szenen_;
    QDeadlineTimer frist_{Geduld};
    QTimer takt_;
};

} // namespace paukfix
