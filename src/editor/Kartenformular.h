// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardEditor.h"
#include "Dienste.h"
#include "Druckauftrag.h"
#include "Knopfzeile.h"
#include "SearchHit.h"

#include <QWidget>

#include <functional>
#include <optional>

class QVBoxLayout;

namespace paukfix {

class Antworten;
class Artwahl;
class Flaeche;
class Formularbild;
class KartenTextBox;
class Kopfzeile;

// The form of the card editor: holds the controls of a card and knows which of its texts were touched.
class Kartenformular final : public QWidget, public Kartensicht
{
    Q_OBJECT

public:
    // Pictures are looked for in `verzeichnis` first, then in the program's directory.
    Kartenformular(const Dienste &dienste, QString verzeichnis, QWidget *parent);

    Kartenblatt Inhalt() const override;
    void Zeigen(const Kartenblatt &blatt, const Formularkopf &kopf) override;
    void KopfZeigen(const Formularkopf &kopf) override;
    void Gespeichert() override;
    void FokusAufFrage() override;
    void FokusAufAntwort(std::size_t box) override;

    // From now on cards are shown to be read, and nothing on the form can be changed.
    void NurLesen();

    // The number of the card, as it stands above it.
    QString Nummer() const;

    // The line above the card, with the marks that ask for the dialogs of its files.
    Kopfzeile *Kopf() const { return kopf_; }

    // The card's files. Who changes them says so (BilderZeigen).
    Bildnamen &Dateien() { return pictureNames_; }

    void BilderZeigen();
    // Puts the caret on the hit of a search, if there is one, and marks it.
    void TrefferZeigen(const SearchHit &treffer);

    // Puts the buttons below the card, and sets the order in which Tab goes through all.
    void Anfuegen(const Knopfzeile &knoepfe);
    // What a text is typed or a picture is moved in.
    QList<QWidget *> Felder() const;
    // Printing leaves the form light grey, also when the desktop's colours change.
    void FarbenSetzen();

    // Prints the card as the form shows it, dark on white, without the buttons. From then on the form's
    // ground is light grey, whatever came of it. Throws StoreError, also where `drucker` gives none.
    void Drucken(const std::function<std::unique_ptr<QPrinter>()> &drucker);

signals:
    void nummerEingegeben(const QString &nummer);
    void geaendert();        // a text, the topic or the picture, by the writer
    void auswahlGeaendert(); // the type or a tick, by the writer

protected:
    bool eventFilter(QObject *objekt, QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void Anordnen();
    void BoxVerbinden(KartenTextBox *box);
    void NebensachenZeigen(bool sichtbar);

    Dienste dienste_;
    QString verzeichnis_;
    Bildnamen pictureNames_;
    bool nurLesen_ = false;
    bool zeigt_ = false;    // the form is being filled: nothing is changed by the writer
    bool gedruckt_ = false; // from then on its ground is light grey

    QVBoxLayout *zeilen_;
    Kopfzeile *kopf_;
    Flaeche *frageFeld_;
    KartenTextBox *MFrage_;
    Artwahl *art_;
    Antworten *antworten_;
    Formularbild *bild_;
    std::optional<Knopfzeile> knoepfe_; // below the card; with the type no part of what is printed
};

} // namespace paukfix
