// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Handbuchseite.h"

#include "Farben.h"
#include "Hausfarben.h"

#include <QEvent>
#include <QScrollBar>
#include <QTextDocument>

#include <algorithm>
#include <cmath>

namespace paukfix {

using namespace Qt::StringLiterals;

Handbuchseite::Handbuchseite(QWidget *parent) : QTextBrowser(parent)
{
    document()->setDocumentMargin(fontMetrics().height());
}

// What of a style sheet the toolkit's rich text knows. The pages name one of their own, for browsers.
QString Handbuchseite::Stil() const
{
    const Hausfarben &haus = HausfarbenZu(palette());
    const QColor grund = palette().color(QPalette::Base);
    return u"body { font-family: '%1'; }"
           "h1 { font-size: x-large; font-weight: 600; margin-top: 0px; margin-bottom: 12px; }"
           "h2 { font-size: large; font-weight: 600; margin-top: 24px; margin-bottom: 6px; }"
           "h3 { font-weight: 600; margin-top: 16px; margin-bottom: 4px; }"
           "p, li { margin-bottom: 8px; }"
           "p, li, td, th { line-height: 125%; }"
           "p.bild { line-height: 100%; }"
           "table { margin-top: 8px; margin-bottom: 8px; }"
           "code { font-family: '%1'; background-color: %2; }"
           "strong { font-weight: 600; }"
           "blockquote { margin-left: 12px; margin-right: 12px; background-color: %3; }"
           "th, td { padding: 4px; vertical-align: top; }"
           "th { text-align: left; color: %4; }"
           "a { color: %5; }"_s.arg(font().family(), haus.gewaehlt.name(), haus.antwortzone.name(),
                                    Farben::Leise(palette().color(QPalette::Text), grund).name(),
                                    palette().color(QPalette::Link).name());
}

QVariant Handbuchseite::loadResource(int type, const QUrl &name)
{
    if (type == QTextDocument::StyleSheetResource)
        return Stil();
    QVariant inhalt = QTextBrowser::loadResource(type, name);
    if (type == QTextDocument::HtmlResource) {
        // Room around the name of a key, which the toolkit cannot pad.
        return QString::fromUtf8(inhalt.toByteArray())
            .replace(u"<code>"_s, u"<code>&nbsp;"_s)
            .replace(u"</code>"_s, u"&nbsp;</code>"_s);
    }
    if (type != QTextDocument::ImageResource)
        return inhalt;
    const QImage bild = QImage::fromData(inhalt.toByteArray());
    if (bild.isNull())
        return inhalt;
    bilder_.insert(name, bild);
    return Eingepasst(bild);
}

QImage Handbuchseite::Eingepasst(const QImage &bild) const
{
    const double dpr = devicePixelRatioF();
    const double platz = viewport()->width() - 2 * document()->documentMargin();
    const int breite = static_cast<int>(std::round(std::clamp<double>(platz, 1, bild.width()) * dpr));
    QImage passend = breite == bild.width() ? bild : bild.scaledToWidth(breite, Qt::SmoothTransformation);
    passend.setDevicePixelRatio(dpr);
    return passend;
}

void Handbuchseite::resizeEvent(QResizeEvent *event)
{
    QTextBrowser::resizeEvent(event);
    if (bilder_.isEmpty())
        return;
    for (auto bild = bilder_.cbegin(); bild != bilder_.cend(); ++bild)
        document()->addResource(QTextDocument::ImageResource, bild.key(), Eingepasst(bild.value()));
    document()->markContentsDirty(0, document()->characterCount());
}

void Handbuchseite::changeEvent(QEvent *event)
{
    QTextBrowser::changeEvent(event);
    if ((event->type() != QEvent::PaletteChange && event->type() != QEvent::FontChange) ||
        !source().isValid())
        return;
    const int stelle = verticalScrollBar()->value();
    reload();
    verticalScrollBar()->setValue(stelle);
}

} // namespace paukfix
