// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AnderesProgramm.h"
#include "CardSnapshot.h"
#include "KarteEinordnen.h"
#include "KarteiOeffner.h"
#include "SafeFile.h"
#include "StoreTestSupport.h"
#include "TestPlaces.h"
#include "TestProgram.h"

#include <QDir>
#include <QProcess>
#include <QTest>
#include <SQLiteCpp/Database.h>

#include <array>
#include <csignal>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

constexpr uid_t Niemand = 65534;

// Permissions bind everybody but the administrator: as long as one lives, this process is somebody else.
class OhneRechte
{
public:
    OhneRechte() : root_(geteuid() == 0)
    {
        if (root_ && seteuid(Niemand) != 0)
            qFatal("seteuid");
    }

    OhneRechte(const OhneRechte &) = delete;
    OhneRechte &operator=(const OhneRechte &) = delete;

    ~OhneRechte()
    {
        if (root_ && seteuid(0) != 0)
            qFatal("seteuid");
    }

private:
    bool root_;
};

QByteArray Inhalt(const QString &pfad)
{
    QFile datei(pfad);
    return datei.open(QIODevice::ReadOnly) ? datei.readAll() : QByteArray();
}

} // namespace

// A file that may not be written, or that another program has, is opened to be looked at.
class AnsehenTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> ordner_, kopien_; // of the box, and for the copies of it
    TestMeldungen meldungen_;
    TestClock clock_;
    std::unique_ptr<CardStore> kartei_;
    std::unique_ptr<KarteiOeffner> oeffner_;

    QString Pfad(const QString &name = u"a.pzb"_s) const { return ordner_->filePath(name); }

    void Rechte(const QString &pfad, mode_t rechte) const
    {
        QCOMPARE(::chmod(QFile::encodeName(pfad).constData(), rechte), 0);
    }

    // Opens the file to be looked at, as is asked behind the message that `nummer` stands in.
    void Ansehen(int nummer)
    {
        meldungen_.antworten = {Meldungen::Antwort::Ja};
        QString name = u"a.pzb"_s;
        oeffner_->OpenCardFile(name);
        QVERIFY2(meldungen_.gezeigt.size() >= 2, qPrintable(meldungen_.Texte().join(u'|')));
        QVERIFY2(meldungen_.Texte()[0].endsWith(u" Fcode: %1"_s.arg(nummer)),
                 qPrintable(meldungen_.Texte()[0]));
        QCOMPARE(meldungen_.Texte()[1],
                 u"Soll die Kartei „a.pzb“ nur zum Ansehen geöffnet werden? Sie zeigt dann, was jetzt in der "
                 u"Datei steht; Karten werden nicht abgefragt, und nichts wird geändert."_s);
        QVERIFY2(kartei_->NurAnsehen(), qPrintable(meldungen_.Texte().join(u'|')));
        QCOMPARE(name, u"a.pzb"_s);
        QCOMPARE(kartei_->OffenerPfad(), Pfad());
        QCOMPARE(meldungen_.Titel(), u"Merkkasten (a.pzb) – nur zum Ansehen"_s);
    }

    QList<int> Nummern() const
    {
        QList<int> nummern;
        CardRecordset &karten = kartei_->Karten();
        for (karten.MoveFirst(); !karten.AtEOF(); karten.MoveNext())
            nummern << kartei_->Felder().FrageNr.Integer();
        return nummern;
    }

    void NichtsLaesstSichAendern()
    {
        kartei_->Karten().MoveFirst();
        try {
            KarteEinordnen(*kartei_, Gefragt(*kartei_), true);
            QFAIL("stored");
        } catch (const StoreError &fehler) {
            QCOMPARE(fehler.Number(), Fehler::NichtErlaubt);
            QCOMPARE(fehler.Text(), u"Die Datei „%1“ ist nur zum Ansehen geöffnet."_s.arg(Pfad()));
        }
        QCOMPARE(kartei_->sitzung.RichtigZaehler(), qint16(0));
        QCOMPARE(kartei_->schritte.Zurueckzunehmen(), QString());
    }

private slots:

    void init()
    {
        ordner_ = std::make_unique<QTemporaryDir>();
        kopien_ = std::make_unique<QTemporaryDir>();
        Rechte(ordner_->path(), 0755);
        Rechte(kopien_->path(), 0777);
        qputenv("TMPDIR", QFile::encodeName(kopien_->path()));
        MakeCardFile(Pfad(), {MakeCard(1, 0, 1), MakeCard(2, 3, 1), MakeCard(3, 3, 2)});
        meldungen_.gezeigt.clear();
        meldungen_.antworten.clear();
        clock_.perSecond = 1;
        kartei_ = std::make_unique<CardStore>();
        kartei_->KarteiPfad = ordner_->path();
        oeffner_ = std::make_unique<KarteiOeffner>(*kartei_, meldungen_, clock_);
    }

    void cleanup()
    {
        oeffner_.reset();
        kartei_.reset();
        QVERIFY(QDir(kopien_->path()).isEmpty());
        qunsetenv("TMPDIR");
        Rechte(ordner_->path(), 0755);
        ordner_.reset();
    }

    void AFileThatMayNotBeWritten_data()
    {
        QTest::addColumn<bool>("ordner");
        QTest::newRow("the file") << false;
        QTest::newRow("its directory") << true;
    }

    void AFileThatMayNotBeWritten()
    {
        QFETCH(bool, ordner);
        Rechte(Pfad(), ordner ? 0666 : 0444);
        Rechte(ordner_->path(), ordner ? 0555 : 0777);
        const QByteArray vorher = Inhalt(Pfad());
        {
            const OhneRechte niemand;
            Ansehen(Fehler::NichtErlaubt);
            QCOMPARE(Nummern(), (QList<int>{1, 2, 3}));
            QCOMPARE(kartei_->FachInfo[3].Anzahl, qint16(2));
            QCOMPARE(kartei_->HighestCardNumber, qint16(3));
            NichtsLaesstSichAendern();
            QCOMPARE(QDir(ordner_->path()).entryList(QDir::Files | QDir::Hidden), QStringList{u"a.pzb"_s});
            kartei_->CloseCardFile();
        }
        QCOMPARE(Inhalt(Pfad()), vorher);
    }

    void ItIsAskedForAndNotDoneOtherwise()
    {
        Rechte(Pfad(), 0444);
        const OhneRechte niemand;
        QString name = u"a.pzb"_s;
        oeffner_->OpenCardFile(name);
        QCOMPARE(meldungen_.gezeigt.size(), 2);
        QVERIFY(meldungen_.gezeigt[1].frage);
        QVERIFY(name.isEmpty());
        QVERIFY(!kartei_->IsOpen());
        QCOMPARE(meldungen_.Titel(), u"Merkkasten"_s);
    }

    void WhatCannotBeReadIsNotOffered()
    {
        Rechte(Pfad(), 0000);
        const OhneRechte niemand;
        QString name = u"a.pzb"_s;
        oeffner_->OpenCardFile(name);
        QCOMPARE(meldungen_.gezeigt.size(), 1);
    }

    // Another run of the program, which goes on to learn.
    void WhileAnotherProgramHasItItKeepsItsLock()
    {
        QProcess anderes;
        anderes.start(WorkerPath("lock_worker"), {Pfad()});
        QVERIFY(anderes.waitForReadyRead());
        const QByteArray vorher = Inhalt(Pfad());
        Ansehen(Fehler::Gesperrt);
        QCOMPARE(Nummern(), (QList<int>{1, 2, 3}));
        NichtsLaesstSichAendern();
        QCOMPARE(GapInLock(Pfad()), QString());
        kartei_->CloseCardFile();
        QCOMPARE(GapInLock(Pfad()), QString());
        QCOMPARE(Inhalt(Pfad()), vorher);
        anderes.closeWriteChannel();
        QVERIFY(anderes.waitForFinished());
    }

    // Each of its changes is of all cards: what is looked at is a whole one.
    void WhileAnotherProgramLearnsASoundMomentIsShown()
    {
        QList<CardRecord> karten;
        for (int i = 1; i <= 300; ++i)
            karten << MakeCard(i, i % 7, i / 7 + 1);
        QVERIFY(QFile::remove(Pfad()));
        MakeCardFile(Pfad(), karten);
        QProcess anderes;
        anderes.start(WorkerPath("lock_worker"), {Pfad(), "UPDATE Lernkarten SET Frage_Klartext = '2'"});
        QVERIFY(anderes.waitForReadyRead());
        const QByteArray sql = "UPDATE Lernkarten SET Frage_Klartext = '1' || hex(zeroblob(900));"
                               "UPDATE Lernkarten SET Frage_Klartext = '2';";
        anderes.write(sql.repeated(30) + '\n');
        for (int i = 0; i < 20; ++i) {
            meldungen_.gezeigt.clear();
            meldungen_.antworten = {Meldungen::Antwort::Ja};
            QString name = u"a.pzb"_s;
            oeffner_->OpenCardFile(name);
            if (!kartei_->IsOpen()) { // it writes all the time
                QVERIFY2(meldungen_.Texte().last().contains(u"geändert"),
                         qPrintable(meldungen_.Texte().join(u'|')));
                continue;
            }
            QSet<QString> texte;
            CardRecordset &cards = kartei_->Karten();
            for (cards.MoveFirst(); !cards.AtEOF(); cards.MoveNext())
                texte << kartei_->Felder().Frage_Klartext.Text().left(1);
            QCOMPARE(texte.size(), 1);
            kartei_->CloseCardFile();
        }
        anderes.closeWriteChannel();
        QVERIFY(anderes.waitForFinished());
        QCOMPARE(FaultIn(Pfad()), QString());
    }

    // Killed in the midst of a change: the file and its journal stay as they are.
    void AChangeThatIsNotFinishedIsTakenBackInTheCopyAlone()
    {
        const pid_t kind = fork();
        if (kind == 0) {
            CardFile datei(Pfad());
            datei.Database().exec("PRAGMA cache_size=1; BEGIN; UPDATE Lernkarten SET FachNr=5, "
                                  "FachLfdNr=FrageNr, "
                                  "Frage=hex(zeroblob(20000))");
            ::_exit(0); // nothing is rolled back
        }
        QCOMPARE(::waitpid(kind, nullptr, 0), kind);
        const QByteArray datei = Inhalt(Pfad()), journal = Inhalt(Pfad(u"a.pzb-journal"_s));
        QVERIFY(!journal.isEmpty());
        Rechte(Pfad(), 0444);
        Rechte(Pfad(u"a.pzb-journal"_s), 0444);
        Rechte(ordner_->path(), 0555);
        {
            const OhneRechte niemand;
            Ansehen(Fehler::NichtErlaubt);
            QCOMPARE(meldungen_.Texte().last(),
                     u"Ein anderes Programm hat eine Änderung an der Datei „a.pzb“ nicht abgeschlossen. "
                     u"Gezeigt wird der Stand davor; an der Datei wurde nichts geändert."_s);
            QCOMPARE(kartei_->FachInfo[3].Anzahl, qint16(2));
            kartei_->CloseCardFile();
        }
        QCOMPARE(Inhalt(Pfad()), datei);
        QCOMPARE(Inhalt(Pfad(u"a.pzb-journal"_s)), journal);
    }

    // The copy that is in use stays; nobody else's directory is touched.
    void WhatAKilledProgramHasLeftIsCleared()
    {
        std::array<int, 2> rohr{};
        QCOMPARE(::pipe(rohr.data()), 0);
        const pid_t kind = fork();
        if (kind == 0) {
            const CardSnapshot kopie(Pfad());
            if (::write(rohr[1], "x", 1) == 1)
                ::pause();
            ::_exit(1);
        }
        char da = 0;
        QCOMPARE(::read(rohr[0], &da, 1), ssize_t{1});
        ::close(rohr[0]);
        ::close(rohr[1]);
        const QDir ordner(kopien_->path());
        QCOMPARE(ordner.entryList(QDir::Dirs | QDir::NoDotAndDotDot).size(), 1);
        QVERIFY(ordner.mkdir(u"paukfix-anderes"_s));
        {
            const CardSnapshot eigene(Pfad());
            ClearSnapshots();
            QCOMPARE(ordner.entryList(QDir::Dirs | QDir::NoDotAndDotDot).size(), 3);
            QCOMPARE(Inhalt(eigene.Path()), Inhalt(Pfad()));
        }
        QCOMPARE(::kill(kind, SIGKILL), 0);
        QCOMPARE(::waitpid(kind, nullptr, 0), kind);
        QCOMPARE(ordner.entryList(QDir::Dirs | QDir::NoDotAndDotDot).size(), 2);
        ClearSnapshots();
        QCOMPARE(ordner.entryList(QDir::Dirs | QDir::NoDotAndDotDot), QStringList{u"paukfix-anderes"_s});
        QVERIFY(ordner.rmdir(u"paukfix-anderes"_s));
    }

    void AnEmptyDirectoryOfTheSystemCostsAMessage()
    {
        Rechte(Pfad(), 0444);
        qputenv("TMPDIR", QFile::encodeName(Pfad(u"fehlt"_s)));
        {
            const OhneRechte niemand;
            meldungen_.antworten = {Meldungen::Antwort::Ja};
            QString name = u"a.pzb"_s;
            oeffner_->OpenCardFile(name);
            QVERIFY(!kartei_->IsOpen());
            QVERIFY(IsGermanMessage(meldungen_.Texte().last()));
        }
    }

    void ADamagedFileIsReported()
    {
        QFile datei(Pfad());
        QVERIFY(datei.open(QIODevice::ReadWrite) && datei.seek(5000) && datei.write("XXXXXXXX") == 8);
        datei.close();
        Rechte(Pfad(), 0444);
        const OhneRechte niemand;
        meldungen_.antworten = {Meldungen::Antwort::Ja};
        QString name = u"a.pzb"_s;
        oeffner_->OpenCardFile(name);
        QVERIFY(!kartei_->IsOpen());
        QVERIFY2(meldungen_.Texte().last().contains(Pfad()), qPrintable(meldungen_.Texte().last()));
        QVERIFY(meldungen_.Texte().last().endsWith(u" Fcode: 3049"));
    }

    // What is shown is no file of ours to be replaced.
    void ANewFileDoesNotTakeThePlaceOfOneThatAnotherProgramHas()
    {
        QProcess anderes;
        anderes.start(WorkerPath("lock_worker"), {Pfad()});
        QVERIFY(anderes.waitForReadyRead());
        Ansehen(Fehler::Gesperrt);
        QVERIFY_EXCEPTION_THROWN(KarteiAnlegen(*kartei_, u"a.pzb"_s), StoreError);
        QCOMPARE(GapInLock(Pfad()), QString());
        anderes.closeWriteChannel();
        QVERIFY(anderes.waitForFinished());
    }
};

PAUKFIX_CORE_TEST(AnsehenTest)
#include "AnsehenTest.moc"
