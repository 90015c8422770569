// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Kasten.h"
#include "LBOX.h"
#include "Schritt.h"

#include <QDir>
#include <QScopedValueRollback>
#include <QToolButton>

#include <algorithm>
#include <utility>

namespace {

bool IstKartei(const QString &pfad)
{
    return pfad.right(4).toLower() == QStringLiteral(".pzb");
}

// Directory and file name of a path; a name without a directory lies in the current one.
std::pair<QString, QString> Geteilt(const QString &pfad)
{
    const QString mitStrichen = QDir::fromNativeSeparators(pfad);
    const qsizetype strich = mitStrichen.lastIndexOf(u'/');
    // Not cleaned up: behind a link, ".." is another directory than the spelling says.
    QString verzeichnis =
        strich == 0 ? QStringLiteral("/") : mitStrichen.left(std::max<qsizetype>(strich, 0));
    if (verzeichnis.isEmpty())
        verzeichnis = QDir::currentPath();
    else if (QDir::isRelativePath(verzeichnis))
        verzeichnis = QDir::currentPath() + u'/' + verzeichnis;
    return {verzeichnis, mitStrichen.mid(strich + 1)};
}

} // namespace

// Runs when the window has been painted for the first time: opening a file blocks the program for a second or
// two.
void LBOX::Form_Load()
{
    umgebung_.gemalt();
    umgebung_.konfig.ReadConfig();
    geladen_ = true;
    const QString &pfad = umgebung_.befehlszeile;
    if (pfad.isEmpty()) {
        Möffnen_Click();
    } else if (!IstKartei(pfad)) {
        meldungen_.Zeigen(QStringLiteral("Bitte nur .pzb Dateien"));
        Möffnen_Click();
    } else if (!KarteiOeffnen(pfad)) {
        meldungen_.Zeigen(QStringLiteral("Fehler beim Öffnen"));
    }
    StandZeigen();
}

void LBOX::Mneu_Click()
{
    const QString pfad = umgebung_.dialoge.DateiSpeichern(
        KarteiDialog(QStringLiteral("Merkkasten anlegen"), kartei_.KarteiPfad));
    if (pfad.isEmpty() || beschaeftigt_)
        return;
    if (!IstKartei(pfad)) {
        meldungen_.Zeigen(QStringLiteral("Bitte nur .pzb Dateien"));
        return;
    }
    auto [verzeichnis, name] = Geteilt(pfad);
    const bool warOffen = kartei_.IsOpen();
    const QString vorher = std::exchange(kartei_.KarteiPfad, verzeichnis);
    const QScopedValueRollback beschaeftigt(beschaeftigt_, true);
    kasten_->SetHinweis(name + QStringLiteral(" wird angelegt …"));
    const bool angelegt = Schritt(meldungen_, QStringLiteral("Die Datei konnte nicht angelegt werden: "),
                                  [this, &name = name] { umgebung_.oeffner.CreateCardFile(name); });
    if (angelegt && !name.isEmpty()) {
        InListe(pfad);
    } else if (warOffen) {
        kartei_.KarteiPfad = vorher; // the file that was open lies there
        if (QString alterName = kartei_.CurrentFileName; !kartei_.IsOpen())
            umgebung_.oeffner.OpenCardFile(alterName);
    }
    StandZeigen();
}

void LBOX::Möffnen_Click()
{
    const QString pfad =
        umgebung_.dialoge.DateiOeffnen(KarteiDialog(QStringLiteral("Merkkasten öffnen"), kartei_.KarteiPfad));
    if (pfad.isEmpty() || beschaeftigt_)
        return;
    if (!IstKartei(pfad))
        meldungen_.Zeigen(QStringLiteral("Bitte nur .pzb Dateien"));
    else if (KarteiOeffnen(pfad))
        InListe(pfad);
    else
        meldungen_.Zeigen(QStringLiteral("Fehler beim Öffnen"));
    StandZeigen();
}

// A file opened from the list keeps its place in it.
void LBOX::MDat_Click(std::size_t i)
{
    KarteiOeffnen(umgebung_.konfig.MDat.at(i));
    StandZeigen();
}

void LBOX::KarteiWechseln_Click()
{
    const QString name = fenster_.KarteiWechseln();
    if (!name.isEmpty())
        KarteiOeffnen(kartei_.CardPath(name));
    StandZeigen();
}

bool LBOX::KarteiOeffnen(const QString &pfad)
{
    if (beschaeftigt_)
        return false;
    const QScopedValueRollback beschaeftigt(beschaeftigt_, true);
    auto [verzeichnis, name] = Geteilt(pfad);
    kartei_.KarteiPfad = verzeichnis;
    lKartei_->setText(QString());
    kasten_->SetHinweis(name + QStringLiteral(" wird geöffnet …"));
    umgebung_.oeffner.OpenCardFile(name);
    if (name.isEmpty())
        return false;
    QDir::setCurrent(verzeichnis);
    return true;
}

void LBOX::InListe(const QString &pfad)
{
    QDir::setCurrent(kartei_.KarteiPfad);
    umgebung_.konfig.Sichern(
        1, pfad, QStringLiteral("Die Liste der letzten Dateien konnte nicht gespeichert werden: "));
}

bool LBOX::DateiOffenPruefen()
{
    try {
        kartei_.Karten().RecordCount();
        kartei_.FehlerStatus = 0;
        return true;
    } catch (const StoreError &fehler) {
        kartei_.FehlerStatus = static_cast<qint16>(qBound(1, fehler.Number(), 0x7FFF));
    }
    meldungen_.Zeigen(QStringLiteral("Bitte erst eine Datei öffnen"));
    return false;
}

// What the window says about the open file.
void LBOX::StandZeigen()
{
    const bool offen = kartei_.IsOpen();
    lKartei_->setText(offen ? OhneKuerzel(kartei_.CurrentFileName) : QStringLiteral("Keine Kartei geöffnet"));
    lKartei_->setEnabled(static_cast<bool>(fenster_.KarteiWechseln));
    karteiWechseln_->setEnabled(static_cast<bool>(fenster_.KarteiWechseln));
    BoxZeichnen();
}
