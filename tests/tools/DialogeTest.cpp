// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AExport.h"
#include "AImport.h"
#include "AlleNull.h"
#include "ErlNull.h"
#include "Karteianhaengen.h"
#include "Karteispiegeln.h"
#include "TestProgram.h"
#include "Themaausfiltern.h"
#include "Werkstatt.h"

#include <QComboBox>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QStyledItemDelegate>

using namespace paukfix;

// The dialogs at work, driven by key and mouse.
class DialogeTest : public QObject
{
    Q_OBJECT

private slots:
    void ExportAsksForAFileAndWritesIt();
    void ExportTakesATypedFile();
    void ExportWithoutSimpleCardsWritesTheHeader();
    void ExportRefusesAComma();
    void ExportStaysOpenAfterAFailure();
    void ExportOfPartOfTheCardsTellsNoSuccess();
    void CancelEmptiesTheTextFileName();
    void ImportAsksForAFileAndReadsIt();
    void ImportStaysOpenWithoutAFile();
    void ImportOfPartOfTheCardsTellsHowMany();
    void ImportWithTheOpenBoxGoneClosesTheDialog();
    void AppendAsksForACardFileAndStaysOpen();
    void AppendTellsQuietlyAndWantsTheFileAnew();
    void AppendTakesNoOtherFiles();
    void CancelKeepsTheCardFileName();
    void TopicsChangeListsByClickAndKey();
    void DoubleClickMovesOneTopic();
    void ListWithTheKeyboardStandsOut();
    void TopicsThatCannotBeReadMakeNoFile();
    void FilterMakesTheNewFile();
    void MirrorMakesTheNewFile();
    void NewCardFileNeedsItsExtension();
    void NewCardFileWithoutNameIsAnError();
    void RefusedTargetLeavesTheDialogOpen();
    void AllToNewAsksFirst();
    void DoneToNewTellsTheNumber();
    void KeysAndClicksDuringTheWorkAreNotTaken();
    void LongWorkShowsItsProgress();
};

namespace {

QStringList Entries(QWidget &window, const char *name)
{
    QStringList entries;
    const auto *list = Hand(window).Finde<QListWidget>(name);
    for (int i = 0; i < list->count(); ++i)
        entries << list->item(i)->text();
    return entries;
}

void ClickEntry(QWidget &window, const char *name, int row)
{
    auto *list = Hand(window).Finde<QListWidget>(name);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(row)).center());
}

} // namespace

void DialogeTest::ExportAsksForAFileAndWritesIt()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    AExport dialog(w.oeffner, w.Alle());
    Hand(dialog).Zeigen();
    w.dialoge.pfade = {w.Pfad("ziel.txt")};
    Hand(dialog).Klick("cmdDateiname");
    QCOMPARE(w.dialoge.zumSpeichern.size(), 1);
    const DateiDialog asked = w.dialoge.zumSpeichern.front();
    QCOMPARE(asked.titel, "ASCII export");
    QCOMPARE(asked.filter, "Textdateien (*.txt)|*.txt|ASCII Dateien (*.asc)|*.asc|Tabellen "
                           "(*.csv;*.tsv)|*.csv;*.tsv|Alle Dateien (*.*)|*.*");
    QCOMPARE(asked.verzeichnis, w.store.KarteiPfad);
    QCOMPARE(asked.endung, "txt");
    QCOMPARE(asked.vorgabe, "");
    QVERIFY(asked.ueberschreibenFragen);
    QCOMPARE(Hand(dialog).Text("lblDateiname"), w.Pfad("ziel.txt"));
    Hand(dialog).Klick("cmdOK");
    QCOMPARE(w.meldungen.Texte(), QStringList{w.Pfad("ziel.txt") + " erfolgreich geschrieben"});
    QVERIFY(!dialog.isVisible());
    QVERIFY(!w.meldungen.sanduhr);
    QCOMPARE(w.Bytes("ziel.txt"), QByteArray("Frage\tAntwort\tThema\r\nFrage 1\tAntwort 1\tThema 1\r\n"));
}

void DialogeTest::ExportTakesATypedFile()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    AExport dialog(w.oeffner, w.Alle());
    Hand(dialog).Zeigen();
    Hand(dialog).Finde<QComboBox>("cmbTrennzeichen")->setCurrentText(";");
    Hand(dialog).Ersetze("lblDateiname", "getippt.txt");
    Hand(dialog).Taste("lblDateiname", Qt::Key_Return);
    QCOMPARE(w.meldungen.Texte(), QStringList{"getippt.txt erfolgreich geschrieben"});
    QVERIFY(w.Bytes("getippt.txt").startsWith("Frage;"));
}

void DialogeTest::ExportWithoutSimpleCardsWritesTheHeader()
{
    Werkstatt w;
    CardRecord ticks = MakeCard(1, 0, 1);
    ticks.Antworttyp = 2;
    w.Oeffnen({ticks});
    AExport dialog(w.oeffner, w.Alle());
    Hand(dialog).Zeigen();
    Hand(dialog).Ersetze("lblDateiname", "leer.txt");
    Hand(dialog).Klick("cmdOK");
    QCOMPARE(w.meldungen.Texte(), QStringList{"leer.txt erfolgreich geschrieben"});
    QVERIFY(!dialog.isVisible());
    QCOMPARE(w.Bytes("leer.txt"), QByteArray("Frage\tAntwort\tThema\r\n"));
}

void DialogeTest::ExportRefusesAComma()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    AExport dialog(w.oeffner, w.Alle());
    Hand(dialog).Zeigen();
    auto *separators = Hand(dialog).Finde<QComboBox>("cmbTrennzeichen");
    separators->lineEdit()->selectAll();
    QTest::keyClicks(separators->lineEdit(), ",");
    Hand(dialog).Ersetze("lblDateiname", w.Pfad("ziel.txt"));
    Hand(dialog).Klick("cmdOK");
    QCOMPARE(w.meldungen.Texte(), QStringList{"Trennzeichen: ,ungültig!"});
    QVERIFY(dialog.isVisible());
    QVERIFY(!QFile::exists(w.Pfad("ziel.txt")));
}

void DialogeTest::ExportStaysOpenAfterAFailure()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    AExport dialog(w.oeffner, w.Alle());
    Hand(dialog).Zeigen();
    Hand(dialog).Klick("cmdOK");
    QVERIFY(MeldetFehler(w.meldungen));
    QVERIFY(dialog.isVisible());
    QVERIFY(Hand(dialog).Finde("lblDateiname")->isEnabled());
}

void DialogeTest::ExportOfPartOfTheCardsTellsNoSuccess()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1), MakeCard(2, 0, 2)});
    w.store.Karten().Past([](SQLite::Database &database) {
        database.exec("UPDATE Lernkarten SET Antworttyp='eins' WHERE FrageNr=1");
    });
    AExport dialog(w.oeffner, w.Alle());
    Hand(dialog).Zeigen();
    Hand(dialog).Ersetze("lblDateiname", w.Pfad("ziel.txt"));
    Hand(dialog).Klick("cmdOK");
    QVERIFY(MeldetFehler(w.meldungen));
    QVERIFY(!dialog.isVisible());
    QVERIFY(w.Bytes("ziel.txt").contains("Frage 2"));
}

void DialogeTest::CancelEmptiesTheTextFileName()
{
    Werkstatt w;
    w.Oeffnen({});
    AExport exporting(w.oeffner, w.Alle());
    AImport importing(w.oeffner, w.Alle());
    for (QWidget *dialog : {static_cast<QWidget *>(&exporting), static_cast<QWidget *>(&importing)}) {
        Hand(*dialog).Zeigen();
        Hand(*dialog).Ersetze("lblDateiname", "etwas.txt");
        Hand(*dialog).Klick("cmdDateiname");
        QCOMPARE(Hand(*dialog).Text("lblDateiname"), "");
        dialog->hide();
    }
}

void DialogeTest::ImportAsksForAFileAndReadsIt()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    w.Schreiben("quelle.txt", "neu\tnew\r\n");
    AImport dialog(w.oeffner, w.Alle());
    Hand(dialog).Zeigen();
    w.dialoge.pfade = {w.Pfad("quelle.txt")};
    Hand(dialog).Klick("cmdDateiname");
    const DateiDialog asked = w.dialoge.zumOeffnen.value(0);
    QCOMPARE(asked.titel, "ASCII import");
    QCOMPARE(asked.filter, "Textdateien (*.txt)|*.txt|ASCII Dateien (*.asc)|*.asc|Tabellen "
                           "(*.csv;*.tsv)|*.csv;*.tsv|Alle Dateien (*.*)|*.*");
    QCOMPARE(asked.verzeichnis, w.store.KarteiPfad);
    QCOMPARE(asked.endung, "");
    QCOMPARE(asked.vorgabe, "");
    Hand(dialog).Klick("cmdOK");
    QCOMPARE(w.meldungen.Texte(), QStringList{w.Pfad("quelle.txt") + " erfolgreich eingelesen"});
    QVERIFY(!dialog.isVisible());
    QCOMPARE(w.Karten().size(), 2);
}

void DialogeTest::ImportStaysOpenWithoutAFile()
{
    Werkstatt w;
    w.Oeffnen({});
    AImport dialog(w.oeffner, w.Alle());
    Hand(dialog).Zeigen();
    Hand(dialog).Ersetze("lblDateiname", "fehlt.txt");
    Hand(dialog).Klick("cmdOK");
    Hand(dialog).Finde<QComboBox>("cmbTrennzeichen")->setCurrentText("x");
    Hand(dialog).Klick("cmdOK");
    QCOMPARE(w.meldungen.Texte(),
             (QStringList{"fehlt.txt Datei nicht gefunden !", "Trennzeichen: xungültig!"}));
    QVERIFY(dialog.isVisible());
}

void DialogeTest::ImportOfPartOfTheCardsTellsHowMany()
{
    const auto import = [](qint16 highest, const QByteArray &text) {
        Werkstatt w;
        w.Oeffnen({MakeCard(highest, 0, 1)});
        w.Schreiben("quelle.txt", text);
        AImport dialog(w.oeffner, w.Alle());
        Hand(dialog).Zeigen();
        Hand(dialog).Ersetze("lblDateiname", "quelle.txt");
        Hand(dialog).Klick("cmdOK");
        return w.meldungen.Texte();
    };
    QCOMPARE(import(32765, "a\t1\r\nb\t2\r\nc\t3\r\nkeine\r\nd\t4\r\ne\t5\r\n"),
             (QStringList{"Leider ist folgender Fehler Aufgetreten: Überlauf: Nummern und Anzahlen gehen "
                          "nur bis 32767.",
                          "2 Karten eingelesen; 3 Karten der Datei fehlen (Zeile 3). "
                          "Wer die Datei noch einmal einliest, hat sie doppelt."}));
    QCOMPARE(import(32767, "a\t1\r\n").last(), "Es wurde keine Karte eingelesen (Zeile 1).");
    QCOMPARE(import(1, "a\t1\t" + QByteArray(251, 't') + "\r\n").last(),
             "1 Karte eingelesen; nicht alle Texte passten hinein (Zeile 1). "
             "Wer die Datei noch einmal einliest, hat sie doppelt.");
}

void DialogeTest::ImportWithTheOpenBoxGoneClosesTheDialog()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    w.Schreiben("quelle.txt", "a\t1\r\n");
    AImport dialog(w.oeffner, w.Alle());
    Hand(dialog).Zeigen();
    Hand(dialog).Ersetze("lblDateiname", "quelle.txt");
    QVERIFY(QFile::remove(w.Pfad("offen.pzb")));
    Hand(dialog).Klick("cmdOK");
    QVERIFY(w.meldungen.Texte().value(0).contains("wurde gelöscht, umbenannt oder ersetzt"));
    QVERIFY(!w.store.IsOpen());
    QVERIFY(!dialog.isVisible());
}

void DialogeTest::AppendAsksForACardFileAndStaysOpen()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    MakeCardFile(w.Pfad("quelle.pzb"), {MakeCard(4, 3, 2)});
    Karteianhängen dialog(w.oeffner, w.Alle());
    Hand(dialog).Zeigen();
    w.dialoge.pfade = {w.Pfad("quelle.pzb")};
    Hand(dialog).Klick("cmdDateiname");
    const DateiDialog asked = w.dialoge.zumOeffnen.value(0);
    QCOMPARE(asked.titel, "Merkkasten anhängen");
    QCOMPARE(asked.filter, "Lerndateien (*.pzb)|*.pzb");
    QCOMPARE(asked.verzeichnis, w.konfig.ProgrammPfad);
    QCOMPARE(asked.endung, "pzb");
    QCOMPARE(Hand(dialog).Text("lblDateiname"), w.Pfad("quelle.pzb"));
    Hand(dialog).Klick("cmdOK");
    QVERIFY(w.meldungen.gezeigt.isEmpty());
    QVERIFY(dialog.isVisible());
    QCOMPARE(w.store.FachInfo[0].Anzahl, qint16(2));

    Hand(dialog).Ersetze("lblDateiname", w.Pfad("offen.pzb"));
    Hand(dialog).Klick("cmdOK");
    QCOMPARE(w.meldungen.Texte(), QStringList{"Datei kann nicht an sich selbst angehängt werden offen.pzb"});
    QVERIFY(dialog.isVisible());
    QCOMPARE(w.Karten().size(), 2);
}

void DialogeTest::AppendTellsQuietlyAndWantsTheFileAnew()
{
    Werkstatt w;
    w.Oeffnen({});
    MakeCardFile(w.Pfad("quelle.pzb"), {MakeCard(4, 3, 2), MakeCard(5, 0, 1)});
    Karteianhängen dialog(w.oeffner, w.Alle());
    Hand(dialog).Zeigen();
    auto *name = Hand(dialog).Finde<QLineEdit>("lblDateiname");
    const auto *ok = Hand(dialog).Finde<QPushButton>("cmdOK");
    const auto *result = Hand(dialog).Finde<QLabel>("Ergebnis");
    const QSize size = dialog.size();
    Hand(dialog).Ersetze("lblDateiname", w.Pfad("fehlt.pzb"));
    QTest::keyClick(name, Qt::Key_Return);
    QCOMPARE(result->text(), "");
    QVERIFY(ok->isEnabled());
    w.meldungen.gezeigt.clear();

    Hand(dialog).Ersetze("lblDateiname", w.Pfad("quelle.pzb"));
    Hand(dialog).Klick("cmdOK");
    QCOMPARE(result->text(), "2 Karten angehängt");
    QCOMPARE(name->text(), w.Pfad("quelle.pzb"));
    QVERIFY(name->hasFocus());
    QVERIFY(!ok->isEnabled());
    QTest::keyClick(name, Qt::Key_Return);
    Hand(dialog).Klick("cmdOK");
    QCOMPARE(w.store.FachInfo[0].Anzahl, qint16(2));
    QVERIFY(dialog.isVisible());
    QCOMPARE(dialog.size(), size);

    w.dialoge.pfade = {w.Pfad("quelle.txt"), w.Pfad("quelle.pzb")};
    Hand(dialog).Klick("cmdDateiname"); // not taken
    QVERIFY(!ok->isEnabled());
    w.meldungen.gezeigt.clear();
    Hand(dialog).Klick("cmdDateiname"); // the same file once more
    QVERIFY(ok->isEnabled());
    QCOMPARE(result->text(), "");
    QTest::keyClick(name, Qt::Key_Return);
    QCOMPARE(w.store.FachInfo[0].Anzahl, qint16(4));
    QTest::keyClick(name, Qt::Key_Backspace);
    QVERIFY(ok->isEnabled());
    QVERIFY(w.meldungen.gezeigt.isEmpty());
}

void DialogeTest::AppendTakesNoOtherFiles()
{
    Werkstatt w;
    w.Oeffnen({});
    Karteianhängen dialog(w.oeffner, w.Alle());
    Hand(dialog).Zeigen();
    w.dialoge.pfade = {w.Pfad("text.txt"), w.Pfad("GROSS.PZB")};
    Hand(dialog).Klick("cmdDateiname");
    QCOMPARE(w.meldungen.Texte(), QStringList{"Bitte nur .pzb Dateien"});
    QCOMPARE(Hand(dialog).Text("lblDateiname"), "");
    Hand(dialog).Klick("cmdDateiname");
    QCOMPARE(Hand(dialog).Text("lblDateiname"), w.Pfad("GROSS.PZB"));
}

void DialogeTest::CancelKeepsTheCardFileName()
{
    Werkstatt w;
    w.Oeffnen({});
    Karteispiegeln dialog(w.oeffner, w.Alle());
    Hand(dialog).Zeigen();
    Hand(dialog).Ersetze("lblDateiname", "neu.pzb");
    Hand(dialog).Klick("cmdDateiname");
    QCOMPARE(Hand(dialog).Text("lblDateiname"), "neu.pzb");
    QVERIFY(w.meldungen.gezeigt.isEmpty());
}

void DialogeTest::TopicsChangeListsByClickAndKey()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1), MakeCard(2, 0, 2), MakeCard(3, 0, 3), MakeCard(8, 0, 4)});
    Themaausfiltern dialog(w.oeffner, w.Alle());
    Hand(dialog).Zeigen();
    QCOMPARE(Entries(dialog, "lstÜbernehmen"), (QStringList{"Thema 1", "Thema 2", "Thema 3"}));
    QCOMPARE(Entries(dialog, "lstNübernehmen"), QStringList());
    ClickEntry(dialog, "lstÜbernehmen", 1);
    QCOMPARE(Entries(dialog, "lstÜbernehmen"), (QStringList{"Thema 1", "Thema 3"}));
    QCOMPARE(Entries(dialog, "lstNübernehmen"), QStringList{"Thema 2"});
    ClickEntry(dialog, "lstÜbernehmen", 0);
    QCOMPARE(Entries(dialog, "lstNübernehmen"), (QStringList{"Thema 2", "Thema 1"}));
    ClickEntry(dialog, "lstNübernehmen", 0);
    QCOMPARE(Entries(dialog, "lstÜbernehmen"), (QStringList{"Thema 3", "Thema 2"}));
    // Space and Enter do what a click does; Enter does not run the tool.
    auto *keep = Hand(dialog).Finde<QListWidget>("lstÜbernehmen");
    keep->setFocus();
    keep->setCurrentRow(0);
    QTest::keyClick(keep, Qt::Key_Space);
    QTest::keyClick(keep, Qt::Key_Return);
    QTest::keyClick(keep, Qt::Key_Return);
    QCOMPARE(Entries(dialog, "lstÜbernehmen"), QStringList());
    QCOMPARE(Entries(dialog, "lstNübernehmen"), (QStringList{"Thema 1", "Thema 3", "Thema 2"}));
    QVERIFY(dialog.isVisible());
    QVERIFY(w.meldungen.gezeigt.isEmpty());
}

void DialogeTest::DoubleClickMovesOneTopic()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1), MakeCard(2, 0, 2), MakeCard(3, 0, 3)});
    Themaausfiltern dialog(w.oeffner, w.Alle());
    Hand(dialog).Zeigen();
    auto *list = Hand(dialog).Finde<QListWidget>("lstÜbernehmen");
    const QPoint place = list->visualItemRect(list->item(0)).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, place);
    QMouseEvent second(QEvent::MouseButtonDblClick, place, list->viewport()->mapToGlobal(place),
                       Qt::LeftButton, Qt::LeftButton, {});
    QCoreApplication::sendEvent(list->viewport(), &second);
    QTest::mouseRelease(list->viewport(), Qt::LeftButton, {}, place);
    QCOMPARE(Entries(dialog, "lstNübernehmen"), QStringList{"Thema 1"});
}

void DialogeTest::ListWithTheKeyboardStandsOut()
{
    Werkstatt w;
    CardRecord card = MakeCard(1, 0, 1);
    card.Picture_9_Name = QString(250, QChar('W'));
    w.Oeffnen({card, MakeCard(2, 0, 2)});
    Themaausfiltern dialog(w.oeffner, w.Alle());
    Hand(dialog).Zeigen();
    auto *list = Hand(dialog).Finde<QListWidget>("lstÜbernehmen");
    // Of a topic of any size just what a line can show is painted: its beginning and its end.
    const auto *painter = qobject_cast<QStyledItemDelegate *>(list->itemDelegate());
    const QString endless = QString(10'000'000, u'M') + "Ende";
    const QString painted = painter->displayText(endless, QLocale());
    QVERIFY(painted.size() < 5000 && painted.startsWith("MMM") && painted.endsWith("Ende"));
    QVERIFY(list->visualItemRect(list->item(0)).width() <= list->viewport()->width());
    list->setFocus();
    const QRect row = list->visualItemRect(list->item(0));
    const auto colours = [&] {
        const QImage image = list->grab().toImage();
        const QPoint inRow = list->viewport()->mapTo(list, QPoint(row.right() - 1, row.top() + 2));
        return std::pair(image.pixel(inRow * image.devicePixelRatio()), image.pixel(0, image.height() / 2));
    };
    const auto with = colours();
    Hand(dialog).Finde<QLineEdit>("lblDateiname")->setFocus();
    const auto without = colours();
    QVERIFY(with.first != without.first);
    QVERIFY(with.second != without.second);
}

void DialogeTest::TopicsThatCannotBeReadMakeNoFile()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    w.store.CloseCardFile();
    Themaausfiltern dialog(w.oeffner, w.Alle());
    QVERIFY(MeldetFehler(w.meldungen));
    QVERIFY(!Hand(dialog).Finde<QPushButton>("cmdOK")->isEnabled());
}

void DialogeTest::FilterMakesTheNewFile()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1), MakeCard(2, 0, 2)});
    Themaausfiltern dialog(w.oeffner, w.Alle());
    Hand(dialog).Zeigen();
    ClickEntry(dialog, "lstÜbernehmen", 0);
    w.dialoge.pfade = {w.Pfad("neu.pzb")};
    Hand(dialog).Klick("cmdDateiname");
    const DateiDialog asked = w.dialoge.zumSpeichern.value(0);
    QCOMPARE(asked.titel, "Themaausfiltern");
    QCOMPARE(asked.filter, "Lerndateien (*.pzb)|*.pzb");
    QCOMPARE(asked.verzeichnis, w.store.KarteiPfad);
    QCOMPARE(asked.endung, "pzb");
    QVERIFY(asked.ueberschreibenFragen);
    Hand(dialog).Klick("cmdOK");
    QCOMPARE(w.meldungen.Texte(), QStringList{w.Pfad("neu.pzb") + " erfolgreich geschrieben"});
    QCOMPARE(w.meldungen.gezeigt.front().titel, "Merkkasten (neu.pzb)");
    QVERIFY(!dialog.isVisible());
    QCOMPARE(w.store.CurrentFileName, "neu.pzb");
    QCOMPARE(w.Karten(), QList{MakeCard(2, 0, 2)});
}

void DialogeTest::MirrorMakesTheNewFile()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    Karteispiegeln dialog(w.oeffner, w.Alle());
    Hand(dialog).Zeigen();
    w.dialoge.pfade = {w.Pfad("neu.pzb")};
    Hand(dialog).Taste("lblDateiname", Qt::Key_Tab);
    Hand(dialog).Taste("cmdDateiname", Qt::Key_Return);
    QVERIFY(w.meldungen.gezeigt.isEmpty());
    const DateiDialog asked = w.dialoge.zumSpeichern.value(0);
    QCOMPARE(asked.titel, "Merkkasten Spiegeln");
    QCOMPARE(asked.filter, "Lerndateien (*.pzb)|*.pzb");
    QCOMPARE(asked.verzeichnis, w.store.KarteiPfad);
    QCOMPARE(asked.endung, "pzb");
    QVERIFY(asked.ueberschreibenFragen);
    Hand(dialog).Taste("lblDateiname", Qt::Key_Return);
    QCOMPARE(w.meldungen.Texte(), QStringList{w.Pfad("neu.pzb") + " erfolgreich geschrieben"});
    QVERIFY(!dialog.isVisible());
    QCOMPARE(w.Karten().value(0).Frage, "Antwort 1");
}

void DialogeTest::NewCardFileNeedsItsExtension()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    Themaausfiltern filter(w.oeffner, w.Alle());
    Karteispiegeln mirror(w.oeffner, w.Alle());
    for (QWidget *dialog : {static_cast<QWidget *>(&filter), static_cast<QWidget *>(&mirror)}) {
        w.meldungen.gezeigt.clear();
        Hand(*dialog).Zeigen();
        w.dialoge.pfade = {w.Pfad("neu.txt")};
        Hand(*dialog).Klick("cmdDateiname");
        QCOMPARE(Hand(*dialog).Text("lblDateiname"), "");
        Hand(*dialog).Ersetze("lblDateiname", w.Pfad("neu.txt"));
        Hand(*dialog).Klick("cmdOK");
        QCOMPARE(w.meldungen.Texte(), (QStringList{"Bitte nur .pzb Dateien", "Bitte nur .pzb Dateien"}));
        QVERIFY(dialog->isVisible());
        dialog->hide();
    }
    QCOMPARE(w.Dateien(), QStringList{"offen.pzb"});
}

void DialogeTest::NewCardFileWithoutNameIsAnError()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    Karteispiegeln dialog(w.oeffner, w.Alle());
    Hand(dialog).Zeigen();
    Hand(dialog).Klick("cmdOK");
    QVERIFY(MeldetFehler(w.meldungen));
    QVERIFY(dialog.isVisible());
    QVERIFY(w.store.IsOpen());
}

void DialogeTest::RefusedTargetLeavesTheDialogOpen()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    Themaausfiltern dialog(w.oeffner, w.Alle());
    Hand(dialog).Zeigen();
    Hand(dialog).Ersetze("lblDateiname", "./offen.pzb");
    Hand(dialog).Klick("cmdOK");
    QVERIFY(MeldetFehler(w.meldungen));
    QVERIFY(dialog.isVisible());
    QCOMPARE(w.Karten().size(), 1);
}

void DialogeTest::AllToNewAsksFirst()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(2, 3, 1), MakeCard(1, 4, 1)});
    AlleNull dialog(w.oeffner, w.Alle());
    Hand(dialog).Zeigen();
    w.meldungen.antworten = {Meldungen::Antwort::Nein, Meldungen::Antwort::Ja};
    Hand(dialog).Klick("cmdOK");
    QCOMPARE(w.meldungen.Texte(), QStringList{"Sind sie sicher, daß sie alle Karten zurücksetzen möchten ?"});
    QVERIFY(w.meldungen.gezeigt.front().frage);
    QCOMPARE(w.meldungen.vorgaben, QList{Meldungen::Antwort::Nein});
    QVERIFY(dialog.isVisible());
    QCOMPARE(w.Karten(), (QList{MakeCard(2, 3, 1), MakeCard(1, 4, 1)}));
    Hand(dialog).Klick("cmdOK");
    QCOMPARE(w.meldungen.Texte().last(), "Alles zurückgesetzt");
    QVERIFY(!dialog.isVisible());
    QCOMPARE(w.Karten().value(1).FrageNr, 2);
    QCOMPARE(w.store.FachInfo[0].Anzahl, qint16(2));
}

void DialogeTest::DoneToNewTellsTheNumber()
{
    for (const int done : {0, 3}) {
        Werkstatt w;
        QList<CardRecord> cards{MakeCard(10, 0, 1)};
        for (int i = 1; i <= done; ++i)
            cards << MakeCard(i, 6, i);
        w.Oeffnen(cards);
        ErlNull dialog(w.oeffner, w.Alle());
        Hand(dialog).Zeigen();
        QTest::keyClick(&dialog, Qt::Key_Return);
        QCOMPARE(w.meldungen.Texte(), QStringList{QString::number(done) + "Karten zurückgesetzt"});
        QVERIFY(!w.meldungen.gezeigt.front().frage);
        QVERIFY(!dialog.isVisible());
        QCOMPARE(w.store.FachInfo[0].Anzahl, qint16(done + 1));
    }
}

void DialogeTest::KeysAndClicksDuringTheWorkAreNotTaken()
{
    Werkstatt w;
    w.Oeffnen({});
    MakeCardFile(w.Pfad("quelle.pzb"), {MakeCard(4, 3, 2)});
    Karteianhängen dialog(w.oeffner, w.Alle());
    Hand(dialog).Zeigen();
    Hand(dialog).Ersetze("lblDateiname", w.Pfad("quelle.pzb"));
    auto *ok = Hand(dialog).Finde<QPushButton>("cmdOK");
    bool asked = false;
    w.oeffner.BoxZeichnen = [&] { // while the file is opened again
        if (std::exchange(asked, true))
            return;
        QVERIFY(!ok->isEnabled());
        dialog.close();
        QTest::keyClick(&dialog, Qt::Key_Escape);
        QCoreApplication::postEvent(ok, new QKeyEvent(QEvent::KeyPress, Qt::Key_Space, {}, " "));
        QCoreApplication::postEvent(ok, new QKeyEvent(QEvent::KeyRelease, Qt::Key_Space, {}, " "));
        QCoreApplication::postEvent(&dialog, new QKeyEvent(QEvent::KeyPress, Qt::Key_Return, {}));
        QCoreApplication::postEvent(&dialog, new QKeyEvent(QEvent::KeyPress, Qt::Key_Escape, {}));
    };
    Hand(dialog).Klick("cmdOK");
    QVERIFY(asked);
    QCoreApplication::processEvents();
    QVERIFY(dialog.isVisible());
    QVERIFY(Hand(dialog).Finde<QLineEdit>("lblDateiname")->isEnabled());
    QCOMPARE(w.store.FachInfo[0].Anzahl, qint16(1));
}

void DialogeTest::LongWorkShowsItsProgress()
{
    Werkstatt w;
    w.Oeffnen({});
    QByteArray lines;
    for (int i = 0; i < 1000; ++i)
        lines += "a\tb\r\n";
    w.Schreiben("quelle.txt", lines);
    AImport dialog(w.oeffner, w.Alle());
    Hand(dialog).Zeigen();
    Hand(dialog).Ersetze("lblDateiname", "quelle.txt");
    const auto *progress = Hand(dialog).Finde<QProgressBar>("Fortschritt");
    QVERIFY(!progress->isVisible());
    // As if the work took long: it begins with a second of waiting.
    w.meldungen.beiSanduhr = [] {
        QElapsedTimer timer;
        timer.start();
        while (!timer.hasExpired(400)) {
        }
    };
    bool shown = false;
    w.oeffner.BoxZeichnen = [&] { // when all is done
        shown = progress->isVisible();
        QVERIFY(progress->value() > 0);
        QVERIFY(progress->value() <= progress->maximum());
    };
    Hand(dialog).Klick("cmdOK");
    QVERIFY(shown);
    QVERIFY(!progress->isVisible());
}

PAUKFIX_TEST(DialogeTest)
#include "DialogeTest.moc"
