// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "BoxRechnung.h"
#include "KarteVerschieben.h"
#include "StoreTestSupport.h"
#include "TestPlaces.h"
#include "TestProgram.h"

#include <QDir>
#include <QRandomGenerator>
#include <QTest>

#include <array>
#include <csignal>
#include <map>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

struct Platz
{
    int fach = 0;
    int lfd = 0;
    bool operator==(const Platz &) const = default;
};

using Kasten = std::map<int, Platz>; // by FrageNr

Kasten KastenIn(const QString &path)
{
    Kasten kasten;
    for (const CardRecord &card : ReadCards(path))
        kasten[static_cast<int>(card.FrageNr)] = {static_cast<int>(card.FachNr),
                                                  static_cast<int>(card.FachLfdNr)};
    return kasten;
}

struct Stand
{
    Kasten kasten;
    std::array<int, FachAnzahl> lfdMax{};
};

Stand StandIn(const QString &path)
{
    Stand stand{KastenIn(path)};
    for (const auto &[frageNr, platz] : stand.kasten) {
        int &most = stand.lfdMax[static_cast<std::size_t>(platz.fach)];
        most = std::max(most, platz.lfd);
    }
    return stand;
}

// What a worker makes of the box, step by step; what was taken back can be done again until the next change.
class Schrittemodell
{
public:
    explicit Schrittemodell(Stand stand) : staende_{std::move(stand)} {}

    const Kasten &Jetzt() const { return staende_[ort_].kasten; }

    void Schritt(const QByteArray &was, int frageNr, bool richtig)
    {
        if (was == "zurueck") {
            --ort_;
        } else if (was == "wieder") {
            ++ort_;
        } else {
            Stand stand = staende_[ort_];
            if (was == "antwort")
                Beantworten(stand, frageNr, richtig);
            else
                Importieren(stand);
            staende_.resize(++ort_);
            staende_.push_back(std::move(stand));
        }
    }

private:
    // Where an answer must have put the card: at the back of its new compartment.
    static void Beantworten(Stand &stand, int frageNr, bool richtig)
    {
        Platz &platz = stand.kasten.at(frageNr);
        platz.fach = ZielFach(platz.fach, richtig);
        platz.lfd = ++stand.lfdMax[static_cast<std::size_t>(platz.fach)];
    }

    static void Importieren(Stand &stand)
    {
        for (int i = 0; i < 3; ++i)
            stand.kasten[stand.kasten.rbegin()->first + 1] = {FachNeu, ++stand.lfdMax[FachNeu]};
    }

    std::vector<Stand> staende_;
    std::size_t ort_ = 0;
};

// Reads from `pipe` until its end, or until `lines` lines are there.
void ReadLines(int pipe, QByteArray &said, qsizetype lines)
{
    std::array<char, 4096> buffer{};
    while (said.count('\n') < lines) {
        const ssize_t count = read(pipe, buffer.data(), buffer.size());
        if (count <= 0)
            return;
        said.append(buffer.data(), count);
    }
}

} // namespace

class KillTest : public QObject
{
    Q_OBJECT

private slots:
    void EveryStepIsThereOnceAfterAKillAtAnyMoment_data();
    void EveryStepIsThereOnceAfterAKillAtAnyMoment();
};

void KillTest::EveryStepIsThereOnceAfterAKillAtAnyMoment_data()
{
    QTest::addColumn<bool>("wenden");
    QTest::newRow("answers") << false;
    QTest::newRow("answers and imports, taken back and done again") << true;
}

void KillTest::EveryStepIsThereOnceAfterAKillAtAnyMoment()
{
    QFETCH(bool, wenden);
    const int kills = qEnvironmentVariableIsSet("PAUKFIX_SHORT_TESTS") ? 20 : 220;
    QTemporaryDir directory;
    const QString path = directory.filePath(u"lernen.pzb"_s);
    QList<CardRecord> cards;
    for (int i = 1; i <= 300; ++i)
        cards << MakeCard(i, i % 7, i / 7 + 1);
    MakeCardFile(path, cards);

    QRandomGenerator random(4711);
    int between = 0; // kills that hit between "will" and "hat"
    int answers = 0;
    for (int kill = 0; kill < kills; ++kill) {
        Schrittemodell expected(StandIn(path));
        std::array<int, 2> pipe{};
        QCOMPARE(::pipe(pipe.data()), 0);
        const QByteArray seed = QByteArray::number(kill);
        const QByteArray program = QFile::encodeName(WorkerPath("learn_worker"));
        const pid_t worker = fork();
        if (worker == 0) {
            dup2(pipe[1], STDOUT_FILENO);
            close(pipe[0]);
            execl(program.constData(), program.constData(), qPrintable(path), seed.constData(),
                  wenden ? "wenden" : nullptr, nullptr);
            _exit(127);
        }
        close(pipe[1]);
        QByteArray said;
        ReadLines(pipe[0], said, 1 + static_cast<qsizetype>(random.bounded(8)));
        QVERIFY2(said.startsWith("offen"), said.constData());
        // A random moment within the next answers; the pipe's end would say that the worker died by itself.
        timespec moment{0, static_cast<long>(random.bounded(2'000'000))};
        ppoll(nullptr, 0, &moment, nullptr);
        QCOMPARE(::kill(worker, SIGKILL), 0);
        int status = 0;
        QCOMPARE(waitpid(worker, &status, 0), worker);
        QVERIFY(WIFSIGNALED(status));
        ReadLines(pipe[0], said, std::numeric_limits<qsizetype>::max());
        close(pipe[0]);

        QList<QByteArray> open; // announced and not yet reported as stored
        for (const QByteArray &line : said.split('\n')) {
            const QList<QByteArray> words = line.split(' ');
            if (words.size() != 4 || words[0] == "offen")
                continue;
            if (words[0] == "will") {
                open = words;
            } else {
                QCOMPARE(words[0], QByteArray("hat"));
                expected.Schritt(words[1], words[2].toInt(), words[3].toInt() != 0);
                open.clear();
                ++answers;
            }
        }
        const Kasten found = KastenIn(path);
        if (found != expected.Jetzt()) {
            QVERIFY2(!open.isEmpty(),
                     qPrintable(u"kill %1: a step that was reported is missing"_s.arg(kill)));
            expected.Schritt(open[1], open[2].toInt(), open[3].toInt() != 0);
            QVERIFY2(found == expected.Jetzt(), qPrintable(u"kill %1: neither before nor after"_s.arg(kill)));
        }
        between += open.isEmpty() ? 0 : 1;
        CardFile file(path);
        QCOMPARE(file.Database().execAndGet("PRAGMA integrity_check").getString(), std::string("ok"));
    }
    QCOMPARE(QDir(directory.path()).entryList(QDir::Files | QDir::Hidden), QStringList("lernen.pzb"));
    QVERIFY(answers > kills);
    QVERIFY2(between > kills / 4, "the kills did not hit the storing");
}

PAUKFIX_CORE_TEST(KillTest)
#include "KillTest.moc"
