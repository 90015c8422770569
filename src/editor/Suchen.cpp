// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Suchen.h"

#include "Fensterbau.h"
#include "Kartensuche.h"
#include "Step.h"
#include "Texttaste.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

namespace paukfix {

using namespace Qt::StringLiterals;

Suchen::Suchen(CardStore &kartei, Meldungen &meldungen, SearchHit &treffer, QWidget *parent)
    : QDialog(parent), kartei_(kartei), meldungen_(meldungen), treffer_(treffer)
{
    setObjectName(u"Suchen"_s);
    setWindowTitle(u"Suchen"_s);
    suchtext_ = Benannt(new QLineEdit(this), u"suchtext"_s, u"Suchbegriff"_s);
    suchtext_->setMinimumWidth(fontMetrics().averageCharWidth() * 40);
    suchtext_->installEventFilter(this);
    auto *wiederholen = new QShortcut(Qt::CTRL | Qt::Key_Y, suchtext_);
    wiederholen->setContext(Qt::WidgetShortcut);
    connect(wiederholen, &QShortcut::activated, suchtext_, &QLineEdit::redo);
    auto *ok = Benannt(new QPushButton(u"&suchen"_s, this), u"COK"_s, u"suchen"_s);
    ok->setDefault(true);
    ok->setProperty("leitend", true);
    auto *abbruch = Benannt(new QPushButton(u"&Abbruch"_s, this), u"CAbbruch"_s, u"Abbruch"_s);
    connect(ok, &QPushButton::clicked, this, [this] { COK_Click(); });
    connect(abbruch, &QPushButton::clicked, this, [this] { CAbbruch_Click(); });

    auto *knoepfe = new QHBoxLayout;
    knoepfe->addStretch(1);
    knoepfe->addWidget(ok);
    knoepfe->addWidget(abbruch);
    auto *alles = new QVBoxLayout(this);
    alles->addWidget(Beschriftung(u"Such&begriff:"_s, suchtext_, this));
    alles->addWidget(suchtext_);
    alles->addSpacing(8);
    alles->addStretch(1);
    alles->addLayout(knoepfe);
    Form_Load();
}

void Suchen::Form_Load()
{
    suchtext_->setText(treffer_.letzterBegriff);
    suchtext_->selectAll();
}

bool Suchen::eventFilter(QObject *objekt, QEvent *event)
{
    if (objekt == suchtext_ && event->type() == QEvent::KeyPress)
        return suchtext_KeyPress(static_cast<const QKeyEvent &>(*event));
    return QDialog::eventFilter(objekt, event);
}

bool Suchen::suchtext_KeyPress(const QKeyEvent &taste)
{
    if (!IstEingabetaste(taste))
        return false;
    COK_Click();
    return true;
}

void Suchen::COK_Click()
{
    const QString begriff = suchtext_->text();
    if (begriff.isEmpty())
        return;
    auto ergebnis = Suchergebnis::NichtGefunden;
    const bool gesucht = Step(meldungen_, u"Fehler beim Suchen: "_s,
                              [&] { ergebnis = KarteSuchen(kartei_, treffer_, begriff); });
    if (ergebnis == Suchergebnis::OhneKarten) {
        meldungen_.Zeigen(u"Diese Datei ist leer"_s);
        return;
    }
    if (gesucht && ergebnis == Suchergebnis::NichtGefunden)
        meldungen_.Zeigen(begriff + u" leider nicht gefunden"_s);
    accept();
}

void Suchen::CAbbruch_Click()
{
    reject();
}

// However the dialog closes.
void Suchen::done(int ergebnis)
{
    Form_Unload();
    QDialog::done(ergebnis);
}

void Suchen::Form_Unload()
{
    treffer_.letzterBegriff = suchtext_->text(); // there again when it opens
}

} // namespace paukfix
