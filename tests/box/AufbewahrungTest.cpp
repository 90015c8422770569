// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Aufbewahrung.h"

#include "BoxRechnung.h"
#include "FehlerVon.h"
#include "KarteEinordnen.h"
#include "KarteiOeffner.h"
#include "Lernstand.h"
#include "Stromausfall.h"
#include "TestDialoge.h"
#include "TestProgram.h"

#include <QDir>
#include <QFile>
#include <QTest>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

using Ausgang = Aufbewahrung::Ausgang;
using VollePlatte::Art;

constexpr qsizetype NochEinmal = 0, Sichern = 1;

// A long question needs overflow pages; the running numbers of compartment 1 are used up.
QList<CardRecord> Karten()
{
    QList<CardRecord> karten;
    for (int i = 1; i <= 30; ++i)
        karten << MakeCard(i, i % 6, i);
    karten[4].Frage = QString(9000, u'f');
    karten << MakeCard(31, 1, 32767);
    return karten;
}

// A learner who gives up no answer.
struct Lernender
{
    explicit Lernender(const QString &ordner)
    {
        clock.perSecond = 1;
        store.KarteiPfad = ordner;
        QString name = u"box.pzb"_s;
        oeffner.OpenCardFile(name);
    }

    Ausgang Antworten(int fach, bool richtig)
    {
        const auto gefragt = [&] {
            if (!ErsteKarte(store.Karten(), fach))
                qFatal("compartment %d is empty", fach);
            return Gefragt(store);
        };
        // A card that cannot be read is asked for once more.
        std::optional<GefragteKarte> gelesen;
        if (FehlerVon([&] { gelesen = gefragt(); }))
            gelesen = gefragt();
        const GefragteKarte karte = *gelesen;
        frageNr = static_cast<int>(karte.frageNr);
        return aufbewahrung.Speichern({.kontext = u"Die Antwort konnte nicht gespeichert werden: "_s,
                                       .trost = u"Die Antwort ist noch nicht verloren."_s,
                                       .speichern = [&] { KarteEinordnen(store, karte, richtig); }});
    }

    TestMeldungen meldungen;
    TestDialoge dialoge;
    TestClock clock;
    CardStore store;
    KarteiOeffner oeffner{store, meldungen, clock};
    Aufbewahrung aufbewahrung{store, meldungen, dialoge};
    int frageNr = 0; // of the last card asked
};

struct Antwort
{
    int fach;
    bool richtig;
};

constexpr Antwort antworten[] = {{0, true}, {3, false}, {1, false}, {2, true}};

} // namespace

// What cannot be stored is kept, whatever the disk does.
class AufbewahrungTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir directory_;
    QString original_;

    static void Arten()
    {
        QTest::addColumn<Art>("art");
        for (const auto &[name, art] : VollePlatte::AlleArten)
            QTest::newRow(name) << art;
    }

    // The box, its counts, its tally and what leads back, after these answers.
    static void Pruefen(Lernender &learner, const Lernstand &stand, const Lernstand &anfang, int anzahl)
    {
        QVERIFY(Lernstand::In(learner.store.Karten()) == stand);
        QVERIFY(stand.Passt(learner.store.FachInfo));
        QCOMPARE(learner.store.sitzung.RichtigZaehler() + learner.store.sitzung.FalschZaehler(), anzahl);
        for (int i = 0; i < anzahl; ++i) {
            QVERIFY(learner.store.schritte.Zurueckzunehmen().startsWith(u"Antwort auf Frage"));
            learner.store.schritte.Zuruecknehmen();
        }
        QCOMPARE(learner.store.schritte.Zurueckzunehmen(), QString());
        QVERIFY(Lernstand::In(learner.store.Karten()) == anfang);
        QVERIFY(anfang.Passt(learner.store.FachInfo));
        QCOMPARE(learner.store.sitzung.RichtigZaehler() + learner.store.sitzung.FalschZaehler(), 0);
    }

private slots:

    void initTestCase()
    {
        VollePlatte::Einbauen();
        original_ = directory_.filePath(u"original.pzb"_s);
        MakeCardFile(original_, Karten());
    }

    void TheNextAttemptStoresTheAnswerOnce_data() { Arten(); }

    void TheNextAttemptStoresTheAnswerOnce()
    {
        QFETCH(Art, art);
        int asked = 0;
        for (int run = 1;; ++run) {
            const QTemporaryDir directory;
            QVERIFY(QFile::copy(original_, directory.filePath(u"box.pzb"_s)));
            Lernender learner(directory.path());
            const Lernstand start(Karten());
            Lernstand stand = start;
            VollePlatte::Scheitern(run, art);
            for (const Antwort &answer : antworten) {
                learner.meldungen.wahlen = {NochEinmal, NochEinmal};
                QCOMPARE(learner.Antworten(answer.fach, answer.richtig), Ausgang::Gespeichert);
                stand.Antworten(learner.frageNr, answer.richtig);
            }
            const bool failed = VollePlatte::Gescheitert().has_value();
            VollePlatte::Scheitern(0);
            for (const QString &text : learner.meldungen.Texte())
                QVERIFY2(IsGermanMessage(text), qPrintable(text));
            asked += static_cast<int>(learner.meldungen.knopfreihen.size());
            Pruefen(learner, stand, start, 4);
            if (QTest::currentTestFailed())
                qFatal("call %d", run);
            learner.store.CloseCardFile();
            QCOMPARE(FaultIn(directory.filePath(u"box.pzb"_s)), QString());
            if (!failed)
                break;
        }
        QVERIFY(asked > 20);
    }

    void ABoxWhoseFileIsGoneIsSavedWithTheAnswer_data() { Arten(); }

    void ABoxWhoseFileIsGoneIsSavedWithTheAnswer()
    {
        QFETCH(Art, art);
        int asked = 0;
        for (int run = 1;; ++run) {
            const QTemporaryDir directory;
            const QString path = directory.filePath(u"box.pzb"_s);
            const QString place = directory.filePath(u"neu.pzb"_s);
            QVERIFY(QFile::copy(original_, path));
            Lernender learner(directory.path());
            const Lernstand start(Karten());
            Lernstand stand = start;
            QCOMPARE(learner.Antworten(0, true), Ausgang::Gespeichert);
            stand.Antworten(learner.frageNr, true);
            QVERIFY(QFile::remove(path));
            learner.meldungen.wahlen = {Sichern, Sichern, NochEinmal, NochEinmal};
            learner.dialoge.pfade = {place, place};
            VollePlatte::Scheitern(run, art);
            const Ausgang ausgang = learner.Antworten(3, false);
            const bool failed = VollePlatte::Gescheitert().has_value();
            VollePlatte::Scheitern(0);
            const QString what = u"call %1: "_s.arg(run) + learner.meldungen.Texte().join(u'|');
            QVERIFY2(ausgang == Ausgang::Gespeichert, qPrintable(what));
            stand.Antworten(learner.frageNr, false);
            for (const QString &text : learner.meldungen.Texte())
                QVERIFY2(IsGermanMessage(text), qPrintable(text));
            asked += static_cast<int>(learner.meldungen.knopfreihen.size());
            QCOMPARE(learner.store.OffenerPfad(), place);
            QCOMPARE(learner.store.CurrentFileName, u"neu.pzb"_s);
            QCOMPARE(learner.meldungen.Titel(), u"Merkkasten (neu.pzb)"_s);
            Pruefen(learner, stand, start, 2);
            if (QTest::currentTestFailed())
                qFatal("%s", qPrintable(what));
            learner.store.CloseCardFile();
            QCOMPARE(FaultIn(place), QString());
            QCOMPARE(QDir(directory.path()).entryList(QDir::Files | QDir::Hidden), QStringList{u"neu.pzb"_s});
            if (!failed)
                break;
        }
        QVERIFY(asked > 100);
    }

    void TheJournalOfAFileThatIsGoneGoesUnlessItHoldsAChange_data()
    {
        QTest::addColumn<bool>("holds");
        QTest::newRow("done with") << false;
        QTest::newRow("a change that the file would need") << true;
    }

    void TheJournalOfAFileThatIsGoneGoesUnlessItHoldsAChange()
    {
        QFETCH(bool, holds);
        const QTemporaryDir directory;
        const QString path = directory.filePath(u"box.pzb"_s);
        QVERIFY(QFile::copy(original_, path));
        {
            Lernender learner(directory.path());
            QCOMPARE(learner.Antworten(0, true), Ausgang::Gespeichert);
            QFile journal(path + u"-journal"_s);
            QVERIFY(journal.open(QIODevice::ReadWrite));
            QVERIFY(QFile::rename(path, directory.filePath(u"weg.pzb"_s)));
            if (holds)
                QCOMPARE(journal.write("\xd9"), 1);
        }
        QCOMPARE(QFile::exists(path + u"-journal"_s), holds);
    }

    // The new file is whole, or not there.
    void APowerFailureLeavesTheNewFileWholeOrNone()
    {
        const QTemporaryDir directory;
        const QString path = directory.filePath(u"box.pzb"_s);
        const QString place = directory.filePath(u"neu.pzb"_s);
        QVERIFY(QFile::copy(original_, path));
        QList<Stromausfall::Bild> disks;
        Lernstand before(Karten()), after(Karten());
        {
            Stromausfall power;
            Lernender learner(directory.path());
            VollePlatte::Setzen(VollePlatte::Zustand::Voll, path);
            learner.meldungen.wahlen = {NochEinmal, Sichern};
            learner.dialoge.pfade = {place};
            QCOMPARE(learner.Antworten(0, true), Ausgang::Gespeichert);
            VollePlatte::Setzen(VollePlatte::Zustand::Gesund);
            after.Antworten(learner.frageNr, true);
            power.Gemeldet();
            learner.store.CloseCardFile();
            disks = power.bilder;
        }
        QVERIFY(Lernstand::In(path) == before);
        QVERIFY(Lernstand::In(place) == after);
        int older = 0, newer = 0;
        for (const Stromausfall::Bild &disk : disks) {
            const QTemporaryDir left;
            for (const auto &[name, bytes] : disk.dateien) {
                QFile file(left.filePath(QFileInfo(name).fileName()));
                QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
            }
            QVERIFY(Lernstand::In(left.filePath(u"box.pzb"_s)) == before);
            const QString there = left.filePath(u"neu.pzb"_s);
            if (!QFile::exists(there))
                continue;
            QCOMPARE(FaultIn(there), QString());
            const Lernstand found = Lernstand::In(there);
            QVERIFY(found == after || (found == before && disk.gemeldet == 0));
            (found == before ? older : newer) += 1;
        }
        QVERIFY(older > 0 && newer > 0);
    }
};

PAUKFIX_CORE_TEST(AufbewahrungTest)
#include "AufbewahrungTest.moc"
