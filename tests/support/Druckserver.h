// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include <QString>
#include <QTemporaryDir>

#include <atomic>
#include <thread>
#include <vector>

namespace paukfix {

using namespace Qt::StringLiterals;

// A printing system with one printer, as the toolkit's plugin sees it: answers the Internet Printing Protocol
// (RFC 8010, 8011) at a socket of its own, as long as it lives. One at a time; made before the first printer
// is asked for.
class Druckserver
{
public:
    static constexpr int NimmtNichts = 0x0506; // server-error-not-accepting-jobs
    static constexpr int GibtEsNicht = 0x0406; // client-error-not-found

    Druckserver();
    Druckserver(const Druckserver &) = delete;
    Druckserver &operator=(const Druckserver &) = delete;
    ~Druckserver();

    static QString Drucker() { return u"Buero"_s; }

    // The status that new jobs get: 0 takes them.
    void SetAntwort(int status) { antwort_ = status; }

    int Auftraege() const { return auftraege_; } // that were asked for

    int Dokumente() const { return dokumente_; } // that came in whole

private:
    void Bedienen(int verbindung);
    QByteArray Antworten(const QByteArray &anfrage);

    QTemporaryDir verzeichnis_;
    int lauscher_ = -1;
    std::atomic<bool> schluss_ = false;
    std::atomic<int> antwort_ = 0, auftraege_ = 0, dokumente_ = 0;
    std::thread annahme_;
    std::vector<std::thread> verbindungen_;
};

} // namespace paukfix
