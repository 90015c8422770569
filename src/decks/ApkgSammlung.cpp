// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "ApkgSammlung.h"

#include "CardFile.h"
#include "Protobuf.h"
#include "StoreError.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrl>
#include <sqlite3.h>

#include <algorithm>
#include <cstring>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr int GroessteNotiz = 8'000'000;  // bytes of all its fields
constexpr int GroessteTypen = 32'000'000; // bytes of JSON
constexpr int SchritteJeRuf = 100'000;    // of the engine, between two calls of Muede
constexpr qint64 RufeImmer = 500;
constexpr qint64 BytesJeRuf = 2'000;
constexpr int MeisteFelder = 1'000;

[[noreturn]] void ThrowBeschaedigt()
{
    throw StoreError(Fehler::Beschaedigt, u"Die Kartensammlung in dem Paket ist beschädigt."_s);
}

// Runs what talks to the engine; whatever it says against it, the collection is damaged.
template <class Arbeit>
auto Gelesen(Arbeit arbeit)
{
    try {
        return arbeit();
    } catch (const SQLite::Exception &fehler) {
        const int code = fehler.getErrorCode() & 0xff;
        if (code == SQLITE_TOOBIG)
            throw StoreError(
                Fehler::TextZuLang,
                u"Ein Text in dem Paket ist größer, als eine Karte fassen kann; das Paket wird darum nicht gelesen."_s);
        if (code == SQLITE_NOMEM)
            throw StoreError(Fehler::ZuWenigSpeicher, u"Nicht genügend Speicher."_s);
        ThrowBeschaedigt();
    }
}

QString Text(const SQLite::Column &spalte)
{
    const char *bytes = spalte.getText(); // before getBytes(): it converts numbers
    return QString::fromUtf8(bytes, spalte.getBytes());
}

QByteArrayView Blob(const SQLite::Column &spalte)
{
    const void *bytes = spalte.getBlob();
    return {static_cast<const char *>(bytes), bytes ? spalte.getBytes() : 0};
}

// Only reading, and no functions but the one that counts.
int Erlaubnis(void *, int was, const char *, const char *funktion, const char *, const char *)
{
    if (was == SQLITE_SELECT || was == SQLITE_READ)
        return SQLITE_OK;
    if (was == SQLITE_FUNCTION && funktion && std::strcmp(funktion, "count") == 0)
        return SQLITE_OK;
    return SQLITE_DENY;
}

int OhneGrossKlein(void *, int laenge1, const void *text1, int laenge2, const void *text2)
{
    return QString::fromUtf8(static_cast<const char *>(text1), laenge1)
        .compare(QString::fromUtf8(static_cast<const char *>(text2), laenge2), Qt::CaseInsensitive);
}

std::string AlsUri(const QString &pfad)
{
    return "file:" + QUrl::toPercentEncoding(pfad, "/").toStdString() + "?immutable=1";
}

Kartenvorlage VorlageLesen(const QString &name, const QString &frage, const QString &antwort,
                           const QStringList &felder)
{
    return {name, Vorlage::Lesen(frage, felder), Vorlage::Lesen(antwort, felder)};
}

// Of a list of JSON objects with "ord" the names, or whatever `nehmen` takes, in that order.
void NachNummer(const QJsonValue &liste,
                const std::function<void(const QJsonObject &, qint64 nummer)> &nehmen)
{
    std::map<qint64, QJsonObject> sortiert;
    const QJsonArray alle = liste.toArray();
    for (qsizetype i = 0; i < alle.size() && i < MeisteFelder; ++i) {
        const QJsonObject eines = alle[i].toObject();
        sortiert.emplace(eines[u"ord"_s].toInteger(i), eines);
    }
    for (const auto &[nummer, eines] : sortiert)
        nehmen(eines, nummer);
}

} // namespace

ApkgSammlung::ApkgSammlung(const QString &pfad, qint64 groesse)
    : datenbank_(Gelesen([&] {
          return SQLite::Database(AlsUri(pfad),
                                  SQLite::OPEN_READONLY | SQLite::OPEN_NOMUTEX | SQLite::OPEN_URI, 0, "unix");
      })),
      geduld_(RufeImmer + groesse / BytesJeRuf)
{
    Gelesen([&] {
        Vorbereiten();
        const bool neu = datenbank_.tableExists("notetypes");
        for (const char *tabelle : {"col", "notes", "cards"})
            if (!datenbank_.tableExists(tabelle))
                ThrowBeschaedigt();
        sqlite3_set_authorizer(datenbank_.getHandle(), &Erlaubnis, nullptr);
        if (neu)
            Lesen18();
        else
            Lesen11();
        Zaehlen();
    });
}

void ApkgSammlung::Vorbereiten()
{
    Distrust(datenbank_);
    sqlite3 *handle = datenbank_.getHandle();
    sqlite3_create_collation(handle, "unicase", SQLITE_UTF8, nullptr, &OhneGrossKlein);
    sqlite3_progress_handler(handle, SchritteJeRuf, &ApkgSammlung::Muede, this);
    datenbank_.exec("PRAGMA query_only=ON; PRAGMA cache_size=-4096; PRAGMA temp_store=MEMORY");
}

int ApkgSammlung::Muede(void *selbst)
{
    return --static_cast<ApkgSammlung *>(selbst)->geduld_ < 0 ? 1 : 0;
}

void ApkgSammlung::Lesen11()
{
    SQLite::Statement zeile(datenbank_, "SELECT models, decks FROM col LIMIT 1");
    if (!zeile.executeStep())
        ThrowBeschaedigt();
    const auto json = [&](int spalte) {
        const SQLite::Column text = zeile.getColumn(spalte);
        const char *bytes = text.getText();
        if (text.getBytes() > GroessteTypen)
            ThrowBeschaedigt();
        const QJsonDocument dokument =
            QJsonDocument::fromJson(QByteArray::fromRawData(bytes, text.getBytes()));
        if (!dokument.isObject())
            ThrowBeschaedigt();
        return dokument.object();
    };
    const QJsonObject typen = json(0);
    for (auto typ = typen.begin(); typ != typen.end(); ++typ) {
        const QJsonObject beschrieben = typ.value().toObject();
        Notiztyp &neu = typen_[typ.key().toLongLong()];
        neu.name = beschrieben[u"name"_s].toString();
        neu.luecken = beschrieben[u"type"_s].toInt() == 1;
        NachNummer(beschrieben[u"flds"_s],
                   [&](const QJsonObject &feld, qint64) { neu.felder << feld[u"name"_s].toString(); });
        NachNummer(beschrieben[u"tmpls"_s], [&](const QJsonObject &vorlage, qint64 nummer) {
            neu.vorlagen.emplace(nummer,
                                 VorlageLesen(vorlage[u"name"_s].toString(), vorlage[u"qfmt"_s].toString(),
                                              vorlage[u"afmt"_s].toString(), neu.felder));
        });
    }
    const QJsonObject stapel = json(1);
    for (auto einer = stapel.begin(); einer != stapel.end(); ++einer)
        stapel_.insert(einer.key().toLongLong(), einer.value().toObject()[u"name"_s].toString());
}

void ApkgSammlung::Lesen18()
{
    for (SQLite::Statement typen(datenbank_, "SELECT id, name, config FROM notetypes");
         typen.executeStep();) {
        Notiztyp &neu = typen_[typen.getColumn(0).getInt64()];
        neu.name = Text(typen.getColumn(1));
        ProtobufLeser leser(Blob(typen.getColumn(2)));
        while (const auto feld = leser.Naechstes())
            if (feld->nummer == 1)
                neu.luecken = feld->zahl == 1;
    }
    for (SQLite::Statement felder(datenbank_, "SELECT ntid, name FROM fields ORDER BY ntid, ord");
         felder.executeStep();) {
        const auto typ = typen_.find(felder.getColumn(0).getInt64());
        if (typ != typen_.end() && typ->second.felder.size() < MeisteFelder)
            typ->second.felder << Text(felder.getColumn(1));
    }
    for (SQLite::Statement vorlagen(datenbank_, "SELECT ntid, ord, name, config FROM templates");
         vorlagen.executeStep();) {
        const auto typ = typen_.find(vorlagen.getColumn(0).getInt64());
        if (typ == typen_.end() || typ->second.vorlagen.size() >= MeisteFelder)
            continue;
        QString frage;
        QString antwort;
        ProtobufLeser leser(Blob(vorlagen.getColumn(3)));
        while (const auto feld = leser.Naechstes()) {
            if (feld->nummer == 1)
                frage = QString::fromUtf8(feld->bytes);
            else if (feld->nummer == 2)
                antwort = QString::fromUtf8(feld->bytes);
        }
        typ->second.vorlagen.emplace(
            vorlagen.getColumn(1).getInt64(),
            VorlageLesen(Text(vorlagen.getColumn(2)), frage, antwort, typ->second.felder));
    }
    for (SQLite::Statement stapel(datenbank_, "SELECT id, name FROM decks"); stapel.executeStep();)
        stapel_.insert(stapel.getColumn(0).getInt64(),
                       Text(stapel.getColumn(1)).replace(QChar(0x1f), u"::"_s));
}

void ApkgSammlung::Zaehlen()
{
    SQLite::Statement zahl(datenbank_, "SELECT count(*) FROM cards");
    zahl.executeStep();
    karten_ =
        static_cast<int>(std::min<qint64>(zahl.getColumn(0).getInt64(), std::numeric_limits<int>::max()));
}

const Notiztyp *ApkgSammlung::Typ(qint64 nummer) const
{
    const auto gefunden = typen_.find(nummer);
    return gefunden == typen_.end() ? nullptr : &gefunden->second;
}

QStringList ApkgSammlung::Stapelnamen() const
{
    QStringList namen = stapel_.values();
    namen.sort(Qt::CaseInsensitive);
    return namen;
}

bool ApkgSammlung::Naechste(Sammlungszeile &zeile)
{
    return Gelesen([&] {
        if (!zeilen_)
            zeilen_.emplace(datenbank_,
                            "SELECT n.mid, n.flds, n.tags, c.ord, c.did, c.odid, c.ivl, c.type, c.queue, "
                            "c.reps, c.flags FROM cards c CROSS JOIN notes n ON n.id = c.nid ORDER BY c.id");
        if (!zeilen_->executeStep())
            return false;
        const auto zahl = [&](int spalte) {
            return static_cast<qint64>(zeilen_->getColumn(spalte).getInt64());
        };
        const SQLite::Column felder = zeilen_->getColumn(1);
        const char *bytes = felder.getText();
        if (felder.getBytes() > GroessteNotiz)
            throw StoreError(
                Fehler::TextZuLang,
                u"Ein Text in dem Paket ist größer, als eine Karte fassen kann; das Paket wird darum nicht gelesen."_s);
        zeile.felder.clear();
        const char *ende = bytes + felder.getBytes();
        for (const char *von = bytes; zeile.felder.size() < MeisteFelder;) {
            const char *bis = std::find(von, ende, '\x1f');
            zeile.felder.push_back(QString::fromUtf8(von, bis - von));
            if (bis == ende)
                break;
            von = bis + 1;
        }
        zeile.schlagwoerter = Text(zeilen_->getColumn(2)).split(u' ', Qt::SkipEmptyParts);
        zeile.notiztyp = zahl(0);
        zeile.vorlage = zahl(3);
        zeile.stapel = zahl(5) != 0 ? zahl(5) : zahl(4); // a filtered deck has it for a while only
        zeile.tage = zahl(6);
        zeile.art = zahl(7);
        zeile.lage = zahl(8);
        zeile.wiederholungen = zahl(9);
        zeile.markierung = zahl(10) & 7;
        return true;
    });
}

void ApkgSammlung::VonVorn()
{
    if (zeilen_)
        zeilen_->tryReset();
}

} // namespace paukfix
