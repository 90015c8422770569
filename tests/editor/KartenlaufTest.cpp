// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Kartenlauf.h"

#include "CardEditorWerk.h"
#include "TestProgram.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QTest>

namespace {

// Two buttons, the commands, and a form that only keeps what it is shown.
struct Laufwerk : Werk
{
    explicit Laufwerk(const QList<CardRecord> &cards) : Werk(cards)
    {
        auto *zeile = new QHBoxLayout(&fenster);
        zeile->addWidget(rueckwaerts);
        zeile->addWidget(vorwaerts);
        lauf = std::make_unique<Kartenlauf>(editor, &fenster, rueckwaerts, vorwaerts);
    }

    void Zeigen()
    {
        fenster.show();
        fenster.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&fenster));
    }

    // Does this when the form has been shown so many more cards.
    void NachKarten(int anzahl, std::function<void()> tun)
    {
        form.beimZeigen = [this, bei = form.gezeigt + anzahl, tun = std::move(tun)] {
            if (form.gezeigt == bei)
                tun();
        };
    }

    QWidget fenster;
    QPushButton *rueckwaerts = new QPushButton(&fenster);
    QPushButton *vorwaerts = new QPushButton(&fenster);
    std::unique_ptr<Kartenlauf> lauf;
};

QList<CardRecord> Karten(int anzahl)
{
    QList<CardRecord> cards;
    for (int i = 1; i <= anzahl; ++i)
        cards << MakeCard(i, 0, i);
    return cards;
}

} // namespace

class KartenlaufTest : public QObject
{
    Q_OBJECT

private slots:

    void HeldItPassesEveryCardAndStopsBehindTheLast()
    {
        Laufwerk w(Karten(20));
        w.Zeigen();
        const int vorher = w.form.gezeigt;
        QTest::mousePress(w.vorwaerts, Qt::LeftButton);
        QVERIFY(w.vorwaerts->isDown());
        QTRY_VERIFY(w.editor.Neu());
        QCOMPARE(w.form.gezeigt - vorher, 20); // 19 cards and the blank one
        QVERIFY(!w.vorwaerts->isDown());
        QTest::mouseRelease(w.vorwaerts, Qt::LeftButton);
    }

    void ReleasedItStaysWhereItIs()
    {
        Laufwerk w(Karten(20));
        w.Zeigen();
        w.NachKarten(5, [&] { QTest::keyRelease(w.vorwaerts, Qt::Key_Space); });
        QTest::keyPress(w.vorwaerts, Qt::Key_Space);
        QTRY_VERIFY(!w.vorwaerts->isDown());
        QCOMPARE(w.Nummer(), 6);
        w.NachKarten(2, [&] { w.lauf->Beenden(); });
        QTest::mousePress(w.rueckwaerts, Qt::RightButton);
        QTRY_COMPARE(w.Nummer(), 4);
        QVERIFY(!w.rueckwaerts->isDown());
        for (int i = 0; i < 5; ++i)
            QCoreApplication::processEvents();
        QCOMPARE(w.Nummer(), 4);
    }

    void ACardThatMayNotBeStoredHoldsItBack()
    {
        Laufwerk w(Karten(20));
        w.Zeigen();
        w.Aendern(QString());
        QTest::mousePress(w.vorwaerts, Qt::LeftButton);
        QVERIFY(!w.vorwaerts->isDown());
        QCOMPARE(w.kartei.messages.Texte(), QStringList(QStringLiteral("Keine Frage eingegeben")));
        for (int i = 0; i < 5; ++i)
            QCoreApplication::processEvents();
        QCOMPARE(w.Nummer(), 1);
    }

    void ItEndsWhereAnotherWindowComesInFront()
    {
        Laufwerk w(Karten(20));
        for (QPushButton *knopf : {w.vorwaerts, w.rueckwaerts})
            knopf->setFocusPolicy(Qt::NoFocus); // that it goes would end the run too
        w.Zeigen();
        QWidget anderes;
        w.NachKarten(3, [&] {
            anderes.show();
            anderes.activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(&anderes));
        });
        QTest::mousePress(w.vorwaerts, Qt::LeftButton);
        QTRY_VERIFY(!w.vorwaerts->isDown());
        for (int i = 0; i < 5; ++i)
            QCoreApplication::processEvents();
        QCOMPARE(w.Nummer(), 4);
    }
};

PAUKFIX_TEST(KartenlaufTest)
#include "KartenlaufTest.moc"
