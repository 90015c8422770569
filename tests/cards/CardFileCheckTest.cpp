// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "CardFileCheck.h"

#include "CardFile.h"
#include "DamageLab.h"
#include "StoreError.h"
#include "TestProgram.h"

#include <QTemporaryDir>
#include <QTest>

#include <algorithm>
#include <functional>

using namespace paukfix;
using namespace Qt::StringLiterals;

using Damage = std::function<void(QByteArray &bytes, const Box &box)>;

Q_DECLARE_METATYPE(Damage)

// Damage that a file can have without the engine's noticing when it opens it.
class CardFileCheckTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> directory_;
    Box box_;
    Box former_; // without sums of its pages: only what the engine itself finds

    QString Path() const { return directory_->filePath(u"Kasten.pzb"_s); }

private slots:

    void initTestCase()
    {
        directory_ = std::make_unique<QTemporaryDir>();
        box_ = MakeBox(directory_->path(), {.cards = 1000});
        former_ = MakeBox(directory_->path(), {.cards = 1000, .sums = false});
    }

    void SoundFilePasses()
    {
        WriteFile(Path(), box_.bytes);
        CardFile file(Path());
        CheckCardFile(file.Database());
        // The lock was not lost on the way.
        QCOMPARE(file.Database().execAndGet("SELECT count(*) FROM Lernkarten").getInt(), box_.cards.size());
    }

    void DamageIsFound_data()
    {
        QTest::addColumn<Damage>("damage");
        const auto wipe = [](const std::function<int(const Box &)> &page) {
            return [page](QByteArray &bytes, const Box &box) {
                bytes.replace(qint64(page(box) - 1) * box.pageSize, box.pageSize,
                              QByteArray(box.pageSize, '\0'));
            };
        };
        QTest::newRow("a leaf of the table is gone")
            << Damage(wipe([](const Box &box) { return box.tableLeaves[100]; }));
        QTest::newRow("a page of an index is gone")
            << Damage(wipe([](const Box &box) { return box.indexPages.last(); }));
        QTest::newRow("a page of a text is gone") << Damage(wipe([](const Box &box) {
            const auto longCard = std::max_element(box.cards.begin(), box.cards.end(),
                                                   [](const CardTruth &one, const CardTruth &other) {
                                                       return one.extents.size() < other.extents.size();
                                                   });
            return static_cast<int>(longCard->extents.at(1).from / box.pageSize) + 1;
        }));
        QTest::newRow("the free list names a page in use") << Damage([](QByteArray &bytes, const Box &box) {
            const int trunk = box.tableLeaves[5];
            for (int i = 0; i < 4; ++i)
                bytes[32 + i] = static_cast<char>(trunk >> (24 - 8 * i));
        });
        QTest::newRow("an index contradicts the table") << Damage([](QByteArray &bytes, const Box &box) {
            const auto leaf = std::find_if(box.indexPages.begin(), box.indexPages.end(), [&](int page) {
                return bytes[qint64(page - 1) * box.pageSize] == '\x0A';
            });
            QVERIFY(leaf != box.indexPages.end());
            // The first cell: its length in one byte, and as its last value the row, which becomes another
            // one.
            const qint64 page = qint64(*leaf - 1) * box.pageSize;
            const qint64 cell = page + qint64(256) * static_cast<quint8>(bytes[page + 8]) +
                                static_cast<quint8>(bytes[page + 9]);
            const qint64 last = cell + bytes[cell];
            bytes[last] = static_cast<char>(bytes[last] ^ 1);
        });
    }

    void DamageIsFound()
    {
        QFETCH(Damage, damage);
        for (const Box *box : {&box_, &former_}) {
            QByteArray bytes = box->bytes;
            damage(bytes, *box);
            QVERIFY(bytes != box->bytes);
            WriteFile(Path(), bytes);
            try {
                CardFile file(Path());
                CheckCardFile(file.Database());
                QFAIL("found nothing");
            } catch (const StoreError &error) {
                QCOMPARE(error.Number(), Fehler::Beschaedigt);
                QVERIFY(error.Text().contains(Path()));
            }
        }
    }
};

PAUKFIX_CORE_TEST(CardFileCheckTest)
#include "CardFileCheckTest.moc"
