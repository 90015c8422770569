// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Ueber.h"

#include "Fensterbau.h"
#include "Flaeche.h"
#include "RichText.h"
#include "RichTextBox.h"
#include "SafeFile.h"
#include "Step.h"

#include <QAbstractTextDocumentLayout>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScreen>
#include <QTextBlock>
#include <QTextLayout>
#include <QVBoxLayout>
#include <QtMath>

#include <algorithm>

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
    Command1_->setProperty("leitend", true);
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

void über::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    GanzeZeilenZeigen();
}

void über::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    if (isVisible())
        GanzeZeilenZeigen();
}

// The text ends below a line that is seen whole, not in the middle of one.
void über::GanzeZeilenZeigen()
{
    const QAbstractTextDocumentLayout &anordnung = *RichTextBox1_->document()->documentLayout();
    const double platz = RichTextBox1_->contentsRect().height();
    double unten = 0;
    for (QTextBlock absatz = RichTextBox1_->document()->begin(); absatz.isValid(); absatz = absatz.next()) {
        const double oben = anordnung.blockBoundingRect(absatz).top();
        for (int i = 0; i < absatz.layout()->lineCount(); ++i) {
            const double ende = oben + absatz.layout()->lineAt(i).rect().bottom();
            if (ende <= platz)
                unten = std::max(unten, ende);
        }
    }
    const bool rollt = anordnung.documentSize().height() > platz && unten > 0;
    RichTextBox1_->SetRand({0, 0, 0, rollt ? qFloor(platz - unten) : 0});
}

} // namespace paukfix
