// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Bild.h"
#include "FuzzSupport.h"

// Any file is a picture of bounded size, or is refused with a reason.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString path = PutFile(QStringLiteral("bild"), BytesOf(data, size));
    for (const QSize place : {QSize(), QSize(300, 200)}) {
        try {
            const QImage picture = BildLesen(path, place);
            Require(!picture.isNull() && picture.width() <= 4096 && picture.height() <= 4096);
        } catch (const StoreError &error) {
            Require(!error.Text().isEmpty());
        }
    }
    return 0;
}
