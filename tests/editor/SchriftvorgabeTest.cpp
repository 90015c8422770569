// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "EditorBuehne.h"
#include "Formatierung.h"
#include "TestProgram.h"

#include <QDialogButtonBox>
#include <QFontDialog>
#include <QPushButton>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

// "aaa " in a serif of 14 points, bold and red, "bbb" in a fixed one of 18, and "ccc" in no font at all.
CardRecord Karte()
{
    CardRecord card = MakeCard(1, 0, 1);
    card.Frage =
        uR"({\rtf1{\fonttbl{\f0 Liberation Serif;}{\f1 Liberation Mono;}}{\colortbl;\red200\green0\blue0;})"
        uR"(\f0\fs28\b\cf1 aaa \plain\f1\fs36 bbb\plain  ccc\par})"_s;
    return card;
}

} // namespace

// What the font dialog starts with.
class SchriftvorgabeTest : public QObject
{
    Q_OBJECT

private slots:

    void AMixedSelectionStartsFromTheStandardFont()
    {
        EditorBuehne b({Karte()});
        b.konfig.schrift = {u"Liberation Sans"_s, 12};
        b.konfig.schrift.Color = 0x800000; // blue
        b.Zeigen();
        b.Auswaehlen("MFrage", 0, 7);
        b.Menue("MFont", "MSchriftart");
        const Schriftwahl vorgabe = b.dialoge.schriftVorgabe.value();
        QCOMPARE(vorgabe.font.family(), u"Liberation Sans"_s);
        QCOMPARE(vorgabe.font.pointSizeF(), 12.0);
        QVERIFY(!vorgabe.font.bold());
        QCOMPARE(vorgabe.farbe, QColor(0, 0, 0x80));
    }

    void TextWithoutAFontStartsFromTheStandardFont()
    {
        EditorBuehne b({Karte()});
        b.Zeigen();
        b.Auswaehlen("MFrage", 8, 11);
        b.Menue("MFont", "MSchriftart");
        QCOMPARE(b.dialoge.schriftVorgabe.value().font.family(), u"Liberation Sans"_s);
    }

    void WhatTheSelectionSharesIsTaken()
    {
        EditorBuehne b({Karte()});
        b.Zeigen();
        b.Auswaehlen("MFrage", 0, 3);
        b.Menue("MFont", "MSchriftart");
        const Schriftwahl vorgabe = b.dialoge.schriftVorgabe.value();
        QCOMPARE(vorgabe.font.family(), u"Liberation Serif"_s);
        QCOMPARE(vorgabe.font.pointSizeF(), 14.0);
        QVERIFY(vorgabe.font.bold());
        QCOMPARE(vorgabe.farbe, QColor(200, 0, 0));
    }

    // Through the real dialog: nothing but the colour is chosen there.
    void ADesktopsFontIsNeverStored_data()
    {
        QTest::addColumn<QString>("standard");
        QTest::addColumn<QString>("familie");
        QTest::newRow("standard font") << "Liberation Sans"
                                       << "Liberation Sans";
        QTest::newRow("one that is not installed") << "MS Sans Serif"
                                                   << "MS Sans Serif";
        QTest::newRow("no standard font") << QString() << QString();
    }

    void ADesktopsFontIsNeverStored()
    {
        QFETCH(QString, standard);
        QFETCH(QString, familie);
        EditorBuehne b({Karte()});
        b.konfig.schrift = {standard, 12};
        b.Zeigen();
        b.Auswaehlen("MFrage", 0, 11);
        b.Menue("MFont", "MSchriftart"); // is cancelled
        const Drehbuch buch({Drehbuch::In(u"Schriftdialog"_s, [](QWidget &dialog) {
            dialog.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok)->click();
        })});
        DialogeFenster dialoge;
        const auto wahl = dialoge.SchriftWaehlen(b.dialoge.schriftVorgabe.value());
        QVERIFY(wahl);
        QCOMPARE(DialogFormat(*wahl).fontFamilies().toStringList().value(0), familie);
        QCOMPARE(wahl->font.pointSizeF(), 12.0);
    }
};

PAUKFIX_TEST(SchriftvorgabeTest)
#include "SchriftvorgabeTest.moc"
