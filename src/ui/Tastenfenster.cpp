// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Tastenfenster.h"

#include "Fensterbau.h"
#include "Tastenkappe.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QProgressDialog>
#include <QPushButton>
#include <QScreen>
#include <QStyle>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QVBoxLayout>

#include <algorithm>
#include <climits>
#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// Gives each row the height that its text needs in a column of this width.
void Umbrechen(QTreeWidget &liste, int breite)
{
    const int rand = 2 * (liste.style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, &liste) + 1);
    const QFontMetrics schrift = liste.fontMetrics();
    for (QTreeWidgetItemIterator zeile(&liste); *zeile; ++zeile)
        if (const QString text = (*zeile)->text(1); !text.isEmpty())
            (*zeile)->setSizeHint(
                1,
                {0, schrift.boundingRect(0, 0, breite - rand, INT_MAX, Qt::TextWordWrap, text).height() + 6});
}

} // namespace

Tastenfenster::Tastenfenster(const QList<Tastengruppe> &gruppen, const QString &fenster, QWidget *parent)
    : QDialog(parent)
{
    setObjectName(u"Tastenfenster"_s);
    setWindowTitle(u"Alle Tasten"_s);

    auto *liste = Benannt(new QTreeWidget(this), u"Tastenliste"_s, u"Alle Tasten"_s);
    liste->setColumnCount(2);
    liste->setHeaderHidden(true);
    liste->setRootIsDecorated(false);
    liste->setSelectionMode(QAbstractItemView::NoSelection);
    liste->setAllColumnsShowFocus(true);
    liste->setItemsExpandable(false);
    liste->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    liste->setWordWrap(true);
    QFont fett = font();
    fett.setWeight(QFont::DemiBold);
    int breite = 0;
    QTreeWidgetItem *anfang = nullptr;
    for (const Tastengruppe &gruppe : gruppen) {
        auto *kopf = new QTreeWidgetItem(liste, {gruppe.titel});
        kopf->setFont(0, fett);
        kopf->setFirstColumnSpanned(true);
        if (gruppe.fenster == fenster)
            anfang = kopf;
        for (const auto &[tasten, was] : gruppe.zeilen) {
            auto *zeile = new QTreeWidgetItem(kopf, {QString(), was});
            auto *kappen = new Tastenkappe(tasten);
            zeile->setData(0, Qt::AccessibleTextRole, kappen->text());
            zeile->setSizeHint(0, kappen->sizeHint() + QSize(12, 6));
            liste->setItemWidget(zeile, 0, kappen);
            breite = std::max(breite, kappen->sizeHint().width());
        }
    }
    liste->expandAll();
    liste->setColumnWidth(0, breite + 2 * liste->indentation());
    liste->header()->setStretchLastSection(true);
    // The view does not make a row higher for a text that it breaks.
    connect(liste->header(), &QHeaderView::sectionResized, liste, [liste](int spalte, int, int neu) {
        if (spalte == 1)
            Umbrechen(*liste, neu);
    });

    auto *knoepfe = new QDialogButtonBox(this);
    QPushButton *zurueck = knoepfe->addButton(u"&Zurück"_s, QDialogButtonBox::RejectRole);
    zurueck->setObjectName(u"cmdZurück"_s);
    zurueck->setProperty("leitend", true);
    zurueck->setDefault(true);
    connect(knoepfe, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *spalte = new QVBoxLayout(this);
    spalte->setContentsMargins(16, 16, 16, 16);
    spalte->setSpacing(12);
    spalte->addWidget(liste, 1);
    spalte->addWidget(knoepfe);
    const int zeile = fontMetrics().height();
    resize(QSize(zeile * 52, zeile * 36).boundedTo(screen()->availableSize() * 0.9));
    liste->setFocus();
    if (anfang) {
        liste->setCurrentItem(anfang);
        liste->scrollToItem(anfang, QAbstractItemView::PositionAtTop);
    }
}

Hilfetaste::Hilfetaste(std::function<void()> hilfe) : hilfe_(std::move(hilfe))
{
    QApplication::instance()->installEventFilter(this);
}

bool Hilfetaste::eventFilter(QObject *objekt, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto &taste = static_cast<const QKeyEvent &>(*event);
    if (taste.key() != Qt::Key_F1 || taste.modifiers() != Qt::NoModifier || !objekt->isWidgetType())
        return false;
    if (!offen_ && !taste.isAutoRepeat() && !QApplication::activePopupWidget() &&
        !qobject_cast<QProgressDialog *>(QApplication::activeModalWidget())) {
        offen_ = true;
        hilfe_();
        offen_ = false;
    }
    return true;
}

} // namespace paukfix
