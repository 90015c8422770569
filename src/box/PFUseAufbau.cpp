// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "BildBox.h"
#include "Farben.h"
#include "Fensterbau.h"
#include "Flaeche.h"
#include "KurzLabel.h"
#include "PFUse.h"
#include "RichTextBox.h"

#include <QAction>
#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int RahmenBreite = 6; // of the verdict's colour around the card
constexpr int GesichtGroesse = 48;

void TextFaerben(QWidget *widget, const QColor &farbe)
{
    Faerben(widget, {{widget->foregroundRole(), farbe}});
}

void UmrissFaerben(QWidget *knopf)
{
    const QPalette farben = knopf->palette();
    Faerben(knopf,
            {{QPalette::Window, UmrissGrund(farben.color(QPalette::Text), farben.color(QPalette::Base))}});
}

QLabel *Beschriftung(QWidget *eltern, const QString &text)
{
    auto *label = new QLabel(text, eltern);
    label->setTextFormat(Qt::PlainText);
    Schriftgroesse(label, 0.9);
    return label;
}

} // namespace

void PFUse::Aufbauen()
{
    setObjectName(QStringLiteral("PFUse"));
    setWindowTitle(QStringLiteral("Merkkasten Abfrage"));
    setWindowModality(Qt::ApplicationModal);

    Frame1_ =
        Benannt(new Flaeche(this, QPalette::Window), QStringLiteral("Frame1"), QStringLiteral("Ergebnis"));
    Frame1_->hide();
    kasten_ = Benannt(new Flaeche(this), QStringLiteral("Karte"), QStringLiteral("Karte"));
    kasten_->SetUmriss(Flaeche::Umriss::Fein);

    MFrage_ = Benannt(new RichTextBox(kasten_), QStringLiteral("MFrage"), QStringLiteral("Frage"));
    MFrage_->setReadOnly(true);
    MFrage_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    MFrage_->setFrameShape(QFrame::NoFrame);
    MFrage_->viewport()->setAutoFillBackground(false);
    MFrage_->document()->setDocumentMargin(0);
    Schriftgroesse(MFrage_, 1.4);
    MFrage_->setMinimumHeight(MFrage_->fontMetrics().lineSpacing() * 3);
    strich_ = new Flaeche(kasten_, QPalette::Mid);
    strich_->setFixedHeight(2);
    antworten_ = new QWidget(kasten_);
    Picture1_ = Benannt(new BildBox(kasten_), QStringLiteral("Picture1"), QStringLiteral("Bild"));
    Picture1_->hide();
    Picture1_->setToolTip(QStringLiteral("Das Bild lässt sich mit der Maus verschieben"));
    Picture1_->begrenzen = [this](QPoint neu) { return BildImKasten({neu, Picture1_->size()}).topLeft(); };
    Picture1_->gezogen = [this] {
        bildPlatz_ = Picture1_->geometry();
        TextUmBild();
    };

    auto *inhalt = new QVBoxLayout(kasten_); // the question takes the room that the answers leave
    inhalt->setContentsMargins(22, 14, 22, 14);
    inhalt->setSpacing(10);
    inhalt->addLayout(KopfBauen());
    inhalt->addWidget(MFrage_, 1);
    inhalt->addWidget(strich_);
    inhalt->addWidget(antworten_);
    inhalt->addLayout(ErgebnisBauen());

    // The frame lies behind the card and shows around it.
    auto *stapel = new QGridLayout;
    stapel->addWidget(Frame1_, 0, 0);
    auto *innen = new QVBoxLayout;
    innen->setContentsMargins(RahmenBreite, RahmenBreite, RahmenBreite, RahmenBreite);
    innen->addWidget(kasten_);
    stapel->addLayout(innen, 0, 0);

    hinweise_ = Benannt(Beschriftung(this, {}), QStringLiteral("Tastenhinweise"), QStringLiteral("Tasten"));
    hinweise_->setAlignment(Qt::AlignCenter);
    leise_ << hinweise_;

    auto *spalte = new QVBoxLayout;
    spalte->addLayout(stapel, 1);
    spalte->addLayout(KnoepfeBauen());
    spalte->addWidget(hinweise_);
    auto *mitte = new QWidget(this);
    mitte->setMaximumWidth(fontMetrics().height() * 75); // lines that are too long are hard to read
    mitte->setLayout(spalte);
    auto *alles = new QHBoxLayout(this);
    alles->addStretch(1);
    alles->addWidget(mitte, 1000);
    alles->addStretch(1);
}

QLayout *PFUse::KopfBauen()
{
    auto *kopf = new QHBoxLayout;
    const auto feld = [&](const QString &beschriftung, const char *name, QLabel *label) {
        leise_ << Beschriftung(kasten_, beschriftung);
        kopf->addWidget(leise_.back());
        Schriftgroesse(label, 0.9);
        label->setTextFormat(Qt::PlainText);
        kopf->addWidget(Benannt(label, QLatin1String(name), beschriftung));
        return label;
    };
    MaskFrageNr_ = feld(QStringLiteral("Frage Nr."), "MaskFrageNr", new QLabel(kasten_));
    kopf->addSpacing(12);
    MaskFachNr_ = feld(QStringLiteral("Fach"), "MaskFachNr", new QLabel(kasten_));
    kopf->addSpacing(12);
    MaskThema_ = feld(QStringLiteral("Thema"), "MaskThema", new KurzLabel(kasten_));
    kopf->setStretchFactor(MaskThema_, 1);
    return kopf;
}

QLayout *PFUse::ErgebnisBauen()
{
    ergebnis_ = new QWidget(kasten_);
    Image1_ = Benannt(new QLabel(ergebnis_), QStringLiteral("Image1"), QStringLiteral("Gesicht"));
    Image1_->setFixedSize(GesichtGroesse, GesichtGroesse);
    urteil_ = Benannt(new QLabel(ergebnis_), QStringLiteral("Urteil"), QStringLiteral("Urteil"));
    Schriftgroesse(urteil_, 1.5);
    Ergebnis_R_ = Benannt(new QRadioButton(QStringLiteral("&richtig"), ergebnis_),
                          QStringLiteral("Ergebnis_R"), QStringLiteral("richtig"));
    Ergebnis_F_ = Benannt(new QRadioButton(QStringLiteral("&falsch"), ergebnis_),
                          QStringLiteral("Ergebnis_F"), QStringLiteral("falsch"));
    for (QRadioButton *knopf : {Ergebnis_R_, Ergebnis_F_}) {
        knopf->setToolTip(QStringLiteral("Das Urteil selbst fällen"));
        knopf->installEventFilter(this);
    }
    connect(Ergebnis_R_, &QRadioButton::toggled, this, [this](bool an) {
        if (an)
            Ergebnis_R_Click();
    });
    connect(Ergebnis_F_, &QRadioButton::toggled, this, [this](bool an) {
        if (an)
            Ergebnis_F_Click();
    });

    auto *zeile = new QHBoxLayout(ergebnis_);
    zeile->setContentsMargins(0, 0, 0, 0);
    zeile->addWidget(Image1_);
    zeile->addWidget(urteil_, 1);
    zeile->addWidget(Ergebnis_R_);
    zeile->addWidget(Ergebnis_F_);
    PlatzHalten(ergebnis_);
    ergebnis_->hide();
    auto *aussen = new QVBoxLayout;
    aussen->addWidget(ergebnis_);
    return aussen;
}

QLayout *PFUse::KnoepfeBauen()
{
    const auto knopf = [this](const QString &text, const QString &name, const QString &tipp, auto aktion) {
        auto *neu = Benannt(new QPushButton(text, this), name, QString(text).remove(u'&'));
        neu->setToolTip(tipp);
        neu->installEventFilter(this);
        connect(neu, &QPushButton::clicked, this, aktion);
        return neu;
    };
    Clöschen_ =
        knopf(QStringLiteral("Karte &löschen"), QStringLiteral("Clöschen"),
              QStringLiteral("Diese Karte aus dem Merkkasten entfernen"), [this] { Clöschen_Click(); });
    Command1_ = knopf(QStringLiteral("Karte &bearbeiten"), QStringLiteral("Command1"),
                      QStringLiteral("Diese Karte im Karteneditor öffnen"), [this] { Command1_Click(); });
    Command1_->setEnabled(umgebung_.bearbeitbar);
    nochEinmal_ =
        knopf(QStringLiteral("♪ noch einmal"), QStringLiteral("NochEinmal"),
              QStringLiteral("Den Klang noch einmal abspielen (F5)"), [this] { KlangSpielen(klang_); });
    nochEinmal_->setAccessibleName(QStringLiteral("Klang noch einmal abspielen"));
    nochEinmal_->setFocusPolicy(Qt::TabFocus); // a click leaves the keyboard where it is
    nochEinmal_->setShortcut(Qt::Key_F5);
    PlatzHalten(nochEinmal_);
    nochEinmal_->hide();
    Cpruefen_ =
        knopf(QStringLiteral("&Prüfen"), QStringLiteral("Cpruefen"),
              QStringLiteral("Die Antwort prüfen (Eingabe oder Strg+P)"), [this] { Cpruefen_Click(); });
    Command3_ = knopf(QStringLiteral("&Weiter"), QStringLiteral("Command3"),
                      QStringLiteral("Schließen und weiter (Eingabe)"), [this] { Command3_Click(); });
    Cpruefen_->setDefault(true);
    Command3_->setEnabled(false);
    auto *strgP = new QAction(this);
    strgP->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_P));
    connect(strgP, &QAction::triggered, this, [this] { Cpruefen_Click(); });
    addAction(strgP);

    auto *zeile = new QHBoxLayout;
    zeile->setContentsMargins(RahmenBreite, 0, RahmenBreite, 0);
    zeile->addWidget(Clöschen_);
    zeile->addWidget(Command1_);
    zeile->addWidget(nochEinmal_);
    zeile->addStretch(1);
    zeile->addWidget(Cpruefen_);
    zeile->addWidget(Command3_);
    return zeile;
}

void PFUse::AntwortenBauen()
{
    MaskFrageNr_->setText(karte_.FrageNr);
    MaskFachNr_->setText(QString::number(karte_.FachNr));
    MaskThema_->setText(karte_.Thema);
    MaskThema_->setToolTip(Kurztext(karte_.Thema).toHtmlEscaped());
    MFrage_->ZeigeRichText(karte_.Frage);
    MFrage_->installEventFilter(this);

    for (std::size_t i = 0; i < Antwort_.size(); ++i) {
        feld_[i] = new Flaeche(antworten_);
        feld_[i]->hide();
        Antwort_[i] = Benannt(new RichTextBox(feld_[i]), Name("Antwort", i), QString());
        Antwort_[i]->installEventFilter(this);
    }
    for (std::size_t i = 0; i < AntwortAnzahl; ++i) {
        Check1_[i] = Benannt(new QCheckBox(antworten_), Name("Check1", i), QString());
        Check2_[i] = Benannt(new QCheckBox(antworten_), Name("Check2", i), QString());
        Check1_[i]->hide();
        Check2_[i]->hide();
    }
    Label4_ = Benannt(Beschriftung(antworten_, QStringLiteral("richtig")), QStringLiteral("Label4"),
                      QStringLiteral("Richtige Antworten"));
    Label4_->hide();
    leise_ << Label4_;
    if (karte_.typ == Antworttyp::Ankreuzen)
        AnkreuzenBauen();
    else
        TippenBauen();
    TabFolge();
    HinweiseZeigen();
    FarbenSetzen();
    GroesseWaehlen();
}

void PFUse::TippenBauen()
{
    leise_ << Beschriftung(antworten_, QStringLiteral("Ihre Antwort"))
           << Beschriftung(antworten_, QStringLiteral("Lösung"));
    Antwort_[0]->setAccessibleName(QStringLiteral("Ihre Antwort"));
    Antwort_[0]->setAcceptRichText(false);
    Antwort_[0]->bei_Ablehnung = [this](const QString &grund) { umgebung_.meldungen.Zeigen(grund); };
    Antwort_[5]->setAccessibleName(QStringLiteral("Lösung"));
    Antwort_[5]->setReadOnly(true);
    Antwort_[5]->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    Antwort_[5]->setEnabled(false);

    auto *gitter = new QGridLayout(antworten_);
    gitter->setContentsMargins(0, 0, 0, 0);
    gitter->setHorizontalSpacing(18);
    for (const int spalte : {0, 1}) {
        RichTextBox *box = Antwort_[spalte == 0 ? 0 : 5];
        Flaeche *feld = feld_[spalte == 0 ? 0 : 5];
        Schriftgroesse(box, 1.2);
        box->setFrameShape(QFrame::NoFrame);
        box->viewport()->setAutoFillBackground(false);
        box->setMinimumHeight(box->fontMetrics().lineSpacing() * 6);
        auto *rand = new QVBoxLayout(feld);
        rand->setContentsMargins(4, 4, 4, 4);
        rand->addWidget(box);
        gitter->addWidget(leise_[leise_.size() - 2 + spalte], 0, spalte);
        gitter->addWidget(feld, 1, spalte);
        gitter->setColumnStretch(spalte, 1);
        feld->show();
    }
    Antwort_[0]->setFocus();
}

void PFUse::AnkreuzenBauen()
{
    leise_ << Beschriftung(antworten_, QStringLiteral("Was trifft zu?"));
    auto *titel = new QHBoxLayout;
    titel->addWidget(leise_.back(), 1);
    PlatzHalten(Label4_);
    titel->addWidget(Label4_);

    // Line i takes the place that line folge[i] had.
    const std::array<int, AntwortAnzahl> folge = AntwortenMischen(umgebung_.zufall);
    for (std::size_t i = 0; i < AntwortAnzahl; ++i)
        zeileAmPlatz_[static_cast<std::size_t>(folge[i])] = i;

    auto *zeilen = new QVBoxLayout(antworten_);
    zeilen->setContentsMargins(0, 0, 0, 0);
    zeilen->setSpacing(4);
    zeilen->addLayout(titel);
    int nummer = 0;
    for (const std::size_t i : zeileAmPlatz_) {
        ZeileBauen(i, ++nummer);
        zeilen->addWidget(feld_[i]);
    }
    Check1_[zeileAmPlatz_[0]]->setFocus();
}

void PFUse::ZeileBauen(std::size_t i, int nummer)
{
    RichTextBox *box = Antwort_[i];
    box->ZeigeRichText(karte_.Antwort[i]);
    box->setReadOnly(true);
    box->setTextInteractionFlags(Qt::NoTextInteraction);
    box->setFocusPolicy(Qt::NoFocus);
    box->setFrameShape(QFrame::NoFrame);
    box->viewport()->setAutoFillBackground(false);
    box->viewport()->installEventFilter(this);
    box->SetHoechstens(4);
    const QString text = box->PlainText();
    box->setAccessibleName(QStringLiteral("Antwort %1").arg(nummer));

    Check1_[i]->setText(QString::number(nummer));
    Check1_[i]->setAccessibleName(QStringLiteral("Antwort %1: %2").arg(QString::number(nummer), text));
    Check1_[i]->installEventFilter(this);
    connect(Check1_[i], &QCheckBox::clicked, this, [this] { Check1_Click(); });
    Check2_[i]->setAccessibleName(QStringLiteral("Antwort %1 ist richtig").arg(nummer));
    Check2_[i]->setFocusPolicy(Qt::NoFocus);
    Check2_[i]->setAttribute(Qt::WA_TransparentForMouseEvents);
    PlatzHalten(Check2_[i]);

    feld_[i]->installEventFilter(this);
    feld_[i]->show();
    auto *zeile = new QHBoxLayout(feld_[i]);
    zeile->setContentsMargins(10, 2, 10, 2);
    zeile->addWidget(Check1_[i]);
    zeile->addWidget(box, 1);
    zeile->addWidget(Check2_[i]);
    Check1_[i]->show();
}

void PFUse::TabFolge()
{
    QList<QWidget *> folge;
    if (karte_.typ == Antworttyp::Ankreuzen) {
        for (const std::size_t i : zeileAmPlatz_)
            folge << Check1_[i];
    } else {
        folge << Antwort_[0] << Antwort_[5];
    }
    folge << Cpruefen_ << Ergebnis_R_ << Ergebnis_F_ << Command3_ << nochEinmal_ << MFrage_ << Command1_
          << Clöschen_;
    for (qsizetype i = 1; i < folge.size(); ++i)
        setTabOrder(folge[i - 1], folge[i]);
}

void PFUse::FarbenSetzen()
{
    const QColor text = palette().color(QPalette::WindowText);
    const QColor karte = palette().color(QPalette::Base);
    for (QLabel *label : leise_) {
        const QColor grund = label == hinweise_ ? palette().color(QPalette::Window) : karte;
        TextFaerben(label, Farben::Leise(text, grund));
    }
    Faerben(strich_, {{QPalette::Mid, MFrage_->hasFocus() ? palette().color(QPalette::Highlight)
                                                          : Farben::Getoent(text, karte, 0.15)}});

    const QColor signal = Ergebnis_R_->isChecked() ? Farben::Richtig : Farben::Falsch;
    Faerben(Frame1_, {{QPalette::Window, signal}});
    TextFaerben(urteil_, stand_ == Stand::Beurteilt ? Farben::Lesbar(signal, karte) : text);
    UmrissFaerben(Ergebnis_R_);
    UmrissFaerben(Ergebnis_F_);
    if (karte_.typ == Antworttyp::Ankreuzen)
        ZeilenFaerben();
    else
        FelderUmranden();
}

void PFUse::ZeilenFaerben()
{
    for (std::size_t i = 0; i < AntwortAnzahl; ++i) {
        feld_[i]->SetUmriss(Check1_[i]->hasFocus() ? Flaeche::Umriss::Fokus : Flaeche::Umriss::Fein);
        if (stand_ != Stand::Gefragt) {
            const bool stimmt = Check1_[i]->isChecked() == Check2_[i]->isChecked();
            Faerben(feld_[i], {{QPalette::Base, Farben::Getoent(stimmt ? Farben::Richtig : Farben::Falsch,
                                                                palette().color(QPalette::Base), 0.18)}});
        }
        UmrissFaerben(Check1_[i]);
        UmrissFaerben(Check2_[i]);
    }
}

void PFUse::FelderUmranden()
{
    const auto umriss = [](const QWidget *box, Flaeche::Umriss sonst) {
        return box->hasFocus() ? Flaeche::Umriss::Fokus : sonst;
    };
    const bool gefragt = stand_ == Stand::Gefragt;
    feld_[0]->SetUmriss(umriss(Antwort_[0], gefragt ? Flaeche::Umriss::Feld : Flaeche::Umriss::Fein));
    feld_[5]->SetUmriss(umriss(Antwort_[5], gefragt ? Flaeche::Umriss::Gestrichelt : Flaeche::Umriss::Fein));
}

void PFUse::HinweiseZeigen()
{
    const QString punkt = QStringLiteral("   ·   ");
    QStringList tasten;
    if (stand_ == Stand::Gefragt && karte_.typ == Antworttyp::Ankreuzen)
        tasten << QStringLiteral("1 bis 5 kreuzt an") << QStringLiteral("Eingabe prüft");
    else if (stand_ == Stand::Gefragt)
        tasten << QStringLiteral("Eingabe prüft") << QStringLiteral("Umschalt+Eingabe neue Zeile");
    else if (stand_ == Stand::Beurteilt)
        tasten << QStringLiteral("Eingabe weiter");
    else
        tasten << QStringLiteral("Pfeiltasten wählen") << QStringLiteral("Eingabe bestätigt");
    if (stand_ != Stand::Gefragt)
        tasten << QStringLiteral("Alt+R richtig") << QStringLiteral("Alt+F falsch");
    if (stand_ != Stand::Beurteilt)
        tasten << QStringLiteral("Esc: ohne Antwort zurück");
    hinweise_->setText(tasten.join(punkt));
}
