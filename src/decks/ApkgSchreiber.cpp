// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Ankreuztyp.h"
#include "Deckausgabe.h"
#include "HtmlSchreiber.h"
#include "StoreError.h"
#include "ZipWriter.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/Transaction.h>

#include <array>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 Tippnummer = 1'700'000'000'001; // the note types' numbers
constexpr qint64 Kreuznummer = 1'700'000'000'002;
constexpr qint64 Stapelnummer = 1'700'000'000'003;
constexpr int Schema = 11;
constexpr double Angekreuzt = 2;

constexpr const char *Tabellen =
    "CREATE TABLE col (id integer primary key, crt integer not null, mod integer not null, scm integer not "
    "null, ver "
    "integer not null, dty integer not null, usn integer not null, ls integer not null, conf text not null, "
    "models text "
    "not null, decks text not null, dconf text not null, tags text not null);"
    "CREATE TABLE notes (id integer primary key, guid text not null, mid integer not null, mod integer not "
    "null, usn "
    "integer not null, tags text not null, flds text not null, sfld integer not null, csum integer not null, "
    "flags integer "
    "not null, data text not null);"
    "CREATE TABLE cards (id integer primary key, nid integer not null, did integer not null, ord integer not "
    "null, mod "
    "integer not null, usn integer not null, type integer not null, queue integer not null, due integer not "
    "null, ivl "
    "integer not null, factor integer not null, reps integer not null, lapses integer not null, left integer "
    "not null, "
    "odue integer not null, odid integer not null, flags integer not null, data text not null);"
    "CREATE TABLE revlog (id integer primary key, cid integer not null, usn integer not null, ease integer "
    "not null, ivl "
    "integer not null, lastIvl integer not null, factor integer not null, time integer not null, type "
    "integer not null);"
    "CREATE TABLE graves (usn integer not null, oid integer not null, type integer not null);"
    "CREATE INDEX ix_notes_usn on notes (usn); CREATE INDEX ix_cards_usn on cards (usn); CREATE INDEX "
    "ix_revlog_usn on "
    "revlog (usn); CREATE INDEX ix_cards_nid on cards (nid); CREATE INDEX ix_cards_sched on cards (did, "
    "queue, due); "
    "CREATE INDEX ix_revlog_cid on revlog (cid); CREATE INDEX ix_notes_csum on notes (csum);";

QString Json(const QJsonObject &objekt)
{
    return QString::fromUtf8(QJsonDocument(objekt).toJson(QJsonDocument::Compact));
}

QJsonObject Notiztyp(qint64 nummer, const QString &name, const QStringList &felder, const QString &frage,
                     const QString &antwort, qint64 jetzt)
{
    QJsonArray flds;
    for (int i = 0; i < felder.size(); ++i)
        flds.append(QJsonObject{{u"name"_s, felder[i]},
                                {u"ord"_s, i},
                                {u"sticky"_s, false},
                                {u"rtl"_s, false},
                                {u"font"_s, u"Arial"_s},
                                {u"size"_s, 20},
                                {u"media"_s, QJsonArray()}});
    const QJsonObject vorlage{{u"name"_s, u"Karte 1"_s}, {u"ord"_s, 0},           {u"qfmt"_s, frage},
                              {u"afmt"_s, antwort},      {u"bqfmt"_s, QString()}, {u"bafmt"_s, QString()},
                              {u"did"_s, QJsonValue()}};
    return {{u"id"_s, nummer},
            {u"name"_s, name},
            {u"type"_s, 0},
            {u"mod"_s, jetzt},
            {u"usn"_s, -1},
            {u"sortf"_s, 0},
            {u"did"_s, Stapelnummer},
            {u"tmpls"_s, QJsonArray{vorlage}},
            {u"flds"_s, flds},
            {u"css"_s, u".card { font-family: sans-serif; font-size: 20px; text-align: center; }"_s},
            {u"latexPre"_s, u"\\documentclass[12pt]{article}\n\\begin{document}\n"_s},
            {u"latexPost"_s, u"\\end{document}"_s},
            {u"req"_s, QJsonArray{QJsonArray{0, u"any"_s, QJsonArray{0}}}},
            {u"tags"_s, QJsonArray()},
            {u"vers"_s, QJsonArray()}};
}

QString Kreuzliste()
{
    QString liste;
    for (int i = 1; i <= 5; ++i)
        liste += u"{{#Antwort %1}}<li>{{Antwort %1}}</li>{{/Antwort %1}}"_s.arg(i);
    return u"<ul>"_s + liste + u"</ul>"_s;
}

QJsonObject Stapel(qint64 nummer, const QString &name, qint64 jetzt)
{
    const QJsonArray null{0, 0};
    return {{u"id"_s, nummer},     {u"name"_s, name},       {u"mod"_s, jetzt},
            {u"usn"_s, -1},        {u"desc"_s, QString()},  {u"dyn"_s, 0},
            {u"conf"_s, 1},        {u"collapsed"_s, false}, {u"newToday"_s, null},
            {u"revToday"_s, null}, {u"lrnToday"_s, null},   {u"timeToday"_s, null},
            {u"extendNew"_s, 10},  {u"extendRev"_s, 50},    {u"browserCollapsed"_s, false}};
}

QJsonObject Lernvorgaben()
{
    return {{u"id"_s, 1},
            {u"name"_s, u"Default"_s},
            {u"mod"_s, 0},
            {u"usn"_s, 0},
            {u"maxTaken"_s, 60},
            {u"autoplay"_s, true},
            {u"timer"_s, 0},
            {u"replayq"_s, true},
            {u"dyn"_s, false},
            {u"new"_s, QJsonObject{{u"delays"_s, QJsonArray{1, 10}},
                                   {u"ints"_s, QJsonArray{1, 4, 7}},
                                   {u"initialFactor"_s, 2500},
                                   {u"order"_s, 1},
                                   {u"perDay"_s, 20},
                                   {u"bury"_s, false},
                                   {u"separate"_s, true}}},
            {u"rev"_s, QJsonObject{{u"perDay"_s, 200},
                                   {u"ease4"_s, 1.3},
                                   {u"fuzz"_s, 0.05},
                                   {u"ivlFct"_s, 1},
                                   {u"maxIvl"_s, 36500},
                                   {u"minSpace"_s, 1},
                                   {u"bury"_s, false}}},
            {u"lapse"_s, QJsonObject{{u"delays"_s, QJsonArray{10}},
                                     {u"mult"_s, 0},
                                     {u"minInt"_s, 1},
                                     {u"leechFails"_s, 8},
                                     {u"leechAction"_s, 0}}}};
}

// Where in its learning a card of a compartment is.
struct Lernstand
{
    int art, lage, tage, wiederholungen;
};

Lernstand StandAus(int fach)
{
    constexpr std::array<Lernstand, 7> Staende{{{0, 0, 0, 0},
                                                {1, 1, 0, 1},
                                                {2, 2, 2, 1},
                                                {2, 2, 7, 2},
                                                {2, 2, 30, 3},
                                                {2, 2, 120, 4},
                                                {2, 2, 400, 5}}};
    return Staende[static_cast<std::size_t>(qBound(0, fach, 6))];
}

class Schreiber
{
public:
    Schreiber(const Deckausgabe &deck, Deckbericht &bericht)
        : deck_(deck),
          bericht_(bericht),
          datenbank_(Pfad().toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE, 0, "unix")
    {
    }

    void Schreiben(const QString &pfad)
    {
        datenbank_.exec("PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF");
        SQLite::Transaction zug(datenbank_);
        datenbank_.exec(Tabellen);
        Kopf();
        SQLite::Statement notiz(datenbank_, "INSERT INTO notes VALUES(?,?,?,?,-1,?,?,?,?,0,'')");
        SQLite::Statement karte(datenbank_,
                                "INSERT INTO cards VALUES(?,?,?,0,?,-1,?,?,?,?,?,?,0,?,0,0,0,'')");
        int nummer = 0;
        for (CardRecord satz; deck_.naechste(satz);) {
            Melden(deck_.progress, nummer, deck_.anzahl);
            Eintragen(satz, nummer++, notiz, karte);
        }
        zug.commit();
        Packen(pfad);
    }

private:
    QString Pfad() const
    {
        if (!verzeichnis_.isValid())
            throw StoreError(Fehler::GeraeteFehler,
                             u"Im Ordner für vorläufige Dateien kann nicht geschrieben werden."_s);
        return verzeichnis_.filePath(u"collection.anki2"_s);
    }

    void Kopf()
    {
        const qint64 sekunden = jetzt_ / 1000;
        const QJsonObject typen{
            {QString::number(Tippnummer),
             Notiztyp(Tippnummer, u"Paukfix"_s, Tippfeldnamen(), u"{{Frage}}"_s,
                      u"{{FrontSide}}\n\n<hr id=answer>\n\n{{Antwort}}"_s, sekunden)},
            {QString::number(Kreuznummer),
             Notiztyp(Kreuznummer, u"Paukfix zum Ankreuzen"_s, Ankreuzfeldnamen(),
                      u"{{Frage}}"_s + Kreuzliste(),
                      u"{{FrontSide}}\n\n<hr id=answer>\n\nRichtig: {{Richtig}}<br>{{Lösung}}"_s, sekunden)}};
        const QString titel = deck_.titel.isEmpty() ? u"Paukfix"_s : deck_.titel;
        const QJsonObject stapel{{u"1"_s, Stapel(1, u"Default"_s, sekunden)},
                                 {QString::number(Stapelnummer), Stapel(Stapelnummer, titel, sekunden)}};
        const QJsonObject vorgaben{{u"nextPos"_s, deck_.anzahl + 1},
                                   {u"estTimes"_s, true},
                                   {u"activeDecks"_s, QJsonArray{1}},
                                   {u"sortType"_s, u"noteFld"_s},
                                   {u"timeLim"_s, 0},
                                   {u"sortBackwards"_s, false},
                                   {u"addToCur"_s, true},
                                   {u"curDeck"_s, 1},
                                   {u"newBury"_s, true},
                                   {u"newSpread"_s, 0},
                                   {u"dueCounts"_s, true},
                                   {u"curModel"_s, QString::number(Tippnummer)},
                                   {u"collapseTime"_s, 1200}};
        SQLite::Statement kopf(datenbank_, "INSERT INTO col VALUES(1,?,?,?,?,0,0,0,?,?,?,?,'{}')");
        kopf.bind(1, static_cast<std::int64_t>(sekunden));
        kopf.bind(2, static_cast<std::int64_t>(jetzt_));
        kopf.bind(3, static_cast<std::int64_t>(jetzt_));
        kopf.bind(4, Schema);
        kopf.bind(5, Json(vorgaben).toStdString());
        kopf.bind(6, Json(typen).toStdString());
        kopf.bind(7, Json(stapel).toStdString());
        kopf.bind(8, Json({{u"1"_s, Lernvorgaben()}}).toStdString());
        kopf.exec();
    }

    void Eintragen(const CardRecord &satz, int nummer, SQLite::Statement &notiz, SQLite::Statement &karte)
    {
        KartenrestMelden(satz, bericht_);
        const bool kreuze = satz.Antworttyp == Angekreuzt;
        const QString frage = Mit(HtmlAusKartentext(satz.Frage), Medium(satz.Picture_1_Name, true),
                                  Medium(satz.Picture_6_Name, false));
        const QString medien = Mit({}, Medium(satz.Picture_2_Name, true), Medium(satz.Picture_7_Name, false));
        const QStringList felder = kreuze ? Kreuzfelder(satz, frage, medien)
                                          : QStringList{frage, HtmlAusKartentext(satz.Antwort_1) + medien,
                                                        satz.Picture_9_Name.toHtmlEscaped()};
        const auto notiznummer = static_cast<std::int64_t>(jetzt_ + nummer);
        const QByteArray summe =
            QCryptographicHash::hash(satz.Frage_Klartext.toUtf8(), QCryptographicHash::Sha1).toHex();
        notiz.bind(1, notiznummer);
        notiz.bind(2, Kennung(nummer));
        notiz.bind(3, static_cast<std::int64_t>(kreuze ? Kreuznummer : Tippnummer));
        notiz.bind(4, static_cast<std::int64_t>(jetzt_ / 1000));
        notiz.bind(5, Schlagwort(satz.Picture_9_Name).toStdString());
        notiz.bind(6, felder.join(QChar(0x1f)).toStdString());
        notiz.bind(7, satz.Frage_Klartext.toStdString());
        notiz.bind(8, static_cast<std::int64_t>(summe.left(8).toLongLong(nullptr, 16)));
        notiz.exec();
        notiz.reset();
        const Lernstand stand = StandAus(static_cast<int>(satz.FachNr));
        karte.bind(1, notiznummer);
        karte.bind(2, notiznummer);
        karte.bind(3, static_cast<std::int64_t>(Stapelnummer));
        karte.bind(4, static_cast<std::int64_t>(jetzt_ / 1000));
        karte.bind(5, stand.art);
        karte.bind(6, stand.lage);
        karte.bind(7, static_cast<std::int64_t>(stand.art == 1   ? jetzt_ / 1000
                                                : stand.art == 2 ? stand.tage
                                                                 : nummer + 1));
        karte.bind(8, stand.tage);
        karte.bind(9, stand.art == 2 ? 2500 : 0);
        karte.bind(10, stand.wiederholungen);
        karte.bind(11, stand.art == 1 ? 1001 : 0);
        karte.exec();
        karte.reset();
    }

    static QStringList Kreuzfelder(const CardRecord &satz, const QString &frage, const QString &medien)
    {
        const std::array texte{&satz.Antwort_1, &satz.Antwort_2, &satz.Antwort_3, &satz.Antwort_4,
                               &satz.Antwort_5};
        const std::array kreuze{satz.Antwort_ch_1, satz.Antwort_ch_2, satz.Antwort_ch_3, satz.Antwort_ch_4,
                                satz.Antwort_ch_5};
        QStringList felder{frage};
        QStringList richtige;
        for (std::size_t i = 0; i < texte.size(); ++i) {
            felder << HtmlAusKartentext(*texte[i]);
            if (kreuze[i])
                richtige << QString::number(i + 1);
        }
        felder << richtige.join(u' ') << medien << satz.Picture_9_Name.toHtmlEscaped();
        return felder;
    }

    static QString Mit(const QString &html, const QString &bild, const QString &ton)
    {
        return html + (bild.isEmpty() ? QString() : u"<img src=\"%1\">"_s.arg(bild.toHtmlEscaped())) +
               (ton.isEmpty() ? QString() : u"[sound:%1]"_s.arg(ton.toHtmlEscaped()));
    }

    // The name by which the package has it. Brackets and percent signs would be read as something else.
    QString Medium(const QString &name, bool /*bild*/)
    {
        const QString pfad = Medienpfad(deck_, name, bericht_);
        if (pfad.isEmpty())
            return {};
        const auto schon = medien_.constFind(pfad);
        if (schon != medien_.constEnd())
            return *schon;
        QString neu = QFileInfo(pfad).fileName().normalized(QString::NormalizationForm_C);
        for (QChar &c : neu)
            if (u"[]%<>:\"/?*^\\|"_s.contains(c))
                c = u'_';
        const QString stamm = QFileInfo(neu).completeBaseName();
        for (int nummer = 2; namen_.contains(neu.toLower()); ++nummer)
            neu = u"%1-%2.%3"_s.arg(stamm).arg(nummer).arg(QFileInfo(pfad).suffix());
        namen_.insert(neu.toLower());
        medien_.insert(pfad, neu);
        folge_ << qMakePair(pfad, neu);
        return neu;
    }

    static QString Schlagwort(QString thema)
    {
        thema = thema.simplified().replace(u' ', u'_');
        return thema.isEmpty() ? QString() : u' ' + thema + u' ';
    }

    std::string Kennung(int nummer) const
    {
        const QByteArray aus =
            QByteArray::number(jetzt_) + ':' + QByteArray::number(nummer) + ':' + deck_.titel.toUtf8();
        return QCryptographicHash::hash(aus, QCryptographicHash::Sha1)
            .toBase64(QByteArray::Base64UrlEncoding)
            .left(10)
            .toStdString();
    }

    void Packen(const QString &pfad)
    {
        ZipWriter zip(pfad);
        zip.AddFile(u"collection.anki2"_s, Pfad());
        QJsonObject liste;
        for (qsizetype i = 0; i < folge_.size(); ++i) {
            zip.AddFile(QString::number(i), folge_[i].first, ZipWriter::Packing::Store);
            liste.insert(QString::number(i), folge_[i].second);
        }
        zip.Add(u"media"_s, QJsonDocument(liste).toJson(QJsonDocument::Compact));
        zip.Finish(deck_.progress);
    }

    const Deckausgabe &deck_;
    Deckbericht &bericht_;
    QTemporaryDir verzeichnis_;
    SQLite::Database datenbank_;
    qint64 jetzt_ = QDateTime::currentMSecsSinceEpoch();
    QHash<QString, QString> medien_; // names in the package by their paths
    QSet<QString> namen_;
    QList<QPair<QString, QString>> folge_;
};

} // namespace

void ApkgSchreiben(const QString &pfad, const Deckausgabe &deck, Deckbericht &bericht)
{
    try {
        Schreiber(deck, bericht).Schreiben(pfad);
    } catch (const SQLite::Exception &fehler) {
        throw StoreError(Fehler::GeraeteFehler, u"Das Paket konnte nicht geschrieben werden: %1"_s.arg(
                                                    QString::fromUtf8(fehler.what())));
    }
}

} // namespace paukfix
