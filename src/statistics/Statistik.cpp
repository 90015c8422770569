// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Statistik.h"

#include "Fensterbau.h"
#include "Flaeche.h"
#include "StatistikBalken.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

QString FachName(std::size_t fach)
{
    if (fach == FachNeu)
        return u"Fach Neu"_s;
    return fach == FachErledigt ? u"erledigt"_s : u"Fach %1"_s.arg(fach);
}

} // namespace

Statistik::Statistik(const StatistikWerte &werte, QWidget *parent) : QDialog(parent)
{
    setObjectName(u"Statistik"_s);
    setWindowTitle(u"Statistik"_s);

    karte_ = new Flaeche(this);
    karte_->SetUmriss(Flaeche::Umriss::Fein);
    Form_Load(werte);

    cmdZurück_ = Benannt(new QPushButton(u"Zurück"_s, this), u"cmdZurück"_s, u"Zurück"_s);
    cmdZurück_->setDefault(true);
    cmdZurück_->setProperty("leitend", true);
    cmdZurück_->setFocus();
    connect(cmdZurück_, &QPushButton::clicked, this, [this] { accept(); });

    auto *knoepfe = new QHBoxLayout;
    knoepfe->addStretch(1);
    knoepfe->addWidget(cmdZurück_);
    const int zeile = fontMetrics().height();
    auto *alles = new QVBoxLayout(this);
    alles->setContentsMargins(zeile, zeile, zeile, zeile);
    alles->setSpacing(zeile);
    alles->addWidget(karte_, 1);
    alles->addLayout(knoepfe);
}

void Statistik::Form_Load(const StatistikWerte &werte)
{
    const int zeile = fontMetrics().height();
    auto *innen = new QVBoxLayout(karte_);
    innen->setContentsMargins(zeile, zeile, zeile, zeile);
    innen->setSpacing(zeile);
    innen->addLayout(ZeitenBauen(werte));
    innen->addLayout(FaecherBauen(werte));
    innen->addLayout(FragenBauen(werte));
}

QLabel *Statistik::Beschriftung(const QString &text, bool fett)
{
    auto *label = new QLabel(text, karte_);
    QFont schrift = label->font();
    schrift.setBold(fett);
    label->setFont(schrift);
    label->setForegroundRole(QPalette::Text);
    return label;
}

QLineEdit *Statistik::Feld(const QString &name, const QString &zugaenglich, const QString &text)
{
    auto *feld = Benannt(new QLineEdit(text, karte_), name, zugaenglich);
    feld->setReadOnly(true);
    feld->setFrame(false);
    return feld;
}

QLineEdit *Statistik::Zahl(const QString &name, const QString &zugaenglich, const QString &text)
{
    QLineEdit *feld = Feld(name, zugaenglich, text);
    feld->setAlignment(Qt::AlignRight);
    // The room of the largest figure, so that columns stand where they are.
    feld->setFixedWidth(feld->fontMetrics().horizontalAdvance(u"+000000"_s));
    return feld;
}

QLayout *Statistik::ZeitenBauen(const StatistikWerte &werte)
{
    auto *zeiten = new QGridLayout;
    zeiten->setVerticalSpacing(0);
    const auto zeile = [&](int nummer, const QString &name, const QString &beschriftung,
                           const QString &text) {
        zeiten->addWidget(Beschriftung(beschriftung), nummer, 0);
        zeiten->addWidget(Feld(name, beschriftung, text), nummer, 1);
    };
    zeile(0, u"DatZeit"_s, u"Datum Uhrzeit:"_s, werte.DatZeit);
    zeile(1, u"Beginn"_s, u"Sitzungsbeginn:"_s, werte.Beginn);
    return zeiten;
}

QLayout *Statistik::FaecherBauen(const StatistikWerte &werte)
{
    int hoechstens = 1;
    for (const StatistikWerte::Zeile &fach : werte.Fach)
        hoechstens = std::max({hoechstens, fach.beginn, fach.jetzt});

    auto *tafel = new QGridLayout;
    const int abstand = fontMetrics().height();
    tafel->setHorizontalSpacing(abstand);
    tafel->setVerticalSpacing(abstand / 4);
    tafel->setColumnStretch(4, 1);
    tafel->addWidget(Beschriftung(u"Anzahl Karten:"_s, true), 0, 0);
    int spalten = 0;
    for (const QString &kopf : {u"bei Sitzungs Beginn"_s, u"jetzt"_s, u"Änderung"_s}) {
        constexpr int Feldrand = 3; // a figure stands so far inside its field
        QLabel *label = Beschriftung(kopf);
        label->setContentsMargins(0, 0, Feldrand, 0);
        tafel->addWidget(label, 0, ++spalten, Qt::AlignRight);
    }
    tafel->addLayout(LegendeBauen(), 0, 4);
    for (std::size_t i = 0; i < FachAnzahl; ++i) {
        const auto [beginn, jetzt] = werte.Fach[i];
        const int zeile = static_cast<int>(i) + 1;
        const auto zahl = [&](int spalte, const char *name, const QString &was, const QString &text) {
            tafel->addWidget(Zahl(Name(name, i), FachName(i) + ' '_L1 + was, text), zeile, spalte,
                             Qt::AlignRight);
        };
        tafel->addWidget(Beschriftung(FachName(i)), zeile, 0);
        zahl(1, "BegAnz", u"bei Sitzungs Beginn"_s, QString::number(beginn));
        zahl(2, "AktAnz", u"jetzt"_s, QString::number(jetzt));
        zahl(3, "ÄndAnz", u"Änderung"_s, AenderungsText(jetzt - beginn));
        auto *balken = new StatistikBalken(beginn, jetzt, hoechstens, karte_);
        balken->setObjectName(u"Balken(%1)"_s.arg(i));
        balken->setAccessibleName(u"%1: %2, jetzt %3"_s.arg(FachName(i)).arg(beginn).arg(jetzt));
        tafel->addWidget(balken, zeile, 4);
    }
    return tafel;
}

// Says which bar is which.
QLayout *Statistik::LegendeBauen()
{
    auto *legende = new QHBoxLayout;
    legende->setSpacing(0);
    const auto muster = [&](std::optional<int> beginn, std::optional<int> jetzt, const QString &text) {
        auto *balken = new StatistikBalken(beginn, jetzt, 1, karte_);
        balken->setFixedWidth(fontMetrics().height());
        legende->addWidget(balken);
        legende->addSpacing(fontMetrics().height() / 4);
        legende->addWidget(Beschriftung(text));
    };
    muster(1, {}, u"Beginn"_s);
    legende->addSpacing(fontMetrics().height());
    muster({}, 1, u"jetzt"_s);
    legende->addStretch(1);
    return legende;
}

QLayout *Statistik::FragenBauen(const StatistikWerte &werte)
{
    auto *fragen = new QHBoxLayout;
    fragen->addWidget(Beschriftung(u"Beantwortete Fragen:"_s, true));
    fragen->setSpacing(fontMetrics().height() / 4);
    const auto zahl = [&](const QString &name, int anzahl) {
        fragen->addSpacing(fontMetrics().height());
        fragen->addWidget(Beschriftung(name));
        QLineEdit *feld = Zahl(name, name, QString::number(anzahl));
        feld->setAlignment(Qt::AlignLeft); // beside its name
        fragen->addWidget(feld);
    };
    zahl(u"richtig"_s, werte.richtig);
    zahl(u"falsch"_s, werte.falsch);
    zahl(u"gesamt"_s, werte.gesamt);
    fragen->addStretch(1);
    return fragen;
}

} // namespace paukfix
