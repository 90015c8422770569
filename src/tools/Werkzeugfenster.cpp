// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Werkzeugfenster.h"

#include "AsciiTausch.h"
#include "Farben.h"
#include "Fensterbau.h"
#include "Flaeche.h"
#include "LangeArbeit.h"
#include "Medienwahl.h"

#include <QComboBox>
#include <QEvent>
#include <QFileInfo>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

QLabel *Textzeile(QWidget *inhalt, const QString &text, const QString &name)
{
    auto *label = new QLabel(text, inhalt);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

} // namespace

Werkzeugfenster::Werkzeugfenster(KarteiOeffner &oeffner, const Dienste &dienste, const QString &name,
                                 const QString &titel, const QString &ueberschrift, QWidget *parent)
    : QDialog(parent),
      oeffner_(oeffner),
      dienste_(dienste),
      ziel_(oeffner.Kartei(), dienste.dialoge, dienste.meldungen),
      inhalt_(new QWidget(this))
{
    setObjectName(name);
    setWindowTitle(titel);
    setModal(true);

    auto *aussen = new QVBoxLayout(this);
    aussen->addWidget(inhalt_);
    aussen->setSizeConstraint(QLayout::SetMinimumSize);
    spalte_ = new QVBoxLayout(inhalt_);
    spalte_->setContentsMargins(0, 0, 0, 0);
    spalte_->setSpacing(fontMetrics().height());

    auto *flaeche = new Flaeche(inhalt_);
    flaeche->SetUmriss(Flaeche::Umriss::Fein);
    kasten_ = new QVBoxLayout(flaeche);
    kasten_->setContentsMargins(22, 14, 22, 16);
    kasten_->setSpacing(fontMetrics().height() / 2);
    QLabel *kopf = Textzeile(inhalt_, ueberschrift, u"Überschrift"_s);
    Schriftgroesse(kopf, 1.5);
    kasten_->addWidget(kopf);
    kasten_->addSpacing(2);
    spalte_->addWidget(flaeche);

    const int dicht = fontMetrics().height() / 2;
    felder_ = new QGridLayout;
    felder_->setColumnStretch(1, 1);
    felder_->setSpacing(dicht);
    spalte_->addLayout(felder_);
    hinweise_ = new QVBoxLayout;
    hinweise_->setSpacing(dicht / 2);
    spalte_->addLayout(hinweise_);
    vorhaben_ = Textzeile(inhalt_, {}, u"Vorhaben"_s);
    QFont fett = vorhaben_->font();
    fett.setWeight(QFont::DemiBold);
    vorhaben_->setFont(fett);
    // Lines of about seventy letters read well.
    inhalt_->setMinimumWidth(fontMetrics().averageCharWidth() * 88);
}

void Werkzeugfenster::Erklaeren(const QStringList &saetze)
{
    for (const QString &satz : saetze) {
        erklaerung_ << Textzeile(inhalt_, satz, u"Erklärung(%1)"_s.arg(erklaerung_.size()));
        kasten_->addWidget(erklaerung_.back());
    }
}

void Werkzeugfenster::ErklaerungZeigen(bool zeigen)
{
    for (QLabel *satz : erklaerung_)
        satz->setVisible(zeigen);
}

QLabel *Werkzeugfenster::HinweisBauen(const QString &text)
{
    leise_ << Textzeile(inhalt_, text, u"Hinweis(%1)"_s.arg(leise_.size()));
    hinweise_->addWidget(leise_.back());
    return leise_.back();
}

void Werkzeugfenster::FlaecheBauen(QWidget *flaeche)
{
    constexpr int AllenPlatz = 100; // beside the one that is left over below
    flaeche->setParent(inhalt_);
    const bool waechst = flaeche->sizePolicy().expandingDirections().testFlag(Qt::Vertical);
    spalte_->addWidget(flaeche, waechst ? AllenPlatz : 0);
}

void Werkzeugfenster::VorhabenZeigen(const QString &text)
{
    vorhaben_->setText(text);
}

QComboBox *Werkzeugfenster::TrennzeichenBauen(const QList<std::pair<QString, QWidget *>> &daneben)
{
    auto *box = Benannt(new QComboBox(inhalt_), u"cmbTrennzeichen"_s, u"Trennzeichen"_s);
    box->setEditable(true);
    box->setInsertPolicy(QComboBox::NoInsert);
    box->setCompleter(nullptr);
    box->addItems({u"#"_s, u";"_s, TabText()});
    box->setCurrentText(TabText());
    ZeileBauen(QList<std::pair<QString, QWidget *>>{{u"&Trennzeichen:"_s, box}} + daneben);
    return box;
}

void Werkzeugfenster::ZeileBauen(const QList<std::pair<QString, QWidget *>> &felder)
{
    const int zeile = felder_->rowCount();
    auto *reihe = new QHBoxLayout;
    reihe->setSpacing(felder_->horizontalSpacing() - 2); // three of them fit into 640 pixels
    for (const auto &[text, feld] : felder) {
        if (feld == felder.front().second)
            felder_->addWidget(Beschriftung(text, feld, inhalt_), zeile, 0);
        else if (!text.isEmpty())
            reihe->addWidget(Beschriftung(text, feld, inhalt_));
        // Several fields end where those of the other rows do.
        reihe->addWidget(feld, felder.size() > 1 && feld == felder.back().second ? 1 : 0);
    }
    if (felder.size() == 1)
        reihe->addStretch(1);
    felder_->addLayout(reihe, zeile, 1, 1, 2);
}

QLineEdit *Werkzeugfenster::DateinameBauen(const QString &tipp, const std::function<void()> &suchen)
{
    auto *feld = Benannt(new QLineEdit(inhalt_), u"lblDateiname"_s, u"Dateiname"_s);
    feld->setToolTip(tipp);
    // A push button: Enter on it must not run the tool.
    auto *knopf = Benannt(new QPushButton(u"..."_s, inhalt_), u"cmdDateiname"_s, u"Datei suchen"_s);
    knopf->setToolTip(u"Datei suchen"_s);
    knopf->setFixedWidth(fontMetrics().averageCharWidth() * 6);
    connect(knopf, &QPushButton::clicked, this, [feld, suchen] {
        suchen();
        feld->setFocus(); // Enter runs the tool now
    });
    const int zeile = felder_->rowCount();
    felder_->addWidget(Beschriftung(u"&Dateiname:"_s, feld, inhalt_), zeile, 0);
    felder_->addWidget(feld, zeile, 1);
    felder_->addWidget(knopf, zeile, 2);
    feld->setFocus(); // all else has its usual value already
    return feld;
}

Medienwahl *Werkzeugfenster::MedienBauen()
{
    auto *wahl = new Medienwahl(inhalt_);
    felder_->addWidget(wahl, felder_->rowCount(), 1, 1, 2);
    return wahl;
}

void Werkzeugfenster::MedienAnbieten(Medienwahl *wahl, const std::optional<QList<MediaName>> &medien,
                                     QLineEdit *feld)
{
    connect(feld, &QLineEdit::textChanged, wahl, [this, wahl, medien](const QString &name) {
        if (name.isEmpty())
            wahl->NichtsAnbieten();
        else
            wahl->Anbieten(medien, Store().KarteiPfad, QFileInfo(VollerPfad(Store(), name)).absolutePath());
    });
}

void Werkzeugfenster::KnoepfeBauen(const std::function<void()> &cmdOK_Click)
{
    progress_ = Benannt(new QProgressBar(inhalt_), u"Fortschritt"_s, u"Fortschritt"_s);
    PlatzHalten(progress_);
    progress_->hide();
    cmdAbbrechen_ =
        Benannt(new QPushButton(u"Abbrechen (Esc)"_s, inhalt_), u"cmdAbbrechen"_s, u"Die Arbeit abbrechen"_s);
    cmdAbbrechen_->setAutoDefault(false);
    cmdAbbrechen_->setFocusPolicy(Qt::NoFocus); // keys that were typed ahead must not end the work
    cmdAbbrechen_->hide();
    cmdOK_ = Benannt(new QPushButton(u"OK"_s, inhalt_), u"cmdOK"_s, u"OK"_s);
    cmdOK_->setDefault(true);
    cmdOK_->setProperty("leitend", true);
    connect(cmdOK_, &QPushButton::clicked, this, cmdOK_Click);
    auto *cmdZurück = Benannt(new QPushButton(u"&Zurück"_s, inhalt_), u"cmdZurück"_s, u"Zurück"_s);
    connect(cmdZurück, &QPushButton::clicked, this, [this] { cmdZurück_Click(); });

    auto *zeile = new QHBoxLayout;
    zeile->addWidget(progress_, 1);
    zeile->addWidget(cmdAbbrechen_);
    zeile->addSpacing(fontMetrics().height());
    zeile->addWidget(cmdOK_);
    zeile->addWidget(cmdZurück);
    if (felder_->expandingDirections().testFlag(Qt::Vertical))
        spalte_->setStretchFactor(felder_, 1); // lists take the room of a larger window
    else
        spalte_->addStretch(1);
    vorhaben_->setMinimumHeight(vorhaben_->fontMetrics().height()); // nothing jumps when it comes
    spalte_->addWidget(vorhaben_);
    spalte_->addLayout(zeile);
    FarbenSetzen();
    // As high as the wrapped texts need; lists give way on a small screen.
    const int breite = layout()->totalSizeHint().width();
    const int schirm = screen()->availableSize().height() * 9 / 10;
    resize(breite, std::min(layout()->totalHeightForWidth(breite), schirm));
}

void Werkzeugfenster::SetOKErlaubt(bool erlaubt)
{
    cmdOK_->setEnabled(erlaubt);
}

void Werkzeugfenster::cmdZurück_Click()
{
    reject();
}

void Werkzeugfenster::reject()
{
    if (!laeuft_)
        QDialog::reject();
}

void Werkzeugfenster::Ausfuehren(const std::function<void(const Werkbank &bank)> &arbeit)
{
    if (laeuft_)
        return;
    oeffner_.VorEingriff();
    Nachsehen(arbeit);
}

void Werkzeugfenster::Nachsehen(const std::function<void(const Werkbank &bank)> &arbeit)
{
    if (laeuft_)
        return;
    laeuft_ = true;
    {
        LangeArbeit lang(dienste_.meldungen, *inhalt_, *progress_, cmdAbbrechen_);
        arbeit({Store(), oeffner_, dienste_.meldungen, lang.Melder(), [&lang] { lang.Unwiderruflich(); }});
    }
    laeuft_ = false;
}

void Werkzeugfenster::NeueKarteiErstellen(
    QLineEdit *feld, const std::function<Ausgang(const Werkbank &bank, const QString &ziel)> &erstellen)
{
    const QString name = QFileInfo(feld->text()).fileName();
    if (!name.isEmpty() && !name.contains(u'.'))
        feld->setText(feld->text() + u".pzb"_s);
    const QString ziel = feld->text();
    if ((!ziel.isEmpty() && !ziel_.IstKarteiname(ziel)) || !ziel_.DarfErstellen(ziel))
        return;
    Ausgang ausgang{};
    Ausfuehren([&](const Werkbank &bank) { ausgang = erstellen(bank, ziel); });
    if (ausgang == Ausgang::Gelungen)
        dienste_.meldungen.Zeigen(ziel + u" erfolgreich geschrieben"_s);
    if (ausgang == Ausgang::Gelungen || !Store().IsOpen())
        accept();
}

bool Werkzeugfenster::KarteinameUebernehmen(QLineEdit *feld, const QString &gewaehlt)
{
    if (gewaehlt.isEmpty() || !ziel_.IstKarteiname(gewaehlt))
        return false;
    feld->setText(gewaehlt);
    return true;
}

void Werkzeugfenster::changeEvent(QEvent *event)
{
    QDialog::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        FarbenSetzen();
}

void Werkzeugfenster::FarbenSetzen()
{
    for (QLabel *label : leise_)
        label->setPalette(Farben::Leise(palette()));
}

DateiDialog Werkzeugfenster::TextdateiDialog(const QString &titel, const QString &verzeichnis,
                                             const QString &endung)
{
    return {.titel = titel,
            .filter = u"Textdateien (*.txt)|*.txt|ASCII Dateien (*.asc)|*.asc|"
                      u"Tabellen (*.csv;*.tsv)|*.csv;*.tsv|Alle Dateien (*.*)|*.*"_s,
            .verzeichnis = verzeichnis,
            .endung = endung};
}

} // namespace paukfix
