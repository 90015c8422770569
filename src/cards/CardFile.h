// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QString>
#include <SQLiteCpp/Database.h>

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <sys/types.h>

namespace paukfix {

class CardSnapshot;

// The SQLite database behind one open card file. The file is somebody else's data: it is opened with the
// schema untrusted, triggers and views off, in defensive mode, and locked for this program alone.
class CardFile
{
public:
    enum class Access
    {
        Exclusive,
        ReadOnly
    };

    // Opens an existing card file and checks header, table and indexes. Throws StoreError:
    // 3024 not there, 76 directory not there or name too long, 3051 not writable (Exclusive) or not a regular
    // file, what stands beside it under the engine's names included, 3045 locked, 3049 damaged or no
    // database, 3343 a newer format or a table that computes; in a file without our mark 3078 no table
    // "Lernkarten" and 3015 an index missing. A file with our mark whose table or indexes are not just ours
    // is damaged.
    explicit CardFile(const QString &path, Access access = Access::Exclusive);
    // Opens a copy of the card file at `path` to be read, as if it were that file: what would change it is
    // refused with 3051, before anything is written.
    CardFile(const QString &path, std::unique_ptr<CardSnapshot> copy);
    CardFile(const CardFile &) = delete;
    CardFile &operator=(const CardFile &) = delete;
    // Leaves the journal of a file that has taken this one's place alone; that of a file that is gone goes,
    // unless it holds a change that a file which comes back would need.
    ~CardFile();

    // Makes a new card file with the table and both indexes and closes it. Nothing may stand at `path`. It is
    // not synced: that is up to what gives the file its place.
    static void Create(const QString &path);

    // For a file that nobody needs before it is whole and synced: its changes are not synced one by one, and
    // pages that were written do not stay in memory.
    static void WriteUnsynced(SQLite::Database &database);

    SQLite::Database &Database() { return database_; }

    const QString &Path() const { return path_; }

    // Is a copy open, to be looked at?
    bool IsSnapshot() const { return static_cast<bool>(copy_); }

    // Where what is open can be read: the file, or the copy of it.
    const QString &ReadablePath() const;

    // Called before the first write of each change, once it is known that there will be one: the file is
    // still as it was.
    std::function<void()> beforeChange = [] {};
    // Is it a file of ours from before the sums of pages, with nothing beside the cards in it? Then
    // GivePageSums can give it theirs. Throws StoreError.
    bool LacksPageSums();

    // Does the path still lead to the file that was opened?
    bool IsInPlace() const;

    // Has another program changed the file since its state was noted? What the engine knows of it by heart
    // does not hold then.
    bool IsChanged() const { return state_ && state_ != ReadState(); }

    // Throws StoreError 3024 when the path no longer leads to the file that was opened: what is committed
    // then would go into an unlinked file. Takes a lock that a network drive has lost anew; throws 3045 where
    // another program has the file by now.
    void CheckStillInPlace() const;

    // The same before the first write; throws 3051 for a copy, 3045 also where another program has changed
    // the file since the state was noted: the engine, relying on its lock, would not look. Calls beforeChange
    // then.
    void CheckUnchanged() const;

    // After each commit that was reported as done; after one that failed nothing is known.
    void NoteState();

    void ForgetState() { state_.reset(); }

    // What tells one state of the file from another one, and from any other file's.
    struct State
    {
        dev_t device = 0;
        ino_t inode = 0;
        off_t size = 0;
        std::array<std::uint8_t, 4> changes{}; // the header's count of them

        bool operator==(const State &) const = default;
    };

    // The state on the disk; nothing where it cannot be read or the file is not locked.
    std::optional<State> ReadState() const;

private:
    bool IsReplaced() const;

    QString path_;
    std::unique_ptr<CardSnapshot> copy_; // outlives the database
    SQLite::Database database_;
    int locked_ = -1; // the engine's descriptor of the file, where it is locked
    dev_t device_ = 0;
    ino_t inode_ = 0;
    std::optional<State> state_;
};

// For a file of somebody else: nothing in its schema runs, and no row is believed to be longer than 32 MB.
// Throws SQLite::Exception.
void Distrust(SQLite::Database &database);

// Throws StoreError 3024, 76, 3051 or 3049 (empty) where CardFile would not even look into the file at
// `path`.
void CheckAccess(const QString &path, CardFile::Access access);

// Throws StoreError 76 for a name so long that the journal's, the longest beside a card file, could not be.
void CheckNameLength(const QString &path);

// Throws StoreError 3045 or 3051 where a file stands at `path` that another program (or this one) has open as
// a card file, or that may not be written. Looks at nothing but the lock: what stands there is not touched.
void CheckReplaceable(const QString &path);

// Takes a change back that a program left off in the midst of, or carries it through where it was decided, in
// a database at `path`. Throws StoreError where that is impossible now (3045 in use, 61, 57, ...), nothing
// where there is nothing to do or the file is damaged so that it never can be done.
void EndUnfinishedChange(const QString &path);

// Translates the engine's error into the numbers and texts of the program, `path` named in the text.
[[noreturn]] void ThrowStoreError(const SQLite::Exception &error, const QString &path);

} // namespace paukfix
