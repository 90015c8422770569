// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Formatmenue.h"

#include "CharFormat.h"
#include "KartenTextBox.h"
#include "Menuebau.h"

#include <QApplication>
#include <QPainter>

#include <array>
#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

struct Textfarbe
{
    const char *name = "";
    QColor farbe; // invalid: the desktop's text colour
};

const std::array Textfarben{
    Textfarbe{"&automatisch", {}},
    Textfarbe{"&Rot", {0xC0, 0x1C, 0x1C}},
    Textfarbe{"&Orange", {0xC2, 0x5E, 0x00}},
    Textfarbe{"&Braun", {0x7A, 0x4A, 0x1E}},
    Textfarbe{"&Grün", {0x1B, 0x7A, 0x3D}},
    Textfarbe{"&Türkis", {0x00, 0x75, 0x80}},
    Textfarbe{"B&lau", {0x1D, 0x4F, 0xB8}},
    Textfarbe{"&Violett", {0x7A, 0x2E, 0xA8}},
};

QIcon Farbfeld(const QColor &farbe)
{
    QPixmap bild(32, 32);
    bild.fill(Qt::transparent);
    QPainter maler(&bild);
    maler.setRenderHint(QPainter::Antialiasing);
    maler.setPen(Qt::NoPen);
    maler.setBrush(farbe);
    maler.drawRoundedRect(bild.rect().adjusted(2, 2, -2, -2), 6, 6);
    return bild;
}

} // namespace

Formatmenue::Formatmenue(const Dienste &dienste, QWidget *formular, QMenuBar *leiste)
    : QObject(leiste),
      dienste_(dienste),
      formular_(formular),
      MFont_(MenueBauen(leiste, u"MFont"_s, u"F&ormat"_s))
{
    const auto eintrag = [this](const char *name, const QString &text, const QKeySequence &taste,
                                auto aktion) {
        QAction *neu = EintragBauen(MFont_, QString::fromUtf8(name), text, taste, [this, aktion] {
            emit gewaehlt();
            aktion();
            FormatZeigen(); // a click has turned the entry's tick, whatever came of it
        });
        aktionen_ << neu;
        return neu;
    };
    eintrag("MSchriftart", u"&Schriftart"_s, {}, [this] { MSchriftart_Click(); });
    MFont_->addSeparator()->setObjectName(u"MStrich1"_s);
    QAction *fett =
        eintrag("MFontFett", u"&Fett"_s, Qt::CTRL | Qt::Key_F, [this] { Formatieren(FettFormat); });
    QAction *kursiv =
        eintrag("MFontKursiv", u"&Kursiv"_s, Qt::CTRL | Qt::Key_K, [this] { Formatieren(KursivFormat); });
    QAction *unterstrichen = eintrag("MFontUnterstrichen", u"&Unterstrichen"_s, Qt::CTRL | Qt::Key_U,
                                     [this] { Formatieren(UnterstrichenFormat); });
    QAction *hoch = eintrag("MFonthoch", u"&Hochgestellt"_s, Qt::CTRL | Qt::Key_H, [this] {
        Formatieren([](const Auswahlformat &) { return HochgestelltFormat(); });
    });
    QAction *normal = eintrag("MFontNormal", u"&Normalgestellt"_s, Qt::CTRL | Qt::Key_N, [this] {
        Formatieren([](const Auswahlformat &) { return NormalgestelltFormat(); });
    });
    QAction *tief = eintrag("MFontTief", u"&Tiefgestellt"_s, Qt::CTRL | Qt::Key_T, [this] {
        Formatieren([](const Auswahlformat &) { return TiefgestelltFormat(); });
    });
    for (QAction *aktion : {fett, kursiv, unterstrichen, hoch, normal, tief})
        aktion->setCheckable(true);
    auto *farbe = new QAction(u"Textfarbe"_s, this);
    farbe->setObjectName(u"Textfarbe"_s);
    farbe->setMenu(Farbmenue());
    auto *standard = new QAction(u"Zurück zur Standardschrift"_s, this);
    standard->setObjectName(u"Standardschrift"_s);
    standard->setShortcut(Qt::CTRL | Qt::Key_M);
    connect(standard, &QAction::triggered, this, [this] {
        emit gewaehlt();
        Standardschrift_Click();
    });
    leiste->window()->addAction(standard);
    aktionen_ << farbe << standard;
    SetBox(nullptr);
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget * /*alt*/, QWidget *neu) { FokusWechselt(neu); });
}

void Formatmenue::Sperren()
{
    gesperrt_ = true;
    SetBox(box_);
}

void Formatmenue::FokusWechselt(QWidget *neu)
{
    if (neu && formular_->isAncestorOf(neu))
        SetBox(dynamic_cast<KartenTextBox *>(neu));
}

void Formatmenue::SetBox(KartenTextBox *box)
{
    if (box_) {
        box_->disconnect(this);
        box_->Umranden(false);
    }
    box_ = box;
    if (box) {
        box->Umranden(true);
        connect(box, &QTextEdit::currentCharFormatChanged, this, &Formatmenue::FormatZeigen);
        connect(box, &QTextEdit::selectionChanged, this, &Formatmenue::FormatZeigen);
    }
    MFont_->setEnabled(box && !gesperrt_);
    for (QAction *aktion : std::as_const(aktionen_))
        aktion->setEnabled(box && !gesperrt_);
    FormatZeigen();
}

// What is mixed in a selection is not checked, and none of raised, normal and lowered without a box.
void Formatmenue::FormatZeigen()
{
    const Auswahlformat format =
        box_ ? AuswahlLesen(box_->textCursor(), box_->currentCharFormat()) : Auswahlformat();
    const auto zeigen = [this](const char *name, bool an) {
        for (QAction *aktion : std::as_const(aktionen_))
            if (aktion->objectName() == QLatin1String(name))
                aktion->setChecked(an);
    };
    zeigen("MFontFett", format.SelBold.value_or(false));
    zeigen("MFontKursiv", format.SelItalic.value_or(false));
    zeigen("MFontUnterstrichen", format.SelUnderline.value_or(false));
    zeigen("MFonthoch", format.SelCharOffset.value_or(0) > 0);
    zeigen("MFontNormal", format.SelCharOffset == 0);
    zeigen("MFontTief", format.SelCharOffset.value_or(0) < 0);
}

QMenu *Formatmenue::Farbmenue()
{
    auto *menue = new QMenu(MFont_->parentWidget());
    menue->setObjectName(u"Farbmenue"_s);
    for (const Textfarbe &eine : Textfarben) {
        QAction *wahl = menue->addAction(QString::fromUtf8(eine.name));
        if (eine.farbe.isValid())
            wahl->setIcon(Farbfeld(eine.farbe));
        connect(wahl, &QAction::triggered, this, [this, farbe = eine.farbe] {
            emit gewaehlt();
            if (!box_ || !box_->Freigeben())
                return;
            QTextCharFormat format;
            SetTextColour(format, farbe);
            box_->mergeCurrentCharFormat(format);
        });
    }
    return menue;
}

void Formatmenue::Formatieren(QTextCharFormat (*befehl)(const Auswahlformat &))
{
    if (!box_ || !box_->Freigeben())
        return;
    // At the caret alone this changes no text: it waits for what is typed.
    box_->mergeCurrentCharFormat(befehl(AuswahlLesen(box_->textCursor(), box_->currentCharFormat())));
}

void Formatmenue::MSchriftart_Click()
{
    if (!box_)
        return;
    // The box to format is the one of now, whatever the dialog does to the focus.
    KartenTextBox *box = box_;
    if (!box->textCursor().hasSelection()) {
        dienste_.meldungen.Zeigen(u"Bitte erst Text Auswählen"_s);
        return;
    }
    if (!box->Freigeben())
        return;
    const auto wahl = dienste_.dialoge.SchriftWaehlen(
        DialogVorgabe(AuswahlLesen(box->textCursor(), box->currentCharFormat()), dienste_.konfig.schrift));
    if (wahl)
        box->mergeCurrentCharFormat(DialogFormat(*wahl));
}

// Nothing of the format stays, also what no other command can take back.
void Formatmenue::Standardschrift_Click()
{
    if (box_ && box_->Freigeben())
        box_->setCurrentCharFormat(StandardFormat(dienste_.konfig.schrift));
}

} // namespace paukfix
