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

namespace paukfix {

using namespace Qt::StringLiterals;

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
        rtf += u"\\"_s + c;
    else if (c.unicode() < 0x80)
        rtf += c;
    else
        rtf += u"\\u%1?"_s.arg(static_cast<qint16>(c.unicode()));
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
            text.rich += u"\\par\r\n"_s;
            text.plain += u"\r\n"_s;
        } else {
            const bool escaped = c == u'\\' && more;
            i += escaped ? 1 : 0;
            AppendRtf(text.rich, markedUp[i]);
            text.plain += markedUp[i];
        }
    }
    if (bold || italic)
        return {};
    text.rich = u"{\\rtf1\\ansi\\ansicpg1252\\deff0\\uc1\\pard %1\\par\r\n}\r\n"_s.arg(text.rich);
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
        throw std::runtime_error(u"%1:%2: %3"_s.arg(path_).arg(line_).arg(what).toStdString());
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
        Fail(u"the text is not UTF-8"_s);
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
        Fail(u"no cards"_s);
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
        Fail(u"a blank at the end, a tab or a carriage return"_s);
    if (block_.line == 0) {
        block_.line = line_;
        card_ = standard_;
    }
    if (line.startsWith("  "_L1)) {
        if (!open_)
            Fail(u"no text to go on with"_s);
        *open_ += u'\n' + line.mid(2);
        return;
    }
    if (line.startsWith("+ "_L1) || line.startsWith("- "_L1)) {
        block_.answers.push_back({line.mid(2), true, line[0] == u'+'});
        open_ = &block_.answers.back().text;
        return;
    }
    const qsizetype colon = line.indexOf(": "_L1);
    if (colon < 1)
        Fail(u"neither \"key: value\" nor an answer"_s);
    open_ = nullptr;
    Entry(line.left(colon), line.mid(colon + 2));
}

void Reader::Entry(const QString &key, const QString &value)
{
    static const QStringList pictures{u".jpg"_s, u".bmp"_s};
    static const QStringList sounds{u".wav"_s};
    if (block_.keys.contains(key))
        Fail(u"\"%1\" stands here twice"_s.arg(key));
    block_.keys.insert(key);
    if (key == "Frage"_L1) {
        block_.question = value;
        open_ = &block_.question;
    } else if (key == "Antwort"_L1) {
        block_.answers.push_back({value, false, false});
        open_ = &block_.answers.back().text;
    } else if (key == "Thema"_L1) {
        if (value.size() > MaxTextLength)
            Fail(u"a topic has at most %1 characters"_s.arg(MaxTextLength));
        card_.Picture_9_Name = value;
    } else if (key == "Fach"_L1) {
        bool number = false;
        card_.FachNr = value.toInt(&number);
        if (!number || card_.FachNr < 0 || card_.FachNr >= FachAnzahl)
            Fail(u"no compartment \"%1\""_s.arg(value));
    } else if (key == "Bild"_L1) {
        Medium(&CardRecord::Picture_1_Name, value, pictures);
    } else if (key == "Bild Antwort"_L1) {
        Medium(&CardRecord::Picture_2_Name, value, pictures);
    } else if (key == "Bild falsch"_L1) {
        Medium(&CardRecord::Picture_3_Name, value, pictures);
    } else if (key == "Ton"_L1) {
        Medium(&CardRecord::Picture_6_Name, value, sounds);
    } else if (key == "Ton Antwort"_L1) {
        Medium(&CardRecord::Picture_7_Name, value, sounds);
    } else if (key == "Ton falsch"_L1) {
        Medium(&CardRecord::Picture_8_Name, value, sounds);
    } else if (key == "Bildplatz"_L1) {
        Place(value);
    } else {
        Fail(u"unknown key \"%1\""_s.arg(key));
    }
}

void Reader::Medium(QString CardRecord::*slot, const QString &value, const QStringList &suffixes)
{
    if (value.contains(u'/') || value.contains(u'\\') || value.size() > MaxTextLength ||
        !suffixes.contains(value.right(4)))
        Fail(u"\"%1\" is not the bare name of a %2 file"_s.arg(value, suffixes.join(" or "_L1)));
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
            Fail(u"\"%1\" is no length in twips"_s.arg(part));
    }
    if (twips.size() != 4)
        Fail(u"a place is \"left top width height\""_s);
    card_.Pictureleft = twips[0];
    card_.PictureTop = twips[1];
    card_.Picturewidth = twips[2];
    card_.Pictureheight = twips[3];
}

Text Reader::Checked(const QString &markedUp)
{
    const std::optional<Text> text = Translate(markedUp);
    if (!text)
        Fail(u"a * or ** is not closed"_s);
    if (text->plain.trimmed().isEmpty())
        Fail(u"an empty text"_s);
    return *text;
}

void Reader::EndBlock()
{
    open_ = nullptr;
    if (block_.line == 0)
        return;
    if (block_.question.isEmpty() && block_.answers.empty()) {
        if (!(block_.keys - QSet<QString>{u"Thema"_s, u"Bildplatz"_s}).isEmpty())
            Fail(u"a card without a question"_s);
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
        Fail(u"this question was asked before"_s);
    questions_.insert(question.plain);
    card_.Frage = question.rich;
    card_.Frage_Klartext = question.plain;

    if (block_.answers.empty())
        Fail(u"a card without an answer"_s);
    const bool ticked = block_.answers.front().ticked;
    if (block_.answers.size() > (ticked ? MaxAnswers : 1))
        Fail(u"too many answers"_s);
    card_.Antworttyp = ticked ? 2 : 1;
    constexpr std::array Rich{&CardRecord::Antwort_1, &CardRecord::Antwort_2, &CardRecord::Antwort_3,
                              &CardRecord::Antwort_4, &CardRecord::Antwort_5};
    constexpr std::array Plain{&CardRecord::Antwort_1_Klartext, &CardRecord::Antwort_2_Klartext,
                               &CardRecord::Antwort_3_Klartext, &CardRecord::Antwort_4_Klartext,
                               &CardRecord::Antwort_5_Klartext};
    constexpr std::array Right{&CardRecord::Antwort_ch_1, &CardRecord::Antwort_ch_2,
                               &CardRecord::Antwort_ch_3, &CardRecord::Antwort_ch_4,
                               &CardRecord::Antwort_ch_5};
    for (std::size_t i = 0; i < block_.answers.size(); ++i) {
        const Answer &answer = block_.answers[i];
        if (answer.ticked != ticked)
            Fail(u"a card is typed or ticked, not both"_s);
        const Text text = Checked(answer.text);
        if (!ticked && text.plain.startsWith("Hinweis:"_L1))
            Fail(u"an answer of nothing but a hint"_s);
        card_.*Rich[i] = text.rich;
        card_.*Plain[i] = text.plain;
        card_.*Right[i] = answer.right;
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

} // namespace paukfix
