// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Handbuchsuche.h"

#include "Hausfarben.h"

#include <QFile>
#include <QTextBrowser>
#include <QUrl>

namespace paukfix {

using namespace Qt::StringLiterals;

Handbuchsuche::Handbuchsuche(QTextBrowser &seite, const QString &ordner, const QList<Handbuchkapitel> &inhalt,
                             QObject *parent)
    : QObject(parent), seite_(seite), ordner_(ordner), inhalt_(inhalt)
{
    // Who searches has the keyboard in the field: the place that was found stands out all the same.
    const Hausfarben &farben = HausfarbenZu(seite_.palette());
    QPalette palette = seite_.palette();
    palette.setColor(QPalette::Inactive, QPalette::Highlight, farben.akzent);
    palette.setColor(QPalette::Inactive, QPalette::HighlightedText, farben.akzentTinte);
    seite_.setPalette(palette);
    connect(&seite_, &QTextBrowser::sourceChanged, this, [this] {
        Markieren();
        Melden();
    });
}

void Handbuchsuche::SetWort(const QString &wort)
{
    wort_ = wort;
    Markieren();
    QTextCursor hier = seite_.textCursor();
    hier.setPosition(hier.selectionStart());
    QTextCursor stelle = wort_.isEmpty() ? QTextCursor() : seite_.document()->find(wort_, hier);
    if (stelle.isNull() && !wort_.isEmpty())
        stelle = seite_.document()->find(wort_);
    seite_.setTextCursor(stelle.isNull() ? hier : stelle);
    Melden();
}

void Handbuchsuche::Gehen(QTextDocument::FindFlags richtung)
{
    if (wort_.isEmpty())
        return;
    const bool zurueck = richtung.testFlag(QTextDocument::FindBackward);
    if (seite_.find(wort_, richtung)) {
        Melden();
        return;
    }
    const qsizetype anzahl = inhalt_.size();
    qsizetype hier = 0;
    while (hier < anzahl && inhalt_.at(hier).datei != seite_.source().fileName())
        ++hier;
    for (qsizetype i = 1; i <= anzahl; ++i) {
        const QString &datei = inhalt_.at((hier + (zurueck ? anzahl - i : i)) % anzahl).datei;
        if (!StehtAuf(datei))
            continue;
        if (datei != seite_.source().fileName())
            seite_.setSource(QUrl::fromLocalFile(ordner_ + u'/' + datei));
        seite_.moveCursor(zurueck ? QTextCursor::End : QTextCursor::Start);
        seite_.find(wort_, richtung);
        break;
    }
    Melden();
}

bool Handbuchsuche::StehtAuf(const QString &datei) const
{
    QFile html(ordner_ + u'/' + datei);
    if (!html.open(QIODevice::ReadOnly))
        return false;
    QTextDocument text;
    text.setHtml(QString::fromUtf8(html.readAll()));
    return !text.find(wort_).isNull();
}

void Handbuchsuche::Markieren()
{
    QList<QTextEdit::ExtraSelection> marken;
    QTextCharFormat marke;
    marke.setBackground(HausfarbenZu(seite_.palette()).gewaehlt);
    if (!wort_.isEmpty())
        for (QTextCursor stelle = seite_.document()->find(wort_); !stelle.isNull();
             stelle = seite_.document()->find(wort_, stelle))
            marken.append({stelle, marke});
    seite_.setExtraSelections(marken);
}

void Handbuchsuche::Melden()
{
    if (wort_.isEmpty()) {
        emit Gefunden({});
        return;
    }
    const QList<QTextEdit::ExtraSelection> stellen = seite_.extraSelections();
    for (qsizetype i = 0; i < stellen.size(); ++i)
        if (stellen.at(i).cursor.selectionStart() == seite_.textCursor().selectionStart() &&
            seite_.textCursor().hasSelection()) {
            emit Gefunden(u"%1 von %2"_s.arg(i + 1).arg(stellen.size()));
            return;
        }
    emit Gefunden(stellen.isEmpty() ? u"nicht auf dieser Seite"_s : u"%1 Stellen"_s.arg(stellen.size()));
}

} // namespace paukfix
