// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Ruecknahme.h"

#include <QScopeGuard>

#include <optional>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

QString MitWort(const QString &was, const QString &wort)
{
    return was.isEmpty() ? QString() : was + u' ' + wort;
}

} // namespace

Ruecknahme::Ruecknahme(CardStore &kartei, Meldungen &meldungen, QObject *parent)
    : QObject(parent), kartei_(kartei), meldungen_(meldungen)
{
}

QString Ruecknahme::Zurueckzunehmen() const
{
    return MitWort(kartei_.schritte.Zurueckzunehmen(),
                   kartei_.schritte.IstEndgueltig() ? u"zurücknehmen (endgültig)"_s : u"zurücknehmen"_s);
}

QString Ruecknahme::NichtZurueckzunehmen() const
{
    const QString was = kartei_.schritte.ZuGross();
    return was.isEmpty() ? u"nichts zurückzunehmen"_s : was + u" ist zu groß zum Zurücknehmen"_s;
}

QString Ruecknahme::Wiederholbar() const
{
    return MitWort(kartei_.schritte.Wiederholbar(), u"wiederholen"_s);
}

void Ruecknahme::Zuruecknehmen()
{
    if (kartei_.schritte.IstEndgueltig() &&
        meldungen_.Fragen(
            MitWort(kartei_.schritte.Zurueckzunehmen(),
                    u"zurücknehmen?\n\nSo viele Karten können danach nicht wiederholt werden."_s),
            Meldungen::Antwort::Nein) != Meldungen::Antwort::Ja)
        return;
    Wenden(&Schritte::Zuruecknehmen, MitWort(kartei_.schritte.Zurueckzunehmen(), u"zurückgenommen"_s),
           u"Fehler beim Zurücknehmen: "_s);
}

void Ruecknahme::Wiederholen()
{
    Wenden(&Schritte::Wiederholen, MitWort(kartei_.schritte.Wiederholbar(), u"wiederholt"_s),
           u"Fehler beim Wiederholen: "_s);
}

void Ruecknahme::Wenden(void (Schritte::*wenden)(), const QString &getan, const QString &kontext)
{
    if (getan.isEmpty())
        return;
    QString gescheitert;
    {
        meldungen_.Sanduhr(true); // a large import takes its time
        const auto ende = qScopeGuard([this] { meldungen_.Sanduhr(false); });
        try {
            (kartei_.schritte.*wenden)();
        } catch (const std::exception &fehler) {
            gescheitert = kontext + ErrorText(fehler);
        }
    }
    emit BoxGeaendert(gescheitert.isEmpty() ? getan : QString());
    if (gescheitert.isEmpty())
        return;
    emit Gescheitert();
    meldungen_.Zeigen(gescheitert);
}

} // namespace paukfix
