// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
// Writes the cards of a deck as JSON: for scripts that look at many.
#include "Deckquelle.h"
#include "StoreError.h"

#include <QFile>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstdio>

using namespace paukfix;

int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    try {
        const auto quelle = DeckOeffnen(QGuiApplication::arguments().value(1));
        Deckbericht bericht;
        QJsonArray karten;
        for (Deckkarte karte; quelle->Naechste(karte, bericht);)
            karten.append(QJsonObject{{"frage", karte.frage.klar},
                                      {"antwort", karte.antworten.front().text.klar},
                                      {"thema", karte.stapel},
                                      {"fach", karte.fach}});
        const QByteArray text = QJsonDocument(karten).toJson();
        return std::fwrite(text.constData(), 1, static_cast<std::size_t>(text.size()), stdout) > 0 ? 0 : 1;
    } catch (const StoreError &fehler) {
        std::fprintf(stderr, "%s\n", qPrintable(fehler.Text()));
        return 1;
    }
}
