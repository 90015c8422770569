// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "AppConfig.h"
#include "KarteiOeffner.h"
#include "PFUse.h"
#include "StoreTestSupport.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTextEdit>
#include <QTimer>
#include <QWindow>
#include <SQLiteCpp/Database.h>

#include <deque>
#include <functional>
#include <memory>

// Asks cards of a real card file in the real window, driven by key and mouse.
class AbfrageBuehne
{
public:
    AbfrageBuehne()
    {
        store.KarteiPfad = kartei.path();
        konfig.ProgrammPfad = programm.path();
        oeffner.BoxZeichnen = [] {};
    }

    // Writes the cards to a card file, opens it, and stands on its first card in box order.
    void Oeffnen(const QList<CardRecord> &karten)
    {
        MakeCardFile(kartei.filePath("a.pzb"), karten);
        Oeffnen();
    }

    void Oeffnen()
    {
        QString name = "a.pzb";
        oeffner.OpenCardFile(name);
        QCOMPARE(name, "a.pzb");
        store.Karten().MoveFirst();
    }

    // Asks the current card and lets `lernen` act as the learner. A window still open then is closed.
    PFUse::Ausgang Fragen(const std::function<void()> &lernen)
    {
        PFUse neu({store, zustand, meldungen, zufall, konfig,
                   [this](const QString &pfad) { klaenge << pfad; }, [this] { ++stille; },
                   [this] { ++automatikAus; }});
        fenster = &neu;
        QTimer::singleShot(0, &neu, [&] {
            if (QTest::qWaitForWindowActive(&neu))
                lernen();
            else
                QTest::qFail("the window did not become active", __FILE__, __LINE__);
            neu.close();
        });
        const auto ausgang = neu.Fragen();
        fenster = nullptr;
        return ausgang;
    }

    // One card in a file of two, with another one that stays as it is.
    PFUse::Ausgang Fragen(const CardRecord &karte, const std::function<void()> &lernen)
    {
        store.CloseCardFile();
        QFile::remove(kartei.filePath("a.pzb"));
        Oeffnen({karte, MakeCard(90, 5, 90)});
        return Fragen(lernen);
    }

    template <typename Widget>
    Widget *Finde(const QString &name) const
    {
        auto *widget = fenster->findChild<Widget *>(name);
        if (!widget)
            qFatal("no %s", qPrintable(name));
        return widget;
    }

    QTextEdit *Text(const QString &name) const { return Finde<QTextEdit>(name); }

    QLabel *Label(const QString &name) const { return Finde<QLabel>(name); }

    QPushButton *Knopf(const QString &name) const { return Finde<QPushButton>(name); }

    QCheckBox *Check1(int i) const { return Finde<QCheckBox>(QString("Check1(%1)").arg(i)); }

    QCheckBox *Check2(int i) const { return Finde<QCheckBox>(QString("Check2(%1)").arg(i)); }

    QRadioButton *Option(const QString &name) const { return Finde<QRadioButton>(name); }

    // To whatever has the focus, as the keyboard does.
    void Taste(Qt::Key taste, Qt::KeyboardModifiers dazu = Qt::NoModifier) const
    {
        QTest::keyClick(QApplication::focusWidget(), taste, dazu);
    }

    void Tippe(const QString &text) const { QTest::keyClicks(QApplication::focusWidget(), text); }

    // Types `eingabe` and presses Enter.
    void Antworten(const QString &eingabe) const
    {
        Tippe(eingabe);
        Taste(Qt::Key_Return);
    }

    // At the widget's place in the window: whatever lies on top of it gets the click.
    void Klick(const QWidget *widget) const
    {
        QTest::mouseClick(fenster->windowHandle(), Qt::LeftButton, {},
                          widget->mapTo(fenster, widget->rect().center()));
    }

    QString FokusName() const
    {
        const QWidget *fokus = QApplication::focusWidget();
        return fokus ? fokus->objectName() : QString();
    }

    QTemporaryDir kartei, programm;
    TestMeldungen meldungen;
    AppConfig konfig{meldungen};
    TestUhr uhr;
    CardStore store;
    KarteiOeffner oeffner{store, meldungen, uhr};
    BoxZustand zustand;
    MersenneZufall zufall;
    QStringList klaenge;
    int stille = 0, automatikAus = 0;
    PFUse *fenster = nullptr;
};

// A card to be answered by typing.
inline CardRecord TippKarte(const QString &antwort)
{
    CardRecord karte = MakeCard(17, 0, 1);
    karte.Antwort_1 = karte.Antwort_1_Klartext = antwort;
    return karte;
}

// A card to be answered by ticking; `richtig` holds the right lines' digits, "25" for lines 2 and 5.
inline CardRecord KreuzKarte(const QString &richtig)
{
    CardRecord karte = MakeCard(17, 0, 1);
    karte.Antworttyp = 2;
    karte.Antwort_1 = "eins";
    karte.Antwort_2 = "zwei";
    karte.Antwort_3 = "drei";
    karte.Antwort_4 = "vier";
    karte.Antwort_5 = "";
    bool CardRecord::*const kreuze[] = {&CardRecord::Antwort_ch_1, &CardRecord::Antwort_ch_2,
                                        &CardRecord::Antwort_ch_3, &CardRecord::Antwort_ch_4,
                                        &CardRecord::Antwort_ch_5};
    for (int i = 0; i < 5; ++i)
        karte.*kreuze[i] = richtig.contains(QString::number(i + 1));
    return karte;
}
