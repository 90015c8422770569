// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Hand.h"
#include "KarteiOeffner.h"
#include "ResourceLimit.h"
#include "SafeFile.h"
#include "StoreTestSupport.h"
#include "TestDienste.h"
#include "Werkbank.h"

#include <QDir>
#include <QFile>

namespace paukfix {

using namespace Qt::StringLiterals;

// A directory of card files with an open one, for one test.
struct Werkstatt : TestDienste
{
    Werkstatt()
    {
        clock.perSecond = 3; // each opening counts on
        store.KarteiPfad = verzeichnis.path();
    }

    QString Pfad(const QString &name) const { return verzeichnis.filePath(name); }

    // Makes a card file with these cards and opens it.
    void Oeffnen(const QList<CardRecord> &karten, const QString &name = u"offen.pzb"_s)
    {
        MakeCardFile(Pfad(name), karten);
        QString offen = name;
        oeffner.OpenCardFile(offen);
    }

    // The cards of the open file, read after it was closed; it is opened again.
    QList<CardRecord> Karten()
    {
        QString name = store.CurrentFileName;
        store.CloseCardFile();
        const QList<CardRecord> karten = ReadCards(store.CardPath(name));
        oeffner.OpenCardFile(name);
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
    CardStore store;
    KarteiOeffner oeffner{store, meldungen, clock};
    Werkbank bank{store, oeffner, meldungen};
};

// Where a tool says that a failure left nothing behind.
inline bool MeldetFehler(const TestMeldungen &meldungen)
{
    return meldungen.gezeigt.size() == 1 &&
           meldungen.gezeigt.front().text.startsWith(u"Leider ist folgender Fehler Aufgetreten: "_s);
}

// Every control that takes the keyboard has a name and an accessible name.
inline void CheckNames(const QWidget &window)
{
    QVERIFY(!window.objectName().isEmpty());
    for (const QWidget *widget : window.findChildren<QWidget *>()) {
        bool inner = widget->objectName().startsWith("qt_");
        for (const QWidget *owner = widget->parentWidget(); owner && owner != &window;
             owner = owner->parentWidget())
            inner = inner || owner->inherits("QComboBox") || owner->inherits("QAbstractItemView");
        if (inner || widget->focusPolicy() == Qt::NoFocus)
            continue;
        QVERIFY2(!widget->objectName().isEmpty(), widget->metaObject()->className());
        QVERIFY2(!widget->accessibleName().isEmpty(), qPrintable(widget->objectName()));
    }
}

} // namespace paukfix
