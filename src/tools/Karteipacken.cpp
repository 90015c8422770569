// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Karteipacken.h"

#include "Packauftrag.h"
#include "Packen.h"

#include <QFileInfo>
#include <QLineEdit>
#include <QLocale>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

QString VorhabenText(int karten, const Packliste &liste)
{
    QString text = KartenText(karten);
    if (!liste.dateien.isEmpty())
        text += u" und %1, zusammen %2"_s.arg(
            liste.dateien.size() == 1 ? u"1 Bild oder Ton"_s
                                      : u"%1 Bilder und Töne"_s.arg(liste.dateien.size()),
            QLocale(QLocale::German).formattedDataSize(liste.bytes, 1, QLocale::DataSizeTraditionalFormat));
    if (liste.fehlend == 1)
        text += u"; 1 Datei fehlt"_s;
    else if (liste.fehlend > 1)
        text += u"; %1 Dateien fehlen"_s.arg(liste.fehlend);
    return text + u'.';
}

} // namespace

Karteipacken::Karteipacken(KarteiOeffner &oeffner, const Dienste &dienste, QWidget *parent)
    : Werkzeugfenster(oeffner, dienste, u"Karteipacken"_s, u"Kartei packen"_s, u"Kartei packen"_s, parent)
{
    Erklaeren(
        {u"Durch diese Funktion wird aus der Kartei und allen Bildern und Tönen, die ihre Karten nennen, "
         u"eine einzige Datei."_s,
         u"Sie können sie aufheben, verschicken und auf einem anderen Rechner öffnen: Dort entsteht neben "
         u"ihr ein Ordner mit der Kartei und allem, was dazugehört."_s});
    lblDateiname_ = DateinameBauen(u"Hier bitte den Namen der zu erstellenden Datei eingeben"_s,
                                   [this] { cmdDateiname_Click(); });
    lblDateiname_->setText(QFileInfo(Store().CurrentFileName).completeBaseName() + Paketendung);
    lblDateiname_->selectAll();
    Step(dienste.meldungen, FehlerKontext(), [this] {
        CardRecordset &karten = Store().Karten();
        VorhabenZeigen(
            VorhabenText(karten.RecordCount(),
                         PacklisteVon(Store().CardPath(Store().CurrentFileName), MediaNames(karten))));
    });
    KnoepfeBauen([this] { cmdOK_Click(); });
}

void Karteipacken::cmdDateiname_Click()
{
    const QString ziel = Ziel().Waehlen({.titel = u"Kartei packen"_s,
                                         .filter = u"Gepackte Karteien (*.pzbz)|*.pzbz"_s,
                                         .verzeichnis = Store().KarteiPfad,
                                         .endung = u"pzbz"_s});
    if (!ziel.isEmpty())
        lblDateiname_->setText(ziel);
}

void Karteipacken::cmdOK_Click()
{
    QString ziel = lblDateiname_->text();
    if (const QString name = QFileInfo(ziel).fileName(); !name.isEmpty() && !name.contains(u'.')) {
        ziel += Paketendung;
        lblDateiname_->setText(ziel);
    }
    if (!ziel.isEmpty() && !IstPaket(ziel)) {
        Dienst().meldungen.Zeigen(u"Bitte nur .pzbz Dateien"_s);
        return;
    }
    if (!Ziel().DarfErstellen(ziel))
        return;
    Ausgang ausgang{};
    Ausfuehren([&](const Werkbank &bank) { ausgang = KarteiPacken(bank, ziel); });
    if (ausgang != Ausgang::Gelungen)
        return;
    Dienst().meldungen.Zeigen(ziel + u" erfolgreich geschrieben"_s);
    accept();
}

} // namespace paukfix
