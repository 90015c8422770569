// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "LBoxBuehne.h"
#include "TestProgram.h"

#include <QAbstractButton>
#include <QDialog>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QTest>
#include <QTextDocumentFragment>

using namespace paukfix;

// The menu: its tree letter by letter, which entries can be chosen, the settings that it changes.
class LBoxMenueTest : public QObject
{
    Q_OBJECT

private slots:

    void TheTreeStandsLetterByLetter()
    {
        LBoxBuehne b;
        b.Zeigen();
        const QList<QPair<QString, QStringList>> baum{
            {"MDatei|Datei",
             {"Mneu|neu", "Möffnen|öffnen", "MStrich|-", "MDat(1)|", "MDat(2)|", "MDat(3)|", "MDat(4)|",
              "MDat(5)|", "MS2|-", "MSicherungen|Sicherungen", "MEnde|Ende"}},
            {"MAuto|Automatik", {"MAutoschalter|einschalten"}},
            {"Mändern|ändern",
             {"MKarten|Karten ", "MS3|-", "MSchriftart|StandardSchriftart", "MS4|-",
              "MZurücknehmen|nichts zurückzunehmen", "MWiederholen|nichts zu wiederholen"}},
            {"Mübersicht|Übersicht", {"Manzeigen|anzeigen"}},
            {"MExtras|Extras",
             {"MAscii_Export|ASCII Export", "MAscii_Import|ASCII Import", "Mstrich2|-",
              "MThema_ausfiltern|Thema ausfiltern", "MKartei_anhängen|Kartei anhängen",
              "MKartei_spiegeln|Kartei spiegeln", "MAlleNeu|Alle Karten nach Neu",
              "MErledigtNeu|erledigte Karten nach Neu ", "MKartei_packen|Kartei packen",
              "MFremdeKartei|Fremde Kartei einlesen", "MKartei_ausgeben|Kartei ausgeben", "MStrich3|-",
              "MAnimation|Animation", "MStrich5|-", "MStatistik|Statistik anzeigen", "Mstrich4|-",
              "MVerlauf|Verlauf"}},
            {"Minfo|Info", {"MHandbuch|Handbuch", "MTasten|Alle Tasten", "MStrich6|-", "Müber|über Paukfix"}},
        };
        QList<QPair<QString, QStringList>> gefunden;
        for (const QAction *menue : b.fenster->menuBar()->actions()) {
            QStringList eintraege;
            for (const QAction *eintrag : menue->menu()->actions())
                eintraege << eintrag->objectName() + '|' +
                                 (eintrag->isSeparator() ? "-" : eintrag->text().remove('&'));
            gefunden.append({menue->objectName() + '|' + menue->text().remove('&'), eintraege});
        }
        QCOMPARE(gefunden, baum);
        QCOMPARE(b.fenster->windowTitle(), QString("Lern-Box"));
    }

    void EntriesWithoutTheirWindowAreDisabled()
    {
        LBoxBuehne b;
        b.Zeigen();
        const QStringList fremde{
            "MKarten",          "Manzeigen",        "MAscii_Export", "MAscii_Import", "MThema_ausfiltern",
            "MKartei_anhängen", "MKartei_spiegeln", "MAlleNeu",      "MErledigtNeu",  "MKartei_packen",
            "MStatistik",       "MVerlauf",         "MHandbuch",     "MTasten",       "Müber"};
        for (const QString &name : fremde)
            QVERIFY2(!b.Menue(name)->isEnabled(), qPrintable(name));
        for (const QString name : {"Mneu", "Möffnen", "MEnde", "MAutoschalter", "MSchriftart", "MAnimation"})
            QVERIFY2(b.Menue(name)->isEnabled(), qPrintable(name));

        int geoeffnet = 0;
        const auto oeffnen = [&] { ++geoeffnet; };
        b.fenster->SetFenster({oeffnen, oeffnen, oeffnen, oeffnen, oeffnen, oeffnen, oeffnen, oeffnen,
                               oeffnen, oeffnen, oeffnen, oeffnen, oeffnen, oeffnen, oeffnen, oeffnen,
                               oeffnen, oeffnen, nullptr, nullptr, nullptr, nullptr});
        for (const QString &name : fremde)
            QVERIFY2(b.Menue(name)->isEnabled(), qPrintable(name));
    }

    void EntriesThatNeedAFileSayThatNoneIsOpen()
    {
        LBoxBuehne b;
        int geoeffnet = 0;
        const auto oeffnen = [&] { ++geoeffnet; };
        b.Zeigen({}, {oeffnen, oeffnen, oeffnen, oeffnen, oeffnen, oeffnen, oeffnen, oeffnen,
                      oeffnen, oeffnen, oeffnen, oeffnen, oeffnen, oeffnen, oeffnen, oeffnen,
                      oeffnen, oeffnen, nullptr, nullptr, nullptr, nullptr});
        for (const QString name : {"MSicherungen", "MKarten", "MAscii_Export", "MAscii_Import",
                                   "MThema_ausfiltern", "MKartei_anhängen", "MKartei_spiegeln", "MAlleNeu",
                                   "MErledigtNeu", "MKartei_packen", "MKartei_ausgeben", "MVerlauf"}) {
            b.meldungen.gezeigt.clear();
            b.Menue(name)->trigger();
            QCOMPARE(b.meldungen.Texte(), QStringList{"Bitte erst eine Datei öffnen"});
            QCOMPARE(b.meldungen.gezeigt[0].titel, QString("Merkkasten"));
            QCOMPARE(geoeffnet, 0);
            QCOMPARE(b.kartei.FehlerStatus, Fehler::NichtsOffen);
        }
        // These check by themselves, or need none.
        for (const QString name :
             {"Manzeigen", "MFremdeKartei", "MStatistik", "MHandbuch", "MTasten", "Müber"})
            b.Menue(name)->trigger();
        QCOMPARE(geoeffnet, 6);
    }

    void EntriesOpenTheirWindowOnAnOpenFile()
    {
        LBoxBuehne b;
        b.OeffnenMit({1});
        QStringList geoeffnet;
        LBoxFenster offen;
        offen.MAscii_Export = [&] { geoeffnet << "Export"; };
        offen.MAlleNeu = [&] {
            geoeffnet << "AlleNeu";
            b.Fuellen(3, 250); // as a tool that moves cards would
        };
        b.fenster->SetFenster(offen);
        b.Menue("MAscii_Export")->trigger();
        b.Menue("MAlleNeu")->trigger();
        QCOMPARE(geoeffnet, (QStringList{"Export", "AlleNeu"}));
        QCOMPARE(b.meldungen.Texte(), QStringList());
        QVERIFY(b.Balken(3)->isVisible());
        QCOMPARE(b.fenster->VollstesFach(), 3);
    }

    void TheGuardClearsFehlerStatusOnAReadableFile()
    {
        LBoxBuehne b;
        b.OeffnenMit({1});
        b.kartei.FehlerStatus = 1;
        QVERIFY(b.fenster->Aktionen().DateiOffenPruefen());
        QCOMPARE(b.kartei.FehlerStatus, 0);
        b.kartei.CloseCardFile();
        QVERIFY(!b.fenster->Aktionen().DateiOffenPruefen());
        QVERIFY(b.kartei.FehlerStatus > 0);
    }

    void AnimationFollowsTheConfigurationAndIsStored()
    {
        LBoxBuehne b;
        b.KonfigSchreiben({}, "False");
        b.Zeigen();
        QAction *animation = b.Menue("MAnimation");
        QVERIFY(!animation->isChecked());
        animation->trigger();
        QVERIFY(animation->isChecked());
        QVERIFY(b.KonfigText().contains("[Animation]\r\nAnimation=True\r\n"));
        animation->trigger();
        QVERIFY(!animation->isChecked());
        QVERIFY(b.KonfigText().contains("[Animation]\r\nAnimation=False\r\n"));
        QCOMPARE(b.meldungen.Texte(), QStringList());
    }

    void AnimationThatCannotBeStoredHoldsForThisRun()
    {
        LBoxBuehne b;
        b.Zeigen();
        QVERIFY(QFile::remove(b.programm.filePath("konfig.dat")));
        b.Menue("MAnimation")->trigger();
        QVERIFY(b.Menue("MAnimation")->isChecked());
        QCOMPARE(b.meldungen.Texte(),
                 QStringList("Die Einstellung konnte nicht gespeichert werden: Datei nicht gefunden: " +
                             b.programm.filePath("konfig.dat")));
    }

    void TheStandardFontIsOfferedAndStored()
    {
        LBoxBuehne b;
        b.Zeigen();
        QFont font("DejaVu Serif");
        font.setPointSizeF(14);
        font.setBold(true);
        font.setUnderline(true);
        b.dialoge.schrift = Schriftwahl{font, QColor(10, 20, 30)};
        b.Menue("MSchriftart")->trigger();
        QCOMPARE(b.dialoge.schriftVorgabe->font.family(), QString("Arial"));
        QCOMPARE(b.dialoge.schriftVorgabe->font.pointSizeF(), 12.0);
        QCOMPARE(b.konfig.schrift.FontName, QString("DejaVu Serif"));
        QCOMPARE(b.konfig.schrift.Color, 10 + 20 * 256 + 30 * 65536);
        QVERIFY(b.KonfigText().contains(
            "FontName=DejaVu Serif\r\nFontSize=14\r\nFontBold=True\r\nFontItalic=False\r\n"
            "FontStrikethru=False\r\nFontUnderline=True\r\nColor=1971210\r\n"));
    }

    void AFontThatCannotBeStoredHoldsForThisRun()
    {
        LBoxBuehne b;
        b.Zeigen();
        QVERIFY(QFile::remove(b.programm.filePath("konfig.dat")));
        b.dialoge.schrift = Schriftwahl{QFont("DejaVu Serif", 14), QColor(10, 20, 30)};
        b.Menue("MSchriftart")->trigger();
        QCOMPARE(b.meldungen.Texte(),
                 QStringList("Die Schriftart konnte nicht gespeichert werden: Datei nicht gefunden: " +
                             b.programm.filePath("konfig.dat")));
        QCOMPARE(b.konfig.schrift.FontName, QString("DejaVu Serif"));
    }

    void ACancelledFontDialogChangesNothing()
    {
        LBoxBuehne b;
        b.Zeigen();
        const QString vorher = b.KonfigText();
        b.Menue("MSchriftart")->trigger();
        QCOMPARE(b.KonfigText(), vorher);
        QCOMPARE(b.konfig.schrift.FontName, QString("Arial"));
    }

    void TheSeparatorIsVisibleOnlyWithRecentFiles()
    {
        LBoxBuehne b;
        b.Zeigen();
        QVERIFY(!b.Menue("MStrich")->isVisible());
        for (int i = 1; i <= 5; ++i)
            QVERIFY(!b.Menue(QString("MDat(%1)").arg(i))->isVisible());
    }

    void RecentFilesAreShownInOrder()
    {
        LBoxBuehne b;
        b.KonfigSchreiben({"/x/eins.pzb", "/x/zwei.pzb"}, "False");
        b.Zeigen();
        QVERIFY(b.Menue("MStrich")->isVisible());
        QCOMPARE(b.Menue("MDat(1)")->text(), QString("/x/eins.pzb"));
        QCOMPARE(b.Menue("MDat(2)")->text(), QString("/x/zwei.pzb"));
        QVERIFY(b.Menue("MDat(2)")->isVisible());
        QVERIFY(!b.Menue("MDat(3)")->isVisible());
    }

    // The name is whole, the directories are elided in the middle; the tip tells all, and all is opened.
    void ALongRecentFileIsElidedInTheMiddle()
    {
        LBoxBuehne b;
        const QString ordner = b.ordner.filePath(QString("Unterlagen/").repeated(20));
        const QString pfad = ordner + "Wörter & Wendungen <neu>.pzb";
        QVERIFY(QDir().mkpath(ordner));
        MakeCardFile(pfad, {MakeCard(1, 0, 1)});
        b.KonfigSchreiben({pfad, "/x/" + QString(200, 'n') + ".pzb"}, "False");
        b.Zeigen();
        const QAction *eintrag = b.Menue("MDat(1)");
        const QString text = eintrag->text();
        QVERIFY2(text.startsWith(pfad.left(10)), qPrintable(text));
        QVERIFY2(text.endsWith("/Wörter && Wendungen <neu>.pzb"), qPrintable(text));
        QCOMPARE(text.count(u'…'), 1);
        QVERIFY(b.fenster->fontMetrics().horizontalAdvance(text) <
                b.fenster->fontMetrics().averageCharWidth() * 80);
        QVERIFY(b.Finde<QMenu>("MDatei")->toolTipsVisible());
        QCOMPARE(QTextDocumentFragment::fromHtml(eintrag->toolTip()).toPlainText(), pfad);
        // A name that is wider than the screen cannot be whole.
        QVERIFY(b.fenster->fontMetrics().horizontalAdvance(b.Menue("MDat(2)")->text()) <
                b.fenster->screen()->availableSize().width());
        b.Menue("MDat(1)")->trigger();
        QCOMPARE(b.meldungen.Texte(), QStringList());
        QCOMPARE(b.kartei.CurrentFileName, "Wörter & Wendungen <neu>.pzb");
    }

    // It is an entry of the file, but there is nothing to open.
    void AnEmptyLineOfTheListIsNotShown()
    {
        LBoxBuehne b;
        b.KonfigSchreiben({"", "/x/zwei.pzb"}, "False");
        b.Zeigen();
        QCOMPARE(b.meldungen.Texte(), QStringList());
        QVERIFY(b.Menue("MStrich")->isVisible());
        QVERIFY(!b.Menue("MDat(1)")->isVisible());
        QCOMPARE(b.Menue("MDat(2)")->text(), QString("/x/zwei.pzb"));
        QVERIFY(b.Menue("MDat(2)")->isVisible());
    }

    void EndeClosesTheWindow()
    {
        LBoxBuehne b;
        b.Zeigen();
        b.Menue("MEnde")->trigger();
        QVERIFY(!b.fenster->isVisible());
    }

    void AnotherWindowCanKeepTheProgramOpen()
    {
        LBoxBuehne b;
        bool darf = false;
        LBoxFenster offen;
        offen.DarfSchliessen = [&] { return darf; };
        b.Zeigen({}, offen);
        b.Menue("MEnde")->trigger();
        QVERIFY(b.fenster->isVisible());
        darf = true;
        b.Menue("MEnde")->trigger();
        QVERIFY(!b.fenster->isVisible());
    }

    // As a screen reader or the desktop's own menu would do it.
    void AnEntryIsRefusedWhileACardIsAsked()
    {
        LBoxBuehne b;
        b.OeffnenMit({1});
        MakeCardFile(b.Pfad("b.pzb"), {});
        b.dialoge.pfade = {b.Pfad("b.pzb")};
        const bool animation = b.Menue("MAnimation")->isChecked();
        b.NaechsteAbfrage([&](QWidget *) {
            for (const char *name : {"Möffnen", "MEnde", "MAnimation", "MAutoschalter"})
                b.Menue(name)->trigger();
        });
        b.Taste(Qt::Key_N);
        QVERIFY(b.fenster->isVisible());
        QCOMPARE(b.kartei.CurrentFileName, QString("a.pzb"));
        QCOMPARE(b.Menue("MAnimation")->isChecked(), animation);
        QVERIFY(!b.Menue("MAutoschalter")->isChecked());
        b.Menue("Möffnen")->trigger();
        QCOMPARE(b.kartei.CurrentFileName, QString("b.pzb"));
    }

    // A screen reader presses what the mouse cannot reach.
    void TheBoxIsNotPressedBehindADialog()
    {
        LBoxBuehne b;
        b.OeffnenMit({1});
        QDialog dialog(b.fenster.get());
        dialog.setModal(true);
        dialog.show();
        for (const char *name : {"Image0(0)", "PicWürfel"})
            b.Finde<QAbstractButton>(name)->click();
        QCOMPARE(QApplication::activeModalWidget(), &dialog);
        dialog.close();
        b.NaechsteAbfrage([](QWidget *) {});
        b.Finde<QAbstractButton>("Image0(0)")->click();
        QCOMPARE(b.gefragt.size(), 1);
    }

    void TheMenuIsReachedByKeyboard()
    {
        LBoxBuehne b;
        b.OeffnenMit({1});
        MakeCardFile(b.Pfad("b.pzb"), {});
        b.dialoge.pfade = {b.Pfad("b.pzb")};
        b.Taste(Qt::Key_O, Qt::ControlModifier);
        QCOMPARE(b.kartei.CurrentFileName, QString("b.pzb"));
    }
};

PAUKFIX_TEST(LBoxMenueTest)
#include "LBoxMenueTest.moc"
