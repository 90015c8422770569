// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AppConfig.h"
#include "Flaeche.h"
#include "PFUse.h"
#include "RichTextBox.h"

#include <QEvent>
#include <QLabel>
#include <QLayout>
#include <QRegion>
#include <QScreen>
#include <QWindow>

#include <algorithm>
#include <optional>

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

} // namespace

// As the learner has made it, else as large as reads well, and larger where the card's picture needs it;
// never larger than the screen.
void PFUse::GroesseWaehlen()
{
    const int zeile = fontMetrics().height();
    const QSize schirm = screen()->availableSize();
    QSize hoechstens = schirm * 0.9;
    std::optional<QPoint> platz = lage_.platz;
    if (platz && lage_.groesse) {
        const QRect gegeben = AufDenSchirm({*platz, *lage_.groesse}, *this);
        platz = gegeben.topLeft();
        hoechstens = gegeben.size();
    } else if (lage_.groesse) {
        hoechstens = lage_.groesse->boundedTo(schirm);
    }
    QSize groesse = lage_.groesse ? hoechstens : QSize(zeile * 56, zeile * 42).boundedTo(hoechstens);
    const auto mindestHoehe = [this, &groesse] {
        return std::max(layout()->minimumSize().height(), layout()->minimumHeightForWidth(groesse.width()));
    };
    mitBild_ = std::any_of(karte_.Medium.begin() + 1, karte_.Medium.begin() + 4,
                           [](const QString &name) { return !name.isEmpty(); });
    if (mitBild_ && !karte_.Bildplatz.isEmpty()) {
        bildPlatz_ = karte_.Bildplatz;
        const bool nebenDerFrage = bildPlatz_.top() < groesse.height() / 3;
        const QSize bedarf = QSize(bildPlatz_.right(), bildPlatz_.bottom()) + QSize(zeile * 6, zeile * 8);
        groesse = groesse.expandedTo(bedarf).boundedTo(hoechstens);
        if (nebenDerFrage) {
            // A picture that begins beside the question stays beside it; where the window has no room for
            // that, it is shown smaller rather than over the answers.
            const QLayout &inhalt = *kasten_->layout();
            const int oben =
                inhalt.contentsMargins().top() + MaskThema_->sizeHint().height() + inhalt.spacing();
            const int soll = bildPlatz_.bottom() - oben;
            const int moeglich = MFrage_->minimumHeight() + std::max(0, hoechstens.height() - mindestHoehe());
            MFrage_->setMinimumHeight(std::clamp(soll, MFrage_->minimumHeight(), moeglich));
            if (soll > moeglich)
                bildPlatz_.setHeight(
                    std::max(bildPlatz_.height() / 2, bildPlatz_.height() - soll + moeglich));
        }
    }
    groesse = groesse.expandedTo({layout()->minimumSize().width(), mindestHoehe()});
    resize(lage_.groesse ? groesse : groesse.boundedTo(hoechstens));
    if (platz)
        setGeometry(AufDenSchirm({*platz, size()}, *this));
    if (lage_.maximiert)
        setWindowState(windowState() | Qt::WindowMaximized);
}

// Only what comes from the desktop, and once the window is in use, is the learner's doing.
void PFUse::LageMerken(const QEvent &event)
{
    if (!event.spontaneous() || !benutzt_)
        return;
    if (event.type() == QEvent::Resize)
        lage_.groesse = size();
    lage_.platz = geometry().topLeft();
}

// Before the window goes. What it was before it was maximised is still known from earlier.
void PFUse::LageAbschliessen()
{
    if (isMaximized())
        lage_ = umgebung_.konfig.Abfrage;
    lage_.maximiert = isMaximized();
}
