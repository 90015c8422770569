// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Fensterplatz.h"

#include "Kartenflaeche.h"

#include <QDialog>
#include <QEvent>
#include <QGuiApplication>
#include <QLayout>
#include <QRegion>
#include <QScreen>
#include <QWindow>

#include <algorithm>
#include <optional>

namespace paukfix {

namespace {

// The place `fenster` where all of it is on today's screens, else moved into the one that shows most of it,
// as large as that allows. The frame needs room too; that of `dialog` will be like its parent's.
QRect AufDenSchirm(QRect fenster, const QWidget &dialog)
{
    QRegion schirme;
    QRect ziel = dialog.screen()->availableGeometry();
    qint64 sichtbar = 0;
    for (const QScreen *schirm : dialog.screen()->virtualSiblings()) {
        const QRect platz = schirm->availableGeometry();
        schirme += platz;
        const QRect teil = platz & fenster;
        const qint64 flaeche = teil.isEmpty() ? 0 : qint64{teil.width()} * teil.height();
        if (flaeche > sichtbar) {
            sichtbar = flaeche;
            ziel = platz;
        }
    }
    if (QRegion(fenster).subtracted(schirme).isEmpty())
        return fenster;
    if (const QWidget *eltern = dialog.parentWidget(); eltern && eltern->window()->windowHandle())
        ziel = ziel.marginsRemoved(eltern->window()->windowHandle()->frameMargins());
    fenster.setSize(fenster.size().boundedTo(ziel.size()));
    fenster.moveLeft(std::clamp(fenster.left(), ziel.left(), ziel.right() + 1 - fenster.width()));
    fenster.moveTop(std::clamp(fenster.top(), ziel.top(), ziel.bottom() + 1 - fenster.height()));
    return fenster;
}

// In the middle of the box, a title bar higher. Nothing where there is none: then the toolkit chooses.
// (The toolkit's choice changes once it knows the window's frame.)
std::optional<QPoint> UeberDerBox(const QDialog &dialog)
{
    const QWidget *box = dialog.parentWidget();
    if (!box || !box->window()->windowHandle())
        return std::nullopt;
    const QMargins rahmen = box->window()->windowHandle()->frameMargins();
    const QPoint mitte = box->mapToGlobal(QPoint(box->width() / 2, box->height() / 2));
    return mitte - QPoint(dialog.width() / 2 + rahmen.left(), dialog.height() / 2 + rahmen.top());
}

// Lets the layouts of a window that is not shown know what has changed in their parts: they learn of it one
// from the other, from the innermost outwards.
void Anordnen(QWidget &teil)
{
    for (QObject *kind : teil.children())
        if (auto *inneres = qobject_cast<QWidget *>(kind); inneres && !inneres->isWindow())
            Anordnen(*inneres);
    if (teil.layout())
        teil.layout()->activate();
}

// No window on Wayland is told where it stands: what is known from elsewhere is kept.
bool KenntPlaetze()
{
    return !QGuiApplication::platformName().startsWith(u"wayland");
}

} // namespace

// As the learner has made it, else as large as reads well, and larger where the card's picture needs it;
// never larger than the screen.
void Fensterplatz::Waehlen(const Fensterlage &lage, Kartenflaeche &karte)
{
    vorher_ = lage_ = lage;
    benutzt_ = false;
    // As for a window that was never shown.
    fenster_.setWindowState(Qt::WindowNoState);
    if (const QWidget *eltern = fenster_.parentWidget(); eltern && eltern->screen() != fenster_.screen())
        fenster_.setScreen(eltern->screen());

    const QLayout &inhalt = *fenster_.layout();
    const int zeile = fenster_.fontMetrics().height();
    const QSize schirm = fenster_.screen()->availableSize();
    QSize hoechstens = schirm * 0.9;
    std::optional<QPoint> platz = lage.platz;
    if (platz && lage.groesse) {
        const QRect gegeben = AufDenSchirm({*platz, *lage.groesse}, fenster_);
        platz = gegeben.topLeft();
        hoechstens = gegeben.size();
    } else if (lage.groesse) {
        hoechstens = lage.groesse->boundedTo(schirm);
    }
    QSize groesse = lage.groesse ? hoechstens : QSize(zeile * 56, zeile * 42).boundedTo(hoechstens);
    const auto mindestHoehe = [&] {
        Anordnen(fenster_);
        return std::max(inhalt.minimumSize().height(), inhalt.minimumHeightForWidth(groesse.width()));
    };
    if (const QSize bild = karte.Bildbedarf(); !bild.isEmpty())
        groesse = groesse.expandedTo(bild + QSize(zeile * 6, zeile * 18)).boundedTo(hoechstens);
    groesse = groesse.expandedTo({inhalt.minimumSize().width(), mindestHoehe()});
    fenster_.resize(lage.groesse ? groesse : groesse.boundedTo(hoechstens));
    if (!platz)
        platz = UeberDerBox(fenster_);
    if (platz)
        fenster_.setGeometry(AufDenSchirm({*platz, fenster_.size()}, fenster_));
    if (lage.maximiert)
        fenster_.setWindowState(Qt::WindowMaximized);
}

// Only what comes from the desktop, and once the window is in use, is the learner's doing.
void Fensterplatz::Merken(const QEvent &event)
{
    if (event.type() == QEvent::ActivationChange)
        benutzt_ = benutzt_ || fenster_.isActiveWindow();
    if (!event.spontaneous() || !benutzt_)
        return;
    if (event.type() == QEvent::Resize)
        lage_.groesse = fenster_.size();
    if ((event.type() == QEvent::Resize || event.type() == QEvent::Move) && KenntPlaetze())
        lage_.platz = fenster_.geometry().topLeft();
}

// What it was before it was maximised is still known from earlier.
void Fensterplatz::Abschliessen()
{
    if (fenster_.isMaximized())
        lage_ = vorher_;
    lage_.maximiert = fenster_.isMaximized();
}

} // namespace paukfix
