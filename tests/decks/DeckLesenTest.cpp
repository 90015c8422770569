// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Deckausgabe.h"
#include "Deckquelle.h"
#include "Deckvorleser.h"
#include "StoreError.h"
#include "TestProgram.h"
#include "ZipReader.h"
#include "ZipWriter.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>
#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

using namespace paukfix;

// The decks of others that lie here say themselves what must come out of them.
class DeckLesenTest : public QObject
{
    Q_OBJECT

private slots:
    void EveryCardComesAsItIs_data();
    void EveryCardComesAsItIs();
    void MediaAreThereByteForByte();
    void ADeckCanBeReadAgainFromItsStart();
    void WhatIsLeftBehindIsTold();
    void DotsStandForCardsThatAreNotNamed();
    void DecksMadeToHarmAreRefusedOrHarmless_data();
    void DecksMadeToHarmAreRefusedOrHarmless();
    void NothingOfAnotherFileComesIn();
    void NothingOutsideOfADocumentsDirectoryIsRead();
    void TemplatesThatMultiplyAllNotesAreRefused();
    void TheLineBeforeTheAnswerIsFoundHoweverItIsSpelled_data();
    void TheLineBeforeTheAnswerIsFoundHoweverItIsSpelled();
    void CardsReadAheadAreTheSame_data();
    void CardsReadAheadAreTheSame();
    void AnErrorComesBehindTheCardsThatWereReadBefore();
    void WhoWantsNoMoreCardsNeedNotReadThem();
};

namespace {

// The vocabulary files with their media, where one picture has the name that its deck gives it: with an
// umlaut and a blank, which no name in this tree has.
QString Vokabelordner()
{
    static const QTemporaryDir ordner;
    static const bool kopiert = [] {
        const std::pair<const char *, const char *> dateien[] = {
            {"small1.kvtml", "small1.kvtml"},
            {"small2.kvtml", "small2.kvtml"},
            {"medien/apfel.png", "medien/apfel.png"},
            {"medien/apple.wav", "medien/apple.wav"},
            {"medien/grosse-stadt.png", "medien/große Stadt.png"}};
        return QDir().mkpath(ordner.filePath("kvtml/medien")) &&
               std::all_of(std::begin(dateien), std::end(dateien), [](const auto &datei) {
                   return QFile::copy(QStringLiteral(DECKS_DIR "/kvtml/") + datei.first,
                                      ordner.filePath("kvtml/") + datei.second);
               });
    }();
    if (!kopiert)
        qFatal("no vocabulary files");
    return ordner.path();
}

QString Probe(const QString &name)
{
    return (name.startsWith("kvtml/") ? Vokabelordner() : QStringLiteral(DECKS_DIR)) + '/' + name;
}

QJsonObject Erwartet(const QString &name)
{
    QFile file(Probe("expected.json"));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QJsonDocument::fromJson(file.readAll()).object()["files"].toObject()[name].toObject();
}

std::vector<Deckkarte> Karten(Deckquelle &quelle, Deckbericht &bericht)
{
    std::vector<Deckkarte> karten;
    for (Deckkarte karte; quelle.Naechste(karte, bericht);)
        karten.push_back(karte);
    return karten;
}

// White space is one blank, lines are trimmed, empty ones dropped.
QString Normal(QString text)
{
    QStringList zeilen;
    for (const QString &zeile : text.replace("\r\n", "\n").split('\n'))
        if (!zeile.simplified().isEmpty())
            zeilen << zeile.simplified();
    return zeilen.join('\n');
}

bool IstBild(const QString &name)
{
    return QStringList{"png", "jpg"}.contains(QFileInfo(name).suffix());
}

// The first one of the wanted kind.
QString Erstes(const QJsonArray &namen, bool bild)
{
    for (const QJsonValue &name : namen)
        if (IstBild(name.toString()) == bild)
            return name.toString();
    return {};
}

QString Name(const std::optional<Deckmedium> &medium)
{
    return medium ? medium->name : QString();
}

// A package of `anzahl` notes whose template of the answer's side is `rueckseite`.
std::unique_ptr<Deckquelle> MitRueckseite(const QTemporaryDir &ordner, const QString &rueckseite,
                                          const QString &antwort, int anzahl)
{
    Deckbericht bericht;
    CardRecord karte;
    karte.Antworttyp = 1;
    karte.Frage = karte.Frage_Klartext = "Frage";
    karte.Antwort_1 = karte.Antwort_1_Klartext = antwort;
    ApkgSchreiben(ordner.filePath("eins.apkg"),
                  {.titel = "T",
                   .medien = ordner.path(),
                   .anzahl = anzahl,
                   .naechste =
                       [&, noch = anzahl](CardRecord &eine) mutable {
                           eine = karte;
                           return noch-- > 0;
                       }},
                  bericht);
    const ZipReader alt(ordner.filePath("eins.apkg"));
    QFile sammlung(ordner.filePath("sammlung"));
    if (!sammlung.open(QIODevice::WriteOnly))
        qFatal("no collection");
    sammlung.write(alt.Read(*alt.Find("collection.anki2"), 10'000'000));
    sammlung.close();
    {
        SQLite::Database datenbank(sammlung.fileName().toStdString(), SQLite::OPEN_READWRITE);
        const QString alle = datenbank.execAndGet("SELECT models FROM col").getText();
        QJsonObject typen = QJsonDocument::fromJson(alle.toUtf8()).object();
        for (const QString &nummer : typen.keys()) {
            QJsonObject typ = typen[nummer].toObject();
            QJsonObject vorlage = typ["tmpls"].toArray()[0].toObject();
            vorlage["afmt"] = rueckseite;
            typ["tmpls"] = QJsonArray{vorlage};
            typen[nummer] = typ;
        }
        SQLite::Statement schreiben(datenbank, "UPDATE col SET models=?1");
        schreiben.bind(1, QJsonDocument(typen).toJson().toStdString());
        schreiben.exec();
    }
    ZipWriter neu(ordner.filePath("zwei.apkg"));
    neu.AddFile("collection.anki2", sammlung.fileName());
    neu.Finish();
    return DeckOeffnen(ordner.filePath("zwei.apkg"));
}

// A deck of cards "1", "2", ... that is damaged behind the last one.
class Zaehlquelle final : public Deckquelle
{
public:
    explicit Zaehlquelle(int karten) : karten_(karten) {}

    Deckinhalt Inhalt() const override { return {.titel = {}, .art = {}, .karten = karten_, .stapel = {}}; }

    bool Naechste(Deckkarte &karte, Deckbericht &bericht) override
    {
        if (gelesen_ == karten_)
            throw StoreError(Fehler::Beschaedigt, "beschädigt");
        karte = {};
        karte.frage = {"1", QString::number(++gelesen_)};
        karte.antworten.push_back({});
        bericht.Melden(Deckrest::Markierung, karte.frage.klar);
        return true;
    }

    int Gelesen() const override { return gelesen_; }

    void VonVorn() override { gelesen_ = 0; }

    std::optional<QByteArray> Medium(const QString &) override { return {}; }

private:
    int karten_;
    int gelesen_ = 0;
};

} // namespace

void DeckLesenTest::EveryCardComesAsItIs_data()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"basic.apkg", "schema11-rich.apkg", "legacy2.apkg", "schema18-zstd.apkg",
                             "kvtml/small1.kvtml", "kvtml/small2.kvtml"})
        QTest::newRow(name) << name;
}

void DeckLesenTest::EveryCardComesAsItIs()
{
    QFETCH(const QString, name);
    const QJsonObject erwartet = Erwartet(name);
    const auto quelle = DeckOeffnen(Probe(name));
    Deckbericht bericht;
    const std::vector<Deckkarte> karten = Karten(*quelle, bericht);
    std::size_t i = 0;
    for (const QJsonValue &wert : erwartet["cards"].toArray()) {
        const QJsonObject soll = wert.toObject();
        if (soll["empty_front"].toBool())
            continue;
        QVERIFY2(i < karten.size(), qPrintable(soll["question"].toString()));
        const Deckkarte &ist = karten[i++];
        QCOMPARE(Normal(ist.frage.klar), soll["question"].toString());
        QCOMPARE(Normal(ist.antworten[0].text.klar), soll["answer_only"].toString());
        QCOMPARE(ist.stapel, soll["deck"].toString());
        if (soll.contains("interval_days"))
            QCOMPARE(ist.schlagwoerter, soll["tags"].toVariant().toStringList());
        QCOMPARE(Name(ist.frageBild), Erstes(soll["media_question"].toArray(), true));
        QCOMPARE(Name(ist.frageTon), Erstes(soll["media_question"].toArray(), false));
        // The picture itself may stand in a card.
        if (!soll.contains("inline_media"))
            QCOMPARE(Name(ist.antwortBild), Erstes(soll["media_answer"].toArray(), true));
        QCOMPARE(Name(ist.antwortTon), Erstes(soll["media_answer"].toArray(), false));
        const int tage = soll["interval_days"].toInt();
        if (soll["type"].toInt() == 2)
            QCOMPARE(ist.fach, tage >= 365  ? 6
                               : tage >= 90 ? 5
                               : tage >= 21 ? 4
                               : tage >= 4  ? 3
                               : tage > 0   ? 2
                                            : 1);
        const int stufe = soll["grade"].toInt();
        if (soll.contains("grade"))
            QCOMPARE(ist.fach, stufe == 7 ? 6 : stufe == 6 ? 5 : stufe);
        const QJsonArray falsche = soll["wrong_choices"].toArray();
        QCOMPARE(ist.ankreuzen, !falsche.isEmpty());
        QCOMPARE(ist.antworten.size(), static_cast<std::size_t>(falsche.size()) + 1);
        for (qsizetype wahl = 0; wahl < falsche.size(); ++wahl) {
            QCOMPARE(ist.antworten[static_cast<std::size_t>(wahl) + 1].text.klar, falsche[wahl].toString());
            QVERIFY(!ist.antworten[static_cast<std::size_t>(wahl) + 1].richtig);
        }
        for (const QJsonValue &verboten : erwartet["must_not_appear"].toArray())
            QVERIFY(!(ist.frage.reich + ist.antworten[0].text.reich).contains(verboten.toString()));
    }
    QCOMPARE(karten.size(), i);
    for (const QJsonValue &stapel : erwartet["decks"].toArray())
        QVERIFY2(quelle->Inhalt().stapel.contains(stapel.toString()), qPrintable(stapel.toString()));
    for (const QJsonValue &lektion : erwartet["lessons"].toArray())
        QVERIFY2(quelle->Inhalt().stapel.contains(lektion.toString()), qPrintable(lektion.toString()));
}

void DeckLesenTest::MediaAreThereByteForByte()
{
    const auto basic = DeckOeffnen(Probe("basic.apkg"));
    QCOMPARE(basic->Medium("schach.png")->left(4), QByteArray("\x89PNG"));
    QCOMPARE(basic->Medium("ton.wav")->left(4), QByteArray("RIFF"));
    QVERIFY(!basic->Medium("fehlt.png"));
    const auto neu = DeckOeffnen(Probe("schema18-zstd.apkg"));
    QCOMPARE(neu->Medium("küche.png")->left(4), QByteArray("\x89PNG"));
    const auto kvtml = DeckOeffnen(Probe("kvtml/small2.kvtml"));
    QFile bild(Probe("kvtml/medien/große Stadt.png"));
    QVERIFY(bild.open(QIODevice::ReadOnly));
    QCOMPARE(*kvtml->Medium("medien/große Stadt.png"), bild.readAll());
    QVERIFY(!kvtml->Medium("../basic.apkg"));
}

void DeckLesenTest::ADeckCanBeReadAgainFromItsStart()
{
    for (const char *name : {"schema11-rich.apkg", "kvtml/small2.kvtml"}) {
        const auto quelle = DeckOeffnen(Probe(name));
        Deckbericht einmal;
        Deckbericht nochmal;
        const auto erste = Karten(*quelle, einmal);
        quelle->VonVorn();
        const auto zweite = Karten(*quelle, nochmal);
        QCOMPARE(erste.size(), zweite.size());
        QCOMPARE(einmal.Text(), nochmal.Text());
        QCOMPARE(erste.back().frage.klar, zweite.back().frage.klar);
    }
}

void DeckLesenTest::WhatIsLeftBehindIsTold()
{
    const auto quelle = DeckOeffnen(Probe("schema11-rich.apkg"));
    Deckbericht bericht;
    Karten(*quelle, bericht);
    QCOMPARE(bericht.Zahl(Deckrest::OhneFrage), 3);
    QCOMPARE(bericht.Zahl(Deckrest::Unlesbar), 2);    // no note, no template
    QCOMPARE(bericht.Zahl(Deckrest::MediumFehlt), 2); // fehlt.png, fehlt.mp3
    QCOMPARE(bericht.Zahl(Deckrest::MediumFern), 1);
    QCOMPARE(bericht.Zahl(Deckrest::Hinweis), 1);
    QCOMPARE(bericht.Zahl(Deckrest::WeitereToene), 1); // glocke.wav and x.mp3 on one side
    int ausgesetzt = 0;
    for (const QJsonValue &karte : Erwartet("schema11-rich.apkg")["cards"].toArray())
        ausgesetzt += karte["suspended"].toBool() || karte["buried"].toBool() ? 1 : 0;
    QCOMPARE(bericht.Zahl(Deckrest::Ausgesetzt), ausgesetzt);
    QVERIFY(bericht.Text().contains("https://example.invalid/a.png"));

    const auto kvtml = DeckOeffnen(Probe("kvtml/small1.kvtml"));
    Deckbericht worte;
    Karten(*kvtml, worte);
    QCOMPARE(worte.Zahl(Deckrest::OhneAntwort), 1);
    QVERIFY(worte.Zahl(Deckrest::Wortangabe) > 5);
}

// Dots say that there are others, not that one card has lost two things.
void DeckLesenTest::DotsStandForCardsThatAreNotNamed()
{
    Deckbericht bericht;
    bericht.Melden(Deckrest::Wortangabe, "der Apfel");
    bericht.Melden(Deckrest::Wortangabe, "der Apfel");
    QVERIFY(bericht.Text().endsWith(": 2\n    der Apfel"));
    for (int i = 0; i < 7; ++i)
        bericht.Melden(Deckrest::Wortangabe, QString::number(i));
    QVERIFY2(bericht.Text().endsWith("\n    6"), qPrintable(bericht.Text()));
    Deckbericht spaeter;
    spaeter.Melden(Deckrest::Wortangabe, "7");
    bericht.Dazu(spaeter);
    QVERIFY2(bericht.Text().endsWith("\n    6\n    …"), qPrintable(bericht.Text()));
}

void DeckLesenTest::DecksMadeToHarmAreRefusedOrHarmless_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("reason"); // none: it may be read
    const auto boese = [](const char *name, const char *reason) { QTest::newRow(name) << name << reason; };
    boese("media-traversal.apkg", "");
    boese("media-map-odd.apkg", "");
    boese("media-map-broken.apkg", "");
    boese("zip-absolute-paths.apkg", "");
    boese("zip-symlink.apkg", "");
    boese("zip-duplicate-names.apkg", "gleichen Namens");
    boese("zipbomb-deflate.apkg", "Vielfaches seiner Größe");
    boese("zipbomb-zstd.apkg", "Vielfaches seiner Größe");
    boese("huge-field.apkg", "größer, als eine Karte fassen kann");
    boese("template-amplify.apkg", "");
    boese("truncated.apkg", "beschädigt");
    boese("empty.apkg", "weder ein Anki-Paket noch KVTML");
    boese("not-a-zip.apkg", "weder ein Anki-Paket noch KVTML");
    boese("no-collection.apkg", "keine Kartensammlung");
    boese("bad-crc.apkg", "beschädigt");
    boese("meta-future.apkg", "neueres Format");
    boese("dummy-only.apkg", "keine Kartensammlung");
    boese("sqlite-damaged-pages.apkg", "beschädigt");
    boese("sqlite-truncated.apkg", "beschädigt");
    boese("sqlite-not.apkg", "beschädigt");
    boese("sqlite-no-cards-table.apkg", "beschädigt");
    boese("sqlite-endless-view.apkg", "beschädigt");
    boese("models-not-json.apkg", "beschädigt");
    boese("models-wrong-types.apkg", "beschädigt");
    boese("models-missing.apkg", "");
    boese("models-deep-json.apkg", "beschädigt");
    boese("template-deep.apkg", "");
    boese("template-broken.apkg", "");
    boese("html-deep.apkg", "");
    boese("numbers-extreme.apkg", "");
    boese("kvtml-entity-bomb.kvtml", "KVTML");
    boese("kvtml-entity-quadratic.kvtml", "KVTML");
    boese("kvtml-external-entity.kvtml", "");
    boese("kvtml-external-dtd.kvtml", "");
    boese("kvtml-truncated.kvtml", "KVTML");
    boese("kvtml-deep-100000.kvtml", "geschachtelt");
    boese("kvtml-deep-lessons-20000.kvtml", "geschachtelt");
    boese("kvtml-bad-ids.kvtml", "");
    boese("kvtml-media-traversal.kvtml", "");
    boese("kvtml-wrong-encoding.kvtml", "");
    boese("kvtml-not-xml.kvtml", "weder ein Anki-Paket noch KVTML");
}

void DeckLesenTest::DecksMadeToHarmAreRefusedOrHarmless()
{
    QFETCH(const QString, name);
    QFETCH(const QString, reason);
    QString text;
    try {
        const auto quelle = DeckOeffnen(Probe("hostile/" + name));
        Deckbericht bericht;
        for (const Deckkarte &karte : Karten(*quelle, bericht)) {
            for (const auto *medium :
                 {&karte.frageBild, &karte.antwortBild, &karte.frageTon, &karte.antwortTon})
                if (*medium)
                    QVERIFY2((*medium)->name == "gut.png" || (*medium)->name.isEmpty(),
                             qPrintable((*medium)->name));
            QVERIFY(!karte.frage.klar.contains("Platzhalter: dieses Paket"));
            QVERIFY(!karte.frage.klar.contains("KANARIENVOGEL"));
            QVERIFY(karte.fach >= 0 && karte.fach <= 6);
        }
    } catch (const StoreError &error) {
        text = error.Text();
        QVERIFY(!text.isEmpty());
    }
    QVERIFY2(reason.isEmpty() ? text.isEmpty() : text.contains(reason), qPrintable(text));
}

void DeckLesenTest::NothingOfAnotherFileComesIn()
{
    QFile canary(Probe("hostile/kvtml-external-canary.txt"));
    QVERIFY(canary.open(QIODevice::ReadOnly));
    const QString geheim = QString::fromUtf8(canary.readAll()).simplified();
    QVERIFY(!geheim.isEmpty());
    const auto quelle = DeckOeffnen(Probe("hostile/kvtml-external-entity.kvtml"));
    Deckbericht bericht;
    for (const Deckkarte &karte : Karten(*quelle, bericht))
        QVERIFY(!karte.frage.klar.contains(geheim.left(12)));
}

void DeckLesenTest::NothingOutsideOfADocumentsDirectoryIsRead()
{
    const QTemporaryDir ordner;
    QVERIFY(QDir(ordner.path()).mkpath("innen/unten") && QDir(ordner.path()).mkpath("innen2"));
    const auto schreiben = [&](const QString &name, const QByteArray &inhalt) {
        QFile datei(ordner.filePath(name));
        return datei.open(QIODevice::WriteOnly) && datei.write(inhalt) == inhalt.size();
    };
    const QStringList namen{
        "unten/gut.png", "../geheim.png",           "../innen2/geheim.png",       "unten/verweis.png",
        "fehlt.png",     "//example.invalid/a.png", ordner.filePath("geheim.png")};
    for (const char *name : {"geheim.png", "innen2/geheim.png", "innen/unten/gut.png"})
        QVERIFY(schreiben(name, "Bild"));
    QVERIFY(QFile::link(ordner.filePath("geheim.png"), ordner.filePath("innen/unten/verweis.png")));
    QString eintraege;
    for (qsizetype i = 0; i < namen.size(); ++i)
        eintraege += QString("<entry id=\"%1\"><translation id=\"0\"><text>f%1</text><image>%2</image>"
                             "</translation><translation id=\"1\"><text>a</text></translation></entry>")
                         .arg(i)
                         .arg(namen[i]);
    QVERIFY(schreiben("innen/deck.kvtml",
                      "<?xml version=\"1.0\"?><kvtml version=\"2.0\"><identifiers><identifier id=\"0\"/>"
                      "<identifier id=\"1\"/></identifiers><entries>" +
                          eintraege.toUtf8() + "</entries></kvtml>"));
    const auto quelle = DeckOeffnen(ordner.filePath("innen/deck.kvtml"));
    Deckbericht bericht;
    const std::vector<Deckkarte> karten = Karten(*quelle, bericht);
    QCOMPARE(karten.size(), static_cast<std::size_t>(namen.size()));
    for (const Deckkarte &karte : karten)
        QCOMPARE(Name(karte.frageBild), karte.frage.klar == "f0" ? namen.front() : QString());
    QCOMPARE(bericht.Zahl(Deckrest::MediumFehlt), 5);
    QCOMPARE(bericht.Zahl(Deckrest::MediumFern), 1);
    QCOMPARE(quelle->Medium(namen.front()), QByteArray("Bild"));
    for (const QString &name : namen.mid(1))
        QVERIFY2(!quelle->Medium(name), qPrintable(name));
}

// Each side of a card is allowed, all together are not.
void DeckLesenTest::TemplatesThatMultiplyAllNotesAreRefused()
{
    constexpr int Notizen = 60;
    const QTemporaryDir ordner;
    const auto quelle =
        MitRueckseite(ordner, QString("{{Antwort}}").repeated(3'500), QString(1'000, 'x'), Notizen);
    Deckbericht bericht;
    try {
        Karten(*quelle, bericht);
        QFAIL("not refused");
    } catch (const StoreError &error) {
        QVERIFY2(error.Text().contains("vervielfachen"), qPrintable(error.Text()));
    }
    QVERIFY(quelle->Gelesen() < Notizen);
}

void DeckLesenTest::TheLineBeforeTheAnswerIsFoundHoweverItIsSpelled_data()
{
    QTest::addColumn<QString>("strich");
    QTest::addColumn<QString>("antwort");
    QTest::newRow("usual") << "vorn <hr id=answer> hinten"
                           << "hinten";
    QTest::newRow("large") << "vorn <HR ID=ANSWER> hinten"
                           << "hinten";
    QTest::newRow("mixed") << "vorn <Hr id=answer> hinten"
                           << "hinten";
    QTest::newRow("quoted") << "vorn <hR id = 'answer' /> hinten"
                            << "hinten";
    QTest::newRow("the first one") << "vorn <HR id=answer> Mitte <hr id=answer> hinten"
                                   << "Mitte\r\nhinten";
    QTest::newRow("not any line") << "vorn <hr><i>i</i> <HR id=answer> hinten"
                                  << "hinten";
    QTest::newRow("no line") << "vorn <hr> hinten"
                             << "vorn\r\nhinten";
    QTest::newRow("not closed") << "vorn <hr> hinten <hr id=answer"
                                << "vorn\r\nhinten";
}

void DeckLesenTest::TheLineBeforeTheAnswerIsFoundHoweverItIsSpelled()
{
    QFETCH(const QString, strich);
    QFETCH(const QString, antwort);
    const QTemporaryDir ordner;
    const auto quelle = MitRueckseite(ordner, strich, "Antwort", 1);
    Deckbericht bericht;
    const std::vector<Deckkarte> karten = Karten(*quelle, bericht);
    QCOMPARE(karten.size(), 1U);
    QCOMPARE(karten[0].antworten[0].text.klar, antwort);
}

void DeckLesenTest::CardsReadAheadAreTheSame_data()
{
    EveryCardComesAsItIs_data();
}

void DeckLesenTest::CardsReadAheadAreTheSame()
{
    QFETCH(const QString, name);
    const auto quelle = DeckOeffnen(Probe(name));
    Deckbericht bericht;
    const std::vector<Deckkarte> karten = Karten(*quelle, bericht);
    const auto bild = [&](const Deckkarte &karte) {
        return karte.frageBild ? quelle->Medium(karte.frageBild->name) : std::nullopt;
    };
    std::vector<std::optional<QByteArray>> bilder;
    for (const Deckkarte &karte : karten)
        bilder.push_back(bild(karte));
    quelle->VonVorn();
    Deckbericht anderer;
    std::size_t i = 0;
    {
        Deckvorleser vorleser(*quelle);
        for (Deckkarte karte; vorleser.Naechste(karte, anderer); ++i) {
            QVERIFY(i < karten.size());
            QCOMPARE(karte.frage.reich, karten[i].frage.reich);
            QCOMPARE(karte.antworten[0].text.reich, karten[i].antworten[0].text.reich);
            QCOMPARE(Name(karte.frageBild), Name(karten[i].frageBild));
            QVERIFY(bild(karte) == bilder[i]); // while the thread reads on
        }
        Deckkarte keine;
        QVERIFY(!vorleser.Naechste(keine, anderer));
    }
    QCOMPARE(i, karten.size());
    QCOMPARE(anderer.Text(), bericht.Text());
}

void DeckLesenTest::AnErrorComesBehindTheCardsThatWereReadBefore()
{
    Zaehlquelle quelle(700);
    Deckvorleser vorleser(quelle);
    Deckbericht bericht;
    Deckkarte karte;
    for (int i = 1; i <= 700; ++i) {
        QVERIFY(vorleser.Naechste(karte, bericht));
        QCOMPARE(karte.frage.klar, QString::number(i));
    }
    for (int mal = 0; mal < 2; ++mal) // and stays
        QVERIFY_THROWS_EXCEPTION(StoreError, vorleser.Naechste(karte, bericht));
    QCOMPARE(bericht.Zahl(Deckrest::Markierung), 700);
}

void DeckLesenTest::WhoWantsNoMoreCardsNeedNotReadThem()
{
    Zaehlquelle quelle(1'000'000);
    {
        Deckvorleser vorleser(quelle);
        Deckbericht bericht;
        Deckkarte karte;
        QVERIFY(vorleser.Naechste(karte, bericht));
    }
    QVERIFY2(quelle.Gelesen() < 10'000, qPrintable(QString::number(quelle.Gelesen())));
}

PAUKFIX_TEST(DeckLesenTest)
#include "DeckLesenTest.moc"
