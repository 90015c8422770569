// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Symbole.h"

#include <QLabel>

namespace paukfix {

// What a slot holds: its picture, in the shape of the picture and within the label, or, where it is empty, a
// place that says what to drop there.
class Slotvorschau final : public QLabel
{
public:
    // An empty one shows the symbol and the text.
    Slotvorschau(Symbole symbol, const QString &aufforderung, QWidget *parent);

    void SetBild(const QPixmap &bild);
    // Says instead what is wrong with the file, or nothing while something else stands here.
    void SetHinweis(const QString &hinweis);
    // Something that fits is held over it.
    void SetErwartet(bool erwartet);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString Gesagt() const;
    void Benennen();
    void BildMalen(QPainter &maler) const;
    void AufforderungMalen(QPainter &maler) const;

    Symbole symbol_;
    QString aufforderung_;
    QString hinweis_;
    bool erwartet_ = false;
};

} // namespace paukfix
