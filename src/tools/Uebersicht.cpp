// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Uebersicht.h"

#include "Druckleiste.h"
#include "Farben.h"
#include "Fensterbau.h"
#include "KartenModell.h"
#include "Kartengitter.h"
#include "Tastenkappe.h"
#include "Texttaste.h"
#include "Werkbank.h"

#include <QAction>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopeGuard>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

bool IstText(const QKeyEvent &taste)
{
    return !taste.modifiers().testFlag(Qt::ControlModifier) && !taste.modifiers().testFlag(Qt::AltModifier) &&
           !taste.text().isEmpty() && taste.text().front().isPrint() && !taste.text().front().isSpace();
}

QString Tasten()
{
    return u"[Eingabe] öffnet die Karte · Tippen filtert · [F3] nächste Karte · "
           u"[Strg]+[1] bis [Strg]+[6] sortiert · [Umschalt]+[↓] wählt mehrere · [F1] alle Tasten"_s;
}

} // namespace

Uebersicht::Uebersicht(CardStore &store, const Dienste &dienste, UebersichtWege wege, QWidget *parent)
    : QDialog(parent), store_(store), dienste_(dienste), wege_(std::move(wege)), inhalt_(new QWidget(this))
{
    setObjectName(u"Uebersicht"_s);
    setWindowTitle(u"Lernkarten"_s);
    setModal(true);
    setWindowFlag(Qt::WindowMaximizeButtonHint);

    auto *aussen = new QVBoxLayout(this);
    aussen->addWidget(inhalt_);
    auto *spalte = new QVBoxLayout(inhalt_);
    spalte->setContentsMargins(0, 0, 0, 0);
    spalte->setSpacing(12);
    spalte->addLayout(SuchzeileBauen());
    grdDataGrid_ = Benannt(new Kartengitter(inhalt_), u"grdDataGrid"_s, u"Karten"_s);
    grdDataGrid_->installEventFilter(this);
    connect(grdDataGrid_, &QTableView::doubleClicked, this,
            [this](const QModelIndex &index) { ZeileOeffnen(index); });
    spalte->addWidget(grdDataGrid_, 1);
    spalte->addWidget(KnoepfeBauen());
    hinweise_ = new Tastenkappe(Tasten(), inhalt_);
    hinweise_->setObjectName(u"Tastenhinweise"_s);
    spalte->addWidget(hinweise_);

    resize(QSize(fontMetrics().height() * 72, fontMetrics().height() * 38)
               .expandedTo(layout()->totalMinimumSize())
               .boundedTo(screen()->availableSize() * 0.9));
    Form_Load();
    FarbenSetzen();
    grdDataGrid_->setFocus();
}

QLayout *Uebersicht::SuchzeileBauen()
{
    auto *zeile = new QHBoxLayout;
    txtSuchen_ = Benannt(new QLineEdit(inhalt_), u"txtSuchen"_s, u"Suchen"_s);
    txtSuchen_->setPlaceholderText(u"Nummer, Frage, Antwort oder Thema"_s);
    txtSuchen_->setClearButtonEnabled(true);
    txtSuchen_->installEventFilter(this);
    connect(txtSuchen_, &QLineEdit::textChanged, this, &Uebersicht::Filtern);
    datPrimaryRS_ = new QLabel(inhalt_);
    datPrimaryRS_->setObjectName(u"datPrimaryRS"_s);
    treffer_ = new QLabel(inhalt_);
    treffer_->setObjectName(u"Treffer"_s);
    zeile->addWidget(Beschriftung(u"&Suchen:"_s, txtSuchen_, inhalt_));
    zeile->addWidget(txtSuchen_, 1);
    zeile->addWidget(datPrimaryRS_);
    zeile->addWidget(treffer_);
    auto *weiter = new QAction(this);
    weiter->setShortcut(Qt::Key_F3);
    connect(weiter, &QAction::triggered, this, &Uebersicht::NaechsterTreffer);
    addAction(weiter);
    return zeile;
}

QWidget *Uebersicht::KnoepfeBauen()
{
    drucken_ = new Druckleiste(dienste_, wege_.drucker, inhalt_);
    drucken_->gedruckt = [this](int karten) { // until the user goes on
        hinweise_->SetTasten(KartenText(karten) + u" an den Drucker geschickt"_s);
    };
    auto *cmdSchließen = Benannt(new QPushButton(u"&Zurück"_s, inhalt_), u"cmdSchließen"_s, u"Zurück"_s);
    cmdSchließen->setAutoDefault(false);
    connect(cmdSchließen, &QPushButton::clicked, this, [this] { cmdSchließen_Click(); });
    drucken_->Anfuegen(cmdSchließen);
    return drucken_;
}

void Uebersicht::Form_Load()
{
    try {
        modell_ = new KartenModell(store_.Karten(), this);
    } catch (const StoreError &fehler) {
        datPrimaryRS_Error(fehler);
        return;
    }
    // The grid asks for rows while it paints itself: a message has to wait until it is done.
    modell_->leseFehler = [this](const StoreError &fehler) {
        QTimer::singleShot(0, this, [this, fehler] { datPrimaryRS_Error(fehler); });
    };
    grdDataGrid_->Zeigen(*modell_);
    connect(grdDataGrid_->horizontalHeader(), &QHeaderView::sortIndicatorChanged, this,
            [this] { datPrimaryRS_Reposition(); });
    connect(grdDataGrid_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex &index) {
                if (index.isValid())
                    karte_ = modell_->Liste().Id(index.row());
                datPrimaryRS_Reposition();
            });
    karte_ = modell_->rowCount() > 0 ? std::optional(modell_->Liste().Id(0)) : std::nullopt;
    drucken_->Zeigen(*modell_, *grdDataGrid_);
    TrefferZeigen();
    datPrimaryRS_Reposition();
    Form_Paint();
}

// A notice on the grid where there are no cards.
void Uebersicht::Form_Paint()
{
    grdDataGrid_->SetHinweis(u"Diese Datei ("_s + store_.CurrentFileName + u") enthält noch keine Karten"_s,
                             modell_->rowCount() == 0);
}

void Uebersicht::ZeileOeffnen(const QModelIndex &index)
{
    if (!index.isValid())
        return;
    bool da = false;
    Step(dienste_.meldungen, FehlerKontext(), [&] {
        const auto nummer = modell_->Liste().Whole(modell_->Liste().Id(index.row())).numbers[0];
        CardRecordset &karten = store_.Karten();
        auto wieVorher = qScopeGuard([&karten] { karten.SetIndex(u"BoxKey"); });
        karten.SetIndex(u"FrageNr"); // in which the editor then walks
        if (nummer)
            karten.Seek(CardRecordset::Comparison::Equal, *nummer);
        da = nummer && !karten.NoMatch();
        if (da)
            wieVorher.dismiss();
    });
    if (!da)
        return;
    accept();
    wege_.bearbeiten();
}

void Uebersicht::cmdSchließen_Click()
{
    reject();
}

// The current card stays the current one; where the filter hides it, until it comes back.
void Uebersicht::Filtern()
{
    if (!modell_)
        return;
    const auto karte = karte_;
    modell_->Filtern(txtSuchen_->text());
    if (modell_->rowCount() > 0) {
        const auto zeile = karte ? modell_->Liste().RowOf(*karte) : std::nullopt;
        grdDataGrid_->setCurrentIndex(modell_->index(zeile.value_or(0), 0));
        grdDataGrid_->scrollTo(grdDataGrid_->currentIndex());
    }
    if (karte && !txtSuchen_->text().isEmpty())
        karte_ = karte;
    TrefferZeigen();
    datPrimaryRS_Reposition();
}

void Uebersicht::TrefferZeigen()
{
    // Nothing found is told without colour too.
    QPalette farben;
    if (NichtGefunden())
        farben.setColor(QPalette::Text, Farben::Lesbar(Farben::Falsch, palette().color(QPalette::Base)));
    txtSuchen_->setPalette(farben);
    txtSuchen_->setAccessibleDescription(NichtGefunden() ? u"nicht gefunden"_s : QString());
    const int alle = modell_->Liste().Total();
    treffer_->setText(txtSuchen_->text().isEmpty()
                          ? KartenText(alle)
                          : u"%1 von %2"_s.arg(modell_->rowCount()).arg(KartenText(alle)));
    drucken_->VorhabenZeigen();
}

void Uebersicht::NaechsterTreffer()
{
    if (!modell_ || modell_->rowCount() == 0)
        return;
    const int zeile = grdDataGrid_->currentIndex().row() + 1;
    grdDataGrid_->setCurrentIndex(modell_->index(zeile % modell_->rowCount(), 0));
}

void Uebersicht::datPrimaryRS_Reposition()
{
    const int zeile = grdDataGrid_->currentIndex().row();
    hinweise_->SetTasten(Tasten());
    datPrimaryRS_->setText(NichtGefunden() ? u"nicht gefunden"_s
                           : zeile >= 0    ? u"Record: "_s + QString::number(zeile + 1)
                                           : QString());
}

// The search has a text that no card holds.
bool Uebersicht::NichtGefunden() const
{
    return modell_ && modell_->rowCount() == 0 && !txtSuchen_->text().isEmpty();
}

void Uebersicht::datPrimaryRS_Error(const StoreError &fehler)
{
    Step(dienste_.meldungen, u"Folgender Fehler ist aufgetreten:"_s, [&] { throw fehler; });
}

bool Uebersicht::eventFilter(QObject *objekt, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(objekt, event);
    auto &taste = static_cast<QKeyEvent &>(*event);
    if (objekt == grdDataGrid_) {
        if (IstEingabetaste(taste)) {
            ZeileOeffnen(grdDataGrid_->currentIndex());
            return true;
        }
        if (IstText(taste)) { // begins a new search
            txtSuchen_->setFocus();
            txtSuchen_->setText(taste.text());
            return true;
        }
    } else if (objekt == txtSuchen_) {
        if (IstEingabetaste(taste)) {
            if (!NichtGefunden())
                ZeileOeffnen(grdDataGrid_->currentIndex());
            return true;
        }
        if (taste.key() == Qt::Key_Up || taste.key() == Qt::Key_Down || taste.key() == Qt::Key_PageUp ||
            taste.key() == Qt::Key_PageDown) {
            grdDataGrid_->setFocus();
            QCoreApplication::sendEvent(grdDataGrid_, &taste);
            return true;
        }
        if (taste.key() == Qt::Key_Escape) {
            txtSuchen_->clear();
            grdDataGrid_->setFocus();
            return true;
        }
    }
    return QDialog::eventFilter(objekt, event);
}

void Uebersicht::reject()
{
    if (!drucken_->Laeuft())
        QDialog::reject();
}

void Uebersicht::changeEvent(QEvent *event)
{
    QDialog::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && hinweise_)
        FarbenSetzen();
}

void Uebersicht::FarbenSetzen()
{
    datPrimaryRS_->setPalette(Farben::Leise(palette()));
    drucken_->VorhabenZeigen();
}

} // namespace paukfix
