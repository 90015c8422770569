// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Wartefenster.h"

#include "StoreError.h"

#include <QCoreApplication>

#include <limits>
#include <memory>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr int WartenMs = 500; // before it is shown
constexpr int TaktMs = 40;    // between two pictures of it

} // namespace

Wartefenster::Wartefenster(const QString &was, const QString &titel, QWidget *parent)
    : QProgressDialog(was, u"Abbrechen"_s, 0, 0, parent)
{
    setObjectName(u"Wartefenster"_s);
    setWindowTitle(titel);
    setWindowModality(Qt::ApplicationModal);
    setMinimumDuration(std::numeric_limits<int>::max()); // shown by Zeigen(), never by itself
    setAutoClose(false);
    setAutoReset(false);
    seit_.start();
}

void Wartefenster::Zeigen(int erledigt, int gesamt, const QString &abgebrochen)
{
    const qint64 jetzt = seit_.elapsed();
    if (jetzt < WartenMs || (isVisible() && jetzt - zuletzt_ < TaktMs))
        return;
    zuletzt_ = jetzt;
    if (maximum() != gesamt)
        setMaximum(gesamt);
    show();
    setValue(erledigt);
    QCoreApplication::processEvents();
    if (wasCanceled())
        throw StoreError(Fehler::Abgebrochen, abgebrochen);
}

Progress WartenMitAbbruch(const QString &was, const QString &abgebrochen, const QString &titel,
                          QWidget *parent)
{
    const auto fenster = std::make_shared<Wartefenster>(was, titel, parent);
    return
        [fenster, abgebrochen](int erledigt, int gesamt) { fenster->Zeigen(erledigt, gesamt, abgebrochen); };
}

} // namespace paukfix
