// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Medienmitnahme.h"

#include "CardMedia.h"
#include "FileHandle.h"
#include "Mediendatei.h"
#include "StoreError.h"

#include <QFileInfo>

#include <fcntl.h>
#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

Fundstelle MediumSuchen(const QString &verzeichnis, const QString &name)
{
    const QString bloss = BlosserName(name);
    if (!IstMedienname(bloss))
        return {{}, u"ist kein Name eines Bildes oder Klangs"_s};
    const QString pfad = Mediendatei(verzeichnis, bloss);
    const QFileInfo info(pfad);
    if (info.isSymLink())
        return {{}, u"ist eine Verknüpfung auf eine andere Datei"_s};
    if (!info.exists())
        return {{},
                bloss == name ? u"fehlt"_s : u"fehlt (gesucht als „%1“ im Ordner der Kartei)"_s.arg(bloss)};
    try {
        OpenRegular(pfad, O_NOFOLLOW);
    } catch (const StoreError &fehler) {
        return {{}, u"kann nicht gelesen werden (%1)"_s.arg(fehler.Text())};
    }
    return {pfad, {}};
}

QString MedienZeile(const QString &name, const QString &hindernis, int karten)
{
    return u"„%1“ %2. (%3)"_s.arg(name, hindernis, karten == 1 ? u"1 Karte"_s : u"%1 Karten"_s.arg(karten));
}

Medienmitnahme::Medienmitnahme(QString von, Beilagen &nach, Takt takt)
    : von_(std::move(von)), nach_(nach), takt_(std::move(takt))
{
}

Medienmitnahme::Gefunden Medienmitnahme::Suchen(const QString &name) const
{
    if (takt_)
        takt_();
    const Fundstelle fund = MediumSuchen(von_, name);
    if (!fund.hindernis.isEmpty())
        return {.neu = name, .hindernis = fund.hindernis};
    Dateiinhalt inhalt;
    try {
        inhalt = InhaltVon(fund.pfad, takt_);
    } catch (const StoreError &fehler) {
        if (fehler.Number() == Fehler::Abgebrochen)
            throw;
        return {.neu = name, .hindernis = u"kann nicht gelesen werden (%1)"_s.arg(fehler.Text())};
    }
    const QString bloss = BlosserName(name);
    const QString neu = nach_.Kopieren(bloss, fund.pfad, inhalt);
    return {.neu = neu == bloss ? name : neu, .hindernis = {}};
}

QString Medienmitnahme::Mitnehmen(const QString &name, int karten)
{
    auto bekannt = namen_.find(name);
    if (bekannt == namen_.end()) {
        bekannt = namen_.insert(name, Suchen(name));
        reihenfolge_ << name;
        if (bekannt->neu != name)
            umbenannt_.insert(name, bekannt->neu);
    }
    bekannt->karten += karten;
    return bekannt->neu;
}

QString Medienmitnahme::Bericht() const
{
    QStringList zeilen;
    for (const QString &name : reihenfolge_)
        if (const Gefunden &gefunden = namen_[name]; !gefunden.hindernis.isEmpty())
            zeilen << MedienZeile(name, gefunden.hindernis, gefunden.karten);
    if (zeilen.isEmpty())
        return {};
    zeilen.prepend(u"Nicht mitgekommen sind diese Bilder und Töne; die Karten nennen sie weiter:\n"_s);
    if (umbenannt_.isEmpty())
        return zeilen.join(u'\n');
    zeilen << u"\nUnter einem anderen Namen, weil es ihren schon gab, und die Karten nennen den neuen:\n"_s;
    for (const QString &name : reihenfolge_)
        if (const auto neu = umbenannt_.constFind(name); neu != umbenannt_.cend())
            zeilen << u"„%1“ heißt jetzt „%2“."_s.arg(name, *neu);
    return zeilen.join(u'\n');
}

void MitMedien::Read(int column, CopiedValue &value)
{
    karten_.Read(column, value);
    if (value.kind != CopiedValue::Kind::Text || value.text.empty() || hindernis_ ||
        !MediaColumns().contains(column))
        return;
    try {
        const QString name = QString::fromStdString(value.text);
        if (const QString neu = medien_.Mitnehmen(name); neu != name)
            value.text = neu.toStdString();
    } catch (const StoreError &fehler) {
        hindernis_ = fehler;
    }
}

} // namespace paukfix
