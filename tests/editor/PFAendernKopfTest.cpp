// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "EditorBuehne.h"
#include "TestProgram.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QMimeData>
#include <QTest>
#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

using namespace paukfix;
using namespace Qt::StringLiterals;

// The lines above and between a card's texts: number, topic, type and ticks.
class PFAendernKopfTest : public QObject
{
    Q_OBJECT

private slots:

    // --- The line of the topic

    void LinesThatAreBroughtIntoTheTopicBecomeOne_data()
    {
        QTest::addColumn<int>("weg");
        QTest::newRow("key") << 0;
        QTest::newRow("old key") << 1;
        QTest::newRow("menu") << 2;
        QTest::newRow("mouse") << 3;
    }

    void LinesThatAreBroughtIntoTheTopicBecomeOne()
    {
        QFETCH(int, weg);
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        auto *thema = b.Finde<QLineEdit>("MaskThema");
        thema->setFocus();
        const QString lines = u"\r\nErdkunde\r\nFlüsse\n\nund\u2029Seen\n"_s;
        QApplication::clipboard()->setText(lines);
        b.Taste(Qt::Key_End);
        QTest::keyClicks(thema, u"a"_s);
        if (weg == 0) {
            b.Taste(Qt::Key_V, Qt::ControlModifier);
        } else if (weg == 1) {
            b.Taste(Qt::Key_Insert, Qt::ShiftModifier);
        } else if (weg == 2) {
            QContextMenuEvent event(QContextMenuEvent::Mouse, {5, 5}, thema->mapToGlobal(QPoint(5, 5)));
            QApplication::sendEvent(thema, &event);
            auto *menue = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            QVERIFY(menue);
            for (QAction *eintrag : menue->actions())
                if (eintrag->text().startsWith(QLineEdit::tr("&Paste")))
                    QTest::mouseClick(menue, Qt::LeftButton, {}, menue->actionGeometry(eintrag).center());
        } else {
            QMimeData mime;
            mime.setText(lines);
            const QPoint ende(thema->width() - 3, thema->height() / 2);
            QDragEnterEvent herein(ende, Qt::CopyAction, &mime, Qt::LeftButton, {});
            QApplication::sendEvent(thema, &herein);
            QDropEvent fall(ende, Qt::CopyAction, &mime, Qt::LeftButton, {});
            QApplication::sendEvent(thema, &fall);
        }
        QCOMPARE(thema->text(), u"Thema 1aErdkunde Flüsse und Seen"_s);
        b.Klick("Cadd");
        QCOMPARE(b.kartei.store.Felder().Picture_name[8].Text(), thema->text());
        if (weg != 3) {
            thema->setFocus();
            b.Taste(Qt::Key_Z, Qt::ControlModifier);
            QCOMPARE(thema->text(), u"Thema 1a"_s);
        }
    }

    void TopicWithLinesThatNobodyTouchesKeepsThem()
    {
        CardRecord card = MakeCard(1, 0, 1);
        card.Picture_9_Name = u"eins\r\nzwei"_s;
        EditorBuehne b({card});
        b.Zeigen();
        b.Tippe("MFrage", u"x"_s);
        b.Klick("Cadd");
        QCOMPARE(b.kartei.Stored()[0].Picture_9_Name, card.Picture_9_Name);
    }

    void TopicAndNamesOfAnySizeAreShownAndStayAsTheyAre()
    {
        EditorBuehne b(DreiKarten());
        const QString riesig(10'000'000, u'M');
        b.kartei.store.CloseCardFile();
        {
            SQLite::Database datei(b.kartei.Path().toStdString(), SQLite::OPEN_READWRITE);
            SQLite::Statement setzen(
                datei, "UPDATE Lernkarten SET Picture_9_Name=?1, Picture_6_Name=?1 WHERE FrageNr=1");
            setzen.bind(1, riesig.toStdString());
            setzen.exec();
        }
        b.kartei.Open();
        b.Zeigen();
        QVERIFY(b.Text("MaskThema").size() < 2000 && b.Text("MaskThema").startsWith(u"MMM"_s));
        b.Tippe("MaskThema", u"x"_s);
        b.Tippe("MFrage", u"neu "_s);
        b.Klick("CVor");
        QVERIFY(b.Meldungstexte().isEmpty());
        QVERIFY(!b.Finde<QLineEdit>("MaskThema")->isReadOnly());
        const CardRecord card = b.kartei.Stored()[0];
        QCOMPARE(card.Frage_Klartext, u"neu Frage 1"_s);
        QVERIFY(card.Picture_9_Name == riesig && card.Picture_6_Name == riesig);
    }

    void NumberIsSelectedAfterAJump()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        auto *nummer = b.Finde<QLineEdit>("MaskFrageNr");
        b.Ersetze("MaskFrageNr", u"3"_s);
        b.Taste(Qt::Key_Return);
        QCOMPARE(nummer->selectedText(), u"3"_s);
        QTest::keyClicks(nummer, u"2"_s);
        b.Taste(Qt::Key_Return);
        QCOMPARE(b.Text("MFrage"), u"Frage 2"_s);
    }

    // --- A new card on which nothing is written

    void ChoicesAloneMakeNoNewCard_data()
    {
        QTest::addColumn<QString>("weg");
        for (const char *weg : {"CVor", "CZurück", "CVVor", "CZZurück", "CEOF", "Cback", "MSuchen"})
            QTest::newRow(weg) << QString::fromUtf8(weg);
    }

    void ChoicesAloneMakeNoNewCard()
    {
        QFETCH(QString, weg);
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Klick("CEOF");
        b.Klick("Antwort_K");
        b.Klick("Check1(1)");
        b.Finde("Check1(2)")->setFocus();
        b.Taste(Qt::Key_Space);
        b.Finde("MFrage")->setFocus();
        for (const Qt::Key taste : {Qt::Key_F, Qt::Key_K, Qt::Key_U, Qt::Key_H, Qt::Key_T})
            b.Taste(taste, Qt::ControlModifier);
        if (weg == u"MSuchen"_s) {
            const Drehbuch buch({Drehbuch::In(u"Suchen"_s, [](QWidget &dialog) { dialog.close(); })});
            b.Taste(Qt::Key_F3);
        } else {
            b.Klick(qPrintable(weg));
        }
        QVERIFY(b.Meldungstexte().isEmpty());
        QVERIFY(b.fenster->close());
        QVERIFY(b.Meldungstexte().isEmpty());
        QCOMPARE(b.kartei.Stored(), DreiKarten());
    }

    void ChoicesOfANewCardAreStoredWithItsTexts()
    {
        EditorBuehne b({});
        b.Zeigen();
        b.Klick("Antwort_K");
        b.Klick("Check1(0)");
        b.Finde("MFrage")->setFocus();
        b.Taste(Qt::Key_F, Qt::ControlModifier);
        b.Tippe("MFrage", u"f"_s);
        b.Tippe("Antwort(0)", u"a"_s);
        QVERIFY(b.fenster->close());
        QVERIFY(b.Meldungstexte().isEmpty());
        const CardRecord card = b.kartei.Stored()[0];
        QVERIFY(card.Antworttyp == 2.0 && card.Antwort_ch_1);
        QVERIFY(card.Frage.contains(u"\\b"_s));
        QVERIFY(card.Antwort_3.startsWith(u"{\\rtf"_s)); // as all texts of a new card
    }
};

PAUKFIX_TEST(PFAendernKopfTest)
#include "PFAendernKopfTest.moc"
