// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QLabel>
#include <QList>

namespace paukfix {

// Keys and what they do, in one small quiet line: "[Eingabe] weiter · [Alt]+[R] richtig", each name in
// brackets drawn as a key. Its text, which screen readers say, is the same without the brackets. Where the
// line is too narrow, the last groups (parted by " · ") are left out.
class Tastenkappe final : public QLabel
{
public:
    explicit Tastenkappe(const QString &muster, QWidget *parent = nullptr);

    void SetTasten(const QString &muster);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    struct Teil
    {
        QString text;
        bool taste = false;
        int gruppe = 0;
    };

    int Breite(const Teil &teil) const;
    int BisGruppe(int gruppe) const;
    void SchriftSetzen();

    QString muster_;
    QList<Teil> teile_;
};

} // namespace paukfix
