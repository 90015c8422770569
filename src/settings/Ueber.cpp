// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Ueber.h"

#include "Fensterbau.h"
#include "Flaeche.h"
#include "RichText.h"
#include "RichTextBox.h"
#include "SafeFile.h"
#include "Schritt.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr qint64 MaxText = qint64{4} * 1024 * 1024; // bytes; the shipped text has a few thousand

}

über::über(const QString &ueberRtf, Meldungen &meldungen, QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("über"));
    setWindowTitle(QStringLiteral("über Paukfix"));

    const int zeile = fontMetrics().height();
    auto *karte = new Flaeche(this);
    karte->SetUmriss(Flaeche::Umriss::Fein);
    RichTextBox1_ =
        Benannt(new RichTextBox(karte), QStringLiteral("RichTextBox1"), QStringLiteral("über Paukfix"));
    RichTextBox1_->setReadOnly(true);
    RichTextBox1_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    RichTextBox1_->setFrameShape(QFrame::NoFrame);
    RichTextBox1_->viewport()->setAutoFillBackground(false);
    auto *innen = new QVBoxLayout(karte);
    innen->setContentsMargins(zeile, zeile / 2, zeile / 4, zeile / 2);
    innen->addWidget(RichTextBox1_);

    Command1_ = Benannt(new QPushButton(QStringLiteral("OK"), this), QStringLiteral("Command1"),
                        QStringLiteral("OK"));
    Command1_->setDefault(true);
    Command1_->setFocus();
    connect(Command1_, &QPushButton::clicked, this, [this] { accept(); });

    auto *knoepfe = new QHBoxLayout;
    knoepfe->addStretch(1);
    knoepfe->addWidget(Command1_);
    auto *alles = new QVBoxLayout(this);
    alles->setContentsMargins(zeile, zeile, zeile, zeile);
    alles->setSpacing(zeile / 2);
    alles->addWidget(karte, 1);
    alles->addLayout(knoepfe);
    resize(zeile * 40, zeile * 34);

    Schritt(meldungen, QString(), [&] {
        SetRichTextBytes(*RichTextBox1_->document(), ReadFile(ueberRtf, MaxText));
        RichTextBox1_->moveCursor(QTextCursor::Start);
    });
}
