// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "VollePlatte.h"

#include <QList>

#include <map>
#include <random>

namespace paukfix {

// Watches the disk and keeps what it may hold when the power fails at some moment: of what was not synced
// yet, each piece of 512 bytes is there or not, in any order.
class Stromausfall final : public VollePlatte::Zeuge
{
public:
    // One disk after a power failure.
    struct Bild
    {
        int gemeldet = 0; // how much the program had reported as stored then
        std::map<QString, QByteArray> dateien{};
    };

    Stromausfall() { VollePlatte::SetZeuge(this); }

    Stromausfall(const Stromausfall &) = delete;
    Stromausfall &operator=(const Stromausfall &) = delete;

    ~Stromausfall() override { VollePlatte::SetZeuge(nullptr); }

    // The program has reported one more thing as stored.
    void Gemeldet();

    QList<Bild> bilder;

    void Geoeffnet(const QString &pfad, bool neu, const QByteArray &inhalt) override;
    void Geschrieben(const QString &pfad, qint64 stelle, const QByteArray &bytes) override;
    void Gekuerzt(const QString &pfad, qint64 laenge) override;
    void Gesichert(const QString &pfad) override;
    void Geloescht(const QString &pfad, bool sicher) override;

private:
    struct Aenderung
    {
        qint64 stelle = 0;
        QByteArray bytes{};
        bool kuerzen = false;
    };

    struct Datei
    {
        bool da = false;             // in the directory, for the engine
        bool eintrag = false;        // in the directory, on the disk
        bool geloeschtOffen = false; // deleted, and the deletion not synced
        QByteArray fest{};           // on the disk for sure
        QList<Aenderung> offen{};
    };

    // How much of what is open reaches the disk.
    enum class Rest
    {
        Nichts,
        Alles,
        Zufall,
    };
    void Aufnehmen();
    QByteArray Inhalt(const Datei &datei, Rest rest);
    static void Anwenden(QByteArray &inhalt, const Aenderung &aenderung);

    std::map<QString, Datei> dateien_;
    int gemeldet_ = 0;
    std::mt19937 zufall_{4711};
};

} // namespace paukfix
