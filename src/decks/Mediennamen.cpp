// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Mediennamen.h"

#include <QByteArray>
#include <QUrl>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

QByteArray Eingebettet(const QString &name)
{
    const qsizetype komma = name.indexOf(u',');
    if (komma < 0)
        return {};
    const QByteArray inhalt = QStringView(name).mid(komma + 1).toUtf8();
    if (name.left(komma).endsWith(u";base64"_s, Qt::CaseInsensitive))
        return QByteArray::fromBase64(QByteArray::fromPercentEncoding(inhalt));
    return QByteArray::fromPercentEncoding(inhalt);
}

} // namespace

Medienbezug MedienbezugLesen(const QString &roh, const std::function<bool(const QString &)> &istDa)
{
    const QString name = roh.trimmed();
    if (name.startsWith(u"data:"_s, Qt::CaseInsensitive)) {
        Medienbezug bezug{.art = Medienbezug::Art::Unlesbar, .medium = {}};
        bezug.medium.inhalt = Eingebettet(name);
        if (!bezug.medium.inhalt.isEmpty())
            bezug.art = Medienbezug::Art::Da;
        return bezug;
    }
    if (name.contains(u"://"_s) || name.startsWith(u"//"_s))
        return {.art = Medienbezug::Art::Fern, .medium = {}};
    const QString entschluesselt = QUrl::fromPercentEncoding(name.toUtf8());
    for (const QString &moeglich : {entschluesselt, name}) {
        const QString genormt = moeglich.normalized(QString::NormalizationForm_C);
        if (istDa(genormt))
            return {.art = Medienbezug::Art::Da, .medium = {.name = genormt, .inhalt = {}}};
    }
    return {.art = Medienbezug::Art::Fehlt, .medium = {}};
}

} // namespace paukfix
