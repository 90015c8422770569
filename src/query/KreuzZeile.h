// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QWidget>

class QCheckBox;
class QLabel;

namespace paukfix {

class RichTextBox;

// One line of a tick card: the learner's tick, the answer, and after the check the right tick beside a word
// that says how the two agree.
class KreuzZeile final : public QWidget
{
public:
    KreuzZeile(std::size_t nummer, QWidget *eltern);

    // A line that has just been asked.
    void Zeigen(const QString &antwort);
    // Where it stands, from the top, from 0.
    void SetPlatz(int platz);
    void SetKompakt(bool kompakt);
    int Hoehe(int breite) const;
    // From here on the ticks can only be read.
    void Aufloesen(bool richtig);

    bool Angekreuzt() const;
    // Of the answer, in one line.
    QString Antwort() const;

    QCheckBox *Kreuz() const;
    QCheckBox *RichtigesKreuz() const;

    RichTextBox *Text() const { return text_; }

protected:
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    enum class Lage
    {
        Gefragt,
        Schlicht, // rightly left alone
        Richtig,
        Falsch
    };

    class Kaestchen;

    QRect Textplatz(QSize zeile) const;
    void Faerben();
    void Benennen();

    Kaestchen *kreuz_ = nullptr;
    RichTextBox *text_ = nullptr;
    QLabel *vermerk_ = nullptr;
    Kaestchen *richtig_ = nullptr;
    Lage lage_ = Lage::Gefragt;
    bool leer_ = false; // the card has no answer here
    int platz_ = 0;
    int mindestens_ = 0; // pixels high
};

} // namespace paukfix
