// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "RichTextBox.h"

#include "TestProgram.h"

#include <QTest>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

const auto Text = uR"({\rtf1{\fonttbl{\f0 Liberation Sans;}}\f0\fs20 klein \fs40 gross\par})"_s;

double TextBreite(RichTextBox &box, int bis)
{
    QTextCursor cursor(box.document());
    const int anfang = box.cursorRect(cursor).left();
    cursor.setPosition(bis);
    return box.cursorRect(cursor).left() - anfang;
}

} // namespace

class RichTextBoxTest : public QObject
{
    Q_OBJECT

private slots:

    // Both sizes grow alike, whether the factor or the text comes first.
    void TheFactorShowsAllTextLargerAndStoresItAsItWas()
    {
        RichTextBox glatt;
        RichTextBox vorher;
        RichTextBox nachher;
        vorher.SetFaktor(1.5);
        for (RichTextBox *box : {&glatt, &vorher, &nachher}) {
            box->resize(800, 200);
            box->show();
            box->ZeigeRichText(Text);
        }
        nachher.SetFaktor(1.5);
        for (RichTextBox *box : {&vorher, &nachher}) {
            for (const int bis : {5, 11})
                QVERIFY2(
                    qAbs(TextBreite(*box, bis) - 1.5 * TextBreite(glatt, bis)) < 6,
                    qPrintable(
                        u"%1: %2, %3"_s.arg(bis).arg(TextBreite(*box, bis)).arg(TextBreite(glatt, bis))));
            QCOMPARE(box->RichText(), glatt.RichText());
            QTest::keyClicks(box, u"x"_s);
            QVERIFY(box->RichText().contains(u"\\fs20 xklein"_s));
        }
    }
};

PAUKFIX_TEST(RichTextBoxTest)
#include "RichTextBoxTest.moc"
