// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Befehlszeile.h"

#include "TestProgram.h"

#include <QTest>

using namespace paukfix;

class BefehlszeileTest : public QObject
{
    Q_OBJECT

private slots:

    void FilesAreTaken_data()
    {
        QTest::addColumn<QStringList>("argumente");
        QTest::addColumn<QString>("kartei");
        QTest::addColumn<QStringList>("weitere");
        const QStringList keine;
        QTest::newRow("none") << keine << QString() << keine;
        QTest::newRow("empty") << QStringList("") << QString() << keine;
        QTest::newRow("path") << QStringList("/x/a b.pzb") << "/x/a b.pzb" << keine;
        QTest::newRow("not a card file") << QStringList("a.txt") << "a.txt" << keine;
        QTest::newRow("three") << QStringList({"a.pzb", "b.pzb", "c.pzb"}) << "a.pzb"
                               << QStringList({"b.pzb", "c.pzb"});
        QTest::newRow("dash in front") << QStringList("-a.PZB") << "-a.PZB" << keine;
        QTest::newRow("behind --") << QStringList({"--", "--help"}) << "--help" << keine;
        QTest::newRow("address") << QStringList("file:///x/K%C3%A4se%20100%25.pzb") << "/x/Käse 100%.pzb"
                                 << keine;
        QTest::newRow("address of this machine")
            << QStringList("FILE://localhost/x/a.pzb") << "/x/a.pzb" << keine;
        QTest::newRow("short address") << QStringList("file:/x/a.pzb") << "/x/a.pzb" << keine;
        QTest::newRow("address of another machine")
            << QStringList("file://server/x/a.pzb") << "file://server/x/a.pzb" << keine;
        QTest::newRow("bad address") << QStringList("file:///x/%zz.pzb") << "/x/%zz.pzb" << keine;
        QTest::newRow("a name like one") << QStringList("file.pzb") << "file.pzb" << keine;
    }

    void FilesAreTaken()
    {
        QFETCH(const QStringList, argumente);
        const Befehlszeile befehl = BefehlszeileLesen(QStringList("paukfix") + argumente);
        QCOMPARE(befehl.art, Befehlszeile::Art::Starten);
        QTEST(befehl.kartei, "kartei");
        QTEST(befehl.weitere, "weitere");
    }

    void HelpAndVersionAreToldWhateverStandsBeside()
    {
        for (const char *option : {"--help", "-h", "--version", "-v"}) {
            const Befehlszeile befehl =
                BefehlszeileLesen({"paukfix", "-platform", "offscreen", option, "a.pzb"});
            QCOMPARE(befehl.art, Befehlszeile::Art::Auskunft);
            QVERIFY(
                befehl.text.contains(option[option[1] == '-' ? 2 : 1] == 'h' ? "--help" : PAUKFIX_VERSION));
        }
    }

    void TheFileThatWasUsedLastIsAskedFor()
    {
        for (const char *option : {"--weiter", "-w"}) {
            const Befehlszeile befehl = BefehlszeileLesen({"paukfix", option});
            QCOMPARE(befehl.art, Befehlszeile::Art::Starten);
            QVERIFY(befehl.weiter && befehl.kartei.isEmpty());
        }
        QVERIFY(!BefehlszeileLesen({"paukfix", "a.pzb"}).weiter);
        const Befehlszeile beides = BefehlszeileLesen({"paukfix", "a.pzb", "--weiter"});
        QCOMPARE(beides.art, Befehlszeile::Art::Fehler);
        QVERIFY(beides.text.startsWith(
            "paukfix: „--weiter“ öffnet die zuletzt verwendete Kartei, keine genannte\n"));
    }

    void UnknownOptionsAreAnError()
    {
        const Befehlszeile befehl = BefehlszeileLesen({"paukfix", "a.pzb", "--hlep", "-x"});
        QCOMPARE(befehl.art, Befehlszeile::Art::Fehler);
        QVERIFY(befehl.text.startsWith("paukfix: unbekannte Option „--hlep“\n"));
        QVERIFY(befehl.text.contains("Aufruf: "));
    }
};

PAUKFIX_APPLESS_TEST(BefehlszeileTest)
#include "BefehlszeileTest.moc"
