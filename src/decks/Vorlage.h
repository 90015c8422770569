// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace paukfix {

// What a template is filled with.
struct Vorlagenwerte
{
    std::vector<QString> felder; // HTML, in the order of the note type's
    QString schlagwoerter, stapel, notiztyp, karte;
    int luecke = 1;       // the gap that a card with gaps asks, from 1
    bool antwort = false; // which side is filled
};

// One side of a card as its note type describes it, made ready for many notes: "{{Feld}}", sections
// "{{#Feld}}…{{/Feld}}" and "{{^Feld}}", filters "{{text:Feld}}", and the special fields. What a field holds
// is never taken for a template.
class Vorlage
{
public:
    // Nothing for a template that is broken or nested without end.
    static std::optional<Vorlage> Lesen(const QString &text, const QStringList &felder);

    enum class Ergebnis
    {
        Gut,
        OhneLuecke, // the gap that is asked is not in the text
        ZuGross
    };

    // Appends to `html`. `hinweise` gets the texts that are folded away.
    Ergebnis Fuellen(const Vorlagenwerte &werte, QString &html, QStringList &hinweise) const;

private:
    enum class Art
    {
        Text,
        Feld,
        Wenn,
        WennNicht,
        Ende
    };

    enum class Besonders
    {
        Keines,
        Schlagwoerter,
        Stapel,
        Unterstapel,
        Notiztyp,
        Karte,
        Vorderseite,
        Luecke // {{#c1}}
    };

    struct Schritt
    {
        Art art = Art::Text;
        QString text;
        int feld = -1;
        Besonders besonders = Besonders::Keines;
        int nummer = 0; // of a gap
        QStringList filter;
        std::size_t weiter = 0; // of a section: where it ends
    };

    static Schritt Bezug(const QString &name, const QStringList &felder);
    static QString Wert(const Schritt &schritt, const Vorlagenwerte &werte);
    static bool Leer(const Schritt &schritt, const Vorlagenwerte &werte);
    static Ergebnis Einsetzen(const Schritt &schritt, const Vorlagenwerte &werte, QString &html,
                              QStringList &hinweise);

    std::vector<Schritt> schritte_;
};

// More than this a side of a card does not need, in characters.
inline constexpr qsizetype GroessteSeite = 4'000'000;

// Whether a field counts as empty: only white space, <br> and <div>.
bool IstLeeresFeld(const QString &html);

// A text with gaps "{{c1::Text::Hinweis}}": where the gap `nummer` is asked it is left out, else shown. False
// where it is not there.
bool LueckenFuellen(const QString &html, int nummer, bool antwort, QString &fertig);

} // namespace paukfix
