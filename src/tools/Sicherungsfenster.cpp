// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Sicherungsfenster.h"

#include "CardFile.h"
#include "Fensterbau.h"
#include "Kurztext.h"
#include "SafeFile.h"
#include "Schriftgrade.h"
#include "Sicherungsstand.h"
#include "Step.h"
#include "Zahltext.h"
#include "Zeittext.h"
#include "Zielwahl.h"
#include "Zurueckholen.h"

#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// "3 Karten", "1 Karte"
QString Karten(int anzahl)
{
    return Zahltext(anzahl) + (anzahl == 1 ? u" Karte"_s : u" Karten"_s);
}

QString SeitdemSatz(const Kartenunterschied &unterschied)
{
    QStringList teile;
    const auto teil = [&](int anzahl, const QString &was) {
        if (anzahl > 0)
            teile << Karten(anzahl) + was;
    };
    teil(unterschied.dazu, u" dazugekommen"_s);
    teil(unterschied.weg, u" gelöscht"_s);
    teil(unterschied.geaendert, u" geändert"_s);
    teil(unterschied.verschoben, u" in einem anderen Fach"_s);
    if (!teile.isEmpty())
        return u"Seitdem: "_s + teile.join(u", "_s) + u'.';
    return unterschied.umgestellt > 0 ? u"Seitdem hat sich nur die Reihenfolge in den Fächern geändert."_s
                                      : u"Seitdem hat sich nichts geändert."_s;
}

} // namespace

Sicherungsfenster::Sicherungsfenster(KarteiOeffner &oeffner, Sicherungen &sicherungen, const Dienste &dienste,
                                     QWidget *parent)
    : QDialog(parent), oeffner_(oeffner), sicherungen_(sicherungen), dienste_(dienste)
{
    setObjectName(u"Sicherungen"_s);
    setWindowTitle(u"Sicherungen"_s);
    ueberschrift_ = new QLabel(this);
    ueberschrift_->setObjectName(u"Ueberschrift"_s);
    ueberschrift_->setFont(Schriftgrad::In(font(), Schriftgrad::Gross));
    ueberschrift_->setTextFormat(Qt::PlainText);
    ueberschrift_->setWordWrap(true);
    seitdem_ = new QLabel(this);
    seitdem_->setObjectName(u"Seitdem"_s);
    seitdem_->setWordWrap(true);

    auto *spalte = new QVBoxLayout(this);
    spalte->addWidget(ueberschrift_);
    spalte->addWidget(ListeBauen(), 1);
    spalte->addWidget(seitdem_);
    spalte->addWidget(KnoepfeBauen());
    Auflisten();
    const int zeile = fontMetrics().height();
    resize(QSize(zeile * 42, zeile * 24).boundedTo(screen()->availableSize() * 0.9));
    liste_->setFocus();
}

QWidget *Sicherungsfenster::ListeBauen()
{
    liste_ = Benannt(new QTreeWidget(this), u"Liste"_s, u"Sicherungen"_s);
    liste_->setHeaderLabels(
        {u"Zeit"_s, u"Karten"_s, u"Neu"_s, u"1"_s, u"2"_s, u"3"_s, u"4"_s, u"5"_s, u"erledigt"_s});
    for (int spalte = 1; spalte < liste_->columnCount(); ++spalte)
        liste_->headerItem()->setTextAlignment(spalte, Qt::AlignRight | Qt::AlignVCenter);
    liste_->header()->setStretchLastSection(false); // its numbers would stand far from all others
    liste_->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    liste_->setRootIsDecorated(false);
    liste_->setUniformRowHeights(true);
    liste_->setAllColumnsShowFocus(true);
    connect(liste_, &QTreeWidget::currentItemChanged, this, &Sicherungsfenster::SeitdemZeigen);
    return liste_;
}

QWidget *Sicherungsfenster::KnoepfeBauen()
{
    auto *zeile = new QWidget(this);
    auto *knoepfe = new QHBoxLayout(zeile);
    knoepfe->setContentsMargins({});
    const auto knopf = [&](const QString &name, const QString &text, auto tun) {
        auto *neu = Benannt(new QPushButton(text, zeile), name, QString(text).remove(u'&'));
        neu->setAutoDefault(false);
        connect(neu, &QPushButton::clicked, this, tun);
        return neu;
    };
    alsNeue_ = knopf(u"cmdAlsNeue"_s, u"als &neue Kartei"_s, &Sicherungsfenster::AlsNeueKartei_Click);
    zurueckholen_ = knopf(u"cmdZurueckholen"_s, u"zurück&holen"_s, &Sicherungsfenster::Zurueckholen_Click);
    QPushButton *zurueck = knopf(u"cmdZurueck"_s, u"&Zurück"_s, &QDialog::reject);
    zurueck->setProperty("leitend", true);
    zurueck->setDefault(true);
    knoepfe->addWidget(zurueckholen_);
    knoepfe->addWidget(alsNeue_);
    knoepfe->addStretch();
    knoepfe->addWidget(zurueck);
    return zeile;
}

void Sicherungsfenster::Auflisten()
{
    dienste_.meldungen.Sanduhr(true);
    zeilen_ = sicherungen_.Liste(oeffner_.Kartei().OffenerPfad());
    liste_->clear();
    const QDate heute = dienste_.clock.Now().date();
    for (const Sicherung &sicherung : std::as_const(zeilen_)) {
        auto *zeile = new QTreeWidgetItem(liste_, {ZeitText(sicherung.zeit, heute)});
        try {
            const Kartenstand stand = KarteiZaehlen(sicherung.datei);
            zeile->setText(1, Zahltext(stand.karten));
            for (int fach = 0; fach < FachAnzahl; ++fach)
                zeile->setText(2 + fach, Zahltext(stand.faecher[static_cast<std::size_t>(fach)]));
        } catch (const StoreError &) {
            zeile->setText(1, u"beschädigt"_s);
        }
        for (int spalte = 1; spalte < liste_->columnCount(); ++spalte)
            zeile->setTextAlignment(spalte, Qt::AlignRight | Qt::AlignVCenter);
    }
    dienste_.meldungen.Sanduhr(false);
    for (int spalte = 1; spalte < liste_->columnCount(); ++spalte)
        liste_->resizeColumnToContents(spalte);
    const QString name = Umbrechbar(oeffner_.Kartei().CurrentFileName);
    ueberschrift_->setText(zeilen_.isEmpty() ? u"Von „%1“ gibt es noch keine Sicherung."_s.arg(name)
                                             : u"Sicherungen von „%1“"_s.arg(name));
    if (!zeilen_.isEmpty())
        liste_->setCurrentItem(liste_->topLevelItem(0));
    SeitdemZeigen();
}

const Sicherung *Sicherungsfenster::Gewaehlte() const
{
    const int zeile = liste_->indexOfTopLevelItem(liste_->currentItem());
    return zeile < 0 ? nullptr : &zeilen_[zeile];
}

void Sicherungsfenster::SeitdemZeigen()
{
    const Sicherung *sicherung = Gewaehlte();
    bool lesbar = sicherung != nullptr;
    QString text;
    if (sicherung) {
        try {
            text = SeitdemSatz(Vergleichen(sicherung->datei, oeffner_.Kartei().Datei().ReadablePath()));
        } catch (const StoreError &fehler) {
            text = fehler.Text();
            lesbar = fehler.Number() != Fehler::Beschaedigt;
        }
    }
    seitdem_->setText(text);
    zurueckholen_->setEnabled(lesbar && !oeffner_.Kartei().NurAnsehen());
    alsNeue_->setEnabled(lesbar);
}

// What is not kept cannot be had back.
bool Sicherungsfenster::JetzigenStandSichern()
{
    oeffner_.VorEingriff();
    if (sicherungen_.IstGesichert(oeffner_.Kartei().OffenerPfad()))
        return true;
    dienste_.meldungen.Zeigen(
        u"Der jetzige Stand konnte nicht gesichert werden: Es wurde nichts geändert."_s);
    return false;
}

void Sicherungsfenster::Zurueckholen_Click()
{
    if (!Gewaehlte())
        return;
    const Sicherung sicherung = *Gewaehlte();
    if (dienste_.meldungen.Fragen(
            u"Soll die Kartei wieder so werden wie in der %1? Der jetzige Stand wird "
            u"vorher gesichert."_s.arg(SicherungVon(sicherung.zeit, dienste_.clock.Now().date())),
            Meldungen::Antwort::Nein) != Meldungen::Antwort::Ja ||
        !JetzigenStandSichern())
        return;
    CardStore &kartei = oeffner_.Kartei();
    QString name = kartei.CurrentFileName;
    const QString pfad = kartei.OffenerPfad();
    const bool da = Step(dienste_.meldungen, u"Die Sicherung konnte nicht zurückgeholt werden: "_s,
                         [&] { Zurueckholen(kartei, sicherung.datei, pfad); });
    if (!kartei.IsOpen())
        oeffner_.OpenCardFile(name);
    if (da || !kartei.IsOpen())
        accept();
}

void Sicherungsfenster::AlsNeueKartei_Click()
{
    if (!Gewaehlte())
        return;
    const Sicherung sicherung = *Gewaehlte();
    CardStore &kartei = oeffner_.Kartei();
    DateiDialog dialog = KarteiDialog(u"Sicherung als neue Kartei"_s, kartei.KarteiPfad);
    dialog.vorgabe = u"%1 vom %2.pzb"_s.arg(QFileInfo(kartei.CurrentFileName).completeBaseName(),
                                            sicherung.zeit.toString(u"yyyy-MM-dd HH-mm"_s));
    Zielwahl ziel(kartei, dienste_.dialoge, dienste_.meldungen);
    const QString pfad = ziel.Waehlen(dialog);
    if (pfad.isEmpty() || !ziel.IstKarteiname(pfad))
        return;
    if (SameFile(pfad, kartei.OffenerPfad())) {
        dienste_.meldungen.Zeigen(u"Diese Kartei ist gerade geöffnet. Bitte einen anderen Namen wählen."_s);
        return;
    }
    if (!Step(dienste_.meldungen, u"Die Datei konnte nicht angelegt werden: "_s,
              [&] { Zurueckholen(kartei, sicherung.datei, pfad); }))
        return;
    accept();
    emit NeueKartei(pfad);
}

} // namespace paukfix
