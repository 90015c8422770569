// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Kopfzeile.h"

#include "Farben.h"
#include "Fensterbau.h"
#include "Themenzeile.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// A word on a rounded ground that stands out from the form.
class Marke final : public QLabel
{
public:
    Marke(const QString &text, QWidget *eltern) : QLabel(text, eltern)
    {
        setContentsMargins(12, 3, 12, 3);
        QFont fett = font();
        fett.setBold(true);
        setFont(fett);
    }

protected:
    void paintEvent(QPaintEvent *event) override
    {
        QPainter maler(this);
        maler.setRenderHint(QPainter::Antialiasing);
        maler.setPen(Qt::NoPen);
        maler.setBrush(palette().color(QPalette::Window));
        maler.drawRoundedRect(rect(), height() / 2.0, height() / 2.0);
        QLabel::paintEvent(event);
    }
};

} // namespace

Kopfzeile::Kopfzeile(QWidget *parent)
    : QWidget(parent),
      MaskFrageNr_(Benannt(new QLineEdit(this), u"MaskFrageNr"_s, u"Nummer der Karte"_s)),
      MaskFachNr_(Benannt(new QLabel(this), u"MaskFachNr"_s, u"Fach"_s)),
      LabelNeu_(Benannt(new Marke(u"Neue Karte"_s, this), u"LabelNeu"_s, u"Neue Karte"_s)),
      MaskThema_(Benannt(new Themenzeile(this), u"MaskThema"_s, u"Thema"_s))
{
    MaskFrageNr_->setMaxLength(20);
    MaskFrageNr_->setFixedWidth(fontMetrics().horizontalAdvance(u"0000000"_s) * 3 / 2);
    MaskFrageNr_->setToolTip(u"Nummer eingeben und mit der Eingabetaste zu dieser Karte springen"_s);
    MaskFrageNr_->installEventFilter(this);
    connect(MaskFrageNr_, &QLineEdit::returnPressed, this, [this] {
        emit nummerEingegeben(MaskFrageNr_->text());
        if (MaskFrageNr_->hasFocus())
            MaskFrageNr_->selectAll(); // the next number replaces this one
    });
    connect(MaskFrageNr_, &QLineEdit::editingFinished, &fokuswache_, [this] {
        if (!MaskFrageNr_->hasFocus())
            MaskFrageNr_->setText(Nummer());
    });
    MaskFachNr_->setTextFormat(Qt::PlainText);
    PlatzHalten(LabelNeu_);
    connect(MaskThema_, &QLineEdit::textEdited, this, &Kopfzeile::themaGeaendert);

    auto *zeile = new QHBoxLayout(this);
    zeile->setContentsMargins(0, 0, 0, 0);
    zeile->setSpacing(8);
    zeile->addWidget(MaskFrageNr_);
    zeile->addSpacing(12);
    zeile->addWidget(new QLabel(u"Fach:"_s, this));
    zeile->addWidget(MaskFachNr_);
    zeile->addSpacing(12);
    zeile->addWidget(LabelNeu_);
    zeile->addSpacing(12);
    zeile->addWidget(Beschriftung(u"&Thema:"_s, MaskThema_, this));
    zeile->addWidget(MaskThema_, 1);
}

void Kopfzeile::Zeigen(const Kartenkopf &kopf)
{
    kopf_ = kopf;
    MaskFrageNr_->setText(kopf.FrageNr);
    MaskFachNr_->setText(kopf.FachNr);
    LabelNeu_->setVisible(kopf.neu);
}

void Kopfzeile::ThemaZeigen(const QString &thema)
{
    MaskThema_->Zeigen(thema);
}

QString Kopfzeile::Thema() const
{
    return MaskThema_->Thema();
}

QLineEdit *Kopfzeile::Themenfeld() const
{
    return MaskThema_;
}

void Kopfzeile::ThemaMarkieren(qsizetype stelle, qsizetype laenge)
{
    MaskThema_->setFocus();
    // Selected backwards, so that the caret stands before it.
    MaskThema_->setSelection(static_cast<int>(stelle + laenge), -static_cast<int>(laenge));
}

void Kopfzeile::FarbenSetzen(const QPalette &form, const QColor &umriss)
{
    const QColor marke = form.color(QPalette::Highlight);
    Faerben(LabelNeu_,
            {{QPalette::Window, marke},
             {QPalette::WindowText, Farben::Lesbar(form.color(QPalette::HighlightedText), marke)}});
    for (QWidget *feld : {MaskFrageNr_, Themenfeld()})
        Faerben(feld, {{QPalette::Window, umriss}});
}

bool Kopfzeile::eventFilter(QObject *objekt, QEvent *event)
{
    if (event->type() == QEvent::KeyPress && static_cast<const QKeyEvent *>(event)->key() == Qt::Key_Escape) {
        MaskFrageNr_->setText(Nummer());
        return true;
    }
    return QWidget::eventFilter(objekt, event);
}

} // namespace paukfix
