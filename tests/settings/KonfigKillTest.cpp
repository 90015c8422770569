// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "TestPlaces.h"
#include "TestProgram.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <random>

using namespace paukfix;

// Kills a process that writes settings, and looks at what it left.
class KonfigKillTest : public QObject
{
    Q_OBJECT

private:
    static constexpr int Runs = 50;

    // Long enough to be written in several steps.
    QByteArray comment_ = "# " + QByteArray(100'000, 'k') + "\r\n";

    QByteArray Content(const QByteArray &names) const
    {
        return comment_ + "[recentfiles]\r\n" + names + "[Animation]\r\nAnimation=True\r\n" + comment_;
    }

    static QByteArray Read(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
    }

private slots:
    void KillLeavesTheOldOrTheNewFileWhole();
    void TwoWritersLoseNothing();
};

void KonfigKillTest::KillLeavesTheOldOrTheNewFileWhole()
{
    std::mt19937 random(3);
    const QByteArrayList whole = {Content(""), Content("a.pzb\r\n"), Content("a.pzb\r\nb.pzb\r\n"),
                                  Content("b.pzb\r\na.pzb\r\n")};
    const QTemporaryDir directory;
    const QString konfig = directory.filePath("konfig.dat");
    QFile file(konfig);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(whole.first());
    file.close();
    for (int run = 0; run < Runs; ++run) {
        QProcess writer;
        writer.start(WorkerPath("konfig_writer"), {directory.path(), "a.pzb", "b.pzb"});
        qint64 rounds = static_cast<qint64>(random() % 4) + 1;
        while (rounds > 0 && writer.waitForReadyRead()) {
            rounds -= writer.readAllStandardOutput().size();
            QVERIFY(whole.contains(Read(konfig)));
        }
        QCOMPARE(writer.state(), QProcess::Running);
        QTest::qSleep(static_cast<int>(random() % 3) + 1); // the moment of the kill
        writer.kill();
        QVERIFY(writer.waitForFinished());
        QVERIFY2(whole.contains(Read(konfig)), qPrintable(QString::number(run)));
    }
    // What the kills left is used again, it does not pile up.
    const QStringList entries = QDir(directory.path()).entryList(QDir::Files, QDir::Name);
    QVERIFY2(entries.size() <= 3, qPrintable(entries.join(' ')));
}

void KonfigKillTest::TwoWritersLoseNothing()
{
    const QTemporaryDir directory;
    QFile file(directory.filePath("konfig.dat"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(Content(""));
    file.close();
    QProcess first, second;
    first.start(WorkerPath("konfig_writer"), {directory.path(), "a.pzb", "b.pzb", "30"});
    second.start(WorkerPath("konfig_writer"), {directory.path(), "c.pzb", "d.pzb", "30"});
    QVERIFY(first.waitForFinished(60'000) && second.waitForFinished(60'000));
    QCOMPARE(first.exitCode(), 0);
    QCOMPARE(second.exitCode(), 0);
    const QByteArray content = Read(file.fileName());
    QCOMPARE(content.size(), Content("a.pzb\r\nb.pzb\r\nc.pzb\r\nd.pzb\r\n").size());
    for (const char *name : {"a.pzb\r\n", "b.pzb\r\n", "c.pzb\r\n", "d.pzb\r\n"})
        QCOMPARE(content.count(name), 1);
}

PAUKFIX_CORE_TEST(KonfigKillTest)
#include "KonfigKillTest.moc"
