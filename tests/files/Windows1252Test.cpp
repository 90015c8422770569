// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Windows1252.h"

#include "TestProgram.h"

#include <QTest>

using namespace paukfix;

class Windows1252Test : public QObject
{
    Q_OBJECT

private slots:
    void EveryByteReadsBack();
    void CharactersOfTheCodePageAreKnown();
    void OtherCharactersAreRefused_data();
    void OtherCharactersAreRefused();
};

void Windows1252Test::EveryByteReadsBack()
{
    QByteArray all;
    for (int i = 0; i < 256; ++i)
        all += static_cast<char>(i);
    QCOMPARE(FromWindows1252(all).size(), 256);
    QCOMPARE(ToWindows1252(FromWindows1252(all)), all);
    QCOMPARE(ToWindows1252(QString()), QByteArray());
}

void Windows1252Test::CharactersOfTheCodePageAreKnown()
{
    QCOMPARE(ToWindows1252("äöüÄÖÜß€„“–…™Ÿ"),
             QByteArray("\xE4\xF6\xFC\xC4\xD6\xDC\xDF\x80\x84\x93\x96\x85\x99\x9F"));
    QCOMPARE(FromWindows1252("\xE4\x80"), "ä€");
}

void Windows1252Test::OtherCharactersAreRefused_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("Greek") << "αβγ";
    QTest::newRow("one among many") << QString(1000, 'a') + "ł" + QString(1000, 'b');
    QTest::newRow("full-width letter") << "Ａ";
    QTest::newRow("wide blank") << QString(QChar(0x2003));
    QTest::newRow("emoji") << "😀";
    QTest::newRow("half an emoji") << QString(QChar(0xD83D));
    QTest::newRow("combining mark") << QString("u") + QChar(0x308);
    QTest::newRow("replacement character") << QString(QChar(0xFFFD));
}

void Windows1252Test::OtherCharactersAreRefused()
{
    QFETCH(const QString, text);
    QVERIFY(!ToWindows1252(text));
}

PAUKFIX_APPLESS_TEST(Windows1252Test)
#include "Windows1252Test.moc"
