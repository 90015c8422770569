// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Datausw.h"

#include "Fensterbau.h"

#include <QCollator>
#include <QDir>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace paukfix {

using namespace Qt::StringLiterals;

Datausw::Datausw(QString &ChosenFileName, QWidget *parent) : QDialog(parent), chosenFileName_(ChosenFileName)
{
    setObjectName(u"Datausw"_s);
    setWindowTitle(u"Datei laden "_s);

    Hinweis_ = new QLabel(this);
    Hinweis_->setObjectName(u"Hinweis"_s);
    Hinweis_->setTextFormat(Qt::PlainText);
    Hinweis_->setWordWrap(true);

    Filelist_ = Benannt(new QListWidget(this), u"Filelist"_s, u"Dateien"_s);
    const int zeile = fontMetrics().height();
    Filelist_->setSpacing(zeile / 8);
    connect(Filelist_, &QListWidget::itemDoubleClicked, this, [this] { laden_Click(); });

    laden_ = Benannt(new QPushButton(u"laden"_s, this), u"laden"_s, u"laden"_s);
    laden_->setDefault(true);
    laden_->setProperty("leitend", true);
    connect(laden_, &QPushButton::clicked, this, [this] { laden_Click(); });
    abbrechen_ = Benannt(new QPushButton(u"abbrechen"_s, this), u"abbrechen"_s, u"abbrechen"_s);
    connect(abbrechen_, &QPushButton::clicked, this, [this] { reject(); });

    auto *knoepfe = new QHBoxLayout;
    knoepfe->addStretch(1);
    knoepfe->addWidget(laden_);
    knoepfe->addWidget(abbrechen_);
    auto *alles = new QVBoxLayout(this);
    alles->setContentsMargins(zeile, zeile, zeile, zeile);
    alles->setSpacing(zeile / 2);
    alles->addWidget(Hinweis_);
    alles->addWidget(Filelist_, 1);
    alles->addLayout(knoepfe);
    resize(zeile * 26, zeile * 20);
    Filelist_->setFocus();
}

void Datausw::Auflisten(const QString &verzeichnis, const QString &muster, const QString &vorgabe)
{
    QStringList namen = QDir(verzeichnis, muster, QDir::NoSort, QDir::Files | QDir::Hidden).entryList();
    QCollator ordnung(QLocale(QLocale::German, QLocale::Germany)); // as the names are
    ordnung.setNumericMode(true);
    ordnung.setCaseSensitivity(Qt::CaseInsensitive);
    std::sort(namen.begin(), namen.end(), ordnung);

    Filelist_->clear();
    Filelist_->addItems(namen);
    Filelist_->setCurrentRow(static_cast<int>(std::max<qsizetype>(namen.indexOf(vorgabe), 0)));
    laden_->setEnabled(!namen.isEmpty());
    const QString ordner = QDir::toNativeSeparators(verzeichnis);
    Hinweis_->setText(namen.isEmpty() ? u"Keine Dateien in %1"_s.arg(ordner)
                                      : u"Dateien in %1"_s.arg(ordner));
}

void Datausw::laden_Click()
{
    const QListWidgetItem *datei = Filelist_->currentItem();
    chosenFileName_ = datei ? datei->text() : QString();
    accept();
}

// The button, Esc, or the window's own close.
void Datausw::reject()
{
    chosenFileName_.clear();
    QDialog::reject();
}

} // namespace paukfix
