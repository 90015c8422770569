// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QLabel>

#include <functional>

namespace paukfix {

// The name of a compartment on a paper plate on the near wall.
class Schild final : public QLabel
{
public:
    Schild(const QString &text, QWidget *parent);

    // The plate of the fullest compartment has its red border too.
    void SetBetont(bool betont);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    bool betont_ = false;
};

// The red border around the fullest compartment, between two light ones: red alone is not seen on the box.
class Rahmen final : public QWidget
{
public:
    explicit Rahmen(QWidget *parent);

    static constexpr int Dicke = 6; // pixels that it stands out on each side

protected:
    void paintEvent(QPaintEvent *event) override;
};

// A note on paper, laid across the box. It keeps clicks from what lies beneath; where it says what to do, a
// click does it.
class Zettel final : public QLabel
{
public:
    explicit Zettel(QWidget *parent);

    // What a click does; empty where it does nothing.
    void SetTun(std::function<void()> tun);

protected:
    void mouseReleaseEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    std::function<void()> tun_;
};

} // namespace paukfix
