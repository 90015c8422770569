// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Kopfzeile.h"

#include "FachNummern.h"
#include "Fensterbau.h"
#include "Hausfarben.h"
#include "Schriftgrade.h"
#include "Symbole.h"
#include "Themenzeile.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>

#include <algorithm>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// A word on honey.
class Marke final : public QLabel
{
public:
    Marke(const QString &text, QWidget *eltern) : QLabel(text, eltern)
    {
        setContentsMargins(11, 3, 11, 3);
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        QFont fett = font();
        fett.setWeight(QFont::DemiBold);
        setFont(fett);
    }

protected:
    void paintEvent(QPaintEvent *) override
    {
        const Hausfarben &farben = HausfarbenZu(palette());
        QPainter maler(this);
        maler.setRenderHint(QPainter::Antialiasing);
        maler.setPen(farben.akzentUmriss);
        maler.setBrush(farben.akzent);
        const QRectF feld = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
        maler.drawRoundedRect(feld, feld.height() / 2, feld.height() / 2);
        maler.setPen(farben.akzentTinte);
        maler.drawText(rect(), Qt::AlignCenter, text());
    }
};

// A small button that says how many there are.
class Medienknopf final : public QPushButton
{
public:
    using QPushButton::QPushButton;

    QSize sizeHint() const override
    {
        constexpr int Bild = 16;
        return {fontMetrics().horizontalAdvance(text()) + Bild + 32, fontMetrics().height() + 10};
    }

    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent *) override
    {
        constexpr int Bild = 16;
        const Hausfarben &farben = HausfarbenZu(palette());
        QPainter maler(this);
        maler.setRenderHint(QPainter::Antialiasing);
        const QRectF feld = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
        maler.setPen(farben.umriss);
        maler.setBrush(isDown() || underMouse() ? farben.gewaehlt : QColor(Qt::transparent));
        maler.drawRoundedRect(feld, feld.height() / 2, feld.height() / 2);
        icon().paint(&maler, QRect(11, (height() - Bild) / 2, Bild, Bild));
        maler.setPen(palette().color(QPalette::WindowText));
        maler.drawText(rect().adjusted(Bild + 18, 0, 0, 0), Qt::AlignVCenter | Qt::AlignLeft, text());
    }
};

QPushButton *Medienmarke(const QString &name, Symbole symbol, const QString &tipp, QWidget *eltern)
{
    auto *marke = new Medienknopf(eltern);
    marke->setFont(Schriftgrad::In(marke->font(), Schriftgrad::Klein));
    marke->setObjectName(name);
    marke->setIcon(Symbol(symbol));
    marke->setToolTip(tipp);
    marke->setAutoDefault(false);
    marke->hide();
    return marke;
}

QString Fachname(const QString &nummer)
{
    if (nummer == QString::number(FachNeu))
        return u"· Neu"_s;
    return nummer == QString::number(FachErledigt) ? u"· erledigt"_s : QString();
}

} // namespace

Kopfzeile::Kopfzeile(QWidget *parent)
    : QWidget(parent),
      MaskFrageNr_(Benannt(new QLineEdit(this), u"MaskFrageNr"_s, u"Nummer der Karte"_s)),
      MaskFachNr_(new QLabel(this)),
      fachName_(new QLabel(this)),
      LabelNeu_(new Marke(u"Neue Karte"_s, this)),
      bilder_(Medienmarke(u"Bildmarke"_s, Symbole::Bild, u"Bilder der Karte"_s, this)),
      toene_(Medienmarke(u"Tonmarke"_s, Symbole::Ton, u"Töne der Karte"_s, this)),
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
    MaskFachNr_->setObjectName(u"MaskFachNr"_s);
    LabelNeu_->setObjectName(u"LabelNeu"_s);
    for (QLabel *label : {MaskFachNr_, fachName_}) {
        label->setTextFormat(Qt::PlainText);
        QFont fett = label->font();
        fett.setWeight(QFont::DemiBold);
        label->setFont(fett);
    }
    connect(MaskThema_, &QLineEdit::textEdited, this, &Kopfzeile::themaGeaendert);
    connect(bilder_, &QPushButton::clicked, this, &Kopfzeile::bilderGewuenscht);
    connect(toene_, &QPushButton::clicked, this, &Kopfzeile::toeneGewuenscht);

    auto *zeile = new QHBoxLayout(this);
    zeile->setContentsMargins(0, 0, 0, 0);
    zeile->setSpacing(8);
    zeile->addWidget(Beschriftung(u"Frage &Nr.:"_s, MaskFrageNr_, this));
    zeile->addWidget(MaskFrageNr_);
    zeile->addSpacing(8);
    auto *fach = new QHBoxLayout;
    fach->setSpacing(4);
    fach->addWidget(new QLabel(u"Fach:"_s, this));
    fach->addWidget(MaskFachNr_);
    fach->addWidget(fachName_);
    zeile->addLayout(fach);
    zeile->addWidget(LabelNeu_);
    zeile->addWidget(bilder_);
    zeile->addWidget(toene_);
    zeile->addSpacing(8);
    zeile->addWidget(Beschriftung(u"&Thema:"_s, MaskThema_, this));
    zeile->addWidget(MaskThema_, 1);
}

void Kopfzeile::Zeigen(const Formularkopf &kopf)
{
    kopf_ = kopf;
    MaskFrageNr_->setText(kopf.FrageNr);
    MaskFachNr_->setText(kopf.FachNr);
    fachName_->setText(Fachname(kopf.FachNr));
    fachName_->setVisible(!fachName_->text().isEmpty());
    LabelNeu_->setVisible(kopf.neu);
}

void Kopfzeile::ThemaZeigen(const QString &thema)
{
    MaskThema_->Zeigen(thema);
}

void Kopfzeile::DateienSchuetzen()
{
    bilder_->setEnabled(false);
    toene_->setEnabled(false);
}

QString Kopfzeile::Thema() const
{
    return MaskThema_->Thema();
}

void Kopfzeile::DateienZeigen(const Bildnamen &namen)
{
    const auto zeigen = [&](QPushButton *marke, std::size_t erster, const QString &eines,
                            const QString &viele) {
        const auto vorhanden = std::count_if(namen.begin() + erster, namen.begin() + erster + Momente,
                                             [](const QString &name) { return !name.isEmpty(); });
        marke->setText(u"%1 %2"_s.arg(vorhanden).arg(vorhanden == 1 ? eines : viele));
        marke->setAccessibleName(marke->text());
        marke->setVisible(vorhanden > 0);
        marke->updateGeometry();
    };
    zeigen(bilder_, ErsterBildplatz, u"Bild"_s, u"Bilder"_s);
    zeigen(toene_, ErsterTonplatz, u"Ton"_s, u"Töne"_s);
}

QList<QWidget *> Kopfzeile::Tabfolge() const
{
    return {MaskFrageNr_, bilder_, toene_, MaskThema_};
}

void Kopfzeile::ThemaMarkieren(qsizetype stelle, qsizetype laenge)
{
    MaskThema_->setFocus();
    // Selected backwards, so that the caret stands before it.
    MaskThema_->setSelection(static_cast<int>(stelle + laenge), -static_cast<int>(laenge));
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
