// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Berichtfenster.h"

#include "Fensterbau.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

namespace paukfix {

using namespace Qt::StringLiterals;

Berichtfenster::Berichtfenster(const QString &titel, const QString &text, QWidget *parent) : QDialog(parent)
{
    setObjectName(u"Bericht"_s);
    setWindowTitle(titel);
    auto *lesen = Benannt(new QPlainTextEdit(text, this), u"Berichttext"_s, titel);
    lesen->setReadOnly(true);
    if (text.contains(u":  "_s)) // columns made by blanks
        lesen->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    // Without a caret the keyboard could neither read on nor select.
    lesen->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    lesen->setTabChangesFocus(true);
    auto *zurueck = new QPushButton(u"&Zurück"_s, this);
    zurueck->setObjectName(u"cmdZurueck"_s);
    zurueck->setProperty("leitend", true);
    zurueck->setDefault(true);
    connect(zurueck, &QPushButton::clicked, this, &QDialog::accept);
    auto *knoepfe = new QHBoxLayout;
    knoepfe->addStretch();
    knoepfe->addWidget(zurueck);
    auto *spalte = new QVBoxLayout(this);
    spalte->addWidget(lesen);
    spalte->addLayout(knoepfe);
    const int zeile = fontMetrics().height();
    resize(QSize(zeile * 40, zeile * 26).boundedTo(screen()->availableSize() * 0.9));
    lesen->setFocus();
}

} // namespace paukfix
