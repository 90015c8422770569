// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "PFAendern.h"

#include "CharFormat.h"
#include "Flaeche.h"
#include "Formatierung.h"
#include "Formularbild.h"
#include "KartenTextBox.h"
#include "Kartensuche.h"
#include "Schritt.h"
#include "Suchen.h"
#include "Themenzeile.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QCloseEvent>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QSessionManager>
#include <QTextBlock>

#include <exception>
#include <utility>

PFÄndern::PFÄndern(EditorUmgebung umgebung, QWidget *parent)
    : QMainWindow(parent),
      umgebung_(std::move(umgebung)),
      editor_(umgebung_.kartei, umgebung_.meldungen, *this)
{
    Aufbauen();
    connect(
        qGuiApp, &QGuiApplication::commitDataRequest, this,
        [this](QSessionManager &sitzung) { SitzungEndet(sitzung); }, Qt::DirectConnection);
    connect(qApp, &QApplication::focusChanged, &fokuswache_,
            [this](QWidget * /*alt*/, QWidget *neu) { FokusWechselt(neu); });
}

void PFÄndern::Form_Load()
{
    offen_ = true;
    show();
    raise();
    activateWindow();
    MFrage_->setFocus();
    editor_.Load();
}

Kartenblatt PFÄndern::Inhalt() const
{
    Kartenblatt blatt;
    blatt.Frage = MFrage_->RichText();
    blatt.Frage_Klartext = MFrage_->PlainText();
    blatt.Frage_bearbeitet = MFrage_->Bearbeitet();
    blatt.Frage_unsichtbar = blatt.Frage_Klartext.isEmpty() && !MFrage_->IstLeer();
    for (std::size_t i = 0; i < AntwortBoxen; ++i) {
        blatt.Antwort[i] = Antwort_[i]->RichText();
        blatt.Antwort_Klartext[i] = Antwort_[i]->PlainText();
        blatt.Antwort_bearbeitet[i] = Antwort_[i]->Bearbeitet();
        blatt.Antwort_unsichtbar[i] = blatt.Antwort_Klartext[i].isEmpty() && !Antwort_[i]->IstLeer();
        blatt.Antwort_ch[i] = Check1_[i]->isChecked();
    }
    blatt.art = Art();
    blatt.Thema = MaskThema_->Thema();
    blatt.pictureNames = pictureNames_;
    blatt.lage = bild_->Lage();
    return blatt;
}

void PFÄndern::Zeigen(const Kartenblatt &blatt, const Kartenkopf &kopf)
{
    {
        const QScopedValueRollback zeigt(zeigt_, true);
        pictureNames_ = blatt.pictureNames;
        KopfZeigen(kopf);
        MaskThema_->Zeigen(blatt.Thema);
        // What is typed into an empty box comes in the standard font.
        const QTextCharFormat standard = StandardFormat(umgebung_.konfig.schrift);
        MFrage_->Zeigen(blatt.Frage, standard);
        for (std::size_t i = 0; i < AntwortBoxen; ++i) {
            Antwort_[i]->Zeigen(blatt.Antwort[i], standard);
            Check1_[i]->setChecked(blatt.Antwort_ch[i]);
        }
        ArtZeigen(blatt.art);
    }
    BilderZeigen(blatt.lage);
}

void PFÄndern::KopfZeigen(const Kartenkopf &kopf)
{
    kopf_ = kopf;
    MaskFrageNr_->setText(kopf.FrageNr);
    MaskFachNr_->setText(kopf.FachNr);
    LabelNeu_->setVisible(kopf.neu);
}

Antwortart PFÄndern::Art() const
{
    if (Antwort_K_->isChecked())
        return Antwortart::Ankreuzen;
    return Antwort_T_->isChecked() ? Antwortart::Text : Antwortart::Keine;
}

void PFÄndern::ArtZeigen(Antwortart art)
{
    art_->setExclusive(false); // a card may say no type
    Antwort_T_->setChecked(art == Antwortart::Text);
    Antwort_K_->setChecked(art == Antwortart::Ankreuzen);
    art_->setExclusive(true);

    const bool ankreuzen = art == Antwortart::Ankreuzen;
    // What goes away leaves the keyboard where it can be typed, not to whatever control comes next.
    if (!ankreuzen && antworten_->parentWidget()->isAncestorOf(focusWidget()))
        FokusAufAntwort(0);
    // Tab goes to the selected option.
    Antwort_T_->setFocusPolicy(ankreuzen ? Qt::ClickFocus : Qt::StrongFocus);
    Antwort_K_->setFocusPolicy(ankreuzen ? Qt::StrongFocus : Qt::ClickFocus);
    for (std::size_t i = 0; i < AntwortBoxen; ++i) {
        feld_[i]->setVisible(ankreuzen || i == 0);
        Check1_[i]->setVisible(ankreuzen);
        antworten_->setRowStretch(static_cast<int>(i), ankreuzen || i == 0 ? 1 : 0);
    }
}

void PFÄndern::Antworttyp_Click()
{
    ArtZeigen(Art());
    AuswahlGeaendert();
}

// The type and the ticks alone make no new card.
void PFÄndern::AuswahlGeaendert()
{
    if (!editor_.Neu())
        Geaendert();
}

void PFÄndern::Geaendert()
{
    if (!zeigt_)
        editor_.cardDirty = true;
}

// Asked before the first change of a text; what the writer then has typed is never thrown away.
bool PFÄndern::DarfVerlieren(const KartenTextBox &box, RichTextLosses verluste)
{
    const QString was = &box == MFrage_ ? QStringLiteral("Die Frage") : box.accessibleName();
    return umgebung_.meldungen.Fragen(
               QStringLiteral("%1 enthält %2.\nDas kann dieser Editor nicht erhalten: Es geht verloren, wenn "
                              "Sie den Text ändern.\n\nTrotzdem ändern? Bei „Nein“ bleibt der Text, wie er "
                              "ist.")
                   .arg(was, Aufzaehlung(verluste)),
               Meldungen::Antwort::Nein) == Meldungen::Antwort::Ja;
}

void PFÄndern::Gespeichert()
{
    MFrage_->Gespeichert();
    for (KartenTextBox *box : Antwort_)
        box->Gespeichert();
}

void PFÄndern::FokusAufFrage()
{
    MFrage_->setFocus();
}

void PFÄndern::FokusAufAntwort(std::size_t box)
{
    // A box that is not there cannot be typed into; the first always is.
    (feld_[box]->isHidden() ? Antwort_[0] : Antwort_[box])->setFocus();
}

void PFÄndern::Cadd_Click()
{
    const bool neu = editor_.Neu();
    if (editor_.StoreCard() && neu)
        FokusAufFrage(); // of the next new card
}

void PFÄndern::MSuchen_Click()
{
    if (!editor_.StoreIfDirty())
        return;
    umgebung_.suche.feld = 0;
    Suchen fenster(umgebung_.kartei, umgebung_.meldungen, umgebung_.suche, this);
    const bool gesucht = fenster.exec() == QDialog::Accepted;
    // A message over the dialog has taken the keyboard with it: typing goes on here.
    activateWindow();
    if (!gesucht)
        return;
    editor_.AktuelleZeigen();
    TrefferZeigen();
}

// Puts the caret on the hit and marks it.
void PFÄndern::TrefferZeigen()
{
    const SearchHit &treffer = umgebung_.suche;
    const auto stelle = static_cast<qsizetype>(treffer.position) - 1;
    const qsizetype laenge = treffer.letzterBegriff.size();
    if (treffer.feld == 1) {
        MaskThema_->setFocus();
        // Selected backwards, so that the caret stands before the hit.
        MaskThema_->setSelection(static_cast<int>(stelle + laenge), -static_cast<int>(laenge));
    } else if (treffer.feld != 0) {
        KartenTextBox *box =
            treffer.feld == 2 ? MFrage_ : Antwort_.at(static_cast<std::size_t>(treffer.feld - 7));
        box->setFocus();
        QTextCursor cursor(box->document());
        cursor.setPosition(DokumentStelle(*box->document(), stelle + laenge));
        cursor.setPosition(DokumentStelle(*box->document(), stelle), QTextCursor::KeepAnchor);
        box->setTextCursor(cursor);
    }
}

void PFÄndern::MDrucken_Click()
{
    umgebung_.meldungen.Sanduhr(true);
    const QPalette vorher = formular_->palette();
    QWidget *fokus = focusWidget();
    if (fokus)
        fokus->clearFocus(); // no caret on paper, and none that moves on when its control is hidden
    for (QWidget *widget : NichtGedruckt())
        widget->hide();
    hinweise_->hide();
    bild_->SetGriffSichtbar(false);
    // On paper everything is dark on white, whatever the desktop's colours are.
    QPalette papier(Qt::black, Qt::white, Qt::white, Qt::darkGray, Qt::gray, Qt::black, Qt::white);
    papier.setColor(QPalette::Window, Qt::white);
    papier.setColor(QPalette::Highlight, vorher.color(QPalette::Highlight));
    papier.setColor(QPalette::HighlightedText, vorher.color(QPalette::HighlightedText));
    formular_->setPalette(papier);
    FarbenAbleiten();

    std::exception_ptr fehler; // told when the form is itself again
    try {
        const std::unique_ptr<QPrinter> drucker = umgebung_.drucker();
        if (!drucker)
            throw StoreError(Fehler::DateiNichtGefunden, QStringLiteral("Es ist kein Drucker eingerichtet."));
        drucker->setDocName(QStringLiteral("Karte ") + kopf_.FrageNr);
        FormularDrucken(*formular_, *drucker);
    } catch (const std::exception &) {
        fehler = std::current_exception();
    }
    for (QWidget *widget : NichtGedruckt())
        widget->show();
    hinweise_->show();
    bild_->SetGriffSichtbar(true);
    if (fokus)
        fokus->setFocus();
    gedruckt_ = true;
    FarbenSetzen();
    umgebung_.meldungen.Sanduhr(false);
    Schritt(umgebung_.meldungen, QStringLiteral("Fehler beim Drucken: "), [&fehler] {
        if (fehler)
            std::rethrow_exception(fehler);
    });
}

void PFÄndern::closeEvent(QCloseEvent *event)
{
    if (!offen_)
        return;
    LaufBeenden();
    if (!editor_.Verlassen()) {
        event->ignore();
        return;
    }
    offen_ = false;
    umgebung_.stille();
    editor_.Geschlossen();
    umgebung_.geschlossen();
}

void PFÄndern::SitzungEndet(QSessionManager &sitzung)
{
    if (!offen_ || !editor_.cardDirty)
        return;
    LaufBeenden();
    // A card that cannot be stored is an error too: some ends of a session allow questions for no less.
    const bool darfFragen = sitzung.allowsInteraction() || sitzung.allowsErrorInteraction();
    if (!editor_.SitzungEndet(darfFragen))
        sitzung.cancel(); // a release behind it would first say that all is well
    else if (darfFragen)
        sitzung.release();
}

void PFÄndern::changeEvent(QEvent *event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && hinweise_)
        FarbenSetzen();
    if (event->type() == QEvent::ActivationChange && !isActiveWindow())
        LaufBeenden();
}

void PFÄndern::resizeEvent(QResizeEvent *event)
{
    QMainWindow::resizeEvent(event);
    // The window does not ask for the height that the hint takes in two lines.
    formular_->setMinimumHeight(formular_->layout()->minimumHeightForWidth(formular_->width()));
    // The form has its new size when the layout has run.
    layout()->activate();
    bild_->Platzieren();
}
