// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "FelderText.h"

#include "CardRecord.h"
#include "CardValue.h"
#include "FachNummern.h"

#include <QLocale>

#include <algorithm>
#include <cmath>
#include <limits>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

QString SpaltenName(int column)
{
    return QString::fromLatin1(CardColumns()[static_cast<std::size_t>(column)].name);
}

std::optional<double> Zahl(QString text)
{
    bool gelungen = false;
    const double zahl = text.replace(u',', u'.').toDouble(&gelungen);
    return gelungen && std::isfinite(zahl) ? std::optional(zahl) : std::nullopt;
}

// What spreadsheets make of True and False in their own language counts too.
std::optional<double> Haken(const QString &text)
{
    const QString wort = text.trimmed().toLower();
    if (wort == u"true" || wort == u"wahr")
        return -1;
    if (wort == u"false" || wort == u"falsch")
        return 0;
    return Zahl(wort);
}

} // namespace

FelderSchreiber::FelderSchreiber(CardRecordset &karten)
{
    for (int column = 0; column < CardColumnCount; ++column)
        felder_.push_back(karten.HasField(SpaltenName(column)) ? std::optional(karten[SpaltenName(column)])
                                                               : std::nullopt);
}

QString FelderSchreiber::Kopf()
{
    QString kopf;
    for (int column = 0; column < CardColumnCount; ++column)
        kopf += (column > 0 ? u";"_s : QString()) + InAnfuehrungszeichen(SpaltenName(column));
    return kopf;
}

QString FelderSchreiber::Karte() const
{
    QString zeile;
    for (int column = 0; column < CardColumnCount; ++column) {
        if (column > 0)
            zeile += u';';
        const auto &feld = felder_[static_cast<std::size_t>(column)];
        const QVariant wert = feld ? feld->Value() : QVariant();
        if (!wert.isValid())
            continue;
        switch (KindOf(column)) {
        case CardKind::Number:
            zeile += QString::number(wert.toDouble(), 'g', QLocale::FloatingPointShortest);
            break;
        case CardKind::Flag:
            zeile += wert.toBool() ? u"True"_s : u"False"_s;
            break;
        case CardKind::Text:
            zeile += InAnfuehrungszeichen(wert.toString());
            break;
        }
    }
    return zeile;
}

bool NenntAlleFelder(const std::vector<Textfeld> &felder)
{
    const auto nennt = [&](QStringView name) {
        return std::any_of(felder.begin(), felder.end(), [&](const Textfeld &feld) {
            return name.compare(feld.text, Qt::CaseInsensitive) == 0;
        });
    };
    const auto bekannt = [](const Textfeld &feld) { return CardColumnIndex(feld.text) >= 0; };
    return std::all_of(felder.begin(), felder.end(), bekannt) && nennt(u"Antworttyp") && nennt(u"Frage") &&
           nennt(u"Frage_Klartext") && nennt(u"Antwort_1") && nennt(u"Antwort_1_Klartext");
}

FelderQuelle::FelderQuelle(const Textinhalt &inhalt, const Textform &form, const CardRecordset &ziel,
                           bool mitFaechern)
    : saetze_(inhalt, form), mitFaechern_(mitFaechern), feldDerSpalte_(CardColumnCount, -1)
{
    saetze_.Naechster(felder_);
    for (std::size_t i = 0; i < felder_.size(); ++i)
        if (const int column = CardColumnIndex(felder_[i].text); column >= 0)
            feldDerSpalte_[static_cast<std::size_t>(column)] = static_cast<int>(i);
    for (int column = ColFachLfdNr + 1; column < CardColumnCount; ++column)
        if (feldDerSpalte_[static_cast<std::size_t>(column)] >= 0 && ziel.HasField(SpaltenName(column)))
            spalten_.push_back(column);
    while (NaechsterSatz())
        zeilen_.push_back(saetze_.Zeile());
    saetze_ = TextSaetze(inhalt, form);
    saetze_.Naechster(felder_);
}

bool FelderQuelle::NaechsterSatz()
{
    const auto leer = [](const Textfeld &feld) { return feld.text.isEmpty(); };
    do {
        if (!saetze_.Naechster(felder_))
            return false;
    } while (std::all_of(felder_.begin(), felder_.end(), leer));
    return true;
}

bool FelderQuelle::Next()
{
    if (!NaechsterSatz())
        return false;
    platz_ = {};
    if (!mitFaechern_)
        return true;
    const auto fach = Ganzzahl(ColFachNr);
    if (fach && *fach >= FachNeu && *fach <= FachErledigt)
        platz_ = {.fach = *fach, .frageNr = Ganzzahl(ColFrageNr), .lfdNr = Ganzzahl(ColFachLfdNr)};
    else if (feldDerSpalte_[ColFachNr] >= 0)
        ohneFach_.push_back(saetze_.Zeile());
    return true;
}

void FelderQuelle::Read(int column, CopiedValue &value)
{
    value.kind = CopiedValue::Kind::Null;
    const Textfeld *feld = Feld(column);
    if (!feld || (feld->text.isEmpty() && !feld->inAnfuehrung))
        return;
    if (KindOf(column) == CardKind::Text) {
        value.text = feld->text.toStdString();
        value.kind = CopiedValue::Kind::Text;
        return;
    }
    const auto zahl = KindOf(column) == CardKind::Flag ? Haken(feld->text) : Zahl(feld->text);
    if (!zahl)
        ThrowTypeMismatch(column);
    value.number = *zahl;
    value.kind = CopiedValue::Kind::Number;
}

const Textfeld *FelderQuelle::Feld(int column) const
{
    const int feld = feldDerSpalte_[static_cast<std::size_t>(column)];
    return feld >= 0 && feld < static_cast<int>(felder_.size()) ? &felder_[static_cast<std::size_t>(feld)]
                                                                : nullptr;
}

std::optional<int> FelderQuelle::Ganzzahl(int column) const
{
    const Textfeld *feld = Feld(column);
    const auto zahl = feld ? Zahl(feld->text) : std::nullopt;
    if (!zahl || *zahl != std::floor(*zahl) || *zahl < std::numeric_limits<qint16>::min() ||
        *zahl > std::numeric_limits<qint16>::max())
        return std::nullopt;
    return static_cast<int>(*zahl);
}

} // namespace paukfix
