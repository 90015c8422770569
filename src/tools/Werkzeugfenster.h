// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardMedia.h"
#include "Dienste.h"
#include "KarteiOeffner.h"
#include "Werkbank.h"
#include "Zielwahl.h"

#include <QDialog>
#include <QString>

#include <functional>
#include <optional>
#include <utility>

class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QVBoxLayout;

namespace paukfix {

class Medienwahl;

// The family of the tools' dialogs: heading and explanation on a card, the fields below it, progress and
// buttons at the bottom. Enter runs the tool, Escape closes the dialog, but not while the tool is running.
class Werkzeugfenster : public QDialog
{
public:
    void reject() override;

protected:
    Werkzeugfenster(KarteiOeffner &oeffner, const Dienste &dienste, const QString &name, const QString &titel,
                    const QString &ueberschrift, QWidget *parent);

    // The dialog is built from top to bottom by these. Texts are shown letter by letter.
    void Erklaeren(const QStringList &saetze);
    void ErklaerungZeigen(bool zeigen);
    // The box of separators; `daneben` stand in its row, each behind its caption.
    QComboBox *TrennzeichenBauen(const QList<std::pair<QString, QWidget *>> &daneben = {});
    // A row of fields, each behind its caption; the first caption stands in the column of captions.
    void ZeileBauen(const QList<std::pair<QString, QWidget *>> &felder);
    QLineEdit *DateinameBauen(const QString &tipp, const std::function<void()> &suchen);
    QLabel *HinweisBauen(const QString &text);
    // The offer to copy pictures and sounds, below the file's name.
    Medienwahl *MedienBauen();
    // Of what open cards name, to the directory of the new file that is named in `feld`.
    void MedienAnbieten(Medienwahl *wahl, const std::optional<QList<MediaName>> &medien, QLineEdit *feld);
    // What takes a row of its own; one that can grow gets the room of a larger window.
    void FlaecheBauen(QWidget *flaeche);

    // One line above the buttons that tells what OK would do. Nothing where that is not known.
    void VorhabenZeigen(const QString &text);

    QGridLayout *Felder() { return felder_; }

    void KnoepfeBauen(const std::function<void()> &cmdOK_Click);
    // Whether the tool may be run, by Enter too.
    void SetOKErlaubt(bool erlaubt);

    // Runs a tool: shows the hourglass and, where it takes long, the progress and a button that ends it, and
    // takes no other keys and clicks meanwhile.
    void Ausfuehren(const std::function<void(const Werkbank &bank)> &arbeit);
    // The same for work that only looks: no copy of the box is kept before it.
    void Nachsehen(const std::function<void(const Werkbank &bank)> &arbeit);

    // Makes a new card file of the name in `feld` with a tool, tells the success and closes the dialog. A
    // name without extension gets that of card files.
    void
    NeueKarteiErstellen(QLineEdit *feld,
                        const std::function<Ausgang(const Werkbank &bank, const QString &ziel)> &erstellen);
    // Puts the path that was chosen for a card file into `feld`. Nothing chosen leaves it as it is; what is
    // no card file's name is reported and not taken. Tells whether it was taken.
    bool KarteinameUebernehmen(QLineEdit *feld, const QString &gewaehlt);
    static DateiDialog TextdateiDialog(const QString &titel, const QString &verzeichnis,
                                       const QString &endung = {});

    Zielwahl &Ziel() { return ziel_; }

    // The open box; a card file is open when a dialog is made.
    CardStore &Store() { return oeffner_.Kartei(); }

    const Dienste &Dienst() const { return dienste_; }

    void changeEvent(QEvent *event) override;

private:
    void cmdZurück_Click();
    void FarbenSetzen();

    KarteiOeffner &oeffner_;
    Dienste dienste_;
    Zielwahl ziel_;
    QWidget *inhalt_ = nullptr;
    QVBoxLayout *spalte_ = nullptr;
    QVBoxLayout *kasten_ = nullptr;
    QGridLayout *felder_ = nullptr;
    QVBoxLayout *hinweise_ = nullptr;
    QLabel *vorhaben_ = nullptr;
    QProgressBar *progress_ = nullptr;
    QPushButton *cmdOK_ = nullptr;
    QPushButton *cmdAbbrechen_ = nullptr; // while a tool is running
    QList<QLabel *> erklaerung_;
    QList<QLabel *> leise_; // in a quieter tone of the text's colour
    QString gewaehlt_;      // in the save dialog
    bool laeuft_ = false;
};

} // namespace paukfix
