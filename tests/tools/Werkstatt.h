// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "SafeFile.h"
#include "StoreTestSupport.h"
#include "TestDienste.h"
#include "Werkbank.h"

#include <QDir>
#include <QFile>

#include <csignal>
#include <sys/resource.h>

// A directory of card files with an open one, for one test.
struct Werkstatt : TestDienste
{
    Werkstatt()
    {
        uhr.perSecond = 3; // each opening counts on
        store.KarteiPfad = verzeichnis.path();
    }

    QString Pfad(const QString &name) const { return verzeichnis.filePath(name); }

    // Makes a card file with these cards and opens it.
    void Oeffnen(const QList<CardRecord> &karten, const QString &name = QStringLiteral("offen.pzb"))
    {
        MakeCardFile(Pfad(name), karten);
        QString offen = name;
        store.OpenCardFile(offen);
    }

    // The cards of the open file, read after it was closed; it is opened again.
    QList<CardRecord> Karten()
    {
        QString name = store.CurrentFileName;
        store.CloseCardFile();
        const QList<CardRecord> karten = ReadCards(store.CardPath(name));
        store.OpenCardFile(name);
        return karten;
    }

    QByteArray Bytes(const QString &name) const
    {
        QFile datei(Pfad(name));
        return datei.open(QIODevice::ReadOnly) ? datei.readAll() : QByteArray("missing");
    }

    void Schreiben(const QString &name, const QByteArray &bytes) const { WriteFileSynced(Pfad(name), bytes); }

    // All files of the directory, hidden ones too.
    QStringList Dateien() const
    {
        return QDir(verzeichnis.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    // Counters, box and file say the same.
    bool ZaehlerStimmen()
    {
        const FachTabelle tabelle = store.FachInfo;
        const qint16 hoechste = store.HighestCardNumber;
        NeuOeffnen(bank);
        bool stimmt = store.IsOpen() && hoechste == store.HighestCardNumber;
        for (std::size_t i = 0; i < tabelle.size(); ++i)
            stimmt = stimmt && tabelle[i].Anzahl == store.FachInfo[i].Anzahl &&
                     tabelle[i].LfdMax == store.FachInfo[i].LfdMax;
        return stimmt;
    }

    QTemporaryDir verzeichnis;
    CardStore store{meldungen, uhr};
    Werkbank bank{store, meldungen};
};

// As long as it lives no file can be written beyond so many bytes.
class VollerDatentraeger
{
public:
    explicit VollerDatentraeger(qint64 bytes)
    {
        getrlimit(RLIMIT_FSIZE, &vorher_);
        rlimit grenze = vorher_;
        grenze.rlim_cur = static_cast<rlim_t>(bytes);
        setrlimit(RLIMIT_FSIZE, &grenze);
        signal_ = std::signal(SIGXFSZ, SIG_IGN);
    }

    VollerDatentraeger(const VollerDatentraeger &) = delete;
    VollerDatentraeger &operator=(const VollerDatentraeger &) = delete;

    ~VollerDatentraeger()
    {
        setrlimit(RLIMIT_FSIZE, &vorher_);
        std::signal(SIGXFSZ, signal_);
    }

private:
    rlimit vorher_{};
    void (*signal_)(int) = SIG_DFL;
};

// Where a tool says that a failure left nothing behind.
inline bool MeldetFehler(const TestMeldungen &meldungen)
{
    return meldungen.gezeigt.size() == 1 && meldungen.gezeigt.front().text.startsWith(
                                                QStringLiteral("Leider ist folgender Fehler Aufgetreten: "));
}
