// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#pragma once

#include "EditorTestSupport.h"
#include "PFAendern.h"
#include "RichTextBox.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTest>
#include <QTextCursor>
#include <QTimer>

#include <deque>
#include <functional>

namespace paukfix {

using namespace Qt::StringLiterals;

// The real editor on a real card file, driven by key and mouse.
class EditorBuehne
{
public:
    // The editor's messages go to `fensterMeldungen` where real windows are wanted. The form looks for
    // pictures in `bilder`; beside the card file where this is empty.
    explicit EditorBuehne(const QList<CardRecord> &cards, Meldungen *fensterMeldungen = nullptr,
                          const QString &bilder = {})
        : kartei(cards)
    {
        konfig.ProgrammPfad = programm.path();
        konfig.schrift = {u"Liberation Sans"_s, 12};
        TestDienste &d = kartei.dienste;
        fenster = std::make_unique<PFÄndern>(kartei.store,
                                             Dienste{fensterMeldungen ? *fensterMeldungen : d.meldungen,
                                                     d.dialoge, d.clock, d.zufall, d.ton, d.konfig},
                                             suche, bilder.isEmpty() ? kartei.directory.path() : bilder);
        fenster->drucker = [this] { return drucker ? drucker() : nullptr; };
        fenster->geschlossen = [this] { ++geschlossen; };
    }

    void Zeigen()
    {
        fenster->resize(1000, 760);
        fenster->Form_Load();
        QVERIFY(QTest::qWaitForWindowActive(fenster.get()));
    }

    template <typename Widget>
    Widget *Finde(const char *name)
    {
        auto *widget = dynamic_cast<Widget *>(fenster->findChild<QWidget *>(QString::fromUtf8(name)));
        if (!widget)
            qFatal("no control %s", name);
        return widget;
    }

    QWidget *Steuerung(const char *name) { return Finde<QWidget>(name); }

    RichTextBox *Box(const char *name) { return Finde<RichTextBox>(name); }

    QString Text(const char *name)
    {
        QWidget *widget = Steuerung(name);
        if (auto *box = dynamic_cast<RichTextBox *>(widget))
            return box->PlainText();
        if (auto *zeile = dynamic_cast<QLineEdit *>(widget))
            return zeile->text();
        return dynamic_cast<QLabel *>(widget)->text();
    }

    bool Neu() { return Steuerung("LabelNeu")->isVisible(); }

    QAction *Eintrag(const char *name)
    {
        auto *eintrag = fenster->findChild<QAction *>(QString::fromUtf8(name));
        if (!eintrag)
            qFatal("no entry %s", name);
        return eintrag;
    }

    // Chooses a menu entry with the mouse.
    void Menue(const char *menue, const char *name)
    {
        auto *liste = fenster->findChild<QMenu *>(QString::fromUtf8(menue));
        QAction *eintrag = Eintrag(name);
        QVERIFY2(eintrag->isEnabled(), name);
        liste->popup(fenster->mapToGlobal(QPoint(20, 40)));
        QTest::mouseClick(liste, Qt::LeftButton, {}, liste->actionGeometry(eintrag).center());
    }

    void Klick(const char *name, Qt::MouseButton knopf = Qt::LeftButton)
    {
        QTest::mouseClick(Steuerung(name), knopf);
    }

    void Taste(int taste, Qt::KeyboardModifiers umschalter = Qt::NoModifier)
    {
        QTest::keyClick(fenster->focusWidget(), static_cast<Qt::Key>(taste), umschalter);
    }

    void Tippen(const char *name, const QString &text)
    {
        QWidget *widget = Steuerung(name);
        widget->setFocus();
        QTest::keyClicks(widget, text);
    }

    // Replaces the whole text of a box by typing.
    void Ersetzen(const char *name, const QString &text)
    {
        QWidget *widget = Steuerung(name);
        widget->setFocus();
        QTest::keyClick(widget, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(widget, Qt::Key_Delete);
        QTest::keyClicks(widget, text);
    }

    void Auswaehlen(const char *name, int von, int bis)
    {
        RichTextBox *box = Box(name);
        box->setFocus();
        QTextCursor cursor(box->document());
        cursor.setPosition(von);
        cursor.setPosition(bis, QTextCursor::KeepAnchor);
        box->setTextCursor(cursor);
    }

    // Does this in the modal dialog of that name as soon as it is open.
    void ImDialog(const QString &name, std::function<void(QWidget &dialog)> tun)
    {
        auto *clock = new QTimer(fenster.get());
        QObject::connect(clock, &QTimer::timeout, clock, [this, clock, name, tun = std::move(tun)] {
            QWidget *dialog = QApplication::activeModalWidget();
            if (!dialog || dialog->objectName() != name)
                return;
            clock->stop();
            clock->deleteLater();
            tun(*dialog);
            ++dialogeBenutzt;
        });
        clock->start(5);
    }

    QStringList Meldungstexte()
    {
        QStringList texte = kartei.messages.Texte();
        kartei.messages.gezeigt.clear();
        return texte;
    }

    TestKartei kartei;
    QTemporaryDir programm;
    AppConfig &konfig = kartei.dienste.konfig;
    TestDialoge &dialoge = kartei.dienste.dialoge;
    TestTon &ton = kartei.dienste.ton;
    SearchHit suche;
    std::function<std::unique_ptr<QPrinter>()> drucker;
    int geschlossen = 0;
    int dialogeBenutzt = 0;
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
