// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Zstd.h"

#include "StoreError.h"

#include <new>
#include <utility>
#include <zstd.h>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// What a frame may want of memory: 2^26 bytes. The highest usual level wants 2^23.
constexpr int GroesstesFenster = 26;

[[noreturn]] void ThrowKeinZstd()
{
    throw StoreError(Fehler::Beschaedigt,
                     u"Ein Teil des Pakets ist beschädigt und lässt sich nicht entpacken."_s);
}

} // namespace

void ZstdEntpacker::Freigabe::operator()(ZSTD_DCtx_s *context) const
{
    ZSTD_freeDCtx(context);
}

ZstdEntpacker::ZstdEntpacker(qint64 limit, std::function<void(Bytes piece)> take)
    : context_(ZSTD_createDCtx()), frei_(limit), take_(std::move(take)), puffer_(ZSTD_DStreamOutSize())
{
    if (!context_)
        throw std::bad_alloc();
    ZSTD_DCtx_setParameter(context_.get(), ZSTD_d_windowLogMax, GroesstesFenster);
}

void ZstdEntpacker::Weiter(Bytes gepackt)
{
    ZSTD_inBuffer ein{gepackt.data(), gepackt.size(), 0};
    for (;;) {
        ZSTD_outBuffer aus{puffer_.data(), puffer_.size(), 0};
        const std::size_t rest = ZSTD_decompressStream(context_.get(), &aus, &ein);
        if (ZSTD_isError(rest) != 0)
            ThrowKeinZstd();
        frei_ -= static_cast<qint64>(aus.pos);
        if (frei_ < 0)
            throw StoreError(Fehler::NichtErlaubt,
                             u"Das Paket würde sich auf ein Vielfaches seiner Größe entpacken und "
                             u"wird darum nicht gelesen."_s);
        if (aus.pos > 0)
            take_({puffer_.data(), aus.pos});
        amEnde_ = rest == 0;
        if (ein.pos == ein.size && aus.pos < aus.size)
            return;
    }
}

void ZstdEntpacker::Ende() const
{
    if (!amEnde_)
        ThrowKeinZstd();
}

QByteArray ZstdEntpacken(const QByteArray &gepackt, qint64 limit)
{
    QByteArray inhalt;
    ZstdEntpacker entpacker(limit, [&](Bytes piece) {
        inhalt.append(reinterpret_cast<const char *>(piece.data()), static_cast<qsizetype>(piece.size()));
    });
    entpacker.Weiter({reinterpret_cast<const std::uint8_t *>(gepackt.constData()),
                      static_cast<std::size_t>(gepackt.size())});
    entpacker.Ende();
    return inhalt;
}

} // namespace paukfix
