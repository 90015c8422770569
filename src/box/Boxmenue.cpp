// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Boxmenue.h"

#include "Automatik.h"
#include "KarteiAktionen.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFont>
#include <QFontMetrics>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QTextDocument>

#include <algorithm>
#include <utility>

namespace {

// A path for the menu: where it is long, its directory is elided in the middle; the name stays whole, unless
// it is too long for the screen by itself.
QString KurzerPfad(const QString &pfad, const QFontMetrics &schrift, int schirm)
{
    const int platz = std::min(schrift.averageCharWidth() * 70, schirm / 2);
    const qsizetype trenner = pfad.lastIndexOf(QDir::separator()) + 1;
    const QString name = schrift.elidedText(pfad.mid(trenner), Qt::ElideMiddle, schirm / 2);
    const QString ordner = pfad.left(trenner);
    if (schrift.horizontalAdvance(ordner + name) <= platz)
        return pfad;
    const int rest = std::max(platz - schrift.horizontalAdvance(name), schrift.averageCharWidth() * 12);
    return schrift.elidedText(ordner, Qt::ElideMiddle, rest) + name;
}

} // namespace

Boxmenue::Boxmenue(const Teile &teile) : QObject(&teile.fenster), teile_(teile)
{
    DateiBauen();
    AutomatikBauen();
    FensterBauen();
    ExtrasBauen();
    FensterEintrag(Menue(QStringLiteral("Minfo"), QStringLiteral("&Info")), QStringLiteral("Müber"),
                   QStringLiteral("ü&ber Paukfix"), &LBoxFenster::Müber, Braucht::Nichts);
    Freischalten();
    KonfigZeigen();
}

QMenu *Boxmenue::Menue(const QString &name, const QString &text)
{
    QMenu *neu = teile_.fenster.menuBar()->addMenu(text);
    neu->setObjectName(name);
    neu->menuAction()->setObjectName(name);
    // A menu that was left leaves the keyboard with its bar, where the next letter would open another one.
    connect(
        neu, &QMenu::aboutToHide, this,
        [this] {
            if (teile_.fenster.menuBar()->hasFocus() && !QApplication::activePopupWidget())
                teile_.fenster.setFocus();
        },
        Qt::QueuedConnection);
    return neu;
}

void Boxmenue::DateiBauen()
{
    QMenu *datei = Menue(QStringLiteral("MDatei"), QStringLiteral("&Datei"));
    Eintrag(datei, QStringLiteral("Mneu"), QStringLiteral("&neu"), [this] {
        teile_.aktionen.Neu();
    })->setShortcut(QKeySequence::New);
    Eintrag(datei, QStringLiteral("Möffnen"), QStringLiteral("&öffnen"), [this] {
        teile_.aktionen.Oeffnen();
    })->setShortcut(QKeySequence::Open);
    datei->setToolTipsVisible(true); // the whole path of a recent file
    mStrich_ = Strich(datei, QStringLiteral("MStrich"));
    for (std::size_t i = 0; i < mDat_.size(); ++i)
        mDat_[i] = Eintrag(datei, QStringLiteral("MDat(%1)").arg(i + 1), QString(),
                           [this, i] { teile_.aktionen.ZuletztOeffnen(i); });
    Strich(datei, QStringLiteral("MS2"));
    Eintrag(datei, QStringLiteral("MEnde"), QStringLiteral("&Ende"), [this] {
        teile_.fenster.close();
    })->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
}

void Boxmenue::AutomatikBauen()
{
    QMenu *automatik = Menue(QStringLiteral("MAuto"), QStringLiteral("A&utomatik"));
    mAutoschalter_ = Eintrag(automatik, QStringLiteral("MAutoschalter"), QStringLiteral("einschalten"),
                             [this] { teile_.automatik.MAutoschalter_Click(); });
    mAutoschalter_->setCheckable(true);
    connect(&teile_.automatik, &Automatik::Umgeschaltet, this, &Boxmenue::AutomatikZeigen);
}

void Boxmenue::FensterBauen()
{
    QMenu *aendern = Menue(QStringLiteral("Mändern"), QStringLiteral("ä&ndern"));
    FensterEintrag(aendern, QStringLiteral("MKarten"), QStringLiteral("&Karten "), &LBoxFenster::MKarten);
    Strich(aendern, QStringLiteral("MS3"));
    Eintrag(aendern, QStringLiteral("MSchriftart"), QStringLiteral("&StandardSchriftart"),
            [this] { MSchriftart_Click(); });

    QMenu *uebersicht = Menue(QStringLiteral("Mübersicht"), QStringLiteral("Ü&bersicht"));
    // The overview checks by itself, in words of its own.
    FensterEintrag(uebersicht, QStringLiteral("Manzeigen"), QStringLiteral("&anzeigen"),
                   &LBoxFenster::Manzeigen, Braucht::Nichts);
}

void Boxmenue::ExtrasBauen()
{
    QMenu *extras = Menue(QStringLiteral("MExtras"), QStringLiteral("&Extras"));
    FensterEintrag(extras, QStringLiteral("MAscii_Export"), QStringLiteral("ASCII &Export"),
                   &LBoxFenster::MAscii_Export);
    FensterEintrag(extras, QStringLiteral("MAscii_Import"), QStringLiteral("ASCII &Import"),
                   &LBoxFenster::MAscii_Import);
    Strich(extras, QStringLiteral("Mstrich2"));
    FensterEintrag(extras, QStringLiteral("MThema_ausfiltern"), QStringLiteral("&Thema ausfiltern"),
                   &LBoxFenster::MThema_ausfiltern);
    FensterEintrag(extras, QStringLiteral("MKartei_anhängen"), QStringLiteral("Kartei an&hängen"),
                   &LBoxFenster::MKartei_anhängen);
    FensterEintrag(extras, QStringLiteral("MKartei_spiegeln"), QStringLiteral("Kartei &spiegeln"),
                   &LBoxFenster::MKartei_spiegeln);
    FensterEintrag(extras, QStringLiteral("MAlleNeu"), QStringLiteral("&Alle Karten nach Neu"),
                   &LBoxFenster::MAlleNeu);
    FensterEintrag(extras, QStringLiteral("MErledigtNeu"), QStringLiteral("e&rledigte Karten nach Neu "),
                   &LBoxFenster::MErledigtNeu);
    Strich(extras, QStringLiteral("MStrich3"));
    mAnimation_ = Eintrag(extras, QStringLiteral("MAnimation"), QStringLiteral("Ani&mation"),
                          [this] { MAnimation_Click(); });
    mAnimation_->setCheckable(true);
    Strich(extras, QStringLiteral("MStrich5"));
    FensterEintrag(extras, QStringLiteral("MStatistik"), QStringLiteral("Statistik an&zeigen"),
                   &LBoxFenster::MStatistik, Braucht::Nichts);
    Strich(extras, QStringLiteral("Mstrich4"));
}

QAction *Boxmenue::Eintrag(QMenu *menue, const QString &name, const QString &text, std::function<void()> tun)
{
    QAction *eintrag = menue->addAction(text);
    eintrag->setObjectName(name);
    // No entry may be taken for the desktop's own ("Quit") and wander into another menu.
    eintrag->setMenuRole(QAction::NoRole);
    connect(eintrag, &QAction::triggered, this, [this, eintrag, tun = std::move(tun)] {
        if (!teile_.belegung.IstGesperrt())
            tun();
        else if (eintrag->isCheckable())
            eintrag->toggle(); // the toolkit has changed it already
    });
    return eintrag;
}

void Boxmenue::FensterEintrag(QMenu *menue, const QString &name, const QString &text,
                              std::function<void()> LBoxFenster::*oeffnet, Braucht braucht)
{
    QAction *eintrag = Eintrag(menue, name, text, [this, oeffnet, braucht] {
        if (braucht == Braucht::OffeneDatei && !teile_.aktionen.DateiOffenPruefen())
            return;
        (teile_.oeffnet.*oeffnet)();
        emit Zurueck();
    });
    verweise_.push_back({eintrag, oeffnet});
}

QAction *Boxmenue::Strich(QMenu *menue, const QString &name)
{
    QAction *strich = menue->addSeparator();
    strich->setObjectName(name);
    return strich;
}

void Boxmenue::Freischalten()
{
    for (const FensterVerweis &verweis : verweise_)
        verweis.eintrag->setEnabled(static_cast<bool>(teile_.oeffnet.*verweis.oeffnet));
}

void Boxmenue::AutomatikZeigen(bool an)
{
    mAutoschalter_->setChecked(an);
    mAutoschalter_->setText(an ? QStringLiteral("ausschalten") : QStringLiteral("einschalten"));
}

QString Boxmenue::OhneKuerzel(QString text)
{
    return text.replace(u'&', QStringLiteral("&&"));
}

void Boxmenue::KonfigZeigen()
{
    bool welche = false;
    for (std::size_t i = 0; i < mDat_.size(); ++i) {
        const QString &name = teile_.dienste.konfig.MDat[i];
        mDat_[i]->setText(OhneKuerzel(KurzerPfad(name, teile_.fenster.menuBar()->fontMetrics(),
                                                 teile_.fenster.screen()->availableSize().width())));
        mDat_[i]->setToolTip(Qt::convertFromPlainText(name, Qt::WhiteSpaceNoWrap));
        mDat_[i]->setVisible(!name.isEmpty());
        welche = welche || !name.isEmpty();
    }
    mStrich_->setVisible(welche);
    mAnimation_->setChecked(teile_.dienste.konfig.Animation);
}

void Boxmenue::MSchriftart_Click()
{
    Schrift &schrift = teile_.dienste.konfig.schrift;
    const auto wahl = teile_.dienste.dialoge.SchriftWaehlen(schrift.Wahl());
    if (!wahl)
        return;
    schrift.Nehmen(*wahl);
    teile_.dienste.konfig.Sichern(2, QStringLiteral("Dummy"),
                                  QStringLiteral("Die Schriftart konnte nicht gespeichert werden: "));
}

void Boxmenue::MAnimation_Click()
{
    const bool an = mAnimation_->isChecked();
    // A file without the section does not keep it; this run of the program does.
    teile_.dienste.konfig.Animation = an;
    teile_.dienste.konfig.Sichern(3, an ? QStringLiteral("True") : QStringLiteral("False"),
                                  QStringLiteral("Die Einstellung konnte nicht gespeichert werden: "));
}
