// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "DamageLab.h"
#include "KarteiOeffner.h"
#include "SafeFile.h"
#include "StoreTestSupport.h"
#include "TestPlaces.h"
#include "TestProgram.h"

#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QRandomGenerator>
#include <QTest>

#include <array>
#include <csignal>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace paukfix;
using namespace Qt::StringLiterals;

// Kills the tools at random moments: what is left is the old file or the new one, whole.
class ToolsKillTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void KillLeavesTheOldOrTheNewFile_data();
    void KillLeavesTheOldOrTheNewFile();
    void KillLeavesPicturesWithTheirCardsOrNone_data();
    void KillLeavesPicturesWithTheirCardsOrNone();

private:
    QTemporaryDir vorlage_;
    QRandomGenerator random_{99};
};

namespace {

constexpr int CardCount = 1500;

// A running worker that has said so many lines.
class Worker
{
public:
    Worker(const QByteArray &tool, const QString &directory)
    {
        if (::pipe(pipe_.data()) != 0)
            qFatal("no pipe");
        const QByteArray path = QFile::encodeName(directory);
        const QByteArray program = QFile::encodeName(WorkerPath("tool_worker"));
        pid_ = fork();
        if (pid_ == 0) {
            dup2(pipe_[1], STDOUT_FILENO);
            close(pipe_[0]);
            execl(program.constData(), program.constData(), tool.constData(), path.constData(), nullptr);
            _exit(127);
        }
        close(pipe_[1]);
    }

    Worker(const Worker &) = delete;
    Worker &operator=(const Worker &) = delete;

    ~Worker() { close(pipe_[0]); }

    // Waits until it has said `word`; false when it ended without.
    bool WaitFor(const char *word)
    {
        std::array<char, 64> buffer{};
        while (!said_.contains(word)) {
            const ssize_t count = read(pipe_[0], buffer.data(), buffer.size());
            if (count <= 0)
                return false;
            said_.append(buffer.data(), count);
        }
        return true;
    }

    // True when it was killed and had not died by itself.
    bool Kill()
    {
        int status = 0;
        return ::kill(pid_, SIGKILL) == 0 && waitpid(pid_, &status, 0) == pid_ && WIFSIGNALED(status);
    }

private:
    std::array<int, 2> pipe_{};
    pid_t pid_ = 0;
    QByteArray said_;
};

QByteArray Bytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
}

void CopyAll(const QString &from, const QString &to)
{
    for (const QString &name : QDir(from).entryList(QDir::Files))
        CopyFile(QDir(from).filePath(name), QDir(to).filePath(name));
}

// All files below a directory with what they hold; of card files the cards.
QMap<QString, QByteArray> AllFiles(const QString &directory)
{
    QMap<QString, QByteArray> files;
    QDirIterator names(directory, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (names.hasNext()) {
        const QString path = names.next();
        QByteArray content = Bytes(path);
        if (path.endsWith(".pzb")) {
            content.clear();
            for (const CardRecord &card : ReadCards(path))
                content += card.Frage_Klartext.toUtf8() + '|' + card.Picture_1_Name.toUtf8() + '\n';
        }
        files.insert(QDir(directory).relativeFilePath(path), content);
    }
    return files;
}

// Opens a box, as the next start does.
void OpenAndClose(const QString &path)
{
    TestMeldungen meldungen;
    TestClock clock;
    clock.perSecond = 1;
    CardStore store;
    KarteiOeffner oeffner(store, meldungen, clock);
    store.KarteiPfad = QFileInfo(path).path();
    QString name = QFileInfo(path).fileName();
    oeffner.OpenCardFile(name);
    QCOMPARE(meldungen.Texte(), QStringList());
}

} // namespace

void ToolsKillTest::initTestCase()
{
    QList<CardRecord> cards;
    for (int i = 1; i <= CardCount; ++i) {
        cards << MakeCard((i * 7) % CardCount + 1, i % 7, i);
        cards.back().Frage = QString(400, QChar('r'));
    }
    const QDir directory(vorlage_.path());
    MakeCardFile(directory.filePath("offen.pzb"), cards);
    MakeCardFile(directory.filePath("quelle.pzb"), cards);
    MakeCardFile(directory.filePath("ziel.pzb"), {MakeCard(77, 0, 1)});
    WriteFileSynced(directory.filePath("ziel.txt"), "alt");
    QByteArray lines;
    for (int i = 0; i < CardCount; ++i)
        lines += "Frage " + QByteArray::number(i) + "\tAntwort\tThema\r\n";
    WriteFileSynced(directory.filePath("neu.txt"), lines);
}

void ToolsKillTest::KillLeavesTheOldOrTheNewFile_data()
{
    QTest::addColumn<QByteArray>("tool");
    QTest::addColumn<QString>("made"); // the file that it makes or changes
    QTest::newRow("export") << QByteArray("export") << "ziel.txt";
    QTest::newRow("import") << QByteArray("import") << "offen.pzb";
    QTest::newRow("append") << QByteArray("anhaengen") << "offen.pzb";
    QTest::newRow("filter") << QByteArray("ausfiltern") << "ziel.pzb";
    QTest::newRow("mirror") << QByteArray("spiegeln") << "ziel.pzb";
    QTest::newRow("all to new") << QByteArray("alle") << "offen.pzb";
    QTest::newRow("done to new") << QByteArray("erledigte") << "offen.pzb";
}

void ToolsKillTest::KillLeavesTheOldOrTheNewFile()
{
    QFETCH(QByteArray, tool);
    QFETCH(QString, made);
    const int kills = qEnvironmentVariableIsSet("PAUKFIX_SHORT_TESTS") ? 8 : 50;
    const auto content = [&](const QString &directory) -> QVariant {
        const QString path = QDir(directory).filePath(made);
        return made.endsWith(".txt") ? QVariant(Bytes(path)) : QVariant::fromValue(ReadCards(path));
    };

    const QVariant old = content(vorlage_.path());
    QTemporaryDir whole;
    CopyAll(vorlage_.path(), whole.path());
    qint64 duration = 0; // nanoseconds
    {
        Worker worker(tool, whole.path());
        QVERIFY(worker.WaitFor("los"));
        QElapsedTimer timer;
        timer.start();
        QVERIFY(worker.WaitFor("fertig"));
        duration = timer.nsecsElapsed();
        QVERIFY(worker.Kill());
    }
    const QVariant fresh = content(whole.path());
    QVERIFY(fresh != old);

    int before = 0;
    int after = 0;
    for (int kill = 0; kill < kills; ++kill) {
        QTemporaryDir directory;
        CopyAll(vorlage_.path(), directory.path());
        {
            Worker worker(tool, directory.path());
            QVERIFY(worker.WaitFor("los"));
            const auto wait = static_cast<qint64>(static_cast<double>(duration) * random_.bounded(1.1));
            const timespec moment{static_cast<time_t>(wait / 1'000'000'000),
                                  static_cast<long>(wait % 1'000'000'000)};
            ppoll(nullptr, 0, &moment, nullptr);
            QVERIFY(worker.Kill());
        }
        const QVariant found = content(directory.path());
        QVERIFY2(found == old || found == fresh,
                 qPrintable(u"kill %1: neither the old nor the new file"_s.arg(kill)));
        ++(found == old ? before : after);
        if (made != "offen.pzb")
            QCOMPARE(ReadCards(directory.filePath("offen.pzb")).size(), CardCount);
        QCOMPARE(Bytes(directory.filePath("quelle.pzb")),
                 Bytes(QDir(vorlage_.path()).filePath("quelle.pzb")));
        if (made.endsWith(".pzb")) {
            CardFile file(directory.filePath(made));
            QCOMPARE(file.Database().execAndGet("PRAGMA integrity_check").getString(), std::string("ok"));
        }
        // The next start clears what the kill left.
        TestMeldungen meldungen;
        TestClock clock;
        CardStore store;
        KarteiOeffner oeffner(store, meldungen, clock);
        store.KarteiPfad = directory.path();
        QString name = u"offen.pzb"_s;
        oeffner.OpenCardFile(name);
        QCOMPARE(meldungen.Texte(), QStringList());
        store.CloseCardFile();
        const auto files = QDir::Files | QDir::Hidden;
        QCOMPARE(QDir(directory.path()).entryList(files), QDir(vorlage_.path()).entryList(files));
    }
    QVERIFY2(before > 0, "no kill came before the end");
    qInfo("%d kills left the old file, %d the new one", before, after);
}

void ToolsKillTest::KillLeavesPicturesWithTheirCardsOrNone_data()
{
    QTest::addColumn<QByteArray>("tool");
    QTest::newRow("append") << QByteArray("anhaengen mit Medien");
    QTest::newRow("mirror") << QByteArray("spiegeln mit Medien");
    QTest::newRow("pack") << QByteArray("packen");
}

void ToolsKillTest::KillLeavesPicturesWithTheirCardsOrNone()
{
    QFETCH(QByteArray, tool);
    const int kills = qEnvironmentVariableIsSet("PAUKFIX_SHORT_TESTS") ? 8 : 50;
    const auto make = [](const QTemporaryDir &directory) {
        QVERIFY(QDir(directory.path()).mkdir("dort"));
        QList<CardRecord> cards;
        for (int i = 1; i <= 60; ++i) {
            const QString name = u"%1.jpg"_s.arg(i % 40);
            cards << MakeCard(i, 0, i);
            cards.back().Picture_1_Name = name;
            WriteFile(directory.filePath(name), "hier " + name.toUtf8());
            WriteFile(directory.filePath("dort/" + name), "dort " + name.toUtf8());
        }
        MakeCardFile(directory.filePath("offen.pzb"), cards);
        MakeCardFile(directory.filePath("dort/quelle.pzb"), cards);
    };

    QTemporaryDir whole;
    make(whole);
    const auto old = AllFiles(whole.path());
    qint64 duration = 0; // nanoseconds
    {
        Worker worker(tool, whole.path());
        QVERIFY(worker.WaitFor("los"));
        QElapsedTimer timer;
        timer.start();
        QVERIFY(worker.WaitFor("fertig"));
        duration = timer.nsecsElapsed();
        QVERIFY(worker.Kill());
    }
    const auto fresh = AllFiles(whole.path());
    QVERIFY(fresh != old);

    int before = 0;
    int after = 0;
    for (int kill = 0; kill < kills; ++kill) {
        QTemporaryDir directory;
        make(directory);
        {
            Worker worker(tool, directory.path());
            QVERIFY(worker.WaitFor("los"));
            const auto wait = static_cast<qint64>(static_cast<double>(duration) * random_.bounded(1.1));
            const timespec moment{static_cast<time_t>(wait / 1'000'000'000),
                                  static_cast<long>(wait % 1'000'000'000)};
            ppoll(nullptr, 0, &moment, nullptr);
            QVERIFY(worker.Kill());
        }
        OpenAndClose(directory.filePath("offen.pzb"));
        OpenAndClose(directory.filePath("dort/quelle.pzb"));
        const auto found = AllFiles(directory.path());
        const bool isNew = found == fresh || (tool == "packen" && found.keys() == fresh.keys());
        QVERIFY2(found == old || isNew,
                 qPrintable(u"kill %1: %2"_s.arg(QString::number(kill), found.keys().join(' '))));
        ++(found == old ? before : after);
    }
    QVERIFY2(before > 0, "no kill came before the end");
    qInfo("%d kills left the old files, %d the new ones", before, after);
}

PAUKFIX_CORE_TEST(ToolsKillTest)
#include "ToolsKillTest.moc"
