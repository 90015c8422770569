// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "RichText.h"

#include <QTest>
#include <QTextDocument>

class TestRtfReader : public QObject
{
    Q_OBJECT

private slots:
    void Text_data();
    void Text();
};

void TestRtfReader::Text_data()
{
    QTest::addColumn<QString>("rtf");
    QTest::addColumn<QString>("text");
    QTest::newRow("LastParIsNoLine") << R"({\rtf1\ansi abc\par})"
                                     << "abc";
}

void TestRtfReader::Text()
{
    QFETCH(QString, rtf);
    QFETCH(QString, text);
    QTextDocument document;
    SetRichText(document, rtf);
    QCOMPARE(PlainText(document), text);
}

QTEST_MAIN(TestRtfReader)
#include "tst_rtfreader.moc"
