// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Ueber.h"

#include "Fensterbau.h"
#include "Flaeche.h"
#include "RichText.h"
#include "RichTextBox.h"
#include "SafeFile.h"
#include "Step.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 MaxText = qint64{4} * 1024 * 1024; // bytes; the shipped text has a few thousand

}

über::über(const QString &ueberRtf, Meldungen &meldungen, QWidget *parent) : QDialog(parent)
{
    setObjectName(u"über"_s);
    setWindowTitle(u"über Paukfix"_s);

    const int zeile = fontMetrics().height();
    auto *karte = new Flaeche(this);
    karte->SetUmriss(Flaeche::Umriss::Fein);
    RichTextBox1_ = Benannt(new RichTextBox(karte), u"RichTextBox1"_s, u"über Paukfix"_s);
    RichTextBox1_->setReadOnly(true);
    RichTextBox1_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    RichTextBox1_->setFrameShape(QFrame::NoFrame);
    RichTextBox1_->setProperty("fokusring", true);
    RichTextBox1_->viewport()->setAutoFillBackground(false);
    auto *innen = new QVBoxLayout(karte);
    innen->setContentsMargins(zeile, zeile / 2, zeile / 4, zeile / 2);
    innen->addWidget(RichTextBox1_);

    Command1_ = Benannt(new QPushButton(u"OK"_s, this), u"Command1"_s, u"OK"_s);
    Command1_->setDefault(true);
    Command1_->setFocus();
    connect(Command1_, &QPushButton::clicked, this, [this] { accept(); });

    auto *knoepfe = new QHBoxLayout;
    knoepfe->addStretch(1);
    knoepfe->addWidget(Command1_);
    auto *alles = new QVBoxLayout(this);
    alles->setContentsMargins(zeile, zeile, zeile, zeile);
    alles->setSpacing(zeile);
    alles->addWidget(karte, 1);
    alles->addLayout(knoepfe);
    resize(QSize(zeile * 40, zeile * 34).boundedTo(screen()->availableSize() * 0.9));

    Step(meldungen, QString(), [&] {
        SetRichTextBytes(*RichTextBox1_->document(), ReadFile(ueberRtf, MaxText));
        RichTextBox1_->moveCursor(QTextCursor::Start);
    });
}

} // namespace paukfix
