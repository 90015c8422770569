// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Kastenkopf.h"

#include "Fachreihe.h"
#include "Geschehen.h"
#include "Hausfarben.h"
#include "Symbole.h"
#include "Tastenkappe.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>

#include <algorithm>
#include <numeric>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

using Stufe = KastenMasse::Stufe;

QString Ganze(int zahl)
{
    return QLocale(QLocale::German).toString(zahl);
}

// In the colour of the letters beside it.
QIcon Kartensymbol(QSize groesse, const QWidget &knopf)
{
    QPixmap bild(groesse * knopf.devicePixelRatio());
    bild.fill(Qt::transparent);
    QPainter maler(&bild);
    maler.setRenderHint(QPainter::Antialiasing);
    SymbolMalen(maler, bild.rect(), Symbole::Karte, HausfarbenZu(knopf.palette()).akzentTinte);
    maler.end();
    bild.setDevicePixelRatio(knopf.devicePixelRatio());
    return bild;
}

// Keys are the window's, where they mean the same and more.
class Weiterknopf final : public QPushButton
{
public:
    using QPushButton::QPushButton;

protected:
    void keyPressEvent(QKeyEvent *event) override { event->ignore(); }

    void keyReleaseEvent(QKeyEvent *event) override { event->ignore(); }
};

} // namespace

Anteile::Anteile(QWidget *parent) : QWidget(parent)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void Anteile::SetTabelle(const FachTabelle &tabelle)
{
    QStringList worte;
    for (std::size_t i = 0; i < FachAnzahl; ++i) {
        anzahl_[i] = std::max<int>(tabelle[i].Anzahl, 0);
        worte << u"%1 %2"_s.arg(Fachname(static_cast<int>(i))).arg(anzahl_[i]);
    }
    const QString name = u"Karten: "_s + worte.join(u", "_s);
    if (name == accessibleName())
        return;
    setAccessibleName(name);
    update();
}

void Anteile::SetMitLegende(bool mitLegende)
{
    mitLegende_ = mitLegende;
    update();
}

void Anteile::paintEvent(QPaintEvent *)
{
    QPainter maler(this);
    maler.setRenderHint(QPainter::Antialiasing);
    const Hausfarben &farben = HausfarbenZu(palette());
    const int hoehe = mitLegende_ ? BalkenHoehe : std::min(height(), BalkenHoehe);
    const QRectF balken(0, 0, width(), hoehe);
    const int summe = std::accumulate(anzahl_.begin(), anzahl_.end(), 0);
    if (summe == 0) {
        maler.setPen(QPen(farben.umriss, 1));
        maler.drawRoundedRect(balken.adjusted(0.5, 0.5, -0.5, -0.5), hoehe / 2.0, hoehe / 2.0);
    }
    QPainterPath form;
    form.addRoundedRect(balken, hoehe / 2.0, hoehe / 2.0);
    maler.setClipPath(form);
    // Neighbours are parted by the ground; a single card is seen, too.
    constexpr double Luecke = 2, Kleinste = 3;
    const auto faecher = std::count_if(anzahl_.begin(), anzahl_.end(), [](int anzahl) { return anzahl > 0; });
    const double frei = width() - static_cast<double>(faecher) * (Luecke + Kleinste) + Luecke;
    double links = 0;
    for (std::size_t i = 0; i < FachAnzahl; ++i) {
        if (anzahl_[i] == 0)
            continue;
        const double breite = Kleinste + frei * anzahl_[i] / summe;
        maler.fillRect(QRectF(links, 0, breite, hoehe), farben.faecher[i]);
        links += breite + Luecke;
    }
    maler.setClipping(false);
    if (mitLegende_)
        LegendeMalen(maler, hoehe + fontMetrics().height() / 2);
}

void Anteile::LegendeMalen(QPainter &maler, int oben)
{
    const QFontMetrics metrik = fontMetrics();
    const Hausfarben &farben = HausfarbenZu(palette());
    const int punkt = metrik.height() * 6 / 10;
    const int abstand = metrik.height();
    int breite = -abstand;
    for (std::size_t i = 0; i < FachAnzahl; ++i)
        breite += punkt * 2 + metrik.horizontalAdvance(Fachname(static_cast<int>(i))) + abstand;
    if (breite > width())
        return;
    int links = 0;
    for (std::size_t i = 0; i < FachAnzahl; ++i) {
        const QString text = Fachname(static_cast<int>(i));
        maler.setPen(Qt::NoPen);
        maler.setBrush(farben.faecher[i]);
        maler.drawRoundedRect(QRectF(links, oben + (metrik.height() - punkt) / 2.0, punkt, punkt), 2, 2);
        links += punkt + punkt * 6 / 10;
        maler.setPen(farben.leise);
        maler.drawText(QRect(links, oben, width(), metrik.height()), Qt::AlignLeft | Qt::AlignVCenter, text);
        links += metrik.horizontalAdvance(text) + punkt * 4 / 10 + abstand;
    }
}

Kastenkopf::Kastenkopf(QWidget &kasten)
    : QObject(&kasten),
      weiter_(new Weiterknopf(&kasten)),
      taste_(new Tastenkappe(QString(), &kasten)),
      karten_(new QLabel(&kasten)),
      antworten_(new QLabel(&kasten)),
      anteile_(new Anteile(&kasten))
{
    weiter_->setObjectName(u"Weiter"_s);
    weiter_->setProperty("leitend", true);
    weiter_->setAutoDefault(false);
    connect(weiter_, &QPushButton::clicked, this, &Kastenkopf::WeiterGewaehlt);
    taste_->setObjectName(u"LWeiter"_s);
    karten_->setObjectName(u"LKarten"_s);
    antworten_->setObjectName(u"LAntworten"_s);
    antworten_->setAlignment(Qt::AlignRight | Qt::AlignBottom);
    anteile_->setObjectName(u"Anteile"_s);
}

void Kastenkopf::Anordnen(const KastenMasse &masse)
{
    masse_ = masse;
    KnopfAnordnen(masse);
    UeberblickAnordnen(masse);
}

void Kastenkopf::KnopfAnordnen(const KastenMasse &masse)
{
    const int grad = QFontInfo(weiter_->parentWidget()->font()).pixelSize();
    weiter_->setFont(masse.knopfSchrift);
    const int zeile = weiter_->fontMetrics().height();
    const bool mitBild = masse.stufe < Stufe::OhneAntworten;
    weiter_->setIcon(mitBild ? Kartensymbol({zeile * 3 / 2, zeile}, *weiter_) : QIcon());
    weiter_->setIconSize({zeile * 3 / 2, zeile});
    const int breite = weiter_->fontMetrics().horizontalAdvance(weiter_->text()) + (mitBild ? 4 : 2) * zeile;
    const int oben = masse.stufe < Stufe::OhneAntworten ? grad * 5 / 4 : grad / 2;
    weiter_->setGeometry(masse.einladung.left(), oben,
                         std::clamp(breite, std::min(128, masse.einladung.width()), masse.einladung.width()),
                         masse.knopfHoehe);
    taste_->setGeometry(masse.einladung.left(), weiter_->geometry().bottom() + grad * 2 / 3,
                        masse.einladung.width(), taste_->sizeHint().height());
    taste_->setVisible(masse.stufe == Stufe::Alles);
}

void Kastenkopf::UeberblickAnordnen(const KastenMasse &masse)
{
    const bool gross = masse.stufe < Stufe::OhneAntworten;
    const QRect platz = masse.ueberblick;
    karten_->setFont(masse.knopfSchrift);
    antworten_->setFont(masse.kleineSchrift);
    anteile_->setFont(masse.kleineSchrift);
    const QSize karten = karten_->sizeHint(), antworten = antworten_->sizeHint();
    const int oben = weiter_->y() - (gross ? 2 : 3);
    karten_->setGeometry(platz.left(), oben, std::min(karten.width(), platz.width()), karten.height());
    antworten_->setGeometry(platz.right() + 1 - antworten.width(),
                            oben + karten.height() - antworten.height(), antworten.width(),
                            antworten.height());
    const bool passt = karten.width() + antworten.width() + antworten.height() <= platz.width();
    karten_->setVisible(offen_);
    antworten_->setVisible(offen_ && gross && passt);
    anteile_->SetMitLegende(masse.stufe == Stufe::Alles);
    const int balken = oben + karten.height() + (gross ? 6 : 4);
    const int hoehe = masse.stufe == Stufe::Alles ? platz.bottom() - balken
                      : gross                     ? Anteile::BalkenHoehe
                                                  : Anteile::BalkenHoehe * 2 / 3;
    anteile_->setGeometry(platz.left(), balken, platz.width(), hoehe);
    anteile_->setVisible(offen_);
}

void Kastenkopf::Zeigen(const FachTabelle &tabelle, int vollstesFach, Zustand zustand)
{
    const QString &erklaerung = Fachreihe::Erklaerung(vollstesFach);
    QString text = u"Weiter lernen"_s, taste;
    if (zustand == Zustand::Geschlossen) {
        text = u"Kartei öffnen"_s;
        taste = u"[Eingabe] eine vorhandene Kartei wählen"_s;
    } else if (zustand == Zustand::Offen) {
        text = u"Weiter lernen: %1"_s.arg(Fachname(vollstesFach));
        taste = u"[Eingabe] "_s + erklaerung.trimmed();
    } else if (zustand == Zustand::Ansehen) {
        text = u"Karten ansehen"_s;
        taste = u"[Eingabe] die Übersicht aller Karten"_s;
    }
    const int erledigt = std::max<int>(tabelle[FachErledigt].Anzahl, 0);
    const int alle = std::accumulate(tabelle.begin(), tabelle.end(), 0, [](int summe, const auto &fach) {
        return summe + std::max<int>(fach.Anzahl, 0);
    });
    const QString karten =
        u"%1 %2, %3 erledigt"_s.arg(Ganze(alle), alle == 1 ? u"Karte"_s : u"Karten"_s, Ganze(erledigt));
    const bool offen = zustand == Zustand::Offen || zustand == Zustand::Ansehen;
    anteile_->SetTabelle(tabelle);
    if (text == weiter_->text() && karten == karten_->text() && offen == offen_)
        return;
    offen_ = offen;
    weiter_->setText(text);
    weiter_->setToolTip(QString(taste).remove(u'[').replace(u"]"_s, u":"_s));
    weiter_->setAccessibleDescription(weiter_->toolTip());
    taste_->SetTasten(taste);
    karten_->setText(karten);
    Anordnen(masse_);
}

void Kastenkopf::SetAntworten(const QString &text)
{
    if (text == antworten_->text())
        return;
    antworten_->setText(text);
    UeberblickAnordnen(masse_);
}

} // namespace paukfix
