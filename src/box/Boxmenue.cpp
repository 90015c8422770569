// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Boxmenue.h"

#include "Automatik.h"
#include "KarteiAktionen.h"
#include "Ruecknahme.h"

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

namespace paukfix {

using namespace Qt::StringLiterals;

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
    FensterEintrag(Menue(u"Minfo"_s, u"&Info"_s), u"Müber"_s, u"ü&ber Paukfix"_s, &LBoxFenster::Müber,
                   Braucht::Nichts);
    BoxZeigen();
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
    QMenu *datei = Menue(u"MDatei"_s, u"&Datei"_s);
    Eintrag(datei, u"Mneu"_s, u"&neu"_s, [this] { teile_.aktionen.Neu(); })->setShortcut(QKeySequence::New);
    Eintrag(datei, u"Möffnen"_s, u"&öffnen"_s, [this] {
        teile_.aktionen.Oeffnen();
    })->setShortcut(QKeySequence::Open);
    datei->setToolTipsVisible(true); // the whole path of a recent file
    mStrich_ = Strich(datei, u"MStrich"_s);
    for (std::size_t i = 0; i < mDat_.size(); ++i)
        mDat_[i] = Eintrag(datei, u"MDat(%1)"_s.arg(i + 1), QString(),
                           [this, i] { teile_.aktionen.ZuletztOeffnen(i); });
    Strich(datei, u"MS2"_s);
    FensterEintrag(datei, u"MSicherungen"_s, u"Si&cherungen"_s, &LBoxFenster::MSicherungen);
    Eintrag(datei, u"MEnde"_s, u"&Ende"_s, [this] {
        teile_.fenster.close();
    })->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
}

void Boxmenue::AutomatikBauen()
{
    QMenu *automatik = Menue(u"MAuto"_s, u"A&utomatik"_s);
    mAutoschalter_ = Eintrag(automatik, u"MAutoschalter"_s, u"einschalten"_s,
                             [this] { teile_.automatik.MAutoschalter_Click(); });
    mAutoschalter_->setCheckable(true);
    connect(&teile_.automatik, &Automatik::Umgeschaltet, this, &Boxmenue::AutomatikZeigen);
}

void Boxmenue::FensterBauen()
{
    QMenu *aendern = Menue(u"Mändern"_s, u"ä&ndern"_s);
    FensterEintrag(aendern, u"MKarten"_s, u"&Karten "_s, &LBoxFenster::MKarten);
    Strich(aendern, u"MS3"_s);
    Eintrag(aendern, u"MSchriftart"_s, u"&StandardSchriftart"_s, [this] { MSchriftart_Click(); });
    Strich(aendern, u"MS4"_s);
    mZuruecknehmen_ =
        Eintrag(aendern, u"MZurücknehmen"_s, QString(), [this] { teile_.ruecknahme.Zuruecknehmen(); });
    mZuruecknehmen_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Z));
    mWiederholen_ =
        Eintrag(aendern, u"MWiederholen"_s, QString(), [this] { teile_.ruecknahme.Wiederholen(); });
    mWiederholen_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Y));

    QMenu *uebersicht = Menue(u"Mübersicht"_s, u"Ü&bersicht"_s);
    // The overview checks by itself, in words of its own.
    FensterEintrag(uebersicht, u"Manzeigen"_s, u"&anzeigen"_s, &LBoxFenster::Manzeigen, Braucht::Nichts);
}

void Boxmenue::ExtrasBauen()
{
    QMenu *extras = Menue(u"MExtras"_s, u"&Extras"_s);
    FensterEintrag(extras, u"MAscii_Export"_s, u"ASCII &Export"_s, &LBoxFenster::MAscii_Export);
    FensterEintrag(extras, u"MAscii_Import"_s, u"ASCII &Import"_s, &LBoxFenster::MAscii_Import);
    Strich(extras, u"Mstrich2"_s);
    FensterEintrag(extras, u"MThema_ausfiltern"_s, u"&Thema ausfiltern"_s, &LBoxFenster::MThema_ausfiltern);
    FensterEintrag(extras, u"MKartei_anhängen"_s, u"Kartei an&hängen"_s, &LBoxFenster::MKartei_anhängen);
    FensterEintrag(extras, u"MKartei_spiegeln"_s, u"Kartei &spiegeln"_s, &LBoxFenster::MKartei_spiegeln);
    FensterEintrag(extras, u"MAlleNeu"_s, u"&Alle Karten nach Neu"_s, &LBoxFenster::MAlleNeu);
    FensterEintrag(extras, u"MErledigtNeu"_s, u"e&rledigte Karten nach Neu "_s, &LBoxFenster::MErledigtNeu);
    FensterEintrag(extras, u"MKartei_packen"_s, u"Kartei &packen"_s, &LBoxFenster::MKartei_packen);
    FensterEintrag(extras, u"MFremdeKartei"_s, u"&Fremde Kartei einlesen"_s, &LBoxFenster::MFremdeKartei,
                   Braucht::Nichts);
    FensterEintrag(extras, u"MKartei_ausgeben"_s, u"Kartei aus&geben"_s, &LBoxFenster::MKartei_ausgeben);
    Strich(extras, u"MStrich3"_s);
    mAnimation_ = Eintrag(extras, u"MAnimation"_s, u"Ani&mation"_s, [this] { MAnimation_Click(); });
    mAnimation_->setCheckable(true);
    Strich(extras, u"MStrich5"_s);
    FensterEintrag(extras, u"MStatistik"_s, u"Statistik an&zeigen"_s, &LBoxFenster::MStatistik,
                   Braucht::Nichts);
    Strich(extras, u"Mstrich4"_s);
    FensterEintrag(extras, u"MVerlauf"_s, u"&Verlauf"_s, &LBoxFenster::MVerlauf);
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
    const std::array aendernde{&LBoxFenster::MAscii_Import, &LBoxFenster::MKartei_anhängen,
                               &LBoxFenster::MAlleNeu, &LBoxFenster::MErledigtNeu};
    const bool ansehen = teile_.kartei.NurAnsehen();
    for (const FensterVerweis &verweis : verweise_) {
        const bool aendert = std::ranges::find(aendernde, verweis.oeffnet) != aendernde.end();
        verweis.eintrag->setEnabled(teile_.oeffnet.*verweis.oeffnet && !(ansehen && aendert));
    }
    mAutoschalter_->setEnabled(!ansehen);
}

void Boxmenue::BoxZeigen()
{
    const auto zeigen = [](QAction *eintrag, const QString &was, const QString &sonst) {
        eintrag->setText(OhneKuerzel(was.isEmpty() ? sonst : was));
        eintrag->setEnabled(!was.isEmpty());
    };
    zeigen(mZuruecknehmen_, teile_.ruecknahme.Zurueckzunehmen(), teile_.ruecknahme.NichtZurueckzunehmen());
    zeigen(mWiederholen_, teile_.ruecknahme.Wiederholbar(), u"nichts zu wiederholen"_s);
    Freischalten();
}

void Boxmenue::AutomatikZeigen(bool an)
{
    mAutoschalter_->setChecked(an);
    mAutoschalter_->setText(an ? u"ausschalten"_s : u"einschalten"_s);
}

QString Boxmenue::OhneKuerzel(QString text)
{
    return text.replace(u'&', u"&&"_s);
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
    teile_.dienste.konfig.Sichern(2, u"Dummy"_s, u"Die Schriftart konnte nicht gespeichert werden: "_s);
}

void Boxmenue::MAnimation_Click()
{
    const bool an = mAnimation_->isChecked();
    // A file without the section does not keep it; this run of the program does.
    teile_.dienste.konfig.Animation = an;
    teile_.dienste.konfig.Sichern(3, an ? u"True"_s : u"False"_s,
                                  u"Die Einstellung konnte nicht gespeichert werden: "_s);
}

} // namespace paukfix
