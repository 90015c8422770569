// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "PFUse.h"

#include "Bild.h"
#include "BildBox.h"
#include "Flaeche.h"
#include "KarteLoeschen.h"
#include "Mediendatei.h"
#include "RichTextBox.h"
#include "Schritt.h"
#include "Texttaste.h"

#include <QCheckBox>
#include <QDir>
#include <QIcon>
#include <QKeyEvent>
#include <QLabel>
#include <QLayout>
#include <QPixmapCache>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>

#include <algorithm>
#include <utility>

namespace {

// The same two faces for all cards: each is read once.
QPixmap GesichtLesen(const QString &pfad, QSize groesse, qreal pixel)
{
    const QString schluessel =
        QStringLiteral("%1@%2x%3@%4").arg(pfad).arg(groesse.width()).arg(groesse.height()).arg(pixel);
    QPixmap bild;
    if (!QPixmapCache::find(schluessel, &bild)) {
        bild = QIcon(pfad).pixmap(groesse, pixel);
        QPixmapCache::insert(schluessel, bild);
    }
    return bild;
}

} // namespace

PFUse::PFUse(AbfrageUmgebung umgebung, QWidget *parent)
    : QDialog(parent), umgebung_(std::move(umgebung)), lage_(umgebung_.konfig.Abfrage)
{
    Aufbauen();
}

PFUse::Ausgang PFUse::Fragen()
{
    const bool gelesen = Schritt(umgebung_.meldungen, QStringLiteral("Fehler beim Lesen der Karte: "),
                                 [this] { karte_ = KarteLesen(umgebung_.store.Felder()); });
    if (!gelesen)
        return Ausgang::Abgebrochen;

    const qint16 vorher = umgebung_.zustand.AbfrageErgebnis;
    AntwortenBauen();
    umgebung_.erscheint();
    show();
    FrageAnzeigen();
    exec();
    if (ausgang_ == Ausgang::Abgebrochen)
        umgebung_.zustand.AbfrageErgebnis = vorher;
    // The sound of a verdict may ring out while the learner goes on; any other belongs to this card only.
    if (ausgang_ != Ausgang::Beurteilt)
        umgebung_.stille();
    return ausgang_;
}

void PFUse::done(int ergebnis)
{
    if (isVisible() && !std::exchange(geht_, true)) {
        LageAbschliessen();
        umgebung_.geht();
    }
    QDialog::done(ergebnis);
}

void PFUse::FrageAnzeigen()
{
    BildZeigen(karte_.Medium[1]);
    KlangAnbieten(karte_.Medium[6]);
    KlangSpielen(karte_.Medium[6]);
}

void PFUse::BildZeigen(const QString &name)
{
    Picture1_->hide();
    if (name.isEmpty())
        return;
    const QImage bild =
        BildLaden(name, umgebung_.store.KarteiPfad, umgebung_.konfig.ProgrammPfad, umgebung_.meldungen);
    if (bild.isNull())
        return;
    Picture1_->SetBild(bild);
    BildPlatzieren();
    Picture1_->show();
    Picture1_->raise();
}

void PFUse::BildPlatzieren()
{
    Picture1_->setGeometry(Bildplatz());
    TextUmBild();
}

// Where the card's pictures go, within the card's edges: as the card says, else to the right of the question.
QRect PFUse::Bildplatz() const
{
    if (!bildPlatz_.isEmpty())
        return BildImKasten(bildPlatz_);
    QRect platz = MFrage_->geometry();
    platz.setLeft(platz.right() - platz.width() * 2 / 5);
    return platz;
}

QRect PFUse::BildImKasten(QRect platz) const
{
    constexpr int Rand = 6;
    const QRect kasten = kasten_->rect().adjusted(Rand, Rand, -Rand, -Rand);
    platz.setSize(platz.size().boundedTo(kasten.size()));
    platz.moveLeft(std::clamp(platz.left(), kasten.left(), kasten.right() + 1 - platz.width()));
    platz.moveTop(std::clamp(platz.top(), kasten.top(), kasten.bottom() + 1 - platz.height()));
    return platz;
}

// The question's text makes room beside the picture from the start, unless too little would be left for it.
void PFUse::TextUmBild()
{
    MFrage_->SetRand(mitBild_ ? RandUmBild(MFrage_->geometry(), Bildplatz()) : QMargins());
}

void PFUse::KlangSpielen(const QString &name)
{
    if (!name.isEmpty())
        umgebung_.klang(Mediendatei(umgebung_.store.KarteiPfad, name));
}

void PFUse::KlangAnbieten(const QString &name)
{
    klang_ = name;
    nochEinmal_->setVisible(!name.isEmpty());
}

bool PFUse::eventFilter(QObject *objekt, QEvent *event)
{
    switch (event->type()) {
    case QEvent::FocusIn:
    case QEvent::FocusOut:
        FarbenSetzen(); // shows where the keyboard goes
        return false;
    case QEvent::MouseButtonRelease:
        return Zeile_Click(objekt, static_cast<const QMouseEvent &>(*event));
    case QEvent::KeyPress:
        break;
    default:
        return false;
    }

    const auto &taste = static_cast<const QKeyEvent &>(*event);
    // An Enter that is held down must not check and close in one go.
    if (IstEingabetaste(taste) && taste.isAutoRepeat() && !taste.modifiers().testFlag(Qt::ShiftModifier))
        return true;
    if (objekt == MFrage_)
        return MFrage_KeyPress(taste);
    if (objekt == Antwort_[0])
        return Antwort_KeyPress(taste);
    if (objekt == Ergebnis_R_)
        return Ergebnis_KeyPress(*Ergebnis_R_, taste);
    if (objekt == Ergebnis_F_)
        return Ergebnis_KeyPress(*Ergebnis_F_, taste);
    for (std::size_t i = 0; i < AntwortAnzahl; ++i) {
        if (objekt == Check1_[i])
            return Check1_KeyPress(i, taste);
    }
    return false;
}

bool PFUse::MFrage_KeyPress(const QKeyEvent &taste)
{
    if (!AendertText(taste, true))
        return false;
    if (!taste.isAutoRepeat())
        umgebung_.meldungen.Zeigen(QStringLiteral("Jetzt bitte nicht ändern"));
    return true;
}

bool PFUse::Antwort_KeyPress(const QKeyEvent &taste)
{
    // Once checked, Enter goes to the window's default button.
    if (!IstEingabetaste(taste) || taste.modifiers().testFlag(Qt::ShiftModifier) || stand_ != Stand::Gefragt)
        return false;
    Cpruefen_Click();
    return true;
}

bool PFUse::Check1_KeyPress(std::size_t zeile, const QKeyEvent &taste)
{
    leertaste_ = taste.key() == Qt::Key_Space;
    // A long answer is read without the mouse.
    QScrollBar *leiste = Antwort_[zeile]->verticalScrollBar();
    if (taste.key() == Qt::Key_PageDown)
        leiste->triggerAction(QAbstractSlider::SliderPageStepAdd);
    else if (taste.key() == Qt::Key_PageUp)
        leiste->triggerAction(QAbstractSlider::SliderPageStepSub);
    return taste.key() == Qt::Key_PageDown || taste.key() == Qt::Key_PageUp;
}

bool PFUse::Ergebnis_KeyPress(QRadioButton &knopf, const QKeyEvent &taste)
{
    if (stand_ != Stand::Geprueft)
        return false;
    // The toolkit would let Tab stop at one of the two only, and take no arrow but those along their line.
    // (This reason is the one that marks the focus whatever key came before.)
    constexpr std::array Vor{Qt::Key_Tab, Qt::Key_Right, Qt::Key_Down};
    constexpr std::array Zurueck{Qt::Key_Backtab, Qt::Key_Left, Qt::Key_Up};
    const auto eineVon = [&taste](const auto &tasten) {
        return std::find(tasten.begin(), tasten.end(), taste.key()) != tasten.end();
    };
    if (&knopf == Ergebnis_R_ && eineVon(Vor))
        Ergebnis_F_->setFocus(Qt::ShortcutFocusReason);
    else if (&knopf == Ergebnis_F_ && eineVon(Zurueck))
        Ergebnis_R_->setFocus(Qt::ShortcutFocusReason);
    else if (IstEingabetaste(taste))
        knopf.setChecked(true);
    else
        return false;
    return true;
}

// The digits tick the lines, counted from the top, wherever the focus is (but in the question, which refuses
// keys).
void PFUse::keyPressEvent(QKeyEvent *event)
{
    const int platz = event->key() - Qt::Key_1;
    if (karte_.typ == Antworttyp::Ankreuzen && stand_ == Stand::Gefragt && platz >= 0 &&
        platz < AntwortAnzahl && (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier) {
        if (!event->isAutoRepeat()) // a key that is held ticks once
            Check1_[zeileAmPlatz_[static_cast<std::size_t>(platz)]]->toggle();
        return;
    }
    QDialog::keyPressEvent(event);
}

// The whole line is the target, not the small box alone.
bool PFUse::Zeile_Click(const QObject *objekt, const QMouseEvent &maus)
{
    if (maus.button() != Qt::LeftButton || stand_ != Stand::Gefragt || karte_.typ != Antworttyp::Ankreuzen)
        return false;
    for (std::size_t i = 0; i < AntwortAnzahl; ++i) {
        if (objekt == feld_[i] || objekt == Antwort_[i]->viewport()) {
            Check1_[i]->click();
            return true;
        }
    }
    return false;
}

void PFUse::changeEvent(QEvent *event)
{
    QDialog::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && feld_[0])
        FarbenSetzen();
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        benutzt_ = true;
}

void PFUse::moveEvent(QMoveEvent *event)
{
    QDialog::moveEvent(event);
    LageMerken(*event);
}

void PFUse::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    LageMerken(*event);
    // The card has its new size when the layout has run, which it has not for a window about to be shown.
    layout()->activate();
    if (Picture1_->isVisible())
        BildPlatzieren();
    else
        TextUmBild();
}

void PFUse::Check1_Click()
{
    // The mouse goes on to the button that is pressed next; the keyboard stays to tick the next line.
    if (!std::exchange(leertaste_, false))
        Cpruefen_->setFocus();
}

void PFUse::Cpruefen_Click()
{
    if (stand_ != Stand::Gefragt)
        return;
    stand_ = Stand::Geprueft;
    umgebung_.zustand.AbfrageErgebnis = 0;

    bool richtig = false;
    if (karte_.typ == Antworttyp::Ankreuzen) {
        KreuzeBewerten();
        std::array<bool, AntwortAnzahl> kreuze{};
        for (std::size_t i = 0; i < AntwortAnzahl; ++i)
            kreuze[i] = Check1_[i]->isChecked();
        richtig = KreuzeRichtig(kreuze, karte_.Antwort_ch);
    } else {
        Antwort_[0]->setReadOnly(true);
        Antwort_[5]->setEnabled(true);
        Antwort_[5]->ZeigeRichText(karte_.Antwort[0]);
        richtig = GetippteAntwortRichtig(karte_.Antwort_1_Klartext, Antwort_[0]->PlainText());
    }

    Frame1_->hide();
    ergebnis_->show();
    if (karte_.typ == Antworttyp::Keiner) {
        urteil_->setText(QStringLiteral("Wie war Ihre Antwort?"));
        Ergebnis_R_->setFocus(Qt::ShortcutFocusReason); // its mark shows what Enter would choose
        Cpruefen_->setEnabled(false);
        FarbenSetzen();
        HinweiseZeigen();
    } else {
        (richtig ? Ergebnis_R_ : Ergebnis_F_)->setChecked(true);
    }
}

void PFUse::KreuzeBewerten()
{
    Label4_->show();
    for (std::size_t i = 0; i < AntwortAnzahl; ++i) {
        Check2_[i]->setChecked(karte_.Antwort_ch[i]);
        Check2_[i]->show();
        // From here on the ticks are to be read only.
        Check1_[i]->setFocusPolicy(Qt::NoFocus);
        Check1_[i]->setAttribute(Qt::WA_TransparentForMouseEvents);
    }
}

void PFUse::Ergebnis_R_Click()
{
    UrteilZeigen(true, karte_.Medium[2]);
}

void PFUse::Ergebnis_F_Click()
{
    UrteilZeigen(false, BildNachUrteil(karte_, false));
}

void PFUse::UrteilZeigen(bool richtig, const QString &bild)
{
    stand_ = Stand::Beurteilt;
    ausgang_ = Ausgang::Beurteilt;
    umgebung_.zustand.AbfrageErgebnis = richtig ? -1 : 0;

    const QString gesicht = richtig ? QStringLiteral("face03.ico") : QStringLiteral("face01.ico");
    Image1_->setPixmap(
        GesichtLesen(umgebung_.konfig.ProgrammDatei(gesicht), Image1_->size(), devicePixelRatioF()));
    urteil_->setText(richtig ? QStringLiteral("Richtig!") : QStringLiteral("Leider falsch"));
    Command3_->setAccessibleDescription(urteil_->text());
    FarbenSetzen();
    Frame1_->show();
    // Tab stops at the option that is selected; the arrow keys reach the other one.
    Ergebnis_R_->setFocusPolicy(richtig ? Qt::StrongFocus : Qt::ClickFocus);
    Ergebnis_F_->setFocusPolicy(richtig ? Qt::ClickFocus : Qt::StrongFocus);
    Command3_->setEnabled(true);
    Command3_->setDefault(true);
    Command3_->setFocus();
    Cpruefen_->setEnabled(false);
    HinweiseZeigen();

    if (!bild.isEmpty())
        BildZeigen(bild);
    const QString &klang = KlangNachUrteil(karte_, richtig);
    KlangAnbieten(klang);
    if (!klang.isEmpty())
        KlangSpielen(klang);
    else if (richtig)
        umgebung_.klang(umgebung_.konfig.ProgrammDatei(QStringLiteral("Applause.wav")));
}

void PFUse::Clöschen_Click()
{
    CardStore &store = umgebung_.store;
    if (IstLetzteKarte(store.FachInfo, Erledigte::Zaehlen)) {
        umgebung_.meldungen.Zeigen(QStringLiteral("Die letzte Karte kann nicht gelöscht werden"));
        return;
    }
    if (umgebung_.meldungen.Fragen(QStringLiteral("Diese Karte wirklich löschen"),
                                   Meldungen::Antwort::Nein) != Meldungen::Antwort::Ja)
        return;
    // The end of the session may have stored the verdict meanwhile: the card is asked no more.
    if (!isVisible())
        return;
    bool geloescht = false;
    Schritt(umgebung_.meldungen, QStringLiteral("Fehler beim Löschen der Karte: "), [&] {
        const Loeschung loeschung = KarteLoeschen(store);
        geloescht = loeschung.geloescht;
        if (loeschung.fehler)
            throw *loeschung.fehler;
    });
    if (!geloescht)
        return;
    umgebung_.zustand.AbfrageErgebnis = 11;
    ausgang_ = Ausgang::Geloescht;
    close();
}

void PFUse::Command1_Click()
{
    umgebung_.automatikAus();
    umgebung_.zustand.AbfrageErgebnis = 10;
    ausgang_ = Ausgang::Bearbeiten;
    close();
}

void PFUse::Command3_Click()
{
    close();
}
