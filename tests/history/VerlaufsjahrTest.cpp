// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "TestProgram.h"
#include "Verlaufsbuehne.h"
#include "Verlaufswerte.h"
#include "VollePlatte.h"

#include <ctime>
#include <map>
#include <random>

using namespace paukfix;

// A year of learning, day for day, against a model.
class VerlaufsjahrTest : public QObject
{
    Q_OBJECT

private slots:

    void initTestCase()
    {
        VollePlatte::Einbauen(); // which syncs nothing
        qputenv("TZ", "Europe/Berlin");
        tzset();
    }

    // With a leap day, two changes of the clock to and from summer, sessions over midnight, answers that are
    // taken back, a box that is renamed, and a clock that is wrong twice.
    void AYearIsKept()
    {
        std::mt19937 zufall(20260801); // the same year every time
        const auto bis = [&zufall](int hoechstens) {
            return static_cast<int>(zufall() % static_cast<unsigned>(hoechstens + 1));
        };
        Verlaufsbuehne b;
        b.Anlegen("Karten 0.pzb", 200);
        QString name = "Karten 0.pzb";
        std::map<QDate, Tagesstand> modell;
        const QDate erster(2027, 8, 1);
        const QDate letzter(2028, 7, 31);
        QVERIFY(erster.daysTo(letzter) == 365); // the leap day is among them
        int umbenannt = 0;

        const auto merken = [&](bool richtig, int um) {
            Tagesstand &stand = modell[b.clock.jetzt.date()];
            stand.tag = b.clock.jetzt.date();
            (richtig ? stand.richtig : stand.falsch) += um;
            std::ranges::transform(b.kartei.FachInfo, stand.karten.begin(),
                                   [](const Fach &fach) { return fach.Anzahl; });
        };
        const auto lernen = [&] {
            const bool richtig = bis(9) > 2;
            b.Antworten(richtig);
            merken(richtig, 1);
            if (bis(14) == 0) {
                b.Zuruecknehmen();
                merken(richtig, -1);
            }
        };
        for (QDate tag = erster; tag <= letzter; tag = tag.addDays(1)) {
            if (bis(4) == 0 && tag != letzter)
                continue; // not every day
            const QTime abends = bis(5) == 0 ? QTime(23, 59, 30) : QTime(7 + bis(14), bis(59));
            b.clock.jetzt = {tag, abends};
            if (tag == QDate(2027, 11, 20))
                b.clock.jetzt = {{2027, 11, 2}, abends}; // set back
            if (tag == QDate(2028, 4, 10))
                b.clock.jetzt = {{2031, 1, 1}, abends}; // years ahead
            b.Beenden();
            if (bis(30) == 0) {
                const QString neu = QString("Karten %1.pzb").arg(++umbenannt);
                QVERIFY(QFile::rename(b.Pfad(name), b.Pfad(neu)));
                name = neu;
            }
            b.Starten();
            b.Oeffnen(name);
            merken(true, 0);
            for (int i = bis(12); i > 0; --i) {
                lernen();
                b.clock.jetzt = b.clock.jetzt.addSecs(15);
            }
            if (bis(9) == 0)
                b.Tage(); // written in between
        }
        QVERIFY(umbenannt > 5);
        std::vector<Tagesstand> erwartet;
        for (const auto &[tag, stand] : modell)
            erwartet.push_back(stand);
        const std::vector<Tagesstand> tage = b.Tage();
        QCOMPARE(tage.size(), erwartet.size());
        for (std::size_t i = 0; i < tage.size(); ++i)
            QVERIFY2(tage[i] == erwartet[i], qPrintable(erwartet[i].tag.toString(Qt::ISODate)));

        // What a wrong clock has left hides nothing.
        QCOMPARE(tage.back().tag.year(), 2031);
        const Verlaufswerte werte = Auswerten(tage, Zeitraum::Alles, letzter);
        QCOMPARE(werte.von, tage.front().tag);
        QCOMPARE(static_cast<qint64>(werte.tage.size()), tage.front().tag.daysTo(letzter) + 1);
        QCOMPARE(werte.bekannt.back().tag, letzter);
        QCOMPARE(werte.jetzt, modell.at(letzter).karten);
        int richtig = 0;
        for (const auto &[tag, stand] : modell)
            richtig += tag <= letzter ? stand.richtig : 0;
        QCOMPARE(werte.richtig, richtig);
    }
};

PAUKFIX_CORE_TEST(VerlaufsjahrTest)
#include "VerlaufsjahrTest.moc"
