// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QClipboard>
#include <QLineEdit>

#include <functional>

class QStringListModel;

namespace paukfix {

// The line of a card's topic. Text of several lines that comes into it becomes one, by whatever road. While
// one types, the topics that contain what is typed are offered; one that is taken is an edit like any other.
class Themenzeile final : public QLineEdit
{
public:
    explicit Themenzeile(QWidget *parent);

    // What is offered; asked whenever the keyboard comes here.
    std::function<QStringList()> themen = [] { return QStringList(); };

    // The topic as the record has it. One that is far too long is shown with its beginning and stays as it
    // is.
    void Zeigen(const QString &thema);

    // What is shown can be read and copied, and not be changed, until another topic is shown.
    void Schuetzen();

    QString Thema() const { return isReadOnly() ? thema_ : text(); }

protected:
    void focusInEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    void Einfuegen(QClipboard::Mode woher);
    void SchrittBeginnen();

    QString thema_;
    QStringListModel *vorschlaege_;
};

} // namespace paukfix
