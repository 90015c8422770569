// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Sicherungen.h"

#include "Ausduennung.h"
#include "SafeFile.h"
#include "Sicherungsstand.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QScopeGuard>

#include <exception>
#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// Compares block by block: a box may be larger than what memory should be spent on.
bool GleicherInhalt(const QString &eine, const QString &andere)
{
    QFile a(eine);
    QFile b(andere);
    if (!a.open(QIODevice::ReadOnly) || !b.open(QIODevice::ReadOnly) || a.size() != b.size())
        return false;
    constexpr qint64 Block = 1 << 16; // the first one tells mostly: it counts the changes of the file
    for (;;) {
        const QByteArray links = a.read(Block);
        if (links != b.read(Block))
            return false;
        if (links.size() < Block)
            return a.error() == QFile::NoError && b.error() == QFile::NoError;
    }
}

// The name under which a copy is made: no backup yet.
QString Unfertig(const QString &name)
{
    return QFileInfo(name).path() + u"/."_s + QFileInfo(name).fileName() + u".neu"_s;
}

// Checks the copy, gives it its name and lets those go that are dispensable now.
void Vollenden(const Sicherungsordner &ordner, const QString &kartei, const QString &name, int karten,
               const QDate &heute)
{
    const QString unfertig = Unfertig(name);
    try {
        if (const int kopiert = KarteiPruefen(unfertig).karten; kopiert != karten)
            throw StoreError(Fehler::Beschaedigt,
                             u"Die Kopie hat %1 statt %2 Karten."_s.arg(kopiert).arg(karten));
        SyncFile(unfertig);
        RenameSynced(unfertig, name);
    } catch (...) {
        QFile::remove(unfertig);
        throw;
    }
    const qint64 frei = FreeBytes(ordner.Wurzel());
    for (const Sicherung &alte : Entbehrlich(ordner.Liste(kartei), heute, ordner.Groesse(), frei))
        QFile::remove(alte.datei);
}

} // namespace

Sicherungen::Sicherungen(const QString &wurzel, const Clock &clock, QObject *parent)
    : QObject(parent), ordner_(wurzel), clock_(clock)
{
}

Sicherungen::~Sicherungen()
{
    blockSignals(true); // who would listen goes as well
    Abwarten();
}

void Sicherungen::VorAenderung(const QString &kartei, int karten)
{
    const QDate heute = clock_.Now().date();
    if (heuteGesichert_ == kartei && tag_ == heute)
        return;
    heuteGesichert_ = kartei;
    tag_ = heute;
    const Sicherungsliste liste = Liste(kartei);
    if (liste.isEmpty() || liste.first().zeit.date() != heute)
        VorEingriff(kartei, karten);
}

bool Sicherungen::Aufheben(const QString &datei, const QString &endung)
{
    constexpr qsizetype Letzte = 3;
    try {
        QDir ordner(ordner_.Anlegen(datei));
        const QString name = ordner_.Name(datei, clock_.Now()) + endung;
        const QString unfertig = Unfertig(name);
        QFile::remove(unfertig);
        CopyFile(datei, unfertig);
        SyncFile(unfertig);
        RenameSynced(unfertig, name);
        QStringList alte = ordner.entryList({u"*"_s + endung}, QDir::Files, QDir::Name);
        for (; alte.size() > Letzte; alte.removeFirst())
            ordner.remove(alte.first());
        return true;
    } catch (const StoreError &fehler) {
        Melden(fehler);
        return false;
    }
}

Sicherungsliste Sicherungen::Liste(const QString &kartei)
{
    Abwarten();
    return ordner_.Liste(kartei);
}

bool Sicherungen::IstGesichert(const QString &kartei)
{
    const Sicherungsliste liste = Liste(kartei);
    return !liste.isEmpty() && GleicherInhalt(kartei, liste.first().datei);
}

std::optional<Sicherung> Sicherungen::NeuesteGute(const QString &kartei)
{
    for (const Sicherung &sicherung : Liste(kartei)) {
        try {
            KarteiPruefen(sicherung.datei);
            return sicherung;
        } catch (const StoreError &) {
            continue; // an older one may be sound
        }
    }
    return std::nullopt;
}

void Sicherungen::VorEingriff(const QString &kartei, int karten)
{
    try {
        if (IstGesichert(kartei))
            return;
        const QString ordner = ordner_.Anlegen(kartei);
        // Whoever has the box open is alone in its directory.
        for (const QString &rest : QDir(ordner).entryList({u".*.neu"_s}, QDir::Files | QDir::Hidden))
            QFile::remove(ordner + u'/' + rest); // of a program that was killed
        const QDateTime jetzt = clock_.Now();
        const QString name = ordner_.Name(kartei, jetzt);
        const QString unfertig = Unfertig(name);
        try {
            CopyFile(kartei, unfertig);
        } catch (...) {
            QFile::remove(unfertig);
            throw;
        }
        laufende_.push_back(
            std::async(std::launch::async, [this, ordner = ordner_, kartei, name, karten, jetzt] {
                // What it throws is told where it is collected.
                const auto einsammeln = qScopeGuard([this] {
                    QMetaObject::invokeMethod(this, &Sicherungen::Abwarten, Qt::QueuedConnection);
                });
                Vollenden(ordner, kartei, name, karten, jetzt.date());
            }));
    } catch (const StoreError &fehler) {
        Melden(fehler);
    }
}

void Sicherungen::Abwarten()
{
    for (std::future<void> &lauf : laufende_) {
        try {
            lauf.get();
        } catch (const StoreError &fehler) {
            Melden(fehler);
        } catch (const std::exception &fehler) {
            Melden(StoreError(Fehler::ZuWenigSpeicher, ErrorText(fehler)));
        }
    }
    laufende_.clear();
}

void Sicherungen::Melden(const StoreError &fehler)
{
    if (std::exchange(gemeldet_, true))
        return;
    emit Gescheitert(u"Die Kartei konnte nicht gesichert werden: %1\nSie können trotzdem weiterlernen."_s.arg(
        fehler.Text()));
}

} // namespace paukfix
