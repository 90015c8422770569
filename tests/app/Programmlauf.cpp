// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Programmlauf.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int geduld = 30'000; // milliseconds

} // namespace

Bildschirm::Bildschirm()
{
    // The server writes the number of a free display to its standard output when it is ready.
    server_.start(QStringLiteral("Xvfb"),
                  {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                   QStringLiteral("0"), QStringLiteral("1280x900x24"), QStringLiteral("-nolisten"),
                   QStringLiteral("tcp")});
    if (!server_.waitForReadyRead(geduld))
        return;
    name_ = u':' + QString::fromLatin1(server_.readAllStandardOutput().trimmed());
    QProcessEnvironment umgebung = QProcessEnvironment::systemEnvironment();
    umgebung.insert(QStringLiteral("DISPLAY"), name_);
    manager_.setProcessEnvironment(umgebung);
    manager_.start(QStringLiteral("openbox"), {});
    if (!QTest::qWaitFor([&] { return !Xdotool({QStringLiteral("get_num_desktops")}).isEmpty(); }, geduld))
        name_.clear();
}

Bildschirm::~Bildschirm()
{
    for (QProcess *prozess : {&manager_, &server_}) {
        prozess->kill();
        prozess->waitForFinished();
    }
}

QByteArray Bildschirm::Xdotool(const QStringList &words) const
{
    QProcess xdotool;
    QProcessEnvironment umgebung = QProcessEnvironment::systemEnvironment();
    umgebung.insert(QStringLiteral("DISPLAY"), name_);
    xdotool.setProcessEnvironment(umgebung);
    xdotool.start(QStringLiteral("xdotool"), words);
    xdotool.waitForFinished(geduld);
    return xdotool.readAllStandardOutput().trimmed();
}

void Bildschirm::Taste(const QString &taste) const
{
    Xdotool({QStringLiteral("key"), taste});
}

void Bildschirm::Tippen(const QString &text) const
{
    Xdotool(
        {QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("5"), QStringLiteral("--"), text});
}

QString Bildschirm::AktivesFenster() const
{
    return QString::fromUtf8(Xdotool({QStringLiteral("getactivewindow"), QStringLiteral("getwindowname")}));
}

bool Bildschirm::WartenAuf(const QString &titel) const
{
    return QTest::qWaitFor([&] { return AktivesFenster().startsWith(titel); }, geduld);
}

Programmlauf::Programmlauf(const Bildschirm &bildschirm)
{
    const QDir gebaut(QStringLiteral(PAUKFIX_BIN));
    for (const QString &name : gebaut.entryList({QStringLiteral("paukfix"), QStringLiteral("*.dat"),
                                                 QStringLiteral("*.ico"), QStringLiteral("lbox*.jpg"),
                                                 QStringLiteral("Applause.wav"), QStringLiteral("*.rtf")},
                                                QDir::Files))
        QFile::copy(gebaut.filePath(name), Pfad(name));
    // Every run begins with the shipped settings, whatever the developer's own are.
    QFile::remove(Pfad(QStringLiteral("konfig.dat")));
    QFile::copy(QStringLiteral(PAUKFIX_KONFIG), Pfad(QStringLiteral("konfig.dat")));
    QFile::setPermissions(Pfad(QStringLiteral("konfig.dat")), QFile::ReadOwner | QFile::WriteOwner);
    Konfig("Animation=True", "Animation=False"); // the flight of a card, and the intro, only cost time here
    QProcessEnvironment umgebung = QProcessEnvironment::systemEnvironment();
    umgebung.insert(QStringLiteral("DISPLAY"), bildschirm.Name());
    umgebung.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    umgebung.insert(QStringLiteral("SDL_AUDIODRIVER"), QStringLiteral("dummy"));
    umgebung.insert(QStringLiteral("XDG_DATA_HOME"), Pfad(QStringLiteral("daten")));
    umgebung.insert(QStringLiteral("XDG_RUNTIME_DIR"), verzeichnis_.path());
    prozess_.setProcessEnvironment(umgebung);
    prozess_.setWorkingDirectory(verzeichnis_.path());
    prozess_.setProcessChannelMode(QProcess::ForwardedChannels);
}

void Programmlauf::Konfig(const QByteArray &alt, const QByteArray &neu) const
{
    QFile datei(Pfad(QStringLiteral("konfig.dat")));
    if (!datei.open(QIODevice::ReadWrite))
        return;
    const QByteArray inhalt = datei.readAll().replace(alt, neu);
    datei.resize(0);
    datei.seek(0);
    datei.write(inhalt);
}

void Programmlauf::Starten(const QStringList &argumente)
{
    prozess_.start(Pfad(QStringLiteral("paukfix")), argumente);
    prozess_.waitForStarted(geduld);
}

bool Programmlauf::WartenAufSperre(const QString &kartei) const
{
    // The kernel's list of locks tells who holds the file without touching it.
    struct stat info = {};
    if (::stat(QFile::encodeName(kartei).constData(), &info) != 0)
        return false;
    const QByteArray inode = ':' + QByteArray::number(static_cast<qulonglong>(info.st_ino)) + ' ';
    const QByteArray pid = ' ' + QByteArray::number(prozess_.processId()) + ' ';
    return QTest::qWaitFor(
        [&] {
            QFile locks(QStringLiteral("/proc/locks"));
            if (!locks.open(QIODevice::ReadOnly))
                return false;
            for (const QByteArray &line : locks.readAll().split('\n'))
                if (line.contains(" WRITE ") && line.contains(inode) && line.contains(pid))
                    return true;
            return false;
        },
        geduld);
}

void Programmlauf::Toeten()
{
    prozess_.kill();
    prozess_.waitForFinished(geduld);
}

int Programmlauf::Ende()
{
    // Its ends are seen by the event loop too, so that a test may wait for a window meanwhile.
    if (!prozess_.waitForFinished(geduld))
        return -1;
    return prozess_.exitStatus() == QProcess::NormalExit ? prozess_.exitCode() : -1;
}
