// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "KartenDruck.h"

#include <QApplication>
#include <QTextLayout>

#include <algorithm>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr int KartenJeSeite = 4;
constexpr double FrageOben = 0.05; // of the page's height
constexpr double AntwortOben = 0.55;
constexpr double Blockhoehe = 0.4;       // as far from the fold as from the edges
constexpr double Seitenluft = 1.0 / 20;  // of the page's width, half of it on each side of a column
constexpr double Linienbreite = 0.4;     // points
constexpr double Tabulator = 24;         // pixels of a screen, as layouts count them for printers too
constexpr qsizetype MehrPasstNie = 5000; // characters

// Breaks a text into lines and tells how many of them fit.
class Satz
{
public:
    Satz(const QString &text, const QFont &schrift, QPaintDevice &drucker, QTextOption::WrapMode umbruch,
         QSizeF platz)
        : layout_(text, schrift, &drucker)
    {
        QTextOption option;
        option.setWrapMode(umbruch);
        option.setTabStopDistance(Tabulator);
        layout_.setTextOption(option);
        layout_.beginLayout();
        double y = 0;
        for (QTextLine zeile = layout_.createLine(); zeile.isValid(); zeile = layout_.createLine()) {
            zeile.setLineWidth(platz.width());
            if (y + zeile.height() > platz.height()) {
                passt_ = false;
                break;
            }
            // A word that is too long; where it may be broken, the natural width counts what is broken off.
            if (umbruch == QTextOption::WordWrap && zeile.naturalTextWidth() > platz.width())
                passt_ = false;
            zeile.setPosition({0, y});
            y += zeile.height();
            ++zeilen_;
        }
        layout_.endLayout();
    }

    // Everything stands in its place.
    bool Passt() const { return passt_; }

    void Malen(QPainter &maler, const QRectF &platz) const
    {
        for (int i = 0; i < zeilen_; ++i) {
            const QTextLine zeile = layout_.lineAt(i);
            if (passt_ || i + 1 < zeilen_) {
                zeile.draw(&maler, platz.topLeft());
                continue;
            }
            // What follows the last line's text is told by an ellipsis.
            QString rest = layout_.text().mid(zeile.textStart(), zeile.textLength());
            rest = rest.remove(QChar::LineSeparator) + u" …"_s;
            rest =
                QFontMetricsF(layout_.font(), maler.device()).elidedText(rest, Qt::ElideRight, platz.width());
            maler.setFont(layout_.font());
            maler.drawText(platz.topLeft() + QPointF(0, zeile.y() + zeile.ascent()), rest);
        }
    }

private:
    QTextLayout layout_;
    int zeilen_ = 0;
    bool passt_ = true;
};

} // namespace

KartenDruck::KartenDruck(QPrinter &drucker) : drucker_(drucker)
{
    // The sheet is folded and cut by its edges, not by those of what can be printed on.
    drucker_.setFullPage(true);
}

void KartenDruck::Karte(const QString &frageNr, const QString &frage, const QString &antwort)
{
    if (!auftrag_) {
        auftrag_.emplace(drucker_);
    } else if (aufDerSeite_ == KartenJeSeite) {
        auftrag_->NeueSeite();
        aufDerSeite_ = 0;
    }
    const int punkteJeZoll = drucker_.resolution();
    const QSizeF seite = drucker_.pageLayout().fullRectPixels(punkteJeZoll).size();
    const QRectF spalte(seite.width() / KartenJeSeite * aufDerSeite_, 0, seite.width() / KartenJeSeite,
                        seite.height());
    ++aufDerSeite_;
    LinienZiehen(spalte, aufDerSeite_ == KartenJeSeite);
    const double luft = seite.width() * Seitenluft / 2;
    const auto block = [&](double oben) {
        return QRectF(spalte.left() + luft, oben * seite.height(), spalte.width() - 2 * luft,
                      Blockhoehe * seite.height());
    };
    Block(block(FrageOben), frageNr + u'\n' + u"Frage: "_s + frage);
    Block(block(AntwortOben), u"Antwort: "_s + antwort);
}

void KartenDruck::Abschicken()
{
    if (auftrag_)
        auftrag_->Abschicken();
}

void KartenDruck::LinienZiehen(const QRectF &spalte, bool letzte)
{
    QPainter &maler = auftrag_->Maler();
    QPen stift(Qt::gray, Linienbreite * drucker_.resolution() / 72);
    if (!letzte) {
        maler.setPen(stift);
        maler.drawLine(spalte.topRight(), spalte.bottomRight());
    }
    stift.setDashPattern({10, 10});
    maler.setPen(stift);
    maler.drawLine(QPointF(spalte.left(), spalte.center().y()), QPointF(spalte.right(), spalte.center().y()));
    maler.setPen(Qt::black);
}

void KartenDruck::Block(const QRectF &platz, const QString &text)
{
    QString zeilen = text.left(MehrPasstNie);
    if (zeilen.size() < text.size())
        zeilen += u"…"_s;
    zeilen.replace(u"\r\n"_s, u"\n"_s);
    for (const QChar umbruch : {u'\r', u'\n', u'\v', u'\f', u'\u2029'})
        zeilen.replace(umbruch, QChar::LineSeparator);

    // A word is broken only where no size can hold it whole.
    QFont schrift = QApplication::font();
    std::optional<Satz> satz;
    for (const auto umbruch : {QTextOption::WordWrap, QTextOption::WrapAtWordBoundaryOrAnywhere}) {
        for (const int punkte : {14, 12, 10, 8}) {
            schrift.setPointSize(punkte);
            satz.emplace(zeilen, schrift, drucker_, umbruch, platz.size());
            if (satz->Passt())
                return satz->Malen(auftrag_->Maler(), platz);
        }
    }
    satz->Malen(auftrag_->Maler(), platz);
}

std::optional<qint16> Kartennummer(const QString &text)
{
    bool zahl = false;
    const qint16 nummer = text.trimmed().toShort(&zahl);
    return zahl && nummer > 0 ? std::optional(nummer) : std::nullopt;
}

int KartenDrucken(CardList &liste, const std::vector<std::int64_t> &karten, QPrinter &drucker,
                  const Progress &progress)
{
    KartenDruck druck(drucker);
    int gedruckt = 0;
    int zaehler = 0;
    for (const std::int64_t id : karten) {
        const CardList::Row karte = liste.Whole(id);
        if (karte.numbers[0]) {
            druck.Karte(QString::number(*karte.numbers[0]), karte.question, karte.answer);
            ++gedruckt;
        }
        Melden(progress, ++zaehler, static_cast<int>(karten.size()));
    }
    druck.Abschicken();
    return gedruckt;
}

} // namespace paukfix
