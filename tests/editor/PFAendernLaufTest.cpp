// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "EditorBuehne.h"
#include "MeldungenFenster.h"
#include "TestProgram.h"

#include <QMessageBox>
#include <QSet>
#include <QTest>
#include <sqlite3.h>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

// Notes the number that the form shows whenever it is painted.
class Malzeuge final : public QObject
{
public:
    explicit Malzeuge(EditorBuehne &b) : b_(b) { b.Finde("Formular")->installEventFilter(this); }

    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            gesehen << b_.Text("MaskFrageNr").toInt();
        return false;
    }

    QSet<int> gesehen;

private:
    EditorBuehne &b_;
};

// What the engine is asked for and how many rows it delivers, on connections that are opened while one lives.
class Mitschrift
{
public:
    Mitschrift() { sqlite3_auto_extension(reinterpret_cast<void (*)()>(Anschliessen)); }

    Mitschrift(const Mitschrift &) = delete;
    Mitschrift &operator=(const Mitschrift &) = delete;

    ~Mitschrift()
    {
        sqlite3_cancel_auto_extension(reinterpret_cast<void (*)()>(Anschliessen));
        Vergessen();
    }

    static void Vergessen()
    {
        zeilen = 0;
        gefragt.clear();
    }

    inline static int zeilen = 0;
    inline static QSet<QByteArray> gefragt;

private:
    static int Anschliessen(sqlite3 *datenbank, char **, const sqlite3_api_routines *)
    {
        return sqlite3_trace_v2(datenbank, SQLITE_TRACE_STMT | SQLITE_TRACE_ROW, Bemerken, nullptr);
    }

    static int Bemerken(unsigned was, void *, void *befehl, void *)
    {
        gefragt << QByteArray(sqlite3_sql(static_cast<sqlite3_stmt *>(befehl)));
        zeilen += was == SQLITE_TRACE_ROW;
        return 0;
    }
};

constexpr int Voll = 32767;    // cards; more cannot be in a box
constexpr int Geduld = 60'000; // ms

const QList<CardRecord> &VolleBox()
{
    static const QList<CardRecord> karten = [] {
        QList<CardRecord> neu;
        for (int i = 1; i <= Voll; ++i)
            neu << MakeCard(i, 0, i);
        return neu;
    }();
    return karten;
}

void Umlaufen()
{
    for (int i = 0; i < 20; ++i)
        QApplication::processEvents();
}

} // namespace

class PFAendernLaufTest : public QObject
{
    Q_OBJECT

private slots:

    void HeldButtonRunsThroughAFullBoxPaintingEveryCardAndStopsWhenReleased()
    {
        EditorBuehne b(VolleBox());
        b.Zeigen();
        const Malzeuge gemalt(b);
        QTest::mousePress(b.Finde("CVVor"), Qt::LeftButton);
        QTRY_VERIFY_WITH_TIMEOUT(b.Text("MaskFrageNr").toInt() > 300, Geduld);
        QTest::mouseRelease(b.Finde("CVVor"), Qt::LeftButton);
        const int dort = b.Text("MaskFrageNr").toInt();
        QVERIFY(dort < Voll);
        for (int i = 2; i <= dort; ++i)
            QVERIFY2(gemalt.gesehen.contains(i), qPrintable(QString::number(i)));
        Umlaufen();
        QCOMPARE(b.Text("MaskFrageNr").toInt(), dort);
        QCOMPARE(int(b.kartei.store.Felder().FrageNr.Integer()), dort);

        QTest::mousePress(b.Finde("CZZurück"), Qt::RightButton);
        QTRY_VERIFY_WITH_TIMEOUT(b.Text("MaskFrageNr").toInt() < dort - 50, Geduld);
        QTest::mouseRelease(b.Finde("CZZurück"), Qt::RightButton);
        const int hier = b.Text("MaskFrageNr").toInt();
        QVERIFY(hier > 1);
        Umlaufen();
        QCOMPARE(b.Text("MaskFrageNr").toInt(), hier);
        QVERIFY(b.Meldungstexte().isEmpty());
    }

    void HeldButtonStopsAtTheEndsOfAFullBoxWithoutAnError_data()
    {
        QTest::addColumn<QString>("knopf");
        QTest::addColumn<int>("von");
        QTest::addColumn<QString>("zuletzt");
        QTest::newRow("forward") << u"CVVor"_s << Voll - 100 << QString::number(Voll);
        QTest::newRow("back") << u"CZZurück"_s << 100 << u"1"_s;
    }

    void HeldButtonStopsAtTheEndsOfAFullBoxWithoutAnError()
    {
        QFETCH(QString, knopf);
        QFETCH(int, von);
        QFETCH(QString, zuletzt);
        EditorBuehne b(VolleBox());
        b.Zeigen();
        b.Ersetze("MaskFrageNr", QString::number(von));
        b.Taste(Qt::Key_Return);
        const Malzeuge gemalt(b);
        QWidget *lauf = b.Finde(qPrintable(knopf));
        QTest::mousePress(lauf, Qt::LeftButton);
        QTRY_VERIFY_WITH_TIMEOUT(b.Neu(), Geduld);
        QVERIFY(gemalt.gesehen.contains(zuletzt.toInt()));
        QVERIFY(gemalt.gesehen.size() >= 100);
        QCOMPARE(b.Text("MFrage"), QString());
        Umlaufen();
        QTest::mouseRelease(lauf, Qt::LeftButton);
        QVERIFY(b.Neu());
        QVERIFY(b.Meldungstexte().isEmpty());
        b.Klick(knopf == u"CVVor"_s ? "CZurück" : "CVor");
        QCOMPARE(b.Text("MaskFrageNr"), zuletzt);
    }

    void RunReadsNothingThatIsNotShown()
    {
        const Mitschrift mitschrift;
        EditorBuehne b(VolleBox());
        b.Zeigen();
        Mitschrift::Vergessen();
        QTest::mousePress(b.Finde("CVVor"), Qt::LeftButton);
        QTRY_VERIFY_WITH_TIMEOUT(b.Text("MaskFrageNr").toInt() > 200, Geduld);
        QTest::mouseRelease(b.Finde("CVVor"), Qt::LeftButton);
        const int schritte = b.Text("MaskFrageNr").toInt() - 1;
        // A row for each card, and a few until it is known what is read of each.
        QVERIFY(Mitschrift::zeilen >= schritte);
        QVERIFY2(Mitschrift::zeilen < schritte + 10, qPrintable(QString::number(Mitschrift::zeilen)));
        for (const QByteArray &frage : Mitschrift::gefragt)
            for (const char *spalte : {"Klartext", "_type", "_endlos"})
                QVERIFY2(!frage.contains(spalte), frage.constData());
    }

    void HeldButtonStopsAtTheEndsOnABlankCardWithoutAnError()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        for (const char *knopf : {"CVVor", "CZZurück"}) {
            QTest::mousePress(b.Finde(knopf), Qt::LeftButton);
            QTRY_VERIFY(b.Neu());
            Umlaufen();
            QTest::mouseRelease(b.Finde(knopf), Qt::LeftButton);
            // Pressed at the end, it stays there.
            b.Klick(knopf);
            QVERIFY(b.Neu());
        }
        QVERIFY(b.Meldungstexte().isEmpty());
    }

    void ShortPressOfTheRunButtonGoesOneCardOn()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Klick("CVVor");
        QCOMPARE(b.Text("MaskFrageNr"), u"2"_s);
    }

    void RunIsHeldByTheSpaceBarToo()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Finde("CVVor")->setFocus();
        QTest::keyPress(b.Finde("CVVor"), Qt::Key_Space);
        QTRY_VERIFY(b.Neu());
        QTest::keyRelease(b.Finde("CVVor"), Qt::Key_Space);
        QVERIFY(b.Meldungstexte().isEmpty());
    }

    void RunDoesNotBeginFromACardThatMayNotBeStored()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Ersetze("MFrage", {});
        QTest::mousePress(b.Finde("CVVor"), Qt::LeftButton);
        Umlaufen();
        QTest::mouseRelease(b.Finde("CVVor"), Qt::LeftButton);
        QCOMPARE(b.Meldungstexte(), QStringList(u"Keine Frage eingegeben"_s));
        QCOMPARE(b.Text("MaskFrageNr"), u"1"_s);
        QVERIFY(!b.Finde<QAbstractButton>("CVVor")->isDown());
    }

    void RunEndsAtAMessage_data()
    {
        QTest::addColumn<int>("karte");
        QTest::newRow("of the first step") << 2;
        QTest::newRow("on the way") << 6;
    }

    void RunEndsAtAMessage()
    {
        QFETCH(int, karte);
        QList<CardRecord> cards;
        for (int i = 1; i <= 20; ++i) {
            cards << MakeCard(i, 0, i);
            if (i >= karte)
                cards.last().Picture_1_Name = u"fehlt.bmp"_s;
        }
        MeldungenFenster meldungen;
        EditorBuehne b(cards, &meldungen);
        b.Zeigen();
        // Closes what opens, a few rounds of the event loop later.
        QStringList gesehen;
        int runden = 0;
        const Drehbuch buch({[&] {
            auto *box = dynamic_cast<QMessageBox *>(QApplication::activeModalWidget());
            if (!box || ++runden < 4)
                return false;
            gesehen << box->text();
            box->accept();
            return true;
        }});
        auto *knopf = b.Finde<QAbstractButton>("CVVor");
        QTest::mousePress(knopf, Qt::LeftButton);
        QTRY_VERIFY(!gesehen.isEmpty() && !QApplication::activeModalWidget());
        Umlaufen();
        QVERIFY(!knopf->isDown());
        QCOMPARE(b.Text("MaskFrageNr").toInt(), karte);
        b.fenster->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(b.fenster.get()));
        Umlaufen();
        QCOMPARE(b.Text("MaskFrageNr").toInt(), karte);
        QCOMPARE(gesehen, QStringList(u"Bilddatei nicht gefunden fehlt.bmp"_s));
    }

    void RunStoresAChangedCardFirst()
    {
        EditorBuehne b(DreiKarten());
        b.Zeigen();
        b.Tippe("MFrage", u"neu "_s);
        b.Klick("CVVor");
        QCOMPARE(b.kartei.Stored()[0].Frage_Klartext, u"neu Frage 1"_s);
    }
};

PAUKFIX_TEST(PFAendernLaufTest)
#include "PFAendernLaufTest.moc"
