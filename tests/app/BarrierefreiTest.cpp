// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "ProgrammBuehne.h"
#include "TestProgram.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTabBar>
#include <QTextDocumentFragment>
#include <QTextEdit>

#include <algorithm>

using namespace paukfix;

// Every window of the program: what it shows in words reaches a screen reader, and whatever has the keyboard
// looks so.
class BarrierefreiTest : public ProgrammBuehne
{
    Q_OBJECT

private:
    static constexpr int Ring = 40; // pixels that change at least; a bare caret has less

    static QString Woerter(const QString &text)
    {
        return (Qt::mightBeRichText(text) ? QTextDocumentFragment::fromHtml(text).toPlainText() : text)
            .simplified();
    }

    // "..." or ">>" is no word.
    static bool IstWort(const QString &text)
    {
        return std::ranges::any_of(text, [](QChar zeichen) { return zeichen.isLetterOrNumber(); });
    }

    // All that a screen reader comes upon that walks down from here.
    static void Vorlesen(QAccessibleInterface *von, QStringList &gehoert)
    {
        constexpr int Meiste = 500;
        // A row that was scrolled away is walked to all the same.
        if (!von || !von->isValid() || (von->object() && von->state().invisible))
            return;
        for (const QAccessible::Text art : {QAccessible::Name, QAccessible::Description, QAccessible::Value})
            gehoert << von->text(art);
        if (QAccessibleTextInterface *text = von->textInterface())
            gehoert << text->text(0, text->characterCount());
        for (int i = 0; i < std::min(von->childCount(), Meiste); ++i)
            Vorlesen(von->child(i), gehoert);
    }

    // What a control shows in words, piece by piece.
    static QStringList Gezeigtes(const QWidget *teil)
    {
        if (qobject_cast<const QLabel *>(teil) || qobject_cast<const QAbstractButton *>(teil))
            return {Hand::Gezeigt(teil)};
        if (const auto *feld = qobject_cast<const QLineEdit *>(teil))
            return {feld->displayText()};
        if (const auto *wahl = qobject_cast<const QComboBox *>(teil))
            return {wahl->currentText()};
        if (const auto *gruppe = qobject_cast<const QGroupBox *>(teil))
            return {gruppe->title().remove(u'&')};
        if (qobject_cast<const QTextEdit *>(teil) || qobject_cast<const QPlainTextEdit *>(teil))
            return teil->property("plainText").toString().split(u'\n');
        QStringList texte;
        if (const auto *register_ = qobject_cast<const QTabBar *>(teil))
            for (int i = 0; i < register_->count(); ++i)
                texte << register_->tabText(i).remove(u'&');
        const auto *liste = qobject_cast<const QAbstractItemView *>(teil);
        if (liste && liste->model() && !qobject_cast<const QHeaderView *>(teil))
            for (int zeile = 0; zeile < std::min(liste->model()->rowCount(), 5); ++zeile)
                for (int spalte = 0; spalte < liste->model()->columnCount(); ++spalte)
                    texte << liste->model()->index(zeile, spalte).data().toString();
        return texte;
    }

    // Texts of the window that its screen reader does not come upon, or not at the control that shows them.
    static QStringList Stumm(QWidget &fenster)
    {
        QStringList gehoert, stumm;
        Vorlesen(QAccessible::queryAccessibleInterface(&fenster), gehoert);
        const QString alles = Woerter(gehoert.join(u'\n'));
        for (QWidget *teil : fenster.findChildren<QWidget *>()) {
            if (teil->window() != &fenster || !teil->isVisible() || teil->visibleRegion().isEmpty())
                continue;
            const bool wort = qobject_cast<QLabel *>(teil) || qobject_cast<QAbstractButton *>(teil);
            for (const QString &gezeigt : Gezeigtes(teil)) {
                const QString text = Woerter(gezeigt);
                if (!IstWort(text))
                    continue;
                if (!alles.contains(text))
                    stumm << teil->objectName() + u": "_s + text + u" is not heard"_s;
                QAccessibleInterface *leser = QAccessible::queryAccessibleInterface(teil);
                const QString gelesen =
                    leser->text(QAccessible::Name) + u' ' + leser->text(QAccessible::Description);
                if (wort && !Woerter(gelesen).contains(text))
                    stumm << teil->objectName() + u": "_s + text + u" is read as "_s + gelesen;
            }
        }
        return stumm;
    }

    // Stops of the Tab key that look as if they had no focus, the first one included.
    static QStringList OhneFokusbild(QWidget &fenster)
    {
        const Hand hand(fenster);
        QStringList blass;
        QWidgetList besucht;
        for (QWidget *stelle = hand.Fokus(); !besucht.contains(stelle); stelle = hand.Fokus()) {
            besucht << stelle;
            const QRect ort = QRect(stelle->mapTo(&fenster, QPoint()), stelle->size()).adjusted(-6, -6, 6, 6);
            const QImage mit = fenster.grab(ort).toImage();
            hand.Taste(Qt::Key_Tab);
            if (hand.Fokus() == stelle)
                break;
            const QImage ohne = fenster.grab(ort).toImage();
            int anders = 0;
            for (int y = 0; y < mit.height(); ++y)
                for (int x = 0; x < mit.width(); ++x)
                    anders += mit.pixel(x, y) != ohne.pixel(x, y);
            if (anders < Ring)
                blass << stelle->objectName() + u": "_s + QString::number(anders);
        }
        return blass;
    }

    void Pruefen(QWidget &fenster, const QString &wo = {})
    {
        QTest::qWait(0);
        for (const QString &stelle : Stumm(fenster))
            maengel_ << u"unread, "_s + fenster.objectName() + wo + u", "_s + stelle;
        for (const QString &stelle : OhneFokusbild(fenster))
            maengel_ << u"no focus seen, "_s + fenster.objectName() + wo + u", "_s + stelle;
    }

    // Looks at the window of this name once it is open, and closes it.
    Drehbuch::Szene Ansehen(const QString &name)
    {
        return Drehbuch::In(name, [this](QWidget &fenster) {
            Pruefen(fenster);
            fenster.close();
        });
    }

    void Karteien() const
    {
        CardRecord tipp = MakeCard(1, 0, 1);
        tipp.Picture_9_Name = u"Tiere"_s;
        CardRecord kreuz = MakeCard(2, 1, 1);
        kreuz.Antworttyp = 2;
        kreuz.Antwort_2 = kreuz.Antwort_2_Klartext = u"zwei"_s;
        kreuz.Antwort_ch_2 = true;
        CardRecord anderes = kreuz;
        anderes.FrageNr = 5;
        anderes.FachNr = 3;
        MakeCardFile(Pfad("a.pzb"), {tipp, kreuz, MakeCard(3, 6, 1), MakeCard(4, 2, 1), anderes});
        MakeCardFile(Pfad("b.pzb"), {MakeCard(1, 1, 1)});
    }

    QStringList maengel_;

private slots:

    void initTestCase()
    {
        QApplication::setCursorFlashTime(0);
        Aufstellen();
        Konfig("False");
        Karteien();
        MachProgramm();
        QVERIFY(programm_->Starten(BefehlszeileLesen({"paukfix", Pfad("a.pzb")})));
    }

    void init()
    {
        maengel_.clear();
        QTRY_VERIFY(Hand::Bereit("LBOX") && Kartei() == "a.pzb");
    }

    void cleanup()
    {
        if (QWidget *editor = Hand::Offen("PFÄndern"))
            editor->close();
    }

    void cleanupTestCase() { Abraeumen(); }

    void Box()
    {
        Pruefen(*Hand::Offen("LBOX"));
        QVERIFY2(maengel_.isEmpty(), qPrintable(maengel_.join(u'\n')));
    }

    void Query_data()
    {
        QTest::addColumn<Qt::Key>("fach");
        QTest::newRow("typed") << Qt::Key_N;
        QTest::newRow("ticked") << Qt::Key_1;
    }

    void Query()
    {
        QFETCH(const Qt::Key, fach);
        const Drehbuch buch({Drehbuch::In("PFUse", [this](QWidget &abfrage) {
            Pruefen(abfrage, u" asking"_s);
            Hand(abfrage).Klick("Cpruefen");
            Pruefen(abfrage, u" judged"_s);
            abfrage.close();
        })});
        Hand::An("LBOX").Taste(fach);
        QVERIFY2(maengel_.isEmpty(), qPrintable(maengel_.join(u'\n')));
    }

    // After the verdict on a ticked card its ticks and the right ones are stops of the Tab key.
    void TicksAndRightTicksAreReachedAfterTheVerdict()
    {
        QStringList stellen;
        const Drehbuch buch({Drehbuch::In("PFUse", [&](QWidget &abfrage) {
            const Hand hand(abfrage);
            hand.Klick("Cpruefen");
            while (!stellen.contains(hand.FokusName())) {
                stellen << hand.FokusName();
                hand.Taste(Qt::Key_Tab);
            }
            abfrage.close();
        })});
        Hand::An("LBOX").Taste(Qt::Key_3);
        for (const char *name : {"Check1(0)", "Check1(1)", "Check2(0)", "Check2(1)"})
            QVERIFY2(stellen.contains(name), qPrintable(stellen.join(u' ')));
    }

    void Editor()
    {
        Waehlen("MKarten");
        QTRY_VERIFY(Hand::Bereit("PFÄndern"));
        Pruefen(*Hand::Offen("PFÄndern"));
        QVERIFY2(maengel_.isEmpty(), qPrintable(maengel_.join(u'\n')));
    }

    void DialogsOfTheEditor_data()
    {
        QTest::addColumn<QString>("eintrag");
        QTest::addColumn<QString>("name");
        QTest::newRow("pictures") << "MBilder"
                                  << "Bildbearbeiten";
        QTest::newRow("sounds") << "MTon"
                                << "Soundbearbeiten";
        QTest::newRow("search") << "MSuchen"
                                << "Suchen";
    }

    void DialogsOfTheEditor()
    {
        QFETCH(const QString, eintrag);
        QFETCH(const QString, name);
        Waehlen("MKarten");
        QTRY_VERIFY(Hand::Bereit("PFÄndern"));
        const Drehbuch buch({Ansehen(name)});
        Hand::An("PFÄndern").Finde<QAction>(eintrag)->trigger();
        QVERIFY2(maengel_.isEmpty(), qPrintable(maengel_.join(u'\n')));
    }

    void DialogsOfTheBox_data()
    {
        QTest::addColumn<QString>("eintrag");
        QTest::addColumn<QString>("name");
        for (const auto &[eintrag, name] :
             Dateiwerkzeuge + Nachschau + QList<Menuefenster>{{"MHandbuch", "Handbuch"}})
            QTest::newRow(name) << QString(eintrag) << QString(name);
    }

    void DialogsOfTheBox()
    {
        QFETCH(const QString, eintrag);
        QFETCH(const QString, name);
        const Drehbuch buch({Ansehen(name)});
        Waehlen(eintrag);
        QVERIFY2(maengel_.isEmpty(), qPrintable(maengel_.join(u'\n')));
    }

    // With a file, whose cards the box has.
    void ImportOfAFile()
    {
        QFile datei(Pfad("liste.csv"));
        QVERIFY(datei.open(QIODevice::WriteOnly) && datei.write("\"a;b\";\"c\"\r\nohne\r\n") > 0);
        datei.close();
        const Drehbuch buch({Schreiben("AImport", Pfad("liste.csv")), Ansehen("AImport")});
        Waehlen("MAscii_Import");
        QVERIFY2(maengel_.isEmpty(), qPrintable(maengel_.join(u'\n')));
    }

    void FileChooser()
    {
        const Drehbuch buch({Ansehen("Datausw")});
        Hand::An("LBOX").Taste(Qt::Key_L, Qt::ControlModifier);
        QVERIFY2(maengel_.isEmpty(), qPrintable(maengel_.join(u'\n')));
    }

    void Message()
    {
        const Drehbuch buch({Taste("AExport", Qt::Key_Return),
                             Drehbuch::In<QMessageBox>([this](QMessageBox &box) {
                                 Pruefen(box);
                                 box.reject();
                             }),
                             Taste("AExport", Qt::Key_Escape)});
        Waehlen("MAscii_Export");
        QVERIFY2(maengel_.isEmpty(), qPrintable(maengel_.join(u'\n')));
    }
};

PAUKFIX_TEST(BarrierefreiTest)
#include "BarrierefreiTest.moc"
