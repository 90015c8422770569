// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KreuzZeile.h"

#include "Abfrageteile.h"
#include "Hausfarben.h"
#include "Kurztext.h"
#include "RichTextBox.h"

#include <QCheckBox>
#include <QEvent>
#include <QPainter>

#include <algorithm>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr int Rand = 12, RandOben = 2; // around and between the parts

const QString NichtAngekreuzt = u"richtig, nicht angekreuzt"_s; // the longest of what a line says

} // namespace

// A tick box that can be reached, but not changed, once it is fixed.
class KreuzZeile::Kaestchen final : public QCheckBox
{
public:
    using QCheckBox::QCheckBox;

    bool fest = false;

    void SetFarbe(const QColor &farbe)
    {
        setProperty("zeichenfarbe", farbe.isValid() ? QVariant(farbe) : QVariant());
        update();
    }

protected:
    void nextCheckState() override
    {
        if (!fest)
            QCheckBox::nextCheckState();
    }
};

KreuzZeile::KreuzZeile(std::size_t nummer, QWidget *eltern)
    : QWidget(eltern),
      kreuz_(Benannt(new Kaestchen(this), Name("Check1", nummer), {})),
      text_(Benannt(new RichTextBox(this), Name("Antwort", nummer), {})),
      vermerk_(new QLabel(this)),
      richtig_(Benannt(new Kaestchen(this), Name("Check2", nummer), {}))
{
    text_->setReadOnly(true);
    text_->setTextInteractionFlags(Qt::NoTextInteraction);
    text_->setFocusPolicy(Qt::NoFocus);
    text_->setFrameShape(QFrame::NoFrame);
    text_->viewport()->setAutoFillBackground(false);
    text_->document()->setDocumentMargin(0);
    vermerk_->setTextFormat(Qt::PlainText);
    vermerk_->setObjectName(Name("Vermerk", nummer));
    vermerk_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    richtig_->setAttribute(Qt::WA_TransparentForMouseEvents);
    richtig_->setFocusPolicy(Qt::TabFocus);
    richtig_->fest = true;
    richtig_->hide();
}

void KreuzZeile::Zeigen(const QString &antwort)
{
    lage_ = Lage::Gefragt;
    vermerk_->setFont(Schriftgrad::In(font(), Schriftgrad::Klein));
    HalbfettSetzen(vermerk_);
    vermerk_->setFixedWidth(vermerk_->fontMetrics().horizontalAdvance(NichtAngekreuzt) +
                            1); // keeps its place
    vermerk_->clear();
    vermerk_->setPalette({});
    text_->setFont(Kartenschrift(font()));
    text_->ZeigeRichText(antwort);
    leer_ = text_->PlainText().trimmed().isEmpty();
    text_->setPlaceholderText(leer_ ? u"leer"_s : QString()); // never larger than the window's font
    text_->SetFaktor(Kartenfaktor(font(), leer_ ? 1 : Schriftgrad::Gross));
    for (Kaestchen *kaestchen : {kreuz_, richtig_}) {
        kaestchen->setChecked(false);
        kaestchen->setDown(false);
        kaestchen->SetFarbe({});
    }
    kreuz_->fest = false;
    richtig_->hide();
    update();
}

void KreuzZeile::SetPlatz(int platz)
{
    platz_ = platz;
    kreuz_->setText(QString::number(platz + 1));
    Benennen();
}

void KreuzZeile::SetKompakt(bool kompakt)
{
    text_->SetHoechstens(kompakt ? 2 : 4);
    mindestens_ = std::max(kompakt ? 28 : 36, fontMetrics().height() + 10);
}

int KreuzZeile::Hoehe(int breite) const
{
    return std::max(mindestens_, text_->heightForWidth(Textplatz({breite, 0}).width()) + 2 * RandOben);
}

QRect KreuzZeile::Textplatz(QSize zeile) const
{
    const int links = Rand + kreuz_->sizeHint().width() + Rand;
    const int rechts = zeile.width() - 3 * Rand - vermerk_->width() - richtig_->sizeHint().width();
    return {links, RandOben, rechts - links, zeile.height() - 2 * RandOben};
}

void KreuzZeile::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    const QRect text = Textplatz(size());
    text_->setGeometry(text);
    const auto setzen = [&](QWidget *teil, int links, QSize groesse) {
        teil->setGeometry(links, (height() - groesse.height()) / 2, groesse.width(), groesse.height());
    };
    setzen(kreuz_, Rand, kreuz_->sizeHint());
    setzen(vermerk_, text.right() + 1 + Rand, {vermerk_->width(), vermerk_->sizeHint().height()});
    // As high as the other one, so that both stand on one line.
    setzen(richtig_, width() - Rand - richtig_->sizeHint().width(),
           {richtig_->sizeHint().width(), kreuz_->sizeHint().height()});
}

void KreuzZeile::Aufloesen(bool richtig)
{
    const bool angekreuzt = Angekreuzt();
    lage_ = richtig ? Lage::Richtig : angekreuzt ? Lage::Falsch : Lage::Schlicht;
    kreuz_->fest = true;
    richtig_->setChecked(richtig);
    richtig_->show();
    if (lage_ != Lage::Schlicht)
        vermerk_->setText(!richtig ? u"falsch angekreuzt"_s : angekreuzt ? u"richtig"_s : NichtAngekreuzt);
    Faerben();
    Benennen();
}

bool KreuzZeile::Angekreuzt() const
{
    return kreuz_->isChecked();
}

QString KreuzZeile::Antwort() const
{
    return Einzeilig(Kurztext(text_->PlainText())).trimmed();
}

QCheckBox *KreuzZeile::Kreuz() const
{
    return kreuz_;
}

QCheckBox *KreuzZeile::RichtigesKreuz() const
{
    return richtig_;
}

void KreuzZeile::Faerben()
{
    if (lage_ == Lage::Gefragt || lage_ == Lage::Schlicht)
        return;
    const Hausfarben &farben = HausfarbenZu(palette());
    const QColor farbe = lage_ == Lage::Richtig ? farben.richtigText : farben.falschText;
    paukfix::Faerben(vermerk_, {{QPalette::WindowText, farbe}});
    kreuz_->SetFarbe(farbe);
    richtig_->SetFarbe(farbe);
    update();
}

void KreuzZeile::Benennen()
{
    const QString name = u"Antwort %1"_s.arg(platz_ + 1);
    const QString inhalt = leer_ ? u"leer"_s : Antwort();
    text_->setAccessibleName(name);
    kreuz_->setAccessibleName(u"%1: %2"_s.arg(name, inhalt));
    kreuz_->setAccessibleDescription(vermerk_->text());
    richtig_->setAccessibleName(
        u"%1 ist %2: %3"_s.arg(name, richtig_->isChecked() ? u"richtig"_s : u"nicht richtig"_s, inhalt));
}

void KreuzZeile::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && richtig_)
        Faerben();
}

void KreuzZeile::paintEvent(QPaintEvent *)
{
    constexpr qreal Radius = 8;
    const Hausfarben &farben = HausfarbenZu(palette());
    QColor grund = farben.feld;
    QPen rand(farben.umriss);
    if (lage_ == Lage::Richtig || lage_ == Lage::Falsch) {
        const bool richtig = lage_ == Lage::Richtig;
        grund = richtig ? farben.richtigGrund : farben.falschGrund;
        rand.setColor(richtig ? farben.richtigText : farben.falschText);
    } else if (leer_) {
        grund = farben.antwortzone;
        rand.setStyle(Qt::DashLine);
    }
    QPainter maler(this);
    maler.setRenderHint(QPainter::Antialiasing);
    maler.setBrush(grund);
    maler.setPen(rand);
    maler.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), Radius, Radius);
}

} // namespace paukfix
