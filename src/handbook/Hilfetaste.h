// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QObject>

#include <functional>

namespace paukfix {

// Calls `hilfe` when F1 is pressed in any window of the application: not while a menu is open, nor while a
// work reports its progress, nor while the help itself is shown.
class Hilfetaste final : public QObject
{
public:
    explicit Hilfetaste(std::function<void()> hilfe);

protected:
    bool eventFilter(QObject *objekt, QEvent *event) override;

private:
    std::function<void()> hilfe_;
    bool offen_ = false;
};

} // namespace paukfix
