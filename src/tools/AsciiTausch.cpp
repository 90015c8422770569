// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AsciiTausch.h"

#include "CardAdd.h"
#include "FelderText.h"
#include "FreshFile.h"
#include "TextHelpers.h"

#include <QFileInfo>

#include <algorithm>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// A simple card as a line of a text, whatever separates its columns.
class Zeilenschreiber
{
public:
    Zeilenschreiber(CardFieldHandles &felder, const Textform &form) : felder_(felder), form_(form) {}

    QString Kopf() const { return Zeile(u"Frage"_s, u"Antwort"_s, u"Thema"_s); }

    QString Karte() const
    {
        return Zeile(felder_.Frage_Klartext.Text(), felder_.Antwort_Klartext[0].Text(),
                     felder_.Picture_name[8].Text());
    }

private:
    QString Zeile(QString frage, QString antwort, QString thema) const
    {
        return Spalte(frage) + form_.trennzeichen + Spalte(antwort) + form_.trennzeichen + Spalte(thema);
    }

    QString Spalte(QString &text) const
    {
        return form_.anfuehrung ? InAnfuehrungszeichen(text) : CleanFieldText(text, form_.trennzeichen);
    }

    CardFieldHandles &felder_;
    const Textform &form_;
};

void DazuWennNeu(std::vector<StoreError> &fehler, const StoreError &einer)
{
    const auto gleich = [&](const StoreError &bekannt) { return bekannt.Text() == einer.Text(); };
    if (std::none_of(fehler.begin(), fehler.end(), gleich))
        fehler.push_back(einer);
}

// All cards as text; a card that cannot be read is left out and told in `fehler`, each error once.
QByteArray AlsText(const Werkbank &bank, const Exportwahl &wahl, std::vector<StoreError> &fehler)
{
    CardRecordset &karten = bank.store.Karten();
    CardFieldHandles &felder = bank.store.Felder();
    const Zeilenschreiber zeilen(felder, wahl.form);
    std::optional<FelderSchreiber> alleFelder;
    if (wahl.alleFelder)
        alleFelder.emplace(karten);
    TextSchreiber text(wahl.utf8 || wahl.alleFelder);
    text.Zeile(alleFelder ? FelderSchreiber::Kopf() : zeilen.Kopf());
    const int gesamt = karten.RecordCount();
    int gelesen = 0;
    for (karten.MoveFirst(); !karten.AtEOF(); karten.MoveNext()) {
        try {
            if (alleFelder)
                text.Zeile(alleFelder->Karte());
            else if (const QVariant typ = felder.Antworttyp.Value(); typ.isValid() && typ.toDouble() == 1)
                text.Zeile(zeilen.Karte());
        } catch (const StoreError &einer) {
            DazuWennNeu(fehler, einer);
        }
        Melden(bank.progress, ++gelesen, gesamt);
    }
    return text.Inhalt();
}

QString TrennzeichenName(QChar zeichen)
{
    return zeichen == u'\t' ? TabText() : u"„%1“"_s.arg(zeichen);
}

// Bytes that do not fit: told with their lines, and asked about. Nothing where nothing is to be read.
std::optional<Textinhalt> NachFrage(Meldungen &meldungen, const QByteArray &datei, Textinhalt inhalt)
{
    const Unpassendes &unpassend = inhalt.unpassend;
    if (unpassend.stellen == 0)
        return inhalt;
    const bool eine = unpassend.zeilen.size() == 1;
    const QString wo = (eine ? u"Zeile "_s : u"den Zeilen "_s) +
                       Zeilenliste(unpassend.zeilen, static_cast<int>(unpassend.zeilen.size()) +
                                                         (unpassend.zeilen.size() < 100 ? 0 : 1));
    const QString was = unpassend.stellen == 1
                            ? u"In %1 passt ein Byte (%2) nicht zum Zeichensatz %3."_s
                            : u"In %1 passen Bytes nicht zum Zeichensatz %3, als erstes %2."_s;
    QString frage =
        was.arg(wo, QString::fromLatin1(unpassend.erste.toHex(' ').toUpper()), NameVon(inhalt.zeichensatz)) +
        u"\n\nWie soll es gelesen werden? Einen anderen Zeichensatz für die ganze Datei "
        u"können Sie nach „Abbrechen“ wählen."_s;
    QStringList knoepfe;
    if (inhalt.zeichensatz == Utf8)
        knoepfe << u"Diese Stellen als &Windows-1252"_s;
    knoepfe << u"&Ersatzzeichen \uFFFD einsetzen"_s << u"Abbrechen"_s;
    const qsizetype wahl = meldungen.Waehlen(frage, knoepfe, knoepfe.size() - 1);
    if (wahl == knoepfe.size() - 1)
        return std::nullopt;
    if (knoepfe.size() == 3 && wahl == 0)
        return TextLesen(datei, inhalt.zeichensatz, Fremdes::AlsWindows1252);
    return inhalt;
}

// The cards of a text, one by one, into the box; what comes of it is noted in `zugang`.
AddedCards Aufnehmen(const Werkbank &bank, const Textinhalt &inhalt, const Importwahl &wahl, Zugang &zugang)
{
    std::vector<int> zeilen; // of the cards, as they came
    AddedCards neue;
    if (wahl.aufbau.alleFelder) {
        FelderQuelle quelle(inhalt, wahl.aufbau.form, bank.store.Karten(), wahl.mitFaechern);
        neue = CopyAllCards(bank.store, quelle, bank.progress, wahl.vorhandene);
        zeilen = quelle.Zeilen();
        zugang.zeilen = quelle.OhneFach();
        if (!zugang.zeilen.empty())
            neue.errors.emplace_back(Fehler::IndexAusserhalb,
                                     u"Ein Fach gibt es nicht; die Karte kam nach Neu."_s);
    } else {
        KartenAusText karten(inhalt, wahl.aufbau);
        int seither = 0;
        const auto naechste = [&](SimpleCard &karte) {
            if (bank.progress && ++seither % ProgressSteps == 0)
                bank.progress(karten.Gelesen(), karten.Gesamt());
            if (!karten.Naechste(karte))
                return false;
            zeilen.push_back(karten.Zeile());
            return true;
        };
        neue = AddSimpleCards(bank.store, naechste, wahl.vorhandene);
        for (SimpleCard rest; naechste(rest);) { // what an error left unread
        }
        zugang.andere = karten.Andere();
    }
    for (const int karte : neue.faulty)
        zugang.zeilen.push_back(zeilen[static_cast<std::size_t>(karte)]);
    std::sort(zugang.zeilen.begin(), zugang.zeilen.end());
    zugang.karten = neue.count;
    zugang.ausgelassen = neue.leftOut;
    zugang.erneuert = neue.renewed;
    zugang.fehlen = static_cast<int>(zeilen.size()) - neue.count - neue.leftOut - neue.renewed;
    zugang.leer = inhalt.bytes.size() <= inhalt.anfang;
    zugang.trennzeichen = TrennzeichenName(wahl.aufbau.form.trennzeichen);
    return neue;
}

} // namespace

QString TabText()
{
    return u"<Tab>"_s;
}

std::optional<QChar> Trennzeichen(const QString &text)
{
    if (text == TabText())
        return u'\t';
    if (text == u";"_s || text == u"#"_s)
        return text.front();
    return std::nullopt;
}

std::optional<QChar> Trennzeichen(Meldungen &meldungen, const QString &text)
{
    if (const auto zeichen = Trennzeichen(text))
        return zeichen;
    meldungen.Zeigen(u"Trennzeichen: "_s + text + u"ungültig!"_s);
    return std::nullopt;
}

Ausgang AsciiExportieren(const Werkbank &bank, const QString &dateiname, const Exportwahl &wahl)
{
    std::vector<StoreError> fehler;
    const bool geschrieben = Versuchen(bank.meldungen, [&] {
        const QString ziel = ZielPfad(bank.store, dateiname);
        const QByteArray text = AlsText(bank, wahl, fehler);
        FreshFile neu(ziel);
        neu.Make([&](const QString &pfad) { WriteFileSynced(pfad, text); });
        neu.TakePlace();
    });
    FehlerMelden(bank.meldungen, fehler);
    if (!geschrieben)
        return Ausgang::Gescheitert;
    return fehler.empty() ? Ausgang::Gelungen : Ausgang::Teilweise;
}

QString ErfolgreichEingelesen(const QString &dateiname, const Zugang &zugang)
{
    QString text = dateiname + u" erfolgreich eingelesen"_s;
    QStringList teile;
    if (zugang.ausgelassen > 0)
        teile << (zugang.ausgelassen == 1 ? u"1 gab es schon, sie blieb aus"_s
                                          : u"%1 gab es schon, sie blieben aus"_s.arg(zugang.ausgelassen));
    if (zugang.erneuert > 0)
        teile << u"%1 mit neuer Antwort"_s.arg(zugang.erneuert);
    if (!teile.isEmpty())
        return text + u"\n"_s + KartenText(zugang.karten) + u" neu; "_s + teile.join(u"; "_s) + u'.';
    if (zugang.karten > 0)
        return text;
    text += u"\nEs kam keine Karte herein: "_s;
    if (zugang.leer)
        return text + u"Die Datei ist leer."_s;
    if (zugang.andere == 0)
        return text + u"In der Datei steht keine Zeile mit einer Karte."_s;
    if (zugang.andere == 1)
        return text +
               u"Die einzige Zeile mit Text enthält das Trennzeichen %1 nicht."_s.arg(zugang.trennzeichen);
    return text + u"Keine der %1 Zeilen mit Text enthält das Trennzeichen %2."_s.arg(zugang.andere)
                      .arg(zugang.trennzeichen);
}

QString TeilweiseEingelesen(const Zugang &zugang)
{
    const QString wo = zugang.zeilen.empty()
                           ? QString()
                           : (zugang.zeilen.size() == 1 ? u" (Zeile %1)"_s : u" (Zeilen %1)"_s)
                                 .arg(Zeilenliste(zugang.zeilen, static_cast<int>(zugang.zeilen.size())));
    if (zugang.karten == 0 && zugang.ausgelassen == 0 && zugang.erneuert == 0)
        return u"Es wurde keine Karte eingelesen%1."_s.arg(wo);
    QString text = KartenText(zugang.karten) + u" eingelesen"_s;
    if (zugang.ausgelassen > 0)
        text += u", %1 schon da"_s.arg(zugang.ausgelassen);
    if (zugang.erneuert > 0)
        text += u", %1 mit neuer Antwort"_s.arg(zugang.erneuert);
    text += u"; "_s + (zugang.fehlen > 0 ? KartenText(zugang.fehlen) + u" der Datei fehlen"_s
                                         : u"nicht alle Texte passten hinein"_s);
    return text + wo + u". Wer die Datei noch einmal einliest, hat sie doppelt."_s;
}

Ausgang AsciiImportieren(const Werkbank &bank, const QString &dateiname, const Importwahl &wahl,
                         Zugang *zugang)
{
    CardStore &store = bank.store;
    if (dateiname.isEmpty() || !QFileInfo::exists(VollerPfad(store, dateiname))) {
        bank.meldungen.Zeigen(dateiname + u" Datei nicht gefunden !"_s);
        return Ausgang::Gescheitert;
    }
    QByteArray datei;
    std::optional<Textinhalt> inhalt;
    const bool gelesen = Versuchen(bank.meldungen, [&] {
        const QString pfad = VollerPfad(store, dateiname);
        NichtDieOffene(store, pfad);
        Melden(bank.progress, 0, 0); // reading and decoding may take long too
        datei = ReadFile(pfad, GroessteTextdatei);
        inhalt = TextLesen(datei, wahl.aufbau.zeichensatz);
    });
    if (gelesen)
        inhalt = NachFrage(bank.meldungen, datei, *std::move(inhalt));
    if (!gelesen || !inhalt)
        return Ausgang::Gescheitert;

    AddedCards neue;
    Zugang ergebnis;
    const bool gespeichert = Versuchen(bank.meldungen, [&] {
        const Aenderung schritt(store, u"Import von „%1“"_s.arg(QFileInfo(dateiname).fileName()));
        InEinemZug(store.Karten(), [&] { neue = Aufnehmen(bank, *inhalt, wahl, ergebnis); });
    });
    if (!gespeichert) {
        NeuOeffnen(bank);
        return Ausgang::Gescheitert;
    }
    bank.oeffner.BoxZeichnen();
    FehlerMelden(bank.meldungen, neue.errors);
    if (zugang)
        *zugang = std::move(ergebnis);
    return neue.errors.empty() ? Ausgang::Gelungen : Ausgang::Teilweise;
}

} // namespace paukfix
