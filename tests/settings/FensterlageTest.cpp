// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KonfigFixture.h"
#include "TestProgram.h"

#include <QTest>

using namespace paukfix;

// What the learner has made of the query's window, in the section "[Fenster]".
class FensterlageTest : public KonfigFixture
{
    Q_OBJECT

private slots:

    void init() { SetUp(); }

    void IsKeptOverRuns()
    {
        Write("[Font]\nFontName=X\n[Animation]\nAnimation=True\n");
        config_->Abfrage = {QPoint(-120, 80), QSize(900, 700), true};
        config_->WriteConfig(4, QString());
        QCOMPARE(Read(), "[Font]\nFontName=X\n[Animation]\nAnimation=True\n"
                         "[Fenster]\nAbfragePlatz=-120;80\nAbfrageGroesse=900;700\nAbfrageMaximiert=True\n");
        TestDienste spaeter;
        AppConfig &next = spaeter.konfig;
        next.ProgrammPfad = directory_->path();
        next.ReadConfig();
        QVERIFY(next.Abfrage == config_->Abfrage);
        QCOMPARE(spaeter.meldungen.Texte(), QStringList());
    }

    void OnlyWhatWasChangedIsWritten()
    {
        Write("[Animation]\nAnimation=True\n");
        config_->Abfrage = {QPoint(1, 2), {}, false};
        config_->WriteConfig(4, QString());
        QCOMPARE(Read(), "[Animation]\nAnimation=True\n[Fenster]\nAbfragePlatz=1;2\n");
        QVERIFY(!config_->Abfrage.groesse);
    }

    void IsPutBehindALastLineWithoutEnd()
    {
        WriteBytes("[Animation]\r\nAnimation=True");
        config_->Abfrage.maximiert = true;
        config_->WriteConfig(4, QString());
        QCOMPARE(Read(), "[Animation]\nAnimation=True\n[Fenster]\nAbfrageMaximiert=True\n");
    }

    void LinesOfOthersInTheSectionStay()
    {
        Write("[fenster]\n x=1\n#k\nABFRAGEPLATZ=1;1\n\nAndere=2\n[Font]\nFontName=X\n");
        config_->Abfrage.platz = QPoint(3, 4);
        config_->WriteConfig(4, QString());
        QCOMPARE(Read(), "[fenster]\nAbfragePlatz=3;4\n x=1\n#k\n\nAndere=2\n[Font]\nFontName=X\n");
    }

    void OtherSectionsAreWrittenAroundIt()
    {
        const QByteArray own = "[Fenster]\nAbfragePlatz=5;6\nAbfrageGroesse=x\n";
        Write("[recentfiles]\n" + own + "[Animation]\nAnimation=True\n");
        config_->WriteConfig(1, "a.pzb");
        config_->WriteConfig(3, "False");
        QCOMPARE(Read(), "[recentfiles]\na.pzb\n" + own + "[Animation]\nAnimation=False\n");
    }

    void WhatIsNoPlaceOrSizeIsPassedOver_data()
    {
        QTest::addColumn<QByteArray>("value");
        for (const char *value :
             {"", "1", "1;", ";", "1;2;3", "a;b", "1,2", "99999999999;1", "32768;0", "-32768;0", "1e3;1",
              "2147483648;1", "-2147483648;-2147483648", "0x10;1", "nan;nan", "1;2 von Hand"})
            QTest::newRow(value) << QByteArray(value);
        QTest::newRow("null") << Raw(std::string_view("1\0;2", 4));
        QTest::newRow("long") << QByteArray(20000, '9') + ";1";
    }

    void WhatIsNoPlaceOrSizeIsPassedOver()
    {
        QFETCH(QByteArray, value);
        Write("[Fenster]\nAbfragePlatz=" + value + "\nAbfrageGroesse=" + value +
              "\nAbfrageMaximiert=" + value + "\n[Animation]\nAnimation=False\n");
        config_->ReadConfig();
        QVERIFY(config_->Abfrage == Fensterlage());
        QVERIFY(!config_->Animation);
        QCOMPARE(meldungen_->Texte(), QStringList());
    }

    void ASizeIsMoreThanNothing()
    {
        for (const char *value : {"0;5", "5;0", "-5;5", "0;0"}) {
            Write(QByteArray("[Fenster]\nAbfrageGroesse=") + value + "\n");
            config_->ReadConfig();
            QVERIFY2(!config_->Abfrage.groesse, value);
        }
    }
};

PAUKFIX_CORE_TEST(FensterlageTest)
#include "FensterlageTest.moc"
