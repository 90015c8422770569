// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "TextContradictions.h"

#include "RichText.h"

#include <QTextDocument>

#include <algorithm>
#include <array>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// Longer texts are not compared: no card is written so, and a forged file must not cost more time.
constexpr qsizetype Longest = 200'000;

QStringList WordsOf(const QString &text)
{
    QString words = text;
    for (QChar &letter : words)
        if (!letter.isPrint() && !letter.isSurrogate())
            letter = u' ';
    return words.split(u' ', Qt::SkipEmptyParts);
}

// Where the words differ, for the report.
QString WordAt(const QStringList &words, qsizetype place)
{
    constexpr qsizetype Most = 40;
    return place < words.size() ? u"„%1“"_s.arg(words[place].left(Most)) : u"nichts"_s;
}

} // namespace

void RemarkContradictions(SalvagedCard &card)
{
    static constexpr std::array<QStringView, 6> Columns{u"Frage",     u"Antwort_1", u"Antwort_2",
                                                        u"Antwort_3", u"Antwort_4", u"Antwort_5"};
    QTextDocument document;
    document.setUndoRedoEnabled(false);
    for (const QStringView name : Columns) {
        const int column = CardColumnIndex(name);
        const int plainColumn = CardColumnIndex(name.toString() + u"_Klartext"_s);
        const QString formatted = card.Text(column), plain = card.Text(plainColumn);
        if (formatted.isEmpty() || plain.isEmpty() || formatted.size() > Longest || plain.size() > Longest ||
            !SetRichText(document, formatted))
            continue;
        const QStringList shown = WordsOf(PlainText(document)), stored = WordsOf(plain);
        // Words may be parted otherwise, as where one of the two has lost a line break.
        if (shown.isEmpty() || stored.isEmpty() || shown.join(QString()) == stored.join(QString()))
            continue;
        const auto place =
            std::mismatch(shown.begin(), shown.end(), stored.begin(), stored.end()).first - shown.begin();
        card.remarks.push_back(
            {Remark::Kind::Doubtful,
             u"%1 (%2) und %3 (%4) sagen Verschiedenes, beide sind aufgehoben"_s.arg(
                 ColumnText(column), WordAt(shown, place), ColumnText(plainColumn), WordAt(stored, place))});
    }
}

} // namespace paukfix
