// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "FileHandle.h"

#include <QByteArray>
#include <QHash>
#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

struct zip;

namespace paukfix {

// A zip file of somebody else, open for reading. Nothing in it is believed: names are texts and never paths,
// sizes are counted while unpacking, sums are compared. A file that would unpack to a multiple that nobody
// needs, has two entries of one name, or more entries than a deck can use, is refused when it is opened.
// Everything throws StoreError with a German sentence.
class ZipReader
{
public:
    struct Entry
    {
        QString name;                    // as stored
        qint64 packed = 0, unpacked = 0; // bytes, as the file says
        bool regular = true;             // neither a directory nor a link, and not encrypted
    };

    explicit ZipReader(const QString &path);
    ZipReader(const ZipReader &) = delete;
    ZipReader &operator=(const ZipReader &) = delete;
    ~ZipReader();

    const std::vector<Entry> &Entries() const { return entries_; }

    // The place of an entry among Entries().
    std::optional<std::size_t> Find(const QString &name) const;

    // Hands the content over piece by piece. When it returns, all of it was there and its sum was right; what
    // was handed over before an error is not to be used.
    void Unpack(std::size_t entry, const std::function<void(Bytes piece)> &take) const;

    // All of an entry of at most `limit` bytes.
    QByteArray Read(std::size_t entry, qint64 limit) const;

private:
    void Survey();

    struct Close
    {
        void operator()(zip *archive) const;
    };

    QString path_;
    std::unique_ptr<zip, Close> zip_;
    std::vector<Entry> entries_;
    QHash<QString, std::size_t> places_;
};

} // namespace paukfix
