// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QClipboard>
#include <QLineEdit>

namespace paukfix {

// The line of a card's topic. Text of several lines that comes into it becomes one, by whatever road.
class Themenzeile final : public QLineEdit
{
public:
    using QLineEdit::QLineEdit;

    // The topic as the record has it. One that is far too long is shown with its beginning and stays as it
    // is.
    void Zeigen(const QString &thema);

    QString Thema() const { return isReadOnly() ? thema_ : text(); }

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void Einfuegen(QClipboard::Mode woher);
    void SchrittBeginnen();

    QString thema_;
};

} // namespace paukfix
