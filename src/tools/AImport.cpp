// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "AImport.h"

#include "Fensterbau.h"
#include "Importtafel.h"
#include "Vorhandenenwahl.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QScreen>
#include <QSignalBlocker>
#include <QTimer>

#include <algorithm>
#include <limits>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

// The entries of the box of forms.
enum Formwahl
{
    EinfacheZeilen,
    Csv,
    CsvMitKomma
};

QComboBox *Auswahl(const QString &name, const QString &zugaenglich, const QStringList &eintraege,
                   QWidget *eltern)
{
    auto *box = Benannt(new QComboBox(eltern), name, zugaenglich);
    box->addItems(eintraege);
    return box;
}

// As high as what the window shows needs, as far as the screen goes; one that the user made larger stays so.
void HoehePassen(QWidget &fenster)
{
    if (fenster.isMaximized() || fenster.isFullScreen())
        return;
    fenster.layout()->activate();
    const QRect schirm = fenster.screen()->availableGeometry();
    const QRect rahmen = fenster.frameGeometry();
    const int rand = rahmen.height() - fenster.height();
    const int hoehe =
        std::min(fenster.layout()->totalHeightForWidth(fenster.width()), schirm.height() - rand);
    if (hoehe <= fenster.height())
        return;
    fenster.resize(fenster.width(), hoehe);
    const int oben = std::max(schirm.top(), schirm.bottom() + 1 - hoehe - rand);
    if (oben < rahmen.top())
        fenster.move(rahmen.left(), oben);
}

} // namespace

AImport::AImport(KarteiOeffner &oeffner, const Dienste &dienste, QWidget *parent, const QString &datei)
    : Werkzeugfenster(oeffner, dienste, u"AImport"_s, u"ASCII-Import"_s, u"ASCII - Import"_s, parent)
{
    Erklaeren({u"Durch diese Funktion werden einfache Fragen aus einer ASCII-Datei eingelesen und "
               u"in das Fach Neu der aktuellen Kartei abgelegt. "_s,
               u"Hierdurch können Daten aus anderen Anwendungen, z.B. MS-Excel oder MS-Access "
               u"übernommen werden."_s});
    cmbForm_ = Auswahl(u"cmbForm"_s, u"Form"_s, {u"einfache Zeilen"_s, u"CSV"_s, u"CSV mit Komma"_s}, this);
    cmbForm_->setToolTip(u"CSV: Texte können in Anführungszeichen stehen und dann Trennzeichen und "
                         u"Zeilenumbrüche enthalten"_s);
    QStringList namen{u"automatisch"_s};
    for (const Zeichensatzname &einer : Zeichensaetze())
        namen << einer.name;
    cmbZeichensatz_ = Auswahl(u"cmbZeichensatz"_s, u"Zeichensatz"_s, namen, this);
    cmbZeichensatz_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    cmbZeichensatz_->setMinimumContentsLength(9);
    cmbTrennzeichen_ = TrennzeichenBauen({{u"&Form:"_s, cmbForm_}, {u"Zei&chensatz:"_s, cmbZeichensatz_}});
    lblDateiname_ = DateinameBauen({}, [this] { cmdDateiname_Click(); });
    tafel_ = new Importtafel(this);
    tafel_->hide();
    FlaecheBauen(tafel_);
    vorhandene_ = new Vorhandenenwahl(this);
    FlaecheBauen(vorhandene_);
    chkFaecher_ = Benannt(new QCheckBox(u"Karten &in die Fächer legen, die in der Datei stehen"_s, this),
                          u"chkFaecher"_s, u"Karten in die Fächer legen, die in der Datei stehen"_s);
    chkFaecher_->setChecked(true);
    chkFaecher_->hide();
    FlaecheBauen(chkFaecher_);
    hinweise_ << HinweisBauen(u"Hinweis: Die Datei muß folgenden Aufbau haben:"_s)
              << HinweisBauen(u"Frage  Trennzeichen   Antwort   [ Trennzeichen Thema ]"_s);
    connect(cmbTrennzeichen_, &QComboBox::currentTextChanged, this, &AImport::FormGewaehlt);
    connect(cmbForm_, &QComboBox::currentIndexChanged, this, &AImport::FormGewaehlt);
    connect(cmbZeichensatz_, &QComboBox::currentIndexChanged, this, [this](int eintrag) {
        zeichensatzSelbst_ = eintrag > 0;
        Raten();
    });
    connect(lblDateiname_, &QLineEdit::textChanged, this, &AImport::DateiGewaehlt);
    connect(chkFaecher_, &QCheckBox::toggled, this, &AImport::Zeigen);
    tafel_->gewaehlt = [this] { Zeigen(); };
    KnoepfeBauen([this] { cmdOK_Click(); });
    // Once the window is there: a large list takes a while.
    if (!datei.isEmpty())
        QTimer::singleShot(0, this, [this, datei] { lblDateiname_->setText(datei); });
}

void AImport::DateiGewaehlt()
{
    probe_ = Importprobe::Lesen(Store(), lblDateiname_->text());
    Raten();
}

void AImport::FormGewaehlt()
{
    formSelbst_ = true;
    Raten();
}

// What the learner has chosen himself is taken as it is.
void AImport::Raten()
{
    cmbTrennzeichen_->setEnabled(cmbForm_->currentIndex() != CsvMitKomma);
    const auto form = Form();
    if (probe_ && (form || !formSelbst_))
        FormZeigen(probe_->Raten(GewaehlterZeichensatz(), formSelbst_ ? form : std::nullopt));
    Zeigen();
}

// None where the file is to tell it.
Zeichensatz AImport::GewaehlterZeichensatz() const
{
    const int eintrag = cmbZeichensatz_->currentIndex();
    return zeichensatzSelbst_ && eintrag > 0
               ? Zeichensaetze()[static_cast<std::size_t>(eintrag) - 1].zeichensatz
               : Zeichensatz();
}

void AImport::FormZeigen(const Aufbau &aufbau)
{
    const QSignalBlocker trennzeichen(cmbTrennzeichen_), form(cmbForm_), zeichensatz(cmbZeichensatz_);
    const bool komma = aufbau.form.trennzeichen == u',';
    if (!komma)
        cmbTrennzeichen_->setCurrentText(aufbau.form.trennzeichen == u'\t' ? TabText()
                                                                           : aufbau.form.trennzeichen);
    cmbForm_->setCurrentIndex(komma ? CsvMitKomma : aufbau.form.anfuehrung ? Csv : EinfacheZeilen);
    cmbTrennzeichen_->setEnabled(!komma);
    const auto &alle = Zeichensaetze();
    for (std::size_t i = 0; i < alle.size(); ++i)
        if (alle[i].zeichensatz == aufbau.zeichensatz)
            cmbZeichensatz_->setCurrentIndex(static_cast<int>(i) + 1);
    tafel_->Vorschlagen(aufbau, probe_->ErsteZeile(aufbau));
}

std::optional<Textform> AImport::Form() const
{
    if (cmbForm_->currentIndex() == CsvMitKomma)
        return Textform{.trennzeichen = u',', .anfuehrung = true};
    const auto trennzeichen = Trennzeichen(cmbTrennzeichen_->currentText());
    if (!trennzeichen)
        return std::nullopt;
    return Textform{.trennzeichen = *trennzeichen, .anfuehrung = cmbForm_->currentIndex() == Csv};
}

std::optional<Aufbau> AImport::Gewaehlt() const
{
    const auto form = Form();
    if (!form)
        return std::nullopt;
    Aufbau aufbau{.zeichensatz = GewaehlterZeichensatz(), .form = *form};
    if (probe_)
        tafel_->Anwenden(aufbau);
    return aufbau;
}

Importvorschau AImport::Ansehen(const Aufbau &aufbau)
{
    if (!probe_->DauertLange())
        return probe_->Ansehen(aufbau);
    Importvorschau vorschau;
    Nachsehen([&](const Werkbank &bank) { vorschau = probe_->Ansehen(aufbau, bank.progress); });
    return vorschau;
}

void AImport::Zeigen()
{
    const auto aufbau = Gewaehlt();
    const bool zeigbar = probe_ && aufbau;
    const Importvorschau vorschau = zeigbar ? Ansehen(*aufbau) : Importvorschau();
    // Who has chosen a file knows what it is about: its cards take the room. What comes must find it free, or
    // the window grows, over the edge of a small screen.
    const bool kommt = zeigbar && tafel_->isHidden();
    if (!zeigbar)
        tafel_->hide();
    ErklaerungZeigen(!zeigbar);
    for (QLabel *hinweis : hinweise_)
        hinweis->setVisible(!zeigbar);
    if (zeigbar)
        tafel_->show();
    tafel_->Zeigen(vorschau);
    chkFaecher_->setVisible(zeigbar && aufbau->alleFelder);
    vorhandene_->Anbieten(vorschau.bekannt, vorschau.andereAntwort);
    VorhabenZeigen(zeigbar ? VorhabenVon(vorschau, aufbau->alleFelder) : QString());
    if (kommt)
        HoehePassen(*this);
}

QString AImport::VorhabenVon(const Importvorschau &vorschau, bool alleFelder)
{
    if (!vorschau.hindernis.isEmpty())
        return vorschau.hindernis;
    if (vorschau.nurAnfang)
        return u"Die ersten Karten; gezählt wird erst beim Einlesen."_s;
    QString text =
        Kommen(vorschau.karten) + (!alleFelder                ? u" ins Fach Neu"_s
                                   : chkFaecher_->isChecked() ? u" mit allen Feldern in ihre Fächer"_s
                                                              : u" mit allen Feldern ins Fach Neu"_s);
    if (vorschau.andere > 0)
        text += (vorschau.andere == 1 ? u"; %1 Zeile ohne Trennzeichen bleibt aus (Zeile %2)"_s
                                      : u"; %1 Zeilen ohne Trennzeichen bleiben aus (Zeilen %2)"_s)
                    .arg(vorschau.andere)
                    .arg(Zeilenliste(vorschau.andereZeilen, vorschau.andere));
    text += u'.';
    const int platz = std::numeric_limits<qint16>::max() - Store().HighestCardNumber;
    if (vorschau.karten > platz)
        text += u" Die Kartei hat nur noch Platz für %1."_s.arg(platz);
    if (vorschau.unpassend.stellen > 0)
        text += u" In Zeile %1 passt etwas nicht zum Zeichensatz."_s.arg(vorschau.unpassend.zeilen.front());
    return text;
}

void AImport::cmdDateiname_Click()
{
    lblDateiname_->setText(
        Dienst().dialoge.DateiOeffnen(TextdateiDialog(u"ASCII import"_s, Store().KarteiPfad)));
}

void AImport::cmdOK_Click()
{
    if (!Form()) {
        static_cast<void>(Trennzeichen(Dienst().meldungen, cmbTrennzeichen_->currentText()));
        return;
    }
    const QString datei = lblDateiname_->text();
    Importwahl wahl(*Gewaehlt());
    wahl.vorhandene = vorhandene_->Wahl();
    wahl.mitFaechern = chkFaecher_->isChecked();
    Ausgang ausgang{};
    Zugang zugang;
    Ausfuehren([&](const Werkbank &bank) { ausgang = AsciiImportieren(bank, datei, wahl, &zugang); });
    if (ausgang == Ausgang::Gelungen)
        Dienst().meldungen.Zeigen(ErfolgreichEingelesen(datei, zugang));
    else if (ausgang == Ausgang::Teilweise)
        Dienst().meldungen.Zeigen(TeilweiseEingelesen(zugang));
    if (ausgang != Ausgang::Gescheitert || !Store().IsOpen())
        accept();
}

} // namespace paukfix
