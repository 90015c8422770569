// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "UrteilZeile.h"

#include "Abfrageteile.h"
#include "Farben.h"
#include "Texttaste.h"

#include <QHBoxLayout>
#include <QIcon>
#include <QKeyEvent>
#include <QLabel>
#include <QPixmapCache>
#include <QRadioButton>

#include <algorithm>
#include <array>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr int GesichtGroesse = 48;

// The same two faces for all cards: each is read once.
QPixmap GesichtLesen(const QString &pfad, qreal dichte)
{
    const QString schluessel = u"%1@%2"_s.arg(pfad).arg(dichte);
    QPixmap bild;
    if (!QPixmapCache::find(schluessel, &bild)) {
        bild = QIcon(pfad).pixmap(QSize(GesichtGroesse, GesichtGroesse), dichte);
        QPixmapCache::insert(schluessel, bild);
    }
    return bild;
}

} // namespace

UrteilZeile::UrteilZeile(QWidget *eltern) : QWidget(eltern)
{
    Image1_ = Benannt(new QLabel(this), u"Image1"_s, u"Gesicht"_s);
    Image1_->setFixedSize(GesichtGroesse, GesichtGroesse);
    urteil_ = Benannt(new QLabel(this), u"Urteil"_s, u"Urteil"_s);
    Ergebnis_R_ = OptionBauen(u"&richtig"_s, u"Ergebnis_R"_s, true);
    Ergebnis_F_ = OptionBauen(u"&falsch"_s, u"Ergebnis_F"_s, false);

    auto *zeile = new QHBoxLayout(this);
    zeile->setContentsMargins(0, 0, 0, 0);
    zeile->addWidget(Image1_);
    zeile->addWidget(urteil_, 1);
    zeile->addWidget(Ergebnis_R_);
    zeile->addWidget(Ergebnis_F_);
    PlatzHalten(this);
    hide();
}

QRadioButton *UrteilZeile::OptionBauen(const QString &text, const QString &name, bool richtig)
{
    auto *option = Benannt(new QRadioButton(text, this), name, QString(text).remove(u'&'));
    option->setToolTip(u"Das Urteil selbst fällen"_s);
    option->installEventFilter(this);
    connect(option, &QRadioButton::toggled, this, [this, richtig](bool an) {
        if (an)
            emit Gewaehlt(richtig);
    });
    return option;
}

void UrteilZeile::Leeren()
{
    gezeigt_.reset();
    hide();
    Schriftgroesse(urteil_, 1.5);
    urteil_->clear();
    Image1_->clear();
    for (QRadioButton *option : {Ergebnis_R_, Ergebnis_F_}) {
        option->setAutoExclusive(false); // or one of them would stay chosen
        option->setChecked(false);
        option->setAutoExclusive(true);
        option->setDown(false);
        option->setFocusPolicy(Qt::StrongFocus);
    }
}

void UrteilZeile::Fragen()
{
    show();
    urteil_->setText(u"Wie war Ihre Antwort?"_s);
    Ergebnis_R_->setFocus(Qt::ShortcutFocusReason); // its mark shows what Enter would choose
}

void UrteilZeile::Waehlen(bool richtig)
{
    show();
    (richtig ? Ergebnis_R_ : Ergebnis_F_)->setChecked(true);
}

void UrteilZeile::Zeigen(bool richtig, const QString &gesicht)
{
    gezeigt_ = richtig;
    Image1_->setPixmap(GesichtLesen(gesicht, devicePixelRatioF()));
    urteil_->setText(richtig ? u"Richtig!"_s : u"Leider falsch"_s);
    // Tab stops at the option that is selected; the arrow keys reach the other one.
    Ergebnis_R_->setFocusPolicy(richtig ? Qt::StrongFocus : Qt::ClickFocus);
    Ergebnis_F_->setFocusPolicy(richtig ? Qt::ClickFocus : Qt::StrongFocus);
}

QString UrteilZeile::Text() const
{
    return urteil_->text();
}

QList<QWidget *> UrteilZeile::Tabfolge() const
{
    return {Ergebnis_R_, Ergebnis_F_};
}

void UrteilZeile::Faerben()
{
    TextFaerben(urteil_, gezeigt_ ? Farben::Lesbar(*gezeigt_ ? Farben::Richtig : Farben::Falsch,
                                                   palette().color(QPalette::Base))
                                  : palette().color(QPalette::WindowText));
    UmrissFaerben(Ergebnis_R_);
    UmrissFaerben(Ergebnis_F_);
}

bool UrteilZeile::eventFilter(QObject *objekt, QEvent *event)
{
    if (event->type() != QEvent::KeyPress || gezeigt_)
        return false;
    // The toolkit would let Tab stop at one of the two only, and take no arrow but those along their line.
    // (This reason is the one that marks the focus whatever key came before.)
    constexpr std::array Vor{Qt::Key_Tab, Qt::Key_Right, Qt::Key_Down};
    constexpr std::array Zurueck{Qt::Key_Backtab, Qt::Key_Left, Qt::Key_Up};
    const auto &taste = static_cast<const QKeyEvent &>(*event);
    const auto eineVon = [&taste](const auto &tasten) {
        return std::find(tasten.begin(), tasten.end(), taste.key()) != tasten.end();
    };
    if (objekt == Ergebnis_R_ && eineVon(Vor))
        Ergebnis_F_->setFocus(Qt::ShortcutFocusReason);
    else if (objekt == Ergebnis_F_ && eineVon(Zurueck))
        Ergebnis_R_->setFocus(Qt::ShortcutFocusReason);
    else if (IstEingabetaste(taste))
        static_cast<QRadioButton *>(objekt)->setChecked(true);
    else
        return false;
    return true;
}

} // namespace paukfix
