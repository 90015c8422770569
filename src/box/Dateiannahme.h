// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QObject>

#include <functional>

class QMimeData;
class QWidget;

namespace paukfix {

// Takes a file that is dropped on a window.
class Dateiannahme final : public QObject
{
    Q_OBJECT

public:
    // `passt` tells of a path whether the window can open it, now.
    Dateiannahme(QWidget &fenster, std::function<bool(const QString &pfad)> passt);

signals:
    // After the drop is over, which must not wait for a question.
    void Abgelegt(const QString &pfad);

protected:
    bool eventFilter(QObject *objekt, QEvent *event) override;

private:
    QString Pfad(const QMimeData &mime) const;

    std::function<bool(const QString &pfad)> passt_;
};

} // namespace paukfix
