// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Loesungsfeld.h"

#include "Abfrage.h"
#include "Abfrageteile.h"
#include "Hausfarben.h"
#include "KurzLabel.h"
#include "RichText.h"
#include "RichTextBox.h"
#include "Unterschied.h"

#include <QEvent>
#include <QPainter>
#include <QTextCursor>

#include <algorithm>
#include <cmath>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr int Abstand = 4;   // between a label and its text
constexpr int MaxZeilen = 5; // of a solution, more are scrolled
constexpr int MaxZeilenKompakt = 2;
constexpr int Lang = 1500; // characters: more fill the room anyway

qsizetype HinweisStelle(const QString &text)
{
    return text.indexOf("Hinweis:"_L1);
}

// As large as the window's font.
QTextCharFormat Hinweisgroesse()
{
    QTextCharFormat format;
    format.setFontPointSize(Kartenschrift({}).pointSizeF() / Schriftgrad::Gross);
    return format;
}

} // namespace

QTextCharFormat Buchstabenmarke(const QPalette &palette, bool richtig)
{
    const Hausfarben &farben = HausfarbenZu(palette);
    QTextCharFormat format;
    format.setForeground(richtig ? farben.richtigText : farben.falschText);
    format.setBackground(richtig ? farben.richtigGrund : farben.falschGrund);
    format.setFontWeight(QFont::DemiBold);
    format.setUnderlineStyle(QTextCharFormat::SingleUnderline);
    return format;
}

Loesungsfeld::Loesungsfeld(QWidget *eltern)
    : QWidget(eltern),
      titel_(Beschriftung(this, u"Lösung"_s)),
      text_(Benannt(new RichTextBox(this), Name("Antwort", 5), u"Lösung"_s)),
      worte_(new KurzLabel(this)),
      hinweis_(new KurzLabel(this))
{
    text_->setReadOnly(true);
    text_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    text_->setFrameShape(QFrame::NoFrame);
    text_->viewport()->setAutoFillBackground(false);
    text_->document()->setDocumentMargin(0);
    text_->installEventFilter(this);
    worte_->setObjectName(u"Unterschied"_s);
    hinweis_->setObjectName(u"Hinweis"_s);
    for (QLabel *label : {worte_, hinweis_}) {
        label->setTextFormat(Qt::PlainText);
        label->setForegroundRole(QPalette::PlaceholderText);
        label->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    }
}

void Loesungsfeld::Vorbereiten(const Abfragekarte &karte)
{
    hide();
    mass_ = {};
    const QFont klein = Schriftgrad::In(font(), Schriftgrad::Klein);
    titel_->setFont(klein);
    worte_->setFont(klein);
    QFont kursiv = klein;
    kursiv.setItalic(true);
    hinweis_->setFont(kursiv);
    worte_->clear();
    text_->setFont(Kartenschrift(font()));
    text_->SetFaktor(Kartenfaktor(font(), Schriftgrad::Gross));
    text_->ZeigeRichText({});

    SetRichText(ganz_, karte.Antwort[0]);
    SetRichText(kern_, {});
    const QString text = ganz_.toRawText();
    const qsizetype hinweis = HinweisStelle(text);
    hinweis_->setText(hinweis < 0 ? QString() : Einzeilig(Kurztext(text.mid(hinweis))));
    hinweis_->setToolTip(hinweis_->text().toHtmlEscaped());
    if (hinweis < 0)
        return;
    QTextCursor vorn(&ganz_);
    vorn.setPosition(static_cast<int>(hinweis), QTextCursor::KeepAnchor);
    QTextCursor(&kern_).insertFragment(vorn.selection());
    QTextCursor ende(&kern_);
    ende.movePosition(QTextCursor::End);
    while (!ende.atStart() && kern_.characterAt(ende.position() - 1).isSpace())
        ende.deletePreviousChar();
    QTextCursor hinten(&ganz_);
    hinten.setPosition(static_cast<int>(hinweis));
    hinten.movePosition(QTextCursor::End, QTextCursor::KeepAnchor);
    hinten.mergeCharFormat(Hinweisgroesse());
}

void Loesungsfeld::SetKompakt(bool kompakt)
{
    kompakt_ = kompakt;
    mass_ = {};
    text_->setVerticalScrollBarPolicy(kompakt ? Qt::ScrollBarAlwaysOff : Qt::ScrollBarAsNeeded);
    Anordnen();
}

int Loesungsfeld::Zeilen(int breite) const
{
    return Messen(breite).zeilen;
}

int Loesungsfeld::Hoehe(int breite) const
{
    return Messen(breite).hoehe;
}

const Loesungsfeld::Mass &Loesungsfeld::Messen(int breite) const
{
    if (mass_.breite == breite)
        return mass_;
    const int zeile = text_->Zeilenhoehe();
    const int hoechstens = zeile * (kompakt_ ? MaxZeilenKompakt : MaxZeilen);
    const auto hoehe = [&](const QTextDocument &text) {
        if (text.characterCount() > Lang)
            return hoechstens;
        const double bedarf =
            text_->Bedarf(text, breite - Einzug, Kartenfaktor(font(), Schriftgrad::Gross)).height();
        return std::clamp(static_cast<int>(std::ceil(bedarf)), zeile, hoechstens);
    };
    const int ganz = hoehe(ganz_), kern = hinweis_->text().isEmpty() ? ganz : hoehe(kern_);
    mass_ = {breite, kern / zeile, kompakt_ ? kern + 2 : titel_->sizeHint().height() + Abstand + ganz + 2};
    return mass_;
}

void Loesungsfeld::Zeigen(const Abfragekarte &karte)
{
    text_->ZeigeRichText(karte.Antwort[0]);
    Vergleichen({}, {});
    Anordnen();
    show();
}

void Loesungsfeld::Vergleichen(const QList<Stelle> &stellen, const QString &worte)
{
    QList<Textmarke> marken;
    for (const Stelle &stelle : stellen)
        marken << Textmarke{stelle.anfang, stelle.laenge, Buchstabenmarke(palette(), true)};
    const QString text = text_->document()->toRawText();
    if (const qsizetype hinweis = HinweisStelle(text); hinweis >= 0) {
        marken << Textmarke{hinweis, text.size() - hinweis, Hinweisgroesse()};
    }
    text_->SetMarken(marken);
    worte_->setText(worte);
    text_->setToolTip(kompakt_ ? worte : QString());
    Anordnen();
}

QString Loesungsfeld::Worte() const
{
    return worte_->text();
}

bool Loesungsfeld::eventFilter(QObject * /*text*/, QEvent *event)
{
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
        update();
    return false;
}

void Loesungsfeld::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    Anordnen();
}

// In a small window all of it stands in one line.
void Loesungsfeld::Anordnen()
{
    const QSize titel = titel_->sizeHint();
    worte_->setVisible(!kompakt_ && !worte_->text().isEmpty());
    if (!kompakt_) {
        hinweis_->hide();
        titel_->setGeometry(0, 0, titel.width(), titel.height());
        const int daneben = titel.width() + 16;
        worte_->setGeometry(daneben, 0, std::max(0, width() - daneben), titel.height());
        const int oben = titel.height() + Abstand;
        text_->setGeometry(Einzug, oben, width() - Einzug, std::max(0, height() - oben));
        return;
    }
    const int zeile = text_->Zeilenhoehe();
    titel_->setGeometry(Einzug, (zeile - titel.height()) / 2, titel.width(), titel.height());
    const int links = Einzug + titel.width() + 12;
    int breite = width() - links;
    const bool hinweis = !hinweis_->text().isEmpty() && kern_.characterCount() < 60;
    if (hinweis) {
        const double eigene =
            text_->Bedarf(kern_, breite, Kartenfaktor(font(), Schriftgrad::Gross)).width() * 1.08;
        breite = std::min(breite, static_cast<int>(eigene) + 4);
        const int danach = links + breite + 12;
        hinweis_->setGeometry(danach, 0, std::max(0, width() - danach), zeile);
    }
    hinweis_->setVisible(hinweis);
    text_->setGeometry(links, 0, breite, height());
}

void Loesungsfeld::paintEvent(QPaintEvent *)
{
    if (!text_->hasFocus())
        return;
    QPainter maler(this);
    maler.setRenderHint(QPainter::Antialiasing);
    maler.setPen(QPen(HausfarbenZu(palette()).fokus, 2));
    maler.drawRoundedRect(QRectF(text_->geometry()).adjusted(-5, 1, -1, -1), 4, 4);
}

} // namespace paukfix
