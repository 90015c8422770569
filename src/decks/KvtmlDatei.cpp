// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KvtmlDatei.h"

#include "KvtmlLeser.h"
#include "StoreError.h"
#include "Windows1252.h"

#include <QXmlStreamReader>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// The text of bytes that say they are UTF-8: a line that is not is taken as Windows-1252.
QString AusUtf8(const QByteArray &bytes, int &fremdeZeilen)
{
    if (QUtf8StringView(bytes).isValidUtf8())
        return QString::fromUtf8(bytes);
    QString text;
    text.reserve(bytes.size());
    for (qsizetype von = 0; von < bytes.size();) {
        const qsizetype ende = bytes.indexOf('\n', von);
        const QByteArray zeile = bytes.mid(von, ende < 0 ? -1 : ende + 1 - von);
        von += zeile.size();
        if (QUtf8StringView(zeile).isValidUtf8()) {
            text += QString::fromUtf8(zeile);
        } else {
            text += FromWindows1252(zeile);
            ++fremdeZeilen;
        }
    }
    return text;
}

bool SagtUtf8(const QByteArray &bytes)
{
    if (bytes.startsWith("\xFE\xFF") || bytes.startsWith("\xFF\xFE") || bytes.left(4).contains('\0'))
        return false;
    const QByteArray kopf = bytes.left(bytes.indexOf("?>") + 1).left(500).toLower();
    return !kopf.contains("encoding") || kopf.contains("utf-8") || kopf.contains("utf8");
}

} // namespace

bool IstKvtml(const QByteArray &anfang)
{
    QByteArray ohneNull = anfang;
    ohneNull.replace('\0', "");
    return ohneNull.contains("<kvtml") || ohneNull.contains("<?xml");
}

KvtmlInhalt KvtmlLesen(const QByteArray &bytes)
{
    KvtmlInhalt inhalt;
    QXmlStreamReader xml;
    if (SagtUtf8(bytes))
        xml.addData(AusUtf8(bytes, inhalt.fremdeZeilen));
    else
        xml.addData(bytes);
    KvtmlLeser(xml, inhalt).Lesen();
    return inhalt;
}

} // namespace paukfix
