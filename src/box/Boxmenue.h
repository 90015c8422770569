// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Belegung.h"
#include "CardStore.h"
#include "Dienste.h"
#include "LBoxFenster.h"

#include <QObject>

#include <array>
#include <functional>
#include <vector>

class QAction;
class QMainWindow;
class QMenu;

namespace paukfix {

class Automatik;
class KarteiAktionen;
class Ruecknahme;

// The menu of the main window: what stands in it, what each entry does, and how it shows the settings.
class Boxmenue final : public QObject
{
    Q_OBJECT

public:
    // What it works with; all must outlive it.
    struct Teile
    {
        QMainWindow &fenster;
        const CardStore &kartei;
        Dienste dienste;
        const Belegung &belegung;
        KarteiAktionen &aktionen;
        Automatik &automatik;
        Ruecknahme &ruecknahme;
        const LBoxFenster &oeffnet; // called as it is when an entry is chosen
    };

    explicit Boxmenue(const Teile &teile);

    // After `oeffnet` has changed: enables the entries that have something to open.
    void Freischalten();
    // After every change of the box: names what can be taken back and done again, and enables what can be
    // done with it.
    void BoxZeigen();
    // After every reading of the configuration.
    void KonfigZeigen();

    // A text for menus and buttons, where "&" would underline the next letter.
    static QString OhneKuerzel(QString text);

signals:
    // A window that an entry has opened is closed again, or stands beside.
    void Zurueck();

private:
    enum class Braucht
    {
        Nichts,
        OffeneDatei
    };

    struct FensterVerweis
    {
        QAction *eintrag;
        std::function<void()> LBoxFenster::*oeffnet;
    };

    void DateiBauen();
    void AutomatikBauen();
    void FensterBauen();
    void ExtrasBauen();
    void InfoBauen();
    QMenu *Menue(const QString &name, const QString &text);
    QAction *Eintrag(QMenu *menue, const QString &name, const QString &text, std::function<void()> tun);
    void FensterEintrag(QMenu *menue, const QString &name, const QString &text,
                        std::function<void()> LBoxFenster::*oeffnet, Braucht braucht = Braucht::OffeneDatei);
    static QAction *Strich(QMenu *menue, const QString &name);
    void AutomatikZeigen(bool an);
    void MSchriftart_Click();
    void MAnimation_Click();

    Teile teile_;
    std::vector<FensterVerweis> verweise_;
    std::array<QAction *, 5> mDat_{};
    QAction *mStrich_ = nullptr;
    QAction *mZuruecknehmen_ = nullptr;
    QAction *mWiederholen_ = nullptr;
    QAction *mAnimation_ = nullptr;
    QAction *mAutoschalter_ = nullptr;
};

} // namespace paukfix
