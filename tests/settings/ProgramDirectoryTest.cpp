// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "ProgramDirectory.h"

#include "EngineLocks.h"
#include "FileHandle.h"
#include "ResourceLimit.h"
#include "TestProgram.h"

#include <QDir>
#include <QFile>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace paukfix;
using namespace Qt::StringLiterals;

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
    QString running_, installed_, user_, former_;

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

    ProgramPlaces Places() const { return {running_, installed_, user_, former_}; }

    ProgramDirectory Found() const { return FindProgramDirectory(Places()); }

    QString Find() const
    {
        const ProgramDirectory found = Found();
        if (!found.message.isEmpty())
            qFatal("%s", qPrintable(found.message));
        return found.path;
    }

    static QStringList Names(const QString &directory)
    {
        return QDir(directory).entryList(QDir::AllEntries | QDir::Hidden | QDir::System |
                                         QDir::NoDotAndDotDot);
    }

    // What an earlier version has filled for the user, and what the user has put there.
    void MakeFormer() const
    {
        QVERIFY(QDir().mkpath(former_ + "/eigene"));
        Write(former_ + "/konfig.dat", "mine");
        Write(former_ + "/konfig.new", "mine");
        Write(former_ + "/ueber.rtf", "shipped");
        Write(former_ + "/Applause.wav", "my own applause");
        Write(former_ + "/eins.pzb", "learned with");
        Write(former_ + "/Latein.pzb", "own cards");
        Write(former_ + "/Latein.pzb-journal", "hot");
        Write(former_ + "/eigene/zwei.pzb", "more");
    }

    // An installation below "~/.local": its files lie where earlier versions kept the user's.
    void InstallInFormer()
    {
        SetMode(installed_, 0755);
        QVERIFY(QDir().mkpath(QFileInfo(former_).path()));
        QVERIFY(QDir().rename(installed_, former_));
        // The same place, spelled as the running program finds it.
        QVERIFY(QDir().mkpath(directory_->filePath("home/.local/bin")));
        QVERIFY(QFile::link(directory_->filePath("home/.local"), directory_->filePath("link")));
        installed_ = directory_->filePath("link/share/paukfix");
    }

    // The same after an earlier version was used there, and this one installed over it.
    void UseInstalled() const
    {
        QVERIFY(QDir().mkpath(former_ + "/eigene"));
        Write(former_ + "/konfig.new", "[recentfiles]\r\n" + former_.toUtf8() + "/Latein.pzb\r\n" +
                                           former_.toUtf8() + "/gone.pzb\r\n[Font]\r\nFontName=mine\r\n");
        Write(former_ + "/eins.pzb", "learned with");
        Write(former_ + "/Latein.pzb", "own cards");
        Write(former_ + "/Latein.pzb-journal", "hot");
        Write(former_ + "/eigene/zwei.pzb", "more");
    }

    // Locked as a card file is that another program has open.
    static FileHandle OpenByOther(const QString &path)
    {
        FileHandle file(open(QFile::encodeName(path).constData(), O_RDWR | O_CLOEXEC));
        LockCardFile(file.Get(), F_WRLCK, path);
        return file;
    }

    void CheckMoved() const
    {
        QCOMPARE(Read(user_ + "/konfig.dat"), "mine");
        QCOMPARE(Read(user_ + "/eins.pzb"), "learned with");
        QCOMPARE(Read(user_ + "/Latein.pzb"), "own cards");
        QCOMPARE(Read(user_ + "/Latein.pzb-journal"), "hot");
        QCOMPARE(Read(user_ + "/eigene/zwei.pzb"), "more");
        // The program's own files are read where an update brings them; what is no copy of them is kept.
        QVERIFY(!QFile::exists(user_ + "/ueber.rtf"));
        QVERIFY(!QFile::exists(user_ + "/Applause.wav"));
        QCOMPARE(Read(user_ + "/Frühere Programmdateien/Applause.wav"), "my own applause");
        QCOMPARE(Names(user_ + "/Frühere Programmdateien"), QStringList("Applause.wav"));
    }

private slots:
    void init();
    void cleanup();
    void PortableCopyIsItsOwnProgramDirectory();
    void PortableCopyWithReadOnlySettingsIsRespected();
    void ReadOnlyPortableCopyIsReadAndTheUserHasTheSettings();
    void FirstStartPutsSettingsAndSampleBoxesInTheUsersDirectory();
    void CopiesCanBeRewritten();
    void DeletedSampleStaysDeleted();
    void DeletedSettingsAreLeftToTheirReader();
    void UsersFilesAreKept();
    void UnexpectedFileChangesNothing();
    void KillWhileFillingIsFinishedByTheNextStart();
    void FullDiskKeepsTheSettingsAndSaysSo();
    void MissingInstallationIsToldAndLeavesNothing();
    void ForbiddenPlaceIsToldAndShippedFilesAreRead();
    void FormerDirectoryIsMovedOnceAndSaysSo();
    void FormerDirectoryIsMovedAroundAnUnexpectedFile();
    void KillWhileMovingIsMadeGoodByTheNextStart();
    void FormerDirectoryThatCannotBeMovedStays_data();
    void FormerDirectoryThatCannotBeMovedStays();
    void FormerDirectoryStaysWhileACardFileIsOpen_data();
    void FormerDirectoryStaysWhileACardFileIsOpen();
    void InstallationInTheFormerDirectoryIsNotTouched();
    void UsersFilesAmongInstalledOnesAreMoved_data();
    void UsersFilesAmongInstalledOnesAreMoved();
    void UsersFilesAmongInstalledOnesThatCannotBeMovedStay_data();
    void UsersFilesAmongInstalledOnesThatCannotBeMovedStay();
    void InstallationInsideTheFormerDirectoryIsNotMoved();
    void NoSeparatorAtTheEnd();
    void OwnDirectoryIsInTheUsersDocuments();
};

void ProgramDirectoryTest::init()
{
    directory_ = std::make_unique<QTemporaryDir>();
    BecomeOrdinaryUser(directory_->path());
    running_ = directory_->filePath("bin");
    installed_ = directory_->filePath("share");
    user_ = directory_->filePath("home/Dokumente/Paukfix");
    former_ = directory_->filePath("home/.local/share/paukfix");
    for (const QString &path : {running_, installed_ + "/beispiele"})
        QVERIFY(QDir().mkpath(path));
    Write(installed_ + "/konfig.dat", "[Font]\r\n");
    Write(installed_ + "/ueber.rtf", "shipped");
    Write(installed_ + "/Applause.wav", "clapping");
    Write(installed_ + "/beispiele/Käse.wav", "Käse");
    Write(installed_ + "/beispiele/eins.pzb", QByteArray(300'000, 'x'));
    for (const char *name : {"/konfig.dat", "/ueber.rtf", "/beispiele/Käse.wav", "/beispiele/eins.pzb"})
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
    MakeFormer();
    QCOMPARE(Find(), running_);
    QVERIFY(!QFile::exists(user_));
    QCOMPARE(Read(former_ + "/konfig.dat"), "mine");
}

void ProgramDirectoryTest::PortableCopyWithReadOnlySettingsIsRespected()
{
    SetMode(running_, 0755);
    Write(running_ + "/konfig.dat", "");
    SetMode(running_ + "/konfig.dat", 0444);
    QCOMPARE(Find(), running_);
    QVERIFY(!QFile::exists(user_));
    QCOMPARE(seteuid(getuid()), 0);
    QVERIFY(!MayWrite(running_ + "/konfig.dat")); // whoever asks
}

void ProgramDirectoryTest::ReadOnlyPortableCopyIsReadAndTheUserHasTheSettings()
{
    SetMode(running_, 0755);
    Write(running_ + "/konfig.dat", "portable");
    SetMode(running_, 0555);
    SetMode(installed_, 0755);
    QVERIFY(QDir(installed_).removeRecursively());
    QCOMPARE(Find(), user_);
    QCOMPARE(Read(user_ + "/konfig.dat"), "portable");
    QCOMPARE(Found().shipped, QStringList({installed_, running_}));
}

void ProgramDirectoryTest::FirstStartPutsSettingsAndSampleBoxesInTheUsersDirectory()
{
    QCOMPARE(Find(), user_);
    QCOMPARE(Read(user_ + "/konfig.dat"), "[Font]\r\n");
    QCOMPARE(Read(user_ + "/Käse.wav"), "Käse");
    QCOMPARE(Read(user_ + "/eins.pzb"), QByteArray(300'000, 'x'));
    QCOMPARE(Names(user_), QStringList({"eins.pzb", "konfig.dat", "Käse.wav"}));
    QCOMPARE(Names(user_ + "/.."), QStringList("Paukfix"));
    QCOMPARE(Found().shipped, QStringList({installed_, running_}));
    QVERIFY(Found().keepsSettings);
}

void ProgramDirectoryTest::CopiesCanBeRewritten()
{
    Find();
    Write(user_ + "/konfig.dat", "mine");
    Write(user_ + "/eins.pzb", "new");
    QCOMPARE(Read(user_ + "/konfig.dat"), "mine");
}

void ProgramDirectoryTest::DeletedSampleStaysDeleted()
{
    Find();
    QVERIFY(QFile::remove(user_ + "/eins.pzb"));
    QCOMPARE(Find(), user_);
    QVERIFY(!QFile::exists(user_ + "/eins.pzb"));
}

void ProgramDirectoryTest::DeletedSettingsAreLeftToTheirReader()
{
    Find();
    QVERIFY(QFile::remove(user_ + "/konfig.dat"));
    QVERIFY(QFile::remove(user_ + "/eins.pzb"));
    QCOMPARE(Find(), user_);
    QCOMPARE(Names(user_), QStringList("Käse.wav"));
    // Of all that the program has put there only what it has written itself is left.
    QVERIFY(QFile::remove(user_ + "/Käse.wav"));
    Write(user_ + "/konfig.new", "");
    QCOMPARE(Find(), user_);
    QCOMPARE(Names(user_), QStringList("konfig.new"));
}

void ProgramDirectoryTest::UsersFilesAreKept()
{
    Find();
    Write(user_ + "/konfig.dat", "mine");
    QCOMPARE(Find(), user_);
    QCOMPARE(Read(user_ + "/konfig.dat"), "mine");
}

void ProgramDirectoryTest::UnexpectedFileChangesNothing()
{
    QVERIFY(QDir().mkpath(user_));
    Write(user_ + "/.directory", "a file manager's");
    QCOMPARE(Find(), user_);
    QCOMPARE(Names(user_), QStringList({".directory", "eins.pzb", "konfig.dat", "Käse.wav"}));
    QCOMPARE(Read(user_ + "/.directory"), "a file manager's");
}

void ProgramDirectoryTest::KillWhileFillingIsFinishedByTheNextStart()
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
    QVERIFY(!QFile::exists(user_ + "/eins.pzb"));
    Write(user_ + "/konfig.dat", "mine");

    QCOMPARE(Find(), user_);
    QCOMPARE(Read(user_ + "/konfig.dat"), "mine");
    QCOMPARE(Read(user_ + "/eins.pzb"), QByteArray(300'000, 'x'));
    QCOMPARE(Names(user_), QStringList({"eins.pzb", "konfig.dat", "Käse.wav"}));
}

void ProgramDirectoryTest::FullDiskKeepsTheSettingsAndSaysSo()
{
    std::optional<FullDisk> full(1000);
    const ProgramDirectory found = Found();
    full.reset();
    QCOMPARE(found.path, user_);
    QCOMPARE(found.message, "Die Beispielkarteien konnten nicht angelegt werden: Der Datenträger ist voll: " +
                                user_ + "/.einrichtung/eins.pzb");
    QVERIFY(found.keepsSettings);
    QCOMPARE(Read(user_ + "/konfig.dat"), "[Font]\r\n");
    QCOMPARE(Find(), user_);
    QCOMPARE(Read(user_ + "/eins.pzb"), QByteArray(300'000, 'x'));
}

void ProgramDirectoryTest::MissingInstallationIsToldAndLeavesNothing()
{
    SetMode(installed_, 0755);
    QVERIFY(QDir(installed_).removeRecursively());
    const ProgramDirectory found = Found();
    QCOMPARE(found.path, running_);
    QVERIFY(!found.keepsSettings);
    QCOMPARE(found.message, "Fehler bei Form Intro Load: Die Einstellungen können nicht gespeichert werden: "
                            "Pfad nicht gefunden: " +
                                installed_ + "/konfig.dat");
    QVERIFY(!QFile::exists(user_));
}

void ProgramDirectoryTest::ForbiddenPlaceIsToldAndShippedFilesAreRead()
{
    user_ = running_ + "/Paukfix";
    const ProgramDirectory found = Found();
    QCOMPARE(found.path, installed_);
    QVERIFY(!found.keepsSettings);
    QCOMPARE(found.message, "Fehler bei Form Intro Load: Die Einstellungen können nicht gespeichert werden: "
                            "Zugriff verweigert: " +
                                user_);
}

void ProgramDirectoryTest::FormerDirectoryIsMovedOnceAndSaysSo()
{
    MakeFormer();
    const ProgramDirectory found = Found();
    QCOMPARE(found.path, user_);
    QCOMPARE(found.message, u"Ihre Karteien und Einstellungen liegen jetzt in „%1“. Bisher lagen "
                            u"sie in „%2“."_s.arg(user_, former_));
    CheckMoved();
    // Names that are remembered elsewhere lead to the same files.
    QVERIFY(QFileInfo(former_).isSymLink());
    QCOMPARE(Read(former_ + "/Latein.pzb"), "own cards");
    // Samples that the user has deleted do not come back.
    QVERIFY(!QFile::exists(user_ + "/Käse.wav"));
    QCOMPARE(Find(), user_);
    CheckMoved();
}

void ProgramDirectoryTest::FormerDirectoryIsMovedAroundAnUnexpectedFile()
{
    MakeFormer();
    QVERIFY(QDir().mkpath(user_));
    Write(user_ + "/.directory", "");
    QCOMPARE(Found().path, user_);
    CheckMoved();
    QVERIFY(QFile::exists(user_ + "/.directory"));
}

void ProgramDirectoryTest::KillWhileMovingIsMadeGoodByTheNextStart()
{
    MakeFormer();
    QVERIFY(QDir().mkpath(user_));
    QVERIFY(QFile::rename(former_ + "/Latein.pzb", user_ + "/Latein.pzb"));
    QVERIFY(QFile::remove(former_ + "/ueber.rtf"));
    QCOMPARE(Found().path, user_);
    CheckMoved();
    QVERIFY(QFileInfo(former_).isSymLink());
}

void ProgramDirectoryTest::FormerDirectoryThatCannotBeMovedStays_data()
{
    QTest::addColumn<int>("obstacle");
    QTest::newRow("a file of the same name") << 0;
    QTest::newRow("the directory may not be changed") << 1;
    QTest::newRow("it is a link of the user's") << 2;
}

void ProgramDirectoryTest::FormerDirectoryThatCannotBeMovedStays()
{
    QFETCH(const int, obstacle);
    MakeFormer();
    if (obstacle == 0) {
        QVERIFY(QDir().mkpath(user_));
        Write(user_ + "/eins.pzb", "another");
    } else if (obstacle == 1) {
        SetMode(former_, 0555);
    } else {
        QVERIFY(QDir().rename(former_, former_ + "-2"));
        QVERIFY(QFile::link(former_ + "-2", former_));
    }
    QCOMPARE(Find(), former_);
    SetMode(former_, 0755);
    QCOMPARE(Read(former_ + "/konfig.dat"), "mine");
    QCOMPARE(Read(former_ + "/eins.pzb"), "learned with");
    QCOMPARE(Names(former_).size(), 8);
    QCOMPARE(Names(user_), obstacle == 0 ? QStringList("eins.pzb") : QStringList());
    if (obstacle == 0)
        QCOMPARE(Read(user_ + "/eins.pzb"), "another");
}

void ProgramDirectoryTest::FormerDirectoryStaysWhileACardFileIsOpen_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("beside the settings") << "Latein.pzb";
    QTest::newRow("in a directory of the user's") << "eigene/zwei.pzb";
}

void ProgramDirectoryTest::FormerDirectoryStaysWhileACardFileIsOpen()
{
    QFETCH(const QString, name);
    MakeFormer();
    const QStringList before = Names(former_);
    {
        const FileHandle other = OpenByOther(former_ + '/' + name);
        const ProgramDirectory found = Found();
        QCOMPARE(found.path, former_);
        QCOMPARE(found.message, u"Ihre Karteien konnten nicht alle nach „%1“ gebracht werden: Die "
                                u"Datei „%2“ ist gesperrt: ein anderes Programm hat sie geöffnet."_s.arg(
                                    user_, former_ + '/' + name));
        QVERIFY(found.keepsSettings);
        QCOMPARE(Names(former_), before);
        QVERIFY(!QFile::exists(user_));
    }
    QCOMPARE(Found().path, user_);
    CheckMoved();
}

void ProgramDirectoryTest::InstallationInTheFormerDirectoryIsNotTouched()
{
    InstallInFormer();
    const QStringList shipped = Names(installed_), samples = Names(installed_ + "/beispiele");
    for (int start = 0; start < 2; ++start) {
        QCOMPARE(Find(), user_);
        QCOMPARE(Names(installed_), shipped);
        QCOMPARE(Names(installed_ + "/beispiele"), samples);
        QVERIFY(!QFileInfo(installed_).isSymLink());
        QCOMPARE(Names(user_), QStringList({"eins.pzb", "konfig.dat", "Käse.wav"}));
    }
}

void ProgramDirectoryTest::UsersFilesAmongInstalledOnesAreMoved_data()
{
    QTest::addColumn<bool>("killed");
    QTest::newRow("at once") << false;
    QTest::newRow("after a kill") << true;
}

void ProgramDirectoryTest::UsersFilesAmongInstalledOnesAreMoved()
{
    QFETCH(const bool, killed);
    InstallInFormer();
    const QStringList shipped = Names(installed_), samples = Names(installed_ + "/beispiele");
    UseInstalled();
    if (killed) {
        QVERIFY(QDir().mkpath(user_ + "/.einrichtung"));
        for (const char *name : {"eins.pzb", "Latein.pzb"})
            QVERIFY(QFile::rename(former_ + '/' + name, user_ + '/' + name));
    }
    const ProgramDirectory found = Found();
    QCOMPARE(found.path, user_);
    QCOMPARE(found.message, u"Ihre Karteien und Einstellungen liegen jetzt in „%1“. Bisher lagen "
                            u"sie in „%2“."_s.arg(user_, former_));
    QVERIFY(found.keepsSettings);
    QCOMPARE(Read(user_ + "/konfig.dat"), "[recentfiles]\r\n" + user_.toUtf8() + "/Latein.pzb\r\n" +
                                              former_.toUtf8() + "/gone.pzb\r\n[Font]\r\nFontName=mine\r\n");
    QCOMPARE(Read(user_ + "/eins.pzb"), "learned with");
    QCOMPARE(Read(user_ + "/Latein.pzb"), "own cards");
    QCOMPARE(Read(user_ + "/Latein.pzb-journal"), "hot");
    QCOMPARE(Read(user_ + "/eigene/zwei.pzb"), "more");
    // What the program has brought stays where an update writes it.
    QStringList left = Names(installed_);
    left.removeAll("konfig.new");
    QCOMPARE(left, shipped);
    QCOMPARE(Names(installed_ + "/beispiele"), samples);
    QCOMPARE(Read(installed_ + "/konfig.dat"), "[Font]\r\n");
    QCOMPARE(Names(user_), QStringList({"eigene", "eins.pzb", "konfig.dat", "Käse.wav", "Latein.pzb",
                                        "Latein.pzb-journal"}));
    QCOMPARE(Find(), user_);
}

void ProgramDirectoryTest::UsersFilesAmongInstalledOnesThatCannotBeMovedStay_data()
{
    QTest::addColumn<bool>("open");
    QTest::newRow("a file of the same name") << false;
    QTest::newRow("somebody has a card file open") << true;
}

void ProgramDirectoryTest::UsersFilesAmongInstalledOnesThatCannotBeMovedStay()
{
    QFETCH(const bool, open);
    InstallInFormer();
    UseInstalled();
    const QStringList before = Names(installed_);
    if (open) {
        {
            const FileHandle other = OpenByOther(former_ + "/Latein.pzb");
            const ProgramDirectory found = Found();
            QCOMPARE(found.path, installed_);
            QVERIFY(!found.keepsSettings); // or they would be written over the user's
            QVERIFY(found.message.contains("Latein.pzb“ ist gesperrt"));
            QCOMPARE(Names(installed_), before);
        }
        QCOMPARE(Found().path, user_);
        QCOMPARE(Read(user_ + "/Latein.pzb"), "own cards");
        return;
    }
    QVERIFY(QDir().mkpath(user_));
    Write(user_ + "/Latein.pzb", "another");
    const ProgramDirectory found = Found();
    QCOMPARE(found.path, user_);
    QCOMPARE(found.message, u"Ihre bisherigen Karteien liegen noch in „%1“: Sie konnten nicht nach "
                            u"„%2“ gebracht werden."_s.arg(former_, user_));
    QCOMPARE(Names(installed_), before);
    QCOMPARE(Read(user_ + "/Latein.pzb"), "another");
    QVERIFY(Read(user_ + "/konfig.dat").contains("FontName=mine"));
    QVERIFY(Read(user_ + "/konfig.dat").contains(former_.toUtf8() + "/Latein.pzb\r\n"));
    QCOMPARE(Find(), user_); // said once
}

void ProgramDirectoryTest::InstallationInsideTheFormerDirectoryIsNotMoved()
{
    MakeFormer();
    SetMode(installed_, 0755);
    QVERIFY(QDir().mkpath(former_ + "/share"));
    QVERIFY(QDir().rename(installed_, former_ + "/share/paukfix"));
    installed_ = former_ + "/share/paukfix";
    QCOMPARE(Find(), former_);
    QVERIFY(QFile::exists(installed_ + "/ueber.rtf"));
    QCOMPARE(Read(former_ + "/Latein.pzb"), "own cards");
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

void ProgramDirectoryTest::OwnDirectoryIsInTheUsersDocuments()
{
    const QString home = directory_->filePath("heim");
    QVERIFY(QDir().mkpath(home + "/.config"));
    const QByteArray oldHome = qgetenv("HOME"), oldConfig = qgetenv("XDG_CONFIG_HOME"),
                     oldData = qgetenv("XDG_DATA_HOME");
    const auto restore = qScopeGuard([&] {
        qputenv("HOME", oldHome);
        oldConfig.isNull() ? qunsetenv("XDG_CONFIG_HOME") : qputenv("XDG_CONFIG_HOME", oldConfig);
        oldData.isNull() ? qunsetenv("XDG_DATA_HOME") : qputenv("XDG_DATA_HOME", oldData);
    });
    qputenv("HOME", QFile::encodeName(home));
    qunsetenv("XDG_CONFIG_HOME");
    qunsetenv("XDG_DATA_HOME");
    QCOMPARE(FormerOwnDirectory(), home + "/.local/share/paukfix");
    QCOMPARE(OwnDirectory(), home + "/Documents/Paukfix");
    QVERIFY(QDir(home).mkdir("Dokumente"));
    QCOMPARE(OwnDirectory(), home + "/Dokumente/Paukfix");
    Write(home + "/.config/user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"$HOME/Eigene Texte\"\n");
    QVERIFY(QDir(home).mkdir("Eigene Texte"));
    QCOMPARE(OwnDirectory(), home + "/Eigene Texte/Paukfix");
    qputenv("XDG_DATA_HOME", "/tmp/daten");
    QCOMPARE(FormerOwnDirectory(), "/tmp/daten/paukfix");
}

PAUKFIX_APPLESS_TEST(ProgramDirectoryTest)
#include "ProgramDirectoryTest.moc"
