// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Kartenabgleich.h"

#include <QCryptographicHash>
#include <QString>
#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

#include <algorithm>
#include <cstring>
#include <string>

namespace paukfix {

namespace {

constexpr double Ankreuzen = 2; // Antworttyp

bool IstAscii(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<uchar>(c) < 0x80; });
}

// The words with one blank between them.
std::string Worte(std::string_view text)
{
    if (!IstAscii(text)) {
        const QString ganz = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
        return ganz.normalized(QString::NormalizationForm_C).simplified().toStdString();
    }
    std::string worte;
    worte.reserve(text.size());
    bool luecke = false;
    for (const char c : text) {
        if (c == ' ' || (c >= '\t' && c <= '\r')) {
            luecke = !worte.empty();
            continue;
        }
        if (luecke)
            worte += ' ';
        luecke = false;
        worte += c;
    }
    return worte;
}

Kartenkennung::Abdruck AbdruckVon(const std::string &bytes)
{
    const QByteArray ganz = QCryptographicHash::hash({bytes.data(), static_cast<qsizetype>(bytes.size())},
                                                     QCryptographicHash::Blake2b_160);
    Kartenkennung::Abdruck abdruck{};
    std::memcpy(abdruck.data(), ganz.constData(), sizeof abdruck);
    return abdruck;
}

// No text has the character that parts them here.
std::string Teil(const std::string &text)
{
    return text + '\x1f';
}

std::string_view Text(const SQLite::Column &wert)
{
    const char *anfang = wert.getText(); // before getBytes(): it converts numbers
    return {anfang, static_cast<std::size_t>(wert.getBytes())};
}

} // namespace

Kartenkennung::Kartenkennung(const Karteninhalt &inhalt)
{
    const bool ankreuzen = inhalt.typ == Ankreuzen;
    const std::string worte = Worte(inhalt.frage);
    const std::string zuSehen = inhalt.bild.empty() && inhalt.ton.empty()
                                    ? ""
                                    : Teil(std::string(inhalt.bild)) + std::string(inhalt.ton);
    // A question without words is what it shows.
    frage = AbdruckVon(Teil(ankreuzen ? "2" : "1") + Teil(worte) + (worte.empty() ? zuSehen : ""));
    if (!zuSehen.empty())
        medien = AbdruckVon(zuSehen);
    std::string alle = Worte(inhalt.antworten[0]);
    if (ankreuzen) {
        alle = Teil(alle);
        for (std::size_t i = 1; i < inhalt.antworten.size(); ++i)
            alle += Teil(Worte(inhalt.antworten[i]));
        for (const bool eine : inhalt.richtig)
            alle += eine ? '1' : '0';
    }
    antwort = AbdruckVon(alle);
}

Kartenabgleich::Kartenabgleich(SQLite::Database &database)
{
    std::string sql = R"(SELECT _rowid_,"Antworttyp",coalesce(nullif("Frage_Klartext",''),"Frage"),)"
                      R"("Picture_1_Name","Picture_6_Name")";
    for (const char nummer : {'1', '2', '3', '4', '5'}) {
        const std::string name = std::string("\"Antwort_") + nummer;
        sql.append(",coalesce(nullif(").append(name).append("_Klartext\",''),").append(name).append("\")");
        sql.append(",\"Antwort_ch_").append(1, nummer).append("\"");
    }
    SQLite::Statement alle(database, sql + R"( FROM "Lernkarten")");
    while (alle.executeStep()) {
        Karteninhalt inhalt;
        inhalt.typ = alle.getColumn(1).getDouble();
        inhalt.frage = Text(alle.getColumn(2));
        inhalt.bild = Text(alle.getColumn(3));
        inhalt.ton = Text(alle.getColumn(4));
        for (std::size_t i = 0; i < inhalt.antworten.size(); ++i) {
            inhalt.antworten[i] = Text(alle.getColumn(static_cast<int>(5 + 2 * i)));
            inhalt.richtig[i] = alle.getColumn(static_cast<int>(6 + 2 * i)).getDouble() != 0;
        }
        const Kartenkennung kennung(inhalt);
        karten_.insert({kennung.frage,
                        {.antwort = kennung.antwort,
                         .medien = kennung.medien,
                         .zeile = alle.getColumn(0).getInt64(),
                         .getroffen = false}});
    }
}

Kartenabgleich::Fund Kartenabgleich::Suchen(const Kartenkennung &neue)
{
    constexpr Kartenkennung::Abdruck Nichts{};
    Karte *andere = nullptr;
    int zahl = 0;
    const auto [von, bis] = karten_.equal_range(neue.frage);
    for (auto i = von; i != bis; ++i) {
        Karte &karte = i->second;
        if (neue.medien != karte.medien && neue.medien != Nichts && karte.medien != Nichts)
            continue;
        if (karte.antwort == neue.antwort) {
            karte.getroffen = true;
            return {Befund::Bekannt, karte.zeile};
        }
        andere = &karte;
        ++zahl;
    }
    if (zahl != 1 || andere->getroffen)
        return {};
    andere->getroffen = true;
    return {Befund::AndereAntwort, andere->zeile};
}

void Kartenabgleich::Aufnehmen(const Kartenkennung &neue, std::int64_t zeile)
{
    const auto [von, bis] = karten_.equal_range(neue.frage);
    const auto da = std::find_if(von, bis, [&](const auto &eine) { return eine.second.zeile == zeile; });
    if (da != bis)
        da->second.antwort = neue.antwort;
    else
        karten_.insert({neue.frage,
                        {.antwort = neue.antwort, .medien = neue.medien, .zeile = zeile, .getroffen = true}});
}

} // namespace paukfix
