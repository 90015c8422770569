// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "ProgrammBuehne.h"
#include "Tastenliste.h"
#include "TestProgram.h"

#include <QAbstractButton>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QTextBlock>
#include <QTextBrowser>

using namespace paukfix;

// The list of all keys: it comes in every window, and is complete.
class TastenTest : public ProgrammBuehne
{
    Q_OBJECT

private:
    static QString Gruppe(const QString &fenster)
    {
        QString text;
        for (const Tastengruppe &gruppe : AlleTasten())
            if (gruppe.fenster == fenster)
                for (const auto &[tasten, was] : gruppe.zeilen)
                    text += QString(tasten).remove('[').remove(']') + '\n';
        return text.replace("Strg+1 bis Strg+6", "Strg+1 Strg+2 Strg+3 Strg+4 Strg+5 Strg+6");
    }

    // The window's shortcuts and underlined letters that its group does not name.
    static QStringList Ungenannte(const QWidget &fenster)
    {
        QSet<QString> tasten;
        const auto buchstabe = [&tasten](const QString &text) {
            if (const QKeySequence taste = QKeySequence::mnemonic(text); !taste.isEmpty())
                tasten << taste.toString();
        };
        // The main window owns others.
        const auto hier = [&fenster](const QObject *teil) {
            const auto *widget = qobject_cast<const QWidget *>(teil);
            return widget && (widget->window() == &fenster || qobject_cast<const QMenu *>(widget));
        };
        for (const QAction *eintrag : fenster.findChildren<QAction *>())
            if (hier(eintrag->parent()) && !eintrag->shortcut().isEmpty())
                tasten << eintrag->shortcut().toString();
        for (const QMenuBar *menue : fenster.findChildren<QMenuBar *>())
            for (const QAction *eintrag : menue->actions())
                buchstabe(eintrag->text());
        for (const QAbstractButton *knopf : fenster.findChildren<QAbstractButton *>())
            if (hier(knopf))
                buchstabe(knopf->text());
        for (const QLabel *label : fenster.findChildren<QLabel *>())
            if (hier(label) && label->buddy())
                buchstabe(label->text());
        const QString genannt = Gruppe(fenster.objectName());
        QStringList fehlen;
        for (QString taste : tasten)
            if (!genannt.contains(taste.replace("Ctrl", "Strg").replace("Shift", "Umschalt")))
                fehlen << taste;
        fehlen.sort();
        return fehlen;
    }

    static Drehbuch::Szene Vergleichen(const QString &name, QStringList &fehlen)
    {
        return Drehbuch::In(name, [&fehlen](QWidget &fenster) { fehlen << Ungenannte(fenster); });
    }

private slots:

    void init() { Aufstellen(); }

    void cleanup() { Abraeumen(); }

    // F1 opens the window's page, and that leads to the window's keys.
    void FromTheWindowsPageItsKeysAreOneStepAway()
    {
        OeffnenMitZweiDateien();
        QString gruppe;
        const auto lesen = [&gruppe](const QString &fenster) {
            return Drehbuch::In("Handbuch", [&gruppe, fenster](QWidget &handbuch) {
                const Hand hand(handbuch);
                auto *seite = hand.Finde<QTextBrowser>("Seite");
                while (hand.Fokus() == seite &&
                       !seite->textCursor().charFormat().anchorHref().endsWith('#' + fenster))
                    hand.Taste(Qt::Key_Tab);
                hand.Taste(Qt::Key_Return);
                QCOMPARE(seite->source().fileName(), "tasten.html");
                gruppe = seite->cursorForPosition(QPoint(seite->width() / 2, 4)).block().text();
                hand.Taste(Qt::Key_F1); // a second one does nothing
                hand.Taste(Qt::Key_Escape);
            });
        };
        {
            const Drehbuch buch({lesen("LBOX")});
            Hand::An("LBOX").Taste(Qt::Key_F1);
            QVERIFY(buch.Fertig());
            QCOMPARE(gruppe, "Im Kasten");
        }
        {
            const Drehbuch buch(
                {Taste("Uebersicht", Qt::Key_F1), lesen("Uebersicht"), Taste("Uebersicht", Qt::Key_Escape)});
            Waehlen("Manzeigen");
            QVERIFY(buch.Fertig());
            QCOMPARE(gruppe, "In der Übersicht");
        }
        {
            const Drehbuch buch({Taste("PFUse", Qt::Key_F1), lesen("PFUse"), Taste("PFUse", Qt::Key_Escape)});
            Hand::An("LBOX").Taste(Qt::Key_N);
            QVERIFY(buch.Fertig());
            QCOMPARE(gruppe, "In der Abfrage");
        }
    }

    void EveryShortcutAndUnderlinedLetterIsNamed()
    {
        OeffnenMitZweiDateien();
        QStringList fehlen = Ungenannte(*Hand::Offen("LBOX"));
        {
            const Drehbuch buch({Vergleichen("Uebersicht", fehlen), Taste("Uebersicht", Qt::Key_Escape)});
            Waehlen("Manzeigen");
            QVERIFY(buch.Fertig());
        }
        {
            const Drehbuch buch({Vergleichen("PFUse", fehlen), Taste("PFUse", Qt::Key_Escape)});
            Hand::An("LBOX").Taste(Qt::Key_N);
            QVERIFY(buch.Fertig());
        }
        {
            const Drehbuch buch({Vergleichen("Handbuch", fehlen), Taste("Handbuch", Qt::Key_Escape)});
            Waehlen("MHandbuch");
            QVERIFY(buch.Fertig());
        }
        Waehlen("MKarten");
        QTRY_VERIFY(Hand::Bereit("PFÄndern"));
        fehlen << Ungenannte(*Hand::Offen("PFÄndern"));
        QCOMPARE(fehlen.join(' '), QString());
    }
};

PAUKFIX_TEST(TastenTest)
#include "TastenTest.moc"
