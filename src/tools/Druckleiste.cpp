// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Druckleiste.h"

#include "Farben.h"
#include "Fensterbau.h"
#include "KartenDruck.h"
#include "KartenModell.h"
#include "Kartengitter.h"
#include "KurzLabel.h"
#include "LangeArbeit.h"
#include "Symbole.h"
#include "Werkbank.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPrintPreviewDialog>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QToolBar>
#include <QWidgetAction>

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// The toolkit's preview has icons of its own; another version of it may have other buttons, and keeps them.
void SymboleSetzen(const QWidget &vorschau)
{
    static constexpr std::array Namen{Symbole::Seitenbreite, Symbole::GanzeSeite,      Symbole::Verkleinern,
                                      Symbole::Vergroessern, Symbole::Hochformat,      Symbole::Querformat,
                                      Symbole::AnsAnfang,    Symbole::Zurueck,         Symbole::Vor,
                                      Symbole::AnsEnde,      Symbole::EineSeite,       Symbole::ZweiSeiten,
                                      Symbole::AlleSeiten,   Symbole::SeiteEinrichten, Symbole::Drucken};
    QList<QAction *> knoepfe;
    for (const QToolBar *leiste : vorschau.findChildren<QToolBar *>())
        for (QAction *aktion : leiste->actions())
            if (!aktion->isSeparator() && !qobject_cast<QWidgetAction *>(aktion))
                knoepfe << aktion;
    if (knoepfe.size() != static_cast<qsizetype>(Namen.size()))
        return;
    for (std::size_t i = 0; i < Namen.size(); ++i)
        knoepfe.at(static_cast<qsizetype>(i))->setIcon(Symbol(Namen[i]));
}

} // namespace

Druckleiste::Druckleiste(const Dienste &dienste, Drucker drucker, QWidget *inhalt)
    : QWidget(inhalt), dienste_(dienste), drucker_(std::move(drucker)), inhalt_(inhalt)
{
    setObjectName(u"picButtons"_s);
    zeile_ = new QHBoxLayout(this);
    zeile_->setContentsMargins(0, 0, 0, 0);
    zeile_->setSpacing(8);
    txtVon_ = Feld(u"&Von:"_s, u"txtVon"_s, u"Die erste FrageNr, die gedruckt wird"_s);
    txtBis_ = Feld(u"&Bis:"_s, u"txtBis"_s, u"Die letzte FrageNr, die gedruckt wird"_s);
    QPushButton *cmdDrucken = Knopf(u"&Drucken"_s, u"cmdDrucken"_s);
    cmdDrucken->setDefault(true); // for Enter in the range's fields
    connect(cmdDrucken, &QPushButton::clicked, this, [this] { cmdDrucken_Click(); });
    QPushButton *cmdVorschau = Knopf(u"Vors&chau"_s, u"cmdVorschau"_s);
    cmdVorschau->setAutoDefault(false);
    connect(cmdVorschau, &QPushButton::clicked, this, [this] { cmdVorschau_Click(); });

    vorhaben_ = new KurzLabel(this);
    vorhaben_->setObjectName(u"Vorhaben"_s);
    zeile_->addWidget(vorhaben_, 1);
    progress_ = Benannt(new QProgressBar(this), u"Fortschritt"_s, u"Fortschritt"_s);
    progress_->hide();
    zeile_->addWidget(progress_, 1);
}

QLineEdit *Druckleiste::Feld(const QString &text, const QString &name, const QString &tipp)
{
    auto *feld = Benannt(new QLineEdit(this), name, QString(text).remove(u'&').remove(u':'));
    feld->setToolTip(tipp);
    feld->setFixedWidth(fontMetrics().averageCharWidth() * 6 + 20); // five digits
    connect(feld, &QLineEdit::textChanged, this, &Druckleiste::VorhabenZeigen);
    zeile_->addWidget(Beschriftung(text, feld, this));
    zeile_->addWidget(feld);
    return feld;
}

QPushButton *Druckleiste::Knopf(const QString &text, const QString &name)
{
    auto *knopf = Benannt(new QPushButton(text, this), name, QString(text).remove(u'&'));
    zeile_->addWidget(knopf);
    return knopf;
}

void Druckleiste::Zeigen(KartenModell &modell, Kartengitter &gitter)
{
    modell_ = &modell;
    gitter_ = &gitter;
    connect(gitter.selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &Druckleiste::VorhabenZeigen);
    VorhabenZeigen();
}

void Druckleiste::Anfuegen(QWidget *widget)
{
    zeile_->addWidget(widget);
}

// No range is given.
bool Druckleiste::NachAuswahl() const
{
    return txtVon_->text().trimmed().isEmpty() && txtBis_->text().trimmed().isEmpty();
}

// In the order in which they are shown.
std::vector<std::int64_t> Druckleiste::Gewaehlte() const
{
    QModelIndexList zeilen = gitter_->selectionModel()->selectedRows();
    std::sort(zeilen.begin(), zeilen.end(),
              [](const QModelIndex &eine, const QModelIndex &andere) { return eine.row() < andere.row(); });
    std::vector<std::int64_t> karten;
    for (const QModelIndex &zeile : zeilen)
        karten.push_back(modell_->Liste().Id(zeile.row()));
    return karten;
}

void Druckleiste::VorhabenZeigen()
{
    if (!modell_)
        return;
    vorhaben_->setPalette(Farben::Leise(palette()));
    QString text;
    if (NachAuswahl()) {
        int gewaehlt = 0;
        for (const QItemSelectionRange &teil : gitter_->selectionModel()->selection())
            gewaehlt += teil.height();
        text = gewaehlt == 1 ? u"1 gewählte Karte"_s : u"%1 gewählte Karten"_s.arg(gewaehlt);
    } else {
        const auto von = Kartennummer(txtVon_->text());
        const auto bis = Kartennummer(txtBis_->text());
        if (von && bis)
            Step(dienste_.meldungen, FehlerKontext(),
                 [&] { text = KartenText(static_cast<int>(modell_->Liste().Numbered(*von, *bis).size())); });
    }
    vorhaben_->setText(text);
    vorhaben_->setToolTip(text);
}

std::optional<qint16> Druckleiste::Nummer(QLineEdit *feld, const QString &name)
{
    const auto nummer = Kartennummer(feld->text());
    if (nummer)
        return nummer;
    dienste_.meldungen.Zeigen(u"Bitte bei „%1“ eine ganze Zahl von 1 bis %2 eingeben."_s.arg(name).arg(
        std::numeric_limits<qint16>::max()));
    feld->setFocus();
    feld->selectAll();
    return std::nullopt;
}

std::optional<Druckleiste::Auftrag> Druckleiste::AuftragLesen()
{
    if (NachAuswahl())
        return Auftrag{Gewaehlte(), u"Es ist keine Karte gewählt; es wurde nichts gedruckt."_s};
    const auto von = Nummer(txtVon_, u"Von:"_s);
    if (!von)
        return std::nullopt;
    const auto bis = Nummer(txtBis_, u"Bis:"_s);
    if (!bis)
        return std::nullopt;
    txtVon_->setText(QString::number(*von));
    txtBis_->setText(QString::number(*bis));
    return Auftrag{modell_->Liste().Numbered(*von, *bis),
                   u"Von %1 bis %2 gibt es keine Karte; es wurde nichts gedruckt."_s.arg(*von).arg(*bis)};
}

void Druckleiste::cmdDrucken_Click()
{
    Ausfuehren([this](const Auftrag &auftrag) {
        const std::unique_ptr<QPrinter> drucker = drucker_();
        if (!drucker)
            dienste_.meldungen.Zeigen(u"Es ist kein Drucker eingerichtet."_s);
        else if (const int karten = Drucken(auftrag, *drucker); karten > 0)
            gedruckt(karten);
        else
            dienste_.meldungen.Zeigen(auftrag.keine);
    });
}

void Druckleiste::cmdVorschau_Click()
{
    Ausfuehren([this](const Auftrag &auftrag) {
        if (auftrag.karten.empty())
            dienste_.meldungen.Zeigen(auftrag.keine);
        else
            Vorschau(auftrag);
    });
}

void Druckleiste::Ausfuehren(const std::function<void(const Auftrag &auftrag)> &arbeit)
{
    if (laeuft_ || !modell_)
        return;
    laeuft_ = true;
    Step(dienste_.meldungen, FehlerKontext(), [&] {
        if (const auto auftrag = AuftragLesen())
            arbeit(*auftrag);
    });
    laeuft_ = false;
}

int Druckleiste::Drucken(const Auftrag &auftrag, QPrinter &drucker)
{
    drucker.setDocName(window()->windowTitle());
    LangeArbeit lang(dienste_.meldungen, *inhalt_, *progress_);
    return KartenDrucken(modell_->Liste(), auftrag.karten, drucker, lang.Melder());
}

// Without a printer the pages can be looked at all the same, and be kept as a file.
void Druckleiste::Vorschau(const Auftrag &auftrag)
{
    std::unique_ptr<QPrinter> drucker = drucker_();
    if (!drucker)
        drucker = std::make_unique<QPrinter>(QPrinter::HighResolution);
    QPrintPreviewDialog fenster(drucker.get(), window());
    fenster.setObjectName(u"Vorschau"_s);
    fenster.setWindowTitle(u"Vorschau"_s);
    SymboleSetzen(fenster);
    fenster.resize(window()->size().boundedTo(screen()->availableSize() * 0.9));
    connect(&fenster, &QPrintPreviewDialog::paintRequested, this, [&](QPrinter *auf) {
        Step(dienste_.meldungen, FehlerKontext(),
             [&] { KartenDrucken(modell_->Liste(), auftrag.karten, *auf); });
    });
    fenster.exec();
}

} // namespace paukfix
