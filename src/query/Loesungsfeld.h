// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QTextCharFormat>
#include <QTextDocument>
#include <QWidget>

class QLabel;

namespace paukfix {

class RichTextBox;
struct Abfragekarte;
struct Stelle;

// The solution below a typed answer, as far from the left as that: it knows how much room it will take before
// it is shown. What stands behind "Hinweis:" is smaller.
class Loesungsfeld final : public QWidget
{
public:
    static constexpr int Einzug = 13; // of the text, as in the field above

    explicit Loesungsfeld(QWidget *eltern);

    // Of a card that has just been asked: nothing is shown yet.
    void Vorbereiten(const Abfragekarte &karte);
    void SetKompakt(bool kompakt);
    int Hoehe(int breite) const;
    // Lines of the solution without its hint, in `breite` pixels, as far as they are shown at once.
    int Zeilen(int breite) const;

    // Shows the solution with the letters at these places marked, and beside it in words what differs.
    void Zeigen(const Abfragekarte &karte);
    void Vergleichen(const QList<Stelle> &stellen, const QString &worte);
    // What differs, in words; empty where nothing does.
    QString Worte() const;

    RichTextBox *Text() const { return text_; }

protected:
    bool eventFilter(QObject *objekt, QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    // What the solution takes at a width.
    struct Mass
    {
        int breite = -1;
        int zeilen = 0; // without the hint, as far as they are shown at once
        int hoehe = 0;
    };

    const Mass &Messen(int breite) const;
    void Anordnen();

    QLabel *titel_;
    RichTextBox *text_;
    QLabel *worte_;
    QLabel *hinweis_;           // where there is no room for it below the solution
    QTextDocument ganz_, kern_; // the stored solution, with and without its hint
    bool kompakt_ = false;
    mutable Mass mass_; // the last one, as each is asked for many times
};

// A mark of letters that differ, in the colours of a right or a wrong text.
QTextCharFormat Buchstabenmarke(const QPalette &palette, bool richtig);

} // namespace paukfix
