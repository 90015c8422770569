// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KartenDruck.h"

#include "StoreError.h"

#include <QApplication>
#include <QPrinterInfo>
#include <QTextLayout>

namespace {

constexpr int KartenJeSeite = 4;
constexpr int Punkte = 14;
constexpr double FrageOben = 0.05; // of the card's quarter
constexpr double AntwortOben = 0.55;
constexpr double Luft = 0.03; // below each block, of the quarter
constexpr int DruckerFehler = 482;
constexpr qsizetype MehrPasstNie = 5000; // characters

} // namespace

void KartenDruck::Karte(const QString &frageNr, const QString &frage, const QString &antwort)
{
    const auto pruefen = [](bool geht) {
        if (!geht)
            throw StoreError(DruckerFehler, QStringLiteral("Der Drucker nimmt den Druckauftrag nicht an."));
    };
    if (!maler_.isActive()) {
        pruefen(maler_.begin(&drucker_));
    } else if (aufDerSeite_ == KartenJeSeite) {
        pruefen(drucker_.newPage());
        aufDerSeite_ = 0;
    }
    QFont schrift = QApplication::font();
    schrift.setPointSize(Punkte);
    maler_.setFont(schrift);

    const QSizeF seite = drucker_.pageRect(QPrinter::DevicePixel).size();
    const double hoehe = seite.height() / KartenJeSeite;
    const double oben = hoehe * aufDerSeite_;
    const double links = seite.width() / 20;
    const double breite = seite.width() - 2 * links;
    if (aufDerSeite_ > 0) { // where the cards can be cut apart
        maler_.setPen(QPen(Qt::gray, 0, Qt::DotLine));
        maler_.drawLine(QLineF(0, oben, seite.width(), oben));
        maler_.setPen(Qt::black);
    }
    Block({links, oben + FrageOben * hoehe, breite, (AntwortOben - FrageOben - Luft) * hoehe},
          frageNr + u'\n' + QStringLiteral("Frage: ") + frage.left(MehrPasstNie));
    Block({links, oben + AntwortOben * hoehe, breite, (1 - AntwortOben - Luft) * hoehe},
          QStringLiteral("Antwort: ") + antwort.left(MehrPasstNie));
    ++aufDerSeite_;
}

// Draws the lines that fit whole into `platz`.
void KartenDruck::Block(const QRectF &platz, const QString &text)
{
    QString zeilen = text;
    zeilen.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
    zeilen.replace(u'\n', QChar::LineSeparator);
    QTextOption umbruch;
    umbruch.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    QTextLayout layout(zeilen, maler_.font(), &drucker_);
    layout.setTextOption(umbruch);
    layout.beginLayout();
    double y = 0;
    int passen = 0; // lines; the first is drawn in any case
    bool alles = true;
    for (QTextLine zeile = layout.createLine(); zeile.isValid(); zeile = layout.createLine()) {
        zeile.setLineWidth(platz.width());
        alles = passen == 0 || y + zeile.height() <= platz.height();
        if (!alles)
            break;
        zeile.setPosition({0, y});
        y += zeile.height();
        ++passen;
    }
    layout.endLayout();

    maler_.save();
    maler_.setClipRect(platz);
    for (int i = 0; i < passen; ++i) {
        const QTextLine zeile = layout.lineAt(i);
        if (alles || i < passen - 1) {
            zeile.draw(&maler_, platz.topLeft());
            continue;
        }
        QString letzte = zeilen.mid(zeile.textStart(), zeile.textLength()).remove(QChar::LineSeparator);
        letzte = QFontMetricsF(maler_.font(), &drucker_)
                     .elidedText(letzte + QStringLiteral(" …"), Qt::ElideRight, platz.width());
        maler_.drawText(platz.topLeft() + QPointF(0, zeile.y() + zeile.ascent()), letzte);
    }
    maler_.restore();
}

std::unique_ptr<QPrinter> StandardDrucker()
{
    QPrinterInfo info = QPrinterInfo::defaultPrinter();
    if (info.isNull())
        info = QPrinterInfo::availablePrinters().value(0);
    return info.isNull() ? nullptr : std::make_unique<QPrinter>(info, QPrinter::HighResolution);
}
