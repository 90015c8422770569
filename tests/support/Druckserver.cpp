// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Druckserver.h"

#include <QByteArray>
#include <QFile>

#include <cstring>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr int Takt = 20; // milliseconds between two looks at the end

void Anhaengen(QByteArray &bytes, int zahl, int breite)
{
    for (int i = breite - 1; i >= 0; --i)
        bytes += static_cast<char>(zahl >> (8 * i));
}

void Attribut(QByteArray &bytes, int art, const QByteArray &name, const QByteArray &wert)
{
    bytes += static_cast<char>(art);
    Anhaengen(bytes, static_cast<int>(name.size()), 2);
    bytes += name;
    Anhaengen(bytes, static_cast<int>(wert.size()), 2);
    bytes += wert;
}

QByteArray Zahl(int zahl)
{
    QByteArray bytes;
    Anhaengen(bytes, zahl, 4);
    return bytes;
}

// What comes in on a connection, piece by piece.
struct Eingang
{
    int verbindung;
    const std::atomic<bool> &schluss;
    QByteArray bytes = {};

    bool Mehr()
    {
        while (!schluss) {
            pollfd warten{verbindung, POLLIN, 0};
            if (poll(&warten, 1, Takt) <= 0)
                continue;
            char stueck[16384];
            const ssize_t anzahl = read(verbindung, stueck, sizeof stueck);
            if (anzahl > 0)
                bytes.append(stueck, anzahl);
            return anzahl > 0;
        }
        return false;
    }

    // Takes all up to `ende`, and `ende` with it; nothing where the connection is over.
    QByteArray Bis(const QByteArray &ende)
    {
        qsizetype stelle = 0;
        while ((stelle = bytes.indexOf(ende)) < 0)
            if (!Mehr())
                return {};
        return Nimm(stelle + ende.size());
    }

    QByteArray Nimm(qsizetype anzahl)
    {
        while (bytes.size() < anzahl)
            if (!Mehr())
                return {};
        const QByteArray genommen = bytes.left(anzahl);
        bytes.remove(0, anzahl);
        return genommen;
    }
};

void Senden(int verbindung, const QByteArray &bytes)
{
    if (send(verbindung, bytes.constData(), static_cast<size_t>(bytes.size()), MSG_NOSIGNAL) != bytes.size())
        qWarning("the answer of the printing system was cut off");
}

} // namespace

Druckserver::Druckserver() : lauscher_(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0))
{
    const QByteArray pfad = QFile::encodeName(verzeichnis_.filePath(u"cups.sock"_s));
    sockaddr_un adresse = {};
    adresse.sun_family = AF_UNIX;
    std::memcpy(adresse.sun_path, pfad.constData(), static_cast<size_t>(pfad.size()));
    if (bind(lauscher_, reinterpret_cast<sockaddr *>(&adresse), sizeof adresse) != 0 ||
        listen(lauscher_, 16) != 0)
        qFatal("no printing system");
    qputenv("CUPS_SERVER", pfad);
    annahme_ = std::thread([this] {
        while (!schluss_) {
            pollfd warten{lauscher_, POLLIN, 0};
            if (poll(&warten, 1, Takt) <= 0)
                continue;
            const int verbindung = accept4(lauscher_, nullptr, nullptr, SOCK_CLOEXEC);
            if (verbindung >= 0)
                verbindungen_.emplace_back([this, verbindung] { Bedienen(verbindung); });
        }
    });
}

Druckserver::~Druckserver()
{
    schluss_ = true;
    annahme_.join();
    for (std::thread &verbindung : verbindungen_)
        verbindung.join();
    close(lauscher_);
    qunsetenv("CUPS_SERVER");
}

void Druckserver::Bedienen(int verbindung)
{
    Eingang eingang{verbindung, schluss_};
    for (;;) {
        const QByteArray kopf = eingang.Bis("\r\n\r\n").toLower();
        if (kopf.isEmpty())
            break;
        if (kopf.contains("expect: 100-continue"))
            Senden(verbindung, "HTTP/1.1 100 Continue\r\n\r\n");
        QByteArray anfrage;
        if (kopf.contains("transfer-encoding: chunked")) {
            for (int groesse = -1; groesse != 0 && !schluss_;) {
                groesse = eingang.Bis("\r\n").trimmed().toInt(nullptr, 16);
                anfrage += eingang.Nimm(groesse);
                eingang.Nimm(2);
            }
        } else if (const qsizetype stelle = kopf.indexOf("content-length:"); stelle >= 0) {
            const qsizetype ende = kopf.indexOf('\r', stelle);
            anfrage = eingang.Nimm(kopf.mid(stelle + 15, ende - stelle - 15).trimmed().toInt());
        }
        if (!kopf.startsWith("post")) { // there is no description of the printer
            Senden(verbindung, "HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\n\r\n");
            continue;
        }
        const QByteArray antwort = Antworten(anfrage);
        Senden(verbindung, "HTTP/1.1 200 OK\r\nContent-Type: application/ipp\r\nContent-Length: " +
                               QByteArray::number(antwort.size()) + "\r\n\r\n" + antwort);
    }
    close(verbindung);
}

QByteArray Druckserver::Antworten(const QByteArray &anfrage)
{
    constexpr int CreateJob = 0x0005, SendDocument = 0x0006, GetPrinterAttributes = 0x000b;
    constexpr int CupsGetDefault = 0x4001, CupsGetPrinters = 0x4002;
    constexpr int NichtVerstanden = 0x0501;
    const int aufgabe =
        anfrage.size() < 8 ? 0 : static_cast<uchar>(anfrage[2]) << 8 | static_cast<uchar>(anfrage[3]);
    int status = 0;
    QByteArray inhalt;
    switch (aufgabe) {
    case CupsGetDefault:
    case CupsGetPrinters:
    case GetPrinterAttributes:
        inhalt += '\x04'; // the printer's attributes
        Attribut(inhalt, 0x42, "printer-name", Drucker().toUtf8());
        Attribut(inhalt, 0x45, "printer-uri-supported", "ipp://localhost/printers/" + Drucker().toUtf8());
        Attribut(inhalt, 0x22, "printer-is-accepting-jobs", QByteArray(1, '\1'));
        Attribut(inhalt, 0x23, "printer-state", Zahl(3));
        Attribut(inhalt, 0x23, "printer-type", Zahl(0));
        break;
    case CreateJob:
        ++auftraege_;
        status = antwort_;
        if (status == 0) {
            inhalt += '\x02'; // the job's attributes
            Attribut(inhalt, 0x21, "job-id", Zahl(auftraege_));
        }
        break;
    case SendDocument:
        dokumente_ += anfrage.contains("%PDF") && anfrage.contains("%%EOF");
        break;
    default:
        status = NichtVerstanden;
    }
    QByteArray antwort("\x02\x00", 2);
    Anhaengen(antwort, status, 2);
    antwort += anfrage.mid(4, 4); // the number of the request
    antwort += '\x01';            // what every answer has
    Attribut(antwort, 0x47, "attributes-charset", "utf-8");
    Attribut(antwort, 0x48, "attributes-natural-language", "de");
    return antwort + inhalt + '\x03';
}

} // namespace paukfix
