// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "ApkgPaket.h"

#include "Deckquelle.h"
#include "PlainName.h"
#include "Protobuf.h"
#include "SafeFile.h"
#include "StoreError.h"
#include "Zstd.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 GroessteMedienliste = qint64{32} << 20;
constexpr qint64 ImmerErlaubt = qint64{64} << 20; // bytes that anything may unpack to
constexpr qint64 MeisteMale = 200;
constexpr int NeuesteFassung = 3;

[[noreturn]] void ThrowOhneSammlung()
{
    throw StoreError(Fehler::FormatUnbekannt,
                     u"In dem Paket ist keine Kartensammlung, die gelesen werden kann."_s);
}

} // namespace

ApkgPaket::ApkgPaket(const QString &pfad) : zip_(pfad)
{
    const int fassung = Fassung();
    if (fassung > NeuesteFassung)
        throw StoreError(
            Fehler::FormatUnbekannt,
            u"Das Paket hat ein neueres Format (%1), das noch nicht gelesen werden kann."_s.arg(fassung));
    gepackt_ = fassung == 3;
    const QString eintrag = fassung == 3   ? u"collection.anki21b"_s
                            : fassung == 2 ? u"collection.anki21"_s
                                           : u"collection.anki2"_s;
    // Old packages of the second layout do not say so.
    const bool zweite = fassung < 2 && zip_.Find(u"collection.anki21"_s);
    SammlungEntpacken(zweite ? u"collection.anki21"_s : eintrag);
    MedienLesen();
}

// 1 where nothing is said.
int ApkgPaket::Fassung() const
{
    const auto meta = zip_.Find(u"meta"_s);
    if (!meta)
        return zip_.Find(u"collection.anki21b"_s) ? 3 : 1;
    const QByteArray bytes = zip_.Read(*meta, 1000);
    ProtobufLeser leser(bytes);
    int fassung = 1;
    while (const auto feld = leser.Naechstes())
        if (feld->nummer == 1)
            fassung = static_cast<int>(std::min<std::uint64_t>(feld->zahl, 1'000'000));
    return fassung;
}

void ApkgPaket::SammlungEntpacken(const QString &eintrag)
{
    const auto platz = zip_.Find(eintrag);
    if (!platz)
        ThrowOhneSammlung();
    if (!sammlung_.open())
        throw StoreError(Fehler::GeraeteFehler,
                         u"Im Ordner für vorläufige Dateien kann nicht geschrieben werden: %1"_s.arg(
                             sammlung_.errorString()));
    const auto schreiben = [&](Bytes piece) {
        groesse_ += static_cast<qint64>(piece.size());
        const auto laenge = static_cast<qint64>(piece.size());
        if (sammlung_.write(reinterpret_cast<const char *>(piece.data()), laenge) != laenge)
            throw StoreError(Fehler::DatentraegerVoll,
                             u"Für das entpackte Paket ist kein Platz: %1"_s.arg(sammlung_.errorString()));
    };
    if (gepackt_) {
        const ZipReader::Entry &meins = zip_.Entries()[*platz];
        ZstdEntpacker entpacker(ImmerErlaubt + meins.unpacked * MeisteMale, schreiben);
        zip_.Unpack(*platz, [&](Bytes piece) { entpacker.Weiter(piece); });
        entpacker.Ende();
    } else {
        zip_.Unpack(*platz, schreiben);
    }
    if (!sammlung_.flush())
        throw StoreError(Fehler::DatentraegerVoll, u"Für das entpackte Paket ist kein Platz."_s);
}

void ApkgPaket::MedienLesen()
{
    const auto platz = zip_.Find(u"media"_s);
    if (!platz)
        return;
    medienlisteGut_ = false;
    try {
        QByteArray liste = zip_.Read(*platz, GroessteMedienliste);
        if (gepackt_) {
            liste = ZstdEntpacken(liste, GroessteMedienliste);
            ProtobufLeser leser(liste);
            for (int nummer = 0; const auto feld = leser.Naechstes(); ++nummer) {
                ProtobufLeser medium(feld->bytes);
                while (const auto teil = medium.Naechstes())
                    if (teil->nummer == 1)
                        Eintragen(QString::fromUtf8(teil->bytes), QString::number(nummer));
            }
            medienlisteGut_ = liste.isEmpty() || !medien_.isEmpty();
        } else {
            const QJsonDocument json = QJsonDocument::fromJson(liste);
            const QJsonObject eintraege = json.object();
            for (auto eintrag = eintraege.begin(); eintrag != eintraege.end(); ++eintrag)
                Eintragen(eintrag.value().toString(), eintrag.key());
            medienlisteGut_ = json.isObject();
        }
    } catch (const StoreError &) { // the cards come without them
    }
}

// What has no plain name is nobody's medium: it could lead elsewhere.
void ApkgPaket::Eintragen(const QString &name, const QString &eintrag)
{
    const QString eigentlich = name.normalized(QString::NormalizationForm_C);
    const auto platz = zip_.Find(eintrag);
    if (platz && IsPlainName(eigentlich))
        medien_.insert(eigentlich, *platz);
}

std::optional<QByteArray> ApkgPaket::Medium(const QString &name) const
{
    const auto gefunden = medien_.constFind(name);
    if (gefunden == medien_.constEnd())
        return std::nullopt;
    try {
        QByteArray inhalt = zip_.Read(*gefunden, GroesstesMedium);
        return gepackt_ ? ZstdEntpacken(inhalt, GroesstesMedium) : inhalt;
    } catch (const StoreError &) { // told as one that cannot be read
        return std::nullopt;
    }
}

} // namespace paukfix
