// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QDir>
#include <QFile>
#include <QHash>
#include <QPoint>
#include <QProcess>
#include <QRect>
#include <QRegularExpression>
#include <QSize>
#include <QTest>

#include <memory>
#include <sys/stat.h>

namespace paukfix {

using namespace Qt::StringLiterals;

// A virtual display with a window manager, and the hands of a user on it.
class Anzeige
{
public:
    Anzeige()
    {
        xvfb_.setProgram("Xvfb");
        // -noreset: without it the server starts anew when its last client leaves, and a question of xdotool
        // before openbox has come would throw openbox out.
        xvfb_.setArguments(
            {"-displayfd", "1", "-screen", "0", "1280x860x24", "-nolisten", "tcp", "-noreset"});
        xvfb_.start();
        QByteArray nummer;
        while (!nummer.contains('\n') && xvfb_.waitForReadyRead(20000))
            nummer += xvfb_.readAllStandardOutput();
        if (nummer.trimmed().isEmpty())
            qFatal("no virtual display");
        umgebung = QProcessEnvironment::systemEnvironment();
        umgebung.insert("DISPLAY", ":" + nummer.trimmed());
        umgebung.insert("QT_QPA_PLATFORM", "xcb");
        umgebung.insert("SDL_AUDIODRIVER", "dummy");
        umgebung.insert("QT_LOGGING_RULES", "*=false");
        umgebung.remove("WAYLAND_DISPLAY");
        openbox_.setProcessEnvironment(umgebung);
        openbox_.setStandardErrorFile(QProcess::nullDevice());
        openbox_.start("openbox", QStringList());
        if (!QTest::qWaitFor([this] { return Xdotool({"get_num_desktops"}).toInt() > 0; }, 20000))
            qFatal("no window manager");
    }

    Anzeige(const Anzeige &) = delete;
    Anzeige &operator=(const Anzeige &) = delete;

    ~Anzeige()
    {
        for (QProcess *prozess : {&openbox_, &xvfb_}) {
            prozess->terminate();
            prozess->waitForFinished();
        }
    }

    // Titles of all visible windows.
    bool Offen(const QString &titel) const { return Fenster().split('\n').contains(titel); }

    // Waits until so many windows of the program are there; an open menu is one.
    bool WarteAufFenster(qsizetype zahl) const
    {
        return QTest::qWaitFor(
            [&] {
                return Xdotool({"search", "--onlyvisible", "--class", "paukfix"}).count('\n') + 1 == zahl;
            },
            30000);
    }

    // Waits until the window of this title has the keyboard; tells which one has it where that does not come.
    bool WarteAuf(const QString &titel) const
    {
        QString aktiv;
        const auto da = [&] {
            aktiv = Xdotool({"getactivewindow", "getwindowname"});
            return aktiv == titel;
        };
        if (QTest::qWaitFor(da, 30000))
            return true;
        qWarning("\"%s\" has not got the keyboard, but \"%s\"; windows: \"%s\"; the display is %s",
                 qPrintable(titel), qPrintable(aktiv), qPrintable(Fenster().replace('\n', "\", \"")),
                 xvfb_.state() == QProcess::Running ? "there" : "gone");
        return false;
    }

    // Presses a key when the window of this title has the keyboard.
    bool Taste(const QString &titel, const QString &taste) const
    {
        if (!WarteAuf(titel))
            return false;
        Xdotool({"key", taste});
        return true;
    }

    // The same for keys in quick succession, without a look at what the first ones do.
    bool Tasten(const QString &titel, const QStringList &tasten) const
    {
        if (!WarteAuf(titel))
            return false;
        Xdotool(QStringList{"key"} + tasten);
        return true;
    }

    // Types a text, 20 ms from key to key (half of what xdotool calls its delay), without a look at what the
    // keys do; a carriage return is Return.
    bool Tippen(const QString &titel, const QString &text) const
    {
        if (!WarteAuf(titel))
            return false;
        Xdotool({"type", "--delay", "40", text});
        return true;
    }

    // The same for a key that closes the window, so that the next one goes to the next window.
    bool Schliessen(const QString &titel, const QString &taste) const
    {
        if (!WarteAuf(titel))
            return false;
        const QString fenster = Xdotool({"getactivewindow"});
        const auto zu = [&] { return Xdotool({"getactivewindow"}) != fenster; };
        for (int mal = 1; mal <= 3; ++mal) {
            Xdotool({"key", taste});
            if (QTest::qWaitFor(zu, 15000))
                return true;
            // A first window that comes up on a machine under load has been seen to miss a key.
            qWarning("%s has not closed \"%s\"", qPrintable(taste), qPrintable(titel));
        }
        return false;
    }

    // The same for a message that lies on the intro, whose title it shares.
    bool MeldungSchliessen() const
    {
        return QTest::qWaitFor(
                   [&] {
                       const QString masse = Xdotool({"getactivewindow", "getwindowgeometry"});
                       return masse.contains("Geometry") && !masse.contains("960x600");
                   },
                   30000) &&
               Schliessen("Merkkasten", "Return");
    }

    // Holds a key down until the server has sent this many presses of it; returns how many it were in the
    // end.
    qsizetype Halten(const QString &titel, const QString &taste, int mindestens) const
    {
        if (!WarteAuf(titel))
            return 0;
        QProcess ohr; // is sent the keys of the window too
        ohr.setProcessEnvironment(umgebung);
        ohr.start("xev", {"-id", Xdotool({"getactivewindow"}), "-event", "keyboard"});
        QString gehoert;
        const auto presse = [&](const QString &name) {
            gehoert += QString::fromLatin1(ohr.readAllStandardOutput());
            static const QRegularExpression Druck("KeyPress event.*?keysym 0x[0-9a-f]+, (\\w+)\\)",
                                                  QRegularExpression::DotMatchesEverythingOption);
            qsizetype mal = 0;
            for (auto druck = Druck.globalMatch(gehoert); druck.hasNext();)
                if (druck.next().captured(1) == name)
                    ++mal;
            return mal;
        };
        // Keys that do nothing mark the beginning and the end.
        const auto gehoertVon = [&](const QString &marke) {
            Xdotool({"key", marke});
            return presse(marke) > 0;
        };
        if (!QTest::qWaitFor([&] { return gehoertVon("Shift_L"); }, 30000))
            return 0;
        Xdotool({"keydown", taste});
        const bool oft = QTest::qWaitFor([&] { return presse(taste) >= mindestens; }, 30000);
        Xdotool({"keyup", taste});
        const bool alle = QTest::qWaitFor([&] { return gehoertVon("Control_L"); }, 30000);
        ohr.kill();
        ohr.waitForFinished();
        return oft && alle ? presse(taste) : 0;
    }

    // Types a text into the window that has the keyboard.
    void Tippen(const QString &text) const { Xdotool({"type", "--delay", "8", "--", text}); }

    // Puts the window of this title somewhere else once it has the keyboard, and its program knows: that has
    // taken a key there, which it notes at the window.
    bool Versetzen(const QString &titel, QPoint platz, QSize masse) const
    {
        const auto stempel = [&] { return Eigenschaft(titel, "_NET_WM_USER_TIME"); };
        const QString vorher = stempel();
        if (!Taste(titel, "Shift_L") || !QTest::qWaitFor([&] { return stempel() != vorher; }, 30000))
            return false;
        Xdotool({"getactivewindow", "windowmove", QString::number(platz.x()), QString::number(platz.y()),
                 "windowsize", QString::number(masse.width()), QString::number(masse.height())});
        const QString neu = u"%1x%2"_s.arg(masse.width()).arg(masse.height());
        return QTest::qWaitFor([&] { return Lage(titel).contains(neu); }, 30000);
    }

    // Where the window of this title is and how large, once it has the keyboard.
    QString Lage(const QString &titel) const
    {
        if (!WarteAuf(titel))
            return {};
        return Xdotool({"getactivewindow", "getwindowgeometry"}).section('\n', 1);
    }

    // The same on the display, without its frame; empty where it never gets the keyboard.
    QRect Flaeche(const QString &titel) const
    {
        if (!WarteAuf(titel))
            return {};
        QHash<QString, int> zahlen;
        for (const QString &zeile : Xdotool({"getactivewindow", "getwindowgeometry", "--shell"}).split('\n'))
            zahlen.insert(zeile.section('=', 0, 0), zeile.section('=', 1).toInt());
        return {zahlen["X"], zahlen["Y"], zahlen["WIDTH"], zahlen["HEIGHT"]};
    }

    void MausNach(QPoint ort) const
    {
        Xdotool({"mousemove", QString::number(ort.x()), QString::number(ort.y())});
    }

    void MausTaste(bool gedrueckt) const { Xdotool({gedrueckt ? "mousedown" : "mouseup", "1"}); }

    // A property of the window of this title, as xprop tells it, once it has the keyboard.
    QString Eigenschaft(const QString &titel, const QString &name) const
    {
        if (!WarteAuf(titel))
            return {};
        return Ausfuehren("xprop", {"-id", Xdotool({"getactivewindow"}), name});
    }

    // Waits until much of the display has this colour, as "#00FF00".
    bool WarteAufFarbe(const QString &farbe) const
    {
        return QTest::qWaitFor(
            [&] {
                for (const QString &zeile : Ausfuehren("import", {"-window", "root", "-depth", "8", "-format",
                                                                  "%c", "histogram:info:-"})
                                                .split('\n'))
                    if (zeile.contains(farbe) && zeile.trimmed().section(':', 0, 0).toInt() > 2000)
                        return true;
                return false;
            },
            30000);
    }

    // Gives the keyboard the layout of a country, as "de".
    void Tastatur(const QString &land) const { Ausfuehren("setxkbmap", {land}); }

    QProcessEnvironment umgebung; // for programs on this display

private:
    // The titles of all visible windows of the program, a line each. Searched by its name, a title with an
    // umlaut is found in some locales only.
    QString Fenster() const
    {
        return Xdotool({"search", "--onlyvisible", "--class", "paukfix", "getwindowname", "%@"});
    }

    QString Xdotool(const QStringList &befehl) const { return Ausfuehren("xdotool", befehl); }

    QString Ausfuehren(const QString &programm, const QStringList &befehl) const
    {
        QProcess prozess;
        prozess.setProcessEnvironment(umgebung);
        prozess.start(programm, befehl);
        prozess.waitForFinished();
        return QString::fromUtf8(prozess.readAllStandardOutput()).trimmed();
    }

    QProcess xvfb_, openbox_;
};

// A program that has been started; it ends with the test at the latest.
class Lauf
{
public:
    Lauf(const Anzeige &anzeige, const QString &programm, const QStringList &argumente = {})
    {
        prozess.setProcessEnvironment(anzeige.umgebung);
        prozess.setProcessChannelMode(QProcess::ForwardedChannels);
        prozess.setProgram(programm);
        prozess.setArguments(argumente);
    }

    Lauf(const Lauf &) = delete;
    Lauf &operator=(const Lauf &) = delete;

    ~Lauf()
    {
        if (prozess.state() == QProcess::NotRunning)
            return;
        prozess.kill();
        prozess.waitForFinished();
    }

    bool Starten()
    {
        prozess.start();
        return prozess.waitForStarted();
    }

    // Waits until the program holds the lock of the card file; it takes keys for it from then on. The
    // kernel's list tells without touching the file; it names no process, as the lock belongs to the open
    // file.
    bool HatGeoeffnet(const QString &kartei) const
    {
        struct stat info = {};
        if (::stat(QFile::encodeName(kartei).constData(), &info) != 0)
            return false;
        const QByteArray inode = ':' + QByteArray::number(static_cast<qulonglong>(info.st_ino)) + ' ';
        const auto gesperrt = [&] {
            QFile sperren(u"/proc/locks"_s);
            if (!sperren.open(QIODevice::ReadOnly))
                return false;
            for (const QByteArray &zeile : sperren.readAll().split('\n'))
                if (zeile.contains(" WRITE ") && zeile.contains(inode))
                    return true;
            return false;
        };
        return QTest::qWaitFor(gesperrt, 30000);
    }

    // Ended by itself, without a failure.
    bool IstZuEnde()
    {
        if (!QTest::qWaitFor([this] { return prozess.state() == QProcess::NotRunning; }, 60000))
            qWarning("the program does not end");
        else if (prozess.exitStatus() != QProcess::NormalExit || prozess.exitCode() != 0)
            qWarning("the program ended with code %d%s", prozess.exitCode(),
                     prozess.exitStatus() == QProcess::NormalExit ? "" : " by a signal");
        else
            return true;
        return false;
    }

    QProcess prozess;
};

} // namespace paukfix
