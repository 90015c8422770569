// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Bild.h"
#include "BildPruefung.h"
#include "FuzzSupport.h"

#include <QBuffer>
#include <QImageReader>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

// What the toolkit makes of the file over pixels that were `before`.
QImage Decoded(QByteArray file, uint before)
{
    file.append(4, '\0');
    QBuffer buffer(&file);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, "bmp");
    const QSize size(reader.size().width(), std::abs(reader.size().height()));
    if (size.width() > 1000 || size.height() > 1000 || reader.imageFormat() == QImage::Format_Invalid)
        return {};
    QImage picture(size, reader.imageFormat());
    picture.fill(before);
    // Comparing indexed colours would look behind the end of a short table.
    return reader.read(&picture) ? picture.convertToFormat(QImage::Format_ARGB32) : QImage();
}

} // namespace

// Any file is a picture of bounded size, or is refused with a reason. A bitmap that is found whole fills all
// of the picture's memory; in one of runs some pixels may keep what they were.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString path = PutFile(u"bild"_s, BytesOf(data, size));
    for (const QSize place : {QSize(), QSize(300, 200)}) {
        try {
            const QImage picture = BildLesen(path, place);
            Require(!picture.isNull() && picture.width() <= 4096 && picture.height() <= 4096);
        } catch (const StoreError &error) {
            Require(!error.Text().isEmpty());
        }
    }
    const QByteArray file = BytesOf(data, size);
    if (file.startsWith("BM") && BmpVollstaendig(file)) {
        const char compression = file.size() > 30 ? file[30] : '\0';
        if (compression != 1 && compression != 2)
            Require(Decoded(file, 0) == Decoded(file, 1));
    }
    return 0;
}
