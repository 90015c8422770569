// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QWidget>

#include <optional>

class QBoxLayout;
class QLabel;
class QRadioButton;

namespace paukfix {

// The row below the answers, in the tint of the verdict: a face, the verdict in words and where the card
// goes, and two options by which the learner passes or changes it.
class UrteilZeile final : public QWidget
{
    Q_OBJECT

public:
    explicit UrteilZeile(QWidget *eltern);

    // Hidden, without a verdict.
    void Leeren();
    // In a small window: one line.
    void SetKompakt(bool kompakt);
    // Leaves the verdict to the learner.
    void Fragen();
    // Shows a verdict that was chosen by Waehlen() or by hand, with the face in the file `gesicht` and a
    // sentence that says more.
    void Zeigen(bool richtig, const QString &gesicht, const QString &satz);
    // Chooses as by hand.
    void Waehlen(bool richtig);
    // All that the row says.
    QString Text() const;
    // From 0 to 1 while the tint appears.
    void SetDeckung(double deckung);

    QSize sizeHint() const override;
    QList<QWidget *> Tabfolge() const;

signals:
    void Gewaehlt(bool richtig);

protected:
    bool eventFilter(QObject *objekt, QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QRadioButton *OptionBauen(const QString &text, const QString &name, bool richtig);
    void Faerben();
    void AbstandSetzen();

    QBoxLayout *worte_ = nullptr; // verdict and sentence
    QLabel *Image1_ = nullptr;
    QLabel *urteil_ = nullptr;
    QLabel *satz_ = nullptr;
    QLabel *gewertet_ = nullptr; // what the options are
    QRadioButton *Ergebnis_R_ = nullptr;
    QRadioButton *Ergebnis_F_ = nullptr;
    std::optional<bool> gezeigt_; // the verdict
    bool kompakt_ = false;
    double deckung_ = 1;
};

} // namespace paukfix
