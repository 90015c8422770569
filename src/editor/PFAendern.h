// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "AppConfig.h"
#include "CardEditor.h"
#include "Dialoge.h"
#include "Formulardruck.h"
#include "RichTextLosses.h"
#include "SearchHit.h"

#include <QBasicTimer>
#include <QMainWindow>

#include <functional>
#include <optional>

class Flaeche;
class Formularbild;
class KartenTextBox;
class Themenzeile;
class QButtonGroup;
class QCheckBox;
class QGridLayout;
class QKeyEvent;
class QLabel;
class QLayout;
class QLineEdit;
class QMenu;
class QPushButton;
class QRadioButton;
class QSessionManager;
class QTextCharFormat;
struct Auswahlformat;

// What the card editor works on and tells.
struct EditorUmgebung
{
    CardStore &kartei;
    AppConfig &konfig; // the standard font, the program's directory
    Meldungen &meldungen;
    Dialoge &dialoge;
    SearchHit &suche;
    std::function<void(const QString &pfad)> klang = [](const QString &) {}; // plays a sound file
    std::function<void()> stille = [] {};                                    // stops it
    std::function<std::unique_ptr<QPrinter>()> drucker = Standarddrucker;
    // The editor has closed; nothing is lost. The window may be deleted later, not within.
    std::function<void()> geschlossen = [] {};
};

// The card editor: walks through the cards of the open card file, changes them and adds new ones.
class PFÄndern final : public QMainWindow, private Kartenformular
{
public:
    explicit PFÄndern(EditorUmgebung umgebung, QWidget *parent = nullptr);

    // Shows the window on the current card.
    void Form_Load();

protected:
    bool eventFilter(QObject *objekt, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    // Building the window (PFAendernAufbau.cpp, PFAendernMenue.cpp).
    void Aufbauen();
    QLayout *KopfBauen();
    QLayout *ArtBauen();
    QWidget *AntwortenBauen();
    QLayout *KnoepfeBauen();
    Flaeche *TextfeldBauen(KartenTextBox *box);
    void MenueBauen();
    void TabFolge();
    void GroesseWaehlen();
    void FarbenSetzen();
    void FarbenAbleiten();
    void FelderUmranden();
    QList<QWidget *> NichtGedruckt() const;

    // The form (PFAendern.cpp).
    Kartenblatt Inhalt() const override;
    void Zeigen(const Kartenblatt &blatt, const Kartenkopf &kopf) override;
    void KopfZeigen(const Kartenkopf &kopf) override;
    void Gespeichert() override;
    void FokusAufFrage() override;
    void FokusAufAntwort(std::size_t box) override;
    bool DarfVerlieren(const KartenTextBox &box, RichTextLosses verluste);
    void ArtZeigen(Antwortart art);
    Antwortart Art() const;
    void Geaendert();
    void AuswahlGeaendert();
    void Antworttyp_Click();
    void Cadd_Click();
    void MSuchen_Click();
    void TrefferZeigen();
    void MDrucken_Click();
    void SitzungEndet(QSessionManager &sitzung);

    // Keys and focus (PFAendernTasten.cpp).
    bool TasteHaltMenue(const QKeyEvent &taste) const;
    bool Feld_KeyPress(QObject *feld, const QKeyEvent &taste);
    void FokusWechselt(QWidget *neu);
    void FormatFuer(KartenTextBox *box);

    // Running through the cards while a button is held (PFAendernTasten.cpp).
    bool Laufknopf(QObject *knopf, QEvent &event);
    bool LaufBeginnen(CardEditor::Richtung richtung);
    void LaufSchritt();
    void LaufBeenden();

    // The picture of the card, and the dialogs of its files (PFAendernBild.cpp).
    void BildBauen();
    void BilderZeigen(const Bildlage &lage);
    void MBilder_Click();
    void MTon_Click();

    // Formatting (PFAendernFormat.cpp).
    void Formatieren(QTextCharFormat (*befehl)(const Auswahlformat &));
    void MSchriftart_Click();

    EditorUmgebung umgebung_;
    CardEditor editor_;
    Kartenkopf kopf_; // as it is shown
    Bildnamen pictureNames_;
    KartenTextBox *aktiv_ = nullptr; // the box that the menu "Format" acts on; null while it is disabled
    bool zeigt_ = false;             // the form is being filled: nothing is changed by the writer
    bool offen_ = false;
    QBasicTimer lauf_;
    QObject fokuswache_; // goes before the controls do: their going moves the focus
    std::optional<CardEditor::Richtung> laufrichtung_; // none: nobody runs

    QWidget *formular_ = nullptr;
    QLineEdit *MaskFrageNr_ = nullptr;
    QLabel *MaskFachNr_ = nullptr;
    QLabel *LabelNeu_ = nullptr;
    Themenzeile *MaskThema_ = nullptr;
    KartenTextBox *MFrage_ = nullptr;
    QWidget *Frame2_ = nullptr;
    QButtonGroup *art_ = nullptr;
    QRadioButton *Antwort_T_ = nullptr;
    QRadioButton *Antwort_K_ = nullptr;
    QGridLayout *antworten_ = nullptr;
    std::array<KartenTextBox *, AntwortBoxen> Antwort_{};
    std::array<QCheckBox *, AntwortBoxen> Check1_{};
    std::array<Flaeche *, AntwortBoxen> feld_{}; // what an answer stands on, with its tick
    Flaeche *frageFeld_ = nullptr;
    Formularbild *bild_ = nullptr;
    QPushButton *CZZurück_ = nullptr;
    QPushButton *CZurück_ = nullptr;
    QPushButton *CVor_ = nullptr;
    QPushButton *CVVor_ = nullptr;
    QPushButton *CEOF_ = nullptr;
    QPushButton *Cadd_ = nullptr;
    QPushButton *Cback_ = nullptr;
    QLabel *hinweise_ = nullptr;
    QMenu *MFont_ = nullptr;
    bool gedruckt_ = false; // from then on the form's ground is light grey
};
