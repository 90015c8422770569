// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Handbuchfenster.h"
#include "Handbuchseiten.h"
#include "ProgrammBuehne.h"
#include "TestProgram.h"

#include <QAbstractItemView>
#include <QListWidget>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextCursor>

using namespace paukfix;

// The handbook opens by F1 over each window, at its page, and can be read, walked and searched there.
class HandbuchLaufTest : public ProgrammBuehne
{
    Q_OBJECT

private:
    static QTextBrowser &Seite(const QWidget &handbuch)
    {
        return *Hand(const_cast<QWidget &>(handbuch)).Finde<QTextBrowser>("Seite");
    }

    static QString Ort(const QWidget &handbuch)
    {
        const QUrl ort = Seite(handbuch).source();
        return ort.fileName() + (ort.hasFragment() ? '#' + ort.fragment() : QString());
    }

    // F1 in this window, the page that comes, and Escape, which leads back to it.
    static void Nachschlagen(Drehbuch &buch, const QString &fenster, QHash<QString, QString> &seiten,
                             Qt::Key danach = Qt::Key_Escape)
    {
        buch.Dazu(Taste(fenster, Qt::Key_F1));
        buch.Dazu(Drehbuch::In("Handbuch", [&seiten, fenster](QWidget &handbuch) {
            seiten.insert(fenster, Ort(handbuch));
            Hand(handbuch).Taste(Qt::Key_F1); // a second one does nothing
            QCOMPARE(handbuch.findChildren<QDialog *>().size(), 0);
            Hand(handbuch).Taste(Qt::Key_Escape);
        }));
        if (danach != Qt::Key_unknown)
            buch.Dazu(Taste(fenster, danach));
    }

    void Oeffnen(const CardRecord &zweite = MakeCard(2, 0, 2))
    {
        MakeCardFile(Pfad("a.pzb"), {MakeCard(1, 0, 1), zweite});
        Konfig("False");
        MachProgramm();
        QVERIFY(programm_->Starten(BefehlszeileLesen({"paukfix", Pfad("a.pzb")})));
        QTRY_COMPARE(Kartei(), "a.pzb");
        QTRY_VERIFY(Hand::Bereit("LBOX"));
    }

    // Opens the handbook over the box at `seite` and does this in it.
    void ImHandbuch(const std::function<void(QWidget &)> &tun)
    {
        Oeffnen();
        const Drehbuch buch({Drehbuch::In("Handbuch", [&tun](QWidget &handbuch) {
            tun(handbuch);
            handbuch.close();
        })});
        Waehlen("MHandbuch");
        QVERIFY(buch.Fertig());
    }

private slots:

    void init() { Aufstellen(); }

    void cleanup() { Abraeumen(); }

    void F1OpensThePageOfEveryWindow()
    {
        QHash<QString, QString> seiten;
        {
            MachProgramm();
            Drehbuch buch;
            Nachschlagen(buch, "Intro", seiten, Qt::Key_Return);
            buch.Dazu([] { return !Hand::Offen("Intro"); });
            Nachschlagen(buch, "CommonDialog1", seiten);
            QVERIFY(programm_->Starten({}));
            QTRY_VERIFY(buch.Fertig());
            programm_.reset();
        }
        CardRecord karte = MakeCard(2, 0, 2);
        karte.Picture_1_Name = "fehlt.bmp"; // a package tells of it in a report
        Oeffnen(karte);
        {
            Drehbuch buch;
            Nachschlagen(buch, "LBOX", seiten, Qt::Key_unknown);
            QTRY_VERIFY(buch.Fertig());
        }
        for (const auto &[eintrag, fenster] :
             Dateiwerkzeuge + Nachschau + QList<Menuefenster>{{"MSchriftart", "Schriftdialog"}}) {
            Drehbuch buch;
            Nachschlagen(buch, fenster, seiten);
            Waehlen(eintrag);
            QVERIFY2(buch.Fertig(), fenster);
        }
        {
            Drehbuch buch;
            Nachschlagen(buch, "Datausw", seiten);
            Hand::An("LBOX").Taste(Qt::Key_L, Qt::ControlModifier);
        }
        {
            Drehbuch buch({Taste("Karteipacken", Qt::Key_Return)});
            Nachschlagen(buch, "Bericht", seiten);
            buch.Dazu(Meldung());
            Waehlen("MKartei_packen");
        }
        {
            Drehbuch buch;
            Nachschlagen(buch, "PFUse", seiten);
            Hand::An("LBOX").Taste(Qt::Key_N);
        }
        Waehlen("MKarten");
        QTRY_VERIFY(Hand::Bereit("PFÄndern"));
        {
            Drehbuch buch;
            Nachschlagen(buch, "PFÄndern", seiten, Qt::Key_unknown);
            QTRY_VERIFY(buch.Fertig());
        }
        for (const auto &[eintrag, fenster] :
             {std::pair{"MBilder", "Bildbearbeiten"}, {"MTon", "Soundbearbeiten"}, {"MSuchen", "Suchen"}}) {
            Drehbuch buch;
            Nachschlagen(buch, fenster, seiten);
            Hand::An("PFÄndern").Finde<QAction>(eintrag)->trigger();
            QVERIFY2(buch.Fertig(), fenster);
        }
        for (auto seite = Handbuchseiten().cbegin(); seite != Handbuchseiten().cend(); ++seite)
            QCOMPARE(seite.key() + ": " + seiten.value(seite.key()), seite.key() + ": " + seite.value());
        QCOMPARE(seiten.size(), Handbuchseiten().size());
    }

    // A message stands over the window that is meant.
    void InAMessageF1OpensThePageOfTheWindowBehind()
    {
        Oeffnen();
        QString seite;
        const Drehbuch buch({Taste("AExport", Qt::Key_Return),
                             Drehbuch::In<QMessageBox>([](QMessageBox &box) { Hand(box).Taste(Qt::Key_F1); }),
                             Drehbuch::In("Handbuch",
                                          [&seite](QWidget &handbuch) {
                                              seite = Ort(handbuch);
                                              Hand(handbuch).Taste(Qt::Key_Escape);
                                          }),
                             Meldung(), Taste("AExport", Qt::Key_Escape)});
        Waehlen("MAscii_Export");
        QVERIFY(buch.Fertig());
        QCOMPARE(seite, "umsteigen.html#export");
    }

    void TheMenuOpensTheFirstPageAndThatOfAllKeys()
    {
        Oeffnen();
        for (const auto &[eintrag, seite] :
             {std::pair{"MHandbuch", "index.html"}, {"MTasten", "tasten.html"}}) {
            QString ort, titel, gewaehlt;
            const Drehbuch buch({Drehbuch::In("Handbuch", [&](QWidget &handbuch) {
                ort = Ort(handbuch);
                titel = Seite(handbuch).documentTitle();
                gewaehlt = Hand(handbuch).Finde<QListWidget>("Inhalt")->currentItem()->text();
                Hand(handbuch).Klick("cmdSchließen");
            })});
            Waehlen(eintrag);
            QVERIFY(buch.Fertig());
            QCOMPARE(ort, seite);
            QCOMPARE(gewaehlt, titel);
        }
    }

    void ThePageStandsAtTheHeadingThatIsMeant()
    {
        Oeffnen();
        bool oben = false;
        const Drehbuch buch({Taste("Themaausfiltern", Qt::Key_F1),
                             Drehbuch::In("Handbuch",
                                          [&oben](QWidget &handbuch) {
                                              QTextBrowser &seite = Seite(handbuch);
                                              QTextCursor titel(seite.document());
                                              while (titel.block().text() != "Thema ausfiltern" &&
                                                     titel.movePosition(QTextCursor::NextBlock)) {
                                              }
                                              const int y = seite.cursorRect(titel).top();
                                              oben = y >= 0 && y < seite.height() / 3;
                                              Hand(handbuch).Taste(Qt::Key_Escape);
                                          }),
                             Taste("Themaausfiltern", Qt::Key_Escape)});
        Waehlen("MThema_ausfiltern");
        QVERIFY(oben);
    }

    void ArrowsInTheContentsTurnThePages()
    {
        ImHandbuch([](QWidget &handbuch) {
            const Hand hand(handbuch);
            hand.Taste("Inhalt", Qt::Key_Down);
            QCOMPARE(Ort(handbuch), "anfang.html");
            hand.Taste(Qt::Key_Down);
            QCOMPARE(Ort(handbuch), "lernen.html");
            hand.Taste(Qt::Key_Left, Qt::AltModifier); // a button that its key presses is down for a moment
            QTRY_COMPARE(Ort(handbuch), "anfang.html");
            QCOMPARE(hand.Finde<QListWidget>("Inhalt")->currentRow(), 1);
            hand.Taste(Qt::Key_Right, Qt::AltModifier);
            QTRY_COMPARE(Ort(handbuch), "lernen.html");
        });
    }

    void LinksAreFollowedByTabAndEnter()
    {
        ImHandbuch([](QWidget &handbuch) {
            const Hand hand(handbuch);
            QCOMPARE(hand.FokusName(), "Seite");
            hand.Taste(Qt::Key_Tab);
            hand.Taste(Qt::Key_Tab);
            QCOMPARE(Seite(handbuch).textCursor().selectedText(), "Lernen mit Fächern");
            hand.Taste(Qt::Key_Return);
            QCOMPARE(Ort(handbuch), "lernen.html");
            QVERIFY(handbuch.isVisible());
        });
    }

    void AWordIsFoundOnThisPageAndThenOnTheOthers()
    {
        ImHandbuch([](QWidget &handbuch) {
            const Hand hand(handbuch);
            hand.Taste(Qt::Key_F, Qt::ControlModifier);
            QCOMPARE(hand.FokusName(), "Wort");
            hand.Tippe("karteikasten");
            QCOMPARE(Seite(handbuch).textCursor().selectedText(), "Karteikasten");
            QCOMPARE(hand.Text("Gefunden"), "1 von 1");
            QCOMPARE(Seite(handbuch).extraSelections().size(), 1);
            hand.Ersetze("Wort", "Meise");
            QCOMPARE(hand.Text("Gefunden"), "nicht auf dieser Seite");
            hand.Taste(Qt::Key_Return);
            QVERIFY(handbuch.isVisible());
            QCOMPARE(Ort(handbuch), "medien.html");
            QCOMPARE(Seite(handbuch).textCursor().selectedText(), "Meise");
            QCOMPARE(hand.Text("Gefunden"), "1 von 1");
            hand.Ersetze("Wort", "Kassettenrekorder");
            hand.Taste(Qt::Key_F3);
            QCOMPARE(Ort(handbuch), "medien.html");
            QCOMPARE(hand.Text("Gefunden"), "nicht auf dieser Seite");
        });
    }

    void BackwardsTheSearchGoesRoundTheOtherWay()
    {
        ImHandbuch([](QWidget &handbuch) {
            const Hand hand(handbuch);
            hand.Tippe("Wort", "Würfel");
            hand.Taste(Qt::Key_F3, Qt::ShiftModifier);
            QCOMPARE(Ort(handbuch), "glossar.html");
            QCOMPARE(hand.Text("Gefunden").section(' ', 0, 0), hand.Text("Gefunden").section(' ', 2));
        });
    }

    // In a narrow window they are drawn smaller.
    void PicturesAreNeverWiderThanThePage()
    {
        ImHandbuch([](QWidget &handbuch) {
            QTextBrowser &seite = Seite(handbuch);
            QImage bild(3000, 200, QImage::Format_RGB32);
            bild.fill(Qt::red);
            QTemporaryDir ordner;
            QVERIFY(bild.save(ordner.filePath("breit.png")));
            QFile html(ordner.filePath("breit.html"));
            QVERIFY(html.open(QIODevice::WriteOnly) && html.write("<p><img src=\"breit.png\"></p>") > 0);
            html.close();
            seite.setSource(QUrl::fromLocalFile(html.fileName()));
            for (const int breite : {900, 640}) {
                handbuch.resize(breite, 430);
                QTRY_VERIFY(seite.document()->size().width() <= seite.viewport()->width());
                QVERIFY(seite.document()->idealWidth() > seite.viewport()->width() / 2);
            }
        });
    }

    void AMissingHandbookIsSaid()
    {
        Handbuchfenster fenster(Pfad("gibt es nicht"), "index.html", nullptr);
        const Hand hand(fenster);
        hand.Zeigen();
        QCOMPARE(hand.Text("Seite"),
                 "Das Handbuch fehlt. Gesucht wurde es in „" + Pfad("gibt es nicht") + "“.");
        hand.Tippe("Wort", "a");
        hand.Taste(Qt::Key_Return);
        QVERIFY(fenster.isVisible());
        hand.Taste(Qt::Key_Escape);
        QVERIFY(!fenster.isVisible());
    }
};

PAUKFIX_TEST(HandbuchLaufTest)
#include "HandbuchLaufTest.moc"
