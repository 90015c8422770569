// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KarteVerschieben.h"
#include "KarteiOeffner.h"
#include "Lernstand.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"
#include "VollePlatte.h"

#include <QTest>

#include <random>

using namespace paukfix;
using namespace Qt::StringLiterals;

// Years of learning in one box.
class JahreTest : public QObject
{
    Q_OBJECT

private slots:
    void TheOldestCardOfACompartmentIsAskedThroughout();
};

void JahreTest::TheOldestCardOfACompartmentIsAskedThroughout()
{
    const bool brief = qEnvironmentVariableIsSet("PAUKFIX_SHORT_TESTS");
    const int answers = brief ? 20'000 : 200'000;
    // In the short run the years before have used up most of the numbers.
    const int before = brief ? 31'000 : 0;

    VollePlatte::Einbauen(); // which syncs nothing
    const QTemporaryDir directory;
    const QString path = directory.filePath(u"box.pzb"_s);
    QList<CardRecord> cards;
    for (int i = 1; i <= 420; ++i)
        cards << MakeCard(i, i % 6, before + i);
    MakeCardFile(path, cards);
    Lernstand expected(cards);

    TestMeldungen messages;
    TestClock clock;
    clock.perSecond = 1;
    CardStore store;
    KarteiOeffner oeffner(store, messages, clock);
    store.KarteiPfad = directory.path();
    QString name = u"box.pzb"_s;
    oeffner.OpenCardFile(name);
    QVERIFY(store.IsOpen());

    std::mt19937 random(20261121);
    int closedUp = 0;
    for (int answer = 0; answer < answers;) {
        // Compartment 1 is learned most and never gets empty; what is known best is forgotten now and then.
        const int fach = random() % 3 == 0 ? static_cast<int>(random() % 6) : 1;
        if (expected.Schlange(fach).size() < (fach == 1 ? 20 : 1))
            continue;
        QVERIFY(ErsteKarte(store.Karten(), fach));
        const int asked = store.Felder().FrageNr.Integer();
        if (asked != expected.Schlange(fach).first())
            QFAIL(qPrintable(u"answer %1: card %2 before its time"_s.arg(answer).arg(asked)));
        const bool right = fach != 5 && random() % 10 < 4;
        const auto target = static_cast<std::size_t>(ZielFach(fach, right));
        const qint16 highest = store.FachInfo[target].LfdMax;
        KarteVerschieben(store, messages, Gefragt(store), right);
        expected.Antworten(asked, right);
        closedUp += store.FachInfo[target].LfdMax < highest ? 1 : 0;
        ++answer;
    }
    QVERIFY(expected.Passt(store.FachInfo));
    store.CloseCardFile();
    QCOMPARE(FaultIn(path), QString());
    QVERIFY(Lernstand::In(path) == expected);
    qInfo("%d answers, numbers closed up %d times", answers, closedUp);
    QVERIFY(closedUp > 0);
}

PAUKFIX_CORE_TEST(JahreTest)
#include "JahreTest.moc"
