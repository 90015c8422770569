// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QWidget>

#include <optional>

class QKeyEvent;
class QLabel;
class QPixmap;
class QRadioButton;

namespace paukfix {

// The line below the answers: a face, the verdict in words, and two options by which the learner passes or
// changes it. It has its place while it is hidden.
class UrteilZeile final : public QWidget
{
    Q_OBJECT

public:
    explicit UrteilZeile(QWidget *eltern);

    // Hidden, without a verdict.
    void Leeren();
    // Leaves the verdict to the learner.
    void Fragen();
    // Shows a verdict that was chosen by Waehlen() or by hand, with the face in the file `gesicht`.
    void Zeigen(bool richtig, const QString &gesicht);
    // Chooses as by hand.
    void Waehlen(bool richtig);
    QString Text() const;

    QList<QWidget *> Tabfolge() const;
    void Faerben();

signals:
    void Gewaehlt(bool richtig);

protected:
    bool eventFilter(QObject *objekt, QEvent *event) override;

private:
    QRadioButton *OptionBauen(const QString &text, const QString &name, bool richtig);

    QLabel *Image1_ = nullptr;
    QLabel *urteil_ = nullptr;
    QRadioButton *Ergebnis_R_ = nullptr;
    QRadioButton *Ergebnis_F_ = nullptr;
    std::optional<bool> gezeigt_; // the verdict
};

} // namespace paukfix
