// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Formatmenue.h"

#include "KartenTextBox.h"
#include "Menuebau.h"

#include <QApplication>

namespace paukfix {

using namespace Qt::StringLiterals;

Formatmenue::Formatmenue(const Dienste &dienste, QWidget *formular, QMenuBar *leiste)
    : QObject(leiste),
      dienste_(dienste),
      formular_(formular),
      MFont_(MenueBauen(leiste, u"MFont"_s, u"F&ormat"_s))
{
    const auto eintrag = [this](const char *name, const QString &text, const QKeySequence &taste,
                                auto aktion) {
        EintragBauen(MFont_, QString::fromUtf8(name), text, taste, [this, aktion] {
            emit gewaehlt();
            aktion();
        });
    };
    eintrag("MSchriftart", u"&Schriftart"_s, {}, [this] { MSchriftart_Click(); });
    MFont_->addSeparator()->setObjectName(u"MStrich1"_s);
    eintrag("MFontFett", u"&Fett"_s, Qt::CTRL | Qt::Key_F, [this] { Formatieren(FettFormat); });
    eintrag("MFontKursiv", u"&Kursiv"_s, Qt::CTRL | Qt::Key_K, [this] { Formatieren(KursivFormat); });
    eintrag("MFontUnterstrichen", u"&Unterstrichen"_s, Qt::CTRL | Qt::Key_U,
            [this] { Formatieren(UnterstrichenFormat); });
    eintrag("MFonthoch", u"&Hochgestellt"_s, Qt::CTRL | Qt::Key_H,
            [this] { Formatieren([](const Auswahlformat &) { return HochgestelltFormat(); }); });
    eintrag("MFontNormal", u"&Normalgestellt"_s, Qt::CTRL | Qt::Key_N,
            [this] { Formatieren([](const Auswahlformat &) { return NormalgestelltFormat(); }); });
    eintrag("MFontTief", u"&Tiefgestellt"_s, Qt::CTRL | Qt::Key_T,
            [this] { Formatieren([](const Auswahlformat &) { return TiefgestelltFormat(); }); });
    SetBox(nullptr);
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget * /*alt*/, QWidget *neu) { FokusWechselt(neu); });
}

void Formatmenue::FokusWechselt(QWidget *neu)
{
    if (neu && formular_->isAncestorOf(neu))
        SetBox(dynamic_cast<KartenTextBox *>(neu));
}

void Formatmenue::SetBox(KartenTextBox *box)
{
    box_ = box;
    MFont_->setEnabled(box);
    for (QAction *eintrag : MFont_->actions())
        eintrag->setEnabled(box);
    emit boxGewechselt(box);
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

} // namespace paukfix
