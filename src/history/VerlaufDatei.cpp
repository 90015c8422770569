// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "VerlaufDatei.h"

#include "CardFile.h"
#include "EngineLocks.h"
#include "SafeFile.h"
#include "StoreError.h"
#include "Wiedererkennung.h"

#include <QFileInfo>
#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/Transaction.h>
#include <sqlite3.h>

#include <algorithm>

namespace paukfix {

using namespace Qt::StringLiterals;
using namespace std::string_literals;

namespace {

constexpr int Kennung = 0x50667631; // "Pfv1"
constexpr int Fassung = 1;
constexpr int Geduld = 2000; // ms, for another program that writes

constexpr const char *Schema = R"(
CREATE TABLE box(nummer INTEGER PRIMARY KEY, pfad TEXT NOT NULL, dort INTEGER NOT NULL, abdruck BLOB NOT NULL,
    vielleicht INTEGER);
CREATE TABLE tag(box INTEGER NOT NULL, tag TEXT NOT NULL, richtig INTEGER NOT NULL, falsch INTEGER NOT NULL,
    neu INTEGER NOT NULL, fach1 INTEGER NOT NULL, fach2 INTEGER NOT NULL, fach3 INTEGER NOT NULL,
    fach4 INTEGER NOT NULL, fach5 INTEGER NOT NULL, erledigt INTEGER NOT NULL, PRIMARY KEY(box, tag)) WITHOUT ROWID;
CREATE TABLE hinweis(beiseite TEXT NOT NULL);
)";

QString Text(const SQLite::Column &spalte)
{
    return QString::fromUtf8(spalte.getText(), spalte.getBytes());
}

bool IstBeschaedigt(const SQLite::Exception &fehler)
{
    switch (fehler.getErrorCode() & 0xff) {
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
    case SQLITE_ERROR:    // tables or columns that are not there
    case SQLITE_MISMATCH: // values that cannot be
        return true;
    default:
        return false;
    }
}

// Thrown where a file opens, but does not hold what it should.
class Unbrauchbar : public SQLite::Exception
{
public:
    Unbrauchbar() : SQLite::Exception("no history", SQLITE_CORRUPT) {}
};

std::vector<BekannteBox> Bekannte(SQLite::Database &datei)
{
    std::vector<BekannteBox> boxen;
    SQLite::Statement lesen(datei, "SELECT nummer, pfad, dort, abdruck FROM box ORDER BY nummer");
    while (lesen.executeStep()) {
        const SQLite::Column abdruck = lesen.getColumn(3);
        boxen.push_back(
            {lesen.getColumn(0).getInt64(), Text(lesen.getColumn(1)), lesen.getColumn(2).getInt() != 0,
             Kartenabdruck::AusBytes({static_cast<const char *>(abdruck.getBlob()), abdruck.getBytes()})});
    }
    return boxen;
}

Wiedererkennung Erkennen(SQLite::Database &datei, const Verlaufsbox &box)
{
    return Wiedererkennen(Bekannte(datei), box.pfad, box.abdruck,
                          [](const QString &pfad) { return QFileInfo::exists(pfad); });
}

template <typename... Werte>
void Ausfuehren(SQLite::Database &datei, const char *befehl, const Werte &...werte)
{
    SQLite::Statement anweisung(datei, befehl);
    int stelle = 0;
    (anweisung.bind(++stelle, werte), ...);
    anweisung.exec();
}

// What stands at `pfad` from now on is box `nummer`.
void Hinstellen(SQLite::Database &datei, std::int64_t nummer, const Verlaufsbox &box)
{
    const std::string pfad = box.pfad.toStdString();
    Ausfuehren(datei, "UPDATE box SET dort=0 WHERE pfad=?1 AND nummer<>?2", pfad, nummer);
    Ausfuehren(datei, "UPDATE box SET pfad=?1, dort=1 WHERE nummer=?2", pfad, nummer);
    if (box.abdruck.IstLeer())
        return;
    SQLite::Statement stellen(datei, "UPDATE box SET abdruck=?1 WHERE nummer=?2");
    const QByteArray abdruck = box.abdruck.Bytes();
    stellen.bind(1, abdruck.constData(), static_cast<int>(abdruck.size()));
    stellen.bind(2, nummer);
    stellen.exec();
}

void TagEintragen(SQLite::Database &datei, std::int64_t nummer, const QDate &tag,
                  const Tagesaenderung &aenderung)
{
    const std::string name = tag.toString(Qt::ISODate).toStdString();
    if (aenderung.karten) {
        const Kartenzahlen &karten = *aenderung.karten;
        Ausfuehren(datei,
                   "INSERT INTO tag VALUES(?1,?2,0,0,?3,?4,?5,?6,?7,?8,?9) ON CONFLICT DO UPDATE SET "
                   "neu=?3, fach1=?4, fach2=?5, fach3=?6, fach4=?7, fach5=?8, erledigt=?9",
                   nummer, name, karten[0], karten[1], karten[2], karten[3], karten[4], karten[5], karten[6]);
    }
    Ausfuehren(datei,
               "UPDATE tag SET richtig=max(0,richtig+?3), falsch=max(0,falsch+?4) WHERE box=?1 AND tag=?2",
               nummer, name, aenderung.richtig, aenderung.falsch);
}

std::vector<Tagesstand> TageLesen(SQLite::Database &datei, std::int64_t nummer)
{
    std::vector<Tagesstand> tage;
    SQLite::Statement lesen(datei, "SELECT * FROM tag WHERE box=?1 ORDER BY tag");
    lesen.bind(1, nummer);
    while (lesen.executeStep()) {
        Tagesstand stand;
        stand.tag = QDate::fromString(Text(lesen.getColumn(1)), Qt::ISODate);
        const auto zahl = [&lesen](int spalte) { return std::max(0, lesen.getColumn(spalte).getInt()); };
        stand.richtig = zahl(2);
        stand.falsch = zahl(3);
        for (int fach = 0; fach < static_cast<int>(stand.karten.size()); ++fach)
            stand.karten[static_cast<std::size_t>(fach)] = zahl(4 + fach);
        if (stand.tag.isValid())
            tage.push_back(stand);
    }
    return tage;
}

} // namespace

VerlaufDatei::VerlaufDatei(const QString &pfad) : pfad_(QFileInfo(pfad).absoluteFilePath()) {}

// Runs `arbeit` in one transaction; where the file turns out to be damaged, on a new one.
void VerlaufDatei::Mit(Zugriff zugriff, const Arbeit &arbeit)
{
    UseOpenFileLocks();
    if (const QFileInfo da(pfad_); da.exists() && !da.isFile())
        throw StoreError(Fehler::NichtErlaubt, u"„%1“ ist keine Datei."_s.arg(pfad_));
    else if (!da.exists() && zugriff == Zugriff::Lesen)
        return;
    try {
        try {
            Versuchen(zugriff, arbeit);
        } catch (const SQLite::Exception &fehler) {
            if (!IstBeschaedigt(fehler))
                throw;
            BeiseiteLegen();
            Versuchen(zugriff, arbeit);
        }
    } catch (const SQLite::Exception &fehler) {
        ThrowStoreError(fehler, pfad_);
    }
}

void VerlaufDatei::Versuchen(Zugriff zugriff, const Arbeit &arbeit)
{
    SQLite::Database datei(pfad_.toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE, Geduld);
    Distrust(datei);
    if (datei.execAndGet("SELECT count(*) FROM sqlite_master").getInt() == 0) {
        if (zugriff == Zugriff::Lesen)
            return;
    } else {
        Pruefen(datei);
    }
    // Who writes is alone from here to the commit.
    SQLite::Transaction zug(datei, zugriff == Zugriff::Lesen ? SQLite::TransactionBehavior::DEFERRED
                                                             : SQLite::TransactionBehavior::IMMEDIATE);
    if (datei.execAndGet("SELECT count(*) FROM sqlite_master").getInt() == 0) {
        datei.exec(Schema);
        datei.exec("PRAGMA application_id=" + std::to_string(Kennung));
        datei.exec("PRAGMA user_version=" + std::to_string(Fassung));
    }
    arbeit(datei);
    zug.commit();
}

// Throws where the file is no history, or damaged.
void VerlaufDatei::Pruefen(SQLite::Database &datei)
{
    if (datei.execAndGet("PRAGMA application_id").getInt() != Kennung)
        throw Unbrauchbar();
    if (datei.execAndGet("PRAGMA user_version").getInt() > Fassung)
        throw StoreError(Fehler::FormatUnbekannt,
                         u"Die Datei „%1“ hat eine neuere Fassung von Paukfix angelegt."_s.arg(pfad_));
    if (!geprueft_ && Text(datei.execAndGet("PRAGMA quick_check(1)")) != u"ok")
        throw Unbrauchbar();
    geprueft_ = true;
}

void VerlaufDatei::BeiseiteLegen()
{
    geprueft_ = false;
    const QFileInfo alt(pfad_);
    QString name;
    {
        // Two programs that find the same damage set one file aside.
        const DirectoryLock sperre(alt.path());
        try {
            Versuchen(Zugriff::Lesen, [](SQLite::Database &) {});
            return;
        } catch (const SQLite::Exception &fehler) {
            if (!IstBeschaedigt(fehler))
                throw;
        }
        int versuch = 1;
        do {
            const QString nummer = versuch == 1 ? QString() : u"-%1"_s.arg(versuch);
            name = alt.completeBaseName() + u"-beschädigt"_s + nummer + '.'_L1 + alt.suffix();
            ++versuch;
        } while (IsNameTaken(alt.path() + '/'_L1 + name));
        const QString neu = alt.path() + '/'_L1 + name;
        RenameSynced(pfad_, neu);
        // A new file must not be rolled back by the old one's journal.
        if (const QString journal = pfad_ + u"-journal"_s; IsNameTaken(journal))
            RenameSynced(journal, neu + u"-journal"_s);
    }
    erkannt_.reset();
    Versuchen(Zugriff::Schreiben, [&name](SQLite::Database &datei) {
        Ausfuehren(datei, "INSERT INTO hinweis VALUES(?1)", name.toStdString());
    });
}

std::optional<std::int64_t> VerlaufDatei::Finden(SQLite::Database &datei, const Verlaufsbox &box)
{
    if (erkannt_ && erkannt_->sitzung == box.sitzung) {
        // Another program may have made it part of another box.
        SQLite::Statement da(datei, "SELECT 1 FROM box WHERE nummer=?1");
        da.bind(1, erkannt_->nummer);
        if (da.executeStep())
            return erkannt_->nummer;
    }
    return Erkennen(datei, box).sicher;
}

std::int64_t VerlaufDatei::FindenOderAnlegen(SQLite::Database &datei, const Verlaufsbox &box)
{
    std::optional<std::int64_t> nummer = Finden(datei, box);
    if (!nummer) {
        const std::optional<std::int64_t> vielleicht = Erkennen(datei, box).vielleicht;
        SQLite::Statement anlegen(datei, "INSERT INTO box(pfad,dort,abdruck,vielleicht) VALUES('',1,x'',?1)");
        if (vielleicht)
            anlegen.bind(1, *vielleicht);
        anlegen.exec();
        nummer = datei.getLastInsertRowid();
    }
    Hinstellen(datei, *nummer, box);
    return *nummer;
}

void VerlaufDatei::Eintragen(const Verlaufseintrag &eintrag)
{
    std::int64_t nummer = 0;
    Mit(Zugriff::Schreiben, [&](SQLite::Database &datei) {
        nummer = FindenOderAnlegen(datei, eintrag.box);
        for (const auto &[tag, aenderung] : eintrag.tage)
            TagEintragen(datei, nummer, tag, aenderung);
    });
    erkannt_ = {eintrag.box.sitzung, nummer};
}

Verlaufsstand VerlaufDatei::Lesen(const Verlaufsbox &box)
{
    Verlaufsstand stand;
    Mit(Zugriff::Lesen, [&](SQLite::Database &datei) {
        stand = {};
        SQLite::Statement beiseite(datei, "SELECT beiseite FROM hinweis ORDER BY rowid DESC LIMIT 1");
        if (beiseite.executeStep())
            stand.beiseite = Text(beiseite.getColumn(0));
        const std::optional<std::int64_t> nummer = Finden(datei, box);
        if (!nummer)
            return;
        stand.tage = TageLesen(datei, *nummer);
        SQLite::Statement frueher(datei, "SELECT alt.pfad FROM box AS neu JOIN box AS alt "
                                         "ON alt.nummer=neu.vielleicht WHERE neu.nummer=?1");
        frueher.bind(1, *nummer);
        if (frueher.executeStep())
            stand.frueher = Text(frueher.getColumn(0));
        stand.frueherHier = stand.frueher == box.pfad;
    });
    return stand;
}

void VerlaufDatei::Beantworten(const Verlaufsbox &box, bool dieselbe)
{
    Mit(Zugriff::Schreiben, [&](SQLite::Database &datei) {
        const std::optional<std::int64_t> nummer = Finden(datei, box);
        if (!nummer)
            return;
        if (dieselbe) {
            const char *alt = "(SELECT vielleicht FROM box WHERE nummer=?1)";
            for (const std::string &befehl :
                 {"INSERT INTO tag SELECT ?1,tag,richtig,falsch,neu,fach1,fach2,fach3,fach4,fach5,erledigt "
                  "FROM tag WHERE box="s +
                      alt +
                      " ON CONFLICT DO UPDATE SET richtig=richtig+excluded.richtig, "
                      "falsch=falsch+excluded.falsch",
                  "DELETE FROM tag WHERE box="s + alt,
                  "UPDATE box SET vielleicht=?1 WHERE nummer<>?1 AND vielleicht="s + alt,
                  "DELETE FROM box WHERE nummer="s + alt})
                Ausfuehren(datei, befehl.c_str(), *nummer);
        }
        Ausfuehren(datei, "UPDATE box SET vielleicht=NULL WHERE nummer=?1", *nummer);
    });
}

void VerlaufDatei::BeiseiteGesagt()
{
    Mit(Zugriff::Schreiben, [](SQLite::Database &datei) { datei.exec("DELETE FROM hinweis"); });
}

} // namespace paukfix
