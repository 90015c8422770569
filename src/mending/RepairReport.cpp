// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "RepairReport.h"

#include <QFileInfo>
#include <QLocale>
#include <QStringList>

#include <algorithm>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// The first words of the question, to know the card by.
QString Heading(const SalvagedCard &card)
{
    constexpr int Longest = 40;
    QString words = card.Text(CardColumnIndex(u"Frage_Klartext")).simplified();
    if (words.size() > Longest)
        words = words.left(Longest - 1) + u"…"_s;
    for (QChar &letter : words)
        if (!letter.isPrint() && !letter.isSurrogate())
            letter = QChar::ReplacementCharacter;
    const auto *number = std::get_if<double>(&card.values[0]);
    const QString name = u"Karte %1"_s.arg(number == nullptr ? 0 : static_cast<int>(*number));
    return words.isEmpty() ? name : name + u" („%1“)"_s.arg(words);
}

QString Cards(qsizetype count)
{
    return count == 1 ? u"1 Karte"_s : u"%1 Karten"_s.arg(count);
}

} // namespace

void Losses::Add(const SalvagedCard &card)
{
    const auto has = [&](Remark::Kind kind) {
        return std::any_of(card.remarks.begin(), card.remarks.end(),
                           [&](const Remark &remark) { return remark.kind == kind; });
    };
    incomplete += has(Remark::Kind::Incomplete) ? 1 : 0;
    doubtful += has(Remark::Kind::Doubtful) ? 1 : 0;
    uncertain += has(Remark::Kind::Uncertain) ? 1 : 0;
}

QString LossText(qint64 cards, const QString &done, const Losses &losses, const QString &end)
{
    const auto count = [](qint64 number) { return QLocale(QLocale::German).toString(number); };
    QString text =
        cards == 1 ? u"1 Karte wurde %1"_s.arg(done) : u"%1 Karten wurden %2"_s.arg(count(cards), done);
    const auto among = [&](qint64 number, const QString &one, const QString &many) {
        if (number > 0)
            text += number == 1 ? u"; 1 davon "_s + one : u"; %1 davon "_s.arg(count(number)) + many;
    };
    among(losses.incomplete, u"ist lückenhaft"_s, u"sind lückenhaft"_s);
    among(losses.doubtful, u"hat zweifelhaften Inhalt"_s, u"haben zweifelhaften Inhalt"_s);
    among(losses.uncertain, u"ist ungewiss"_s, u"sind ungewiss"_s);
    if (losses.lost > 0)
        text += u"; Spuren von %1 ließen sich nicht mehr lesen"_s.arg(
            losses.lost == 1 ? u"1 weiteren Karte"_s : u"%1 weiteren"_s.arg(count(losses.lost)));
    const bool none = losses.lost + losses.incomplete + losses.doubtful + losses.uncertain == 0;
    return none ? QString() : text + u'.' + end;
}

void RepairReport::AddCard(const SalvagedCard &card)
{
    ++cards_;
    if (card.remarks.empty())
        ++perfect_;
    std::array<QStringList, 4> texts;
    for (const Remark &remark : card.remarks)
        texts[static_cast<std::size_t>(remark.kind)] << remark.text;
    for (std::size_t kind = 0; kind < texts.size(); ++kind)
        if (!texts[kind].isEmpty())
            remarks_[kind] << Heading(card) + u": "_s + texts[kind].join(u"; "_s);
}

QString RepairReport::Summary(const QString &reportName) const
{
    return LossText(cards_, u"gerettet"_s,
                    {static_cast<qint64>(lost_.size()) + missing_, remarks_[0].size(), remarks_[1].size(),
                     remarks_[3].size()},
                    u" Einzelheiten stehen in „%1“."_s.arg(reportName));
}

bool RepairReport::IsPerfect() const
{
    return perfect_ == cards_ && lost_.empty() && missing_ == 0;
}

QByteArray RepairReport::Text(const QString &path, const QString &oldName, const QDateTime &when) const
{
    const bool repair = occasion_ == Occasion::Repair;
    const QString saved = repair ? u"Gerettet"_s : u"Übernommen"_s;
    const QString lost = repair ? u"Nicht gerettet"_s : u"Nicht übernommen"_s;
    const auto line = [](const QString &title, const QString &content) {
        return (title + u':').leftJustified(25) + content;
    };
    const qsizetype lostCards = static_cast<qsizetype>(lost_.size()) + missing_;
    QStringList lines{
        repair ? u"Bericht über die Reparatur einer Kartei"_s : u"Bericht über die Umwandlung einer Kartei"_s,
        QString(),
        line(u"Kartei"_s, QFileInfo(path).fileName()),
        line(repair ? u"Repariert am"_s : u"Umgewandelt am"_s, when.toString(u"dd.MM.yyyy HH:mm"_s)),
        line(repair ? u"Beschädigte Datei"_s : u"Alte Datei"_s, oldName + u" (unverändert aufgehoben)"_s),
        QString(),
        line(saved, Cards(cards_)),
        line(u"  ohne Beanstandung"_s, Cards(perfect_)),
        line(u"  lückenhaft"_s, Cards(remarks_[0].size())),
        line(u"  zweifelhafter Inhalt"_s, Cards(remarks_[1].size())),
        line(u"  neu eingeordnet"_s, Cards(remarks_[2].size())),
        line(lost, lostCards == 0 ? u"keine Karte bekannt"_s : Cards(lostCards)),
    };
    if (!remarks_[3].isEmpty())
        lines.insert(lines.size() - 1, line(u"  ungewiss"_s, Cards(remarks_[3].size())));
    if (wrongSums_ > 0)
        lines << QString()
              << (pages_ == 1 ? u"Die Prüfsumme der einzigen Seite stimmt nicht."_s
                              : u"Bei %1 von %2 Seiten der Datei stimmt die Prüfsumme nicht."_s.arg(
                                    QString::number(wrongSums_), QString::number(pages_)))
              << u"Der Datenträger hat etwas verändert, oder ein Programm, das keine Prüfsummen kennt, hat "
                 u"in die Datei geschrieben."_s;
    if (journalUsed_)
        lines << QString() << u"Ein Schreibvorgang war nicht zu Ende gekommen; er wurde zurückgenommen."_s;
    if (!lost_.empty()) {
        QStringList numbers;
        for (const int number : lost_)
            numbers << QString::number(number);
        lines << QString() << lost
              << u"Von diesen Karten ist nur noch die Nummer bekannt: %1"_s.arg(numbers.join(u", "_s));
    }
    if (missing_ > 0)
        lines << QString() << lost
              << u"Die alte Datei zählt %1 mehr, als sich in ihr lesen ließen."_s.arg(Cards(missing_));
    const std::array<std::pair<QString, QString>, 4> titles{{
        {u"Lückenhafte Karten"_s, u"Was nicht mehr zu lesen war, fehlt; nichts wurde ergänzt."_s},
        {u"Karten mit zweifelhaftem Inhalt"_s,
         u"Sie sind so aufgehoben, wie sie in der Datei standen. Bitte nachsehen."_s},
        {u"Neu eingeordnete Karten"_s,
         u"Ihr Inhalt ist, wie er war; Nummer, Fach oder Platz waren nicht zu gebrauchen."_s},
        {u"Ungewisse Karten"_s,
         u"Es ist nicht zu erkennen, ob sie so zuletzt in der Kartei standen. Bitte nachsehen."_s},
    }};
    for (std::size_t kind = 0; kind < titles.size(); ++kind)
        if (!remarks_[kind].isEmpty())
            lines << QString() << titles[kind].first << titles[kind].second << remarks_[kind];
    return lines.join(u'\n').toUtf8() + '\n';
}

} // namespace paukfix
