// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Programm.h"

#include "ProgramDirectory.h"

#include <QDir>

Programm::Programm(const QString &laufverzeichnis)
    : klang_([this](const std::string &text) { meldungen_.Zeigen(QString::fromStdString(text)); }),
      konfig_(meldungen_),
      kartei_(meldungen_, uhr_)
{
    VerzeichnisseSetzen(laufverzeichnis);
}

Programm::~Programm() = default;

void Programm::VerzeichnisseSetzen(const QString &laufverzeichnis)
{
    const QString installiert = QDir::cleanPath(laufverzeichnis + QStringLiteral("/../share/paukfix"));
    try {
        konfig_.ProgrammPfad = ProgramDirectory(laufverzeichnis, installiert, UserDataDirectory());
    } catch (const std::exception &fehler) {
        konfig_.ProgrammPfad = laufverzeichnis;
        meldungen_.Zeigen(QStringLiteral("Fehler bei Form Intro Load: ") + ErrorText(fehler));
    }
    kartei_.KarteiPfad = konfig_.ProgrammPfad;
}

void Programm::Starten(const QString &befehlszeile)
{
    lbox_ = std::make_unique<LBOX>(LBoxUmgebung{
        .kartei = kartei_,
        .zustand = zustand_,
        .konfig = konfig_,
        .meldungen = meldungen_,
        .dialoge = dialoge_,
        .zufall = zufall_,
        .uhr = uhr_,
        .klang = [this](const QString &pfad) { klang_.PlaySound(pfad.toStdString()); },
        .stille = [this] { klang_.StopSound(); },
        .befehlszeile = befehlszeile,
    });
    lbox_->show();
}
