// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AExport.h"
#include "Drehbuch.h"
#include "Karteispiegeln.h"
#include "TestProgram.h"
#include "Themaausfiltern.h"
#include "Werkstatt.h"

#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <SQLiteCpp/Database.h>

#include <memory>

using namespace paukfix;

// The file that a tool is to make: what stands there already is replaced only when the user wants it.
class ZielTest : public QObject
{
    Q_OBJECT

private slots:
    void TypedFileIsReplacedOnlyAfterYes_data();
    void TypedFileIsReplacedOnlyAfterYes();
    void FileChosenInTheSaveDialogIsNotAskedForAgain_data();
    void FileChosenInTheSaveDialogIsNotAskedForAgain();
    void OtherFileThanTheChosenOneIsAskedFor();
    void SaveDialogAsksBeforeItNamesAnExistingFile_data();
    void SaveDialogAsksBeforeItNamesAnExistingFile();
    void FileInUseIsRefusedWithoutAQuestion_data();
    void FileInUseIsRefusedWithoutAQuestion();
    void DirectoryIsRefusedAsSuch_data();
    void DirectoryIsRefusedAsSuch();
    void AForeignFileIsNotTouchedBeforeTheQuestion_data();
    void AForeignFileIsNotTouchedBeforeTheQuestion();
    void TypedCardFileGetsItsExtension_data();
    void TypedCardFileGetsItsExtension();
    void NameWithAnotherExtensionIsRefused();
};

namespace {

std::unique_ptr<Werkzeugfenster> Dialog(KarteiOeffner &oeffner, const Dienste &dienste, const QString &name)
{
    if (name == "AExport")
        return std::make_unique<AExport>(oeffner, dienste);
    if (name == "Themaausfiltern")
        return std::make_unique<Themaausfiltern>(oeffner, dienste);
    return std::make_unique<Karteispiegeln>(oeffner, dienste);
}

void AllDialogs()
{
    QTest::addColumn<QString>("name");
    for (const char *name : {"AExport", "Themaausfiltern", "Karteispiegeln"})
        QTest::newRow(name) << QString(name);
}

// A box with one card, and another card file beside it.
struct ZweiKarteien : Werkstatt
{
    ZweiKarteien()
    {
        MakeCardFile(Pfad("da.pzb"), {MakeCard(99, 0, 1)});
        Oeffnen({MakeCard(1, 0, 1)});
        vorher = Bytes("da.pzb");
    }

    QByteArray vorher; // what stands in "da.pzb"
};

void Enter(QWidget &dialog)
{
    Hand(dialog).Taste("lblDateiname", Qt::Key_Return);
}

} // namespace

void ZielTest::TypedFileIsReplacedOnlyAfterYes_data()
{
    AllDialogs();
}

void ZielTest::TypedFileIsReplacedOnlyAfterYes()
{
    QFETCH(QString, name);
    ZweiKarteien w;
    const auto dialog = Dialog(w.oeffner, w.Alle(), name);
    Hand(*dialog).Zeigen();
    Hand(*dialog).Ersetze("lblDateiname", "da.pzb");
    w.meldungen.antworten = {Meldungen::Antwort::Nein, Meldungen::Antwort::Ja};
    Enter(*dialog);
    QCOMPARE(w.meldungen.Texte(), QStringList{"Die Datei „da.pzb“ gibt es schon: Soll sie ersetzt werden?"});
    QVERIFY(w.meldungen.gezeigt.front().frage);
    QCOMPARE(w.meldungen.vorgaben, QList{Meldungen::Antwort::Nein});
    QVERIFY(dialog->isVisible());
    QCOMPARE(w.Bytes("da.pzb"), w.vorher);
    QCOMPARE(w.store.CurrentFileName, "offen.pzb");
    QVERIFY(w.store.IsOpen());
    Enter(*dialog);
    QCOMPARE(w.meldungen.Texte().last(), "da.pzb erfolgreich geschrieben");
    QVERIFY(!dialog->isVisible());
    QVERIFY(w.Bytes("da.pzb") != w.vorher);
}

void ZielTest::FileChosenInTheSaveDialogIsNotAskedForAgain_data()
{
    AllDialogs();
}

void ZielTest::FileChosenInTheSaveDialogIsNotAskedForAgain()
{
    QFETCH(QString, name);
    ZweiKarteien w;
    const auto dialog = Dialog(w.oeffner, w.Alle(), name);
    Hand(*dialog).Zeigen();
    w.dialoge.pfade = {w.Pfad("da.pzb")};
    Hand(*dialog).Klick("cmdDateiname");
    QVERIFY(w.dialoge.zumSpeichern.value(0).ueberschreibenFragen);
    Enter(*dialog);
    QCOMPARE(w.meldungen.Texte(), QStringList{w.Pfad("da.pzb") + " erfolgreich geschrieben"});
    QVERIFY(w.Bytes("da.pzb") != w.vorher);
}

void ZielTest::OtherFileThanTheChosenOneIsAskedFor()
{
    ZweiKarteien w;
    Karteispiegeln dialog(w.oeffner, w.Alle());
    Hand(dialog).Zeigen();
    w.dialoge.pfade = {w.Pfad("neu.pzb")};
    Hand(dialog).Klick("cmdDateiname");
    Hand(dialog).Ersetze("lblDateiname", w.Pfad("da.pzb"));
    Enter(dialog);
    QVERIFY(w.meldungen.gezeigt.value(0).frage);
    QVERIFY(dialog.isVisible());
    QCOMPARE(w.Bytes("da.pzb"), w.vorher);
}

void ZielTest::SaveDialogAsksBeforeItNamesAnExistingFile_data()
{
    AllDialogs();
}

void ZielTest::SaveDialogAsksBeforeItNamesAnExistingFile()
{
    QFETCH(QString, name);
    ZweiKarteien w;
    DialogeFenster dialoge;
    const auto dialog = Dialog(w.oeffner, {w.meldungen, dialoge, w.clock, w.zufall, w.ton, w.konfig}, name);
    Hand(*dialog).Zeigen();
    int asked = 0;
    const auto write = Drehbuch::In<QFileDialog>([](QFileDialog &window) {
        Hand(window).Ersetze("fileNameEdit", "da.pzb");
        Hand(window).Taste(Qt::Key_Return);
    });
    const auto answer = [&](QMessageBox::StandardButton button) {
        return Drehbuch::In<QMessageBox>([&, button](QMessageBox &box) {
            asked += box.text().contains("da.pzb");
            Hand::Klick(box.button(button));
        });
    };
    // After No the dialog is still there.
    const Drehbuch buch({write, answer(QMessageBox::No), write, answer(QMessageBox::Yes)});
    Hand(*dialog).Klick("cmdDateiname");
    QVERIFY(buch.Fertig());
    QCOMPARE(asked, 2);
    QCOMPARE(Hand(*dialog).Text("lblDateiname"), w.Pfad("da.pzb"));
    QCOMPARE(w.Bytes("da.pzb"), w.vorher);
    Enter(*dialog);
    QCOMPARE(w.meldungen.Texte(), QStringList{w.Pfad("da.pzb") + " erfolgreich geschrieben"});
}

void ZielTest::FileInUseIsRefusedWithoutAQuestion_data()
{
    AllDialogs();
}

void ZielTest::FileInUseIsRefusedWithoutAQuestion()
{
    QFETCH(QString, name);
    ZweiKarteien w;
    const auto dialog = Dialog(w.oeffner, w.Alle(), name);
    Hand(*dialog).Zeigen();
    Hand(*dialog).Ersetze("lblDateiname", "da.pzb");
    {
        const CardFile otherProgram(w.Pfad("da.pzb"));
        Enter(*dialog);
    }
    QVERIFY(MeldetFehler(w.meldungen));
    QVERIFY(w.meldungen.Texte().front().contains("ist gesperrt"));
    QVERIFY(w.meldungen.vorgaben.isEmpty());
    QVERIFY(dialog->isVisible());
    QCOMPARE(w.Bytes("da.pzb"), w.vorher);
}

void ZielTest::DirectoryIsRefusedAsSuch_data()
{
    AllDialogs();
}

void ZielTest::DirectoryIsRefusedAsSuch()
{
    QFETCH(QString, name);
    ZweiKarteien w;
    QVERIFY(QDir(w.verzeichnis.path()).mkdir("ordner.pzb"));
    const auto dialog = Dialog(w.oeffner, w.Alle(), name);
    Hand(*dialog).Zeigen();
    Hand(*dialog).Ersetze("lblDateiname", w.Pfad("ordner.pzb"));
    Hand(*dialog).Klick("cmdOK");
    QCOMPARE(w.meldungen.Texte(),
             QStringList{"Leider ist folgender Fehler Aufgetreten: „" + w.Pfad("ordner.pzb") +
                         "“ ist ein Ordner. Bitte auch den Namen der Datei angeben."});
    QVERIFY(dialog->isVisible());
    QVERIFY(QDir(w.Pfad("ordner.pzb")).isEmpty());
}

void ZielTest::AForeignFileIsNotTouchedBeforeTheQuestion_data()
{
    AllDialogs();
}

// The engine would bring a database out of another mode, and roll the journal beside it into it.
void ZielTest::AForeignFileIsNotTouchedBeforeTheQuestion()
{
    QFETCH(QString, name);
    ZweiKarteien w;
    QFile::remove(w.Pfad("da.pzb"));
    SQLite::Database(w.Pfad("da.pzb").toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE)
        .exec("PRAGMA journal_mode=WAL; CREATE TABLE Fremdes(a)");
    QFile journal(w.Pfad("da.pzb-journal"));
    QVERIFY(journal.open(QIODevice::WriteOnly) && journal.write("fremd") == 5);
    journal.close();
    const QByteArray before = w.Bytes("da.pzb");
    const QStringList files = QDir(QFileInfo(w.Pfad("da.pzb")).path()).entryList(QDir::Files | QDir::Hidden);
    const auto dialog = Dialog(w.oeffner, w.Alle(), name);
    Hand(*dialog).Zeigen();
    Hand(*dialog).Ersetze("lblDateiname", "da.pzb");
    w.meldungen.antworten = {Meldungen::Antwort::Nein};
    Enter(*dialog);
    QVERIFY(w.meldungen.gezeigt.value(0).frage);
    QCOMPARE(w.Bytes("da.pzb"), before);
    QCOMPARE(w.Bytes("da.pzb-journal"), QByteArray("fremd"));
    QCOMPARE(QDir(QFileInfo(w.Pfad("da.pzb")).path()).entryList(QDir::Files | QDir::Hidden), files);
}

void ZielTest::TypedCardFileGetsItsExtension_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("typed");
    QTest::newRow("filter") << "Themaausfiltern"
                            << "neu";
    QTest::newRow("mirror") << "Karteispiegeln"
                            << "neu";
    QTest::newRow("directory with a dot") << "Karteispiegeln"
                                          << "Kap.1/neu";
}

void ZielTest::TypedCardFileGetsItsExtension()
{
    QFETCH(QString, name);
    QFETCH(QString, typed);
    ZweiKarteien w;
    QVERIFY(QDir(w.verzeichnis.path()).mkdir("Kap.1"));
    const auto dialog = Dialog(w.oeffner, w.Alle(), name);
    Hand(*dialog).Zeigen();
    Hand(*dialog).Ersetze("lblDateiname", typed);
    Enter(*dialog);
    QCOMPARE(w.meldungen.Texte(), QStringList{typed + ".pzb erfolgreich geschrieben"});
    QCOMPARE(w.store.CurrentFileName, "neu.pzb");
    QVERIFY(QFile::exists(w.Pfad(typed + ".pzb")));
}

void ZielTest::NameWithAnotherExtensionIsRefused()
{
    ZweiKarteien w;
    Karteispiegeln dialog(w.oeffner, w.Alle());
    Hand(dialog).Zeigen();
    for (const char *typed : {"neu.txt", "neu.", "ordner/"}) {
        w.meldungen.gezeigt.clear();
        Hand(dialog).Ersetze("lblDateiname", typed);
        Enter(dialog);
        QCOMPARE(w.meldungen.Texte(), QStringList{"Bitte nur .pzb Dateien"});
        QVERIFY(dialog.isVisible());
    }
    QCOMPARE(w.Dateien(), (QStringList{"da.pzb", "offen.pzb"}));
}

PAUKFIX_TEST(ZielTest)
#include "ZielTest.moc"
