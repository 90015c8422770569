// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KarteiOeffner.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"
#include "VollePlatte.h"

#include <QDir>
#include <QFile>
#include <QTest>

using namespace paukfix;
using namespace Qt::StringLiterals;

// What the learner is asked and told when a card file is opened: one from before the sums of pages, and one
// of which a bit has changed.
class PruefsummenTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> directory_;
    std::unique_ptr<TestMeldungen> meldungen_;
    std::unique_ptr<TestClock> clock_;
    std::unique_ptr<CardStore> store_;
    std::unique_ptr<KarteiOeffner> oeffner_;
    QList<CardRecord> cards_;

    QString Path(const QString &name = u"alt.pzb"_s) const { return directory_->filePath(name); }

    QByteArray Bytes() const
    {
        QFile file(Path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    bool Open(QString name = u"alt.pzb"_s)
    {
        oeffner_->OpenCardFile(name);
        return !name.isEmpty();
    }

    // The questions and messages since the last time.
    QStringList Gesagt()
    {
        const QStringList texte = meldungen_->Texte();
        meldungen_->gezeigt.clear();
        return texte;
    }

    static QString Frage(const QString &name = u"alt.pzb"_s)
    {
        return u"Die Kartei „%1“ stammt von einer älteren Version und hat noch keine Prüfsummen, an denen "
               u"jede "
               u"Beschädigung zu erkennen ist – soll sie welche bekommen (ältere Versionen von Paukfix "
               u"öffnen sie "
               u"dann nicht mehr)?"_s.arg(name);
    }

private slots:

    void initTestCase() { VollePlatte::Einbauen(); }

    void init()
    {
        directory_ = std::make_unique<QTemporaryDir>();
        meldungen_ = std::make_unique<TestMeldungen>();
        clock_ = std::make_unique<TestClock>();
        store_ = std::make_unique<CardStore>();
        oeffner_ = std::make_unique<KarteiOeffner>(*store_, *meldungen_, *clock_);
        store_->KarteiPfad = directory_->path();
        cards_.clear();
        for (int i = 1; i <= 21; ++i)
            cards_ << MakeCard(i, (i - 1) / 3, (i - 1) % 3 + 1);
        MakeFormerCardFile(Path(), cards_);
    }

    void cleanup()
    {
        VollePlatte::Setzen(VollePlatte::Zustand::Gesund);
        oeffner_.reset();
        store_.reset();
    }

    void AfterYesTheOlderFileHasItsSumsAndIsOpen()
    {
        meldungen_->antworten = {Meldungen::Antwort::Ja};
        QVERIFY(Open());
        QCOMPARE(Gesagt(), QStringList{Frage()});
        QCOMPARE(store_->CurrentFileName, u"alt.pzb"_s);
        for (const Fach &fach : store_->FachInfo)
            QCOMPARE(fach.Anzahl, qint16(3));
        QCOMPARE(meldungen_->Titel(), u"Merkkasten (alt.pzb)"_s);
        store_->CloseCardFile();
        QCOMPARE(static_cast<int>(Bytes()[20]), 8);
        QCOMPARE(QDir(directory_->path()).entryList(QDir::Files | QDir::Hidden), QStringList{u"alt.pzb"_s});
        QCOMPARE(ReadCards(Path()), cards_);
        QVERIFY(Open());
        QCOMPARE(Gesagt(), QStringList());
    }

    void AfterNoTheFileStaysAndTheQuestionIsNotRepeated()
    {
        const QByteArray before = Bytes();
        QVERIFY(Open());
        QCOMPARE(Gesagt(), QStringList{Frage()});
        QVERIFY(store_->IsOpen());
        store_->CloseCardFile();
        QCOMPARE(Bytes(), before);
        QVERIFY(Open());
        QCOMPARE(Gesagt(), QStringList());
        // Another file is another question.
        MakeFormerCardFile(Path(u"andere.pzb"_s), cards_);
        QVERIFY(Open(u"andere.pzb"_s));
        QCOMPARE(Gesagt(), QStringList{Frage(u"andere.pzb"_s)});
    }

    void WhereTheDiskIsFullTheFileIsOpenAsItWas()
    {
        const QByteArray before = Bytes();
        meldungen_->antworten = {Meldungen::Antwort::Ja};
        meldungen_->beiFrage = [] { VollePlatte::Setzen(VollePlatte::Zustand::Voll); };
        const bool open = Open();
        VollePlatte::Setzen(VollePlatte::Zustand::Gesund);
        QCOMPARE(meldungen_->gezeigt.size(), 2);
        QVERIFY2(meldungen_->gezeigt[1].text.startsWith(u"Der Datenträger ist voll"_s),
                 qPrintable(meldungen_->gezeigt[1].text));
        QVERIFY(meldungen_->gezeigt[1].text.endsWith(u" Die Kartei bleibt ohne Prüfsummen."_s));
        QVERIFY(open);
        store_->CloseCardFile();
        QCOMPARE(Bytes(), before);
    }

    void AChangedLetterIsDamageAndItsCardIsNamed()
    {
        QFile::remove(Path());
        MakeCardFile(Path(), cards_);
        QByteArray bytes = Bytes();
        const qsizetype at = bytes.indexOf("Frage 7");
        QVERIFY(at > 0);
        bytes[at] = static_cast<char>(bytes[at] ^ 4); // Brage 7
        QFile file(Path());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        file.close();
        meldungen_->antworten = {Meldungen::Antwort::Ja};
        QVERIFY(Open());
        const QStringList said = Gesagt();
        QCOMPARE(said.size(), 3);
        QCOMPARE(said[0], u"Diese Datei ist beschädigt Reparaturversuch ?"_s);
        QVERIFY2(said[1].startsWith(u"21 Karten wurden gerettet; "_s), qPrintable(said[1]));
        QCOMPARE(said[2], u"Datei wurde repariert"_s);
        QFile report(Path() + u".Reparatur.txt"_s);
        QVERIFY(report.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(report.readAll());
        QVERIFY2(text.contains(u"Bei 1 von "_s), qPrintable(text));
        QVERIFY2(
            text.contains(u"Frage („Brage“) und Frage Klartext („Frage“) sagen Verschiedenes, beide sind "
                          u"aufgehoben; steht auf einer Seite, deren Prüfsumme nicht stimmt\n"_s),
            qPrintable(text));
        store_->CloseCardFile();
        cards_[6].Frage = u"Brage 7"_s;
        QCOMPARE(ReadCards(Path()), cards_);
    }
};

PAUKFIX_CORE_TEST(PruefsummenTest)
#include "PruefsummenTest.moc"
