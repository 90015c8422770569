// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Karteiausgeben.h"

#include "Fensterbau.h"
#include "FremdAusgabe.h"

#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QLineEdit>

namespace paukfix {

using namespace Qt::StringLiterals;

Karteiausgeben::Karteiausgeben(KarteiOeffner &oeffner, const Dienste &dienste, QWidget *parent)
    : Werkzeugfenster(oeffner, dienste, u"Karteiausgeben"_s, u"Kartei ausgeben"_s, u"Kartei ausgeben"_s,
                      parent)
{
    Erklaeren(
        {u"Schreibt alle Karten der geöffneten Kartei in eine Datei, die andere Lernprogramme lesen können. "_s,
         u"Bilder und Töne kommen mit; was die Form nicht fassen kann, steht danach in einem Bericht."_s});
    cmbForm_ = Benannt(new QComboBox(this), u"cmbForm"_s, u"Form"_s);
    cmbForm_->addItem(u"Anki-Paket (.apkg)"_s, static_cast<int>(Fremdform::Anki));
    cmbForm_->addItem(u"KVTML 2 (.kvtml)"_s, static_cast<int>(Fremdform::Kvtml));
    const int zeile = Felder()->rowCount();
    Felder()->addWidget(Beschriftung(u"&Form:"_s, cmbForm_, this), zeile, 0);
    Felder()->addWidget(cmbForm_, zeile, 1, Qt::AlignLeft);
    lblDateiname_ = DateinameBauen(u"Hier bitte den Namen der zu erstellenden Datei eingeben"_s,
                                   [this] { cmdDateiname_Click(); });
    HinweisBauen(u"Hinweis: KVTML kennt keine Schriftformate; ein Anki-Paket hält auch diese."_s);
    connect(cmbForm_, &QComboBox::currentIndexChanged, this, &Karteiausgeben::FormGewaehlt);
    KnoepfeBauen([this] { cmdOK_Click(); });
    lblDateiname_->setText(QDir::toNativeSeparators(
        Store().CardPath(QFileInfo(Store().CurrentFileName).completeBaseName() + Endung())));
    const int karten = Store().Karten().RecordCount();
    VorhabenZeigen(KartenText(karten) + (karten == 1 ? u" wird ausgegeben."_s : u" werden ausgegeben."_s));
}

QString Karteiausgeben::Endung() const
{
    return cmbForm_->currentData().toInt() == static_cast<int>(Fremdform::Anki) ? u".apkg"_s : u".kvtml"_s;
}

void Karteiausgeben::FormGewaehlt()
{
    const QString name = lblDateiname_->text();
    const QString endung = u'.' + QFileInfo(name).suffix();
    if (endung == u".apkg" || endung == u".kvtml")
        lblDateiname_->setText(name.chopped(endung.size()) + Endung());
}

void Karteiausgeben::cmdDateiname_Click()
{
    const bool anki = Endung() == u".apkg";
    const QString gewaehlt =
        Ziel().Waehlen({.titel = u"Kartei ausgeben"_s,
                        .filter = anki ? u"Anki-Pakete (*.apkg)|*.apkg"_s : u"KVTML (*.kvtml)|*.kvtml"_s,
                        .verzeichnis = Store().KarteiPfad,
                        .endung = Endung().mid(1),
                        .vorgabe = QFileInfo(lblDateiname_->text()).fileName()});
    if (!gewaehlt.isEmpty())
        lblDateiname_->setText(gewaehlt);
}

void Karteiausgeben::cmdOK_Click()
{
    QString ziel = lblDateiname_->text().trimmed();
    if (!ziel.isEmpty() && !ziel.endsWith(Endung(), Qt::CaseInsensitive))
        ziel += Endung();
    lblDateiname_->setText(ziel);
    if (!Ziel().DarfErstellen(ziel))
        return;
    Ausgang ausgang = Ausgang::Gescheitert;
    QString rest;
    const auto form = static_cast<Fremdform>(cmbForm_->currentData().toInt());
    Ausfuehren([&](const Werkbank &bank) { ausgang = FremdAusgeben(bank, ziel, form, rest); });
    if (ausgang != Ausgang::Gelungen)
        return;
    const QString gut = ziel + u" erfolgreich geschrieben"_s;
    if (rest.isEmpty())
        Dienst().meldungen.Zeigen(gut);
    else
        Dienst().meldungen.Bericht(u"Kartei ausgeben"_s,
                                   gut + u"\n\nWas nicht oder anders mitkam:\n\n"_s + rest);
    accept();
}

} // namespace paukfix
