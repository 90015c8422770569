// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QByteArray>
#include <QFile>
#include <QList>
#include <QRandomGenerator>
#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

#include <array>
#include <optional>

namespace paukfix {

// Texts as other word processors leave them in a card file, and a card file's bytes past our own store.

namespace Fremdtexte {

using Text = std::optional<QByteArray>; // nothing: null

// Each shows some text and holds what our rich text cannot.
inline QList<QByteArray> MitVerlust()
{
    return {
        // an office program, with a picture in both of its forms
        R"({\rtf1\adeflang1025\ansi\ansicpg1252\uc1\adeff31507\deff0\stshfdbch31505{\fonttbl{\f0\fbidi \froman)"
        R"(\fcharset0\fprq2{\*\panose 02020603050405020304}Times New Roman;}}{\colortbl;\red0\green0\blue0;})"
        R"({\*\defchp \fs22\lang1031 }{\*\defpap \ql \li0\sa160\sl259\slmult1 }\noqfpromote {\stylesheet{\ql )"
        R"(\snext0 Normal;}{\*\cs10 \additive Default;}}{\*\rsidtbl \rsid1}{\info{\author A}{\operator B}})"
        R"({\*\xmlnstbl {\xmlns1 http://x}}\paperw11906\pard\plain \ltrpar\ql\sa160\sl259\slmult1 )"
        R"({\rtlch\fcs1 \af0 \ltrch\fcs0 \insrsid1 Wo ist das?}{\*\shppict{\pict{\*\picprop\shplid1025{\sp{\sn )"
        R"(shapeType}{\sv 75}}}\picscalex100\pngblip\bliptag1 89504e470d0a}}{\nonshppict{\pict\wmetafile8 01}})"
        R"(\par }{\*\themedata 504b0304}{\*\latentstyles\lsdstimax1})",
        // another one, with a table, a highlight and a footnote
        R"({\rtf1\ansi\deff3\adeflang1025{\fonttbl{\f0\froman\fprq2\fcharset0 Times New Roman;}{\f3\froman)"
        R"(\fprq2\fcharset0 Liberation Serif{\*\falt Times New Roman};}}{\colortbl;\red0\green0\blue0;\red255)"
        R"(\green255\blue0;}{\stylesheet{\s0\snext0\nowidctlpar Standard;}}{\*\generator Office/7.4}{\info})"
        R"(\deftab709\viewscale100{\*\pgdsctbl{\pgdsc0\pgdscuse451 Standard;}}\formshade\sectd\pard\plain )"
        R"(\s0{\highlight2 Was}{\rtlch \ltrch\loch bedeutet {\super\chftn{\*\footnote\chftn\pard 1848}}?})"
        "\r\n"
        R"(\par\trowd\trql\cellx4819\cellx9638\pard\intbl a\cell b\cell\row\pard\par })",
        // the accessory of the desktop, with an object
        "{\\rtf1\\ansi\\ansicpg1252\\deff0\\nouicompat\\deflang1031{\\fonttbl{\\f0\\fnil\\fcharset0 "
        "Calibri;}}\r\n"
        "{\\*\\generator Riched20 10.0.19041}\\viewkind4\\uc1 "
        "\r\n\\pard\\sa200\\sl276\\slmult1\\f0\\fs22\\lang7 "
        "Bild: {\\object\\objemb{\\*\\objclass Paint.Picture}\\objw10\\objh10{\\*\\objdata \r\n01050000\r\n}"
        "{\\result{\\pict\\wmetafile8 0100}}}\\par\r\n}\r\n",
        // of the other world
        R"({\rtf1\ansi\ansicpg1252\cocoartf2639{\fonttbl\f0\fswiss\fcharset0 Helvetica;}{\colortbl;\red255)"
        R"(\green255\blue255;}{\*\expandedcolortbl;;}\pard\tx566\pardirnatural\partightenfactor0)"
        "\n"
        R"(\f0\fs24 \cf0 Eins\cb1 zwei{{\NeXTGraphic a.tiff \width100 \height100}}})",
        // hidden text, a field, an index entry and a destination of tomorrow
        R"({\rtf1\ansi{\fonttbl{\f0 Arial;}}\f0 Siehe {\field{\*\fldinst HYPERLINK "http://a/"}{\fldrslt hier}})"
        R"(\v geheim\v0 {\xe x}{\*\morgen 1}\par})",
        // a picture alone
        R"({\rtf1\ansi{\pict\wmetafile8\picw100\pich100 010009000003}\par})",
    };
}

// Formatted or not, whole or broken: the box shows all that they hold.
inline QList<QByteArray> OhneVerlust()
{
    return {
        "Was ist das?",
        " Zeile 1\nZeile 2\r\rmit\tTab \r\n",
        "{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0\\fnil\\fcharset0 MS Sans Serif;}{\\f1\\fnil MS Sans Serif;}}\r\n"
        "{\\colortbl ;\\red0\\green0\\blue0;}\r\n\\viewkind4\\uc1\\pard\\lang1031\\f0\\fs17 "
        "Frage\\f1\\par\r\n}\r\n",
        "  \r\n{\\rtf1\\mac\\b gr\\'9f\\'a7\\b0 e\\par\\par\\par}",
        "{\\rtf1 offen {\\i ohne Ende",
        "{\\rtf1\\ansi zu}}}}{\\b viel}",
        "{\\rtf1 \\u8364?\\u-3913?\\u55357?\\u56832? \\'c4}",
        "\xEF\xBB\xBF\xC3\x9Cmlaut",
        "nicht \xFF\xC3 UTF-8",
        QByteArray("mit\0NUL", 7),
        "{\\rtf1 a\\super 2\\nosupersub \\up6 b\\up0\\cf7\\f9\\fs1638 c}",
        "{\\rtf1\\ansi 007}",
        "007",
    };
}

inline QByteArray Zufaellig(QRandomGenerator &zufall)
{
    static const QList<QByteArray> stuecke{
        "{",        "}",         "\\b ",      "\\i0 ",    "\\par\r\n",    "\\pard\\qc ", "\\'e4",
        "\\u228?",  "Wort ",     "\xC3\xA4",  "\xE4",     "\\tab ",       "\\line ",     "\\fs40 ",
        "\\cf1 ",   "\\uc0 ",    "\\plain ",  "\\zzz-5 ", "\\~",          "\\*",         "\\ul ",
        "\\v ",     "\\v0 ",     "{\\*\\xy ", "{\\pict ", "{\\footnote ", "\\cell ",     "\\highlight3 ",
        "\\bin2 }", "\\strike ", "\n",        "x",        "\\field",      "\\\\",        "\\page "};
    QByteArray text = "{\\rtf1\\ansi Wort ";
    for (quint32 i = zufall.bounded(40U); i > 0; --i)
        text += stuecke[zufall.bounded(static_cast<int>(stuecke.size()))];
    return text + (zufall.bounded(2) != 0 ? "}" : "");
}

inline Text Irgendeiner(QRandomGenerator &zufall)
{
    const auto aus = [&](const QList<QByteArray> &texte) {
        return texte[zufall.bounded(static_cast<int>(texte.size()))];
    };
    switch (zufall.bounded(6)) {
    case 0:
        return std::nullopt;
    case 1:
        return QByteArray();
    case 2:
        return aus(MitVerlust());
    case 3:
        return aus(OhneVerlust());
    default:
        return Zufaellig(zufall);
    }
}

inline const std::array<const char *, 12> &Textfelder()
{
    static const std::array<const char *, 12> felder{"Frage",
                                                     "Frage_Klartext",
                                                     "Antwort_1",
                                                     "Antwort_2",
                                                     "Antwort_3",
                                                     "Antwort_4",
                                                     "Antwort_5",
                                                     "Antwort_1_Klartext",
                                                     "Antwort_2_Klartext",
                                                     "Antwort_3_Klartext",
                                                     "Antwort_4_Klartext",
                                                     "Antwort_5_Klartext"};
    return felder;
}

// Into a card file that nobody has open.
inline void Schreiben(const QString &pfad, int frageNr, const char *feld, const Text &text)
{
    SQLite::Database datei(QFile::encodeName(pfad).toStdString(), SQLite::OPEN_READWRITE);
    datei.exec("PRAGMA synchronous=OFF; PRAGMA journal_mode=MEMORY");
    SQLite::Statement befehl(datei, std::string("UPDATE Lernkarten SET ") + feld + "=? WHERE FrageNr=?");
    if (text)
        befehl.bind(1, text->toStdString());
    befehl.bind(2, frageNr);
    befehl.exec();
}

// A field of every card, by FrageNr, as type and bytes.
inline QList<QByteArray> Lesen(const QString &pfad, const char *feld)
{
    SQLite::Database datei(QFile::encodeName(pfad).toStdString(), SQLite::OPEN_READONLY);
    SQLite::Statement lesen(datei, std::string("SELECT typeof(") + feld + ")||':'||hex(CAST(" + feld +
                                       " AS BLOB)) FROM Lernkarten ORDER BY FrageNr");
    QList<QByteArray> werte;
    while (lesen.executeStep())
        werte << QByteArray(lesen.getColumn(0).getText());
    return werte;
}

} // namespace Fremdtexte

} // namespace paukfix
