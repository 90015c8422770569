// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Slotkarte.h"

#include "Fensterbau.h"
#include "Hausfarben.h"
#include "Kartenblatt.h"
#include "KurzLabel.h"
#include "Schriftgrade.h"
#include "Slotvorschau.h"

#include <QDropEvent>
#include <QHBoxLayout>
#include <QMimeData>
#include <QMouseEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

QString Beschriftet(int nummer)
{
    static const std::array<QString, Momente> namen{u"&Frage"_s, u"&Antwort"_s, u"fal&scher Antwort"_s};
    return namen.at(static_cast<std::size_t>(nummer) - 1);
}

} // namespace

Slotkarte::Slotkarte(int nummer, Medienart art, QWidget *parent)
    : Flaeche(parent, QPalette::Base),
      art_(art),
      option_(Benannt(new QRadioButton(Beschriftet(nummer), this), u"Option%1"_s.arg(nummer),
                      Moment(static_cast<std::size_t>(nummer) - 1))),
      vorschau_(new Slotvorschau(art == Medienart::Bild ? Symbole::Bild : Symbole::Ton,
                                 art == Medienart::Bild ? u"Bild hierher ziehen\noder auswählen"_s
                                                        : u"Ton hierher ziehen\noder auswählen"_s,
                                 this)),
      belegung_(Benannt(new KurzLabel(this), u"Belegung%1"_s.arg(nummer), {})),
      abspielen_(Benannt(new QPushButton(vorschau_), u"Abspielen%1"_s.arg(nummer),
                         u"abspielen bei: "_s + Moment(static_cast<std::size_t>(nummer) - 1))),
      dauer_(new QLabel(vorschau_)),
      bildplatz_(new QVBoxLayout),
      namensplatz_(new QVBoxLayout)
{
    setAcceptDrops(true);
    vorschau_->setObjectName(u"Vorschau%1"_s.arg(nummer));
    QFont fett = option_->font();
    fett.setWeight(QFont::DemiBold);
    option_->setFont(fett);
    abspielen_->setAutoDefault(false);
    abspielen_->setIcon(Symbol(Symbole::Abspielen));
    abspielen_->setToolTip(u"abspielen"_s);
    connect(abspielen_, &QPushButton::clicked, this, [this] { anzuhoeren(); });
    dauer_->setObjectName(u"Dauer%1"_s.arg(nummer));
    dauer_->setAlignment(Qt::AlignCenter);
    auto *klang = new QVBoxLayout(vorschau_);
    klang->addStretch(1);
    klang->addWidget(abspielen_, 0, Qt::AlignHCenter);
    klang->addWidget(dauer_);
    klang->addStretch(1);
    DauerZeigen(std::nullopt);

    auto *beschriftung = new QLabel(u"Dateiname :"_s, this);
    beschriftung->setFont(Schriftgrad::In(font(), Schriftgrad::Klein));
    belegung_->setTextFormat(Qt::PlainText);
    belegung_->SetAuslassung(Qt::ElideMiddle); // the ending tells what it is
    belegung_->setFont(Schriftgrad::In(fett, Schriftgrad::Klein));
    belegung_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred); // no name widens the dialog
    auto *datei = new QHBoxLayout;
    datei->setSpacing(4);
    datei->addWidget(beschriftung);
    datei->addLayout(namensplatz_, 1);
    namensplatz_->addWidget(belegung_);
    bildplatz_->addWidget(vorschau_, 1);
    auto *alles = new QVBoxLayout(this);
    alles->setContentsMargins(12, 10, 12, 10);
    alles->setSpacing(8);
    alles->addWidget(option_, 0, Qt::AlignLeft);
    alles->addLayout(bildplatz_, 1);
    alles->addLayout(datei);
    FarbenSetzen();
    Waehlen(false, nullptr, nullptr);
}

void Slotkarte::NamenZeigen(const QString &name)
{
    const QString text = name.isEmpty() ? u"keine Datei"_s : Kurztext(name);
    belegung_->setText(text);
    belegung_->setToolTip(Kurztext(name).toHtmlEscaped());
    belegung_->setAccessibleName(option_->accessibleName() + u": "_s + text);
    option_->setAccessibleDescription(text);
}

void Slotkarte::DauerZeigen(const std::optional<QString> &dauer)
{
    abspielen_->setVisible(dauer && !dauer->isEmpty());
    dauer_->setVisible(abspielen_->isVisibleTo(this));
    dauer_->setText(dauer.value_or(QString()));
    vorschau_->SetHinweis(!dauer ? QString() : dauer->isEmpty() ? u"lässt sich nicht abspielen"_s : u" "_s);
}

void Slotkarte::Waehlen(bool gewaehlt, Slotvorschau *vorschau, KurzLabel *name)
{
    SetUmriss(gewaehlt ? Umriss::Fokus : Umriss::Feld);
    if (vorschau)
        bildplatz_->addWidget(vorschau, 1);
    if (name)
        namensplatz_->addWidget(name);
    vorschau_->setVisible(!vorschau);
    belegung_->setVisible(!name);
}

// All of the card but its own controls is where one takes hold of it.
void Slotkarte::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        geklickt();
}

std::optional<Medium> Slotkarte::Passendes(const QMimeData &mime) const
{
    const QList<Medium> medien = MedienVon(mime);
    for (const Medium &medium : medien)
        if (medium.art == art_)
            return medium;
    return std::nullopt;
}

void Slotkarte::dragEnterEvent(QDragEnterEvent *event)
{
    if (!Passendes(*event->mimeData()))
        return;
    vorschau_->SetErwartet(true);
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

void Slotkarte::dragLeaveEvent(QDragLeaveEvent *)
{
    vorschau_->SetErwartet(false);
}

// The source of a drop waits until it is over, and must not wait for a question.
void Slotkarte::dropEvent(QDropEvent *event)
{
    vorschau_->SetErwartet(false);
    const auto medium = Passendes(*event->mimeData());
    if (!medium)
        return;
    event->setDropAction(Qt::CopyAction);
    event->accept();
    QMetaObject::invokeMethod(
        this, [this, medium] { gebracht(*medium); }, Qt::QueuedConnection);
}

void Slotkarte::changeEvent(QEvent *event)
{
    Flaeche::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && namensplatz_)
        FarbenSetzen();
}

void Slotkarte::FarbenSetzen()
{
    const Hausfarben &farben = HausfarbenZu(palette());
    Faerben(this, {{QPalette::Base, farben.karte}, {QPalette::WindowText, farben.tinte}});
}

} // namespace paukfix
