// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Slotdialog.h"

#include "Farben.h"
#include "Fensterbau.h"
#include "KurzLabel.h"
#include "Mediendatei.h"
#include "SafeFile.h"
#include "Step.h"

#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

Slotdialog::Slotdialog(const CardStore &kartei, const Dienste &dienste, Kartendateien dateien,
                       SlotTexte texte, QWidget *parent)
    : QDialog(parent),
      kartei_(kartei),
      dienste_(dienste),
      dateien_(std::move(dateien)),
      texte_(std::move(texte))
{
    setObjectName(texte_.name);
    setWindowTitle(texte_.titel);

    auto *rahmen = Benannt(new QGroupBox(texte_.frage, this), u"Frame1"_s, texte_.frage);
    auto *optionen = new QGridLayout(rahmen);
    optionen->setHorizontalSpacing(12);
    optionen->setColumnStretch(1, 1);
    const QStringList namen{u"&Frage"_s, u"&Antwort"_s, u"fal&scher Antwort"_s};
    for (int i = 0; i < namen.size(); ++i) {
        const auto nummer = static_cast<std::size_t>(i);
        auto *option = Benannt(new QRadioButton(namen[i], rahmen), u"Option%1"_s.arg(i + 1),
                               QString(namen[i]).remove(u'&'));
        connect(option, &QRadioButton::clicked, this, [this, i] { Option_Click(i); });
        Faerben(option, {{QPalette::Window, UmrissGrund(palette().color(QPalette::WindowText),
                                                        palette().color(QPalette::Window))}});
        auto *datei = Benannt(new KurzLabel(rahmen), u"Belegung%1"_s.arg(i + 1), {});
        datei->setTextFormat(Qt::PlainText);
        datei->setPalette(Farben::Leise(palette()));
        datei->setMinimumWidth(fontMetrics().averageCharWidth() * 20);
        datei->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred); // no name widens the dialog
        optionen->addWidget(option, i, 0);
        optionen->addWidget(datei, i, 1);
        optionen_.at(nummer) = option;
        belegung_.at(nummer) = datei;
    }

    auto *nummer = Benannt(new QLabel(dateien_.frageNr, this), u"Fragenummer"_s, u"Fragenr"_s);
    Dateiname_ = Benannt(new KurzLabel(this), u"Dateiname"_s, u"Dateiname"_s);
    for (QLabel *label : std::initializer_list<QLabel *>{nummer, Dateiname_})
        label->setTextFormat(Qt::PlainText);
    Dateiname_->setMinimumWidth(fontMetrics().averageCharWidth() * 30);
    Dateiname_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);

    const auto knopf = [this](const QString &text, const QString &name, auto tun) {
        auto *neu = Benannt(new QPushButton(text, this), name, QString(text).remove(u'&'));
        neu->setAutoDefault(false);
        connect(neu, &QPushButton::clicked, this, tun);
        return neu;
    };
    cmdÄndern_ = knopf(u"&ändern"_s, u"cmdÄndern"_s, [this] { cmdÄndern_Click(); });
    cmdLöschen_ = knopf(u"&löschen"_s, u"cmdLöschen"_s, [this] { cmdLöschen_Click(); });
    QPushButton *ok = knopf(u"OK"_s, u"cmdOK"_s, [this] { accept(); });
    ok->setDefault(true);

    auto *kopf = new QHBoxLayout;
    kopf->setSpacing(6);
    kopf->addWidget(new QLabel(u"Fragenr:"_s, this));
    kopf->addWidget(nummer, 1);
    auto *datei = new QHBoxLayout;
    datei->setSpacing(6);
    datei->addWidget(new QLabel(u"Dateiname :"_s, this));
    datei->addWidget(Dateiname_, 1);
    auto *knoepfe = new QHBoxLayout;
    knoepfe->addWidget(cmdÄndern_);
    knoepfe->addWidget(cmdLöschen_);
    knoepfe->addStretch(1);
    knoepfe->addWidget(ok);

    auto *alles = new QVBoxLayout(this);
    gitter_ = new QGridLayout;
    gitter_->setHorizontalSpacing(16);
    gitter_->addLayout(kopf, 0, 0);
    gitter_->addWidget(rahmen, 1, 0, Qt::AlignTop);
    gitter_->addLayout(datei, 2, 0);
    gitter_->addLayout(knoepfe, 3, 0);
    gitter_->setRowStretch(1, 1);
    gitter_->setColumnStretch(0, 1);
    alles->addLayout(gitter_, 1);
    NamenZeigen({});
}

QString &Slotdialog::SlotName()
{
    return dateien_.namen.at(static_cast<std::size_t>(slot_) - 1);
}

void Slotdialog::Option_Click(int welche)
{
    slot_ = texte_.ersterSlot + welche;
    SlotZeigen();
}

// So that one need not choose an option, which asks for a file where there is none, to see what it has.
void Slotdialog::BelegungZeigen()
{
    for (std::size_t i = 0; i < belegung_.size(); ++i) {
        const QString &name = dateien_.namen.at(static_cast<std::size_t>(texte_.ersterSlot) - 1 + i);
        const QString text = name.isEmpty() ? u"keine Datei"_s : Kurztext(name);
        belegung_.at(i)->setText(text);
        belegung_.at(i)->setToolTip(Kurztext(name).toHtmlEscaped());
        belegung_.at(i)->setAccessibleName(optionen_.at(i)->accessibleName() + u": "_s + text);
        optionen_.at(i)->setAccessibleDescription(text);
    }
}

// The buttons are there for a slot that names a file.
void Slotdialog::NamenZeigen(const QString &name)
{
    Dateiname_->setText(name);
    Dateiname_->setToolTip(Kurztext(name).toHtmlEscaped());
    cmdÄndern_->setEnabled(!name.isEmpty());
    cmdLöschen_->setEnabled(!name.isEmpty());
    BelegungZeigen();
}

void Slotdialog::SlotZeigen()
{
    NamenZeigen({});
    VorschauLeeren();
    const QString name = SlotName();
    if (name.isEmpty()) {
        DateiWaehlen();
        return;
    }
    NamenZeigen(name);
    Step(dienste_.meldungen, texte_.fehler, [&] { Vorschau(Mediendatei(kartei_.KarteiPfad, name)); });
}

void Slotdialog::DateiWaehlen()
{
    DateiDialog dialog;
    dialog.titel = texte_.dialog;
    dialog.filter = texte_.filter;
    dialog.verzeichnis = kartei_.KarteiPfad;
    const QString gewaehlt = dienste_.dialoge.DateiOeffnen(dialog);
    if (gewaehlt.isEmpty())
        return;
    const qsizetype trenner = gewaehlt.lastIndexOf(QDir::separator());
    const QString name = gewaehlt.mid(trenner + 1);
    if (!SameFile(gewaehlt.left(trenner + 1), kartei_.KarteiPfad)) {
        dienste_.meldungen.Zeigen(texte_.fremd + u" ("_s + kartei_.KarteiPfad + u')');
        return;
    }
    if (name.isEmpty())
        return;
    const QString pfad = kartei_.CardPath(name);
    if (!Step(dienste_.meldungen, texte_.fehler, [&] { Annehmen(pfad); }))
        return;
    SlotName() = name;
    NamenZeigen(name);
    dateien_.geaendert();
    Step(dienste_.meldungen, texte_.fehler, [&] { Angenommen(pfad); });
}

// Where no other file is taken, the slot keeps the one it has.
void Slotdialog::cmdÄndern_Click()
{
    DateiWaehlen();
}

void Slotdialog::cmdLöschen_Click()
{
    if (slot_ == 0)
        return;
    SlotName().clear();
    NamenZeigen({});
    VorschauLeeren();
    dateien_.geaendert();
}

} // namespace paukfix
