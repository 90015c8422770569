// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Drehbuch.h"
#include "ErlNull.h"
#include "Karteianhaengen.h"
#include "Karteispiegeln.h"
#include "TestProgram.h"
#include "Werkstatt.h"

#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>

#include <utility>

using namespace paukfix;

// How a dialog looks while its tool is running.
class LangeArbeitTest : public QObject
{
    Q_OBJECT

private slots:
    void MessageStandsOverTheDialogAsItIsWithoutWork();
    void OpeningAgainShowsABusyBar();
    void WhatADialogExplainsGreysWithIt();
};

void LangeArbeitTest::MessageStandsOverTheDialogAsItIsWithoutWork()
{
    Werkstatt w;
    w.Oeffnen({});
    MakeCardFile(w.Pfad("quelle.pzb"), {MakeCard(4, 3, 2)});
    Karteianhängen dialog(w.oeffner, w.Alle());
    Hand(dialog).Zeigen();
    Hand(dialog).Ersetze("lblDateiname", "quelle.pzb");
    const auto *ok = Hand(dialog).Finde<QPushButton>("cmdOK");
    const auto *progress = Hand(dialog).Finde<QProgressBar>("Fortschritt");
    const auto *label = Hand(dialog).Finde<QLabel>("Erklärung(0)");
    bool asked = false;
    bool free = false;
    w.oeffner.BoxZeichnen = [&] { // while the file is opened again
        if (std::exchange(asked, true))
            return;
        QVERIFY(!ok->isEnabled());
        QVERIFY(label->isEnabled()); // what explains stays readable
        QVERIFY(progress->isVisible());
        QVERIFY(progress->isEnabled());
        QMessageBox box(&dialog);
        const Drehbuch buch({Drehbuch::In<QMessageBox>([&](QMessageBox &) {
            free = ok->isEnabled() && !progress->isVisible();
            box.accept();
        })});
        box.exec();
        QVERIFY(!ok->isEnabled());
    };
    Hand(dialog).Klick("cmdOK");
    QVERIFY(free);
    QVERIFY(Hand(dialog).Finde("lblDateiname")->isEnabled());
}

void LangeArbeitTest::OpeningAgainShowsABusyBar()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 6, 1)});
    ErlNull dialog(w.oeffner, w.Alle());
    Hand(dialog).Zeigen();
    const auto *progress = Hand(dialog).Finde<QProgressBar>("Fortschritt");
    QList<int> range;
    w.oeffner.BoxZeichnen = [&] {
        if (progress->isVisible())
            range = {progress->minimum(), progress->maximum()};
    };
    Hand(dialog).Klick("cmdOK");
    QCOMPARE(range, (QList{0, 0}));
    QVERIFY(!progress->isVisible());
}

void LangeArbeitTest::WhatADialogExplainsGreysWithIt()
{
    Werkstatt w;
    w.Oeffnen({});
    Karteispiegeln dialog(w.oeffner, w.Alle());
    Hand(dialog).Zeigen();
    const auto *hint = Hand(dialog).Finde<QLabel>("Hinweis(0)");
    QVERIFY(hint->palette().color(QPalette::WindowText) != dialog.palette().color(QPalette::WindowText));
    dialog.setEnabled(false);
    QCOMPARE(hint->palette().color(QPalette::WindowText),
             dialog.palette().color(QPalette::Disabled, QPalette::WindowText));
}

PAUKFIX_TEST(LangeArbeitTest)
#include "LangeArbeitTest.moc"
