// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Importtafel.h"

#include "Fensterbau.h"
#include "Kurztext.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QVBoxLayout>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr int Ausschnitt = 200; // characters of a text that are shown

struct Name
{
    const char16_t *objekt;
    const char16_t *text;
};

constexpr std::array<Name, 3> Teile{
    {{u"cmbFrage", u"F&rage:"}, {u"cmbAntwort", u"Ant&wort:"}, {u"cmbThema", u"Th&ema:"}}};

} // namespace

Importtafel::Importtafel(QWidget *eltern) : QWidget(eltern), zeile_(new QWidget(this))
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    auto *spalte = new QVBoxLayout(this);
    spalte->setContentsMargins(0, 0, 0, 0);
    spalte->setSpacing(fontMetrics().height() / 2);
    auto *reihe = new QHBoxLayout(zeile_);
    reihe->setContentsMargins(0, 0, 0, 0);
    reihe->setSpacing(fontMetrics().height() / 2);
    for (std::size_t i = 0; i < Teile.size(); ++i) {
        QString name = QString::fromUtf16(Teile[i].text);
        auto *box = new QComboBox(zeile_);
        reihe->addWidget(Beschriftung(name, box, zeile_));
        name.remove(u'&').remove(u':');
        cmbSpalte_[i] = Benannt(box, QString::fromUtf16(Teile[i].objekt), u"Spalte für: "_s + name);
        box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        box->setMinimumContentsLength(6);
        connect(box, &QComboBox::currentIndexChanged, this, [this] { gewaehlt(); });
        reihe->addWidget(box, 1);
    }
    chkUeberschrift_ = Benannt(new QCheckBox(u"erste Zeile ist eine &Überschrift"_s, this),
                               u"chkUeberschrift"_s, u"erste Zeile ist eine Überschrift"_s);
    connect(chkUeberschrift_, &QCheckBox::toggled, this, [this] { gewaehlt(); });
    spalte->addWidget(zeile_);
    spalte->addWidget(chkUeberschrift_);

    tblVorschau_ = Benannt(new QTableWidget(0, 3, this), u"tblVorschau"_s, u"Vorschau der ersten Karten"_s);
    tblVorschau_->setHorizontalHeaderLabels({u"Frage"_s, u"Antwort"_s, u"Thema"_s});
    tblVorschau_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    tblVorschau_->setSelectionBehavior(QAbstractItemView::SelectRows);
    tblVorschau_->setSelectionMode(QAbstractItemView::SingleSelection);
    tblVorschau_->setTabKeyNavigation(false);
    tblVorschau_->setWordWrap(false);
    tblVorschau_->verticalHeader()->hide();
    tblVorschau_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 3 / 2);
    QHeaderView *kopf = tblVorschau_->horizontalHeader();
    kopf->setHighlightSections(false);
    kopf->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    kopf->setSectionResizeMode(QHeaderView::Stretch);
    // Two cards in the smallest window, more where there is room.
    tblVorschau_->setMinimumHeight(fontMetrics().height() * 4);
    spalte->addWidget(tblVorschau_, 1);
}

void Importtafel::Anwenden(Aufbau &aufbau) const
{
    aufbau.alleFelder = alleFelder_;
    aufbau.ueberschrift = alleFelder_ || chkUeberschrift_->isChecked();
    aufbau.spalten = {.frage = cmbSpalte_[0]->currentIndex() - 1,
                      .antwort = cmbSpalte_[1]->currentIndex() - 1,
                      .thema = cmbSpalte_[2]->currentIndex() - 1};
}

void Importtafel::Vorschlagen(const Aufbau &aufbau, const QStringList &erste)
{
    alleFelder_ = aufbau.alleFelder;
    zeile_->setVisible(!alleFelder_);
    chkUeberschrift_->setVisible(!alleFelder_);
    const QSignalBlocker haken(chkUeberschrift_);
    chkUeberschrift_->setChecked(aufbau.ueberschrift);
    QStringList namen{u"keine"_s};
    // The third one may be there in later lines only.
    const qsizetype zahl = std::max<qsizetype>(erste.size(), 3);
    for (qsizetype i = 0; i < zahl; ++i) {
        const QString text = Kurztext(erste.value(i).simplified());
        namen << (text.isEmpty() ? QString::number(i + 1) : u"%1: %2"_s.arg(i + 1).arg(text));
    }
    const std::array<int, 3> spalten{aufbau.spalten.frage, aufbau.spalten.antwort, aufbau.spalten.thema};
    for (std::size_t i = 0; i < cmbSpalte_.size(); ++i) {
        const QSignalBlocker stumm(cmbSpalte_[i]);
        cmbSpalte_[i]->clear();
        cmbSpalte_[i]->addItems(namen);
        cmbSpalte_[i]->setCurrentIndex(spalten[i] + 1);
    }
}

void Importtafel::Zeigen(const Importvorschau &vorschau)
{
    tblVorschau_->setRowCount(static_cast<int>(vorschau.erste.size()));
    int reihe = 0;
    for (const SimpleCard &karte : vorschau.erste) {
        int spalte = 0;
        for (const QString &text : {karte.question, karte.answer, karte.topic})
            tblVorschau_->setItem(reihe, spalte++,
                                  new QTableWidgetItem(Einzeilig(Kurztext(text, Ausschnitt))));
        ++reihe;
    }
}

} // namespace paukfix
