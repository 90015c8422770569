// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Formatierung.h"
#include "KartenTextBox.h"
#include "PFAendern.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

void PFÄndern::MenueBauen()
{
    const auto menue = [this](const QString &name, const QString &text) {
        QMenu *neu = menuBar()->addMenu(text);
        neu->setObjectName(name);
        neu->menuAction()->setObjectName(name);
        return neu;
    };
    const auto eintrag = [this](QMenu *in, const char *name, const QString &text, const QKeySequence &taste,
                                auto aktion) {
        auto *neu = new QAction(text, this);
        neu->setObjectName(QString::fromUtf8(name));
        neu->setShortcut(taste);
        connect(neu, &QAction::triggered, this, [this, aktion] {
            LaufBeenden();
            aktion();
        });
        in->addAction(neu);
    };

    MFont_ = menue(QStringLiteral("MFont"), QStringLiteral("F&ormat"));
    eintrag(MFont_, "MSchriftart", QStringLiteral("&Schriftart"), {}, [this] { MSchriftart_Click(); });
    MFont_->addSeparator()->setObjectName(QStringLiteral("MStrich1"));
    eintrag(MFont_, "MFontFett", QStringLiteral("&Fett"), Qt::CTRL | Qt::Key_F,
            [this] { Formatieren(FettFormat); });
    eintrag(MFont_, "MFontKursiv", QStringLiteral("&Kursiv"), Qt::CTRL | Qt::Key_K,
            [this] { Formatieren(KursivFormat); });
    eintrag(MFont_, "MFontUnterstrichen", QStringLiteral("&Unterstrichen"), Qt::CTRL | Qt::Key_U,
            [this] { Formatieren(UnterstrichenFormat); });
    eintrag(MFont_, "MFonthoch", QStringLiteral("&Hochgestellt"), Qt::CTRL | Qt::Key_H,
            [this] { Formatieren([](const Auswahlformat &) { return HochgestelltFormat(); }); });
    eintrag(MFont_, "MFontNormal", QStringLiteral("&Normalgestellt"), Qt::CTRL | Qt::Key_N,
            [this] { Formatieren([](const Auswahlformat &) { return NormalgestelltFormat(); }); });
    eintrag(MFont_, "MFontTief", QStringLiteral("&Tiefgestellt"), Qt::CTRL | Qt::Key_T,
            [this] { Formatieren([](const Auswahlformat &) { return TiefgestelltFormat(); }); });
    FormatFuer(nullptr);

    QMenu *extras = menue(QStringLiteral("MExtras"), QStringLiteral("E&xtras"));
    eintrag(extras, "MHinzufügen", QStringLiteral("&hinzufügen"), Qt::CTRL | Qt::Key_I,
            [this] { Cadd_Click(); });
    eintrag(extras, "MSuchen", QStringLiteral("&suchen"), Qt::Key_F3, [this] { MSuchen_Click(); });
    eintrag(extras, "MKopieren", QStringLiteral("&kopieren"), {}, [this] { editor_.Kopieren(); });
    eintrag(extras, "MLöschen", QStringLiteral("&löschen"), {}, [this] { editor_.Löschen(); });
    eintrag(extras, "MDrucken", QStringLiteral("&drucken"), {}, [this] { MDrucken_Click(); });
    eintrag(extras, "MBilder", QStringLiteral("&Bilder"), {}, [this] { MBilder_Click(); });
    eintrag(extras, "MTon", QStringLiteral("&Ton"), {}, [this] { MTon_Click(); });
}

void PFÄndern::Formatieren(QTextCharFormat (*befehl)(const Auswahlformat &))
{
    if (!aktiv_ || !aktiv_->Freigeben())
        return;
    // At the caret alone this changes no text: it waits for what is typed.
    aktiv_->mergeCurrentCharFormat(befehl(AuswahlLesen(aktiv_->textCursor(), aktiv_->currentCharFormat())));
}

void PFÄndern::MSchriftart_Click()
{
    if (!aktiv_)
        return;
    // The box to format is the one of now, whatever the dialog does to the focus.
    KartenTextBox *box = aktiv_;
    if (!box->textCursor().hasSelection()) {
        umgebung_.meldungen.Zeigen(QStringLiteral("Bitte erst Text Auswählen"));
        return;
    }
    if (!box->Freigeben())
        return;
    const auto wahl = umgebung_.dialoge.SchriftWaehlen(
        DialogVorgabe(AuswahlLesen(box->textCursor(), box->currentCharFormat()), umgebung_.konfig.schrift));
    if (wahl)
        box->mergeCurrentCharFormat(DialogFormat(*wahl));
}
