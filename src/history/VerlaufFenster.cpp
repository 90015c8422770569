// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "VerlaufFenster.h"

#include "Diagramm.h"
#include "Fensterbau.h"
#include "Kennzahl.h"
#include "Meldungen.h"
#include "Schriftgrade.h"
#include "VerlaufTabelle.h"

#include <QButtonGroup>
#include <QClipboard>
#include <QGridLayout>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QResizeEvent>
#include <QScreen>
#include <QShortcut>
#include <QStackedWidget>
#include <QTabBar>
#include <QTableView>

#include <algorithm>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

QPushButton *Knopf(const QString &text, const QString &name, QWidget *eltern)
{
    auto *knopf = new QPushButton(text, eltern);
    knopf->setAutoDefault(false);
    knopf->setObjectName(name);
    return knopf;
}

} // namespace

VerlaufFenster::VerlaufFenster(const QString &kartei, const Verlaufsbuch::Auskunft &auskunft,
                               const QDate &heute, QWidget *parent)
    : QDialog(parent), tage_(auskunft.stand.tage), heute_(heute)
{
    setObjectName(u"Verlauf"_s);
    setWindowTitle(u"Verlauf"_s);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    kennzahlenPlatz_ = new QGridLayout;
    KennzahlenBauen();
    InhaltBauen();
    lHinweis_ = new QLabel(this);
    lHinweis_->setObjectName(u"LHinweis"_s);
    lHinweis_->setTextFormat(Qt::PlainText);
    lHinweis_->setWordWrap(true);
    if (!auskunft.fehler.isEmpty())
        lHinweis_->setText(u"Der Verlauf kann zurzeit nicht gespeichert werden: "_s + auskunft.fehler);
    lHinweis_->setVisible(!auskunft.fehler.isEmpty());

    auto *alles = new QVBoxLayout(this);
    alles->setSpacing(12);
    alles->addLayout(KopfBauen(kartei));
    alles->addLayout(kennzahlenPlatz_);
    alles->addWidget(reiter_, 0, Qt::AlignLeft);
    alles->addWidget(inhalt_, 1);
    alles->addWidget(lHinweis_);
    alles->addLayout(KnoepfeBauen());
    ZeitraumZeigen();
    // Tab goes as the eye does; the box's own window opens at the button that leads back.
    setTabOrder(zeitraum_->buttons().last(), reiter_);
    setTabOrder(reiter_, ansicht_);
    setTabOrder(ansicht_, cmdTabelle_);
    const QSize schirm = screen()->availableSize();
    resize(QSize(fontMetrics().height() * 68, fontMetrics().height() * 46).boundedTo(schirm * 0.9));
}

QBoxLayout *VerlaufFenster::KopfBauen(const QString &kartei)
{
    auto *name = new QLabel(kartei, this);
    name->setObjectName(u"LKartei"_s);
    name->setTextFormat(Qt::PlainText);
    QFont schrift = Schriftgrad::In(name->font(), Schriftgrad::Gross);
    schrift.setWeight(QFont::DemiBold);
    name->setFont(schrift);
    name->setMinimumWidth(0);
    name->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    name->setToolTip(kartei);

    auto *kopf = new QHBoxLayout;
    kopf->setSpacing(8);
    kopf->addWidget(name, 1);
    zeitraum_ = new QButtonGroup(this);
    constexpr std::array<const char16_t *, 3> Namen{u"&30 Tage", u"&12 Wochen", u"&alles"};
    for (std::size_t i = 0; i < Namen.size(); ++i) {
        QPushButton *knopf = Knopf(QString::fromUtf16(Namen.at(i)), Name("Zeitraum", i), this);
        knopf->setCheckable(true);
        zeitraum_->addButton(knopf, static_cast<int>(i));
        kopf->addWidget(knopf);
    }
    zeitraum_->button(static_cast<int>(Zeitraum::Tage30))->setChecked(true);
    connect(zeitraum_, &QButtonGroup::idToggled, this, [this](int, bool an) {
        if (an)
            ZeitraumZeigen();
    });
    return kopf;
}

void VerlaufFenster::KennzahlenBauen()
{
    kennzahlenPlatz_->setSpacing(12);
    constexpr std::array<const char *, 4> Namen{"richtig", "falsch", "inFolge", "erledigt"};
    for (std::size_t i = 0; i < kennzahlen_.size(); ++i) {
        kennzahlen_.at(i) = new Kennzahl(this);
        kennzahlen_.at(i)->setObjectName(QString::fromLatin1(Namen.at(i)));
    }
}

void VerlaufFenster::InhaltBauen()
{
    reiter_ = new QTabBar(this);
    reiter_->setObjectName(u"Reiter"_s);
    reiter_->setDrawBase(false);
    reiter_->addTab(u"A&ntworten"_s);
    reiter_->addTab(u"&Fächer"_s);
    connect(reiter_, &QTabBar::currentChanged, this, [this] { ReiterZeigen(); });

    auto *bilder = new QWidget(this);
    antworten_ = new Antwortbild(bilder);
    antworten_->setObjectName(u"Antwortbild"_s);
    faecher_ = new Faecherbild(bilder);
    faecher_->setObjectName(u"Faecherbild"_s);
    auto *untereinander = new QVBoxLayout(bilder);
    untereinander->setContentsMargins(0, 0, 0, 0);
    untereinander->setSpacing(12);
    untereinander->addWidget(antworten_, 1);
    untereinander->addWidget(faecher_, 1);

    tabelle_ = new VerlaufTabelle(this);
    ansicht_ = Benannt(new QTableView(this), u"Tabelle"_s, u"Verlauf als Tabelle"_s);
    ansicht_->setModel(tabelle_);
    ansicht_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    ansicht_->setSelectionBehavior(QAbstractItemView::SelectRows);
    ansicht_->setTabKeyNavigation(false);
    ansicht_->setCornerButtonEnabled(false);
    ansicht_->verticalHeader()->hide();
    QHeaderView *kopf = ansicht_->horizontalHeader();
    kopf->setSectionResizeMode(QHeaderView::Stretch);
    for (const int breit : {0, tabelle_->columnCount() - 1})
        kopf->setSectionResizeMode(breit, QHeaderView::ResizeToContents);
    kopf->setMinimumSectionSize(fontMetrics().horizontalAdvance(u"Fach 00"_s));
    kopf->setMinimumHeight(fontMetrics().height() * 2);
    kopf->setHighlightSections(false);
    connect(new QShortcut(QKeySequence::Copy, ansicht_, nullptr, nullptr, Qt::WidgetShortcut),
            &QShortcut::activated, this, [this] { cmdKopieren_Click(); });

    inhalt_ = new QStackedWidget(this);
    inhalt_->addWidget(bilder);
    inhalt_->addWidget(ansicht_);
}

QBoxLayout *VerlaufFenster::KnoepfeBauen()
{
    cmdTabelle_ = Knopf(u"als &Tabelle"_s, u"cmdTabelle"_s, this);
    connect(cmdTabelle_, &QPushButton::clicked, this, &VerlaufFenster::cmdTabelle_Click);
    QPushButton *kopieren = Knopf(u"Tabelle &kopieren"_s, u"cmdKopieren"_s, this);
    connect(kopieren, &QPushButton::clicked, this, &VerlaufFenster::cmdKopieren_Click);
    auto *zurueck = new QPushButton(u"Zu&rück"_s, this);
    zurueck->setObjectName(u"cmdZurück"_s);
    zurueck->setProperty("leitend", true);
    zurueck->setDefault(true);
    zurueck->setFocus();
    connect(zurueck, &QPushButton::clicked, this, [this] { accept(); });

    auto *knoepfe = new QHBoxLayout;
    knoepfe->setSpacing(8);
    knoepfe->addWidget(cmdTabelle_);
    knoepfe->addWidget(kopieren);
    lKopiert_ = new QLabel(this);
    lKopiert_->setObjectName(u"LKopiert"_s);
    lKopiert_->setWordWrap(true);
    knoepfe->addWidget(lKopiert_, 1);
    knoepfe->addWidget(zurueck);
    return knoepfe;
}

void VerlaufFenster::ZeitraumZeigen()
{
    werte_ = Auswerten(tage_, static_cast<Zeitraum>(zeitraum_->checkedId()), heute_);
    const std::array texte{RichtigText(werte_), FalschText(werte_), FolgeText(werte_), ErledigtText(werte_)};
    for (std::size_t i = 0; i < texte.size(); ++i)
        kennzahlen_.at(i)->Zeigen(texte.at(i));
    Anordnen(); // they may take more room than those before
    antworten_->Zeigen(werte_);
    faecher_->Zeigen(werte_);
    tabelle_->Zeigen(werte_.bekannt);
    if (tabelle_->rowCount() > 0) {
        ansicht_->setCurrentIndex(tabelle_->index(tabelle_->rowCount() - 1, 0));
        ansicht_->scrollToBottom();
    }
}

void VerlaufFenster::ReiterZeigen()
{
    reiter_->setVisible(niedrig_ && !alsTabelle_);
    antworten_->setVisible(!niedrig_ || reiter_->currentIndex() == 0);
    faecher_->setVisible(!niedrig_ || reiter_->currentIndex() == 1);
    antworten_->SetMitTagen(niedrig_); // else they stand below the lower picture
    inhalt_->setCurrentIndex(alsTabelle_ ? 1 : 0);
}

void VerlaufFenster::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    Anordnen();
}

// A small window shows one picture at a time, and a narrow one two numbers beside each other.
void VerlaufFenster::Anordnen()
{
    constexpr int SchmalePixel = 800;
    const int zeile = fontMetrics().height();
    const bool schmal = width() < std::max(SchmalePixel, zeile * 46);
    // The names of the compartments need their room, and the numbers take two rows of a narrow one.
    niedrig_ = height() < zeile * (schmal ? 42 : 34);
    const int rand = schmal || niedrig_ ? 12 : 24;
    layout()->setContentsMargins(rand, rand, rand, rand);
    layout()->setSpacing(niedrig_ ? 8 : 12);
    kennzahlenPlatz_->setSpacing(niedrig_ ? 8 : 12);
    for (int i = 0; i < static_cast<int>(kennzahlen_.size()); ++i) {
        Kennzahl *kennzahl = kennzahlen_.at(static_cast<std::size_t>(i));
        kennzahl->SetFlach(niedrig_ && schmal);
        kennzahlenPlatz_->addWidget(kennzahl, schmal ? i / 2 : 0, schmal ? i % 2 : i);
        // The last one has most to say, and says it whole where all stand in one row.
        kennzahlenPlatz_->setColumnStretch(i, schmal && i > 1 ? 0 : i == (schmal ? 1 : 3) ? 5 : 4);
    }
    kennzahlenPlatz_->setColumnMinimumWidth(3, schmal ? 0 : kennzahlen_.back()->Textbreite());
    ReiterZeigen();
}

void VerlaufFenster::cmdTabelle_Click()
{
    alsTabelle_ = !alsTabelle_;
    cmdTabelle_->setText(alsTabelle_ ? u"als &Bild"_s : u"als &Tabelle"_s);
    ReiterZeigen();
    if (alsTabelle_)
        ansicht_->setFocus();
}

void VerlaufFenster::cmdKopieren_Click()
{
    QGuiApplication::clipboard()->setText(TabelleAlsText(werte_));
    const auto tage = werte_.bekannt.size();
    lKopiert_->setText(tage == 1 ? u"1 Tag liegt in der Zwischenablage."_s
                                 : u"%1 Tage liegen in der Zwischenablage."_s.arg(tage));
}

void VerlaufZeigen(Verlaufsbuch &buch, const QString &kartei, const QDate &heute, Meldungen &meldungen,
                   QWidget *parent)
{
    Verlaufsbuch::Auskunft auskunft = buch.Lesen();
    if (!auskunft.stand.beiseite.isEmpty()) {
        meldungen.Zeigen(u"Die Datei des Verlaufs war beschädigt; der Verlauf hat neu begonnen. Die "
                         u"beschädigte Datei heißt jetzt „%1“."_s.arg(auskunft.stand.beiseite));
        buch.BeiseiteGesagt();
    }
    if (const QString &frueher = auskunft.stand.frueher; !frueher.isEmpty()) {
        const QString frage =
            auskunft.stand.frueherHier
                ? u"„%1“ hat jetzt großenteils andere Karten als früher. Gehört der frühere Verlauf noch "
                  u"zu dieser Kartei?"_s.arg(kartei)
                : u"Der Verlauf kennt viele dieser Karten aus „%1“. Gehört der Verlauf von dort zu dieser "
                  u"Kartei?"_s.arg(frueher);
        buch.Beantworten(meldungen.Fragen(frage) == Meldungen::Antwort::Ja);
        auskunft = buch.Lesen();
    }
    VerlaufFenster(kartei, auskunft, heute, parent).exec();
}

} // namespace paukfix
