// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardTransaction.h"
#include "StoreTestSupport.h"
#include "TestProgram.h"

#include <QTest>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

using Comparison = CardRecordset::Comparison;

#define VERIFY_ERROR(number, step)                                                                           \
    do {                                                                                                     \
        try {                                                                                                \
            step;                                                                                            \
            QFAIL("no error");                                                                               \
        } catch (const StoreError &error) {                                                                  \
            QCOMPARE(error.Number(), number);                                                                \
            QVERIFY(!error.Text().isEmpty());                                                                \
        }                                                                                                    \
    } while (false)

int FrageNr(CardRecordset &cards)
{
    return cards[u"FrageNr"].Integer();
}

} // namespace

class RecordsetTest : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir directory_;
    QString path_;
    std::unique_ptr<CardFile> file_;
    std::unique_ptr<CardRecordset> cards_;

    void Open(const QList<CardRecord> &cards)
    {
        cards_.reset();
        file_.reset();
        QFile::remove(path_);
        MakeCardFile(path_, cards);
        file_ = std::make_unique<CardFile>(path_);
        cards_ = std::make_unique<CardRecordset>(*file_);
        cards_->SetIndex(u"BoxKey");
        cards_->MoveFirst();
    }

private slots:

    void initTestCase() { path_ = directory_.filePath(u"karten.pzb"_s); }

    void WalkFollowsCompartmentThenRunningNumber()
    {
        Open({MakeCard(1, 3, 2), MakeCard(2, 0, 9), MakeCard(3, 3, 1), MakeCard(4, 0, 2)});
        QList<int> order;
        for (cards_->MoveFirst(); !cards_->AtEOF(); cards_->MoveNext())
            order << FrageNr(*cards_);
        QCOMPARE(order, (QList<int>{4, 2, 3, 1}));
    }

    void EndsHoldOnePastTheLastAndBeforeTheFirstCard()
    {
        Open({MakeCard(1, 0, 1), MakeCard(2, 0, 2)});
        cards_->MoveLast();
        cards_->MoveNext();
        QVERIFY(cards_->AtEOF() && !cards_->AtBOF());
        VERIFY_ERROR(3021, cards_->MoveNext());
        VERIFY_ERROR(3021, FrageNr(*cards_));
        cards_->MovePrevious();
        QCOMPARE(FrageNr(*cards_), 2);
        cards_->MoveFirst();
        cards_->MovePrevious();
        QVERIFY(cards_->AtBOF() && !cards_->AtEOF());
        VERIFY_ERROR(3021, cards_->MovePrevious());
        cards_->MoveNext();
        QCOMPARE(FrageNr(*cards_), 1);
    }

    void EmptyFileHasBothEndsAtOnce()
    {
        Open({});
        cards_->MoveFirst();
        QVERIFY(cards_->AtBOF() && cards_->AtEOF());
        cards_->MoveLast();
        QVERIFY(cards_->AtBOF() && cards_->AtEOF());
        VERIFY_ERROR(3021, cards_->MoveNext());
        VERIFY_ERROR(3021, cards_->Edit());
        VERIFY_ERROR(3021, cards_->Delete());
    }

    void FirstCardOfAnEmptyFileIsReachedByBackAndOn()
    {
        Open({});
        cards_->AddNew();
        cards_->Write(MakeCard(1, 0, 1));
        cards_->Update();
        QVERIFY(cards_->AtBOF() && !cards_->AtEOF());
        cards_->MovePrevious();
        QVERIFY(cards_->AtBOF());
        cards_->MoveNext();
        QCOMPARE(FrageNr(*cards_), 1);
    }

    void AddNewLeavesTheCursorWhereItWas()
    {
        Open({MakeCard(1, 0, 1), MakeCard(2, 0, 2)});
        cards_->AddNew();
        cards_->Write(MakeCard(3, 0, 3));
        cards_->Update();
        QCOMPARE(FrageNr(*cards_), 1);
        cards_->MoveLast();
        QCOMPARE(FrageNr(*cards_), 3);
    }

    void EditedKeyMovesTheCardAndTheNextMoveGoesOnFromThere()
    {
        Open({MakeCard(1, 0, 1), MakeCard(2, 1, 1), MakeCard(3, 2, 1), MakeCard(4, 3, 1)});
        cards_->Edit();
        (*cards_)[u"FachNr"].Set(2);
        (*cards_)[u"FachLfdNr"].Set(2);
        cards_->Update();
        QCOMPARE(FrageNr(*cards_), 1);
        cards_->MoveNext();
        QCOMPARE(FrageNr(*cards_), 4);
    }

    void DeletedPlaceIsNoEndAndMovesGoToItsNeighbours()
    {
        Open({MakeCard(1, 0, 1), MakeCard(2, 0, 2), MakeCard(3, 0, 3)});
        cards_->MoveNext();
        cards_->Delete();
        QVERIFY(!cards_->AtBOF() && !cards_->AtEOF());
        VERIFY_ERROR(3021, FrageNr(*cards_));
        VERIFY_ERROR(3021, cards_->Delete());
        cards_->MoveNext();
        QCOMPARE(FrageNr(*cards_), 3);
        cards_->MovePrevious();
        QCOMPARE(FrageNr(*cards_), 1);
    }

    void DeletingTheOnlyCardEndsOnBothEnds()
    {
        Open({MakeCard(1, 0, 1)});
        cards_->Delete();
        cards_->MoveNext();
        QVERIFY(cards_->AtBOF() && cards_->AtEOF());
    }

    void ChangingTheIndexKeepsTheCardAndTheDeletedPlace()
    {
        Open({MakeCard(1, 2, 1), MakeCard(2, 1, 1), MakeCard(3, 0, 1)});
        cards_->MoveNext();
        QCOMPARE(FrageNr(*cards_), 2);
        cards_->SetIndex(u"FRAGENR");
        QCOMPARE(cards_->Index(), u"FrageNr"_s);
        QCOMPARE(FrageNr(*cards_), 2);
        cards_->Delete();
        cards_->SetIndex(u"boxkey");
        cards_->MoveNext();
        QCOMPARE(FrageNr(*cards_), 1);
        VERIFY_ERROR(3015, cards_->SetIndex(u"Thema"));
    }

    void SeekFindsByWholeAndPartialKeys()
    {
        Open({MakeCard(1, 1, 5), MakeCard(2, 1, 7), MakeCard(3, 4, 2)});
        cards_->Seek(Comparison::AtLeast, 1);
        QCOMPARE(FrageNr(*cards_), 1);
        cards_->Seek(Comparison::AtMost, 1);
        QCOMPARE(FrageNr(*cards_), 2);
        cards_->Seek(Comparison::AtLeast, 1, 6);
        QCOMPARE(FrageNr(*cards_), 2);
        cards_->Seek(Comparison::AtLeast, 2);
        QCOMPARE(FrageNr(*cards_), 3);
        cards_->Seek(Comparison::Equal, 1, 7);
        QVERIFY(!cards_->NoMatch());
        QCOMPARE(FrageNr(*cards_), 2);
        cards_->MoveNext();
        QCOMPARE(FrageNr(*cards_), 3);
    }

    void FailedSeekSetsNoMatchAndStays()
    {
        Open({MakeCard(1, 1, 5), MakeCard(2, 1, 7)});
        cards_->MoveNext();
        for (const auto &[comparison, key] :
             {std::pair{Comparison::Equal, 3}, {Comparison::AtLeast, 2}, {Comparison::AtMost, 0}}) {
            cards_->Seek(comparison, key);
            QVERIFY(cards_->NoMatch());
            QCOMPARE(FrageNr(*cards_), 2);
        }
        cards_->MovePrevious();
        QCOMPARE(FrageNr(*cards_), 1);
    }

    void EditWithoutUpdateIsDroppedByTheNextMove()
    {
        Open({MakeCard(1, 0, 1), MakeCard(2, 0, 2)});
        cards_->Edit();
        (*cards_)[u"Frage"].Set(u"anders"_s);
        QCOMPARE((*cards_)[u"frage"].Text(), u"anders"_s);
        cards_->MoveNext();
        cards_->MovePrevious();
        QCOMPARE((*cards_)[u"Frage"].Text(), u"Frage 1"_s);
        VERIFY_ERROR(3020, cards_->Update());
        VERIFY_ERROR(3020, (*cards_)[u"Frage"].Set(u"x"_s));
        cards_->AddNew();
        cards_->MoveFirst();
        VERIFY_ERROR(3020, cards_->Update());
        QCOMPARE(cards_->RecordCount(), 2);
    }

    void SecondCardWithATakenKeyIsRefusedAndTheBufferKept()
    {
        Open({MakeCard(1, 0, 1), MakeCard(2, 0, 2)});
        cards_->AddNew();
        cards_->Write(MakeCard(2, 5, 5));
        VERIFY_ERROR(3022, cards_->Update());
        (*cards_)[u"FrageNr"].Set(3);
        (*cards_)[u"FachNr"].Set(0);
        (*cards_)[u"FachLfdNr"].Set(1);
        VERIFY_ERROR(3022, cards_->Update());
        (*cards_)[u"FachLfdNr"].Set(3);
        cards_->Update();
        QCOMPARE(cards_->RecordCount(), 3);
    }

    void RulesOfTheFormatAreEnforcedWhenACardIsWritten()
    {
        Open({MakeCard(1, 0, 1)});
        const auto tryWith = [&](QStringView name, const QVariant &value) {
            cards_->Edit();
            (*cards_)[name].Set(value);
            cards_->Update();
        };
        VERIFY_ERROR(94, tryWith(u"FachNr", {}));
        VERIFY_ERROR(6, tryWith(u"FachLfdNr", 32768));
        VERIFY_ERROR(6, tryWith(u"PictureTop", -32769));
        VERIFY_ERROR(3163, tryWith(u"Picture_9_Name", QString(251, u'x')));
        VERIFY_ERROR(13, tryWith(u"FachNr", u"zwei"_s));
        VERIFY_ERROR(13, tryWith(u"Frage", 7));
        tryWith(u"Picture_9_Name", QString(250, u'ä'));
        tryWith(u"FachLfdNr", 32767);
        cards_->AddNew();
        (*cards_)[u"FrageNr"].Set(2);
        VERIFY_ERROR(94, cards_->Update());
    }

    void FieldsAreFoundWithoutRegardToCase()
    {
        Open({MakeCard(1, 0, 1)});
        cards_->Edit();
        (*cards_)[u"PictureLeft"].Set(120);
        (*cards_)[u"Picture_3_name"].Set(u"haus.jpg"_s);
        cards_->Update();
        QCOMPARE(cards_->Read().Pictureleft, 120.0);
        QCOMPARE(cards_->Read().Picture_3_Name, u"haus.jpg"_s);
        VERIFY_ERROR(3265, (*cards_)[u"Picture_10_name"]);
    }

    void TextsThatLookLikeNumbersAndUnicodeComeBackAsTheyWere()
    {
        Open({MakeCard(1, 0, 1)});
        for (const QString &text :
             {u"007"_s, u"1e3"_s, u" "_s, u""_s, u"Grüße\r\n𝄞\u00a0€"_s, QString(2, QChar(0))}) {
            cards_->Edit();
            (*cards_)[u"Antwort_1"].Set(text);
            (*cards_)[u"Picture_9_Name"].Set(text);
            cards_->Update();
            cards_->MoveFirst();
            QCOMPARE((*cards_)[u"Antwort_1"].Text(), text);
            QCOMPARE((*cards_)[u"Picture_9_Name"].Text(), text);
        }
    }

    // As those who read the file themselves expect it.
    void ATickIsStoredAsMinusOne()
    {
        CardRecord card = MakeCard(1, 0, 1);
        Open({card});
        cards_->MoveFirst();
        cards_->Edit();
        (*cards_)[u"Antwort_ch_2"].Set(true);
        cards_->Update();
        QCOMPARE(file_->Database().execAndGet("SELECT Antwort_ch_2 FROM Lernkarten").getInt(), -1);
    }

    void NewCardHasFalseTicksAndNullElsewhere()
    {
        Open({});
        cards_->AddNew();
        QVERIFY((*cards_)[u"Frage"].IsNull());
        (*cards_)[u"FrageNr"].Set(1);
        (*cards_)[u"FachNr"].Set(0);
        (*cards_)[u"FachLfdNr"].Set(1);
        cards_->Update();
        cards_->MoveFirst();
        QVERIFY((*cards_)[u"Frage"].IsNull());
        QCOMPARE((*cards_)[u"Frage"].Text(), QString());
        QVERIFY(!(*cards_)[u"Antwort_ch_3"].IsNull());
        QVERIFY(!(*cards_)[u"Antwort_ch_3"].Flag());
        VERIFY_ERROR(94, (*cards_)[u"Antworttyp"].Number());
    }

    void TransactionIsKeptWholeOrNotAtAll()
    {
        Open({MakeCard(1, 0, 1), MakeCard(2, 0, 2)});
        {
            const CardTransaction left(*cards_);
            cards_->Delete();
            cards_->AddNew();
            cards_->Write(MakeCard(9, 6, 1));
            cards_->Update();
        }
        QCOMPARE(cards_->RecordCount(), 2);
        QCOMPARE(FrageNr(*cards_), 1);
        CardTransaction transaction(*cards_);
        cards_->Delete();
        transaction.Commit();
        QVERIFY(!transaction.IsOpen());
        QCOMPARE(cards_->RecordCount(), 1);
    }

    void EngineFailureInATransactionIsSeenAndTheCardFoundAgain()
    {
        Open({MakeCard(1, 0, 1), MakeCard(2, 0, 2)});
        file_->Database().exec("PRAGMA max_page_count=1"); // the disk is full from here on
        CardTransaction transaction(*cards_);
        cards_->Edit();
        (*cards_)[u"Frage"].Set(QString(200'000, u'x'));
        VERIFY_ERROR(61, cards_->Update());
        if (transaction.IsOpen())
            transaction.Rollback();
        QCOMPARE((*cards_)[u"Frage"].Text(), u"Frage 1"_s);
        QCOMPARE(cards_->RecordCount(), 2);
    }

    void WritesIntoAFileThatIsNoLongerThereAreRefused()
    {
        Open({MakeCard(1, 0, 1), MakeCard(2, 0, 2)});
        const QString moved = path_ + u".weg"_s;
        QVERIFY(QFile::rename(path_, moved));
        cards_->Edit();
        (*cards_)[u"Frage"].Set(u"ins Leere"_s);
        VERIFY_ERROR(3024, cards_->Update());
        QVERIFY(QFile::rename(moved, path_));
        cards_->Update();
        QCOMPARE((*cards_)[u"Frage"].Text(), u"ins Leere"_s);
    }
};

PAUKFIX_CORE_TEST(RecordsetTest)
#include "RecordsetTest.moc"
