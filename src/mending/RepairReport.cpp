// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "RepairReport.h"

#include <QFileInfo>
#include <QLocale>
#include <QStringList>

#include <algorithm>

namespace {

// The first words of the question, to know the card by.
QString Heading(const SalvagedCard &card)
{
    constexpr int longest = 40;
    QString words = card.Text(CardColumnIndex(u"Frage_Klartext")).simplified();
    if (words.size() > longest)
        words = words.left(longest - 1) + QStringLiteral("…");
    for (QChar &letter : words)
        if (!letter.isPrint() && !letter.isSurrogate())
            letter = QChar::ReplacementCharacter;
    const auto *number = std::get_if<double>(&card.values[0]);
    const QString name = QStringLiteral("Karte %1").arg(number == nullptr ? 0 : static_cast<int>(*number));
    return words.isEmpty() ? name : name + QStringLiteral(" („%1“)").arg(words);
}

QString Cards(qsizetype count)
{
    return count == 1 ? QStringLiteral("1 Karte") : QStringLiteral("%1 Karten").arg(count);
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
    QString text = cards == 1 ? QStringLiteral("1 Karte wurde %1").arg(done)
                              : QStringLiteral("%1 Karten wurden %2").arg(count(cards), done);
    const auto among = [&](qint64 number, const QString &one, const QString &many) {
        if (number > 0)
            text += number == 1 ? QStringLiteral("; 1 davon ") + one
                                : QStringLiteral("; %1 davon ").arg(count(number)) + many;
    };
    among(losses.incomplete, QStringLiteral("ist lückenhaft"), QStringLiteral("sind lückenhaft"));
    among(losses.doubtful, QStringLiteral("hat zweifelhaften Inhalt"),
          QStringLiteral("haben zweifelhaften Inhalt"));
    among(losses.uncertain, QStringLiteral("ist ungewiss"), QStringLiteral("sind ungewiss"));
    if (losses.lost > 0)
        text += QStringLiteral("; Spuren von %1 ließen sich nicht mehr lesen")
                    .arg(losses.lost == 1 ? QStringLiteral("1 weiteren Karte")
                                          : QStringLiteral("%1 weiteren").arg(count(losses.lost)));
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
            remarks_[kind] << Heading(card) + QStringLiteral(": ") + texts[kind].join(QStringLiteral("; "));
}

QString RepairReport::Summary(const QString &reportName) const
{
    return LossText(cards_, QStringLiteral("gerettet"),
                    {static_cast<qint64>(lost_.size()) + missing_, remarks_[0].size(), remarks_[1].size(),
                     remarks_[3].size()},
                    QStringLiteral(" Einzelheiten stehen in „%1“.").arg(reportName));
}

bool RepairReport::IsPerfect() const
{
    return perfect_ == cards_ && lost_.empty() && missing_ == 0;
}

QByteArray RepairReport::Text(const QString &path, const QString &oldName, const QDateTime &when) const
{
    const bool repair = occasion_ == Occasion::Repair;
    const QString saved = repair ? QStringLiteral("Gerettet") : QStringLiteral("Übernommen");
    const QString lost = repair ? QStringLiteral("Nicht gerettet") : QStringLiteral("Nicht übernommen");
    const auto line = [](const QString &title, const QString &content) {
        return (title + u':').leftJustified(25) + content;
    };
    const qsizetype lostCards = static_cast<qsizetype>(lost_.size()) + missing_;
    QStringList lines{
        repair ? QStringLiteral("Bericht über die Reparatur einer Kartei")
               : QStringLiteral("Bericht über die Umwandlung einer Kartei"),
        QString(),
        line(QStringLiteral("Kartei"), QFileInfo(path).fileName()),
        line(repair ? QStringLiteral("Repariert am") : QStringLiteral("Umgewandelt am"),
             when.toString(QStringLiteral("dd.MM.yyyy HH:mm"))),
        line(repair ? QStringLiteral("Beschädigte Datei") : QStringLiteral("Alte Datei"),
             oldName + QStringLiteral(" (unverändert aufgehoben)")),
        QString(),
        line(saved, Cards(cards_)),
        line(QStringLiteral("  ohne Beanstandung"), Cards(perfect_)),
        line(QStringLiteral("  lückenhaft"), Cards(remarks_[0].size())),
        line(QStringLiteral("  zweifelhafter Inhalt"), Cards(remarks_[1].size())),
        line(QStringLiteral("  neu eingeordnet"), Cards(remarks_[2].size())),
        line(lost, lostCards == 0 ? QStringLiteral("keine Karte bekannt") : Cards(lostCards)),
    };
    if (!remarks_[3].isEmpty())
        lines.insert(lines.size() - 1, line(QStringLiteral("  ungewiss"), Cards(remarks_[3].size())));
    if (journalUsed_)
        lines << QString()
              << QStringLiteral("Ein Schreibvorgang war nicht zu Ende gekommen; er wurde zurückgenommen.");
    if (!lost_.empty()) {
        QStringList numbers;
        for (const int number : lost_)
            numbers << QString::number(number);
        lines << QString() << lost
              << QStringLiteral("Von diesen Karten ist nur noch die Nummer bekannt: %1")
                     .arg(numbers.join(QStringLiteral(", ")));
    }
    if (missing_ > 0)
        lines << QString() << lost
              << QStringLiteral("Die alte Datei zählt %1 mehr, als sich in ihr lesen ließen.")
                     .arg(Cards(missing_));
    const std::array<std::pair<QString, QString>, 4> titles{{
        {QStringLiteral("Lückenhafte Karten"),
         QStringLiteral("Was nicht mehr zu lesen war, fehlt; nichts wurde ergänzt.")},
        {QStringLiteral("Karten mit zweifelhaftem Inhalt"),
         QStringLiteral("Sie sind so aufgehoben, wie sie in der Datei standen. Bitte nachsehen.")},
        {QStringLiteral("Neu eingeordnete Karten"),
         QStringLiteral("Ihr Inhalt ist, wie er war; Nummer, Fach oder Platz waren nicht zu gebrauchen.")},
        {QStringLiteral("Ungewisse Karten"),
         QStringLiteral(
             "Es ist nicht zu erkennen, ob sie so zuletzt in der Kartei standen. Bitte nachsehen.")},
    }};
    for (std::size_t kind = 0; kind < titles.size(); ++kind)
        if (!remarks_[kind].isEmpty())
            lines << QString() << titles[kind].first << titles[kind].second << remarks_[kind];
    return lines.join(u'\n').toUtf8() + '\n';
}
