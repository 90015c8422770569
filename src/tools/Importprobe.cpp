// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Importprobe.h"

#include "CardRecord.h"
#include "ContentPlaces.h"
#include "FelderText.h"
#include "Vorhandenenwahl.h"
#include "Werkbank.h"

#include <QFile>
#include <QFileInfo>

#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 Gleich = qint64{8} << 20;       // bytes that are read before anybody waits for it
constexpr qint64 Hoechstens = qint64{256} << 20; // of a larger file only the first cards are shown
constexpr std::size_t Gezeigt = 20;              // cards

void Uebertragen(const Vorabzaehler &zaehler, Importvorschau &vorschau)
{
    vorschau.karten = zaehler.Karten();
    vorschau.bekannt = zaehler.Bekannt();
    vorschau.andereAntwort = zaehler.AndereAntwort();
}

} // namespace

std::optional<Importprobe> Importprobe::Lesen(CardStore &store, const QString &dateiname)
{
    try {
        if (dateiname.isEmpty())
            return std::nullopt;
        const QString pfad = VollerPfad(store, dateiname);
        if (!QFileInfo(pfad).isFile())
            return std::nullopt;
        NichtDieOffene(store, pfad);
        QFile datei(pfad);
        if (!datei.open(QIODevice::ReadOnly))
            return std::nullopt;
        const qint64 groesse = datei.size(); // as much is taken from memory as is asked for
        const QByteArray anfang = datei.read(groesse > Hoechstens ? Gleich : groesse);
        return Importprobe(store, anfang, datei.atEnd());
    } catch (const StoreError &) { // told when it is to be read in
        return std::nullopt;
    }
}

Importprobe::Importprobe(CardStore &store, QByteArray datei, bool ganz)
    : store_(&store), datei_(std::move(datei)), ganz_(ganz)
{
    if (!ganz_) // whole lines, and whole characters of two bytes
        datei_.truncate((datei_.lastIndexOf('\n') + 1) / 2 * 2);
    store.Karten().Beside([this](SQLite::Database &database) { box_.emplace(database); });
}

Aufbau Importprobe::Raten(const Zeichensatz &zeichensatz, const std::optional<Textform> &form) const
{
    try {
        return AufbauRaten(datei_, zeichensatz, form);
    } catch (const StoreError &) { // told by Ansehen()
        return {.zeichensatz = zeichensatz, .form = form.value_or(Textform())};
    }
}

QStringList Importprobe::ErsteZeile(const Aufbau &aufbau) const
{
    QStringList felder;
    try {
        std::vector<Textfeld> erster;
        TextSaetze(TextLesen(datei_, aufbau.zeichensatz), aufbau.form).Naechster(erster);
        for (const Textfeld &feld : erster)
            felder << feld.text;
    } catch (const StoreError &) { // told by Ansehen()
    }
    return felder;
}

bool Importprobe::DauertLange() const
{
    return datei_.size() > Gleich;
}

Importvorschau Importprobe::Ansehen(const Aufbau &aufbau, const Progress &progress) const
{
    Importvorschau vorschau;
    vorschau.nurAnfang = !ganz_;
    try {
        const Textinhalt inhalt = TextLesen(datei_, aufbau.zeichensatz);
        vorschau.unpassend = inhalt.unpassend;
        if (aufbau.alleFelder)
            GanzeKarten(inhalt, aufbau, progress, vorschau);
        else
            EinfacheKarten(inhalt, aufbau, progress, vorschau);
    } catch (const StoreError &fehler) {
        if (fehler.Number() == Fehler::Abgebrochen)
            vorschau.nurAnfang = true;
        else if (ganz_ || vorschau.erste.empty())
            vorschau.hindernis = fehler.Text();
    }
    return vorschau;
}

void Importprobe::EinfacheKarten(const Textinhalt &inhalt, const Aufbau &aufbau, const Progress &progress,
                                 Importvorschau &vorschau) const
{
    Vorabzaehler zaehler(box_);
    KartenAusText karten(inhalt, aufbau);
    for (SimpleCard karte; karten.Naechste(karte);) {
        const std::string frage = karte.question.toStdString();
        const std::string antwort = karte.answer.toStdString();
        zaehler.Karte([&] {
            Karteninhalt teile;
            teile.frage = frage;
            teile.antworten[0] = antwort;
            return teile;
        });
        if (vorschau.erste.size() < Gezeigt)
            vorschau.erste.push_back(std::move(karte));
        if (progress && zaehler.Karten() % ProgressSteps == 0)
            progress(karten.Gelesen(), karten.Gesamt());
    }
    Uebertragen(zaehler, vorschau);
    vorschau.andere = karten.Andere();
    vorschau.andereZeilen = karten.AndereZeilen();
}

void Importprobe::GanzeKarten(const Textinhalt &inhalt, const Aufbau &aufbau, const Progress &progress,
                              Importvorschau &vorschau) const
{
    Vorabzaehler zaehler(box_);
    FelderQuelle quelle(inhalt, aufbau.form, store_->Karten(), false);
    const ContentPlaces stellen(quelle.Columns());
    std::vector<CopiedValue> werte(quelle.Columns().size());
    const auto text = [&](QStringView name) {
        CopiedValue wert;
        quelle.Read(CardColumnIndex(name), wert);
        return QString::fromStdString(wert.kind == CopiedValue::Kind::Text ? wert.text : std::string());
    };
    int gelesen = 0;
    while (quelle.Next()) {
        Melden(progress, ++gelesen, quelle.Count());
        for (std::size_t i = 0; i < werte.size(); ++i)
            try {
                quelle.Read(quelle.Columns()[i], werte[i]);
            } catch (const StoreError &) { // left out and told when it is read in
                werte[i].kind = CopiedValue::Kind::Null;
            }
        zaehler.Karte([&] { return stellen.Of(werte); });
        if (vorschau.erste.size() < Gezeigt)
            vorschau.erste.push_back(
                {text(u"Frage_Klartext"), text(u"Antwort_1_Klartext"), text(u"Picture_9_Name")});
    }
    Uebertragen(zaehler, vorschau);
}

} // namespace paukfix
