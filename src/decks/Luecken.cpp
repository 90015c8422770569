// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Vorlage.h"

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t TiefsteLuecken = 12;

// A gap that is being read.
struct Luecke
{
    QString anfang; // as it is written, for one that has no end
    bool gefragt = false;
    bool imHinweis = false;
    QString text, hinweis;
};

// "{{c1::" or "{{c1,3::" at `von`: its length, and whether the gap is among its numbers. 0 for anything else.
qsizetype Lueckenanfang(QStringView html, qsizetype von, int nummer, bool &gefragt)
{
    qsizetype i = von + 3;
    gefragt = false;
    for (;;) {
        const qsizetype ziffern = i;
        while (i < html.size() && i - ziffern < 6 && html[i] >= u'0' && html[i] <= u'9')
            ++i;
        if (i == ziffern)
            return 0;
        gefragt |= html.mid(ziffern, i - ziffern).toInt() == nummer;
        if (i < html.size() && html[i] == u',') {
            ++i;
            continue;
        }
        return html.mid(i).startsWith(u"::") ? i + 2 - von : 0;
    }
}

QString Gefuellt(const Luecke &luecke, bool antwort)
{
    if (!luecke.gefragt)
        return luecke.text;
    if (antwort)
        return u"<b>"_s + luecke.text + u"</b>"_s;
    return u'[' + (luecke.hinweis.isEmpty() ? u"..."_s : luecke.hinweis) + u']';
}

} // namespace

bool LueckenFuellen(const QString &html, int nummer, bool antwort, QString &fertig)
{
    const QStringView text(html);
    std::vector<Luecke> offen;
    bool gefunden = false;
    qsizetype von = 0; // of what is not written yet
    const auto ziel = [&]() -> QString & {
        if (offen.empty())
            return fertig;
        return offen.back().imHinweis ? offen.back().hinweis : offen.back().text;
    };
    const auto schreiben = [&](qsizetype bis) { ziel() += text.mid(von, bis - von); };
    qsizetype i = 0;
    while (i + 1 < text.size()) {
        bool gefragt = false;
        if (text[i] == u'{' && text[i + 1] == u'{' && i + 2 < text.size() && text[i + 2] == u'c' &&
            offen.size() < TiefsteLuecken) {
            if (const qsizetype laenge = Lueckenanfang(text, i, nummer, gefragt)) {
                schreiben(i);
                gefunden |= gefragt;
                offen.push_back(
                    {.anfang = html.mid(i, laenge), .gefragt = gefragt, .text = {}, .hinweis = {}});
                i += laenge;
                von = i;
                continue;
            }
        }
        if (!offen.empty() && text[i] == u':' && text[i + 1] == u':' && !offen.back().imHinweis) {
            schreiben(i);
            offen.back().imHinweis = true;
            i += 2;
            von = i;
            continue;
        }
        if (!offen.empty() && text[i] == u'}' && text[i + 1] == u'}') {
            schreiben(i);
            const Luecke luecke = std::move(offen.back());
            offen.pop_back();
            ziel() += Gefuellt(luecke, antwort);
            i += 2;
            von = i;
            continue;
        }
        ++i;
    }
    schreiben(text.size());
    while (!offen.empty()) {
        const Luecke luecke = std::move(offen.back());
        offen.pop_back();
        ziel() += luecke.anfang + luecke.text + (luecke.imHinweis ? u"::"_s + luecke.hinweis : QString());
    }
    return gefunden;
}

} // namespace paukfix
