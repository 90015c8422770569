// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "MeldungenFenster.h"

#include "Dialoge.h"
#include "Drehbuch.h"
#include "Lesbarkeit.h"
#include "TestProgram.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFontDatabase>
#include <QFontDialog>
#include <QFontInfo>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeView>

#include <algorithm>

using namespace paukfix;
using namespace Qt::StringLiterals;

// The real boxes and dialogs, looked at and answered while they are open.
class MeldungenFensterTest : public QObject
{
    Q_OBJECT

private:
    // One that does not end by itself is cancelled.
    template <typename Fenster>
    static Drehbuch Waehrend(const std::function<void(Fenster &)> &tun)
    {
        return Drehbuch({Drehbuch::In<Fenster>([tun](Fenster &fenster) {
            tun(fenster);
            if (fenster.isVisible())
                fenster.reject();
        })});
    }

    static bool HatStil(const QString &familie, bool fett, bool kursiv)
    {
        const QStringList stile = QFontDatabase::styles(familie);
        return std::any_of(stile.begin(), stile.end(), [&](const QString &stil) {
            return QFontDatabase::bold(familie, stil) == fett &&
                   QFontDatabase::italic(familie, stil) == kursiv;
        });
    }

private slots:

    void initTestCase() { QVERIFY(DeutscheTexte()); }

    void AMessageShowsItsTextAsItIsUnderTheTitleOfTheMoment()
    {
        MeldungenFenster meldungen;
        meldungen.SetTitel("Merkkasten (a.pzb)");
        bool gesehen = false;
        const Drehbuch buch = Waehrend<QMessageBox>([&](QMessageBox &box) {
            gesehen = true;
            QCOMPARE(box.windowTitle(), "Merkkasten (a.pzb)");
            QCOMPARE(box.text(), "a < b && <b>fett</b>");
            QCOMPARE(box.textFormat(), Qt::PlainText);
            QCOMPARE(box.buttons().size(), 1);
            QCOMPARE(box.buttons()[0]->text(), "OK");
            QCOMPARE(box.icon(), QMessageBox::NoIcon);
            Hand(box).Taste(Qt::Key_Return);
        });
        meldungen.Zeigen("a < b && <b>fett</b>");
        QVERIFY(gesehen);
    }

    void AChoiceIsMadeByButtonByEnterAndByClosing()
    {
        MeldungenFenster meldungen;
        const QStringList knoepfe{"&Ja, reparieren", "&Nein", "&Sicherung zurückholen"};
        const auto waehlen = [&](const std::function<void(QMessageBox &)> &tun) {
            const Drehbuch buch = Waehrend<QMessageBox>(tun);
            return meldungen.Waehlen("Was nun?", knoepfe, 1);
        };
        QCOMPARE(waehlen([](QMessageBox &box) { QTest::keyClick(&box, Qt::Key_Return); }), 0);
        QCOMPARE(waehlen([](QMessageBox &box) { QTest::keyClick(&box, Qt::Key_Escape); }), 1);
        QCOMPARE(waehlen([](QMessageBox &box) {
                     QTest::keyClick(QApplication::focusWidget(), Qt::Key_S, Qt::AltModifier);
                     QTRY_VERIFY(!box.isVisible());
                 }),
                 2);
        QCOMPARE(waehlen([](QMessageBox &box) {
                     QCOMPARE(box.buttons().size(), 3);
                     for (QAbstractButton *knopf : box.buttons())
                         if (knopf->text() == "&Sicherung zurückholen")
                             QTest::mouseClick(knopf, Qt::LeftButton);
                 }),
                 2);
    }

    void AReportIsReadInAWindowOfItsOwn()
    {
        MeldungenFenster meldungen;
        QString gelesen;
        const Drehbuch buch = Waehrend<QDialog>([&](QDialog &fenster) {
            QCOMPARE(fenster.windowTitle(), "box.Reparatur.txt");
            auto *text = fenster.findChild<QPlainTextEdit *>();
            gelesen = text->toPlainText();
            QVERIFY(text->isReadOnly());
            QTest::keyClick(text, Qt::Key_Tab);
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
            QVERIFY(!fenster.isVisible());
        });
        meldungen.Bericht("box.Reparatur.txt", "Frage 7: verloren\nFrage 8: <b>ganz</b>");
        QCOMPARE(gelesen, "Frage 7: verloren\nFrage 8: <b>ganz</b>");
    }

    void AMessageWithAnEndlessNameFitsTheScreen()
    {
        MeldungenFenster meldungen;
        QSize groesse;
        QString text;
        const Drehbuch buch = Waehrend<QMessageBox>([&](QMessageBox &box) {
            groesse = box.size();
            text = box.text();
            Hand(box).Taste(Qt::Key_Return);
        });
        meldungen.Zeigen(u"Bilddatei nicht gefunden "_s + QString(10'000'000, u'M'));
        QVERIFY(text.startsWith(u"Bilddatei nicht gefunden MMM"_s) && text.endsWith(u'…'));
        QVERIFY(text.size() < 5000);
        QVERIFY(groesse.width() <= QGuiApplication::primaryScreen()->size().width());
    }

    // Its file can be read off it whole on a small screen.
    void AMessageWithALongNameBreaksIt()
    {
        MeldungenFenster meldungen;
        const QString satz = u"Die Datei „/tmp/"_s + QString(200, u'M') + u".pzb“ ist gesperrt."_s;
        const Drehbuch buch = Waehrend<QMessageBox>([&](QMessageBox &box) {
            QCOMPARE(box.text().remove(QChar(0x200B)), satz);
            const auto *text = box.findChild<QLabel *>(u"qt_msgbox_label"_s);
            QVERIFY(text->minimumSizeHint().width() <= 600);
            QVERIFY(text->height() >= text->heightForWidth(text->width()));
            Hand(box).Taste(Qt::Key_Return);
        });
        meldungen.Zeigen(satz);
    }

    void AnExclamationHasItsIcon()
    {
        MeldungenFenster meldungen;
        QMessageBox::Icon icon = QMessageBox::NoIcon;
        const Drehbuch buch = Waehrend<QMessageBox>([&](QMessageBox &box) {
            icon = box.icon();
            Hand(box).Taste(Qt::Key_Escape);
        });
        meldungen.Zeigen("Sehr gut!", Meldungen::Symbol::Ausruf);
        QCOMPARE(icon, QMessageBox::Warning);
    }

    void TheParentIsTheActiveWindow()
    {
        QWidget fenster;
        fenster.show();
        QVERIFY(QTest::qWaitForWindowActive(&fenster));
        MeldungenFenster meldungen;
        QWidget *eltern = nullptr;
        const Drehbuch buch = Waehrend<QMessageBox>([&](QMessageBox &box) {
            eltern = box.parentWidget();
            Hand(box).Taste(Qt::Key_Return);
        });
        meldungen.Zeigen("x");
        QCOMPARE(eltern, &fenster);
    }

    void AQuestionReadsJaAndNein_data()
    {
        QTest::addColumn<Meldungen::Antwort>("vorgabe");
        QTest::addColumn<Qt::Key>("taste");
        QTest::addColumn<Meldungen::Antwort>("antwort");
        using enum Meldungen::Antwort;
        QTest::newRow("Enter takes Ja") << Ja << Qt::Key_Return << Ja;
        QTest::newRow("Enter takes Nein") << Nein << Qt::Key_Return << Nein;
        QTest::newRow("Escape is Nein") << Ja << Qt::Key_Escape << Nein;
    }

    void AQuestionReadsJaAndNein()
    {
        QFETCH(Meldungen::Antwort, vorgabe);
        QFETCH(Qt::Key, taste);
        QFETCH(Meldungen::Antwort, antwort);
        MeldungenFenster meldungen;
        const Drehbuch buch = Waehrend<QMessageBox>([&](QMessageBox &box) {
            QCOMPARE(box.icon(), QMessageBox::Question);
            QCOMPARE(box.button(QMessageBox::Yes)->text(), "&Ja");
            QCOMPARE(box.button(QMessageBox::No)->text(), "&Nein");
            Hand(box).Taste(taste);
        });
        QCOMPARE(meldungen.Fragen("Diese Karte wirklich löschen", vorgabe), antwort);
    }

    // It may come up while somebody types.
    void AQuestionThatIsBetterLeftTakesNoBareLetters()
    {
        MeldungenFenster meldungen;
        const auto fragen = [&](Meldungen::Antwort vorgabe, const std::function<void(QMessageBox &)> &tun) {
            const Drehbuch buch = Waehrend<QMessageBox>(tun);
            return meldungen.Fragen("Trotzdem ändern?", vorgabe);
        };
        using enum Meldungen::Antwort;
        const auto druecken = [](Qt::Key taste, Qt::KeyboardModifiers dazu = {}) {
            return [=](QMessageBox &box) {
                Hand(box).Taste(taste, dazu);
                QTRY_VERIFY(!box.isVisible());
            };
        };
        QCOMPARE(fragen(Ja, druecken(Qt::Key_J)), Ja);
        QCOMPARE(fragen(Nein, druecken(Qt::Key_J, Qt::AltModifier)), Ja);
        QCOMPARE(fragen(Nein,
                        [](QMessageBox &box) {
                            for (const Qt::Key taste : {Qt::Key_J, Qt::Key_N}) {
                                Hand(box).Taste(taste);
                                Hand(box).Taste(taste, Qt::ShiftModifier);
                                for (const QAbstractButton *knopf : box.buttons())
                                    QVERIFY(!knopf->isDown());
                            }
                            Hand(box).Taste(Qt::Key_Tab);
                            Hand(box).Taste(Qt::Key_Return);
                        }),
                 Ja);
        QCOMPARE(fragen(Nein, druecken(Qt::Key_Return)), Nein);
        QCOMPARE(fragen(Nein, druecken(Qt::Key_Space)), Nein);
    }

    void TheHourglassDoesNotStackAndMakesRoomForAMessage()
    {
        MeldungenFenster meldungen;
        meldungen.Sanduhr(true);
        meldungen.Sanduhr(true);
        QVERIFY(QApplication::overrideCursor());
        QCOMPARE(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
        bool sanduhrInMeldung = true;
        const Drehbuch buch = Waehrend<QMessageBox>([&](QMessageBox &box) {
            sanduhrInMeldung = QApplication::overrideCursor();
            Hand(box).Taste(Qt::Key_Return);
        });
        meldungen.Zeigen("x");
        QVERIFY(!sanduhrInMeldung);
        QVERIFY(QApplication::overrideCursor());
        meldungen.Sanduhr(false);
        QVERIFY(!QApplication::overrideCursor());
        meldungen.Sanduhr(false);
    }

    void FiltersAreTranslated_data()
    {
        QTest::addColumn<QString>("filter");
        QTest::addColumn<QString>("erwartet");
        QTest::newRow("one") << "Lerndateien (*.pzb)|*.pzb"
                             << "Lerndateien (*.pzb)";
        QTest::newRow("two") << "Bitmaps (*.bmp)|*.bmp|JPEG (*.jpg)|*.jpg"
                             << "Bitmaps (*.bmp);;JPEG (*.jpg)";
        QTest::newRow("patterns") << "Text|*.txt;*.csv"
                                  << "Text (*.txt *.csv)";
        QTest::newRow("none") << ""
                              << "";
    }

    void FiltersAreTranslated()
    {
        QFETCH(QString, filter);
        QFETCH(QString, erwartet);
        QCOMPARE(ToolkitFilter(filter), erwartet);
    }

    void TheOpenDialogReturnsTheChosenFile()
    {
        const QTemporaryDir verzeichnis;
        QFile datei(verzeichnis.filePath("a.pzb"));
        QVERIFY(datei.open(QIODevice::WriteOnly));
        const Drehbuch buch = Waehrend<QFileDialog>([&](QFileDialog &fenster) {
            QCOMPARE(fenster.objectName(), "CommonDialog1");
            QCOMPARE(fenster.windowTitle(), "Merkkasten öffnen");
            QCOMPARE(fenster.directory().canonicalPath(), QDir(verzeichnis.path()).canonicalPath());
            QCOMPARE(fenster.nameFilters(),
                     (QStringList{"Lerndateien (*.pzb)", "Gepackte Karteien (*.pzbz)"}));
            QCOMPARE(fenster.selectedNameFilter(), "Lerndateien (*.pzb)");
            Hand(fenster).Ersetze("fileNameEdit", "a.pzb");
            Hand(fenster).Taste(Qt::Key_Return);
        });
        DialogeFenster dialoge;
        QCOMPARE(dialoge.DateiOeffnen({.titel = "Merkkasten öffnen",
                                       .filter = "Lerndateien (*.pzb)|*.pzb",
                                       .weitere = "Gepackte Karteien (*.pzbz)|*.pzbz",
                                       .verzeichnis = verzeichnis.path(),
                                       .endung = "pzb"}),
                 verzeichnis.filePath("a.pzb"));
    }

    void TheSaveDialogAddsTheExtensionToABareName()
    {
        const QTemporaryDir verzeichnis;
        const Drehbuch buch = Waehrend<QFileDialog>([&](QFileDialog &fenster) {
            QCOMPARE(fenster.acceptMode(), QFileDialog::AcceptSave);
            Hand(fenster).Taste(Qt::Key_Return);
        });
        DialogeFenster dialoge;
        QCOMPARE(dialoge.DateiSpeichern({.titel = "Merkkasten anlegen",
                                         .filter = "Lerndateien (*.pzb)|*.pzb",
                                         .verzeichnis = verzeichnis.path(),
                                         .endung = "pzb",
                                         .vorgabe = "neu"}),
                 verzeichnis.filePath("neu.pzb"));
    }

    void ACancelledDialogReturnsNothing()
    {
        DialogeFenster dialoge;
        const Drehbuch buch =
            Waehrend<QFileDialog>([](QFileDialog &fenster) { Hand(fenster).Taste(Qt::Key_Escape); });
        QCOMPARE(dialoge.DateiOeffnen(
                     {.titel = "t", .filter = "f|*.f", .verzeichnis = QDir::tempPath(), .endung = "f"}),
                 QString());
        const Drehbuch danach =
            Waehrend<QDialog>([](QDialog &fenster) { Hand(fenster).Taste(Qt::Key_Escape); });
        QVERIFY(!dialoge.SchriftWaehlen({QFont(), Qt::black}));
    }

    void AFontThatIsNotChangedStaysAsItIs_data()
    {
        QTest::addColumn<bool>("fett");
        QTest::addColumn<bool>("kursiv");
        QTest::newRow("plain") << false << false;
        QTest::newRow("bold") << true << false;
        QTest::newRow("italic") << false << true;
        QTest::newRow("both") << true << true;
    }

    void AFontThatIsNotChangedStaysAsItIs()
    {
        QFETCH(bool, fett);
        QFETCH(bool, kursiv);
        // The last stands for another family. Where a family lacks the style, as the first lacks the slanted
        // ones without their package, the dialog opens on another; the font stays all the same.
        for (const char *familie : {"DejaVu Sans", "Liberation Serif", "Sans Serif"}) {
            QFont schrift(familie, 13);
            schrift.setBold(fett);
            schrift.setItalic(kursiv);
            const Drehbuch buch = Waehrend<QDialog>([&](QDialog &fenster) {
                const QFont gewaehlt = fenster.findChild<QFontDialog *>()->currentFont();
                QVERIFY2(!gewaehlt.styleName().contains("Condensed"), qPrintable(gewaehlt.styleName()));
                if (HatStil(QFontInfo(schrift).family(), fett, kursiv)) {
                    QCOMPARE(gewaehlt.bold(), fett);
                    QCOMPARE(gewaehlt.italic(), kursiv);
                }
                fenster.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok)->click();
            });
            DialogeFenster dialoge;
            const auto wahl = dialoge.SchriftWaehlen({schrift, Qt::black});
            QVERIFY(wahl);
            QCOMPARE(wahl->font.family(), familie);
            QCOMPARE(wahl->font.pointSize(), 13);
            QCOMPARE(wahl->font.weight(), schrift.weight());
            QCOMPARE(wahl->font.italic(), kursiv);
            QCOMPARE(wahl->font.styleName(), QString());
        }
    }

    // "Small Fonts" is not installed; the dialog shows another family in its place.
    void WhatIsNotChangedInTheFontDialogStaysAsItIs()
    {
        QFont schrift("Small Fonts");
        schrift.setPointSizeF(7.5);
        const Drehbuch buch = Waehrend<QDialog>([](QDialog &fenster) {
            auto *innen = fenster.findChild<QFontDialog *>();
            QFont neu = innen->currentFont();
            neu.setUnderline(true);
            innen->setCurrentFont(neu);
            fenster.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok)->click();
        });
        DialogeFenster dialoge;
        auto wahl = dialoge.SchriftWaehlen({schrift, Qt::black});
        QVERIFY(wahl);
        QCOMPARE(wahl->font.family(), "Small Fonts");
        QVERIFY(wahl->font.underline());

        const Drehbuch danach = Waehrend<QDialog>([](QDialog &fenster) {
            auto *innen = fenster.findChild<QFontDialog *>();
            QFont neu = innen->currentFont();
            neu.setPointSize(24);
            innen->setCurrentFont(neu);
            fenster.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok)->click();
        });
        wahl = dialoge.SchriftWaehlen({schrift, Qt::black});
        QVERIFY(wahl);
        QCOMPARE(wahl->font.family(), "Small Fonts");
        QCOMPARE(wahl->font.pointSizeF(), 24.0);
    }

    void AFamilyThatNobodyNamedIsNotReturned()
    {
        const Drehbuch buch = Waehrend<QDialog>([](QDialog &fenster) {
            auto *innen = fenster.findChild<QFontDialog *>();
            QFont neu = innen->currentFont();
            neu.setPointSize(24);
            innen->setCurrentFont(neu);
            fenster.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok)->click();
        });
        DialogeFenster dialoge;
        const auto wahl = dialoge.SchriftWaehlen({QFont(), Qt::black});
        QVERIFY(wahl);
        QVERIFY((wahl->font.resolveMask() & QFont::FamiliesResolved) == 0);
        QCOMPARE(wahl->font.pointSizeF(), 24.0);
    }

    void TheFileDialogHasRoomForItsColumns()
    {
        const QTemporaryDir verzeichnis;
        QFile datei(verzeichnis.filePath("Allgemeinwissen.pzb"));
        QVERIFY(datei.open(QIODevice::WriteOnly));
        const Drehbuch buch = Waehrend<QFileDialog>([](QFileDialog &fenster) {
            const QSize schirm = fenster.screen()->availableGeometry().size();
            QVERIFY(fenster.width() <= schirm.width() && fenster.height() <= schirm.height());
            const auto *tabelle = fenster.findChild<QTreeView *>("treeView");
            QTRY_VERIFY(tabelle->model()->rowCount(tabelle->rootIndex()) == 1);
            QTRY_VERIFY2(tabelle->header()->length() <= tabelle->viewport()->width(),
                         qPrintable(u"%1 in %2 of %3"_s.arg(tabelle->header()->length())
                                        .arg(tabelle->viewport()->width())
                                        .arg(fenster.width())));
            Hand(fenster).Taste(Qt::Key_Escape);
        });
        DialogeFenster().DateiOeffnen(KarteiDialog("Öffnen", verzeichnis.path()));
    }

    void EnterTakesTheFontWhereverTheKeyboardIs()
    {
        int felder = 1;
        for (int i = 0; i < felder; ++i) {
            const Drehbuch buch = Waehrend<QDialog>([&, i](QDialog &fenster) {
                QWidgetList ziele;
                for (QWidget *feld : fenster.findChild<QFontDialog *>()->findChildren<QWidget *>()) {
                    const bool text = qobject_cast<QLineEdit *>(feld) || qobject_cast<QListView *>(feld);
                    if (text && feld->isVisible() && feld->focusPolicy() != Qt::NoFocus)
                        ziele << feld;
                }
                felder = int(ziele.size());
                QVERIFY(felder > 3);
                ziele[i]->setFocus();
                QTest::keyClick(ziele[i], Qt::Key_Return);
                QVERIFY2(!fenster.isVisible(), ziele[i]->metaObject()->className());
            });
            DialogeFenster dialoge;
            const auto wahl = dialoge.SchriftWaehlen({QFont("DejaVu Sans", 14), Qt::black});
            QVERIFY(wahl);
            QCOMPARE(wahl->font.pointSize(), 14);
        }
    }

    void TheColourOfTheFontDialogIsSeenOnAnyDesktop()
    {
        for (const bool dunkel : {false, true}) {
            const Schreibtisch schreibtisch(dunkel);
            double kontrast = 0;
            const Drehbuch buch = Waehrend<QDialog>([&](QDialog &fenster) {
                auto *knopf = fenster.findChild<QPushButton *>("Farbknopf");
                const QImage muster = knopf->icon().pixmap(knopf->iconSize()).toImage();
                const QColor grund = knopf->grab().toImage().pixelColor(4, knopf->height() / 2);
                for (int x = 0; x < 3; ++x)
                    kontrast = std::max(kontrast,
                                        Farben::Kontrast(muster.pixelColor(x, muster.height() / 2), grund));
                fenster.reject();
            });
            DialogeFenster dialoge;
            QVERIFY(!dialoge.SchriftWaehlen({QFont("DejaVu Sans", 14), dunkel ? Qt::black : Qt::white}));
            QVERIFY2(kontrast >= Farben::KontrastUmriss, qPrintable(QString::number(kontrast)));
        }
    }

    void WhatTheFontDialogOpensWithIsSeenInItsLists()
    {
        const Drehbuch buch = Waehrend<QDialog>([](QDialog &fenster) {
            int listen = 0;
            for (QListView *liste : fenster.findChild<QFontDialog *>()->findChildren<QListView *>()) {
                if (!liste->isVisible() || !liste->currentIndex().isValid())
                    continue;
                ++listen;
                const QRect zeile = liste->visualRect(liste->currentIndex());
                QVERIFY(liste->viewport()->rect().contains(zeile));
            }
            QVERIFY(listen >= 2);
            fenster.reject();
        });
        DialogeFenster dialoge;
        QVERIFY(!dialoge.SchriftWaehlen({QFont("DejaVu Sans", 14), Qt::black}));
    }

    void TheFontDialogReturnsFontAndColour()
    {
        QFont schrift("DejaVu Sans", 14);
        schrift.setItalic(true);
        const Drehbuch buch = Waehrend<QDialog>([](QDialog &fenster) {
            QCOMPARE(fenster.objectName(), "Schriftdialog");
            fenster.findChild<QFontDialog *>()->setCurrentFont(QFont("DejaVu Serif", 18));
            fenster.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok)->click();
        });
        DialogeFenster dialoge;
        const auto wahl = dialoge.SchriftWaehlen({schrift, QColor(1, 2, 3)});
        QVERIFY(wahl);
        QCOMPARE(wahl->font.family(), "DejaVu Serif");
        QCOMPARE(wahl->font.pointSize(), 18);
        QCOMPARE(wahl->farbe, QColor(1, 2, 3));
    }
};

PAUKFIX_TEST(MeldungenFensterTest)
#include "MeldungenFensterTest.moc"
