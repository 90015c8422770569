// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Fragetext.h"

#include "Hand.h"
#include "TestProgram.h"

#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

using namespace paukfix;

// The text of a question in the room that it has.
class FragetextTest : public QObject
{
    Q_OBJECT

private:
    static int Zeilen(const Fragetext &text)
    {
        int zeilen = 0;
        for (QTextBlock block = text.document()->begin(); block.isValid(); block = block.next())
            zeilen += block.layout()->lineCount();
        return zeilen;
    }

private slots:

    // In the middle it gets no more width than it needs, but that it gets; also where the window is given
    // another size as it is shown, or later.
    void AShortQuestionInTheMiddleStaysOnOneLine()
    {
        QWidget karte;
        QFont schrift = karte.font();
        schrift.setPointSizeF(9);
        karte.setFont(schrift);
        karte.resize(900, 400);
        Fragetext text(&karte);
        text.setGeometry(0, 0, 698, 226);
        text.Zeigen("der Zoll (an der Grenze)", true, 684);
        text.grab(); // lays it out
        text.setGeometry(0, 0, 696, 222);
        Hand(karte).Zeigen();
        QCOMPARE(Zeilen(text), 1);
        for (int breite = 697; breite > 450; --breite) {
            text.resize(breite, 222);
            QVERIFY2(Zeilen(text) == 1, qPrintable(QString::number(breite)));
        }
    }
};

PAUKFIX_TEST(FragetextTest)
#include "FragetextTest.moc"
