// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Abfrage.h"
#include "AppConfig.h"
#include "BoxZustand.h"
#include "CardStore.h"
#include "Kartenabfrage.h"
#include "Meldungen.h"
#include "Zufall.h"

#include <QDialog>
#include <QString>

#include <array>
#include <functional>

class BildBox;
class Flaeche;
class RichTextBox;
class QCheckBox;
class QKeyEvent;
class QLabel;
class QLayout;
class QMouseEvent;
class QPushButton;
class QRadioButton;

// What a query works on and tells.
struct AbfrageUmgebung
{
    CardStore &store;
    BoxZustand &zustand;
    Meldungen &meldungen;
    Zufall &zufall;
    const AppConfig &konfig;
    std::function<void(const QString &pfad)> klang = [](const QString &) {}; // plays a sound file
    std::function<void()> stille = [] {};                                    // stops it
    std::function<void()> automatikAus = [] {}; // switches the automatic mode off
    bool bearbeitbar = true;                    // there is an editor that the card can be sent to
    // Called right before the window is shown, and before it goes: the keyboard is to be handed over.
    std::function<void()> erscheint = [] {};
    std::function<void()> geht = [] {};
};

// The query window: asks the current card of the card table once and leaves the verdict in AbfrageErgebnis.
class PFUse final : public QDialog
{
public:
    using Ausgang = Kartenabfrage::Ausgang;

    explicit PFUse(AbfrageUmgebung umgebung, QWidget *parent = nullptr);

    // Shows the window modally for the current card and returns when it is closed.
    Ausgang Fragen();

    // A verdict is shown.
    bool IstBeurteilt() const { return ausgang_ == Ausgang::Beurteilt; }

    // What the learner has made of the window, after Fragen(); what the settings say where he has left it.
    const Fensterlage &Lage() const { return lage_; }

    void done(int ergebnis) override;

protected:
    bool eventFilter(QObject *objekt, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;
    void moveEvent(QMoveEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    enum class Stand
    {
        Gefragt,
        Geprueft,
        Beurteilt
    };

    // Building the window (PFUseAufbau.cpp).
    void Aufbauen();
    QLayout *KopfBauen();
    QLayout *ErgebnisBauen();
    QLayout *KnoepfeBauen();
    void AntwortenBauen();
    void TippenBauen();
    void AnkreuzenBauen();
    void ZeileBauen(std::size_t i, int nummer);
    void TabFolge();
    void FarbenSetzen();
    void ZeilenFaerben();
    void FelderUmranden();

    // Its place and size (PFUseLage.cpp).
    void GroesseWaehlen();
    void LageMerken(const QEvent &event);
    void LageAbschliessen();

    void FrageAnzeigen();
    void BildZeigen(const QString &name);
    void BildPlatzieren();
    QRect Bildplatz() const;
    QRect BildImKasten(QRect platz) const;
    void TextUmBild();
    void KlangSpielen(const QString &name);
    void KlangAnbieten(const QString &name);
    void HinweiseZeigen();
    void KreuzeBewerten();
    void UrteilZeigen(bool richtig, const QString &bild);

    bool MFrage_KeyPress(const QKeyEvent &taste);
    bool Antwort_KeyPress(const QKeyEvent &taste);
    bool Check1_KeyPress(std::size_t zeile, const QKeyEvent &taste);
    bool Ergebnis_KeyPress(QRadioButton &knopf, const QKeyEvent &taste);
    bool Zeile_Click(const QObject *objekt, const QMouseEvent &maus);
    void Check1_Click();
    void Cpruefen_Click();
    void Ergebnis_R_Click();
    void Ergebnis_F_Click();
    void Clöschen_Click();
    void Command1_Click();
    void Command3_Click();

    AbfrageUmgebung umgebung_;
    Fensterlage lage_;
    bool benutzt_ = false; // it has had the keyboard
    Abfragekarte karte_;
    Stand stand_ = Stand::Gefragt;
    Ausgang ausgang_ = Ausgang::Abgebrochen;
    std::array<std::size_t, AntwortAnzahl>
        zeileAmPlatz_{};     // which answer line stands at a place, from the top
    bool geht_ = false;      // the window is on its way out
    bool leertaste_ = false; // the tick box is being clicked by the keyboard
    bool mitBild_ = false;   // one of the card's pictures will be shown
    QString klang_;          // the card's sound for what is shown; empty where it has none
    QRect bildPlatz_; // where on the card it goes, as the card says or the learner dragged it; may be empty

    Flaeche *kasten_ = nullptr; // the card's surface
    Flaeche *Frame1_ = nullptr; // its frame, in the verdict's colour
    Flaeche *strich_ = nullptr; // between question and answer; shows the focus of the question
    QLabel *MaskFrageNr_ = nullptr;
    QLabel *MaskFachNr_ = nullptr;
    QLabel *MaskThema_ = nullptr;
    RichTextBox *MFrage_ = nullptr;
    QWidget *antworten_ = nullptr;
    std::array<RichTextBox *, AntwortAnzahl + 1> Antwort_{};
    std::array<QCheckBox *, AntwortAnzahl> Check1_{};
    std::array<QCheckBox *, AntwortAnzahl> Check2_{};
    std::array<Flaeche *, AntwortAnzahl + 1> feld_{}; // what an answer stands on, with its ticks
    QLabel *Label4_ = nullptr;
    BildBox *Picture1_ = nullptr;
    QWidget *ergebnis_ = nullptr;
    QLabel *Image1_ = nullptr;
    QLabel *urteil_ = nullptr;
    QRadioButton *Ergebnis_R_ = nullptr;
    QRadioButton *Ergebnis_F_ = nullptr;
    QPushButton *nochEinmal_ = nullptr; // plays klang_ again
    QPushButton *Cpruefen_ = nullptr;
    QPushButton *Clöschen_ = nullptr;
    QPushButton *Command1_ = nullptr;
    QPushButton *Command3_ = nullptr;
    QLabel *hinweise_ = nullptr;
    QList<QLabel *> leise_; // labels in the quiet tone
};
