// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <cstdint>
#include <optional>

namespace paukfix {

// Walks the fields of a message in the protocol buffers' wire format
// (https://protobuf.dev/programming-guides/encoding/).
class ProtobufLeser
{
public:
    explicit ProtobufLeser(QByteArrayView nachricht) : rest_(nachricht) {}

    struct Feld
    {
        std::uint32_t nummer = 0;
        std::uint64_t zahl = 0; // of a number
        QByteArrayView bytes;   // of a text or a message
    };

    // The next field; nothing at the end, or where what follows is no message.
    std::optional<Feld> Naechstes()
    {
        const auto schluessel = Zahl();
        if (!schluessel)
            return std::nullopt;
        Feld feld;
        feld.nummer = static_cast<std::uint32_t>(*schluessel >> 3U);
        switch (*schluessel & 7U) {
        case 0:
            if (const auto zahl = Zahl()) {
                feld.zahl = *zahl;
                return feld;
            }
            return std::nullopt;
        case 1:
            return Bytes(feld, 8);
        case 2:
            if (const auto laenge = Zahl())
                return Bytes(feld, *laenge);
            return std::nullopt;
        case 5:
            return Bytes(feld, 4);
        default:
            rest_ = {};
            return std::nullopt;
        }
    }

private:
    std::optional<std::uint64_t> Zahl()
    {
        std::uint64_t zahl = 0;
        for (unsigned i = 0; i < 10 && !rest_.isEmpty(); ++i) {
            const auto byte = static_cast<std::uint8_t>(rest_.front());
            rest_ = rest_.sliced(1);
            zahl |= static_cast<std::uint64_t>(byte & 0x7fU) << (7 * i);
            if ((byte & 0x80U) == 0)
                return zahl;
        }
        rest_ = {};
        return std::nullopt;
    }

    std::optional<Feld> Bytes(Feld feld, std::uint64_t laenge)
    {
        if (laenge > static_cast<std::uint64_t>(rest_.size())) {
            rest_ = {};
            return std::nullopt;
        }
        feld.bytes = rest_.first(static_cast<qsizetype>(laenge));
        rest_ = rest_.sliced(static_cast<qsizetype>(laenge));
        return feld;
    }

    QByteArrayView rest_;
};

} // namespace paukfix
