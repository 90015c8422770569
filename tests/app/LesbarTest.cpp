// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Lesbarkeit.h"
#include "ProgrammBuehne.h"
#include "TestProgram.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QPushButton>
#include <QTextEdit>

using namespace paukfix;

// Whether what the dialogs of the program show can be read, and where one can write or press be seen:
// measured in their pictures, on a light and on a dark desktop.
class LesbarTest : public ProgrammBuehne
{
    Q_OBJECT

private:
    // What has an outline of its own to be found by.
    static bool HatUmriss(const QWidget *teil)
    {
        const auto *zeile = qobject_cast<const QLineEdit *>(teil);
        if (zeile)
            return zeile->hasFrame() && !qobject_cast<const QComboBox *>(zeile->parentWidget());
        const auto *feld = qobject_cast<const QAbstractScrollArea *>(teil);
        if (feld)
            return feld->frameShape() != QFrame::NoFrame &&
                   (qobject_cast<const QAbstractItemView *>(feld) || qobject_cast<const QTextEdit *>(feld));
        return qobject_cast<const QPushButton *>(teil) || qobject_cast<const QComboBox *>(teil);
    }

    static QStringList Verschwommen(QWidget &fenster, int &gesehen)
    {
        QStringList verschwommen;
        const QImage bild = fenster.grab().toImage();
        for (const QWidget *teil : fenster.findChildren<QWidget *>()) {
            if (!HatUmriss(teil) || !teil->isVisible() || !teil->isEnabled() ||
                teil->visibleRegion().isEmpty())
                continue;
            ++gesehen;
            const double kontrast = Umriss(bild, Auf(&fenster, teil));
            if (kontrast < Farben::KontrastUmriss)
                verschwommen << QString("outline of %1 %2").arg(teil->objectName()).arg(kontrast);
        }
        return verschwommen;
    }

    // A tool at work shows but a part, and stays open.
    static bool IstAmWerk(const QWidget &fenster)
    {
        const auto *zurueck = fenster.findChild<QPushButton *>("cmdZurück");
        return zurueck && !zurueck->isEnabled();
    }

    Drehbuch::Szene Ansehen(const QString &name)
    {
        return [this, name] {
            QWidget *fenster = Hand::Bereit(name);
            if (!fenster || IstAmWerk(*fenster))
                return false;
            QCoreApplication::processEvents();
            int texte = 0, umrisse = 0;
            maengel_ = Unlesbar(*fenster, texte) + Verschwommen(*fenster, umrisse);
            if (texte < 1 || umrisse < 1)
                maengel_ << QString("%1 texts and %2 outlines are seen").arg(texte).arg(umrisse);
            fenster->close();
            return true;
        };
    }

    QStringList maengel_;

private slots:

    void initTestCase()
    {
        QApplication::setCursorFlashTime(0);
        Aufstellen();
        Konfig("False");
        OeffnenMitZweiDateien();
    }

    void cleanupTestCase() { Abraeumen(); }

    void EveryDialogIsReadable_data()
    {
        QTest::addColumn<bool>("dunkel");
        QTest::addColumn<QString>("eintrag");
        QTest::addColumn<QString>("name");
        for (const bool dunkel : {false, true})
            for (const auto &[eintrag, name] :
                 Dateiwerkzeuge + Nachschau +
                     QList<Menuefenster>{{"MSchriftart", "Schriftdialog"}, {"MHandbuch", "Handbuch"}})
                QTest::addRow("%s %s", name, dunkel ? "dark" : "light")
                    << dunkel << QString(eintrag) << QString(name);
    }

    void EveryDialogIsReadable()
    {
        QFETCH(bool, dunkel);
        QFETCH(QString, eintrag);
        QFETCH(QString, name);
        const Schreibtisch schreibtisch(dunkel);
        const Drehbuch buch({Ansehen(name)});
        Waehlen(eintrag);
        QTRY_VERIFY(buch.Fertig());
        QCOMPARE(maengel_.join('\n'), QString());
    }

    // With a file that it can read, and its question what is to become of the cards that are there.
    void ADeckThatIsLookedAtIsReadable_data()
    {
        QTest::addColumn<bool>("dunkel");
        QTest::newRow("light") << false;
        QTest::newRow("dark") << true;
    }

    void ADeckThatIsLookedAtIsReadable()
    {
        QFETCH(bool, dunkel);
        const Schreibtisch schreibtisch(dunkel);
        QFile deck(Pfad("deck.kvtml"));
        QVERIFY(deck.open(QIODevice::WriteOnly));
        deck.write(R"(<kvtml version="2.0"><information><title>Obst</title></information><identifiers>
            <identifier id="0"><name>Deutsch</name></identifier><identifier id="1"><name>Englisch</name></identifier>
            </identifiers><entries><entry id="0"><translation id="0"><text>der Apfel</text><comment>Obst</comment>
            </translation><translation id="1"><text>apple</text></translation></entry></entries></kvtml>)");
        deck.close();
        const Drehbuch buch({Schreiben("FremdeKartei", Pfad("deck.kvtml")),
                             Taste("FremdeKartei", Qt::Key_Tab), Ansehen("FremdeKartei")});
        Waehlen("MFremdeKartei");
        QVERIFY(buch.Fertig());
        QCOMPARE(maengel_.join('\n'), QString());
    }
};

PAUKFIX_TEST(LesbarTest)
#include "LesbarTest.moc"
