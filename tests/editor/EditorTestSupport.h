// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardStore.h"
#include "StoreTestSupport.h"
#include "TestDienste.h"

#include <QFile>
#include <QTest>

#include <csignal>
#include <memory>
#include <sys/resource.h>

// An open card file in a directory of its own.
struct TestKartei
{
    explicit TestKartei(const QList<CardRecord> &cards)
    {
        store.KarteiPfad = directory.path();
        MakeCardFile(Path(), cards);
        Open();
    }

    QString Path() const { return directory.filePath(QStringLiteral("karten.pzb")); }

    void Open()
    {
        QString name = QStringLiteral("karten.pzb");
        store.OpenCardFile(name);
        QVERIFY(!name.isEmpty());
    }

    // All cards as they are on the disk; ends the store's hold on the file.
    QList<CardRecord> Stored()
    {
        store.CloseCardFile();
        return ReadCards(Path());
    }

    QTemporaryDir directory;
    TestDienste dienste;
    TestMeldungen &messages = dienste.meldungen;
    CardStore store{dienste.meldungen, dienste.uhr};
};

// While it lives, no file of the process grows beyond `bytes`: writing fails as on a full disk.
class FullDisk
{
public:
    explicit FullDisk(rlim_t bytes) : signal_(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{bytes, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }

    FullDisk(const FullDisk &) = delete;
    FullDisk &operator=(const FullDisk &) = delete;

    ~FullDisk()
    {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, signal_);
    }

private:
    rlimit before_{};
    void (*signal_)(int);
};
