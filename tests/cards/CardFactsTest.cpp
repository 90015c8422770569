// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardFacts.h"

#include "CardFile.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"

#include <QTest>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

CardRecord WithTopic(int number, const QString &topic)
{
    CardRecord card = MakeCard(number, 0, number);
    card.Picture_9_Name = topic;
    return card;
}

struct Cards
{
    explicit Cards(const QList<CardRecord> &cards)
    {
        MakeCardFile(path, cards);
        file = std::make_unique<CardFile>(path);
        recordset = std::make_unique<CardRecordset>(*file);
    }

    QTemporaryDir directory;
    QString path = directory.filePath(u"karten.pzb"_s);
    std::unique_ptr<CardFile> file;
    std::unique_ptr<CardRecordset> recordset;
};

} // namespace

class CardFactsTest : public QObject
{
    Q_OBJECT

private slots:

    void TopicsComeOnceAndInOrder()
    {
        Cards cards({WithTopic(1, u"Zoo"_s), WithTopic(2, u"Äpfel"_s), WithTopic(3, {}),
                     WithTopic(4, u"Zoo"_s), WithTopic(5, u"Band 10"_s), WithTopic(6, u"Band 9"_s)});
        QCOMPARE(Topics(*cards.recordset), (QStringList{u"Äpfel"_s, u"Band 9"_s, u"Band 10"_s, u"Zoo"_s}));
    }

    void AskingForTopicsLeavesCursorAndEditAlone()
    {
        Cards cards({WithTopic(1, u"a"_s), WithTopic(2, u"b"_s)});
        CardRecordset &recordset = *cards.recordset;
        recordset.MoveNext();
        recordset.Edit();
        recordset[u"Picture_9_Name"].Set(u"c"_s);
        QCOMPARE(Topics(recordset), (QStringList{u"a"_s, u"b"_s}));
        recordset.Update();
        QCOMPARE(recordset[u"FrageNr"].Number(), 2.0);
        QCOMPARE(Topics(recordset), (QStringList{u"a"_s, u"c"_s}));
    }

    // Card 4 is the only one of compartment 0.
    void ThePlaceIsThatInTheOrderOfTheIndex()
    {
        Cards cards({MakeCard(1, 2, 2), MakeCard(2, 2, 1), MakeCard(4, 0, 1), MakeCard(7, 5, 1)});
        CardRecordset &recordset = *cards.recordset;
        for (const QString &index : {u"FrageNr"_s, u"BoxKey"_s}) {
            recordset.SetIndex(index);
            recordset.MoveFirst();
            for (int place = 1; place <= 4; ++place, recordset.MoveNext()) {
                QCOMPARE(PlaceOfCurrent(recordset).number, place);
                QCOMPARE(PlaceOfCurrent(recordset).of, 4);
            }
        }
        QVERIFY(recordset.AtEOF());
        QCOMPARE(PlaceOfCurrent(recordset).number, 0);
    }
};

PAUKFIX_CORE_TEST(CardFactsTest)
#include "CardFactsTest.moc"
