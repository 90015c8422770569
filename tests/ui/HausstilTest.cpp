// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Farben.h"
#include "Hausfarben.h"
#include "Symbole.h"
#include "Tastenkappe.h"
#include "TestProgram.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QGroupBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QListWidget>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>
#include <QStyle>
#include <QTableWidget>
#include <QTest>
#include <QTextEdit>
#include <QToolButton>
#include <QVBoxLayout>

#include <functional>
#include <memory>

using namespace paukfix;
using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(std::function<QWidget *()>)

// The style, seen as its users see it: by its pixels, in the light and in the dark.
class HausstilTest : public QObject
{
    Q_OBJECT

private:
    static constexpr int Luft = 20; // around the control

    static QPalette Dunkel()
    {
        QPalette palette(QColor(0x31, 0x36, 0x3B), QColor(0x23, 0x25, 0x29));
        palette.setColor(QPalette::Base, QColor(0x1E, 0x20, 0x24));
        return palette;
    }

    static QPalette Palette(bool dunkel) { return dunkel ? Dunkel() : QPalette(QColor(0xF0, 0xF0, 0xEF)); }

    // `widget` in the middle of a window that has the keyboard.
    struct Buehne
    {
        explicit Buehne(QWidget *widget, QWidget *fokus = nullptr) : inhalt(widget)
        {
            auto *spalte = new QVBoxLayout(&fenster);
            spalte->setContentsMargins(Luft, Luft, Luft, Luft);
            spalte->addWidget(widget);
            auto *anderes = new QLineEdit(&fenster);
            spalte->addWidget(anderes);
            fenster.show();
            fenster.activateWindow();
            if (!QTest::qWaitForWindowActive(&fenster))
                qFatal("no active window");
            (fokus ? fokus : anderes)->setFocus();
            QCoreApplication::processEvents();
        }

        QImage Bild()
        {
            QCoreApplication::processEvents();
            return fenster.grab().toImage();
        }

        QWidget fenster;
        QWidget *inhalt;
    };

    // The best contrast with `grund` in a part of a picture: that of a line or of a letter's stem.
    static double BesterKontrast(const QImage &bild, const QRect &teil, const QColor &grund)
    {
        double bester = 1;
        const QRect platz = teil & bild.rect();
        for (int y = platz.top(); y <= platz.bottom(); ++y)
            for (int x = platz.left(); x <= platz.right(); ++x)
                bester = std::max(bester, Farben::Kontrast(bild.pixelColor(x, y), grund));
        return bester;
    }

    static void JedesSteuerelement(const std::function<void(const char *, std::function<QWidget *()>)> &zeile)
    {
        zeile("button", [] { return new QPushButton(u"Knopf"_s); });
        zeile("leading", [] {
            auto *knopf = new QPushButton(u"Weiter"_s);
            knopf->setProperty("leitend", true);
            return knopf;
        });
        zeile("removing", [] {
            auto *knopf = new QPushButton(u"löschen"_s);
            knopf->setProperty("loeschend", true);
            return knopf;
        });
        zeile("line edit", [] { return new QLineEdit(u"Text"_s); });
        zeile("text edit", [] { return new QTextEdit(u"Text"_s); });
        zeile("combo box", [] {
            auto *feld = new QComboBox;
            feld->addItem(u"Text"_s);
            return feld;
        });
        zeile("editable combo box", [] {
            auto *feld = new QComboBox;
            feld->setEditable(true);
            feld->addItem(u"Text"_s);
            return feld;
        });
        zeile("spin box", [] { return new QSpinBox; });
        zeile("list", [] {
            auto *liste = new QListWidget;
            liste->addItem(u"Text"_s);
            return liste;
        });
        zeile("tick box", [] { return new QCheckBox(u"Text"_s); });
        zeile("option", [] { return new QRadioButton(u"Text"_s); });
    }

    static void Reihen()
    {
        QTest::addColumn<std::function<QWidget *()>>("machen");
        QTest::addColumn<bool>("dunkel");
        JedesSteuerelement([](const char *name, const std::function<QWidget *()> &machen) {
            for (const bool dunkel : {false, true})
                QTest::addRow("%s, %s", name, dunkel ? "dark" : "light") << machen << dunkel;
        });
    }

private slots:

    void cleanup() { QApplication::setPalette(QPalette()); }

    void EveryControlHasAnOutlineThatIsSeen_data() { Reihen(); }

    void EveryControlHasAnOutlineThatIsSeen()
    {
        QFETCH(std::function<QWidget *()>, machen);
        QFETCH(bool, dunkel);
        QApplication::setPalette(Palette(dunkel));
        Buehne b(machen());
        const QImage bild = b.Bild();
        // A strip across the left edge, at half height.
        const QRect kante(b.inhalt->x() - 2, b.inhalt->geometry().center().y(), 6, 1);
        const double kontrast = BesterKontrast(bild, kante, b.fenster.palette().color(QPalette::Window));
        QVERIFY2(kontrast >= Farben::KontrastUmriss, qPrintable(QString::number(kontrast)));
    }

    void HeadingsStandAboveTheirCells()
    {
        auto *tabelle = new QTableWidget(1, 1);
        tabelle->verticalHeader()->hide();
        tabelle->setShowGrid(false);
        tabelle->setHorizontalHeaderLabels({u"HHHH"_s});
        tabelle->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft);
        tabelle->setItem(0, 0, new QTableWidgetItem(u"HHHH"_s));
        Buehne b(tabelle);
        tabelle->clearSelection();
        tabelle->setCurrentItem(nullptr);
        const auto ersterStrich = [](const QImage &bild) { // the left edge of the first letter
            for (int x = 2; x < bild.width(); ++x)
                for (int y = 4; y < bild.height() - 4; ++y)
                    if (bild.pixelColor(x, y).lightness() < 90)
                        return x;
            return -1;
        };
        const int kopf = ersterStrich(tabelle->horizontalHeader()->grab().toImage());
        const QRect zelle = tabelle->visualItemRect(tabelle->item(0, 0));
        QCOMPARE(ersterStrich(tabelle->viewport()->grab(zelle).toImage()), kopf);
    }

    void TheRingIsRoundAtItsCorners()
    {
        auto *knopf = new QPushButton(u"Knopf"_s);
        Buehne b(knopf, knopf);
        // Where a square hole would cut into the round line.
        const QPoint ecke = knopf->geometry().topLeft();
        const QColor grund = b.fenster.palette().color(QPalette::Window);
        const double kontrast = Farben::Kontrast(b.Bild().pixelColor(ecke), grund);
        QVERIFY2(kontrast >= Farben::KontrastUmriss, qPrintable(QString::number(kontrast)));
    }

    void TextsOfBoxesBeginWhereThoseOfFieldsDo()
    {
        auto *feld = new QWidget;
        auto *spalte = new QVBoxLayout(feld);
        auto *zeile = new QLineEdit(u"HHH"_s);
        auto *box = new QComboBox;
        box->addItem(u"HHH"_s);
        spalte->addWidget(zeile);
        spalte->addWidget(box);
        Buehne b(feld);
        const auto ersterStrich = [](QWidget *teil) {
            const QImage bild = teil->grab().toImage();
            const int y = bild.height() / 2 + 2;
            for (int x = 4; x < bild.width(); ++x)
                if (bild.pixelColor(x, y).lightness() < 90)
                    return x;
            return -1;
        };
        QCOMPARE(ersterStrich(box), ersterStrich(zeile));
    }

    void EveryTextIsReadable_data() { Reihen(); }

    void EveryTextIsReadable()
    {
        QFETCH(std::function<QWidget *()>, machen);
        QFETCH(bool, dunkel);
        QApplication::setPalette(Palette(dunkel));
        Buehne b(machen());
        const QImage bild = b.Bild();
        QRect innen = b.inhalt->geometry().adjusted(6, 6, -6, -6);
        if (qobject_cast<QCheckBox *>(b.inhalt) || qobject_cast<QRadioButton *>(b.inhalt))
            innen.setLeft(b.inhalt->x() + 22); // behind the mark
        innen.setHeight(std::min(innen.height(), 30));
        const QColor grund = bild.pixelColor(innen.bottomRight() - QPoint(30, 1));
        const double kontrast = BesterKontrast(bild, innen, grund);
        QVERIFY2(kontrast >= Farben::KontrastText, qPrintable(QString::number(kontrast)));
    }

    void WhatCannotBeUsedCanBeReadAllTheSame()
    {
        for (const bool dunkel : {false, true}) {
            QPalette palette = Palette(dunkel);
            for (const auto rolle : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
                palette.setColor(QPalette::Disabled, rolle, dunkel ? Qt::black : Qt::white);
            QApplication::style()->polish(palette); // as the desktop's colours are
            QApplication::setPalette(palette);
            for (QAbstractButton *knopf : {static_cast<QAbstractButton *>(new QPushButton(u"Knopf"_s)),
                                           static_cast<QAbstractButton *>(new QCheckBox(u"Text"_s))}) {
                knopf->setEnabled(false);
                Buehne b(knopf);
                const QImage bild = b.Bild();
                QRect innen = knopf->geometry().adjusted(6, 6, -6, -6);
                if (qobject_cast<QCheckBox *>(knopf))
                    innen.setLeft(knopf->x() + 22); // behind the mark
                const double kontrast = BesterKontrast(bild, innen, bild.pixelColor(innen.topRight()));
                QVERIFY2(kontrast >= 2.5, qPrintable(QString::number(kontrast)));
                QVERIFY2(kontrast < Farben::KontrastText, qPrintable(QString::number(kontrast)));
            }
        }
    }

    void TheKeyboardIsSeenAtEveryControl_data() { Reihen(); }

    void TheKeyboardIsSeenAtEveryControl()
    {
        QFETCH(std::function<QWidget *()>, machen);
        QFETCH(bool, dunkel);
        QApplication::setPalette(Palette(dunkel));
        Buehne b(machen());
        const QImage vorher = b.Bild();
        b.inhalt->setFocus();
        const QImage nachher = b.Bild();
        // Two pixels of the ring in a strip across the left edge, where there was none.
        const QColor fenster = b.fenster.palette().color(QPalette::Window);
        const QRect kante(b.inhalt->x() - 5, b.inhalt->geometry().center().y(), 8, 1);
        int ring = 0;
        for (int x = kante.left(); x <= kante.right(); ++x)
            if (vorher.pixelColor(x, kante.y()) != nachher.pixelColor(x, kante.y()) &&
                Farben::Kontrast(nachher.pixelColor(x, kante.y()), fenster) >= Farben::KontrastUmriss)
                ++ring;
        QVERIFY2(ring >= 1, "no ring");
        QCOMPARE(HausfarbenZu(b.fenster.palette()).fokus.name(),
                 nachher
                     .pixelColor(b.inhalt->x() + (vorher.pixelColor(b.inhalt->x() - 3, kante.y()) ==
                                                          nachher.pixelColor(b.inhalt->x() - 3, kante.y())
                                                      ? 1
                                                      : -3),
                                 kante.y())
                     .name());
    }

    // Around the tick box that has the keyboard when the window comes up, too.
    void TheFileDialogHasTheHousesIcons()
    {
        QFileDialog dialog;
        dialog.setOption(QFileDialog::DontUseNativeDialog);
        for (const auto &[knopf, symbol] : {std::pair{"backButton", Symbole::Zurueck},
                                            {"forwardButton", Symbole::Vor},
                                            {"toParentButton", Symbole::Hinauf},
                                            {"newFolderButton", Symbole::NeuerOrdner},
                                            {"listModeButton", Symbole::Kacheln},
                                            {"detailModeButton", Symbole::Einzelheiten}}) {
            const auto *taste = dialog.findChild<QToolButton *>(knopf);
            QVERIFY2(taste, knopf);
            QVERIFY2(taste->icon().pixmap(20).toImage() == Symbol(symbol).pixmap(20).toImage(), knopf);
        }
    }

    void TheRingFollowsItsControl()
    {
        auto *gruppe = new QWidget;
        auto *zeile = new QHBoxLayout(gruppe);
        zeile->setContentsMargins(0, 0, 0, 0);
        auto *knopf = new QPushButton(u"Knopf"_s);
        zeile->addWidget(knopf);
        Buehne b(gruppe, knopf);
        const auto amRing = [&](int x) {
            return b.Bild().pixelColor(x, gruppe->geometry().center().y()) ==
                   HausfarbenZu(b.fenster.palette()).fokus;
        };
        QVERIFY(amRing(gruppe->x() - 3)); // outside the group, which is no wider than the button
        zeile->insertSpacing(0, 50);
        zeile->activate();
        QVERIFY(!amRing(gruppe->x() - 3));
        QVERIFY(amRing(gruppe->x() + knopf->x() - 3));
        knopf->hide();
        QVERIFY(!amRing(gruppe->x() + knopf->x() - 3));
    }

    void OnlyTheLeadingButtonIsHoney()
    {
        auto *knopf = new QPushButton;
        Buehne b(knopf);
        const auto grund = [&] { return b.Bild().pixelColor(knopf->geometry().topLeft() + QPoint(12, 6)); };
        const QColor honig = HausfarbenZu(b.fenster.palette()).akzent;
        QVERIFY(grund() != honig);
        knopf->setProperty("leitend", true);
        knopf->setText(u"OK"_s);
        QCOMPARE(grund(), honig);
        QVERIFY(knopf->sizeHint().width() >= 128);
        QVERIFY(knopf->sizeHint().height() >= 40);
    }

    // Boxes of the toolkit had green ticks on OK and Ja.
    void StandardButtonsHaveNoPictures()
    {
        QMessageBox box(QMessageBox::Question, u"Titel"_s, u"Text"_s, QMessageBox::Yes | QMessageBox::No);
        for (const QAbstractButton *knopf : box.buttons())
            QVERIFY(knopf->icon().isNull());
        QVERIFY(!box.iconPixmap().isNull());
    }

    void EveryIconIsSeenInTheDarkToo()
    {
        for (const bool dunkel : {false, true}) {
            QApplication::setPalette(Palette(dunkel));
            const QColor grund = QApplication::palette().color(QPalette::Window);
            for (int i = 0; i <= static_cast<int>(Symbole::Leeren); ++i) {
                QImage bild(40, 40, QImage::Format_RGB32);
                bild.fill(grund);
                QPainter maler(&bild);
                Symbol(static_cast<Symbole>(i)).paint(&maler, bild.rect());
                maler.end();
                QVERIFY2(BesterKontrast(bild, bild.rect(), grund) >= Farben::KontrastText,
                         qPrintable(QString::number(i)));
                for (int rand = 0; rand < 40; ++rand) // nothing is cut off
                    QVERIFY2(bild.pixelColor(rand, 0) == grund && bild.pixelColor(0, rand) == grund,
                             qPrintable(QString::number(i)));
            }
        }
    }

    void KeysAreSaidWithoutTheirFrames()
    {
        const Tastenkappe zeile(u"[Eingabe] weiter · [Alt]+[R] richtig"_s);
        QCOMPARE(zeile.text(), u"Eingabe weiter · Alt+R richtig"_s);
    }

    void KeysThatHaveNoRoomAreLeftOutWhole()
    {
        Tastenkappe zeile(u"[Eingabe] weiter · [Alt]+[R] richtig"_s);
        const Tastenkappe erste(u"[Eingabe] weiter"_s);
        zeile.resize(zeile.sizeHint());
        const QImage ganz = zeile.grab().toImage();
        zeile.resize(zeile.width() - 1, zeile.height());
        const QImage gekuerzt = zeile.grab().toImage();
        const QColor grund = zeile.palette().color(QPalette::Window);
        const QRect rest(erste.sizeHint().width() + 1, 0, zeile.width(), zeile.height());
        QVERIFY(BesterKontrast(ganz, rest, grund) >= Farben::KontrastText);
        QCOMPARE(BesterKontrast(gekuerzt, rest, grund), 1.0);
        QVERIFY(BesterKontrast(gekuerzt, QRect({}, erste.sizeHint()), grund) >= Farben::KontrastText);
    }
};

PAUKFIX_TEST(HausstilTest)
#include "HausstilTest.moc"
