// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "MeldungenFenster.h"

#include "Berichtfenster.h"
#include "Kurztext.h"
#include "Protokoll.h"

#include <QApplication>
#include <QFontMetrics>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLibraryInfo>
#include <QMessageBox>
#include <QPushButton>
#include <QSpacerItem>
#include <QTranslator>

#include <memory>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype MeldungLaenge = 4000; // a name in it may be megabytes long

// What a message shows of a text.
QString Gezeigt(const QString &text)
{
    return Umbrechbar(Kurztext(text, MeldungLaenge));
}

// While a message is shown, the pointer is the ordinary one.
class OhneSanduhr
{
public:
    explicit OhneSanduhr(bool an) : an_(an)
    {
        if (an_)
            QApplication::restoreOverrideCursor();
    }

    OhneSanduhr(const OhneSanduhr &) = delete;
    OhneSanduhr &operator=(const OhneSanduhr &) = delete;

    ~OhneSanduhr()
    {
        if (an_)
            QApplication::setOverrideCursor(Qt::WaitCursor);
    }

private:
    bool an_;
};

// Some desktops bring their own texts for the standard buttons, in their own language.
void DeutscheKnoepfe(QMessageBox &box)
{
    struct Knopf
    {
        QMessageBox::StandardButton knopf;
        const char *text;
    };

    for (const Knopf &k :
         {Knopf{QMessageBox::Ok, "OK"}, Knopf{QMessageBox::Yes, "&Yes"}, Knopf{QMessageBox::No, "&No"}})
        if (QAbstractButton *knopf = box.button(k.knopf))
            knopf->setText(QCoreApplication::translate("QPlatformTheme", k.text));
}

// A short text would make a box too narrow for its own title, which tells the card file.
void TitelLesbar(QMessageBox &box)
{
    auto *anordnung = qobject_cast<QGridLayout *>(box.layout());
    if (!anordnung)
        return;
    constexpr int KnoepfeImRahmen = 20; // in characters: icon and up to five buttons
    QFont schrift = box.font();         // window managers like to write titles in bold
    schrift.setBold(true);
    const QFontMetrics masse(schrift);
    const int breite =
        masse.horizontalAdvance(box.windowTitle()) + KnoepfeImRahmen * masse.averageCharWidth();
    anordnung->addItem(new QSpacerItem(breite, 0), anordnung->rowCount(), 0, 1, anordnung->columnCount());
}

// The toolkit's box takes a button's letter without Alt, too. A question that is better answered with No may
// come up while somebody types: letters are no answer to it.
class Fragebox final : public QMessageBox
{
public:
    Fragebox(const QString &titel, const QString &text, StandardButton vorgabe)
        : QMessageBox(Question, titel, text, Yes | No, QApplication::activeWindow())
    {
        setDefaultButton(vorgabe);
        setEscapeButton(No);
    }

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        const bool befehl =
            (event->modifiers() & (Qt::AltModifier | Qt::ControlModifier | Qt::MetaModifier)) != 0;
        const bool zeichen = !event->text().isEmpty() && event->text().front().isPrint();
        if (befehl || !zeichen || defaultButton() == button(Yes))
            QMessageBox::keyPressEvent(event);
    }
};

void Vorbereiten(QMessageBox &box)
{
    box.setObjectName(u"Meldung"_s);
    box.setTextFormat(Qt::PlainText);
    DeutscheKnoepfe(box);
    TitelLesbar(box);
    if (QPushButton *vorgabe = box.defaultButton())
        vorgabe->setProperty("leitend", true);
    qCInfo(LogMeldung).noquote() << box.text();
}

} // namespace

MeldungenFenster::~MeldungenFenster()
{
    Sanduhr(false);
}

void MeldungenFenster::Zeigen(const QString &text, Symbol symbol)
{
    const OhneSanduhr ohne(sanduhr_);
    QMessageBox box(symbol == Symbol::Ausruf ? QMessageBox::Warning : QMessageBox::NoIcon, Titel(),
                    Gezeigt(text), QMessageBox::Ok, QApplication::activeWindow());
    box.setDefaultButton(QMessageBox::Ok);
    Vorbereiten(box);
    box.exec();
}

Meldungen::Antwort MeldungenFenster::Fragen(const QString &text, Antwort vorgabe)
{
    const OhneSanduhr ohne(sanduhr_);
    Fragebox box(Titel(), Gezeigt(text), vorgabe == Antwort::Ja ? QMessageBox::Yes : QMessageBox::No);
    Vorbereiten(box);
    return box.exec() == QMessageBox::Yes ? Antwort::Ja : Antwort::Nein;
}

qsizetype MeldungenFenster::Waehlen(const QString &text, const QStringList &knoepfe, qsizetype abbruch)
{
    const OhneSanduhr ohne(sanduhr_);
    QMessageBox box(QMessageBox::Question, Titel(), Gezeigt(text), QMessageBox::NoButton,
                    QApplication::activeWindow());
    for (const QString &knopf : knoepfe)
        box.addButton(knopf, QMessageBox::ActionRole);
    const QList<QAbstractButton *> reihe = box.buttons();
    for (QAbstractButton *knopf : reihe) {
        if (knopf->text() == knoepfe.first())
            box.setDefaultButton(qobject_cast<QPushButton *>(knopf));
        if (knoepfe.indexOf(knopf->text()) == abbruch)
            box.setEscapeButton(knopf);
    }
    if (abbruch < 0 || abbruch >= knoepfe.size()) { // a box without such a button cannot be closed
        QPushButton *zu = box.addButton(u"Zurück"_s, QMessageBox::RejectRole);
        box.setEscapeButton(zu);
        zu->hide();
    }
    Vorbereiten(box);
    box.exec();
    const qsizetype wahl = box.clickedButton() ? knoepfe.indexOf(box.clickedButton()->text()) : abbruch;
    return wahl < 0 ? abbruch : wahl;
}

void MeldungenFenster::Bericht(const QString &titel, const QString &text)
{
    const OhneSanduhr ohne(sanduhr_);
    Berichtfenster(titel, text, QApplication::activeWindow()).exec();
}

void MeldungenFenster::Sanduhr(bool an)
{
    if (an == sanduhr_)
        return;
    sanduhr_ = an;
    if (an)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

bool DeutscheTexte()
{
    auto katalog = std::make_unique<QTranslator>(QCoreApplication::instance());
    if (!katalog->load(u"qtbase_de"_s, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        return false;
    return QCoreApplication::installTranslator(katalog.release());
}

} // namespace paukfix
