// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AsciiTausch.h"
#include "CardFile.h"
#include "FuzzProgramm.h"
#include "Importprobe.h"
#include "KarteiOeffner.h"

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

struct Box
{
    Box()
    {
        QString name = u"karten.pzb"_s;
        const QString path = Directory().filePath(name);
        QFile::remove(path);
        CardFile::Create(path);
        store.KarteiPfad = Directory().path();
        oeffner.OpenCardFile(name);
        Require(store.IsOpen());
    }

    int Count()
    {
        Require(store.IsOpen());
        int count = 0;
        for (const Fach &fach : store.FachInfo)
            count += fach.Anzahl;
        Require(store.Karten().RecordCount() == count);
        return count;
    }

    StummeMeldungen meldungen;
    FastClock clock;
    CardStore store;
    KarteiOeffner oeffner{store, meldungen, clock};
    Werkbank bank{store, oeffner, meldungen};
};

// As a line a card: what is exported then is read back as so many cards.
void AsLines(const QString &text)
{
    Box box;
    AsciiImportieren(box.bank, text, u';');
    const int imported = box.Count();
    const QString out = Directory().filePath(u"aus.txt"_s);
    if (AsciiExportieren(box.bank, out, u';') == Ausgang::Gelungen &&
        AsciiImportieren(box.bank, out, u';') == Ausgang::Gelungen)
        Require(box.Count() == 2 * imported + 1); // the headings are a line too
}

// As it looks, and as quoted records: what the look promises comes in, and every field goes out and in again.
void AsItLooks(const QByteArray &bytes, const QString &text)
{
    for (const bool quoted : {false, true}) {
        Box box;
        const auto probe = Importprobe::Lesen(box.store, text);
        Require(probe.has_value());
        const auto form =
            quoted ? std::optional(Textform{.trennzeichen = u',', .anfuehrung = true}) : std::nullopt;
        const Aufbau aufbau = probe->Raten({}, form);
        const Importvorschau vorschau = probe->Ansehen(aufbau);
        Zugang zugang;
        const Ausgang ausgang = AsciiImportieren(box.bank, text, Importwahl(aufbau), &zugang);
        if (ausgang == Ausgang::Gelungen && bytes.size() < 1 << 20)
            Require(zugang.karten == vorschau.karten && zugang.andere == vorschau.andere);
        const int imported = box.Count();
        Importwahl erneuern(aufbau);
        erneuern.vorhandene = Vorhandene::Erneuern;
        if (AsciiImportieren(box.bank, text, erneuern, &zugang) == Ausgang::Gelungen)
            Require(zugang.karten + zugang.ausgelassen + zugang.erneuert == vorschau.karten);

        const int all = box.Count();
        Exportwahl alleFelder(u';');
        alleFelder.form.anfuehrung = true;
        alleFelder.alleFelder = true;
        const QString out = Directory().filePath(u"aus.csv"_s);
        if (AsciiExportieren(box.bank, out, alleFelder) != Ausgang::Gelungen)
            continue;
        Box other;
        Importwahl wahl(u';');
        wahl.aufbau.form.anfuehrung = true;
        wahl.aufbau.alleFelder = true;
        Require(AsciiImportieren(other.bank, out, wahl) == Ausgang::Gelungen);
        Require(other.Count() == all && all >= imported);
    }
}

} // namespace

// Any file is imported, as often as the box takes its cards, or refused; box, counts and file agree after it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes = BytesOf(data, size);
    const QString text = PutFile(u"text.txt"_s, bytes);
    AsLines(text);
    AsItLooks(bytes, text);
    return 0;
}
