// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Handbuchfenster.h"

#include "Fensterbau.h"
#include "Handbuchseite.h"
#include "Handbuchsuche.h"
#include "Symbole.h"

#include <QAction>
#include <QBoxLayout>
#include <QDir>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QSignalBlocker>
#include <QToolButton>

#include <algorithm>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// A button with an icon, whose key leads to the same.
QToolButton *Blaetterknopf(Symbole symbol, const QString &name, const QString &was, Qt::Key taste,
                           QWidget *eltern)
{
    auto *knopf = Benannt(new QToolButton(eltern), name, was);
    knopf->setIcon(Symbol(symbol));
    knopf->setIconSize({20, 20});
    knopf->setFocusPolicy(Qt::TabFocus);
    knopf->setShortcut(QKeySequence(Qt::ALT | taste));
    knopf->setToolTip(was);
    knopf->setEnabled(false);
    return knopf;
}

} // namespace

Handbuchfenster::Handbuchfenster(const QString &ordner, const QString &seite, QWidget *parent)
    : QDialog(parent), ordner_(ordner), kapitel_(HandbuchinhaltLesen(ordner))
{
    setObjectName(u"Handbuch"_s);
    setWindowTitle(u"Handbuch"_s);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    SeiteBauen();
    InhaltBauen();
    SucheBauen();
    Anordnen();
    resize(sizeHint());
    Oeffnen(seite);
    seite_->setFocus();
}

QSize Handbuchfenster::sizeHint() const
{
    const int zeile = fontMetrics().height();
    return QSize(zeile * 56, zeile * 38).boundedTo(screen()->availableSize() * 0.9);
}

void Handbuchfenster::SeiteBauen()
{
    seite_ = Benannt(new Handbuchseite(this), u"Seite"_s, u"Seite des Handbuchs"_s);
    connect(seite_, &QTextBrowser::sourceChanged, this, &Handbuchfenster::InhaltZeigen);
}

void Handbuchfenster::InhaltBauen()
{
    inhalt_ = Benannt(new QListWidget(this), u"Inhalt"_s, u"Inhalt"_s);
    inhalt_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    int breite = 0;
    for (const Handbuchkapitel &kapitel : kapitel_) {
        inhalt_->addItem(kapitel.titel);
        breite = std::max(breite, inhalt_->sizeHintForColumn(0));
    }
    inhalt_->setFixedWidth(breite + 2 * inhalt_->frameWidth() + fontMetrics().height());
    connect(inhalt_, &QListWidget::currentRowChanged, this, [this](int zeile) {
        if (zeile >= 0)
            Oeffnen(kapitel_.at(zeile).datei);
    });
}

void Handbuchfenster::SucheBauen()
{
    suche_ = new Handbuchsuche(*seite_, ordner_, kapitel_, this);
    wort_ = Benannt(new QLineEdit(this), u"Wort"_s, u"Suchen"_s);
    wort_->setClearButtonEnabled(true);
    gefunden_ = Benannt(new QLabel(this), u"Gefunden"_s, u"Ergebnis der Suche"_s);
    gefunden_->setTextFormat(Qt::PlainText);
    gefunden_->setMinimumWidth(gefunden_->fontMetrics().horizontalAdvance(u"nicht auf dieser Seite"_s));
    connect(suche_, &Handbuchsuche::Gefunden, gefunden_, &QLabel::setText);
    connect(wort_, &QLineEdit::textChanged, suche_, &Handbuchsuche::SetWort);
    connect(wort_, &QLineEdit::returnPressed, suche_, &Handbuchsuche::Weiter);
    const auto taste = [this](const QKeySequence &tasten, auto tun) {
        auto *aktion = new QAction(this);
        aktion->setShortcut(tasten);
        connect(aktion, &QAction::triggered, this, tun);
        addAction(aktion);
    };
    taste(QKeySequence::Find, [this] {
        wort_->setFocus();
        wort_->selectAll();
    });
    taste(QKeySequence(Qt::Key_F3), [this] { suche_->Weiter(); });
    taste(QKeySequence(Qt::SHIFT | Qt::Key_F3), [this] { suche_->Zurueck(); });
}

void Handbuchfenster::Anordnen()
{
    QToolButton *zurueck =
        Blaetterknopf(Symbole::Zurueck, u"cmdDavor"_s, u"zurück zur Seite davor"_s, Qt::Key_Left, this);
    QToolButton *vor =
        Blaetterknopf(Symbole::Vor, u"cmdDanach"_s, u"wieder vor zur Seite danach"_s, Qt::Key_Right, this);
    connect(seite_, &QTextBrowser::backwardAvailable, zurueck, &QWidget::setEnabled);
    connect(seite_, &QTextBrowser::forwardAvailable, vor, &QWidget::setEnabled);
    connect(zurueck, &QToolButton::clicked, seite_, &QTextBrowser::backward);
    connect(vor, &QToolButton::clicked, seite_, &QTextBrowser::forward);
    auto *schliessen = new QPushButton(u"S&chließen"_s, this);
    schliessen->setObjectName(u"cmdSchließen"_s);
    schliessen->setProperty("leitend", true);
    schliessen->setDefault(true);
    connect(schliessen, &QPushButton::clicked, this, &QDialog::reject);

    auto *kopf = new QHBoxLayout;
    kopf->addWidget(Beschriftung(u"&Inhalt"_s, inhalt_, this));
    kopf->addStretch(1);
    kopf->addWidget(zurueck);
    kopf->addWidget(vor);
    kopf->addSpacing(fontMetrics().height());
    kopf->addWidget(Beschriftung(u"&Suchen:"_s, wort_, this));
    kopf->addWidget(wort_, 2);
    kopf->addWidget(gefunden_);
    auto *mitte = new QHBoxLayout;
    mitte->setSpacing(12);
    mitte->addWidget(inhalt_);
    mitte->addWidget(seite_, 1);
    auto *fuss = new QHBoxLayout;
    fuss->addStretch();
    fuss->addWidget(schliessen);
    auto *alles = new QVBoxLayout(this);
    alles->setContentsMargins(16, 16, 16, 16);
    alles->setSpacing(12);
    alles->addLayout(kopf);
    alles->addLayout(mitte, 1);
    alles->addLayout(fuss);
    setTabOrder(inhalt_, seite_);
    setTabOrder(seite_, zurueck);
    setTabOrder(zurueck, vor);
    setTabOrder(vor, wort_);
    setTabOrder(wort_, schliessen);
}

void Handbuchfenster::Oeffnen(const QString &seite)
{
    if (kapitel_.isEmpty()) {
        seite_->setPlainText(
            u"Das Handbuch fehlt. Gesucht wurde es in „%1“."_s.arg(QDir::toNativeSeparators(ordner_)));
        return;
    }
    QUrl ziel = QUrl::fromLocalFile(ordner_ + u'/' + seite.section(u'#', 0, 0));
    ziel.setFragment(seite.section(u'#', 1));
    seite_->setSource(ziel);
}

// Whatever leads to a page, the contents show which it is. The browser itself names the one before, until all
// have heard of the change.
void Handbuchfenster::InhaltZeigen(const QUrl &seite)
{
    const QSignalBlocker still(inhalt_);
    for (int i = 0; i < inhalt_->count(); ++i)
        if (kapitel_.at(i).datei == seite.fileName())
            inhalt_->setCurrentRow(i);
}

// Enter in the field searches; everywhere else it is the window's button.
void Handbuchfenster::keyPressEvent(QKeyEvent *event)
{
    const bool eingabe = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (!eingabe || !wort_->hasFocus())
        QDialog::keyPressEvent(event);
}

} // namespace paukfix
