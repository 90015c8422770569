// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Auspacken.h"
#include "FuzzSupport.h"
#include "StoreError.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

using namespace paukfix;
using namespace Qt::StringLiterals;

// Any file is unpacked or refused. What it writes lies in one directory beside it, flat, and is a card file
// and pictures and sounds; where it is refused there is nothing.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QDir innen(Directory().filePath(u"innen"_s));
    innen.mkpath(u"."_s);
    const QString paket = PutFile(u"innen/p.pzbz"_s, BytesOf(data, size));
    QString ordner;
    try {
        const QString kartei = Auspacken(paket).kartei;
        ordner = QFileInfo(kartei).path();
        Require(ordner == innen.filePath(u"p"_s) && QFileInfo(kartei).isFile());
    } catch (const StoreError &fehler) {
        Require(!fehler.Text().isEmpty());
    }
    QDirIterator alle(Directory().path(),
                      QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                      QDirIterator::Subdirectories);
    while (alle.hasNext()) {
        const QString eintrag = alle.next();
        Require(eintrag == innen.path() || eintrag == paket || eintrag == ordner ||
                (!ordner.isEmpty() && QFileInfo(eintrag).path() == ordner && QFileInfo(eintrag).isFile() &&
                 !QFileInfo(eintrag).isSymLink()));
    }
    if (!ordner.isEmpty())
        QDir(ordner).removeRecursively();
    return 0;
}
