// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "AbfrageLauf.h"

#include <QList>
#include <QString>
#include <QWidget>

namespace paukfix {

using namespace Qt::StringLiterals;

// A form of the answer on the card: takes the answer, says what it is, and shows the solution beside it.
class AntwortAnsicht : public QWidget
{
    Q_OBJECT

public:
    using QWidget::QWidget;

    // Of the forms that lie in one window the one that is shown has the name of the first answer.
    void SetGezeigt(bool gezeigt)
    {
        setVisible(gezeigt);
        Erste()->setObjectName(gezeigt ? u"Antwort(0)"_s : QString());
    }

    // The form for a card that has just been asked, whatever became of the last one.
    virtual void Zeigen(const Abfragekarte &karte) = 0;
    virtual Antwort Gegeben() const = 0;
    // Shows the solution; the answer can only be read from here on. `vergleichen`: says too where the answer
    // parts from it.
    virtual void Aufloesen(const Abfragekarte &karte, bool vergleichen) = 0;

    // What it takes, from the first to the solution, in `breite` pixels.
    virtual int Hoehe(int breite) const = 0;
    // In a small window: tighter, and without what can be missed.
    virtual void SetKompakt(bool kompakt) = 0;

    // Where Tab goes, in this order; the keyboard begins at the first.
    virtual QList<QWidget *> Tabfolge() const = 0;
    // The keys that answer, as Tastenkappe shows them; empty where the form shows them itself.
    virtual QString Hinweise() const = 0;

    // After a wrong answer: what would have been right, in a sentence; empty where it can be seen.
    virtual QString Erklaerung() const { return {}; }

    // What the solution says beside the verdict, for those who hear it.
    virtual QString Ansage() const = 0;

    // A digit, from 0, that no control has taken; false where it means nothing here.
    virtual bool Ziffer(int /*ziffer*/) { return false; }

signals:
    void Fertig();     // the learner wants his answer to be checked
    void Angeklickt(); // he has answered by mouse

private:
    virtual QWidget *Erste() const = 0;
};

} // namespace paukfix
