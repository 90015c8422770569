// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "FremdeKartei.h"

#include "Fensterbau.h"
#include "Kurztext.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

#include <algorithm>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

QString Zahl(qsizetype zahl)
{
    return QLocale(QLocale::German).toString(zahl);
}

QString Viele(qsizetype zahl, const QString &eines, const QString &mehrere)
{
    return Zahl(zahl) + u' ' + (zahl == 1 ? eines : mehrere);
}

QString Anfang(const QString &text)
{
    const QString zeile = text.left(400).simplified();
    return zeile.size() > 60 ? zeile.left(59) + u'…' : zeile;
}

// Of the cards of a deck which the open box has.
QString SchonDa(const Deckvorschau &vorschau)
{
    QString text;
    if (vorschau.bekannt > 0)
        text += u", %1 gibt es dort schon"_s.arg(Zahl(vorschau.bekannt));
    if (vorschau.andereAntwort > 0)
        text += u", %1 mit anderer Antwort"_s.arg(Zahl(vorschau.andereAntwort));
    return text;
}

DateiDialog DeckDialog(const QString &verzeichnis)
{
    return {.titel = u"Fremde Kartei einlesen"_s,
            .filter = u"KVTML (*.kvtml)|*.kvtml|Anki-Pakete (*.apkg *.colpkg)|*.apkg *.colpkg"_s,
            .alle = u"Fremde Karteien"_s,
            .verzeichnis = verzeichnis};
}

} // namespace

FremdeKartei::FremdeKartei(KarteiOeffner &oeffner, const Dienste &dienste, QWidget *parent,
                           const QString &datei)
    : Werkzeugfenster(oeffner, dienste, u"FremdeKartei"_s, u"Fremde Kartei einlesen"_s,
                      u"Fremde Kartei einlesen"_s, parent)
{
    Erklaeren(
        {u"Liest Anki-Pakete (.apkg, .colpkg) und KVTML-Dateien (.kvtml). Die Datei selbst bleibt, wie sie ist."_s});
    lblDateiname_ = DateinameBauen({}, [this] { cmdDateiname_Click(); });
    WahlBauen();
    KnoepfeBauen([this] { cmdOK_Click(); });
    connect(lblDateiname_, &QLineEdit::editingFinished, &fokuswache_, [this] { Ansehen(); });
    lblDateiname_->setText(QDir::toNativeSeparators(datei));
    InhaltZeigen();
    PlanZeigen();
}

void FremdeKartei::WahlBauen()
{
    QGridLayout *felder = Felder();
    const auto zeile = [&](const QString &text, QWidget *ziel) {
        const int neue = felder->rowCount();
        auto *schild = Beschriftung(text, ziel, this);
        felder->addWidget(schild, neue, 0);
        return neue;
    };
    lblInhalt_ = new QLabel(this);
    lblInhalt_->setObjectName(u"Inhalt"_s);
    lblInhalt_->setTextFormat(Qt::PlainText);
    lblInhalt_->setWordWrap(true);
    lblInhalt_->setMinimumHeight(fontMetrics().height() * 2);
    lblInhalt_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    auto *inhalt = new QLabel(u"Inhalt:"_s, this);
    inhalt->setObjectName(u"lblInhalt"_s);
    const int inhaltszeile = felder->rowCount();
    felder->addWidget(inhalt, inhaltszeile, 0, Qt::AlignTop | Qt::AlignLeft);

    cmdRest_ =
        Benannt(new QPushButton(u"&Was nicht mitkommt …"_s, this), u"cmdRest"_s, u"Was nicht mitkommt …"_s);
    cmdRest_->setAutoDefault(false);

    auto *inhalte = new QHBoxLayout;
    inhalte->addWidget(lblInhalt_, 1);
    inhalte->addWidget(cmdRest_, 0, Qt::AlignVCenter);
    felder->addLayout(inhalte, inhaltszeile, 1, 1, 2);

    const bool offen = Store().IsOpen() && !Store().NurAnsehen();
    optNeu_ = Benannt(new QRadioButton(u"eine &neue Kartei:"_s, this), u"optNeu"_s, u"eine neue Kartei:"_s);
    lblZiel_ = Benannt(new QLineEdit(this), u"lblZiel"_s, u"Dateiname der neuen Kartei"_s);
    cmdZiel_ = Benannt(new QPushButton(u"..."_s, this), u"cmdZiel"_s, u"neue Datei wählen"_s);
    cmdZiel_->setToolTip(u"neue Datei wählen"_s);
    cmdZiel_->setFixedWidth(fontMetrics().averageCharWidth() * 6);
    cmdZiel_->setAutoDefault(false);
    auto *neu = new QHBoxLayout;
    neu->addWidget(optNeu_);
    neu->addWidget(lblZiel_, 1);
    const int neuzeile = zeile(u"Einlesen in:"_s, optNeu_);
    felder->addLayout(neu, neuzeile, 1);
    felder->addWidget(cmdZiel_, neuzeile, 2);
    const QString kartei = offen ? u"die geöffnete Kartei „%1“"_s.arg(Kurztext(Store().CurrentFileName, 40))
                           : Store().IsOpen() ? u"die geöffnete Kartei (nur zum Ansehen)"_s
                                              : u"die geöffnete Kartei (keine)"_s;
    optOffen_ =
        Benannt(new QRadioButton(QString(kartei).replace(u'&', u"&&"_s), this), u"optOffen"_s, kartei);
    optOffen_->setEnabled(offen);
    cmbVorhandene_ = Benannt(new QComboBox(this), u"cmbVorhandene"_s, u"Karten, die es schon gibt"_s);
    cmbVorhandene_->addItems({u"trotzdem übernehmen"_s, u"auslassen"_s, u"Antwort erneuern"_s});
    cmbVorhandene_->setCurrentIndex(static_cast<int>(Vorhandene::Auslassen));
    auto *offenzeile = new QHBoxLayout;
    offenzeile->addWidget(optOffen_);
    offenzeile->addStretch(1);
    auto *schonDa = Beschriftung(u"&schon da:"_s, cmbVorhandene_, this);
    offenzeile->addWidget(schonDa);
    offenzeile->addWidget(cmbVorhandene_);
    for (QWidget *teil : {static_cast<QWidget *>(schonDa), static_cast<QWidget *>(cmbVorhandene_)})
        teil->setVisible(offen);
    felder->addLayout(offenzeile, felder->rowCount(), 1, 1, 2);

    cmbThema_ = Benannt(new QComboBox(this), u"cmbThema"_s, u"Thema der Karten"_s);
    chkFaecher_ = Benannt(new QCheckBox(u"&Fächer nach dem bisherigen Lernstand"_s, this), u"chkFaecher"_s,
                          u"Fächer nach dem bisherigen Lernstand"_s);
    auto *thema = new QHBoxLayout;
    thema->addWidget(cmbThema_);
    thema->addSpacing(fontMetrics().height());
    thema->addWidget(chkFaecher_);
    thema->addStretch(1);
    felder->addLayout(thema, zeile(u"T&hema:"_s, cmbThema_), 1, 1, 2);
    (offen ? optOffen_ : optNeu_)->setChecked(true);
    for (QRadioButton *wahl : {optNeu_, optOffen_})
        connect(wahl, &QRadioButton::toggled, this, &FremdeKartei::PlanZeigen);
    connect(lblZiel_, &QLineEdit::textChanged, this, &FremdeKartei::PlanZeigen);
    connect(cmdZiel_, &QPushButton::clicked, this, &FremdeKartei::cmdZiel_Click);
    connect(cmdRest_, &QPushButton::clicked, this, &FremdeKartei::cmdRest_Click);
}

// Once the window is there: a large deck takes a while.
void FremdeKartei::showEvent(QShowEvent *event)
{
    Werkzeugfenster::showEvent(event);
    if (!lblDateiname_->text().isEmpty())
        QTimer::singleShot(0, this, &FremdeKartei::Ansehen);
}

void FremdeKartei::cmdDateiname_Click()
{
    const QString gewaehlt = Dienst().dialoge.DateiOeffnen(DeckDialog(Store().KarteiPfad));
    if (gewaehlt.isEmpty())
        return;
    lblDateiname_->setText(QDir::toNativeSeparators(gewaehlt));
    angesehen_.clear(); // the same file may be another one by now
    Ansehen();
}

void FremdeKartei::cmdZiel_Click()
{
    optNeu_->setChecked(true);
    DateiDialog dialog = KarteiDialog(u"Neue Kartei"_s, Store().KarteiPfad);
    dialog.vorgabe = QFileInfo(lblZiel_->text()).fileName();
    KarteinameUebernehmen(lblZiel_, Ziel().Waehlen(dialog));
}

void FremdeKartei::Ansehen()
{
    const QString name = lblDateiname_->text().trimmed();
    if (name == angesehen_)
        return;
    angesehen_ = name;
    quelle_.reset();
    vorschau_.reset();
    warum_.clear();
    if (!name.isEmpty()) {
        Nachsehen([&](const Werkbank &bank) {
            try {
                quelle_ = DeckOeffnen(VollerPfad(Store(), name));
                vorschau_ = DeckAnsehen(bank, *quelle_);
            } catch (const std::exception &fehler) {
                quelle_.reset();
                warum_ = ErrorText(fehler);
            }
        });
        if (vorschau_)
            lblZiel_->setText(ZielVorschlag());
    }
    InhaltZeigen();
    ThemenAnbieten();
    PlanZeigen();
}

// A name beside the learner's other boxes, under which nothing stands.
QString FremdeKartei::ZielVorschlag() const
{
    const QString stamm = QFileInfo(angesehen_).completeBaseName();
    const QDir ort(const_cast<FremdeKartei *>(this)->Store().KarteiPfad);
    QString name = stamm + u".pzb"_s;
    for (int nummer = 2; ort.exists(name) && nummer < 1000; ++nummer)
        name = u"%1-%2.pzb"_s.arg(stamm).arg(nummer);
    return QDir::toNativeSeparators(ort.filePath(name));
}

void FremdeKartei::InhaltZeigen()
{
    if (!vorschau_) {
        InhaltSetzen(warum_.isEmpty() ? u"Noch keine Datei gewählt."_s : warum_);
        return;
    }
    const Deckinhalt &inhalt = vorschau_->inhalt;
    QStringList teile{Viele(vorschau_->karten, u"Karte"_s, u"Karten"_s)};
    if (!inhalt.stapel.isEmpty())
        teile << (inhalt.art.startsWith(u"KVTML"_s)
                      ? Viele(inhalt.stapel.size(), u"Lektion"_s, u"Lektionen"_s)
                      : Viele(inhalt.stapel.size(), u"Stapel"_s, u"Stapel"_s));
    if (inhalt.medien > 0)
        teile << Viele(inhalt.medien, u"Bild oder Ton"_s, u"Bilder und Töne"_s);
    QString text = inhalt.art + (inhalt.titel.isEmpty() ? u": "_s : u" „%1“: "_s.arg(Anfang(inhalt.titel))) +
                   teile.join(u", "_s);
    if (vorschau_->karten > 0)
        text += u"\nErste Karte: %1 – %2"_s.arg(Anfang(vorschau_->beispielFrage),
                                                Anfang(vorschau_->beispielAntwort));
    InhaltSetzen(text);
}

// Who has chosen a file knows what it is about: what is in it takes the room, all of it.
void FremdeKartei::InhaltSetzen(const QString &text)
{
    ErklaerungZeigen(angesehen_.isEmpty());
    lblInhalt_->setText(text);
    const int zweiZeilen = fontMetrics().height() * 2;
    lblInhalt_->setMinimumHeight(std::max(zweiZeilen, lblInhalt_->heightForWidth(lblInhalt_->width())));
}

void FremdeKartei::ThemenAnbieten()
{
    cmbThema_->clear();
    const bool kvtml = vorschau_ && vorschau_->inhalt.art.startsWith(u"KVTML"_s);
    if (vorschau_ && vorschau_->hatSchlagwoerter && !kvtml)
        cmbThema_->addItem(u"die Schlagwörter"_s, static_cast<int>(Deckthema::Schlagwoerter));
    if (!vorschau_ || vorschau_->hatStapel || kvtml)
        cmbThema_->addItem(kvtml ? u"der Name der Lektion"_s : u"der Name des Stapels"_s,
                           static_cast<int>(Deckthema::Stapel));
    cmbThema_->addItem(u"keines"_s, static_cast<int>(Deckthema::Keines));
    chkFaecher_->setEnabled(!vorschau_ || vorschau_->hatLernstand);
    if (vorschau_ && !vorschau_->hatLernstand)
        chkFaecher_->setChecked(false);
}

void FremdeKartei::PlanZeigen()
{
    const bool neu = optNeu_->isChecked();
    lblZiel_->setEnabled(neu);
    cmbVorhandene_->setEnabled(!neu);
    if (cmbThema_->count() == 0)
        ThemenAnbieten();
    const bool etwas = vorschau_ && vorschau_->karten > 0;
    SetOKErlaubt(etwas && (!neu || !lblZiel_->text().trimmed().isEmpty()));
    const int rest = vorschau_ ? vorschau_->bericht.Summe() : 0;
    cmdRest_->setEnabled(rest > 0);
    if (!vorschau_)
        VorhabenZeigen({});
    else if (!etwas)
        VorhabenZeigen(u"In der Datei ist keine Karte, die eingelesen werden kann."_s);
    else
        VorhabenZeigen(
            Kommen(vorschau_->karten) +
            (neu ? u" in eine neue Kartei"_s : u" in die geöffnete Kartei"_s + SchonDa(*vorschau_)) +
            (rest == 0 ? u"; nichts bleibt weg."_s : u"; nicht alles davon kommt mit."_s));
}

void FremdeKartei::cmdRest_Click()
{
    Dienst().meldungen.Bericht(u"Was nicht mitkommt"_s, vorschau_->bericht.Text());
}

void FremdeKartei::cmdOK_Click()
{
    Ansehen(); // Enter in the field comes here first
    if (!vorschau_ || vorschau_->karten == 0 || !quelle_)
        return;
    Einlesewahl wahl;
    wahl.deck = {.thema = static_cast<Deckthema>(cmbThema_->currentData().toInt()),
                 .faecher = chkFaecher_->isChecked()};
    if (optNeu_->isChecked()) {
        QString ziel = lblZiel_->text().trimmed();
        if (!QFileInfo(ziel).fileName().contains(u'.'))
            ziel += u".pzb"_s;
        lblZiel_->setText(ziel);
        if (!Ziel().IstKarteiname(ziel) || !Ziel().DarfErstellen(ziel))
            return;
        wahl.neueKartei = ziel;
    } else {
        wahl.vorhandene = static_cast<Vorhandene>(cmbVorhandene_->currentIndex());
    }
    Ausgang ausgang = Ausgang::Gescheitert;
    Eingelesenes ergebnis;
    Ausfuehren([&](const Werkbank &bank) {
        ausgang = FremdEinlesen(bank, *quelle_, QFileInfo(angesehen_).fileName(), wahl, ergebnis);
    });
    if (ausgang == Ausgang::Gescheitert)
        return;
    ErgebnisZeigen(ergebnis);
    accept();
}

void FremdeKartei::ErgebnisZeigen(const Eingelesenes &ergebnis)
{
    QString text = ergebnis.karten == 0 && ergebnis.erneuert == 0
                       ? u"Es wurde keine Karte eingelesen"_s
                       : u"%1 eingelesen"_s.arg(KartenText(ergebnis.karten));
    if (ergebnis.medien > 0)
        text += u", dazu %1"_s.arg(Viele(ergebnis.medien, u"Bild oder Ton"_s, u"Bilder und Töne"_s));
    text += u'.';
    if (ergebnis.ausgelassen > 0)
        text += u"\n%1 gab es schon; %2 ausgelassen."_s.arg(
            KartenText(ergebnis.ausgelassen), ergebnis.ausgelassen == 1 ? u"sie wurde"_s : u"sie wurden"_s);
    if (ergebnis.erneuert > 0)
        text += u"\n%1 %2 eine neue Antwort."_s.arg(KartenText(ergebnis.erneuert),
                                                    ergebnis.erneuert == 1 ? u"hat"_s : u"haben"_s);
    if (ergebnis.rest.isEmpty())
        Dienst().meldungen.Zeigen(text);
    else
        Dienst().meldungen.Bericht(u"Fremde Kartei"_s,
                                   text + u"\n\nWas nicht oder anders mitkam:\n\n"_s + ergebnis.rest);
}

} // namespace paukfix
