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

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

#include <memory>

using namespace paukfix;
using namespace Qt::StringLiterals;

// The texts of the dialogs letter by letter, and their keyboard.
class DialogTexteTest : public QObject
{
    Q_OBJECT

private slots:
    void TextsStandLetterByLetter_data();
    void TextsStandLetterByLetter();
    void FieldsHaveTheirTipsAndContents();
    void EveryDialogWorksWithKeysAlone_data();
    void EveryDialogWorksWithKeysAlone();
    void TheFirstKeyGoesWhereSomethingIsMissing();
    void NoTextIsCutOff_data();
    void NoTextIsCutOff();
};

namespace {

using Maker = std::function<std::unique_ptr<Werkzeugfenster>(Werkstatt &)>;

template <class Window>
Maker Make()
{
    return [](Werkstatt &w) { return std::make_unique<Window>(w.oeffner, w.Alle()); };
}

const QList<QPair<QString, Maker>> &Dialogs()
{
    static const QList<QPair<QString, Maker>> all{
        {"AExport", Make<AExport>()},
        {"AImport", Make<AImport>()},
        {"Karteianhängen", Make<Karteianhängen>()},
        {"Themaausfiltern", Make<Themaausfiltern>()},
        {"Karteispiegeln", Make<Karteispiegeln>()},
        {"AlleNull", Make<AlleNull>()},
        {"ErlNull", Make<ErlNull>()},
    };
    return all;
}

std::unique_ptr<Werkzeugfenster> Dialog(Werkstatt &w, const QString &name)
{
    for (const auto &[known, make] : Dialogs())
        if (known == name)
            return make(w);
    return nullptr;
}

void AllDialogs()
{
    QTest::addColumn<QString>("name");
    for (const auto &[name, make] : Dialogs())
        QTest::newRow(qPrintable(name)) << name;
}

} // namespace

void DialogTexteTest::TextsStandLetterByLetter_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<QStringList>("labels");
    QTest::newRow("export")
        << "AExport"
        << "ASCII-Export"
        << QStringList{"ASCII - Export",
                       "Durch diese Funktion werden alle einfachen Fragen in eine ASCII-Datei ausgegeben "
                       "(Keine Ankreuzfragen und keine Bilder). ",
                       "Diese ASCII-Datei kann dann von anderen Programmen (z.B. MS-Excel oder "
                       "MS-Word-Serienbriefmanager) importiert werden. ",
                       "Trennzeichen:",
                       "Form:",
                       "Zeichensatz:",
                       "Dateiname:",
                       "Hinweis: Für MS-Excel sollten Sie <Tab> als Trennzeichen benutzen. "
                       "Für MS-Word Semikolon (;)."};
    QTest::newRow("import")
        << "AImport"
        << "ASCII-Import"
        << QStringList{"ASCII - Import",
                       "Durch diese Funktion werden einfache Fragen aus einer ASCII-Datei eingelesen und in "
                       "das Fach Neu der aktuellen Kartei abgelegt. ",
                       "Hierdurch können Daten aus anderen Anwendungen, z.B. MS-Excel oder MS-Access "
                       "übernommen werden.",
                       "Trennzeichen:",
                       "Form:",
                       "Zeichensatz:",
                       "Dateiname:",
                       "Hinweis: Die Datei muß folgenden Aufbau haben:",
                       "Frage  Trennzeichen   Antwort   [ Trennzeichen Thema ]"};
    QTest::newRow("append")
        << "Karteianhängen"
        << "Kartei anhängen"
        << QStringList{"Kartei anhängen",
                       "Durch diese Funtion werden die Karten aus einer anderen Datei in die aktuelle Datei "
                       "hineinkopiert. ",
                       "Anders als beim ASCII-Import werden auch Ankreuzfragen und Schriftformatierungen mit "
                       "übernommen.",
                       "Textdateien können mit dieser Funktion nicht übernommen werden. (siehe ASCII-Import)",
                       "Dateiname:"};
    QTest::newRow("filter") << "Themaausfiltern"
                            << "Thema ausfiltern"
                            << QStringList{
                                   "Thema ausfiltern",
                                   "Durch diese Funktion wird eine neue Datei erstellt. ",
                                   "Sie können auswählen, welche der vorhandenen Themen übernommen werden. ",
                                   "übernehmen:",
                                   "nicht übernehmen:",
                                   "Dateiname:",
                                   "Hinweis: Das Feld \"Thema\" können Sie beim ändern der Karten erfassen.",
                                   "Leertaste oder Eingabe: das gewählte Thema wechselt die Liste."};
    QTest::newRow("mirror")
        << "Karteispiegeln"
        << "Thema ausfiltern" // the same caption as the topic filter's
        << QStringList{"Kartei spiegeln",
                       "In der neuen Datei sind Frage und Antwort vertauscht.  ",
                       "(Ankreuzfragen bleiben so wie sie sind)  ",
                       "Aus einer Vokabelsammlung Deutsch/Englisch wird so eine Vokabelsammlung "
                       "Englisch/Deutsch.",
                       "Dateiname:",
                       "Hinweis: Mit der Funktion \"Kartei anhängen\" können Sie dann eine gemischte Datei "
                       "erstellen."};
    QTest::newRow("all to new")
        << "AlleNull"
        << "Alle Karten nach Fach Neu"
        << QStringList{"Alle Karten nach Fach Neu",
                       "Durch diese Funktion werden alle Karten wieder in das Fach Neu einsortiert.",
                       "Hinweis: Diese Funktion kann n i c h t rückgängig gemacht werden !"};
    QTest::newRow("done to new")
        << "ErlNull"
        << "Erledigte Karten nach Fach Neu"
        << QStringList{"Erledigte Karten nach Fach Neu",
                       "Durch diese Funktion werden erledigte Karten wieder in das Fach Neu einsortiert.",
                       "Hinweis: Wenn eine Karte alle Fächer durchlaufen hat, dann gilt sie als erledigt."};
}

void DialogTexteTest::TextsStandLetterByLetter()
{
    QFETCH(QString, name);
    QFETCH(QString, caption);
    QFETCH(QStringList, labels);
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    const auto dialog = Dialog(w, name);
    QCOMPARE(dialog->objectName(), name);
    QCOMPARE(dialog->windowTitle(), caption);
    QVERIFY(dialog->isModal());
    QStringList shown;
    for (const QLabel *label : dialog->findChildren<QLabel *>()) {
        QCOMPARE(label->textFormat() == Qt::PlainText || label->buddy(), true);
        // What comes of the work has its place already; what it will do is counted; what is asked about a
        // file waits until there is one.
        if (!label->text().isEmpty() && label->objectName() != "Vorhaben" && label->isVisibleTo(dialog.get()))
            shown << Hand::Gezeigt(label);
    }
    QCOMPARE(shown, labels);
    QCOMPARE(Hand(*dialog).Text("cmdOK"), "OK");
    QCOMPARE(Hand(*dialog).Text("cmdZurück"), "Zurück");
}

void DialogTexteTest::FieldsHaveTheirTipsAndContents()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    for (const QString &name : {u"AExport"_s, u"AImport"_s}) {
        const auto dialog = Dialog(w, name);
        const auto *separators = Hand(*dialog).Finde<QComboBox>("cmbTrennzeichen");
        QVERIFY(separators->isEditable());
        QCOMPARE(separators->currentText(), "<Tab>");
        QCOMPARE(separators->count(), 3);
        QCOMPARE(separators->itemText(0), "#");
        QCOMPARE(separators->itemText(1), ";");
        QCOMPARE(separators->itemText(2), "<Tab>");
    }
    for (const auto &[name, make] : Dialogs()) {
        const auto dialog = make(w);
        const auto *choose = dialog->findChild<QAbstractButton *>("cmdDateiname");
        QCOMPARE(choose != nullptr, name != "AlleNull" && name != "ErlNull");
        if (!choose)
            continue;
        QCOMPARE(choose->text(), "...");
        QCOMPARE(choose->toolTip(), "Datei suchen");
        const bool makesCards = name == "Themaausfiltern" || name == "Karteispiegeln";
        QCOMPARE(Hand(*dialog).Finde<QLineEdit>("lblDateiname")->toolTip(),
                 makesCards ? "Hier bitte den Namen der zu erstellenden Datei eingeben" : "");
    }
    const auto filter = Dialog(w, "Themaausfiltern");
    QCOMPARE(Hand(*filter).Finde<QListWidget>("lstÜbernehmen")->toolTip(), "zum Wechseln das Thema klicken");
    QCOMPARE(Hand(*filter).Finde<QListWidget>("lstNübernehmen")->toolTip(), "zum Wechseln das Thema klicken");
}

void DialogTexteTest::EveryDialogWorksWithKeysAlone_data()
{
    AllDialogs();
}

void DialogTexteTest::EveryDialogWorksWithKeysAlone()
{
    QFETCH(QString, name);
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    const auto dialog = Dialog(w, name);
    CheckNames(*dialog);
    Hand(*dialog).Zeigen();
    // Tab reaches everything that can be used.
    QSet<QString> reached;
    for (int i = 0; i < 20; ++i) {
        for (const QWidget *widget = dialog->focusWidget(); widget; widget = widget->parentWidget())
            reached << widget->objectName();
        QTest::keyClick(dialog->focusWidget(), Qt::Key_Tab);
    }
    for (const char *control : {"cmbTrennzeichen", "lstÜbernehmen", "lstNübernehmen", "lblDateiname",
                                "cmdDateiname", "cmdOK", "cmdZurück"})
        if (dialog->findChild<QWidget *>(QString::fromUtf8(control)))
            QVERIFY2(reached.contains(QString::fromUtf8(control)), control);
    QVERIFY(Hand(*dialog).Finde<QPushButton>("cmdOK")->isDefault());
    QTest::keyClick(dialog.get(), Qt::Key_Escape);
    QVERIFY(!dialog->isVisible());
    Hand(*dialog).Zeigen();
    QTest::keyClick(dialog.get(), Qt::Key_Z, Qt::AltModifier);
    QTRY_VERIFY(!dialog->isVisible());
    Hand(*dialog).Zeigen();
    Hand(*dialog).Klick("cmdZurück");
    QVERIFY(!dialog->isVisible());
    QVERIFY(w.meldungen.gezeigt.isEmpty());
    QCOMPARE(w.Karten(), QList{MakeCard(1, 0, 1)});
}

void DialogTexteTest::TheFirstKeyGoesWhereSomethingIsMissing()
{
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    for (const auto &[name, make] : Dialogs()) {
        const auto dialog = make(w);
        Hand(*dialog).Zeigen();
        const QString first = dialog->focusWidget()->objectName();
        QCOMPARE(first, name == "Themaausfiltern"                 ? "lstÜbernehmen"
                        : name == "AlleNull" || name == "ErlNull" ? "cmdOK"
                                                                  : "lblDateiname");
    }
}

void DialogTexteTest::NoTextIsCutOff_data()
{
    AllDialogs();
}

void DialogTexteTest::NoTextIsCutOff()
{
    QFETCH(QString, name);
    Werkstatt w;
    w.Oeffnen({MakeCard(1, 0, 1)});
    QFont large = QApplication::font();
    const QFont before = large;
    for (const double factor : {1.0, 1.6}) {
        large.setPointSizeF(before.pointSizeF() * factor);
        QApplication::setFont(large);
        const auto dialog = Dialog(w, name);
        Hand(*dialog).Zeigen();
        for (const QLabel *label : dialog->findChildren<QLabel *>())
            QVERIFY2(!label->isVisible() || label->height() >= label->heightForWidth(label->width()),
                     qPrintable(label->text()));
    }
    QApplication::setFont(before);
}

PAUKFIX_TEST(DialogTexteTest)
#include "DialogTexteTest.moc"
