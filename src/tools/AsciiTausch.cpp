// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AsciiTausch.h"

#include "CardAdd.h"
#include "FreshFile.h"
#include "TextDatei.h"
#include "TextHelpers.h"

#include <QFileInfo>

#include <algorithm>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// More than a full box of long cards; a text file is read whole.
constexpr qint64 GroessteTextdatei = qint64{256} << 20; // bytes

QString Spalte(const Field &feld, const QString &trennzeichen)
{
    QString text = feld.Text();
    return CleanFieldText(text, trennzeichen);
}

// All cards as text; a card that cannot be read is left out and told in `fehler`, each error once.
QByteArray AlsText(const Werkbank &bank, const QString &trennzeichen, std::vector<StoreError> &fehler)
{
    CardRecordset &karten = bank.store.Karten();
    CardFieldHandles &felder = bank.store.Felder();
    TextSchreiber text;
    text.Zeile(u"Frage"_s + trennzeichen + u"Antwort"_s + trennzeichen + u"Thema"_s);
    const int gesamt = karten.RecordCount();
    int gelesen = 0;
    for (karten.MoveFirst(); !karten.AtEOF(); karten.MoveNext()) {
        try {
            const QVariant typ = felder.Antworttyp.Value();
            if (typ.isValid() && typ.toDouble() == 1)
                text.Zeile(Spalte(felder.Frage_Klartext, trennzeichen) + trennzeichen +
                           Spalte(felder.Antwort_Klartext[0], trennzeichen) + trennzeichen +
                           Spalte(felder.Picture_name[8], trennzeichen));
        } catch (const StoreError &einer) {
            const auto gleich = [&](const StoreError &bekannt) { return bekannt.Text() == einer.Text(); };
            if (std::none_of(fehler.begin(), fehler.end(), gleich))
                fehler.push_back(einer);
        }
        Melden(bank.progress, ++gelesen, gesamt);
    }
    return text.Inhalt();
}

std::optional<SimpleCard> KarteAusZeile(const QString &zeile, QChar trennzeichen)
{
    const qsizetype erstes = zeile.indexOf(trennzeichen);
    if (erstes < 0)
        return std::nullopt;
    const qsizetype zweites = zeile.indexOf(trennzeichen, erstes + 1);
    // Other systems write an umlaut as two characters. Split before: a Greek question mark becomes a
    // semicolon.
    const auto spalte = [&](qsizetype von, qsizetype bis) {
        return zeile.mid(von, bis - von).normalized(QString::NormalizationForm_C);
    };
    const qsizetype ende = zeile.size();
    if (zweites < 0)
        return SimpleCard{spalte(0, erstes), spalte(erstes + 1, ende), {}};
    return SimpleCard{spalte(0, erstes), spalte(erstes + 1, zweites), spalte(zweites + 1, ende)};
}

} // namespace

QString TabText()
{
    return u"<Tab>"_s;
}

std::optional<QChar> Trennzeichen(Meldungen &meldungen, const QString &text)
{
    if (text == TabText())
        return u'\t';
    if (text == u";"_s || text == u"#"_s)
        return text.front();
    meldungen.Zeigen(u"Trennzeichen: "_s + text + u"ungültig!"_s);
    return std::nullopt;
}

Ausgang AsciiExportieren(const Werkbank &bank, const QString &dateiname, QChar trennzeichen)
{
    std::vector<StoreError> fehler;
    const bool geschrieben = Step(bank.meldungen, FehlerKontext(), [&] {
        const QString ziel = ZielPfad(bank.store, dateiname);
        const QByteArray text = AlsText(bank, trennzeichen, fehler);
        FreshFile neu(ziel);
        neu.Make([&](const QString &pfad) { WriteFileSynced(pfad, text); });
        neu.TakePlace();
    });
    FehlerMelden(bank.meldungen, fehler);
    if (!geschrieben)
        return Ausgang::Gescheitert;
    return fehler.empty() ? Ausgang::Gelungen : Ausgang::Teilweise;
}

QString TeilweiseEingelesen(const Zugang &zugang)
{
    if (zugang.karten == 0)
        return u"Es wurde keine Karte eingelesen."_s;
    return u"%1 eingelesen; %2. Wer die Datei noch einmal einliest, hat sie doppelt."_s.arg(
        KartenText(zugang.karten), zugang.fehlen > 0 ? KartenText(zugang.fehlen) + u" der Datei fehlen"_s
                                                     : u"nicht alle Texte passten hinein"_s);
}

Ausgang AsciiImportieren(const Werkbank &bank, const QString &dateiname, QChar trennzeichen, Zugang *zugang)
{
    CardStore &store = bank.store;
    if (dateiname.isEmpty() || !QFileInfo::exists(VollerPfad(store, dateiname))) {
        bank.meldungen.Zeigen(dateiname + u" Datei nicht gefunden !"_s);
        return Ausgang::Gescheitert;
    }
    std::optional<TextZeilen> zeilen;
    const bool gelesen = Step(bank.meldungen, FehlerKontext(), [&] {
        const QString pfad = VollerPfad(store, dateiname);
        NichtDieOffene(store, pfad);
        Melden(bank.progress, 0, 0); // reading and decoding may take long too
        zeilen.emplace(ReadFile(pfad, GroessteTextdatei));
    });
    if (!gelesen)
        return Ausgang::Gescheitert;

    AddedCards neue;
    QString zeile;
    int nummer = 0;
    int karten = 0;
    const auto naechste = [&](SimpleCard &karte) {
        while (zeilen->Naechste(zeile)) {
            if (bank.progress && ++nummer % ProgressSteps == 0)
                bank.progress(zeilen->Gelesen(), zeilen->Gesamt());
            if (auto gefunden = KarteAusZeile(zeile, trennzeichen)) {
                karte = std::move(*gefunden);
                ++karten;
                return true;
            }
        }
        return false;
    };
    const bool gespeichert = Step(bank.meldungen, FehlerKontext(), [&] {
        const Aenderung schritt(store, u"Import von „%1“"_s.arg(QFileInfo(dateiname).fileName()));
        InEinemZug(store.Karten(), [&] { neue = AddSimpleCards(store, naechste); });
    });
    if (!gespeichert) {
        NeuOeffnen(bank);
        return Ausgang::Gescheitert;
    }
    bank.oeffner.BoxZeichnen();
    FehlerMelden(bank.meldungen, neue.errors);
    if (zugang) {
        for (SimpleCard rest; naechste(rest);) { // what an error left unread
        }
        *zugang = {.karten = neue.count, .fehlen = karten - neue.count};
    }
    return neue.errors.empty() ? Ausgang::Gelungen : Ausgang::Teilweise;
}

} // namespace paukfix
