// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "FileHandle.h"

#include <QByteArray>

#include <functional>
#include <memory>
#include <vector>

struct ZSTD_DCtx_s;

namespace paukfix {

// Unpacks zstd piece by piece, at most `limit` bytes. Throws StoreError 3049 for what is no zstd, 3051 for
// more than that.
class ZstdEntpacker
{
public:
    ZstdEntpacker(qint64 limit, std::function<void(Bytes piece)> take);

    void Weiter(Bytes gepackt);
    // Behind the last piece: whether all of it was there.
    void Ende() const;

private:
    struct Freigabe
    {
        void operator()(ZSTD_DCtx_s *context) const;
    };

    std::unique_ptr<ZSTD_DCtx_s, Freigabe> context_;
    qint64 frei_;
    std::function<void(Bytes piece)> take_;
    std::vector<std::uint8_t> puffer_;
    bool amEnde_ = false; // of a frame
};

QByteArray ZstdEntpacken(const QByteArray &gepackt, qint64 limit);

} // namespace paukfix
