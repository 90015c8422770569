// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Medienannahme.h"

#include "CardStore.h"
#include "KartenTextBox.h"
#include "Step.h"

#include <QDropEvent>

namespace paukfix {

using namespace Qt::StringLiterals;

std::optional<QString> MediumAnbieten(const Medium &medium, std::size_t moment, const QString &verzeichnis,
                                      Meldungen &meldungen)
{
    const bool bild = medium.art == Medienart::Bild;
    if (!Step(meldungen, bild ? u"Fehler beim Bildöffnen: "_s : u"Fehler beim Soundöffnen: "_s,
              [&] { MediumPruefen(medium); }))
        return std::nullopt;
    if (auto name = LiegtIn(medium, verzeichnis))
        return name;
    const QString frei = FreierName(verzeichnis, medium.name);
    const QString als = frei == medium.name ? QString() : u" als „%1“"_s.arg(frei);
    const QString frage = u"„%1“%2 neben die Kartei kopieren und bei „%3“ %4?"_s.arg(
        medium.name, als, Moment(moment), bild ? u"zeigen"_s : u"abspielen"_s);
    if (meldungen.Fragen(frage) != Meldungen::Antwort::Ja)
        return std::nullopt;
    std::optional<QString> name;
    Step(meldungen, u"Fehler beim Kopieren: "_s, [&] { name = Danebenlegen(medium, verzeichnis); });
    return name;
}

Medienannahme::Medienannahme(const CardStore &kartei, Meldungen &meldungen, Bildnamen &namen, QWidget *form,
                             const QList<QWidget *> &felder)
    : QObject(form), kartei_(kartei), meldungen_(meldungen), namen_(namen)
{
    form->setAcceptDrops(true);
    form->installEventFilter(this);
    for (QWidget *feld : felder) {
        if (auto *box = dynamic_cast<KartenTextBox *>(feld))
            box->medien = this;
        else if (feld)
            feld->installEventFilter(this);
    }
}

bool Medienannahme::Passt(const QMimeData &mime) const
{
    return !MedienVon(mime).isEmpty();
}

void Medienannahme::Nehmen(const QMimeData &mime)
{
    QMetaObject::invokeMethod(
        this,
        [this, medien = MedienVon(mime)] {
            for (const Medium &medium : medien)
                Anbieten(medium);
        },
        Qt::QueuedConnection);
}

void Medienannahme::Anbieten(const Medium &medium)
{
    const bool bild = medium.art == Medienart::Bild;
    const std::size_t erster = bild ? ErsterBildplatz : ErsterTonplatz;
    std::size_t moment = 0;
    while (moment < Momente && !namen_.at(erster + moment).isEmpty())
        ++moment;
    if (moment == Momente) {
        meldungen_.Zeigen(bild ? u"Die Karte hat schon drei Bilder. Unter „Bilder“ lässt sich eines ändern."_s
                               : u"Die Karte hat schon drei Töne. Unter „Ton“ lässt sich einer ändern."_s);
        return;
    }
    const auto name = MediumAnbieten(medium, moment, kartei_.KarteiPfad, meldungen_);
    if (!name)
        return;
    namen_.at(erster + moment) = *name;
    angenommen();
}

bool Medienannahme::eventFilter(QObject *objekt, QEvent *event)
{
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        break;
    default:
        return QObject::eventFilter(objekt, event);
    }
    auto &zug = static_cast<QDropEvent &>(*event);
    if (!Passt(*zug.mimeData()))
        return false;
    if (event->type() == QEvent::Drop)
        Nehmen(*zug.mimeData());
    zug.setDropAction(Qt::CopyAction);
    zug.accept();
    return true;
}

} // namespace paukfix
