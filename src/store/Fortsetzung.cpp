// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Fortsetzung.h"

#include "CardCopy.h"
#include "CardFile.h"
#include "CardFileCheck.h"
#include "CardSchema.h"
#include "FreshFile.h"

#include <QFileInfo>
#include <SQLiteCpp/Statement.h>

#include <optional>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

std::unique_ptr<CardFile> Geprueft(const QString &pfad)
{
    auto datei = std::make_unique<CardFile>(pfad);
    CheckCardFile(datei->Database());
    return datei;
}

// What tells a card at its place from another one; nothing where it cannot be read.
std::optional<QByteArray> Inhalt(SQLite::Database &datei)
{
    try {
        QByteArray inhalt;
        SQLite::Statement karten(datei, "SELECT FrageNr, FachNr, FachLfdNr, Frage FROM Lernkarten "
                                        "ORDER BY FrageNr");
        while (karten.executeStep())
            for (int i = 0; i < karten.getColumnCount(); ++i)
                inhalt += QByteArray::fromStdString(karten.getColumn(i).getString()) + '\0';
        return inhalt;
    } catch (const SQLite::Exception &) {
        return std::nullopt;
    }
}

// Where the open file can no longer be read, the numbers of its compartments must do.
bool SelbeKarten(CardStore &kartei, CardFile &neue)
{
    if (const auto bisher = Inhalt(kartei.Datei().Database()))
        return bisher == Inhalt(neue.Database());
    CardRecordset karten(neue);
    Faecher gezaehlt;
    gezaehlt.Zaehlen(karten);
    return std::equal(gezaehlt.begin(), gezaehlt.end(), kartei.FachInfo.begin(),
                      [](const Fach &eines, const Fach &anderes) {
                          return eines.Anzahl == anderes.Anzahl && eines.LfdMax == anderes.LfdMax;
                      });
}

} // namespace

void WiederOeffnen(CardStore &kartei, const QString &pfad, const Sitzung &sitzung)
{
    if (kartei.IsOpen() && kartei.Datei().IsInPlace()) {
        kartei.Datei().CheckStillInPlace(); // another program may have it by now
        if (!kartei.Datei().IsChanged())
            return;
        kartei.CloseCardFile(); // of one file there is one connection
    }
    auto neue = Geprueft(pfad);
    if (kartei.IsOpen() && !SelbeKarten(kartei, *neue))
        throw StoreError(Fehler::KarteiNichtGefunden,
                         DateiSatz(pfad) + u"wurde durch eine andere Kartei ersetzt."_s);
    kartei.Fortsetzen(std::move(neue), sitzung, false);
}

void Umziehen(CardStore &kartei, const QString &ziel)
{
    if (SameFile(ziel, kartei.OffenerPfad()))
        throw StoreError(Fehler::NichtErlaubt, DateiSatz(ziel) + u"ist die Kartei selbst."_s);
    CheckNameLength(ziel);
    CheckReplaceable(ziel); // another program may be learning with it
    FreshFile neue(ziel);
    neue.Make([&](const QString &pfad) {
        kartei.Karten().Beside([&](SQLite::Database &offene) { CopyCardFile(offene, pfad); });
    });
    neue.TakePlace();
    kartei.Fortsetzen(std::make_unique<CardFile>(ziel), kartei.sitzung, true);
    kartei.KarteiPfad = QFileInfo(ziel).absolutePath();
    kartei.CurrentFileName = QFileInfo(ziel).fileName();
}

} // namespace paukfix
