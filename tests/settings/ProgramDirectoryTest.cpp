// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "ProgramDirectory.h"

#include "StoreError.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <memory>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

// Root may write everywhere: the test goes on as an ordinary user.
void BecomeOrdinaryUser(const QString &directory)
{
    constexpr uid_t Nobody = 65534;
    if (geteuid() == 0 &&
        (chown(QFile::encodeName(directory).constData(), Nobody, Nobody) != 0 || seteuid(Nobody) != 0))
        qFatal("cannot become an ordinary user");
}

} // namespace

class ProgramDirectoryTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> directory_;
    QString running_, installed_, user_;

    static void Write(const QString &path, const QByteArray &content)
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write %s", qPrintable(path));
    }

    static QByteArray Read(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("missing");
    }

    static void SetMode(const QString &path, mode_t mode)
    {
        if (chmod(QFile::encodeName(path).constData(), mode) != 0)
            qFatal("cannot change the mode of %s", qPrintable(path));
    }

    QString Find() const { return ProgramDirectory(running_, installed_, user_); }

    int FindError() const
    {
        try {
            Find();
        } catch (const StoreError &error) {
            return error.Number();
        }
        return 0;
    }

private slots:
    void init();
    void cleanup();
    void PortableCopyIsItsOwnProgramDirectory();
    void ReadOnlyInstallationFillsTheUsersDirectory();
    void ReadOnlyKonfigFillsTheUsersDirectory();
    void CopiesCanBeRewritten();
    void DeletedFileStaysMissing();
    void UsersFilesAreKept();
    void EmptyDirectoryIsFilled();
    void KillWhileFillingLeavesItUnfilled();
    void MissingInstallationIsAnErrorAndLeavesNothing();
    void ForbiddenPlaceIsAnError();
    void NoSeparatorAtTheEnd();
    void UsersDirectoryIsUnderTheirData();
};

void ProgramDirectoryTest::init()
{
    directory_ = std::make_unique<QTemporaryDir>();
    BecomeOrdinaryUser(directory_->path());
    running_ = directory_->filePath("bin");
    installed_ = directory_->filePath("share");
    user_ = directory_->filePath("home/.local/share/paukfix");
    for (const QString &path : {running_, installed_, installed_ + "/samples"})
        QVERIFY(QDir().mkpath(path));
    Write(installed_ + "/konfig.dat", "[Font]\r\n");
    Write(installed_ + "/Käse.txt", "Käse");
    Write(installed_ + "/samples/eins.pzb", QByteArray(300'000, 'x'));
    for (const char *name : {"/konfig.dat", "/Käse.txt", "/samples/eins.pzb"})
        SetMode(installed_ + name, 0444);
    SetMode(installed_, 0555);
    SetMode(running_, 0555);
}

void ProgramDirectoryTest::cleanup()
{
    SetMode(running_, 0755);
    if (QFile::exists(installed_))
        SetMode(installed_, 0755);
    directory_.reset();
    QCOMPARE(seteuid(getuid()), 0);
}

void ProgramDirectoryTest::PortableCopyIsItsOwnProgramDirectory()
{
    SetMode(running_, 0755);
    Write(running_ + "/konfig.dat", "");
    QCOMPARE(Find(), running_);
    QVERIFY(!QFile::exists(user_));
}

void ProgramDirectoryTest::ReadOnlyInstallationFillsTheUsersDirectory()
{
    QCOMPARE(Find(), user_);
    QCOMPARE(Read(user_ + "/konfig.dat"), "[Font]\r\n");
    QCOMPARE(Read(user_ + "/Käse.txt"), "Käse");
    QCOMPARE(Read(user_ + "/samples/eins.pzb"), QByteArray(300'000, 'x'));
    QCOMPARE(QDir(user_ + "/..").entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList("paukfix"));
}

void ProgramDirectoryTest::ReadOnlyKonfigFillsTheUsersDirectory()
{
    SetMode(running_, 0755);
    Write(running_ + "/konfig.dat", "");
    SetMode(running_ + "/konfig.dat", 0444);
    QCOMPARE(Find(), user_);
    // It could be read and written, but not be replaced.
    SetMode(running_ + "/konfig.dat", 0644);
    SetMode(running_, 0555);
    QCOMPARE(Find(), user_);
}

void ProgramDirectoryTest::CopiesCanBeRewritten()
{
    Find();
    Write(user_ + "/konfig.dat", "mine");
    Write(user_ + "/samples/zwei.pzb", "new");
    QCOMPARE(Read(user_ + "/konfig.dat"), "mine");
}

void ProgramDirectoryTest::DeletedFileStaysMissing()
{
    Find();
    QVERIFY(QFile::remove(user_ + "/konfig.dat"));
    QCOMPARE(Find(), user_);
    QVERIFY(!QFile::exists(user_ + "/konfig.dat"));
}

void ProgramDirectoryTest::UsersFilesAreKept()
{
    Find();
    Write(user_ + "/konfig.dat", "mine");
    QCOMPARE(Find(), user_);
    QCOMPARE(Read(user_ + "/konfig.dat"), "mine");
}

void ProgramDirectoryTest::EmptyDirectoryIsFilled()
{
    QVERIFY(QDir().mkpath(user_));
    QCOMPARE(Find(), user_);
    QCOMPARE(Read(user_ + "/konfig.dat"), "[Font]\r\n");
}

void ProgramDirectoryTest::KillWhileFillingLeavesItUnfilled()
{
    // A run in a process of its own is killed at its first write above 100,000 bytes, in the middle of a
    // file.
    const pid_t child = fork();
    QVERIFY(child >= 0);
    if (child == 0) {
        const rlimit limit{100'000, 100'000};
        setrlimit(RLIMIT_FSIZE, &limit);
        std::signal(SIGXFSZ, [](int) { kill(getpid(), SIGKILL); });
        Find();
        _exit(0);
    }
    int status = 0;
    QCOMPARE(waitpid(child, &status, 0), child);
    QVERIFY(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
    QVERIFY(!QFile::exists(user_));

    QCOMPARE(Find(), user_);
    QCOMPARE(Read(user_ + "/samples/eins.pzb"), QByteArray(300'000, 'x'));
    QCOMPARE(QDir(user_ + "/..").entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList("paukfix"));
}

void ProgramDirectoryTest::MissingInstallationIsAnErrorAndLeavesNothing()
{
    SetMode(installed_, 0755);
    QVERIFY(QDir(installed_).removeRecursively());
    QCOMPARE(FindError(), Fehler::PfadNichtGefunden);
    QVERIFY(QDir(user_ + "/..").isEmpty());
}

void ProgramDirectoryTest::ForbiddenPlaceIsAnError()
{
    user_ = running_ + "/paukfix";
    QCOMPARE(FindError(), Fehler::NichtErlaubt);
}

void ProgramDirectoryTest::NoSeparatorAtTheEnd()
{
    user_ += '/';
    QVERIFY(!Find().endsWith('/'));
    SetMode(running_, 0755);
    Write(running_ + "/konfig.dat", "");
    running_ += '/';
    QCOMPARE(Find() + '/', running_);
}

void ProgramDirectoryTest::UsersDirectoryIsUnderTheirData()
{
    const QByteArray old = qgetenv("XDG_DATA_HOME");
    qputenv("XDG_DATA_HOME", "/tmp/daten");
    QCOMPARE(UserDataDirectory(), "/tmp/daten/paukfix");
    old.isNull() ? qunsetenv("XDG_DATA_HOME") : qputenv("XDG_DATA_HOME", old);
}

QTEST_APPLESS_MAIN(ProgramDirectoryTest)
#include "ProgramDirectoryTest.moc"
