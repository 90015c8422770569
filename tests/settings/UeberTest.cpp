// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Ueber.h"

#include "Hand.h"
#include "RichTextBox.h"
#include "TestDienste.h"
#include "TestProgram.h"

#include <QFile>
#include <QImage>

#include <memory>

using namespace paukfix;

class UeberTest : public QObject, private TestDienste, private Hand
{
    Q_OBJECT

private:
    std::unique_ptr<über> fenster_;

    RichTextBox *Zeigen()
    {
        fenster_ = std::make_unique<über>(programm.filePath("ueber.rtf"), meldungen);
        Nimm(*fenster_);
        Hand::Zeigen();
        return Finde<RichTextBox>("RichTextBox1");
    }

    void Schreiben(const QByteArray &text) const
    {
        QFile datei(programm.filePath("ueber.rtf"));
        QVERIFY(datei.open(QIODevice::WriteOnly));
        QCOMPARE(datei.write(text), text.size());
    }

private slots:

    void init() { meldungen.gezeigt.clear(); }

    void cleanup() { fenster_.reset(); }

    void ItShowsTheShippedText()
    {
        Schreiben("{\\rtf1\\ansi \\b f\\'fcr\\b0  alle\\par zwei}");
        const RichTextBox *text = Zeigen();
        QCOMPARE(fenster_->windowTitle(), "über Paukfix");
        QCOMPARE(text->PlainText(), "für alle\r\nzwei");
        QVERIFY(text->isReadOnly());
        QCOMPARE(meldungen.Texte(), QStringList());
    }

    void AMissingFileIsReportedAndTheBoxIsEmpty()
    {
        QFile::remove(programm.filePath("ueber.rtf"));
        const RichTextBox *text = Zeigen();
        QCOMPARE(text->PlainText(), "");
        QCOMPARE(meldungen.gezeigt.size(), 1);
        QVERIFY(meldungen.Texte()[0].contains("ueber.rtf"));
        QVERIFY(fenster_->isVisible());
    }

    void NoLineIsCutAtTheLowerEdge()
    {
        Schreiben("{\\rtf1 " + QByteArray("{\\fs28 gross}\\par viele kleine Zeilen Text\\par ").repeated(30) +
                  "}");
        RichTextBox *text = Zeigen();
        for (int hoehe = 300; hoehe < 340; hoehe += 3) {
            fenster_->resize(500, hoehe);
            QTRY_COMPARE(fenster_->height(), hoehe);
            const QImage bild = text->viewport()->grab().toImage();
            for (int x = 1; x < bild.width(); ++x)
                QCOMPARE(bild.pixelColor(x, bild.height() - 1).name(), bild.pixelColor(0, 0).name());
            QVERIFY(bild.height() > 100);
        }
    }

    void TheButtonClosesIt_data()
    {
        QTest::addColumn<int>("taste");
        QTest::newRow("mouse") << 0;
        QTest::newRow("enter") << int(Qt::Key_Return);
        QTest::newRow("space") << int(Qt::Key_Space);
        QTest::newRow("escape") << int(Qt::Key_Escape);
    }

    void TheButtonClosesIt()
    {
        QFETCH(int, taste);
        Schreiben("{\\rtf1 a}");
        Zeigen();
        if (taste)
            Taste(Qt::Key(taste));
        else
            Klick("Command1");
        QVERIFY(!fenster_->isVisible());
    }
};

PAUKFIX_TEST(UeberTest)
#include "UeberTest.moc"
