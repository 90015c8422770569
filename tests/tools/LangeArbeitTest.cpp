// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Drehbuch.h"
#include "ErlNull.h"
#include "Fensterbuehne.h"
#include "Karteianhaengen.h"
#include "Karteispiegeln.h"
#include "TestProgram.h"

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
    Fensterbuehne w;
    w.Oeffnen({});
    MakeCardFile(w.Pfad("quelle.pzb"), {MakeCard(4, 3, 2)});
    Karteianhängen dialog(w.oeffner, w.Alle());
    Show(dialog);
    Type(dialog, "lblDateiname", "quelle.pzb");
    const auto *ok = Control<QPushButton>(dialog, "cmdOK");
    const auto *progress = Control<QProgressBar>(dialog, "Fortschritt");
    const auto *label = Control<QLabel>(dialog, "Erklärung(0)");
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
        const Drehbuch buch({[&] {
            if (!box.isVisible())
                return false;
            free = ok->isEnabled() && !progress->isVisible();
            box.accept();
            return true;
        }});
        box.exec();
        QVERIFY(!ok->isEnabled());
    };
    Click(dialog, "cmdOK");
    QVERIFY(free);
    QVERIFY(Control<QLineEdit>(dialog, "lblDateiname")->isEnabled());
}

void LangeArbeitTest::OpeningAgainShowsABusyBar()
{
    Fensterbuehne w;
    w.Oeffnen({MakeCard(1, 6, 1)});
    ErlNull dialog(w.oeffner, w.Alle());
    Show(dialog);
    const auto *progress = Control<QProgressBar>(dialog, "Fortschritt");
    QList<int> range;
    w.oeffner.BoxZeichnen = [&] {
        if (progress->isVisible())
            range = {progress->minimum(), progress->maximum()};
    };
    Click(dialog, "cmdOK");
    QCOMPARE(range, (QList{0, 0}));
    QVERIFY(!progress->isVisible());
}

void LangeArbeitTest::WhatADialogExplainsGreysWithIt()
{
    Fensterbuehne w;
    w.Oeffnen({});
    Karteispiegeln dialog(w.oeffner, w.Alle());
    Show(dialog);
    const auto *hint = Control<QLabel>(dialog, "Hinweis(0)");
    QVERIFY(hint->palette().color(QPalette::WindowText) != dialog.palette().color(QPalette::WindowText));
    dialog.setEnabled(false);
    QCOMPARE(hint->palette().color(QPalette::WindowText),
             dialog.palette().color(QPalette::Disabled, QPalette::WindowText));
}

PAUKFIX_TEST(LangeArbeitTest)
#include "LangeArbeitTest.moc"
