// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Zwischenablage.h"

#include "RichText.h"

#include <QMimeData>
#include <QTextCursor>
#include <QTextDocument>

#include <array>

namespace {

const std::array<QString, 2> RtfArten{QStringLiteral("text/rtf"), QStringLiteral("application/rtf")};

// Pictures and style sheets that a text names are not read, from the network as little as from the disk.
class OhneQuellen final : public QTextDocument
{
protected:
    QVariant loadResource(int, const QUrl &) override { return {}; }
};

QString Klartext(const QTextDocumentFragment &fragment)
{
    QTextDocument dokument;
    QTextCursor(&dokument).insertFragment(fragment);
    return PlainText(dokument).replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
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

std::optional<QTextDocumentFragment> FragmentVon(const QMimeData &mime)
{
    for (const QString &art : RtfArten) {
        const QByteArray rtf = mime.data(art);
        if (IsRtf(QString::fromLatin1(rtf.left(256))))
            return FragmentFromRtf(rtf);
    }
    if (!mime.hasHtml())
        return std::nullopt;
    OhneQuellen dokument;
    dokument.setHtml(mime.html());
    return FragmentFromRtf(FragmentToRtf(QTextDocumentFragment(&dokument)));
}

bool HatText(const QMimeData &mime)
{
    return mime.hasText() || mime.hasHtml() || mime.hasFormat(RtfArten[0]) || mime.hasFormat(RtfArten[1]);
}
