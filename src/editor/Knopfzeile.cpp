// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Knopfzeile.h"

#include "CardEditor.h"
#include "Fensterbau.h"
#include "Symbole.h"
#include "Tastenkappe.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QStyleOptionButton>

#include <algorithm>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

QPushButton *Knopf(QWidget *form, const QString &text, const QString &name, const QString &zugaenglich,
                   const QString &tipp)
{
    auto *neu = Benannt(new QPushButton(text, form), name, zugaenglich);
    neu->setToolTip(tipp);
    neu->setAutoDefault(false);
    PlatzHalten(neu);
    return neu;
}

// A button whose caption is drawn as an icon.
class Pfeilknopf final : public QPushButton
{
public:
    using QPushButton::QPushButton;

protected:
    void initStyleOption(QStyleOptionButton *option) const override
    {
        QPushButton::initStyleOption(option);
        option->text.clear();
    }
};

// A screen reader says the caption, and what it does.
QPushButton *Pfeil(QWidget *form, Symbole symbol, const QString &zeichen, const QString &name,
                   const QString &zweck, const QString &tipp)
{
    QPushButton *neu = Benannt(new Pfeilknopf(zeichen, form), name, u"%1 %2"_s.arg(zeichen, zweck));
    neu->setToolTip(tipp);
    neu->setAutoDefault(false);
    PlatzHalten(neu);
    neu->setIcon(Symbol(symbol));
    neu->setIconSize({20, 20});
    neu->setFixedWidth(44);
    return neu;
}

// As wide as what it says of other cards, where there is room: who leafs with the mouse finds the arrows
// where they were. Where there is little, it says less.
class Platztext final : public QLabel
{
public:
    using QLabel::QLabel;

    void SetAndere(const QStringList &andere)
    {
        andere_ = andere;
        updateGeometry();
    }

    void SetKurzform(const QString &kurzform)
    {
        kurzform_ = kurzform;
        updateGeometry();
    }

    QSize minimumSizeHint() const override
    {
        return {fontMetrics().horizontalAdvance(kurzform_), QLabel::minimumSizeHint().height()};
    }

    QSize sizeHint() const override
    {
        QSize platz = QLabel::sizeHint();
        for (const QString &text : andere_)
            platz.setWidth(std::max(platz.width(), fontMetrics().horizontalAdvance(text)));
        return platz;
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        QPainter maler(this);
        maler.setPen(palette().color(foregroundRole()));
        const bool passt = fontMetrics().horizontalAdvance(text()) <= width() || kurzform_.isEmpty();
        maler.drawText(rect(), Qt::AlignCenter, passt ? text() : kurzform_);
    }

private:
    QStringList andere_;
    QString kurzform_;
};

} // namespace

Knopfzeile::Knopfzeile(QWidget *form)
    : CZZurück(Pfeil(form, Symbole::Schnellzurueck, u"<<"_s, u"CZZurück"_s, u"zurückblättern"_s,
                     u"zurückblättern, solange gedrückt"_s)),
      CZurück(
          Pfeil(form, Symbole::Zurueck, u"<"_s, u"CZurück"_s, u"vorige Karte"_s, u"vorige Karte STRG+<"_s)),
      CVor(Pfeil(form, Symbole::Vor, u">"_s, u"CVor"_s, u"nächste Karte"_s,
                 u"nächste Karte STRG + SHIFT + >"_s)),
      CVVor(Pfeil(form, Symbole::Schnellvor, u">>"_s, u"CVVor"_s, u"vorblättern"_s,
                  u"vorblättern, solange gedrückt"_s)),
      CEOF(Pfeil(form, Symbole::AnsEnde, u">>|"_s, u"CEOF"_s, u"neue Karte am Ende"_s,
                 u"neue Karte hinter der letzten"_s)),
      Cadd(Knopf(form, u"&hinzufügen"_s, u"Cadd"_s, u"hinzufügen"_s, u"Karte hinzufügen (STRG+I)"_s)),
      Cback(Knopf(form, u"Zu&rück"_s, u"Cback"_s, u"Zurück"_s, u"den Editor schließen"_s)),
      platz(new Platztext(form)),
      tasten(new Tastenkappe(u"[Strg]+[I] speichert"_s, form)),
      zeile(new QHBoxLayout)
{
    platz->setObjectName(u"Kartenplatz"_s);
    platz->setTextFormat(Qt::PlainText);
    platz->setAlignment(Qt::AlignCenter);
    tasten->setObjectName(u"Tastenhinweise"_s);
    for (QWidget *label : {static_cast<QWidget *>(platz), static_cast<QWidget *>(tasten)})
        PlatzHalten(label);
    Cadd->setProperty("leitend", true);
    zeile->setSpacing(8);
    zeile->addWidget(CZZurück);
    zeile->addWidget(CZurück);
    zeile->addWidget(platz);
    zeile->addWidget(CVor);
    zeile->addWidget(CVVor);
    zeile->addWidget(CEOF);
    zeile->addSpacing(12);
    zeile->addWidget(tasten, 1, Qt::AlignRight | Qt::AlignVCenter);
    zeile->addSpacing(8);
    zeile->addWidget(Cback);
    zeile->addWidget(Cadd);
}

QList<QWidget *> Knopfzeile::Alle() const
{
    return {CZZurück, CZurück, CVor, CVVor, CEOF, Cback, Cadd, platz, tasten};
}

void Knopfzeile::Zeigen(const Formularkopf &kopf) const
{
    const QString neu = u"neu, hinter der letzten"_s, karte = u"Karte %1 von %2"_s;
    auto *text = static_cast<Platztext *>(platz);
    text->SetAndere({neu, karte.arg(kopf.platz.of).arg(kopf.platz.of)});
    text->SetKurzform(kopf.neu ? u"neu"_s : u"%1/%2"_s.arg(kopf.platz.number).arg(kopf.platz.of));
    if (kopf.neu)
        platz->setText(neu);
    else if (kopf.platz.number > 0)
        platz->setText(karte.arg(kopf.platz.number).arg(kopf.platz.of));
    else
        platz->clear();
}

} // namespace paukfix
