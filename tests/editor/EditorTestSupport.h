// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "KarteiOeffner.h"
#include "ResourceLimit.h"
#include "StoreTestSupport.h"
#include "TestDienste.h"

#include <QFile>
#include <QTest>

#include <memory>

namespace paukfix {

using namespace Qt::StringLiterals;

// An open card file in a directory of its own.
struct TestKartei
{
    explicit TestKartei(const QList<CardRecord> &cards)
    {
        store.KarteiPfad = directory.path();
        MakeCardFile(Path(), cards);
        Open();
    }

    QString Path() const { return directory.filePath(u"karten.pzb"_s); }

    void Open()
    {
        QString name = u"karten.pzb"_s;
        oeffner.OpenCardFile(name);
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
    CardStore store;
    KarteiOeffner oeffner{store, dienste.meldungen, dienste.clock};
};

} // namespace paukfix
