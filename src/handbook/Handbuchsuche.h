// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Handbuchinhalt.h"

#include <QObject>
#include <QTextDocument>

class QTextBrowser;

namespace paukfix {

// The search for a word, on the page that is shown and then on those behind it, round to the first.
class Handbuchsuche final : public QObject
{
    Q_OBJECT

public:
    // `seite` and the files in `ordner` must outlive it.
    Handbuchsuche(QTextBrowser &seite, const QString &ordner, const QList<Handbuchkapitel> &inhalt,
                  QObject *parent);

    // Marks the word everywhere on the page and goes to the first place from here on, where there is one.
    void SetWort(const QString &wort);

    void Weiter() { Gehen({}); }

    void Zurueck() { Gehen(QTextDocument::FindBackward); }

signals:
    // What came of it, for the eyes: "2 von 5"; empty where nothing is searched.
    void Gefunden(const QString &text);

private:
    void Gehen(QTextDocument::FindFlags richtung);
    bool StehtAuf(const QString &datei) const;
    void Markieren();
    void Melden();

    QTextBrowser &seite_;
    QString ordner_;
    QList<Handbuchkapitel> inhalt_;
    QString wort_;
};

} // namespace paukfix
