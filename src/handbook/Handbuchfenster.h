// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Handbuchinhalt.h"

#include <QDialog>

class QAction;
class QLabel;
class QLineEdit;
class QListWidget;
class QUrl;

namespace paukfix {

class Handbuchseite;
class Handbuchsuche;

// The handbook: its contents at the left, a page beside them, and a word to be searched above.
class Handbuchfenster final : public QDialog
{
public:
    // Comes up with `seite` ("karten.html#suchen") of the handbook in the directory `ordner`.
    Handbuchfenster(const QString &ordner, const QString &seite, QWidget *parent);

    QSize sizeHint() const override;

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void SeiteBauen();
    void InhaltBauen();
    void SucheBauen();
    void Anordnen();
    void Oeffnen(const QString &seite);
    void InhaltZeigen(const QUrl &seite);

    QString ordner_;
    QList<Handbuchkapitel> kapitel_;
    Handbuchseite *seite_ = nullptr;
    Handbuchsuche *suche_ = nullptr;
    QListWidget *inhalt_ = nullptr;
    QLineEdit *wort_ = nullptr;
    QLabel *gefunden_ = nullptr;
};

} // namespace paukfix
