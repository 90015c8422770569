// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AbfrageTestSupport.h"
#include "AntwortAnsicht.h"
#include "TestProgram.h"

#include <QRandomGenerator>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>

using namespace paukfix;

namespace {

// Draws the same for every window.
class GleicherZufall final : public Zufall
{
public:
    double Rnd() override { return zahlen_.generateDouble(); }

    void Neu(quint32 saat) { zahlen_.seed(saat); }

private:
    QRandomGenerator zahlen_;
};

// Part of the form of answer that this card does not have.
bool InAndererForm(const QWidget *teil)
{
    while (teil && !qobject_cast<const AntwortAnsicht *>(teil))
        teil = teil->parentWidget();
    return teil && teil->isHidden();
}

// What a person, or a screen reader, finds in a window.
QStringList Befund(const QWidget &fenster)
{
    QStringList zeilen;
    for (const QWidget *teil : fenster.findChildren<QWidget *>()) {
        if (teil->objectName().isEmpty() || teil->objectName().startsWith("qt_") || InAndererForm(teil))
            continue;
        QStringList zeile{teil->objectName(), teil->accessibleName(), teil->accessibleDescription(),
                          teil->toolTip(), teil->font().toString()};
        const QRect platz(teil->mapTo(&fenster, QPoint()), teil->size());
        zeile << (teil->isVisible() ? QString("%1,%2 %3x%4")
                                          .arg(platz.x())
                                          .arg(platz.y())
                                          .arg(platz.width())
                                          .arg(platz.height())
                                    : QString("hidden"));
        zeile << QString("enabled %1 policy %2 hover %3")
                     .arg(teil->isEnabled())
                     .arg(teil->focusPolicy())
                     .arg(teil->underMouse());
        for (const QPalette::ColorRole rolle : {QPalette::Window, QPalette::Base, QPalette::WindowText})
            zeile << teil->palette().color(rolle).name();
        if (const auto *text = qobject_cast<const QTextEdit *>(teil))
            zeile << text->toHtml().section("</head>", 1)
                  << QString::number(text->verticalScrollBar()->value())
                  << QString("read only %1 caret %2 to %3 undo %4 redo %5")
                         .arg(text->isReadOnly())
                         .arg(text->textCursor().anchor())
                         .arg(text->textCursor().position())
                         .arg(text->document()->isUndoAvailable())
                         .arg(text->document()->isRedoAvailable());
        if (const auto *knopf = qobject_cast<const QAbstractButton *>(teil))
            zeile << knopf->text() << QString("on %1 down %2").arg(knopf->isChecked()).arg(knopf->isDown());
        if (const auto *knopf = qobject_cast<const QPushButton *>(teil))
            zeile << QString("default %1").arg(knopf->isDefault());
        if (const auto *label = qobject_cast<const QLabel *>(teil))
            zeile << label->text() << QString("picture %1").arg(!label->pixmap().isNull());
        zeilen << zeile.join(" | ");
    }
    zeilen.sort();
    // Where Tab goes from the start.
    QStringList folge;
    const QWidget *erstes = fenster.focusWidget();
    const QWidget *teil = erstes;
    do {
        if (teil->isVisible() && teil->isEnabled() && teil->focusPolicy() & Qt::TabFocus &&
            !teil->objectName().isEmpty())
            folge << teil->objectName();
        teil = teil->nextInFocusChain();
    } while (teil != erstes);
    zeilen << "tab: " + folge.join(", ");
    zeilen << QString("window %1x%2, focus shown %3")
                  .arg(fenster.width())
                  .arg(fenster.height())
                  .arg(fenster.testAttribute(Qt::WA_KeyboardFocusChange));
    return zeilen;
}

QStringList Unterschiede(const QStringList &ist, const QStringList &soll)
{
    QStringList anders;
    for (qsizetype i = 0; i < std::max(ist.size(), soll.size()); ++i) {
        const QStringList eines = ist.value(i).split(" | "), anderes = soll.value(i).split(" | ");
        for (qsizetype k = 0; k < std::max(eines.size(), anderes.size()); ++k)
            if (eines.value(k) != anderes.value(k))
                anders << QString("%1: %2 instead of %3")
                              .arg(eines[0], eines.value(k).left(300), anderes.value(k).left(300));
    }
    return anders;
}

struct Anblick
{
    QStringList befund;
    QImage bild;
};

// What happens to a window and its parts that a screen reader follows.
class Zeuge final : public QObject
{
public:
    Zeuge() { qApp->installEventFilter(this); }

    QStringList gesehen;

protected:
    bool eventFilter(QObject *objekt, QEvent *event) override
    {
        const bool zeigt = event->type() == QEvent::Show && objekt->objectName() == "PFUse";
        if (objekt->isWidgetType() &&
            (zeigt || event->type() == QEvent::WindowActivate || event->type() == QEvent::FocusIn) &&
            (objekt->objectName() == "PFUse" || event->type() == QEvent::FocusIn))
            gesehen << QString("%1 %2").arg(event->type()).arg(objekt->objectName());
        return false;
    }
};

} // namespace

// One window asks all cards: each looks as if the window had been made for it.
class PFUseFrischTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<AbfrageBuehne> b_;
    GleicherZufall zufall_;
    QRandomGenerator wuerfel_;

    int Wurf(int seiten) { return static_cast<int>(wuerfel_.bounded(seiten)); }

    CardRecord Zufallskarte()
    {
        CardRecord karte = MakeCard(Wurf(900), Wurf(6), 1);
        karte.Antworttyp = Wurf(4); // 0 and 3 are judged by the learner
        const QString lang = QString("Ein langer Text. ").repeated(80);
        karte.Frage = Wurf(3) ? QString("Frage %1").arg(Wurf(99)) : lang;
        karte.Antwort_1 = karte.Antwort_1_Klartext = Wurf(4) ? QString("ja") : lang;
        karte.Antwort_2 = Wurf(3) ? QString("{\\rtf1\\b fett\\b0 %1\\par}").arg(Wurf(9)) : lang;
        karte.Antwort_ch_1 = Wurf(2);
        karte.Antwort_ch_4 = Wurf(2);
        karte.Picture_9_Name = Wurf(2) ? QString("Thema %1").arg(Wurf(9)) : QString();
        if (Wurf(2))
            karte.Picture_1_Name = "bild.bmp";
        if (Wurf(3) == 0)
            karte.Picture_2_Name = "bild.bmp";
        if (Wurf(2)) {
            karte.PictureTop = 300 + Wurf(3000);
            karte.Pictureleft = 300 + Wurf(5000);
            karte.Picturewidth = karte.Pictureheight = 1500 + Wurf(3000);
        }
        if (Wurf(3) == 0)
            karte.Picture_6_Name = "klang.wav";
        if (Wurf(3) == 0)
            karte.Picture_8_Name = "falsch.wav";
        return karte;
    }

    void Rad(QWidget *teil, int schritte, Qt::KeyboardModifiers dazu) const
    {
        const QPointF mitte = teil->rect().center();
        QWheelEvent rad(mitte, teil->mapToGlobal(mitte), {}, {0, 120 * schritte}, Qt::NoButton, dazu,
                        Qt::NoScrollPhase, false);
        QApplication::sendEvent(teil, &rad);
    }

    // What learners do, and children.
    void Etwas()
    {
        switch (Wurf(12)) {
        case 0:
            b_->Tippe("ja");
            break;
        case 1:
            b_->Taste(Qt::Key_Z, Qt::ControlModifier);
            break;
        case 2:
            b_->Taste(Qt::Key_Tab);
            break;
        case 3:
            b_->Taste(static_cast<Qt::Key>(Qt::Key_1 + Wurf(5)));
            break;
        case 4:
            b_->Finde<QTextEdit>("MFrage")->selectAll();
            break;
        case 5:
            for (QTextEdit *text : b_->fenster->findChildren<QTextEdit *>())
                if (text->isVisible())
                    Rad(text->viewport(), -2, Qt::NoModifier);
            break;
        case 6:
            for (QTextEdit *text : b_->fenster->findChildren<QTextEdit *>())
                if (text->isVisible())
                    Rad(text->viewport(), 1 + Wurf(3), Qt::ControlModifier); // larger letters
            break;
        case 7:
            b_->fenster->resize(b_->fenster->size() + QSize(Wurf(80), Wurf(80)));
            break;
        case 8:
            if (auto *bild = b_->Finde<QWidget>("Picture1"); bild->isVisible()) {
                QTest::mousePress(bild, Qt::LeftButton, {}, {5, 5});
                QTest::mouseMove(bild, {25, 15});
                QMouseEvent zug(QEvent::MouseMove, QPointF(25, 15), bild->mapToGlobal(QPointF(25, 15)),
                                Qt::NoButton, Qt::LeftButton, {});
                QApplication::sendEvent(bild, &zug);
                QTest::mouseRelease(bild, Qt::LeftButton, {}, {25, 15});
            }
            break;
        case 9:
            b_->Klick(Wurf(2) ? "Ergebnis_R" : "Ergebnis_F");
            break;
        case 10:
            for (const char *name : {"Command3", "Cpruefen", "NochEinmal"})
                if (b_->Finde<QPushButton>(name)->isVisible() && Wurf(2))
                    QTest::mousePress(b_->Finde<QPushButton>(name), Qt::LeftButton); // and no release
            break;
        default:
            b_->Finde<QPushButton>("Cpruefen")->click();
            break;
        }
    }

    static Anblick Ansehen(QWidget &fenster)
    {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
        return {Befund(fenster), fenster.grab().toImage()};
    }

    // Asks the current card; `lernen` acts once the window has been looked at.
    Anblick Fragen(quint32 saat, const std::function<void()> &lernen)
    {
        Anblick anblick;
        zufall_.Neu(saat);
        b_->Fragen([&] {
            anblick = Ansehen(*b_->fenster);
            lernen();
        });
        return anblick;
    }

private slots:

    void init()
    {
        QApplication::setCursorFlashTime(0); // a caret that is always there
        wuerfel_.seed(20);
        b_ = std::make_unique<AbfrageBuehne>(zufall_);
        QImage bild(300, 200, QImage::Format_RGB32);
        bild.fill(Qt::darkCyan);
        QVERIFY(bild.save(b_->kartei.filePath("bild.bmp")));
    }

    void NothingOfTheLastCardIsLeft_data()
    {
        QTest::addColumn<bool>("vorbereitet");
        QTest::newRow("the card was made ready") << true;
        QTest::newRow("another card is asked") << false;
    }

    void NothingOfTheLastCardIsLeft()
    {
        QFETCH(bool, vorbereitet);
        for (quint32 runde = 0; runde < 60; ++runde) {
            const CardRecord karte = Zufallskarte();
            b_->store.CloseCardFile();
            QFile::remove(b_->kartei.filePath("a.pzb"));
            b_->Oeffnen({karte, MakeCard(950, 6, 1)});
            if (b_->fenster)
                b_->fenster->Vorbereiten(vorbereitet ? static_cast<int>(karte.FachNr) : 6);
            const Anblick wieder = Fragen(runde, [&] {
                for (int i = Wurf(12); i >= 0 && b_->fenster->isVisible(); --i)
                    Etwas();
            });
            std::unique_ptr<PFUse> alt = std::exchange(b_->fenster, nullptr);
            const Anblick frisch = Fragen(runde, [] {});
            b_->fenster = std::move(alt);
            QCOMPARE(Unterschiede(wieder.befund, frisch.befund).join(u'\n'), QString());
            QVERIFY2(wieder.bild == frisch.bild, qPrintable(QString::number(runde)));
        }
    }

    // Each part of the box would be a window of the window system's, and be painted by itself.
    void MadeReadyTheQueryHasItsWindowAndTheBoxStaysOne()
    {
        b_->Oeffnen({TippKarte("x")});
        QWidget box;
        QWidget teil(&box);
        box.show();
        PFUse abfrage(b_->store, b_->Alle(), b_->wechsel, &box);
        abfrage.Vorbereiten(0);
        QVERIFY(abfrage.windowHandle() && abfrage.windowHandle()->handle());
        QVERIFY(!abfrage.isVisible());
        QVERIFY(!teil.windowHandle());
        QVERIFY(!teil.testAttribute(Qt::WA_NativeWindow));
    }

    // It says what is shown, becomes active and gets the focus; a window that stays is no exception.
    void AScreenReaderIsToldOfEveryQuestion()
    {
        QStringList erste;
        for (int i = 0; i < 3; ++i) {
            Zeuge zeuge;
            b_->Fragen(TippKarte("x"), [&] {
                if (i == 0)
                    erste = zeuge.gesehen;
                QCOMPARE(zeuge.gesehen, erste);
                QVERIFY(erste.contains(QString("%1 PFUse").arg(QEvent::Show)));
                QVERIFY(erste.contains(QString("%1 PFUse").arg(QEvent::WindowActivate)));
                QVERIFY(erste.contains(QString("%1 Antwort(0)").arg(QEvent::FocusIn)));
                b_->Antworten("x");
            });
        }
    }
};

PAUKFIX_TEST(PFUseFrischTest)
#include "PFUseFrischTest.moc"
