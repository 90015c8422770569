// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Kartentext.h"

#include "FachInfo.h"

#include <QFile>
#include <QSet>
#include <QStringDecoder>

#include <array>
#include <optional>
#include <stdexcept>

namespace {

constexpr int MaxAnswers = 5;

// A marked-up text in both forms of a card.
struct Text
{
    QString rich, plain;
};

// One character of RTF text; what is beyond ASCII goes by its number.
void AppendRtf(QString &rtf, QChar c)
{
    if (c == u'\\' || c == u'{' || c == u'}')
        rtf += QStringLiteral("\\") + c;
    else if (c.unicode() < 0x80)
        rtf += c;
    else
        rtf += QStringLiteral("\\u%1?").arg(static_cast<qint16>(c.unicode()));
}

// **bold**, *italic*, a backslash before a character that stands for itself, LF between lines. Nothing where
// a mark is not closed.
std::optional<Text> Translate(const QString &markedUp)
{
    Text text;
    bool bold = false;
    bool italic = false;
    for (qsizetype i = 0; i < markedUp.size(); ++i) {
        const QChar c = markedUp[i];
        const bool more = i + 1 < markedUp.size();
        if (c == u'*') {
            const bool two = more && markedUp[i + 1] == u'*';
            bool &style = two ? bold : italic;
            style = !style;
            text.rich += QLatin1String(two ? "\\b" : "\\i") + QLatin1String(style ? " " : "0 ");
            i += two ? 1 : 0;
        } else if (c == u'\n') {
            text.rich += QStringLiteral("\\par\r\n");
            text.plain += QStringLiteral("\r\n");
        } else {
            const bool escaped = c == u'\\' && more;
            i += escaped ? 1 : 0;
            AppendRtf(text.rich, markedUp[i]);
            text.plain += markedUp[i];
        }
    }
    if (bold || italic)
        return {};
    text.rich =
        QStringLiteral("{\\rtf1\\ansi\\ansicpg1252\\deff0\\uc1\\pard %1\\par\r\n}\r\n").arg(text.rich);
    return text;
}

struct Answer
{
    QString text;
    bool ticked = false;
    bool right = false;
};

// What one block says, as it stands there.
struct Block
{
    int line = 0; // of its first line
    QString question;
    std::vector<Answer> answers;
    QSet<QString> keys;
};

class Reader
{
public:
    explicit Reader(const QString &path) : path_(path) {}

    std::vector<CardRecord> Read();

private:
    [[noreturn]] void Fail(const QString &what) const
    {
        throw std::runtime_error(QStringLiteral("%1:%2: %3").arg(path_).arg(line_).arg(what).toStdString());
    }

    QStringList Lines();
    void Line(const QString &line);
    void Entry(const QString &key, const QString &value);
    void Medium(QString CardRecord::*slot, const QString &value, const QStringList &suffixes);
    void Place(const QString &value);
    void EndBlock();
    void Number();
    void Answers();
    Text Checked(const QString &markedUp);

    QString path_;
    int line_ = 0;
    Block block_;
    CardRecord card_;         // the block being read
    CardRecord standard_;     // what following cards take over: topic and place of the picture
    QString *open_ = nullptr; // the text that an indented line goes on with
    QSet<QString> questions_;
    std::array<int, FachAnzahl> counts_{};
    std::vector<CardRecord> cards_;
};

QStringList Reader::Lines()
{
    QFile file(path_);
    if (!file.open(QIODevice::ReadOnly))
        Fail(file.errorString());
    QStringDecoder decode(QStringDecoder::Utf8);
    const QString text = decode(file.readAll());
    if (decode.hasError())
        Fail(QStringLiteral("the text is not UTF-8"));
    return text.split(u'\n');
}

std::vector<CardRecord> Reader::Read()
{
    for (const QString &line : Lines()) {
        ++line_;
        Line(line);
    }
    EndBlock();
    if (cards_.empty())
        Fail(QStringLiteral("no cards"));
    return std::move(cards_);
}

void Reader::Line(const QString &line)
{
    if (line.startsWith(u'#'))
        return;
    if (line.isEmpty()) {
        EndBlock();
        return;
    }
    if (line.back().isSpace() || line.contains(u'\t') || line.contains(u'\r'))
        Fail(QStringLiteral("a blank at the end, a tab or a carriage return"));
    if (block_.line == 0) {
        block_.line = line_;
        card_ = standard_;
    }
    if (line.startsWith(QLatin1String("  "))) {
        if (!open_)
            Fail(QStringLiteral("no text to go on with"));
        *open_ += u'\n' + line.mid(2);
        return;
    }
    if (line.startsWith(QLatin1String("+ ")) || line.startsWith(QLatin1String("- "))) {
        block_.answers.push_back({line.mid(2), true, line[0] == u'+'});
        open_ = &block_.answers.back().text;
        return;
    }
    const qsizetype colon = line.indexOf(QLatin1String(": "));
    if (colon < 1)
        Fail(QStringLiteral("neither \"key: value\" nor an answer"));
    open_ = nullptr;
    Entry(line.left(colon), line.mid(colon + 2));
}

void Reader::Entry(const QString &key, const QString &value)
{
    static const QStringList pictures{QStringLiteral(".jpg"), QStringLiteral(".bmp")};
    static const QStringList sounds{QStringLiteral(".wav")};
    if (block_.keys.contains(key))
        Fail(QStringLiteral("\"%1\" stands here twice").arg(key));
    block_.keys.insert(key);
    if (key == QLatin1String("Frage")) {
        block_.question = value;
        open_ = &block_.question;
    } else if (key == QLatin1String("Antwort")) {
        block_.answers.push_back({value, false, false});
        open_ = &block_.answers.back().text;
    } else if (key == QLatin1String("Thema")) {
        if (value.size() > MaxTextLength)
            Fail(QStringLiteral("a topic has at most %1 characters").arg(MaxTextLength));
        card_.Picture_9_Name = value;
    } else if (key == QLatin1String("Fach")) {
        bool number = false;
        card_.FachNr = value.toInt(&number);
        if (!number || card_.FachNr < 0 || card_.FachNr >= FachAnzahl)
            Fail(QStringLiteral("no compartment \"%1\"").arg(value));
    } else if (key == QLatin1String("Bild")) {
        Medium(&CardRecord::Picture_1_Name, value, pictures);
    } else if (key == QLatin1String("Bild Antwort")) {
        Medium(&CardRecord::Picture_2_Name, value, pictures);
    } else if (key == QLatin1String("Bild falsch")) {
        Medium(&CardRecord::Picture_3_Name, value, pictures);
    } else if (key == QLatin1String("Ton")) {
        Medium(&CardRecord::Picture_6_Name, value, sounds);
    } else if (key == QLatin1String("Ton Antwort")) {
        Medium(&CardRecord::Picture_7_Name, value, sounds);
    } else if (key == QLatin1String("Ton falsch")) {
        Medium(&CardRecord::Picture_8_Name, value, sounds);
    } else if (key == QLatin1String("Bildplatz")) {
        Place(value);
    } else {
        Fail(QStringLiteral("unknown key \"%1\"").arg(key));
    }
}

void Reader::Medium(QString CardRecord::*slot, const QString &value, const QStringList &suffixes)
{
    if (value.contains(u'/') || value.contains(u'\\') || value.size() > MaxTextLength ||
        !suffixes.contains(value.right(4)))
        Fail(QStringLiteral("\"%1\" is not the bare name of a %2 file")
                 .arg(value, suffixes.join(QLatin1String(" or "))));
    card_.*slot = value;
}

// left top width height in twips
void Reader::Place(const QString &value)
{
    const QStringList parts = value.split(u' ');
    QList<int> twips;
    for (const QString &part : parts) {
        bool number = false;
        twips << part.toInt(&number);
        if (!number || twips.last() < 0 || twips.last() > 32767)
            Fail(QStringLiteral("\"%1\" is no length in twips").arg(part));
    }
    if (twips.size() != 4)
        Fail(QStringLiteral("a place is \"left top width height\""));
    card_.Pictureleft = twips[0];
    card_.PictureTop = twips[1];
    card_.Picturewidth = twips[2];
    card_.Pictureheight = twips[3];
}

Text Reader::Checked(const QString &markedUp)
{
    const std::optional<Text> text = Translate(markedUp);
    if (!text)
        Fail(QStringLiteral("a * or ** is not closed"));
    if (text->plain.trimmed().isEmpty())
        Fail(QStringLiteral("an empty text"));
    return *text;
}

void Reader::EndBlock()
{
    open_ = nullptr;
    if (block_.line == 0)
        return;
    if (block_.question.isEmpty() && block_.answers.empty()) {
        if (!(block_.keys - QSet<QString>{QStringLiteral("Thema"), QStringLiteral("Bildplatz")}).isEmpty())
            Fail(QStringLiteral("a card without a question"));
        standard_ = card_;
    } else {
        const int end = line_;
        line_ = block_.line; // where a mistake of the whole card is reported
        Answers();
        Number();
        cards_.push_back(card_);
        line_ = end;
    }
    block_ = {};
}

void Reader::Answers()
{
    const Text question = Checked(block_.question);
    if (questions_.contains(question.plain) && card_.Picture_1_Name.isEmpty() &&
        card_.Picture_6_Name.isEmpty())
        Fail(QStringLiteral("this question was asked before"));
    questions_.insert(question.plain);
    card_.Frage = question.rich;
    card_.Frage_Klartext = question.plain;

    if (block_.answers.empty())
        Fail(QStringLiteral("a card without an answer"));
    const bool ticked = block_.answers.front().ticked;
    if (block_.answers.size() > (ticked ? MaxAnswers : 1))
        Fail(QStringLiteral("too many answers"));
    card_.Antworttyp = ticked ? 2 : 1;
    constexpr std::array rich{&CardRecord::Antwort_1, &CardRecord::Antwort_2, &CardRecord::Antwort_3,
                              &CardRecord::Antwort_4, &CardRecord::Antwort_5};
    constexpr std::array plain{&CardRecord::Antwort_1_Klartext, &CardRecord::Antwort_2_Klartext,
                               &CardRecord::Antwort_3_Klartext, &CardRecord::Antwort_4_Klartext,
                               &CardRecord::Antwort_5_Klartext};
    constexpr std::array right{&CardRecord::Antwort_ch_1, &CardRecord::Antwort_ch_2,
                               &CardRecord::Antwort_ch_3, &CardRecord::Antwort_ch_4,
                               &CardRecord::Antwort_ch_5};
    for (std::size_t i = 0; i < block_.answers.size(); ++i) {
        const Answer &answer = block_.answers[i];
        if (answer.ticked != ticked)
            Fail(QStringLiteral("a card is typed or ticked, not both"));
        const Text text = Checked(answer.text);
        if (!ticked && text.plain.startsWith(QLatin1String("Hinweis:")))
            Fail(QStringLiteral("an answer of nothing but a hint"));
        card_.*rich[i] = text.rich;
        card_.*plain[i] = text.plain;
        card_.*right[i] = answer.right;
    }
}

void Reader::Number()
{
    card_.FrageNr = static_cast<double>(cards_.size() + 1);
    card_.FachLfdNr = ++counts_[static_cast<std::size_t>(card_.FachNr)];
}

} // namespace

std::vector<CardRecord> ReadKartentext(const QString &path)
{
    return Reader(path).Read();
}

QStringList MediaOf(const CardRecord &card)
{
    QStringList media{card.Picture_1_Name, card.Picture_2_Name, card.Picture_3_Name,
                      card.Picture_6_Name, card.Picture_7_Name, card.Picture_8_Name};
    media.removeAll(QString());
    return media;
}
