// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Kartengitter.h"

#include "Fensterbau.h"
#include "KartenModell.h"

#include <QAction>
#include <QHeaderView>
#include <QLabel>

#include <algorithm>

namespace paukfix {

using namespace Qt::StringLiterals;

Kartengitter::Kartengitter(QWidget *parent)
    : QTableView(parent), leer_(Benannt(new QLabel(this), u"Leer"_s, QString()))
{
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setHorizontalScrollMode(ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() * 3 / 2);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setToolTip(u"Ein Klick sortiert nach dieser Spalte"_s);

    leer_->setTextFormat(Qt::PlainText);
    leer_->setAlignment(Qt::AlignCenter);
    leer_->setWordWrap(true);
    leer_->hide();
}

void Kartengitter::Zeigen(KartenModell &modell)
{
    setModel(&modell);
    SortierenVerbinden();
    if (modell.rowCount() > 0)
        setCurrentIndex(modell.index(0, 0));
    Einteilen();
}

void Kartengitter::SortierenVerbinden()
{
    QHeaderView *koepfe = horizontalHeader();
    koepfe->setSortIndicator(0, Qt::AscendingOrder);
    koepfe->setSortIndicatorShown(true);
    koepfe->setSectionsClickable(true);
    connect(koepfe, &QHeaderView::sortIndicatorChanged, this, [this](int spalte, Qt::SortOrder folge) {
        model()->sort(spalte, folge);
        scrollTo(currentIndex());
        Einteilen();
    });
    for (int spalte = 0; spalte < model()->columnCount(); ++spalte) {
        auto *sortieren = new QAction(this);
        sortieren->setShortcut(QKeySequence(Qt::CTRL | static_cast<Qt::Key>(Qt::Key_1 + spalte)));
        connect(sortieren, &QAction::triggered, this, [koepfe, spalte] {
            const bool wieder = koepfe->sortIndicatorSection() == spalte &&
                                koepfe->sortIndicatorOrder() == Qt::AscendingOrder;
            koepfe->setSortIndicator(spalte, wieder ? Qt::DescendingOrder : Qt::AscendingOrder);
        });
        addAction(sortieren);
    }
}

void Kartengitter::SetHinweis(const QString &text, bool sichtbar)
{
    leer_->setText(text);
    leer_->setAccessibleName(text);
    leer_->setVisible(sichtbar);
}

// It gets its size later than the window, and loses some of it to its scroll bar.
void Kartengitter::resizeEvent(QResizeEvent *event)
{
    QTableView::resizeEvent(event);
    Einteilen();
}

void Kartengitter::Einteilen()
{
    leer_->setGeometry(viewport()->geometry());
    if (!model())
        return;
    QHeaderView *koepfe = horizontalHeader();
    int rest = viewport()->width();
    // The hint has room for the arrow in each of them; the numbers have five digits at most.
    const int pfeil = style()->pixelMetric(QStyle::PM_HeaderMarkSize, nullptr, koepfe) +
                      style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, koepfe);
    for (int spalte = 0; spalte < KartenModell::Column3; ++spalte) {
        const bool sortiert = koepfe->sortIndicatorSection() == spalte;
        const int breite = koepfe->sectionSizeHint(spalte) - (sortiert ? 0 : pfeil);
        koepfe->resizeSection(spalte, breite);
        rest -= breite;
    }
    const int thema = std::max(rest / 5, fontMetrics().averageCharWidth() * 13);
    const int frage = std::max((rest - thema) * 9 / 16, koepfe->minimumSectionSize());
    koepfe->resizeSection(KartenModell::Column3, frage);
    koepfe->resizeSection(KartenModell::Column4,
                          std::max(rest - thema - frage, koepfe->minimumSectionSize()));
    koepfe->resizeSection(KartenModell::Column5, thema);
}

} // namespace paukfix
