// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Druckauftrag.h"

#include "Protokoll.h"
#include "StoreError.h"

#include <QPaintEngine>
#include <QPrinterInfo>

#include <dlfcn.h>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr int DruckerFehler = 482;

struct Antwort
{
    bool angenommen = true;
    QString grund; // a sentence, where there is one
};

// What the printing system said to the job that this thread has just handed over: the toolkit does not look
// at it. Its library is loaded where the toolkit prints through it.
Antwort AntwortDesDrucksystems()
{
    // Numbers of the Internet Printing Protocol (RFC 8011).
    constexpr int Angenommen = 0x00ff; // and all below
    constexpr int NichtErlaubt = 0x0401, NichtAngemeldet = 0x0402, Verboten = 0x0403;
    constexpr int GibtEsNicht = 0x0406;
    constexpr int NichtErreichbar = 0x0502;
    constexpr int NimmtNichts = 0x0506;

    void *cups = dlopen("libcups.so.2", RTLD_NOW | RTLD_NOLOAD);
    if (cups == nullptr)
        return {};
    const auto zahl = reinterpret_cast<int (*)()>(dlsym(cups, "cupsLastError"));
    const auto text = reinterpret_cast<const char *(*)()>(dlsym(cups, "cupsLastErrorString"));
    if (zahl != nullptr)
        qCInfo(LogDruck) << "the printing system answers" << zahl();
    Antwort antwort;
    if (zahl != nullptr && text != nullptr && (zahl() < 0 || zahl() > Angenommen)) {
        antwort.angenommen = false;
        switch (zahl()) {
        case NichtErlaubt:
        case NichtAngemeldet:
        case Verboten:
            antwort.grund = u"Das Drucken ist dort nicht erlaubt."_s;
            break;
        case GibtEsNicht:
            antwort.grund = u"Diesen Drucker gibt es nicht mehr."_s;
            break;
        case NichtErreichbar:
            antwort.grund = u"Das Drucksystem ist nicht erreichbar."_s;
            break;
        case NimmtNichts:
            antwort.grund = u"Er ist angehalten und nimmt zurzeit keine Aufträge an."_s;
            break;
        default:
            antwort.grund = u"Das Drucksystem meldet: "_s + QString::fromUtf8(text()).trimmed();
        }
    }
    dlclose(cups);
    return antwort;
}

} // namespace

std::unique_ptr<QPrinter> Standarddrucker()
{
    QPrinterInfo info = QPrinterInfo::defaultPrinter();
    if (info.isNull())
        info = QPrinterInfo::availablePrinters().value(0);
    return info.isNull() ? nullptr : std::make_unique<QPrinter>(info, QPrinter::HighResolution);
}

Druckauftrag::Druckauftrag(QPrinter &drucker) : drucker_(drucker)
{
    Pruefen(maler_.begin(&drucker_));
}

void Druckauftrag::NeueSeite()
{
    Pruefen(drucker_.newPage());
}

void Druckauftrag::Abschicken()
{
    Pruefen(maler_.end());
    const bool nurAngesehen = drucker_.paintEngine()->type() == QPaintEngine::Picture;
    if (nurAngesehen || !drucker_.outputFileName().isEmpty())
        return; // a preview, or a file
    const Antwort antwort = AntwortDesDrucksystems();
    Pruefen(antwort.angenommen, antwort.grund);
}

void Druckauftrag::Pruefen(bool angenommen, const QString &grund) const
{
    if (angenommen)
        return;
    QString text = drucker_.printerName().isEmpty()
                       ? u"Der Drucker nimmt den Druckauftrag nicht an."_s
                       : u"Der Drucker „%1“ nimmt den Druckauftrag nicht an."_s.arg(drucker_.printerName());
    if (!grund.isEmpty())
        text += u' ' + grund;
    throw StoreError(DruckerFehler, text);
}

} // namespace paukfix
