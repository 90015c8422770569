// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Progress.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <vector>

struct zip;
struct zip_source;

namespace paukfix {

// A zip file that is made: entries are named first, everything is written by Finish(). Without that, nothing
// is left behind. Everything throws StoreError.
class ZipWriter
{
public:
    enum class Packing
    {
        Deflate,
        Store // what is packed already
    };

    // Nothing may stand at `path`.
    explicit ZipWriter(const QString &path);
    ZipWriter(const ZipWriter &) = delete;
    ZipWriter &operator=(const ZipWriter &) = delete;
    ~ZipWriter();

    void Add(const QString &name, const QByteArray &content, Packing packing = Packing::Deflate);
    // The file is read by Finish().
    void AddFile(const QString &name, const QString &path, Packing packing = Packing::Deflate);

    // Not synced. What `progress` (in thousandths) throws ends the writing.
    void Finish(const Progress &progress = {});

private:
    void AddSource(const QString &name, zip_source *source, Packing packing);

    struct Close
    {
        void operator()(zip *archive) const;
    };

    QString path_;
    std::vector<QByteArray> contents_; // what is added, read by Finish()
    std::unique_ptr<zip, Close> zip_;
};

} // namespace paukfix
