// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardBulk.h"
#include "CardTransaction.h"
#include "DamageLab.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"

#include <QTest>

using namespace paukfix;
using namespace Qt::StringLiterals;

// What the learner has deleted is gone: no byte of it stays in the card file or beside it.
class LeftTracesTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> directory_;

    QString Path() const { return directory_->filePath("a.pzb"); }

    // How often the secret stands in the files of the directory.
    qsizetype Traces() const
    {
        qsizetype traces = 0;
        for (const QString &name : QDir(directory_->path()).entryList(QDir::Files))
            traces += ReadFile(directory_->filePath(name)).count("Geheimnis");
        return traces;
    }

    // The secret stands in a text of so many bytes, on the card of number 2.
    void Make(int bytes) const
    {
        QList<CardRecord> cards = SomeCards(5);
        cards[1].Frage = "Geheimnis" + QString(bytes, u'x') + "Geheimnis";
        cards[1].Frage_Klartext = u"Geheimnis"_s;
        cards[1].Picture_9_Name = u"weg"_s;
        MakeCardFile(Path(), cards);
        QCOMPARE(Traces(), 3);
    }

    static void Lengths()
    {
        QTest::addColumn<int>("bytes");
        QTest::newRow("in its row") << 30;
        QTest::newRow("on pages of its own") << 30000;
    }

    template <class Change>
    void Changed(Change change) const
    {
        CardFile file(Path());
        CardRecordset cards(file);
        cards.SetIndex(u"FrageNr");
        cards.Seek(CardRecordset::Comparison::Equal, 2);
        change(cards);
    }

private slots:

    void init() { directory_ = std::make_unique<QTemporaryDir>(); }

    void ADeletedCardLeavesNothing_data() { Lengths(); }

    void ADeletedCardLeavesNothing()
    {
        QFETCH(int, bytes);
        Make(bytes);
        Changed([](CardRecordset &cards) { cards.Delete(); });
        QCOMPARE(Traces(), 0);
        QCOMPARE(ReadCards(Path()).size(), 4);
    }

    void AnOverwrittenTextLeavesNothing_data() { Lengths(); }

    void AnOverwrittenTextLeavesNothing()
    {
        QFETCH(int, bytes);
        Make(bytes);
        Changed([](CardRecordset &cards) {
            cards.Edit();
            Field(cards[u"Frage"]).Set(u"kurz"_s);
            Field(cards[u"Frage_Klartext"]).Set(QString());
            cards.Update();
        });
        QCOMPARE(Traces(), 0);
        QCOMPARE(ReadCards(Path()).size(), 5);
    }

    void FilteredCardsLeaveNothing_data() { Lengths(); }

    void FilteredCardsLeaveNothing()
    {
        QFETCH(int, bytes);
        Make(bytes);
        Changed([](CardRecordset &cards) {
            CardTransaction transaction(cards);
            DeleteByTopic(cards, [](const QString &topic) { return topic != u"weg"; }, {});
            transaction.Commit();
        });
        QCOMPARE(Traces(), 0);
        QCOMPARE(ReadCards(Path()).size(), 4);
    }
};

PAUKFIX_CORE_TEST(LeftTracesTest)
#include "LeftTracesTest.moc"
