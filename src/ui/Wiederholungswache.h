// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QObject>

namespace paukfix {

// Makes sure that a key that is held down is told as repeated, as long as it lives. An X server repeats a key
// by a release and a press of one time; the toolkit (Qt 6.4) sees the repeat only where both arrive together,
// and takes a pair that a busy machine tears apart for a second press: an Enter held too long would check an
// empty answer.
class Wiederholungswache final : public QObject
{
public:
    Wiederholungswache();

protected:
    bool eventFilter(QObject *objekt, QEvent *event) override;

private:
    quint32 losgelassen_ = 0; // scan code
    quint64 zeit_ = 0;        // of the release, in the window system's milliseconds
};

} // namespace paukfix
