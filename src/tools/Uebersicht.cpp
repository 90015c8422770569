// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Uebersicht.h"

#include "Farben.h"
#include "Fensterbau.h"
#include "KartenDruck.h"
#include "KartenModell.h"
#include "Kartengitter.h"
#include "LangeArbeit.h"
#include "Texttaste.h"
#include "Werkbank.h"

#include <QAction>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScopeGuard>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

#include <limits>
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
    return u"Eingabe öffnet die Karte   ·   Tippen sucht   ·   F3 sucht weiter   ·   "
           u"Strg+1 bis Strg+5 sortiert   ·   Esc schließt"_s;
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
    grdDataGrid_ = Benannt(new Kartengitter(inhalt_), u"grdDataGrid"_s, u"Karten"_s);
    grdDataGrid_->installEventFilter(this);
    connect(grdDataGrid_, &QTableView::doubleClicked, this,
            [this](const QModelIndex &index) { ZeileOeffnen(index); });
    spalte->addWidget(grdDataGrid_, 1);
    spalte->addWidget(KnoepfeBauen());
    hinweise_ = Benannt(new QLabel(Tasten(), inhalt_), u"Tastenhinweise"_s, u"Tasten"_s);
    hinweise_->setAlignment(Qt::AlignCenter);
    Schriftgroesse(hinweise_, 0.9);
    spalte->addWidget(hinweise_);

    resize(QSize(fontMetrics().height() * 60, fontMetrics().height() * 38)
               .expandedTo(layout()->totalMinimumSize())
               .boundedTo(screen()->availableSize() * 0.9));
    Form_Load();
    FarbenSetzen();
    grdDataGrid_->setFocus();
}

QLineEdit *Uebersicht::Feld(QLayout *zeile, const QString &text, const QString &name, int zeichen)
{
    auto *feld = Benannt(new QLineEdit(inhalt_), name, QString(text).remove(u'&').remove(u':'));
    feld->setMaximumWidth(fontMetrics().averageCharWidth() * (zeichen + 3));
    zeile->addWidget(Beschriftung(text, feld, inhalt_));
    zeile->addWidget(feld);
    return feld;
}

QWidget *Uebersicht::KnoepfeBauen()
{
    auto *picButtons = Benannt(new QWidget(inhalt_), u"picButtons"_s, QString());
    auto *zeile = new QHBoxLayout(picButtons);
    zeile->setContentsMargins(0, 0, 0, 0);
    const int abstand = fontMetrics().height();

    txtVon_ = Feld(zeile, u"&Von:"_s, u"txtVon"_s, 6);
    txtBis_ = Feld(zeile, u"&Bis:"_s, u"txtBis"_s, 6);
    txtVon_->setToolTip(u"Die erste FrageNr, die gedruckt wird"_s);
    txtBis_->setToolTip(u"Die letzte FrageNr, die gedruckt wird"_s);
    auto *cmdDrucken = Benannt(new QPushButton(u"&Drucken"_s, inhalt_), u"cmdDrucken"_s, u"Drucken"_s);
    cmdDrucken->setDefault(true); // for Enter in the range's fields
    connect(cmdDrucken, &QPushButton::clicked, this, [this] { cmdDrucken_Click(); });
    zeile->addWidget(cmdDrucken);
    zeile->addSpacing(abstand);

    txtSuchen_ = Feld(zeile, u"&Suchen:"_s, u"txtSuchen"_s, 24);
    txtSuchen_->setClearButtonEnabled(true);
    zeile->setStretchFactor(txtSuchen_, 4);
    txtSuchen_->installEventFilter(this);
    connect(txtSuchen_, &QLineEdit::textChanged, this,
            [this] { Suchen(std::max(0, grdDataGrid_->currentIndex().row())); });
    auto *weiter = new QAction(this);
    weiter->setShortcut(Qt::Key_F3);
    connect(weiter, &QAction::triggered, this, [this] { Suchen(grdDataGrid_->currentIndex().row() + 1); });
    addAction(weiter);

    progress_ = Benannt(new QProgressBar(inhalt_), u"Fortschritt"_s, u"Fortschritt"_s);
    progress_->hide();
    zeile->addSpacing(abstand);
    zeile->addWidget(progress_, 1);
    zeile->addStretch(1);
    datPrimaryRS_ = Benannt(new QLabel(inhalt_), u"datPrimaryRS"_s, u"Datensatz"_s);
    zeile->addWidget(datPrimaryRS_);
    zeile->addSpacing(abstand);
    auto *cmdSchließen = Benannt(new QPushButton(u"&Zurück"_s, inhalt_), u"cmdSchließen"_s, u"Zurück"_s);
    cmdSchließen->setAutoDefault(false);
    connect(cmdSchließen, &QPushButton::clicked, this, [this] { cmdSchließen_Click(); });
    zeile->addWidget(cmdSchließen);
    return picButtons;
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
            [this] { datPrimaryRS_Reposition(); });
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
        const auto nummer = modell_->Liste().Whole(index.row()).numbers[0];
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

void Uebersicht::cmdDrucken_Click()
{
    if (laeuft_ || !modell_)
        return;
    const auto von = Nummer(txtVon_, u"Von:"_s);
    if (!von)
        return;
    const auto bis = Nummer(txtBis_, u"Bis:"_s);
    if (!bis)
        return;
    laeuft_ = true;
    Step(dienste_.meldungen, FehlerKontext(), [&] { Drucken(*von, *bis); });
    laeuft_ = false;
    txtVon_->setText(QString::number(*von));
    txtBis_->setText(QString::number(*bis));
}

void Uebersicht::cmdSchließen_Click()
{
    reject();
}

std::optional<qint16> Uebersicht::Nummer(QLineEdit *feld, const QString &name)
{
    const auto nummer = Kartennummer(feld->text());
    if (nummer)
        return nummer;
    dienste_.meldungen.Zeigen(u"Bitte bei „%1“ eine ganze Zahl von 1 bis %2 eingeben."_s.arg(name).arg(
        std::numeric_limits<qint16>::max()));
    feld->setFocus();
    feld->selectAll();
    return std::nullopt;
}

// In the order in which the grid shows the cards.
void Uebersicht::Drucken(qint16 von, qint16 bis)
{
    const std::unique_ptr<QPrinter> drucker = wege_.drucker();
    if (!drucker) {
        dienste_.meldungen.Zeigen(u"Es ist kein Drucker eingerichtet."_s);
        return;
    }
    drucker->setDocName(windowTitle());
    int gedruckt = 0;
    {
        LangeArbeit lang(dienste_.meldungen, *inhalt_, *progress_);
        gedruckt = KartenDrucken(modell_->Liste(), von, bis, *drucker, lang.Melder());
    }
    if (gedruckt == 0)
        dienste_.meldungen.Zeigen(
            u"Von %1 bis %2 gibt es keine Karte; es wurde nichts gedruckt."_s.arg(von).arg(bis));
    else // until the user goes on
        hinweise_->setText(KartenText(gedruckt) + u" an den Drucker geschickt"_s);
}

void Uebersicht::Suchen(int abZeile)
{
    const QString text = txtSuchen_->text();
    std::optional<int> gefunden;
    if (modell_ && modell_->rowCount() > 0 && !text.isEmpty()) {
        Step(dienste_.meldungen, FehlerKontext(),
             [&] { gefunden = modell_->Liste().Find(text, abZeile % modell_->rowCount()); });
        if (gefunden)
            grdDataGrid_->setCurrentIndex(modell_->index(*gefunden, 0));
    }
    // Nothing found is told without colour too.
    QPalette farben;
    if (!text.isEmpty() && !gefunden)
        farben.setColor(QPalette::Text, Farben::Lesbar(Farben::Falsch, palette().color(QPalette::Base)));
    txtSuchen_->setPalette(farben);
    txtSuchen_->setAccessibleDescription(text.isEmpty() || gefunden ? QString() : u"nicht gefunden"_s);
    datPrimaryRS_Reposition();
}

void Uebersicht::datPrimaryRS_Reposition()
{
    const int zeile = grdDataGrid_->currentIndex().row();
    hinweise_->setText(Tasten());
    datPrimaryRS_->setText(NichtGefunden() ? txtSuchen_->accessibleDescription()
                           : zeile >= 0    ? u"Record: "_s + QString::number(zeile + 1)
                                           : QString());
}

// The search has a text that no card holds; the current row is none of its then.
bool Uebersicht::NichtGefunden() const
{
    return !txtSuchen_->accessibleDescription().isEmpty();
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
    if (!laeuft_)
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
    const QPalette leise = Farben::Leise(palette());
    hinweise_->setPalette(leise);
    datPrimaryRS_->setPalette(leise);
}

} // namespace paukfix
