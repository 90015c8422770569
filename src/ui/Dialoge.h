// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QColor>
#include <QFont>
#include <QString>
#include <QStringList>

#include <optional>

namespace paukfix {

// What a file dialog is asked with. The filter is a list of names and patterns in turn, parted by "|":
// "Bitmaps (*.bmp)|*.bmp|JPEG (*.jpg)|*.jpg".
struct DateiDialog
{
    QString titel;
    QString filter;
    QString weitere = {};             // further types, behind those of the filter
    QString alle = {};                // of types: the list begins with all of them under this name,
                                      // and goes on from the last to the first
    QString verzeichnis = {};         // where the dialog starts
    QString endung = {};              // without the dot; joined to a name that is typed without one
    QString vorgabe = {};             // file name that is offered
    bool ueberschreibenFragen = true; // saving: ask before an existing file is named
};

// A dialog for card files.
DateiDialog KarteiDialog(const QString &titel, const QString &verzeichnis);

struct Schriftwahl
{
    QFont font;
    QColor farbe;
};

// The file and font dialogs, passed in so that a test can answer them.
class Dialoge
{
public:
    Dialoge() = default;
    Dialoge(const Dialoge &) = delete;
    Dialoge &operator=(const Dialoge &) = delete;
    virtual ~Dialoge() = default;

    // The path of an existing file, or of a file to be written; empty when the dialog is cancelled.
    virtual QString DateiOeffnen(const DateiDialog &dialog) = 0;
    virtual QString DateiSpeichern(const DateiDialog &dialog) = 0;
    // The font and colour chosen, starting from `vorgabe`; nothing when the dialog is cancelled.
    virtual std::optional<Schriftwahl> SchriftWaehlen(const Schriftwahl &vorgabe) = 0;
};

class DialogeFenster final : public Dialoge
{
public:
    QString DateiOeffnen(const DateiDialog &dialog) override;
    QString DateiSpeichern(const DateiDialog &dialog) override;
    std::optional<Schriftwahl> SchriftWaehlen(const Schriftwahl &vorgabe) override;
};

// The filter in the toolkit's notation: "Bitmaps (*.bmp);;JPEG (*.jpg)".
QString ToolkitFilter(const QString &filter);

// The types that the dialog lists, in that notation.
QStringList Dateitypen(const DateiDialog &dialog);

} // namespace paukfix
