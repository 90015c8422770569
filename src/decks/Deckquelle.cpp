// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Deckquelle.h"

#include "ApkgQuelle.h"
#include "FileHandle.h"
#include "KvtmlQuelle.h"
#include "StoreError.h"

#include <QFileInfo>

#include <array>
#include <unistd.h>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

QByteArray Anfang(const QString &pfad)
{
    const FileHandle datei = OpenRegular(pfad);
    std::array<char, 4096> bytes{};
    const ssize_t gelesen = pread(datei.Get(), bytes.data(), bytes.size(), 0);
    return {bytes.data(), std::max<qsizetype>(0, gelesen)};
}

} // namespace

std::unique_ptr<Deckquelle> DeckOeffnen(const QString &pfad)
{
    const QByteArray anfang = Anfang(pfad);
    if (anfang.startsWith("PK"))
        return std::make_unique<ApkgQuelle>(pfad);
    if (IstKvtml(anfang))
        return std::make_unique<KvtmlQuelle>(pfad);
    throw StoreError(Fehler::FormatUnbekannt, u"Die Datei „%1“ ist weder ein Anki-Paket noch KVTML."_s.arg(
                                                  QFileInfo(pfad).fileName()));
}

bool IstDeckname(const QString &name)
{
    const QString endung = QFileInfo(name).suffix().toLower();
    return endung == u"apkg" || endung == u"colpkg" || endung == u"kvtml";
}

} // namespace paukfix
