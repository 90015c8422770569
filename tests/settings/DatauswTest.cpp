// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Datausw.h"

#include "Hand.h"
#include "TestProgram.h"

#include <QDir>
#include <QFile>
#include <QListWidget>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace paukfix;

// The file chooser on a real directory, by key and mouse.
class DatauswTest : public QObject, private Hand
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> ordner_;
    QString chosenFileName_;
    std::unique_ptr<Datausw> fenster_;

    void Datei(const QString &name) const
    {
        QFile datei(ordner_->filePath(name));
        QVERIFY(datei.open(QIODevice::WriteOnly));
    }

    QListWidget *Liste() const { return Finde<QListWidget>("Filelist"); }

    QStringList Namen() const
    {
        QStringList namen;
        for (int i = 0; i < Liste()->count(); ++i)
            namen << Liste()->item(i)->text();
        return namen;
    }

    void Zeigen(const QString &vorgabe = {})
    {
        fenster_ = std::make_unique<Datausw>(chosenFileName_);
        fenster_->Auflisten(ordner_->path(), "*.pzb", vorgabe);
        Nimm(*fenster_);
        Hand::Zeigen();
    }

private slots:

    void init()
    {
        ordner_ = std::make_unique<QTemporaryDir>();
        chosenFileName_ = "früher.pzb";
        for (const char *name : {"b.pzb", "A.PZB", "karte 10.pzb", "karte 9.pzb", "bild.jpg", "pzb"})
            Datei(QString::fromUtf8(name));
        QVERIFY(QDir(ordner_->path()).mkdir("ordner.pzb"));
    }

    void cleanup() { fenster_.reset(); }

    void ItListsTheFilesOfThePatternByName()
    {
        Zeigen();
        QCOMPARE(fenster_->windowTitle(), "Datei laden ");
        QCOMPARE(Namen(), (QStringList{"A.PZB", "b.pzb", "karte 9.pzb", "karte 10.pzb"}));
        QCOMPARE(Text("laden"), "laden");
        QCOMPARE(Text("abbrechen"), "abbrechen");
        QVERIFY(Text("Hinweis").contains(ordner_->path()));
    }

    void LadenTakesTheSelectedName()
    {
        Zeigen("b.pzb");
        QCOMPARE(Liste()->currentItem()->text(), "b.pzb");
        Klick("laden");
        QCOMPARE(chosenFileName_, "b.pzb");
        QVERIFY(!fenster_->isVisible());
    }

    void CancellingLeavesNothing_data()
    {
        QTest::addColumn<QString>("wie");
        for (const char *wie : {"abbrechen", "Esc", "close"})
            QTest::newRow(wie) << wie;
    }

    // Not the name that was picked before.
    void CancellingLeavesNothing()
    {
        QFETCH(QString, wie);
        Zeigen();
        if (wie == "abbrechen")
            Klick("abbrechen");
        else if (wie == "Esc")
            Taste(Qt::Key_Escape);
        else
            fenster_->close();
        QCOMPARE(chosenFileName_, "");
        QVERIFY(!fenster_->isVisible());
    }

    void ADoubleClickPicksTheFileUnderThePointer()
    {
        Zeigen("b.pzb");
        const QPoint ort = Liste()->visualItemRect(Liste()->item(2)).center();
        QTest::mouseClick(Liste()->viewport(), Qt::LeftButton, {}, ort);
        QTest::mouseDClick(Liste()->viewport(), Qt::LeftButton, {}, ort);
        QCOMPARE(chosenFileName_, "karte 9.pzb");
        QVERIFY(!fenster_->isVisible());
    }

    void ADoubleClickBesideTheFilesPicksNothing()
    {
        Zeigen();
        const QPoint ort(5, Liste()->viewport()->height() - 3);
        QVERIFY(!Liste()->itemAt(ort));
        QTest::mouseDClick(Liste()->viewport(), Qt::LeftButton, {}, ort);
        QVERIFY(fenster_->isVisible());
        QCOMPARE(chosenFileName_, "früher.pzb");
    }

    void TheKeyboardAloneIsEnough()
    {
        Zeigen();
        Taste(Qt::Key_Down);
        Taste(Qt::Key_Return);
        QCOMPARE(chosenFileName_, "b.pzb");
        QVERIFY(!fenster_->isVisible());
    }

    void TypingFindsAName()
    {
        Zeigen();
        Tippe("kar");
        Taste(Qt::Key_Return);
        QCOMPARE(chosenFileName_, "karte 9.pzb");
    }

    void AnEmptyDirectoryOffersNothing()
    {
        for (const QString &name : QDir(ordner_->path()).entryList(QDir::Files))
            QVERIFY(QFile::remove(ordner_->filePath(name)));
        Zeigen();
        QVERIFY(Namen().isEmpty());
        QVERIFY(!Finde("laden")->isEnabled());
        Taste(Qt::Key_Escape);
        QCOMPARE(chosenFileName_, "");
    }
};

PAUKFIX_TEST(DatauswTest)
#include "DatauswTest.moc"
