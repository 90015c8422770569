// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "CardStore.h"
#include "Eingabewache.h"
#include "Fensterwechsel.h"
#include "KarteiOeffner.h"
#include "PFUse.h"
#include "TestDienste.h"

#include <QApplication>
#include <QCheckBox>
#include <QDeadlineTimer>
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
#include <optional>

namespace paukfix {

// What a query left behind, or the verdict that it shows.
using Ergebnis = std::optional<AbfrageErgebnis>;
inline constexpr Ergebnis Nichts;
inline constexpr Ergebnis Richtig = AbfrageErgebnis::Richtig;
inline constexpr Ergebnis Falsch = AbfrageErgebnis::Falsch;
inline constexpr Ergebnis Bearbeiten = AbfrageErgebnis::Bearbeiten;
inline constexpr Ergebnis Geloescht = AbfrageErgebnis::Geloescht;

// Asks cards of a real card file in the real window, driven by key and mouse.
class AbfrageBuehne
{
public:
    AbfrageBuehne() : AbfrageBuehne(eigener_) {}

    explicit AbfrageBuehne(Zufall &gegeben) : zufall(gegeben)
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

    // Asks the current card and lets `lernen` act as the learner. A window still open then is closed. All
    // cards of a stage are asked in one window, as in the program.
    Ergebnis Fragen(const std::function<void()> &lernen)
    {
        FensterBauen();
        const QDeadlineTimer frist(30000);
        QTimer warten;
        QObject::connect(&warten, &QTimer::timeout, &warten, [&] {
            const bool bereit = fenster->isActiveWindow() && QApplication::focusWidget();
            if (!bereit && !frist.hasExpired())
                return;
            warten.stop();
            if (bereit)
                lernen();
            else
                QTest::qFail("the window did not become active", __FILE__, __LINE__);
            fenster->close();
        });
        warten.start(1);
        return fenster->Fragen(true);
    }

    void FensterBauen()
    {
        if (!fenster)
            fenster = std::make_unique<PFUse>(
                store, Dienste{meldungen, dienste.dialoge, dienste.clock, zufall, dienste.ton, konfig},
                wechsel);
    }

    // One card in a file of two, with another one that stays as it is.
    Ergebnis Fragen(const CardRecord &karte, const std::function<void()> &lernen)
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
                          widget->mapTo(fenster.get(), widget->rect().center()));
    }

    QString FokusName() const
    {
        const QWidget *fokus = QApplication::focusWidget();
        return fokus ? fokus->objectName() : QString();
    }

    QTemporaryDir kartei, programm;
    TestDienste dienste;
    TestMeldungen &meldungen = dienste.meldungen;
    AppConfig &konfig = dienste.konfig;
    CardStore store;
    KarteiOeffner oeffner{store, meldungen, dienste.clock};
    Zufall &zufall;
    QStringList &klaenge = dienste.ton.gespielt;
    int &stille = dienste.ton.stillen;
    QWidget box; // stands for the window that the keyboard comes from
    Eingabewache wache{box};
    Fensterwechsel wechsel{wache, box};
    std::unique_ptr<PFUse> fenster;

private:
    MersenneZufall eigener_;
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

} // namespace paukfix
