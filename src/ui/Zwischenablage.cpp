// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Zwischenablage.h"

#include "RichText.h"

#include <QMimeData>
#include <QTextCursor>

#include <array>
#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

const std::array<QString, 2> RtfArten{u"text/rtf"_s, u"application/rtf"_s};

QString Klartext(const QTextDocumentFragment &fragment)
{
    QTextDocument dokument;
    QTextCursor(&dokument).insertFragment(fragment);
    return PlainText(dokument).replace(u"\r\n"_s, u"\n"_s);
}

Angebot AusRtf(const QByteArray &rtf)
{
    Angebot angebot{.text = DocumentFromRtf(rtf)};
    if (!angebot.text)
        angebot.ablehnung = Ablehnung::ZuGross;
    return angebot;
}

} // namespace

std::unique_ptr<QMimeData> MimeVon(const QTextDocumentFragment &fragment, const QFont &schrift)
{
    auto mime = std::make_unique<QMimeData>();
    const QByteArray rtf = FragmentToRtf(fragment, schrift);
    for (const QString &art : RtfArten)
        mime->setData(art, rtf);
    mime->setHtml(fragment.toHtml());
    mime->setText(Klartext(fragment));
    return mime;
}

Angebot AngebotVon(const QMimeData &mime, const QTextCharFormat &amCaret, const QFont &standard)
{
    for (const QString &art : RtfArten) {
        const QByteArray rtf = mime.data(art);
        if (IsRtf(QString::fromLatin1(rtf.left(256))))
            return AusRtf(rtf);
    }
    if (!mime.hasHtml())
        return {};
    Angebot html = TextAusHtml(mime.html(), amCaret, standard);
    return html.text ? AusRtf(FragmentToRtf(QTextDocumentFragment(html.text.get()))) : std::move(html);
}

std::unique_ptr<QMimeData> Textkopie(const QMimeData &mime)
{
    auto kopie = std::make_unique<QMimeData>();
    for (const QString &art : RtfArten)
        if (mime.hasFormat(art))
            kopie->setData(art, mime.data(art));
    if (mime.hasHtml())
        kopie->setHtml(mime.html());
    if (mime.hasText())
        kopie->setText(mime.text());
    return kopie;
}

bool HatText(const QMimeData &mime)
{
    return mime.hasText() || mime.hasHtml() || mime.hasFormat(RtfArten[0]) || mime.hasFormat(RtfArten[1]);
}

} // namespace paukfix
