// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QStatusBar>

class QLabel;
class QToolButton;

namespace paukfix {

class KurzLabel;
class Tastenkappe;

// The line below the box: the open file, what happened last, how the session goes, what runs and what is
// missing, and the keys.
class Statuszeile final : public QStatusBar
{
    Q_OBJECT

public:
    explicit Statuszeile(QWidget *parent);

    // `waehlbar`: another one can be chosen by a click. Without a file that is said instead of its name.
    void SetKartei(const QString &name, bool waehlbar);
    // `kurz`: what is shown where there is not enough room for the text.
    void SetGeschehen(const QString &text, const QString &kurz);
    void SetBilanz(const QString &text, const QString &kurz);
    void SetAutomatik(bool laeuft);
    // Whether the system offers a device for sounds; the line says where it does not.
    void SetTongeraet(bool vorhanden);
    // As Tastenkappe takes them.
    void SetTasten(const QString &muster);

signals:
    void KarteiGewaehlt();

private:
    QToolButton *kartei_ = nullptr;
    KurzLabel *geschehen_ = nullptr;
    KurzLabel *bilanz_ = nullptr;
    QLabel *automatik_ = nullptr;
    QLabel *tongeraet_ = nullptr;
    Tastenkappe *tasten_ = nullptr;
};

} // namespace paukfix
