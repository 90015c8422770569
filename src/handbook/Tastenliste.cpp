// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Tastenliste.h"

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

Tastengruppe Kasten()
{
    return {u"LBOX"_s,
            u"Im Kasten"_s,
            {{u"[Eingabe] · [Leertaste]"_s,
              u"weiter lernen: das vollste Fach abfragen; ohne Kartei eine öffnen"_s},
             {u"[1] bis [5]"_s, u"dieses Fach abfragen (auch ein Klick darauf)"_s},
             {u"[N]"_s, u"eine neue Karte abfragen (auch ein Klick auf Neu)"_s},
             {u"[W]"_s, u"würfeln, welches Fach an der Reihe ist (auch ein Klick auf den Würfel)"_s},
             {u"[Strg]+[N]"_s, u"eine neue Kartei anlegen"_s},
             {u"[Strg]+[O]"_s, u"eine Kartei öffnen"_s},
             {u"[Strg]+[L]"_s, u"eine Kartei desselben Ordners wählen"_s},
             {u"[Strg]+[Z]"_s, u"das Letzte zurücknehmen"_s},
             {u"[Strg]+[Y]"_s, u"das Zurückgenommene wiederholen"_s},
             {u"[Strg]+[Q]"_s, u"das Programm beenden"_s},
             {u"[Alt]+[D] · [Alt]+[U] · [Alt]+[N]"_s, u"Menü Datei, Automatik, ändern"_s},
             {u"[Alt]+[B] · [Alt]+[E] · [Alt]+[I]"_s, u"Menü Übersicht, Extras, Info"_s}}};
}

Tastengruppe Abfrage()
{
    return {u"PFUse"_s,
            u"In der Abfrage"_s,
            {{u"[Eingabe] · [Strg]+[P] · [Alt]+[P]"_s, u"die Antwort prüfen (Prüfen)"_s},
             {u"[Umschalt]+[Eingabe]"_s, u"eine neue Zeile in der Antwort"_s},
             {u"[1] bis [5]"_s, u"beim Ankreuzen: diese Antwort wählen oder abwählen"_s},
             {u"[Tab] · [Leertaste]"_s, u"beim Ankreuzen: zur nächsten Antwort, sie wählen"_s},
             {u"[Eingabe] · [Alt]+[W]"_s, u"nach dem Urteil: weiter (Weiter)"_s},
             {u"[Alt]+[R] · [Alt]+[F]"_s, u"das Urteil ändern: richtig, falsch"_s},
             {u"[←] · [→]"_s, u"das Urteil wählen, wo das Programm keines hat; [Eingabe] bestätigt"_s},
             {u"[F5]"_s, u"den Klang noch einmal abspielen (noch einmal)"_s},
             {u"[Alt]+[B]"_s, u"diese Karte bearbeiten (Karte bearbeiten)"_s},
             {u"[Alt]+[L]"_s, u"diese Karte löschen (Karte löschen)"_s},
             {u"[Esc]"_s, u"ohne Antwort zurück; nach dem Urteil gilt es"_s}}};
}

Tastengruppe Editor()
{
    return {u"PFÄndern"_s,
            u"Beim Bearbeiten der Karten"_s,
            {{u"[Strg]+[I] · [Alt]+[H]"_s, u"die Karte speichern und eine neue beginnen (hinzufügen)"_s},
             {u"[Strg]+[<] · [Strg]+[>]"_s, u"die Karte davor, die Karte danach (<, >)"_s},
             {u"[Leertaste]"_s, u"auf << und >> gehalten: durch die Karten laufen"_s},
             {u"[F3]"_s, u"suchen"_s},
             {u"[F6]"_s, u"in die Symbolleiste: [←] [→] wählen, [Leertaste] drückt, [Esc] zurück"_s},
             {u"[Strg]+[F] · [Strg]+[K] · [Strg]+[U]"_s, u"fett, kursiv, unterstrichen"_s},
             {u"[Strg]+[H] · [Strg]+[N] · [Strg]+[T]"_s, u"hochgestellt, normal, tiefgestellt"_s},
             {u"[Strg]+[M]"_s, u"zurück zur Standardschrift"_s},
             {u"[Strg]+[Z] · [Strg]+[Y]"_s, u"im Text: zurücknehmen, wiederholen"_s},
             {u"[Alt]+[N]"_s, u"Frage Nr.; mit [Eingabe] zu dieser Karte, [Esc] lässt es"_s},
             {u"[Alt]+[T] · [Alt]+[F] · [Alt]+[A]"_s, u"Thema, Frage, Antwort"_s},
             {u"[Alt]+[Z] · [Alt]+[K]"_s, u"Antwort als Text oder Zahl, zum Ankreuzen"_s},
             {u"[←] [→] [↑] [↓]"_s, u"auf dem Bild: verschieben; mit [Umschalt] die Größe ändern"_s},
             {u"[Alt]+[O] · [Alt]+[X]"_s, u"Menü Format, Extras"_s},
             {u"[Alt]+[R]"_s, u"zurück zum Kasten (Zurück)"_s}}};
}

Tastengruppe Uebersicht()
{
    return {u"Uebersicht"_s,
            u"In der Übersicht"_s,
            {{u"[Eingabe]"_s, u"die Karte bearbeiten (auch ein Doppelklick)"_s},
             {u"[A] bis [Z], [0] bis [9]"_s, u"tippen: nur Karten zeigen, in denen das steht"_s},
             {u"[F3]"_s, u"die nächste der gezeigten Karten"_s},
             {u"[Strg]+[1] bis [Strg]+[6]"_s, u"nach dieser Spalte ordnen (auch ein Klick auf ihren Kopf)"_s},
             {u"[Umschalt]+[↓] · [Strg]+[A]"_s, u"mehrere Karten wählen, alle wählen"_s},
             {u"[Alt]+[V] · [Alt]+[B]"_s, u"die Nummern Von und Bis; leer: die gewählten Karten"_s},
             {u"[Alt]+[D] · [Alt]+[C]"_s, u"drucken (Drucken), die Seiten vorher ansehen (Vorschau)"_s},
             {u"[Alt]+[S]"_s, u"in die Suche; [Esc] leert sie"_s},
             {u"[Esc] · [Alt]+[Z]"_s, u"zurück zum Kasten (Zurück)"_s}}};
}

Tastengruppe Handbuch()
{
    return {u"Handbuch"_s,
            u"Im Handbuch"_s,
            {{u"[↑] · [↓]"_s, u"im Inhalt: die Seite davor, danach; im Text: rollen"_s},
             {u"[Tab] · [Eingabe]"_s, u"im Text: zum nächsten Verweis, ihm folgen"_s},
             {u"[Alt]+[←] · [Alt]+[→]"_s, u"zurück zur Seite, von der man kam, und wieder vor"_s},
             {u"[Alt]+[I]"_s, u"in den Inhalt (Inhalt)"_s},
             {u"[Strg]+[F] · [Alt]+[S]"_s, u"ein Wort suchen (Suchen)"_s},
             {u"[Eingabe] · [F3]"_s, u"nach dem Tippen: die nächste Stelle, auch auf anderen Seiten"_s},
             {u"[Umschalt]+[F3]"_s, u"die Stelle davor"_s},
             {u"[Esc] · [Alt]+[C]"_s, u"zurück zum Programm (Schließen)"_s}}};
}

Tastengruppe Ueberall()
{
    return {QString(),
            u"In allen Fenstern"_s,
            {{u"[Tab] · [Umschalt]+[Tab]"_s, u"zum nächsten Feld oder Knopf, zum vorigen"_s},
             {u"[Leertaste]"_s, u"den Knopf drücken, auf dem der Rahmen steht"_s},
             {u"[Alt]+Buchstabe"_s, u"was diesen Buchstaben unterstrichen hat"_s},
             {u"[Eingabe]"_s, u"was der gelbe Knopf tut; in Texten eine neue Zeile"_s},
             {u"[Esc]"_s, u"ein Fenster schließen, ohne etwas zu tun; Kasten und Editor bleiben offen"_s},
             {u"[F1]"_s, u"das Handbuch, auf der Seite dieses Fensters"_s}}};
}

} // namespace

QList<Tastengruppe> AlleTasten()
{
    return {Kasten(), Abfrage(), Editor(), Uebersicht(), Handbuch(), Ueberall()};
}

} // namespace paukfix
