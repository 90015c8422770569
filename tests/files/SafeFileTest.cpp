// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "SafeFile.h"

#include "DiskCalls.h"
#include "StoreError.h"
#include "TestProgram.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <fcntl.h>
#include <limits>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

using namespace paukfix;

class SafeFileTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> directory_;

    QString Path(const QString &name) const { return directory_->filePath(name); }

    QByteArray Read(const QString &name) const { return ReadFile(Path(name), 1000); }

    QStringList Entries() const { return QDir(directory_->path()).entryList(QDir::Files, QDir::Name); }

    // The number that `step` throws, 0 for none.
    template <typename Step>
    static int Error(const Step &step)
    {
        try {
            step();
        } catch (const StoreError &error) {
            return error.Number();
        }
        return 0;
    }

private slots:

    void init() { directory_ = std::make_unique<QTemporaryDir>(); }

    void SystemErrorsHaveTheirNumbers_data();
    void SystemErrorsHaveTheirNumbers();
    void ReadingHasALimit();
    void OnlyRegularFilesAreRead();
    void FullDiskIsAnError();
    void FailedSyncIsAnError();
    void ReplacingKeepsPermissions();
    void ReplacingADirectoryIsAnError();
    void RewritingMakesAMissingFile();
    void FailedRewritingLeavesNothingBehind();
    void OrdinaryUserMayNotWriteEverywhere();
    void APipeInTheWayKeepsNobodyWaiting();
    void TheNewNameIsOnTheDiskBeforeItIsReported();
    void TheFreeBytesAreThoseOfTheFileSystem();
    void MessagesNameThePlaceOnly();
};

void SafeFileTest::SystemErrorsHaveTheirNumbers_data()
{
    QTest::addColumn<int>("system");
    QTest::addColumn<int>("number");
    QTest::newRow("not a directory") << ENOTDIR << Fehler::PfadNichtGefunden;
    QTest::newRow("access") << EACCES << Fehler::NichtErlaubt;
    QTest::newRow("owner") << EPERM << Fehler::NichtErlaubt;
    QTest::newRow("read-only") << EROFS << Fehler::NichtErlaubt;
    QTest::newRow("directory") << EISDIR << Fehler::NichtErlaubt;
    QTest::newRow("full") << ENOSPC << Fehler::DatentraegerVoll;
    QTest::newRow("quota") << EDQUOT << Fehler::DatentraegerVoll;
    QTest::newRow("memory") << ENOMEM << Fehler::ZuWenigSpeicher;
    QTest::newRow("too many files") << EMFILE << 67;
    QTest::newRow("long name") << ENAMETOOLONG << Fehler::PfadNichtGefunden;
    QTest::newRow("no file") << ENXIO << Fehler::NichtErlaubt;
    QTest::newRow("device") << EIO << 57;
}

void SafeFileTest::SystemErrorsHaveTheirNumbers()
{
    QFETCH(const int, system);
    QTEST(Error([&] { ThrowFileError(system, "/a/b"); }), "number");
    QCOMPARE(Error([&] { ThrowFileError(ENOENT, Path("fehlt")); }), Fehler::DateiNichtGefunden);
    QCOMPARE(Error([&] { ThrowFileError(ENOENT, Path("fehlt/datei")); }), Fehler::PfadNichtGefunden);
    try {
        ThrowFileError(ENOENT, Path("fehlt"));
    } catch (const StoreError &error) {
        QCOMPARE(error.Text(), "Datei nicht gefunden: " + Path("fehlt"));
    }
}

void SafeFileTest::ReadingHasALimit()
{
    WriteFileSynced(Path("a"), QByteArray(1000, 'x'));
    QCOMPARE(ReadFile(Path("a"), 1000), QByteArray(1000, 'x'));
    QCOMPARE(Error([&] { ReadFile(Path("a"), 999); }), Fehler::ZuWenigSpeicher);
    QCOMPARE(Error([&] { ReadFile(Path("b"), 999); }), Fehler::DateiNichtGefunden);
}

void SafeFileTest::OnlyRegularFilesAreRead()
{
    QCOMPARE(mkfifo(qPrintable(Path("pipe")), 0600), 0);
    QCOMPARE(Error([&] { ReadFile(Path("pipe"), 10); }), Fehler::NichtErlaubt);
    QCOMPARE(Error([] { ReadFile("/dev/zero", 10); }), Fehler::NichtErlaubt);
    QCOMPARE(Error([&] { ReadFile(directory_->path(), 10); }), Fehler::NichtErlaubt);
}

void SafeFileTest::FullDiskIsAnError()
{
    QCOMPARE(Error([] { WriteFileSynced("/dev/full", "x"); }), Fehler::DatentraegerVoll);
}

void SafeFileTest::FailedSyncIsAnError()
{
    // Nothing there that could be synced.
    QCOMPARE(Error([] { WriteFileSynced("/dev/null", "x"); }), 57);
    QCOMPARE(Error([] { SyncFile("/dev/null"); }), 57);
    QCOMPARE(Error([&] { SyncFile(Path("fehlt")); }), Fehler::DateiNichtGefunden);
    QCOMPARE(Error([&] { SyncDirectory(Path("fehlt/")); }), Fehler::PfadNichtGefunden);
    QCOMPARE(Error([&] { SyncDirectory(directory_->path()); }), 0);
}

void SafeFileTest::ReplacingKeepsPermissions()
{
    WriteFileSynced(Path("alt"), "alt");
    QCOMPARE(chmod(qPrintable(Path("alt")), 0600), 0);
    WriteFileSynced(Path("neu"), "neu");
    ReplaceFile(Path("neu"), Path("alt"));
    QCOMPARE(Read("alt"), "neu");
    QCOMPARE(Entries(), QStringList("alt"));
    struct stat status = {};
    QCOMPARE(stat(qPrintable(Path("alt")), &status), 0);
    QCOMPARE(status.st_mode & 07777, 0600U);
}

void SafeFileTest::ReplacingADirectoryIsAnError()
{
    WriteFileSynced(Path("neu"), "neu");
    QVERIFY(QDir(directory_->path()).mkdir("ziel"));
    QCOMPARE(Error([&] { ReplaceFile(Path("neu"), Path("ziel")); }), Fehler::NichtErlaubt);
    QCOMPARE(Error([&] { ReplaceFile(Path("fehlt"), Path("ziel")); }), Fehler::DateiNichtGefunden);
    QCOMPARE(Read("neu"), "neu");
}

void SafeFileTest::RewritingMakesAMissingFile()
{
    RewriteFile(Path("a"), "eins");
    QCOMPARE(Read("a"), "eins");
    RewriteFile(Path("a"), "");
    QCOMPARE(Read("a"), "");
    QCOMPARE(Entries(), QStringList("a"));
}

void SafeFileTest::FailedRewritingLeavesNothingBehind()
{
    QVERIFY(QDir(directory_->path()).mkdir("ziel"));
    QCOMPARE(Error([&] { RewriteFile(Path("ziel"), "x"); }), Fehler::NichtErlaubt);
    QCOMPARE(Entries(), QStringList());
    QCOMPARE(Error([&] { RewriteFile(Path("fehlt/a"), "x"); }), Fehler::PfadNichtGefunden);
}

void SafeFileTest::OrdinaryUserMayNotWriteEverywhere()
{
    WriteFileSynced(Path("a"), "x");
    QCOMPARE(chmod(qPrintable(directory_->path()), 0555), 0);
    const bool root = geteuid() == 0;
    if (root)
        QCOMPARE(seteuid(65534), 0);
    const int error = Error([&] { RewriteFile(Path("a"), "y"); });
    if (root)
        QCOMPARE(seteuid(0), 0);
    QCOMPARE(chmod(qPrintable(directory_->path()), 0755), 0);
    QCOMPARE(error, Fehler::NichtErlaubt);
    QCOMPARE(Read("a"), "x");
}

void SafeFileTest::APipeInTheWayKeepsNobodyWaiting()
{
    QCOMPARE(mkfifo(qPrintable(Path("pipe")), 0600), 0);
    QCOMPARE(Error([&] { WriteFileSynced(Path("pipe"), "x"); }), Fehler::NichtErlaubt);
    QCOMPARE(Error([&] { CopyFile(Path("pipe"), Path("kopie")); }), Fehler::NichtErlaubt);
    QCOMPARE(Error([&] { SyncFile(Path("pipe")); }), 57);
}

// A power cut may bring the old name back until the directory is synced, and the file's bytes until the file
// is.
void SafeFileTest::TheNewNameIsOnTheDiskBeforeItIsReported()
{
    const QString directory = directory_->path();
    WriteFileSynced(Path("neu"), "neu");
    DiskCalls disk;
    QStringList &calls = disk.calls;
    ReplaceFile(Path("neu"), Path("ziel"));
    QCOMPARE(calls, (QStringList{"sync " + Path("neu"), "rename " + Path("neu") + " to " + Path("ziel"),
                                 "sync " + directory}));

    calls.clear();
    RewriteFile(Path("ziel"), "anders");
    QVERIFY(calls.indexOf("sync " + Path("ziel.tmp")) >= 0);
    QCOMPARE(calls.mid(calls.size() - 2),
             (QStringList{"rename " + Path("ziel.tmp") + " to " + Path("ziel"), "sync " + directory}));

    calls.clear();
    KeepUnderName(Path("ziel"), Path("zweiter"));
    QCOMPARE(calls, (QStringList{"link " + Path("ziel") + " to " + Path("zweiter"), "sync " + directory}));
}

void SafeFileTest::TheFreeBytesAreThoseOfTheFileSystem()
{
    const qint64 free = FreeBytes(directory_->path());
    QVERIFY(free > 0);
    QVERIFY(free < std::numeric_limits<qint64>::max() / 2);
    QCOMPARE(FreeBytes(Path("nirgends")), -1);
}

// The name under which a file is made beside its place means nothing to its user.
void SafeFileTest::MessagesNameThePlaceOnly()
{
    const auto text = [](const auto &step) {
        try {
            step();
        } catch (const StoreError &error) {
            return error.Text();
        }
        return QString();
    };
    QVERIFY(QDir(directory_->path()).mkdir("ziel.tmp"));
    QCOMPARE(text([&] { RewriteFile(Path("ziel"), "x"); }), "Das ist ein Verzeichnis: " + Path("ziel"));
    QVERIFY(Entries().isEmpty());
}

PAUKFIX_APPLESS_TEST(SafeFileTest)
#include "SafeFileTest.moc"
