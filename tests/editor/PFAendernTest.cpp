// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "EditorBuehne.h"
#include "TestProgram.h"

#include <QLabel>
#include <QTest>

using namespace paukfix;
using namespace Qt::StringLiterals;

class PFAendernTest : public QObject
{
    Q_OBJECT

private slots:

    // --- Keys

    void AltPageUpInTheQuestionSaysSoAndNothingElse()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Finde("MFrage")->setFocus();
        b.Taste(Qt::Key_PageUp, Qt::AltModifier);
        QCOMPARE(b.Meldungstexte(), QStringList(u"Alt + PageUp"_s));
        b.Finde("Antwort(0)")->setFocus();
        b.Taste(Qt::Key_PageUp, Qt::AltModifier);
        QVERIFY(b.Meldungstexte().isEmpty());
        QVERIFY(b.fenster->close());
        QCOMPARE(b.kartei.Stored()[0], MakeCard(1, 0, 1));
    }

    void UndoAndRedoWorkInEveryBox_data()
    {
        QTest::addColumn<QString>("feld");
        for (const char *feld : {"MFrage", "Antwort(0)", "Antwort(1)", "Antwort(2)", "Antwort(3)",
                                 "Antwort(4)", "MaskThema", "MaskFrageNr"})
            QTest::newRow(feld) << QString::fromUtf8(feld);
    }

    void UndoAndRedoWorkInEveryBox()
    {
        QFETCH(QString, feld);
        EditorBuehne b({Tickkarte(1)});
        b.Zeigen();
        const QByteArray name = feld.toUtf8();
        const QString vorher = b.Text(name);
        b.Finde(name)->setFocus();
        b.Taste(Qt::Key_Home, Qt::ControlModifier);
        b.Taste(Qt::Key_Home);
        QTest::keyClicks(b.Finde(name), u"xyz"_s);
        b.Taste(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(b.Text(name), vorher);
        // Showing the card is nothing that could be undone.
        b.Taste(Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(b.Text(name), vorher);
        b.Taste(Qt::Key_Y, Qt::ControlModifier);
        QCOMPARE(b.Text(name), u"xyz"_s + vorher);
        b.Taste(Qt::Key_Z, Qt::ControlModifier);
        b.Taste(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(b.Text(name), u"xyz"_s + vorher);
    }

    void TabGoesThroughAllControlsOnce()
    {
        EditorBuehne b({Tickkarte(1)});
        b.Zeigen();
        b.Finde("MaskFrageNr")->setFocus();
        QStringList folge;
        for (int i = 0; i < 40; ++i) {
            folge << b.fenster->focusWidget()->objectName();
            b.Taste(Qt::Key_Tab);
            if (b.fenster->focusWidget()->objectName() == folge.front())
                break;
        }
        QCOMPARE(folge.join(u' '),
                 u"MaskFrageNr MaskThema MFrage Antwort(0) Check1(0) Antwort(1) Check1(1) "
                 u"Antwort(2) Check1(2) Antwort(3) Check1(3) Antwort(4) Check1(4) Antwort_K CZZurück "
                 u"CZurück CVor CVVor CEOF Cback Cadd SymbolMBilder"_s);
    }

    void EveryControlHasAnAccessibleName()
    {
        EditorBuehne b({Tickkarte(1)});
        b.Zeigen();
        int gesehen = 0;
        for (const QWidget *widget : b.fenster->findChildren<QWidget *>()) {
            if (widget->focusPolicy() == Qt::NoFocus || widget->objectName().startsWith(u"qt_"_s))
                continue;
            QVERIFY2(!widget->accessibleName().isEmpty(), qPrintable(widget->objectName()));
            ++gesehen;
        }
        QVERIFY(gesehen > 20);
    }

    void MnemonicsLeadToTheirFieldsAndAreUnique()
    {
        EditorBuehne b({Tickkarte(1)});
        b.Zeigen();
        const QList<QPair<Qt::Key, const char *>> wege{{Qt::Key_N, "MaskFrageNr"},
                                                       {Qt::Key_T, "MaskThema"},
                                                       {Qt::Key_F, "MFrage"},
                                                       {Qt::Key_A, "Antwort(0)"}};
        for (const auto &[taste, feld] : wege) {
            b.Finde("Cback")->setFocus();
            b.Taste(taste, Qt::AltModifier);
            QVERIFY2(b.Finde(feld)->hasFocus(), feld);
        }
        QString tasten;
        const auto sammle = [&](const QString &text) {
            const qsizetype und = text.indexOf(u'&');
            if (und >= 0)
                tasten += text[und + 1].toLower();
        };
        for (const QLabel *label : b.Finde("Formular")->findChildren<QLabel *>())
            sammle(label->text());
        for (const QAbstractButton *knopf : b.Finde("Formular")->findChildren<QAbstractButton *>())
            sammle(knopf->text());
        sammle(b.Finde<QAction>("MFont")->text());
        sammle(b.Finde<QAction>("MExtras")->text());
        QCOMPARE(QSet<QChar>(tasten.begin(), tasten.end()).size(), tasten.size());
    }

    void CaptionsAndTooltipsReadAsUsersKnowThem()
    {
        EditorBuehne b(DreiKarten());
        QCOMPARE(b.Finde<QAbstractButton>("CEOF")->text(), u">>|"_s);
        QCOMPARE(b.Finde("CVor")->toolTip(), u"nächste Karte STRG + SHIFT + >"_s);
        QCOMPARE(b.Finde("CZurück")->toolTip(), u"vorige Karte STRG+<"_s);
        QCOMPARE(b.Finde("Cadd")->toolTip(), u"Karte hinzufügen (STRG+I)"_s);
        QCOMPARE(b.Text("LabelNeu"), u"Neue Karte"_s);
        const auto texte = [&](const char *menue) {
            QStringList liste;
            for (const QAction *eintrag : b.Finde<QMenu>(menue)->actions())
                liste << eintrag->text().remove(u'&');
            return liste.join(u'|');
        };
        QCOMPARE(texte("MFont"), u"Schriftart||Fett|Kursiv|Unterstrichen|Hochgestellt|"
                                 u"Normalgestellt|Tiefgestellt"_s);
        QCOMPARE(texte("MExtras"), u"hinzufügen|suchen|kopieren|löschen|drucken|Bilder|Ton"_s);
    }

    // --- Closing

    void BackStoresAndCloses()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Tippe("MFrage", u"neu "_s);
        b.Klick("Cback");
        QVERIFY(!b.fenster->isVisible());
        QCOMPARE(b.geschlossen, 1);
        QCOMPARE(b.ton.stillen, 1);
        QCOMPARE(b.kartei.Stored()[0].Frage_Klartext, u"neu Frage 1"_s);
    }

    void CardThatMayNotBeStoredKeepsTheEditorOpenUnlessItIsDiscarded()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Ersetze("MFrage", {});
        b.Klick("Cback");
        QVERIFY(b.fenster->isVisible());
        QCOMPARE(b.geschlossen, 0);
        QCOMPARE(b.kartei.messages.vorgaben, QList{Meldungen::Antwort::Nein});
        QCOMPARE(b.Meldungstexte(),
                 (QStringList{u"Keine Frage eingegeben"_s,
                              u"Diese Karte ist nicht gespeichert. Änderungen verwerfen?"_s}));
        b.kartei.messages.antworten = {Meldungen::Antwort::Ja};
        QVERIFY(b.fenster->close());
        QCOMPARE(b.geschlossen, 1);
        QCOMPARE(b.kartei.store.FehlerStatus, qint16(0));
        QCOMPARE(b.kartei.Stored()[0], MakeCard(1, 0, 1));
    }

    void EndOfTheProgramGoesTheSameRoad()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Ersetze("MFrage", {});
        QApplication::closeAllWindows();
        QVERIFY(b.fenster->isVisible());
        b.Tippe("MFrage", u"doch"_s);
        QApplication::closeAllWindows();
        QVERIFY(!b.fenster->isVisible());
        QCOMPARE(b.kartei.Stored()[0].Frage_Klartext, u"doch"_s);
    }

    void CardThatCannotBeStoredOffersToBeDiscarded()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Tippe("MFrage", u"neu "_s);
        QFile::remove(b.kartei.Path());
        QVERIFY(!b.fenster->close());
        QCOMPARE(b.Text("MFrage"), u"neu Frage 1"_s);
        b.kartei.messages.wahlen = {2};
        QVERIFY(b.fenster->close());
        QCOMPARE(b.geschlossen, 1);
    }

    void FailedStoreGivesBackWhatWasTypedAndWorksLater()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Klick("CEOF");
        b.Tippe("MFrage", u"f"_s);
        b.Tippe("Antwort(0)", u"a"_s);
        b.Ersetze("MaskThema", QString(251, u'x'));
        b.Klick("Cadd");
        QCOMPARE(b.Meldungstexte().size(), 1);
        QVERIFY(b.Neu());
        QCOMPARE(b.Text("MFrage"), u"f"_s);
        QCOMPARE(b.Text("MaskThema").size(), 251);
        QCOMPARE(b.Text("MaskFrageNr"), u"5"_s);
        QCOMPARE(b.kartei.store.FachInfo[0].Anzahl, qint16(2));
        b.Finde("MaskThema")->setFocus();
        b.Taste(Qt::Key_End);
        b.Taste(Qt::Key_Backspace);
        b.Klick("Cadd");
        QVERIFY(b.Meldungstexte().isEmpty());
        QCOMPARE(b.kartei.store.FachInfo[0].Anzahl, qint16(3));
        QCOMPARE(b.kartei.Stored()[2].FrageNr, 5.0);
    }

    void EditorCanBeOpenedAgain()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Klick("CVor");
        b.Klick("Cback");
        b.Zeigen();
        QCOMPARE(b.Text("MaskFrageNr"), u"2"_s);
        b.Klick("Cback");
        QCOMPARE(b.geschlossen, 2);
    }
};

PAUKFIX_TEST(PFAendernTest)
#include "PFAendernTest.moc"
