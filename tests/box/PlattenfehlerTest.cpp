// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "BoxRechnung.h"
#include "KarteVerschieben.h"
#include "KarteiOeffner.h"
#include "Lernstand.h"
#include "StoreTestSupport.h"
#include "Stromausfall.h"
#include "TestProgram.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <algorithm>
#include <set>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

using VollePlatte::Art;
using VollePlatte::Vorgang;

// A small box with some texts that need overflow pages, and a compartment whose running numbers are used up.
QList<CardRecord> Karten()
{
    QList<CardRecord> karten;
    for (int i = 1; i <= 30; ++i)
        karten << MakeCard(i, i % 6, i);
    karten[4].Frage = QString(9000, u'f');
    karten << MakeCard(31, 1, 32766);
    return karten;
}

// A learner at work on a card file, as the main window is: what cannot be stored is said, counted anew, and
// the work goes on; a file that was closed is opened again.
class Lernender
{
public:
    explicit Lernender(const QString &ordner)
    {
        clock.perSecond = 1;
        store.KarteiPfad = ordner;
    }

    bool Oeffnen()
    {
        QString name = u"box.pzb"_s;
        oeffner.OpenCardFile(name);
        return store.IsOpen();
    }

    // True when the answer is stored.
    bool Antworten(int fach, bool richtig)
    {
        try {
            if (!ErsteKarte(store.Karten(), fach))
                qFatal("compartment %d is empty", fach);
            frageNr = store.Felder().FrageNr.Integer();
            KarteVerschieben(store, meldungen, Gefragt(store), richtig);
            return true;
        } catch (const StoreError &fehler) {
            meldungen.Zeigen(u"Die Antwort konnte nicht gespeichert werden: "_s + fehler.Text());
            NeuZaehlen(store, fehler.Number());
            return false;
        }
    }

    TestMeldungen meldungen;
    TestClock clock;
    CardStore store;
    KarteiOeffner oeffner{store, meldungen, clock};
    int frageNr = 0; // of the last card asked
};

struct Antwort
{
    int fach;
    bool richtig;
};

// Wrong answers in compartment 1 use up its last running numbers: it is closed up on the way.
constexpr Antwort antworten[] = {{0, true}, {0, false}, {3, true}, {1, false}, {2, true}};

} // namespace

class PlattenfehlerTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir directory_;
    QString original_;

private slots:

    void initTestCase()
    {
        VollePlatte::Einbauen();
        original_ = directory_.filePath(u"original.pzb"_s);
        MakeCardFile(original_, Karten());
    }

    void AnyCallToTheDiskMayFailOnce_data()
    {
        QTest::addColumn<Art>("art");
        for (const auto &[name, art] : VollePlatte::AlleArten)
            QTest::newRow(name) << art;
    }

    void AnyCallToTheDiskMayFailOnce()
    {
        QFETCH(Art, art);
        std::set<Vorgang> seen;
        int reports = 0;
        int run = 1;
        for (;; ++run) {
            const QTemporaryDir directory;
            const QString path = directory.filePath(u"box.pzb"_s);
            QVERIFY(QFile::copy(original_, path));
            const auto what = [&] { return u"call %1"_s.arg(run); };
            Lernstand stand(Karten());
            {
                Lernender learner(directory.path());
                VollePlatte::Scheitern(run, art);
                if (!learner.Oeffnen()) {
                    QVERIFY2(!learner.meldungen.gezeigt.isEmpty(), qPrintable(what()));
                    QVERIFY2(learner.Oeffnen(), qPrintable(what() + learner.meldungen.Texte().join(u'|')));
                }
                for (const Antwort &answer : antworten) {
                    const qsizetype shown = learner.meldungen.gezeigt.size();
                    const bool stored = learner.Antworten(answer.fach, answer.richtig);
                    // What was reported as stored is there; what was not may be there or not.
                    const Lernstand before = stand;
                    stand.Antworten(learner.frageNr, answer.richtig);
                    if (!stored) {
                        QVERIFY2(learner.meldungen.gezeigt.size() > shown, qPrintable(what()));
                        if (!learner.store.IsOpen())
                            QVERIFY2(learner.Oeffnen(), qPrintable(what()));
                        if (Lernstand::In(learner.store.Karten()) != stand)
                            stand = before;
                    }
                    QVERIFY2(Lernstand::In(learner.store.Karten()) == stand, qPrintable(what()));
                    QVERIFY2(stand.Passt(learner.store.FachInfo), qPrintable(what()));
                }
                for (const QString &text : learner.meldungen.Texte())
                    QVERIFY2(IsGermanMessage(text), qPrintable(what() + u' ' + text));
                reports += learner.meldungen.gezeigt.isEmpty() ? 0 : 1;
            }
            const auto failed = VollePlatte::Gescheitert();
            VollePlatte::Scheitern(0);
            QCOMPARE(FaultIn(path), QString());
            QVERIFY2(Lernstand::In(path) == stand, qPrintable(what()));
            QCOMPARE(QDir(directory.path())
                         .entryList(QDir::Files | QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot),
                     QStringList{u"box.pzb"_s});
            if (!failed)
                break;
            seen.insert(*failed);
        }
        qInfo("%d calls, %d reported", run - 1, reports);
        QVERIFY(run > 100);
        QVERIFY(reports > 50);
        for (const Vorgang call : {Vorgang::Oeffnen, Vorgang::Lesen, Vorgang::Schreiben, Vorgang::Sichern,
                                   Vorgang::Loeschen, Vorgang::Groesse, Vorgang::Sperren})
            QVERIFY2(seen.contains(call), qPrintable(QString::number(static_cast<int>(call))));
    }

    void NothingThatWasReportedIsMissingAfterAPowerFailure()
    {
        const QTemporaryDir directory;
        const QString path = directory.filePath(u"box.pzb"_s);
        QVERIFY(QFile::copy(original_, path));
        QList<Lernstand> states{Lernstand(Karten())};
        QList<Stromausfall::Bild> disks;
        {
            Stromausfall power;
            Lernender learner(directory.path());
            QVERIFY(learner.Oeffnen());
            for (const Antwort &answer : antworten) {
                QVERIFY(learner.Antworten(answer.fach, answer.richtig));
                Lernstand next = states.last();
                next.Antworten(learner.frageNr, answer.richtig);
                states << next;
                power.Gemeldet();
            }
            learner.store.CloseCardFile();
            disks = power.bilder;
        }
        QVERIFY(disks.size() > 200);
        int older = 0, newer = 0; // of the disks in the midst of an answer
        for (const Stromausfall::Bild &disk : disks) {
            const QTemporaryDir after;
            for (const auto &[name, bytes] : disk.dateien) {
                QFile file(after.filePath(QFileInfo(name).fileName()));
                QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
            }
            const QString left = after.filePath(u"box.pzb"_s);
            Lernender learner(after.path());
            QVERIFY2(learner.Oeffnen(), qPrintable(learner.meldungen.Texte().join(u'|')));
            learner.store.CloseCardFile();
            QCOMPARE(FaultIn(left), QString());
            const Lernstand found = Lernstand::In(left);
            const bool reported = found == states[disk.gemeldet];
            const bool next = disk.gemeldet + 1 < states.size() && found == states[disk.gemeldet + 1];
            QVERIFY2(reported || next, qPrintable(u"after %1 answers"_s.arg(disk.gemeldet)));
            (reported ? older : newer) += 1;
        }
        qInfo("%d disks, %d before and %d after the answer under way", int(disks.size()), older, newer);
        QVERIFY(older > 0 && newer > 0);
    }
};

PAUKFIX_CORE_TEST(PlattenfehlerTest)
#include "PlattenfehlerTest.moc"
