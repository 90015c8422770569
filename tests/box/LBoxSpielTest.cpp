// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Eingabewache.h"
#include "LBoxBuehne.h"
#include "TestProgram.h"

#include <QMouseEvent>
#include <QRegularExpression>
#include <QTest>

using namespace paukfix;

namespace {

// Watches a widget move: its places and colours, as they were painted.
class Zuschauer final : public QObject
{
public:
    explicit Zuschauer(QWidget *wen) : wen_(wen) { wen->installEventFilter(this); }

    QList<QPoint> orte;
    QList<QColor> farben;
    std::function<void()> unterwegs = [] {};

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Move) {
            orte << wen_->pos();
            farben << wen_->palette().color(QPalette::Window);
            unterwegs();
        }
        return false;
    }

private:
    QWidget *wen_;
};

// Notes what a die shows whenever it is painted: "4 #00ff00".
class Bildwache final : public QObject
{
public:
    Bildwache(WuerfelBild *wuerfel, QStringList &gemalt) : wuerfel_(wuerfel), gemalt_(gemalt)
    {
        wuerfel->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint) {
            const QString bild = QString("%1 %2").arg(wuerfel_->Augen()).arg(wuerfel_->Grund().name());
            if (gemalt_.isEmpty() || gemalt_.last() != bild)
                gemalt_ << bild;
        }
        return false;
    }

private:
    WuerfelBild *wuerfel_;
    QStringList &gemalt_;
};

} // namespace

// What moves: the card's flight, the die, the automatic mode.
class LBoxSpielTest : public QObject
{
    Q_OBJECT

private slots:

    void TheCardFliesToItsCompartmentInTheVerdictsColour_data()
    {
        QTest::addColumn<bool>("richtig");
        QTest::addColumn<QColor>("farbe");
        QTest::addColumn<QString>("ziel");
        QTest::newRow("right") << true << QColor(0, 255, 0) << "Image0(4)";
        QTest::newRow("wrong") << false << QColor(255, 0, 0) << "Image0(1)";
    }

    void TheCardFliesToItsCompartmentInTheVerdictsColour()
    {
        QFETCH(bool, richtig);
        QFETCH(QColor, farbe);
        QFETCH(QString, ziel);
        LBoxBuehne b;
        b.KonfigSchreiben({}, "True");
        b.OeffnenMit({0, 0, 0, 1});
        auto *karte = b.Finde("Karte");
        Zuschauer zuschauer(karte);
        int gespeichertUnterwegs = -1;
        zuschauer.unterwegs = [&] {
            gespeichertUnterwegs = b.kartei.sitzung.RichtigZaehler() + b.kartei.sitzung.FalschZaehler();
        };
        b.Lernen(Qt::Key_3, richtig);
        QVERIFY(zuschauer.orte.size() >= 3);
        QCOMPARE(zuschauer.farben.last(), farbe);
        QCOMPARE(zuschauer.orte.last().x(), b.Finde(ziel)->x());
        QCOMPARE(gespeichertUnterwegs, 0);
        QVERIFY(!karte->isVisible());
    }

    void WithoutAnimationNothingFlies()
    {
        LBoxBuehne b;
        b.OeffnenMit({0, 0, 0, 1});
        QWidget *karte = b.Finde("Karte");
        QPoint liegt;
        b.NaechsteAbfrage([&](QWidget *) {
            liegt = karte->pos();
            b.Tippe("Antwort 1");
            b.Taste(Qt::Key_Return);
            b.Taste(Qt::Key_Return);
        });
        b.Taste(Qt::Key_3);
        QCOMPARE(karte->pos(), liegt);
        QCOMPARE(b.Anzahl(4), 1);
    }

    void AKeyEndsTheFlightAndIsNotLost()
    {
        LBoxBuehne b;
        b.KonfigSchreiben({}, "True");
        b.OeffnenMit({0, 0, 1, 1});
        Zuschauer zuschauer(b.Finde("Karte"));
        bool gedrueckt = false;
        zuschauer.unterwegs = [&] {
            if (gedrueckt || zuschauer.farben.last() != QColor(0, 255, 0))
                return;
            gedrueckt = true;
            zuschauer.orte.clear();
            QTest::keyClick(b.fenster.get(), Qt::Key_2);
        };
        b.NaechsteAntwort(true);
        b.Taste(Qt::Key_3);
        QVERIFY(gedrueckt);
        QVERIFY(zuschauer.orte.size() <= 2);
        QCOMPARE(b.Anzahl(4), 1);
        QCOMPARE(b.gefragt, QStringList{"2"});
        // Now the key arrives.
        b.NaechsteAntwort(true);
        QTRY_COMPARE(b.gefragt, (QStringList{"2", "1"}));
        QTRY_COMPARE(b.Anzahl(3), 1);
    }

    void AFlightAndARollTakeTheirTimeAfterManyOpenings_data()
    {
        QTest::addColumn<int>("oeffnungen");
        QTest::newRow("1") << 1;
        QTest::newRow("15") << 15;
        QTest::newRow("1000") << 1000;
    }

    // The clock's readings are the time: so many in a second.
    void AFlightAndARollTakeTheirTimeAfterManyOpenings()
    {
        QFETCH(int, oeffnungen);
        LBoxBuehne b;
        b.KonfigSchreiben({}, "True");
        b.OeffnenMit({0, 0, 0, 1});
        constexpr int JeSekunde = 100'000;
        b.oeffner.verzoegerung.LoopsLastSecond = JeSekunde;
        b.oeffner.verzoegerung.LoopsPerSecond = oeffnungen * JeSekunde;
        qint64 vorDemWurf = b.clock.readings, nachDemWurf = 0, vorDemFlug = 0;
        b.zufall.Wuerfe({3});
        b.NaechsteAbfrage([&](QWidget *) {
            nachDemWurf = b.clock.readings;
            b.Tippe("Antwort 1");
            b.Taste(Qt::Key_Return);
            vorDemFlug = b.clock.readings;
            b.Taste(Qt::Key_Return);
        });
        b.Taste(Qt::Key_W);
        QCOMPARE(b.Anzahl(4), 1);
        QVERIFY(nachDemWurf - vorDemWurf <= JeSekunde * 3 / 10);
        QVERIFY(b.clock.readings - vorDemFlug <= JeSekunde * 4 / 10);
    }

    void KeptInputArrivesInOrder()
    {
        struct Empfaenger final : QWidget
        {
            void keyPressEvent(QKeyEvent *e) override { liste << e->text(); }

            void mousePressEvent(QMouseEvent *) override { liste << "Maus"; }

            QStringList liste;
        } box, abfrage;

        for (Empfaenger *fenster : {&box, &abfrage}) {
            fenster->show();
            QVERIFY(QTest::qWaitForWindowExposed(fenster));
        }
        const auto tippen = [](const QWidget &fenster, const QByteArray &text) {
            for (const char zeichen : text)
                QTest::keyClick(fenster.windowHandle(), zeichen);
        };
        Eingabewache wache(box);
        wache.Halten();
        QVERIFY(!wache.Unterbrochen());
        const auto schicken = [&] {
            tippen(box, "ab");
            QTest::mouseClick(box.windowHandle(), Qt::LeftButton, {}, {5, 5});
            tippen(box, "c");
        };
        schicken();
        QVERIFY(wache.Unterbrochen());
        QCOMPARE(box.liste, QStringList());
        wache.Weitergeben(box);
        tippen(box, "d"); // not past those that wait
        QTRY_COMPARE(box.liste, (QStringList{"a", "b", "Maus", "c", "d"}));

        // What was typed while a query was on its way goes there; a click has nothing to hit.
        wache.Halten();
        schicken();
        wache.Weitergeben(abfrage);
        tippen(abfrage, "d");
        QTRY_COMPARE(abfrage.liste, (QStringList{"a", "b", "c", "d"}));
        QCOMPARE(box.liste.size(), 5);
    }

    void InputForAWindowThatIsGoneIsDropped()
    {
        QWidget box;
        box.show();
        QVERIFY(QTest::qWaitForWindowExposed(&box));
        auto weg = std::make_unique<QWidget>();
        weg->show();
        Eingabewache wache(box);
        wache.Halten();
        QTest::keyClick(box.windowHandle(), Qt::Key_A);
        wache.Weitergeben(*weg);
        weg.reset();
        QCoreApplication::processEvents();
        QVERIFY(!wache.Unterbrochen());
    }

    void TheDieAsksACardOfTheAcceptedCompartment()
    {
        LBoxBuehne b;
        b.OeffnenMit({1, 1, 1, 5});
        b.zufall.Wuerfe({3});
        b.zufall.zahlen.push_back(0.9999);
        b.NaechsteAntwort(true);
        b.Klick("PicWürfel");
        QCOMPARE(b.gefragt, QStringList{"7"}); // the fourth of five
        QCOMPARE(b.Wuerfel()->Augen(), 3);
        QCOMPARE(b.Wuerfel()->Grund(), QColor(255, 255, 255));
        QCOMPARE(b.Anzahl(4), 1);
    }

    void ACompartmentsOnlyCardIsDrawn()
    {
        LBoxBuehne b;
        b.OeffnenMit({0, 0, 1});
        b.zufall.Wuerfe({2});
        b.zufall.zahlen.push_back(0.9999);
        b.NaechsteAntwort(true);
        b.Klick("PicWürfel");
        QCOMPARE(b.gefragt, QStringList{"1"});
    }

    void OfTwoCardsTheLastIsNeverDrawn()
    {
        LBoxBuehne b;
        b.OeffnenMit({0, 0, 2});
        b.zufall.Wuerfe({2});
        b.zufall.zahlen.push_back(0.9999);
        b.NaechsteAntwort(true);
        b.Klick("PicWürfel");
        QCOMPARE(b.gefragt, QStringList{"1"});
    }

    // The generator of the program itself, on a known box.
    void TheFirstDrawsOfARunAreKnown()
    {
        MersenneZufall zufall;
        LBoxBuehne b;
        for (int i = 0; i < 40; ++i)
            b.zufall.zahlen.push_back(zufall.Rnd());
        b.OeffnenMit({10, 10, 10, 10, 10, 10});
        for (int i = 0; i < 4; ++i) {
            b.NaechsteAbfrage([](QWidget *abfrage) { abfrage->close(); });
            b.Klick("PicWürfel");
        }
        QCOMPARE(b.gefragt, (QStringList{"52", "8", "19", "2"}));
    }

    void WithoutAnOpenFileTheDieIsInert()
    {
        LBoxBuehne b;
        b.Zeigen();
        b.meldungen.gezeigt.clear();
        const int augen = b.Wuerfel()->Augen();
        QVERIFY(augen != 1); // what it would roll
        b.Klick("PicWürfel");
        QCOMPARE(b.Wuerfel()->Augen(), augen);
        QCOMPARE(b.meldungen.Texte(), QStringList());
    }

    void TheDieIsRolledByKeyboard()
    {
        LBoxBuehne b;
        b.OeffnenMit({2});
        b.zufall.Wuerfe({6});
        b.NaechsteAntwort(true);
        b.Taste(Qt::Key_W);
        QCOMPARE(b.gefragt, QStringList{"1"});
        QCOMPARE(b.Wuerfel()->Augen(), 6);
    }

    void RejectedRollsAreRedAndRolledAgainWithoutAMessage()
    {
        LBoxBuehne b;
        b.OeffnenMit({0, 0, 0, 0, 1});
        b.zufall.Wuerfe({1, 6, 5, 4});
        b.NaechsteAntwort(false);
        b.Klick("PicWürfel");
        QCOMPARE(b.gefragt, QStringList{"1"});
        QCOMPARE(b.meldungen.Texte(), QStringList());
        QCOMPARE(b.Wuerfel()->Augen(), 4);
    }

    // Neither the rejected faces nor the accepted one may go unseen.
    void WithAnimationEveryRollIsSeen()
    {
        LBoxBuehne b;
        b.KonfigSchreiben({}, "True");
        b.OeffnenMit({0, 0, 0, 0, 1});
        b.zufall.Wuerfe({1, 4});
        QStringList gesehen;

        const Bildwache wache(b.Wuerfel(), gesehen);

        b.NaechsteAntwort(true);
        b.Klick("PicWürfel");
        QCOMPARE(gesehen.filter("#ff0000"), QStringList{"1 #ff0000"});
        QCOMPARE(gesehen.filter("#00ff00"), QStringList{"4 #00ff00"});
        QVERIFY(gesehen.contains("1 #ffffff"));
        QVERIFY(gesehen.contains("4 #ffffff"));
    }

    // Neither a rolling face nor a pause: only the outcome is drawn.
    void WithoutAnimationARollTakesNoTime()
    {
        LBoxBuehne b;
        b.OeffnenMit({0, 0, 0, 0, 1});
        b.zufall.Wuerfe({1, 6, 4});
        b.oeffner.verzoegerung.LoopsPerSecond = 1'000'000;
        const qint64 vorher = b.clock.readings;
        QStringList gemalt;
        const Bildwache wache(b.Wuerfel(), gemalt);
        b.NaechsteAbfrage([&](QWidget *abfrage) {
            [&] { QCOMPARE(b.clock.readings, vorher); }();
            [&] { QCOMPARE(gemalt.filter(QRegularExpression("^[146] #ffffff")), QStringList()); }();
            abfrage->close();
        });
        b.Klick("PicWürfel");
        QCOMPARE(b.gefragt, QStringList{"1"});
        QCOMPARE(gemalt.filter("#00ff00"), QStringList{"4 #00ff00"});
    }

    void EditOnTheDiesRoadOpensTheEditor()
    {
        LBoxBuehne b;
        MakeCardFile(b.Pfad("a.pzb"), {MakeCard(1, 0, 1)});
        int geoeffnet = 0;
        LBoxFenster fenster;
        fenster.MKarten = [&] { ++geoeffnet; };
        b.Zeigen(b.Pfad("a.pzb"), std::move(fenster));
        b.zufall.Wuerfe({6});
        b.NaechsteAbfrage([](QWidget *abfrage) { Hand(*abfrage).Klick("Command1"); });
        b.Klick("PicWürfel");
        QCOMPARE(geoeffnet, 1);
        QVERIFY(!b.Finde("Karte")->isVisible());
        QCOMPARE(b.Anzahl(0), 1);
    }

    void ADieWithoutAcceptableCompartmentEndsRed()
    {
        LBoxBuehne b;
        b.OeffnenMit({0, 51, 101});
        b.zufall.Wuerfe({1});
        b.Klick("PicWürfel");
        QCOMPARE(b.gefragt, QStringList());
        QCOMPARE(b.meldungen.Texte(), QStringList());
        QCOMPARE(b.Wuerfel()->Augen(), 1);
        QCOMPARE(b.Wuerfel()->Grund(), QColor(255, 0, 0));
        // The window goes on as usual.
        b.Taste(Qt::Key_2);
        QCOMPARE(b.meldungen.Texte(),
                 QStringList{"Fach Nr. 1 ist zu voll  Bitte erst dieses Fach bearbeiten"});
    }

    void WithDoneCardsOnlyTheDieSaysSorry()
    {
        LBoxBuehne b;
        b.OeffnenMit({0, 0, 0, 0, 0, 0, 3});
        b.Klick("PicWürfel");
        QCOMPARE(b.meldungen.Texte(), QStringList{"Sorry, gar keine Karten da"});
    }

    void ACardDeletedOnTheDiesRoadIsNotMoved()
    {
        LBoxBuehne b;
        b.OeffnenMit({2});
        b.zufall.Wuerfe({6});
        b.meldungen.antworten = {Meldungen::Antwort::Ja};
        b.NaechsteAbfrage([](QWidget *abfrage) { Hand(*abfrage).Klick("Clöschen"); });
        b.Klick("PicWürfel");
        QCOMPARE(b.Anzahl(0), 1);
        QVERIFY(!b.Finde("Karte")->isVisible());
        QCOMPARE(b.meldungen.gezeigt.size(), 1); // the question alone
        QCOMPARE(b.Gespeichert()[0], QList<int>{2});
    }

    void AutomatikAsksTheFullestAgainAndAgain()
    {
        LBoxBuehne b;
        b.OeffnenMit({0, 0, 2, 1});
        b.clock.perSecond = 1; // every look at the clock sees another second
        b.NaechsteAntwort(true);
        b.Menue("MAutoschalter")->trigger();
        QVERIFY(b.Menue("MAutoschalter")->isChecked());
        QCOMPARE(b.Menue("MAutoschalter")->text(), QString("ausschalten"));
        QTRY_COMPARE(b.gefragt, QStringList{"1"});
        QTRY_COMPARE(b.Anzahl(2), 1);
        b.NaechsteAntwort(true);
        QTRY_COMPARE(b.gefragt, (QStringList{"1", "2"}));
        b.Menue("MAutoschalter")->trigger();
        QVERIFY(!b.Menue("MAutoschalter")->isChecked());
        QCOMPARE(b.Menue("MAutoschalter")->text(), QString("einschalten"));
    }

    void AutomatikWaitsForThreeChangesOfTheSecond()
    {
        LBoxBuehne b;
        b.OeffnenMit({});
        b.clock.perSecond = 1;
        b.clock.readings = 0;
        b.Menue("MAutoschalter")->trigger();
        QTRY_COMPARE(b.meldungen.Texte(), QStringList{"Fach Nr. 0 ist leer"});
        // Noted once at the start, then read twice on every look: the third look is the third change.
        QCOMPARE(b.clock.readings, 1 + 3 * 2);
        QTRY_COMPARE(b.meldungen.Texte().size(), 2);
        b.Menue("MAutoschalter")->trigger();
    }

    void AutomatikOpensNoSecondQuery()
    {
        LBoxBuehne b;
        b.OeffnenMit({2});
        b.clock.perSecond = 1'000'000;
        b.Menue("MAutoschalter")->trigger();
        int offene = 0;
        b.NaechsteAbfrage([&](QWidget *abfrage) {
            // The clock goes on while the learner thinks.
            b.clock.perSecond = 1;
            const qint64 vorher = b.clock.readings;
            QTRY_VERIFY(b.clock.readings > vorher + 12);
            b.clock.perSecond = 1'000'000;
            for (const QWidget *fenster : QApplication::topLevelWidgets())
                offene += fenster->isVisible() && fenster->isModal();
            QCOMPARE(QApplication::activeModalWidget(), abfrage);
        });
        b.Taste(Qt::Key_N);
        QCOMPARE(offene, 1);
        QCOMPARE(b.gefragt, QStringList{"1"});
        QVERIFY(b.Menue("MAutoschalter")->isChecked());
    }

    void ClosingTheWindowEndsAutomatik()
    {
        LBoxBuehne b;
        b.OeffnenMit({1});
        b.Menue("MAutoschalter")->trigger();
        b.fenster->close();
        QVERIFY(!b.Menue("MAutoschalter")->isChecked());
    }
};

PAUKFIX_TEST(LBoxSpielTest)
#include "LBoxSpielTest.moc"
