// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Ueber.h"

#include "RichTextBox.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"

#include <QFile>
#include <QPushButton>
#include <QTest>

#include <memory>

using namespace paukfix;

class UeberTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir ordner_;
    TestMeldungen meldungen_;
    std::unique_ptr<über> fenster_;

    RichTextBox *Zeigen()
    {
        fenster_ = std::make_unique<über>(ordner_.filePath("ueber.rtf"), meldungen_);
        fenster_->show();
        if (!QTest::qWaitForWindowActive(fenster_.get()))
            qFatal("no about box");
        return fenster_->findChild<RichTextBox *>("RichTextBox1");
    }

    void Schreiben(const QByteArray &text) const
    {
        QFile datei(ordner_.filePath("ueber.rtf"));
        QVERIFY(datei.open(QIODevice::WriteOnly));
        QCOMPARE(datei.write(text), text.size());
    }

private slots:

    void init() { meldungen_.gezeigt.clear(); }

    void cleanup() { fenster_.reset(); }

    void ItShowsTheShippedText()
    {
        Schreiben("{\\rtf1\\ansi \\b f\\'fcr\\b0  alle\\par zwei}");
        const RichTextBox *text = Zeigen();
        QCOMPARE(fenster_->windowTitle(), "über Paukfix");
        QCOMPARE(text->PlainText(), "für alle\r\nzwei");
        QVERIFY(text->isReadOnly());
        QCOMPARE(meldungen_.Texte(), QStringList());
    }

    void AMissingFileIsReportedAndTheBoxIsEmpty()
    {
        QFile::remove(ordner_.filePath("ueber.rtf"));
        const RichTextBox *text = Zeigen();
        QCOMPARE(text->PlainText(), "");
        QCOMPARE(meldungen_.gezeigt.size(), 1);
        QVERIFY(meldungen_.Texte()[0].contains("ueber.rtf"));
        QVERIFY(fenster_->isVisible());
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
            QTest::keyClick(fenster_->focusWidget(), Qt::Key(taste));
        else
            QTest::mouseClick(fenster_->findChild<QPushButton *>("Command1"), Qt::LeftButton);
        QVERIFY(!fenster_->isVisible());
    }
};

PAUKFIX_TEST(UeberTest)
#include "UeberTest.moc"
