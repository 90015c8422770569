// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
//
// mkbox CARDS.txt BOX.pzb: makes a card file of its text form. The pictures and sounds that the cards name
// must lie beside BOX.pzb. A file that stands there is replaced when the new one is complete.
#include "CardFile.h"
#include "CardTransaction.h"
#include "Kartentext.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <cstdio>
#include <stdexcept>

using namespace paukfix;
using namespace Qt::StringLiterals;

namespace {

[[noreturn]] void Fail(const QString &text)
{
    throw std::runtime_error(text.toStdString());
}

void CheckMedia(const std::vector<CardRecord> &cards, const QString &boxPath)
{
    for (const CardRecord &card : cards)
        for (const QString &medium : MediaOf(card))
            if (!QFileInfo::exists(QFileInfo(boxPath).path() + u'/' + medium))
                Fail(u"card %1 names %2, which is not there"_s.arg(card.FrageNr).arg(medium));
}

// As the editor stores a card: texts that are empty stay null, the ticks belong to ticking cards.
void AddCard(CardRecordset &cards, const CardRecord &card)
{
    cards.AddNew();
    for (const CardColumn &column : CardColumns()) {
        Field field = cards[QString::fromLatin1(column.name)];
        if (const auto *number = std::get_if<double CardRecord::*>(&column.member))
            field.Set(card.*(*number));
        else if (const auto *flag = std::get_if<bool CardRecord::*>(&column.member))
            field.Set(card.*(*flag));
        else if (const QString &text = card.*std::get<QString CardRecord::*>(column.member); !text.isEmpty())
            field.Set(text);
    }
    cards.Update();
}

void WriteBox(const std::vector<CardRecord> &cards, const QString &path)
{
    CardFile::Create(path);
    CardFile file(path);
    CardRecordset recordset(file);
    CardTransaction transaction(recordset);
    for (const CardRecord &card : cards)
        AddCard(recordset, card);
    transaction.Commit();
}

void Run(const QStringList &arguments)
{
    if (arguments.size() != 3)
        Fail(u"usage: mkbox CARDS.txt BOX.pzb"_s);
    const QString &box = arguments[2];
    const QString part = box + u".neu"_s;
    const std::vector<CardRecord> cards = ReadKartentext(arguments[1]);
    CheckMedia(cards, box);
    QFile::remove(part);
    WriteBox(cards, part);
    QFile::remove(box);
    if (!QFile::rename(part, box))
        Fail(u"cannot write %1"_s.arg(box));
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    try {
        Run(QCoreApplication::arguments());
    } catch (const std::exception &error) {
        std::fprintf(stderr, "mkbox: %s\n", error.what());
        return 1;
    }
    return 0;
}
