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

// Where an answer must have put the card: at the back of its new compartment.
void Beantworten(Kasten &kasten, std::array<int, FachAnzahl> &lfdMax, int frageNr, bool richtig)
{
    Platz &platz = kasten.at(frageNr);
    platz.fach = ZielFach(platz.fach, richtig);
    platz.lfd = ++lfdMax[static_cast<std::size_t>(platz.fach)];
}

std::array<int, FachAnzahl> LfdMax(const Kasten &kasten)
{
    std::array<int, FachAnzahl> most{};
    for (const auto &[frageNr, platz] : kasten)
        most[static_cast<std::size_t>(platz.fach)] =
            std::max(most[static_cast<std::size_t>(platz.fach)], platz.lfd);
    return most;
}

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
    void EveryAnswerIsThereOnceAfterAKillAtAnyMoment();
};

void KillTest::EveryAnswerIsThereOnceAfterAKillAtAnyMoment()
{
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
        Kasten expected = KastenIn(path);
        std::array<int, 2> pipe{};
        QCOMPARE(::pipe(pipe.data()), 0);
        const QByteArray seed = QByteArray::number(kill);
        const QByteArray program = QFile::encodeName(WorkerPath("learn_worker"));
        const pid_t worker = fork();
        if (worker == 0) {
            dup2(pipe[1], STDOUT_FILENO);
            close(pipe[0]);
            execl(program.constData(), program.constData(), qPrintable(path), seed.constData(), nullptr);
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

        std::array<int, FachAnzahl> lfdMax = LfdMax(expected);
        std::pair<int, int> open; // announced and not yet reported as stored; 0 for none
        for (const QByteArray &line : said.split('\n')) {
            const QList<QByteArray> words = line.split(' ');
            if (words.size() != 3 || words[0] == "offen")
                continue;
            const std::pair answer{words[1].toInt(), words[2].toInt()};
            if (words[0] == "will") {
                open = answer;
            } else {
                QCOMPARE(words[0], QByteArray("hat"));
                Beantworten(expected, lfdMax, answer.first, answer.second);
                open = {};
                ++answers;
            }
        }
        const Kasten found = KastenIn(path);
        if (found != expected) {
            QVERIFY2(open.first != 0,
                     qPrintable(u"kill %1: an answer that was reported is missing"_s.arg(kill)));
            Beantworten(expected, lfdMax, open.first, open.second);
            QVERIFY2(found == expected, qPrintable(u"kill %1: neither before nor after"_s.arg(kill)));
        }
        between += open.first != 0 ? 1 : 0;
        CardFile file(path);
        QCOMPARE(file.Database().execAndGet("PRAGMA integrity_check").getString(), std::string("ok"));
    }
    QCOMPARE(QDir(directory.path()).entryList(QDir::Files | QDir::Hidden), QStringList("lernen.pzb"));
    QVERIFY(answers > kills);
    QVERIFY2(between > kills / 4, "the kills did not hit the storing");
}

PAUKFIX_CORE_TEST(KillTest)
#include "KillTest.moc"
