// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "BildBox.h"
#include "Farben.h"
#include "Fensterbau.h"
#include "Flaeche.h"
#include "Formatierung.h"
#include "Formularbild.h"
#include "KartenTextBox.h"
#include "PFAendern.h"
#include "Themenzeile.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QVBoxLayout>

namespace {

constexpr QColor HellGrau{0xC0, 0xC0, 0xC0};

// A word on a rounded ground that stands out from the form.
class Marke final : public QLabel
{
public:
    Marke(const QString &text, QWidget *eltern) : QLabel(text, eltern)
    {
        setContentsMargins(12, 3, 12, 3);
        QFont fett = font();
        fett.setBold(true);
        setFont(fett);
    }

protected:
    void paintEvent(QPaintEvent *event) override
    {
        QPainter maler(this);
        maler.setRenderHint(QPainter::Antialiasing);
        maler.setPen(Qt::NoPen);
        maler.setBrush(palette().color(QPalette::Window));
        maler.drawRoundedRect(rect(), height() / 2.0, height() / 2.0);
        QLabel::paintEvent(event);
    }
};

constexpr int AntwortAbstand = 5; // between the lines of a tick card

// The room of the answers; a rest of pixels that five lines cannot share stays below them.
class Antwortkasten final : public QWidget
{
public:
    using QWidget::QWidget;

protected:
    void resizeEvent(QResizeEvent *event) override
    {
        constexpr int Zeilen = static_cast<int>(AntwortBoxen);
        layout()->setContentsMargins(0, 0, 0, (height() - (Zeilen - 1) * AntwortAbstand) % Zeilen);
        QWidget::resizeEvent(event);
    }
};

} // namespace

void PFÄndern::Aufbauen()
{
    setObjectName(QStringLiteral("PFÄndern"));
    setWindowTitle(QStringLiteral("Merkkasten Ändern"));

    formular_ = Benannt(new QWidget(this), QStringLiteral("Formular"), QStringLiteral("Karte"));
    formular_->setAutoFillBackground(true);
    setCentralWidget(formular_);

    MFrage_ = Benannt(new KartenTextBox(formular_), QStringLiteral("MFrage"), QStringLiteral("Frage"));
    frageFeld_ = TextfeldBauen(MFrage_);
    MFrage_->setMinimumHeight(fontMetrics().lineSpacing() * 5);
    hinweise_ = Benannt(new QLabel(formular_), QStringLiteral("Tastenhinweise"), QStringLiteral("Tasten"));
    hinweise_->setAlignment(Qt::AlignCenter);
    hinweise_->setTextFormat(Qt::PlainText);
    hinweise_->setText(QStringLiteral("Strg+I speichert   ·   Strg+< vorige Karte   ·   "
                                      "Strg+Umschalt+> nächste Karte   ·   F3 sucht"));
    hinweise_->setWordWrap(true);
    PlatzHalten(hinweise_);

    // The question begins near the top: cards have their pictures there.
    QLayout *kopf = KopfBauen();
    QLayout *art = ArtBauen();
    QWidget *antworten = AntwortenBauen();
    auto *alles = new QGridLayout(formular_);
    alles->setContentsMargins(14, 8, 14, 8);
    alles->setSpacing(8);
    const auto zeile = [&](int nummer, const QString &text, QWidget *ziel) {
        QLabel *label = Beschriftung(text, ziel, formular_);
        const bool einzeilig = ziel == MaskFrageNr_;
        label->setContentsMargins(0, einzeilig ? 0 : 6, 0, 0);
        alles->addWidget(label, nummer, 0, Qt::AlignRight | (einzeilig ? Qt::AlignVCenter : Qt::AlignTop));
    };
    zeile(0, QStringLiteral("Frage &Nr.:"), MaskFrageNr_);
    alles->addLayout(kopf, 0, 1);
    zeile(1, QStringLiteral("&Frage:"), MFrage_);
    alles->addWidget(frageFeld_, 1, 1);
    alles->addLayout(art, 2, 1);
    zeile(3, QStringLiteral("&Antwort:"), Antwort_[0]);
    alles->addWidget(antworten, 3, 1);
    alles->addLayout(KnoepfeBauen(), 4, 1);
    alles->addWidget(hinweise_, 5, 0, 1, 2);
    alles->setRowStretch(1, 1);
    alles->setRowStretch(3, 1);
    BildBauen();
    MenueBauen();
    TabFolge();
    FarbenSetzen();
    GroesseWaehlen();
}

QLayout *PFÄndern::KopfBauen()
{
    MaskFrageNr_ =
        Benannt(new QLineEdit(formular_), QStringLiteral("MaskFrageNr"), QStringLiteral("Nummer der Karte"));
    MaskFrageNr_->setMaxLength(20);
    MaskFrageNr_->setFixedWidth(fontMetrics().horizontalAdvance(QStringLiteral("0000000")) * 3 / 2);
    MaskFrageNr_->setToolTip(
        QStringLiteral("Nummer eingeben und mit der Eingabetaste zu dieser Karte springen"));
    MaskFrageNr_->installEventFilter(this);
    connect(MaskFrageNr_, &QLineEdit::returnPressed, this, [this] {
        LaufBeenden();
        editor_.Springen(MaskFrageNr_->text());
        if (MaskFrageNr_->hasFocus())
            MaskFrageNr_->selectAll(); // the next number replaces this one
    });
    // A number that was typed and not confirmed is not the card's.
    connect(MaskFrageNr_, &QLineEdit::editingFinished, &fokuswache_, [this] {
        if (!MaskFrageNr_->hasFocus())
            MaskFrageNr_->setText(kopf_.FrageNr);
    });
    MaskFachNr_ = Benannt(new QLabel(formular_), QStringLiteral("MaskFachNr"), QStringLiteral("Fach"));
    MaskFachNr_->setTextFormat(Qt::PlainText);
    LabelNeu_ = Benannt(new Marke(QStringLiteral("Neue Karte"), formular_), QStringLiteral("LabelNeu"),
                        QStringLiteral("Neue Karte"));
    PlatzHalten(LabelNeu_);
    MaskThema_ = Benannt(new Themenzeile(formular_), QStringLiteral("MaskThema"), QStringLiteral("Thema"));
    MaskThema_->installEventFilter(this);
    connect(MaskThema_, &QLineEdit::textEdited, this, [this] { Geaendert(); });

    auto *kopf = new QHBoxLayout;
    kopf->addWidget(MaskFrageNr_);
    kopf->addSpacing(12);
    kopf->addWidget(new QLabel(QStringLiteral("Fach:"), formular_));
    kopf->addWidget(MaskFachNr_);
    kopf->addSpacing(12);
    kopf->addWidget(LabelNeu_);
    kopf->addSpacing(12);
    kopf->addWidget(Beschriftung(QStringLiteral("&Thema:"), MaskThema_, formular_));
    kopf->addWidget(MaskThema_, 1);
    return kopf;
}

QLayout *PFÄndern::ArtBauen()
{
    Frame2_ = Benannt(new QWidget(formular_), QStringLiteral("Frame2"), QStringLiteral("Antwort als:"));
    Antwort_T_ = Benannt(new QRadioButton(QStringLiteral("Text/&Zahl"), Frame2_), QStringLiteral("Antwort_T"),
                         QStringLiteral("Antwort als Text oder Zahl"));
    Antwort_K_ = Benannt(new QRadioButton(QStringLiteral("An&kreuzen"), Frame2_), QStringLiteral("Antwort_K"),
                         QStringLiteral("Antwort zum Ankreuzen"));
    art_ = new QButtonGroup(this);
    for (QRadioButton *knopf : {Antwort_T_, Antwort_K_}) {
        art_->addButton(knopf);
        connect(knopf, &QRadioButton::clicked, this, [this] { Antworttyp_Click(); });
    }
    auto *rahmen = new QHBoxLayout(Frame2_);
    rahmen->setContentsMargins(0, 0, 0, 0);
    rahmen->addWidget(new QLabel(QStringLiteral("Antwort als:"), Frame2_));
    rahmen->addWidget(Antwort_T_);
    rahmen->addWidget(Antwort_K_);
    PlatzHalten(Frame2_);

    auto *zeile = new QHBoxLayout;
    zeile->addWidget(Frame2_);
    zeile->addStretch(1);
    return zeile;
}

// A text box on a field that shows where the keyboard goes.
Flaeche *PFÄndern::TextfeldBauen(KartenTextBox *box)
{
    auto *feld = new Flaeche(formular_);
    box->setFrameShape(QFrame::NoFrame);
    box->viewport()->setAutoFillBackground(false);
    box->installEventFilter(this);
    connect(box, &QTextEdit::textChanged, this, [this] { Geaendert(); });
    box->bei_Ablehnung = [this](const QString &grund) { umgebung_.meldungen.Zeigen(grund); };
    box->darfVerlieren = [this, box](RichTextLosses verluste) { return DarfVerlieren(*box, verluste); };
    auto *zeile = new QHBoxLayout(feld);
    zeile->setContentsMargins(6, 4, 6, 4);
    zeile->addWidget(box, 1);
    return feld;
}

// All five answers share the room that the single one has: nothing else moves when the type changes.
QWidget *PFÄndern::AntwortenBauen()
{
    // A line of the standard font is seen whole, without a scroll bar.
    const int schrift = QFontMetrics(StandardFormat(umgebung_.konfig.schrift).font()).lineSpacing();
    const int zeile = std::max(fontMetrics().lineSpacing(), schrift) + 14;
    auto *kasten = new Antwortkasten(formular_);
    antworten_ = new QGridLayout(kasten);
    antworten_->setContentsMargins(0, 0, 0, 0);
    antworten_->setSpacing(AntwortAbstand);
    kasten->setMinimumHeight(static_cast<int>(AntwortBoxen) * (zeile + AntwortAbstand));
    for (std::size_t i = 0; i < AntwortBoxen; ++i) {
        Antwort_[i] = Benannt(new KartenTextBox(formular_), Name("Antwort", i),
                              QStringLiteral("Antwort %1").arg(i + 1));
        feld_[i] = TextfeldBauen(Antwort_[i]);
        Antwort_[i]->document()->setDocumentMargin(2);
        Check1_[i] = Benannt(new QCheckBox(QStringLiteral("richtig"), feld_[i]), Name("Check1", i),
                             QStringLiteral("Antwort %1 ist richtig").arg(i + 1));
        Check1_[i]->setToolTip(QStringLiteral("Diese Antwort ist richtig"));
        connect(Check1_[i], &QCheckBox::clicked, this, [this] { AuswahlGeaendert(); });
        feld_[i]->layout()->addWidget(Check1_[i]);
        feld_[i]->layout()->setAlignment(Check1_[i], Qt::AlignTop); // beside the first line
        feld_[i]->setMinimumHeight(zeile);
        Antwort_[i]->setMinimumHeight(0);
        antworten_->addWidget(feld_[i], static_cast<int>(i), 0);
    }
    return kasten;
}

QLayout *PFÄndern::KnoepfeBauen()
{
    const auto knopf = [this](const QString &text, const QString &name, const QString &zugaenglich,
                              const QString &tipp) {
        auto *neu = Benannt(new QPushButton(text, formular_), name, zugaenglich);
        neu->setToolTip(tipp);
        PlatzHalten(neu);
        return neu;
    };
    CZZurück_ = knopf(QStringLiteral("<<"), QStringLiteral("CZZurück"), QStringLiteral("zurückblättern"),
                      QStringLiteral("zurückblättern, solange gedrückt"));
    CZurück_ = knopf(QStringLiteral("<"), QStringLiteral("CZurück"), QStringLiteral("vorige Karte"),
                     QStringLiteral("vorige Karte STRG+<"));
    CVor_ = knopf(QStringLiteral(">"), QStringLiteral("CVor"), QStringLiteral("nächste Karte"),
                  QStringLiteral("nächste Karte STRG + SHIFT + >"));
    CVVor_ = knopf(QStringLiteral(">>"), QStringLiteral("CVVor"), QStringLiteral("vorblättern"),
                   QStringLiteral("vorblättern, solange gedrückt"));
    CEOF_ = knopf(QStringLiteral(">>|"), QStringLiteral("CEOF"), QStringLiteral("neue Karte am Ende"),
                  QStringLiteral("neue Karte hinter der letzten"));
    Cadd_ = knopf(QStringLiteral("&hinzufügen"), QStringLiteral("Cadd"), QStringLiteral("hinzufügen"),
                  QStringLiteral("Karte hinzufügen (STRG+I)"));
    Cback_ = knopf(QStringLiteral("Zu&rück"), QStringLiteral("Cback"), QStringLiteral("Zurück"),
                   QStringLiteral("den Editor schließen"));
    CVVor_->installEventFilter(this);
    CZZurück_->installEventFilter(this);
    const auto tun = [this](QPushButton *taste, auto aktion) {
        connect(taste, &QPushButton::clicked, this, [this, aktion] {
            LaufBeenden();
            aktion();
        });
    };
    tun(CZurück_, [this] { editor_.CZurück(); });
    tun(CVor_, [this] { editor_.CVor(); });
    tun(CEOF_, [this] {
        editor_.CEOF();
        if (editor_.Neu() && !editor_.cardDirty)
            FokusAufFrage();
    });
    tun(Cadd_, [this] { Cadd_Click(); });
    tun(Cback_, [this] { close(); });

    auto *zeile = new QHBoxLayout;
    for (QPushButton *taste : {CZZurück_, CZurück_, CVor_, CVVor_, CEOF_}) {
        taste->setMinimumWidth(fontMetrics().height() * 3);
        taste->setMaximumWidth(fontMetrics().height() * 4);
        zeile->addWidget(taste);
    }
    zeile->addStretch(1);
    zeile->addWidget(Cadd_);
    zeile->addWidget(Cback_);
    return zeile;
}

void PFÄndern::TabFolge()
{
    QList<QWidget *> folge{MaskFrageNr_, MaskThema_, MFrage_, bild_->Box(), Antwort_T_, Antwort_K_};
    for (std::size_t i = 0; i < AntwortBoxen; ++i)
        folge << Antwort_[i] << Check1_[i];
    folge << CZZurück_ << CZurück_ << CVor_ << CVVor_ << CEOF_ << Cadd_ << Cback_;
    for (qsizetype i = 1; i < folge.size(); ++i)
        setTabOrder(folge[i - 1], folge[i]);
}

// As large as reads well, and so large that a new card's picture has its place; never larger than the screen.
void PFÄndern::GroesseWaehlen()
{
    const int zeile = fontMetrics().height();
    const QSize schirm = screen()->availableSize() * 0.9;
    resize(QSize(zeile * 56, zeile * 42).expandedTo({900, 620}).boundedTo(schirm));
}

QList<QWidget *> PFÄndern::NichtGedruckt() const
{
    return {CZZurück_, CVVor_, CZurück_, CVor_, Cadd_, Cback_, Frame2_, CEOF_};
}

void PFÄndern::FarbenSetzen()
{
    // Printing leaves the form light grey, on which a dark desktop's text could not be read.
    if (gedruckt_)
        Faerben(formular_, {{QPalette::Window, HellGrau}, {QPalette::WindowText, Qt::black}});
    FarbenAbleiten();
}

// The colours that the form's own do not tell by themselves.
void PFÄndern::FarbenAbleiten()
{
    const QPalette &farben = formular_->palette();
    const QColor grund = farben.color(QPalette::Window);
    const QColor leise = Farben::Leise(farben.color(QPalette::WindowText), grund);
    Faerben(hinweise_, {{QPalette::WindowText, leise}});
    const QColor marke = farben.color(QPalette::Highlight);
    Faerben(LabelNeu_,
            {{QPalette::Window, marke},
             {QPalette::WindowText, Farben::Lesbar(farben.color(QPalette::HighlightedText), marke)}});
    // The ticks stand on the fields, not on the form.
    const QColor feld = farben.color(QPalette::Base);
    const QColor text = farben.color(QPalette::Text);
    for (QCheckBox *kreuz : Check1_)
        Faerben(kreuz, {{QPalette::WindowText, text}, {QPalette::Window, UmrissGrund(text, feld)}});
    const QColor umriss = UmrissGrund(farben.color(QPalette::WindowText), grund);
    for (QWidget *widget : QList<QWidget *>{Antwort_T_, Antwort_K_, MaskFrageNr_, MaskThema_})
        Faerben(widget, {{QPalette::Window, umriss}});
    FelderUmranden();
}

void PFÄndern::FelderUmranden()
{
    const auto umranden = [aktiv = aktiv_](Flaeche *feld, const KartenTextBox *box) {
        feld->SetUmriss(box == aktiv ? Flaeche::Umriss::Fokus : Flaeche::Umriss::Feld);
    };
    umranden(frageFeld_, MFrage_);
    for (std::size_t i = 0; i < AntwortBoxen; ++i)
        umranden(feld_[i], Antwort_[i]);
}
