// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "TextContradictions.h"

#include "RichText.h"
#include "RtfTokenizer.h"
#include "Windows1252.h"

#include <QTextDocument>

#include <algorithm>
#include <array>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// Longer texts are not compared: no card is written so, and a forged file must not cost more time.
constexpr qsizetype Longest = 200'000;

bool IsBlank(QChar letter)
{
    return letter == u' ' || (!letter.isPrint() && !letter.isSurrogate());
}

QStringList WordsOf(const QString &text)
{
    QString words = text;
    for (QChar &letter : words)
        if (IsBlank(letter))
            letter = u' ';
    return words.split(u' ', Qt::SkipEmptyParts);
}

// Words of RTF that stand for no text, and those that begin a group which is none.
bool IsSilent(std::string_view word)
{
    static constexpr std::array<std::string_view, 34> Words{
        "ansi", "ansicpg",   "b",  "cf",   "deff",   "deflang", "deftab",  "f",    "fi",
        "fs",   "highlight", "i",  "lang", "li",     "line",    "par",     "pard", "plain",
        "qc",   "qj",        "ql", "qr",   "ri",     "rtf",     "sa",      "sb",   "strike",
        "tab",  "tx",        "uc", "ul",   "ulnone", "up",      "viewkind"};
    return std::find(Words.begin(), Words.end(), word) != Words.end();
}

bool BeginsNoText(std::string_view word)
{
    return word == "fonttbl" || word == "colortbl" || word == "stylesheet" || word == "info";
}

// Does simple RTF say just this? Most does; what is not told so is read as the windows do, which takes long.
bool SaysPlainly(QStringView rtf, QStringView plain)
{
    qsizetype at = 0;
    const auto takes = [&](QChar letter) {
        while (at < plain.size() && IsBlank(plain[at]))
            ++at;
        return IsBlank(letter) || (at < plain.size() && plain[at++] == letter);
    };
    RtfTokenizer tokens(rtf);
    qsizetype depth = 0, skipped = 0; // the group that is skipped, 0 for none
    using Kind = RtfTokenizer::Kind;
    for (Kind kind = tokens.Next(); kind != Kind::End; kind = tokens.Next()) {
        if (kind == Kind::GroupStart)
            ++depth;
        else if (kind == Kind::GroupEnd && --depth < skipped)
            skipped = 0;
        else if (kind == Kind::Word && skipped == 0 && BeginsNoText(tokens.word()))
            skipped = depth;
        if (skipped != 0)
            continue;
        const bool fits = [&] {
            switch (kind) {
            case Kind::Word:
                return IsSilent(tokens.word());
            case Kind::Symbol:
                return QStringView(u"\\{}").contains(QChar(tokens.symbol())) && takes(QChar(tokens.symbol()));
            case Kind::Byte:
                return takes(FromWindows1252(QByteArray(1, static_cast<char>(tokens.byte()))).at(0));
            case Kind::Text:
                return std::all_of(tokens.text().begin(), tokens.text().end(), takes);
            default:
                return true;
            }
        }();
        if (!fits)
            return false;
    }
    return std::all_of(plain.begin() + at, plain.end(), IsBlank);
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
            formatted == plain || (IsRtf(formatted) && SaysPlainly(formatted, plain)) ||
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
