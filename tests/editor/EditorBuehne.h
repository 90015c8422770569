// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "Drehbuch.h"
#include "EditorTestSupport.h"
#include "PFAendern.h"
#include "RichTextBox.h"

#include <QAction>
#include <QLineEdit>
#include <QMenu>
#include <QTest>
#include <QTextCursor>

#include <functional>

namespace paukfix {

using namespace Qt::StringLiterals;

// The real editor on a real card file, driven by key and mouse.
class EditorBuehne : public Hand
{
public:
    // The editor's messages go to `fensterMeldungen` where real windows are wanted. The form looks for
    // pictures in `bilder`; beside the card file where this is empty.
    explicit EditorBuehne(const QList<CardRecord> &cards, Meldungen *fensterMeldungen = nullptr,
                          const QString &bilder = {})
        : kartei(cards)
    {
        konfig.schrift = {u"Liberation Sans"_s, 12};
        TestDienste &d = kartei.dienste;
        fenster = std::make_unique<PFÄndern>(kartei.store,
                                             Dienste{fensterMeldungen ? *fensterMeldungen : d.meldungen,
                                                     d.dialoge, d.clock, d.zufall, d.ton, d.konfig},
                                             suche, bilder.isEmpty() ? kartei.directory.path() : bilder);
        fenster->drucker = [this] { return drucker ? drucker() : nullptr; };
        fenster->geschlossen = [this] { ++geschlossen; };
        Nimm(*fenster);
    }

    void Zeigen()
    {
        fenster->resize(1000, 760);
        fenster->Form_Load();
        QVERIFY(QTest::qWaitForWindowActive(fenster.get()));
    }

    RichTextBox *Box(const QString &name) const { return Finde<RichTextBox>(name); }

    bool Neu() { return Finde("LabelNeu")->isVisible(); }

    // Chooses a menu entry with the mouse.
    void Menue(const QString &menue, const QString &name)
    {
        auto *liste = Finde<QMenu>(menue);
        auto *eintrag = Finde<QAction>(name);
        QVERIFY2(eintrag->isEnabled(), qPrintable(name));
        liste->popup(fenster->mapToGlobal(QPoint(20, 40)));
        QTest::mouseClick(liste, Qt::LeftButton, {}, liste->actionGeometry(eintrag).center());
    }

    void Auswaehlen(const QString &name, int von, int bis)
    {
        RichTextBox *box = Box(name);
        box->setFocus();
        QTextCursor cursor(box->document());
        cursor.setPosition(von);
        cursor.setPosition(bis, QTextCursor::KeepAnchor);
        box->setTextCursor(cursor);
    }

    QStringList Meldungstexte()
    {
        QStringList texte = kartei.messages.Texte();
        kartei.messages.gezeigt.clear();
        return texte;
    }

    TestKartei kartei;
    QTemporaryDir &programm = kartei.dienste.programm;
    AppConfig &konfig = kartei.dienste.konfig;
    TestDialoge &dialoge = kartei.dienste.dialoge;
    TestTon &ton = kartei.dienste.ton;
    SearchHit suche;
    std::function<std::unique_ptr<QPrinter>()> drucker;
    int geschlossen = 0;
    std::unique_ptr<PFÄndern> fenster;
};

inline QList<CardRecord> DreiKarten()
{
    return {MakeCard(1, 0, 1), MakeCard(2, 0, 2), MakeCard(3, 2, 1)};
}

inline CardRecord Tickkarte(int nummer)
{
    CardRecord card = MakeCard(nummer, 0, nummer);
    card.Antworttyp = 2;
    card.Antwort_2 = card.Antwort_2_Klartext = u"zwei"_s;
    card.Antwort_3 = card.Antwort_3_Klartext = u"drei"_s;
    card.Antwort_5 = card.Antwort_5_Klartext = u"fünf"_s;
    card.Antwort_ch_2 = card.Antwort_ch_5 = true;
    return card;
}

} // namespace paukfix
