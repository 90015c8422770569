// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "FuzzSupport.h"
#include "HtmlLeser.h"
#include "HtmlSchreiber.h"
#include "Vorlage.h"

using namespace paukfix;
using namespace Qt::StringLiterals;

// A template and its fields, parted by zeros: filled, read as HTML and laid out. A plain text comes back
// from HTML as it went.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QStringList teile = QString::fromUtf8(BytesOf(data, size)).split(QChar(0));
    Vorlagenwerte werte;
    for (const QString &teil : teile.mid(1))
        werte.felder.push_back(teil);
    const auto vorlage = Vorlage::Lesen(teile.front(), {u"A"_s, u"B"_s, u"C"_s});
    if (vorlage) {
        QString html;
        QStringList hinweise;
        vorlage->Fuellen(werte, html, hinweise);
        if (const auto text = AlsKartentext(HtmlLesen(html).text)) {
            const auto wieder = AlsKartentext(HtmlLesen(HtmlAusKartentext(text->reich)).text);
            Require(wieder && wieder->klar == text->klar);
        }
    }
    return 0;
}
