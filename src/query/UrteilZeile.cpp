// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "UrteilZeile.h"

#include "Abfrageteile.h"
#include "Hausfarben.h"
#include "KurzLabel.h"
#include "Texttaste.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QIcon>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QPixmapCache>
#include <QRadioButton>
#include <QVBoxLayout>

#include <algorithm>
#include <array>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr int Gesicht = 44, GesichtKompakt = 32;

// The same two faces for all cards: each is read once.
QPixmap GesichtLesen(const QString &pfad, int groesse, qreal dichte)
{
    const QString schluessel = u"%1@%2@%3"_s.arg(pfad).arg(groesse).arg(dichte);
    QPixmap bild;
    if (!QPixmapCache::find(schluessel, &bild)) {
        bild = QIcon(pfad).pixmap(QSize(groesse, groesse), dichte);
        QPixmapCache::insert(schluessel, bild);
    }
    return bild;
}

} // namespace

UrteilZeile::UrteilZeile(QWidget *eltern) : QWidget(eltern)
{
    Image1_ = new QLabel(this);
    Image1_->setObjectName(u"Image1"_s);
    urteil_ = new QLabel(this);
    urteil_->setObjectName(u"Urteil"_s);
    urteil_->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Preferred); // the sentence gives way to it
    satz_ = new KurzLabel(this);
    satz_->setObjectName(u"Urteilssatz"_s);
    satz_->setTextFormat(Qt::PlainText);
    gewertet_ = Beschriftung(this, u"gewertet als"_s);
    Ergebnis_R_ = OptionBauen(u"&richtig"_s, u"Ergebnis_R"_s, true);
    Ergebnis_F_ = OptionBauen(u"&falsch"_s, u"Ergebnis_F"_s, false);

    worte_ = new QBoxLayout(QBoxLayout::TopToBottom);
    worte_->addStretch(1);
    worte_->addWidget(urteil_);
    worte_->addWidget(satz_);
    worte_->addStretch(1);
    auto *zeile = new QHBoxLayout(this);
    zeile->addWidget(Image1_);
    zeile->addLayout(worte_, 1);
    zeile->addWidget(gewertet_);
    zeile->addWidget(Ergebnis_R_);
    zeile->addWidget(Ergebnis_F_);
    hide();
}

QRadioButton *UrteilZeile::OptionBauen(const QString &text, const QString &name, bool richtig)
{
    auto *option = Benannt(new QRadioButton(text, this), name, QString(text).remove(u'&'));
    // A small window has no room for the line of keys.
    option->setToolTip(u"Das Urteil selbst fällen (Alt+%1)"_s.arg(richtig ? u'R' : u'F'));
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
    deckung_ = 1;
    hide();
    urteil_->setFont(Schriftgrad::In(font(), Schriftgrad::Gross));
    HalbfettSetzen(urteil_);
    for (QLabel *label : {satz_, gewertet_})
        label->setFont(Schriftgrad::In(font(), Schriftgrad::Klein));
    urteil_->clear();
    satz_->clear();
    satz_->hide();
    satz_->setToolTip({});
    Image1_->clear();
    for (QRadioButton *option : {Ergebnis_R_, Ergebnis_F_}) {
        option->setAutoExclusive(false); // or one of them would stay chosen
        option->setChecked(false);
        option->setAutoExclusive(true);
        option->setDown(false);
        option->setFocusPolicy(Qt::StrongFocus);
    }
    Faerben();
}

void UrteilZeile::SetKompakt(bool kompakt)
{
    kompakt_ = kompakt;
    const int groesse = kompakt ? GesichtKompakt : Gesicht;
    Image1_->setFixedSize(groesse, groesse);
    worte_->setDirection(kompakt ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    worte_->setStretch(0, kompakt ? 0 : 1);
    worte_->setSpacing(kompakt ? 12 : 0);
    gewertet_->setVisible(!kompakt);
}

void UrteilZeile::Fragen()
{
    urteil_->setText(u"Wie war Ihre Antwort?"_s);
    Faerben();
    AbstandSetzen();
    show();
    Ergebnis_R_->setFocus(Qt::ShortcutFocusReason); // its mark shows what Enter would choose
}

void UrteilZeile::Waehlen(bool richtig)
{
    show();
    (richtig ? Ergebnis_R_ : Ergebnis_F_)->setChecked(true);
}

void UrteilZeile::Zeigen(bool richtig, const QString &gesicht, const QString &satz)
{
    gezeigt_ = richtig;
    Image1_->setPixmap(GesichtLesen(gesicht, Image1_->width(), devicePixelRatioF()));
    urteil_->setText(richtig ? u"Richtig!"_s : u"Leider falsch"_s);
    satz_->setText(satz);
    satz_->show();
    satz_->setToolTip(satz.toHtmlEscaped());
    Faerben();
    AbstandSetzen();
    // Tab stops at the option that is selected; the arrow keys reach the other one.
    Ergebnis_R_->setFocusPolicy(richtig ? Qt::StrongFocus : Qt::ClickFocus);
    Ergebnis_F_->setFocusPolicy(richtig ? Qt::ClickFocus : Qt::StrongFocus);
}

QString UrteilZeile::Text() const
{
    return satz_->text().isEmpty() ? urteil_->text() : u"%1. %2"_s.arg(urteil_->text(), satz_->text());
}

void UrteilZeile::SetDeckung(double deckung)
{
    deckung_ = deckung;
    update();
}

void UrteilZeile::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    AbstandSetzen();
}

// In a narrow window the words come before the air between them.
void UrteilZeile::AbstandSetzen()
{
    layout()->setContentsMargins(14, 0, 16, 0);
    layout()->setSpacing(16);
    Image1_->show();
    if (layout()->minimumSize().width() <= width())
        return;
    layout()->setContentsMargins(6, 0, 6, 0);
    layout()->setSpacing(6);
    Image1_->setVisible(gezeigt_.has_value());
}

QSize UrteilZeile::sizeHint() const
{
    const QSize inhalt = layout()->sizeHint();
    const int text = urteil_->sizeHint().height() + (kompakt_ ? 0 : satz_->sizeHint().height());
    return {inhalt.width(), std::max(kompakt_ ? 44 : 64, text + (kompakt_ ? 8 : 16))};
}

QList<QWidget *> UrteilZeile::Tabfolge() const
{
    return {Ergebnis_R_, Ergebnis_F_};
}

void UrteilZeile::Faerben()
{
    const Hausfarben &farben = HausfarbenZu(palette());
    paukfix::Faerben(urteil_, {{QPalette::WindowText, !gezeigt_   ? farben.tinte
                                                      : *gezeigt_ ? farben.richtigText
                                                                  : farben.falschText}});
    update();
}

void UrteilZeile::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && urteil_)
        Faerben();
}

void UrteilZeile::paintEvent(QPaintEvent *)
{
    constexpr qreal Radius = 8;
    const Hausfarben &farben = HausfarbenZu(palette());
    QPainter maler(this);
    maler.setRenderHint(QPainter::Antialiasing);
    maler.setOpacity(deckung_);
    maler.setPen(Qt::NoPen);
    maler.setBrush(!gezeigt_ ? farben.gewaehlt : *gezeigt_ ? farben.richtigGrund : farben.falschGrund);
    maler.drawRoundedRect(rect(), Radius, Radius);
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
