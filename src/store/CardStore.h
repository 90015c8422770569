// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardRecordset.h"
#include "Faecher.h"
#include "Schritte.h"
#include "Sitzung.h"

#include <QString>

#include <array>
#include <functional>
#include <memory>

namespace paukfix {

class CardFile;

// The field handles that the program reads and writes, bound once when a card file is opened. Array members
// run from slot or answer 1.
struct CardFieldHandles
{
    Field FrageNr, FachNr, FachLfdNr, Antworttyp;
    std::array<Field, 9> Picture_name; // [8] is the topic
    Field PictureTop, PictureLeft, PictureHeight, PictureWidth;
    Field Frage, Frage_Klartext;
    std::array<Field, 5> Antwort, Antwort_ch, Antwort_Klartext;
};

// The one open card file with what all windows share. It is open, with file, cards and handles, or it is not:
// then its counts and its session are empty. `Oeffnen` (Oeffnung.h) opens one.
class CardStore
{
public:
    CardStore();
    CardStore(const CardStore &) = delete;
    CardStore &operator=(const CardStore &) = delete;
    ~CardStore();

    QString KarteiPfad;      // directory of the card files, without a separator at its end
    QString CurrentFileName; // name of the card file that was opened last, without directory
    QString ChosenFileName;  // what was picked in the last file chooser; empty when it was cancelled
    Faecher FachInfo;
    Sitzung sitzung;
    // Called before the first write of each change of the open file.
    std::function<void()> VorAenderung = [] {};
    Schritte schritte{*this};
    qint16 HighestCardNumber = 0;
    qint16 FehlerStatus = 1; // above 0 while no usable card file is open

    // Takes a card file and binds its cards and handles; nothing is counted yet. Throws StoreError where it
    // lacks one of the fields; nothing is open then.
    void Uebernehmen(std::unique_ptr<CardFile> datei);
    // The same for a file that is just being made: what changes in it can never be taken back.
    void ZumFuellen(std::unique_ptr<CardFile> datei);
    // Goes on in another file, or in the same one opened anew: the cards are counted, the session and the
    // order of the cards stay. `dieselben`: it holds the same cards row by row, so the steps stay, too.
    // `bisher` may be this one's own. Throws StoreError; what is open stays open then.
    void Fortsetzen(std::unique_ptr<CardFile> datei, const Sitzung &bisher, bool dieselben);
    // Errors are ignored; harmless when nothing is open.
    void CloseCardFile() noexcept;

    bool IsOpen() const { return static_cast<bool>(offen_); }

    // Whether what is open is a copy to be looked at: nothing in it can be changed.
    bool NurAnsehen() const;

    // The path of the open file; empty when nothing is open.
    QString OffenerPfad() const;

    // The open file, its cards and their handles; throw StoreError 91 when nothing is open.
    CardFile &Datei();
    CardRecordset &Karten();
    CardFieldHandles &Felder();

    // KarteiPfad and `fileName` joined with the platform's separator.
    QString CardPath(const QString &fileName) const;

private:
    struct Offen;

    Offen &Offene();
    void Nehmen(std::unique_ptr<Offen> neue);

    std::unique_ptr<Offen> offen_;
};

} // namespace paukfix
