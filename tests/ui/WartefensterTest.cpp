// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Wartefenster.h"

#include "Drehbuch.h"
#include "StoreError.h"
#include "TestProgram.h"

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <QWidget>

using namespace paukfix;

class WartefensterTest : public QObject
{
    Q_OBJECT

    static Wartefenster *Offenes()
    {
        for (QWidget *fenster : QApplication::topLevelWidgets())
            if (auto *warte = dynamic_cast<Wartefenster *>(fenster); warte != nullptr && warte->isVisible())
                return warte;
        return nullptr;
    }

private slots:

    void ShortWorkShowsNothing()
    {
        QWidget haupt;
        haupt.show();
        const Progress melden = WartenMitAbbruch("Etwas wird getan.", "Ende.", "Titel", &haupt);
        for (int i = 0; i < 100; ++i)
            melden(i, 100);
        QVERIFY(Offenes() == nullptr);
    }

    void LongWorkIsShownAndEndedByItsButton()
    {
        QWidget haupt;
        haupt.show();
        QString text;
        {
            const Progress melden = WartenMitAbbruch("Etwas wird getan.", "Ende.", "Titel", &haupt);
            const auto bisEsDaIst = [&] {
                while (Offenes() == nullptr)
                    melden(3, 7);
            };
            bisEsDaIst();
            Wartefenster *const fenster = Offenes();
            QCOMPARE(fenster->labelText(), QString("Etwas wird getan."));
            QCOMPARE(fenster->value(), 3);
            QCOMPARE(fenster->maximum(), 7);
            auto *const knopf = fenster->findChild<QPushButton *>();
            QCOMPARE(knopf->text(), QString("Abbrechen"));
            const Drehbuch buch(
                {Drehbuch::In<Wartefenster>([knopf](Wartefenster &) { Hand::Klick(knopf); })});
            try {
                for (;;)
                    melden(0, 0);
            } catch (const StoreError &fehler) {
                QCOMPARE(fehler.Number(), Fehler::Abgebrochen);
                text = fehler.Text();
            }
        }
        QCOMPARE(text, QString("Ende."));
        QVERIFY(Offenes() == nullptr);
    }
};

PAUKFIX_TEST(WartefensterTest)
#include "WartefensterTest.moc"
