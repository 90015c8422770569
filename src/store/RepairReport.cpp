// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "RepairReport.h"

#include <QFileInfo>
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

void RepairReport::AddCard(const SalvagedCard &card)
{
    ++cards_;
    if (card.remarks.empty())
        ++perfect_;
    std::array<QStringList, 3> texts;
    for (const Remark &remark : card.remarks)
        texts[static_cast<std::size_t>(remark.kind)] << remark.text;
    for (std::size_t kind = 0; kind < texts.size(); ++kind)
        if (!texts[kind].isEmpty())
            remarks_[kind] << Heading(card) + QStringLiteral(": ") + texts[kind].join(QStringLiteral("; "));
}

QByteArray RepairReport::Text(const QString &path, const QString &damagedName, const QDateTime &when) const
{
    QStringList lines{
        QStringLiteral("Bericht über die Reparatur einer Kartei"),
        QString(),
        QStringLiteral("Kartei:                  %1").arg(QFileInfo(path).fileName()),
        QStringLiteral("Repariert am:            %1").arg(when.toString(QStringLiteral("dd.MM.yyyy HH:mm"))),
        QStringLiteral("Beschädigte Datei:       %1 (unverändert aufgehoben)").arg(damagedName),
        QString(),
        QStringLiteral("Gerettet:                %1").arg(Cards(cards_)),
        QStringLiteral("  ohne Beanstandung:     %1").arg(Cards(perfect_)),
        QStringLiteral("  lückenhaft:            %1").arg(Cards(remarks_[0].size())),
        QStringLiteral("  zweifelhafter Inhalt:  %1").arg(Cards(remarks_[1].size())),
        QStringLiteral("  neu eingeordnet:       %1").arg(Cards(remarks_[2].size())),
        QStringLiteral("Nicht gerettet:          %1")
            .arg(lost_.empty() ? QStringLiteral("keine Karte bekannt")
                               : Cards(static_cast<qsizetype>(lost_.size()))),
    };
    if (journalUsed_)
        lines << QString()
              << QStringLiteral("Ein Schreibvorgang war nicht zu Ende gekommen; er wurde zurückgenommen.");
    if (!lost_.empty()) {
        QStringList numbers;
        for (const int number : lost_)
            numbers << QString::number(number);
        lines << QString() << QStringLiteral("Nicht gerettet")
              << QStringLiteral("Von diesen Karten ist nur noch die Nummer bekannt: %1")
                     .arg(numbers.join(QStringLiteral(", ")));
    }
    const std::array<std::pair<QString, QString>, 3> titles{{
        {QStringLiteral("Lückenhafte Karten"),
         QStringLiteral("Was nicht mehr zu lesen war, fehlt; nichts wurde ergänzt.")},
        {QStringLiteral("Karten mit zweifelhaftem Inhalt"),
         QStringLiteral("Sie sind so aufgehoben, wie sie in der Datei standen. Bitte nachsehen.")},
        {QStringLiteral("Neu eingeordnete Karten"),
         QStringLiteral("Ihr Inhalt ist, wie er war; Nummer, Fach oder Platz waren nicht zu gebrauchen.")},
    }};
    for (std::size_t kind = 0; kind < titles.size(); ++kind)
        if (!remarks_[kind].isEmpty())
            lines << QString() << titles[kind].first << titles[kind].second << remarks_[kind];
    return lines.join(u'\n').toUtf8() + '\n';
}
