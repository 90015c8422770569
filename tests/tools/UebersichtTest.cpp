// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Uebersicht.h"

#include "TestProgram.h"
#include "Werkstatt.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QPrinter>
#include <QPushButton>
#include <QTableView>

using namespace paukfix;
using namespace Qt::StringLiterals;

class UebersichtTest : public QObject
{
    Q_OBJECT

private slots:
    void ShowsAllCardsUnderTheirHeads();
    void TextsStandInOneLine();
    void EmptyFileTellsSo();
    void EnterOpensTheEditorOnThatCard();
    void DoubleClickOpensTheEditorOnThatCard();
    void CardThatHasGoneOpensNothing();
    void CaptionFollowsTheRow();
    void ClickOnAHeadSorts();
    void KeysSort();
    void TextsSortAsInADictionary();
    void SortingKeepsTheCurrentCard();
    void TypingFindsARow();
    void SearchFindsWhatTheGridShows_data();
    void SearchFindsWhatTheGridShows();
    void NothingFoundIsTold();
    void RowsAreReadWhenTheyAreShown();
    void FullBoxScrollsToItsEnd();
    void DataErrorIsToldOnce();
    void ClosedFileIsADataError();
    void ReadingLeavesAnEditAlone();
    void ColumnsFillTheWindow();
    void QuestionsStandApartFromTheNumbers();
    void WorksWithKeysAlone();
};

namespace {

// The overview of the open file; tells how often the editor was asked for.
struct Blick
{
    explicit Blick(Werkstatt &w)
        : fenster(w.store, w.Alle(), {.bearbeiten = [this] { ++bearbeitet; }}),
          gitter(Hand(fenster).Finde<QTableView>("grdDataGrid"))
    {
    }

    QString Zelle(int zeile, int spalte) const
    {
        return gitter->model()->index(zeile, spalte).data().toString();
    }

    QStringList Spalte(int spalte) const
    {
        QStringList zellen;
        for (int zeile = 0; zeile < gitter->model()->rowCount(); ++zeile)
            zellen << Zelle(zeile, spalte);
        return zellen;
    }

    void KopfKlick(int spalte) const
    {
        QHeaderView *koepfe = gitter->horizontalHeader();
        QTest::mouseClick(koepfe->viewport(), Qt::LeftButton, {},
                          {koepfe->sectionViewportPosition(spalte) + 10, koepfe->height() / 2});
    }

    QString Datensatz() const { return Hand::Gezeigt(fenster.findChild<QLabel *>("datPrimaryRS")); }

    int bearbeitet = 0;
    Uebersicht fenster;
    QTableView *gitter;
};

QList<CardRecord> Five()
{
    QList<CardRecord> cards{MakeCard(10, 0, 1), MakeCard(2, 3, 4), MakeCard(33, 0, 2), MakeCard(4, 6, 1),
                            MakeCard(1, 3, 11)};
    const QStringList questions{"Zebra", "äpfel", "Apfel", "Öl", "Ofen"};
    for (int i = 0; i < cards.size(); ++i)
        cards[i].Frage_Klartext = questions[i];
    return cards;
}

} // namespace

void UebersichtTest::ShowsAllCardsUnderTheirHeads()
{
    Werkstatt w;
    w.Oeffnen(Five());
    Blick blick(w);
    QCOMPARE(blick.fenster.objectName(), "Uebersicht");
    QCOMPARE(blick.fenster.windowTitle(), "Lernkarten");
    QStringList heads;
    for (int i = 0; i < blick.gitter->model()->columnCount(); ++i)
        heads << blick.gitter->model()->headerData(i, Qt::Horizontal).toString();
    QCOMPARE(heads, (QStringList{"FrageNr", "FachNr", "FachLfdNr", "Frage", "Antwort"}));
    QCOMPARE(blick.Spalte(0), (QStringList{"1", "2", "4", "10", "33"}));
    QCOMPARE(blick.Zelle(1, 1), "3");
    QCOMPARE(blick.Zelle(1, 2), "4");
    QCOMPARE(blick.Zelle(1, 3), "äpfel");
    QCOMPARE(blick.Zelle(1, 4), "Antwort 2");
    QCOMPARE(Hand(blick.fenster).Text("cmdDrucken"), "Drucken");
    QCOMPARE(Hand(blick.fenster).Text("cmdSchließen"), "Zurück");
    QStringList labels;
    for (const QLabel *label : Hand(blick.fenster).Finde("picButtons")->findChildren<QLabel *>())
        labels << Hand::Gezeigt(label);
    QVERIFY(labels.contains("Von:") && labels.contains("Bis:"));
    QVERIFY(!Hand(blick.fenster).Finde<QLabel>("Leer")->isVisibleTo(&blick.fenster));
}

void UebersichtTest::TextsStandInOneLine()
{
    Werkstatt w;
    CardRecord card = MakeCard(1, 0, 1);
    card.Frage_Klartext = "oben\r\nunten\nganz\runten";
    card.Antwort_1_Klartext.clear();
    w.Oeffnen({card});
    const Blick blick(w);
    QCOMPARE(blick.Zelle(0, 3), "oben unten ganz unten");
    QCOMPARE(blick.Zelle(0, 4), "");
}

void UebersichtTest::EmptyFileTellsSo()
{
    Werkstatt w;
    w.Oeffnen({}, "leer & neu.pzb");
    Blick blick(w);
    Hand(blick.fenster).Zeigen();
    const auto *notice = Hand(blick.fenster).Finde<QLabel>("Leer");
    QVERIFY(notice->isVisible());
    QCOMPARE(notice->text(), "Diese Datei (leer & neu.pzb) enthält noch keine Karten");
    QCOMPARE(notice->textFormat(), Qt::PlainText);
    for (const QSize size : {blick.fenster.size(), QSize(600, 400)}) { // nothing of the text is cut off
        blick.fenster.resize(size);
        QTRY_COMPARE(notice->geometry(), blick.gitter->viewport()->geometry());
        QVERIFY(notice->height() >= notice->heightForWidth(notice->width()));
    }
    // Nothing to be opened, sorted, found or printed.
    QTest::keyClick(blick.gitter, Qt::Key_Return);
    QTest::keyClicks(blick.gitter, "x");
    blick.KopfKlick(3);
    QCOMPARE(blick.bearbeitet, 0);
    QVERIFY(blick.fenster.isVisible());
    QVERIFY(w.meldungen.gezeigt.isEmpty());
}

void UebersichtTest::EnterOpensTheEditorOnThatCard()
{
    Werkstatt w;
    w.Oeffnen(Five());
    Blick blick(w);
    Hand(blick.fenster).Zeigen();
    QTest::keyClick(blick.gitter, Qt::Key_Down);
    QTest::keyClick(blick.gitter, Qt::Key_Down);
    QTest::keyClick(blick.gitter, Qt::Key_Return);
    QCOMPARE(blick.bearbeitet, 1);
    QVERIFY(!blick.fenster.isVisible());
    QCOMPARE(w.store.Karten().Index(), "FrageNr");
    QCOMPARE(w.store.Felder().FrageNr.Integer(), qint16(4));
    QCOMPARE(w.store.Felder().Frage_Klartext.Text(), "Öl");
}

void UebersichtTest::DoubleClickOpensTheEditorOnThatCard()
{
    Werkstatt w;
    w.Oeffnen(Five());
    Blick blick(w);
    Hand(blick.fenster).Zeigen();
    blick.KopfKlick(3);
    const QPoint cell = blick.gitter->visualRect(blick.gitter->model()->index(4, 3)).center();
    QTest::mouseClick(blick.gitter->viewport(), Qt::LeftButton, {}, cell);
    QCOMPARE(blick.bearbeitet, 0); // one click only chooses
    QTest::mouseDClick(blick.gitter->viewport(), Qt::LeftButton, {}, cell);
    QCOMPARE(blick.bearbeitet, 1);
    QVERIFY(!blick.fenster.isVisible());
    QCOMPARE(w.store.Felder().Frage_Klartext.Text(), "Zebra");
}

void UebersichtTest::CardThatHasGoneOpensNothing()
{
    Werkstatt w;
    w.Oeffnen(Five());
    Blick blick(w);
    Hand(blick.fenster).Zeigen();
    w.store.Karten().Past(
        [](SQLite::Database &database) { database.exec("DELETE FROM Lernkarten WHERE FrageNr=1"); });
    QTest::keyClick(blick.gitter, Qt::Key_Return);
    QCOMPARE(blick.bearbeitet, 0);
    QVERIFY(blick.fenster.isVisible());
    QCOMPARE(w.store.Karten().Index(), "BoxKey");
    blick.KopfKlick(1);
    QCOMPARE(blick.gitter->model()->rowCount(), 4);
}

void UebersichtTest::CaptionFollowsTheRow()
{
    Werkstatt w;
    w.Oeffnen(Five());
    Blick blick(w);
    Hand(blick.fenster).Zeigen();
    QCOMPARE(blick.Datensatz(), "Record: 1");
    QTest::keyClick(blick.gitter, Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(blick.Datensatz(), "Record: 5");
    QTest::keyClick(blick.gitter, Qt::Key_Up);
    QCOMPARE(blick.Datensatz(), "Record: 4");
}

void UebersichtTest::ClickOnAHeadSorts()
{
    Werkstatt w;
    w.Oeffnen(Five());
    Blick blick(w);
    Hand(blick.fenster).Zeigen();
    blick.KopfKlick(0);
    QCOMPARE(blick.Spalte(0), (QStringList{"33", "10", "4", "2", "1"})); // it was ascending
    blick.KopfKlick(0);
    QCOMPARE(blick.Spalte(0), (QStringList{"1", "2", "4", "10", "33"}));
    blick.KopfKlick(1);
    QCOMPARE(blick.Spalte(1), (QStringList{"0", "0", "3", "3", "6"}));
    QCOMPARE(blick.Spalte(0), (QStringList{"10", "33", "1", "2", "4"}));
    blick.KopfKlick(1);
    QCOMPARE(blick.Spalte(0), (QStringList{"4", "1", "2", "10", "33"}));
    blick.KopfKlick(2);
    QCOMPARE(blick.Spalte(2), (QStringList{"1", "1", "2", "4", "11"}));
}

void UebersichtTest::KeysSort()
{
    Werkstatt w;
    w.Oeffnen(Five());
    Blick blick(w);
    Hand(blick.fenster).Zeigen();
    QTest::keyClick(&blick.fenster, Qt::Key_3, Qt::ControlModifier);
    QCOMPARE(blick.Spalte(2), (QStringList{"1", "1", "2", "4", "11"}));
    QTest::keyClick(&blick.fenster, Qt::Key_3, Qt::ControlModifier);
    QCOMPARE(blick.Spalte(2), (QStringList{"11", "4", "2", "1", "1"}));
}

void UebersichtTest::TextsSortAsInADictionary()
{
    Werkstatt w;
    w.Oeffnen(Five());
    Blick blick(w);
    Hand(blick.fenster).Zeigen();
    blick.KopfKlick(3);
    QCOMPARE(blick.Spalte(3), (QStringList{"Apfel", "äpfel", "Ofen", "Öl", "Zebra"}));
    blick.KopfKlick(3);
    QCOMPARE(blick.Spalte(3), (QStringList{"Zebra", "Öl", "Ofen", "äpfel", "Apfel"}));
    blick.KopfKlick(4);
    QCOMPARE(blick.Zelle(0, 4), "Antwort 1");
}

void UebersichtTest::SortingKeepsTheCurrentCard()
{
    Werkstatt w;
    w.Oeffnen(Five());
    Blick blick(w);
    Hand(blick.fenster).Zeigen();
    blick.gitter->setCurrentIndex(blick.gitter->model()->index(3, 0));
    blick.KopfKlick(3);
    QCOMPARE(blick.Zelle(blick.gitter->currentIndex().row(), 0), "10");
    QCOMPARE(blick.Datensatz(), "Record: 5");
    QTest::keyClick(blick.gitter, Qt::Key_Return);
    QCOMPARE(w.store.Felder().FrageNr.Integer(), qint16(10));
}

void UebersichtTest::TypingFindsARow()
{
    Werkstatt w;
    w.Oeffnen(Five());
    Blick blick(w);
    Hand(blick.fenster).Zeigen();
    auto *field = Hand(blick.fenster).Finde<QLineEdit>("txtSuchen");
    QTest::keyClick(blick.gitter, Qt::Key_Z);
    QVERIFY(field->hasFocus());
    QTest::keyClicks(field, "eb");
    QCOMPARE(field->text(), "zeb");
    QCOMPARE(blick.Zelle(blick.gitter->currentIndex().row(), 3), "Zebra");
    // A card number, from its first digit on.
    field->setText("33");
    QCOMPARE(blick.Zelle(blick.gitter->currentIndex().row(), 0), "33");
    // Umlauts without regard to case, and in the answer; F3 goes on and round.
    field->setText("ÄPF");
    QCOMPARE(blick.Zelle(blick.gitter->currentIndex().row(), 3), "äpfel");
    field->setText("pfel");
    QCOMPARE(blick.Zelle(blick.gitter->currentIndex().row(), 3), "äpfel");
    QTest::keyClick(&blick.fenster, Qt::Key_F3);
    QCOMPARE(blick.Zelle(blick.gitter->currentIndex().row(), 3), "Apfel");
    QTest::keyClick(&blick.fenster, Qt::Key_F3);
    QCOMPARE(blick.Zelle(blick.gitter->currentIndex().row(), 3), "äpfel");
    field->setText("antwort 4");
    QCOMPARE(blick.Zelle(blick.gitter->currentIndex().row(), 0), "4");
    QTest::keyClick(field, Qt::Key_Down);
    QVERIFY(blick.gitter->hasFocus());
    QCOMPARE(blick.Zelle(blick.gitter->currentIndex().row(), 0), "10");
    QTest::keyClicks(blick.gitter, "O");
    QTest::keyClicks(field, "fen");
    QTest::keyClick(field, Qt::Key_Return);
    QCOMPARE(blick.bearbeitet, 1);
    QCOMPARE(w.store.Felder().Frage_Klartext.Text(), "Ofen");
}

void UebersichtTest::SearchFindsWhatTheGridShows_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("typed");
    QTest::newRow("line end") << "viel Glück\r\nund Segen"
                              << "glück und";
    QTest::newRow("line feed") << "viel Glück\nund Segen"
                               << "glück und";
    QTest::newRow("carriage return") << "viel Glück\rund Segen"
                                     << "glück und";
    QTest::newRow("empty line") << "viel Glück\r\n\r\nund Segen"
                                << "glück  und";
    QTest::newRow("line separator") << u"viel Glück\u2028und Segen"_s << "glück und";
    QTest::newRow("tab") << "viel Glück\tund Segen"
                         << "glück und";
    QTest::newRow("no-break space") << u"viel Glück\u00A0und Segen"_s << "glück und";
    QTest::newRow("no-break space typed") << "viel Glück und Segen" << u"glück\u00A0und"_s;
    QTest::newRow("letter with its mark") << u"viel Glu\u0308ck"_s << "glück";
    QTest::newRow("mark typed behind the letter") << "viel Glück" << u"glu\u0308ck"_s;
}

void UebersichtTest::SearchFindsWhatTheGridShows()
{
    QFETCH(QString, text);
    QFETCH(QString, typed);
    for (const bool question : {true, false}) {
        Werkstatt w;
        QList<CardRecord> cards = Five();
        (question ? cards[3].Frage_Klartext : cards[3].Antwort_1_Klartext) = text;
        w.Oeffnen(cards);
        Blick blick(w);
        Hand(blick.fenster).Zeigen();
        Hand(blick.fenster).Finde<QLineEdit>("txtSuchen")->setText(typed);
        const int row = blick.gitter->currentIndex().row();
        QCOMPARE(blick.Zelle(row, 0), "4");
        QCOMPARE(blick.Datensatz(), "Record: " + QString::number(row + 1));
        QVERIFY(!blick.Zelle(row, question ? 3 : 4).contains(QChar::LineSeparator));
    }
}

void UebersichtTest::NothingFoundIsTold()
{
    Werkstatt w;
    w.Oeffnen(Five());
    Blick blick(w);
    Hand(blick.fenster).Zeigen();
    QTest::keyClick(blick.gitter, Qt::Key_Down);
    auto *field = Hand(blick.fenster).Finde<QLineEdit>("txtSuchen");
    field->setFocus();
    QTest::keyClicks(field, "gibt es nicht");
    QCOMPARE(blick.Datensatz(), "nicht gefunden");
    QCOMPARE(blick.gitter->currentIndex().row(), 1);
    QTest::keyClick(field, Qt::Key_Return); // there is no card to be opened
    QCOMPARE(blick.bearbeitet, 0);
    QVERIFY(blick.fenster.isVisible());
    QVERIFY(field->hasFocus());
    QTest::keyClick(field, Qt::Key_Escape);
    QVERIFY(blick.fenster.isVisible());
    QVERIFY(blick.gitter->hasFocus());
    QCOMPARE(field->text(), "");
    QCOMPARE(blick.Datensatz(), "Record: 2");
    QTest::keyClick(blick.gitter, Qt::Key_Escape);
    QVERIFY(!blick.fenster.isVisible());
}

void UebersichtTest::RowsAreReadWhenTheyAreShown()
{
    Werkstatt w;
    QList<CardRecord> cards;
    for (int i = 1; i <= 3000; ++i)
        cards << MakeCard(i, 0, i);
    w.Oeffnen(cards);
    Blick blick(w);
    Hand(blick.fenster).Zeigen();
    QCOMPARE(blick.Zelle(0, 3), "Frage 1");
    w.store.Karten().Past([](SQLite::Database &database) {
        database.exec("UPDATE Lernkarten SET Frage_Klartext='neu' WHERE FrageNr IN (1, 2500)");
    });
    QCOMPARE(blick.Zelle(0, 3), "Frage 1"); // shown, and so kept
    QCOMPARE(blick.Zelle(2499, 3), "neu");
    for (int row = 0; row < 3000; row += 20)
        blick.Zelle(row, 3);
    QCOMPARE(blick.Zelle(0, 3), "neu"); // not kept for ever
}

void UebersichtTest::FullBoxScrollsToItsEnd()
{
    Werkstatt w;
    QList<CardRecord> cards;
    for (int i = 1; i <= 32767; ++i) {
        CardRecord card;
        card.FrageNr = i;
        card.FachLfdNr = i;
        card.Frage_Klartext = QString::number(i);
        cards << card;
    }
    w.Oeffnen(cards);
    Blick blick(w);
    Hand(blick.fenster).Zeigen();
    QCOMPARE(blick.gitter->model()->rowCount(), 32767);
    QTest::keyClick(blick.gitter, Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(blick.Datensatz(), "Record: 32767");
    QVERIFY(blick.gitter->viewport()->rect().contains(
        blick.gitter->visualRect(blick.gitter->currentIndex()).center()));
    QTest::keyClick(blick.gitter, Qt::Key_Return);
    QCOMPARE(w.store.Felder().FrageNr.Integer(), qint16(32767));
}

void UebersichtTest::DataErrorIsToldOnce()
{
    Werkstatt w;
    w.Oeffnen(Five());
    Blick blick(w);
    w.store.Karten().Past([](SQLite::Database &database) {
        database.exec("ALTER TABLE Lernkarten RENAME COLUMN Antwort_1_Klartext TO Verschwunden");
    });
    Hand(blick.fenster).Zeigen();
    QTRY_VERIFY(!w.meldungen.gezeigt.isEmpty());
    blick.gitter->viewport()->repaint();
    QCoreApplication::processEvents();
    QCOMPARE(w.meldungen.gezeigt.size(), 1);
    QVERIFY2(w.meldungen.Texte().front().startsWith("Folgender Fehler ist aufgetreten:Fehler der Datenbank"),
             qPrintable(w.meldungen.Texte().front()));
}

void UebersichtTest::ClosedFileIsADataError()
{
    Werkstatt w;
    Blick blick(w);
    Hand(blick.fenster).Zeigen();
    QCOMPARE(w.meldungen.Texte(),
             QStringList{"Folgender Fehler ist aufgetreten:Es ist keine Kartei geöffnet."});
    QTest::keyClicks(blick.gitter, "x");
    Hand(blick.fenster).Klick("cmdDrucken");
    Hand(blick.fenster).Klick("cmdSchließen");
    QVERIFY(!blick.fenster.isVisible());
}

void UebersichtTest::ReadingLeavesAnEditAlone()
{
    Werkstatt w;
    w.Oeffnen(Five());
    w.store.Karten().MoveFirst();
    const qint16 current = w.store.Felder().FrageNr.Integer();
    w.store.Karten().Edit();
    w.store.Felder().Frage_Klartext.Set(u"halb fertig"_s);
    {
        Blick blick(w);
        Hand(blick.fenster).Zeigen();
        blick.KopfKlick(3);
        Hand(blick.fenster).Finde<QLineEdit>("txtSuchen")->setText("Zebra");
    }
    w.store.Karten().Update();
    QCOMPARE(w.store.Felder().FrageNr.Integer(), current);
    QCOMPARE(w.store.Felder().Frage_Klartext.Text(), "halb fertig");
}

void UebersichtTest::ColumnsFillTheWindow()
{
    Werkstatt w;
    w.Oeffnen(Five());
    Blick blick(w);
    Hand(blick.fenster).Zeigen();
    for (const QSize size : {blick.fenster.size(), QSize(700, 400), QSize(1200, 700)}) {
        blick.fenster.resize(size);
        QTRY_COMPARE(blick.gitter->horizontalHeader()->length(), blick.gitter->viewport()->width());
        QVERIFY(blick.gitter->columnWidth(3) > blick.gitter->columnWidth(4) / 2);
        QVERIFY(Hand(blick.fenster).Finde("picButtons")->geometry().top() >=
                blick.gitter->geometry().bottom());
    }
}

void UebersichtTest::QuestionsStandApartFromTheNumbers()
{
    Werkstatt w;
    QList<CardRecord> cards;
    for (int i = 1; i <= 2; ++i) {
        CardRecord card = MakeCard(i, 0, 32765 + i);
        card.Frage_Klartext = "HHH";
        cards << card;
    }
    w.Oeffnen(cards);
    Blick blick(w);
    Hand(blick.fenster).Zeigen();
    // Around the line between the two columns nothing is written, neither in the head nor in a row that is
    // not the current one.
    const int line = blick.gitter->columnViewportPosition(3);
    const QRect row = blick.gitter->visualRect(blick.gitter->model()->index(1, 3));
    const QImage cells = blick.gitter->viewport()->grab().toImage();
    const QColor ground = cells.pixelColor(line + 1, row.center().y());
    for (int x = line + 1; x < line + 9; ++x)
        for (int y = row.top() + 1; y < row.bottom(); ++y)
            QCOMPARE(cells.pixelColor(x, y), ground);
}

void UebersichtTest::WorksWithKeysAlone()
{
    Werkstatt w;
    w.Oeffnen(Five());
    Blick blick(w);
    CheckNames(blick.fenster);
    Hand(blick.fenster).Zeigen();
    QVERIFY(blick.gitter->hasFocus());
    QSet<QString> reached;
    for (int i = 0; i < 10; ++i) {
        reached << blick.fenster.focusWidget()->objectName();
        QTest::keyClick(blick.fenster.focusWidget(), Qt::Key_Tab);
    }
    for (const QString &name :
         {u"grdDataGrid"_s, u"txtVon"_s, u"txtBis"_s, u"cmdDrucken"_s, u"txtSuchen"_s, u"cmdSchließen"_s})
        QVERIFY2(reached.contains(name), qPrintable(name));
    QTest::keyClick(&blick.fenster, Qt::Key_Z, Qt::AltModifier);
    QTRY_VERIFY(!blick.fenster.isVisible());
}

PAUKFIX_TEST(UebersichtTest)
#include "UebersichtTest.moc"
