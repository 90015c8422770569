// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AbfrageTestSupport.h"
#include "TestProgram.h"

#include <QGuiApplication>
#include <QScreen>
#include <QScrollBar>

using namespace paukfix;
using namespace Qt::StringLiterals;

// The query on a screen of 1024 by 600 pixels.
class PFUseKleinerSchirmTest : public QObject
{
    Q_OBJECT

private slots:

    void WholeCardIsOnTheScreen_data()
    {
        QTest::addColumn<bool>("kreuz");
        QTest::addColumn<bool>("lang");
        QTest::addColumn<bool>("bild");
        for (const bool kreuz : {false, true}) {
            for (const bool lang : {false, true}) {
                for (const bool bild : {false, true})
                    QTest::addRow("%s%s%s", kreuz ? "ticked" : "typed", lang ? ", long texts" : "",
                                  bild ? ", picture" : "")
                        << kreuz << lang << bild;
            }
        }
    }

    void WholeCardIsOnTheScreen()
    {
        QFETCH(bool, kreuz);
        QFETCH(bool, lang);
        QFETCH(bool, bild);
        const QSize schirm = QGuiApplication::primaryScreen()->size();
        QCOMPARE(schirm, QSize(1024, 600));
        AbfrageBuehne b;
        CardRecord karte = kreuz ? KreuzKarte("1") : TippKarte("x");
        if (lang)
            karte.Frage = karte.Antwort_1 = karte.Antwort_2 = karte.Antwort_3 = karte.Antwort_4 =
                karte.Antwort_5 = u"Ein langer Text. "_s.repeated(60);
        if (bild) {
            karte.Picture_1_Name = "b.bmp";
            QImage muster(300, 270, QImage::Format_RGB32);
            muster.fill(Qt::darkCyan);
            QVERIFY(muster.save(b.kartei.filePath("b.bmp")));
            karte.PictureTop = 300;
            karte.Pictureleft = 6000;
            karte.Picturewidth = 5000;
            karte.Pictureheight = 4500;
        }
        b.Fragen(karte, [&] {
            b.Taste(Qt::Key_Return); // the verdict needs its place too
            QTRY_VERIFY(b.Finde<QRadioButton>("Ergebnis_R")->isVisible());
            // A tenth is left to title bars and panels.
            const int hoehe = std::max(b.fenster->height(), b.fenster->minimumSizeHint().height());
            QVERIFY2(hoehe <= schirm.height() * 9 / 10, qPrintable(QString::number(hoehe)));
            for (const char *name : {"MFrage", "Antwort(0)", "Ergebnis_R", "Command3", "Tastenhinweise"}) {
                const QWidget *widget = b.Finde<QWidget>(name);
                const QRect lage(widget->mapTo(b.fenster.get(), QPoint()), widget->size());
                QVERIFY2(b.fenster->rect().contains(lage) && lage.height() >= 12, name);
            }
            QVERIFY(b.Finde<QTextEdit>("MFrage")->height() >=
                    3 * b.Finde<QTextEdit>("MFrage")->fontMetrics().lineSpacing());
            // A picture that was made for a larger screen does not lie on the answers.
            if (bild && !lang) {
                const QWidget *picture = b.Finde<QWidget>("Picture1");
                const int unten = picture->mapTo(b.fenster.get(), QPoint(0, picture->height())).y();
                for (int i = 0; i < (kreuz ? 5 : 1); ++i) {
                    const QWidget *antwort = b.Finde(QString("Antwort(%1)").arg(i));
                    QVERIFY(unten <= antwort->mapTo(b.fenster.get(), QPoint()).y());
                }
                QVERIFY(picture->height() >= 60);
            }
            // A single line has nothing to scroll.
            if (kreuz && !lang)
                for (int i = 0; i < 5; ++i)
                    QVERIFY(
                        !b.Finde<QTextEdit>(QString("Antwort(%1)").arg(i))->verticalScrollBar()->isVisible());
        });
    }
};

static int AufKleinemSchirm(int argc, char *argv[])
{
    const QTemporaryDir ordner;
    QFile schirme(ordner.filePath("schirme.json"));
    if (!schirme.open(QIODevice::WriteOnly))
        return 1;
    schirme.write(R"({"screens": [{"name": "klein", "x": 0, "y": 0, "width": 1024, "height": 600,
                      "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})");
    schirme.close();
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + schirme.fileName().toLocal8Bit());
    QApplication programm(argc, argv);
    PFUseKleinerSchirmTest test;
    return QTest::qExec(&test, argc, argv);
}

PAUKFIX_REGISTER_TEST(PFUseKleinerSchirmTest, &AufKleinemSchirm)
#include "PFUseKleinerSchirmTest.moc"
