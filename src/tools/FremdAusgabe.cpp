// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "FremdAusgabe.h"

#include "Deckausgabe.h"
#include "FreshFile.h"
#include "SafeFile.h"

#include <QDir>
#include <QFileInfo>

#include <variant>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// Where KVTML's pictures and sounds go: beside the file, into a directory of its own.
class Medienordner
{
public:
    explicit Medienordner(QString pfad) : pfad_(std::move(pfad)) {}

    Medienordner(const Medienordner &) = delete;
    Medienordner &operator=(const Medienordner &) = delete;

    // What was made for a file that did not come about goes again.
    ~Medienordner()
    {
        if (!behalten_ && !pfad_.isEmpty())
            QDir(pfad_).removeRecursively();
    }

    const QString &Pfad() const { return pfad_; }

    void Behalten() { behalten_ = true; }

private:
    QString pfad_;
    bool behalten_ = false;
};

QString NeuerOrdner(const QString &ziel)
{
    const QFileInfo datei(ziel);
    QString pfad;
    for (int nummer = 1; pfad.isEmpty() || IsNameTaken(pfad); ++nummer)
        pfad = datei.absolutePath() + u'/' + datei.completeBaseName() + u"-Medien"_s +
               (nummer > 1 ? u'-' + QString::number(nummer) : QString());
    return pfad;
}

CardRecord Gelesen(CardRecordset &karten)
{
    CardRecord satz;
    for (const CardColumn &spalte : CardColumns()) {
        const QString name = QString::fromLatin1(spalte.name);
        if (!karten.HasField(name))
            continue;
        const Field feld = karten[name];
        if (const auto *text = std::get_if<QString CardRecord::*>(&spalte.member))
            satz.**text = feld.Text();
        else if (const auto *zahl = std::get_if<double CardRecord::*>(&spalte.member))
            satz.**zahl = feld.IsNull() ? 0 : feld.Number();
        else
            satz.*std::get<bool CardRecord::*>(spalte.member) = feld.Flag();
    }
    return satz;
}

} // namespace

Ausgang FremdAusgeben(const Werkbank &bank, const QString &dateiname, Fremdform form, QString &rest)
{
    CardStore &store = bank.store;
    Deckbericht bericht;
    const bool gut = Versuchen(bank.meldungen, [&] {
        const QString ziel = ZielPfad(store, dateiname);
        CardRecordset &karten = store.Karten();
        bool erste = true;
        Deckausgabe deck{.titel = QFileInfo(store.CurrentFileName).completeBaseName(),
                         .medien = store.KarteiPfad,
                         .anzahl = karten.RecordCount(),
                         .naechste =
                             [&](CardRecord &satz) {
                                 if (erste)
                                     karten.MoveFirst();
                                 else
                                     karten.MoveNext();
                                 erste = false;
                                 if (karten.AtEOF())
                                     return false;
                                 satz = Gelesen(karten);
                                 return true;
                             },
                         .progress = bank.progress};
        const bool daneben = SameFile(store.KarteiPfad, QFileInfo(ziel).absolutePath());
        Medienordner ordner(form == Fremdform::Kvtml && !daneben ? NeuerOrdner(ziel) : QString());
        FreshFile neu(ziel);
        neu.Make([&](const QString &pfad) {
            if (form == Fremdform::Anki)
                ApkgSchreiben(pfad, deck, bericht);
            else
                KvtmlSchreiben(pfad, ordner.Pfad(), QFileInfo(ordner.Pfad()).fileName(), deck, bericht);
        });
        neu.TakePlace();
        ordner.Behalten();
    });
    rest = bericht.Text();
    return gut ? Ausgang::Gelungen : Ausgang::Gescheitert;
}

} // namespace paukfix
