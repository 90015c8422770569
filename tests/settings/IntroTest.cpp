// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Intro.h"

#include "Drehbuch.h"
#include "KonfigFixture.h"
#include "Lesbarkeit.h"
#include "TestProgram.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QDir>
#include <QImage>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QTimerEvent>

using namespace paukfix;

namespace {

const QString Kontext = "Fehler bei Form Intro Load: ";

// Counts how often a window is shown.
class Zuschauer final : public QObject
{
public:
    explicit Zuschauer(QWidget *wen) { wen->installEventFilter(this); }

    int gezeigt = 0;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        gezeigt += event->type() == QEvent::Show;
        return false;
    }
};

} // namespace

// The intro window on a program directory with seven pictures, each of one colour.
class IntroTest : public KonfigFixture, private Hand
{
    Q_OBJECT

private:
    std::unique_ptr<Intro> intro_;

    static QColor Farbe(int bild) { return QColor::fromHsv(bild * 30, 200, 200); }

    static bool Gleich(const QColor &eine, const QColor &andere)
    {
        return std::abs(eine.red() - andere.red()) + std::abs(eine.green() - andere.green()) +
                   std::abs(eine.blue() - andere.blue()) <
               20;
    }

    QColor Gezeigt() const
    {
        const QImage bild = intro_->grab().toImage();
        return bild.pixelColor(bild.width() / 2, bild.height() / 2);
    }

    bool Wartet() const
    {
        return intro_->isVisible() && intro_->IntroStep() == 12 && intro_->isActiveWindow();
    }

    QPushButton *LosGehts() const { return Finde<QPushButton>("Command1"); }

    void Ticken() const
    {
        auto *timer = Finde<QTimer>("Timer_Intro");
        QTimerEvent tick(timer->timerId());
        QCoreApplication::sendEvent(timer, &tick);
    }

private slots:

    void init()
    {
        SetUp();
        Write("[Animation]\nAnimation=True\n");
        for (int i = 5; i <= 11; ++i) {
            QImage bild(320, 200, QImage::Format_RGB32);
            bild.fill(Farbe(i));
            QVERIFY(bild.save(Path(QString("lbox%1.jpg").arg(i, 2, 10, QChar('0'))), "jpg", 95));
        }
        intro_ = std::make_unique<Intro>(*config_, *meldungen_);
        Nimm(*intro_);
    }

    void cleanup() { intro_.reset(); }

    void WithAnimationFalseItIsNeverShown()
    {
        Write("[Animation]\nAnimation=False\n");
        const Zuschauer zuschauer(intro_.get());
        QCOMPARE(intro_->Form_Load({}), Intro::Ausgang::Hauptfenster);
        QCOMPARE(zuschauer.gezeigt, 0);
        QVERIFY(!intro_->AnimationOn());
        QCOMPARE(meldungen_->Texte(), QStringList());
    }

    void WithACommandLineItIsNeverShownWhateverTheSetting_data()
    {
        QTest::addColumn<QByteArray>("animation");
        QTest::newRow("on") << QByteArray("True");
        QTest::newRow("off") << QByteArray("False");
    }

    void WithACommandLineItIsNeverShownWhateverTheSetting()
    {
        QFETCH(QByteArray, animation);
        Write("[Animation]\nAnimation=" + animation + "\n");
        const Zuschauer zuschauer(intro_.get());
        QCOMPARE(intro_->Form_Load("a.pzb"), Intro::Ausgang::Hauptfenster);
        QCOMPARE(zuschauer.gezeigt, 0);
    }

    void ThePictureNamesHaveTwoDigits()
    {
        for (const QString &name : QDir(directory_->path()).entryList({"*.jpg"}))
            QVERIFY(QFile::remove(Path(name)));
        const Drehbuch buch({[this] { return Wartet() && intro_->close(); }});
        intro_->Form_Load({});
        QStringList erwartet;
        for (const char *nummer : {"05", "06", "07", "08", "09", "10", "11"})
            erwartet << Kontext + "Datei nicht gefunden: „" + Path(QString("lbox%1.jpg").arg(nummer)) + "“";
        QCOMPARE(meldungen_->Texte(), erwartet);
    }

    void TheLastPictureStaysUntilLosGehts_data()
    {
        QTest::addColumn<int>("taste");
        QTest::newRow("mouse") << 0;
        QTest::newRow("enter") << int(Qt::Key_Return);
        QTest::newRow("keypad") << int(Qt::Key_Enter);
        QTest::newRow("space") << int(Qt::Key_Space);
    }

    void TheLastPictureStaysUntilLosGehts()
    {
        QFETCH(int, taste);
        QColor gezeigt;
        const Drehbuch buch({[&] {
            if (!Wartet())
                return false;
            gezeigt = Gezeigt();
            if (taste)
                Taste(Qt::Key(taste));
            else
                Klick("Command1");
            return true;
        }});
        QCOMPARE(intro_->Form_Load({}), Intro::Ausgang::Hauptfenster);
        QVERIFY(Gleich(gezeigt, Farbe(11)));
        QCOMPARE(intro_->IntroStep(), 13);
        QCOMPARE(meldungen_->Texte(), QStringList());
        QCOMPARE(intro_->windowTitle(), "Merkkasten");
        QCOMPARE(LosGehts()->text(), "los geht's");
    }

    void EventsRunBetweenThePictures()
    {
        QList<int> schritte;
        QTimer beobachter;
        connect(&beobachter, &QTimer::timeout, this, [&] { schritte << intro_->IntroStep(); });
        beobachter.start(0);
        const Drehbuch buch({[this] { return Wartet() && intro_->close(); }});
        intro_->Form_Load({});
        for (int i = 5; i <= 12; ++i)
            QVERIFY(schritte.contains(i));
    }

    void LosGehtsDuringThePicturesEndsThem()
    {
        const Drehbuch buch({[this] {
            LosGehts()->click();
            return true;
        }});
        QCOMPARE(intro_->Form_Load({}), Intro::Ausgang::Hauptfenster);
    }

    void AMissingPictureLeavesThePreviousOne()
    {
        QVERIFY(QFile::remove(Path("lbox11.jpg")));
        QColor gezeigt;
        const Drehbuch buch({[&] {
            if (!Wartet())
                return false;
            gezeigt = Gezeigt();
            LosGehts()->click();
            return true;
        }});
        QCOMPARE(intro_->Form_Load({}), Intro::Ausgang::Hauptfenster);
        QVERIFY(Gleich(gezeigt, Farbe(10)));
        QCOMPARE(meldungen_->gezeigt.size(), 1);
        QVERIFY(meldungen_->Texte()[0].startsWith(Kontext));
    }

    void AnUnreadableKonfigIsReportedAndTheIntroPlays()
    {
        QVERIFY(QFile::remove(Path("konfig.dat")));
        const Drehbuch buch({[this] {
            if (!Wartet())
                return false;
            LosGehts()->click();
            return true;
        }});
        QCOMPARE(intro_->Form_Load({}), Intro::Ausgang::Hauptfenster);
        QVERIFY(intro_->AnimationOn());
        QVERIFY(buch.Fertig());
        QCOMPARE(meldungen_->gezeigt.size(), 1);
        QVERIFY(meldungen_->Texte()[0].startsWith(Kontext));
        QVERIFY(meldungen_->Texte()[0].size() > Kontext.size());
    }

    void ItNeverClosesOnItsOwnAndItsClockStopsAtItsEnd()
    {
        const Drehbuch buch({[this] {
            if (!Wartet())
                return false;
            auto *timer = Finde<QTimer>("Timer_Intro");
            [&] { QCOMPARE(intro_->IntroElapsed(), 0); }();
            timer->setInterval(20000);
            Ticken();
            [&] { QCOMPARE(intro_->IntroElapsed(), 20000); }();
            Ticken();
            [&] { QCOMPARE(intro_->IntroElapsed(), 32767); }();
            [&] { QVERIFY(!timer->isActive()); }();
            [&] { QVERIFY(intro_->isVisible()); }();
            QTest::keyClick(intro_.get(), Qt::Key_Escape);
            QTest::mouseClick(intro_.get(), Qt::LeftButton, {}, {3, 3});
            [&] { QVERIFY(Wartet()); }();
            LosGehts()->click();
            return true;
        }});
        QCOMPARE(intro_->Form_Load({}), Intro::Ausgang::Hauptfenster);
    }

    void ClosingItEndsTheProgram()
    {
        const Drehbuch buch({[this] { return Wartet() && intro_->close(); }});
        QCOMPARE(intro_->Form_Load({}), Intro::Ausgang::Programmende);
        QVERIFY(intro_->IntroStep() < 13);
    }

    void ClosingItDuringThePicturesEndsTheProgram()
    {
        const Drehbuch buch({[this] { return intro_->close(); }});
        QCOMPARE(intro_->Form_Load({}), Intro::Ausgang::Programmende);
    }

    void WaitingSleeps()
    {
        int geschlafen = 0;
        const Drehbuch buch({[&] {
                                 if (!Wartet())
                                     return false;
                                 connect(QAbstractEventDispatcher::instance(),
                                         &QAbstractEventDispatcher::aboutToBlock, this,
                                         [&] { ++geschlafen; });
                                 return true;
                             },
                             [&] {
                                 if (geschlafen < 3)
                                     return false;
                                 LosGehts()->click();
                                 return true;
                             }});
        intro_->Form_Load({});
        disconnect(QAbstractEventDispatcher::instance(), nullptr, this, nullptr);
        QVERIFY(buch.Fertig());
    }

    void AHeldEnterDoesNotPressTheButton()
    {
        const Drehbuch buch({[this] {
            if (!Wartet())
                return false;
            QKeyEvent wiederholt(QEvent::KeyPress, Qt::Key_Return, {}, {}, true);
            QCoreApplication::sendEvent(LosGehts(), &wiederholt);
            [&] { QVERIFY(Wartet()); }();
            return intro_->close();
        }});
        QCOMPARE(intro_->Form_Load({}), Intro::Ausgang::Programmende);
    }

    // The last picture stays until somebody wants to see another; only the button goes on.
    void WhileItWaitsThePicturesAreLookedAtOneByOne()
    {
        QList<QColor> gezeigt;
        const auto taste = [&](Qt::Key key) {
            Taste(key);
            gezeigt << Gezeigt();
        };
        const Drehbuch buch({[&] {
            if (!Wartet())
                return false;
            taste(Qt::Key_Right); // it was the last one
            taste(Qt::Key_Left);
            for (int i = 0; i < 8; ++i) // stops at the first one
                taste(Qt::Key_Left);
            taste(Qt::Key_Right);
            [&] { QVERIFY(Wartet()); }();
            Taste(Qt::Key_Return);
            return true;
        }});
        QCOMPARE(intro_->Form_Load({}), Intro::Ausgang::Hauptfenster);
        const QList<int> erwartet{11, 10, 9, 8, 7, 6, 5, 5, 5, 5, 6};
        QCOMPARE(gezeigt.size(), erwartet.size());
        for (int i = 0; i < erwartet.size(); ++i)
            QVERIFY2(Gleich(gezeigt[i], Farbe(erwartet[i])), qPrintable(QString::number(i)));
        QCOMPARE(meldungen_->Texte(), QStringList());
    }

    void TheRingIsSeenOnThePicturesOfADarkDesktopToo()
    {
        const QColor sand(0xF0, 0xC8, 0x96); // of the pictures, around the button
        double kontrast = 0;
        const Schreibtisch dunkel(true);
        const Drehbuch buch({[&] {
            if (!Wartet())
                return false;
            const QWidget *knopf = LosGehts();
            const QImage bild = intro_->grab().toImage();
            const QPoint ring(knopf->geometry().center().x(), knopf->y() - 3);
            kontrast = Farben::Kontrast(bild.pixelColor(ring), sand);
            Taste(Qt::Key_Return);
            return true;
        }});
        QCOMPARE(intro_->Form_Load({}), Intro::Ausgang::Hauptfenster);
        QVERIFY2(kontrast >= Farben::KontrastUmriss, qPrintable(QString::number(kontrast)));
    }

    void ADotShowsItsPicture()
    {
        QColor gezeigt;
        QString name;
        const Drehbuch buch({[&] {
            if (!Wartet())
                return false;
            auto *punkte = Finde("Punkte");
            [&] { QCOMPARE(punkte->accessibleName(), "Bild 7 von 7"); }();
            QTest::mouseClick(
                intro_->windowHandle(), Qt::LeftButton, {},
                punkte->mapTo(intro_.get(), QPoint(punkte->width() * 2 / 5, punkte->height() / 2)));
            gezeigt = Gezeigt();
            name = punkte->accessibleName();
            return intro_->close();
        }});
        intro_->Form_Load({});
        QVERIFY(Gleich(gezeigt, Farbe(7)));
        QCOMPARE(name, "Bild 3 von 7");
    }

    void AMissingPictureIsReportedAndPassedOver()
    {
        const Drehbuch buch({[&] {
            if (!Wartet())
                return false;
            [&] { QVERIFY(QFile::remove(Path("lbox10.jpg"))); }();
            Taste(Qt::Key_Left);
            [&] { QVERIFY(Gleich(Gezeigt(), Farbe(11))); }();
            Taste(Qt::Key_Left);
            [&] { QVERIFY(Gleich(Gezeigt(), Farbe(9))); }();
            return intro_->close();
        }});
        intro_->Form_Load({});
        QCOMPARE(meldungen_->Texte(),
                 QStringList{Kontext + "Datei nicht gefunden: „" + Path("lbox10.jpg") + "“"});
    }

    // A picture of another shape is neither stretched nor cut, in a window of any size.
    void ThePictureKeepsItsShapeInAnyWindow()
    {
        QColor mitte, rand;
        const Drehbuch buch({[&] {
            if (!Wartet())
                return false;
            intro_->resize(1000, 300);
            mitte = Gezeigt();
            rand = intro_->grab().toImage().pixelColor(2, 2);
            return intro_->close();
        }});
        intro_->Form_Load({});
        QVERIFY(Gleich(mitte, Farbe(11)));
        QCOMPARE(rand, intro_->palette().color(QPalette::Window));
    }
};

PAUKFIX_TEST(IntroTest)
#include "IntroTest.moc"
