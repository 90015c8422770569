// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Themaausfiltern.h"

#include "NeueKartei.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>

Themaausfiltern::Themaausfiltern(WerkzeugUmgebung umgebung, QWidget *parent)
    : Werkzeugfenster(umgebung, QStringLiteral("Themaausfiltern"), QStringLiteral("Thema ausfiltern"),
                      QStringLiteral("Thema ausfiltern"), parent)
{
    Erklären({QStringLiteral("Durch diese Funktion wird eine neue Datei erstellt. "),
              QStringLiteral("Sie können auswählen, welche der vorhandenen Themen übernommen werden. ")});
    auto *listen = new QGridLayout;
    listen->setVerticalSpacing(fontMetrics().height() / 4);
    Felder()->addLayout(listen, Felder()->rowCount(), 0, 1, 3);
    lstÜbernehmen_ = ListeBauen(listen, QStringLiteral("&übernehmen:"), QStringLiteral("lstÜbernehmen"));
    lstNübernehmen_ =
        ListeBauen(listen, QStringLiteral("&nicht übernehmen:"), QStringLiteral("lstNübernehmen"));
    lblDateiname_ = DateinameBauen(QStringLiteral("Hier bitte den Namen der zu erstellenden Datei eingeben"),
                                   [this] { cmdDateiname_Click(); });
    HinweisBauen(QStringLiteral("Hinweis: Das Feld \"Thema\" können Sie beim ändern der Karten erfassen."));
    HinweisBauen(QStringLiteral("Leertaste oder Eingabe: das gewählte Thema wechselt die Liste."));
    KnöpfeBauen([this] { cmdOK_Click(); });
    Form_Load();
}

QListWidget *Themaausfiltern::ListeBauen(QGridLayout *listen, const QString &text, const QString &name)
{
    auto *liste = new QListWidget(this);
    liste->setObjectName(name);
    liste->setAccessibleName(QString(text).remove(u'&').remove(u':'));
    liste->setToolTip(QStringLiteral("zum Wechseln das Thema klicken"));
    liste->setUniformItemSizes(true);
    liste->installEventFilter(this);
    connect(liste, &QListWidget::itemClicked, this, [this, liste] { Wechseln(liste); });
    auto *label = new QLabel(text, this);
    label->setBuddy(liste);
    const int spalte = listen->columnCount() - (listen->count() == 0 ? 1 : 0);
    listen->addWidget(label, 0, spalte);
    listen->addWidget(liste, 1, spalte);
    return liste;
}

void Themaausfiltern::Form_Load()
{
    Schritt(Umgebung().meldungen, FehlerKontext(), [&] {
        CardStore &store = Umgebung().store;
        lstÜbernehmen_->addItems(Themen(store.Karten(), store.Felder().Picture_name[8]));
        lstÜbernehmen_->setCurrentRow(0);
    });
    lstÜbernehmen_->setFocus();
}

void Themaausfiltern::Wechseln(QListWidget *liste)
{
    QListWidgetItem *eintrag = liste->takeItem(liste->currentRow());
    if (!eintrag)
        return;
    QListWidget *andere = liste == lstÜbernehmen_ ? lstNübernehmen_ : lstÜbernehmen_;
    andere->addItem(eintrag);
    if (andere->currentRow() < 0)
        andere->setCurrentRow(0);
}

bool Themaausfiltern::eventFilter(QObject *objekt, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return Werkzeugfenster::eventFilter(objekt, event);
    const int taste = static_cast<const QKeyEvent *>(event)->key();
    if (taste != Qt::Key_Space && taste != Qt::Key_Return && taste != Qt::Key_Enter)
        return Werkzeugfenster::eventFilter(objekt, event);
    Wechseln(objekt == lstÜbernehmen_ ? lstÜbernehmen_ : lstNübernehmen_);
    return true;
}

void Themaausfiltern::cmdDateiname_Click()
{
    KarteinameÜbernehmen(lblDateiname_, ZielWählen(KarteiDialog(QStringLiteral("Themaausfiltern"),
                                                                Umgebung().store.KarteiPfad)));
}

void Themaausfiltern::cmdOK_Click()
{
    QStringList übernehmen;
    for (int i = 0; i < lstÜbernehmen_->count(); ++i)
        übernehmen << lstÜbernehmen_->item(i)->text();
    NeueKarteiErstellen(lblDateiname_, [&](const Werkbank &bank, const QString &ziel) {
        return ThemenAusfiltern(bank, ziel, übernehmen);
    });
}
