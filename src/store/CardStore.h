// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardRecordset.h"
#include "Faecher.h"
#include "Fortschritt.h"
#include "Meldungen.h"
#include "Uhr.h"

#include <QDateTime>
#include <QString>

#include <array>
#include <functional>
#include <memory>

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

// Creates, opens, checks, repairs and closes card files and holds the one open card file with the state that
// all windows share.
class CardStore
{
public:
    CardStore(Meldungen &meldungen, const Uhr &uhr);
    CardStore(const CardStore &) = delete;
    CardStore &operator=(const CardStore &) = delete;
    ~CardStore();

    QString KarteiPfad;      // directory of the card files, without a separator at its end
    QString CurrentFileName; // name of the open card file, without directory
    QString ChosenFileName;  // what was picked in the last file chooser; empty when it was cancelled
    Faecher FachInfo;
    qint16 HighestCardNumber = 0;
    qint32 LoopsPerSecond = 0;
    qint32 LoopsLastSecond = 0; // what the last calibration alone counted: the machine's rate
    qint16 FehlerStatus = 1;    // above 0 while no usable card file is open
    // The session: what the counts were when it began, and the answers since.
    QDateTime Beginn;
    std::array<qint16, FachAnzahl> BegAnz{};
    qint16 RichtigZaehler = 0, FalschZaehler = 0; // both stop at 32,767
    // Working values of the main window that a reset of the box table sets.
    qint16 FlugLinks = 0, FlugOben = 0; // twips
    bool ErsterAufruf = true;
    // Gives what is told how far the check or the repair of a file has come, `was` by name, for as long as it
    // takes. What that throws ends it; the opening then fails with the text `abgebrochen` as StoreError 3059.
    std::function<Fortschritt(const QString &was, const QString &abgebrochen)> WartenZeigen =
        [](const QString &, const QString &) { return Fortschritt(); };
    // Redraws the box; called while a file is opened.
    std::function<void()> BoxZeichnen = [] {};

    // Replaces KarteiPfad/fileName by a new, empty card file and opens it. Nothing happens for an empty name.
    // Throws StoreError where the file cannot be made; what was open stays open then, but where it was to be
    // replaced itself and its place could not be taken.
    void CreateCardFile(QString &fileName);
    // Opens KarteiPfad/fileName, asking whether to convert one of the former database engine and whether to
    // repair a damaged one. On failure reports it, leaves no
    // file open and empties `fileName`: never pass CurrentFileName itself.
    void OpenCardFile(QString &fileName);
    // Errors are ignored; harmless when nothing is open.
    void CloseCardFile() noexcept;

    void ResetBoxTable();
    void StartSessionTally();
    // No session has begun: nothing is open that its counts could be compared with.
    void ClearSessionTally() noexcept;
    // Counts the clock readings of one second onto LoopsPerSecond (which stops at 2,147,483,647). Blocks for
    // one to two seconds.
    void CalibrateDelayLoop();
    // Waits about `ms` milliseconds by reading the clock LoopsPerSecond / 1000 * ms times.
    void DelayMilliseconds(qint16 ms) const;

    bool IsOpen() const { return static_cast<bool>(recordset_); }

    // The open cards and their handles; throw StoreError 91 when nothing is open.
    CardRecordset &Karten();
    CardFieldHandles &Felder();

    // KarteiPfad and `fileName` joined with the platform's separator.
    QString CardPath(const QString &fileName) const;

private:
    void OpenChecked(const QString &path);
    void Convert(const QString &path);
    void WalkCards();

    Meldungen &meldungen_;
    const Uhr &uhr_;
    std::unique_ptr<CardFile> file_;
    std::unique_ptr<CardRecordset> recordset_;
    CardFieldHandles felder_;
};
